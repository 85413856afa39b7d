// How the replies of the line cards are taken: the IP, Ethernet and TCP statistics of a port.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "platform/platform_services.h"
#include "platform/statistics.h"
#include "tests/platform/statistics_test.h"
#include "tests/support/stdout_capture.h"

namespace {

using namespace statistics;
using test_support::printed_by;

TEST_F(Statistics, IpStatisticsTraceTheirStartAndNothingElse) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    IpStatsReply* out = nullptr;
    EXPECT_EQ(printed_by([&out] { get_ip_stats(mts_q, ETHERNET_PORT, 1, &out); }),
              "\n inside get_ip_stats\n ");
    const IpBlock owner(out);
}

TEST_F(Statistics, IpStatisticsCopyRepliesOfEverySizeWholeAndZeroTheRest) {
    for (const std::size_t size : {12U, 13U, 14U, 15U, 36U, 171U, 172U, 173U, 174U, 175U, 176U, 333U}) {
        emulator::set_reply(IP_STATISTICS, reply(size));
        IpStatsReply* out = nullptr;
        printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 1, &out), 0); });
        const IpBlock owner(out);
        ASSERT_NE(out, nullptr) << size;
        const Bytes want = reply_in_record(size, std::max(size, sizeof(IpStatsReply)));
        EXPECT_EQ(bytes_of(out, want.size()), want) << size << " bytes";
        EXPECT_EQ(emulator::messages_outstanding(), 0U) << "the reply is dropped";
    }
}

TEST_F(Statistics, IpStatisticsWithoutACopyKeepTheReplyAndGiveNoBlock) {
    emulator::set_reply(IP_STATISTICS, reply(172));
    auto* out = reinterpret_cast<IpStatsReply*>(this);
    printed_by([&out] { EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 0, &out), 0); });
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(emulator::messages_outstanding(), 1U);
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

TEST_F(Statistics, EthernetStatisticsAreTheReplysFirst256BytesAndZeroAfterAShortOne) {
    for (const std::size_t size : {12U, 13U, 100U, 255U, 256U, 257U, 300U}) {
        emulator::set_reply(MAC_STATISTICS, reply(size));
        EthMacStats out;
        std::memset(&out, 0xEE, sizeof out);
        EXPECT_EQ(printed_by([&out] { EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &out), 0); }),
                  "Exiting get_ethernetport_statistics\n");
        EXPECT_EQ(bytes_of(&out, sizeof out), reply_in_record(size, 256)) << size;
        EXPECT_EQ(emulator::messages_outstanding(), 0U);
    }
}

TEST_F(Statistics, EthernetStatisticsFailWithMinusOneAndSaySo) {
    const auto expectFailure = [](const char* when) {
        EthMacStats out;
        const std::string trace =
            printed_by([&] { EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &out), -1) << when; });
        EXPECT_EQ(trace.find("Failed retrieval of mac stats information from linecard\n"), 0U) << when;
        EXPECT_EQ(trace.find("Exiting"), std::string::npos) << when;
        EXPECT_EQ(emulator::messages_outstanding(), 0U) << when;
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

TEST_F(Statistics, TcpStatisticsAreTheReplysFirst1352BytesAndZeroAfterAShortOne) {
    for (const std::size_t size : {12U, 15U, 36U, 1351U, 1352U, 1353U, 1500U}) {
        emulator::set_reply(TCP_STATISTICS, reply(size), {continuation(0)});
        TcpStatsReply out;
        std::memset(&out, 0xEE, sizeof out);
        printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), 0); });
        EXPECT_EQ(bytes_of(&out, sizeof out), reply_in_record(size, 1352)) << size;
    }
}

// The messages that follow a TCP reply, and what becomes of them. They add nothing to the counters.
struct Series {
    const char* name;
    std::vector<Bytes> continuations;
    int result;
    std::size_t received; // the reply and what was drained
    std::size_t left;
};
void PrintTo(const Series& series, std::ostream* out) {
    *out << series.name;
}

class TcpSeries : public Statistics, public testing::WithParamInterface<Series> {};

TEST_P(TcpSeries, IsDrainedToItsEnd) {
    emulator::set_reply(TCP_STATISTICS, reply(1352), GetParam().continuations);
    TcpStatsReply out;
    std::memset(&out, 0xEE, sizeof out);
    const std::string trace =
        printed_by([&out] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), GetParam().result); });
    EXPECT_EQ(bytes_of(&out, sizeof out), reply(1352)) << "whatever the result";
    EXPECT_EQ(emulator::count("mts_recv"), GetParam().received);
    EXPECT_EQ(emulator::messages_queued(), GetParam().left);
    EXPECT_TRUE(trace.starts_with("Entering get_tcp_stats\n")) << trace;
    EXPECT_EQ(trace.ends_with("Exiting get_tcp_stats\n"), GetParam().result == 0) << trace;
    emulator::release_messages();
}

const std::vector<Series> SERIES{
    {"OneMessage", {continuation(0)}, 0, 2, 0},
    {"AsLongAsMoreFollows",
     {continuation(1), continuation(0x0100), continuation(0xFFFF), continuation(0)},
     0,
     5,
     0},
    {"NothingAfterIt", {continuation(1), continuation(0), continuation(1)}, 0, 3, 1},
    {"NoMessageFails", {}, -1, 2, 0},
    {"SeriesThatBreaksOffFails", {continuation(1), continuation(1)}, -1, 4, 0},
    // A message too short for its word, which ends at byte 38, is the last.
    {"EmptyMessage", {Bytes(0), continuation(1)}, 0, 2, 1},
    {"MessageOf11Bytes", {Bytes(11), continuation(1)}, 0, 2, 1},
    {"MessageOf12Bytes", {Bytes(12), continuation(1)}, 0, 2, 1},
    {"MessageOf36Bytes", {Bytes(36), continuation(1)}, 0, 2, 1},
    {"MessageOf37Bytes", {Bytes(37), continuation(1)}, 0, 2, 1},
    {"MessagesOf38Bytes", {continuation(1, 38), continuation(0, 38)}, 0, 3, 0},
};
INSTANTIATE_TEST_SUITE_P(Of, TcpSeries, testing::ValuesIn(SERIES),
                         [](const auto& series) { return std::string(series.param.name); });

TEST_F(Statistics, TcpStatisticsFailSilentlyWithMinusOne) {
    const auto expectFailure = [](const char* when) {
        TcpStatsReply out;
        const std::string trace =
            printed_by([&] { EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &out), -1) << when; });
        EXPECT_EQ(trace.find("Exiting"), std::string::npos) << when;
        EXPECT_EQ(trace.find("Failed"), std::string::npos) << when;
        EXPECT_EQ(emulator::messages_outstanding(), 0U) << when;
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

} // namespace
