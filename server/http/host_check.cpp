#include "server/http/host_check.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "server/model/text.h"

namespace cimserver {

namespace {

constexpr unsigned BAD_REQUEST = 400;
constexpr unsigned MISDIRECTED_REQUEST = 421;

bool has_only(std::string_view text, std::string_view characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

// The host of "host", "host:port" or "[address]:port"; empty for anything else.
std::string host_in(std::string_view header) {
    constexpr std::size_t LONGEST = 300; // longer than any name
    constexpr std::size_t LONGEST_PORT = 5;
    constexpr std::string_view DIGITS = "0123456789";
    constexpr std::string_view OF_ADDRESSES = "0123456789ABCDEFabcdef:.";
    constexpr std::string_view OF_NAMES = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz._-";
    if (header.size() > LONGEST) return {};
    const bool bracketed = header.starts_with('[');
    if (bracketed) header.remove_prefix(1);
    const std::string_view host =
        header.substr(0, header.find_first_not_of(bracketed ? OF_ADDRESSES : OF_NAMES));
    std::string_view rest = header.substr(host.size());
    if (bracketed) {
        if (!rest.starts_with(']')) return {};
        rest.remove_prefix(1);
    }
    if (!rest.empty()) {
        const std::string_view port = rest.substr(1);
        if (rest.front() != ':' || port.size() > LONGEST_PORT || !has_only(port, DIGITS)) return {};
    }
    return std::string(host);
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
