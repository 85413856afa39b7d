// Associators and associator names: the objects at the far end of the source's associations.
//
// Each source class has a table of branches. The association class asked for selects one, the source's key is
// looked up in the branch's mode, and the far end is made of what was found. Two members stand over most
// tables; where the names and the instances of a source class go different ways, they have a table each.
#include <strings.h>

#include <cstdio>

#include "assoc/ends.h"
#include "include/classes.h"
#include "include/traversal.h"
#include "platform/fcip_config.h"
#include "platform/platform_services.h"
#include "provider/provider.h"

namespace {

// The far end of a branch, as path and as instance. A maker that gives NULL may have returned an object
// itself.
struct FarEnd {
    const char* className;
    PathMaker* path;
    InstanceMaker* instance;
};

template <LinkFiller* fill, LinkBuilder* build>
constexpr FarEnd link_end(const char* className) {
    return {className, link_path<fill>, link_instance<build>};
}

struct AssociatorBranch {
    const char* assocClass; // null: any other
    int mode;
    FarEnd far;
    PortFetch* port = nullptr;              // the port that the far end is made of, if any
    const AssociatorBranch* then = nullptr; // a branch that is taken as well
};

// The statistics are told by the link's error counters, which stand in for the link's row.
const FcipLinkEntry* as_link(const PlatformRow<FcipLinkErrors>& errors) {
    return reinterpret_cast<const FcipLinkEntry*>(errors.get());
}

PlatformRow<FcipLinkErrors> errors_of_link(const Branch& branch) {
    PlatformRow<FcipLinkErrors> errors;
    if (fetch_link_errors(key_of(branch.link), errors) != 0) errors.reset();
    return errors;
}

CMPIObjectPath* statistics_path(const Branch& branch, const char* className) {
    const auto errors = errors_of_link(branch);
    return errors ? stat_fill_reference(className, branch.nameSpace, as_link(errors)) : nullptr;
}

CMPIInstance* ip_statistics_instance(const Branch& branch, const char* className) {
    const auto errors = errors_of_link(branch);
    return ip_statistics_build_instance(className, branch.nameSpace, as_link(errors), branch.properties);
}

CMPIInstance* tcp_statistical_data_instance(const Branch& branch, const char* className) {
    const auto errors = errors_of_link(branch); // asked for, and not used
    return tcp_statistical_data_build_instance(className, branch.nameSpace, &branch.link, branch.properties);
}

CMPIInstance* tcp_settings_instance(const Branch& branch, const char* className) {
    PlatformRow<FcipLinkEntry> link;
    if (fetch_link(key_of(branch.link), link) != 0 || !link) return nullptr;
    return tcp_settings_build_instance(className, branch.nameSpace, link.get(), branch.properties);
}

CMPIObjectPath* physical_switch_path(const Branch& branch, const char* className) {
    return switch_fill_reference(className, branch.nameSpace, _broker);
}

CMPIObjectPath* built_tcp_endpoint_path_and_nothing(const Branch& branch, const char* className) {
    tcp_pe_fill_reference(className, branch.nameSpace, &branch.link);
    return nullptr;
}

// The Ethernet port of a LAN endpoint goes to the result on the way.
void return_ethernet_port(const Branch& branch, const char* className, int wantInstance) {
    std::uint32_t ifIndex = 0;
    if (get_eth_ifidx_from_keyvalue(&ifIndex, branch.keyValue) != 0) return;
    get_etherport_from_if_index(ifIndex, wantInstance, className, branch.result, branch.nameSpace,
                                branch.properties, _broker);
}

CMPIObjectPath* returned_ethernet_port_path(const Branch& branch, const char* className) {
    return_ethernet_port(branch, className, 0);
    return nullptr;
}

CMPIInstance* returned_ethernet_port_instance(const Branch& branch, const char* className) {
    return_ethernet_port(branch, className, 1);
    return nullptr;
}

// Ends that are told as paths only, or as instances only.
CMPIObjectPath* no_path(const Branch& /*branch*/, const char* /*className*/) {
    return nullptr;
}
CMPIInstance* no_instance(const Branch& /*branch*/, const char* /*className*/) {
    return nullptr;
}

constexpr FarEnd FCIP_ENDPOINT =
    link_end<fcip_pe_fill_reference, fcip_pe_build_instance>("KESTO_FCIPProtocolEndPoint");
constexpr FarEnd TCP_ENDPOINT =
    link_end<tcp_pe_fill_reference, tcp_pe_build_instance>("KESTO_TCPProtocolEndPoint");
constexpr FarEnd IP_ENDPOINT =
    link_end<ip_pe_fill_reference, ip_pe_build_instance>("KESTO_IPProtocolEndPoint");
constexpr FarEnd REMOTE_FCIP_PORT =
    link_end<fcip_remote_pe_fill_reference, fcip_remote_pe_build_instance>("KESTO_RemoteFCIPPort");
constexpr FarEnd REMOTE_IP_ACCESS_POINT =
    link_end<ip_remote_pe_fill_reference, ip_remote_pe_build_instance>("KESTO_RemoteIPServiceAccessPoint");
constexpr FarEnd REMOTE_TCP_PORT =
    link_end<tcp_remote_pe_fill_reference, tcp_remote_pe_build_instance>("KESTO_RemoteTCPPort");
constexpr FarEnd FCIP_SETTINGS =
    link_end<fcip_settings_fill_reference, fcip_settings_build_instance>("KESTO_FCIPSettings");
constexpr FarEnd IP_SETTINGS =
    link_end<ip_settings_fill_reference, ip_settings_build_instance>("KESTO_IPSettings");
constexpr FarEnd TCP_SETTINGS{"KESTO_TCPSettings", no_path, tcp_settings_instance};
constexpr FarEnd PROFILE{"KESTO_FCIPProfile", link_path<profile_of_link>, profile_instance};
constexpr FarEnd HOSTING_SYSTEM{LOGICAL_COMPUTER_SYSTEM, hosting_system_path, hosting_system_instance};
constexpr FarEnd PHYSICAL_SWITCH{PHYSICAL_COMPUTER_SYSTEM, physical_switch_path, no_instance};
constexpr FarEnd FC_PORT{"KESTO_FCPort", port_path, port_instance};
constexpr FarEnd ETHERNET_PORT{"KESTO_EthernetPort", port_path, port_instance};
constexpr FarEnd ETHERNET_PORT_OF_LAN{"KESTO_EthernetPort", returned_ethernet_port_path,
                                      returned_ethernet_port_instance};
constexpr FarEnd LAN_ENDPOINT{"KESTO_LANEndPoint", lan_endpoint_path_of_key, lan_endpoint_instance_of_key};
constexpr FarEnd ETHERNET_STATISTICS{"KESTO_EthernetPortStatistics", port_statistics_path,
                                     port_statistics_instance};
constexpr FarEnd IP_STATISTICS{"KESTO_IPEndPointStatistics", statistics_path, ip_statistics_instance};
constexpr FarEnd TCP_STATISTICS{"KESTO_TCPEndPointStatistics", statistics_path, no_instance};
constexpr FarEnd TCP_STATISTICAL_DATA{"KESTO_TCPStatisticalData", no_path, tcp_statistical_data_instance};
constexpr FarEnd TCP_ENDPOINT_UNRETURNED{"KESTO_TCPProtocolEndPoint", built_tcp_endpoint_path_and_nothing,
                                         link_instance<tcp_pe_build_instance>};

// clang-format off
constexpr AssociatorBranch FCIP_PE[] = {
    {"KESTO_FCIPElementSettingData", M1, FCIP_SETTINGS},
    {"KESTO_FCIPTCPEndpoint", M1, TCP_ENDPOINT},
    {"KESTO_SANFCIPEndpoint", M1, REMOTE_FCIP_PORT},
    {"KESTO_FCPortProtocolEndPoint", M1, FC_PORT, interface_of_link},
    {"KESTO_FCIPPEBasedOn", M1, PROFILE},
    {"KESTO_SwitchHostedFCIPAccessPoint", M1, HOSTING_SYSTEM},
};

// Names of the IP endpoint answer every association class that is not listed with the hosting system, the
// hosted access point with the FCIP endpoint, and the settings with the hosting system besides.
constexpr AssociatorBranch IP_PE_ANY_OTHER = {nullptr, M2, HOSTING_SYSTEM};
constexpr AssociatorBranch IP_PE_NAMES[] = {
    {"KESTO_IPElementSettingData", M2, IP_SETTINGS, nullptr, &IP_PE_ANY_OTHER},
    {"KESTO_IPEndPointStatisticalData", M2, IP_STATISTICS},
    {"KESTO_TCPIPEndpoint", M2, TCP_ENDPOINT},
    {"KESTO_IPEthernetEndpoint", M2, ETHERNET_PORT, ethernet_port_of_link},
    {"KESTO_SwitchHostedIPAccessPoint", M2, FCIP_ENDPOINT},
    {"KESTO_SANIPEndPoint", M2, REMOTE_IP_ACCESS_POINT},
    IP_PE_ANY_OTHER,
};
constexpr AssociatorBranch IP_PE_INSTANCES[] = {
    {"KESTO_IPElementSettingData", M2, IP_SETTINGS},
    {"KESTO_IPEndPointStatisticalData", M2, IP_STATISTICS},
    {"KESTO_TCPIPEndpoint", M2, TCP_ENDPOINT},
    {"KESTO_IPEthernetEndpoint", M2, ETHERNET_PORT, ethernet_port_of_link},
    {"KESTO_SwitchHostedIPAccessPoint", M2, HOSTING_SYSTEM},
    {"KESTO_SANIpEndPoint", M2, REMOTE_IP_ACCESS_POINT},
};

// Names and instances of the TCP endpoint tell different statistics and systems, and names no settings.
constexpr AssociatorBranch TCP_PE_NAMES[] = {
    {"KESTO_TCPEndPointStatisticalData", M2, TCP_STATISTICS},
    {"KESTO_FCIPTCPEndpoint", M3, FCIP_ENDPOINT},
    {"KESTO_TCPIPEndpoint", M3, IP_ENDPOINT},
    {"KESTO_SwitchHostedTCPAccessPoint", M3, PHYSICAL_SWITCH},
    {"KESTO_SANTCPEndpoint", M3, REMOTE_TCP_PORT},
};
constexpr AssociatorBranch TCP_PE_INSTANCES[] = {
    {"KESTO_TCPEndPointStatisticalData", M2, TCP_STATISTICAL_DATA},
    {"KESTO_FCIPTCPEndpoint", M3, FCIP_ENDPOINT},
    {"KESTO_TCPIPEndpoint", M3, IP_ENDPOINT},
    {"KESTO_SwitchHostedTCPAccessPoint", M3, HOSTING_SYSTEM},
    {"KESTO_SANTCPEndpoint", M3, REMOTE_TCP_PORT},
    {"KESTO_TCPElementSettingData", M3, TCP_SETTINGS},
};

constexpr AssociatorBranch FCIP_REMOTE_PE[] = {
    {"KESTO_SANFCIPEndpoint", M6, FCIP_ENDPOINT},
};
constexpr AssociatorBranch IP_REMOTE_PE[] = {
    {"KESTO_SANIPEndpoint", M6, IP_ENDPOINT},
};
constexpr AssociatorBranch TCP_REMOTE_PE[] = {
    {"KESTO_SANTCPEndpoint", M7, TCP_ENDPOINT},
};
constexpr AssociatorBranch LAN_ENDPOINT_BRANCHES[] = {
    {"KESTO_IPEthernetEndpoint", M4, IP_ENDPOINT},
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, ETHERNET_PORT_OF_LAN},
    {"CIM_HostedAccessPoint", M3, FCIP_ENDPOINT},
};
constexpr AssociatorBranch FCIP_SETTINGS_BRANCHES[] = {
    {"KESTO_FCIPElementSettingData", M3, FCIP_ENDPOINT},
};
constexpr AssociatorBranch IP_SETTING[] = {
    {"KESTO_IPElementSettingData", M3, IP_ENDPOINT},
};
constexpr AssociatorBranch TCP_SETTING[] = {
    {"KESTO_TCPElementSettingData", M3, TCP_ENDPOINT},
};
constexpr AssociatorBranch IP_STAT[] = {
    {"KESTO_IPEndPointStatisticalData", M3, IP_ENDPOINT},
};
constexpr AssociatorBranch TCP_STAT[] = {
    {"KESTO_TCPEndPointStatisticalData", M3, TCP_ENDPOINT},
};
constexpr AssociatorBranch TCP_STATICAL_DATA[] = {
    {"KESTO_TCPEndPointStatistics", M5, TCP_ENDPOINT_UNRETURNED},
};
constexpr AssociatorBranch PROFILE_BRANCHES[] = {
    {"KESTO_FCIPPEBasedOn", M5, FCIP_ENDPOINT},
};

