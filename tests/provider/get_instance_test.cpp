// Get-instance: which key finds which row, and which builder answers.
#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "tests/provider/tunnel_switch.h"
#include "tests/support/rows.h"

namespace {

using namespace provider_tests;
using emulator::Effect;
using test_support::Answer;
using test_support::Failure;
using test_support::Filter;
using test_support::filter_for;
using test_support::Key;
using test_support::Make;
using test_support::NAMESPACE;
using test_support::Object;
using test_support::Sets;
using Calls = std::vector<std::string>;
using Names = std::vector<std::string>;

std::string lower(std::string text) {
    for (char& letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

class GetTest : public TunnelSwitchTest {
  protected:
    void SetUp() override {
        TunnelSwitchTest::SetUp();
        emulator::set_reply(1917, std::vector<std::uint8_t>(172));
        emulator::set_reply(1918, std::vector<std::uint8_t>(256));
        emulator::set_reply(1920, std::vector<std::uint8_t>(1352), {std::vector<std::uint8_t>(64)});
        emulator::clear_calls();
    }

    static void fault(const char* symbol, Effect effect) {
        emulator::Fault fault;
        fault.symbol = symbol;
        fault.effect = effect;
        emulator::add_fault(fault);
    }

    static void expect_nothing(const Answer& answer) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(answer.doneCalls, 0u);
    }
};

std::string entry_trace(const std::string& keyName, const std::string& keyValue) {
    return "Entering FCIP_GetInstance\n\tfound key " + keyName + " : " + keyValue + "\n";
}

// ---- Classes that are found by a link. ----

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
    // The builder that was entered behind the key's trace.
    static std::string builder_of(const Answer& answer) {
        const std::string trace = entry_trace(GetParam().keyName, GetParam().found);
        if (!answer.output.starts_with(trace + "Entering ")) return "none: " + answer.output;
        return entered(answer.output.substr(trace.size()))[0];
    }
};

TEST_P(LinkRouteTest, ItsBuilderAnswers) {
    const Answer answer = get(GetParam().className, GetParam().found);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_EQ(answer.doneCalls, 0u);
    EXPECT_EQ(builder_of(answer), GetParam().builder);
    ASSERT_EQ(answer.returned.size(), 1u);
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_TRUE(answer.instances[0].is_valid());
    EXPECT_EQ(answer.instances[0].class_name(), GetParam().className);
    EXPECT_EQ(answer.instances[0].path().name_space(), NAMESPACE);
}

TEST_P(LinkRouteTest, ClassNameInLowerCaseIsServed) {
    const Answer answer = get(lower(GetParam().className), GetParam().found);
    EXPECT_EQ(builder_of(answer), GetParam().builder);
    ASSERT_EQ(answer.instances.size(), 1u);
    // One class is answered under its literal name, all others under the client's spelling.
    const bool literal = std::string(GetParam().className) == "KESTO_TCPEndPointStatistics";
    EXPECT_EQ(answer.instances[0].class_name(), literal ? GetParam().className : lower(GetParam().className));
}

TEST_P(LinkRouteTest, NamespaceAndPropertiesReachTheBuilder) {
    nameSpace = "root/other";
    const Answer answer = get(GetParam().className, GetParam().found, Names{"InstanceID", "Name"});
    ASSERT_EQ(answer.instances.size(), 1u);
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
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        emulator::clear_faults();
        fault("fcip_get_link_entry", effect);
        expect_nothing(get(GetParam().className, GetParam().found));
    }
}

TEST_P(LinkRouteTest, WhatTheBuilderCannotMakeIsReturnedAsNull) {
    broker.fail_every(Make::ObjectPath, Failure::Null);
    const Answer answer = get(GetParam().className, GetParam().found);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].kind(), Object::Null);
}

