// How a line card reads a statistics request and makes its reply.
//
// Request: byte 4 u16 port number; byte 24 u32 if-index; byte 28 u32 the caller's copy flag (IP) or 1
// (Ethernet, TCP); byte 32 u32 the caller's access point (TCP). All of them are in network order, except for
// the 1, which is in host order; every other byte is zero. Reply: byte 10 u16 status; counters, all of it
// big-endian. A TCP reply is followed by messages whose u16 at byte 36, in host order, says whether another
// one follows.
#include "emulator/line_card.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "emulator/call.h"
#include "emulator/control.h"
#include "emulator/exported_services.h"
#include "emulator/host_interface.h"
#include "emulator/interface_types.h"
#include "emulator/runtime.h"
#include "emulator/switch_state.h"
#include "emulator/text_format.h"
#include "emulator/transport.h"
#include "platform/platform_records.h"

namespace emulator {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t STATUS_OFFSET = 10;
constexpr std::size_t MORE_FOLLOWS_OFFSET = 36;
constexpr std::size_t CONTINUATION_SIZE = 40;
constexpr std::uint16_t UNKNOWN_PORT = 0xFFFF;

std::uint64_t big_endian(std::span<const std::uint8_t> bytes) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes) {
        value = value << 8 | byte;
    }
    return value;
}

// Writes a big-endian number as far as the payload reaches.
void put(Bytes& payload, std::size_t offset, std::size_t width, std::uint64_t value) {
    for (std::size_t i = 0; i < width && offset + i < payload.size(); ++i) {
        payload[offset + i] = static_cast<std::uint8_t>(value >> (8 * (width - 1 - i)));
    }
}

// What distinguishes the three requests.
struct Exchange {
    std::size_t requestLength;
    std::size_t replySize;
    std::size_t wordWidth;
    std::optional<LineCardReply> Port::*reply;
};

const Exchange* exchange_of(std::uint32_t code) {
    static const std::map<std::uint32_t, Exchange> EXCHANGES = {
        {CODE_IP_STATS, {32, sizeof(IpStatsReply), 4, &Port::ipStats}},
        {CODE_ETHERNET_STATS, {32, sizeof(EthMacStats), 8, &Port::ethernetStats}},
        {CODE_TCP_STATS, {40, sizeof(TcpStatsReply), 4, &Port::tcpStats}},
    };
    const auto found = EXCHANGES.find(code);
    return found == EXCHANGES.end() ? nullptr : &found->second;
}

