// A switch with one tunnel, whose numbers show the field they come from: where a value is free, a word of the
// link row holds 1000 plus its byte offset, one of the profile row 2000 plus its offset, one of the TCP
// connection row 3000 plus its offset, and so on below. A property that reads 1072 was read from the link
// row's byte 72.
//
// FCIP profile 3 (10.1.1.1) -- tunnel 5, if-index 17, VSAN 10 -- peer 10.1.1.2 (profile 7),
// carried by the Gigabit Ethernet port 0x9B010000.
#ifndef KESTO_TESTS_SUPPORT_ONE_TUNNEL_H
#define KESTO_TESTS_SUPPORT_ONE_TUNNEL_H

#include <cstdint>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "tests/support/provider_test.h"

namespace one_tunnel {

inline constexpr const char* HOST = "switch-a.example.net"; // getCSName
inline constexpr const char* SYSTEM = "switch-a";           // CSgetName
inline constexpr const char* SWITCH_WWN = "20:00:00:05:30:01:02:03";

inline constexpr std::uint32_t PROFILE = 3;
inline constexpr std::uint32_t LINK_INDEX = 4;
inline constexpr std::uint32_t IF_INDEX = 17;
inline constexpr std::uint32_t ETHERNET = 0x9B010000; // 2600534016, or -1694433280 with "%d"

inline constexpr std::uint32_t IP_STATISTICS = 1917;
inline constexpr std::uint32_t MAC_STATISTICS = 1918;
inline constexpr std::uint32_t TCP_STATISTICS = 1920;

// Replaces what the emulated switch holds.
void install();

FcipLinkEntry link();
FcipEntityEntry profile();
FcipTcpConnKey tcp_connection_key();
FcipTcpConnEntry tcp_connection();
PortInfo ethernet_row(); // of the port manager

// What the line card answers.
std::vector<std::uint8_t> ip_reply();  // 172 bytes: the 32-bit word at n is 100000 + n, at 116 it is 116
std::vector<std::uint8_t> mac_reply(); // 256 bytes: the 64-bit number at n is 2^32 + n
std::vector<std::uint8_t> tcp_reply(); // 1352 bytes: the 32-bit word at n is 200000 + n

void put_big_endian_32(std::vector<std::uint8_t>& bytes, std::size_t position, std::uint32_t value);
void put_big_endian_64(std::vector<std::uint8_t>& bytes, std::size_t position, std::uint64_t value);

// A provider on this switch.
class OneTunnelTest : public test_support::ProviderTest {
  protected:
    void SetUp() override;

    // Forgets what was called so far.
    void forget();
    // Puts the changed rows on the switch.
    void update();
    // A second and a third tunnel of the profile: links {3, 5} and {3, 6}, interfaces 18 and 19.
    static void add_two_tunnels();

    FcipLinkEntry link = one_tunnel::link();
    FcipEntityEntry profile = one_tunnel::profile();
};

} // namespace one_tunnel

#endif
