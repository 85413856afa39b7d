// KESTO_LANEndPoint: the Ethernet ports.
#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"
#include "tests/support/rows.h"

namespace class_tests {
namespace {

constexpr const char* CLASS_NAME = "KESTO_LANEndPoint";

class LanEndpoint : public ClassTest {
  protected:
    RecordedInstance build(std::uint32_t ifIndex = one_tunnel::ETHERNET) {
        return make([&] { return lan_endpoint_build_instance(CLASS_NAME, NAMESPACE, ifIndex, nullptr); });
    }
    RecordedPath fill(std::uint32_t ifIndex = one_tunnel::ETHERNET) {
        return make([&] { return lan_endpoint_fill_reference(CLASS_NAME, NAMESPACE, ifIndex); });
    }
    static void add_port(std::uint32_t ifIndex, std::uint8_t type, const char* address) {
        emulator::Port port;
        port.ifIndex = ifIndex;
        port.type = type;
        port.address = address;
        emulator::add_port(port);
    }
    const Sets properties = golden_properties("lan_endpoint_build_instance");
    const Sets keys = golden_keys("lan_endpoint_fill_reference");
};

TEST_F(LanEndpoint, NameIsIfIndexAndNetworkAddressInInstanceAndPath) {
    add_port(5, 26, "02:00:00:00:00:01");
    EXPECT_EQ(build(5).value("Name"), "5:02:00:00:00:00:01");
    EXPECT_EQ(fill(5).key("Name"), "5:02:00:00:00:00:01");
}

TEST_F(LanEndpoint, TheLongestAddressIsWhole) {
    const std::string address(31, 'a');
    add_port(0x80000000, 26, address.c_str());
    EXPECT_EQ(build(0x80000000).value("Name"), "-2147483648:" + address);
    EXPECT_EQ(fill(0x80000000).key("Name"), "-2147483648:" + address);
}

TEST_F(LanEndpoint, InstanceAndPathSpellTheirCreationClassAndNameTheirSystemEachInItsOwnWay) {
    const RecordedInstance instance = build();
    const RecordedPath path = fill();
    EXPECT_EQ(instance.value("CreationClassName"), "KESTO_LANEndPoint");
    EXPECT_EQ(path.key("CreationClassName"), "KESTO_LanEndPoint");
    EXPECT_EQ(instance.value("SystemName"), one_tunnel::SWITCH_WWN);
    EXPECT_EQ(path.key("SystemName"), one_tunnel::SYSTEM);
}

TEST_F(LanEndpoint, ThePortIsAskedForExactly) {
    build();
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"),
              std::vector<std::string>{"pm_cim_get_port_info op=1 if=0x9b010000"});
    forget();
    fill();
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"),
              std::vector<std::string>{"pm_cim_get_port_info op=1 if=0x9b010000"});
}

TEST_F(LanEndpoint, TheAddressIsAskedForByThePortsType) {
    add_port(5, 2, "02:00:00:00:00:05");
    build(5);
    fill(5);
    EXPECT_EQ(emulator::calls("pm_cim_get_network_address"),
              (std::vector<std::string>{"pm_cim_get_network_address if=0x00000005 type=2",
                                        "pm_cim_get_network_address if=0x00000005 type=2"}));
}

TEST_F(LanEndpoint, APortWhoseTypeCannotBeReadIsType26InTheInstanceAndType2InThePath) {
    emulator::fail_always("if_index_get_type");
    EXPECT_EQ(build().sets(), properties);
    EXPECT_EQ(emulator::calls("pm_cim_get_network_address"),
              std::vector<std::string>{"pm_cim_get_network_address if=0x9b010000 type=26"});
    forget();
    EXPECT_EQ(fill().keys(), keys);
    EXPECT_EQ(emulator::calls("pm_cim_get_network_address"),
              std::vector<std::string>{"pm_cim_get_network_address if=0x9b010000 type=2"});
}

TEST_F(LanEndpoint, WithoutANetworkAddressTheNameEndsWithTheColon) {
    emulator::fail_always("pm_cim_get_network_address");
    EXPECT_EQ(build().value("Name"), "-1694433280:");
    EXPECT_EQ(fill().key("Name"), "-1694433280:");
}

TEST_F(LanEndpoint, AnUnknownPortIsNull) {
    EXPECT_EQ(build(6).kind(), Object::Null);
    EXPECT_EQ(trace, "") << "a builder without an entry trace";
    EXPECT_EQ(fill(6).kind(), Object::Null);
    EXPECT_EQ(trace, entering("lan_endpoint_fill_reference")) << "no exit trace";
    EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
}

TEST_F(LanEndpoint, AFailedPortRequestIsNullEvenWithARow) {
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .effect = Effect::FailWithRow});
    EXPECT_EQ(build().kind(), Object::Null);
    EXPECT_EQ(fill().kind(), Object::Null);
    EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
}

TEST_F(LanEndpoint, PortZeroHasItsSystemCreationClassOnly) {
    add_port(0, 26, "02:00:00:00:00:00");
    const RecordedInstance instance = build(0);
    EXPECT_EQ(instance.sets(),
              (Sets{{"SystemCreationClassName", CMPI_chars, "KESTO_PhysicalComputerSystem"}}));
    EXPECT_EQ(instance.filters().size(), 1U);
    EXPECT_EQ(trace, exiting("lan_endpoint_build_instance"));
    EXPECT_EQ(fill(0).key("Name"), "0:02:00:00:00:00:00") << "its path has all keys";
}

