#include "platform/ip_address.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstring>

#include "platform/platform_services.h"

int ip_addr_to_str_type(const IpAddr* addr, char* buf, std::uint32_t len, std::uint32_t* isIpv6) {
    switch (addr->addrType) {
        case KFM_ADDR_IPV4:
            *isIpv6 = 0;
            return inet_ntop(AF_INET, addr->addr, buf, len) != nullptr ? 0 : -1;
        case KFM_ADDR_IPV6:
            *isIpv6 = 1;
            return inet_ntop(AF_INET6, addr->addr, buf, len) != nullptr ? 0 : -1;
        case KFM_ADDR_UNSET:
            if (std::memcmp(addr, &inet_addr_null, sizeof *addr) != 0) return -1;
            std::snprintf(buf, len, "null");
            return 0;
        default:
            return -1;
    }
}

// Offered to other code of the switch; nothing here calls it.
std::uint32_t get_ip_addr_type(const IpAddr* addr) {
    return addr->addrType;
}
