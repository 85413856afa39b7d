// The three read operations of the instance interface. Each is a route from the class name to the walker or
// builder that knows the class; the first row of a route that matches counts.
#include <cstdio>

#include "common/class_table.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/associations.h"
#include "include/classes.h"
#include "platform/fcip_config.h"
#include "platform/key_number.h"
#include "platform/link_key.h"
#include "platform/row_lookup.h"
#include "provider/provider.h"
#include "provider/request.h"
#include "provider/request_key.h"

namespace {

using ReferenceWalker = int(const char* className, const CMPIResult* result, const char* nameSpace);
using InstanceWalker = int(const char* className, const CMPIResult* result, const char** properties,
                           const char* nameSpace);

template <typename Walker>
struct EnumRoute {
    const char* className;
    Walker* walk; // null: answered with nothing
};

// Everything else, the association classes above all, goes to get_all_binds_to_references.
constexpr EnumRoute<ReferenceWalker> NAME_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_all_fcip_pe_references},
    {"KESTO_RemoteFCIPPort", get_all_fcip_pe_references},
    {"KESTO_IPProtocolEndPoint", get_all_ip_pe_references},
    {"KESTO_RemoteTCPPort", get_all_ip_pe_references},
    {"KESTO_RemoteIPServiceAccessPoint", get_all_ip_pe_references},
    {"KESTO_TCPProtocolEndPoint", get_all_ip_pe_references},
    {"KESTO_FCIPSettings", get_all_ip_pe_references},
    {"KESTO_IPSettings", get_all_ip_pe_references},
    {"KESTO_IPEndPointStatistics", get_all_statistic_references},
    {"KESTO_TCPEndPointStatistics", get_all_statistic_references},
    {"KESTO_EthernetPortStatistics", get_all_eth_stat_references},
    {"KESTO_EthernetPortStatisticalData", get_all_eth_stat_data_references},
    {"KESTO_LANEndPoint", get_all_lan_endpoint_references},
    {"KESTO_TCPStatisticalData", get_all_statistic_references},
    {"KESTO_FCIPProfile", get_all_fcip_profile_references},
    {"KESTO_TCPSettings", get_all_ip_pe_references},
};

// Everything else, the association classes above all, goes to get_all_binds_to_instances. Unlike names,
// instances of KESTO_RemoteIPPort have a walker, which does not serve the class: one NULL for each link.
constexpr EnumRoute<InstanceWalker> INSTANCE_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_all_fcip_pe_instances},
    {"KESTO_RemoteFCIPPort", get_all_fcip_pe_instances},
    {"KESTO_IPProtocolEndPoint", get_all_ip_pe_instances},
    {"KESTO_RemoteIPServiceAccessPoint", get_all_ip_pe_instances},
    {"KESTO_RemoteTCPPort", get_all_ip_pe_instances},
    {"KESTO_TCPProtocolEndPoint", get_all_ip_pe_instances},
    {"KESTO_FCIPSettings", get_all_ip_pe_instances},
    {"KESTO_IPSettings", get_all_ip_pe_instances},
    {"KESTO_IPEndPointStatistics", get_all_statistics},
    {"KESTO_TCPEndPointStatistics", get_all_statistics},
    {"KESTO_EthernetPortStatistics", get_all_eth_stat_instances},
    {"KESTO_FCIPProfile", get_all_fcip_profiles},
    {"KESTO_LANEndPoint", get_all_lan_endpoint_instances},
    {"KESTO_TCPStatisticalData", get_all_statistics},
    {"KESTO_RemoteIPPort", get_all_ip_pe_instances},
    {"KESTO_FCPortProtocolEndPoint", nullptr},
    {"KESTO_TCPSettings", get_all_ip_pe_instances},
    {"KESTO_EthernetPortStatisticalData", get_all_eth_stat_data_instances},
};

template <typename Walker, std::size_t Rows>
Walker* walker_for(const EnumRoute<Walker> (&routes)[Rows], const char* className, Walker* fallback) {
    const EnumRoute<Walker>* route = find_class(routes, className);
    return route != nullptr ? route->walk : fallback;
}

