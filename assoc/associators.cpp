// Associators and associator names: the objects at the far end of the source's associations.
//
// Each source class has a table of rows. The association class asked for selects one, the source's key is
// looked up in the row's mode, and the far end is made of what was found. Two functions stand over most
// tables; where the names and the instances of a source class go different ways, they have a table each.
#include <strings.h>

#include <cstdint>
#include <cstdio>
#include <span>

#include "assoc/ends.h"
#include "assoc/source.h"
#include "common/broker.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "include/traversal.h"
#include "platform/computer_system.h"
#include "platform/fcip_config.h"
#include "platform/link_key.h"
#include "platform/platform_records.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"

namespace {

struct AssociatorRow {
    const char* assocClass; // null: any other
    int mode;
    End far;
    PortFetch* port = nullptr;           // the port that the far end is made of, if any
    const AssociatorRow* then = nullptr; // a row that is taken as well
};

// The table of a source class. The IP endpoint's functions alone trace the association class.
struct Traversal {
    std::span<const AssociatorRow> rows;
    bool tracesAssociationClass = false;
};

// Far ends that only associators have. The statistics are made of the link's error counters, which stand in
// for the link's row.
const FcipLinkEntry* as_link(const PlatformRow<FcipLinkErrors>& errors) {
    return reinterpret_cast<const FcipLinkEntry*>(errors.get());
}

PlatformRow<FcipLinkErrors> errors_of_link(const Source& source) {
    PlatformRow<FcipLinkErrors> errors;
    if (fetch_link_errors(key_of(source.link), errors) != 0) errors.reset();
    return errors;
}

CMPIObjectPath* counted_statistics_path(const Source& source, const char* className) {
    const auto errors = errors_of_link(source);
    return errors ? stat_fill_reference(className, source.nameSpace, as_link(errors)) : nullptr;
}

CMPIInstance* ip_statistics_instance(const Source& source, const char* className) {
    const auto errors = errors_of_link(source);
    return ip_statistics_build_instance(className, source.nameSpace, as_link(errors), source.properties);
}

CMPIInstance* tcp_statistical_data_instance(const Source& source, const char* className) {
    const auto errors = errors_of_link(source); // asked for, and not used
    return tcp_statistical_data_build_instance(className, source.nameSpace, &source.link, source.properties);
}

CMPIObjectPath* physical_switch_path(const Source& source, const char* className) {
    return switch_fill_reference(className, source.nameSpace, _broker);
}

CMPIObjectPath* tcp_endpoint_path_made_for_nothing(const Source& source, const char* className) {
    tcp_pe_fill_reference(className, source.nameSpace, &source.link);
    return nullptr;
}

// The Ethernet port of a LAN endpoint goes to the result on the way.
void return_ethernet_port(const Source& source, const char* className, int wantInstance) {
    std::uint32_t ifIndex = 0;
    if (get_eth_ifidx_from_keyvalue(&ifIndex, source.keyValue) != 0) return;
    get_etherport_from_if_index(ifIndex, wantInstance, className, source.result, source.nameSpace,
                                source.properties, _broker);
}

CMPIObjectPath* returned_ethernet_port_path(const Source& source, const char* className) {
    return_ethernet_port(source, className, 0);
    return nullptr;
}

CMPIInstance* returned_ethernet_port_instance(const Source& source, const char* className) {
    return_ethernet_port(source, className, 1);
    return nullptr;
}

constexpr End IP_STATISTICS{"KESTO_IPEndPointStatistics", counted_statistics_path, ip_statistics_instance};
constexpr End TCP_STATISTICS{"KESTO_TCPEndPointStatistics", counted_statistics_path};
constexpr End TCP_STATISTICAL_DATA{"KESTO_TCPStatisticalData", no_path, tcp_statistical_data_instance};
constexpr End PHYSICAL_SWITCH{PHYSICAL_COMPUTER_SYSTEM, physical_switch_path};
constexpr End TCP_ENDPOINT_AS_INSTANCE{"KESTO_TCPProtocolEndPoint", tcp_endpoint_path_made_for_nothing,
                                       instance_of_link<tcp_pe_build_instance>};
constexpr End ETHERNET_PORT_OF_LAN{"KESTO_EthernetPort", returned_ethernet_port_path,
                                   returned_ethernet_port_instance};

constexpr AssociatorRow FCIP_ENDPOINT_ROWS[] = {
    {"KESTO_FCIPElementSettingData", LINK_BY_TUNNEL, fcip_settings()},
    {"KESTO_FCIPTCPEndpoint", LINK_BY_TUNNEL, tcp_endpoint()},
    {"KESTO_SANFCIPEndpoint", LINK_BY_TUNNEL, remote_fcip_port()},
    {"KESTO_FCPortProtocolEndPoint", LINK_BY_TUNNEL, fc_port(), interface_of_link},
    {"KESTO_FCIPPEBasedOn", LINK_BY_TUNNEL, profile()},
    {"KESTO_SwitchHostedFCIPAccessPoint", LINK_BY_TUNNEL, hosting_system()},
};

// Names of the IP endpoint answer every association class that is not listed with the hosting system, the
// hosted access point with the FCIP endpoint, and the settings with the hosting system besides.
constexpr AssociatorRow IP_ENDPOINT_ANY_OTHER = {nullptr, LINK_BY_IF_INDEX_TOKEN, hosting_system()};
constexpr AssociatorRow IP_ENDPOINT_NAME_ROWS[] = {
    {"KESTO_IPElementSettingData", LINK_BY_IF_INDEX_TOKEN, ip_settings(), nullptr, &IP_ENDPOINT_ANY_OTHER},
    {"KESTO_IPEndPointStatisticalData", LINK_BY_IF_INDEX_TOKEN, IP_STATISTICS},
    {"KESTO_TCPIPEndpoint", LINK_BY_IF_INDEX_TOKEN, tcp_endpoint()},
    {"KESTO_IPEthernetEndpoint", LINK_BY_IF_INDEX_TOKEN, ethernet_port(), ethernet_port_of_link},
    {"KESTO_SwitchHostedIPAccessPoint", LINK_BY_IF_INDEX_TOKEN, fcip_endpoint()},
    {"KESTO_SANIPEndPoint", LINK_BY_IF_INDEX_TOKEN, remote_ip_access_point()},
    IP_ENDPOINT_ANY_OTHER,
};
constexpr AssociatorRow IP_ENDPOINT_INSTANCE_ROWS[] = {
    {"KESTO_IPElementSettingData", LINK_BY_IF_INDEX_TOKEN, ip_settings()},
    {"KESTO_IPEndPointStatisticalData", LINK_BY_IF_INDEX_TOKEN, IP_STATISTICS},
    {"KESTO_TCPIPEndpoint", LINK_BY_IF_INDEX_TOKEN, tcp_endpoint()},
    {"KESTO_IPEthernetEndpoint", LINK_BY_IF_INDEX_TOKEN, ethernet_port(), ethernet_port_of_link},
    {"KESTO_SwitchHostedIPAccessPoint", LINK_BY_IF_INDEX_TOKEN, hosting_system()},
    {"KESTO_SANIpEndPoint", LINK_BY_IF_INDEX_TOKEN, remote_ip_access_point()},
};

// Names and instances of the TCP endpoint give different statistics and systems, and names give no settings.
constexpr AssociatorRow TCP_ENDPOINT_NAME_ROWS[] = {
    {"KESTO_TCPEndPointStatisticalData", LINK_BY_IF_INDEX_TOKEN, TCP_STATISTICS},
    {"KESTO_FCIPTCPEndpoint", LINK_BY_IF_INDEX, fcip_endpoint()},
    {"KESTO_TCPIPEndpoint", LINK_BY_IF_INDEX, ip_endpoint()},
    {"KESTO_SwitchHostedTCPAccessPoint", LINK_BY_IF_INDEX, PHYSICAL_SWITCH},
    {"KESTO_SANTCPEndpoint", LINK_BY_IF_INDEX, remote_tcp_port()},
};
constexpr AssociatorRow TCP_ENDPOINT_INSTANCE_ROWS[] = {
    {"KESTO_TCPEndPointStatisticalData", LINK_BY_IF_INDEX_TOKEN, TCP_STATISTICAL_DATA},
    {"KESTO_FCIPTCPEndpoint", LINK_BY_IF_INDEX, fcip_endpoint()},
    {"KESTO_TCPIPEndpoint", LINK_BY_IF_INDEX, ip_endpoint()},
    {"KESTO_SwitchHostedTCPAccessPoint", LINK_BY_IF_INDEX, hosting_system()},
    {"KESTO_SANTCPEndpoint", LINK_BY_IF_INDEX, remote_tcp_port()},
    {"KESTO_TCPElementSettingData", LINK_BY_IF_INDEX, tcp_settings()},
};

constexpr AssociatorRow REMOTE_FCIP_PORT_ROWS[] = {
    {"KESTO_SANFCIPEndpoint", LINK_BY_REMOTE_ADDRESS, fcip_endpoint()},
};
constexpr AssociatorRow REMOTE_IP_ACCESS_POINT_ROWS[] = {
    {"KESTO_SANIPEndpoint", LINK_BY_REMOTE_ADDRESS, ip_endpoint()},
};
constexpr AssociatorRow REMOTE_TCP_PORT_ROWS[] = {
    {"KESTO_SANTCPEndpoint", LINK_BY_REMOTE_IF_INDEX, tcp_endpoint()},
};
constexpr AssociatorRow LAN_ENDPOINT_ROWS[] = {
    {"KESTO_IPEthernetEndpoint", LINK_BY_ETHERNET_IF_INDEX, ip_endpoint()},
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, ETHERNET_PORT_OF_LAN},
    {"CIM_HostedAccessPoint", LINK_BY_IF_INDEX, fcip_endpoint()},
};
constexpr AssociatorRow FCIP_SETTINGS_ROWS[] = {
    {"KESTO_FCIPElementSettingData", LINK_BY_IF_INDEX, fcip_endpoint()},
};
constexpr AssociatorRow IP_SETTINGS_ROWS[] = {
    {"KESTO_IPElementSettingData", LINK_BY_IF_INDEX, ip_endpoint()},
};
constexpr AssociatorRow TCP_SETTINGS_ROWS[] = {
    {"KESTO_TCPElementSettingData", LINK_BY_IF_INDEX, tcp_endpoint()},
};
constexpr AssociatorRow IP_STATISTICS_ROWS[] = {
    {"KESTO_IPEndPointStatisticalData", LINK_BY_IF_INDEX, ip_endpoint()},
};
constexpr AssociatorRow TCP_STATISTICS_ROWS[] = {
    {"KESTO_TCPEndPointStatisticalData", LINK_BY_IF_INDEX, tcp_endpoint()},
};
constexpr AssociatorRow TCP_STATISTICAL_DATA_ROWS[] = {
    {"KESTO_TCPEndPointStatistics", LINK_BY_ENTITY, TCP_ENDPOINT_AS_INSTANCE},
};
constexpr AssociatorRow PROFILE_ROWS[] = {
    {"KESTO_FCIPPEBasedOn", LINK_BY_ENTITY, fcip_endpoint()},
};

