// What the XML library forgives and the XML standard does not.
//
// pugixml checks that tags match; it lets pass bytes that are no UTF-8, characters that XML does not have,
// undefined entities, repeated attributes, and content around the document element. This scan does not.
#ifndef KESTO_SERVER_CIMXML_XML_CHECK_H
#define KESTO_SERVER_CIMXML_XML_CHECK_H

#include <optional>
#include <string>
#include <string_view>

namespace cimserver {

// What is wrong with the document, or nothing.
std::optional<std::string> find_ill_formed(std::string_view document);

// Elements nested deeper than this are refused, too: no CIM-XML message needs it, and readers recurse.
constexpr unsigned DEEPEST_NESTING = 200;

} // namespace cimserver

#endif
