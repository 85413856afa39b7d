// The walkers that enumerate associations, as names and as instances: for each association class, what its
// two references point to.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "include/associations.h"
#include "tests/assoc/association_test.h"

using namespace golden;
using test_support::entering;
using test_support::exiting;
using test_support::Failure;
using test_support::for_each_effect;
using test_support::Make;
using test_support::Object;
using test_support::occurrences;
using test_support::RecordedPath;
using test_support::Value;

namespace {

using Paths = std::vector<RecordedPath>;
using Texts = std::vector<std::string>;

struct Reference {
    End end;
    const char* className;
};
constexpr Reference FCIP_ENDPOINT{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"};
constexpr Reference TCP_ENDPOINT{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"};
constexpr Reference IP_ENDPOINT{End::IpEndpoint, "KESTO_IPProtocolEndPoint"};
constexpr Reference SYSTEM_OF_VSAN{End::VsanSystem, "KESTO_LogicalComputerSystem"};
constexpr Reference FCIP_SETTINGS{End::FcipSettings, "KESTO_FCIPSettings"};
// The settings associations of TCP and IP name the TCP settings with the keys of an IP endpoint.
constexpr Reference TCP_SETTINGS{End::IpEndpoint, "KESTO_TCPSettings"};
constexpr Reference REMOTE_FCIP_PORT{End::RemoteFcipPort, "KESTO_RemoteFCIPPort"};
constexpr Reference REMOTE_IP_PORT{End::RemoteIpAccessPoint, "KESTO_RemoteIPPort"};
constexpr Reference LAN_ENDPOINT{End::LanEndpoint, "KESTO_LANEndPoint"};
constexpr Reference PROFILE{End::Profile, "KESTO_FCIPProfile"};
constexpr Reference TCP_STATISTICS{End::Statistics, "KESTO_TCPEndPointStatistics"};
constexpr Reference IP_STATISTICS{End::Statistics, "KESTO_IPEndPointStatistics"};
constexpr Reference ETHERNET_STATISTICS{End::Statistics, "KESTO_EthernetPortStatistics"};
constexpr Reference ETHERNET_PORT{End::IpEndpoint, "KESTO_EthernetPort"};

// Which end's path is made first: that of the local endpoint. Where both are local endpoints, or neither is,
// the order is free.
enum class MadeFirst { First, Second, Either };

struct WalkedClass {
    const char* name;
    Kind kind;
    Reference first, second; // as in the instances
    MadeFirst madeFirst;
    bool swappedInNames = false;
};

const std::vector<WalkedClass> CLASSES{
    {"KESTO_SANFCIPEndpoint", Kind::Realize, REMOTE_FCIP_PORT, FCIP_ENDPOINT, MadeFirst::Second},
    {"KESTO_SANIPEndpoint", Kind::Realize, REMOTE_IP_PORT, FCIP_ENDPOINT, MadeFirst::Second},
    {"KESTO_FCIPTCPEndpoint", Kind::Realize, TCP_ENDPOINT, FCIP_ENDPOINT, MadeFirst::Either},
    {"KESTO_TCPIPEndpoint", Kind::Realize, TCP_ENDPOINT, IP_ENDPOINT, MadeFirst::Either},
    {"KESTO_IPEthernetEndpoint", Kind::Realize, LAN_ENDPOINT, IP_ENDPOINT, MadeFirst::Second},
    {"KESTO_SwitchHostedFCIPAccessPoint", Kind::Realize, SYSTEM_OF_VSAN, FCIP_ENDPOINT, MadeFirst::Second},
    {"KESTO_SwitchHostedIPAccessPoint", Kind::Realize, SYSTEM_OF_VSAN, IP_ENDPOINT, MadeFirst::Second},
    {"KESTO_SwitchHostedTCPAccessPoint", Kind::Realize, SYSTEM_OF_VSAN, TCP_ENDPOINT, MadeFirst::Second},
    {"KESTO_FCIPElementSettingData", Kind::ManagedSetting, FCIP_SETTINGS, FCIP_ENDPOINT, MadeFirst::Second},
    {"KESTO_TCPElementSettingData", Kind::ManagedSetting, TCP_SETTINGS, TCP_ENDPOINT, MadeFirst::Second},
    {"KESTO_IPElementSettingData", Kind::ManagedSetting, TCP_SETTINGS, IP_ENDPOINT, MadeFirst::Second},
    {"KESTO_FCIPPEBasedOn", Kind::GroupPart, PROFILE, FCIP_ENDPOINT, MadeFirst::Second},
    {"KESTO_TCPEndPointStatisticalData", Kind::ManagedStats, FCIP_ENDPOINT, TCP_STATISTICS, MadeFirst::First,
     true},
    {"KESTO_IPEndPointStatisticalData", Kind::ManagedStats, IP_ENDPOINT, IP_STATISTICS, MadeFirst::First,
     true},
};

// Walked by the names only; its instances are the port walk's.
const WalkedClass ETHERNET_STATISTICAL_DATA{"KESTO_EthernetPortStatisticalData", Kind::ManagedStats,
                                            ETHERNET_STATISTICS, ETHERNET_PORT, MadeFirst::Either};

// In the order of the link table: by profile, then by link index.
const std::vector<const Tunnel*> TABLE_ORDER{&BY_PROFILE, &BY_NUMBER, &BY_IF_INDEX, &BY_ETHERNET,
                                             &BY_ADDRESS};

Paths expected_associations(Form form, const WalkedClass& walked, const std::string& asked,
                            std::size_t count = TABLE_ORDER.size()) {
    Paths all;
    for (std::size_t at = 0; at < count; ++at) {
        const RecordedPath first = path(walked.first.end, walked.first.className, *TABLE_ORDER[at]);
        const RecordedPath second = path(walked.second.end, walked.second.className, *TABLE_ORDER[at]);
        const bool swapped = form == Form::Names && walked.swappedInNames;
        all.push_back(swapped ? association(walked.kind, asked, second, first)
                              : association(walked.kind, asked, first, second));
    }
    return all;
}

class WalkerTest : public AssociationTest {
  protected:
    static std::string function(Form form) {
        return form == Form::Names ? "get_all_binds_to_references" : "get_all_binds_to_instances";
    }
    Answer all(Form form, const std::string& className) {
        return walk(
            [&](const CMPIResult* result) {
                return form == Form::Names
                           ? get_all_binds_to_references(className.c_str(), result, NAMESPACE)
                           : get_all_binds_to_instances(className.c_str(), result, nullptr, NAMESPACE);
            },
            &status);
    }
    static std::string line(Form form, int number) {
        return test_support::line_trace(function(form), number);
    }
    static std::size_t links_asked_for() {
        std::size_t asked = 0;
        for (const std::string& call : emulator::calls("fcip_get_link_entry")) {
            asked += occurrences(call, " op=2 ");
        }
        return asked;
    }
    std::vector<std::string> classes_of_paths_made() const {
        Texts classes;
        for (const std::string& made : broker.call_texts("newObjectPath")) {
            classes.push_back(made.substr(made.rfind(' ') + 1));
        }
        return classes;
    }
};

// Each class in each form that it is walked in.
class WalkedAssociations : public WalkerTest,
                           public testing::WithParamInterface<std::tuple<Form, WalkedClass>> {
  protected:
    Form form() const { return std::get<0>(GetParam()); }
    const WalkedClass& walked() const { return std::get<1>(GetParam()); }
    Answer all() { return WalkerTest::all(form(), walked().name); }
    Paths expected(std::size_t count = TABLE_ORDER.size()) const {
        return expected_associations(form(), walked(), walked().name, count);
    }
    void expect_exit(const Answer& answer) const {
        EXPECT_EQ(status, 0);
        expect_whole_trace(answer.output, function(form()));
    }
    void expect_stop(const Answer& answer) const {
        EXPECT_EQ(status, -1);
        expect_trace_without_exit(answer.output, function(form()));
    }
};

TEST_P(WalkedAssociations, AreOneATunnelInTableOrder) {
    const Answer answer = all();
    EXPECT_EQ(associations_of(answer), expected());
    EXPECT_TRUE(form() == Form::Names ? answer.instances.empty() : answer.paths.empty());
    EXPECT_EQ(answer.doneCalls, 0U);
    expect_exit(answer);
}

TEST_P(WalkedAssociations, HaveTheClientsSpellingOfTheClass) {
    const std::string asked = in_mixed_case(walked().name);
    EXPECT_EQ(associations_of(WalkerTest::all(form(), asked)),
              expected_associations(form(), walked(), asked));
}

TEST_P(WalkedAssociations, AreMadeLocalEndpointFirst) {
    all();
    const Texts made = classes_of_paths_made();
    ASSERT_EQ(made.size(), 3 * TABLE_ORDER.size());
    const bool firstFirst = walked().madeFirst == MadeFirst::First ||
                            (walked().madeFirst == MadeFirst::Either && made[0] == walked().first.className);
    for (std::size_t at = 0; at < made.size(); at += 3) {
        EXPECT_EQ(made[at], firstFirst ? walked().first.className : walked().second.className);
        EXPECT_EQ(made[at + 1], firstFirst ? walked().second.className : walked().first.className);
        EXPECT_EQ(made[at + 2], walked().name);
    }
}

// Each tunnel takes three paths: its two ends and the association.
TEST_P(WalkedAssociations, StopAtAnEndThatTheBrokerCannotMake) {
    const auto request = [&](std::size_t nth) {
        const Answer answer = all();
        if (!broker.fault_hit()) {
            EXPECT_EQ(associations_of(answer), expected());
        } else if (nth % 3 == 0) { // the association: its NULL is returned, and the walk continues
            Paths wanted = expected();
            wanted[nth / 3 - 1] = RecordedPath::of(Object::Null);
            EXPECT_EQ(associations_of(answer), wanted);
            EXPECT_EQ(status, 0);
        } else { // an end: the walk stops
            EXPECT_EQ(associations_of(answer), expected(nth / 3));
            expect_stop(answer);
        }
    };
    EXPECT_EQ(for_each_broker_failure(Make::ObjectPath, Failure::Null, request), 3 * TABLE_ORDER.size());
}

TEST_P(WalkedAssociations, StopAtTheFirstTunnelWithoutItsProfile) {
    emulator::remove_entity(BY_IF_INDEX.entity);
    const Answer answer = all();
    EXPECT_EQ(associations_of(answer), expected(2));
    expect_stop(answer);
    EXPECT_EQ(links_asked_for(), 3U) << "tunnels after the one that failed are not visited";
}

TEST_P(WalkedAssociations, EndWithTheLinkTable) {
    for_each_effect(test_support::ROW_FAILURES,
                    {.symbol = "fcip_get_link_entry", .where = "op=2", .first = 3, .last = 3}, [&] {
                        const Answer answer = all();
                        EXPECT_EQ(associations_of(answer), expected(2));
                        expect_exit(answer);
                    });
}

TEST_P(WalkedAssociations, WithoutTunnelsAreNone) {
    emulator::clear_links();
    const Answer answer = all();
    EXPECT_TRUE(answer.returned.empty());
    EXPECT_EQ(answer.output, entering(function(form())) + exiting(function(form())));
    EXPECT_EQ(status, 0);
}

// The Ethernet endpoint's ends, and in the instances the TCP statistics', trace a numbered line a tunnel.
TEST_P(WalkedAssociations, TraceTheirNumberedLineATunnelAndNoOther) {
    const std::string name = walked().name;
    int number = 0;
    if (name == "KESTO_IPEthernetEndpoint") number = form() == Form::Names ? 1602 : 1893;
    if (name == "KESTO_TCPEndPointStatisticalData" && form() == Form::Instances) number = 2024;
    const std::string output = all().output;
    EXPECT_EQ(occurrences(output, " Function : " + function(form())), number == 0 ? 0U : 5U);
    EXPECT_EQ(occurrences(output, line(form(), number)), number == 0 ? 0U : 5U);
}

std::string class_name(const testing::TestParamInfo<std::tuple<Form, WalkedClass>>& info) {
    return text_of(std::get<0>(info.param)) + "_" + std::get<1>(info.param).name;
}
INSTANTIATE_TEST_SUITE_P(All, WalkedAssociations,
                         testing::Combine(testing::ValuesIn(FORMS), testing::ValuesIn(CLASSES)), class_name);
INSTANTIATE_TEST_SUITE_P(NamesOnly, WalkedAssociations,
                         testing::Combine(testing::Values(Form::Names),
                                          testing::Values(ETHERNET_STATISTICAL_DATA)),
                         class_name);

class WalkedInstances : public WalkedAssociations {};

TEST_P(WalkedInstances, AreReturnedAsNullWhenTheBrokerCannotMakeThem) {
    for_each_broker_failure(Make::Instance, Failure::Null, [&](std::size_t nth) {
        const Answer answer = all();
        Paths wanted = expected();
        if (broker.fault_hit()) wanted[nth - 1] = RecordedPath::of(Object::Null);
        EXPECT_EQ(associations_of(answer), wanted);
        EXPECT_EQ(status, 0);
    });
}

INSTANTIATE_TEST_SUITE_P(All, WalkedInstances,
                         testing::Combine(testing::Values(Form::Instances), testing::ValuesIn(CLASSES)),
                         class_name);

// What both walkers show.
class WalkerForms : public WalkerTest, public testing::WithParamInterface<Form> {
  protected:
    Form form() const { return GetParam(); }
    bool names() const { return form() == Form::Names; }
    Answer all(const std::string& className) { return WalkerTest::all(form(), className); }
    void expect_stop_after_two(const std::string& className) {
        const Answer answer = all(className);
        EXPECT_EQ(answer.returned.size(), 2U) << className;
        EXPECT_EQ(status, -1);
        expect_trace_without_exit(answer.output, function(form()));
    }
};

// The profile above stands in for any end; these are the ends that can be missing on their own.
TEST_P(WalkerForms, StopAtATunnelWhoseOtherEndIsMissing) {
    emulator::remove_port(BY_IF_INDEX.ethernet);
    expect_stop_after_two("KESTO_IPEthernetEndpoint");

    FcipLinkEntry withoutPort = link_row(BY_IF_INDEX);
    withoutPort.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(withoutPort);
    expect_stop_after_two("KESTO_TCPEndPointStatisticalData");
    expect_stop_after_two("KESTO_IPEndPointStatisticalData");
    if (names()) expect_stop_after_two("KESTO_EthernetPortStatisticalData");
    for (const char* className : {"KESTO_SwitchHostedFCIPAccessPoint", "KESTO_SwitchHostedIPAccessPoint",
                                  "KESTO_SwitchHostedTCPAccessPoint"}) {
        emulator::clear_faults();
        emulator::fail_call("switch_fill_reference_str", 3);
        expect_stop_after_two(className);
    }
}

TEST_P(WalkerForms, MakeBothEndsBeforeTheyTestEither) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry"}); // no endpoint path can be made
    all("KESTO_SwitchHostedFCIPAccessPoint");
    EXPECT_EQ(emulator::count("switch_fill_reference_str"), 1U);
    EXPECT_EQ(status, -1);
}

TEST_P(WalkerForms, MakeAnIpEndpointPathForEachRemoteTcpAssociationAndDropIt) {
    for (const char* className : {"KESTO_SANTCPEndpoint", "kesto_santcpendpoint"}) {
        broker.clear_calls();
        const Answer answer = all(className);
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(classes_of_paths_made(), Texts(5, "KESTO_IPProtocolEndPoint"));
        EXPECT_EQ(status, 0);
        expect_whole_trace(answer.output, function(form()));
    }
    const Answer operation =
        names() ? enumerate_names("KESTO_SANTCPEndpoint") : enumerate("KESTO_SANTCPEndpoint");
    EXPECT_TRUE(operation.returned.empty());
}

TEST_P(WalkerForms, VisitEveryTunnelForAClassThatTheyDoNotKnow) {
    for (const char* className : {"KESTO_NoSuchAssociation", "", "KESTO_FCPortProtocolEndPoint",
                                  "CIM_HostedAccessPoint", "KESTO_RemoteIPPort"}) {
        emulator::clear_calls();
        const Answer answer = all(className);
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(answer.output, entering(function(form())) + exiting(function(form())));
        EXPECT_EQ(links_asked_for(), 6U);
        EXPECT_EQ(status, 0);
    }
}

// A tunnel of entity 65535 has no Ethernet endpoint. The one added stands before a tunnel of entity 65536.
TEST_P(WalkerForms, SkipEntity65535ForTheEthernetEndpointOnly) {
    for (const std::uint32_t entity : {65535U, 65536U}) {
        FcipLinkEntry row = link_row(BY_ADDRESS);
        row.kfmFcipEntityId = entity;
        row.kfmFcipLinkIndex = 0;
        emulator::add_link(row);
        FcipEntityEntry profile = emulator::find_entity(BY_ADDRESS.entity).value();
        profile.kfmFcipEntityId = entity;
        emulator::add_entity(profile);
    }
    EXPECT_EQ(all("KESTO_IPEthernetEndpoint").returned.size(), 6U);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(broker.call_texts("newObjectPath").size(), 18U) << "skipped before anything is built";
    EXPECT_EQ(all("KESTO_SwitchHostedIPAccessPoint").returned.size(), 7U);
    EXPECT_EQ(all("KESTO_FCIPPEBasedOn").returned.size(), 7U);
}

TEST_P(WalkerForms, NameTheHostingSystemWithoutALookAtItsLookup) {
    emulator::add_vsan({BY_PROFILE.vsan, "VSAN20", false, "unused"}); // no domain: the lookup writes "NULL"
    const Paths found = associations_of(all("KESTO_SwitchHostedTCPAccessPoint"));
    ASSERT_EQ(found.size(), 5U);
    EXPECT_EQ(found[0].key("Antecedent"), Value(system_path("KESTO_LogicalComputerSystem", "NULL")));
}

TEST_P(WalkerForms, TraceTheLineAfterTheIpEndpointsPath) {
    const std::string output = all("KESTO_IPEthernetEndpoint").output;
    const std::size_t at = output.find(line(form(), names() ? 1602 : 1893));
    EXPECT_LT(output.find(exiting("ip_pe_fill_reference")), at) << output;
    EXPECT_LT(at, output.find(entering("ip_pe_fill_reference"), at));
}

TEST_P(WalkerForms, AreWhatTheOperationsEnumerate) {
    const Answer answer =
        names() ? enumerate_names("KESTO_FCIPTCPEndpoint") : enumerate("KESTO_FCIPTCPEndpoint");
    EXPECT_EQ(associations_of(answer), expected_associations(form(), CLASSES[2], "KESTO_FCIPTCPEndpoint"));
}

INSTANTIATE_TEST_SUITE_P(Of, WalkerForms, testing::ValuesIn(FORMS), testing::PrintToStringParamName());

TEST_F(WalkerTest, WalksNoInstancesOfEthernetStatisticalData) {
    EXPECT_TRUE(all(Form::Instances, "KESTO_EthernetPortStatisticalData").returned.empty());
    EXPECT_EQ(classes_of_paths_made(), Texts{});
}

TEST_F(WalkerTest, DoesNotUseThePropertyList) {
    const char* properties[] = {"Antecedent", nullptr};
    const Answer answer = walk([&](const CMPIResult* result) {
        return get_all_binds_to_instances("KESTO_FCIPTCPEndpoint", result, properties, NAMESPACE);
    });
    EXPECT_EQ(associations_of(answer),
              expected_associations(Form::Instances, CLASSES[2], "KESTO_FCIPTCPEndpoint"));
    for (const test_support::RecordedInstance& instance : answer.instances) {
        EXPECT_TRUE(instance.filters().empty());
    }
}

} // namespace
