// An XML document, read strictly and within bounds: the server's only reader of what clients send.
//
// The parser is expat. It takes well-formed documents in UTF-8 only, whatever encoding they declare, without
// a document type and so without entities of their own. The limits below are far beyond what CIM-XML needs.
#ifndef KESTO_SERVER_CIMXML_XML_DOCUMENT_H
#define KESTO_SERVER_CIMXML_XML_DOCUMENT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/model/error.h"

namespace cimserver {

struct XmlElement {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes; // each name once
    std::string text; // all characters between the tags but those in elements within
    std::vector<XmlElement> children;

    // NULL when the element has none of that name.
    const std::string* attribute(std::string_view attributeName) const;
};

class XmlError : public Error {
  public:
    using Error::Error;
};

// The document element. Throws XmlError for what is not well-formed or exceeds a limit.
XmlElement parse_xml(std::string_view document);

constexpr std::size_t LARGEST_DOCUMENT = std::size_t{1} << 30U;
constexpr std::size_t DEEPEST_NESTING = 200; // of elements; readers recurse
constexpr std::size_t MOST_ATTRIBUTES = 64;  // of an element

} // namespace cimserver

#endif
