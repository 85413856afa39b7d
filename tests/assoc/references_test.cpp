// The reference functions, row by row and in both forms: the association that ties the source to its other
// end. An instance is compared by its path and its properties, which are the keys of the name.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include "tests/assoc/association_test.h"
#include "tests/assoc/reference_rows.h"

using namespace golden;
using test_support::Failure;
using test_support::for_each_effect;
using test_support::Make;
using test_support::Object;
using test_support::RecordedPath;
using test_support::ROW_FAILURES;
using test_support::STATUS_FAILURES;

namespace {

using Paths = std::vector<RecordedPath>;
using Texts = std::vector<std::string>;
using Parameter = std::tuple<Form, ReferenceRow>;

class ReferenceRows : public AssociationTest, public testing::WithParamInterface<Parameter> {
  protected:
    Form form() const { return std::get<0>(GetParam()); }
    const ReferenceRow& row() const { return std::get<1>(GetParam()); }
    std::string function() const { return row().source->function(form()); }

    Answer ask(const std::string& key, const std::string& asked) {
        Answer answer = call(form(), *row().source, key, asked.c_str());
        EXPECT_TRUE(form() == Form::Names ? answer.instances.empty() : answer.paths.empty());
        return answer;
    }
    std::string key() const { return hit_key(row().reading); }
    Answer ask_hit() { return ask(key(), row().asked); }
    Paths expected_of_hit(const std::string& asked) const {
        return {row().reading == Reading::Port
                    ? expected_for_port(row(), asked, GIGABIT_PORT)
                    : expected(row(), asked, *hit_of(row().reading).tunnel(row().reading), key())};
    }

    // The one function that does not look whether its ends were made.
    bool does_not_test_its_ends() const { return function() == "get_ip_settings_references"; }