// The names know the statistics by the name of their class, the instances by that of the association.
constexpr AssociatorRow ETHERNET_PORT_NAME_ROWS[] = {
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, lan_endpoint_of_key()},
    {"KESTO_EthernetPortStatistics", NO_LINK, port_statistics(), port_of_key_if_known},
};
constexpr AssociatorRow ETHERNET_PORT_INSTANCE_ROWS[] = {
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, lan_endpoint_of_key()},
    {"KESTO_EthernetPortStatisticalData", NO_LINK, port_statistics(), port_of_key_if_known},
};
constexpr AssociatorRow PORT_STATISTICS_ROWS[] = {
    {"KESTO_EthernetPortStatisticalData", NO_LINK, ethernet_port(), port_of_key_if_known},
};

struct AssociatorRequest {
    const char* keyValue;
    const char* assocClass;
    const char* nameSpace;
    const char** properties; // null where paths are asked for
    const CMPIResult* result;
};

const AssociatorRow* row_for(std::span<const AssociatorRow> rows, const char* assocClass) {
    for (const AssociatorRow& row : rows) {
        if (row.assocClass == nullptr || strcasecmp(assocClass, row.assocClass) == 0) return &row;
    }
    return nullptr;
}

// make(end, source) gives the path or the instance. What cannot be made is left out.
template <typename Make>
void take_row(const AssociatorRow& row, const AssociatorRequest& request, Make make) {
    Source source{request.keyValue, request.nameSpace, request.properties, request.result};
    if (!look_link_up(source, row.mode)) return;
    if (row.port != nullptr && !row.port(source)) return;
    hand_over_built(request.result, make(row.far, source));
}

