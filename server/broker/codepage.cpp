#include "server/broker/codepage.h"

#include <iconv.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "server/broker/encapsulated.h"
#include "server/broker/request_pool.h"

namespace cimserver {

namespace {

// A code page as the C library knows it, and the size of its terminating zero.
struct Codepage {
    const char* name;
    std::size_t unit;
};

std::optional<Codepage> codepage_of(CMPICodepageID id) {
    constexpr const char* UTF16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
    switch (id) {
        case CMPI_CPID_SYSTEM:
            return Codepage{"UTF-8", sizeof(char)};
        case CMPI_CPID_USASCII:
            return Codepage{"US-ASCII", sizeof(char)};
        case CMPI_CPID_UTF16:
            return Codepage{UTF16, sizeof(char16_t)};
    }
    return std::nullopt;
}

// Nothing for text that one of the two code pages cannot hold.
std::optional<std::string> convert(const char* to, const char* from, std::string_view text) {
    if (std::strcmp(to, from) == 0) return std::string(text);
    const iconv_t conversion = iconv_open(to, from);
    if (reinterpret_cast<std::intptr_t>(conversion) == -1) return std::nullopt;
    // A character has one byte at least and four at most in each of them.
    std::string result(4 * text.size(), '\0');
    auto* in = const_cast<char*>(text.data()); // iconv does not write there
    char* out = result.data();
    std::size_t inLeft = text.size();
    std::size_t outLeft = result.size();
    const bool converted = iconv(conversion, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
    iconv_close(conversion);
    result.resize(result.size() - outLeft);
    return converted ? std::optional(result) : std::nullopt;
}

// The length in bytes up to the terminating zero.
std::size_t length_of(const char* data, std::size_t unit) {
    constexpr char ZERO[sizeof(char16_t)] = {};
    std::size_t length = 0;
    while (std::memcmp(data + length, ZERO, unit) != 0) {
        length += unit;
    }
    return length;
}

} // namespace

char* encode_for(CMPICodepageID codepage, std::string_view text, CMPIStatus* rc) {
    const std::optional<Codepage> known = codepage_of(codepage);
    set_status(rc, known ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_PARAMETER);
    if (!known) return nullptr;
    const std::optional<std::string> encoded = convert(known->name, "UTF-8", text);
    if (!encoded) {
        set_status(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
        return nullptr;
    }
    void* copy = RequestPool::current().allocate(encoded->size() + known->unit); // comes cleared
    if (copy != nullptr) std::memcpy(copy, encoded->data(), encoded->size());
    return static_cast<char*>(copy);
}

std::optional<std::string> decode_from(CMPICodepageID codepage, const char* data, CMPIStatus* rc) {
    const std::optional<Codepage> known = codepage_of(codepage);
    set_status(rc, known ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_PARAMETER);
    if (!known) return std::nullopt;
    std::optional<std::string> text = convert("UTF-8", known->name, {data, length_of(data, known->unit)});
    if (!text) set_status(rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
    return text;
}

} // namespace cimserver
