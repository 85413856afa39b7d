// The port manager: port rows, counters and Ethernet configuration. A port that is bound to a network
// interface of the host answers with the kernel's values.
#include <arpa/inet.h>

#include <cstdint>
#include <cstdlib>
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

namespace {

enum : int { OP_NEXT = 0, OP_EXACT = 1 };

PortInfo port_row(const Port& port) {
    PortInfo row{};
    row.ifIndex = port.ifIndex;
    row.vsan = port.vsan;
    row.otherVsan = port.otherVsan;
    return row;
}

int answer_port(const Call& call, PortInfo** slot, const Port* port) {
    const PortInfo row = port == nullptr ? PortInfo{} : port_row(*port);
    return call.answer(slot, port == nullptr ? nullptr : &row);
}

PortCounters counters_of(const Port& port) {
    const SwitchState& state = runtime().state;
    const auto low = [&](const Counter& counter) { return static_cast<std::uint32_t>(state.value(counter)); };
    PortCounters row{};
    row.inMulticast = low(port.inMulticast);
    row.inBroadcast = low(port.inBroadcast);
    row.outMulticast = low(port.outMulticast);
    row.outBroadcast = low(port.outBroadcast);
    row.inBytes = state.value(port.inBytes);
    row.inUnicast = state.value(port.inUnicast);
    row.outBytes = state.value(port.outBytes);
    row.outUnicast = state.value(port.outUnicast);
    return row;
}

// The kernel counts multicast frames among the received packets, and does not count broadcast frames
// separately.
PortCounters counters_of(const HostInterface& host) {
    const std::uint64_t multicast = host.statistic("multicast");
    const std::uint64_t packets = host.statistic("rx_packets");
    PortCounters row{};
    row.inMulticast = static_cast<std::uint32_t>(multicast);
    row.inBytes = host.statistic("rx_bytes");
    row.inUnicast = packets >= multicast ? packets - multicast : packets;
    row.outBytes = host.statistic("tx_bytes");
    row.outUnicast = host.statistic("tx_packets");
    return row;
}

} // namespace

int pm_cim_get_port_info(PortInfo** row, int op, std::uint32_t ifIndex, std::uint32_t queue) {
    const Call call("pm_cim_get_port_info", CallerLock::Needed,
                    [&] { return format("op=%d if=0x%08x", op, ifIndex); });
    if (!call.usable(queue)) return FAILED;
    if (!call.require(op == OP_EXACT || op == OP_NEXT, "an operation that is neither 1 nor 0")) return FAILED;
    const auto& ports = runtime().state.ports;
    const auto found = op == OP_EXACT ? ports.find(ifIndex) : ports.upper_bound(ifIndex);
    return answer_port(call, row, found == ports.end() ? nullptr : &found->second);
}

PortInfo* pm_cim_find_interface(int op, std::uint32_t ifIndex, std::uint32_t queue) {
    const Call call("pm_cim_find_interface", CallerLock::Needed,
                    [&] { return format("op=%d if=0x%08x", op, ifIndex); });
    if (!call.usable(queue)) return nullptr;
    call.require(op == OP_EXACT, "an operation other than 1");
    PortInfo* row = nullptr;
    if (answer_port(call, &row, runtime().state.find_port(ifIndex)) == OK) return row;
    std::free(row); // this service returns no status along with the row
    return nullptr;
}

int pm_cim_get_network_address(char* buffer, const PortInfo* row, std::uint8_t type) {
    const Call call("pm_cim_get_network_address", CallerLock::NotNeeded, [&] {
        return row == nullptr ? std::string("NULL")
                              : format("if=0x%08x type=%u", row->ifIndex, unsigned{type});
    });
    if (!call.require(buffer != nullptr && row != nullptr, "the buffer or the row is NULL")) return FAILED;
    if (call.failed()) return call.status();
    const Port* port = runtime().state.find_port(row->ifIndex);
    if (port == nullptr) return NOT_FOUND;
    const std::optional<HostInterface> host = read_host_interface(port->device);
    const std::string& text = host && !host->macAddress.empty() ? host->macAddress : port->address;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return OK;
}

int pm_cmi_get_port_config(std::uint32_t queue, std::uint32_t first, std::uint32_t second,
                           const std::uint32_t key[2], std::uint32_t* length, PortInfo** row,
                           std::uint32_t option) {
    const Call call("pm_cmi_get_port_config", CallerLock::Needed, [&] {
        return key == nullptr ? std::string("NULL")
                              : format("%u %u key={0x%08x,0x%08x} %u", first, second, key[0], key[1], option);
    });
    if (!call.require(key != nullptr && length != nullptr, "the key or the length is NULL") ||
        !call.usable(queue)) {
        return FAILED;
    }
    call.require(first == 1 && second == 1 && option == 4, "the constant arguments are not 1, 1 and 4");
    call.require(key[0] == key[1], "the two halves of the key differ");
    const int status = answer_port(call, row, runtime().state.find_port(key[0]));
    if (status == OK) *length = sizeof(PortInfo);
    return status;
}

int pm_get_port_counters(std::uint32_t queue, std::uint32_t ifIndex, std::uint32_t first,
                         std::uint32_t second, PortCounters** row, std::uint32_t third) {
    const Call call("pm_get_port_counters", CallerLock::Needed,
                    [&] { return format("if=0x%08x %u %u %u", ifIndex, first, second, third); });
    if (!call.usable(queue)) return FAILED;
    call.require(first == 0 && second == 6 && third == 0, "the constant arguments are not 0, 6 and 0");
    const Port* port = runtime().state.find_port(ifIndex);
    if (port == nullptr) return call.answer<PortCounters, PortCounters>(row, nullptr);
    const std::optional<HostInterface> host = read_host_interface(port->device);
    const PortCounters counters = host ? counters_of(*host) : counters_of(*port);
    return call.answer(row, &counters);
}

int pm_get_clear_eth_stats(std::uint32_t queue, std::uint32_t ifIndex, std::uint32_t ifIndex2,
                           std::uint32_t option, void* buffer) {
    const Call call("pm_get_clear_eth_stats", CallerLock::Needed,
                    [&] { return format("if=0x%08x if2=0x%08x %u", ifIndex, ifIndex2, option); });
    if (!call.require(buffer != nullptr, "the buffer is NULL") || !call.usable(queue)) return FAILED;
    call.require(ifIndex == ifIndex2 && option == 1, "not the same interface twice and 1");
    if (call.failed()) return call.status();
    const Port* port = runtime().state.find_port(ifIndex);
    if (port == nullptr) return NOT_FOUND;
    const std::optional<HostInterface> host = read_host_interface(port->device);
    const std::optional<std::uint32_t> mtu = host && host->mtu ? host->mtu : port->mtu;
    if (!mtu) return NOT_FOUND; // not an Ethernet interface
    std::uint32_t record[64]{}; // the whole record is written, so that too small a buffer is noticed
    record[7] = htonl(*mtu);
    std::memcpy(buffer, record, sizeof record);
    return OK;
}