bool all_zero(std::span<const std::uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

bool well_formed(const Request& request, const Exchange& exchange) {
    const auto& payload = request.payload;
    if (payload.size() != exchange.requestLength) return false;
    if (!all_zero(payload.first(4)) || !all_zero(payload.subspan(6, 18))) return false;
    if (big_endian(payload.subspan(4, 2)) == UNKNOWN_PORT) return false;
    if (request.code == CODE_IP_STATS) return true;
    std::uint32_t flag = 0;
    std::memcpy(&flag, payload.data() + 28, sizeof flag);
    if (flag != 1) return false;
    return request.code != CODE_TCP_STATS ||
           (big_endian(payload.subspan(32, 4)) == SERVICE_ACCESS_POINT && all_zero(payload.subspan(36, 4)));
}

std::uint32_t requested_interface(const Request& request) {
    return request.payload.size() < 28
               ? 0
               : static_cast<std::uint32_t>(big_endian(request.payload.subspan(24, 4)));
}

// The kernel's counters for a port that is bound to an interface of the host, by byte offset in the reply.
void put_host_counters(Bytes& payload, const HostInterface& host) {
    static const std::map<std::size_t, const char*> COUNTERS = {
        {32, "tx_bytes"},          {40, "collisions"},    {48, "tx_window_errors"},
        {56, "tx_aborted_errors"}, {64, "rx_crc_errors"}, {88, "tx_packets"},
        {112, "rx_bytes"},         {144, "rx_packets"},   {192, "rx_frame_errors"},
    };
    for (const auto& [offset, name] : COUNTERS) {
        put(payload, offset, 8, host.statistic(name));
    }
}

Bytes continuation(bool more) {
    Bytes payload(CONTINUATION_SIZE);
    const std::uint16_t word = more ? 1 : 0;
    std::memcpy(payload.data() + MORE_FOLLOWS_OFFSET, &word, sizeof word);
    return payload;
}

// CARD_OK if the card has counters for the request, otherwise why it has none.
std::uint16_t status_for(const Request& request, const Exchange& exchange, const Port* port) {
    if (!well_formed(request, exchange)) return CARD_MALFORMED;
    if (port == nullptr || port->node != request.node ||
        port->port != big_endian(request.payload.subspan(4, 2))) {
        return CARD_NO_INTERFACE;
    }
    return port->*exchange.reply ? CARD_OK : CARD_NO_STATISTICS;
}

void put_counters(Bytes& payload, const LineCardReply& reply, std::size_t wordWidth) {
    const SwitchState& state = runtime().state;
    for (const auto& [offset, counter] : reply.words) {
        put(payload, offset, wordWidth, state.value(counter));
    }
    for (const auto& [offset, counter] : reply.longs) {
        put(payload, offset, 8, state.value(counter));
    }
}

// The port's reply to this kind of request, and for TCP what follows it; a status alone if it has none.
CardAnswer answer_of_port(const Request& request, const Exchange& exchange) {
    const Port* port = runtime().state.find_port(requested_interface(request));
    const std::uint16_t status = status_for(request, exchange, port);
    CardAnswer answer;
    if (status != CARD_OK) {
        answer.payload.resize(exchange.replySize);
        put(answer.payload, STATUS_OFFSET, 2, status);
        return answer;
    }
    const LineCardReply& reply = *(port->*exchange.reply);
    answer.payload.resize(reply.size != 0 ? reply.size : exchange.replySize);
    put_counters(answer.payload, reply, exchange.wordWidth);
    if (request.code == CODE_ETHERNET_STATS) {
        if (const auto host = read_host_interface(port->device)) put_host_counters(answer.payload, *host);
    }
    put(answer.payload, STATUS_OFFSET, 2, reply.status);
    if (request.code == CODE_TCP_STATS) {
        for (std::uint32_t left = reply.continuations; left > 0; --left) {
            answer.continuations.push_back(continuation(left > 1));
        }
    }
    return answer;
}

bool reports_success(const Bytes& payload) {
    return payload.size() >= STATUS_OFFSET + 2 &&
           big_endian(std::span(payload).subspan(STATUS_OFFSET, 2)) == CARD_OK;
}

void enqueue(std::uint32_t token, const Bytes& payload, bool inTime) {
    auto message = std::make_unique<Message>(token, payload);
    message->arrived = inTime;
    runtime().transport.enqueue(std::move(message));
}

} // namespace

bool node_exists(std::uint32_t node) {
    const auto& ports = runtime().state.ports;
    return node == SUPERVISOR_NODE || std::any_of(ports.begin(), ports.end(), [node](const auto& entry) {
               return entry.second.node == node;
           });
}

void answer_request(const Request& request) {
    const Exchange* exchange = exchange_of(request.code);
    if (exchange == nullptr || request.service != STATISTICS_SERVICE) return;
    const Call call(LINE_CARD, CallerLock::NotNeeded, [&] {
        return format("code=%u node=0x%04x if=0x%08x", request.code, request.node,
                      requested_interface(request));
    });
    const Verdict& verdict = call.verdict();
    if (verdict.effect == Effect::NoAnswer || verdict.effect == Effect::Fail) return;

    const auto fixed = runtime().fixedReplies.find(request.code);
    const bool isFixed = fixed != runtime().fixedReplies.end();
    CardAnswer answer = isFixed ? fixed->second : answer_of_port(request, *exchange);
    if (verdict.effect == Effect::ReplyStatus) {
        put(answer.payload, STATUS_OFFSET, 2, static_cast<std::uint64_t>(verdict.status));
    }
    if (verdict.effect == Effect::ShortPayload) answer.payload.resize(verdict.size);
    // A card that reports an error sends nothing more.
    if (!isFixed && !reports_success(answer.payload)) answer.continuations.clear();

    const bool inTime = verdict.effect != Effect::LateAnswer;
    enqueue(request.token, answer.payload, inTime);
    for (const Bytes& payload : answer.continuations) {
        enqueue(0, payload, inTime);
    }
}

} // namespace emulator
