// The references members, row by row: the instance of the association that ties the source to its other end.
#include "tests/assoc/reference_suite.h"

using namespace golden;
using emulator::Effect;
using test_support::Answer;
using test_support::Failure;
using test_support::Make;
using test_support::Object;

namespace {

// ---- Every row. ----

class ReferencesRow : public ReferenceRowSuite<Form::Instances> {};
TEST_P(ReferencesRow, TheAssociationIsNamedAsTheRowSays) {
    the_association_is_named_as_the_row_says();
}
TEST_P(ReferencesRow, APathThatTheBrokerCannotMake) {
    a_path_that_the_broker_cannot_make();
}
TEST_P(ReferencesRow, AHitReleasesNothing) {
    a_hit_releases_nothing();
}
TEST_P(ReferencesRow, EachCallMayFailOnItsOwn) {
    each_call_may_fail_on_its_own();
}
TEST_P(ReferencesRow, AnInstanceThatTheBrokerCannotMakeIsNotReturned) {
    broker.fail_every(Make::Instance, Failure::Null);
    const Answer answer = ask_hit();
    expect_no_valid_object(answer);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(trace_of(answer.output, function()), whole_trace(row().tested));
}
TEST_P(ReferencesRow, ThePropertyListIsNotUsed) {
    const char* properties[] = {"NoSuchProperty", nullptr};
    const Answer answer = walk([&](const CMPIResult* result) {
        return row().member->references(hit_key().c_str(), row().tested, nullptr, properties, result,
                                        NAMESPACE);
    });
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_TRUE(answer.instances[0].filters().empty());
    EXPECT_EQ(associations_of(answer), expected_of_hit(row().tested));
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferencesRow, testing::ValuesIn(REFERENCE_ROWS), ReferenceRowName());

class ReferencesTunnelRow : public ReferenceRowSuite<Form::Instances> {};
TEST_P(ReferencesTunnelRow, EachKeyNamesItsTunnelInTheRowsMode) {
    each_key_names_its_tunnel();
}
TEST_P(ReferencesTunnelRow, AFailedLookupReturnsNothing) {
    a_failed_lookup_returns_nothing();
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferencesTunnelRow, testing::ValuesIn(reference_rows_that(looks_a_tunnel_up)),
                         ReferenceRowName());

class ReferencesOfATunnelsEnds : public ReferenceRowSuite<Form::Instances> {};
TEST_P(ReferencesOfATunnelsEnds, AnEndWithoutItsProfileIsMissing) {
    ends_fail_with_their_profile();
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferencesOfATunnelsEnds,
                         testing::ValuesIn(reference_rows_that([](const ReferenceRow& row) {
                             return needs_profile(row) && std::string(row.member->source) != "ip_settings";
                         })),
                         ReferenceRowName());

class ReferencesOfHostedEnds : public ReferenceRowSuite<Form::Instances> {};
TEST_P(ReferencesOfHostedEnds, AHostingSystemThatIsMinusOneIsAMissingEnd) {
    for (const char* symbol : {"vsan_cim_get_vsanEntry", "dm_cim_get_dmEntry"}) {
        emulator::clear_faults();
        emulator::add_fault(fault(symbol, Effect::Fail));
        broker.clear_calls();
        expect_missing_end(ask_hit());
        EXPECT_EQ(broker.call_texts("releaseObjectPath").size(), broker.call_texts("newObjectPath").size());
    }
}
INSTANTIATE_TEST_SUITE_P(Rows, ReferencesOfHostedEnds,
                         testing::ValuesIn(reference_rows_that(has_hosting_system)), ReferenceRowName());

// ---- Every member. ----

class ReferencesOfMember : public ReferenceMemberSuite<Form::Instances> {};
TEST_P(ReferencesOfMember, WithoutAnAssociationClassReturnsNothing) {
    without_an_association_class_returns_nothing();
}
TEST_P(ReferencesOfMember, AnUnknownAssociationClassReturnsNothing) {
    an_unknown_association_class_returns_nothing();
}
INSTANTIATE_TEST_SUITE_P(Members, ReferencesOfMember, testing::ValuesIn(REFERENCE_MEMBERS),
                         ReferenceMemberName());

// ---- What is particular. ----

class ReferencesTest : public AssociationTest {
  protected:
    using Paths = std::vector<test_support::RecordedPath>;
    Paths found(ReferencesFn* member, const char* key, const char* asked) {
        return associations_of(call(member, key, asked));
    }
};

TEST_F(ReferencesTest, FcipEndpointWithoutAnInterfaceHasNoFcPortAssociation) {
    emulator::remove_port(BY_NUMBER.ifIndex);
    const Answer answer = call(get_fcip_pe_references, "7_x", "KESTO_FCPortProtocolEndPoint");
    expect_no_object(answer);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(answer.output.find("Exiting get_fcip_pe_references"), std::string::npos);
}

TEST_F(ReferencesTest, FcPortIsAskedForWithNamespaceAndClassSwapped) {
    call(get_fcip_pe_references, "7_x", "KESTO_FCPortProtocolEndPoint");
    EXPECT_EQ(
        emulator::calls("fcport_fill_reference_pm"),
        std::vector<std::string>{"fcport_fill_reference_pm root/kesto KESTO_FCPort if=0x0000012d"}); // 301
}

TEST_F(ReferencesTest, EthernetPortsLanEndpointAssociationIsNamedAsASettingAssociation) {
    EXPECT_EQ(found(get_eth_port_references, "7", "KESTO_EthernetPortProtocolEndpoint"),
              Paths{association(Kind::Realize, "KESTO_IPElementSettingData",
                                path(End::EthernetPort, "KESTO_EthernetPort", BY_IF_INDEX),
                                port_path(End::LanEndpoint, "KESTO_LANEndpoint", 7))});
}

// The profile and the endpoint each ask for the profile's row.
TEST_F(ReferencesTest, AProfileThatCannotBeReadIsAMissingEnd) {
    for (const std::uint32_t nth : {1U, 2U}) {
        emulator::fail_call("fcip_get_entity_entry", nth);
        expect_no_object(call(get_fcip_pe_references, "7_x", "KESTO_FCIPPEBasedOn"));
        EXPECT_EQ(status, -1);
        emulator::clear_faults();
        emulator::fail_call("fcip_get_entity_entry", nth);
        expect_no_object(call(get_profile_references, "7", "KESTO_FCIPPEBasedOn"));
        EXPECT_EQ(status, -1);
        emulator::clear_faults();
    }
}

TEST_F(ReferencesTest, TcpEndpointKnowsItsFcipAssociationWithoutTheLetterDOnly) {
    EXPECT_EQ(found(get_tcp_pe_references, "7", "KESTO_FCIPTCPEndpoint"), Paths{});
    EXPECT_EQ(found(get_tcp_pe_references, "7", "KESTO_FCIPTCPEnpoint"),
              Paths{association(Kind::Realize, "KESTO_FCIPTCPEndpoint",
                                path(End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint", BY_IF_INDEX),
                                path(End::TcpEndpoint, "KESTO_TCPProtocolEndPoint", BY_IF_INDEX))});
}

// This one function hands its ends on untested: the builder complains about them and makes nothing, and that
// nothing is what is returned.
TEST_F(ReferencesTest, IpSettingsDoNotTestTheirEnds) {
    emulator::add_fault(fault("fcip_get_entity_entry", Effect::Fail));
    const Answer answer = call(get_ip_settings_references, "7", "KESTO_IPElementSettingData");
    EXPECT_NE(answer.output.find("swop : NULL\n"), std::string::npos) << answer.output;
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].kind(), Object::Null);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(trace_of(answer.output, "get_ip_settings_references"),
              entering("get_ip_settings_references") + "Result Class :KESTO_IPElementSettingData \n" +
                  exiting("get_ip_settings_references"));
}

