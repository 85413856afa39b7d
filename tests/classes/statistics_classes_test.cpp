// KESTO_IPEndPointStatistics, KESTO_TCPEndPointStatistics and KESTO_TCPStatisticalData.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"

namespace class_tests {
namespace {

using Bytes = std::vector<std::uint8_t>;

// A block of exactly this many bytes of a row, so that reading past them is noticed.
struct FreeBlock {
    void operator()(void* block) const { std::free(block); }
};
using Block = std::unique_ptr<void, FreeBlock>;

Block first_bytes_of(const void* row, std::size_t size) {
    Block block(std::malloc(size));
    std::memcpy(block.get(), row, size);
    return block;
}

const FcipLinkEntry* as_link(const Block& block) {
    return static_cast<const FcipLinkEntry*>(block.get());
}

// A link error row whose word n holds 1000 * n, but for the two words that name the tunnel.
FcipLinkErrors error_row() {
    FcipLinkErrors row{};
    row.kfmFcipEntityId = one_tunnel::PROFILE;
    row.kfmFcipLinkIndex = one_tunnel::LINK_INDEX;
    for (std::uint32_t word = 2; word < 28; ++word) {
        row.counters[word - 2] = 1000 * word;
    }
    return row;
}

class StatisticsClasses : public ClassTest {
  protected:
    RecordedInstance build_ip() {
        return make([&] {
            return ip_statistics_build_instance("KESTO_IPEndPointStatistics", NAMESPACE, &link, nullptr);
        });
    }
    RecordedInstance build_tcp() {
        return make([&] {
            return tcp_statistics_build_instance("KESTO_TCPEndPointStatistics", NAMESPACE, &link, nullptr);
        });
    }
    RecordedInstance build_data() {
        return make([&] {
            return tcp_statistical_data_build_instance("KESTO_TCPStatisticalData", NAMESPACE, &link, nullptr);
        });
    }
    RecordedPath fill() {
        return make([&] { return stat_fill_reference("KESTO_IPEndPointStatistics", NAMESPACE, &link); });
    }
    // A tunnel of another profile that has the one tunnel's link index and stands after it in the table.
    void use_twin_of_another_profile() {
        FcipEntityEntry other = one_tunnel::profile();
        other.kfmFcipEntityId = 9;
        emulator::add_entity(other);
        link.kfmFcipEntityId = 9;
        link.kfmFcipLinkIfIndex = 99;
        link.kfmFcipLinkExtEthIfIndex = 0x9B020000;
        emulator::add_link(link);
    }
    void expect_one_request_for_the_port_of_the_first_tunnel(std::uint32_t code) {
        const auto requests = emulator::sent_requests();
        ASSERT_EQ(requests.size(), 1U);
        EXPECT_EQ(requests[0].code, code);
        EXPECT_EQ(Bytes(requests[0].payload.begin() + 24, requests[0].payload.begin() + 28),
                  (Bytes{0x9B, 0x01, 0x00, 0x00}));
    }
    const Sets ip = golden_properties("ip_statistics_build_instance");
    const Sets tcp = golden_properties("tcp_statistics_build_instance");
    const Sets data = golden_properties("tcp_statistical_data_build_instance");
};

// IP statistics.

TEST_F(StatisticsClasses, IpCountersAreThoseOfTheTunnelsEthernetPort) {
    build_ip();
    expect_one_request_for_the_port_of_the_first_tunnel(one_tunnel::IP_STATISTICS);
    EXPECT_EQ(emulator::sent_requests()[0].payload.at(31), 1) << "a copy is asked for";
}

TEST_F(StatisticsClasses, IpReassemblyRequiredsWrapsBelowZero) {
    Bytes reply = one_tunnel::ip_reply();
    one_tunnel::put_big_endian_32(reply, 80, 5);
    one_tunnel::put_big_endian_32(reply, 116, 7);
    emulator::set_reply(one_tunnel::IP_STATISTICS, reply);
    const RecordedInstance instance = build_ip();
    EXPECT_EQ(instance.value("ReassemblyRequireds"), 4294967294);
    EXPECT_EQ(instance.value("ReceivedPDUAddressErrors"), 5);
    EXPECT_EQ(instance.value("ReassembledPackets"), 7);
}

TEST_F(StatisticsClasses, IpHeaderErrorsAreASumOfSixWordsThatWraps) {
    for (const std::size_t position : {68U, 64U, 76U, 72U, 56U, 140U}) {
        Bytes reply(172);
        one_tunnel::put_big_endian_32(reply, position, 0xFFFFFFFF);
        emulator::set_reply(one_tunnel::IP_STATISTICS, reply);
        EXPECT_EQ(build_ip().value("ReceivedPDUHeaderErrors"), 4294967295) << position;
    }
    Bytes reply(172);
    one_tunnel::put_big_endian_32(reply, 68, 0xFFFFFFFF);
    one_tunnel::put_big_endian_32(reply, 140, 3);
    emulator::set_reply(one_tunnel::IP_STATISTICS, reply);
    EXPECT_EQ(build_ip().value("ReceivedPDUHeaderErrors"), 2);
}

TEST_F(StatisticsClasses, IpCountersAfterAShortReplyAreZero) {
    Bytes reply = one_tunnel::ip_reply();
    reply.resize(42); // ends within the word at 40
    emulator::set_reply(one_tunnel::IP_STATISTICS, reply);
    const RecordedInstance instance = build_ip();
    EXPECT_EQ(instance.value("ReceivedPDUs"), 100036);
    EXPECT_EQ(instance.value("PDUDelivers"), 65536) << "100040 is 0x000186C8, of which 0x0001 arrived";
    EXPECT_EQ(instance.value("SentPDUs"), 0);
    EXPECT_EQ(instance.sets().names(), ip.names());
}

TEST_F(StatisticsClasses, IpUsesTheFirst172BytesOfALongReply) {
    Bytes reply = one_tunnel::ip_reply();
    reply.resize(400, 0xEE);
    emulator::set_reply(one_tunnel::IP_STATISTICS, reply);
    EXPECT_EQ(build_ip().sets(), ip);
}

TEST_F(StatisticsClasses, IpWithoutCountersIsNullAfterTheMadeInstance) {
    const auto expectNull = [this](const char* when) {
        broker.clear_calls();
        EXPECT_EQ(build_ip().kind(), Object::Null) << when;
        EXPECT_EQ(trace.find("Great!!!"), std::string::npos) << when;
        EXPECT_EQ(broker.call_texts("newInstance").size(), 1U) << when;
        EXPECT_TRUE(broker.call_texts("setProperty").empty()) << when;
    };
    emulator::fail_always("mts_send");
    expectNull("failed send");
    emulator::clear_faults();
    emulator::add_fault({.symbol = emulator::LINE_CARD, .effect = Effect::NoAnswer});
    expectNull("no answer");
    emulator::clear_faults();
    emulator::add_fault({.symbol = emulator::LINE_CARD, .effect = Effect::ReplyStatus, .status = 3});
    expectNull("status 3");
    emulator::clear_faults();
    emulator::set_reply(one_tunnel::IP_STATISTICS, Bytes(8));
    expectNull("too short for a status");
}

TEST_F(StatisticsClasses, IpOfNoLinkIsNullAfterTheMadeInstance) {
    const RecordedInstance instance = make([] {
        return ip_statistics_build_instance("KESTO_IPEndPointStatistics", NAMESPACE, nullptr, nullptr);
    });
    EXPECT_EQ(instance.kind(), Object::Null);
    EXPECT_EQ(broker.call_texts("newInstance").size(), 1U);
    EXPECT_TRUE(emulator::sent_requests().empty());
    EXPECT_EQ(trace.find(entering("ip_statistics_build_instance")), 0U);
}

TEST_F(StatisticsClasses, IpReadsNothingPastTheWordsOfALinkErrorRow) {
    // In an error row word 2 stands for the if-index and word 26 for the Ethernet port.
    FcipLinkErrors errors = error_row();
    errors.counters[0] = one_tunnel::IF_INDEX;
    errors.counters[24] = one_tunnel::ETHERNET;
    const Block block = first_bytes_of(&errors, sizeof errors);
    const RecordedInstance instance = make([&] {
        return ip_statistics_build_instance("KESTO_IPEndPointStatistics", NAMESPACE, as_link(block), nullptr);
    });
    EXPECT_EQ(instance.sets(), ip);
    expect_one_request_for_the_port_of_the_first_tunnel(one_tunnel::IP_STATISTICS);
}

TEST_F(StatisticsClasses, IpNeedsNoLinkTableAndNoProfile) {
    emulator::clear_links();
    emulator::clear_entities();
    EXPECT_EQ(build_ip().sets(), ip);
    EXPECT_TRUE(emulator::calls("fcip_get_link_entry").empty());
    EXPECT_TRUE(emulator::calls("fcip_get_entity_entry").empty());
}

// TCP end point statistics.

TEST_F(StatisticsClasses, TcpErrorCountersAreWords20To27OfTheRowHandedInLowWordFirst) {
    FcipLinkErrors errors = error_row();
    const Block block = first_bytes_of(&errors, sizeof errors);
    const RecordedInstance instance = make([&] {
        return tcp_statistics_build_instance("KESTO_TCPEndPointStatistics", NAMESPACE, as_link(block),
                                             nullptr);
    });
    EXPECT_EQ(instance.value("TooManyErrors"), 20000 + (21000ULL << 32));
    EXPECT_EQ(instance.value("KeepAliveTimeOut"), 22000 + (23000ULL << 32));
    EXPECT_EQ(instance.value("DatagramsDropped"), 24000 + (25000ULL << 32));
    EXPECT_EQ(instance.value("SaParamMismatch"), 26000 + (27000ULL << 32));
    EXPECT_EQ(instance.value("InstanceID"), "17") << "of the tunnel found again";
}

TEST_F(StatisticsClasses, TcpIsBuiltFromTheFirstTunnelOfTheSameIndex) {
    use_twin_of_another_profile();
    link.kfmFcipLinkExtCntrlQos = 5;
    link.kfmFcipLinkExtDataQos = 6;
    Sets want = with(tcp, "DatagramsDropped", 5 + (6ULL << 32));
    want = with(want, "SaParamMismatch", 0x9B020000 + (1ULL << 32));
    EXPECT_EQ(build_tcp().sets(), want) << "only the error counters are those of the row handed in";
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              std::vector<std::string>{"fcip_get_entity_entry op=1 id=3 5"});
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"),
              std::vector<std::string>{"pm_cim_get_port_info op=1 if=0x00000011"});
    expect_one_request_for_the_port_of_the_first_tunnel(one_tunnel::TCP_STATISTICS);
}

