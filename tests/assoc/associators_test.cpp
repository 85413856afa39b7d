// The associator functions, row by row and in both forms: the objects at the far end of each association.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "tests/assoc/association_test.h"
#include "tests/assoc/associator_rows.h"

using namespace golden;
using emulator::Effect;
using test_support::Failure;
using test_support::Filter;
using test_support::for_each_effect;
using test_support::Make;
using test_support::Object;
using test_support::ROW_FAILURES;
using test_support::STATUS_FAILURES;

namespace {

using Texts = std::vector<std::string>;
using FarEnds = std::vector<FarEnd>;

class AssociatorRows : public AssociationTest, public testing::WithParamInterface<AssociatorRow> {
  protected:
    const AssociatorRow& row() const { return GetParam(); }
    bool returns_names() const { return row().form == Form::Names; }

    Answer ask(const std::string& key, const std::string& asked) {
        return call(row().form, *row().source, key, asked.c_str());
    }
    Answer ask_hit(const std::string& asked) { return ask(hit_key(row().reading), asked); }
    Answer ask_hit() { return ask_hit(row().asked); }

    Texts expected(const FarEnds& ends, const Tunnel& tunnel) const {
        Texts texts;
        for (const FarEnd& far : ends) {
            texts.push_back(object(row().form, far.end, far.className, tunnel));
        }
        return texts;
    }
    Texts expected_of_port(const FarEnds& ends) const {
        Texts texts;
        for (const FarEnd& far : ends) {
            texts.push_back(port_object(row().form, far.end, far.className, GIGABIT_PORT));
        }
        return texts;
    }
    Texts expected_of_hit(const FarEnds& ends) const {
        return row().reading == Reading::Port ? expected_of_port(ends)
                                              : expected(ends, *hit_of(row().reading).tunnel(row().reading));
    }
    Texts expected_of_hit() const { return expected_of_hit(row().far); }

    // What was returned, identified by the ends that it should be.
    Texts returned(const Answer& answer, const FarEnds& ends) const {
        Texts texts;
        for (std::size_t at = 0; at < answer.returned.size(); ++at) {
            if (returns_names() && at < answer.paths.size()) {
                texts.push_back(answer.paths[at].text());
            } else if (!returns_names() && at < answer.instances.size() && at < ends.size()) {
                texts.push_back(identity(ends[at].end, answer.instances[at]));
            } else {
                texts.push_back(testing::PrintToString(answer.returned[at]));
            }
        }
        return texts;
    }
    Texts returned(const Answer& answer) const { return returned(answer, row().far); }

    void expect_success(const Answer& answer) const {
        EXPECT_EQ(status, 0);
        EXPECT_EQ(answer.doneCalls, 0U);
        expect_whole_trace(answer.output, row().source->function(row().form));
    }
};

std::string row_name(const testing::TestParamInfo<AssociatorRow>& info) {
    const AssociatorRow& row = info.param;
    return text_of(row.form) + "_" + row.source->name + "_" + row.asked;
}

template <typename Predicate>
std::vector<AssociatorRow> rows_that(Predicate predicate) {
    std::vector<AssociatorRow> found;
    std::copy_if(associator_rows().begin(), associator_rows().end(), std::back_inserter(found), predicate);
    return found;
}

TEST_P(AssociatorRows, LetterCaseOfTheAssociationClassDoesNotMatter) {
    for (const std::string& spelled :
         {in_mixed_case(row().asked), in_mixed_case("x" + std::string(row().asked)).substr(1)}) {
        SCOPED_TRACE(spelled);
        EXPECT_EQ(returned(ask_hit(spelled)), expected_of_hit());
    }
}

INSTANTIATE_TEST_SUITE_P(All, AssociatorRows, testing::ValuesIn(associator_rows()), row_name);

// Rows whose key names a tunnel.
class TunnelAssociators : public AssociatorRows {};

TEST_P(TunnelAssociators, EachKeyNamesItsTunnelAsTheRowReadsIt) {
    for (const Probe& probe : PROBES) {
        SCOPED_TRACE(std::string("key \"") + probe.key + "\"");
        const Tunnel* tunnel = probe.tunnel(row().reading);
        const Answer answer = ask(probe.key, row().asked);
        EXPECT_EQ(returned(answer), tunnel == nullptr ? Texts{} : expected(row().far, *tunnel));
        expect_success(answer);
    }
}

TEST_P(TunnelAssociators, FailedLookupReturnsNothing) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_get_link_entry"}, [&] {
        const Answer answer = ask_hit();
        EXPECT_EQ(returned(answer), Texts{});
        expect_success(answer);
    });
}

// Only objects are returned, and the function comes to its end.
TEST_P(TunnelAssociators, EachCallMayFailOnItsOwn) {
    const auto check = [&](const Answer& answer) {
        for (const test_support::Returned& object : answer.returned) {
            EXPECT_TRUE(object.path.is_valid() && object.instance.is_valid())
                << testing::PrintToString(object);
        }
        expect_success(answer);
    };
    for_each_failing_call([&] { return ask_hit(); }, check);
}

