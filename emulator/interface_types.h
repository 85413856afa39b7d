// The interface types of the emulated switch, and where its line cards stand.
//
// Of the types only 26 is fixed by the platform: the run of Ethernet ports after if-index 0x9AFFFFFF. The
// statistics walkers also take 2 and 5, which are the Ethernet port channel and the management port here.
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

// if-indexes that the built-in switch and generated switches use; a scenario may use any.
enum : std::uint32_t {
    IF_INDEX_FC = 0x01000000,         // + slot << 16 + port
    IF_INDEX_FCIP = 0x0A000000,       // + number
    IF_INDEX_ETHERNET = 0x9B000000,   // + slot << 16 + port
    IF_INDEX_MANAGEMENT = 0xA5000000, // + number
};

// The supervisor's own node: the node of every interface that the switch does not know.
inline constexpr std::uint32_t SUPERVISOR_NODE = 0;

} // namespace emulator

#endif
