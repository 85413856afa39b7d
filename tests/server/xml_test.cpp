// XML as the server reads and writes it.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "server/cimxml/xml_document.h"
#include "server/cimxml/xml_writer.h"

namespace {

using namespace cimserver;

TEST(XmlDocument, HasElementsAttributesAndText) {
    const XmlElement document = parse_xml(
        "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<!-- <b> & --><a b='1' c = \"2&#10;\n\">x&lt;&#65;\r\n<d/>"
        "&#x1F4A1;<!-- - --><?pi y?><![CDATA[ & < ]]><e>f</e></a> <!-- end -->\n");
    EXPECT_EQ(document.name, "a");
    EXPECT_EQ(document.attributes.size(), 2U);
    EXPECT_EQ(*document.attribute("b"), "1");
    EXPECT_EQ(*document.attribute("c"), "2\n ");
    EXPECT_EQ(document.attribute("B"), nullptr);
    EXPECT_EQ(document.text, "x<A\n\xF0\x9F\x92\xA1 & < ");
    ASSERT_EQ(document.children.size(), 2U);
    EXPECT_EQ(document.children[0].name, "d");
    EXPECT_EQ(document.children[1].text, "f");
}

TEST(XmlDocument, WellFormedDocumentsPass) {
    for (const char* good :
         {"<a/>", "<a></a>", "<a b = '>'\n c='\"'/>", "<a>\xC3\xBC</a>", "<a:b xmlns:c='d'/>"}) {
        EXPECT_NO_THROW(parse_xml(good)) << good;
    }
}

TEST(XmlDocument, IllFormedDocumentsDoNot) {
    for (const char* bad : {"",
                            " ",
                            "text",
                            "<a/><b/>",
                            "<a/>text",
                            "text<a/>",
                            "<a",
                            "<a b='1' b='2'/>",
                            "<a b='<'/>",
                            "<a>&</a>",
                            "<a>&nbsp;</a>",
                            "<a>&#0;</a>",
                            "<a>&#x1;</a>",
                            "<a>&#xD800;</a>",
                            "<a>&#99999999;</a>",
                            "<a b='&x'/>",
                            "<a>\x01</a>",
                            "<a>\xC3</a>",
                            "<a>\xC0\x80</a>",
                            "<a>\xED\xA0\x80</a>",
                            "<a>\xEF\xBF\xBF</a>",
                            "<!-- <a/>",
                            "<!-- -- --><a/>",
                            "<a><![CDATA[</a>",
                            "<a>]]></a>",
                            "<?xml <a/>",
                            "<a/><?xml version='1.0'?>",
                            "</a>",
                            "<a></a></a>",
                            "<a b=1/>x",
                            "<a 'b'/>",
                            "<![CDATA[x]]><a/>"}) {
        EXPECT_THROW(parse_xml(bad), XmlError) << bad;
    }
}

TEST(XmlDocument, OnlyUtf8IsRead) {
    EXPECT_THROW(parse_xml(std::string("\xFF\xFE<\0a\0/\0>\0", 10)), XmlError);
    EXPECT_THROW(parse_xml("<?xml version='1.0' encoding='iso-8859-1'?><a>\xFC</a>"), XmlError);
    EXPECT_NO_THROW(parse_xml("<?xml version='1.0' encoding='iso-8859-1'?><a>\xC3\xBC</a>"));
}

TEST(XmlDocument, DocumentTypesAreRefused) {
    for (const char* bad : {"<!DOCTYPE a><a/>", "<!DOCTYPE a SYSTEM 'a.dtd'><a/>",
                            "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>", "<a/><!DOCTYPE a>"}) {
        EXPECT_THROW(parse_xml(bad), XmlError) << bad;
    }
}

TEST(XmlDocument, NestingIsLimited) {
    const auto nest = [](std::size_t depth) {
        std::string text;
        for (std::size_t i = 0; i < depth; ++i) {
            text = "<a>" + text + "</a>";
        }
        return text;
    };
    EXPECT_NO_THROW(parse_xml(nest(DEEPEST_NESTING)));
    EXPECT_THROW(parse_xml(nest(DEEPEST_NESTING + 1)), XmlError);
}

TEST(XmlDocument, AttributesAreLimited) {
    const auto withAttributes = [](std::size_t count) {
        std::string text = "<a";
        for (std::size_t i = 0; i < count; ++i) {
            text += " b" + std::to_string(i) + "=''";
        }
        return text + "/>";
    };
    EXPECT_EQ(parse_xml(withAttributes(MOST_ATTRIBUTES)).attributes.size(), MOST_ATTRIBUTES);
    EXPECT_THROW(parse_xml(withAttributes(MOST_ATTRIBUTES + 1)), XmlError);
}

TEST(XmlWriter, Escapes) {
    XmlWriter xml;
    xml.open("A", {{"B", "<\"&'>\n\t\r"}, {"", "left out"}});
    xml.text("<\"&'>\n\t\r\x01\xFF");
    xml.empty("C");
    xml.close("A");
    EXPECT_EQ(xml.result(),
              "<A B=\"&lt;&quot;&amp;'&gt;&#10;&#9;&#13;\">&lt;\"&amp;'&gt;\n\t&#13;"
              "\xEF\xBF\xBD\xEF\xBF\xBD<C/></A>");
}

} // namespace
