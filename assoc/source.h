// The object that associations are asked from: what its key selects on the switch, and the request around it.
#ifndef KESTO_ASSOC_SOURCE_H
#define KESTO_ASSOC_SOURCE_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "platform/link_key.h"
#include "platform/platform_records.h"
#include "platform/platform_row.h"

struct Source {
    const char* keyValue; // null in walks over the links
    const char* nameSpace;
    const char** properties; // null where paths are asked for
    const CMPIResult* result;
    FcipLinkEntry link{};          // when a link is looked up
    PlatformRow<PortInfo> port{};  // when a port is fetched
    std::uint32_t portIfIndex = 0; // the if-index that the port was asked for with
};

// In place of a LinkKeyMode: no link is looked up.
inline constexpr int NO_LINK = 0;

// Looks up the link that the key names in this mode. True when it is found, and with NO_LINK.
bool look_link_up(Source& source, int mode);

// Fetches the source's port. False when there is none.
using PortFetch = bool(Source& source);

// The interface of the link itself.
PortFetch interface_of_link;
// The Ethernet port that carries the link. Its block counts, whatever the status.
PortFetch ethernet_port_of_link;
// The port whose if-index begins the key. Its block counts, whatever the status.
PortFetch port_of_key;
// The same, when the request succeeds.
PortFetch port_of_key_if_known;
// The port of a LAN endpoint's key. Its block counts, whatever the status.
PortFetch port_of_lan_key;

#endif
