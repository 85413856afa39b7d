// Operations on classes and qualifiers, and enumerations over the classes below one.
#include <string>
#include <vector>

#include "tests/server/probe_service.h"

namespace {

using List = std::vector<std::string>;

class ClassOperations : public ProbeService {
  protected:
    Response get_class(const std::string& name, const std::string& more = "") const {
        return ask("GetClass", parameter("ClassName", class_name(name)) + more);
    }
    List names(const std::string& parameters) const {
        return ask("EnumerateClassNames", parameters).texts("//IRETURNVALUE/CLASSNAME/@NAME");
    }
};

std::string flag(const std::string& name, bool given) {
    return parameter(name, value(given ? "true" : "false"));
}
std::string wanted(const List& properties) {
    return parameter("PropertyList", value_array(properties));
}
std::string above(const std::string& name) {
    return parameter("ClassName", class_name(name));
}

TEST_F(ClassOperations, AClassComesWithWhatItDeclaresItself) {
    const Response response = get_class("probe_thing");
    EXPECT_EQ(response.text("//IRETURNVALUE/CLASS/@NAME"), "Probe_Thing");
    EXPECT_EQ(response.text("//CLASS/@SUPERCLASS"), "Probe_Base");
    EXPECT_EQ(response.text("//CLASS/QUALIFIER[@NAME='Description']/VALUE"), "Two of these are served.");
    EXPECT_EQ(response.texts("//CLASS/PROPERTY/@NAME"), (List{"Size", "Colour"}));
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Colour']/@TYPE"), "string");
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Colour']/VALUE"), "red");
    EXPECT_EQ(response.texts("//PROPERTY[@NAME='Colour']/QUALIFIER[@NAME='ValueMap']/VALUE.ARRAY/VALUE"),
              (List{"red", "blue"}));
    EXPECT_EQ(response.text("//PROPERTY.ARRAY[@NAME='Marks']/@ARRAYSIZE"), "3");
    EXPECT_EQ(response.texts("//PROPERTY.ARRAY/VALUE.ARRAY/VALUE"), (List{"1", "-3"}));
    EXPECT_EQ(response.count("//PROPERTY.ARRAY/VALUE.ARRAY/VALUE.NULL"), 1U);
    EXPECT_EQ(response.text("//METHOD/@NAME"), "Reset");
    EXPECT_EQ(response.text("//METHOD/PARAMETER/@TYPE"), "uint16");
    EXPECT_EQ(response.text("//METHOD/PARAMETER.REFERENCE/@REFERENCECLASS"), "Probe_Thing");
    EXPECT_EQ(response.count("//*[@CLASSORIGIN]"), 0U);
}

TEST_F(ClassOperations, InheritedPropertiesComeWhenAskedFor) {
    const Response response =
        get_class("Probe_Thing", flag("LocalOnly", false) + flag("IncludeClassOrigin", true));
    EXPECT_EQ(response.texts("//CLASS/PROPERTY/@NAME"), (List{"Name", "Size", "Colour"}));
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Name']/@PROPAGATED"), "true");
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Name']/@CLASSORIGIN"), "Probe_Base");
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Size']/@CLASSORIGIN"), "Probe_Base");
    EXPECT_EQ(response.count("//PROPERTY[@NAME='Size'][@PROPAGATED]"), 0U);
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Size']/VALUE"), "7");
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Name']/QUALIFIER[@NAME='Key']/@OVERRIDABLE"), "false");
    EXPECT_EQ(response.text("//PROPERTY[@NAME='Colour']/@CLASSORIGIN"), "Probe_Thing");
    EXPECT_EQ(response.text("//METHOD/@CLASSORIGIN"), "Probe_Thing");
    EXPECT_EQ(response.count("//CLASS/QUALIFIER[@NAME='Abstract']"), 0U);
}

TEST_F(ClassOperations, QualifiersAndPropertiesCanBeLeftOut) {
    const Response response = get_class(
        "Probe_Thing", flag("IncludeQualifiers", false) + flag("LocalOnly", false) + wanted({"name", "No"}));
    EXPECT_EQ(response.count("//QUALIFIER"), 0U);
    EXPECT_EQ(response.texts("//CLASS/PROPERTY/@NAME"), List{"Name"});
    EXPECT_EQ(response.count("//PROPERTY.ARRAY"), 0U);
    EXPECT_EQ(get_class("Probe_Thing", parameter("PropertyList", "<VALUE.ARRAY/>")).count("//PROPERTY"), 0U);
}

TEST_F(ClassOperations, AnAssociationComesWithItsReferences) {
    const Response response = get_class("Probe_Part");
    EXPECT_EQ(response.text("//CLASS/QUALIFIER[@NAME='Association']/VALUE"), "TRUE");
    EXPECT_EQ(response.texts("//PROPERTY.REFERENCE/@REFERENCECLASS"), (List{"Probe_Base", "Probe_Piece"}));
}

TEST_F(ClassOperations, AClassThatIsNotThereIsNotFound) {
    const Response response = get_class("Probe_Nowhere");
    EXPECT_EQ(response.error_code(), 6);
    EXPECT_EQ(response.error_description(), "there is no class Probe_Nowhere");
}

TEST_F(ClassOperations, NamesOfTheClassesBelow) {
    EXPECT_EQ(names(above("Probe_Base")), (List{"Probe_Thing", "Probe_Odd"}));
    const List top = {"Probe_Base",   "Probe_Piece",   "Probe_Connection", "Probe_Part",
                      "Probe_Denied", "Probe_Unheard", "Probe_Broken"};
    EXPECT_EQ(names(""), top);
    EXPECT_EQ(names(flag("DeepInheritance", true)).size(), 25U);
    EXPECT_EQ(names(above("Probe_Thing")), List{});
    EXPECT_EQ(ask("EnumerateClassNames", above("Probe_Nowhere")).error_code(), 5);
}

TEST_F(ClassOperations, ClassesBelowComeWithTheirDeclarations) {
    const Response response = ask("EnumerateClasses", above("Probe_Base"));
    EXPECT_EQ(response.texts("//IRETURNVALUE/CLASS/@NAME"), (List{"Probe_Thing", "Probe_Odd"}));
    EXPECT_EQ(response.count("//PROPERTY[@NAME='Name']"), 0U);
    EXPECT_NE(response.count("//QUALIFIER"), 0U);
    const Response whole = ask("EnumerateClasses", above("Probe_Base") + flag("LocalOnly", false) +
                                                       flag("IncludeQualifiers", false));
    EXPECT_EQ(whole.count("//PROPERTY[@NAME='Name']"), 2U);
    EXPECT_EQ(whole.count("//QUALIFIER"), 0U);
    EXPECT_EQ(ask("EnumerateClasses", above("Probe_Nowhere")).error_code(), 5);
}

TEST_F(ClassOperations, DeclarationsOfQualifiers) {
    const Response one = ask("GetQualifier", parameter("QualifierName", value("abstract")));
    EXPECT_EQ(one.text("//IRETURNVALUE/QUALIFIER.DECLARATION/@NAME"), "Abstract");
    EXPECT_EQ(one.text("//QUALIFIER.DECLARATION/@TYPE"), "boolean");
    EXPECT_EQ(one.text("//QUALIFIER.DECLARATION/@ISARRAY"), "false");
    EXPECT_EQ(one.text("//QUALIFIER.DECLARATION/@TOSUBCLASS"), "false");
    EXPECT_EQ(one.text("//QUALIFIER.DECLARATION/VALUE"), "FALSE");
    EXPECT_EQ(one.text("//SCOPE/@CLASS"), "true");
    EXPECT_EQ(one.count("//SCOPE/@PROPERTY"), 0U);
    EXPECT_EQ(ask("EnumerateQualifiers", "").count("//IRETURNVALUE/QUALIFIER.DECLARATION"), 7U);
    const Response none = ask("GetQualifier", parameter("QualifierName", value("None")));
    EXPECT_EQ(none.error_code(), 6);
    EXPECT_EQ(none.error_description(), "there is no qualifier None");
}

TEST_F(ClassOperations, TraversalsAmongClasses) {
    const std::string thing = parameter("ObjectName", class_name("Probe_Thing"));
    EXPECT_EQ(ask("AssociatorNames", thing).texts("//OBJECTPATH/CLASSPATH/CLASSNAME/@NAME"),
              (List{"Probe_Thing", "Probe_Piece"}));
    EXPECT_EQ(ask("AssociatorNames", thing).text("//CLASSPATH/NAMESPACEPATH/HOST"), "testhost");
    EXPECT_EQ(ask("ReferenceNames", thing).texts("//OBJECTPATH/CLASSPATH/CLASSNAME/@NAME"),
              (List{"Probe_Link", "Probe_Twin", "Probe_Part", "Probe_Denied"}));
    const Response far = ask("Associators", thing + parameter("ResultRole", value("piece")));
    EXPECT_EQ(far.texts("//VALUE.OBJECTWITHPATH/CLASSPATH/CLASSNAME/@NAME"), List{"Probe_Piece"});
    EXPECT_EQ(far.texts("//VALUE.OBJECTWITHPATH/CLASS/@NAME"), List{"Probe_Piece"});
    const Response links = ask("References", thing + parameter("Role", value("Whole")));
    EXPECT_EQ(links.texts("//VALUE.OBJECTWITHPATH/CLASS/@NAME"), List{"Probe_Part"});
    const auto through = [&](const std::string& association) {
        return ask("AssociatorNames", thing + parameter("AssocClass", class_name(association)))
            .texts("//CLASSNAME/@NAME");
    };
    EXPECT_EQ(through("Probe_Connection"), List{"Probe_Thing"});
    EXPECT_EQ(through("Probe_Unheard"), List{});
}

TEST_F(ClassOperations, EnumerationsCoverTheClassesBelow) {
    // Probe_Thing has two names, Probe_Odd one and two things that are none.
    EXPECT_EQ(ask_class("EnumerateInstanceNames", "Probe_Base")
                  .texts("//INSTANCENAME/KEYBINDING[@NAME='Name']/KEYVALUE"),
              (List{"one", "two", "only"}));
    EXPECT_EQ(ask_class("EnumerateInstances", "Probe_Base").count("//VALUE.NAMEDINSTANCE"), 4U);
}

TEST_F(ClassOperations, WithoutDeepInheritanceInstancesHaveThePropertiesOfTheClassThatIsAskedFor) {
    const Response response = ask("EnumerateInstances", above("Probe_Base") + flag("DeepInheritance", false));
    EXPECT_EQ(response.count("//VALUE.NAMEDINSTANCE"), 4U);
    EXPECT_EQ(response.count("//PROPERTY[@NAME='Colour']"), 0U);
    EXPECT_EQ(response.count("//PROPERTY[@NAME='Name']"), 4U);
}

TEST_F(ClassOperations, LocalOnlyLeavesOutWhatAnInstanceInherits) {
    const std::string thing = parameter("InstanceName", thing_name("one"));
    EXPECT_EQ(ask("GetInstance", thing + flag("LocalOnly", true)).texts("//PROPERTY/@NAME"), List{"Colour"});
    EXPECT_EQ(ask("GetInstance", thing).texts("//PROPERTY/@NAME"), (List{"Name", "Colour"}));
    EXPECT_EQ(ask("EnumerateInstances", above("Probe_Thing") + flag("LocalOnly", true))
                  .count("//PROPERTY[@NAME='Name']"),
              0U);
}

TEST_F(ClassOperations, InstancesShowQualifiersAndOriginOfTheirPropertiesOnDemand) {
    const std::string thing = parameter("InstanceName", thing_name("one"));
    const Response plain = ask("GetInstance", thing);
    EXPECT_EQ(plain.count("//QUALIFIER"), 0U);
    EXPECT_EQ(plain.count("//PROPERTY[@CLASSORIGIN]"), 0U);
    const Response full =
        ask("GetInstance", thing + flag("IncludeQualifiers", true) + flag("IncludeClassOrigin", true));
    EXPECT_EQ(full.text("//PROPERTY[@NAME='Name']/@CLASSORIGIN"), "Probe_Base");
    EXPECT_EQ(full.text("//PROPERTY[@NAME='Colour']/QUALIFIER[@NAME='Description']/VALUE"), "A colour.");
    EXPECT_EQ(full.text("//INSTANCE/QUALIFIER[@NAME='Description']/VALUE"), "Two of these are served.");
}

TEST_F(ClassOperations, GetPropertyReturnsTheValueAlone) {
    const std::string thing = parameter("InstanceName", thing_name("one"));
    const Response colour = ask("GetProperty", thing + parameter("PropertyName", value("colour")));
    EXPECT_EQ(colour.text("//IRETURNVALUE/VALUE"), "blue");
    const Response size = ask("GetProperty", thing + parameter("PropertyName", value("Size")));
    EXPECT_EQ(size.count("//IRETURNVALUE"), 1U);
    EXPECT_EQ(size.count("//IRETURNVALUE/*"), 0U);
    const Response none = ask("GetProperty", thing + parameter("PropertyName", value("Weight")));
    EXPECT_EQ(none.error_code(), 12);
    EXPECT_EQ(none.error_description(), "Probe_Thing has no property Weight");
    const std::string missing = parameter("InstanceName", thing_name("missing"));
    EXPECT_EQ(ask("GetProperty", missing + parameter("PropertyName", value("Size"))).error_code(), 6);
}

} // namespace
