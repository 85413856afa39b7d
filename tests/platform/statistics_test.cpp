// The exchange with a line card, to the byte and from both sides: what a request carries, how each reply is
// taken, and that no message stays behind on any path.
#include "platform/statistics.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_services.h"
#include "tests/support/recording_broker.h"
#include "tests/support/stdout_capture.h"

namespace {

using test_support::printed_by;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t ETHERNET_PORT = 0x9B034005;
constexpr std::uint32_t UNKNOWN_PORT = 0x9B0FF000;
constexpr std::uint32_t LINE_CARD_NODE = 0x0203;
constexpr std::uint16_t PORT_NUMBER = 0x0105; // two different bytes, so that their order shows

constexpr std::uint32_t IP_STATISTICS = 1917;
constexpr std::uint32_t MAC_STATISTICS = 1918;
constexpr std::uint32_t TCP_STATISTICS = 1920;
constexpr std::uint32_t STATISTICS_SERVICE = 943;
constexpr std::uint32_t RECEIVE_OPTION = 5;

std::vector<MtsSelector> selectors; // of every receive, as it reached the transport

struct FreeBlock {
    void operator()(void* block) const { std::free(block); }
};
using IpBlock = std::unique_ptr<IpStatsReply, FreeBlock>;

// A payload whose bytes all tell their place, with the status 0 at byte 10.
Bytes reply(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(1 + i * 7 % 251);
    for (std::size_t i = 10; i < 12 && i < size; ++i)
        bytes[i] = 0;
    return bytes;
}

Bytes reply_with_status(std::uint8_t high, std::uint8_t low, std::size_t size = 64) {
    Bytes bytes = reply(size);
    bytes.at(10) = high;
    bytes.at(11) = low;
    return bytes;
}

// A message of the series that follows a TCP reply; the word at byte 36 is in host order.
Bytes continuation(std::uint16_t moreFollows, std::size_t size = 64) {
    Bytes bytes(size);
    std::memcpy(bytes.data() + 36, &moreFollows, sizeof moreFollows);
    return bytes;
}

Bytes bytes_of(const void* data, std::size_t size) {
    const auto* first = static_cast<const std::uint8_t*>(data);
    return {first, first + size};
}

Bytes big_endian(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

Bytes host_order(std::uint32_t value) {
    return bytes_of(&value, sizeof value);
}

Bytes joined(std::initializer_list<Bytes> pieces) {
    Bytes all;
    for (const Bytes& piece : pieces)
        all.insert(all.end(), piece.begin(), piece.end());
    return all;
}

class Statistics : public testing::Test {
  protected:
    void SetUp() override {
        emulator::reset();
        emulator::load_empty();
        emulator::Port port;
        port.ifIndex = ETHERNET_PORT;
        port.slot = 3;
        port.port = PORT_NUMBER;
        port.node = LINE_CARD_NODE;
        emulator::add_port(port);
        emulator::clear_calls();
        selectors.clear();
        lock = std::make_unique<emulator::Locked>();
    }
    void TearDown() override {
        EXPECT_EQ(emulator::messages_outstanding(), 0u);
        lock.reset();
        EXPECT_EQ(emulator::misuse_report(), "");
    }

    // One exchange of the test's own, with a payload that the line card is told to accept.
    int exchange(MtsMessage* message) {
        const std::array<std::uint8_t, 32> payload{};
        return stats_request(mts_q, LINE_CARD_NODE, STATISTICS_SERVICE, IP_STATISTICS, payload.data(),
                             static_cast<std::uint32_t>(payload.size()), message, RECEIVE_OPTION);
    }
    static Bytes only_request() {
        const auto requests = emulator::sent_requests();
        EXPECT_EQ(requests.size(), 1u);
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

    std::unique_ptr<emulator::Locked> lock;
};

} // namespace

// Stands before the transport's receive and keeps each selector.
extern "C" __attribute__((visibility("default"))) int mts_recv(std::uint32_t queue, MtsMessage* message,
                                                               const void* selector) {
    MtsSelector copy;
    std::memcpy(&copy, selector, sizeof copy);
    selectors.push_back(copy);
    using Receive = int(std::uint32_t, MtsMessage*, const void*);
    static Receive* const TRANSPORT = reinterpret_cast<Receive*>(dlsym(RTLD_NEXT, "mts_recv"));
    return TRANSPORT(queue, message, selector);
}

// --- The requests -----------------------------------------------------------------------------------------

TEST_F(Statistics, IpRequestCarriesPortIfIndexAndTheCopyFlag) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    IpStatsReply* out = nullptr;
    printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 1, &out), 0); });
    const IpBlock owner(out);

    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].node, LINE_CARD_NODE);
    EXPECT_EQ(requests[0].service, STATISTICS_SERVICE);
    EXPECT_EQ(requests[0].code, IP_STATISTICS);
    EXPECT_EQ(requests[0].payload, joined({{0, 0, 0, 0},             // 0
                                           {0x01, 0x05},             // 4: the port, big-endian
                                           Bytes(18, 0),             // 6
                                           {0x9B, 0x03, 0x40, 0x05}, // 24: the if-index in network form
                                           {0, 0, 0, 1}}));          // 28: the copy flag, big-endian
}

