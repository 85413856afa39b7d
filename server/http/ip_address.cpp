#include "server/http/ip_address.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cstddef>
#include <cstring>

namespace cimserver {

namespace {

constexpr std::size_t V4_OFFSET = sizeof(in6_addr) - sizeof(in_addr); // in the mapped form

} // namespace

IpAddress::IpAddress(const in_addr& v4) : bytes_{} {
    bytes_.s6_addr[V4_OFFSET - 2] = bytes_.s6_addr[V4_OFFSET - 1] = 0xFF;
    std::memcpy(bytes_.s6_addr + V4_OFFSET, &v4, sizeof v4);
}

std::optional<IpAddress> IpAddress::parse(const std::string& text) {
    in_addr v4{};
    if (inet_pton(AF_INET, text.c_str(), &v4) == 1) return IpAddress(v4);
    in6_addr v6{};
    if (inet_pton(AF_INET6, text.c_str(), &v6) == 1) return IpAddress(v6);
    return std::nullopt;
}

IpAddress IpAddress::of_local_end(int socket) {
    sockaddr_storage local{};
    socklen_t size = sizeof local;
    // Should it fail, the address is the unspecified one, which is nobody's.
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&local), &size) != 0) return IpAddress(in6addr_any);
    if (local.ss_family == AF_INET) return IpAddress(reinterpret_cast<const sockaddr_in&>(local).sin_addr);
    return IpAddress(reinterpret_cast<const sockaddr_in6&>(local).sin6_addr);
}

in_addr IpAddress::v4() const {
    in_addr result{};
    std::memcpy(&result, bytes_.s6_addr + V4_OFFSET, sizeof result);
    return result;
}

bool IpAddress::is_loopback() const {
    constexpr std::uint32_t LOOPBACK_NET = 127;
    return is_v4() ? ntohl(v4().s_addr) >> 24U == LOOPBACK_NET : IN6_IS_ADDR_LOOPBACK(&bytes_);
}

bool IpAddress::is_unspecified() const {
    return is_v4() ? v4().s_addr == htonl(INADDR_ANY) : IN6_IS_ADDR_UNSPECIFIED(&bytes_);
}

std::string IpAddress::in_url() const {
    char text[INET6_ADDRSTRLEN] = {};
    if (is_v4()) {
        const in_addr address = v4();
        return inet_ntop(AF_INET, &address, text, sizeof text);
    }
    std::string bracketed = "[";
    bracketed += inet_ntop(AF_INET6, &bytes_, text, sizeof text);
    return bracketed += "]";
}

std::string IpAddress::bytes() const {
    const std::size_t unused = is_v4() ? V4_OFFSET : 0;
    return {reinterpret_cast<const char*>(bytes_.s6_addr) + unused, sizeof bytes_ - unused};
}

sockaddr_storage IpAddress::socket_address(std::uint16_t port) const {
    sockaddr_storage result{};
    if (is_v4()) {
        auto& address = reinterpret_cast<sockaddr_in&>(result);
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr = v4();
    } else {
        auto& address = reinterpret_cast<sockaddr_in6&>(result);
        address.sin6_family = AF_INET6;
        address.sin6_port = htons(port);
        address.sin6_addr = bytes_;
    }
    return result;
}

} // namespace cimserver
