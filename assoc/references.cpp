// References and reference names: the associations that the source takes part in, each made of two end paths.
//
// Each source class has a table of rows, and names and instances share it. The association class asked for
// selects a row, the source's key is looked up in the row's mode, the two ends are made in the order in which
// the association takes them, and its family's builder ties them together.
//
// The end classes are spelled as each row has them: the spelling varies, and clients see it.
#include <cstdio>
#include <span>

#include "assoc/ends.h"
#include "assoc/families.h"
#include "assoc/source.h"
#include "common/broker.h"
#include "common/class_table.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "include/traversal.h"
#include "platform/link_key.h"
#include "platform/platform_services.h"

namespace {

// In place of a name for the association: as the client spelled the class, or as the row does.
constexpr const char* AS_ASKED = nullptr;
constexpr char AS_IN_ROW[] = "";

// What comes of a port that is missing.
enum class MissingPort { Fails, GivesNothing };

struct ReferenceRow {
    const char* className; // the association class tested
    int mode;
    const AssociationFamily* family;
    End end1;
    End end2;
    const char* name = AS_ASKED;
    PortFetch* port = nullptr; // the port that an end is made of, if any
    MissingPort missingPort = MissingPort::Fails;
};

// The words around the association class in a traversal's trace; none without a first.
struct ClassTrace {
    const char* before;
    const char* after;
};
constexpr ClassTrace PLAIN{"Result Class :", " \n"};
constexpr ClassTrace STARRED{" ****** Result Class :", "  ********** \n"};
constexpr ClassTrace NARROW{"Result Class : ", "\n"};
constexpr ClassTrace SILENT{nullptr, nullptr};

// When a traversal looks whether both ends could be made.
enum class EndTest { BeforeBuilding, AfterBuilding, Never };

// The table of a source class.
struct Traversal {
    std::span<const ReferenceRow> rows;
    ClassTrace trace = PLAIN;
    EndTest endTest = EndTest::BeforeBuilding;
};

// The namespace comes before the class name here; the platform knows the class name by its prefix.
CMPIObjectPath* fc_port_path(const Source& source, const char* className) {
    return fcport_fill_reference_pm(source.nameSpace, className, source.port.get(), _broker);
}
constexpr End FC_PORT{"KESTO_FCPort", fc_port_path};

CMPIObjectPath* lan_endpoint_path_of_port(const Source& source, const char* className) {
    return lan_endpoint_fill_reference(className, source.nameSpace, source.portIfIndex);
}
constexpr End LAN_ENDPOINT_OF_PORT{"KESTO_LANEndpoint", lan_endpoint_path_of_port};

constexpr ReferenceRow FCIP_ENDPOINT_ROWS[] = {
    {"KESTO_FCIPElementSettingData", LINK_BY_TUNNEL, &MANAGED_SETTING,
     fcip_endpoint("KESTO_FCIPProtocolEndpoint"), fcip_settings(), AS_IN_ROW},
    {"KESTO_FCIPTCPEndpoint", LINK_BY_TUNNEL, &REALIZE, fcip_endpoint("KESTO_FCIPProtocolEndpoint"),
     tcp_endpoint("KESTO_TCPProtocolEndpoint"), AS_IN_ROW},
    {"KESTO_SANFCIPEndpoint", LINK_BY_TUNNEL, &REALIZE, fcip_endpoint("KESTO_FCIPProtocolEndpoint"),
     remote_fcip_port(), AS_IN_ROW},
    {"KESTO_FCPortProtocolEndPoint", LINK_BY_TUNNEL, &REALIZE, FC_PORT,
     fcip_endpoint("KESTO_FCIPProtocolEndpoint"), AS_IN_ROW, interface_of_link},
    {"KESTO_FCIPPEBasedOn", LINK_BY_TUNNEL, &GROUP_PART, profile(),
     fcip_endpoint("KESTO_FCIPProtocolEndpoint"), AS_IN_ROW},
    {"KESTO_SwitchHostedFCIPAccessPoint", LINK_BY_TUNNEL, &REALIZE, hosting_system(),
     fcip_endpoint("KESTO_FCIPProtocolEndpoint"), AS_IN_ROW},
};

constexpr ReferenceRow IP_ENDPOINT_ROWS[] = {
    {"KESTO_IPElementSettingData", LINK_BY_IF_INDEX_TOKEN, &MANAGED_SETTING,
     ip_endpoint("KESTO_IPProtocolEndpoint"), ip_settings(), AS_IN_ROW},
    {"KESTO_IPEndPointStatisticalData", LINK_BY_IF_INDEX_TOKEN, &MANAGED_STATS,
     statistics("KESTO_IPEndpointStatistics"), ip_endpoint("KESTO_IPProtocolEndpoint")},
    {"KESTO_TCPIPEndpoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, ip_endpoint("KESTO_IPProtocolEndpoint"),
     tcp_endpoint("KESTO_TCPProtocolEndpoint")},
    {"KESTO_IPEthernetEndpoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, ethernet_port(),
     ip_endpoint("KESTO_IPProtocolEndpoint"), AS_ASKED, ethernet_port_of_link},
    {"KESTO_SwitchHostedIPAccessPoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE,
     ip_endpoint("KESTO_IPProtocolEndpoint"), hosting_system()},
    {"KESTO_SANIpEndPoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, ip_endpoint("KESTO_IPProtocolEndpoint"),
     remote_ip_access_point()},
};

// The FCIP association is known here by a name of its own.
constexpr ReferenceRow TCP_ENDPOINT_ROWS[] = {
    {"KESTO_TCPEndPointStatisticalData", LINK_BY_IF_INDEX_TOKEN, &MANAGED_STATS, tcp_endpoint(),
     statistics("KESTO_TCPEndPointStatistics"), AS_IN_ROW},
    {"KESTO_FCIPTCPEnpoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, fcip_endpoint("KESTO_FCIPProtocolEndpoint"),
     tcp_endpoint(), "KESTO_FCIPTCPEndpoint"},
    {"KESTO_TCPIPEndpoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, ip_endpoint("KESTO_IPProtocolEndpoint"),
     tcp_endpoint()},
    {"KESTO_SwitchHostedTCPAccessPoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE,
     tcp_endpoint("KESTO_TCPProtocolEndpoint"), hosting_system()},
    {"KESTO_SANTCPEndpoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, tcp_endpoint("KESTO_TCPProtocolEndpoint"),
     remote_tcp_port()},
    {"KESTO_TCPElementSettingData", LINK_BY_IF_INDEX, &MANAGED_SETTING,
     tcp_endpoint("KESTO_TCPProtocolEndpoint"), tcp_settings()},
};

constexpr ReferenceRow REMOTE_FCIP_PORT_ROWS[] = {
    {"KESTO_SANFCIPEndpoint", LINK_BY_REMOTE_ADDRESS, &REALIZE, fcip_endpoint("KESTO_FCIPProtocolEndpoint"),
     remote_fcip_port()},
};
constexpr ReferenceRow REMOTE_IP_ACCESS_POINT_ROWS[] = {
    {"KESTO_SANIPEndPoint", LINK_BY_REMOTE_ADDRESS, &REALIZE, ip_endpoint("KESTO_IPProtocolEndpoint"),
     remote_ip_access_point()},
};
// Unlike the associators, which skip the 0 that begins this key, the references take it for the if-index.
constexpr ReferenceRow REMOTE_TCP_PORT_ROWS[] = {
    {"KESTO_SANTCPEndpoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, tcp_endpoint("KESTO_TCPProtocolEndpoint"),
     remote_tcp_port()},
};

constexpr ReferenceRow LAN_ENDPOINT_ROWS[] = {
    {"KESTO_IPEthernetEndpoint", LINK_BY_ETHERNET_IF_INDEX, &REALIZE, ip_endpoint(),
     lan_endpoint_of_key("KESTO_LANEndpoint")},
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, &REALIZE, ethernet_port(), LAN_ENDPOINT_OF_PORT, AS_ASKED,
     port_of_lan_key, MissingPort::GivesNothing},
    {"CIM_HostedAccessPoint", LINK_BY_IF_INDEX, &REALIZE, fcip_endpoint(),
     lan_endpoint_of_link("KESTO_LANEndpoint"), AS_IN_ROW},
};