// The names know the statistics by the name of their class, the instances by that of the association.
constexpr AssociatorBranch ETH_PORT_NAMES[] = {
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, LAN_ENDPOINT},
    {"KESTO_EthernetPortStatistics", NO_LINK, ETHERNET_STATISTICS, port_of_key_if_known},
};
constexpr AssociatorBranch ETH_PORT_INSTANCES[] = {
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, LAN_ENDPOINT},
    {"KESTO_EthernetPortStatisticalData", NO_LINK, ETHERNET_STATISTICS, port_of_key_if_known},
};
constexpr AssociatorBranch ETH_STAT[] = {
    {"KESTO_EthernetPortStatisticalData", NO_LINK, ETHERNET_PORT, port_of_key_if_known},
};
// clang-format on

// A request to a member.
struct AssociatorRequest {
    const char* keyValue;
    const char* assocClass;
    const char* nameSpace;
    const char** properties;
    const CMPIResult* result;
};

const AssociatorBranch* branch_for(std::span<const AssociatorBranch> branches, const char* assocClass) {
    for (const AssociatorBranch& branch : branches) {
        if (branch.assocClass == nullptr || strcasecmp(assocClass, branch.assocClass) == 0) return &branch;
    }
    return nullptr;
}

// maker tells which of the two objects of a far end is wanted. What cannot be built is skipped.
template <typename Maker>
void take_branch(const AssociatorBranch& branch, Maker* FarEnd::*maker, const AssociatorRequest& request) {
    Branch at{request.keyValue, request.nameSpace, request.properties, request.result};
    if (!look_link_up(at, branch.mode)) return;
    if (branch.port != nullptr && !branch.port(at)) return;
    hand_over_built(request.result, (branch.far.*maker)(at, branch.far.className));
}