TEST_P(TunnelAssociators, ObjectThatTheBrokerCannotMakeIsSkipped) {
    const std::vector<Make> names{Make::ObjectPath};
    const std::vector<Make> instances{Make::ObjectPath, Make::Instance};
    for (const Make what : returns_names() ? names : instances) {
        for_each_broker_failure(what, Failure::Null, [&](std::size_t nth) {
            const Answer answer = ask_hit();
            FarEnds left = row().far;
            if (broker.fault_hit() && nth <= left.size()) {
                left.erase(left.begin() + static_cast<std::ptrdiff_t>(nth - 1));
            }
            EXPECT_EQ(returned(answer, left), expected_of_hit(left));
            expect_success(answer);
        });
    }
}

INSTANTIATE_TEST_SUITE_P(All, TunnelAssociators, testing::ValuesIn(rows_that([](const AssociatorRow& row) {
                             return row.reading != Reading::Port;
                         })),
                         row_name);

// Rows whose key is a port's if-index.
class PortAssociators : public AssociatorRows {};

TEST_P(PortAssociators, KeyIsThePortsIfIndexWhateverFollowsIt) {
    for (const std::string key : {GIGABIT_PORT_TEXT, "-1694433280_text after it"}) {
        const Answer hit = ask(key, row().asked);
        EXPECT_EQ(returned(hit), expected_of_hit());
        expect_success(hit);
    }
}

TEST_P(PortAssociators, UnknownPortReturnsNothing) {
    for (const char* key : {"999", "", "no number"}) {
        SCOPED_TRACE(key);
        const Answer miss = ask(key, row().asked);
        EXPECT_EQ(returned(miss), Texts{});
        expect_success(miss);
    }
}

TEST_P(PortAssociators, NoTunnelIsLookedUp) {
    ask_hit();
    EXPECT_EQ(emulator::count("fcip_get_link_entry"), 0U);
}

INSTANTIATE_TEST_SUITE_P(All, PortAssociators, testing::ValuesIn(rows_that([](const AssociatorRow& row) {
                             return row.reading == Reading::Port;
                         })),
                         row_name);

// A failure of the platform, and the ends that cannot be made when it happens.
struct PlatformFailure {
    const char* symbol;
    const char* where;
    std::vector<Effect> effects;
    std::vector<End> breaks;
};

const std::vector<PlatformFailure>& failures_of_both() {
    static const std::vector<PlatformFailure> FAILURES{
        {"fcip_get_entity_entry",
         "",
         STATUS_FAILURES,
         {End::FcipEndpoint, End::TcpEndpoint, End::IpEndpoint, End::FcipSettings, End::TcpSettings,
          End::IpSettings, End::RemoteFcipPort, End::RemoteIpAccessPoint, End::RemoteTcpPort, End::Profile}},
        {"fcip_snmp_get_link_errors", "", ROW_FAILURES, {End::Statistics}},
        {"pm_cim_get_port_info",
         "",
         STATUS_FAILURES,
         {End::LanEndpoint, End::EthernetStatistics, End::EthernetPort}},
        {"pm_cim_find_interface", "", {Effect::Fail}, {End::FcPort}},
        {"vsan_cim_get_vsanEntry", "", STATUS_FAILURES, {End::HostingSystem}},
        {"dm_cim_get_dmEntry", "", STATUS_FAILURES, {End::HostingSystem}},
    };
    return FAILURES;
}

const std::vector<PlatformFailure>& failures_of_one(Form form) {
    static const std::vector<PlatformFailure> NAMES{
        {"fcip_get_entity_entry", "", STATUS_FAILURES, {End::Statistics}},
        {"fcip_get_link_entry", "op=1", STATUS_FAILURES, {End::Statistics}},
        {"fcport_fill_reference_pm", "", {Effect::Fail}, {End::FcPort}},
        {"switch_fill_reference_str", "", {Effect::Fail}, {End::HostingSystem}},
        {"switch_fill_reference", "", {Effect::Fail}, {End::PhysicalSystem}},
    };
    static const std::vector<PlatformFailure> INSTANCES{
        {emulator::LINE_CARD, "", {Effect::NoAnswer}, {End::Statistics}},
        {"cmi_req_resp", "", ROW_FAILURES, {End::IpSettings}},
        {"fcip_get_link_entry", "op=1", ROW_FAILURES, {End::TcpSettings}},
        {"pm_get_port_counters", "", STATUS_FAILURES, {End::EthernetStatistics}},
        {"fcport_build_instance_pm", "", {Effect::Fail}, {End::FcPort}},
        {"switch_build_instance_str", "", {Effect::Fail}, {End::HostingSystem}},
    };
    return form == Form::Names ? NAMES : INSTANCES;
}

// The IP endpoint's functions use the port block of IPEthernetEndpoint without a look at the status.
bool takes_the_block_whatever_the_status(const AssociatorRow& row, const PlatformFailure& failure) {
    return row.reading == Reading::IfIndexToken && std::string(failure.symbol) == "pm_cim_get_port_info";
}

