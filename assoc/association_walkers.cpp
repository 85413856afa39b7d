// The enumeration of associations: for each FCIP link, the one association of the class asked for.
//
// One table drives both walkers. Each row names the path of the link's own endpoint, which is built first,
// and that of the other end. The roles that the two play run against the usual reading in several rows, and
// those of the statistics differ between instances and names; clients know them so.
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

CMPIObjectPath* lan_endpoint_of_link(const char* className, const char* nameSpace,
                                     const FcipLinkEntry* link) {
    return lan_endpoint_fill_reference(className, nameSpace, link->kfmFcipLinkExtEthIfIndex);
}

CMPIObjectPath* hosting_switch(const char* className, const char* nameSpace, const FcipLinkEntry* link) {
    const SystemName name = system_name(link->kfmFcipLinkIfIndex);
    return switch_fill_reference_str(className, nameSpace, name.text, _broker);
}

CMPIObjectPath* profile_of_link(const char* className, const char* nameSpace, const FcipLinkEntry* link) {
    FcipEntityEntry profile{};
    if (get_profile_from_link_entry(link, &profile) != 0) return nullptr;
    return fcip_profile_fill_reference(className, nameSpace, &profile);
}

// Which end is the first reference.
enum class First { Endpoint, Other };

// Deviations of single rows.
enum Deviation : unsigned {
    NONE = 0,
    ENDPOINT_ONLY = 1,     // the endpoint's path is built, and nothing more comes of it
    SKIP_UNSET_ENTITY = 2, // links of entity 65535 have no such association
    NAMES_ONLY = 4,        // instances are enumerated elsewhere
};
constexpr std::uint32_t UNSET_ENTITY = 65535;
constexpr int NO_TRACE = 0;

struct AssociationClass {
    const char* className;
    const AssociationFamily* family;
    End endpoint;
    End other;
    First inInstances;
    First inNames;
    unsigned deviations;
    int instanceTrace; // line number traced on the way, or NO_TRACE
    int nameTrace;
};

constexpr End FCIP_ENDPOINT{"KESTO_FCIPProtocolEndPoint", fcip_pe_fill_reference};
constexpr End TCP_ENDPOINT{"KESTO_TCPProtocolEndPoint", tcp_pe_fill_reference};
constexpr End IP_ENDPOINT{"KESTO_IPProtocolEndPoint", ip_pe_fill_reference};
constexpr End HOSTING_SWITCH{LOGICAL_COMPUTER_SYSTEM, hosting_switch};
// The path of the TCP settings is keyed as an IP endpoint, and stands for the IP settings too.
constexpr End TCP_SETTINGS{"KESTO_TCPSettings", ip_pe_fill_reference};

constexpr First ENDPOINT = First::Endpoint;
constexpr First OTHER = First::Other;