// The frame of all members.
template <typename Maker>
int traverse(const char* function, std::span<const AssociatorBranch> branches, Maker* FarEnd::*maker,
             const AssociatorRequest& request) {
    if (request.assocClass == nullptr) return 0;
    for (const AssociatorBranch* branch = branch_for(branches, request.assocClass); branch != nullptr;
         branch = branch->then) {
        take_branch(*branch, maker, request);
    }
    trace_exiting(function);
    return 0;
}

// The IP endpoint's members alone trace the association class.
void trace_association_class(const char* assocClass) {
    std::printf("Association Class %s \n", assocClass != nullptr ? assocClass : "(null)");
}
void trace_nothing(const char* /*assocClass*/) {}

} // namespace

// The members. Result class and roles are the CIM server's business.
#define ASSOCIATOR_NAMES(function, branches, trace)                                                   \
    int function(const char* keyValue, const char* assocClass, const char*, const char*, const char*, \
                 const CMPIResult* result, const char* nameSpace) {                                   \
        trace_entering(__func__);                                                                     \
        trace(assocClass);                                                                            \
        return traverse(__func__, branches, &FarEnd::path,                                            \
                        {keyValue, assocClass, nameSpace, nullptr, result});                          \
    }
#define ASSOCIATORS(function, branches, trace)                                                        \
    int function(const char* keyValue, const char* assocClass, const char*, const char*, const char*, \
                 const char** properties, const CMPIResult* result, const char* nameSpace) {          \
        trace_entering(__func__);                                                                     \
        trace(assocClass);                                                                            \
        return traverse(__func__, branches, &FarEnd::instance,                                        \
                        {keyValue, assocClass, nameSpace, properties, result});                       \
    }

