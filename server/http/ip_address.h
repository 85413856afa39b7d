// An IPv4 or IPv6 address. One address has one form: IPv4 addresses are kept as IPv6 maps them,
// ::ffff:a.b.c.d, which is also how they arrive at a socket that serves both.
#ifndef KESTO_SERVER_HTTP_IP_ADDRESS_H
#define KESTO_SERVER_HTTP_IP_ADDRESS_H

#include <netinet/in.h>

#include <cstdint>
#include <optional>
#include <string>

namespace cimserver {

class IpAddress {
  public:
    // Nothing for a text that is no address: names are not looked up.
    static std::optional<IpAddress> parse(const std::string& text);
    // Of the machine's own addresses, the one at which the other end reached this connected socket.
    static IpAddress of_local_end(int socket);

    bool is_v4() const { return IN6_IS_ADDR_V4MAPPED(&bytes_); }
    bool is_loopback() const;
    // Stands for all addresses of the machine: 0.0.0.0 or ::.
    bool is_unspecified() const;

    std::string in_url() const; // 192.0.2.1, [2001:db8::1]
    std::string bytes() const;  // 4 or 16, as on the wire
    sockaddr_storage socket_address(std::uint16_t port) const;

    bool operator==(const IpAddress& other) const { return IN6_ARE_ADDR_EQUAL(&bytes_, &other.bytes_); }

  private:
    explicit IpAddress(const in6_addr& bytes) : bytes_(bytes) {}
    explicit IpAddress(const in_addr& v4);
    in_addr v4() const;

    in6_addr bytes_;
};

} // namespace cimserver

#endif
