// The line cards: the nodes that answer statistics requests.
#ifndef KESTO_EMULATOR_LINE_CARD_H
#define KESTO_EMULATOR_LINE_CARD_H

#include <cstdint>
#include <span>

namespace emulator {

enum : std::uint32_t { CODE_IP_STATS = 1917, CODE_ETHERNET_STATS = 1918, CODE_TCP_STATS = 1920 };

inline constexpr std::uint32_t STATISTICS_SERVICE = 943;

// What a line card answers at byte 10 of its reply.
enum : std::uint16_t {
    CARD_OK = 0,
    CARD_MALFORMED = 1,    // the request has a wrong length, port number or constant
    CARD_NO_INTERFACE = 2, // no such interface on this node, or another port number
    CARD_NO_STATISTICS = 3 // the interface has no counters of this kind
};

struct Request {
    std::uint32_t node, service, code, token;
    std::span<const std::uint8_t> payload;
};

// Whether messages can be sent to the node: it carries ports, or is the supervisor.
bool node_exists(std::uint32_t node);

// Puts the line card's reply, and what follows it, on the queue. A request to another service, or with
// another code, is never answered.
void answer_request(const Request& request);

} // namespace emulator

#endif
