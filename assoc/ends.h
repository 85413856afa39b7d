// The ends of associations as the traversal makes them: from the link that the source's key names, from a
// port, or from the key itself.
#ifndef KESTO_ASSOC_ENDS_H
#define KESTO_ASSOC_ENDS_H

#include <cmpidt.h>
#include <cmpift.h>

#include "classes/builder.h"
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

// Make the object at one end; className is the end's own literal. NULL, or -1, when it cannot be made.
using PathMaker = CMPIObjectPath*(const Branch& branch, const char* className);
using InstanceMaker = CMPIInstance*(const Branch& branch, const char* className);

// Fetches the port of a branch. False when there is none.
using PortFetch = bool(Branch& branch);

// Looks up what a branch needs before its ends can be made: the link (unless the mode is NO_LINK) and the
// port (unless fetch is null).
inline constexpr int NO_LINK = 0;
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

// The link's profile.
PathMaker profile_path;
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