// A get request behind the reading of its object path.
struct GetRequest {
    const CMPIObjectPath* op;
    const char* className;
    const char* nameSpace;
    const char* keyValue;
    const char** properties;
    const CMPIResult* result;
};

void get_tcp_endpoint_statistics(const GetRequest& request, const FcipLinkEntry& link) {
    // The error counters are read along with the statistics and dropped: the builder fetches what it shows.
    PlatformRow<FcipLinkErrors> errors;
    if (fetch_link_errors(key_of(link), errors) != 0 && errors) {
        errors.reset();
        trace_line("FCIP_GetInstance", 435);
    }
    hand_over(request.result, tcp_statistics_build_instance("KESTO_TCPEndPointStatistics", request.nameSpace,
                                                            &link, request.properties));
}

void get_profile(const GetRequest& request, const FcipLinkEntry& /*link*/) {
    FcipEntityEntry profile{};
    if (get_fcip_entity_from_key_value(mts_q, request.keyValue, &profile) != 1) return;
    hand_over(request.result, fcip_profile_build_instance("KESTO_FCIPProfile", request.nameSpace, &profile,
                                                          request.properties));
}

void get_lan_endpoint(const GetRequest& request, const FcipLinkEntry& link) {
    hand_over(request.result, lan_endpoint_build_instance(request.className, request.nameSpace,
                                                          link.kfmFcipLinkIfIndex, request.properties));
}

void get_ethernet_port_statistics(const GetRequest& request) {
    PlatformRow<PortInfo> port;
    if (fetch_port(key_number(request.keyValue), port) != 0 || !port) return;
    hand_over(request.result, eth_statistics_build_instance(request.className, request.nameSpace, port.get(),
                                                            request.properties));
}

using LinkAnswer = void(const GetRequest& request, const FcipLinkEntry& link);
using Answer = void(const GetRequest& request);
using AssociationGetter = int(const CMPIObjectPath* op, const CMPIResult* result);

template <LinkBuilder* build>
void get_of_link(const GetRequest& request, const FcipLinkEntry& link) {
    hand_over(request.result, build(request.className, request.nameSpace, &link, request.properties));
}

template <AssociationGetter* get>
void get_association(const GetRequest& request) {
    get(request.op, request.result);
}

// A class is answered from the link that the key names in this mode, or, with mode 0, without one.
struct GetRoute {
    const char* className;
    int mode;
    LinkAnswer* answerLink;
    Answer* answer;
};

constexpr GetRoute by_link(const char* className, int mode, LinkAnswer* answer) {
    return {className, mode, answer, nullptr};
}
constexpr GetRoute directly(const char* className, Answer* answer) {
    return {className, 0, nullptr, answer};
}