TEST_F(Statistics, IpRequestHandsTheCopyFlagOnInNetworkOrder) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    IpStatsReply* out = nullptr;
    printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 0x01020304, &out), 0); });
    const IpBlock owner(out);
    const Bytes payload = only_request();
    ASSERT_EQ(payload.size(), 32u);
    EXPECT_EQ(Bytes(payload.begin() + 28, payload.end()), (Bytes{1, 2, 3, 4}));
}

TEST_F(Statistics, EthernetRequestCarriesPortIfIndexAndAHostOrderOne) {
    emulator::set_reply(MAC_STATISTICS, reply(256));
    EthMacStats out;
    printed_by([&out] { EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &out), 0); });

    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].node, LINE_CARD_NODE);
    EXPECT_EQ(requests[0].service, STATISTICS_SERVICE);
    EXPECT_EQ(requests[0].code, MAC_STATISTICS);
    EXPECT_EQ(requests[0].payload,
              joined({{0, 0, 0, 0}, {0x01, 0x05}, Bytes(18, 0), {0x9B, 0x03, 0x40, 0x05}, host_order(1)}));
}

TEST_F(Statistics, TcpRequestCarriesTheProvidersOwnAccessPointToo) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(0)});
    const std::uint32_t accessPoint = mts_sap_get(mts_q);
    ASSERT_NE(accessPoint, 0u);
    TcpStatsReply out;
    printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });

    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1u);
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

TEST_F(Statistics, AnUnresolvedSlotStillSendsTheRequestForPortFFFF) {
    answer_all();
    emulator::fail_always("if_index_get_slot");
    ask_all(ETHERNET_PORT);
    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 3u);
    for (const auto& request : requests) {
        EXPECT_EQ(request.payload.at(4), 0xFF) << request.code;
        EXPECT_EQ(request.payload.at(5), 0xFF) << request.code;
        EXPECT_EQ(request.node, LINE_CARD_NODE) << request.code;
        EXPECT_EQ(Bytes(request.payload.begin() + 24, request.payload.begin() + 28),
                  big_endian(ETHERNET_PORT));
    }
}

TEST_F(Statistics, AnUnresolvedPortStillSendsTheRequestForPortFFFF) {
    answer_all();
    emulator::fail_always("if_index_get_port");
    ask_all(ETHERNET_PORT);
    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 3u);
    for (const auto& request : requests) {
        EXPECT_EQ(request.payload.at(4), 0xFF) << request.code;
        EXPECT_EQ(request.payload.at(5), 0xFF) << request.code;
    }
}