constexpr ReferenceRow FCIP_SETTINGS_ROWS[] = {
    {"KESTO_FCIPElementSettingData", LINK_BY_IF_INDEX, &MANAGED_SETTING, fcip_endpoint(), fcip_settings(),
     AS_IN_ROW},
};
constexpr ReferenceRow IP_SETTINGS_ROWS[] = {
    {"KESTO_IPElementSettingData", LINK_BY_IF_INDEX, &MANAGED_SETTING, ip_endpoint(), ip_settings(),
     AS_IN_ROW},
};
constexpr ReferenceRow TCP_SETTINGS_ROWS[] = {
    {"KESTO_TCPElementSettingData", LINK_BY_IF_INDEX, &MANAGED_SETTING, tcp_endpoint(), tcp_settings()},
};
constexpr ReferenceRow IP_STATISTICS_ROWS[] = {
    {"KESTO_IPEndpointStatisticalData", LINK_BY_IF_INDEX, &MANAGED_STATS, ip_endpoint(),
     statistics("KESTO_IPEndpointStatistics"), AS_IN_ROW},
};
constexpr ReferenceRow TCP_STATISTICS_ROWS[] = {
    {"KESTO_TCPEndpointStatisticalData", LINK_BY_IF_INDEX, &MANAGED_STATS,
     tcp_endpoint("KESTO_TCPProtocolEndpoint"), statistics("KESTO_TCPEndpointStatistics"), AS_IN_ROW},
};
constexpr ReferenceRow PROFILE_ROWS[] = {
    {"KESTO_FCIPPEBasedOn", LINK_BY_ENTITY, &GROUP_PART, profile(),
     fcip_endpoint("KESTO_FCIPProtocolEndpoint"), AS_IN_ROW},
};

