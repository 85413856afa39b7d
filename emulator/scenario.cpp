// Builds the switch's tables from a scenario.
#include "emulator/scenario.h"

#include <arpa/inet.h>

#include <algorithm>
#include <bit>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include "emulator/runtime.h"
#include "emulator/scenario_fields.h"
#include "emulator/scenario_reader.h"

namespace emulator {
namespace {

template <typename Names>
std::vector<std::string> with_names(std::vector<std::string> members, const Names& names) {
    for (const auto& entry : names)
        members.emplace_back(entry.name);
    return members;
}

const ObjectKind SCENARIO{
    "scenario",
    {"$schema", "description", "system", "clock", "ip", "vsans", "ports", "profiles", "tunnels", "faults"}};
const ObjectKind SYSTEM{"system", {"hostName", "name", "wwn"}};
const ObjectKind IP{"ip", {"forwarding", "defaultTtl"}};
const ObjectKind VSAN{"vsan", {"description", "id", "name", "domain"}};
const ObjectKind DOMAIN_OF_VSAN{"domain", {"systemName"}};
const ObjectKind PORT{"port",
                      {"description", "ifIndex", "type", "slot", "port", "node", "name", "linuxName",
                       "address", "vsan", "otherVsan", "mtu", "subnetMask", "prefixLength", "device",
                       "counters", "ipStats", "ethernetStats", "tcpStats"}};
const ObjectKind PORT_COUNTERS{"portCounters", with_names({}, PORT_COUNTER_NAMES)};
const ObjectKind IP_STATS{"ipStats", with_names({"status", "size", "words", "longs"}, IP_COUNTER_NAMES)};
const ObjectKind ETHERNET_STATS{"ethernetStats",
                                with_names({"status", "size", "words", "longs"}, ETHERNET_COUNTER_NAMES)};
const ObjectKind TCP_STATS{
    "tcpStats", with_names({"status", "size", "words", "longs", "continuations"}, TCP_COUNTER_NAMES)};
const ObjectKind PROFILE{"profile",
                         with_names({"description", "entityId", "address", "words"}, PROFILE_FIELDS)};
const ObjectKind TUNNEL{"tunnel", with_names({"description", "entityId", "linkIndex", "remEntityWwn",
                                              "remEntityAddress", "words", "errors", "tcpConnections"},
                                             TUNNEL_FIELDS)};
const ObjectKind LINK_ERRORS{"linkErrors", {std::begin(LINK_ERROR_NAMES), std::end(LINK_ERROR_NAMES)}};
const ObjectKind TCP_CONNECTION{"tcpConnection",
                                with_names({"localPort", "remotePort"}, TCP_CONNECTION_FIELDS)};
const ObjectKind FAULT{"fault",
                       {"description", "symbol", "where", "first", "last", "probability", "seed", "effect",
                        "status", "size", "removeTunnel", "addTunnel"}};
const ObjectKind LINK_KEY{"linkKey", {"entityId", "linkIndex"}};
const ObjectKind COUNTER{"movingCounter", {"start", "rate"}};
const ObjectKind WORDS{"words", {}, true};
const ObjectKind COUNTERS_BY_OFFSET{"countersByOffset", {}, true};

const std::pair<const char*, Effect> EFFECTS[] = {
    {"none", Effect::None},
    {"fail", Effect::Fail},
    {"failWithRow", Effect::FailWithRow},
    {"succeedWithoutRow", Effect::SucceedWithoutRow},
    {"noAnswer", Effect::NoAnswer},
    {"lateAnswer", Effect::LateAnswer},
    {"shortPayload", Effect::ShortPayload},
    {"replyStatus", Effect::ReplyStatus},
};

template <typename Function>
void if_there(const Reader& object, const char* member, Function read) {
    if (const std::optional<Reader> value = object.find(member)) read(*value);
}

// "0x9b010001" or "2600534017" as a number of at most `largest`.
std::optional<std::uint32_t> number_in(const std::string& text, std::uint32_t largest) {
    if (text.empty() || std::isdigit(static_cast<unsigned char>(text[0])) == 0) return std::nullopt;
    std::size_t end = 0;
    try {
        const unsigned long long number = std::stoull(text, &end, text.starts_with("0x") ? 16 : 10);
        if (end == text.size() && number <= largest) return static_cast<std::uint32_t>(number);
    } catch (const std::exception&) {
        // not a number: told by the empty result
    }
    return std::nullopt;
}

Counter read_counter(const Reader& value) {
    if (!value.is_object()) return {value.integer(0, UINT64_MAX), 0};
    Counter counter;
    value.object(COUNTER);
    if_there(value, "start", [&](const Reader& r) { counter.start = r.integer(0, UINT64_MAX); });
    if_there(value, "rate", [&](const Reader& r) { counter.rate = r.real(0, 1e15); });
    return counter;
}

std::array<std::uint8_t, 8> read_wwn(const Reader& value) {
    const std::string text = value.text(0, 64);
    std::array<std::uint8_t, 8> wwn{};
    bool good = text.size() == 23;
    for (std::size_t i = 0; good && i < text.size(); ++i)
        good = i % 3 == 2 ? text[i] == ':' : std::isxdigit(static_cast<unsigned char>(text[i])) != 0;
    if (!good) value.refuse("is not a WWN such as \"20:00:02:4b:53:00:00:01\"");
    for (std::size_t i = 0; i < wwn.size(); ++i)
        wwn[i] = static_cast<std::uint8_t>(std::stoul(text.substr(3 * i, 2), nullptr, 16));
    return wwn;
}

IpAddr read_address(const Reader& value) {
    const std::string text = value.text(0, 64);
    IpAddr address{};
    if (text.empty()) return address; // the unset address
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
    if (inet_pton(AF_INET, value.text(0, 64).c_str(), &mask) != 1)
        value.refuse("is not a mask such as 255.255.255.0");
    return ntohl(mask.s_addr);
}

// Members whose names are numbers: "words" of a row, counters by byte offset.
template <typename Function>
void read_numbered(const Reader& object, const ObjectKind& kind, std::uint32_t largest, Function read) {
    for (const auto& [name, value] : object.object(kind).members()) {
        const std::optional<std::uint32_t> number = number_in(name, largest);
        if (!number) value.refuse("is not named by a number from 0 to " + std::to_string(largest));
        read(*number, value);
    }
}

// Overwrites 32-bit words of a row, in host order.
template <typename Row>
void read_words(const Reader& object, Row& row) {
    if_there(object, "words", [&](const Reader& words) {
        read_numbered(words, WORDS, sizeof(Row) / 4 - 1, [&](std::uint32_t word, const Reader& value) {
            const std::uint32_t number = value.u32();
            std::memcpy(reinterpret_cast<unsigned char*>(&row) + std::size_t{word} * 4, &number,
                        sizeof number);
        });
    });
}

class Loader {
  public:
    SwitchState load(const Reader& scenario) {
        scenario.object(SCENARIO);
        if_there(scenario, "$schema", [](const Reader& r) { r.text(0, 1000); });
        description(scenario);
        read_system(scenario.at("system"));
        if_there(scenario, "clock", [&](const Reader& r) { state_.clock.stop_at(r.real(0, 1e12)); });
        if_there(scenario, "ip", [&](const Reader& r) { read_ip(r); });
        for (const Reader& vsan : scenario.elements_of("vsans"))
            read_vsan(vsan);
        for (const Reader& port : scenario.elements_of("ports"))
            read_port(port);
        for (const Reader& profile : scenario.elements_of("profiles"))
            read_profile(profile);
        for (const Reader& tunnel : scenario.elements_of("tunnels")) {
            const Tunnel read = read_tunnel(tunnel);
            if (state_.links.contains(read.key))
                tunnel.refuse("has the entityId and linkIndex of an earlier tunnel");
            read.enter(state_);
        }
        for (const Reader& fault : scenario.elements_of("faults"))
            read_fault(fault);
        return std::move(state_);
    }

