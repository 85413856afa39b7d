// The interface types, if-indexes and nodes of the emulated switch.
//
// The platform fixes only type 26, of the run of Ethernet ports after if-index 0x9AFFFFFF. The statistics
// walkers also accept 2 and 5, which are the Ethernet port channel and the management port here.
#ifndef KESTO_EMULATOR_INTERFACE_TYPES_H
#define KESTO_EMULATOR_INTERFACE_TYPES_H

#include <cstdint>

namespace emulator {

enum : std::uint8_t {
    IF_TYPE_FC = 1,
    IF_TYPE_PORT_CHANNEL = 2,
    IF_TYPE_MANAGEMENT = 5,
    IF_TYPE_FCIP = 11,
    IF_TYPE_ETHERNET = 26,
};

// If-indexes of the built-in switch and of generated ones; a scenario may use any.
enum : std::uint32_t {
    IF_INDEX_FC = 0x01000000,         // + slot << 16 + port
    IF_INDEX_FCIP = 0x0A000000,       // + number
    IF_INDEX_ETHERNET = 0x9B000000,   // + slot << 16 + port
    IF_INDEX_MANAGEMENT = 0xA5000000, // + number
};

// The supervisor's own node: also given as the node of an unknown interface.
inline constexpr std::uint32_t SUPERVISOR_NODE = 0;

} // namespace emulator

#endif
