// XML as the server checks and writes it.
#include <gtest/gtest.h>

#include "server/cimxml/xml_check.h"
#include "server/cimxml/xml_writer.h"

namespace {

using namespace cimserver;

TEST(XmlCheck, WellFormedDocumentsPass) {
    for (const char* good :
         {"<a/>", "<a></a>",
          "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<!DOCTYPE a>\n<!-- <b> & --><a b='1' c=\"2\">&lt;&#65;"
          "&#x1F4A1;<![CDATA[ & < ]]></a> <!-- end -->\n",
          "<a b = '>'\n c='\"'/>", "<a>\xC3\xBC</a>"}) {
        EXPECT_EQ(find_ill_formed(good).value_or("fine"), "fine") << good;
    }
}

TEST(XmlCheck, IllFormedDocumentsDoNot) {
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
                            "<a><![CDATA[</a>",
                            "<?xml <a/>",
                            "</a>",
                            "<a></a></a>",
                            "<a b=1/>x",
                            "<a 'b'/>",
                            "<![CDATA[x]]><a/>",
                            "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>",
                            "<a/><!DOCTYPE a>"}) {
        EXPECT_TRUE(find_ill_formed(bad)) << bad;
    }
}

TEST(XmlCheck, NestingIsLimited) {
    const auto nest = [](unsigned depth) {
        std::string text;
        for (unsigned i = 0; i < depth; ++i)
            text += "<a>";
        for (unsigned i = 0; i < depth; ++i)
            text += "</a>";
        return text;
    };
    EXPECT_FALSE(find_ill_formed(nest(DEEPEST_NESTING)));
    EXPECT_TRUE(find_ill_formed(nest(DEEPEST_NESTING + 1)));
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
