// The exchange with a line card, to the byte and from both sides: what a request carries, how its reply is
// awaited, and that no message is left on any path.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/platform_services.h"
#include "platform/statistics.h"
#include "tests/platform/statistics_test.h"
#include "tests/support/faults.h"
#include "tests/support/stdout_capture.h"

namespace {

using namespace statistics;
using test_support::printed_by;

class StatisticsRequests : public Statistics {
  protected:
    // One exchange of the test's own, with a payload that the line card accepts.
    int exchange(MtsMessage* message) {
        const std::array<std::uint8_t, 32> payload{};
        return stats_request(mts_q, LINE_CARD_NODE, STATISTICS_SERVICE, IP_STATISTICS, payload.data(),
                             static_cast<std::uint32_t>(payload.size()), message, RECEIVE_OPTION);
    }
    static Bytes only_request() {
        const auto requests = emulator::sent_requests();
        EXPECT_EQ(requests.size(), 1U);
        return requests.empty() ? Bytes{} : requests.front().payload;
    }
    // Each of the three operations on a port, for what they have in common.
    static void ask_all(std::uint32_t ifIndex) {
        printed_by([ifIndex] {
            IpStatsReply* ip = nullptr;
            get_ip_stats(mts_q, ifIndex, 1, &ip);
            std::free(ip);
            EthMacStats mac;
            get_ethernetport_statistics(ifIndex, &mac);
            TcpStatsReply tcp;
            get_tcp_stats(ifIndex, &tcp);
        });
    }
    static void answer_all() {
        emulator::set_reply(IP_STATISTICS, reply(172));
        emulator::set_reply(MAC_STATISTICS, reply(256));
        emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(0)});
    }
};

TEST_F(StatisticsRequests, IpRequestCarriesPortIfIndexAndTheCopyFlag) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    IpStatsReply* out = nullptr;
    printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 1, &out), 0); });
    const IpBlock owner(out);

    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].node, LINE_CARD_NODE);
    EXPECT_EQ(requests[0].service, STATISTICS_SERVICE);
    EXPECT_EQ(requests[0].code, IP_STATISTICS);
    EXPECT_EQ(requests[0].payload, joined({{0, 0, 0, 0},             // 0
                                           {0x01, 0x05},             // 4: the port, big-endian
                                           Bytes(18, 0),             // 6
                                           {0x9B, 0x03, 0x40, 0x05}, // 24: the if-index in network form
                                           {0, 0, 0, 1}}));          // 28: the copy flag, big-endian
}

TEST_F(StatisticsRequests, IpRequestHandsTheCopyFlagOnInNetworkOrder) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    IpStatsReply* out = nullptr;
    printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 0x01020304, &out), 0); });
    const IpBlock owner(out);
    const Bytes payload = only_request();
    ASSERT_EQ(payload.size(), 32U);
    EXPECT_EQ(Bytes(payload.begin() + 28, payload.end()), (Bytes{1, 2, 3, 4}));
}

TEST_F(StatisticsRequests, EthernetRequestCarriesPortIfIndexAndAHostOrderOne) {
    emulator::set_reply(MAC_STATISTICS, reply(256));
    EthMacStats out;
    printed_by([&out] { EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &out), 0); });

    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].node, LINE_CARD_NODE);
    EXPECT_EQ(requests[0].service, STATISTICS_SERVICE);
    EXPECT_EQ(requests[0].code, MAC_STATISTICS);
    EXPECT_EQ(requests[0].payload,
              joined({{0, 0, 0, 0}, {0x01, 0x05}, Bytes(18, 0), {0x9B, 0x03, 0x40, 0x05}, host_order(1)}));
}

TEST_F(StatisticsRequests, TcpRequestCarriesTheProvidersOwnAccessPointToo) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(0)});
    const std::uint32_t accessPoint = mts_sap_get(mts_q);
    ASSERT_NE(accessPoint, 0U);
    TcpStatsReply out;
    printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });

    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].node, LINE_CARD_NODE);
    EXPECT_EQ(requests[0].service, STATISTICS_SERVICE);
    EXPECT_EQ(requests[0].code, TCP_STATISTICS);
    EXPECT_EQ(requests[0].payload, joined({{0, 0, 0, 0},
                                           {0x01, 0x05},
                                           Bytes(18, 0),
                                           {0x9B, 0x03, 0x40, 0x05},
                                           host_order(1),
                                           big_endian(accessPoint), // 32
                                           Bytes(4, 0)}));          // 36
}

TEST_F(StatisticsRequests, AnUnresolvedSlotOrPortStillSendsTheRequestForPortFFFF) {
    for (const char* service : {"if_index_get_slot", "if_index_get_port"}) {
        SCOPED_TRACE(service);
        emulator::clear_faults();
        emulator::clear_calls();
        answer_all();
        emulator::fail_always(service);
        ask_all(ETHERNET_PORT);
        const auto requests = emulator::sent_requests();
        ASSERT_EQ(requests.size(), 3U);
        for (const auto& request : requests) {
            EXPECT_EQ(request.payload.at(4), 0xFF) << request.code;
            EXPECT_EQ(request.payload.at(5), 0xFF) << request.code;
            EXPECT_EQ(request.node, LINE_CARD_NODE) << request.code;
            EXPECT_EQ(Bytes(request.payload.begin() + 24, request.payload.begin() + 28),
                      big_endian(ETHERNET_PORT));
        }
    }
}

