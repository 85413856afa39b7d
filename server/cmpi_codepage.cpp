#include "server/cmpi_codepage.h"

#include <algorithm>
#include <cstring>

#include "server/cmpi_memory.h"
#include "server/text.h"

namespace cimserver {

namespace {

char* pooledCopy(const void* data, std::size_t size) {
    void* copy = RequestPool::current().allocate(size);
    if (copy) std::memcpy(copy, data, size);
    return static_cast<char*>(copy);
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char* encodeUtf16(std::string_view text, CMPIStatus* rc) {
    std::u16string units;
    for (std::size_t at = 0; at < text.size();) {
        const DecodedChar next = decodeUtf8(text, at);
        if (!next.valid) {
            setStatus(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
            return nullptr;
        }
        if (next.code < 0x10000) {
            units += static_cast<char16_t>(next.code);
        } else {
            units += static_cast<char16_t>(0xD800U + ((next.code - 0x10000U) >> 10U));
            units += static_cast<char16_t>(0xDC00U + ((next.code - 0x10000U) & 0x3FFU));
        }
        at += next.length;
    }
    return pooledCopy(units.c_str(), (units.size() + 1) * sizeof(char16_t));
}

std::optional<std::string> decodeUtf16(const char* data, CMPIStatus* rc) {
    std::string text;
    for (;; data += sizeof(char16_t)) {
        char16_t unit = 0;
        std::memcpy(&unit, data, sizeof unit);
        if (unit == 0) return text;
        char32_t code = unit;
        if (unit >= 0xD800 && unit <= 0xDFFF) {
            char16_t low = 0;
            std::memcpy(&low, data + sizeof unit, sizeof low);
            if (unit > 0xDBFF || low < 0xDC00 || low > 0xDFFF) {
                setStatus(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
                return std::nullopt;
            }
            code = 0x10000U + ((static_cast<char32_t>(unit) - 0xD800U) << 10U) + (low - 0xDC00U);
            data += sizeof unit;
        }
        appendUtf8(text, code);
    }
}

} // namespace

char* encodeFor(CMPICodepageID codepage, std::string_view text, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    const std::string terminated(text);
    switch (codepage) {
        case CMPI_CPID_SYSTEM:
            return pooledCopy(terminated.c_str(), terminated.size() + 1);
        case CMPI_CPID_USASCII:
            if (isAscii(text)) return pooledCopy(terminated.c_str(), terminated.size() + 1);
            setStatus(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
            return nullptr;
        case CMPI_CPID_UTF16:
            return encodeUtf16(text, rc);
    }
    setStatus(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    return nullptr;
}

std::optional<std::string> decodeFrom(CMPICodepageID codepage, const char* data, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    switch (codepage) {
        case CMPI_CPID_SYSTEM:
            return std::string(data);
        case CMPI_CPID_USASCII:
            if (isAscii(data)) return std::string(data);
            setStatus(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
            return std::nullopt;
        case CMPI_CPID_UTF16:
            return decodeUtf16(data, rc);
    }
    setStatus(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    return std::nullopt;
}

} // namespace cimserver
