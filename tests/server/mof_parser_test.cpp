// What MOF says, and what it may not say.
#include "server/schema/mof_parser.h"

#include <cmpidt.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "server/schema/class_schema.h"

namespace {

using namespace cimserver;

constexpr auto QUALIFIERS = R"(
    Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
    Qualifier Association : boolean = false, Scope(association);
    Qualifier Description : string = null, Scope(any), Flavor(Translatable);
    Qualifier ValueMap : string[], Scope(property);
    Qualifier MaxLen : uint32 = null, Scope(property);
    Qualifier Version : string = "1.0", Scope(class), Flavor(Restricted);
    Qualifier Override : string = null, Scope(property), Flavor(Restricted);
)";

// The schema with the qualifiers above and what the text declares.
class Declared {
  public:
    explicit Declared(const std::string& text) {
        parse_mof(QUALIFIERS, "qualifiers.mof", schema);
        parse_mof(text, "text.mof", schema);
    }
    const ClassDeclaration& of(const std::string& name) const { return *schema.find(name); }
    ClassSchema schema{"root/cimv2"};
};

std::string error_of(const std::string& text) {
    try {
        const Declared declared(text);
        return "";
    } catch (const MofError& error) {
        return error.what();
    }
}

TEST(Mof, PropertiesOfEveryType) {
    const Declared declared(
        "class A { uint8 a; sint8 b; uint16 c; sint16 d; uint32 e; sint32 f; uint64 g;"
        "sint64 h; real32 i; real64 j; boolean k; string l; char16 m; datetime n; A ref o;"
        "UINT8 p[]; string q[4]; };");
    const std::vector<CMPIType> types = {CMPI_uint8,   CMPI_sint8,  CMPI_uint16, CMPI_sint16,   CMPI_uint32,
                                         CMPI_sint32,  CMPI_uint64, CMPI_sint64, CMPI_real32,   CMPI_real64,
                                         CMPI_boolean, CMPI_string, CMPI_char16, CMPI_dateTime, CMPI_ref,
                                         CMPI_uint8A,  CMPI_stringA};
    const auto& properties = declared.of("A").properties;
    ASSERT_EQ(properties.size(), types.size());
    for (std::size_t i = 0; i < types.size(); ++i) {
        EXPECT_EQ(properties[i].type, types[i]) << properties[i].name;
    }
    EXPECT_EQ(properties[14].referencedClass, "A");
    EXPECT_FALSE(properties[15].arraySize);
    EXPECT_EQ(properties[16].arraySize, 4U);
}

std::string default_of(const std::string& type, const std::string& value) {
    const Declared declared("class A { " + type + " p = " + value + "; };");
    return scalar_text(declared.of("A").properties.front().defaultValue);
}

TEST(Mof, DefaultValues) {
    EXPECT_EQ(default_of("uint8", "255"), "255");
    EXPECT_EQ(default_of("sint32", "-7"), "-7");
    EXPECT_EQ(default_of("uint16", "0x1F"), "31");
    EXPECT_EQ(default_of("uint16", "1011b"), "11");
    EXPECT_EQ(default_of("uint16", "017"), "15");
    EXPECT_EQ(default_of("real32", "1.5e+1"), "15.0");
    EXPECT_EQ(default_of("boolean", "TRUE"), "TRUE");
    EXPECT_EQ(default_of("string", R"("a\tb\"c\x41")"), "a\tb\"cA");
    EXPECT_EQ(default_of("string", "\"one \" /* and */ \"two\""), "one two");
    EXPECT_EQ(default_of("char16", "'x'"), "x");
    EXPECT_EQ(default_of("datetime", "\"20240229123456.000789+060\""), "20240229123456.000789+060");
    EXPECT_EQ(default_of("string", "NULL"), "");
}

TEST(Mof, ArraysOfValues) {
    const Declared declared("class A { sint8 p[] = {1, NULL, -3}; sint8 q[] = {}; };");
    const auto* values = declared.of("A").property("P")->defaultValue.as_array();
    ASSERT_NE(values, nullptr);
    ASSERT_EQ(values->size(), 3U);
    EXPECT_TRUE((*values)[1].is_null());
    EXPECT_EQ(scalar_text((*values)[2]), "-3");
    EXPECT_TRUE(declared.of("A").property("q")->defaultValue.as_array()->empty());
}

