// The message transport and the line cards, to the byte.
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

using Bytes = std::vector<std::uint8_t>;

enum : std::uint32_t { CODE_IP = 1917, CODE_ETHERNET = 1918, CODE_TCP = 1920, STATISTICS_SERVICE = 943 };

void put(Bytes& bytes, std::size_t offset, std::size_t width, std::uint64_t value) {
    for (std::size_t i = 0; i < width; ++i) {
        bytes.at(offset + i) = static_cast<std::uint8_t>(value >> (8 * (width - 1 - i)));
    }
}

std::uint64_t big_endian(std::span<const std::uint8_t> bytes, std::size_t offset, std::size_t width) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes.subspan(offset, width)) {
        value = value << 8 | byte;
    }
    return value;
}

class Exchange : public LockedTest {
  protected:
    // A request as the line card expects it.
    static Bytes request_for(std::uint32_t code, std::uint32_t ifIndex) {
        Bytes payload(code == CODE_TCP ? 40 : 32);
        std::uint16_t port = 0xFFFF;
        if_index_get_port(ifIndex, &port);
        put(payload, 4, 2, port);
        const std::uint32_t network = hton_if_index(ifIndex);
        std::memcpy(&payload[24], &network, sizeof network);
        const std::uint32_t one = code == CODE_IP ? htonl(1) : 1;
        std::memcpy(&payload[28], &one, sizeof one);
        if (code == CODE_TCP) put(payload, 32, 4, mts_sap_get(mts_q));
        return payload;
    }

    // Sends and drops a request; returns its token, or nothing when the send failed.
    static std::optional<std::uint32_t> send(std::uint32_t node, std::uint32_t code, const Bytes& payload,
                                             std::uint32_t service = STATISTICS_SERVICE) {
        MtsMessage request{};
        if (mts_send(mts_q, node, service, code, payload.data(), static_cast<std::uint32_t>(payload.size()),
                     &request, 0, 0) != 0) {
            return std::nullopt;
        }
        const std::uint32_t token = mts_rr_token_get(&request);
        EXPECT_EQ(mts_drop(mts_q, &request), 0);
        return token;
    }

    // Receives and drops a message; returns its payload, or nothing when none came.
    static std::optional<Bytes> receive(std::uint32_t token) {
        MtsSelector selector{};
        selector.kind = 1;
        selector.option = 5;
        selector.token = token;
        MtsMessage reply{};
        if (mts_recv(mts_q, &reply, &selector) != 0) return std::nullopt;
        const auto* bytes = static_cast<const std::uint8_t*>(mts_payload_get(&reply));
        Bytes payload(bytes, bytes + mts_payload_size(&reply));
        EXPECT_EQ(mts_drop(mts_q, &reply), 0);
        EXPECT_EQ(reply.handle, nullptr);
        return payload;
    }

    static std::optional<Bytes> ask(std::uint32_t code, std::uint32_t ifIndex) {
        return receive(send(idxmap_node_by_if_index(ifIndex), code, request_for(code, ifIndex)).value());
    }

    static std::uint64_t status_of(const std::optional<Bytes>& reply) {
        return reply ? big_endian(*reply, 10, 2) : 0xFFFF0000;
    }
};

TEST_F(Exchange, IpReplyCarriesBigEndianWords) {
    emulator::set_clock(10);
    const std::optional<Bytes> reply = ask(CODE_IP, ETHERNET_1_1);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->size(), 172U);
    EXPECT_EQ(status_of(reply), 0U);
    EXPECT_EQ(big_endian(*reply, 36, 4), 30505U + 18430);
    EXPECT_EQ(big_endian(*reply, 152, 4), 11U + 2);
}

TEST_F(Exchange, EthernetReplyCarriesBigEndianCountersAndTheStatusAmongThem) {
    emulator::set_clock(0);
    emulator::Port port = *emulator::find_port(ETHERNET_1_1);
    port.ethernetStats->words[8] = {0xFFFFFFFFFFFFFFFF, 0};
    port.ethernetStats->words[56] = {0x0000000100000002, 0};
    emulator::add_port(port);
    const std::optional<Bytes> reply = ask(CODE_ETHERNET, ETHERNET_1_1);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->size(), 256U);
    EXPECT_EQ(status_of(reply), 0U);
    EXPECT_EQ(big_endian(*reply, 8, 8), 0xFFFF0000FFFFFFFFU);
    EXPECT_EQ(big_endian(*reply, 56, 8), 0x0000000100000002U);
    EXPECT_EQ(big_endian(*reply, 32, 8), 132900000U);
}