TEST_F(StatisticsRequests, TheLineCardIsLookedUpByTheIfIndexItselfInEveryRequest) {
    answer_all();
    ask_all(ETHERNET_PORT);
    for (const char* service : {"idxmap_node_by_if_index", "if_index_get_slot", "if_index_get_port"}) {
        const auto calls = emulator::calls(service);
        ASSERT_EQ(calls.size(), 3U) << service;
        for (const std::string& call : calls) {
            EXPECT_NE(call.find("if=0x9b034005"), std::string::npos)
                << call << ": converting an if-index twice gives it back";
        }
    }
}

TEST_F(StatisticsRequests, RepliesAreAwaitedByTokenWithOptionFive) {
    answer_all();
    ask_all(ETHERNET_PORT);
    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 3U);
    ASSERT_EQ(selectors.size(), 4U); // the TCP reply's series takes one more
    const std::uint32_t tokens[] = {requests[0].token, requests[1].token, requests[2].token, 0};
    for (std::size_t i = 0; i < selectors.size(); ++i) {
        const Bytes want = joined(
            {host_order(1), host_order(0), host_order(RECEIVE_OPTION), host_order(tokens[i]), Bytes(24, 0)});
        EXPECT_EQ(bytes_of(&selectors[i], sizeof selectors[i]), want) << "receive " << i;
    }
}

TEST_F(StatisticsRequests, APortThatNoLineCardKnowsFailsInEveryOperation) {
    IpStatsReply* ip = nullptr;
    EthMacStats mac;
    TcpStatsReply tcp;
    printed_by([&] {
        EXPECT_NE(get_ip_stats(mts_q, UNKNOWN_PORT, 1, &ip), 0);
        EXPECT_EQ(get_ethernetport_statistics(UNKNOWN_PORT, &mac), -1);
        EXPECT_EQ(get_tcp_stats(UNKNOWN_PORT, &tcp), -1);
    });
    EXPECT_EQ(ip, nullptr);
    for (const auto& request : emulator::sent_requests()) {
        EXPECT_EQ(request.payload.at(4), 0xFF);
        EXPECT_EQ(request.payload.at(5), 0xFF);
    }
}

TEST_F(StatisticsRequests, ASuccessfulRequestHandsTheReplyHeld) {
    emulator::set_reply(IP_STATISTICS, reply(40));
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), 0);
    EXPECT_EQ(emulator::messages_outstanding(), 1U) << "the reply; the request is dropped";
    ASSERT_EQ(mts_payload_size(&message), 40U);
    EXPECT_EQ(bytes_of(mts_payload_get(&message), 40), reply(40));
    mts_drop(mts_q, &message);
}

TEST_F(StatisticsRequests, AFailedSendIsMinusOneWhateverItsStatus) {
    emulator::fail_call("mts_send", 1, 22);
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), -1);
    EXPECT_EQ(emulator::count("mts_recv"), 0U);
}

TEST_F(StatisticsRequests, AFailedReceiveGivesTheTransportsOwnStatus) {
    emulator::set_reply(IP_STATISTICS, reply(40));
    emulator::fail_call("mts_recv", 1, 22);
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), 22);
    EXPECT_EQ(emulator::messages_outstanding(), 0U) << "the request is dropped all the same";
    emulator::release_messages();
}

TEST_F(StatisticsRequests, ALineCardThatNeverAnswersIsAFailedReceive) {
    emulator::set_reply(IP_STATISTICS, reply(40));
    emulator::add_fault({.symbol = emulator::LINE_CARD, .effect = emulator::Effect::NoAnswer});
    MtsMessage message{};
    EXPECT_NE(exchange(&message), 0);
}

TEST_F(StatisticsRequests, AReplysStatusIsItsBigEndianWordAtTen) {
    MtsMessage message{};
    emulator::set_reply(IP_STATISTICS, reply_with_status(0, 3));
    EXPECT_EQ(exchange(&message), 3);
    emulator::set_reply(IP_STATISTICS, reply_with_status(1, 0));
    EXPECT_EQ(exchange(&message), 256);
    emulator::set_reply(IP_STATISTICS, reply_with_status(0xFF, 0xFE));
    EXPECT_EQ(exchange(&message), 65534);
    EXPECT_EQ(emulator::messages_outstanding(), 0U) << "such replies are dropped";
}

TEST_F(StatisticsRequests, AReplyTooShortForItsStatusIsAFailedExchange) {
    for (const std::size_t size : {0U, 1U, 10U, 11U}) {
        emulator::set_reply(IP_STATISTICS, reply(size));
        MtsMessage message{};
        EXPECT_EQ(exchange(&message), -1) << size << " bytes";
        EXPECT_EQ(emulator::messages_outstanding(), 0U) << size << " bytes";
    }
}

TEST_F(StatisticsRequests, AReplyThatEndsWithItsStatusIsComplete) {
    emulator::set_reply(IP_STATISTICS, reply(12));
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), 0);
    mts_drop(mts_q, &message);
}

TEST_F(StatisticsRequests, ReceivingWithoutATokenTakesWhateverComesNext) {
    emulator::queue_message(reply(20));
    MtsMessage message{};
    EXPECT_EQ(stats_receive(mts_q, &message, 0, RECEIVE_OPTION), 0);
    EXPECT_EQ(mts_payload_size(&message), 20U);
    mts_drop(mts_q, &message);
}

TEST_F(StatisticsRequests, ReceivingFromAnEmptyQueueFails) {
    MtsMessage message{};
    EXPECT_NE(stats_receive(mts_q, &message, 0, RECEIVE_OPTION), 0);
}

} // namespace