  private:
    // A tunnel's rows: the link, its errors and its TCP connections.
    struct Tunnel {
        LinkKey key;
        FcipLinkEntry row{};
        LinkErrorCounters errors{};
        std::map<TcpConnectionKey, FcipTcpConnEntry> connections;

        void enter(SwitchState& state) const {
            state.links[key] = row;
            state.linkErrors[key] = errors;
            for (const auto& [connection, entry] : connections)
                state.tcpConnections[connection] = entry;
        }
    };

    static void description(const Reader& object) {
        if_there(object, "description", [](const Reader& r) { r.text(0, 10000); });
    }

    void read_system(const Reader& system) {
        system.object(SYSTEM);
        state_.hostName = system.at("hostName").text(1, 255);
        state_.systemName = system.at("name").text(1, 255);
        state_.wwn = read_wwn(system.at("wwn"));
    }

    void read_ip(const Reader& ip) {
        ip.object(IP);
        if_there(ip, "forwarding",
                 [&](const Reader& r) { state_.ipConfiguration.ipForwarding = r.boolean() ? 1 : 0; });
        if_there(ip, "defaultTtl", [&](const Reader& r) { state_.ipConfiguration.defaultTtl = r.u32(); });
    }

    void read_vsan(const Reader& object) {
        object.object(VSAN);
        description(object);
        Vsan vsan;
        vsan.id = object.at("id").u32(1, 4094);
        if_there(object, "name", [&](const Reader& r) { vsan.name = r.text(0, 63); });
        vsan.hasDomain = object.has("domain");
        if_there(object, "domain", [&](const Reader& r) {
            vsan.systemName = r.object(DOMAIN_OF_VSAN).at("systemName").text(1, 63);
        });
        if (!state_.vsans.emplace(vsan.id, vsan).second)
            object.at("id").refuse("is the id of an earlier VSAN");
    }