ASSOCIATOR_NAMES(get_fcip_pe_associator_names, FCIP_PE, trace_nothing)
ASSOCIATORS(get_fcip_pe_associators, FCIP_PE, trace_nothing)
ASSOCIATOR_NAMES(get_ip_pe_associator_names, IP_PE_NAMES, trace_association_class)
ASSOCIATORS(get_ip_pe_associators, IP_PE_INSTANCES, trace_association_class)
ASSOCIATOR_NAMES(get_tcp_pe_associator_names, TCP_PE_NAMES, trace_nothing)
ASSOCIATORS(get_tcp_pe_associators, TCP_PE_INSTANCES, trace_nothing)
ASSOCIATOR_NAMES(get_fcip_remote_pe_associator_names, FCIP_REMOTE_PE, trace_nothing)
ASSOCIATORS(get_fcip_remote_pe_associators, FCIP_REMOTE_PE, trace_nothing)
ASSOCIATOR_NAMES(get_ip_remote_pe_associator_names, IP_REMOTE_PE, trace_nothing)
ASSOCIATORS(get_ip_remote_pe_associators, IP_REMOTE_PE, trace_nothing)
ASSOCIATOR_NAMES(get_tcp_remote_pe_associator_names, TCP_REMOTE_PE, trace_nothing)
ASSOCIATORS(get_tcp_remote_pe_associators, TCP_REMOTE_PE, trace_nothing)
ASSOCIATOR_NAMES(get_lan_endpoint_associator_names, LAN_ENDPOINT_BRANCHES, trace_nothing)
ASSOCIATORS(get_lan_endpoint_associators, LAN_ENDPOINT_BRANCHES, trace_nothing)
ASSOCIATOR_NAMES(get_fcip_settings_associator_names, FCIP_SETTINGS_BRANCHES, trace_nothing)
ASSOCIATORS(get_fcip_settings_associators, FCIP_SETTINGS_BRANCHES, trace_nothing)
ASSOCIATOR_NAMES(get_ip_setting_associator_names, IP_SETTING, trace_nothing)
ASSOCIATORS(get_ip_setting_associators, IP_SETTING, trace_nothing)
ASSOCIATOR_NAMES(get_tcp_setting_associator_names, TCP_SETTING, trace_nothing)
ASSOCIATORS(get_tcp_setting_associators, TCP_SETTING, trace_nothing)
ASSOCIATOR_NAMES(get_ip_stat_associator_names, IP_STAT, trace_nothing)
ASSOCIATORS(get_ip_stat_associators, IP_STAT, trace_nothing)
ASSOCIATOR_NAMES(get_tcp_stat_associator_names, TCP_STAT, trace_nothing)
ASSOCIATORS(get_tcp_stat_associators, TCP_STAT, trace_nothing)
ASSOCIATOR_NAMES(get_tcp_statical_data_associator_names, TCP_STATICAL_DATA, trace_nothing)
ASSOCIATORS(get_tcp_statical_data_associators, TCP_STATICAL_DATA, trace_nothing)
ASSOCIATOR_NAMES(get_profile_associator_names, PROFILE_BRANCHES, trace_nothing)
ASSOCIATORS(get_profile_associators, PROFILE_BRANCHES, trace_nothing)
ASSOCIATOR_NAMES(get_eth_port_associator_names, ETH_PORT_NAMES, trace_nothing)
ASSOCIATORS(get_eth_port_associators, ETH_PORT_INSTANCES, trace_nothing)
ASSOCIATOR_NAMES(get_eth_stat_associator_names, ETH_STAT, trace_nothing)
ASSOCIATORS(get_eth_stat_associators, ETH_STAT, trace_nothing)