TEST_F(StatisticsClasses, TcpSegmentCountersAreZeroWhateverTheLineCardSays) {
    Bytes reply(1352, 0xFF);
    reply[10] = reply[11] = 0;
    emulator::set_reply(one_tunnel::TCP_STATISTICS, reply, {Bytes(64)});
    EXPECT_EQ(build_tcp().sets(), tcp);
    EXPECT_EQ(build_data().sets(), data);
}

TEST_F(StatisticsClasses, TcpIsNullWhenTheTunnelIsGone) {
    emulator::clear_links();
    EXPECT_EQ(build_tcp().kind(), Object::Null);
    EXPECT_TRUE(matches(
        trace, entering("tcp_statistics_build_instance") + any_line_trace("tcp_statistics_build_instance")))
        << trace;
    EXPECT_EQ(broker.made(Make::ObjectPath), 0U) << "the tunnel is looked up before the broker is asked";
}

TEST_F(StatisticsClasses, TcpIsNullWithoutTheTunnelsProfile) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_entity_entry"}, [&] {
        EXPECT_EQ(build_tcp().kind(), Object::Null);
        EXPECT_TRUE(matches(trace, entering("tcp_statistics_build_instance") +
                                       any_line_trace("tcp_statistics_build_instance")))
            << trace;
        EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
    });
}

