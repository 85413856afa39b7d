// Addresses as text, with their family.
#ifndef KESTO_PLATFORM_IP_ADDRESS_H
#define KESTO_PLATFORM_IP_ADDRESS_H

#include <cstdint>

#include "common/export.h"
#include "platform/platform_records.h"

extern "C" {

// The address as text and its family (0 = IPv4, 1 = IPv6). "null" for the unset address, the family
// untouched. 0 or -1.
FCIP_API int ip_addr_to_str_type(const IpAddr* addr, char* buf, std::uint32_t len, std::uint32_t* isIpv6);
FCIP_API std::uint32_t get_ip_addr_type(const IpAddr* addr);

} // extern "C"

#endif
