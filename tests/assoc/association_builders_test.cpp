// The association builders: five families that tie two object paths together, as an instance or as a path.
#include <functional>

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

using InstanceBuilder = CMPIInstance*(const CMPIObjectPath*, const CMPIObjectPath*, const CMPIBroker*);
using PathBuilder = CMPIObjectPath*(const CMPIObjectPath*, const CMPIObjectPath*, const CMPIBroker*);

// The two builders that take no broker use the one of the latest factory call.
enum class BrokerFrom { Argument, Factory };

struct Family {
    const char* name;
    InstanceBuilder* instance;
    BrokerFrom broker;
    PathBuilder* path; // null: the family has none
    const char *role1, *role2;
    bool flags;          // IsDefault and IsCurrent
    bool tracesNullPath; // "path : NULL" when the instance's path cannot be made
};

// clang-format off
const std::vector<Family> FAMILIES{
    {"realize",
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker* broker) { return realize_build_instance(CLASS, NAMESPACE, a, b, broker); },
     BrokerFrom::Argument,
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker* broker) { return realize_fill_reference(CLASS, NAMESPACE, a, b, broker); },
     "Antecedent", "Dependent", false, false},
    {"managed_setting",
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker*) { return managed_setting_build_instance(CLASS, NAMESPACE, a, b); },
     BrokerFrom::Factory,
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker* broker) { return managed_setting_fill_reference(CLASS, NAMESPACE, a, b, broker); },
     "ManagedElement", "SettingData", true, false},
    {"managed_stats",
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker* broker) { return managed_stats_build_instance(CLASS, NAMESPACE, a, b, broker); },
     BrokerFrom::Argument,
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker* broker) { return managed_stats_fill_reference(CLASS, NAMESPACE, a, b, broker); },
     "ManagedElement", "Stats", false, true},
    {"group_part",
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker*) { return group_part_build_instance(CLASS, NAMESPACE, a, b); },
     BrokerFrom::Factory,
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker* broker) { return group_part_fill_reference(CLASS, NAMESPACE, a, b, broker); },
     "GroupComponent", "PartComponent", false, false},
    {"hba_si",
     [](const CMPIObjectPath* a, const CMPIObjectPath* b, const CMPIBroker* broker) { return hba_si_build_instance(CLASS, NAMESPACE, a, b, broker); },
     BrokerFrom::Argument, nullptr, "System", "InstalledSoftware", false, false},
};
// clang-format on

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
    RecordingBroker& instance_broker() { return family().broker == BrokerFrom::Argument ? other : broker; }

    RecordedInstance instance(const CMPIObjectPath* a, const CMPIObjectPath* b) {
        RecordedInstance made;
        output = test_support::printed_by([&] {
            made = instance_broker().recorded(locked([&] { return family().instance(a, b, other.cmpi()); }));
        });
        return made;
    }
    RecordedPath path(const CMPIObjectPath* a, const CMPIObjectPath* b) {
        RecordedPath made;
        output = test_support::printed_by(
            [&] { made = other.recorded(locked([&] { return family().path(a, b, other.cmpi()); })); });
        return made;
    }
    Sets members() const {
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

    RecordingBroker other;
    CMPIObjectPath* first = nullptr;
    CMPIObjectPath* second = nullptr;
    CMPIObjectPath withoutHandle{};
    std::string output;
};

struct FamilyName {
    std::string operator()(const testing::TestParamInfo<Family>& info) const { return info.param.name; }
};

// ---- Instances. ----

TEST_P(AssociationBuilder, MakesAnInstanceOfTwoReferencesInOrder) {
    const RecordedInstance made = instance(first, second);
    EXPECT_EQ(made.path(), RecordedPath(NAMESPACE, CLASS, {}, HOST));
    EXPECT_EQ(made.sets(), members());
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
    for (const CMPIObjectPath* missing :
         {static_cast<const CMPIObjectPath*>(nullptr), static_cast<const CMPIObjectPath*>(&withoutHandle)}) {
        EXPECT_EQ(instance(missing, second).kind(), Object::Null);
        EXPECT_EQ(output, "swop : NULL\n");
        EXPECT_EQ(instance_broker().call_texts("setProperty").size(), 0U);
    }
    EXPECT_EQ(instance_broker().call_texts("newInstance").size(), 2U)
        << "the instance is made before the test";
}

TEST_P(AssociationBuilder, InstanceWithoutItsSecondReferenceIsNullAndTracesPeop) {
    for (const CMPIObjectPath* missing :
         {static_cast<const CMPIObjectPath*>(nullptr), static_cast<const CMPIObjectPath*>(&withoutHandle)}) {
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
    EXPECT_EQ(other.made(Make::Instance), family().broker == BrokerFrom::Argument ? 1U : 0U);
    EXPECT_EQ(broker.made(Make::Instance), family().broker == BrokerFrom::Argument ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(Family, AssociationBuilder, testing::ValuesIn(FAMILIES), FamilyName());

// ---- Paths. ----

class AssociationPathBuilder : public AssociationBuilder {};

TEST_P(AssociationPathBuilder, MakesAPathOfTwoReferencesInOrder) {
    EXPECT_EQ(path(first, second), RecordedPath(NAMESPACE, CLASS, members(), HOST));
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
    for (const CMPIObjectPath* missing :
         {static_cast<const CMPIObjectPath*>(nullptr), static_cast<const CMPIObjectPath*>(&withoutHandle)}) {
        EXPECT_EQ(path(missing, second).kind(), Object::Null);
        EXPECT_EQ(output, "swop : NULL\n");
        EXPECT_EQ(other.call_texts("addKey").size(), 0U);
    }
}

TEST_P(AssociationPathBuilder, PathWithoutItsSecondReferenceIsNullAndTracesPeop) {
    for (const CMPIObjectPath* missing :
         {static_cast<const CMPIObjectPath*>(nullptr), static_cast<const CMPIObjectPath*>(&withoutHandle)}) {
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
