// KESTO_EthernetPortStatistics, and the enumerations of KESTO_EthernetPortStatisticalData.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"

namespace class_tests {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The properties that are set before those that the line card counts.
constexpr std::size_t FIRST_PASS = 14;
constexpr const char* DATA_CLASS = "KESTO_EthernetPortStatisticalData";

class EthernetStatistics : public ClassTest {
  protected:
    RecordedInstance build() {
        return make([&] {
            return eth_statistics_build_instance("KESTO_EthernetPortStatistics", NAMESPACE, &row, nullptr);
        });
    }
    RecordedPath fill() {
        return make(
            [&] { return eth_statistics_fill_reference("KESTO_EthernetPortStatistics", NAMESPACE, &row); });
    }
    static void add_port(std::uint32_t ifIndex, std::uint8_t type) {
        emulator::Port port;
        port.ifIndex = ifIndex;
        port.type = type;
        port.name = "port" + std::to_string(ifIndex & 0xFFFF);
        emulator::add_port(port);
    }
    Sets first_pass() const { return Sets(properties.begin(), properties.begin() + FIRST_PASS); }

    PortInfo row = one_tunnel::ethernet_row();
    const Sets properties = golden_properties("eth_statistics_build_instance");
};

TEST_F(EthernetStatistics, CountersAreAskedForByIfIndexBeforeTheBrokerIs) {
    build();
    EXPECT_EQ(emulator::calls("pm_get_port_counters"),
              std::vector<std::string>{"pm_get_port_counters if=0x9b010000 0 6 0"});
    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].code, one_tunnel::MAC_STATISTICS);
    EXPECT_EQ(Bytes(requests[0].payload.begin() + 24, requests[0].payload.begin() + 28),
              (Bytes{0x9B, 0x01, 0x00, 0x00}));
}

TEST_F(EthernetStatistics, WithoutCountersThereIsNoInstance) {
    for_each_effect(STATUS_FAILURES, {.symbol = "pm_get_port_counters"}, [&] {
        EXPECT_EQ(build().kind(), Object::Null);
        EXPECT_EQ(trace, entering("eth_statistics_build_instance") + "no port counters\n");
        EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
    });
}

TEST_F(EthernetStatistics, WithoutTheLineCardTheFirstPassStandsAndNothingIsFiltered) {
    const auto expectFirstPass = [this](const char* when) {
        const RecordedInstance instance = build();
        EXPECT_EQ(instance.sets(), first_pass()) << when;
        EXPECT_EQ(instance.value("BytesTransmitted"), 8589934899) << when;
        EXPECT_FALSE(instance.has("FCSErrors")) << when;
        EXPECT_TRUE(instance.filters().empty()) << when;
        EXPECT_TRUE(trace.ends_with(exiting("eth_statistics_build_instance"))) << when;
        EXPECT_NE(trace.find("Failed retrieval of mac stats information from linecard\n"), std::string::npos)
            << when;
        EXPECT_EQ(trace.find("Bytes Tran"), std::string::npos) << when;
    };
    emulator::fail_always("mts_send");
    expectFirstPass("failed send");
    emulator::clear_faults();
    emulator::add_fault({.symbol = emulator::LINE_CARD, .effect = Effect::NoAnswer});
    expectFirstPass("no answer");
    emulator::clear_faults();
    emulator::add_fault({.symbol = emulator::LINE_CARD, .effect = Effect::ReplyStatus, .status = 3});
    expectFirstPass("status 3");
    emulator::clear_faults();
    emulator::set_reply(one_tunnel::MAC_STATISTICS, Bytes(11));
    expectFirstPass("too short for a status");
}