    LineCardReply read_reply(const Reader& object, const ObjectKind& kind, std::span<const WordName> names,
                             std::uint32_t ordinarySize, std::uint32_t wordWidth) {
        object.object(kind);
        LineCardReply reply;
        if_there(object, "status",
                 [&](const Reader& r) { reply.status = static_cast<std::uint16_t>(r.u32(0, 0xFFFF)); });
        if_there(object, "size", [&](const Reader& r) { reply.size = r.u32(12, 65536); });
        if_there(object, "continuations", [&](const Reader& r) { reply.continuations = r.u32(0, 100); });
        const std::uint32_t size = reply.size == 0 ? ordinarySize : reply.size;
        for (const WordName& name : names) {
            if_there(object, name.name, [&](const Reader& r) {
                (name.wide ? reply.longs : reply.words)[name.offset] = read_counter(r);
            });
        }
        const auto byOffset = [&](const char* member, std::uint32_t width, auto& counters) {
            if_there(object, member, [&](const Reader& r) {
                read_numbered(r, COUNTERS_BY_OFFSET, size >= width ? size - width : 0,
                              [&](std::uint32_t offset, const Reader& value) {
                                  counters[offset] = read_counter(value);
                              });
            });
        };
        byOffset("words", wordWidth, reply.words);
        byOffset("longs", 8, reply.longs);
        return reply;
    }

    void read_port(const Reader& object) {
        object.object(PORT);
        description(object);
        Port port;
        const Reader index = object.at("ifIndex");
        const std::optional<std::uint32_t> number =
            index.is_text() ? number_in(index.text(1, 12), UINT32_MAX) : std::optional(index.u32());
        if (!number) index.refuse("is neither a number nor a text such as \"0x9b010001\"");
        port.ifIndex = *number;
        port.type = static_cast<std::uint8_t>(object.at("type").u32(0, 255));
        if_there(object, "slot",
                 [&](const Reader& r) { port.slot = static_cast<std::uint16_t>(r.u32(0, 0xFFFF)); });
        if_there(object, "port",
                 [&](const Reader& r) { port.port = static_cast<std::uint16_t>(r.u32(0, 0xFFFF)); });
        if_there(object, "node", [&](const Reader& r) { port.node = r.u32(); });
        if_there(object, "name", [&](const Reader& r) { port.name = r.text(1, 30); });
        if_there(object, "linuxName", [&](const Reader& r) { port.linuxName = r.text(1, 15); });
        if_there(object, "address", [&](const Reader& r) { port.address = r.text(0, 31); });
        if_there(object, "vsan", [&](const Reader& r) {
            port.vsan = r.u32();
            if (!state_.vsans.contains(port.vsan)) r.refuse("is no VSAN of this switch");
        });
        port.otherVsan = port.vsan;
        if_there(object, "otherVsan", [&](const Reader& r) { port.otherVsan = r.u32(); });
        if_there(object, "mtu", [&](const Reader& r) { port.mtu = r.u32(); });
        if_there(object, "subnetMask", [&](const Reader& r) { port.subnetMask = read_mask(r); });
        if_there(object, "prefixLength", [&](const Reader& r) { port.prefixLength = r.u32(0, 128); });
        if_there(object, "device", [&](const Reader& r) { port.device = r.text(1, 15); });
        if_there(object, "counters", [&](const Reader& r) {
            r.object(PORT_COUNTERS);
            for (const PortCounterName& name : PORT_COUNTER_NAMES)
                if_there(r, name.name, [&](const Reader& value) { port.*name.place = read_counter(value); });
        });
        if_there(object, "ipStats", [&](const Reader& r) {
            port.ipStats = read_reply(r, IP_STATS, IP_COUNTER_NAMES, sizeof(IpStatsReply), 4);
        });
        if_there(object, "ethernetStats", [&](const Reader& r) {
            port.ethernetStats =
                read_reply(r, ETHERNET_STATS, ETHERNET_COUNTER_NAMES, sizeof(EthMacStats), 8);
        });
        if_there(object, "tcpStats", [&](const Reader& r) {
            port.tcpStats = read_reply(r, TCP_STATS, TCP_COUNTER_NAMES, sizeof(TcpStatsReply), 4);
        });
        port = completed(std::move(port));
        if (!names_.emplace(port.name, port.ifIndex).second)
            object.refuse("has the name of an earlier port: " + port.name);
        if (!state_.ports.emplace(port.ifIndex, port).second)
            index.refuse("is the if-index of an earlier port");
    }

