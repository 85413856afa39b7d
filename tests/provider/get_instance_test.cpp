// Get-instance: which key finds which row, and which builder answers.
#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "tests/provider/get_test.h"
#include "tests/support/faults.h"
#include "tests/support/traces.h"

namespace {

using emulator::Effect;
using namespace provider_tests;
using test_support::Answer;
using test_support::calls_of;
using test_support::entering;
using test_support::exiting;
using test_support::Failure;
using test_support::Filter;
using test_support::filter_for;
using test_support::for_each_effect;
using test_support::Make;
using test_support::NAMESPACE;
using test_support::Object;
using test_support::ROW_FAILURES;
using test_support::Sets;
using test_support::STATUS_FAILURES;
using Calls = std::vector<std::string>;
using Names = std::vector<std::string>;

std::string lower(std::string text) {
    for (char& letter : text) {
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    return text;
}

// Classes that are found by a link.

struct LinkRoute {
    const char* className;
    const char* keyName;
    const char* found;  // a key that names the one link
    const char* missed; // one that would name it if the key were read in another way
    const char* builder;
};
void PrintTo(const LinkRoute& route, std::ostream* out) {
    *out << route.className << " goes to " << route.builder;
}

constexpr LinkRoute LINK_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", "Name", "5_10.1.1.1_10.1.1.2", "17_10.1.1.1_10.1.1.2",
     "fcip_pe_build_instance"},
    {"KESTO_RemoteFCIPPort", "Name", "0_10.1.1.2_10.1.1.1", "7_10.1.1.2_10.1.1.1",
     "fcip_remote_pe_build_instance"},
    {"KESTO_IPProtocolEndPoint", "Name", "17_10.1.1.1_10.1.1.2", "5_10.1.1.1_10.1.1.2",
     "ip_pe_build_instance"},
    {"KESTO_RemoteIPServiceAccessPoint", "Name", "0_10.1.1.2_10.1.1.1", "0_17",
     "ip_remote_pe_build_instance"},
    {"KESTO_RemoteTCPPort", "Name", "0_17", "0_10.1.1.2_10.1.1.1", "tcp_remote_pe_build_instance"},
    {"KESTO_TCPProtocolEndPoint", "Name", "17", "5", "tcp_pe_build_instance"},
    {"KESTO_FCIPSettings", "InstanceID", "17", "5", "fcip_settings_build_instance"},
    {"KESTO_IPSettings", "InstanceID", "17", "5", "ip_settings_build_instance"},
    {"KESTO_TCPSettings", "InstanceID", "17", "5", "tcp_settings_build_instance"},
    {"KESTO_IPEndPointStatistics", "InstanceID", "17", "5", "ip_statistics_build_instance"},
    {"KESTO_TCPEndPointStatistics", "InstanceID", "17", "5", "tcp_statistics_build_instance"},
};

class LinkRouteTest : public GetTest, public testing::WithParamInterface<LinkRoute> {
  protected:
    Answer get(const std::string& className, const char* keyValue,
               const test_support::PropertyList& properties = {}) {
        return get_instance(className, {{GetParam().keyName, keyValue}}, properties);
    }
    // The builder that was entered after the key's trace.
    static std::string builder_of(const Answer& answer) {
        const std::string trace = entry_trace(GetParam().keyName, GetParam().found);
        if (!answer.output.starts_with(trace + "Entering ")) return "none: " + answer.output;
        return test_support::functions_entered(answer.output.substr(trace.size()))[0];
    }
};

TEST_P(LinkRouteTest, ItsBuilderAnswers) {
    const Answer answer = get(GetParam().className, GetParam().found);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_EQ(answer.doneCalls, 0U);
    EXPECT_EQ(builder_of(answer), GetParam().builder);
    ASSERT_EQ(answer.returned.size(), 1U);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.instances[0].is_valid());
    EXPECT_EQ(answer.instances[0].class_name(), GetParam().className);
    EXPECT_EQ(answer.instances[0].path().name_space(), NAMESPACE);
}

TEST_P(LinkRouteTest, ClassNameInLowerCaseIsServed) {
    const Answer answer = get(lower(GetParam().className), GetParam().found);
    EXPECT_EQ(builder_of(answer), GetParam().builder);
    ASSERT_EQ(answer.instances.size(), 1U);
    // One class is answered under its literal name, all others under the client's spelling.
    const bool literal = std::string(GetParam().className) == "KESTO_TCPEndPointStatistics";
    EXPECT_EQ(answer.instances[0].class_name(), literal ? GetParam().className : lower(GetParam().className));
}

TEST_P(LinkRouteTest, NamespaceAndPropertiesReachTheBuilder) {
    nameSpace = "root/other";
    const Answer answer = get(GetParam().className, GetParam().found, Names{"InstanceID", "Name"});
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].path().name_space(), "root/other");
    EXPECT_EQ(answer.instances[0].filters(), (std::vector<Filter>{filter_for(Names{"InstanceID", "Name"})}));
}