// clang-format off
constexpr AssociationClass ASSOCIATIONS[] = {
    {"KESTO_SANFCIPEndpoint", &REALIZE, FCIP_ENDPOINT, {"KESTO_RemoteFCIPPort", fcip_remote_pe_fill_reference}, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_FCIPTCPEndpoint", &REALIZE, FCIP_ENDPOINT, TCP_ENDPOINT, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_SANIPEndpoint", &REALIZE, FCIP_ENDPOINT, {"KESTO_RemoteIPPort", ip_remote_pe_fill_reference}, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_TCPIPEndpoint", &REALIZE, IP_ENDPOINT, TCP_ENDPOINT, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_SANTCPEndpoint", nullptr, IP_ENDPOINT, {}, OTHER, OTHER, ENDPOINT_ONLY, NO_TRACE, NO_TRACE},
    {"KESTO_IPEthernetEndpoint", &REALIZE, IP_ENDPOINT, {"KESTO_LANEndPoint", lan_endpoint_of_link}, OTHER, OTHER, SKIP_UNSET_ENTITY, 1893, 1602},
    {"KESTO_SwitchHostedFCIPAccessPoint", &REALIZE, FCIP_ENDPOINT, HOSTING_SWITCH, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_SwitchHostedIPAccessPoint", &REALIZE, IP_ENDPOINT, HOSTING_SWITCH, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_SwitchHostedTCPAccessPoint", &REALIZE, TCP_ENDPOINT, HOSTING_SWITCH, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_FCIPElementSettingData", &MANAGED_SETTING, FCIP_ENDPOINT, {"KESTO_FCIPSettings", fcip_settings_fill_reference}, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_TCPElementSettingData", &MANAGED_SETTING, TCP_ENDPOINT, TCP_SETTINGS, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_IPElementSettingData", &MANAGED_SETTING, IP_ENDPOINT, TCP_SETTINGS, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_FCIPPEBasedOn", &GROUP_PART, FCIP_ENDPOINT, {"KESTO_FCIPProfile", profile_of_link}, OTHER, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_TCPEndPointStatisticalData", &MANAGED_STATS, FCIP_ENDPOINT, {"KESTO_TCPEndPointStatistics", stat_fill_reference}, ENDPOINT, OTHER, NONE, 2024, NO_TRACE},
    {"KESTO_IPEndPointStatisticalData", &MANAGED_STATS, IP_ENDPOINT, {"KESTO_IPEndPointStatistics", stat_fill_reference}, ENDPOINT, OTHER, NONE, NO_TRACE, NO_TRACE},
    {"KESTO_EthernetPortStatisticalData", &MANAGED_STATS, {"KESTO_EthernetPort", ip_pe_fill_reference}, {"KESTO_EthernetPortStatistics", stat_fill_reference}, OTHER, OTHER, NAMES_ONLY, NO_TRACE, NO_TRACE},
};
// clang-format on

bool has(const AssociationClass& association, unsigned deviation) {
    return (association.deviations & deviation) != 0;
}

CMPIObjectPath* path_of(const End& end, const char* nameSpace, const FcipLinkEntry& link) {
    return end.fill(end.className, nameSpace, &link);
}

// How one of the two walkers makes the association of a link.
struct Kind {
    const char* function;
    First AssociationClass::*first;
    int AssociationClass::*trace;
    unsigned leftOut; // deviations of rows that this walker does not serve
};
constexpr Kind INSTANCES{"get_all_binds_to_instances", &AssociationClass::inInstances,
                         &AssociationClass::instanceTrace, NAMES_ONLY};
constexpr Kind NAMES{"get_all_binds_to_references", &AssociationClass::inNames, &AssociationClass::nameTrace,
                     NONE};

// Walks the links; make(family, ref1, ref2) gives the association for the result.
template <class Make>
int return_associations(const Kind& kind, const char* className, const CMPIResult* result,
                        const char* nameSpace, Make make) {
    trace_entering(kind.function);
    const AssociationClass* association = find_class(ASSOCIATIONS, className);
    if (association != nullptr && has(*association, kind.leftOut)) association = nullptr;

    const WalkEnd end = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        if (association == nullptr) return Visit::GoOn;
        if (has(*association, SKIP_UNSET_ENTITY) && link.kfmFcipEntityId == UNSET_ENTITY) return Visit::GoOn;
        CMPIObjectPath* endpoint = path_of(association->endpoint, nameSpace, link);
        if (has(*association, ENDPOINT_ONLY)) return Visit::GoOn;
        if (association->*kind.trace != NO_TRACE) trace_line(kind.function, association->*kind.trace);
        CMPIObjectPath* other = path_of(association->other, nameSpace, link);
        // An association without one of its ends stops the whole enumeration.
        if (!is_object(endpoint) || !is_object(other)) return Visit::Stop;
        const bool endpointFirst = association->*kind.first == First::Endpoint;
        hand_over(result, make(*association->family, endpointFirst ? endpoint : other,
                               endpointFirst ? other : endpoint));
        return Visit::GoOn;
    });
    if (end == WalkEnd::Stopped) return -1;
    trace_exiting(kind.function);
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