TEST_F(StatisticsClasses, TcpGoesOnWithoutCountersAndSaysSo) {
    emulator::fail_always("mts_send");
    EXPECT_EQ(build_tcp().sets(), tcp);
    EXPECT_NE(trace.find("******* Error ******** \n"), std::string::npos);
    EXPECT_TRUE(trace.ends_with(exiting("tcp_statistics_build_instance")));
}

// TCP statistical data.

TEST_F(StatisticsClasses, DataInstanceIsKeyedByTheTunnelNumberAndItsPathByTheIfIndex) {
    EXPECT_EQ(build_data().value("InstanceID"), "5");
    const RecordedPath path =
        make([&] { return stat_fill_reference("KESTO_TCPStatisticalData", NAMESPACE, &link); });
    EXPECT_EQ(path.keys(), (Sets{{"InstanceID", CMPI_chars, "17"}}));
}

TEST_F(StatisticsClasses, DataIsBuiltFromTheFirstTunnelOfTheSameIndex) {
    use_twin_of_another_profile();
    EXPECT_EQ(build_data().sets(), data);
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"),
              std::vector<std::string>{"pm_cim_get_port_info op=1 if=0x00000011"});
    expect_one_request_for_the_port_of_the_first_tunnel(one_tunnel::TCP_STATISTICS);
    EXPECT_TRUE(emulator::calls("fcip_get_entity_entry").empty()) << "no profile is needed";
}

