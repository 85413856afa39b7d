// HTTP Basic: a request's Authorization header has its user's name and password, which only TLS hides.
#ifndef KESTO_SERVER_HTTP_AUTHENTICATION_H
#define KESTO_SERVER_HTTP_AUTHENTICATION_H

#include <optional>

#include "server/http/message.h"
#include "server/http/users.h"

namespace cimserver {

// Puts the user's name into the request and takes the password out of it. Gives the refusal, 401, when there
// are no credentials or the users do not have them.
std::optional<HttpReply> authenticate(HttpRequest& request, Users& users);

} // namespace cimserver

#endif