// What all traversals do.
template <typename Make>
int traverse(const char* function, const Traversal& traversal, const AssociatorRequest& request, Make make) {
    trace_entering(function);
    if (traversal.tracesAssociationClass) {
        std::printf("Association Class %s \n", request.assocClass != nullptr ? request.assocClass : "(null)");
    }
    if (request.assocClass == nullptr) return 0;
    for (const AssociatorRow* row = row_for(traversal.rows, request.assocClass); row != nullptr;
         row = row->then) {
        take_row(*row, request, make);
    }
    trace_exiting(function);
    return 0;
}

constexpr Traversal IP_ENDPOINT_NAMES{IP_ENDPOINT_NAME_ROWS, true};
constexpr Traversal IP_ENDPOINT_INSTANCES{IP_ENDPOINT_INSTANCE_ROWS, true};

} // namespace

// The exported functions. Result class and roles are the CIM server's business.
#define ASSOCIATOR_NAMES(function, traversal)                                                         \
    int function(const char* keyValue, const char* assocClass, const char*, const char*, const char*, \
                 const CMPIResult* result, const char* nameSpace) {                                   \
        return traverse(__func__, {traversal}, {keyValue, assocClass, nameSpace, nullptr, result},    \
                        make_path);                                                                   \
    }
#define ASSOCIATORS(function, traversal)                                                              \
    int function(const char* keyValue, const char* assocClass, const char*, const char*, const char*, \
                 const char** properties, const CMPIResult* result, const char* nameSpace) {          \
        return traverse(__func__, {traversal}, {keyValue, assocClass, nameSpace, properties, result}, \
                        make_instance);                                                               \
    }

