// The association builders: five families that tie two object paths together, as an instance or as a path.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "include/associations.h"
#include "tests/assoc/association_test.h"

using namespace golden;
using test_support::Failure;
using test_support::Make;
using test_support::Object;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::RecordingBroker;
using test_support::Sets;

namespace {

constexpr const char* CLASS = "KESTO_SomeAssociation";

using InstanceBuilder = CMPIInstance*(const char*, const char*, const CMPIObjectPath*, const CMPIObjectPath*,
                                      const CMPIBroker*);
// Takes no broker, and uses the one of the latest factory call.
using OwnBrokerBuilder = CMPIInstance*(const char*, const char*, const CMPIObjectPath*,
                                       const CMPIObjectPath*);
using PathBuilder = CMPIObjectPath*(const char*, const char*, const CMPIObjectPath*, const CMPIObjectPath*,
                                    const CMPIBroker*);

struct Family {
    const char *name, *role1, *role2;
    InstanceBuilder* instance; // nullptr: the family has the next one
    OwnBrokerBuilder* ownBrokerInstance;
    PathBuilder* path;           // nullptr: the family has none
    bool flags = false;          // IsDefault and IsCurrent
    bool tracesNullPath = false; // "path : NULL" when the instance's path cannot be made
};

const std::vector<Family> FAMILIES{
    {"realize", "Antecedent", "Dependent", realize_build_instance, nullptr, realize_fill_reference},
    {"managed_setting", "ManagedElement", "SettingData", nullptr, managed_setting_build_instance,
     managed_setting_fill_reference, true},
    {"managed_stats", "ManagedElement", "Stats", managed_stats_build_instance, nullptr,
     managed_stats_fill_reference, false, true},
    {"group_part", "GroupComponent", "PartComponent", nullptr, group_part_build_instance,
     group_part_fill_reference},
    {"hba_si", "System", "InstalledSoftware", hba_si_build_instance, nullptr, nullptr},
};

void PrintTo(const Family& family, std::ostream* out) {
    *out << family.name;
}

class AssociationBuilder : public AssociationTest, public testing::WithParamInterface<Family> {
  protected:
    void SetUp() override {
        AssociationTest::SetUp();
        first = broker.path(NAMESPACE, "KESTO_First", {{"InstanceID", "1"}});
        second = broker.path(NAMESPACE, "KESTO_Second", {{"InstanceID", "2"}});
        withoutHandle = *first;
        withoutHandle.hdl = nullptr;
        broker.clear_calls();
    }

    const Family& family() const { return GetParam(); }
    // The broker that makes the instance: a second one, where the builder takes it as an argument.
    bool takes_a_broker() const { return family().instance != nullptr; }
    RecordingBroker& instance_broker() { return takes_a_broker() ? other : broker; }

    RecordedInstance instance(const CMPIObjectPath* a, const CMPIObjectPath* b) {
        RecordedInstance made;
        output = test_support::printed_by([&] {
            made = instance_broker().recorded(locked([&] {
                return takes_a_broker() ? family().instance(CLASS, NAMESPACE, a, b, other.cmpi())
                                        : family().ownBrokerInstance(CLASS, NAMESPACE, a, b);
            }));
        });
        return made;
    }
    RecordedPath path(const CMPIObjectPath* a, const CMPIObjectPath* b) {
        RecordedPath made;
        output = test_support::printed_by([&] {
            made =
                other.recorded(locked([&] { return family().path(CLASS, NAMESPACE, a, b, other.cmpi()); }));
        });
        return made;
    }
    Sets keys() const {
        Sets all{{family().role1, CMPI_ref, broker.recorded(first)},
                 {family().role2, CMPI_ref, broker.recorded(second)}};
        if (family().flags) {
            all.push_back({"IsDefault", CMPI_uint16, 1});
            all.push_back({"IsCurrent", CMPI_uint16, 1});
        }
        return all;
    }
    static std::vector<std::string> functions(const RecordingBroker& made) {
        std::vector<std::string> names;
        for (const test_support::Call& call : made.calls())
            names.push_back(call.function());
        return names;
    }

    // What cannot be referred to.
    std::vector<const CMPIObjectPath*> no_paths() const { return {nullptr, &withoutHandle}; }

    RecordingBroker other;
    CMPIObjectPath* first = nullptr;
    CMPIObjectPath* second = nullptr;
    CMPIObjectPath withoutHandle{};
    std::string output;
};

struct FamilyName {
    std::string operator()(const testing::TestParamInfo<Family>& info) const { return info.param.name; }
};

TEST_P(AssociationBuilder, MakesAnInstanceOfTwoReferencesInOrder) {
    const RecordedInstance made = instance(first, second);
    EXPECT_EQ(made.path(), RecordedPath(NAMESPACE, CLASS, {}, HOST));
    EXPECT_EQ(made.sets(), keys());
    EXPECT_TRUE(made.filters().empty());
    EXPECT_EQ(output, "");

    std::vector<std::string> wanted{"newObjectPath", "setHostname", "newInstance", "setProperty",
                                    "setProperty"};
    if (family().flags) wanted.insert(wanted.end(), 2, "setProperty");
    EXPECT_EQ(functions(instance_broker()), wanted) << "and nothing is released";
}

TEST_P(AssociationBuilder, InstanceWithoutAPathIsNull) {
    for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
        instance_broker().fail_every(Make::ObjectPath, how);
        EXPECT_EQ(instance(first, second).kind(), Object::Null);
        EXPECT_EQ(output, family().tracesNullPath ? "path : NULL\n" : "");
        EXPECT_EQ(instance_broker().call_texts("newInstance").size(), 0U);
    }
}

