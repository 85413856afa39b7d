// CIM-XML responses as the tests read them.
#ifndef KESTO_TESTS_SERVER_RESPONSE_H
#define KESTO_TESTS_SERVER_RESPONSE_H

#include <cstddef>
#include <string>
#include <vector>

#include "server/cimxml/xml_document.h"

class Response {
  public:
    explicit Response(const std::string& body);

    bool well_formed() const { return wellFormed_; }

    // What a path leads to: the texts of elements or the values of attributes, in the document's order. A
    // path is the part of XPath that the tests need: steps to children (/) or descendants (//), by name or *,
    // with conditions [@NAME='value'], and at its end perhaps an attribute, /@NAME or //@NAME.
    std::vector<std::string> texts(const std::string& path) const;
    std::string text(const std::string& path) const; // of the first match
    std::size_t count(const std::string& path) const { return texts(path).size(); }

    // Of the first instance, or another one by its place.
    std::string property(const std::string& name, std::size_t instance = 0) const;
    int error_code() const; // 0 without an ERROR
    std::string error_description() const { return text("//ERROR/@DESCRIPTION"); }

  private:
    cimserver::XmlElement document_; // a nameless element that holds the document's own
    bool wellFormed_ = true;
};

#endif
