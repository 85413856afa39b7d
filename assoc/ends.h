// The ends of associations as the traversal makes them: from the link that the source's key names, from a
// port, or from the key itself.
#ifndef KESTO_ASSOC_ENDS_H
#define KESTO_ASSOC_ENDS_H

#include <cmpidt.h>
#include <cmpift.h>

#include "classes/builder.h"
#include "platform/fcip_config.h"
#include "platform/platform_records.h"
#include "platform/platform_row.h"

// What the traversal of one branch has at hand.
struct Branch {
    const char* keyValue;
    const char* nameSpace;
    const char** properties; // null where paths are asked for
    const CMPIResult* result;
    FcipLinkEntry link{};          // when the branch looks a link up
    PlatformRow<PortInfo> port{};  // when the branch fetches a port
    std::uint32_t portIfIndex = 0; // the if-index the port was asked for with
};

// The lookup modes by their numbers, so that the tables stay tables.
inline constexpr int M1 = LINK_BY_TUNNEL;
inline constexpr int M2 = LINK_BY_IF_INDEX_TOKEN;
inline constexpr int M3 = LINK_BY_IF_INDEX;
inline constexpr int M4 = LINK_BY_ETHERNET_IF_INDEX;
inline constexpr int M5 = LINK_BY_ENTITY;
inline constexpr int M6 = LINK_BY_REMOTE_ADDRESS;
inline constexpr int M7 = LINK_BY_REMOTE_IF_INDEX;
inline constexpr int NO_LINK = 0;

// Make the object at one end; className is the end's own literal. NULL, or -1, when it cannot be made.
using PathMaker = CMPIObjectPath*(const Branch& branch, const char* className);
using InstanceMaker = CMPIInstance*(const Branch& branch, const char* className);

// Fetches the port of a branch. False when there is none.
using PortFetch = bool(Branch& branch);

// Looks up the link that the key names in this mode; true at once with NO_LINK.
bool look_link_up(Branch& branch, int mode);

// Objects made of the link by a class's own filler or builder.
template <LinkFiller* fill>
CMPIObjectPath* link_path(const Branch& branch, const char* className) {
    return fill(className, branch.nameSpace, &branch.link);
}
template <LinkBuilder* build>
CMPIInstance* link_instance(const Branch& branch, const char* className) {
    return build(className, branch.nameSpace, &branch.link, branch.properties);
}

// The link's profile, and the LAN endpoint of the Ethernet port that carries the link, as fillers of a link.
LinkFiller profile_of_link;
LinkFiller lan_endpoint_of_link;
InstanceMaker profile_instance;
// The computer system that hosts the link; it brings its own class name.
PathMaker hosting_system_path;
InstanceMaker hosting_system_instance;
// The branch's port.
PathMaker port_path;
InstanceMaker port_instance;
// The statistics of the branch's port.
PathMaker port_statistics_path;
InstanceMaker port_statistics_instance;
// The LAN endpoint of the if-index that begins the key.
PathMaker lan_endpoint_path_of_key;
InstanceMaker lan_endpoint_instance_of_key;

// The interface of the link itself.
PortFetch interface_of_link;
// The Ethernet port that carries the link; its block counts, whatever the status.
PortFetch ethernet_port_of_link;
// The port whose if-index begins the key; its block counts, whatever the status.
PortFetch port_of_key;
// The same, when the request succeeds.
PortFetch port_of_key_if_known;
// The port of the first token of a LAN endpoint's key.
PortFetch port_of_lan_key;

#endif
