// The places that list the classes, against the schema: docs/classes.md and the list of registrations.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "server/model/cim_class.h"
#include "tests/schema/schema_test.h"
#include "tests/support/class_document.h"

namespace schema_tests {
namespace {

using cimserver::ClassDeclaration;
using cimserver::PropertyDeclaration;
using cimserver::Qualifier;
using test_support::documented_class_rows;
using test_support::documented_classes;
using test_support::DocumentedProperty;

std::string text_of_qualifier(const PropertyDeclaration& property, const char* name) {
    const Qualifier* found = cimserver::find_qualifier(property.qualifiers, name);
    return found != nullptr && found->value.as_text() != nullptr ? *found->value.as_text() : "";
}

// The unit as people write it. Things that are counted have no unit of their own, only a name.
std::string unit_of(const PropertyDeclaration& property) {
    static const std::map<std::string, std::string> UNITS{
        {"", ""}, {"bit", "bits"}, {"byte", "bytes"}, {"second", "s"}, {"bit / second * 10^3", "kbit/s"}};
    const std::string unit = text_of_qualifier(property, "PUnit");
    if (unit == "count") return cimserver::lower_cased(text_of_qualifier(property, "Units"));
    const auto known = UNITS.find(unit);
    return known != UNITS.end() ? known->second : "the unknown unit " + unit;
}

// "`KESTO_StackSettings`, `CIM_SettingData`": up to the first class that is not ours.
std::string superclasses_of(const ClassDeclaration& declared) {
    std::string text;
    for (const ClassDeclaration* at = schema().find(declared.superclass); at != nullptr;
         at = schema().find(at->superclass)) {
        text += (text.empty() ? "`" : ", `") + at->name + "`";
        if (!at->name.starts_with("KESTO_")) break;
    }
    return text;
}

std::string ends_text(const ClassDeclaration& association) {
    std::string text;
    for (const auto& [role, className] : declared_ends(association)) {
        text += (text.empty() ? "`" : ", `") + role + "`: `" + className + "`";
    }
    return text;
}

TEST(ClassDocument, ShowsThePropertiesThatTheSchemaDeclares) {
    ASSERT_FALSE(documented_classes().empty());
    for (const auto& [className, documented] : documented_classes()) {
        const ClassDeclaration* declared = schema().find(className);
        ASSERT_NE(declared, nullptr) << className;
        std::map<std::string, DocumentedProperty> properties;
        for (const PropertyDeclaration* property : own_properties(*declared)) {
            properties[property->name] = {type_text(property->type), unit_of(*property),
                                          cimserver::is_key(*property)};
        }
        EXPECT_EQ(documented.properties, properties) << className;
    }
}

TEST(ClassDocument, ShowsTheSuperclassesThatTheSchemaDeclares) {
    for (const auto& [className, documented] : documented_classes()) {
        const ClassDeclaration* declared = schema().find(className);
        ASSERT_NE(declared, nullptr) << className;
        EXPECT_EQ(documented.superclasses, superclasses_of(*declared)) << className;
    }
    for (const auto& [className, cells] : documented_class_rows()) {
        const ClassDeclaration* declared = schema().find(className);
        ASSERT_NE(declared, nullptr) << className;
        EXPECT_EQ(cells.at(0), superclasses_of(*declared)) << className;
    }
}

TEST(ClassDocument, ShowsTheEndsThatTheSchemaDeclares) {
    for (const auto& [className, cells] : documented_class_rows()) {
        const ClassDeclaration* declared = schema().find(className);
        ASSERT_NE(declared, nullptr) << className;
        if (!declared->is_association()) continue;
        EXPECT_EQ(cells.at(1), ends_text(*declared)) << className;
    }
}

TEST(ClassDocument, HasAPlaceForEveryClassWithObjects) {
    std::set<std::string> documented;
    for (const auto& [className, properties] : documented_classes()) {
        documented.insert(className);
    }
    for (const auto& [className, cells] : documented_class_rows()) {
        documented.insert(className);
    }
    std::set<std::string> declared;
    for (const ClassDeclaration* declaration : concrete_classes()) {
        declared.insert(declaration->name);
    }
    EXPECT_EQ(documented, declared);
}

// The switch's own classes are served by the switch's management, and a name of the standard leads on from
// LAN endpoints.
TEST(Registrations, NameTheClassesThatTheProviderServesAsTheSchemaDoes) {
    const std::set<std::string> servedByTheSwitch{
        "KESTO_EthernetPort", "KESTO_FCPort", "KESTO_LogicalComputerSystem", "KESTO_PhysicalComputerSystem"};
    std::set<std::string> expected{"CIM_HostedAccessPoint"};
    for (const ClassDeclaration* declaration : concrete_classes()) {
        if (!servedByTheSwitch.contains(declaration->name)) expected.insert(declaration->name);
    }
    std::set<std::string> registered;
    for (const auto& [className, kinds] : registered_classes()) {
        registered.insert(className);
    }
    EXPECT_EQ(registered, expected);
}

TEST(Registrations, FollowAssociationsOnly) {
    for (const auto& [className, kinds] : registered_classes()) {
        const ClassDeclaration* declared = schema().find(className);
        ASSERT_NE(declared, nullptr) << className;
        EXPECT_EQ(kinds.associations, declared->is_association()) << className;
        EXPECT_TRUE(kinds.instances || kinds.associations) << className;
    }
}

} // namespace
} // namespace schema_tests
