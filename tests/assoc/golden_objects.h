// The objects of the golden switch as traversal functions and walkers must return them. They are made here
// from the tunnels' facts and the layout of each class's keys, with nothing taken from the library. Only the
// objects that the platform makes are asked from the platform.
#ifndef KESTO_TESTS_ASSOC_GOLDEN_OBJECTS_H
#define KESTO_TESTS_ASSOC_GOLDEN_OBJECTS_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/assoc/golden_switch.h"
#include "tests/support/provider_test.h"
#include "tests/support/recorded.h"

namespace golden {

// What a traversal function or walker returns: paths, or the whole objects.
enum class Form { Names, Instances };
inline constexpr Form FORMS[] = {Form::Names, Form::Instances};
std::string text_of(Form form);
void PrintTo(Form form, std::ostream* out);

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
// The same for an end that belongs to a port and no tunnel: LanEndpoint, EthernetStatistics, EthernetPort.
test_support::RecordedPath port_path(End end, const std::string& className, std::uint32_t ifIndex);
// The path that the platform makes of a system with this key.
test_support::RecordedPath system_path(const std::string& className, const char* key);

// What distinguishes an instance, as text: its path and the key property that names the tunnel; of an
// instance that the platform makes, everything.
std::string instance(End end, const std::string& className, const Tunnel& tunnel);
std::string port_instance(End end, const std::string& className, std::uint32_t ifIndex);
std::string identity(End end, const test_support::RecordedInstance& instance);

// The same in the form asked for.
std::string object(Form form, End end, const std::string& className, const Tunnel& tunnel);
std::string port_object(Form form, End end, const std::string& className, std::uint32_t ifIndex);

// An association of two ends: roles, and the extras that settings associations carry.
enum class Kind { Realize, ManagedSetting, ManagedStats, GroupPart };
void PrintTo(Kind kind, std::ostream* out);
// The association's path; an instance of it has the same path without keys, and these keys as properties.
test_support::RecordedPath association(Kind kind, const std::string& className,
                                       const test_support::RecordedPath& first,
                                       const test_support::RecordedPath& second);
// The associations returned, in whichever form; NULL and -1 as they are.
std::vector<test_support::RecordedPath> associations_of(const test_support::Answer& answer);

} // namespace golden

#endif
