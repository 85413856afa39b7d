// Profiles, and tunnels with their link errors and TCP connections.
#include "emulator/scenario_tunnels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "emulator/scenario_fields.h"
#include "emulator/scenario_objects.h"
#include "emulator/scenario_ports.h"
#include "emulator/scenario_values.h"

namespace emulator {
namespace {

constexpr std::uint32_t FCIP_TCP_PORT = 3225; // the port that is registered for FCIP
constexpr std::uint32_t NO_COMPRESSION = 1;

std::uint32_t read_field(const Reader& value, FieldKind kind, const Draft& draft) {
    if (kind == FieldKind::Interface) return read_interface(value, draft);
    if (kind == FieldKind::Flag && value.is_boolean()) return value.boolean() ? 1 : 0;
    return value.u32();
}

template <typename Record>
void read_fields(const Reader& object, std::span<const Field<Record>> fields, const Draft& draft,
                 Record& record) {
    for (const Field<Record>& field : fields) {
        if_there(object, field.name,
                 [&](const Reader& value) { record.*field.place = read_field(value, field.kind, draft); });
    }
}

// Overwrites 32-bit words of a row, in host order.
template <typename Row>
void read_words(const Reader& object, Row& row) {
    if_there(object, "words", [&](const Reader& words) {
        read_numbered(words, sizeof(Row) / 4 - 1, [&](std::uint32_t word, const Reader& value) {
            const std::uint32_t number = value.u32();
            std::memcpy(reinterpret_cast<unsigned char*>(&row) + std::size_t{word} * 4, &number,
                        sizeof number);
        });
    });
}

void read_link_errors(const Reader& object, LinkErrorCounters& counters) {
    object.expect_object(kind::LINK_ERRORS);
    for (std::size_t i = 0; i < counters.size(); ++i) {
        if_there(object, LINK_ERROR_NAMES[i],
                 [&](const Reader& value) { counters[i] = read_counter(value); });
    }
}

void read_tcp_connection(const Reader& object, const FcipEntityEntry& profile, const Draft& draft,
                         Tunnel& tunnel) {
    object.expect_object(kind::TCP_CONNECTION);
    auto localPort = static_cast<std::uint16_t>(profile.kfmFcipEntityTcpPort);
    auto remotePort = static_cast<std::uint16_t>(tunnel.row.kfmFcipLinkExtTcpRemPort);
    if_there(object, "localPort", [&](const Reader& value) { localPort = value.u16(); });
    if_there(object, "remotePort", [&](const Reader& value) { remotePort = value.u16(); });
    FcipTcpConnEntry row{};
    read_fields<FcipTcpConnEntry>(object, TCP_CONNECTION_FIELDS, draft, row);
    const TcpConnectionKey key{tunnel.key.first, tunnel.key.second, localPort, remotePort};
    if (!tunnel.connections.emplace(key, row).second) {
        object.refuse("has the ports of an earlier connection of the tunnel");
    }
}

// The link row of a tunnel, before `words` overwrite any of it.
FcipLinkEntry read_link_row(const Reader& object, const Draft& draft) {
    FcipLinkEntry row{};
    row.kfmFcipEntityId = object.at("entityId").u32();
    row.kfmFcipLinkIndex = object.at("linkIndex").u32();
    if (!draft.state.entities.contains(row.kfmFcipEntityId)) {
        object.at("entityId").refuse("is not a profile of this switch");
    }
    object.at("ifIndex"); // every tunnel has one
    row.kfmFcipLinkExtTcpRemPort = FCIP_TCP_PORT;
    row.kfmFcipLinkExtIpCompression = NO_COMPRESSION;
    read_fields<FcipLinkEntry>(object, TUNNEL_FIELDS, draft, row);
    if_there(object, "remEntityWwn", [&](const Reader& value) {
        const auto wwn = read_wwn(value);
        std::copy(wwn.begin(), wwn.end(), row.kfmFcipLinkRemFcipEntityWWN);
    });
    row.kfmFcipLinkRemFcipEntityAddress = read_address(object.at("remEntityAddress"));
    return row;
}

} // namespace

void Tunnel::enter(SwitchState& state) const {
    state.links[key] = row;
    state.linkErrors[key] = errors;
    for (const auto& [connection, entry] : connections) {
        state.tcpConnections[connection] = entry;
    }
}

void read_profile(const Reader& object, Draft& draft) {
    object.expect_object(kind::PROFILE);
    read_description(object);
    FcipEntityEntry row{};
    const std::uint32_t entityId = object.at("entityId").u32();
    row.kfmFcipEntityId = entityId;
    row.kfmFcipEntityAddress = read_address(object.at("address"));
    row.kfmFcipEntityTcpPort = FCIP_TCP_PORT;
    read_fields<FcipEntityEntry>(object, PROFILE_FIELDS, draft, row);
    read_words(object, row);
    if (!draft.state.entities.emplace(entityId, row).second) {
        object.at("entityId").refuse("is the entityId of an earlier profile");
    }
}

void read_tunnel(const Reader& object, Draft& draft) {
    const Tunnel tunnel = tunnel_of(object, draft);
    if (draft.state.links.contains(tunnel.key)) {
        object.refuse("has the entityId and linkIndex of an earlier tunnel");
    }
    tunnel.enter(draft.state);
}

Tunnel tunnel_of(const Reader& object, const Draft& draft) {
    object.expect_object(kind::TUNNEL);
    read_description(object);
    Tunnel tunnel;
    tunnel.row = read_link_row(object, draft);
    tunnel.key = {tunnel.row.kfmFcipEntityId, tunnel.row.kfmFcipLinkIndex};
    const FcipEntityEntry& profile = draft.state.entities.at(tunnel.key.first);
    read_words(object, tunnel.row);
    if_there(object, "errors", [&](const Reader& errors) { read_link_errors(errors, tunnel.errors); });
    for (const Reader& connection : object.elements_of("tcpConnections")) {
        read_tcp_connection(connection, profile, draft, tunnel);
    }
    return tunnel;
}

} // namespace emulator
