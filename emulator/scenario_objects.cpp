// The members of each object. Those that set one number of a record come from scenario_fields.h.
#include "emulator/scenario_objects.h"

#include <iterator>
#include <string>

#include "emulator/scenario_fields.h"

namespace emulator {
namespace {

using Names = std::vector<std::string>;

template <typename Rows>
Names with_names_of(const Rows& rows, Names members = {}) {
    for (const auto& row : rows) {
        members.emplace_back(row.name);
    }
    return members;
}

template <typename Rows>
Names reply_members(const Rows& counters) {
    return with_names_of(counters, {"status", "size", "words", "longs"});
}

} // namespace

namespace kind {

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
const ObjectKind PORT_COUNTERS{"portCounters", with_names_of(PORT_COUNTER_FIELDS)};
const ObjectKind IP_STATS{"ipStats", reply_members(IP_COUNTERS)};
const ObjectKind ETHERNET_STATS{"ethernetStats", reply_members(ETHERNET_COUNTERS)};
const ObjectKind TCP_STATS{
    "tcpStats", with_names_of(TCP_COUNTERS, {"status", "size", "words", "longs", "continuations"})};

const ObjectKind PROFILE{"profile",
                         with_names_of(PROFILE_FIELDS, {"description", "entityId", "address", "words"})};
const ObjectKind TUNNEL{
    "tunnel", with_names_of(TUNNEL_FIELDS, {"description", "entityId", "linkIndex", "remEntityWwn",
                                            "remEntityAddress", "words", "errors", "tcpConnections"})};
const ObjectKind LINK_ERRORS{"linkErrors", {std::begin(LINK_ERROR_NAMES), std::end(LINK_ERROR_NAMES)}};
const ObjectKind TCP_CONNECTION{"tcpConnection",
                                with_names_of(TCP_CONNECTION_FIELDS, {"localPort", "remotePort"})};

const ObjectKind FAULT{"fault",
                       {"description", "symbol", "where", "first", "last", "probability", "seed", "effect",
                        "status", "size", "removeTunnel", "addTunnel"}};
const ObjectKind LINK_KEY{"linkKey", {"entityId", "linkIndex"}};
const ObjectKind MOVING_COUNTER{"movingCounter", {"start", "rate"}};

} // namespace kind

std::vector<const ObjectKind*> object_kinds() {
    return {&kind::SCENARIO,      &kind::SYSTEM,         &kind::IP,
            &kind::VSAN,          &kind::DOMAIN_OF_VSAN, &kind::PORT,
            &kind::PORT_COUNTERS, &kind::IP_STATS,       &kind::ETHERNET_STATS,
            &kind::TCP_STATS,     &kind::PROFILE,        &kind::TUNNEL,
            &kind::LINK_ERRORS,   &kind::TCP_CONNECTION, &kind::FAULT,
            &kind::LINK_KEY,      &kind::MOVING_COUNTER};
}

} // namespace emulator
