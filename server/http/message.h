// An HTTP request and its reply, without the connection that they travel on.
#ifndef KESTO_SERVER_HTTP_MESSAGE_H
#define KESTO_SERVER_HTTP_MESSAGE_H

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/model/text.h"

namespace cimserver {

struct HttpRequest {
    std::string method;
    std::string version = "HTTP/1.1";
    std::string user; // the authenticated one; empty where the server knows no users
    std::map<std::string, std::string> headers; // by lower-cased name; repeated ones joined by commas
    std::string body;

    const std::string* header(std::string_view name) const {
        const auto found = headers.find(lower_cased(name));
        return found == headers.end() ? nullptr : &found->second;
    }
};

struct HttpReply {
    unsigned status = 200;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
};

// A reply to be read by people, a line.
inline HttpReply text_reply(unsigned status, const std::string& line) {
    return {status, {{"Content-Type", "text/plain; charset=utf-8"}}, line + "\n"};
}

} // namespace cimserver

#endif