TEST_P(LinkRouteTest, InstanceWithoutAHandleIsReturnedAsItIs) {
    broker.fail_every(Make::Instance, Failure::WithoutHandle);
    const Answer answer = get(GetParam().className, GetParam().found);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    ASSERT_EQ(answer.instances.size(), 1u);
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
        for (const Effect effect : {Effect::Fail, Effect::FailWithRow}) {
            for (std::size_t nth = 1; nth <= calls; ++nth) {
                SCOPED_TRACE(std::string(symbol) + " " + std::to_string(nth));
                emulator::Fault fault;
                fault.symbol = symbol;
                fault.first = fault.last = static_cast<std::uint32_t>(nth);
                fault.effect = effect;
                emulator::add_fault(fault);
                const Answer answer = get(GetParam().className, GetParam().found);
                EXPECT_EQ(answer.rc, CMPI_RC_OK);
                EXPECT_EQ(answer.message, std::nullopt);
                EXPECT_EQ(answer.platformCalls.back(), "mutex_unlock");
                EXPECT_LE(answer.returned.size(), 1u);
                emulator::clear_faults();
            }
        }
        emulator::clear_calls();
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, LinkRouteTest, testing::ValuesIn(LINK_ROUTES),
                         [](const auto& parameter) { return std::string(parameter.param.className); });

// ---- TCP endpoint statistics: the link's error counters are fetched on the way. ----

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
    EXPECT_EQ(answer.instances.size(), 1u);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + builder)) << answer.output;
}

TEST_F(GetTcpStatisticsTest, FailureWithoutARowIsSilentAndTheBuilderAnswers) {
    fault("fcip_snmp_get_link_errors", Effect::Fail);
    const Answer answer = get();
    EXPECT_EQ(answer.instances.size(), 1u);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + builder)) << answer.output;
}

TEST_F(GetTcpStatisticsTest, FailureWithARowIsTracedAndTheBuilderAnswers) {
    fault("fcip_snmp_get_link_errors", Effect::FailWithRow);
    const Answer answer = get();
    EXPECT_EQ(answer.instances.size(), 1u);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + lineTrace + builder)) << answer.output;
}

TEST_F(GetTcpStatisticsTest, SuccessWithoutARowIsNoFailure) {
    fault("fcip_snmp_get_link_errors", Effect::SucceedWithoutRow);
    const Answer answer = get();
    EXPECT_EQ(answer.instances.size(), 1u);
    EXPECT_TRUE(answer.output.starts_with(beforeBuilder + builder)) << answer.output;
}

// ---- Ethernet port statistics: the key is an if-index. ----

class GetEthernetStatisticsTest : public GetTest {
  protected:
    Answer get(const char* key) {
        return get_instance("KESTO_EthernetPortStatistics", {{"InstanceID", key}});
    }
    static Calls port_requests(const Answer& answer) {
        return calls_of(answer.platformCalls, "pm_cim_get_port_info");
    }
};

TEST_F(GetEthernetStatisticsTest, TheDecimalIfIndexFindsThePort) {
    const Answer answer = get("-1694433280");
    EXPECT_EQ(port_requests(answer), (Calls{"pm_cim_get_port_info op=1 if=0x9b010000"}));
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_EthernetPortStatistics");
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "-1694433280");
    EXPECT_NE(answer.output.find("Entering eth_statistics_build_instance\n"), std::string::npos);
    EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_link_entry"), Calls{}) << "no link is looked up";
}

TEST_F(GetEthernetStatisticsTest, ClassNameInLowerCaseKeepsTheClientsSpelling) {
    const Answer answer = get_instance("kesto_ethernetportstatistics", {{"instanceid", "-1694433280"}});
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].class_name(), "kesto_ethernetportstatistics");
}

TEST_F(GetEthernetStatisticsTest, KeyThatIsNoNumberAsksForIfIndexZero) {
    for (const char* key : {"eth1", "", "_17"}) {
        const Answer answer = get(key);
        EXPECT_EQ(port_requests(answer), (Calls{"pm_cim_get_port_info op=1 if=0x00000000"}))
            << '"' << key << '"';
        expect_nothing(answer);
    }
}

TEST_F(GetEthernetStatisticsTest, NumbersSaturateAt32Bits) {
    EXPECT_EQ(port_requests(get("2600534016")), (Calls{"pm_cim_get_port_info op=1 if=0x7fffffff"}));
    EXPECT_EQ(port_requests(get("99999999999")), (Calls{"pm_cim_get_port_info op=1 if=0x7fffffff"}));
    EXPECT_EQ(port_requests(get("-99999999999")), (Calls{"pm_cim_get_port_info op=1 if=0x80000000"}));
}