TEST_F(Statistics, TheLineCardIsLookedUpByTheIfIndexItselfInEveryRequest) {
    answer_all();
    ask_all(ETHERNET_PORT);
    for (const char* service : {"idxmap_node_by_if_index", "if_index_get_slot", "if_index_get_port"}) {
        const auto calls = emulator::calls(service);
        ASSERT_EQ(calls.size(), 3u) << service;
        for (const std::string& call : calls) {
            EXPECT_NE(call.find("if=0x9b034005"), std::string::npos)
                << call << ": converting an if-index twice gives it back";
        }
    }
}

TEST_F(Statistics, RepliesAreAwaitedByTokenWithOptionFive) {
    answer_all();
    ask_all(ETHERNET_PORT);
    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 3u);
    ASSERT_EQ(selectors.size(), 4u); // the TCP reply's series takes one more
    const std::uint32_t tokens[] = {requests[0].token, requests[1].token, requests[2].token, 0};
    for (std::size_t i = 0; i < selectors.size(); ++i) {
        const Bytes want = joined(
            {host_order(1), host_order(0), host_order(RECEIVE_OPTION), host_order(tokens[i]), Bytes(24, 0)});
        EXPECT_EQ(bytes_of(&selectors[i], sizeof selectors[i]), want) << "receive " << i;
    }
}

// --- stats_request and stats_receive ----------------------------------------------------------------------

TEST_F(Statistics, ASuccessfulRequestHandsTheReplyHeld) {
    emulator::set_reply(IP_STATISTICS, reply(40));
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), 0);
    EXPECT_EQ(emulator::messages_outstanding(), 1u) << "the reply; the request is dropped";
    ASSERT_EQ(mts_payload_size(&message), 40u);
    EXPECT_EQ(bytes_of(mts_payload_get(&message), 40), reply(40));
    mts_drop(mts_q, &message);
}

TEST_F(Statistics, AFailedSendIsMinusOneWhateverItsStatus) {
    emulator::fail_call("mts_send", 1, 22);
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), -1);
    EXPECT_EQ(emulator::count("mts_recv"), 0u);
}

TEST_F(Statistics, AFailedReceiveGivesTheTransportsOwnStatus) {
    emulator::set_reply(IP_STATISTICS, reply(40));
    emulator::fail_call("mts_recv", 1, 22);
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), 22);
    EXPECT_EQ(emulator::messages_outstanding(), 0u) << "the request is dropped all the same";
    emulator::release_messages();
}

TEST_F(Statistics, ALineCardThatNeverAnswersIsAFailedReceive) {
    emulator::set_reply(IP_STATISTICS, reply(40));
    emulator::Fault silence;
    silence.symbol = emulator::LINE_CARD;
    silence.effect = emulator::Effect::NoAnswer;
    emulator::add_fault(silence);
    MtsMessage message{};
    EXPECT_NE(exchange(&message), 0);
}

TEST_F(Statistics, AReplysStatusIsItsBigEndianWordAtTen) {
    MtsMessage message{};
    emulator::set_reply(IP_STATISTICS, reply_with_status(0, 3));
    EXPECT_EQ(exchange(&message), 3);
    emulator::set_reply(IP_STATISTICS, reply_with_status(1, 0));
    EXPECT_EQ(exchange(&message), 256);
    emulator::set_reply(IP_STATISTICS, reply_with_status(0xFF, 0xFE));
    EXPECT_EQ(exchange(&message), 65534);
    EXPECT_EQ(emulator::messages_outstanding(), 0u) << "such replies are dropped";
}

TEST_F(Statistics, AReplyTooShortForItsStatusIsAFailedExchange) {
    for (const std::size_t size : {0u, 1u, 10u, 11u}) {
        emulator::set_reply(IP_STATISTICS, reply(size));
        MtsMessage message{};
        EXPECT_EQ(exchange(&message), -1) << size << " bytes";
        EXPECT_EQ(emulator::messages_outstanding(), 0u) << size << " bytes";
    }
}

