#include "server/http/authentication.h"

#include <gnutls/gnutls.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "server/model/text.h"

namespace cimserver {

namespace {

constexpr unsigned UNAUTHORIZED = 401;

std::optional<std::string> decoded_base64(std::string_view text) {
    std::string copy(text);
    const gnutls_datum_t coded{reinterpret_cast<unsigned char*>(copy.data()),
                               static_cast<unsigned>(copy.size())};
    gnutls_datum_t plain{};
    if (gnutls_base64_decode2(&coded, &plain) != 0) return std::nullopt;
    std::string result(reinterpret_cast<const char*>(plain.data), plain.size);
    gnutls_free(plain.data);
    return result;
}

// Those of "Basic bmFtZTpwYXNzd29yZA==".
std::optional<Credentials> credentials_in(std::string_view header) {
    header = trimmed(header);
    const std::size_t blank = header.find(' ');
    if (blank == std::string_view::npos || !same_name(header.substr(0, blank), "Basic")) return std::nullopt;
    const std::optional<std::string> plain = decoded_base64(trimmed(header.substr(blank)));
    // crypt(3) would take a password for its part before a NUL.
    if (!plain || plain->find('\0') != std::string::npos) return std::nullopt;
    const std::size_t colon = plain->find(':');
    if (colon == std::string::npos) return std::nullopt;
    return Credentials{plain->substr(0, colon), plain->substr(colon + 1)};
}

} // namespace

std::optional<HttpReply> authenticate(HttpRequest& request, Users& users) {
    const std::string* header = request.header("Authorization");
    const std::optional<Credentials> who = header != nullptr ? credentials_in(*header) : std::nullopt;
    request.headers.erase("authorization");
    if (who && users.admit(*who)) {
        request.user = who->name;
        return std::nullopt;
    }
    HttpReply reply =
        text_reply(UNAUTHORIZED, who ? "wrong name or password" : "a name and a password, please");
    reply.headers.emplace_back("WWW-Authenticate", "Basic realm=\"kesto-cimserver\"");
    return reply;
}

} // namespace cimserver
