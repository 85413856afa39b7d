// KESTO_TCPProtocolEndPoint and KESTO_IPProtocolEndPoint.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"
#include "tests/support/rows.h"

namespace class_tests {
namespace {

// TCP endpoint.

class TcpEndpoint : public ClassTest {
  protected:
    RecordedInstance build() {
        return make(
            [&] { return tcp_pe_build_instance("KESTO_TCPProtocolEndPoint", NAMESPACE, &link, nullptr); });
    }
    RecordedPath fill() {
        return make([&] { return tcp_pe_fill_reference("KESTO_TCPProtocolEndPoint", NAMESPACE, &link); });
    }
    const Sets properties = golden_properties("tcp_pe_build_instance");
    const Sets keys = golden_keys("tcp_pe_fill_reference");
    const std::vector<std::string> connectionProperties{"MaximumSegmentSize", "ReceiverWindowSize",
                                                        "ConnectionTimeOut", "ConnectionPurpose"};
};

TEST_F(TcpEndpoint, NameIsTheIfIndexInInstanceAndPath) {
    EXPECT_EQ(build().value("Name"), "17");
    EXPECT_EQ(fill().key("Name"), "17");
    link.kfmFcipLinkIfIndex = 0x82000001; // above 0x7FFFFFFF numbers print as negative ones
    EXPECT_EQ(build().value("Name"), "-2113929215");
    EXPECT_EQ(fill().key("Name"), "-2113929215");
}

TEST_F(TcpEndpoint, ConnectionIsAskedForByProfileLinkAndBothPorts) {
    build();
    EXPECT_EQ(emulator::calls("fcip_get_tcpconn_entry"),
              std::vector<std::string>{"fcip_get_tcpconn_entry op=1 key={3,4,2024,1076} 15"});
}

TEST_F(TcpEndpoint, PortsOfTheConnectionKeyAreCutToSixteenBitsThePropertiesAreNot) {
    profile.kfmFcipEntityTcpPort = 65536 + 2024;
    emulator::add_entity(profile);
    link.kfmFcipLinkExtTcpRemPort = 65536 + 1076;
    const RecordedInstance instance = build();
    EXPECT_EQ(emulator::calls("fcip_get_tcpconn_entry"),
              std::vector<std::string>{"fcip_get_tcpconn_entry op=1 key={3,4,2024,1076} 15"});
    EXPECT_EQ(instance.value("PortNumber"), 67560);
    EXPECT_EQ(instance.value("RemotePortNumber"), 66612);
}

TEST_F(TcpEndpoint, WithoutAConnectionRowTheInstanceLacksItsProperties) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_get_tcpconn_entry"}, [&] {
        const RecordedInstance instance = build();
        EXPECT_EQ(instance.sets(), without(properties, connectionProperties));
        EXPECT_EQ(instance.filters().size(), 1U);
        EXPECT_EQ(trace, entering("tcp_pe_build_instance") + exiting("tcp_pe_build_instance"));
    });
}

TEST_F(TcpEndpoint, ConnectionPurposesOneToThreeAreTexts) {
    const std::pair<std::uint32_t, const char*> purposes[] = {{1, "1"}, {2, "2"}, {3, "3"}};
    for (const auto& [purpose, text] : purposes) {
        FcipTcpConnEntry connection = one_tunnel::tcp_connection();
        connection.connectionPurpose = purpose;
        emulator::add_tcp_connection(one_tunnel::tcp_connection_key(), connection);
        EXPECT_EQ(build().sets(), with(properties, "ConnectionPurpose", text));
    }
}

TEST_F(TcpEndpoint, AnyOtherConnectionPurposeIsLeftUnset) {
    for (const std::uint32_t purpose : {0U, 4U, 257U, 0xFFFFFFFFU}) {
        FcipTcpConnEntry connection = one_tunnel::tcp_connection();
        connection.connectionPurpose = purpose;
        emulator::add_tcp_connection(one_tunnel::tcp_connection_key(), connection);
        EXPECT_EQ(build().sets(), without(properties, {"ConnectionPurpose"})) << purpose;
    }
}