TEST_F(Statistics, AReplyThatEndsWithItsStatusIsComplete) {
    emulator::set_reply(IP_STATISTICS, reply(12));
    MtsMessage message{};
    EXPECT_EQ(exchange(&message), 0);
    mts_drop(mts_q, &message);
}

TEST_F(Statistics, ReceivingWithoutATokenTakesWhateverComesNext) {
    emulator::queue_message(reply(20));
    MtsMessage message{};
    EXPECT_EQ(stats_receive(mts_q, &message, 0, RECEIVE_OPTION), 0);
    EXPECT_EQ(mts_payload_size(&message), 20u);
    mts_drop(mts_q, &message);
}

TEST_F(Statistics, ReceivingFromAnEmptyQueueFails) {
    MtsMessage message{};
    EXPECT_NE(stats_receive(mts_q, &message, 0, RECEIVE_OPTION), 0);
}

// --- IP statistics ----------------------------------------------------------------------------------------

TEST_F(Statistics, IpStatisticsTraceTheirStartAndNothingElse) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    IpStatsReply* out = nullptr;
    EXPECT_EQ(printed_by([&out] { get_ip_stats(mts_q, ETHERNET_PORT, 1, &out); }),
              "\n inside get_ip_stats\n ");
    const IpBlock owner(out);
}

TEST_F(Statistics, IpStatisticsCopyReplysOfEverySizeWholeAndZeroTheRest) {
    for (const std::size_t size : {12u, 13u, 14u, 15u, 36u, 171u, 172u, 173u, 174u, 175u, 176u, 333u}) {
        const Bytes payload = reply(size);
        emulator::set_reply(IP_STATISTICS, payload);
        IpStatsReply* out = nullptr;
        printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 1, &out), 0); });
        const IpBlock owner(out);
        ASSERT_NE(out, nullptr) << size;
        Bytes want = payload;
        if (want.size() < sizeof(IpStatsReply)) want.resize(sizeof(IpStatsReply), 0);
        EXPECT_EQ(bytes_of(out, want.size()), want) << size << " bytes";
        EXPECT_EQ(emulator::messages_outstanding(), 0u) << "the reply is dropped";
    }
}

TEST_F(Statistics, IpStatisticsWithoutACopyKeepTheReplyAndGiveNoBlock) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    auto* out = reinterpret_cast<IpStatsReply*>(this);
    printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 0, &out), 0); });
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(emulator::messages_outstanding(), 1u);
    emulator::release_messages();
}

TEST_F(Statistics, IpStatisticsClearTheBlockPointerBeforeTheySend) {
    emulator::fail_call("mts_send", 1, 22);
    auto* out = reinterpret_cast<IpStatsReply*>(this);
    printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 1, &out), -1); });
    EXPECT_EQ(out, nullptr);
}

TEST_F(Statistics, IpStatisticsReturnTheFailureStatusItself) {
    const auto ask = [] {
        IpStatsReply* out = nullptr;
        int status = 0;
        printed_by([&] { status = get_ip_stats(mts_q, ETHERNET_PORT, 1, &out); });
        EXPECT_EQ(out, nullptr);
        return status;
    };
    emulator::set_reply(IP_STATISTICS, reply_with_status(0, 3));
    EXPECT_EQ(ask(), 3) << "the line card's";
    emulator::set_reply(IP_STATISTICS, reply(11));
    EXPECT_EQ(ask(), -1) << "a reply without a status";
    emulator::set_reply(IP_STATISTICS, reply(172));
    emulator::fail_call("mts_recv", 1, 17);
    EXPECT_EQ(ask(), 17) << "the transport's";
    emulator::release_messages();
}

// --- Ethernet statistics ----------------------------------------------------------------------------------

TEST_F(Statistics, EthernetStatisticsAreTheReplysFirst256Bytes) {
    for (const std::size_t size : {256u, 257u, 300u}) {
        emulator::set_reply(MAC_STATISTICS, reply(size));
        EthMacStats out;
        EXPECT_EQ(printed_by([&out] { EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &out), 0); }),
                  "Exiting get_ethernetport_statistics\n");
        EXPECT_EQ(bytes_of(&out, sizeof out), reply(256)) << size;
        EXPECT_EQ(emulator::messages_outstanding(), 0u);
    }
}

