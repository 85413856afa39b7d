#include "server/model/text.h"

#include <algorithm>

namespace cimserver {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool is_continuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

bool same_name(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

bool NameOrder::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lower(x) < lower(y); });
}

std::string lower_cased(std::string_view name) {
    std::string result(name);
    std::transform(result.begin(), result.end(), result.begin(), lower);
    return result;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view BLANKS = " \t\r\n";
    const std::size_t first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

DecodedChar decode_utf8(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80U) return {lead, 1, true};

    std::size_t length = 0;
    char32_t code = 0;
    char32_t smallest = 0;
    if ((lead & 0xE0U) == 0xC0U) {
        length = 2, code = lead & 0x1FU, smallest = 0x80;
    } else if ((lead & 0xF0U) == 0xE0U) {
        length = 3, code = lead & 0x0FU, smallest = 0x800;
    } else if ((lead & 0xF8U) == 0xF0U) {
        length = 4, code = lead & 0x07U, smallest = 0x10000;
    } else {
        return {0, 1, false};
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (at + i >= text.size() || !is_continuation(text[at + i])) return {0, i, false};
        code = (code << 6U) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return {code, length, code >= smallest && code <= 0x10FFFF && !surrogate};
}

void append_utf8(std::string& out, char32_t code) {
    const auto byte = [&out](char32_t value) { out += static_cast<char>(static_cast<unsigned char>(value)); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0U | (code >> 6U));
        byte(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        byte(0xE0U | (code >> 12U));
        byte(0x80U | ((code >> 6U) & 0x3FU));
        byte(0x80U | (code & 0x3FU));
    } else {
        byte(0xF0U | (code >> 18U));
        byte(0x80U | ((code >> 12U) & 0x3FU));
        byte(0x80U | ((code >> 6U) & 0x3FU));
        byte(0x80U | (code & 0x3FU));
    }
}

bool is_xml_char(char32_t code) {
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

} // namespace cimserver
