// A network interface of the host, read from the kernel at each request: what a port shows that is bound to
// it.
#ifndef KESTO_EMULATOR_HOST_INTERFACE_H
#define KESTO_EMULATOR_HOST_INTERFACE_H

#include <cstdint>
#include <optional>
#include <string>

namespace emulator {

struct HostInterface {
    std::string name;
    std::string macAddress; // empty = none
    std::optional<std::uint32_t> mtu;
    std::optional<std::uint32_t> subnetMask; // host order
    std::optional<std::uint32_t> prefixLength;

    std::uint64_t statistic(const char* counter) const; // a file of the interface's statistics folder
};

// The interface that a port's "device" names; "first" is the host's first interface other than the loopback
// that is up and has an address. Empty if the host has no such interface.
std::string host_interface_name(const std::string& device);

// The interface that a port is bound to; none for a port without a device.
std::optional<HostInterface> read_host_interface(const std::string& device);

} // namespace emulator

#endif
