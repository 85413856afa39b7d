// The reference-names members, row by row: the path of the association that ties the source to its other end.
#include "tests/assoc/reference_suite.h"

using namespace golden;
using emulator::Effect;
using test_support::Answer;

namespace {

// ---- Every row. ----

class ReferenceNamesRow : public ReferenceRowSuite<Form::Names> {};
TEST_P(ReferenceNamesRow, TheAssociationIsNamedAsTheRowSays) {
    the_association_is_named_as_the_row_says();
}
TEST_P(ReferenceNamesRow, APathThatTheBrokerCannotMake) {
    a_path_that_the_broker_cannot_make();
}
TEST_P(ReferenceNamesRow, AHitReleasesNothing) {
    a_hit_releases_nothing();
}
TEST_P(ReferenceNamesRow, EachCallMayFailOnItsOwn) {
    each_call_may_fail_on_its_own();
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferenceNamesRow, testing::ValuesIn(REFERENCE_ROWS), ReferenceRowName());

class ReferenceNamesTunnelRow : public ReferenceRowSuite<Form::Names> {};
TEST_P(ReferenceNamesTunnelRow, EachKeyNamesItsTunnelInTheRowsMode) {
    each_key_names_its_tunnel();
}
TEST_P(ReferenceNamesTunnelRow, AFailedLookupReturnsNothing) {
    a_failed_lookup_returns_nothing();
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferenceNamesTunnelRow,
                         testing::ValuesIn(reference_rows_that(looks_a_tunnel_up)), ReferenceRowName());

class ReferenceNamesOfATunnelsEnds : public ReferenceRowSuite<Form::Names> {};
TEST_P(ReferenceNamesOfATunnelsEnds, AnEndWithoutItsProfileIsMissing) {
    ends_fail_with_their_profile();
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferenceNamesOfATunnelsEnds,
                         testing::ValuesIn(reference_rows_that(needs_profile)), ReferenceRowName());

// The hosting system's lookup reports its failure with the value -1.
class ReferenceNamesOfHostedEnds : public ReferenceRowSuite<Form::Names> {};
TEST_P(ReferenceNamesOfHostedEnds, AHostingSystemThatIsMinusOneIsAMissingEnd) {
    for (const char* symbol : {"vsan_cim_get_vsanEntry", "dm_cim_get_dmEntry"}) {
        emulator::clear_faults();
        emulator::add_fault(fault(symbol, Effect::Fail));
        broker.clear_calls();
        expect_missing_end(ask_hit());
        EXPECT_EQ(broker.call_texts("releaseObjectPath").size(), broker.call_texts("newObjectPath").size());
    }
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferenceNamesOfHostedEnds,
                         testing::ValuesIn(reference_rows_that(has_hosting_system)), ReferenceRowName());

// ---- Every member. ----

class ReferenceNamesOfMember : public ReferenceMemberSuite<Form::Names> {};
TEST_P(ReferenceNamesOfMember, WithoutAnAssociationClassReturnsNothing) {
    without_an_association_class_returns_nothing();
}
TEST_P(ReferenceNamesOfMember, AnUnknownAssociationClassReturnsNothing) {
    an_unknown_association_class_returns_nothing();
}
INSTANTIATE_TEST_SUITE_P(Members, ReferenceNamesOfMember, testing::ValuesIn(REFERENCE_MEMBERS),
                         ReferenceMemberName());

// ---- What is particular. ----

class ReferenceNamesTest : public AssociationTest {
  protected:
    using Paths = std::vector<test_support::RecordedPath>;
    Paths names(ReferenceNamesFn* member, const char* key, const char* asked) {
        return call(member, key, asked).paths;
    }
};

TEST_F(ReferenceNamesTest, FcipEndpointAndItsSettingsAreOneManagedSettingAssociation) {
    EXPECT_EQ(names(get_fcip_pe_reference_names, "7_10.21.0.1_10.0.1.21", "KESTO_FCIPElementSettingData"),
              Paths{association(Kind::ManagedSetting, "KESTO_FCIPElementSettingData",
                                path(End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint", BY_NUMBER),
                                path(End::FcipSettings, "KESTO_FCIPSettings", BY_NUMBER))});
}

// The profile and the endpoint each ask for the profile's row.
TEST_F(ReferenceNamesTest, AProfileThatCannotBeReadIsAMissingEnd) {
    for (const std::uint32_t nth : {1U, 2U}) {
        emulator::fail_call("fcip_get_entity_entry", nth);
        expect_no_object(call(get_fcip_pe_reference_names, "7_x", "KESTO_FCIPPEBasedOn"));
        EXPECT_EQ(status, -1);
        emulator::clear_faults();
        emulator::fail_call("fcip_get_entity_entry", nth);
        expect_no_object(call(get_profile_reference_names, "7", "KESTO_FCIPPEBasedOn"));
        EXPECT_EQ(status, -1);
        emulator::clear_faults();
    }
}

TEST_F(ReferenceNamesTest, TcpEndpointKnowsItsFcipAssociationWithoutTheLetterDOnly) {
    EXPECT_EQ(names(get_tcp_pe_reference_names, "7", "KESTO_FCIPTCPEndpoint"), Paths{});
    EXPECT_EQ(names(get_tcp_pe_reference_names, "7", "KESTO_FCIPTCPEnpoint"),
              Paths{association(Kind::Realize, "KESTO_FCIPTCPEndpoint",
                                path(End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint", BY_IF_INDEX),
                                path(End::TcpEndpoint, "KESTO_TCPProtocolEndPoint", BY_IF_INDEX))});
}

TEST_F(ReferenceNamesTest, IpStatisticsStandFirstFromTheIpEndpointAndSecondFromTheStatistics) {
    const test_support::RecordedPath statistics =
        path(End::Statistics, "KESTO_IPEndpointStatistics", BY_IF_INDEX);
    EXPECT_EQ(names(get_ip_pe_reference_names, "7", "KESTO_IPEndPointStatisticalData"),
              Paths{association(Kind::ManagedStats, "KESTO_IPEndPointStatisticalData", statistics,
                                path(End::IpEndpoint, "KESTO_IPProtocolEndpoint", BY_IF_INDEX))});
    EXPECT_EQ(names(get_ip_stat_reference_names, "7", "KESTO_IPEndPointStatisticalData"),
              Paths{association(Kind::ManagedStats, "KESTO_IPEndpointStatisticalData",
                                path(End::IpEndpoint, "KESTO_IPProtocolEndPoint", BY_IF_INDEX), statistics)});
}

// The platform finds the class by its prefix, so the swap shows in the call only.
TEST_F(ReferenceNamesTest, FcPortIsAskedForWithNamespaceAndClassSwapped) {
    const Answer answer = call(get_fcip_pe_reference_names, "7_x", "KESTO_FCPortProtocolEndPoint");
    EXPECT_EQ(
        emulator::calls("fcport_fill_reference_pm"),
        std::vector<std::string>{"fcport_fill_reference_pm root/kesto KESTO_FCPort if=0x0000012d"}); // 301
    ASSERT_EQ(answer.paths.size(), 1U);
    EXPECT_EQ(answer.paths[0].key("Antecedent"),
              test_support::Value(path(End::FcPort, "KESTO_FCPort", BY_NUMBER)));
}

TEST_F(ReferenceNamesTest, FcipEndpointWithoutAnInterfaceHasNoFcPortAssociation) {
    emulator::remove_port(BY_NUMBER.ifIndex);
    const Answer answer = call(get_fcip_pe_reference_names, "7_x", "KESTO_FCPortProtocolEndPoint");
    expect_no_object(answer);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(answer.output.find("Exiting get_fcip_pe_reference_names"), std::string::npos);
}

TEST_F(ReferenceNamesTest, RemoteFcipPortMakesTheAssociationBeforeItTestsItsEnds) {
    emulator::add_fault(fault("fcip_get_entity_entry", Effect::Fail));
    const Answer answer = call(get_fcip_remote_pe_reference_names, "0_10.0.0.7", "KESTO_SANFCIPEndpoint");
    expect_no_object(answer);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(broker.call_texts("newObjectPath"),
              std::vector<std::string>{"newObjectPath root/kesto KESTO_SANFCIPEndpoint"});
    EXPECT_NE(answer.output.find("swop : NULL\n"), std::string::npos) << answer.output;
    EXPECT_EQ(trace_of(answer.output, "get_fcip_remote_pe_reference_names"),
              entering("get_fcip_remote_pe_reference_names"));
}

TEST_F(ReferenceNamesTest, OtherMembersTestTheirEndsBeforeTheyMakeTheAssociation) {
    emulator::add_fault(fault("fcip_get_entity_entry", Effect::Fail));
    const Answer answer = call(get_ip_remote_pe_reference_names, "0_10.0.0.7", "KESTO_SANIPEndPoint");
    EXPECT_EQ(status, -1);
    EXPECT_EQ(broker.call_texts("newObjectPath"), std::vector<std::string>{});
    EXPECT_EQ(answer.output.find("swop : NULL"), std::string::npos) << answer.output;
}

TEST_F(ReferenceNamesTest, IpSettingsTestTheirEndsInTheNames) {
    emulator::add_fault(fault("fcip_get_entity_entry", Effect::Fail));
    const Answer answer = call(get_ip_settings_reference_names, "7", "KESTO_IPElementSettingData");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(status, -1);
}

// The associators of the same source read "0_7" as the remote end of if-index 7.
TEST_F(ReferenceNamesTest, RemoteTcpPortIsLookedUpByTheFirstNumberOfItsKey) {
    EXPECT_EQ(names(get_tcp_remote_pe_reference_names, "0_7", "KESTO_SANTCPEndpoint"), Paths{});
    EXPECT_EQ(names(get_tcp_remote_pe_reference_names, "7_0", "KESTO_SANTCPEndpoint"),
              Paths{association(Kind::Realize, "KESTO_SANTCPEndpoint",
                                path(End::TcpEndpoint, "KESTO_TCPProtocolEndpoint", BY_IF_INDEX),
                                path(End::RemoteTcpPort, "KESTO_RemoteTCPPort", BY_IF_INDEX))});
}

TEST_F(ReferenceNamesTest, EthernetPortsLanEndpointAssociationIsNamedAsASettingAssociation) {
    EXPECT_EQ(names(get_eth_port_reference_names, "7", "KESTO_EthernetPortProtocolEndpoint"),
              Paths{association(Kind::Realize, "KESTO_IPElementSettingData",
                                path(End::EthernetPort, "KESTO_EthernetPort", BY_IF_INDEX),
                                port_path(End::LanEndpoint, "KESTO_LANEndpoint", 7))});
}

// ---- Ends that are made of port blocks. ----

TEST_F(ReferenceNamesTest, IpEndpointWithoutItsEthernetPortsBlockIsAMissingEnd) {
    emulator::remove_port(BY_IF_INDEX.ethernet);
    expect_no_object(call(get_ip_pe_reference_names, "7", "KESTO_IPEthernetEndpoint"));
    EXPECT_EQ(status, -1);
}

TEST_F(ReferenceNamesTest, EthernetPortWithoutThePortsBlockIsAMissingEnd) {
    emulator::remove_port(BY_IF_INDEX.ethernet);
    for (const char* asked : {"KESTO_EthernetPortProtocolEndpoint", "KESTO_EthernetPortStatisticalData"}) {
        expect_no_object(call(get_eth_port_reference_names, "7", asked));
        EXPECT_EQ(status, -1);
    }
}

TEST_F(ReferenceNamesTest, EthernetStatisticsWithoutThePortsBlockAreAMissingEnd) {
    for (const char* key : {"999", "", "no number"}) {
        expect_no_object(call(get_eth_stat_reference_names, key, "KESTO_EthernetPortStatisticalData"));
        EXPECT_EQ(status, -1);
    }
}

TEST_F(ReferenceNamesTest, EthernetStatisticsTakeThePortsBlockWhateverTheStatus) {
    const Paths wanted{
        association(Kind::ManagedStats, "KESTO_EthernetPortStatisticalData",
                    port_path(End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT),
                    port_path(End::EthernetStatistics, "KESTO_EthernetPortStatistics", GIGABIT_PORT))};
    emulator::add_fault(fault("pm_cim_get_port_info", Effect::FailWithRow));
    EXPECT_EQ(names(get_eth_stat_reference_names, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData"),
              wanted);
}

TEST_F(ReferenceNamesTest, LanEndpointOfAnUnknownPortHasNoPortAssociation) {
    for (const char* key : {"999:x", "", ":", "no number"}) {
        SCOPED_TRACE(key);
        expect_no_object(call(get_lan_endpoint_reference_names, key, "KESTO_EthernetPortProtocolEndpoint"));
        EXPECT_EQ(status, 0);
    }
}

TEST_F(ReferenceNamesTest, LanEndpointsPortAssociationReadsThePortAtTheStartOfTheKey) {
    const Paths wanted{association(Kind::Realize, "KESTO_EthernetPortProtocolEndpoint",
                                   port_path(End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT),
                                   port_path(End::LanEndpoint, "KESTO_LANEndpoint", GIGABIT_PORT))};
    for (const char* key : {"-1694433280:02:00:00:00:00:10", ":-1694433280", "_-1694433280_x"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(names(get_lan_endpoint_reference_names, key, "KESTO_EthernetPortProtocolEndpoint"), wanted);
    }
    EXPECT_EQ(emulator::count("fcip_get_link_entry"), 0U);
}

TEST_F(ReferenceNamesTest, LanEndpointsHostingAssociationLeadsToTheTunnelsEthernetPort) {
    EXPECT_EQ(names(get_lan_endpoint_reference_names, "7:x", "cim_hostedaccesspoint"),
              Paths{association(Kind::Realize, "CIM_HostedAccessPoint",
                                path(End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint", BY_IF_INDEX),
                                port_path(End::LanEndpoint, "KESTO_LANEndpoint", 402))});
}

TEST_F(ReferenceNamesTest, ATunnelWithoutAnEthernetPortHasNoStatisticsEnd) {
    FcipLinkEntry row = link_row(BY_IF_INDEX);
    row.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(row);
    expect_no_object(call(get_ip_pe_reference_names, "7", "KESTO_IPEndPointStatisticalData"));
    EXPECT_EQ(status, -1);
    expect_no_object(call(get_ip_stat_reference_names, "7", "KESTO_IPEndPointStatisticalData"));
    EXPECT_EQ(status, -1);
    expect_no_object(call(get_tcp_stat_reference_names, "7", "KESTO_TCPEndPointStatisticalData"));
    EXPECT_EQ(status, -1);
}

TEST_F(ReferenceNamesTest, TheRoleIsNotLookedAt) {
    const Answer answer = walk([&](const CMPIResult* result) {
        return get_ip_settings_reference_names("7", "KESTO_IPElementSettingData", "NoSuchRole", result,
                                               NAMESPACE);
    });
    EXPECT_EQ(answer.paths.size(), 1U);
}

} // namespace
