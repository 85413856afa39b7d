// The switch that the association tests run on.
//
// Five tunnels share the number 7, each in another field: one is tunnel 7, one has the if-index 7, one is
// carried by Ethernet port 7, one uses profile 7, one's peer is 10.0.0.7. A key with a 7 in it therefore
// names another tunnel in every way of reading keys, and the tunnel that comes back shows how it was read.
#ifndef KESTO_TESTS_ASSOC_GOLDEN_SWITCH_H
#define KESTO_TESTS_ASSOC_GOLDEN_SWITCH_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/platform_records.h"

namespace golden {

inline constexpr const char* NAMESPACE = "root/kesto";
inline constexpr const char* HOST = "switch-a.example.net"; // getCSName
inline constexpr const char* SYSTEM = "switch-a";           // CSgetName

struct Tunnel {
    std::uint32_t entity, index, ifIndex, ethernet;
    const char *local, *remote;
    std::uint32_t remoteEntity, vsan;
};

inline constexpr Tunnel BY_NUMBER{21, 6, 301, 401, "10.21.0.1", "10.0.1.21", 61, 10}; // tunnel 7: index 6
inline constexpr Tunnel BY_IF_INDEX{22, 31, 7, 402, "10.22.0.1", "10.0.1.22", 62, 20};
inline constexpr Tunnel BY_ETHERNET{23, 32, 302, 7, "10.23.0.1", "10.0.1.23", 63, 10};
inline constexpr Tunnel BY_PROFILE{7, 33, 303, 403, "10.7.0.1", "10.0.1.7", 64, 20};
inline constexpr Tunnel BY_ADDRESS{25, 34, 304, 404, "10.25.0.1", "10.0.0.7", 65, 10};

// A port of the Ethernet run, and its number as the "%d" of a 32-bit machine prints it.
inline constexpr std::uint32_t GIGABIT_PORT = 0x9B010000U;
inline constexpr const char* GIGABIT_PORT_TEXT = "-1694433280";

// Replaces what the emulated switch holds.
void install();
FcipLinkEntry link_row(const Tunnel& tunnel);
FcipLinkKey link_key(const Tunnel& tunnel);

// The name of the system of the tunnel's VSAN, and the 20 characters of it that a SystemName takes.
const char* vsan_name(const Tunnel& tunnel);
std::string cut_vsan_name(const Tunnel& tunnel);
std::string port_address(std::uint32_t ifIndex);
// The first counter of a tunnel's error row, which is where a link row has its if-index.
std::uint32_t error_marker(const Tunnel& tunnel);

// The ways of reading a source's key: as a port's if-index, or as a number of the tunnel wanted. A token ends
// at the first "_".
enum class Reading {
    Port,
    TunnelNumber,
    IfIndexToken,
    IfIndex,
    EthernetIfIndex,
    Entity,
    RemoteAddress, // the token after "0_"
    RemoteIfIndex, // the token after "0_"
};

// A key, and the tunnel that it names in each way of reading it; nullptr where it names none.
struct Probe {
    const char* key;
    std::map<Reading, const Tunnel*> tunnels;

    const Tunnel* tunnel(Reading reading) const;
};
extern const std::vector<Probe> PROBES;
// A key that names a tunnel when it is read in this way. Every way has one.
const Probe& hit_of(Reading reading);
// A key that names a tunnel or port.
std::string hit_key(Reading reading);

} // namespace golden

#endif
