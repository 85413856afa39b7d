// KESTO_FCIPProtocolEndPoint, and the walkers that serve it and KESTO_RemoteFCIPPort.
#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"
#include "tests/support/rows.h"

namespace class_tests {
namespace {

constexpr const char* CLASS_NAME = "KESTO_FCIPProtocolEndPoint";

class FcipEndpoint : public ClassTest {
  protected:
    RecordedInstance build() {
        return make([&] { return fcip_pe_build_instance(CLASS_NAME, NAMESPACE, &link, nullptr); });
    }
    RecordedPath fill() {
        return make([&] { return fcip_pe_fill_reference(CLASS_NAME, NAMESPACE, &link); });
    }
    void use_addresses(const std::string& local, const std::string& remote) {
        profile.kfmFcipEntityAddress = test_support::address(local);
        emulator::add_entity(profile);
        link.kfmFcipLinkRemFcipEntityAddress = test_support::address(remote);
    }
};

TEST_F(FcipEndpoint, TunnelNumberIsTheLinkIndexPlusOne) {
    link.kfmFcipLinkIndex = 0;
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("TunnelID"), 1);
    EXPECT_EQ(instance.value("Name"), "1_10.1.1.1_10.1.1.2");
    EXPECT_EQ(fill().key("Name"), "1_10.1.1.1_10.1.1.2");
}

TEST_F(FcipEndpoint, TunnelNumberIsCutToSixteenBitsInTunnelIdOnly) {
    link.kfmFcipLinkIndex = 65540;
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("TunnelID"), 5);
    EXPECT_EQ(instance.value("Name"), "65541_10.1.1.1_10.1.1.2");
}

TEST_F(FcipEndpoint, TunnelNumberAbove31BitsPrintsNegative) {
    link.kfmFcipLinkIndex = 0x7FFFFFFF;
    EXPECT_EQ(build().value("Name"), "-2147483648_10.1.1.1_10.1.1.2");
    EXPECT_EQ(fill().key("Name"), "-2147483648_10.1.1.1_10.1.1.2");
}

TEST_F(FcipEndpoint, TunnelNumberAbove31BitsFindsItsWayBack) {
    emulator::clear_links();
    link.kfmFcipLinkIndex = 0x9B00FFFF;
    update();
    const Answer names = enumerate_names(CLASS_NAME);
    ASSERT_EQ(names.paths.size(), 1U);
    EXPECT_EQ(names.paths[0].key("Name"), "-1694433280_10.1.1.1_10.1.1.2");
    const Answer answer = get_instance(CLASS_NAME, {{"Name", names.paths[0].key("Name").text()}});
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].value("Name"), "-1694433280_10.1.1.1_10.1.1.2");
}

TEST_F(FcipEndpoint, NumbersOfTheProfileAreUnsigned) {
    profile.kfmFcipEntityMaxBandwidth = 0xFFFFFFFF;
    profile.kfmFcipEntityMaxRetransmissions = 0x80000000;
    profile.kfmFcipEntityKeepAliveTimeout = 0xFFFFFFFE;
    update();
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("CommittedRate"), 4294967295U);
    EXPECT_EQ(instance.value("MaxRetransmissions"), 2147483648U);
    EXPECT_EQ(instance.value("KeepAliveTimeout"), 4294967294U);
}

TEST_F(FcipEndpoint, NameIsCutToThirtyCharactersInInstanceAndPath) {
    use_addresses("192.168.100.100", "192.168.100.101");
    link.kfmFcipLinkIndex = 0;
    EXPECT_EQ(build().value("Name"), "1_192.168.100.100_192.168.100.");
    EXPECT_EQ(fill().key("Name"), "1_192.168.100.100_192.168.100.");
}

TEST_F(FcipEndpoint, NameOfThirtyCharactersIsWhole) {
    use_addresses("192.168.10.100", "192.168.10.10");
    link.kfmFcipLinkIndex = 0;
    EXPECT_EQ(build().value("Name"), "1_192.168.10.100_192.168.10.10");
    EXPECT_EQ(fill().key("Name"), "1_192.168.10.100_192.168.10.10");
}

TEST_F(FcipEndpoint, PathCutsEachAddressToNineteenCharactersTheInstanceDoesNot) {
    use_addresses("2001:db8:1111:2222:3333:4444:5555:6666", "2001:db8::2");
    EXPECT_EQ(build().value("Name"), "5_2001:db8:1111:2222:3333:4444");
    EXPECT_EQ(fill().key("Name"), "5_2001:db8:1111:2222:_2001:db8");
}