TEST_P(AssociationBuilder, InstanceThatTheBrokerCannotMakeIsNull) {
    for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
        instance_broker().fail_every(Make::Instance, how);
        EXPECT_EQ(instance(first, second).kind(), Object::Null);
        EXPECT_EQ(output, "");
    }
}

TEST_P(AssociationBuilder, InstanceWithoutItsFirstReferenceIsNullAndTracesSwop) {
    for (const CMPIObjectPath* missing : no_paths()) {
        EXPECT_EQ(instance(missing, second).kind(), Object::Null);
        EXPECT_EQ(output, "swop : NULL\n");
        EXPECT_EQ(instance_broker().call_texts("setProperty").size(), 0U);
    }
    EXPECT_EQ(instance_broker().call_texts("newInstance").size(), 2U)
        << "the instance is made before the test";
}

TEST_P(AssociationBuilder, InstanceWithoutItsSecondReferenceIsNullAndTracesPeop) {
    for (const CMPIObjectPath* missing : no_paths()) {
        EXPECT_EQ(instance(first, missing).kind(), Object::Null);
        EXPECT_EQ(output, "peop : NULL\n");
        EXPECT_EQ(instance_broker().call_texts("setProperty").size(), 0U);
    }
}

TEST_P(AssociationBuilder, InstanceTestsItsFirstReferenceFirst) {
    EXPECT_EQ(instance(nullptr, nullptr).kind(), Object::Null);
    EXPECT_EQ(output, "swop : NULL\n");
    EXPECT_EQ(instance(&withoutHandle, nullptr).kind(), Object::Null);
    EXPECT_EQ(output, "swop : NULL\n");
}

TEST_P(AssociationBuilder, InstanceTestsThePathBeforeTheReferences) {
    instance_broker().fail_every(Make::ObjectPath, Failure::Null);
    EXPECT_EQ(instance(nullptr, nullptr).kind(), Object::Null);
    EXPECT_EQ(output, family().tracesNullPath ? "path : NULL\n" : "");
}

TEST_P(AssociationBuilder, InstanceIsMadeByTheRightBroker) {
    instance(first, second);
    EXPECT_EQ(other.made(Make::Instance), takes_a_broker() ? 1U : 0U);
    EXPECT_EQ(broker.made(Make::Instance), takes_a_broker() ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(Family, AssociationBuilder, testing::ValuesIn(FAMILIES), FamilyName());

class AssociationPathBuilder : public AssociationBuilder {};

TEST_P(AssociationPathBuilder, MakesAPathOfTwoReferencesInOrder) {
    EXPECT_EQ(path(first, second), RecordedPath(NAMESPACE, CLASS, keys(), HOST));
    EXPECT_EQ(output, "");

    std::vector<std::string> wanted{"newObjectPath", "setHostname", "addKey", "addKey"};
    if (family().flags) wanted.insert(wanted.end(), 2, "addKey");
    EXPECT_EQ(functions(other), wanted) << "and nothing is released";
    EXPECT_EQ(broker.made(Make::ObjectPath), 0U) << "paths are made by the broker that is handed in";
}

TEST_P(AssociationPathBuilder, PathThatTheBrokerCannotMakeIsNullWithoutATrace) {
    for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
        other.fail_every(Make::ObjectPath, how);
        EXPECT_EQ(path(first, second).kind(), Object::Null);
        EXPECT_EQ(output, "");
    }
}

TEST_P(AssociationPathBuilder, PathWithoutItsFirstReferenceIsNullAndTracesSwop) {
    for (const CMPIObjectPath* missing : no_paths()) {
        EXPECT_EQ(path(missing, second).kind(), Object::Null);
        EXPECT_EQ(output, "swop : NULL\n");
        EXPECT_EQ(other.call_texts("addKey").size(), 0U);
    }
}

TEST_P(AssociationPathBuilder, PathWithoutItsSecondReferenceIsNullAndTracesPeop) {
    for (const CMPIObjectPath* missing : no_paths()) {
        EXPECT_EQ(path(first, missing).kind(), Object::Null);
        EXPECT_EQ(output, "peop : NULL\n");
        EXPECT_EQ(other.call_texts("addKey").size(), 0U);
    }
}

TEST_P(AssociationPathBuilder, PathTestsItsFirstReferenceFirst) {
    EXPECT_EQ(path(nullptr, nullptr).kind(), Object::Null);
    EXPECT_EQ(output, "swop : NULL\n");
}

std::vector<Family> families_with_paths() {
    std::vector<Family> found;
    std::copy_if(FAMILIES.begin(), FAMILIES.end(), std::back_inserter(found),
                 [](const Family& family) { return family.path != nullptr; });
    return found;
}

INSTANTIATE_TEST_SUITE_P(Family, AssociationPathBuilder, testing::ValuesIn(families_with_paths()),
                         FamilyName());

} // namespace