// Walkers.

class LanWalk : public LanEndpoint {
  protected:
    Answer walk_instances(const char* className = CLASS_NAME, const char** wanted = nullptr) {
        return ClassTest::walk_instances(get_all_lan_endpoint_instances, className, wanted);
    }
    Answer walk_paths(const char* className = CLASS_NAME) {
        return walk_names(get_all_lan_endpoint_references, className);
    }
};

TEST_F(LanWalk, EveryPortOfTheEthernetRunIsReturnedInOrder) {
    add_port(0x9B010001, 26, "02:00:00:00:00:02");
    add_port(0x9B020000, 26, "02:00:00:00:00:03");
    const Answer instances = walk_instances();
    EXPECT_EQ(status, 0);
    ASSERT_EQ(instances.instances.size(), 3U);
    EXPECT_EQ(instances.instances[0].sets(), properties);
    EXPECT_EQ(instances.instances[1].value("Name"), "-1694433279:02:00:00:00:00:02");
    EXPECT_EQ(instances.instances[2].value("Name"), "-1694367744:02:00:00:00:00:03");
    EXPECT_EQ(instances.doneCalls, 0U);
    const Answer paths = walk_paths();
    EXPECT_EQ(status, 0);
    ASSERT_EQ(paths.paths.size(), 3U);
    EXPECT_EQ(paths.paths[0].keys(), keys);
    EXPECT_EQ(paths.paths[1].key("Name"), "-1694433279:02:00:00:00:00:02");
    EXPECT_EQ(paths.paths[2].key("Name"), "-1694367744:02:00:00:00:00:03");
    EXPECT_EQ(paths.doneCalls, 0U);
}

TEST_F(LanWalk, TheFirstPortOfAnotherTypeEndsTheRun) {
    add_port(0x9B010001, 5, "02:00:00:00:00:02");
    add_port(0x9B020000, 26, "02:00:00:00:00:03");
    EXPECT_EQ(walk_instances().instances.size(), 1U);
    EXPECT_EQ(walk_paths().paths.size(), 1U);
}

TEST_F(LanWalk, ATableWhoseFirstPortIsOfAnotherTypeGivesNothing) {
    add_port(0x9B000000, 2, "02:00:00:00:00:02");
    EXPECT_TRUE(walk_instances().returned.empty());
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(walk_paths().returned.empty());
    EXPECT_EQ(status, 0);
}

TEST_F(LanWalk, APortWhoseTypeCannotBeReadEndsTheRun) {
    add_port(0x9B010001, 26, "02:00:00:00:00:02");
    // The walker asks for each port's type before its object is made, which asks once more.
    emulator::add_fault({.symbol = "if_index_get_type", .where = "if=0x9b010001"});
    EXPECT_EQ(walk_instances().instances.size(), 1U);
    EXPECT_EQ(walk_paths().paths.size(), 1U);
}

TEST_F(LanWalk, PortsBeforeTheRunAreNotAskedFor) {
    add_port(0x9AFFFFFF, 26, "02:00:00:00:00:09");
    const Answer answer = walk_instances();
    EXPECT_EQ(answer.instances.size(), 1U);
    const auto calls = calls_of(answer.platformCalls, "pm_cim_get_port_info op=0");
    EXPECT_EQ(calls, (std::vector<std::string>{"pm_cim_get_port_info op=0 if=0x9affffff",
                                               "pm_cim_get_port_info op=0 if=0x9b010000"}));
}

TEST_F(LanWalk, EachPortIsTraced) {
    add_port(0x9B010001, 5, "02:00:00:00:00:02");
    EXPECT_EQ(walk_instances().output,
              "if_index -1694433280 \n" + exiting("lan_endpoint_build_instance") + "if_index -1694433279 \n");
    EXPECT_EQ(walk_paths().output, "if_index -1694433280 \n" + entering("lan_endpoint_fill_reference") +
                                       exiting("lan_endpoint_fill_reference") + "if_index -1694433279 \n");
}

TEST_F(LanWalk, TheClassNameIsNotLookedAt) {
    const Answer instances = walk_instances("kesto_anything");
    ASSERT_EQ(instances.instances.size(), 1U);
    EXPECT_EQ(instances.instances[0].class_name(), "kesto_anything");
    const Answer paths = walk_paths("kesto_anything");
    ASSERT_EQ(paths.paths.size(), 1U);
    EXPECT_EQ(paths.paths[0].class_name(), "kesto_anything");
}

TEST_F(LanWalk, APortThatGoesAwayMeanwhileIsHandedOverAsNull) {
    add_port(0x9B010001, 26, "02:00:00:00:00:02");
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .where = "op=1 if=0x9b010000"});
    const Answer instances = walk_instances();
    ASSERT_EQ(instances.instances.size(), 2U);
    EXPECT_EQ(instances.instances[0].kind(), Object::Null);
    EXPECT_TRUE(instances.instances[1].is_valid());
    const Answer paths = walk_paths();
    ASSERT_EQ(paths.paths.size(), 2U);
    EXPECT_EQ(paths.paths[0].kind(), Object::Null);
    EXPECT_TRUE(paths.paths[1].is_valid());
}

} // namespace
} // namespace class_tests
