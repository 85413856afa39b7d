// The reference functions, what is particular to single sources.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/assoc/association_test.h"

using namespace golden;
using emulator::Effect;
using test_support::RecordedPath;

namespace {

using Paths = std::vector<RecordedPath>;
using Texts = std::vector<std::string>;

struct References {
    ReferenceNamesFn* names;
    ReferencesFn* instances;
};
constexpr References FCIP_PE{get_fcip_pe_reference_names, get_fcip_pe_references};
constexpr References IP_PE{get_ip_pe_reference_names, get_ip_pe_references};
constexpr References TCP_PE{get_tcp_pe_reference_names, get_tcp_pe_references};
constexpr References FCIP_REMOTE_PE{get_fcip_remote_pe_reference_names, get_fcip_remote_pe_references};
constexpr References IP_REMOTE_PE{get_ip_remote_pe_reference_names, get_ip_remote_pe_references};
constexpr References TCP_REMOTE_PE{get_tcp_remote_pe_reference_names, get_tcp_remote_pe_references};
constexpr References LAN_ENDPOINT{get_lan_endpoint_reference_names, get_lan_endpoint_references};
constexpr References IP_SETTINGS{get_ip_settings_reference_names, get_ip_settings_references};
constexpr References IP_STAT{get_ip_stat_reference_names, get_ip_stat_references};
constexpr References TCP_STAT{get_tcp_stat_reference_names, get_tcp_stat_references};
constexpr References PROFILE{get_profile_reference_names, get_profile_references};
constexpr References ETH_PORT{get_eth_port_reference_names, get_eth_port_references};
constexpr References ETH_STAT{get_eth_stat_reference_names, get_eth_stat_references};

class ReferenceForms : public AssociationTest, public testing::WithParamInterface<Form> {
  protected:
    Form form() const { return GetParam(); }
    Answer ask(const References& source, const char* key, const char* asked) {
        return call(form(), source, key, asked);
    }
    Paths found(const References& source, const char* key, const char* asked) {
        return associations_of(ask(source, key, asked));
    }
    // The function gives up on an end that it cannot make.
    void expect_missing_end(const References& source, const char* key, const char* asked) {
        SCOPED_TRACE(std::string(asked) + " of \"" + key + "\"");
        EXPECT_TRUE(ask(source, key, asked).returned.empty());
        EXPECT_EQ(status, -1);
    }
};

// The profile and the endpoint each ask for the profile's row.
TEST_P(ReferenceForms, ProfileThatCannotBeReadIsAMissingEnd) {
    for (const std::uint32_t nth : {1U, 2U}) {
        emulator::fail_call("fcip_get_entity_entry", nth);
        expect_missing_end(FCIP_PE, "7_x", "KESTO_FCIPPEBasedOn");
        emulator::clear_faults();
        emulator::fail_call("fcip_get_entity_entry", nth);
        expect_missing_end(PROFILE, "7", "KESTO_FCIPPEBasedOn");
        emulator::clear_faults();
    }
}

TEST_P(ReferenceForms, TcpEndpointKnowsItsFcipAssociationWithoutTheLetterDOnly) {
    EXPECT_EQ(found(TCP_PE, "7", "KESTO_FCIPTCPEndpoint"), Paths{});
    EXPECT_EQ(found(TCP_PE, "7", "KESTO_FCIPTCPEnpoint").size(), 1U);
}

// The platform finds the class by its prefix, so the swap shows in the call only.
TEST_P(ReferenceForms, FcPortIsAskedForWithNamespaceAndClassSwapped) {
    ask(FCIP_PE, "7_x", "KESTO_FCPortProtocolEndPoint");
    EXPECT_EQ(emulator::calls("fcport_fill_reference_pm"),
              Texts{"fcport_fill_reference_pm root/kesto KESTO_FCPort if=0x0000012d"}); // 301
}

TEST_P(ReferenceForms, FcipEndpointWithoutAnInterfaceHasNoFcPortAssociation) {
    emulator::remove_port(BY_NUMBER.ifIndex);
    const Answer answer = ask(FCIP_PE, "7_x", "KESTO_FCPortProtocolEndPoint");
    EXPECT_TRUE(answer.returned.empty());
    EXPECT_EQ(status, -1);
    EXPECT_EQ(answer.output.find("Exiting get_fcip_pe_reference"), std::string::npos);
}

// The names function of the remote FCIP port makes the association before it looks at its ends.
TEST_P(ReferenceForms, OnlyTheNamesOfTheRemoteFcipPortMakeTheAssociationBeforeTheirEndsAreTested) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry"});
    const Answer fcip = ask(FCIP_REMOTE_PE, "0_10.0.0.7", "KESTO_SANFCIPEndpoint");
    EXPECT_TRUE(fcip.returned.empty());
    EXPECT_EQ(status, -1);
    const bool early = form() == Form::Names;
    EXPECT_EQ(broker.call_texts("newObjectPath"),
              early ? Texts{"newObjectPath root/kesto KESTO_SANFCIPEndpoint"} : Texts{});
    EXPECT_EQ(fcip.output.find("swop : NULL\n") != std::string::npos, early) << fcip.output;

