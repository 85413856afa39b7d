// The enumeration of associations: for each FCIP link, the one association of the class asked for.
//
// One table drives both walkers. Each row names the path of the link's own endpoint, which is built first,
// and that of the other end. The roles that the two play run against the usual reading in several rows, and
// those of the statistics differ between instances and names; clients know them so.
#include "assoc/ends.h"
#include "assoc/families.h"
#include "classes/builder.h"
#include "include/class_table.h"
#include "include/classes.h"
#include "platform/fcip_config.h"
#include "platform/platform_services.h"

namespace {

// One end of an association, made of the link's row.
struct End {
    const char* className;
    LinkFiller* fill;
};

CMPIObjectPath* hosting_switch(const char* className, const char* nameSpace, const FcipLinkEntry* link) {
    const SystemName name = system_name(link->kfmFcipLinkIfIndex);
    return switch_fill_reference_str(className, nameSpace, name.text, _broker);
}

// Deviations of single rows.
enum Deviation : unsigned {
    NONE = 0,
    ENDPOINT_FIRST_IN_INSTANCES = 1, // the endpoint is the first reference there
    ENDPOINT_ONLY = 2,               // the endpoint's path is built, and nothing more comes of it
    WITHOUT_ENTITY_65535 = 4,        // links of this entity have no such association
    NAMES_ONLY = 8,                  // instances are enumerated elsewhere
};
constexpr std::uint32_t ENTITY_65535 = 65535;

// A line number that one of the walkers traces, 0 for none.
struct TracedLine {
    int inInstances = 0;
    int inNames = 0;
};

struct AssociationClass {
    const char* className;
    const AssociationFamily* family;
    End endpoint; // built first, and the second reference
    End other;    // the first reference
    unsigned deviations = NONE;
    TracedLine before = {};  // traced before the ends are built
    TracedLine between = {}; // traced behind the endpoint
};

constexpr End FCIP_ENDPOINT{"KESTO_FCIPProtocolEndPoint", fcip_pe_fill_reference};
constexpr End TCP_ENDPOINT{"KESTO_TCPProtocolEndPoint", tcp_pe_fill_reference};
constexpr End IP_ENDPOINT{"KESTO_IPProtocolEndPoint", ip_pe_fill_reference};
constexpr End HOSTING_SWITCH{LOGICAL_COMPUTER_SYSTEM, hosting_switch};
// The path of the TCP settings is keyed as an IP endpoint, and stands for the IP settings too.
constexpr End TCP_SETTINGS{"KESTO_TCPSettings", ip_pe_fill_reference};

// clang-format off
constexpr AssociationClass ASSOCIATIONS[] = {
    {"KESTO_SANFCIPEndpoint", &REALIZE, FCIP_ENDPOINT, {"KESTO_RemoteFCIPPort", fcip_remote_pe_fill_reference}},
    {"KESTO_FCIPTCPEndpoint", &REALIZE, FCIP_ENDPOINT, TCP_ENDPOINT},
    {"KESTO_SANIPEndpoint", &REALIZE, FCIP_ENDPOINT, {"KESTO_RemoteIPPort", ip_remote_pe_fill_reference}},
    {"KESTO_TCPIPEndpoint", &REALIZE, IP_ENDPOINT, TCP_ENDPOINT},
    {"KESTO_SANTCPEndpoint", nullptr, IP_ENDPOINT, {}, ENDPOINT_ONLY},
    {"KESTO_IPEthernetEndpoint", &REALIZE, IP_ENDPOINT, {"KESTO_LANEndPoint", lan_endpoint_of_link}, WITHOUT_ENTITY_65535, {}, {1893, 1602}},
    {"KESTO_SwitchHostedFCIPAccessPoint", &REALIZE, FCIP_ENDPOINT, HOSTING_SWITCH},
    {"KESTO_SwitchHostedIPAccessPoint", &REALIZE, IP_ENDPOINT, HOSTING_SWITCH},
    {"KESTO_SwitchHostedTCPAccessPoint", &REALIZE, TCP_ENDPOINT, HOSTING_SWITCH},
    {"KESTO_FCIPElementSettingData", &MANAGED_SETTING, FCIP_ENDPOINT, {"KESTO_FCIPSettings", fcip_settings_fill_reference}},
    {"KESTO_TCPElementSettingData", &MANAGED_SETTING, TCP_ENDPOINT, TCP_SETTINGS},
    {"KESTO_IPElementSettingData", &MANAGED_SETTING, IP_ENDPOINT, TCP_SETTINGS},
    {"KESTO_FCIPPEBasedOn", &GROUP_PART, FCIP_ENDPOINT, {"KESTO_FCIPProfile", profile_of_link}},
    {"KESTO_TCPEndPointStatisticalData", &MANAGED_STATS, FCIP_ENDPOINT, {"KESTO_TCPEndPointStatistics", stat_fill_reference}, ENDPOINT_FIRST_IN_INSTANCES, {2024, 0}},
    {"KESTO_IPEndPointStatisticalData", &MANAGED_STATS, IP_ENDPOINT, {"KESTO_IPEndPointStatistics", stat_fill_reference}, ENDPOINT_FIRST_IN_INSTANCES},
    {"KESTO_EthernetPortStatisticalData", &MANAGED_STATS, {"KESTO_EthernetPort", ip_pe_fill_reference}, {"KESTO_EthernetPortStatistics", stat_fill_reference}, NAMES_ONLY},
};
// clang-format on

bool has(const AssociationClass& association, unsigned deviation) {
    return (association.deviations & deviation) != 0;
}

CMPIObjectPath* path_of(const End& end, const char* nameSpace, const FcipLinkEntry& link) {
    return end.fill(end.className, nameSpace, &link);
}

// What tells the two walkers apart.
struct Walker {
    const char* function;
    unsigned endpointFirst; // the deviation that makes the endpoint the first reference
    unsigned leftOut;       // the deviation of rows that the walker does not serve
    int TracedLine::*line;
};
constexpr Walker INSTANCES{"get_all_binds_to_instances", ENDPOINT_FIRST_IN_INSTANCES, NAMES_ONLY,
                           &TracedLine::inInstances};
constexpr Walker NAMES{"get_all_binds_to_references", NONE, NONE, &TracedLine::inNames};

void trace(const Walker& walker, const TracedLine& line) {
    if (line.*walker.line != 0) trace_line(walker.function, line.*walker.line);
}

// Walks the links; make(family, ref1, ref2) gives the association for the result.
template <typename Make>
int return_associations(const Walker& walker, const char* className, const CMPIResult* result,
                        const char* nameSpace, Make make) {
    trace_entering(walker.function);
    const AssociationClass* association = find_class(ASSOCIATIONS, className);
    if (association != nullptr && has(*association, walker.leftOut)) association = nullptr;

    const WalkEnd end = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        if (association == nullptr) return Visit::GoOn;
        if (has(*association, WITHOUT_ENTITY_65535) && link.kfmFcipEntityId == ENTITY_65535)
            return Visit::GoOn;
        trace(walker, association->before);
        CMPIObjectPath* endpoint = path_of(association->endpoint, nameSpace, link);
        if (has(*association, ENDPOINT_ONLY)) return Visit::GoOn;
        trace(walker, association->between);
        CMPIObjectPath* other = path_of(association->other, nameSpace, link);
        // An association without one of its ends stops the whole enumeration.
        if (!is_object(endpoint) || !is_object(other)) return Visit::Stop;
        const bool endpointFirst = has(*association, walker.endpointFirst);
        hand_over(result, make(*association->family, endpointFirst ? endpoint : other,
                               endpointFirst ? other : endpoint));
        return Visit::GoOn;
    });
    if (end == WalkEnd::Stopped) return -1;
    trace_exiting(walker.function);
    return 0;
}

} // namespace

int get_all_binds_to_instances(const char* className, const CMPIResult* result, const char** /*properties*/,
                               const char* nameSpace) {
    return return_associations(
        INSTANCES, className, result, nameSpace,
        [&](const AssociationFamily& family, const CMPIObjectPath* ref1, const CMPIObjectPath* ref2) {
            return family.build(className, nameSpace, ref1, ref2);
        });
}

int get_all_binds_to_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_associations(
        NAMES, className, result, nameSpace,
        [&](const AssociationFamily& family, const CMPIObjectPath* ref1, const CMPIObjectPath* ref2) {
            return family.fill(className, nameSpace, ref1, ref2, _broker);
        });
}