TEST_F(EthernetStatistics, CollisionAndMacErrorCountersShareTheirValues) {
    Bytes reply(256);
    one_tunnel::put_big_endian_64(reply, 56, 0x0000000100000002);
    one_tunnel::put_big_endian_64(reply, 40, 0x0000000300000004);
    one_tunnel::put_big_endian_64(reply, 184, 0x0000000500000006);
    emulator::set_reply(one_tunnel::MAC_STATISTICS, reply);
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("ExcessiveCollissions"), 4294967298);
    for (const char* name :
         {"InternalMACTransmitErrors", "InternalMACReceiveErrors", "CarrierSenseErrors", "FrameTooLongs"}) {
        EXPECT_EQ(instance.value(name), 2) << name;
    }
    for (const char* name : {"SingleCollisionFrames", "MultipleCollisionFrames", "DeferredTransmissions"}) {
        EXPECT_EQ(instance.value(name), 4) << name;
    }
    EXPECT_EQ(instance.value("SymbolErrors"), 6);
}

TEST_F(EthernetStatistics, TheByteCountersRawWordsAreTraced) {
    Bytes reply = one_tunnel::mac_reply();
    const std::uint32_t transmitted = 0x12345678, received = 0xFFFFFFFE;
    std::memcpy(reply.data() + 32, &transmitted, 4); // as it lies in the reply
    std::memcpy(reply.data() + 112, &received, 4);
    emulator::set_reply(one_tunnel::MAC_STATISTICS, reply);
    build();
    EXPECT_NE(trace.find("Bytes Tran 305419896 \nBytes Received -2\n"), std::string::npos) << trace;
}

TEST_F(EthernetStatistics, CountersAfterAShortReplyAreZero) {
    Bytes reply = one_tunnel::mac_reply();
    reply.resize(100);
    emulator::set_reply(one_tunnel::MAC_STATISTICS, reply);
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("PacketsTransmitted"), 4294967384); // at 88
    EXPECT_EQ(instance.value("BytesReceived"), 0);               // at 112
    EXPECT_EQ(instance.value("AlignmentErrors"), 0);             // at 192
    EXPECT_EQ(instance.sets().names(), properties.names());
}

TEST_F(EthernetStatistics, ThirtyTwoBitCountersOfTheRecordAreNotMixedWithTheirNeighbours) {
    emulator::Port port = emulator::find_port(one_tunnel::ETHERNET).value();
    port.inMulticast.start = 0xFFFFFFFF;
    port.inBroadcast.start = 0;
    port.outMulticast.start = 0xFFFFFFFE;
    port.outBroadcast.start = 1;
    emulator::add_port(port);
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("MulticastFramesReceived"), 4294967295);
    EXPECT_EQ(instance.value("BroadcastFramesReceived"), 0);
    EXPECT_EQ(instance.value("MulticastFramesTransmitted"), 4294967294);
    EXPECT_EQ(instance.value("BroadcastFramesTransmitted"), 1);
}

TEST_F(EthernetStatistics, SixtyFourBitCountersAreWhole) {
    emulator::Port port = emulator::find_port(one_tunnel::ETHERNET).value();
    port.outUnicast.start = 0x0123456789ABCDEF;
    emulator::add_port(port);
    EXPECT_EQ(build().value("UnicastFramesTransmitted"), 0x0123456789ABCDEF);
    Bytes reply = one_tunnel::mac_reply();
    one_tunnel::put_big_endian_64(reply, 192, 0xFEDCBA9876543210);
    emulator::set_reply(one_tunnel::MAC_STATISTICS, reply);
    EXPECT_EQ(build().value("AlignmentErrors"), 0xFEDCBA9876543210);
}

TEST_F(EthernetStatistics, NamesOfThirtyCharactersAreWhole) {
    emulator::Port port = emulator::find_port(one_tunnel::ETHERNET).value();
    port.name = "an-interface-of-30-characters-";
    emulator::add_port(port);
    const RecordedInstance instance = build();
    for (const char* name : {"Caption", "ElementName", "Description"}) {
        EXPECT_EQ(instance.value(name), port.name);
    }
}

TEST_F(EthernetStatistics, NothingOfTheRowIsReadButItsIfIndex) {
    // A block that ends with the if-index, so that reading past it is noticed.
    const std::unique_ptr<void, void (*)(void*)> block(std::malloc(sizeof row.ifIndex), std::free);
    std::memcpy(block.get(), &row, sizeof row.ifIndex);
    const auto* port = static_cast<const PortInfo*>(block.get());
    const RecordedInstance instance = make([&] {
        return eth_statistics_build_instance("KESTO_EthernetPortStatistics", NAMESPACE, port, nullptr);
    });
    EXPECT_EQ(instance.sets(), properties);
    const RecordedPath path =
        make([&] { return eth_statistics_fill_reference("KESTO_EthernetPortStatistics", NAMESPACE, port); });
    EXPECT_EQ(path.keys(), golden_keys("eth_statistics_fill_reference"));
}

