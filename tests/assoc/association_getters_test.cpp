// The association getters: a request for one association is answered with the references of its own keys.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "include/associations.h"
#include "tests/assoc/association_test.h"

using namespace golden;
using test_support::Key;
using test_support::Object;
using test_support::Sets;

namespace {

using Getter = int(const CMPIObjectPath*, const CMPIResult*);

struct GetterRow {
    const char* name;
    Getter* getter;
    const char *role1, *role2;
    const char* className; // one that is routed to it
};

const std::vector<GetterRow> GETTERS{
    {"get_ant_dep_instance", get_ant_dep_instance, "Antecedent", "Dependent", "KESTO_FCIPTCPEndpoint"},
    {"get_managed_setting_instance", get_managed_setting_instance, "ManagedElement", "SettingData",
     "KESTO_FCIPElementSettingData"},
    {"get_managed_stats_instance", get_managed_stats_instance, "ManagedElement", "Stats",
     "KESTO_IPEndPointStatisticalData"},
    {"get_group_part_instance", get_group_part_instance, "GroupComponent", "PartComponent",
     "KESTO_FCIPPEBasedOn"},
};

void PrintTo(const GetterRow& row, std::ostream* out) {
    *out << row.name;
}

class AssociationGetter : public AssociationTest, public testing::WithParamInterface<GetterRow> {
  protected:
    void SetUp() override {
        AssociationTest::SetUp();
        first = broker.path(NAMESPACE, "KESTO_First", {{"Name", "one"}});
        second = broker.path(NAMESPACE, "KESTO_Second", {{"Name", "two"}});
        third = broker.path(NAMESPACE, "KESTO_Third", {{"Name", "three"}});
    }

    const char* role1() const { return GetParam().role1; }
    const char* role2() const { return GetParam().role2; }
    Answer get(const std::vector<Key>& keys, const char* className = nullptr) {
        const CMPIObjectPath* op =
            broker.path("root/elsewhere", className != nullptr ? className : GetParam().className, keys);
        emulator::clear_calls();
        return walk([&](const CMPIResult* result) { return GetParam().getter(op, result); }, &status);
    }
    void expect_association(const Answer& answer, const CMPIObjectPath* ref1, const CMPIObjectPath* ref2) {
        EXPECT_EQ(status, 0);
        ASSERT_EQ(answer.instances.size(), 1U);
        EXPECT_EQ(answer.paths.size(), 0U);
        EXPECT_EQ(answer.instances[0].path().name_space(), "root/elsewhere");
        EXPECT_EQ(answer.instances[0].sets(), (Sets{{role1(), CMPI_ref, broker.recorded(ref1)},
                                                    {role2(), CMPI_ref, broker.recorded(ref2)}}));
    }
    void expect_missing(const Answer& answer) {
        EXPECT_EQ(status, -1);
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(emulator::count("association_class_build_instance_path"), 0U);
    }

    CMPIObjectPath* first = nullptr;
    CMPIObjectPath* second = nullptr;
    CMPIObjectPath* third = nullptr;
};

TEST_P(AssociationGetter, EchoesTheReferencesOfItsKeys) {
    const Answer answer = get({{role1(), first}, {role2(), second}});
    expect_association(answer, first, second);
    EXPECT_EQ(answer.instances.at(0).class_name(), GetParam().className);
}

TEST_P(AssociationGetter, KeepsTheClientsSpellingOfTheClass) {
    const std::string asked = in_mixed_case(GetParam().className);
    const Answer answer = get({{role1(), first}, {role2(), second}}, asked.c_str());
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), asked);
}

TEST_P(AssociationGetter, TakesKeysInAnyOrderAmongOthers) {
    expect_association(
        get({{"Other", third}, {role2(), second}, {"Name", "text"}, {role1(), first}, {"More", third}}),
        first, second);
}

TEST_P(AssociationGetter, TakesRolesInAnyLetterCase) {
    expect_association(get({{in_mixed_case(role1()), first}, {in_mixed_case(role2()), second}}), first,
                       second);
}

TEST_P(AssociationGetter, LetsALaterKeyOfARoleReplaceAnEarlierOne) {
    expect_association(get({{role1(), third}, {role2(), third}, {role1(), first}, {role2(), second}}), first,
                       second);
}

TEST_P(AssociationGetter, WithoutKeysReturnsNothing) {
    expect_missing(get({}));
}

TEST_P(AssociationGetter, WithoutOneOfItsReferencesReturnsNothing) {
    expect_missing(get({{role1(), first}}));
    expect_missing(get({{role2(), second}}));
    expect_missing(get({{"Other", first}, {"Another", second}}));
}

TEST_P(AssociationGetter, DoesNotTakeAKeyOfAnotherTypeForAReference) {
    expect_missing(get({{role1(), "KESTO_First.Name=\"one\""}, {role2(), second}}));
    expect_missing(get({{role1(), first}, {role2(), "two"}}));
    expect_missing(get({{role1(), first}, {role2(), CMPI_uint32, 2}}));
}

TEST_P(AssociationGetter, DoesNotTakeAMissingReferenceForOne) {
    expect_missing(get({{role1(), static_cast<const CMPIObjectPath*>(nullptr)}, {role2(), second}}));
    expect_missing(get({{role1(), first}, {role2(), static_cast<const CMPIObjectPath*>(nullptr)}}));
}

TEST_P(AssociationGetter, DoesNotLookTheReferencedObjectsUp) {
    get({{role1(), first}, {role2(), second}});
    EXPECT_EQ(emulator::count("association_class_build_instance_path"), 1U);
    for (const char* service : {"fcip_get_link_entry", "fcip_get_entity_entry", "pm_cim_get_port_info"}) {
        EXPECT_EQ(emulator::count(service), 0U) << service;
    }
}

TEST_P(AssociationGetter, ReturnsWhatThePlatformMakesEvenIfThatIsNull) {
    emulator::fail_always("association_class_build_instance_path");
    const Answer answer = get({{role1(), first}, {role2(), second}});
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].kind(), Object::Null);
    EXPECT_EQ(status, 0);
}

TEST_P(AssociationGetter, TracesTheKeysOfGroupPartsOnly) {
    const Answer answer = get({{"Other", third}, {role2(), second}, {role1(), first}});
    const std::string keys = std::string("Key Other \nKey ") + role2() + " \nKey " + role1() + " \n";
    EXPECT_EQ(answer.output, GetParam().getter == get_group_part_instance ? keys : "");
}

TEST_P(AssociationGetter, CutsTheNamesOfKeysAt253Characters) {
    const Answer answer = get({{std::string(300, 'k'), third}, {role1(), first}, {role2(), second}});
    expect_association(answer, first, second);
    if (GetParam().getter == get_group_part_instance) {
        EXPECT_EQ(answer.output.substr(0, answer.output.find('\n') + 1),
                  "Key " + std::string(253, 'k') + " \n");
    }
}

struct GetterName {
    std::string operator()(const testing::TestParamInfo<GetterRow>& info) const { return info.param.name; }
};
INSTANTIATE_TEST_SUITE_P(Each, AssociationGetter, testing::ValuesIn(GETTERS), GetterName());

} // namespace
