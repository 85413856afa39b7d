// What the server says of itself.
//
// Clients find their way by it: they look for a namespace called interop or root/interop, which has an object
// for each namespace, one for the server and one for the protocol. Both names are served, with the same
// content. Older clients instead ask for instances of __Namespace, of which a namespace has one for each
// namespace directly below it, beginning at root; so every namespace has that class, and those above a
// served one are served, too.
#ifndef KESTO_SERVER_INTEROP_INTEROP_H
#define KESTO_SERVER_INTEROP_INTEROP_H

#include <string>
#include <vector>

#include "server/provider/served.h"

namespace cimserver {

struct ServerDescription {
    std::string systemName;    // the machine's
    bool asksForUsers = false; // clients have to say who they are
};

// Adds all of that to what the provider serves. Throws RegistrationError when that is one of the interop
// namespaces.
void serve_interop(std::vector<ServedNameSpace>& served, const ServerDescription& server);

} // namespace cimserver

#endif