TEST_F(StatisticsClasses, DataIsMinusOneWhenTheTunnelIsGone) {
    emulator::clear_links();
    EXPECT_EQ(build_data().kind(), Object::MinusOne);
    const std::string line = any_line_trace("tcp_statistical_data_build_instance");
    EXPECT_TRUE(matches(trace, entering("tcp_statistical_data_build_instance") + line + line)) << trace;
    EXPECT_EQ(broker.call_texts("newInstance").size(), 1U) << "the instance made so far is abandoned";
    EXPECT_EQ(broker.call_texts("setProperty").size(), 1U) << "SystemCreationClassName";
}

TEST_F(StatisticsClasses, DataGoesOnWithoutCountersAndSaysSo) {
    emulator::fail_always("mts_send");
    EXPECT_EQ(build_data().sets(), data);
    EXPECT_NE(trace.find("******* Error ******** \n"), std::string::npos);
}

// Object paths.

TEST_F(StatisticsClasses, PathsAreMadeFromTheTwoKeyWordsAlone) {
    const Block block = first_bytes_of(&link, 8);
    const RecordedPath path =
        make([&] { return stat_fill_reference("KESTO_TCPEndPointStatistics", NAMESPACE, as_link(block)); });
    EXPECT_EQ(path, RecordedPath(NAMESPACE, "KESTO_TCPEndPointStatistics", {{"InstanceID", CMPI_chars, "17"}},
                                 one_tunnel::HOST));
    EXPECT_EQ(calls_of_any(emulator::calls(), {"fcip_get_entity_entry", "fcip_get_link_entry"}),
              (std::vector<std::string>{"fcip_get_entity_entry op=1 id=3 5",
                                        "fcip_get_link_entry op=1 key={3,4} 30 1"}));
}

TEST_F(StatisticsClasses, PathsTakeTheIfIndexOfTheTunnelFoundAgain) {
    link.kfmFcipLinkIfIndex = 999;
    EXPECT_EQ(fill().key("InstanceID"), "17");
}

TEST_F(StatisticsClasses, ATunnelThatIsGoneHasNoPath) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_link_entry"}, [&] {
        EXPECT_EQ(fill().kind(), Object::Null);
        EXPECT_NE(trace, "");
    });
    EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
}

TEST_F(StatisticsClasses, ATunnelWithoutAnEthernetPortHasInstancesButNoPath) {
    link.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(link);
    EXPECT_EQ(fill().kind(), Object::Null);
    EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
    for (const char* className :
         {"KESTO_IPEndPointStatistics", "KESTO_TCPEndPointStatistics", "KESTO_TCPStatisticalData"}) {
        const Answer instances = enumerate(className);
        ASSERT_EQ(instances.instances.size(), 1U) << className;
        EXPECT_TRUE(instances.instances[0].is_valid()) << className;
        const Answer paths = enumerate_names(className);
        ASSERT_EQ(paths.paths.size(), 1U) << className;
        EXPECT_EQ(paths.paths[0].kind(), Object::Null) << className;
    }
}

} // namespace
} // namespace class_tests