TEST_F(FcipEndpoint, AddressPropertiesAreNotCut) {
    use_addresses("2001:db8:1111:2222:3333:4444:5555:6666", "2001:db8:1111:2222:3333:4444:5555:7777");
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("LocalIPAddress"), "2001:db8:1111:2222:3333:4444:5555:6666");
    EXPECT_EQ(instance.value("RemoteIPAddress"), "2001:db8:1111:2222:3333:4444:5555:7777");
}

TEST_F(FcipEndpoint, AddressesAreConvertedWith128CharactersForInstancesAnd20ForPaths) {
    build();
    for (const std::string& call : emulator::calls("ip_addr_to_str")) {
        EXPECT_TRUE(call.ends_with(" 128")) << call;
    }
    forget();
    fill();
    EXPECT_EQ(emulator::calls("ip_addr_to_str"),
              (std::vector<std::string>{"ip_addr_to_str 10.1.1.1 20", "ip_addr_to_str 10.1.1.2 20"}));
}

TEST_F(FcipEndpoint, CompressionIsFalseForModeOneOnly) {
    for (const std::uint32_t mode : {0U, 2U, 3U, 256U, 257U, 0xFFFFFFFFU}) {
        link.kfmFcipLinkExtIpCompression = mode;
        EXPECT_EQ(build().value("Compression"), 1) << mode;
    }
    link.kfmFcipLinkExtIpCompression = 1;
    EXPECT_EQ(build().value("Compression"), 0);
}

TEST_F(FcipEndpoint, SelectiveAckAndWanTovAreTheSackOptionsLowByte) {
    const std::pair<std::uint32_t, int> cases[] = {{0, 0}, {1, 1}, {2, 2}, {0x1FF, 255}, {0x100, 0}};
    for (const auto& [option, byte] : cases) {
        profile.kfmFcipEntitySackOption = option;
        emulator::add_entity(profile);
        const RecordedInstance instance = build();
        EXPECT_EQ(instance.value("SelectiveACK"), byte) << option;
        EXPECT_EQ(instance.value("WAN_TOV"), byte) << option;
        EXPECT_EQ(instance.value("PathMTU"), 1) << "another flag";
    }
}

TEST_F(FcipEndpoint, PathMtuIsThePmtuFlagsLowByte) {
    const std::pair<std::uint32_t, int> cases[] = {{0, 0}, {1, 1}, {3, 3}, {0x200, 0}};
    for (const auto& [flag, byte] : cases) {
        profile.kfmFcipEntityPmtuEnable = flag;
        emulator::add_entity(profile);
        EXPECT_EQ(build().value("PathMTU"), byte) << flag;
    }
}

TEST_F(FcipEndpoint, RetransmitTimeIsTheSameForEveryTunnel) {
    profile.kfmFcipEntityMinRetransmitTime = 1;
    emulator::add_entity(profile);
    link.kfmFcipLinkIndex = 77;
    EXPECT_EQ(build().value("RetransmitTime"), 29775);
}

TEST_F(FcipEndpoint, LocalWwnIsTheSwitchsAndRemoteWwnTheRows) {
    emulator::set_system(one_tunnel::HOST, one_tunnel::SYSTEM, {1, 2, 3, 4, 5, 6, 7, 8});
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("LocalWWN"), "01:02:03:04:05:06:07:08");
    EXPECT_EQ(instance.value("RemoteWWN"), "20:00:00:05:30:04:05:06");
}

TEST_F(FcipEndpoint, VsanSystemIsLookedUpByTheFcipInterface) {
    build();
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"),
              std::vector<std::string>{"pm_cim_get_port_info op=1 if=0x00000011"});
    EXPECT_EQ(emulator::calls("dm_cim_get_dmEntry"),
              std::vector<std::string>{"dm_cim_get_dmEntry vsan=10 1"});
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              std::vector<std::string>{"fcip_get_entity_entry op=1 id=3 5"});
}

TEST_F(FcipEndpoint, ShortVsanSystemNamesAreWhole) {
    emulator::add_vsan({10, "fcip", true, "vsan-ten"});
    EXPECT_EQ(build().value("SystemName"), "vsan-ten");
    EXPECT_EQ(fill().key("SystemName"), "vsan-ten");
}

TEST_F(FcipEndpoint, AnUnsetProfileAddressIsAnEmptyText) {
    profile.kfmFcipEntityAddress = IpAddr{};
    emulator::add_entity(profile);
    EXPECT_EQ(build().value("Name"), "5__10.1.1.2");
    EXPECT_EQ(build().value("LocalIPAddress"), "");
    EXPECT_EQ(fill().key("Name"), "5__10.1.1.2");
}

// Walkers.