TEST_P(LinkRouteTest, KeyOfAnotherFormFindsNothing) {
    const Answer answer = get(GetParam().className, GetParam().missed);
    expect_nothing(answer);
    EXPECT_EQ(answer.output, entry_trace(GetParam().keyName, GetParam().missed));
}

TEST_P(LinkRouteTest, KeyWithoutATokenFindsNothing) {
    expect_nothing(get(GetParam().className, ""));
    expect_nothing(get(GetParam().className, "_"));
}

TEST_P(LinkRouteTest, NoLinksFindNothing) {
    emulator::clear_links();
    expect_nothing(get(GetParam().className, GetParam().found));
}

TEST_P(LinkRouteTest, FailedLookupFindsNothing) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_get_link_entry"},
                    [&] { expect_nothing(get(GetParam().className, GetParam().found)); });
}

TEST_P(LinkRouteTest, WhatTheBuilderCannotMakeIsReturnedAsNull) {
    broker.fail_every(Make::ObjectPath, Failure::Null);
    const Answer answer = get(GetParam().className, GetParam().found);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].kind(), Object::Null);
}

TEST_P(LinkRouteTest, InstanceWithoutAHandleIsReturnedAsItIs) {
    broker.fail_every(Make::Instance, Failure::WithoutHandle);
    const Answer answer = get(GetParam().className, GetParam().found);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].kind(), Object::WithoutHandle);
    EXPECT_EQ(calls_of(broker.call_texts(), "setProperty"), Calls{});
}

// Whatever one call of the platform answers, the operation succeeds and gives the lock back (the fixture
// looks at that), and the rows of the call are released (the sanitizer looks at that).
TEST_P(LinkRouteTest, NoFailureOfThePlatformReachesTheClient) {
    for (const char* symbol : {"fcip_get_link_entry", "fcip_get_entity_entry", "pm_cim_get_port_info",
                               "dm_cim_get_dmEntry", "fcip_snmp_get_link_errors", "cmi_req_resp",
                               "ipconf_get_intf_ip_address", "ipconf_get_if_inet_addrs"}) {
        get(GetParam().className, GetParam().found);
        const std::size_t calls = emulator::count(symbol);
        for (const Effect effect : STATUS_FAILURES) {
            for (std::uint32_t nth = 1; nth <= calls; ++nth) {
                SCOPED_TRACE(std::string(symbol) + " " + std::to_string(nth));
                emulator::add_fault({.symbol = symbol, .first = nth, .last = nth, .effect = effect});
                const Answer answer = get(GetParam().className, GetParam().found);
                EXPECT_EQ(answer.rc, CMPI_RC_OK);
                EXPECT_EQ(answer.message, std::nullopt);
                EXPECT_EQ(answer.platformCalls.back(), "mutex_unlock");
                EXPECT_LE(answer.returned.size(), 1U);
                emulator::clear_faults();
            }
        }
        emulator::clear_calls();
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, LinkRouteTest, testing::ValuesIn(LINK_ROUTES),
                         [](const auto& parameter) { return std::string(parameter.param.className); });

// TCP endpoint statistics: the link's error counters are fetched on the way.

class GetTcpStatisticsTest : public GetTest {
  protected:
    void SetUp() override {
        GetTest::SetUp();
        emulator::set_link_errors({3, 4, {}});
        emulator::clear_calls();
    }
    Answer get() { return get_instance("KESTO_TCPEndPointStatistics", {{"InstanceID", "17"}}); }
    const std::string beforeBuilder = entry_trace("InstanceID", "17");
    const std::string builder = "Entering tcp_statistics_build_instance\n";
    const std::string lineTrace = " Function : FCIP_GetInstance Line 435 \n";
};

TEST_F(GetTcpStatisticsTest, ErrorCountersAreFetchedByTheLinksKey) {
    const Answer answer = get();
    EXPECT_EQ(calls_of(answer.platformCalls, "fcip_snmp_get_link_errors"),
              (Calls{"fcip_snmp_get_link_errors op=1 key={3,4} 10"}));
    EXPECT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + builder)) << answer.output;
}

TEST_F(GetTcpStatisticsTest, FailureWithoutARowIsSilentAndTheBuilderAnswers) {
    emulator::add_fault({.symbol = "fcip_snmp_get_link_errors"});
    const Answer answer = get();
    EXPECT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + builder)) << answer.output;
}

TEST_F(GetTcpStatisticsTest, FailureWithARowIsTracedAndTheBuilderAnswers) {
    emulator::add_fault({.symbol = "fcip_snmp_get_link_errors", .effect = Effect::FailWithRow});
    const Answer answer = get();
    EXPECT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + lineTrace + builder)) << answer.output;
}

TEST_F(GetTcpStatisticsTest, SuccessWithoutARowIsNoFailure) {
    emulator::add_fault({.symbol = "fcip_snmp_get_link_errors", .effect = Effect::SucceedWithoutRow});
    const Answer answer = get();
    EXPECT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + builder)) << answer.output;
}

// Associations: the request's references come back as an instance.

struct AssociationRoute {
    const char* className;
    const char* role1;
    const char* role2;
};
void PrintTo(const AssociationRoute& route, std::ostream* out) {
    *out << route.className << " of " << route.role1 << " and " << route.role2;
}