// The association of a port with its endpoint goes by the name of the IP settings' association.
constexpr ReferenceRow ETHERNET_PORT_ROWS[] = {
    {"KESTO_EthernetPortProtocolEndpoint", LINK_BY_IF_INDEX_TOKEN, &REALIZE, ethernet_port(),
     lan_endpoint_of_key("KESTO_LANEndpoint"), "KESTO_IPElementSettingData", ethernet_port_of_link},
    {"KESTO_EthernetPortStatisticalData", LINK_BY_IF_INDEX_TOKEN, &MANAGED_STATS, ethernet_port(),
     port_statistics(), AS_IN_ROW, ethernet_port_of_link},
};
constexpr ReferenceRow PORT_STATISTICS_ROWS[] = {
    {"KESTO_EthernetPortStatisticalData", NO_LINK, &MANAGED_STATS, ethernet_port(), port_statistics(),
     AS_IN_ROW, port_of_key},
};

constexpr Traversal FCIP_ENDPOINT{FCIP_ENDPOINT_ROWS, STARRED};
constexpr Traversal IP_ENDPOINT{IP_ENDPOINT_ROWS};
constexpr Traversal TCP_ENDPOINT{TCP_ENDPOINT_ROWS};
constexpr Traversal REMOTE_FCIP_PORT{REMOTE_FCIP_PORT_ROWS, SILENT};
constexpr Traversal REMOTE_FCIP_PORT_NAMES{REMOTE_FCIP_PORT_ROWS, SILENT, EndTest::AfterBuilding};
constexpr Traversal REMOTE_IP_ACCESS_POINT{REMOTE_IP_ACCESS_POINT_ROWS};
constexpr Traversal REMOTE_TCP_PORT{REMOTE_TCP_PORT_ROWS};
constexpr Traversal LAN_ENDPOINT{LAN_ENDPOINT_ROWS};
constexpr Traversal FCIP_SETTINGS{FCIP_SETTINGS_ROWS};
constexpr Traversal IP_SETTINGS_NAMES{IP_SETTINGS_ROWS};
constexpr Traversal IP_SETTINGS{IP_SETTINGS_ROWS, PLAIN, EndTest::Never};
constexpr Traversal TCP_SETTINGS{TCP_SETTINGS_ROWS};
constexpr Traversal IP_STATISTICS{IP_STATISTICS_ROWS, SILENT};
constexpr Traversal TCP_STATISTICS{TCP_STATISTICS_ROWS};
constexpr Traversal PROFILE{PROFILE_ROWS};
constexpr Traversal ETHERNET_PORT{ETHERNET_PORT_ROWS};
constexpr Traversal PORT_STATISTICS{PORT_STATISTICS_ROWS, NARROW};

// A request to a traversal.
struct ReferenceRequest {
    const char* keyValue;
    const char* assocClass;
    const CMPIResult* result;
    const char* nameSpace;
};

const char* name_of(const ReferenceRow& row, const char* assocClass) {
    if (row.name == AS_ASKED) return assocClass;
    return row.name == AS_IN_ROW ? row.className : row.name;
}

// Ends that no association was made of. They were made for this request, and nobody else has them.
void release(CMPIObjectPath* path) {
    if (is_usable(path)) path->ft->release(path);
}

