// Small text helpers that the whole server shares: caseless names and UTF-8.
#ifndef KESTO_SERVER_MODEL_TEXT_H
#define KESTO_SERVER_MODEL_TEXT_H

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace cimserver {

// CIM names (classes, properties, keys, parameters, namespaces) compare without case, in ASCII only.
bool same_name(std::string_view a, std::string_view b);
std::string lower_cased(std::string_view name);

// Names in an order that does not see case either, for sets and maps of them.
struct NameOrder {
    using is_transparent = void; // NOLINT(readability-identifier-naming): the standard library's name
    bool operator()(std::string_view a, std::string_view b) const;
};
using NameSet = std::set<std::string, NameOrder>;

// Without the blanks at both ends.
std::string_view trimmed(std::string_view text);

// One decoded character of a UTF-8 text. `valid` is false for a malformed sequence, which then takes the
// bytes up to the next one that can start a character.
struct DecodedChar {
    char32_t code;
    std::size_t length;
    bool valid;
};
DecodedChar decode_utf8(std::string_view text, std::size_t at);
void append_utf8(std::string& out, char32_t code);

// True for the characters that an XML 1.0 document can hold.
bool is_xml_char(char32_t code);

} // namespace cimserver

#endif
