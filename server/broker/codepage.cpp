#include "server/broker/codepage.h"

#include <algorithm>
#include <cstring>

#include "server/broker/encapsulated.h"
#include "server/broker/request_pool.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

char* pooled_copy(const void* data, std::size_t size) {
    void* copy = RequestPool::current().allocate(size);
    if (copy != nullptr) std::memcpy(copy, data, size);
    return static_cast<char*>(copy);
}

bool is_ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char* encode_utf16(std::string_view text, CMPIStatus* rc) {
    std::u16string units;
    for (std::size_t at = 0; at < text.size();) {
        const DecodedChar next = decode_utf8(text, at);
        if (!next.valid) {
            set_status(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
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
    return pooled_copy(units.c_str(), (units.size() + 1) * sizeof(char16_t));
}

std::optional<std::string> decode_utf16(const char* data, CMPIStatus* rc) {
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
                set_status(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
                return std::nullopt;
            }
            code = 0x10000U + ((static_cast<char32_t>(unit) - 0xD800U) << 10U) + (low - 0xDC00U);
            data += sizeof unit;
        }
        append_utf8(text, code);
    }
}

} // namespace

char* encode_for(CMPICodepageID codepage, std::string_view text, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    const std::string terminated(text);
    switch (codepage) {
        case CMPI_CPID_SYSTEM:
            return pooled_copy(terminated.c_str(), terminated.size() + 1);
        case CMPI_CPID_USASCII:
            if (is_ascii(text)) return pooled_copy(terminated.c_str(), terminated.size() + 1);
            set_status(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
            return nullptr;
        case CMPI_CPID_UTF16:
            return encode_utf16(text, rc);
    }
    set_status(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    return nullptr;
}

std::optional<std::string> decode_from(CMPICodepageID codepage, const char* data, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    switch (codepage) {
        case CMPI_CPID_SYSTEM:
            return std::string(data);
        case CMPI_CPID_USASCII:
            if (is_ascii(data)) return std::string(data);
            set_status(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
            return std::nullopt;
        case CMPI_CPID_UTF16:
            return decode_utf16(data, rc);
    }
    set_status(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    return std::nullopt;
}

} // namespace cimserver