TEST_F(Statistics, EthernetStatisticsReadAShortReplysRestAsZero) {
    for (const std::size_t size : {12u, 13u, 100u, 255u}) {
        emulator::set_reply(MAC_STATISTICS, reply(size));
        EthMacStats out;
        std::memset(&out, 0xEE, sizeof out);
        printed_by([&out] { EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &out), 0); });
        Bytes want = reply(size);
        want.resize(256, 0);
        EXPECT_EQ(bytes_of(&out, sizeof out), want) << size;
    }
}

TEST_F(Statistics, EthernetStatisticsFailWithMinusOneAndSaySo) {
    const auto expectFailure = [](const char* when) {
        EthMacStats out;
        const std::string trace =
            printed_by([&] { EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &out), -1) << when; });
        EXPECT_EQ(trace.find("Failed retrieval of mac stats information from linecard"), 0u) << when;
        EXPECT_EQ(trace.find("Exiting"), std::string::npos) << when;
        EXPECT_EQ(emulator::messages_outstanding(), 0u) << when;
    };
    emulator::set_reply(MAC_STATISTICS, reply_with_status(0, 3, 256));
    expectFailure("status 3");
    emulator::set_reply(MAC_STATISTICS, reply(11));
    expectFailure("no status");
    emulator::set_reply(MAC_STATISTICS, reply(256));
    emulator::fail_call("mts_send", 1, 22);
    expectFailure("failed send");
    emulator::fail_call("mts_recv", 1, 22);
    expectFailure("failed receive");
    emulator::release_messages();
}

// --- TCP statistics ---------------------------------------------------------------------------------------

TEST_F(Statistics, TcpStatisticsAreTheReplysFirst1352Bytes) {
    for (const std::size_t size : {1352u, 1353u, 1500u}) {
        emulator::set_reply(TCP_STATISTICS, reply(size), {continuation(0)});
        TcpStatsReply out;
        printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });
        EXPECT_EQ(bytes_of(&out, sizeof out), reply(1352)) << size;
    }
}

TEST_F(Statistics, TcpStatisticsReadAShortReplysRestAsZero) {
    for (const std::size_t size : {12u, 15u, 36u, 1351u}) {
        emulator::set_reply(TCP_STATISTICS, reply(size), {continuation(0)});
        TcpStatsReply out;
        std::memset(&out, 0xEE, sizeof out);
        printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });
        Bytes want = reply(size);
        want.resize(1352, 0);
        EXPECT_EQ(bytes_of(&out, sizeof out), want) << size;
    }
}

TEST_F(Statistics, TcpStatisticsTraceEntryAndExit) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(0)});
    TcpStatsReply out;
    const std::string trace = printed_by([&out] { get_tcp_stats(ETHERNET_PORT, &out); });
    const std::string entry = "Entering get_tcp_stats\n", exit = "Exiting get_tcp_stats\n";
    EXPECT_EQ(trace.substr(0, entry.size()), entry);
    ASSERT_GE(trace.size(), exit.size());
    EXPECT_EQ(trace.substr(trace.size() - exit.size()), exit);
}

TEST_F(Statistics, TcpStatisticsDrainOneContinuation) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(0)});
    TcpStatsReply out;
    printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });
    EXPECT_EQ(emulator::count("mts_recv"), 2u);
    EXPECT_EQ(emulator::messages_queued(), 0u);
}

TEST_F(Statistics, TcpStatisticsDrainContinuationsAsLongAsMoreFollows) {
    emulator::set_reply(TCP_STATISTICS, reply(1352),
                        {continuation(1), continuation(0x0100), continuation(0xFFFF), continuation(0)});
    TcpStatsReply out;
    printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });
    EXPECT_EQ(emulator::count("mts_recv"), 5u);
    EXPECT_EQ(emulator::messages_queued(), 0u);
    EXPECT_EQ(bytes_of(&out, sizeof out), reply(1352)) << "the continuations add nothing to the counters";
}