constexpr GetRoute GET_ROUTES[] = {
    by_link("KESTO_FCIPProtocolEndPoint", LINK_BY_TUNNEL, get_of_link<fcip_pe_build_instance>),
    by_link("KESTO_RemoteFCIPPort", LINK_BY_REMOTE_ADDRESS, get_of_link<fcip_remote_pe_build_instance>),
    by_link("KESTO_IPProtocolEndPoint", LINK_BY_IF_INDEX_TOKEN, get_of_link<ip_pe_build_instance>),
    by_link("KESTO_RemoteIPServiceAccessPoint", LINK_BY_REMOTE_ADDRESS,
            get_of_link<ip_remote_pe_build_instance>),
    by_link("KESTO_RemoteTCPPort", LINK_BY_REMOTE_IF_INDEX, get_of_link<tcp_remote_pe_build_instance>),
    by_link("KESTO_TCPProtocolEndPoint", LINK_BY_IF_INDEX_TOKEN, get_of_link<tcp_pe_build_instance>),
    by_link("KESTO_FCIPSettings", LINK_BY_IF_INDEX_TOKEN, get_of_link<fcip_settings_build_instance>),
    by_link("KESTO_IPSettings", LINK_BY_IF_INDEX_TOKEN, get_of_link<ip_settings_build_instance>),
    by_link("KESTO_TCPSettings", LINK_BY_IF_INDEX_TOKEN, get_of_link<tcp_settings_build_instance>),
    by_link("KESTO_IPEndPointStatistics", LINK_BY_IF_INDEX_TOKEN, get_of_link<ip_statistics_build_instance>),
    by_link("KESTO_TCPEndPointStatistics", LINK_BY_IF_INDEX_TOKEN, get_tcp_endpoint_statistics),
    directly("KESTO_EthernetPortStatistics", get_ethernet_port_statistics),
    by_link("KESTO_FCIPProfile", LINK_BY_TUNNEL, get_profile),
    by_link("KESTO_LANEndPoint", LINK_BY_ETHERNET_IF_INDEX, get_lan_endpoint),
    by_link("KESTO_TCPStatisticalData", LINK_BY_IF_INDEX_TOKEN, get_of_link<ip_pe_build_instance>),
    by_link("KESTO_RemoteIPPort", LINK_BY_IF_INDEX_TOKEN, get_of_link<ip_pe_build_instance>),
    directly("KESTO_SANFCIPEndpoint", get_association<get_ant_dep_instance>),
    directly("KESTO_SANIPEndpoint", get_association<get_ant_dep_instance>),
    directly("KESTO_FCIPTCPEndpoint", get_association<get_ant_dep_instance>),
    directly("KESTO_TCPIPEndpoint", get_association<get_ant_dep_instance>),
    directly("KESTO_SANTCPEndpoint", get_association<get_ant_dep_instance>),
    directly("KESTO_IPEthernetEndpoint", get_association<get_ant_dep_instance>),
    directly("KESTO_EthernetPortProtocolEndpoint", get_association<get_ant_dep_instance>),
    directly("KESTO_SwitchHostedFCIPAccessPoint", get_association<get_ant_dep_instance>),
    directly("KESTO_SwitchHostedIPAccessPoint", get_association<get_ant_dep_instance>),
    directly("KESTO_SwitchHostedTCPAccessPoint", get_association<get_ant_dep_instance>),
    directly("KESTO_FCIPPEBasedOn", get_association<get_group_part_instance>),
    directly("KESTO_FCIPElementSettingData", get_association<get_managed_setting_instance>),
    directly("KESTO_TCPElementSettingData", get_association<get_managed_setting_instance>),
    directly("KESTO_IPElementSettingData", get_association<get_managed_setting_instance>),
    directly("KESTO_IPEndPointStatisticalData", get_association<get_managed_stats_instance>),
    directly("KESTO_TCPEndPointStatisticalData", get_association<get_managed_stats_instance>),
    directly("KESTO_EthernetPortStatisticalData", get_association<get_managed_stats_instance>),
};

void route_get(const GetRequest& request) {
    const GetRoute* route = find_class(GET_ROUTES, request.className);
    if (route == nullptr) return;
    if (route->answer != nullptr) {
        route->answer(request);
        return;
    }
    FcipLinkEntry link{};
    if (find_link(request.keyValue, route->mode, &link) == LinkLookup::Found)
        route->answerLink(request, link);
}

} // namespace

CMPIStatus FCIP_EnumInstanceNames(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                                  const CMPIResult* result, const CMPIObjectPath* op) {
    const char* className = class_name_of(op);
    const char* nameSpace = name_space_of(op);
    with_provider_lock([&] {
        walker_for(NAME_ROUTES, className, get_all_binds_to_references)(className, result, nameSpace);
    });
    return ok();
}

CMPIStatus FCIP_EnumInstances(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                              const CMPIResult* result, const CMPIObjectPath* op, const char** properties) {
    const char* className = class_name_of(op);
    const char* nameSpace = name_space_of(op);
    with_provider_lock([&] {
        InstanceWalker* walk = walker_for(INSTANCE_ROUTES, className, get_all_binds_to_instances);
        if (walk != nullptr) walk(className, result, properties, nameSpace);
    });
    return ok();
}

CMPIStatus FCIP_GetInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                            const CMPIObjectPath* op, const char** properties) {
    const char* className = class_name_of(op);
    const char* nameSpace = name_space_of(op);
    trace_entering(__func__);
    RequestKey key;
    if (find_request_key(op, className, "\n", &key) == 0) {
        std::fputs("getInstance can't find key\n", stdout);
        return invalid_key_name();
    }
    with_provider_lock([&] { route_get({op, className, nameSpace, key.value, properties, result}); });
    return ok();
}