TEST(Mof, QualifiersWithTheirValuesAndFlavors) {
    const Declared declared(R"([Description("A " "class.") : DisableOverride, Version]
                               class A { [KEY, ValueMap{"1", "2"}] string p; [Key(false)] string q; };)");
    const ClassDeclaration& a = declared.of("A");
    EXPECT_EQ(scalar_text(find_qualifier(a.qualifiers, "description")->value), "A class.");
    EXPECT_FALSE(find_qualifier(a.qualifiers, "Description")->flavors.overridable);
    EXPECT_TRUE(find_qualifier(a.qualifiers, "Description")->flavors.translatable);
    EXPECT_EQ(scalar_text(find_qualifier(a.qualifiers, "Version")->value), "1.0");
    EXPECT_FALSE(find_qualifier(a.qualifiers, "Version")->flavors.toSubclass);
    EXPECT_TRUE(is_key(*a.property("p")));
    EXPECT_FALSE(is_key(*a.property("q")));
    EXPECT_EQ(find_qualifier(a.property("p")->qualifiers, "ValueMap")->value.as_array()->size(), 2U);
}

TEST(Mof, DeclarationsOfQualifiers) {
    const Declared declared("");
    const QualifierType* map = declared.schema.qualifier_type("valuemap");
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(map->type, CMPI_stringA);
    EXPECT_TRUE(map->defaultValue.is_null());
    EXPECT_EQ(map->scopes, std::vector<std::string>{"property"});
    EXPECT_EQ(declared.schema.qualifier_type("Nothing"), nullptr);
}

TEST(Mof, MethodsWithTheirParameters) {
    const Declared declared(R"(class A { [Description("Does.")] uint32 Do(
        [Description("In.")] string In, A REF Like, uint8 List[3]); sint8 None(); };)");
    const auto& methods = declared.of("A").methods;
    ASSERT_EQ(methods.size(), 2U);
    EXPECT_EQ(methods[0].type, CMPI_uint32);
    ASSERT_EQ(methods[0].parameters.size(), 3U);
    EXPECT_EQ(methods[0].parameters[1].referencedClass, "A");
    EXPECT_EQ(methods[0].parameters[2].type, CMPI_uint8A);
    EXPECT_TRUE(methods[1].parameters.empty());
}

TEST(Mof, CommentsAndForeignPragmasDoNotCount) {
    EXPECT_EQ(error_of("#pragma locale (\"en_US\")\n// class B\n/* class\n C */ class A {};"), "");
}

TEST(Mof, ErrorsSayWhereAndWhat) {
    EXPECT_EQ(error_of("class A {\n  string\n};"), "text.mof:3: expected the name of a property");
    EXPECT_EQ(error_of("class A {}"), "text.mof:1: expected ;, not the end of the file");
    EXPECT_EQ(error_of("\nclass A : B {};"), "text.mof:2: the superclass B of A is not declared");
    EXPECT_EQ(error_of("class A {};\nclass a {};"), "text.mof:2: the class a is declared twice");
    EXPECT_EQ(error_of("[Odd] class A {};"), "text.mof:1: the qualifier Odd is not declared");
    EXPECT_EQ(error_of("[Version, version] class A {};"), "text.mof:1: the qualifier version occurs twice");
    EXPECT_EQ(error_of("class A { uint8 p = 256; };"), "text.mof:1: \"256\" is no value of the type uint8");
    EXPECT_EQ(error_of("class A { uint8 p = \"1\"; };"), "text.mof:1: \"1\" is no value of the type uint8");
    EXPECT_EQ(error_of("class A { string p = 1; };"), "text.mof:1: \"1\" is no value of the type string");
    EXPECT_EQ(error_of("class A { string p; string P; };"), "text.mof:1: the property P occurs twice");
    EXPECT_EQ(error_of("class A { string p = \"x; };"), "text.mof:1: a text without end");
    EXPECT_EQ(error_of("class A { string p = \"\\q\"; };"), "text.mof:1: an unknown escape in a text");
    EXPECT_EQ(error_of("\n/* for ever"), "text.mof:2: a comment without end");
    EXPECT_EQ(error_of("instance of A {};"),
              "text.mof:1: instances are not read: all of them come from providers");
    EXPECT_EQ(error_of("[Description(\"d\") : Loud] class A {};"), "text.mof:1: unknown flavor Loud");
    EXPECT_EQ(error_of("Qualifier Key : boolean, Scope(any);"),
              "text.mof:1: the qualifier Key is declared twice");
    EXPECT_EQ(error_of("class A { string p; };\nclass B : A { uint8 p; };"),
              "text.mof:2: B.p overrides A.p with another type");
}