    void expect_end(const Answer& answer, const std::string& asked) const {
        EXPECT_EQ(status, 0);
        expect_whole_trace(answer.output, function(), row().source->result_line(asked));
    }
    void expect_missing_end(const Answer& answer) const {
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(status, -1);
        expect_trace_without_exit(answer.output, function(), row().source->result_line(row().asked));
    }
    void expect_nothing(const Answer& answer) const {
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(status, 0);
        EXPECT_TRUE(answer.output.starts_with(test_support::entering(function()) +
                                              row().source->result_line(row().asked)))
            << answer.output;
    }
    // Paths of ends among those that were made or released: all that are not of the association's class.
    std::size_t of_ends(const char* brokerFunction) const {
        const Texts calls = broker.call_texts(brokerFunction);
        const std::string association =
            std::string(" ") + (row().name != AS_ASKED ? row().name : row().asked);
        return static_cast<std::size_t>(
            std::count_if(calls.begin(), calls.end(),
                          [&](const std::string& text) { return !text.ends_with(association); }));
    }
};

std::string row_name(const testing::TestParamInfo<Parameter>& info) {
    const auto& [form, row] = info.param;
    return text_of(form) + "_" + row.source->name + "_" + row.asked;
}

// The rows of this kind, in both forms.
auto rows_that(bool (*belongs)(const ReferenceRow& row)) {
    std::vector<ReferenceRow> found;
    std::copy_if(REFERENCE_ROWS.begin(), REFERENCE_ROWS.end(), std::back_inserter(found), belongs);
    return testing::Combine(testing::ValuesIn(FORMS), testing::ValuesIn(found));
}

TEST_P(ReferenceRows, AssociationIsNamedAsTheRowSaysInAnyLetterCase) {
    const std::string asked = in_mixed_case(row().asked);
    const Answer answer = ask(key(), asked);
    EXPECT_EQ(associations_of(answer), expected_of_hit(asked));
    expect_end(answer, asked);
}

// The first two paths made are the ends, the third is the association.
TEST_P(ReferenceRows, PathThatTheBrokerCannotMakeIsAMissingEndOrNoAssociation) {
    const auto request = [&](std::size_t nth) {
        broker.clear_calls();
        const Answer answer = ask_hit();
        if (!broker.fault_hit()) {
            EXPECT_EQ(associations_of(answer), expected_of_hit(row().asked));
        } else if (nth > 2 || does_not_test_its_ends()) {
            for (const RecordedPath& returned : associations_of(answer)) {
                EXPECT_EQ(returned.kind(), Object::Null);
            }
            expect_end(answer, row().asked);
        } else {
            expect_missing_end(answer);
            EXPECT_EQ(of_ends("releaseObjectPath"), of_ends("newObjectPath") - 1)
                << "all ends but the one that was not made must be released";
        }
    };
    EXPECT_EQ(for_each_broker_failure(Make::ObjectPath, Failure::Null, request), 3U);
}

TEST_P(ReferenceRows, HitReleasesNothing) {
    broker.clear_calls();
    ask_hit();
    EXPECT_EQ(broker.call_texts("releaseObjectPath"), Texts{});
}

// The function gives its association, or nothing, or a missing end.
TEST_P(ReferenceRows, EachCallMayFailOnItsOwn) {
    const auto check = [&](const Answer& answer) {
        EXPECT_LE(answer.returned.size(), 1U);
        EXPECT_TRUE(status == 0 || status == -1) << status;
        if (status == -1) expect_missing_end(answer);
        if (does_not_test_its_ends()) return;
        for (const RecordedPath& made : associations_of(answer)) {
            EXPECT_TRUE(made.is_valid()) << made;
        }
    };
    for_each_failing_call([&] { return ask_hit(); }, check);
}

INSTANTIATE_TEST_SUITE_P(All, ReferenceRows, rows_that([](const ReferenceRow&) { return true; }), row_name);

class TunnelReferences : public ReferenceRows {};

TEST_P(TunnelReferences, EachKeyNamesItsTunnelAsTheRowReadsIt) {
    const bool makesAnEndOfTheKey = row().first.from == From::Key || row().second.from == From::Key;
    for (const Probe& probe : PROBES) {
        SCOPED_TRACE(std::string("key \"") + probe.key + "\"");
        const Tunnel* tunnel = probe.tunnel(row().reading);
        const Answer answer = ask(probe.key, row().asked);
        if (tunnel == nullptr) {
            expect_nothing(answer);
        } else if (makesAnEndOfTheKey && probe.key[0] != '7') {
            expect_missing_end(answer); // the key's number, read from its first character, is no port
        } else {
            EXPECT_EQ(associations_of(answer), Paths{expected(row(), row().asked, *tunnel, probe.key)});
            expect_end(answer, row().asked);
        }
        EXPECT_EQ(answer.doneCalls, 0U);
    }
}

TEST_P(TunnelReferences, FailedLookupReturnsNothing) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_get_link_entry", .where = "op=2"},
                    [&] { expect_nothing(ask_hit()); });
}

INSTANTIATE_TEST_SUITE_P(All, TunnelReferences,
                         rows_that([](const ReferenceRow& row) { return row.reading != Reading::Port; }),
                         row_name);

// Ends that are made of a tunnel need its profile; those of ports and systems do not.
class ReferencesOfTunnelEnds : public ReferenceRows {};

TEST_P(ReferencesOfTunnelEnds, EndWithoutItsProfileIsMissing) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_entity_entry"}, [&] {
        const Answer answer = ask_hit();
        if (!does_not_test_its_ends()) return expect_missing_end(answer);
        // The builder complains about its ends and makes nothing, and that nothing is what is returned.
        EXPECT_NE(answer.output.find("swop : NULL\n"), std::string::npos) << answer.output;
        EXPECT_EQ(associations_of(answer), Paths{RecordedPath::of(Object::Null)});
        expect_end(answer, row().asked);
    });
}

bool is_of_a_tunnel(const ReferenceEnd& end) {
    return end.end != End::HostingSystem && end.end != End::FcPort && end.end != End::EthernetPort &&
           end.end != End::LanEndpoint && end.end != End::EthernetStatistics;
}
INSTANTIATE_TEST_SUITE_P(All, ReferencesOfTunnelEnds,
                         rows_that([](const ReferenceRow& row) { return row.has_end(is_of_a_tunnel); }),
                         row_name);