TEST_F(Statistics, TcpStatisticsLeaveWhatComesBehindTheSeries) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(1), continuation(0), continuation(1)});
    TcpStatsReply out;
    printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });
    EXPECT_EQ(emulator::messages_queued(), 1u);
    emulator::release_messages();
}

TEST_F(Statistics, TcpStatisticsFailBehindTheCopyWhenNoContinuationComes) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {});
    TcpStatsReply out;
    std::memset(&out, 0xEE, sizeof out);
    const std::string trace = printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), -1); });
    EXPECT_EQ(bytes_of(&out, sizeof out), reply(1352)) << "the counters stay";
    EXPECT_EQ(trace.find("Exiting"), std::string::npos);
}

TEST_F(Statistics, TcpStatisticsFailWhenTheSeriesBreaksOff) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(1), continuation(1)});
    TcpStatsReply out;
    printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), -1); });
    EXPECT_EQ(bytes_of(&out, sizeof out), reply(1352));
    EXPECT_EQ(emulator::count("mts_recv"), 4u);
}

TEST_F(Statistics, AContinuationTooShortForItsWordEndsTheSeries) {
    for (const std::size_t size : {0u, 11u, 12u, 36u, 37u}) {
        emulator::set_reply(TCP_STATISTICS, reply(1352), {Bytes(size, 0), continuation(1)});
        TcpStatsReply out;
        printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0) << "success"; });
        EXPECT_EQ(emulator::messages_queued(), 1u) << size << " bytes";
        emulator::release_messages();
    }
}

TEST_F(Statistics, AContinuationThatEndsWithItsWordIsComplete) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(1, 38), continuation(0, 38)});
    TcpStatsReply out;
    printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });
    EXPECT_EQ(emulator::messages_queued(), 0u);
}

TEST_F(Statistics, TcpStatisticsFailSilentlyWithMinusOne) {
    const auto expectFailure = [](const char* when) {
        TcpStatsReply out;
        const std::string trace =
            printed_by([&] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), -1) << when; });
        EXPECT_EQ(trace.find("Exiting"), std::string::npos) << when;
        EXPECT_EQ(trace.find("Failed"), std::string::npos) << when;
        EXPECT_EQ(emulator::messages_outstanding(), 0u) << when;
    };
    emulator::set_reply(TCP_STATISTICS, reply_with_status(0, 3, 1352));
    expectFailure("status 3");
    emulator::set_reply(TCP_STATISTICS, reply(11));
    expectFailure("no status");
    emulator::release_messages();
    emulator::set_reply(TCP_STATISTICS, reply(1352), {continuation(0)});
    emulator::fail_call("mts_send", 1, 22);
    expectFailure("failed send");
    emulator::fail_call("mts_recv", 1, 22);
    expectFailure("failed receive");
    emulator::release_messages();
    emulator::fail_call("mts_recv", 2, 22);
    expectFailure("failed receive of the continuation");
    emulator::release_messages();
}