TEST_F(Exchange, TcpReplyIsFollowedByContinuationsThatSayWhetherMoreFollow) {
    const std::optional<Bytes> reply = ask(CODE_TCP, ETHERNET_1_1);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->size(), 1352U);
    EXPECT_EQ(status_of(reply), 0U);
    EXPECT_EQ(big_endian(*reply, 52, 4), 4U);
    EXPECT_EQ(emulator::messages_queued(), 2U);
    for (const unsigned expected : {1U, 0U}) {
        const std::optional<Bytes> next = receive(0);
        ASSERT_TRUE(next);
        ASSERT_GE(next->size(), 38U);
        std::uint16_t more = 0xFFFF;
        std::memcpy(&more, &(*next)[36], sizeof more);
        EXPECT_EQ(more, expected);
    }
    EXPECT_FALSE(receive(0));
}

TEST_F(Exchange, ReplySizeMayBeOddOrAnyOther) {
    emulator::Port port = *emulator::find_port(ETHERNET_1_1);
    port.ipStats->size = 175;
    emulator::add_port(port);
    EXPECT_EQ(ask(CODE_IP, ETHERNET_1_1)->size(), 175U);
}

TEST_F(Exchange, PortWithoutCountersOfTheKindAnswersStatus3) {
    EXPECT_EQ(status_of(ask(CODE_ETHERNET, MANAGEMENT)), 3U);
    EXPECT_EQ(status_of(ask(CODE_TCP, FCIP_1)), 3U);
    EXPECT_EQ(emulator::messages_queued(), 0U) << "nothing follows an error";
}

TEST_F(Exchange, UnknownInterfaceAnswersNonZero) {
    Bytes payload = request_for(CODE_IP, UNKNOWN_INTERFACE);
    EXPECT_EQ(big_endian(payload, 4, 2), 0xFFFFU);
    EXPECT_EQ(status_of(receive(send(0, CODE_IP, payload).value())), 1U);
    put(payload, 4, 2, 1);
    EXPECT_EQ(status_of(receive(send(0, CODE_IP, payload).value())), 2U);
}

TEST_F(Exchange, EachMalformedByteOfARequestIsNoticed) {
    const std::uint32_t node = idxmap_node_by_if_index(ETHERNET_1_1);
    for (const std::uint32_t code : {CODE_IP, CODE_ETHERNET, CODE_TCP}) {
        const Bytes good = request_for(code, ETHERNET_1_1);
        EXPECT_EQ(status_of(receive(send(node, code, good).value())), 0U);
        for (std::size_t i = 0; i < good.size(); ++i) {
            if (code == CODE_IP && i >= 28) continue; // the copy flag may be anything
            Bytes bad = good;
            bad[i] = static_cast<std::uint8_t>(bad[i] ^ 0x40);
            EXPECT_NE(status_of(receive(send(node, code, bad).value())), 0U) << code << ", byte " << i;
        }
        Bytes longer = good;
        longer.push_back(0);
        EXPECT_EQ(status_of(receive(send(node, code, longer).value())), 1U);
        EXPECT_EQ(status_of(receive(send(node, code, Bytes(good.begin(), good.end() - 1)).value())), 1U);
        EXPECT_EQ(status_of(receive(send(node, code, Bytes()).value())), 1U);
        emulator::release_messages(); // the continuations of the good TCP request
    }
}

TEST_F(Exchange, AnotherNodeDoesNotKnowThePort) {
    const Bytes payload = request_for(CODE_IP, ETHERNET_1_1);
    EXPECT_EQ(status_of(receive(send(idxmap_node_by_if_index(ETHERNET_2_1), CODE_IP, payload).value())), 2U);
    EXPECT_FALSE(send(0x4711, CODE_IP, payload)) << "a node that does not exist";
}

TEST_F(Exchange, NobodyAnswersAnotherServiceOrCode) {
    const std::uint32_t node = idxmap_node_by_if_index(ETHERNET_1_1);
    const Bytes payload = request_for(CODE_IP, ETHERNET_1_1);
    EXPECT_FALSE(receive(send(node, CODE_IP, payload, 944).value()));
    EXPECT_FALSE(receive(send(node, 1919, payload).value()));
    EXPECT_EQ(emulator::messages_queued(), 0U);
}