// The hosting system's lookup reports its failure with the value -1.
class ReferencesOfHostedEnds : public ReferenceRows {};

TEST_P(ReferencesOfHostedEnds, HostingSystemThatIsMinusOneIsAMissingEnd) {
    for (const char* symbol : {"vsan_cim_get_vsanEntry", "dm_cim_get_dmEntry"}) {
        emulator::clear_faults();
        emulator::add_fault({.symbol = symbol});
        broker.clear_calls();
        expect_missing_end(ask_hit());
        EXPECT_EQ(broker.call_texts("releaseObjectPath").size(), broker.call_texts("newObjectPath").size());
    }
}

bool is_the_hosting_system(const ReferenceEnd& end) {
    return end.end == End::HostingSystem;
}
INSTANTIATE_TEST_SUITE_P(All, ReferencesOfHostedEnds, rows_that([](const ReferenceRow& row) {
                             return row.has_end(is_the_hosting_system);
                         }),
                         row_name);

// Rows in the form of instances only.
class ReferenceInstances : public ReferenceRows {};

TEST_P(ReferenceInstances, InstanceThatTheBrokerCannotMakeIsReturnedAsNull) {
    broker.fail_every(Make::Instance, Failure::Null);
    const Answer answer = ask_hit();
    EXPECT_EQ(associations_of(answer), Paths{RecordedPath::of(Object::Null)});
    expect_end(answer, row().asked);
}

TEST_P(ReferenceInstances, PropertyListIsNotUsed) {
    const char* properties[] = {"NoSuchProperty", nullptr};
    const Answer answer = call(row().source->instances, key().c_str(), row().asked, properties);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.instances[0].filters().empty());
    EXPECT_EQ(associations_of(answer), expected_of_hit(row().asked));
}

INSTANTIATE_TEST_SUITE_P(All, ReferenceInstances,
                         testing::Combine(testing::Values(Form::Instances),
                                          testing::ValuesIn(REFERENCE_ROWS)),
                         row_name);

// What every source's two functions do with an association class that they do not know.
class ReferenceSources : public AssociationTest,
                         public testing::WithParamInterface<std::tuple<Form, const ReferenceSource*>> {
  protected:
    const ReferenceSource& source() const { return *std::get<1>(GetParam()); }
    std::string function() const { return source().function(std::get<0>(GetParam())); }

    // Asks, and expects to be answered at once.
    Answer ask_for_nothing(const char* key, const char* asked) {
        Answer answer = call(std::get<0>(GetParam()), source(), key, asked);
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(status, 0);
        EXPECT_EQ(answer.platformCalls, (Texts{"mutex_lock", "mutex_unlock"}));
        return answer;
    }
};

TEST_P(ReferenceSources, WithoutAnAssociationClassReturnNothing) {
    for (const char* key : {"7_anything", "0_10.0.0.7", "0_7", GIGABIT_PORT_TEXT}) {
        const std::string output = ask_for_nothing(key, nullptr).output;
        EXPECT_TRUE(output.starts_with(test_support::entering(function()))) << output;
    }
}

TEST_P(ReferenceSources, UnknownAssociationClassReturnsNothing) {
    for (const char* asked : {"KESTO_NoSuchAssociation", "", "KESTO_FCIPElementSettingDat"}) {
        SCOPED_TRACE(asked);
        EXPECT_EQ(ask_for_nothing("7_anything", asked).output, test_support::entering(function()) +
                                                                   source().result_line(asked) +
                                                                   test_support::exiting(function()));
    }
}

std::string source_name(const testing::TestParamInfo<std::tuple<Form, const ReferenceSource*>>& info) {
    return text_of(std::get<0>(info.param)) + "_" + std::get<1>(info.param)->name;
}
INSTANTIATE_TEST_SUITE_P(All, ReferenceSources,
                         testing::Combine(testing::ValuesIn(FORMS), testing::ValuesIn(REFERENCE_SOURCES)),
                         source_name);

} // namespace