// Rows below which a service can fail: all that return something but TCP statistical data.
class FailingAssociators : public AssociatorRows {};

TEST_P(FailingAssociators, EndThatThePlatformFailsIsSkipped) {
    std::vector<PlatformFailure> failures = failures_of_both();
    const std::vector<PlatformFailure>& others = failures_of_one(row().form);
    failures.insert(failures.end(), others.begin(), others.end());
    std::size_t tried = 0;
    for (const PlatformFailure& failure : failures) {
        FarEnds left = row().far;
        std::erase_if(left, [&](const FarEnd& far) {
            return std::find(failure.breaks.begin(), failure.breaks.end(), far.end) != failure.breaks.end();
        });
        if (left.size() == row().far.size()) continue; // not below this row
        std::vector<Effect> effects = failure.effects;
        if (takes_the_block_whatever_the_status(row(), failure)) std::erase(effects, Effect::FailWithRow);
        const Texts wanted = expected_of_hit(left); // before the platform, which makes some of it, fails
        for_each_effect(effects, {.symbol = failure.symbol, .where = failure.where}, [&] {
            const Answer answer = ask_hit();
            EXPECT_EQ(returned(answer, left), wanted);
            expect_success(answer);
            ++tried;
        });
    }
    EXPECT_GT(tried, 0U) << "no platform service stands below this row";
}

INSTANTIATE_TEST_SUITE_P(All, FailingAssociators, testing::ValuesIn(rows_that([](const AssociatorRow& row) {
                             return !row.far.empty() && row.far[0].end != End::TcpStatisticalData;
                         })),
                         row_name);

// Rows whose instance the library builds: it hands the request's properties on, and an instance without a
// handle as it is.
class BuiltAssociators : public AssociatorRows {};

TEST_P(BuiltAssociators, PropertyListReachesTheBuilderUnchanged) {
    const char* properties[] = {"InstanceID", "Caption", nullptr};
    const Answer answer =
        call(row().source->instances, hit_key(row().reading).c_str(), row().asked, properties);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].filters(),
              (std::vector<Filter>{test_support::filter_for(Texts{"InstanceID", "Caption"})}));
    const Answer without = ask_hit();
    ASSERT_EQ(without.instances.size(), 1U);
    EXPECT_EQ(without.instances[0].filters(), (std::vector<Filter>{test_support::filter_for(std::nullopt)}));
}

TEST_P(BuiltAssociators, InstanceWithoutAHandleIsReturnedAsItIs) {
    broker.fail_every(Make::Instance, Failure::WithoutHandle);
    const Answer answer = ask_hit();
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].kind(), Object::WithoutHandle);
}

bool built_by_the_library(const AssociatorRow& row) {
    if (row.form == Form::Names) return false;
    const End end = row.far[0].end;
    return end != End::HostingSystem && end != End::FcPort && end != End::EthernetPort;
}
INSTANTIATE_TEST_SUITE_P(All, BuiltAssociators, testing::ValuesIn(rows_that(built_by_the_library)), row_name);

// What every source's two functions do with an association class that they do not know.
class AssociatorSources : public AssociationTest,
                          public testing::WithParamInterface<std::tuple<Form, const AssociatorSource*>> {
  protected:
    Form form() const { return std::get<0>(GetParam()); }
    const AssociatorSource& source() const { return *std::get<1>(GetParam()); }
    Answer ask(const char* key, const char* asked) { return call(form(), source(), key, asked); }
};

TEST_P(AssociatorSources, WithoutAnAssociationClassReturnNothingAndDoNotTraceTheirExit) {
    for (const char* key : {"7_anything", "0_10.0.0.7", "0_7", GIGABIT_PORT_TEXT}) {
        const Answer answer = ask(key, nullptr);
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(status, 0);
        expect_trace_without_exit(answer.output, source().function(form()));
    }
}

TEST_P(AssociatorSources, UnknownAssociationClassReturnsNothing) {
    for (const char* asked : {"KESTO_NoSuchAssociation", "", "KESTO_FCIPElementSettingDat"}) {
        SCOPED_TRACE(asked);
        const Answer answer = ask("7_anything", asked);
        EXPECT_EQ(status, 0);
        expect_whole_trace(answer.output, source().function(form()));
        // The IP endpoint names its hosting system for any other class.
        if (form() == Form::Names && source().names == get_ip_pe_associator_names) continue;
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(answer.platformCalls, (Texts{"mutex_lock", "mutex_unlock"}));
    }
}

std::string source_name(const testing::TestParamInfo<std::tuple<Form, const AssociatorSource*>>& info) {
    return text_of(std::get<0>(info.param)) + "_" + std::get<1>(info.param)->name;
}
INSTANTIATE_TEST_SUITE_P(All, AssociatorSources,
                         testing::Combine(testing::ValuesIn(FORMS), testing::ValuesIn(ASSOCIATOR_SOURCES)),
                         source_name);

} // namespace