TEST_F(Statistics, APortThatNoLineCardKnowsFailsInEveryOperation) {
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

// --- The error counters of a link -------------------------------------------------------------------------

class LinkErrorCounters : public testing::Test {
  protected:
    LinkErrorCounters() {
        // Word n of the row holds 100 * n.
        for (std::uint32_t word = 2; word < 28; ++word)
            errors.counters[word - 2] = 100 * word;
    }
    CMPIInstance* new_instance() {
        const CMPIObjectPath* path = broker.path("root/kesto", "KESTO_Statistics");
        return broker.cmpi()->eft->newInstance(broker.cmpi(), path, nullptr);
    }
    test_support::RecordingBroker broker;
    FcipLinkErrors errors{};
};

TEST_F(LinkErrorCounters, AreSetAsNineLongsFromWordTwoLowWordFirst) {
    const auto pair = [](std::uint64_t low, std::uint64_t high) { return low + (high << 32); };
    const test_support::Sets want{
        {"FcipLossofFcSynchs", CMPI_uint64, pair(200, 300)},
        {"FcipSfNotRcv", CMPI_uint64, pair(400, 500)},
        {"FcipSfRespNotRcv", CMPI_uint64, pair(600, 700)},
        {"FcipSfRespMismatch", CMPI_uint64, pair(800, 900)},
        {"FcipSfInvalidNonce", CMPI_uint64, pair(1000, 1100)},
        {"FcipDuplicateSfRcv", CMPI_uint64, pair(1200, 1300)},
        {"FcipSfInvalidWWN", CMPI_uint64, pair(1400, 1500)},
        {"FcipBB2LkaTimeOut", CMPI_uint64, pair(1600, 1700)},
        {"FcipSntpTimeStampExp", CMPI_uint64, pair(1800, 1900)},
    };
    CMPIInstance* instance = new_instance();
    CMPIInstance* returned = nullptr;
    EXPECT_EQ(printed_by([&] { returned = populate_fcip_statistics(instance, &errors); }),
              "Entering populate_fcip_statistics\nExiting populate_fcip_statistics\n");
    EXPECT_EQ(returned, instance);
    EXPECT_EQ(broker.recorded(instance).sets(), want);
    EXPECT_TRUE(broker.recorded(instance).filters().empty());
}

TEST_F(LinkErrorCounters, OfNoInstanceAreSetNowhere) {
    CMPIInstance* returned = new_instance();
    broker.clear_calls();
    EXPECT_EQ(printed_by([&] { returned = populate_fcip_statistics(nullptr, &errors); }),
              "Entering populate_fcip_statistics\n");
    EXPECT_EQ(returned, nullptr);
    EXPECT_TRUE(broker.calls().empty());
}

TEST_F(LinkErrorCounters, OfAnInstanceWithoutAHandleAreSetNowhere) {
    broker.fail_nth(test_support::Make::Instance, 1, test_support::Failure::WithoutHandle);
    CMPIInstance* instance = new_instance();
    ASSERT_EQ(broker.recorded(instance).kind(), test_support::Object::WithoutHandle);
    CMPIInstance* returned = nullptr;
    EXPECT_EQ(printed_by([&] { returned = populate_fcip_statistics(instance, &errors); }),
              "Entering populate_fcip_statistics\n");
    EXPECT_EQ(returned, instance);
    EXPECT_TRUE(broker.recorded(instance).sets().empty());
}

// --- The dump of a port record ----------------------------------------------------------------------------

TEST(PrintErrors, ShowsFourWordsAndTheLowHalvesOfEightLongs) {
    Bytes record(339, 0xEE);
    const auto put32 = [&record](std::size_t at, std::uint32_t value) {
        std::memcpy(record.data() + at, &value, sizeof value);
    };
    const auto put64 = [&record](std::size_t at, std::uint64_t value) {
        std::memcpy(record.data() + at, &value, sizeof value);
    };
    put32(259, 11);
    put32(263, 12);
    put32(267, 0x80000000);
    put32(271, 0xFFFFFFFF);
    put64(275, 21);
    put64(283, 0x0000000500000016); // the high half does not show
    put64(291, 23);
    put64(299, 0x80000000);
    put64(307, 25);
    put64(315, 26);
    put64(323, 27);
    put64(331, 0xFFFFFFFF00000000 + 1234);
    int last = 0;
    EXPECT_EQ(printed_by([&] { last = print_errors(record.data()); }),
              " 11 \n 12 \n -2147483648 \n -1 \n"
              " 21 \n 22 \n 23 \n -2147483648 \n 25 \n 26 \n 27 \n"
              " 1234 \n");
    EXPECT_EQ(last, 7) << "the characters of the last line";
}
