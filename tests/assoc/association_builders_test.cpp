// The association builders: five families that tie two object paths together, as an instance or as a path.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "include/associations.h"
#include "tests/assoc/association_test.h"

using namespace golden;
using test_support::Failure;
using test_support::Make;
using test_support::Object;
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

// What a builder makes in one form.
class AssociationBuilder : public AssociationTest,
                           public testing::WithParamInterface<std::tuple<Form, Family>> {
  protected:
    void SetUp() override {
        AssociationTest::SetUp();
        first = broker.path(NAMESPACE, "KESTO_First", {{"InstanceID", "1"}});
        second = broker.path(NAMESPACE, "KESTO_Second", {{"InstanceID", "2"}});
        withoutHandle = *first;
        withoutHandle.hdl = nullptr;
        broker.clear_calls();
    }

    Form form() const { return std::get<0>(GetParam()); }
    const Family& family() const { return std::get<1>(GetParam()); }
    bool makes_paths() const { return form() == Form::Names; }
    // The broker that makes the object: a second one, where the builder takes it as an argument.
    bool takes_a_broker() const { return makes_paths() || family().instance != nullptr; }
    RecordingBroker& maker() { return takes_a_broker() ? other : broker; }

    // The association as a path whose keys are the references, in both forms. `output` is what was printed.
    RecordedPath make(const CMPIObjectPath* a, const CMPIObjectPath* b) {
        RecordedPath made;
        output = test_support::printed_by(
            [&] { made = locked([&] { return makes_paths() ? path(a, b) : instance(a, b); }); });
        return made;
    }
    RecordedPath path(const CMPIObjectPath* a, const CMPIObjectPath* b) {
        return other.recorded(family().path(CLASS, NAMESPACE, a, b, other.cmpi()));
    }
    RecordedPath instance(const CMPIObjectPath* a, const CMPIObjectPath* b) {
        const test_support::RecordedInstance made =
            maker().recorded(takes_a_broker() ? family().instance(CLASS, NAMESPACE, a, b, other.cmpi())
                                              : family().ownBrokerInstance(CLASS, NAMESPACE, a, b));
        if (!made.is_valid()) return RecordedPath::of(made.kind());
        EXPECT_TRUE(made.path().keys().empty());
        EXPECT_TRUE(made.filters().empty());
        return {made.path().name_space(), made.class_name(), made.sets(), made.path().host()};
    }
    // What the references are set with.
    const char* setter() const { return makes_paths() ? "addKey" : "setProperty"; }
    // What cannot be referred to.
    std::vector<const CMPIObjectPath*> no_paths() const { return {nullptr, &withoutHandle}; }

    RecordingBroker other;
    CMPIObjectPath* first = nullptr;
    CMPIObjectPath* second = nullptr;
    CMPIObjectPath withoutHandle{};
    std::string output;
};

TEST_P(AssociationBuilder, TiesTwoReferencesInOrder) {
    Sets references{{family().role1, CMPI_ref, broker.recorded(first)},
                    {family().role2, CMPI_ref, broker.recorded(second)}};
    std::vector<std::string> wanted{"newObjectPath", "setHostname"};
    if (!makes_paths()) wanted.emplace_back("newInstance");
    wanted.insert(wanted.end(), 2, setter());
    if (family().flags) {
        references.push_back({"IsDefault", CMPI_uint16, 1});
        references.push_back({"IsCurrent", CMPI_uint16, 1});
        wanted.insert(wanted.end(), 2, setter());
    }
    EXPECT_EQ(make(first, second), RecordedPath(NAMESPACE, CLASS, references, HOST));
    EXPECT_EQ(output, "");
    std::vector<std::string> called;
    for (const test_support::Call& call : maker().calls()) {
        called.push_back(call.function());
    }
    EXPECT_EQ(called, wanted) << "and nothing is released";
    const RecordingBroker& idle = takes_a_broker() ? broker : other;
    EXPECT_EQ(idle.made(Make::ObjectPath) + idle.made(Make::Instance), 0U);
}

TEST_P(AssociationBuilder, WithoutAPathMakesNothing) {
    const std::string trace = !makes_paths() && family().tracesNullPath ? "path : NULL\n" : "";
    for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
        maker().fail_every(Make::ObjectPath, how);
        EXPECT_EQ(make(first, second).kind(), Object::Null);
        EXPECT_EQ(output, trace);
        EXPECT_EQ(maker().call_texts("newInstance").size(), 0U);
    }
    if (makes_paths()) return;
    EXPECT_EQ(make(nullptr, nullptr).kind(), Object::Null);
    EXPECT_EQ(output, trace) << "the path is tested before the references";
}

TEST_P(AssociationBuilder, WithoutItsFirstReferenceMakesNothingAndTracesSwop) {
    for (const CMPIObjectPath* missing : no_paths()) {
        EXPECT_EQ(make(missing, second).kind(), Object::Null);
        EXPECT_EQ(output, "swop : NULL\n");
    }
    EXPECT_EQ(maker().call_texts(setter()).size(), 0U);
    EXPECT_EQ(maker().call_texts("newInstance").size(), makes_paths() ? 0U : 2U)
        << "the instance is made before the test";
}

TEST_P(AssociationBuilder, WithoutItsSecondReferenceMakesNothingAndTracesPeop) {
    for (const CMPIObjectPath* missing : no_paths()) {
        EXPECT_EQ(make(first, missing).kind(), Object::Null);
        EXPECT_EQ(output, "peop : NULL\n");
    }
    EXPECT_EQ(maker().call_texts(setter()).size(), 0U);
}

TEST_P(AssociationBuilder, TestsItsFirstReferenceFirst) {
    for (const CMPIObjectPath* missing : no_paths()) {
        EXPECT_EQ(make(missing, nullptr).kind(), Object::Null);
        EXPECT_EQ(output, "swop : NULL\n");
    }
}

std::string family_name(const testing::TestParamInfo<std::tuple<Form, Family>>& info) {
    return text_of(std::get<0>(info.param)) + "_" + std::get<1>(info.param).name;
}
std::vector<Family> families_with_paths() {
    std::vector<Family> found = FAMILIES;
    std::erase_if(found, [](const Family& family) { return family.path == nullptr; });
    return found;
}
INSTANTIATE_TEST_SUITE_P(Paths, AssociationBuilder,
                         testing::Combine(testing::Values(Form::Names),
                                          testing::ValuesIn(families_with_paths())),
                         family_name);
INSTANTIATE_TEST_SUITE_P(Instances, AssociationBuilder,
                         testing::Combine(testing::Values(Form::Instances), testing::ValuesIn(FAMILIES)),
                         family_name);

class AssociationInstanceBuilder : public AssociationBuilder {};

TEST_P(AssociationInstanceBuilder, WithoutAnInstanceMakesNothing) {
    for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
        maker().fail_every(Make::Instance, how);
        EXPECT_EQ(make(first, second).kind(), Object::Null);
        EXPECT_EQ(output, "");
    }
}

INSTANTIATE_TEST_SUITE_P(Instances, AssociationInstanceBuilder,
                         testing::Combine(testing::Values(Form::Instances), testing::ValuesIn(FAMILIES)),
                         family_name);

} // namespace