TEST(Mof, AnyBeginningOfATextIsReadOrRefused) {
    const std::string text = R"([Description("A \x41")] class A { [Key] uint8 p[3] = {1, 0x2, 11b}; A REF q;
                                /* c */ uint32 m([Key] string s); }; #pragma include("x"))";
    for (std::size_t length = 0; length < text.size(); ++length) {
        error_of(text.substr(0, length)); // no other exception, no overread
    }
    EXPECT_NE(error_of(text), "");
}

class MofFiles : public testing::Test {
  protected:
    MofFiles() {
        std::string made = testing::TempDir() + "mofXXXXXX";
        folder = mkdtemp(made.data());
    }
    ~MofFiles() override { std::filesystem::remove_all(folder); }
    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder / name) << text;
    }
    std::string error_of_file(const std::string& name) {
        try {
            ClassSchema schema;
            parse_mof_file((folder / name).string(), schema);
            return "";
        } catch (const MofError& error) {
            return error.what();
        }
    }
    std::filesystem::path folder;
};

TEST_F(MofFiles, IncludedFilesAreFoundBesideTheirIncluder) {
    std::filesystem::create_directory(folder / "sub");
    write("top.mof", "#pragma include (\"sub/a.mof\")\nclass C : B {};");
    write("sub/a.mof", "class A {};\n#pragma include (\"b.mof\")");
    write("sub/b.mof", "class B : A {};");
    EXPECT_EQ(error_of_file("top.mof"), "");
    write("sub/b.mof", "class B : X {};");
    EXPECT_EQ(error_of_file("top.mof"),
              (folder / "sub/b.mof").string() + ":1: the superclass X of B is not declared");
}

TEST_F(MofFiles, AFileThatIncludesItselfOrIsNotThereIsRefused) {
    write("self.mof", "#pragma include (\"self.mof\")");
    EXPECT_EQ(error_of_file("self.mof"),
              (folder / "self.mof").string() + ":1: files are included too deeply");
    EXPECT_EQ(error_of_file("missing.mof"), "cannot read " + (folder / "missing.mof").string());
    EXPECT_EQ(error_of_file("."), "cannot read " + (folder / ".").string());
}

TEST(ClassSchemas, ASubclassHasWhatItsSuperclassHas) {
    const Declared declared(R"(
        [Description("Top."), Version("2.0")] class A { [Key, Description("A's.")] string p = "x"; uint8 r; };
        class B : A { [Override("p"), Description("B's.")] string P; uint16 q; };)");
    const ClassDeclaration& b = declared.of("b");
    EXPECT_EQ(scalar_text(find_qualifier(b.qualifiers, "Description")->value), "Top.");
    EXPECT_TRUE(find_qualifier(b.qualifiers, "Description")->propagated);
    EXPECT_EQ(find_qualifier(b.qualifiers, "Version"), nullptr);
    ASSERT_EQ(b.properties.size(), 3U);
    const PropertyDeclaration& p = b.properties[0];
    EXPECT_EQ(p.name, "P");
    EXPECT_EQ(p.origin, "A");
    EXPECT_FALSE(p.propagated);
    EXPECT_TRUE(is_key(p));
    EXPECT_EQ(scalar_text(p.defaultValue), "x");
    EXPECT_EQ(scalar_text(find_qualifier(p.qualifiers, "Description")->value), "B's.");
    EXPECT_TRUE(b.properties[1].propagated);
    EXPECT_EQ(b.properties[2].origin, "B");
}

TEST(ClassSchemas, WhatIsBelowWhat) {
    const Declared declared("class A {}; class B : A {}; class C : B {}; class D {};");
    const ClassSchema& schema = declared.schema;
    EXPECT_TRUE(schema.is_a("c", "a"));
    EXPECT_TRUE(schema.is_a("A", "A"));
    EXPECT_FALSE(schema.is_a("A", "C"));
    EXPECT_FALSE(schema.is_a("X", "X"));
    const auto names = [&schema](const std::string& top, bool deep) {
        std::string all;
        for (const ClassDeclaration* below : schema.subclasses(top, deep)) {
            all += below->name;
        }
        return all;
    };
    EXPECT_EQ(names("", false), "AD");
    EXPECT_EQ(names("", true), "ABCD");
    EXPECT_EQ(names("A", false), "B");
    EXPECT_EQ(names("A", true), "BC");
    EXPECT_EQ(names("D", true), "");
}

} // namespace