    broker.clear_calls();
    const Answer ip = ask(IP_REMOTE_PE, "0_10.0.0.7", "KESTO_SANIPEndPoint");
    EXPECT_EQ(status, -1);
    EXPECT_EQ(broker.call_texts("newObjectPath"), Texts{});
    EXPECT_EQ(ip.output.find("swop : NULL"), std::string::npos) << ip.output;
}

// The associators of the same source read "0_7" as the remote end of if-index 7.
TEST_P(ReferenceForms, RemoteTcpPortIsLookedUpByTheFirstNumberOfItsKey) {
    EXPECT_EQ(found(TCP_REMOTE_PE, "0_7", "KESTO_SANTCPEndpoint"), Paths{});
    EXPECT_EQ(found(TCP_REMOTE_PE, "7_0", "KESTO_SANTCPEndpoint").size(), 1U);
}

TEST_P(ReferenceForms, PortsThatAreGoneAreMissingEnds) {
    emulator::remove_port(BY_IF_INDEX.ethernet);
    expect_missing_end(IP_PE, "7", "KESTO_IPEthernetEndpoint");
    expect_missing_end(ETH_PORT, "7", "KESTO_EthernetPortProtocolEndpoint");
    expect_missing_end(ETH_PORT, "7", "KESTO_EthernetPortStatisticalData");
    for (const char* key : {"999", "", "no number"}) {
        expect_missing_end(ETH_STAT, key, "KESTO_EthernetPortStatisticalData");
    }
}

TEST_P(ReferenceForms, LanEndpointOfAnUnknownPortHasNoPortAssociation) {
    for (const char* key : {"999:x", "", ":", "no number"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(found(LAN_ENDPOINT, key, "KESTO_EthernetPortProtocolEndpoint"), Paths{});
        EXPECT_EQ(status, 0) << "the LAN endpoint's own port is no end that can be missing";
    }
}

TEST_P(ReferenceForms, LanEndpointsPortAssociationReadsThePortAtTheStartOfTheKey) {
    const Paths wanted{association(Kind::Realize, "KESTO_EthernetPortProtocolEndpoint",
                                   port_path(End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT),
                                   port_path(End::LanEndpoint, "KESTO_LANEndpoint", GIGABIT_PORT))};
    for (const char* key : {"-1694433280:02:00:00:00:00:10", ":-1694433280", "_-1694433280_x"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(found(LAN_ENDPOINT, key, "KESTO_EthernetPortProtocolEndpoint"), wanted);
    }
    EXPECT_EQ(emulator::count("fcip_get_link_entry"), 0U);
}

TEST_P(ReferenceForms, EthernetStatisticsTakeThePortsBlockWhateverTheStatus) {
    const Paths wanted{
        association(Kind::ManagedStats, "KESTO_EthernetPortStatisticalData",
                    port_path(End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT),
                    port_path(End::EthernetStatistics, "KESTO_EthernetPortStatistics", GIGABIT_PORT))};
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .effect = Effect::FailWithRow});
    EXPECT_EQ(found(ETH_STAT, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData"), wanted);
}

TEST_P(ReferenceForms, TunnelWithoutAnEthernetPortHasNoStatisticsEnd) {
    FcipLinkEntry row = link_row(BY_IF_INDEX);
    row.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(row);
    expect_missing_end(IP_PE, "7", "KESTO_IPEndPointStatisticalData");
    expect_missing_end(IP_STAT, "7", "KESTO_IPEndPointStatisticalData");
    expect_missing_end(TCP_STAT, "7", "KESTO_TCPEndPointStatisticalData");
}

TEST_P(ReferenceForms, RoleIsNotLookedAt) {
    const Answer answer = walk([&](const CMPIResult* result) {
        return form() == Form::Names
                   ? IP_SETTINGS.names("7", "KESTO_IPElementSettingData", "NoSuchRole", result, NAMESPACE)
                   : IP_SETTINGS.instances("7", "KESTO_IPElementSettingData", "NoSuchRole", nullptr, result,
                                           NAMESPACE);
    });
    EXPECT_EQ(answer.returned.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Of, ReferenceForms, testing::ValuesIn(FORMS), testing::PrintToStringParamName());

} // namespace