class AssociationRouteTest : public GetTest, public testing::WithParamInterface<AssociationRoute> {
  protected:
    CMPIObjectPath* end(const char* className) { return broker.path(NAMESPACE, className, {{"Name", "x"}}); }
};

TEST_P(AssociationRouteTest, TheReferencesComeBack) {
    const AssociationRoute& route = GetParam();
    for (const std::string& className : {std::string(route.className), lower(route.className)}) {
        emulator::clear_calls();
        const CMPIObjectPath* first = end("KESTO_First");
        const CMPIObjectPath* second = end("KESTO_Second");
        const Answer answer = get_instance(className, {{route.role1, first}, {route.role2, second}});
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        ASSERT_EQ(answer.instances.size(), 1U);
        EXPECT_EQ(answer.instances[0].class_name(), className);
        EXPECT_EQ(answer.instances[0].sets(), (Sets{{route.role1, CMPI_ref, broker.recorded(first)},
                                                    {route.role2, CMPI_ref, broker.recorded(second)}}));
        EXPECT_EQ(calls_of(answer.platformCalls, "association_class_build_instance_path"),
                  (Calls{"association_class_build_instance_path " + className + " root/kesto " + route.role1 +
                         " " + route.role2}));
        EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_link_entry"), Calls{}) << "nothing is looked up";
    }
}

TEST_P(AssociationRouteTest, MissingReferenceReturnsNothing) {
    expect_nothing(get_instance(GetParam().className, {{GetParam().role1, end("KESTO_First")}}));
    expect_nothing(
        get_instance(GetParam().className, {{"Other", end("KESTO_First")}, {"Roles", end("KESTO_Second")}}));
}

constexpr AssociationRoute ASSOCIATION_ROUTES[] = {
    {"KESTO_SANFCIPEndpoint", "Antecedent", "Dependent"},
    {"KESTO_SANIPEndpoint", "Antecedent", "Dependent"},
    {"KESTO_FCIPTCPEndpoint", "Antecedent", "Dependent"},
    {"KESTO_TCPIPEndpoint", "Antecedent", "Dependent"},
    {"KESTO_SANTCPEndpoint", "Antecedent", "Dependent"},
    {"KESTO_IPEthernetEndpoint", "Antecedent", "Dependent"},
    {"KESTO_SwitchHostedFCIPAccessPoint", "Antecedent", "Dependent"},
    {"KESTO_SwitchHostedIPAccessPoint", "Antecedent", "Dependent"},
    {"KESTO_SwitchHostedTCPAccessPoint", "Antecedent", "Dependent"},
    {"KESTO_FCIPPEBasedOn", "GroupComponent", "PartComponent"},
    {"KESTO_FCIPElementSettingData", "ManagedElement", "SettingData"},
    {"KESTO_TCPElementSettingData", "ManagedElement", "SettingData"},
    {"KESTO_IPElementSettingData", "ManagedElement", "SettingData"},
    {"KESTO_IPEndPointStatisticalData", "ManagedElement", "Stats"},
    {"KESTO_TCPEndPointStatisticalData", "ManagedElement", "Stats"},
    {"KESTO_EthernetPortStatisticalData", "ManagedElement", "Stats"},
};
INSTANTIATE_TEST_SUITE_P(Classes, AssociationRouteTest, testing::ValuesIn(ASSOCIATION_ROUTES),
                         [](const auto& parameter) { return std::string(parameter.param.className); });

// Everything else.

TEST_F(GetTest, ClassesWithoutAnAcceptedKeyAreNotRouted) {
    for (const char* className :
         {"KESTO_TCPStatisticalData", "KESTO_RemoteIPPort", "KESTO_EthernetPortProtocolEndpoint",
          "KESTO_FCPortProtocolEndPoint", "KESTO_LogicalComputerSystem", "NoSuchClass"}) {
        const Answer answer = get_instance(className, {{"Name", "17"}, {"InstanceID", "17"}});
        EXPECT_EQ(answer.message, "invalid key name") << className;
        EXPECT_TRUE(answer.returned.empty()) << className;
        EXPECT_EQ(answer.platformCalls, Calls{}) << className;
    }
}

TEST_F(GetTest, ClassWithAKeyButWithoutARouteAnswersNothing) {
    const Answer answer = get_instance("KESTO_EthernetPort", {{"DeviceID", "-1694433280"}});
    expect_nothing(answer);
    EXPECT_EQ(answer.platformCalls, (Calls{"mutex_lock", "mutex_unlock"}));
    EXPECT_EQ(answer.output, entry_trace("DeviceID", "-1694433280"));
}

TEST_F(GetTest, NoExitLineIsPrinted) {
    const Answer answer = get_instance("KESTO_FCIPProtocolEndPoint", {{"Name", "5_10.1.1.1_10.1.1.2"}});
    EXPECT_EQ(answer.output, entry_trace("Name", "5_10.1.1.1_10.1.1.2") + entering("fcip_pe_build_instance") +
                                 exiting("fcip_pe_build_instance"));
}

} // namespace