ASSOCIATOR_NAMES(get_fcip_pe_associator_names, FCIP_ENDPOINT_ROWS)
ASSOCIATORS(get_fcip_pe_associators, FCIP_ENDPOINT_ROWS)
ASSOCIATOR_NAMES(get_ip_pe_associator_names, IP_ENDPOINT_NAMES)
ASSOCIATORS(get_ip_pe_associators, IP_ENDPOINT_INSTANCES)
ASSOCIATOR_NAMES(get_tcp_pe_associator_names, TCP_ENDPOINT_NAME_ROWS)
ASSOCIATORS(get_tcp_pe_associators, TCP_ENDPOINT_INSTANCE_ROWS)
ASSOCIATOR_NAMES(get_fcip_remote_pe_associator_names, REMOTE_FCIP_PORT_ROWS)
ASSOCIATORS(get_fcip_remote_pe_associators, REMOTE_FCIP_PORT_ROWS)
ASSOCIATOR_NAMES(get_ip_remote_pe_associator_names, REMOTE_IP_ACCESS_POINT_ROWS)
ASSOCIATORS(get_ip_remote_pe_associators, REMOTE_IP_ACCESS_POINT_ROWS)
ASSOCIATOR_NAMES(get_tcp_remote_pe_associator_names, REMOTE_TCP_PORT_ROWS)
ASSOCIATORS(get_tcp_remote_pe_associators, REMOTE_TCP_PORT_ROWS)
ASSOCIATOR_NAMES(get_lan_endpoint_associator_names, LAN_ENDPOINT_ROWS)
ASSOCIATORS(get_lan_endpoint_associators, LAN_ENDPOINT_ROWS)
ASSOCIATOR_NAMES(get_fcip_settings_associator_names, FCIP_SETTINGS_ROWS)
ASSOCIATORS(get_fcip_settings_associators, FCIP_SETTINGS_ROWS)
ASSOCIATOR_NAMES(get_ip_setting_associator_names, IP_SETTINGS_ROWS)
ASSOCIATORS(get_ip_setting_associators, IP_SETTINGS_ROWS)
ASSOCIATOR_NAMES(get_tcp_setting_associator_names, TCP_SETTINGS_ROWS)
ASSOCIATORS(get_tcp_setting_associators, TCP_SETTINGS_ROWS)
ASSOCIATOR_NAMES(get_ip_stat_associator_names, IP_STATISTICS_ROWS)
ASSOCIATORS(get_ip_stat_associators, IP_STATISTICS_ROWS)
ASSOCIATOR_NAMES(get_tcp_stat_associator_names, TCP_STATISTICS_ROWS)
ASSOCIATORS(get_tcp_stat_associators, TCP_STATISTICS_ROWS)
ASSOCIATOR_NAMES(get_tcp_statical_data_associator_names, TCP_STATISTICAL_DATA_ROWS)
ASSOCIATORS(get_tcp_statical_data_associators, TCP_STATISTICAL_DATA_ROWS)
ASSOCIATOR_NAMES(get_profile_associator_names, PROFILE_ROWS)
ASSOCIATORS(get_profile_associators, PROFILE_ROWS)
ASSOCIATOR_NAMES(get_eth_port_associator_names, ETHERNET_PORT_NAME_ROWS)
ASSOCIATORS(get_eth_port_associators, ETHERNET_PORT_INSTANCE_ROWS)
ASSOCIATOR_NAMES(get_eth_stat_associator_names, PORT_STATISTICS_ROWS)
ASSOCIATORS(get_eth_stat_associators, PORT_STATISTICS_ROWS)