TEST_F(Exchange, AReceiveTakesTheReplyOfItsTokenWhateverCameBefore) {
    const std::uint32_t node = idxmap_node_by_if_index(ETHERNET_1_1);
    const std::uint32_t first = send(node, CODE_IP, request_for(CODE_IP, ETHERNET_1_1)).value();
    const std::uint32_t second = send(node, CODE_ETHERNET, request_for(CODE_ETHERNET, ETHERNET_1_1)).value();
    EXPECT_NE(first, second);
    EXPECT_EQ(receive(second)->size(), 256U);
    EXPECT_EQ(receive(first)->size(), 172U);
    EXPECT_FALSE(receive(first)) << "it was taken";
}

TEST_F(Exchange, AReceiveWithoutATokenTakesWhatComesNext) {
    const std::uint32_t node = idxmap_node_by_if_index(ETHERNET_1_1);
    send(node, CODE_IP, request_for(CODE_IP, ETHERNET_1_1));
    emulator::queue_message({1, 2, 3});
    EXPECT_EQ(receive(0)->size(), 172U);
    EXPECT_EQ(receive(0), Bytes({1, 2, 3}));
}

TEST_F(Exchange, RequestsAreKeptToTheByte) {
    const Bytes payload = request_for(CODE_TCP, ETHERNET_1_2);
    const std::uint32_t token = send(0x0101, CODE_TCP, payload).value();
    const std::vector<emulator::SentRequest> sent = emulator::sent_requests();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].node, 0x0101U);
    EXPECT_EQ(sent[0].service, STATISTICS_SERVICE);
    EXPECT_EQ(sent[0].code, CODE_TCP);
    EXPECT_EQ(sent[0].token, token);
    EXPECT_EQ(sent[0].payload, payload);
    emulator::release_messages();
}

TEST_F(Exchange, FixedRepliesStandToTheByte) {
    const Bytes reply{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 12};
    emulator::set_reply(CODE_TCP, reply, {{1}, {}});
    EXPECT_EQ(ask(CODE_TCP, ETHERNET_1_1), reply);
    EXPECT_EQ(receive(0), Bytes({1}));
    EXPECT_EQ(receive(0), Bytes());
    emulator::clear_replies();
    EXPECT_EQ(ask(CODE_TCP, ETHERNET_1_1)->size(), 1352U);
    emulator::release_messages();
}

TEST_F(Exchange, AClosedQueueCarriesNothing) {
    emulator::close_queue();
    EXPECT_EQ(mts_q, 0U);
    EXPECT_FALSE(send(0x0101, CODE_IP, Bytes(32)));
    EXPECT_FALSE(receive(0));
    EXPECT_GE(init_mts(&mts_q), 0);
    EXPECT_GE(init_mts(&mts_q), 0) << "opening again does no harm";
    EXPECT_TRUE(ask(CODE_IP, ETHERNET_1_1));
}

TEST_F(Exchange, CardThatNeverAnswers) {
    emulator::add_fault(
        {.symbol = emulator::LINE_CARD, .where = "code=1917", .effect = emulator::Effect::NoAnswer});
    EXPECT_FALSE(ask(CODE_IP, ETHERNET_1_1));
    EXPECT_EQ(ask(CODE_ETHERNET, ETHERNET_1_1)->size(), 256U);
}

TEST_F(Exchange, LateAnswerArrivesAfterTheReceiveThatWaitedForIt) {
    emulator::add_fault({.symbol = emulator::LINE_CARD, .effect = emulator::Effect::LateAnswer});
    const std::uint32_t token = send(0x0101, CODE_IP, request_for(CODE_IP, ETHERNET_1_1)).value();
    EXPECT_FALSE(receive(token));
    EXPECT_EQ(receive(0)->size(), 172U) << "it is the next message for any receiver";
}

TEST_F(Exchange, ShortPayloadHasJustItsBytes) {
    emulator::add_fault(
        {.symbol = emulator::LINE_CARD, .effect = emulator::Effect::ShortPayload, .size = 11});
    EXPECT_EQ(ask(CODE_TCP, ETHERNET_1_1)->size(), 11U);
    EXPECT_EQ(emulator::messages_queued(), 0U) << "a reply without a status is followed by nothing";
}

TEST_F(Exchange, ReplyStatusIsTheFaults) {
    emulator::add_fault({.symbol = emulator::LINE_CARD,
                         .first = 2,
                         .last = 2,
                         .effect = emulator::Effect::ReplyStatus,
                         .status = 0x1234});
    EXPECT_EQ(status_of(ask(CODE_IP, ETHERNET_1_1)), 0U);
    EXPECT_EQ(status_of(ask(CODE_IP, ETHERNET_1_1)), 0x1234U);
    EXPECT_EQ(status_of(ask(CODE_IP, ETHERNET_1_1)), 0U);
}

} // namespace
} // namespace emulator_test