    // An interface by if-index or name; it must be in the port table. 0 is no interface.
    std::uint32_t read_interface(const Reader& value) const {
        std::optional<std::uint32_t> ifIndex;
        if (value.is_text()) {
            const std::string text = value.text(1, 30);
            const auto named = names_.find(text);
            ifIndex = named != names_.end() ? std::optional(named->second) : number_in(text, UINT32_MAX);
        } else {
            ifIndex = value.u32();
        }
        if (!ifIndex || (*ifIndex != 0 && !state_.ports.contains(*ifIndex)))
            value.refuse("is no interface of this switch");
        return *ifIndex;
    }

    template <typename Record>
    void read_fields(const Reader& object, std::span<const Field<Record>> fields, Record& record) const {
        for (const Field<Record>& field : fields) {
            if_there(object, field.name, [&](const Reader& value) {
                std::uint32_t number = 0;
                if (field.kind == FieldKind::Interface) {
                    number = read_interface(value);
                } else if (field.kind == FieldKind::Flag && value.is_boolean()) {
                    number = value.boolean() ? 1 : 0;
                } else {
                    number = value.u32();
                }
                record.*field.place = number;
            });
        }
    }

    void read_profile(const Reader& object) {
        object.object(PROFILE);
        description(object);
        FcipEntityEntry row{};
        row.kfmFcipEntityId = object.at("entityId").u32();
        row.kfmFcipEntityAddress = read_address(object.at("address"));
        row.kfmFcipEntityTcpPort = 3225; // the port that is registered for FCIP
        read_fields<FcipEntityEntry>(object, PROFILE_FIELDS, row);
        const std::uint32_t entityId = row.kfmFcipEntityId;
        read_words(object, row);
        if (!state_.entities.emplace(entityId, row).second)
            object.at("entityId").refuse("is the entityId of an earlier profile");
    }

    Tunnel read_tunnel(const Reader& object) const {
        object.object(TUNNEL);
        description(object);
        Tunnel tunnel;
        FcipLinkEntry& row = tunnel.row;
        row.kfmFcipEntityId = object.at("entityId").u32();
        row.kfmFcipLinkIndex = object.at("linkIndex").u32();
        const auto profile = state_.entities.find(row.kfmFcipEntityId);
        if (profile == state_.entities.end()) object.at("entityId").refuse("is no profile of this switch");
        object.at("ifIndex");
        row.kfmFcipLinkExtTcpRemPort = 3225;
        row.kfmFcipLinkExtIpCompression = 1;
        read_fields<FcipLinkEntry>(object, TUNNEL_FIELDS, row);
        if_there(object, "remEntityWwn", [&](const Reader& r) {
            const auto wwn = read_wwn(r);
            std::copy(wwn.begin(), wwn.end(), row.kfmFcipLinkRemFcipEntityWWN);
        });
        row.kfmFcipLinkRemFcipEntityAddress = read_address(object.at("remEntityAddress"));
        tunnel.key = {row.kfmFcipEntityId, row.kfmFcipLinkIndex};
        read_words(object, row);
        if_there(object, "errors", [&](const Reader& errors) {
            errors.object(LINK_ERRORS);
            for (std::size_t i = 0; i < tunnel.errors.size(); ++i) {
                if_there(errors, LINK_ERROR_NAMES[i],
                         [&](const Reader& value) { tunnel.errors[i] = read_counter(value); });
            }
        });
        for (const Reader& connection : object.elements_of("tcpConnections"))
            read_tcp_connection(connection, profile->second, tunnel);
        return tunnel;
    }