// IP endpoint.

class IpEndpoint : public ClassTest {
  protected:
    RecordedInstance build() {
        return make(
            [&] { return ip_pe_build_instance("KESTO_IPProtocolEndPoint", NAMESPACE, &link, nullptr); });
    }
    RecordedPath fill() {
        return make([&] { return ip_pe_fill_reference("KESTO_IPProtocolEndPoint", NAMESPACE, &link); });
    }
    void use_profile_address(const IpAddr& address) {
        profile.kfmFcipEntityAddress = address;
        emulator::add_entity(profile);
    }
    const Sets properties = golden_properties("ip_pe_build_instance");
    const Sets keys = golden_keys("ip_pe_fill_reference");
};

TEST_F(IpEndpoint, NameIsIfIndexLocalAndRemoteAddress) {
    use_profile_address(test_support::address("10.0.0.1"));
    link.kfmFcipLinkRemFcipEntityAddress = test_support::address("10.0.0.2");
    link.kfmFcipLinkIfIndex = 5;
    EXPECT_EQ(build().value("Name"), "5_10.0.0.1_10.0.0.2");
    EXPECT_EQ(fill().key("Name"), "5_10.0.0.1_10.0.0.2");
}

TEST_F(IpEndpoint, NameIsCutTo58CharactersInInstanceAndPath) {
    use_profile_address(test_support::address("2001:db8:1111:2222:3333:4444:5555:6666"));
    link.kfmFcipLinkRemFcipEntityAddress = test_support::address("2001:db8:1111:2222:3333:4444:5555:7777");
    const char* cut = "17_2001:db8:1111:2222:3333:4444:5555:6666_2001:db8:1111:22";
    ASSERT_EQ(std::string(cut).size(), 58U);
    EXPECT_EQ(build().value("Name"), cut);
    EXPECT_EQ(fill().key("Name"), cut);
}

TEST_F(IpEndpoint, AnIpv6ProfileHasAnIpv6AddressAndNoIpv4Address) {
    use_profile_address(test_support::address("2001:db8::1"));
    Sets want = with(with(properties, "IPv4Address", "NULL"), "IPv6Address", "2001:db8::1");
    EXPECT_EQ(build().sets(), with(want, "Name", "17_2001:db8::1_10.1.1.2"));
}

TEST_F(IpEndpoint, AnUnsetProfileAddressHasNeitherAddressAndNullInItsName) {
    use_profile_address(IpAddr{});
    const Sets want = without(properties, {"IPv4Address", "IPv6Address"});
    EXPECT_EQ(build().sets(), with(want, "Name", "17_null_10.1.1.2"));
}

TEST_F(IpEndpoint, TheFamilyOfTheProfilesAddressIsTraced) {
    IpAddr unknown = test_support::address("10.1.1.1");
    unknown.addrType = 3;
    const std::pair<IpAddr, const char*> traces[] = {
        {test_support::address("10.1.1.1"), "address family 0\n"},
        {test_support::address("2001:db8::1"), "address family 1\n"},
        {IpAddr{}, "address family 2\n"}, // unset
        {unknown, "address family unknown\n"},
    };
    for (const auto& [address, text] : traces) {
        use_profile_address(address);
        build();
        EXPECT_NE(trace.find(text), std::string::npos) << trace;
    }
}

TEST_F(IpEndpoint, AnUnsetProfileAddressIsEmptyInThePathsName) {
    use_profile_address(IpAddr{});
    EXPECT_EQ(fill().key("Name"), "17__10.1.1.2");
}

TEST_F(IpEndpoint, AnAddressThatHasNoTextReadsNullTwice) {
    // An address of no family whose bytes are set, and one of a family that nobody knows.
    IpAddr half{};
    half.addr[0] = 1;
    IpAddr unknown = test_support::address("10.1.1.1");
    unknown.addrType = 3;
    for (const IpAddr& address : {half, unknown}) {
        use_profile_address(address);
        Sets want = with(properties, "IPv4Address", "NULL");
        EXPECT_EQ(build().sets(), with(want, "Name", "17__10.1.1.2"));
    }
}

