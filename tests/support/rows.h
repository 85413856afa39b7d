// Rows of the switch's tables with nothing set but what a test names.
#ifndef KESTO_TESTS_SUPPORT_ROWS_H
#define KESTO_TESTS_SUPPORT_ROWS_H

#include <cstdint>
#include <string>

#include "emulator/control.h"
#include "platform/platform_records.h"

namespace test_support {

FcipLinkEntry link_row(std::uint32_t entityId, std::uint32_t linkIndex, std::uint32_t ifIndex);
FcipEntityEntry entity_row(std::uint32_t entityId);
// "10.1.1.1" or "2001:db8::1" as an address value; the test fails on any other text.
IpAddr address(const std::string& text);

// The types of port that the tests use.
inline constexpr std::uint8_t FCIP_PORT = 11;
inline constexpr std::uint8_t GIGABIT_ETHERNET_PORT = 26;
// Port manager row of this type with a VSAN; the VSAN's own record must exist.
emulator::Port port_row(std::uint32_t ifIndex, std::uint8_t type, std::uint32_t vsan);

} // namespace test_support

#endif
