// Refuses requests that are not meant for this server.
//
// A web page can let its own name resolve to the address of a machine that only the visitor's browser reaches
// (DNS rebinding); the browser then takes this server's answers for the page's own and lets it read them.
// What gives such a request away is its Host header, which still has the page's name. So that header must
// name the address that the client reached, or a name that this server is known to have. The port that it
// gives does not matter: it may be that of a tunnel.
#ifndef KESTO_SERVER_HTTP_HOST_CHECK_H
#define KESTO_SERVER_HTTP_HOST_CHECK_H

#include <optional>
#include <string>
#include <vector>

#include "server/http/ip_address.h"
#include "server/http/message.h"

namespace cimserver {

// What a request is refused with, if it is: 400 for a Host header that is missing or malformed, 421
// (Misdirected Request) for another's. `reached` is the server's end of the connection, `names` are the
// server's names.
std::optional<HttpReply> host_refusal(const HttpRequest& request, const IpAddress& reached,
                                      const std::vector<std::string>& names);

} // namespace cimserver

#endif
