#include "server/cimxml/xml_writer.h"

#include <cstddef>

#include "server/model/text.h"

namespace cimserver {

void XmlWriter::tag(std::string_view element, Attributes attributes, std::string_view end) {
    out_ += '<';
    out_ += element;
    for (const auto& [name, value] : attributes) {
        if (name.empty()) continue;
        out_ += ' ';
        out_ += name;
        out_ += "=\"";
        escaped(value, true);
        out_ += '"';
    }
    out_ += end;
}

void XmlWriter::close(std::string_view element) {
    out_ += "</";
    out_ += element;
    out_ += '>';
}

void XmlWriter::text(std::string_view characters) {
    escaped(characters, false);
}

void XmlWriter::element(std::string_view element, std::string_view characters, Attributes attributes) {
    open(element, attributes);
    text(characters);
    close(element);
}

void XmlWriter::escaped(std::string_view characters, bool inAttribute) {
    constexpr char32_t REPLACEMENT = 0xFFFD;
    for (std::size_t at = 0; at < characters.size();) {
        const DecodedChar next = decode_utf8(characters, at);
        switch (next.valid ? next.code : REPLACEMENT) {
            case '&':
                out_ += "&amp;";
                break;
            case '<':
                out_ += "&lt;";
                break;
            case '>':
                out_ += "&gt;";
                break;
            case '"':
                out_ += inAttribute ? "&quot;" : "\"";
                break;
            case '\r':
                out_ += "&#13;"; // a parser would turn it into a line feed
                break;
            case '\n':
                out_ += inAttribute ? "&#10;" : "\n";
                break;
            case '\t':
                out_ += inAttribute ? "&#9;" : "\t";
                break;
            default:
                if (next.valid && is_xml_char(next.code)) {
                    out_ += characters.substr(at, next.length);
                } else {
                    append_utf8(out_, REPLACEMENT);
                }
        }
        at += next.length;
    }
}

} // namespace cimserver