// Hands over the association of one row; associate(family, class name, namespace, ref1, ref2) makes it. 0, or
// -1 when an end is missing.
template <typename Associate>
int take_row(const ReferenceRow& row, EndTest endTest, const ReferenceRequest& request, Associate associate) {
    Source source{request.keyValue, request.nameSpace, nullptr, request.result};
    if (!look_link_up(source, row.mode)) return 0;
    if (row.port != nullptr && !row.port(source)) return row.missingPort == MissingPort::Fails ? -1 : 0;

    CMPIObjectPath* end1 = make_path(row.end1, source);
    CMPIObjectPath* end2 = make_path(row.end2, source);
    const bool complete = endTest == EndTest::Never || (is_object(end1) && is_object(end2));
    if (complete || endTest == EndTest::AfterBuilding) {
        auto* made = associate(*row.family, name_of(row, request.assocClass), request.nameSpace, end1, end2);
        if (complete) hand_over(request.result, made);
    }
    if (complete) return 0;
    release(end1);
    release(end2);
    return -1;
}

// What all traversals do. A NULL association class matches nothing.
template <typename Associate>
int traverse(const char* function, const Traversal& traversal, const ReferenceRequest& request,
             Associate associate) {
    trace_entering(function);
    if (request.assocClass == nullptr) return 0;
    const ReferenceRow* row = find_class(traversal.rows, request.assocClass);
    if (traversal.trace.before != nullptr) {
        std::printf("%s%s%s", traversal.trace.before, request.assocClass, traversal.trace.after);
    }
    if (row != nullptr && take_row(*row, traversal.endTest, request, associate) != 0) return -1;
    trace_exiting(function);
    return 0;
}

} // namespace

// The exported functions. The role is the CIM server's business, and associations have no property filter.
#define REFERENCE_NAMES(function, traversal)                                                             \
    int function(const char* keyValue, const char* assocClass, const char*, const CMPIResult* result,    \
                 const char* nameSpace) {                                                                \
        return traverse(__func__, traversal, {keyValue, assocClass, result, nameSpace}, associate_path); \
    }
#define REFERENCES(function, traversal)                                                                      \
    int function(const char* keyValue, const char* assocClass, const char*, const char**,                    \
                 const CMPIResult* result, const char* nameSpace) {                                          \
        return traverse(__func__, traversal, {keyValue, assocClass, result, nameSpace}, associate_instance); \
    }

REFERENCE_NAMES(get_fcip_pe_reference_names, FCIP_ENDPOINT)
REFERENCES(get_fcip_pe_references, FCIP_ENDPOINT)
REFERENCE_NAMES(get_ip_pe_reference_names, IP_ENDPOINT)
REFERENCES(get_ip_pe_references, IP_ENDPOINT)
REFERENCE_NAMES(get_tcp_pe_reference_names, TCP_ENDPOINT)
REFERENCES(get_tcp_pe_references, TCP_ENDPOINT)
REFERENCE_NAMES(get_fcip_remote_pe_reference_names, REMOTE_FCIP_PORT_NAMES)
REFERENCES(get_fcip_remote_pe_references, REMOTE_FCIP_PORT)
REFERENCE_NAMES(get_ip_remote_pe_reference_names, REMOTE_IP_ACCESS_POINT)
REFERENCES(get_ip_remote_pe_references, REMOTE_IP_ACCESS_POINT)
REFERENCE_NAMES(get_tcp_remote_pe_reference_names, REMOTE_TCP_PORT)
REFERENCES(get_tcp_remote_pe_references, REMOTE_TCP_PORT)
REFERENCE_NAMES(get_lan_endpoint_reference_names, LAN_ENDPOINT)
REFERENCES(get_lan_endpoint_references, LAN_ENDPOINT)
REFERENCE_NAMES(get_fcip_settings_reference_names, FCIP_SETTINGS)
REFERENCES(get_fcip_settings_references, FCIP_SETTINGS)
REFERENCE_NAMES(get_ip_settings_reference_names, IP_SETTINGS_NAMES)
REFERENCES(get_ip_settings_references, IP_SETTINGS)
REFERENCE_NAMES(get_tcp_settings_reference_names, TCP_SETTINGS)
REFERENCES(get_tcp_settings_references, TCP_SETTINGS)
REFERENCE_NAMES(get_ip_stat_reference_names, IP_STATISTICS)
REFERENCES(get_ip_stat_references, IP_STATISTICS)
REFERENCE_NAMES(get_tcp_stat_reference_names, TCP_STATISTICS)
REFERENCES(get_tcp_stat_references, TCP_STATISTICS)
REFERENCE_NAMES(get_profile_reference_names, PROFILE)
REFERENCES(get_profile_references, PROFILE)
REFERENCE_NAMES(get_eth_port_reference_names, ETHERNET_PORT)
REFERENCES(get_eth_port_references, ETHERNET_PORT)
REFERENCE_NAMES(get_eth_stat_reference_names, PORT_STATISTICS)
REFERENCES(get_eth_stat_references, PORT_STATISTICS)