TEST_F(IpEndpoint, WithoutAnAddressRecordThereIsNoSubnetMask) {
    for_each_effect(STATUS_FAILURES, {.symbol = "ipconf_get_intf_ip_address"},
                    [&] { EXPECT_EQ(build().sets(), without(properties, {"SubnetMask"})); });
}

TEST_F(IpEndpoint, WithoutAnInternetAddressRecordThereIsNoPrefixLength) {
    for_each_effect(STATUS_FAILURES, {.symbol = "ipconf_get_if_inet_addrs"},
                    [&] { EXPECT_EQ(build().sets(), without(properties, {"PrefixLength"})); });
}

TEST_F(IpEndpoint, PrefixLengthIsTheWordsLowByte) {
    emulator::Port port = emulator::find_port(one_tunnel::ETHERNET).value();
    port.prefixLength = 0x140;
    emulator::add_port(port);
    EXPECT_EQ(build().value("PrefixLength"), 0x40);
}

TEST_F(IpEndpoint, MtuIs1500FirstAndThenZeroWhenThePortHasNone) {
    emulator::fail_always("pm_get_clear_eth_stats");
    Sets want = with(properties, "MaxTransmissionUnit", 0);
    const auto addressOrigin =
        std::find_if(want.begin(), want.end(), [](const Set& set) { return set.name == "AddressOrigin"; });
    want.insert(addressOrigin, {"MaxTransmissionUnit", CMPI_uint32, 1500});
    EXPECT_EQ(build().sets(), want);
}

TEST_F(IpEndpoint, MtuIsNotCutToSixteenBits) {
    emulator::Port port = emulator::find_port(one_tunnel::ETHERNET).value();
    port.mtu = 0x01020304;
    emulator::add_port(port);
    EXPECT_EQ(build().sets(), with(properties, "MaxTransmissionUnit", 0x01020304));
}

TEST_F(IpEndpoint, AddressesAndMtuAreThoseOfTheTunnelsEthernetPort) {
    build();
    EXPECT_EQ(emulator::calls("ipconf_get_intf_ip_address"),
              std::vector<std::string>{"ipconf_get_intf_ip_address if=0x9b010000"});
    EXPECT_EQ(emulator::calls("ipconf_get_if_inet_addrs"),
              std::vector<std::string>{"ipconf_get_if_inet_addrs if=0x9b010000"});
    EXPECT_EQ(emulator::calls("pm_get_clear_eth_stats"),
              std::vector<std::string>{"pm_get_clear_eth_stats if=0x9b010000 if2=0x9b010000 1"});
}

TEST_F(IpEndpoint, PathMtuDiscoveryIsTrueForOneOnly) {
    for (const std::uint32_t flag : {0U, 2U, 256U, 257U}) {
        profile.kfmFcipEntityPmtuEnable = flag;
        emulator::add_entity(profile);
        EXPECT_EQ(build().value("PathMTUDiscovery"), 0) << flag;
    }
}

TEST_F(IpEndpoint, FillingFromNoLinkGivesNothing) {
    const RecordedPath path =
        make([] { return ip_pe_fill_reference("KESTO_IPProtocolEndPoint", NAMESPACE, nullptr); });
    EXPECT_EQ(path.kind(), Object::Null);
    EXPECT_EQ(trace, entering("ip_pe_fill_reference"));
    EXPECT_TRUE(emulator::calls("fcip_get_entity_entry").empty());
}

TEST_F(IpEndpoint, ASuccessWithoutAProfileRowGivesAPathWithoutKeys) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry", .effect = Effect::SucceedWithoutRow});
    const RecordedPath path = fill();
    EXPECT_EQ(path.kind(), Object::Valid);
    EXPECT_EQ(path.keys(), Sets{});
    EXPECT_EQ(path.host(), std::nullopt);
    EXPECT_EQ(trace, entering("ip_pe_fill_reference") + exiting("ip_pe_fill_reference"));
}

} // namespace
} // namespace class_tests