// Walkers.

class EthernetWalk : public EthernetStatistics {
  protected:
    Answer walk_instances(const char** wanted = nullptr) {
        return ClassTest::walk_instances(get_all_eth_stat_instances, "KESTO_EthernetPortStatistics", wanted);
    }
    Answer walk_paths() { return walk_names(get_all_eth_stat_references, "KESTO_EthernetPortStatistics"); }
    Answer walk_data_instances(const char** wanted = nullptr) {
        return ClassTest::walk_instances(get_all_eth_stat_data_instances, DATA_CLASS, wanted);
    }
    Answer walk_data_paths() { return walk_names(get_all_eth_stat_data_references, DATA_CLASS); }
    static std::vector<std::string> ids_of(const Answer& answer) {
        std::vector<std::string> ids;
        for (const RecordedInstance& instance : answer.instances) {
            ids.push_back(instance.value("InstanceID").text());
        }
        for (const RecordedPath& path : answer.paths) {
            ids.push_back(path.key("InstanceID").text());
        }
        return ids;
    }
};

TEST_F(EthernetWalk, EveryPortAfterTheStartIndexIsReturned) {
    add_port(0x9B010001, 26);
    add_port(0x9AFFFFFF, 26); // the walk starts after it
    const std::vector<std::string> want{"-1694433280", "-1694433279"};
    const Answer instances = walk_instances();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ids_of(instances), want);
    EXPECT_EQ(instances.instances[0].sets(), properties);
    EXPECT_EQ(instances.doneCalls, 0U);
    const Answer paths = walk_paths();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ids_of(paths), want);
    EXPECT_EQ(paths.doneCalls, 0U);
}

TEST_F(EthernetWalk, PortsOfTypes2And5And26AreServedAndAllOthersSkipped) {
    emulator::clear_ports();
    for (std::uint32_t type = 0; type < 256; ++type) {
        add_port(0x9B000000 + type, static_cast<std::uint8_t>(type));
    }
    const std::vector<std::string> want{std::to_string(static_cast<std::int32_t>(0x9B000002)),
                                        std::to_string(static_cast<std::int32_t>(0x9B000005)),
                                        std::to_string(static_cast<std::int32_t>(0x9B00001A))};
    EXPECT_EQ(ids_of(walk_instances()), want);
    EXPECT_EQ(ids_of(walk_paths()), want);
}

TEST_F(EthernetWalk, APortWhoseTypeCannotBeReadIsServed) {
    add_port(0x9B010001, 6);
    EXPECT_EQ(walk_instances().instances.size(), 1U);
    EXPECT_EQ(walk_paths().paths.size(), 1U);
    emulator::add_fault({.symbol = "if_index_get_type", .where = "if=0x9b010001"});
    EXPECT_EQ(walk_instances().instances.size(), 2U);
    EXPECT_EQ(walk_paths().paths.size(), 2U);
}

TEST_F(EthernetWalk, SkippedPortsDoNotEndTheWalk) {
    add_port(0x9B000000, 6);
    add_port(0x9B010001, 30);
    add_port(0x9B010002, 5);
    const std::vector<std::string> want{"-1694433280", "-1694433278"};
    EXPECT_EQ(ids_of(walk_instances()), want);
    EXPECT_EQ(ids_of(walk_paths()), want);
}

TEST_F(EthernetWalk, EveryPortIsTracedSkippedOnesToo) {
    add_port(0x9B000000, 6);
    const std::string traced = walk_instances().output;
    EXPECT_EQ(traced.find("if_index -1694498816 \nif_index -1694433280 \n" +
                          entering("eth_statistics_build_instance")),
              0U)
        << traced;
}

