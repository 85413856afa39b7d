// KESTO_TCPProtocolEndPoint and KESTO_IPProtocolEndPoint, and the link walkers that serve seven classes.
#include <algorithm>
#include <cctype>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"
#include "tests/support/rows.h"

namespace class_tests {
namespace {

// --- TCP endpoint -----------------------------------------------------------------------------------------

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

TEST_F(TcpEndpoint, WithoutItsVsanSystemTheInstanceHasNoSystemName) {
    emulator::fail_always("pm_cim_get_port_info");
    EXPECT_EQ(build().sets(), without(properties, {"SystemName"}));
    emulator::clear_faults();
    emulator::fail_always("dm_cim_get_dmEntry");
    EXPECT_EQ(build().sets(), without(properties, {"SystemName"}));
}

TEST_F(TcpEndpoint, WithoutItsVsanSystemThePathNamesALogicalComputerSystem) {
    emulator::fail_always("pm_cim_get_port_info");
    EXPECT_EQ(fill().keys(), with(keys, "SystemName", "LogicalComputerSystem"));
    emulator::clear_faults();
    emulator::fail_always("dm_cim_get_dmEntry");
    EXPECT_EQ(fill().keys(), with(keys, "SystemName", "LogicalComputerSystem"));
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
    for (const auto effect :
         {emulator::Effect::Fail, emulator::Effect::FailWithRow, emulator::Effect::SucceedWithoutRow}) {
        let_down({.symbol = "fcip_get_tcpconn_entry", .effect = effect});
        const RecordedInstance instance = build();
        EXPECT_EQ(instance.sets(), without(properties, connectionProperties));
        EXPECT_EQ(instance.filters().size(), 1u);
        EXPECT_EQ(trace, entering("tcp_pe_build_instance") + exiting("tcp_pe_build_instance"));
        emulator::clear_faults();
    }
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
    for (const std::uint32_t purpose : {0u, 4u, 257u, 0xFFFFFFFFu}) {
        FcipTcpConnEntry connection = one_tunnel::tcp_connection();
        connection.connectionPurpose = purpose;
        emulator::add_tcp_connection(one_tunnel::tcp_connection_key(), connection);
        EXPECT_EQ(build().sets(), without(properties, {"ConnectionPurpose"})) << purpose;
    }
}

// --- IP endpoint ------------------------------------------------------------------------------------------

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
    ASSERT_EQ(std::string(cut).size(), 58u);
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

TEST_F(IpEndpoint, WithoutItsVsanSystemTheNameIsEmptyInTheInstanceAndUnknownInThePath) {
    emulator::fail_always("pm_cim_get_port_info");
    EXPECT_EQ(build().sets(), with(properties, "SystemName", ""));
    EXPECT_EQ(fill().keys(), with(keys, "SystemName", "Unknown"));
    emulator::clear_faults();
    emulator::fail_always("dm_cim_get_dmEntry");
    EXPECT_EQ(build().sets(), with(properties, "SystemName", "NULL"));
    EXPECT_EQ(fill().keys(), with(keys, "SystemName", "Unknown"));
}

TEST_F(IpEndpoint, WithoutAnAddressRecordThereIsNoSubnetMask) {
    for (const auto effect : {emulator::Effect::Fail, emulator::Effect::FailWithRow}) {
        let_down({.symbol = "ipconf_get_intf_ip_address", .effect = effect});
        EXPECT_EQ(build().sets(), without(properties, {"SubnetMask"}));
        emulator::clear_faults();
    }
}

TEST_F(IpEndpoint, WithoutAnInternetAddressRecordThereIsNoPrefixLength) {
    for (const auto effect : {emulator::Effect::Fail, emulator::Effect::FailWithRow}) {
        let_down({.symbol = "ipconf_get_if_inet_addrs", .effect = effect});
        EXPECT_EQ(build().sets(), without(properties, {"PrefixLength"}));
        emulator::clear_faults();
    }
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
    for (const std::uint32_t flag : {0u, 2u, 256u, 257u}) {
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
    let_down({.symbol = "fcip_get_entity_entry", .effect = emulator::Effect::SucceedWithoutRow});
    const RecordedPath path = fill();
    EXPECT_EQ(path.kind(), Object::Valid);
    EXPECT_EQ(path.keys(), Sets{});
    EXPECT_EQ(path.host(), std::nullopt);
    EXPECT_EQ(trace, entering("ip_pe_fill_reference") + exiting("ip_pe_fill_reference"));
}

// --- Walkers ----------------------------------------------------------------------------------------------

class LinkWalk : public ClassTest {
  protected:
    void add_tunnels() {
        for (std::uint32_t i = 1; i < 3; ++i) {
            FcipLinkEntry another = one_tunnel::link();
            another.kfmFcipLinkIndex += i;
            another.kfmFcipLinkIfIndex += i;
            emulator::add_link(another);
            emulator::add_port(test_support::port_row(another.kfmFcipLinkIfIndex, 11, 10));
        }
    }
    Answer walk_instances(const std::string& className, const char** properties = nullptr) {
        return walk(
            [&](const CMPIResult* result) {
                return get_all_ip_pe_instances(className.c_str(), result, properties, NAMESPACE);
            },
            &status);
    }
    Answer walk_paths(const std::string& className) {
        return walk(
            [&](const CMPIResult* result) {
                return get_all_ip_pe_references(className.c_str(), result, NAMESPACE);
            },
            &status);
    }
    int status = -99;
};

struct Route {
    const char* className;
    const char* builder;
    const char* filler;
};

// The last row is as it stands: names of TCP settings are made by the IP settings' filler.
const Route ROUTES[] = {
    {"KESTO_IPProtocolEndPoint", "ip_pe_build_instance", "ip_pe_fill_reference"},
    {"KESTO_RemoteIPServiceAccessPoint", "ip_remote_pe_build_instance", "ip_remote_pe_fill_reference"},
    {"KESTO_RemoteTCPPort", "remote_service_ap_build_instance", "remote_service_ap_fill_reference"},
    {"KESTO_TCPProtocolEndPoint", "tcp_pe_build_instance", "tcp_pe_fill_reference"},
    {"KESTO_FCIPSettings", "fcip_settings_build_instance", "fcip_settings_fill_reference"},
    {"KESTO_IPSettings", "ip_settings_build_instance", "ip_settings_fill_reference"},
    {"KESTO_TCPSettings", "tcp_settings_build_instance", "ip_settings_fill_reference"},
};

TEST_F(LinkWalk, EachClassIsBuiltByItsOwnBuilder) {
    for (const Route& route : ROUTES) {
        SCOPED_TRACE(route.className);
        const Answer answer = walk_instances(route.className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(answer.returned.size(), 1u);
        ASSERT_EQ(answer.instances.size(), 1u);
        EXPECT_EQ(answer.instances[0].class_name(), route.className);
        EXPECT_EQ(answer.instances[0].sets(), golden_properties(route.builder));
        EXPECT_NE(answer.output.find(entering(route.builder)), std::string::npos);
        EXPECT_EQ(answer.doneCalls, 0u);
    }
}

TEST_F(LinkWalk, EachClassIsFilledByItsOwnFillerButTcpSettings) {
    for (const Route& route : ROUTES) {
        SCOPED_TRACE(route.className);
        const Answer answer = walk_paths(route.className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(answer.returned.size(), 1u);
        ASSERT_EQ(answer.paths.size(), 1u);
        EXPECT_EQ(answer.paths[0].class_name(), route.className);
        EXPECT_EQ(answer.paths[0].keys(), golden_keys(route.filler));
        EXPECT_EQ(answer.doneCalls, 0u);
    }
}

TEST_F(LinkWalk, NamesOfTcpSettingsComeFromTheIpSettingsFiller) {
    const Answer answer = walk_paths("KESTO_TCPSettings");
    EXPECT_NE(answer.output.find(entering("ip_settings_fill_reference")), std::string::npos);
    EXPECT_EQ(answer.output.find("tcp_settings_fill_reference"), std::string::npos);
    ASSERT_EQ(answer.paths.size(), 1u);
    EXPECT_EQ(answer.paths[0], RecordedPath(NAMESPACE, "KESTO_TCPSettings",
                                            {{"InstanceID", CMPI_chars, "17"}}, one_tunnel::HOST));
}

TEST_F(LinkWalk, ClassNamesAreComparedWithoutCaseAndReturnedAsSpelled) {
    for (const Route& route : ROUTES) {
        std::string lower = route.className;
        for (char& letter : lower)
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        const Answer instances = walk_instances(lower);
        ASSERT_EQ(instances.instances.size(), 1u) << lower;
        EXPECT_EQ(instances.instances[0].class_name(), lower);
        EXPECT_EQ(instances.instances[0].sets(), golden_properties(route.builder));
        const Answer paths = walk_paths(lower);
        ASSERT_EQ(paths.paths.size(), 1u) << lower;
        EXPECT_EQ(paths.paths[0].class_name(), lower);
    }
}

TEST_F(LinkWalk, EveryLinkIsTracedBeforeItsObject) {
    add_tunnels();
    const std::string instanceTrace = line_trace("get_all_ip_pe_instances");
    const std::string builderTrace =
        entering("fcip_settings_build_instance") + exiting("fcip_settings_build_instance");
    std::string want = entering("get_all_ip_pe_instances");
    for (int i = 0; i < 3; ++i)
        want += instanceTrace + builderTrace;
    std::string traced = walk_instances("KESTO_FCIPSettings").output;
    EXPECT_TRUE(matches(traced, want)) << traced;

    want = entering("get_all_ip_pe_references");
    for (int i = 0; i < 3; ++i)
        want += line_trace("get_all_ip_pe_references") + entering("tcp_pe_fill_reference");
    traced = walk_paths("KESTO_TCPProtocolEndPoint").output;
    EXPECT_TRUE(matches(traced, want)) << traced;
}

TEST_F(LinkWalk, OneObjectALinkInTableOrder) {
    add_tunnels();
    const Answer instances = walk_instances("KESTO_TCPProtocolEndPoint");
    ASSERT_EQ(instances.instances.size(), 3u);
    EXPECT_EQ(instances.instances[0].value("Name"), "17");
    EXPECT_EQ(instances.instances[1].value("Name"), "18");
    EXPECT_EQ(instances.instances[2].value("Name"), "19");
    const Answer paths = walk_paths("KESTO_TCPProtocolEndPoint");
    ASSERT_EQ(paths.paths.size(), 3u);
    EXPECT_EQ(paths.paths[0].key("Name"), "17");
    EXPECT_EQ(paths.paths[1].key("Name"), "18");
    EXPECT_EQ(paths.paths[2].key("Name"), "19");
}

TEST_F(LinkWalk, AnUnknownClassGivesOneNullALink) {
    add_tunnels();
    for (const char* className : {"KESTO_Nothing", "KESTO_RemoteIPPort", "KESTO_FCIPProtocolEndPoint"}) {
        const Answer instances = walk_instances(className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(instances.instances.size(), 3u) << className;
        for (const RecordedInstance& instance : instances.instances)
            EXPECT_EQ(instance.kind(), Object::Null);
        const Answer paths = walk_paths(className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(paths.paths.size(), 3u) << className;
        for (const RecordedPath& path : paths.paths)
            EXPECT_EQ(path.kind(), Object::Null);
    }
}

TEST_F(LinkWalk, EnumeratingRemoteIpPortsGivesOneNullALink) {
    add_tunnels();
    const Answer answer = enumerate("KESTO_RemoteIPPort");
    EXPECT_EQ(answer.rc, 0);
    ASSERT_EQ(answer.instances.size(), 3u);
    for (const RecordedInstance& instance : answer.instances)
        EXPECT_EQ(instance.kind(), Object::Null);
}

TEST_F(LinkWalk, AnObjectThatCannotBeBuiltIsHandedOverAsNull) {
    add_tunnels();
    emulator::clear_entities();
    for (const Route& route : ROUTES) {
        const Answer instances = walk_instances(route.className);
        ASSERT_EQ(instances.instances.size(), 3u) << route.className;
        for (const RecordedInstance& instance : instances.instances)
            EXPECT_EQ(instance.kind(), Object::Null) << route.className;
        const Answer paths = walk_paths(route.className);
        ASSERT_EQ(paths.paths.size(), 3u) << route.className;
        for (const RecordedPath& path : paths.paths)
            EXPECT_EQ(path.kind(), Object::Null) << route.className;
    }
}

TEST_F(LinkWalk, EveryBrokerFailureCostsItsOwnObjectOnly) {
    add_tunnels();
    for (const Route& route : ROUTES) {
        SCOPED_TRACE(route.className);
        for (const Make what : {Make::ObjectPath, Make::Instance}) {
            const std::size_t failures = for_each_broker_failure(what, Failure::Null, [&](std::size_t nth) {
                const Answer answer = walk_instances(route.className);
                ASSERT_EQ(answer.instances.size(), 3u);
                for (std::size_t i = 0; i < 3; ++i)
                    EXPECT_EQ(answer.instances[i].kind(), i + 1 == nth ? Object::Null : Object::Valid);
            });
            EXPECT_EQ(failures, 3u);
        }
        const std::size_t failures =
            for_each_broker_failure(Make::ObjectPath, Failure::Null, [&](std::size_t nth) {
                const Answer answer = walk_paths(route.className);
                ASSERT_EQ(answer.paths.size(), 3u);
                for (std::size_t i = 0; i < 3; ++i)
                    EXPECT_EQ(answer.paths[i].kind(), i + 1 == nth ? Object::Null : Object::Valid);
            });
        EXPECT_EQ(failures, 3u);
    }
}

TEST_F(LinkWalk, WithoutTunnelsNothingIsReturned) {
    emulator::clear_links();
    EXPECT_TRUE(walk_instances("KESTO_IPSettings").returned.empty());
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(walk_paths("KESTO_IPSettings").returned.empty());
    EXPECT_EQ(status, 0);
}

TEST_F(LinkWalk, AnErrorThatBringsARowEndsTheWalkWithOneMoreTrace) {
    add_tunnels();
    let_down({.symbol = "fcip_get_link_entry", .first = 2, .effect = emulator::Effect::FailWithRow});
    const Answer instances = walk_instances("KESTO_TCPProtocolEndPoint");
    EXPECT_EQ(instances.instances.size(), 1u);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(matches(instances.output,
                        entering("get_all_ip_pe_instances") + line_trace("get_all_ip_pe_instances") +
                            entering("tcp_pe_build_instance") + exiting("tcp_pe_build_instance") +
                            line_trace("get_all_ip_pe_instances")))
        << instances.output;
    emulator::clear_faults();
    let_down({.symbol = "fcip_get_link_entry", .first = 2, .effect = emulator::Effect::FailWithRow});
    const Answer paths = walk_paths("KESTO_TCPProtocolEndPoint");
    EXPECT_EQ(paths.paths.size(), 1u);
    EXPECT_TRUE(
        matches(paths.output, entering("get_all_ip_pe_references") + line_trace("get_all_ip_pe_references") +
                                  entering("tcp_pe_fill_reference") + line_trace("get_all_ip_pe_references")))
        << paths.output;
}

TEST_F(LinkWalk, AnEndWithoutARowEndsTheWalkSilently) {
    add_tunnels();
    for (const auto effect : {emulator::Effect::Fail, emulator::Effect::SucceedWithoutRow}) {
        let_down({.symbol = "fcip_get_link_entry", .first = 2, .effect = effect});
        const Answer answer = walk_instances("KESTO_TCPProtocolEndPoint");
        EXPECT_EQ(answer.instances.size(), 1u);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(occurrences(answer.output, " Function : get_all_ip_pe_instances Line "), 1u);
        emulator::clear_faults();
    }
}

TEST_F(LinkWalk, PassesThePropertyListOn) {
    const char* wanted[] = {"Name", "InstanceID", nullptr};
    for (const Route& route : ROUTES) {
        const Answer answer = walk_instances(route.className, wanted);
        ASSERT_EQ(answer.instances.size(), 1u);
        ASSERT_EQ(answer.instances[0].filters().size(), 1u) << route.className;
        EXPECT_EQ(answer.instances[0].filters()[0].properties,
                  (std::vector<std::string>{"Name", "InstanceID"}));
    }
}

} // namespace
} // namespace class_tests