class FcipEndpointWalk : public ClassTest {
  protected:
    // Two more tunnels: one of the same profile, one of another.
    void add_tunnels() {
        FcipLinkEntry second = link;
        second.kfmFcipLinkIndex = 8;
        second.kfmFcipLinkIfIndex = 18;
        emulator::add_link(second);
        FcipLinkEntry third = link;
        third.kfmFcipEntityId = 9;
        third.kfmFcipLinkIndex = 0;
        third.kfmFcipLinkIfIndex = 19;
        emulator::add_link(third);
        FcipEntityEntry other = profile;
        other.kfmFcipEntityId = 9;
        other.kfmFcipEntityAddress = test_support::address("10.9.9.9");
        emulator::add_entity(other);
    }
    Answer walk_instances(const char* className, const char** properties = nullptr) {
        return ClassTest::walk_instances(get_all_fcip_pe_instances, className, properties);
    }
    Answer walk_paths(const char* className) { return walk_names(get_all_fcip_pe_references, className); }
};

TEST_F(FcipEndpointWalk, WithoutTunnelsNothingIsReturned) {
    emulator::clear_links();
    const Answer instances = walk_instances(CLASS_NAME);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(instances.returned.empty());
    EXPECT_EQ(instances.output, entering("get_all_fcip_pe_instances"));
    const Answer paths = walk_paths(CLASS_NAME);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(paths.returned.empty());
    EXPECT_EQ(paths.output, entering("get_all_fcip_pe_references"));
}

TEST_F(FcipEndpointWalk, OneInstanceAndOnePathATunnelInTableOrder) {
    add_tunnels();
    const Answer instances = walk_instances(CLASS_NAME);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(instances.instances.size(), 3U);
    EXPECT_EQ(instances.instances[0].value("Name"), "5_10.1.1.1_10.1.1.2");
    EXPECT_EQ(instances.instances[1].value("Name"), "9_10.1.1.1_10.1.1.2");
    EXPECT_EQ(instances.instances[2].value("Name"), "1_10.9.9.9_10.1.1.2");
    const Answer paths = walk_paths(CLASS_NAME);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(paths.paths.size(), 3U);
    EXPECT_EQ(paths.paths[0].key("Name"), "5_10.1.1.1_10.1.1.2");
    EXPECT_EQ(paths.paths[1].key("Name"), "9_10.1.1.1_10.1.1.2");
    EXPECT_EQ(paths.paths[2].key("Name"), "1_10.9.9.9_10.1.1.2");
}

TEST_F(FcipEndpointWalk, AsksForTheNextLinkAfterEachOnesKeyFromZero) {
    add_tunnels();
    const std::vector<std::string> want{
        "fcip_get_link_entry op=2 key={0,0} 30 1", "fcip_get_link_entry op=2 key={3,4} 30 1",
        "fcip_get_link_entry op=2 key={3,8} 30 1", "fcip_get_link_entry op=2 key={9,0} 30 1"};
    EXPECT_EQ(calls_of(walk_instances(CLASS_NAME).platformCalls, "fcip_get_link_entry"), want);
    EXPECT_EQ(calls_of(walk_paths(CLASS_NAME).platformCalls, "fcip_get_link_entry"), want);
}

TEST_F(FcipEndpointWalk, TracesItsEntryAndItsBuildersOnly) {
    EXPECT_EQ(walk_instances(CLASS_NAME).output, entering("get_all_fcip_pe_instances") +
                                                     entering("fcip_pe_build_instance") +
                                                     exiting("fcip_pe_build_instance"));
    EXPECT_EQ(walk_paths(CLASS_NAME).output, entering("get_all_fcip_pe_references"));
}

TEST_F(FcipEndpointWalk, ClassNamesAreComparedWithoutCaseAndReturnedAsSpelled) {
    const Answer instances = walk_instances("kesto_fcipprotocolendpoint");
    ASSERT_EQ(instances.instances.size(), 1U);
    EXPECT_EQ(instances.instances[0].class_name(), "kesto_fcipprotocolendpoint");
    EXPECT_EQ(instances.instances[0].value("CreationClassName"), "KESTO_FCIPProtocolEndPoint");
    const Answer paths = walk_paths("kesto_fcipprotocolendpoint");
    ASSERT_EQ(paths.paths.size(), 1U);
    EXPECT_EQ(paths.paths[0].class_name(), "kesto_fcipprotocolendpoint");
    EXPECT_EQ(paths.paths[0].key("CreationClassName"), "KESTO_FCIPProtocolEndPoint");
}

