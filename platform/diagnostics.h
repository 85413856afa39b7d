// "show"-style listings of FCIP configuration on standard output. Their texts are fixed to the letter.
#ifndef KESTO_PLATFORM_DIAGNOSTICS_H
#define KESTO_PLATFORM_DIAGNOSTICS_H

#include <cstdint>

#include "common/export.h"
#include "platform/platform_records.h"

extern "C" {

// One profile and the tunnels that use it; a null list has none. Returns the last print's result.
FCIP_API int fcip_print_entity(const FcipEntityEntry* entity, const EntityIfList* tunnels);
// The main fields of a link. Returns the result of the link's VSAN lookup, which prints two lines of its own.
FCIP_API int fcip_print_link_entity_brief(const FcipLinkEntry* link);
// The MTU line of an Ethernet interface configuration record (word 7, network order). Always 0.
FCIP_API int pm_cli_eth_intf_prefix_print(const std::uint32_t* interfaceRecord, std::uint16_t* mtuOut);

} // extern "C"

#endif
