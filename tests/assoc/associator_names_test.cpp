// The associator-names members, row by row: the path at the far end of each association they know.
#include "tests/assoc/associator_suite.h"

using namespace golden;
using emulator::Effect;
using test_support::Answer;
using test_support::Make;

namespace {

// ---- Every row. ----

class AssociatorNamesTunnelRow : public AssociatorSuite<AssociatorNamesRow> {};

TEST_P(AssociatorNamesTunnelRow, EachKeyNamesItsTunnelInTheRowsMode) {
    each_key_names_its_tunnel();
}
TEST_P(AssociatorNamesTunnelRow, LetterCaseOfTheAssociationClassDoesNotMatter) {
    letter_case_does_not_matter();
}
TEST_P(AssociatorNamesTunnelRow, AFailedLookupReturnsNothing) {
    a_failed_lookup_returns_nothing();
}
TEST_P(AssociatorNamesTunnelRow, EachCallMayFailOnItsOwn) {
    each_call_may_fail_on_its_own();
}
TEST_P(AssociatorNamesTunnelRow, APathThatTheBrokerCannotMakeIsSkipped) {
    an_object_that_the_broker_cannot_make_is_skipped(Make::ObjectPath);
}

INSTANTIATE_TEST_SUITE_P(Rows, AssociatorNamesTunnelRow,
                         testing::ValuesIn(tunnel_rows(ASSOCIATOR_NAMES_ROWS)), RowName());

class AssociatorNamesPortRow : public AssociatorSuite<AssociatorNamesRow> {};

TEST_P(AssociatorNamesPortRow, TheKeyIsThePortsIfIndex) {
    const Answer hit = ask_hit();
    EXPECT_EQ(returned(hit), expected_of_port(GIGABIT_PORT));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(own_trace(hit), whole_trace());
    EXPECT_EQ(hit.doneCalls, 0U);
    EXPECT_EQ(returned(ask(std::string(GIGABIT_PORT_TEXT) + "_text behind it", row().tested)),
              expected_of_port(GIGABIT_PORT));
}
TEST_P(AssociatorNamesPortRow, AnUnknownPortReturnsNothing) {
    for (const char* key : {"999", "", "no number"}) {
        SCOPED_TRACE(key);
        const Answer miss = ask(key, row().tested);
        EXPECT_EQ(returned(miss), Texts{});
        EXPECT_EQ(status, 0);
        EXPECT_EQ(own_trace(miss), whole_trace());
    }
}
TEST_P(AssociatorNamesPortRow, LetterCaseOfTheAssociationClassDoesNotMatter) {
    letter_case_does_not_matter();
}
TEST_P(AssociatorNamesPortRow, NoTunnelIsLookedUp) {
    ask_hit();
    EXPECT_EQ(emulator::count("fcip_get_link_entry"), 0U);
}

INSTANTIATE_TEST_SUITE_P(Rows, AssociatorNamesPortRow, testing::ValuesIn(port_rows(ASSOCIATOR_NAMES_ROWS)),
                         RowName());

// Rows that return something, with each platform service below them failing.
class AssociatorNamesFailure : public AssociatorSuite<AssociatorNamesRow> {};

const std::vector<PlatformFailure>& path_failures() {
    static const std::vector<PlatformFailure> FAILURES{
        {"fcip_get_entity_entry",
         "",
         STATUS_FAILURES,
         {End::FcipEndpoint, End::TcpEndpoint, End::IpEndpoint, End::FcipSettings, End::TcpSettings,
          End::IpSettings, End::RemoteFcipPort, End::RemoteIpAccessPoint, End::RemoteTcpPort, End::Statistics,
          End::Profile}},
        {"fcip_snmp_get_link_errors", "", ROW_FAILURES, {End::Statistics}},
        {"fcip_get_link_entry", "op=1", STATUS_FAILURES, {End::Statistics}},
        {"pm_cim_get_port_info",
         "",
         STATUS_FAILURES,
         {End::LanEndpoint, End::EthernetStatistics, End::EthernetPort}},
        {"pm_cim_find_interface", "", {Effect::Fail}, {End::FcPort}},
        {"fcport_fill_reference_pm", "", {Effect::Fail}, {End::FcPort}},
        {"vsan_cim_get_vsanEntry", "", STATUS_FAILURES, {End::HostingSystem}},
        {"dm_cim_get_dmEntry", "", STATUS_FAILURES, {End::HostingSystem}},
        {"switch_fill_reference_str", "", {Effect::Fail}, {End::HostingSystem}},
        {"switch_fill_reference", "", {Effect::Fail}, {End::PhysicalSystem}},
    };
    return FAILURES;
}

std::vector<AssociatorNamesRow> rows_that_return() {
    std::vector<AssociatorNamesRow> found;
    std::copy_if(ASSOCIATOR_NAMES_ROWS.begin(), ASSOCIATOR_NAMES_ROWS.end(), std::back_inserter(found),
                 [](const AssociatorNamesRow& row) { return !row.far.empty(); });
    return found;
}

TEST_P(AssociatorNamesFailure, AnEndThatThePlatformFailsIsSkipped) {
    an_end_that_the_platform_fails_is_skipped(path_failures());
}

INSTANTIATE_TEST_SUITE_P(Rows, AssociatorNamesFailure, testing::ValuesIn(rows_that_return()), RowName());

// ---- Every member. ----

class AssociatorNamesOfMember : public AssociationTest,
                                public testing::WithParamInterface<AssociatorNamesMember> {
  protected:
    std::string function() const { return GetParam().name; }
};

TEST_P(AssociatorNamesOfMember, WithoutAnAssociationClassReturnsNothingAndDoesNotTraceItsExit) {
    for (const char* key : {"7_anything", "0_10.0.0.7", "0_7", GIGABIT_PORT_TEXT}) {
        const Answer answer = call(GetParam().function, key, nullptr);
        expect_no_object(answer);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(trace_of(answer.output, function()), entering(function()));
    }
}

class AssociatorNamesOfMemberWithoutDefault : public AssociatorNamesOfMember {};

TEST_P(AssociatorNamesOfMemberWithoutDefault, AnUnknownAssociationClassReturnsNothing) {
    for (const char* asked : {"KESTO_NoSuchAssociation", "", "KESTO_FCIPElementSettingDat"}) {
        SCOPED_TRACE(asked);
        const Answer answer = call(GetParam().function, "7_anything", asked);
        expect_no_object(answer);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(trace_of(answer.output, function()), entering(function()) + exiting(function()));
        EXPECT_EQ(answer.platformCalls, (std::vector<std::string>{"mutex_lock", "mutex_unlock"}));
    }
}

std::vector<AssociatorNamesMember> members_without_default() {
    std::vector<AssociatorNamesMember> found;
    std::copy_if(ASSOCIATOR_NAMES_MEMBERS.begin(), ASSOCIATOR_NAMES_MEMBERS.end(), std::back_inserter(found),
                 [](const AssociatorNamesMember& member) { return std::string(member.source) != "ip_pe"; });
    return found;
}

INSTANTIATE_TEST_SUITE_P(Members, AssociatorNamesOfMember, testing::ValuesIn(ASSOCIATOR_NAMES_MEMBERS),
                         MemberName());
INSTANTIATE_TEST_SUITE_P(Members, AssociatorNamesOfMemberWithoutDefault,
                         testing::ValuesIn(members_without_default()), MemberName());

// ---- What is particular. ----

class AssociatorNamesTest : public AssociationTest {
  protected:
    std::vector<std::string> names(AssociatorNamesFn* member, const char* key, const char* asked) {
        std::vector<std::string> texts;
        for (const test_support::RecordedPath& made : call(member, key, asked).paths)
            texts.push_back(made.text());
        return texts;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(AssociatorNamesTest, FcipEndpointFindsItsSettingsInAnyMixOfLetters) {
    for (const char* asked : {"KESTO_FCIPElementSettingData", "kesto_fcipelementsettingdata",
                              "KESTO_FCIPELEMENTSETTINGDATA", "kESTO_fcipElementSETTINGdata"}) {
        EXPECT_EQ(names(get_fcip_pe_associator_names, "7_10.21.0.1_10.0.1.21", asked),
                  Texts{path(End::FcipSettings, "KESTO_FCIPSettings", BY_NUMBER).text()});
    }
}

TEST_F(AssociatorNamesTest, IpEndpointNamesSettingsAndHostingSystemForItsSettingsAssociation) {
    EXPECT_EQ(names(get_ip_pe_associator_names, "7_10.22.0.1_10.0.1.22", "KESTO_IPElementSettingData"),
              (Texts{path(End::IpSettings, "KESTO_IPSettings", BY_IF_INDEX).text(),
                     path(End::HostingSystem, "KESTO_LogicalComputerSystem", BY_IF_INDEX).text()}));
}

// Each of the two paths has a lookup of its own.
TEST_F(AssociatorNamesTest, IpEndpointLooksItsTunnelUpTwiceForItsSettingsAssociation) {
    call(get_ip_pe_associator_names, "7_x", "KESTO_IPElementSettingData");
    // The table's order is by profile: 7, 21, and the tunnel wanted is the third row.
    const std::vector<std::string> walk{"fcip_get_link_entry op=2 key={0,0} 30 1",
                                        "fcip_get_link_entry op=2 key={7,33} 30 1",
                                        "fcip_get_link_entry op=2 key={21,6} 30 1"};
    std::vector<std::string> twice = walk;
    twice.insert(twice.end(), walk.begin(), walk.end());
    EXPECT_EQ(emulator::calls("fcip_get_link_entry"), twice);
}

TEST_F(AssociatorNamesTest, IpEndpointNamesTheFcipEndpointForItsHostedAccessPoint) {
    EXPECT_EQ(names(get_ip_pe_associator_names, "7_x", "KESTO_SwitchHostedIPAccessPoint"),
              Texts{path(End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint", BY_IF_INDEX).text()});
}

TEST_F(AssociatorNamesTest, IpEndpointNamesTheHostingSystemForAnyAssociationItDoesNotKnow) {
    for (const char* asked : {"KESTO_NoSuchAssociation", "", "CIM_Dependency", "KESTO_FCIPTCPEndpoint"}) {
        SCOPED_TRACE(asked);
        EXPECT_EQ(names(get_ip_pe_associator_names, "7_x", asked),
                  Texts{path(End::HostingSystem, "KESTO_LogicalComputerSystem", BY_IF_INDEX).text()});
    }
}

TEST_F(AssociatorNamesTest, IpEndpointSpellingsOfTheRemoteAccessPointAssociationMatchAlike) {
    for (const char* asked : {"KESTO_SANIPEndPoint", "KESTO_SANIpEndPoint", "KESTO_SANIPEndpoint"}) {
        EXPECT_EQ(
            names(get_ip_pe_associator_names, "7_x", asked),
            Texts{path(End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint", BY_IF_INDEX).text()});
        EXPECT_EQ(names(get_ip_remote_pe_associator_names, "0_10.0.0.7_10.25.0.1", asked),
                  Texts{path(End::IpEndpoint, "KESTO_IPProtocolEndPoint", BY_ADDRESS).text()});
    }
}

TEST_F(AssociatorNamesTest, IpEndpointTracesTheAssociationClassBeforeItLooksAtIt) {
    const Answer known = call(get_ip_pe_associator_names, "7_x", "KESTO_TCPIPEndpoint");
    EXPECT_EQ(known.output.rfind(
                  "Entering get_ip_pe_associator_names\nAssociation Class KESTO_TCPIPEndpoint \n", 0),
              0U)
        << known.output;
    const Answer none = call(get_ip_pe_associator_names, "7_x", nullptr);
    EXPECT_NE(none.output.find("Association Class "), std::string::npos) << none.output;
    EXPECT_EQ(
        call(get_fcip_pe_associator_names, "7_x", "KESTO_FCIPTCPEndpoint").output.find("Association Class "),
        std::string::npos);
}

// The port manager's status is not looked at here, only the block.
TEST_F(AssociatorNamesTest, IpEndpointTakesTheEthernetPortsBlockWhateverTheStatus) {
    const Texts wanted{path(End::EthernetPort, "KESTO_EthernetPort", BY_IF_INDEX).text()};
    emulator::add_fault(fault("pm_cim_get_port_info", Effect::FailWithRow));
    EXPECT_EQ(names(get_ip_pe_associator_names, "7_x", "KESTO_IPEthernetEndpoint"), wanted);
}

TEST_F(AssociatorNamesTest, IpEndpointAsksForTheTunnelsEthernetPort) {
    call(get_ip_pe_associator_names, "7_x", "KESTO_IPEthernetEndpoint");
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"),
              std::vector<std::string>{"pm_cim_get_port_info op=1 if=0x00000192"}); // 402
}

TEST_F(AssociatorNamesTest, StatisticsAreNamedAfterTheErrorCountersWereRead) {
    call(get_ip_pe_associator_names, "7_x", "KESTO_IPEndPointStatisticalData");
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"),
              std::vector<std::string>{"fcip_snmp_get_link_errors op=1 key={22,31} 10"});
    emulator::clear_calls();
    call(get_tcp_pe_associator_names, "7_x", "KESTO_TCPEndPointStatisticalData");
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"),
              std::vector<std::string>{"fcip_snmp_get_link_errors op=1 key={22,31} 10"});
}

TEST_F(AssociatorNamesTest, ATunnelWithoutAnEthernetPortHasNoStatisticsPath) {
    FcipLinkEntry row = link_row(BY_IF_INDEX);
    row.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(row);
    EXPECT_EQ(names(get_ip_pe_associator_names, "7_x", "KESTO_IPEndPointStatisticalData"), Texts{});
    EXPECT_EQ(names(get_tcp_pe_associator_names, "7_x", "KESTO_TCPEndPointStatisticalData"), Texts{});
}

TEST_F(AssociatorNamesTest, TcpEndpointAnswersItsStatisticsWithAnEndPointStatisticsPath) {
    EXPECT_EQ(names(get_tcp_pe_associator_names, "7", "KESTO_TCPEndPointStatisticalData"),
              Texts{path(End::Statistics, "KESTO_TCPEndPointStatistics", BY_IF_INDEX).text()});
}

TEST_F(AssociatorNamesTest, TcpEndpointKnowsNoSettingsAssociation) {
    EXPECT_EQ(names(get_tcp_pe_associator_names, "7", "KESTO_TCPElementSettingData"), Texts{});
}

TEST_F(AssociatorNamesTest, TcpEndpointIsHostedByThePhysicalSystem) {
    EXPECT_EQ(names(get_tcp_pe_associator_names, "7", "KESTO_SwitchHostedTCPAccessPoint"),
              Texts{path(End::PhysicalSystem, "KESTO_PhysicalComputerSystem", BY_IF_INDEX).text()});
}

TEST_F(AssociatorNamesTest, TcpStatisticalDataBuildsThePathOfItsProfilesTunnelAndReturnsNothing) {
    for (const Probe& probe : PROBES) {
        SCOPED_TRACE(std::string("key \"") + probe.key + "\"");
        broker.clear_calls();
        expect_no_object(
            call(get_tcp_statical_data_associator_names, probe.key, "KESTO_TCPEndPointStatistics"));
        const std::vector<std::string> path{"newObjectPath root/kesto KESTO_TCPProtocolEndPoint"};
        EXPECT_EQ(broker.call_texts("newObjectPath"),
                  probe.tunnel[5] != nullptr ? path : std::vector<std::string>{});
    }
}

TEST_F(AssociatorNamesTest, EthernetPortNamesItsStatisticsByTheClassOfTheStatistics) {
    EXPECT_EQ(names(get_eth_port_associator_names, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatistics"),
              Texts{port_path(End::EthernetStatistics, "KESTO_EthernetPortStatistics", GIGABIT_PORT).text()});
    EXPECT_EQ(names(get_eth_port_associator_names, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData"),
              Texts{});
}

TEST_F(AssociatorNamesTest, LanEndpointReadsThePortAtTheStartOfItsKey) {
    const Texts port{port_path(End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT).text()};
    for (const char* key :
         {"-1694433280:02:00:00:00:00:10", "-1694433280_10.1.1.1", ":-1694433280", "_-1694433280"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(names(get_lan_endpoint_associator_names, key, "KESTO_EthernetPortProtocolEndpoint"), port);
    }
}

// The port walk begins behind 0x9AFFFFFF: a port in front of it is no Ethernet port here.
TEST_F(AssociatorNamesTest, LanEndpointFindsOnlyPortsOfTheEthernetRun) {
    EXPECT_EQ(names(get_lan_endpoint_associator_names, "402:x", "KESTO_EthernetPortProtocolEndpoint"),
              Texts{});
}

TEST_F(AssociatorNamesTest, FcipEndpointWithoutAnInterfaceHasNoFcPort) {
    emulator::remove_port(BY_NUMBER.ifIndex);
    EXPECT_EQ(names(get_fcip_pe_associator_names, "7_x", "KESTO_FCPortProtocolEndPoint"), Texts{});
}

// Numbers in keys saturate at 32 bits, so the largest if-index that a key can name is 0x7FFFFFFF.
TEST_F(AssociatorNamesTest, ANumberBeyond32BitsNamesTheLargestIfIndex) {
    emulator::Port port;
    port.ifIndex = 0x7FFFFFFFU;
    emulator::add_port(port);
    for (const char* key : {"2147483647", "4294967296", "99999999999999999999"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(names(get_eth_stat_associator_names, key, "KESTO_EthernetPortStatisticalData"),
                  Texts{port_path(End::EthernetPort, "KESTO_EthernetPort", 0x7FFFFFFFU).text()});
    }
}

TEST_F(AssociatorNamesTest, ResultClassAndRolesAreNotLookedAt) {
    const Answer answer = walk([&](const CMPIResult* result) {
        return get_fcip_pe_associator_names("7_x", "KESTO_FCIPTCPEndpoint", "KESTO_NoSuchClass", "NoRole",
                                            "NoRole", result, NAMESPACE);
    });
    ASSERT_EQ(answer.paths.size(), 1U);
    EXPECT_EQ(answer.paths[0], path(End::TcpEndpoint, "KESTO_TCPProtocolEndPoint", BY_NUMBER));
}

TEST_F(AssociatorNamesTest, ThePortBlockIsUsedBeforeItIsFreed) {
    // Under the address sanitizer a use after the release, or no release at all, fails here.
    for (int round = 0; round < 3; ++round) {
        call(get_fcip_pe_associator_names, "7_x", "KESTO_FCPortProtocolEndPoint");
        call(get_ip_pe_associator_names, "7_x", "KESTO_IPEthernetEndpoint");
        call(get_eth_stat_associator_names, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData");
        call(get_eth_port_associator_names, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatistics");
    }
    EXPECT_EQ(emulator::count("fcport_fill_reference_pm"), 9U);
}

} // namespace