TEST_F(FcipEndpointWalk, ServesTheRemotePortToo) {
    const Answer instances = walk_instances("KESTO_RemoteFCIPPort");
    ASSERT_EQ(instances.instances.size(), 1U);
    EXPECT_EQ(instances.instances[0].sets(), golden_properties("fcip_remote_pe_build_instance"));
    const Answer paths = walk_paths("KESTO_RemoteFCIPPort");
    ASSERT_EQ(paths.paths.size(), 1U);
    EXPECT_EQ(paths.paths[0].keys(), golden_keys("fcip_remote_pe_fill_reference"));
}

TEST_F(FcipEndpointWalk, AnotherClassSkipsEveryRow) {
    add_tunnels();
    for (const char* className : {"KESTO_TCPProtocolEndPoint", "KESTO_FCIPProtocolEndPoin", ""}) {
        forget();
        EXPECT_TRUE(walk_instances(className).returned.empty());
        EXPECT_EQ(status, 0);
        EXPECT_EQ(emulator::calls("fcip_get_link_entry").size(), 4U) << "the table is walked all the same";
        EXPECT_TRUE(walk_paths(className).returned.empty());
        EXPECT_EQ(status, 0);
    }
}

TEST_F(FcipEndpointWalk, HandsANullOverForATunnelWithoutItsProfileAndGoesOn) {
    add_tunnels();
    emulator::remove_entity(one_tunnel::PROFILE);
    const Answer instances = walk_instances(CLASS_NAME);
    ASSERT_EQ(instances.instances.size(), 3U);
    EXPECT_EQ(instances.instances[0].kind(), Object::Null);
    EXPECT_EQ(instances.instances[1].kind(), Object::Null);
    EXPECT_EQ(instances.instances[2].value("Name"), "1_10.9.9.9_10.1.1.2");
    const Answer paths = walk_paths(CLASS_NAME);
    ASSERT_EQ(paths.paths.size(), 3U);
    EXPECT_EQ(paths.paths[0].kind(), Object::Null);
    EXPECT_EQ(paths.paths[1].kind(), Object::Null);
    EXPECT_EQ(paths.paths[2].key("Name"), "1_10.9.9.9_10.1.1.2");
}

TEST_F(FcipEndpointWalk, LinkWithoutAProfileIsHandedOverAsNullAndTheWalkGoesOn) {
    add_tunnels();
    for (const Effect effect : STATUS_FAILURES) {
        for (const bool asInstances : {true, false}) {
            for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t nth) {
                const Answer answer = asInstances ? walk_instances(CLASS_NAME) : walk_paths(CLASS_NAME);
                ASSERT_EQ(answer.returned.size(), 3U);
                for (std::size_t i = 0; i < 3; ++i) {
                    const Object kind = asInstances ? answer.instances[i].kind() : answer.paths[i].kind();
                    EXPECT_EQ(kind, i + 1 == nth ? Object::Null : Object::Valid);
                }
            });
        }
    }
}

TEST_F(FcipEndpointWalk, EveryOtherServiceMayFailWithoutStoppingTheWalk) {
    add_tunnels();
    for (const char* symbol :
         {"pm_cim_get_port_info", "dm_cim_get_dmEntry", "vsan_cim_get_vsan_admindomain_key", "ip_addr_to_str",
          "system_cim_get_switch_wwn"}) {
        emulator::clear_faults();
        emulator::fail_always(symbol);
        const Answer instances = walk_instances(CLASS_NAME);
        ASSERT_EQ(instances.instances.size(), 3U) << symbol;
        EXPECT_EQ(instances.instances[1].value("TunnelID"), 9) << symbol;
        EXPECT_EQ(walk_paths(CLASS_NAME).paths.size(), 3U) << symbol;
    }
}

TEST_F(FcipEndpointWalk, EveryEnumeratedNameIsFoundAgain) {
    add_tunnels();
    for (const RecordedPath& path : enumerate_names(CLASS_NAME).paths) {
        const Answer answer = get_instance(CLASS_NAME, {{"Name", path.key("Name").text()}});
        ASSERT_EQ(answer.instances.size(), 1U) << path;
        EXPECT_EQ(answer.instances[0].value("Name"), path.key("Name"));
    }
}

TEST_F(FcipEndpointWalk, ATunnelThatGoesAwayMeanwhileIsNotMissedByTheWalk) {
    add_tunnels();
    emulator::add_fault(
        {.symbol = "fcip_get_link_entry", .first = 2, .last = 2, .effect = Effect::None, .action = [] {
             emulator::remove_link({3, 8});
         }});
    const Answer answer = walk_instances(CLASS_NAME);
    ASSERT_EQ(answer.instances.size(), 2U);
    EXPECT_EQ(answer.instances[1].value("Name"), "1_10.9.9.9_10.1.1.2");
}

} // namespace
} // namespace class_tests
