// The tunnel's far end: KESTO_RemoteFCIPPort, KESTO_RemoteIPServiceAccessPoint and KESTO_RemoteTCPPort.
#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"
#include "tests/support/rows.h"

namespace class_tests {
namespace {

using Build = CMPIInstance*(const char*, const char*, const FcipLinkEntry*, const char**);
using Fill = CMPIObjectPath*(const char*, const char*, const FcipLinkEntry*);

class RemoteEndpoints : public ClassTest {
  protected:
    RecordedInstance build(Build* builder, const char* className = "KESTO_Remote") {
        return make([&] { return builder(className, NAMESPACE, &link, nullptr); });
    }
    RecordedPath fill(Fill* filler, const char* className = "KESTO_Remote") {
        return make([&] { return filler(className, NAMESPACE, &link); });
    }
    void use_addresses(const std::string& local, const std::string& remote) {
        profile.kfmFcipEntityAddress = test_support::address(local);
        emulator::add_entity(profile);
        link.kfmFcipLinkRemFcipEntityAddress = test_support::address(remote);
    }
};

TEST_F(RemoteEndpoints, FcipPortsInstanceNamesThePeersEntityAndItsPathZero) {
    use_addresses("10.0.0.1", "10.0.0.2");
    EXPECT_EQ(build(fcip_remote_pe_build_instance).value("Name"), "7_10.0.0.2_10.0.0.1");
    EXPECT_EQ(fill(fcip_remote_pe_fill_reference).key("Name"), "0_10.0.0.2_10.0.0.1");
}

TEST_F(RemoteEndpoints, FcipPortsInstanceAndPathAgreeOnlyForAPeerWithEntityZero) {
    link.kfmFcipLinkRemFcipEntityId = 0;
    EXPECT_EQ(build(fcip_remote_pe_build_instance).value("Name"), "0_10.1.1.2_10.1.1.1");
    EXPECT_EQ(fill(fcip_remote_pe_fill_reference).key("Name"), "0_10.1.1.2_10.1.1.1");
}

TEST_F(RemoteEndpoints, IpAccessPointsNameHasZeroInInstanceAndPath) {
    use_addresses("10.0.0.1", "10.0.0.2");
    EXPECT_EQ(build(ip_remote_pe_build_instance).value("Name"), "0_10.0.0.2_10.0.0.1");
    EXPECT_EQ(fill(ip_remote_pe_fill_reference).key("Name"), "0_10.0.0.2_10.0.0.1");
}

TEST_F(RemoteEndpoints, FcipPortSeesTheTunnelFromThePeer) {
    const RecordedInstance port = build(fcip_remote_pe_build_instance);
    EXPECT_EQ(port.value("LocalIPAddress"), "10.1.1.2") << "the peer's";
    EXPECT_EQ(port.value("RemoteIPAddress"), "10.1.1.1") << "the switch's";
}

TEST_F(RemoteEndpoints, TcpPortSeesTheTunnelFromThePeer) {
    for (Build* builder : {tcp_remote_pe_build_instance, remote_service_ap_build_instance}) {
        const RecordedInstance port = build(builder);
        EXPECT_EQ(port.value("RemotePortNumber"), 2024) << "the switch's";
        EXPECT_EQ(port.value("PortNumber"), 1076) << "the peer's";
    }
}

TEST_F(RemoteEndpoints, FcipPortsNameIsCutToThirtyCharacters) {
    use_addresses("192.168.100.100", "192.168.100.101");
    EXPECT_EQ(build(fcip_remote_pe_build_instance).value("Name"), "7_192.168.100.101_192.168.100.");
    EXPECT_EQ(fill(fcip_remote_pe_fill_reference).key("Name"), "0_192.168.100.101_192.168.100.");
}

TEST_F(RemoteEndpoints, FcipPortsPathCutsEachAddressToNineteenCharactersTheInstanceDoesNot) {
    use_addresses("2001:db8::2", "2001:db8:1111:2222:3333:4444:5555:6666");
    EXPECT_EQ(build(fcip_remote_pe_build_instance).value("Name"), "7_2001:db8:1111:2222:3333:4444");
    EXPECT_EQ(fill(fcip_remote_pe_fill_reference).key("Name"), "0_2001:db8:1111:2222:_2001:db8");
    EXPECT_EQ(build(fcip_remote_pe_build_instance).value("LocalIPAddress"),
              "2001:db8:1111:2222:3333:4444:5555:6666");
}

TEST_F(RemoteEndpoints, IpAccessPointsNameIsCutTo58CharactersInInstanceAndPath) {
    use_addresses("2001:db8:1111:2222:3333:4444:5555:7777", "2001:db8:1111:2222:3333:4444:5555:6666");
    const char* cut = "0_2001:db8:1111:2222:3333:4444:5555:6666_2001:db8:1111:222";
    ASSERT_EQ(std::string(cut).size(), 58U);
    EXPECT_EQ(build(ip_remote_pe_build_instance).value("Name"), cut);
    EXPECT_EQ(fill(ip_remote_pe_fill_reference).key("Name"), cut);
}

TEST_F(RemoteEndpoints, AnIpv6PeerFillsTheIpv4AddressAllTheSame) {
    use_addresses("10.1.1.1", "2001:db8::2");
    const RecordedInstance accessPoint = build(ip_remote_pe_build_instance);
    EXPECT_EQ(accessPoint.value("IPv4Address"), "2001:db8::2");
    EXPECT_EQ(accessPoint.value("AccessInfo"), "2001:db8::2");
    EXPECT_FALSE(accessPoint.has("IPv6Address"));
}

TEST_F(RemoteEndpoints, TcpPortsNameIsZeroAndTheIfIndex) {
    link.kfmFcipLinkIfIndex = 42;
    for (Build* builder : {tcp_remote_pe_build_instance, remote_service_ap_build_instance}) {
        EXPECT_EQ(build(builder).value("Name"), "0_42");
    }
    for (Fill* filler : {tcp_remote_pe_fill_reference, remote_service_ap_fill_reference}) {
        EXPECT_EQ(fill(filler).key("Name"), "0_42");
    }
    link.kfmFcipLinkIfIndex = 0xFFFFFFFE;
    for (Build* builder : {tcp_remote_pe_build_instance, remote_service_ap_build_instance}) {
        EXPECT_EQ(build(builder).value("Name"), "0_-2");
    }
    for (Fill* filler : {tcp_remote_pe_fill_reference, remote_service_ap_fill_reference}) {
        EXPECT_EQ(fill(filler).key("Name"), "0_-2");
    }
}

TEST_F(RemoteEndpoints, TcpPortsPathNamesTheRequestedClassAsItsCreationClass) {
    for (Fill* filler : {tcp_remote_pe_fill_reference, remote_service_ap_fill_reference}) {
        EXPECT_EQ(fill(filler, "kesto_remotetcpport").key("CreationClassName"), "kesto_remotetcpport");
    }
    for (Build* builder : {tcp_remote_pe_build_instance, remote_service_ap_build_instance}) {
        EXPECT_EQ(build(builder, "kesto_remotetcpport").value("CreationClassName"), "KESTO_RemoteTCPPort")
            << "the instance does not";
    }
}

TEST_F(RemoteEndpoints, EnumeratedTcpPortPathsNameTheRequestedClassAsTheirCreationClass) {
    const Answer answer = enumerate_names("kesto_remotetcpport");
    ASSERT_EQ(answer.paths.size(), 1U);
    EXPECT_EQ(answer.paths[0].class_name(), "kesto_remotetcpport");
    EXPECT_EQ(answer.paths[0].key("CreationClassName"), "kesto_remotetcpport");
}

TEST_F(RemoteEndpoints, TheOtherPathsNameTheirOwnCreationClass) {
    EXPECT_EQ(fill(fcip_remote_pe_fill_reference, "kesto_x").key("CreationClassName"),
              "KESTO_RemoteFCIPPort");
    EXPECT_EQ(fill(ip_remote_pe_fill_reference, "kesto_x").key("CreationClassName"),
              "KESTO_RemoteIPServiceAccessPoint");
}

TEST_F(RemoteEndpoints, IpAccessPointsPathLooksItsSystemUpTwice) {
    fill(ip_remote_pe_fill_reference);
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info").size(), 2U);
    // A failure of the second look-up does not show.
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .first = 2});
    EXPECT_EQ(fill(ip_remote_pe_fill_reference).keys(), golden_keys("ip_remote_pe_fill_reference"));
}

TEST_F(RemoteEndpoints, TcpPathsSetTheirHostNameBeforeTheirFirstKey) {
    for (Fill* filler : {tcp_remote_pe_fill_reference, remote_service_ap_fill_reference}) {
        broker.clear_calls();
        fill(filler);
        const auto calls = broker.call_texts();
        ASSERT_GE(calls.size(), 3U);
        EXPECT_EQ(calls[0].substr(0, calls[0].find(' ')), "newObjectPath");
        EXPECT_EQ(calls[1], "setHostname \"switch-a.example.net\"");
        EXPECT_EQ(calls[2], "addKey SystemName CMPI_chars \"20:0a:00:05:30:01:02\"");
    }
}

TEST_F(RemoteEndpoints, AnUnsetPeerAddressIsAnEmptyText) {
    link.kfmFcipLinkRemFcipEntityAddress = IpAddr{};
    EXPECT_EQ(build(fcip_remote_pe_build_instance).value("Name"), "7__10.1.1.1");
    EXPECT_EQ(build(ip_remote_pe_build_instance).value("Name"), "0__10.1.1.1");
    EXPECT_EQ(build(ip_remote_pe_build_instance).value("IPv4Address"), "");
}

} // namespace
} // namespace class_tests
