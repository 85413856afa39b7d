// The switch that the association tests run on, and the texts that its objects have.
//
// Five tunnels share the number 7, each in another field: one is tunnel 7, one has the if-index 7, one is
// carried by Ethernet port 7, one uses profile 7, one's peer is 10.0.0.7. A key with a 7 in it therefore
// names another tunnel in every way of reading keys, and the tunnel that comes back tells how it was read.
//
// The expected objects are made here from the tunnels' facts and the layout of each class's keys, with
// nothing taken from the library. Only the objects that the platform makes are asked from the platform.
#ifndef KESTO_TESTS_ASSOC_GOLDEN_SWITCH_H
#define KESTO_TESTS_ASSOC_GOLDEN_SWITCH_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "platform/platform_records.h"
#include "tests/support/recorded.h"

namespace golden {

inline constexpr const char* NAMESPACE = "root/kesto";
inline constexpr const char* HOST = "switch-a.example.net"; // getCSName
inline constexpr const char* SYSTEM = "switch-a";           // CSgetName

struct Tunnel {
    const char* label;
    std::uint32_t entity, index, ifIndex, ethernet;
    std::uint8_t local[4], remote[4];
    const char *localText, *remoteText;
    std::uint32_t remoteEntity;
    std::uint32_t vsan;
};

extern const Tunnel BY_NUMBER;   // tunnel 7, that is link index 6
extern const Tunnel BY_IF_INDEX; // if-index 7
extern const Tunnel BY_ETHERNET; // Ethernet port 7
extern const Tunnel BY_PROFILE;  // profile 7
extern const Tunnel BY_ADDRESS;  // peer 10.0.0.7

// A port of the Ethernet run, and its number as the "%d" of a 32-bit machine prints it.
inline constexpr std::uint32_t GIGABIT_PORT = 0x9B010000U;
inline constexpr const char* GIGABIT_PORT_TEXT = "-1694433280";

// Replaces what the emulated switch holds.
void install();
FcipLinkEntry link_row(const Tunnel& tunnel);
FcipLinkKey link_key(const Tunnel& tunnel);

// The kinds of object at the ends of associations: what makes them, and so what their keys are.
enum class End {
    FcipEndpoint,
    TcpEndpoint,
    IpEndpoint,
    FcipSettings,
    TcpSettings,
    IpSettings,
    RemoteFcipPort,
    RemoteIpAccessPoint,
    RemoteTcpPort,
    Profile,
    Statistics,         // path of the three link statistics classes
    TcpStatisticalData, // instance only: its key is the tunnel number
    LanEndpoint,        // of the tunnel's Ethernet port
    EthernetStatistics, // of the tunnel's Ethernet port
    HostingSystem,      // of the tunnel's VSAN, by the platform: the whole name of the system is its key
    VsanSystem,         // the same, by its first 20 characters: what the walkers make
    PhysicalSystem,     // the switch, by the platform
    FcPort,             // of the tunnel's FCIP interface, by the platform
    EthernetPort,       // of the tunnel's Ethernet port, by the platform
};
void PrintTo(End end, std::ostream* out);

// The object path of this end of the tunnel, under the class name given.
test_support::RecordedPath path(End end, const std::string& className, const Tunnel& tunnel);
// The same for an end that belongs to a port and no tunnel: lanEndpoint, ethernetStatistics, ethernetPort.
test_support::RecordedPath port_path(End end, const std::string& className, std::uint32_t ifIndex);

// The path that the platform makes of a system with this key.
test_support::RecordedPath system_path(const std::string& className, const char* key);

// What tells an instance apart, as text: its path and the key property that names the tunnel; of an instance
// that the platform makes, everything.
std::string instance(End end, const std::string& className, const Tunnel& tunnel);
std::string port_instance(End end, const std::string& className, std::uint32_t ifIndex);
std::string identity(End end, const test_support::RecordedInstance& instance);

// The ways of reading a key (get_fcip_link_entry_from's modes), and the tunnel that a key names in each.
struct Probe {
    const char* key;
    const Tunnel* tunnel[8]; // by mode 1 to 7; null = none
};
extern const std::vector<Probe> PROBES;

// An association of two ends: roles, and the extras that settings associations carry.
enum class Kind { Realize, ManagedSetting, ManagedStats, GroupPart };
void PrintTo(Kind kind, std::ostream* out);
const char* first_role(Kind kind);
const char* second_role(Kind kind);
// The association's path; an instance of it has the same path without keys, and these keys as properties.
test_support::RecordedPath association(Kind kind, const std::string& className,
                                       const test_support::RecordedPath& first,
                                       const test_support::RecordedPath& second);

} // namespace golden

#endif