TEST_F(ReferencesTest, RemoteFcipPortTestsItsEndsBeforeItMakesTheAssociation) {
    emulator::add_fault(fault("fcip_get_entity_entry", Effect::Fail));
    const Answer answer = call(get_fcip_remote_pe_references, "0_10.0.0.7", "KESTO_SANFCIPEndpoint");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(broker.call_texts("newObjectPath"), std::vector<std::string>{});
    EXPECT_EQ(answer.output.find("swop : NULL"), std::string::npos) << answer.output;
}

TEST_F(ReferencesTest, RemoteTcpPortIsLookedUpByTheFirstNumberOfItsKey) {
    EXPECT_EQ(found(get_tcp_remote_pe_references, "0_7", "KESTO_SANTCPEndpoint"), Paths{});
    EXPECT_EQ(found(get_tcp_remote_pe_references, "7_0", "KESTO_SANTCPEndpoint").size(), 1U);
}

TEST_F(ReferencesTest, PortsThatAreGoneAreMissingEnds) {
    emulator::remove_port(BY_IF_INDEX.ethernet);
    expect_no_object(call(get_ip_pe_references, "7", "KESTO_IPEthernetEndpoint"));
    EXPECT_EQ(status, -1);
    expect_no_object(call(get_eth_port_references, "7", "KESTO_EthernetPortProtocolEndpoint"));
    EXPECT_EQ(status, -1);
    expect_no_object(call(get_eth_port_references, "7", "KESTO_EthernetPortStatisticalData"));
    EXPECT_EQ(status, -1);
    expect_no_object(call(get_eth_stat_references, "999", "KESTO_EthernetPortStatisticalData"));
    EXPECT_EQ(status, -1);
    expect_no_object(call(get_lan_endpoint_references, "999:x", "KESTO_EthernetPortProtocolEndpoint"));
    EXPECT_EQ(status, 0) << "the LAN endpoint's own port is no end that can be missing";
}

TEST_F(ReferencesTest, EthernetStatisticsTakeThePortsBlockWhateverTheStatus) {
    const Paths wanted{
        association(Kind::ManagedStats, "KESTO_EthernetPortStatisticalData",
                    port_path(End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT),
                    port_path(End::EthernetStatistics, "KESTO_EthernetPortStatistics", GIGABIT_PORT))};
    emulator::add_fault(fault("pm_cim_get_port_info", Effect::FailWithRow));
    EXPECT_EQ(found(get_eth_stat_references, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData"), wanted);
}

} // namespace
