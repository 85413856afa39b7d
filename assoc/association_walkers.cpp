// The enumeration of associations: for each FCIP link, the one association of the class asked for.
//
// One table drives both walkers. Each row names the link's own endpoint, whose path is made first, and the
// other end. The roles that the two play run against the usual reading in several rows, and those of the
// statistics differ between instances and names; clients know them so.

#include "assoc/ends.h"
#include "assoc/families.h"
#include "assoc/source.h"
#include "classes/text.h"
#include "common/broker.h"
#include "common/class_table.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/associations.h"
#include "include/classes.h"
#include "platform/computer_system.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "platform/table_walk.h"

namespace {

// What is enumerated, and with it which walker is at work.
enum class Form { Instances, Names };

// The numbers with which the two walkers mark a place; 0 for none.
struct Mark {
    int instances = 0;
    int names = 0;
};

struct AssociationRow {
    const char* className;
    const AssociationFamily* family; // null: the endpoint's path is made, and nothing comes of it
    End endpoint;                    // made first, and the second reference
    End other = {nullptr};           // the first reference
    bool endpointFirstInInstances = false;
    bool namesOnly = false; // instances are enumerated elsewhere
    bool (*isLeftOut)(const FcipLinkEntry& link) = nullptr;
    Mark before = {};        // of a link
    Mark afterEndpoint = {}; // once the endpoint's path is made
};

CMPIObjectPath* named_system_path(const Source& source, const char* className) {
    const SystemName name = system_name(source.link.kfmFcipLinkIfIndex);
    return switch_fill_reference_str(className, source.nameSpace, name.text.chars, _broker);
}

// The link's row begins with the number of its profile, and the profile's path needs no more.
CMPIObjectPath* profile_path_of_row(const Source& source, const char* className) {
    FcipEntityEntry profile{};
    profile.kfmFcipEntityId = source.link.kfmFcipEntityId;
    return fcip_profile_fill_reference(className, source.nameSpace, &profile);
}

bool is_of_entity_65535(const FcipLinkEntry& link) {
    return link.kfmFcipEntityId == 65535;
}

constexpr End HOSTING_SWITCH{LOGICAL_COMPUTER_SYSTEM, named_system_path};
constexpr End PROFILE_OF_ROW{"KESTO_FCIPProfile", profile_path_of_row};
// The path of the TCP settings is keyed as an IP endpoint, and stands for the IP settings too.
constexpr End TCP_SETTINGS = ip_endpoint("KESTO_TCPSettings");

constexpr AssociationRow ASSOCIATIONS[] = {
    {"KESTO_SANFCIPEndpoint", &REALIZE, fcip_endpoint(), remote_fcip_port()},
    {"KESTO_FCIPTCPEndpoint", &REALIZE, fcip_endpoint(), tcp_endpoint()},
    {"KESTO_SANIPEndpoint", &REALIZE, fcip_endpoint(), remote_ip_access_point("KESTO_RemoteIPPort")},
    {"KESTO_TCPIPEndpoint", &REALIZE, ip_endpoint(), tcp_endpoint()},
    {"KESTO_SANTCPEndpoint", nullptr, ip_endpoint()},
    {.className = "KESTO_IPEthernetEndpoint",
     .family = &REALIZE,
     .endpoint = ip_endpoint(),
     .other = lan_endpoint_of_link(),
     .isLeftOut = is_of_entity_65535,
     .afterEndpoint = {.instances = 1893, .names = 1602}},
    {"KESTO_SwitchHostedFCIPAccessPoint", &REALIZE, fcip_endpoint(), HOSTING_SWITCH},
    {"KESTO_SwitchHostedIPAccessPoint", &REALIZE, ip_endpoint(), HOSTING_SWITCH},
    {"KESTO_SwitchHostedTCPAccessPoint", &REALIZE, tcp_endpoint(), HOSTING_SWITCH},
    {"KESTO_FCIPElementSettingData", &MANAGED_SETTING, fcip_endpoint(), fcip_settings()},
    {"KESTO_TCPElementSettingData", &MANAGED_SETTING, tcp_endpoint(), TCP_SETTINGS},
    {"KESTO_IPElementSettingData", &MANAGED_SETTING, ip_endpoint(), TCP_SETTINGS},
    {"KESTO_FCIPPEBasedOn", &GROUP_PART, fcip_endpoint(), PROFILE_OF_ROW},
    {.className = "KESTO_TCPEndPointStatisticalData",
     .family = &MANAGED_STATS,
     .endpoint = fcip_endpoint(),
     .other = statistics("KESTO_TCPEndPointStatistics"),
     .endpointFirstInInstances = true,
     .before = {.instances = 2024}},
    {.className = "KESTO_IPEndPointStatisticalData",
     .family = &MANAGED_STATS,
     .endpoint = ip_endpoint(),
     .other = statistics("KESTO_IPEndPointStatistics"),
     .endpointFirstInInstances = true},
    {.className = "KESTO_EthernetPortStatisticalData",
     .family = &MANAGED_STATS,
     .endpoint = ip_endpoint("KESTO_EthernetPort"),
     .other = statistics("KESTO_EthernetPortStatistics"),
     .namesOnly = true},
};

const AssociationRow* row_for(const char* className, Form form) {
    const AssociationRow* row = find_class(ASSOCIATIONS, className);
    return row != nullptr && row->namesOnly && form == Form::Instances ? nullptr : row;
}

void trace_mark(const char* function, Form form, const Mark& mark) {
    const int line = form == Form::Instances ? mark.instances : mark.names;
    if (line != 0) trace_line(function, line);
}

// Walks the links; associate(family, class name, namespace, ref1, ref2) gives the association for the result.
template <typename Associate>
int return_associations(const char* function, Form form, const char* className, const CMPIResult* result,
                        const char* nameSpace, Associate associate) {
    trace_entering(function);
    const AssociationRow* row = row_for(className, form);
    const WalkEnd end = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        if (row == nullptr || (row->isLeftOut != nullptr && row->isLeftOut(link))) return Visit::GoOn;
        const Source source{nullptr, nameSpace, nullptr, result, link};
        trace_mark(function, form, row->before);
        CMPIObjectPath* endpoint = make_path(row->endpoint, source);
        if (row->family == nullptr) return Visit::GoOn;
        trace_mark(function, form, row->afterEndpoint);
        CMPIObjectPath* other = make_path(row->other, source);
        // An association without one of its ends stops the whole enumeration.
        if (!is_object(endpoint) || !is_object(other)) return Visit::Stop;
        const bool endpointFirst = row->endpointFirstInInstances && form == Form::Instances;
        hand_over(result, associate(*row->family, className, nameSpace, endpointFirst ? endpoint : other,
                                    endpointFirst ? other : endpoint));
        return Visit::GoOn;
    });
    if (end == WalkEnd::Stopped) return -1;
    trace_exiting(function);
    return 0;
}

} // namespace

int get_all_binds_to_instances(const char* className, const CMPIResult* result, const char** /*properties*/,
                               const char* nameSpace) {
    return return_associations(__func__, Form::Instances, className, result, nameSpace, associate_instance);
}

int get_all_binds_to_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_associations(__func__, Form::Names, className, result, nameSpace, associate_path);
}
