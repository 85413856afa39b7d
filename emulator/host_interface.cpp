// Reads /sys/class/net and the interface addresses.
#include "emulator/host_interface.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <bit>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <memory>

namespace emulator {
namespace {

using Addresses = std::unique_ptr<ifaddrs, decltype(&freeifaddrs)>;

Addresses interface_addresses() {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) list = nullptr;
    return {list, freeifaddrs};
}

// One value from the kernel's folder of an interface; false if it cannot be read.
template <typename Value>
bool read_value(const std::string& interface, const std::string& file, Value& value) {
    std::ifstream stream("/sys/class/net/" + interface + "/" + file);
    return static_cast<bool>(stream >> value);
}

unsigned ones(const void* bytes, std::size_t length) {
    const auto* byte = static_cast<const std::uint8_t*>(bytes);
    unsigned count = 0;
    for (std::size_t i = 0; i < length; ++i) {
        count += static_cast<unsigned>(std::popcount(byte[i]));
    }
    return count;
}

// Which prefix is shown: rather that of a routable IPv6 address than that of an IPv4 one, and either rather
// than that of a link-local address.
enum class Rank { None, LinkLocal, Ipv4, Ipv6 };

void read_addresses(HostInterface& interface) {
    Rank best = Rank::None;
    const Addresses list = interface_addresses();
    for (const ifaddrs* entry = list.get(); entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr == nullptr || entry->ifa_netmask == nullptr ||
            interface.name != entry->ifa_name) {
            continue;
        }
        Rank rank = Rank::None;
        unsigned prefix = 0;
        if (entry->ifa_addr->sa_family == AF_INET) {
            sockaddr_in mask{};
            std::memcpy(&mask, entry->ifa_netmask, sizeof mask);
            if (!interface.subnetMask) interface.subnetMask = ntohl(mask.sin_addr.s_addr);
            rank = Rank::Ipv4;
            prefix = ones(&mask.sin_addr, sizeof mask.sin_addr);
        } else if (entry->ifa_addr->sa_family == AF_INET6) {
            sockaddr_in6 address{}, mask{};
            std::memcpy(&address, entry->ifa_addr, sizeof address);
            std::memcpy(&mask, entry->ifa_netmask, sizeof mask);
            rank = IN6_IS_ADDR_LINKLOCAL(&address.sin6_addr) ? Rank::LinkLocal : Rank::Ipv6;
            prefix = ones(&mask.sin6_addr, sizeof mask.sin6_addr);
        }
        if (rank > best) {
            best = rank;
            interface.prefixLength = prefix;
        }
    }
}

std::string first_interface() {
    std::string first;
    unsigned lowest = 0;
    const Addresses list = interface_addresses();
    for (const ifaddrs* entry = list.get(); entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr == nullptr || (entry->ifa_flags & IFF_UP) == 0 ||
            (entry->ifa_flags & IFF_LOOPBACK) != 0) {
            continue;
        }
        if (entry->ifa_addr->sa_family != AF_INET && entry->ifa_addr->sa_family != AF_INET6) continue;
        const unsigned index = if_nametoindex(entry->ifa_name);
        if (index != 0 && (first.empty() || index < lowest)) {
            first = entry->ifa_name;
            lowest = index;
        }
    }
    return first;
}

} // namespace

std::uint64_t HostInterface::statistic(const char* counter) const {
    std::uint64_t value = 0;
    return read_value(name, std::string("statistics/") + counter, value) ? value : 0;
}

std::string host_interface_name(const std::string& device) {
    if (device == "first") {
        static const std::string FIRST = first_interface(); // the binding lasts as long as the process
        return FIRST;
    }
    return if_nametoindex(device.c_str()) != 0 ? device : std::string();
}

std::optional<HostInterface> read_host_interface(const std::string& device) {
    if (device.empty()) return std::nullopt;
    HostInterface interface;
    interface.name = host_interface_name(device);
    if (interface.name.empty()) return std::nullopt;
    std::uint32_t mtu = 0;
    if (read_value(interface.name, "mtu", mtu)) interface.mtu = mtu;
    read_value(interface.name, "address", interface.macAddress);
    read_addresses(interface);
    return interface;
}

} // namespace emulator