TEST_F(GetEthernetStatisticsTest, TextBehindTheNumberIsIgnored) {
    EXPECT_EQ(get("-1694433280_x").instances.size(), 1u);
}

TEST_F(GetEthernetStatisticsTest, FailureOfThePortManagerFindsNothing) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        emulator::clear_faults();
        fault("pm_cim_get_port_info", effect);
        expect_nothing(get("-1694433280"));
    }
}

// ---- Profiles: the key must name a tunnel first, and then the profile. ----

class GetProfileTest : public GetTest {
  protected:
    void SetUp() override {
        GetTest::SetUp();
        // Tunnel 3 of profile 3.
        emulator::clear_links();
        link.kfmFcipLinkIndex = 2;
        update();
        emulator::clear_calls();
    }
    Answer get(const char* key) { return get_instance("KESTO_FCIPProfile", {{"InstanceID", key}}); }
};

TEST_F(GetProfileTest, KeyThatNamesATunnelAndTheProfileFindsTheProfile) {
    const Answer answer = get("3");
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_FCIPProfile");
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "3");
    EXPECT_NE(answer.output.find("Entering fcip_profile_build_instance\n"), std::string::npos);
}

TEST_F(GetProfileTest, ClassNameIsTheLiteralWhateverTheClientsSpelling) {
    const Answer answer = get_instance("kesto_fcipprofile", {{"InstanceID", "3"}});
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_FCIPProfile");
}

TEST_F(GetProfileTest, ProfileWithoutATunnelOfItsNumberIsNotFound) {
    emulator::add_entity(test_support::entity_row(9));
    emulator::clear_calls();
    const Answer answer = get("9");
    expect_nothing(answer);
    EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_entity_entry"), Calls{})
        << "the profiles are not even walked";
}

TEST_F(GetProfileTest, TunnelWithoutAProfileOfItsNumberIsNotFound) {
    link.kfmFcipLinkIndex = 7;
    update();
    expect_nothing(get("8"));
}

TEST_F(GetProfileTest, KeyMustBeTheProfileNumberToTheLetter) {
    for (const char* key : {"3_x", "03", " 3", "+3"})
        expect_nothing(get(key));
}

TEST_F(GetProfileTest, FailedProfileWalkFindsNothing) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow}) {
        emulator::clear_faults();
        fault("fcip_get_entity_entry", effect);
        expect_nothing(get("3"));
    }
}

// ---- LAN endpoints: the key's Ethernet port finds a link, and the link's own interface is built. ----

class GetLanEndpointTest : public GetTest {
  protected:
    Answer get(const char* key) { return get_instance("KESTO_LANEndPoint", {{"Name", key}}); }
};

TEST_F(GetLanEndpointTest, InterfaceOfTheLinkIsBuilt) {
    for (const char* key : {"-1694433280:02:00:00:00:00:01", "-1694433280_x", "-1694433280"}) {
        const Answer answer = get(key);
        ASSERT_EQ(answer.instances.size(), 1u) << key;
        EXPECT_EQ(answer.instances[0].class_name(), "KESTO_LANEndPoint");
        EXPECT_EQ(calls_of(answer.platformCalls, "pm_cim_get_port_info"),
                  (Calls{"pm_cim_get_port_info op=1 if=0x00000011"}));
        EXPECT_NE(answer.output.find("Exiting lan_endpoint_build_instance\n"), std::string::npos);
    }
}

TEST_F(GetLanEndpointTest, ClassNameKeepsTheClientsSpelling) {
    for (const char* className : {"KESTO_LanEndpoint", "kesto_lanendpoint"}) {
        const Answer answer = get_instance(className, {{"Name", "-1694433280:02"}});
        ASSERT_EQ(answer.instances.size(), 1u);
        EXPECT_EQ(answer.instances[0].class_name(), className);
    }
}

TEST_F(GetLanEndpointTest, InterfaceOfTheTunnelIsNoKey) {
    expect_nothing(get("17:02:00"));
    expect_nothing(get(""));
}

// ---- Associations: the request's references come back as an instance. ----

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
        ASSERT_EQ(answer.instances.size(), 1u);
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

// ---- Everything else. ----

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
