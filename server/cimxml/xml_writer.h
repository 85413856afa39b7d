// Writes XML text that is well-formed whatever it is given.
#ifndef KESTO_SERVER_CIMXML_XML_WRITER_H
#define KESTO_SERVER_CIMXML_XML_WRITER_H

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace cimserver {

class XmlWriter {
  public:
    using Attributes = std::initializer_list<std::pair<std::string_view, std::string_view>>;

    // Attributes with an empty name are left out.
    void open(std::string_view element, Attributes attributes = {}) { tag(element, attributes, ">"); }
    void empty(std::string_view element, Attributes attributes = {}) { tag(element, attributes, "/>"); }
    void close(std::string_view element);

    // Characters that XML cannot hold, and bytes that are no UTF-8, become the replacement character U+FFFD.
    void text(std::string_view characters);
    void element(std::string_view element, std::string_view characters, Attributes attributes = {});

    // Text that is XML already.
    void raw(std::string_view xml) { out_ += xml; }
    const std::string& result() const { return out_; }
    std::string take() { return std::move(out_); }

  private:
    void tag(std::string_view element, Attributes attributes, std::string_view end);
    void escaped(std::string_view characters, bool inAttribute);

    std::string out_;
};

} // namespace cimserver

#endif
