// Reads the values that several objects of a scenario share.
#include "emulator/scenario_values.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cctype>
#include <charconv>
#include <cstddef>
#include <string>
#include <system_error>

#include "emulator/scenario_objects.h"

namespace emulator {

std::optional<std::uint32_t> number_in(std::string_view text, std::uint32_t largest) {
    const bool hexadecimal = text.starts_with("0x");
    if (hexadecimal) text.remove_prefix(2);
    const char* const textEnd = text.data() + text.size();
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), textEnd, number, hexadecimal ? 16 : 10);
    if (error != std::errc() || end != textEnd || number > largest) return std::nullopt;
    return number;
}

void read_numbered(const Reader& object, std::uint32_t largest,
                   const std::function<void(std::uint32_t, const Reader&)>& read) {
    for (const auto& [name, value] : object.members()) {
        const std::optional<std::uint32_t> number = number_in(name, largest);
        if (!number) value.refuse("is not named by a number from 0 to " + std::to_string(largest));
        read(*number, value);
    }
}

void read_description(const Reader& object) {
    if_there(object, "description", [](const Reader& value) { value.text(0, 10000); });
}

Counter read_counter(const Reader& value) {
    if (!value.is_object()) return {value.integer(0, UINT64_MAX), 0};
    value.expect_object(kind::MOVING_COUNTER);
    Counter counter;
    if_there(value, "start", [&](const Reader& start) { counter.start = start.integer(0, UINT64_MAX); });
    if_there(value, "rate", [&](const Reader& rate) { counter.rate = rate.real(0, 1e15); });
    return counter;
}

std::array<std::uint8_t, 8> read_wwn(const Reader& value) {
    const std::string text = value.text(0, 64);
    std::array<std::uint8_t, 8> wwn{};
    bool good = text.size() == 23;
    for (std::size_t i = 0; good && i < text.size(); ++i) {
        good = i % 3 == 2 ? text[i] == ':' : std::isxdigit(static_cast<unsigned char>(text[i])) != 0;
    }
    if (!good) value.refuse("is not a WWN such as \"20:00:02:4b:53:00:00:01\"");
    for (std::size_t i = 0; i < wwn.size(); ++i) {
        wwn[i] = static_cast<std::uint8_t>(std::stoul(text.substr(3 * i, 2), nullptr, 16));
    }
    return wwn;
}

IpAddr read_address(const Reader& value) {
    const std::string text = value.text(0, 64);
    IpAddr address{};
    if (text.empty()) return address;
    if (inet_pton(AF_INET, text.c_str(), address.addr) == 1) {
        address.addrType = KFM_ADDR_IPV4;
    } else if (inet_pton(AF_INET6, text.c_str(), address.addr) == 1) {
        address.addrType = KFM_ADDR_IPV6;
    } else {
        value.refuse("is neither an IPv4 nor an IPv6 address");
    }
    return address;
}

std::uint32_t read_mask(const Reader& value) {
    in_addr mask{};
    if (inet_pton(AF_INET, value.text(0, 64).c_str(), &mask) != 1) {
        value.refuse("is not a mask such as 255.255.255.0");
    }
    return ntohl(mask.s_addr);
}

} // namespace emulator
