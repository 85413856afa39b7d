// How a line card reads a statistics request and makes its reply.
//
// Request, all in network order unless noted: byte 4 u16 port number; byte 24 u32 if-index; byte 28 u32 the
// caller's copy flag (IP) or 1 in host order (Ethernet, TCP); byte 32 u32 the caller's access point (TCP).
// Every other byte is zero. Reply: u16 status at byte 10, counters big-endian. A TCP reply is followed by
// messages whose u16 at byte 36, in host order, says whether another one follows.
#include "emulator/line_card.h"

#include <algorithm>
#include <map>

#include "emulator/call.h"
#include "emulator/exported_services.h"
#include "emulator/host_interface.h"
#include "emulator/interface_types.h"

namespace emulator {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t STATUS_OFFSET = 10;
constexpr std::size_t MORE_FOLLOWS_OFFSET = 36;
constexpr std::size_t CONTINUATION_SIZE = 40;
constexpr std::uint16_t UNKNOWN_PORT = 0xFFFF;

std::uint64_t big_endian(std::span<const std::uint8_t> bytes) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes)
        value = value << 8 | byte;
    return value;
}

// Writes a big-endian number as far as the payload reaches.
void put(Bytes& payload, std::size_t offset, std::size_t width, std::uint64_t value) {
    for (std::size_t i = 0; i < width && offset + i < payload.size(); ++i)
        payload[offset + i] = static_cast<std::uint8_t>(value >> (8 * (width - 1 - i)));
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

// The Ethernet counters of a port that is bound to an interface of the host, by byte offset in the reply.
void put_host_counters(Bytes& payload, const HostInterface& host) {
    static const std::map<std::size_t, const char*> COUNTERS = {
        {32, "tx_bytes"},          {40, "collisions"},    {48, "tx_window_errors"},
        {56, "tx_aborted_errors"}, {64, "rx_crc_errors"}, {88, "tx_packets"},
        {112, "rx_bytes"},         {144, "rx_packets"},   {192, "rx_frame_errors"},
    };
    for (const auto& [offset, name] : COUNTERS)
        put(payload, offset, 8, host.statistic(name));
}

// The port's reply of the kind that is asked for; its status alone where there is nothing to tell.
Bytes make_reply(const Request& request, const Exchange& exchange, std::uint32_t& continuations) {
    const SwitchState& state = runtime().state;
    const Port* port = state.find_port(requested_interface(request));
    std::uint16_t status = CARD_OK;
    const LineCardReply* reply = nullptr;
    if (!well_formed(request, exchange)) {
        status = CARD_MALFORMED;
    } else if (port == nullptr || port->node != request.node ||
               port->port != big_endian(request.payload.subspan(4, 2))) {
        status = CARD_NO_INTERFACE;
    } else if (!(port->*exchange.reply)) {
        status = CARD_NO_STATISTICS;
    } else {
        reply = &*(port->*exchange.reply);
    }

    Bytes payload(reply != nullptr && reply->size != 0 ? reply->size : exchange.replySize);
    if (reply != nullptr) {
        for (const auto& [offset, counter] : reply->words)
            put(payload, offset, exchange.wordWidth, state.value(counter));
        for (const auto& [offset, counter] : reply->longs)
            put(payload, offset, 8, state.value(counter));
        if (request.code == CODE_ETHERNET_STATS && !port->device.empty())
            if (const auto host = read_host_interface(port->device)) put_host_counters(payload, *host);
        status = reply->status;
        continuations = reply->continuations;
    }
    put(payload, STATUS_OFFSET, 2, status);
    return payload;
}

Bytes continuation(bool more) {
    Bytes payload(CONTINUATION_SIZE);
    const std::uint16_t word = more ? 1 : 0;
    std::memcpy(payload.data() + MORE_FOLLOWS_OFFSET, &word, sizeof word);
    return payload;
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

    Bytes payload;
    std::vector<Bytes> following;
    const auto fixed = runtime().fixedReplies.find(request.code);
    if (fixed != runtime().fixedReplies.end()) {
        payload = fixed->second.payload;
        following = fixed->second.continuations;
    } else {
        std::uint32_t continuations = 0;
        payload = make_reply(request, *exchange, continuations);
        if (request.code == CODE_TCP_STATS) {
            for (std::uint32_t left = continuations; left > 0; --left)
                following.push_back(continuation(left > 1));
        }
    }
    if (verdict.effect == Effect::ReplyStatus)
        put(payload, STATUS_OFFSET, 2, static_cast<std::uint64_t>(verdict.status));
    if (verdict.effect == Effect::ShortPayload) payload.resize(verdict.size);

    // A card that reports an error sends nothing more.
    const bool success =
        payload.size() >= STATUS_OFFSET + 2 &&
        big_endian(std::span<const std::uint8_t>(payload).subspan(STATUS_OFFSET, 2)) == CARD_OK;
    const bool inTime = verdict.effect != Effect::LateAnswer;
    const auto enqueue = [&](std::uint32_t token, const Bytes& bytes) {
        auto message = std::make_unique<Message>(token, bytes);
        message->arrived = inTime;
        runtime().transport.enqueue(std::move(message));
    };
    enqueue(request.token, payload);
    if (success || fixed != runtime().fixedReplies.end()) {
        for (const Bytes& bytes : following)
            enqueue(0, bytes);
    }
}

} // namespace emulator