    void read_tcp_connection(const Reader& object, const FcipEntityEntry& profile, Tunnel& tunnel) const {
        object.object(TCP_CONNECTION);
        std::uint32_t localPort = profile.kfmFcipEntityTcpPort & 0xFFFF;
        std::uint32_t remotePort = tunnel.row.kfmFcipLinkExtTcpRemPort & 0xFFFF;
        if_there(object, "localPort", [&](const Reader& r) { localPort = r.u32(0, 0xFFFF); });
        if_there(object, "remotePort", [&](const Reader& r) { remotePort = r.u32(0, 0xFFFF); });
        FcipTcpConnEntry row{};
        read_fields<FcipTcpConnEntry>(object, TCP_CONNECTION_FIELDS, row);
        const TcpConnectionKey key{tunnel.key.first, tunnel.key.second, static_cast<std::uint16_t>(localPort),
                                   static_cast<std::uint16_t>(remotePort)};
        if (!tunnel.connections.emplace(key, row).second)
            object.refuse("has the ports of an earlier connection of the tunnel");
    }

    void read_fault(const Reader& object) {
        object.object(FAULT);
        description(object);
        Fault fault;
        fault.symbol = object.at("symbol").text(1, 64);
        if (!is_service(fault.symbol)) object.at("symbol").refuse("is no platform service");
        if_there(object, "where", [&](const Reader& r) { fault.where = r.text(0, 255); });
        if_there(object, "first", [&](const Reader& r) { fault.first = r.u32(1); });
        if_there(object, "last", [&](const Reader& r) { fault.last = r.u32(fault.first); });
        if_there(object, "probability", [&](const Reader& r) { fault.probability = r.real(0, 1); });
        if_there(object, "seed", [&](const Reader& r) { fault.seed = r.u32(); });
        if_there(object, "status", [&](const Reader& r) { fault.status = r.i32(); });
        if_there(object, "size", [&](const Reader& r) { fault.size = r.u32(0, 65536); });
        const Reader effect = object.at("effect");
        const std::string name = effect.text(1, 32);
        const auto found = std::find_if(std::begin(EFFECTS), std::end(EFFECTS),
                                        [&](const auto& entry) { return entry.first == name; });
        if (found == std::end(EFFECTS)) effect.refuse("is no effect of a fault");
        fault.effect = found->second;
        const bool ofLineCard = fault.effect >= Effect::NoAnswer;
        if (ofLineCard && fault.symbol != LINE_CARD) effect.refuse("is an effect of the line_card only");
        fault.action = read_change(object);
        state_.faults.push_back(std::move(fault));
    }

    // What a fault does to the tunnel table before the call is answered.
    std::function<void()> read_change(const Reader& object) const {
        std::optional<LinkKey> removed;
        std::optional<Tunnel> added;
        if_there(object, "removeTunnel", [&](const Reader& r) {
            r.object(LINK_KEY);
            removed = {r.at("entityId").u32(), r.at("linkIndex").u32()};
            if (!state_.links.contains(*removed)) r.refuse("is no tunnel of this switch");
        });
        if_there(object, "addTunnel", [&](const Reader& r) { added = read_tunnel(r); });
        if (!removed && !added) return nullptr;
        return [removed, added] {
            SwitchState& state = runtime().state;
            if (removed) state.links.erase(*removed);
            if (added) added->enter(state);
        };
    }

    SwitchState state_;
    std::map<std::string, std::uint32_t> names_; // if-index by port name
};

} // namespace

SwitchState parse_scenario(std::string_view text, std::string_view source) {
    const nlohmann::json parsed = parse_json(text, source);
    return Loader().load(Reader(parsed, std::string(source)));
}

SwitchState parse_scenario_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf())) throw ScenarioError(path + ": cannot be read");
    return parse_scenario(text.str(), path);
}

const SwitchState& builtin_switch() {
    static const SwitchState PARSED = parse_scenario(builtin_scenario(), "built-in switch");
    return PARSED;
}

std::map<std::string, std::vector<std::string>> scenario_members() {
    std::map<std::string, std::vector<std::string>> members;
    for (const ObjectKind* kind :
         {&SCENARIO, &SYSTEM, &IP, &VSAN, &DOMAIN_OF_VSAN, &PORT, &PORT_COUNTERS, &IP_STATS, &ETHERNET_STATS,
          &TCP_STATS, &PROFILE, &TUNNEL, &LINK_ERRORS, &TCP_CONNECTION, &FAULT, &LINK_KEY, &COUNTER})
        members[kind->name] = kind->members;
    return members;
}

} // namespace emulator
