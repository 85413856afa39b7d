// Access to the switch's FCIP configuration: walks over the platform's tables, and single rows of them.
//
// Nothing is cached: every lookup walks the platform's table from its start. All functions expect the
// provider lock to be held. "queue" is the platform's reply queue, mts_q.
#ifndef KESTO_PLATFORM_FCIP_CONFIG_H
#define KESTO_PLATFORM_FCIP_CONFIG_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "common/export.h"
#include "platform/platform_records.h"

extern "C" {

// Walks the whole link table and discards it. Always 0. Offered to other code of the switch.
FCIP_API int get_all_link_entries(std::uint32_t queue);
// The first link with this index, whatever its entity. 0, or -1 with out untouched.
FCIP_API int get_link_from_link_index(std::uint32_t queue, std::uint32_t linkIndex, FcipLinkEntry* out);

// Prints every profile. 0, or 1 when the interface list of one could not be had. Offered to other code of the
// switch.
FCIP_API int get_all_fcip_entities(std::uint32_t queue);
// The profile whose number, printed in decimal, is exactly keyValue; the last one when there are several. A
// null key is an empty one. 1 when found, else 0.
FCIP_API int get_fcip_entity_from_key_value(std::uint32_t queue, const char* keyValue, FcipEntityEntry* out);
// The first profile whose number is that at the start of keyValue. 0 found or not, -1 for a null key. Offered
// to other code of the switch.
FCIP_API int get_fcip_entity_from(const char* keyValue, FcipEntityEntry* out);
// The profile of a link. 0 or -1.
FCIP_API int get_profile_from_link_entry(const FcipLinkEntry* link, FcipEntityEntry* out);
// The interfaces that use a profile: a malloc'ed block that belongs to the caller, or null. The block holds
// as many if-indexes as its count says, unless the platform did not report its reply's length.
FCIP_API EntityIfList* fcip_get_ifs_for_this_profile(std::uint32_t entityId, std::uint32_t queue);

// The switch-wide IP configuration. 0 or -1.
FCIP_API int get_ip_misc_cfg(IpMiscCfg* out);
// Hands the Ethernet port with this if-index to the result, as instance or path. Always 0. The class name is
// not used: the port is a KESTO_EthernetPort.
FCIP_API int get_etherport_from_if_index(std::uint32_t ifIndex, int wantInstance, const char* className,
                                         const CMPIResult* result, const char* nameSpace,
                                         const char** properties, const CMPIBroker* broker);

} // extern "C"

#endif
