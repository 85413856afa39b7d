// IP utilities and the IP configuration service.
#include <arpa/inet.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

#include "emulator/call.h"
#include "emulator/control.h"
#include "emulator/exported_services.h"
#include "emulator/host_interface.h"
#include "emulator/runtime.h"
#include "emulator/switch_state.h"
#include "emulator/text_format.h"
#include "platform/platform_records.h"

using namespace emulator;

const IpAddr inet_addr_null{};

namespace {

constexpr std::uint32_t CODE_IP_CONFIGURATION = 873;
constexpr std::uint32_t IP_CONFIGURATION_SERVICE = 35;

std::string address_text(const IpAddr& address) {
    char text[INET6_ADDRSTRLEN] = "";
    if (address.addrType == KFM_ADDR_IPV4) inet_ntop(AF_INET, address.addr, text, sizeof text);
    if (address.addrType == KFM_ADDR_IPV6) inet_ntop(AF_INET6, address.addr, text, sizeof text);
    return text;
}

// One number of a port: the host's, if the port is bound and the host has it, otherwise the port's own.
std::optional<std::uint32_t> number_of(std::uint32_t ifIndex,
                                       std::optional<std::uint32_t> HostInterface::*live,
                                       std::optional<std::uint32_t> Port::*own) {
    const Port* port = runtime().state.find_port(ifIndex);
    if (port == nullptr) return std::nullopt;
    const std::optional<HostInterface> host = read_host_interface(port->device);
    return host && *host.*live ? *host.*live : port->*own;
}

} // namespace

int ip_addr_to_str(const IpAddr* address, char* buffer, std::uint32_t length) {
    const Call call("ip_addr_to_str", CallerLock::NotNeeded, [&] {
        return address == nullptr ? std::string("NULL")
                                  : address_text(*address) + " " + std::to_string(length);
    });
    if (!call.require(address != nullptr && buffer != nullptr && length != 0,
                      "no address or no room for its text")) {
        return FAILED;
    }
    buffer[0] = '\0';
    if (call.failed()) return call.status();
    const std::string text = address_text(*address);
    buffer[text.copy(buffer, length - 1)] = '\0';
    return text.empty() ? FAILED : OK;
}

int ip_addr_compare(const IpAddr* a, const IpAddr* b) {
    const Call call("ip_addr_compare", CallerLock::NotNeeded, [&] {
        return a == nullptr || b == nullptr ? std::string("NULL") : address_text(*a) + " " + address_text(*b);
    });
    if (!call.require(a != nullptr && b != nullptr, "an address is NULL")) return FAILED;
    if (a->addrType != b->addrType) return a->addrType < b->addrType ? -1 : 1;
    const std::size_t length = a->addrType == KFM_ADDR_IPV4 ? 4 : sizeof a->addr;
    return std::memcmp(a->addr, b->addr, length);
}

int ipconf_get_intf_ip_address(std::uint32_t queue, std::uint32_t ifIndex, void** record) {
    const Call call("ipconf_get_intf_ip_address", CallerLock::Needed,
                    [&] { return format("if=0x%08x", ifIndex); });
    if (!call.usable(queue)) return FAILED;
    const std::optional<std::uint32_t> mask =
        number_of(ifIndex, &HostInterface::subnetMask, &Port::subnetMask);
    IpIntfAddress row{};
    row.subnetMask = htonl(mask.value_or(0));
    return call.answer_bytes(record, mask ? &row : nullptr, &row, sizeof row);
}

int ipconf_get_if_inet_addrs(std::uint32_t queue, std::uint32_t ifIndex, void** record) {
    const Call call("ipconf_get_if_inet_addrs", CallerLock::Needed,
                    [&] { return format("if=0x%08x", ifIndex); });
    if (!call.usable(queue)) return FAILED;
    const std::optional<std::uint32_t> prefix =
        number_of(ifIndex, &HostInterface::prefixLength, &Port::prefixLength);
    IpIntfInetAddrs row{};
    row.prefixLength = prefix.value_or(0);
    return call.answer_bytes(record, prefix ? &row : nullptr, &row, sizeof row);
}

int netcfg_print_ifname(char* name, std::uint32_t ifIndex) {
    const Call call("netcfg_print_ifname", CallerLock::NotNeeded,
                    [&] { return format("if=0x%08x", ifIndex); });
    if (!call.require(name != nullptr, "the buffer is NULL")) return FAILED;
    if (call.failed()) return call.status();
    const Port* port = runtime().state.find_port(ifIndex);
    if (port == nullptr) return NOT_FOUND;
    std::memcpy(name, port->linuxName.c_str(), port->linuxName.size() + 1);
    return OK;
}

int cmi_req_resp(std::uint32_t code, std::uint32_t first, std::uint32_t second, void** reply,
                 std::uint32_t* replyLength, std::uint32_t third, std::uint32_t fourth, std::uint32_t service,
                 std::uint32_t queue, std::uint32_t option) {
    const Call call("cmi_req_resp", CallerLock::Needed, [&] {
        return format("code=%u %u %u %u %u service=%u %u", code, first, second, third, fourth, service,
                      option);
    });
    if (!call.usable(queue)) return FAILED;
    if (!call.require(code == CODE_IP_CONFIGURATION && service == IP_CONFIGURATION_SERVICE,
                      "not code 873 to service 35")) {
        return FAILED;
    }
    call.require(first == 1 && second == 0 && third == 0 && fourth == 0 && option == 5,
                 "the constant arguments are not 1, 0, 0, 0 and 5");
    if (!call.require(replyLength != nullptr && *replyLength == sizeof(IpMiscCfg),
                      "the length of the reply is not preset to 8")) {
        return FAILED;
    }
    const int status = call.answer(reply, &runtime().state.ipConfiguration);
    if (status == OK) *replyLength = *reply == nullptr ? 0 : sizeof(IpMiscCfg);
    return status;
}
