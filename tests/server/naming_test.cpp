#include "server/model/naming.h"

#include <cmpidt.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace cimserver;

Instance instance(std::initializer_list<const char*> properties) {
    Instance result;
    result.path.className = "A_Class";
    for (const char* name : properties) {
        result.set(name, Value::text(name));
    }
    return result;
}

std::vector<std::string> keys_of(const Instance& named) {
    std::vector<std::string> keys;
    const ObjectPath path = named_path(named);
    for (const NamedValue& key : path.keys.all()) {
        keys.push_back(key.name);
    }
    return keys;
}

using List = std::vector<std::string>;

TEST(Naming, KeysOfThePathAreEnough) {
    Instance named = instance({"InstanceID"});
    named.path.keys.set("Name", Value::text("n"));
    EXPECT_EQ(keys_of(named), List{"Name"});
}

TEST(Naming, SystemAndNameTogether) {
    EXPECT_EQ(
        keys_of(instance({"Colour", "Name", "SystemName", "CreationClassName", "SystemCreationClassName"})),
        (List{"SystemCreationClassName", "SystemName", "CreationClassName", "Name"}));
}

TEST(Naming, ADeviceIsNamedByItsIdAndNotByItsLabel) {
    EXPECT_EQ(keys_of(instance({"SystemName", "DeviceID", "Name"})), (List{"SystemName", "DeviceID"}));
}

TEST(Naming, AnInstanceIdIsEnough) {
    EXPECT_EQ(keys_of(instance({"SystemName", "InstanceID", "Name"})), List{"InstanceID"});
}

TEST(Naming, AnAssociationIsNamedByItsReferences) {
    Instance link = instance({"InstanceID"});
    link.set("Antecedent", Value::reference({"", "", "A", {}}));
    link.set("IsDefault", Value::integer(CMPI_uint16, std::uint64_t{1}));
    link.set("Dependent", Value::reference({"", "", "B", {}}));
    EXPECT_EQ(keys_of(link), (List{"Antecedent", "Dependent"}));
}

TEST(Naming, PropertiesKeptBackByAFilterStillName) {
    Instance filtered = instance({"InstanceID", "Colour"});
    filtered.apply_filter(NameSet{"Colour"});
    EXPECT_EQ(filtered.properties.size(), 1U);
    EXPECT_EQ(keys_of(filtered), List{"InstanceID"});
}

TEST(Naming, NullsDoNotName) {
    Instance nothing = instance({});
    nothing.set("InstanceID", Value::null(CMPI_string));
    EXPECT_EQ(keys_of(nothing), List{});
}

} // namespace
