// The fixture of the suites of the line cards' statistics: a switch with one Ethernet port, and the payloads
// that its line card answers with. The lock is held for the whole test.
#ifndef KESTO_TESTS_PLATFORM_STATISTICS_TEST_H
#define KESTO_TESTS_PLATFORM_STATISTICS_TEST_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/statistics.h"

namespace statistics {

using Bytes = std::vector<std::uint8_t>;

inline constexpr std::uint32_t ETHERNET_PORT = 0x9B034005;
inline constexpr std::uint32_t UNKNOWN_PORT = 0x9B0FF000;
inline constexpr std::uint32_t LINE_CARD_NODE = 0x0203;
inline constexpr std::uint16_t PORT_NUMBER = 0x0105; // two different bytes, so that their order shows

inline constexpr std::uint32_t IP_STATISTICS = 1917;
inline constexpr std::uint32_t MAC_STATISTICS = 1918;
inline constexpr std::uint32_t TCP_STATISTICS = 1920;
inline constexpr std::uint32_t STATISTICS_SERVICE = 943;
inline constexpr std::uint32_t RECEIVE_OPTION = 5;

struct FreeBlock {
    void operator()(void* block) const { std::free(block); }
};
using IpBlock = std::unique_ptr<IpStatsReply, FreeBlock>;

// A payload whose bytes all show their place, with the status 0 at byte 10, or this one.
Bytes reply(std::size_t size);
Bytes reply_with_status(std::uint8_t high, std::uint8_t low, std::size_t size = 64);
// What is left of such a payload in a record of this size: its rest reads as zero.
Bytes reply_in_record(std::size_t size, std::size_t recordSize);
// A message of the series that follows a TCP reply; the word at byte 36 is in host order.
Bytes continuation(std::uint16_t moreFollows, std::size_t size = 64);

Bytes bytes_of(const void* data, std::size_t size);
Bytes big_endian(std::uint32_t value);
Bytes host_order(std::uint32_t value);
Bytes joined(std::initializer_list<Bytes> pieces);

extern std::vector<MtsSelector> selectors; // of every receive, as it reached the transport

class Statistics : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    std::unique_ptr<emulator::Locked> lock;
};

} // namespace statistics

#endif
