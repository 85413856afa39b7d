// A port: its identity, its configuration, its counters and what its line card answers for it.
#include "emulator/scenario_ports.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "emulator/control.h"
#include "emulator/scenario_fields.h"
#include "emulator/scenario_objects.h"
#include "emulator/scenario_values.h"
#include "emulator/switch_state.h"
#include "platform/platform_records.h"

namespace emulator {
namespace {

// The replies of a line card: named counters, the reply's ordinary size, and the width of its `words`.
struct ReplyForm {
    const ObjectKind& kind;
    std::optional<LineCardReply> Port::*reply;
    std::span<const ReplyCounter> counters;
    std::uint32_t size;
    std::uint32_t wordWidth;
};
const ReplyForm REPLY_FORMS[] = {
    {kind::IP_STATS, &Port::ipStats, IP_COUNTERS, sizeof(IpStatsReply), 4},
    {kind::ETHERNET_STATS, &Port::ethernetStats, ETHERNET_COUNTERS, sizeof(EthMacStats), 8},
    {kind::TCP_STATS, &Port::tcpStats, TCP_COUNTERS, sizeof(TcpStatsReply), 4},
};
constexpr std::uint32_t LONG_BYTES = 8;

using CountersByOffset = std::map<std::uint32_t, Counter>;

void read_counters_by_offset(const Reader& value, std::uint32_t size, std::uint32_t width,
                             CountersByOffset& counters) {
    read_numbered(value, size >= width ? size - width : 0, [&](std::uint32_t offset, const Reader& counter) {
        counters[offset] = read_counter(counter);
    });
}

LineCardReply read_reply(const Reader& object, const ReplyForm& form) {
    object.expect_object(form.kind);
    LineCardReply reply;
    if_there(object, "status", [&](const Reader& value) { reply.status = value.u16(); });
    if_there(object, "size", [&](const Reader& value) { reply.size = value.u32(12, 65536); });
    if_there(object, "continuations", [&](const Reader& value) { reply.continuations = value.u32(0, 100); });
    for (const ReplyCounter& counter : form.counters) {
        if_there(object, counter.name, [&](const Reader& value) {
            CountersByOffset& counters = counter.width == Width::Long ? reply.longs : reply.words;
            counters[counter.offset] = read_counter(value);
        });
    }
    const std::uint32_t size = reply.size == 0 ? form.size : reply.size;
    if_there(object, "words",
             [&](const Reader& value) { read_counters_by_offset(value, size, form.wordWidth, reply.words); });
    if_there(object, "longs",
             [&](const Reader& value) { read_counters_by_offset(value, size, LONG_BYTES, reply.longs); });
    return reply;
}

std::uint32_t read_if_index(const Reader& value) {
    const std::optional<std::uint32_t> number =
        value.is_text() ? number_in(value.text(1, 12), UINT32_MAX) : std::optional(value.u32());
    if (!number) value.refuse("is neither a number nor a text such as \"0x9b010001\"");
    return *number;
}

void read_identity(const Reader& object, Port& port) {
    port.ifIndex = read_if_index(object.at("ifIndex"));
    port.type = static_cast<std::uint8_t>(object.at("type").u32(0, 255));
    if_there(object, "slot", [&](const Reader& value) { port.slot = value.u16(); });
    if_there(object, "port", [&](const Reader& value) { port.port = value.u16(); });
    if_there(object, "node", [&](const Reader& value) { port.node = value.u32(); });
    if_there(object, "name", [&](const Reader& value) { port.name = value.text(1, 30); });
    if_there(object, "linuxName", [&](const Reader& value) { port.linuxName = value.text(1, 15); });
}

void read_configuration(const Reader& object, const SwitchState& state, Port& port) {
    if_there(object, "address", [&](const Reader& value) { port.address = value.text(0, 31); });
    if_there(object, "vsan", [&](const Reader& value) {
        port.vsan = value.u32();
        if (!state.vsans.contains(port.vsan)) value.refuse("is not a VSAN of this switch");
    });
    port.otherVsan = port.vsan;
    if_there(object, "otherVsan", [&](const Reader& value) { port.otherVsan = value.u32(); });
    if_there(object, "mtu", [&](const Reader& value) { port.mtu = value.u32(); });
    if_there(object, "subnetMask", [&](const Reader& value) { port.subnetMask = read_mask(value); });
    if_there(object, "prefixLength", [&](const Reader& value) { port.prefixLength = value.u32(0, 128); });
    if_there(object, "device", [&](const Reader& value) { port.device = value.text(1, 15); });
}

void read_counters(const Reader& object, Port& port) {
    if_there(object, "counters", [&](const Reader& counters) {
        counters.expect_object(kind::PORT_COUNTERS);
        for (const PortCounterField& field : PORT_COUNTER_FIELDS) {
            if_there(counters, field.name,
                     [&](const Reader& value) { port.*field.place = read_counter(value); });
        }
    });
    for (const ReplyForm& form : REPLY_FORMS) {
        if_there(object, form.kind.name,
                 [&](const Reader& value) { port.*form.reply = read_reply(value, form); });
    }
}

} // namespace

void read_port(const Reader& object, Draft& draft) {
    object.expect_object(kind::PORT);
    read_description(object);
    Port port;
    read_identity(object, port);
    read_configuration(object, draft.state, port);
    read_counters(object, port);
    port = completed(std::move(port));
    if (!draft.ifIndexes.emplace(port.name, port.ifIndex).second) {
        object.refuse("has the name of an earlier port: " + port.name);
    }
    if (!draft.state.ports.emplace(port.ifIndex, port).second) {
        object.at("ifIndex").refuse("is the if-index of an earlier port");
    }
}

std::uint32_t read_interface(const Reader& value, const Draft& draft) {
    std::optional<std::uint32_t> ifIndex;
    if (value.is_text()) {
        const std::string text = value.text(1, 30);
        const auto named = draft.ifIndexes.find(text);
        ifIndex = named != draft.ifIndexes.end() ? std::optional(named->second) : number_in(text, UINT32_MAX);
    } else {
        ifIndex = value.u32();
    }
    if (!ifIndex || (*ifIndex != 0 && !draft.state.ports.contains(*ifIndex))) {
        value.refuse("is not an interface of this switch");
    }
    return *ifIndex;
}

} // namespace emulator
