// Access to the switch's FCIP configuration: walks over the platform's tables, and the lookups that turn a
// key string of a CIM object path back into a platform row.
//
// Nothing is cached: every lookup walks the platform's table from its start. All functions expect the
// provider lock to be held. "queue" is the platform's reply queue, mts_q.
#ifndef KESTO_PLATFORM_FCIP_CONFIG_H
#define KESTO_PLATFORM_FCIP_CONFIG_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "include/fcip_export.h"
#include "platform/platform_records.h"

extern "C" {

// How get_fcip_link_entry_from reads a key string. Tokens are separated by the characters named; numbers are
// decimal, taken from the start of the token and saturated to 32 bits.
enum LinkKeyMode {
    LINK_BY_TUNNEL = 1,            // "_": first token is the one-based tunnel number, kfmFcipLinkIndex + 1
    LINK_BY_IF_INDEX_TOKEN = 2,    // "_": first token is kfmFcipLinkIfIndex
    LINK_BY_IF_INDEX = 3,          // the whole string is kfmFcipLinkIfIndex
    LINK_BY_ETHERNET_IF_INDEX = 4, // ":" or "_": first token is kfmFcipLinkExtEthIfIndex
    LINK_BY_ENTITY = 5,            // the whole string is kfmFcipEntityId
    LINK_BY_REMOTE_ADDRESS = 6,    // "_": first token is 0, the second is the remote address as text
    LINK_BY_REMOTE_IF_INDEX = 7,   // "_": first token is 0, the second is kfmFcipLinkIfIndex
};

// Walks the whole link table and discards it. Always 0.
FCIP_API int get_all_link_entries(std::uint32_t queue);
// The first link with this index, whatever its entity. 0, or -1 with out untouched.
FCIP_API int get_link_from_link_index(std::uint32_t queue, std::uint32_t linkIndex, FcipLinkEntry* out);
// The first link that the key string matches in the given mode. 0 when found, and also when nothing matches
// (out untouched); -1 when the mode needs a token and the key has none.
FCIP_API int get_fcip_link_entry_from(const char* keyValue, FcipLinkEntry* out, int mode);
// Prints every profile. 0, or 1 when the interface list of one could not be had.
FCIP_API int get_all_fcip_entities(std::uint32_t queue);
// The profile whose number, printed in decimal, is exactly keyValue. 1 when found, else 0.
FCIP_API int get_fcip_entity_from_key_value(std::uint32_t queue, const char* keyValue, FcipEntityEntry* out);
// The first profile whose number is that at the start of keyValue. 0 found or not, -1 for a null key.
FCIP_API int get_fcip_entity_from(const char* keyValue, FcipEntityEntry* out);
// The profile of a link. 0 or -1.
FCIP_API int get_profile_from_link_entry(const FcipLinkEntry* link, FcipEntityEntry* out);
// The interfaces that use a profile: a malloc'ed block that belongs to the caller, or null.
FCIP_API EntityIfList* fcip_get_ifs_for_this_profile(std::uint32_t entityId, std::uint32_t queue);
// The VSAN of a port. 0 or -1.
FCIP_API int get_vsan_id(std::uint32_t ifIndex, std::uint32_t* vsanOut);
// The VSAN of a port from the port configuration. 0 or -1.
FCIP_API int get_vsan_from_ifindex(std::uint32_t ifIndex, std::uint32_t* vsanOut);
// The name of the VSAN's computer system, at most 20 characters; out holds at least 21 bytes and is not
// terminated here when the name is that long. 0 or -1; "NULL" when only the domain is missing.
FCIP_API int get_vsan_wwn(std::uint32_t ifIndex, char* out);
// Clears the eight bytes and returns them.
FCIP_API unsigned char* init_wwn(unsigned char wwn[8]);
// The logical computer system that hosts the port, as path or instance; the value -1 on failure.
FCIP_API CMPIObjectPath* get_logical_computer_keys(std::uint32_t ifIndex, const char* nameSpace,
                                                   const CMPIBroker* broker);
FCIP_API CMPIInstance* get_logical_computer_instance(std::uint32_t ifIndex, const char* nameSpace,
                                                     const char** properties, const CMPIBroker* broker);
// The switch-wide IP configuration. 0 or -1.
FCIP_API int get_ip_misc_cfg(IpMiscCfg* out);
// Hands the Ethernet port with this if-index to the result, as instance or path. Always 0.
FCIP_API int get_etherport_from_if_index(std::uint32_t ifIndex, int wantInstance, const char* className,
                                         const CMPIResult* result, const char* nameSpace,
                                         const char** properties, const CMPIBroker* broker);
// The if-index at the start of a LAN endpoint's key. 0, or -1 when the key has no token.
FCIP_API int get_eth_ifidx_from_keyvalue(std::uint32_t* ifIndexOut, const char* keyValue);
// The address as text and its family (0 = IPv4, 1 = IPv6). "null" for the unset address, the family
// untouched. 0 or -1.
FCIP_API int ip_addr_to_str_type(const IpAddr* addr, char* buf, std::uint32_t len, std::uint32_t* isIpv6);
FCIP_API std::uint32_t get_ip_addr_type(const IpAddr* addr);

} // extern "C"

#endif
