#include "server/http/host_check.h"

#include <algorithm>
#include <cstddef>
#include <regex>

#include "server/model/text.h"

namespace cimserver {

namespace {

constexpr unsigned BAD_REQUEST = 400;
constexpr unsigned MISDIRECTED_REQUEST = 421;

// The host of "host", "host:port" or "[address]:port"; empty for anything else.
std::string host_in(const std::string& header) {
    constexpr std::size_t LONGEST = 300; // longer than any name, and short enough for the matcher's recursion
    static const std::regex FORM(R"((?:\[([0-9A-Fa-f:.]+)\]|([0-9A-Za-z._-]+))(?::[0-9]{0,5})?)");
    std::smatch parts;
    if (header.size() > LONGEST || !std::regex_match(header, parts, FORM)) return {};
    return parts[1].matched ? parts[1] : parts[2];
}

bool names_this_server(const std::string& host, const IpAddress& reached,
                       const std::vector<std::string>& names) {
    const auto isHost = [&host](const std::string& name) { return same_name(host, name); };
    if (std::any_of(names.begin(), names.end(), isHost)) return true;
    const std::optional<IpAddress> address =
        IpAddress::parse(same_name(host, "localhost") ? "127.0.0.1" : host);
    return address && (*address == reached || (address->is_loopback() && reached.is_loopback()));
}

} // namespace

std::optional<HttpReply> host_refusal(const HttpRequest& request, const IpAddress& reached,
                                      const std::vector<std::string>& names) {
    const std::string* header = request.header("Host");
    if (header == nullptr) {
        // HTTP/1.0 has no such header; no browser has spoken it since.
        if (request.version == "HTTP/1.0") return std::nullopt;
        return text_reply(BAD_REQUEST, "no Host header");
    }
    const std::string host = host_in(*header);
    if (host.empty()) return text_reply(BAD_REQUEST, "malformed Host header");
    if (names_this_server(host, reached, names)) return std::nullopt;
    return text_reply(MISDIRECTED_REQUEST, "this server is not known as " + host);
}

} // namespace cimserver