TEST_F(EthernetWalk, ABuildThatFailsIsHandedOverAsNull) {
    add_port(0x9B010001, 26);
    emulator::add_fault({.symbol = "pm_get_port_counters", .first = 1, .last = 1});
    const Answer answer = walk_instances();
    ASSERT_EQ(answer.instances.size(), 2U);
    EXPECT_EQ(answer.instances[0].kind(), Object::Null);
    EXPECT_TRUE(answer.instances[1].is_valid());
}

// Statistical data.

TEST_F(EthernetWalk, DataObjectsAreThePlatformsOwnAskedForWithTheNamespaceFirst) {
    const Answer instances = walk_data_instances();
    EXPECT_EQ(calls_of(instances.platformCalls, "fcport_build_instance_pm"),
              std::vector<std::string>{
                  "fcport_build_instance_pm root/kesto KESTO_EthernetPortStatisticalData if=0x9b010000"});
    ASSERT_EQ(instances.instances.size(), 1U);
    EXPECT_EQ(instances.instances[0].class_name(), DATA_CLASS);
    const Answer paths = walk_data_paths();
    EXPECT_EQ(calls_of(paths.platformCalls, "fcport_fill_reference_pm"),
              std::vector<std::string>{
                  "fcport_fill_reference_pm root/kesto KESTO_EthernetPortStatisticalData if=0x9b010000"});
    ASSERT_EQ(paths.paths.size(), 1U);
    EXPECT_EQ(paths.paths[0].class_name(), DATA_CLASS);
}

TEST_F(EthernetWalk, DataInstancesEndAtTheFirstPortOfAnotherTypePathsDoNot) {
    add_port(0x9B010001, 5);
    add_port(0x9B010002, 26);
    EXPECT_EQ(walk_data_instances().instances.size(), 1U);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(walk_data_paths().paths.size(), 3U);
    EXPECT_EQ(status, 0);
}

TEST_F(EthernetWalk, DataInstancesEndAtAPortWhoseTypeCannotBeReadPathsDoNotAsk) {
    add_port(0x9B010001, 26);
    add_port(0x9B010002, 26);
    emulator::add_fault({.symbol = "if_index_get_type", .where = "if=0x9b010001"});
    EXPECT_EQ(walk_data_instances().instances.size(), 1U);
    const Answer paths = walk_data_paths();
    EXPECT_EQ(paths.paths.size(), 3U);
    EXPECT_TRUE(calls_of(paths.platformCalls, "if_index_get_type").empty());
}

TEST_F(EthernetWalk, DataInstancesTraceTheirStartAndEachCall) {
    add_port(0x9B010001, 5);
    const std::string start = "\n Entering get_all_eth_stat_data_instances \n ";
    const std::string traced = walk_data_instances().output;
    EXPECT_EQ(traced.find(start), 0U) << traced;
    EXPECT_EQ(occurrences(traced, start), 1U);
    EXPECT_EQ(occurrences(traced, " Call to fcport_build_instance_pm \n"), 1U)
        << "for the Ethernet port alone";
    EXPECT_NE(traced.find("-1694433280"), std::string::npos);
    EXPECT_NE(traced.find("-1694433279"), std::string::npos);
}

TEST_F(EthernetWalk, APlatformObjectThatCannotBeMadeIsHandedOverAsNull) {
    add_port(0x9B010001, 26);
    emulator::add_fault({.symbol = "fcport_build_instance_pm", .first = 1, .last = 1});
    emulator::add_fault({.symbol = "fcport_fill_reference_pm", .first = 1, .last = 1});
    const Answer instances = walk_data_instances();
    ASSERT_EQ(instances.instances.size(), 2U);
    EXPECT_EQ(instances.instances[0].kind(), Object::Null);
    EXPECT_TRUE(instances.instances[1].is_valid());
    const Answer paths = walk_data_paths();
    ASSERT_EQ(paths.paths.size(), 2U);
    EXPECT_EQ(paths.paths[0].kind(), Object::Null);
    EXPECT_TRUE(paths.paths[1].is_valid());
}

} // namespace
} // namespace class_tests
