// References and reference names: the associations that the source takes part in, each made of two end paths.
//
// Each source class has a table of branches, and names and instances share it. The association class asked
// for selects a branch, the source's key is looked up in the branch's mode, the two ends are made in the
// order in which the association takes them, and its family's builder ties them together.
#include <strings.h>

#include <cstdio>

#include "assoc/ends.h"
#include "assoc/families.h"
#include "include/class_table.h"
#include "include/classes.h"
#include "include/traversal.h"
#include "platform/fcip_config.h"
#include "platform/platform_services.h"
#include "provider/provider.h"

namespace {

struct ReferenceEnd {
    const char* className;
    PathMaker* path;
};

// The association bears the name that the client asked for, as the client spelled it.
constexpr const char* OWN = nullptr;

// Where a branch gets its port from, and what comes of a port that is missing.
enum class MissingPort { Fails, GivesNothing };
struct PortSource {
    PortFetch* fetch; // null: the branch needs no port
    MissingPort missing;
};

struct ReferenceBranch {
    const char* className; // the association class tested
    int mode;
    PortSource port;
    const AssociationFamily* family;
    const char* name;
    ReferenceEnd end1;
    ReferenceEnd end2;
};

constexpr PortSource NO_PORT{nullptr, MissingPort::Fails};
constexpr PortSource FC_INTERFACE{interface_of_link, MissingPort::Fails};
constexpr PortSource ETHERNET_OF_LINK{ethernet_port_of_link, MissingPort::Fails};
constexpr PortSource ETHERNET_OF_KEY{port_of_key, MissingPort::Fails};
constexpr PortSource ETHERNET_OF_LAN_KEY{port_of_lan_key, MissingPort::GivesNothing};

// The FC port's class name and namespace go in this order here; the platform tells them apart.
CMPIObjectPath* fc_port_path(const Branch& branch, const char* className) {
    return fcport_fill_reference_pm(branch.nameSpace, className, branch.port.get(), _broker);
}

CMPIObjectPath* lan_endpoint_path_of_port(const Branch& branch, const char* className) {
    return lan_endpoint_fill_reference(className, branch.nameSpace, branch.portIfIndex);
}

// How each end is made. The class literals stand in the tables: their spelling varies, and clients see it.
constexpr PathMaker* FCIP_ENDPOINT = link_path<fcip_pe_fill_reference>;
constexpr PathMaker* TCP_ENDPOINT = link_path<tcp_pe_fill_reference>;
constexpr PathMaker* IP_ENDPOINT = link_path<ip_pe_fill_reference>;
constexpr PathMaker* REMOTE_FCIP_PORT = link_path<fcip_remote_pe_fill_reference>;
constexpr PathMaker* REMOTE_IP_ACCESS_POINT = link_path<ip_remote_pe_fill_reference>;
constexpr PathMaker* REMOTE_TCP_PORT = link_path<tcp_remote_pe_fill_reference>;
constexpr PathMaker* FCIP_SETTINGS = link_path<fcip_settings_fill_reference>;
constexpr PathMaker* IP_SETTINGS = link_path<ip_settings_fill_reference>;
constexpr PathMaker* TCP_SETTINGS = link_path<tcp_settings_fill_reference>;
constexpr PathMaker* STATISTICS = link_path<stat_fill_reference>;
constexpr PathMaker* PROFILE_OF_LINK = link_path<profile_of_link>;
constexpr PathMaker* LAN_ENDPOINT_OF_LINK = link_path<lan_endpoint_of_link>;
constexpr ReferenceEnd HOSTING_SYSTEM{LOGICAL_COMPUTER_SYSTEM, hosting_system_path};

// clang-format off
constexpr ReferenceBranch FCIP_PE[] = {
    {"KESTO_FCIPElementSettingData", M1, NO_PORT, &MANAGED_SETTING, "KESTO_FCIPElementSettingData", {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}, {"KESTO_FCIPSettings", FCIP_SETTINGS}},
    {"KESTO_FCIPTCPEndpoint", M1, NO_PORT, &REALIZE, "KESTO_FCIPTCPEndpoint", {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}, {"KESTO_TCPProtocolEndpoint", TCP_ENDPOINT}},
    {"KESTO_SANFCIPEndpoint", M1, NO_PORT, &REALIZE, "KESTO_SANFCIPEndpoint", {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}, {"KESTO_RemoteFCIPPort", REMOTE_FCIP_PORT}},
    {"KESTO_FCPortProtocolEndPoint", M1, FC_INTERFACE, &REALIZE, "KESTO_FCPortProtocolEndPoint", {"KESTO_FCPort", fc_port_path}, {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}},
    {"KESTO_FCIPPEBasedOn", M1, NO_PORT, &GROUP_PART, "KESTO_FCIPPEBasedOn", {"KESTO_FCIPProfile", PROFILE_OF_LINK}, {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}},
    {"KESTO_SwitchHostedFCIPAccessPoint", M1, NO_PORT, &REALIZE, "KESTO_SwitchHostedFCIPAccessPoint", HOSTING_SYSTEM, {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}},
};

constexpr ReferenceBranch IP_PE[] = {
    {"KESTO_IPElementSettingData", M2, NO_PORT, &MANAGED_SETTING, "KESTO_IPElementSettingData", {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}, {"KESTO_IPSettings", IP_SETTINGS}},
    {"KESTO_IPEndPointStatisticalData", M2, NO_PORT, &MANAGED_STATS, OWN, {"KESTO_IPEndpointStatistics", STATISTICS}, {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}},
    {"KESTO_TCPIPEndpoint", M2, NO_PORT, &REALIZE, OWN, {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}, {"KESTO_TCPProtocolEndpoint", TCP_ENDPOINT}},
    {"KESTO_IPEthernetEndpoint", M2, ETHERNET_OF_LINK, &REALIZE, OWN, {"KESTO_EthernetPort", port_path}, {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}},
    {"KESTO_SwitchHostedIPAccessPoint", M2, NO_PORT, &REALIZE, OWN, {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}, HOSTING_SYSTEM},
    {"KESTO_SANIpEndPoint", M2, NO_PORT, &REALIZE, OWN, {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}, {"KESTO_RemoteIPServiceAccessPoint", REMOTE_IP_ACCESS_POINT}},
};

// The FCIP association is known here by a name of its own.
constexpr ReferenceBranch TCP_PE[] = {
    {"KESTO_TCPEndPointStatisticalData", M2, NO_PORT, &MANAGED_STATS, "KESTO_TCPEndPointStatisticalData", {"KESTO_TCPProtocolEndPoint", TCP_ENDPOINT}, {"KESTO_TCPEndPointStatistics", STATISTICS}},
    {"KESTO_FCIPTCPEnpoint", M2, NO_PORT, &REALIZE, "KESTO_FCIPTCPEndpoint", {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}, {"KESTO_TCPProtocolEndPoint", TCP_ENDPOINT}},
    {"KESTO_TCPIPEndpoint", M2, NO_PORT, &REALIZE, OWN, {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}, {"KESTO_TCPProtocolEndPoint", TCP_ENDPOINT}},
    {"KESTO_SwitchHostedTCPAccessPoint", M2, NO_PORT, &REALIZE, OWN, {"KESTO_TCPProtocolEndpoint", TCP_ENDPOINT}, HOSTING_SYSTEM},
    {"KESTO_SANTCPEndpoint", M2, NO_PORT, &REALIZE, OWN, {"KESTO_TCPProtocolEndpoint", TCP_ENDPOINT}, {"KESTO_RemoteTCPPort", REMOTE_TCP_PORT}},
    {"KESTO_TCPElementSettingData", M3, NO_PORT, &MANAGED_SETTING, OWN, {"KESTO_TCPProtocolEndpoint", TCP_ENDPOINT}, {"KESTO_TCPSettings", TCP_SETTINGS}},
};

constexpr ReferenceBranch FCIP_REMOTE_PE[] = {
    {"KESTO_SANFCIPEndpoint", M6, NO_PORT, &REALIZE, OWN, {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}, {"KESTO_RemoteFCIPPort", REMOTE_FCIP_PORT}},
};
constexpr ReferenceBranch IP_REMOTE_PE[] = {
    {"KESTO_SANIPEndPoint", M6, NO_PORT, &REALIZE, OWN, {"KESTO_IPProtocolEndpoint", IP_ENDPOINT}, {"KESTO_RemoteIPServiceAccessPoint", REMOTE_IP_ACCESS_POINT}},
};
// Unlike the associators, which skip the 0 that begins this key, the references take it for the if-index.
constexpr ReferenceBranch TCP_REMOTE_PE[] = {
    {"KESTO_SANTCPEndpoint", M2, NO_PORT, &REALIZE, OWN, {"KESTO_TCPProtocolEndpoint", TCP_ENDPOINT}, {"KESTO_RemoteTCPPort", REMOTE_TCP_PORT}},
};

constexpr ReferenceBranch LAN_ENDPOINT[] = {
    {"KESTO_IPEthernetEndpoint", M4, NO_PORT, &REALIZE, OWN, {"KESTO_IPProtocolEndPoint", IP_ENDPOINT}, {"KESTO_LANEndpoint", lan_endpoint_path_of_key}},
    {"KESTO_EthernetPortProtocolEndpoint", NO_LINK, ETHERNET_OF_LAN_KEY, &REALIZE, OWN, {"KESTO_EthernetPort", port_path}, {"KESTO_LANEndpoint", lan_endpoint_path_of_port}},
    {"CIM_HostedAccessPoint", M3, NO_PORT, &REALIZE, "CIM_HostedAccessPoint", {"KESTO_FCIPProtocolEndPoint", FCIP_ENDPOINT}, {"KESTO_LANEndpoint", LAN_ENDPOINT_OF_LINK}},
};

constexpr ReferenceBranch FCIP_SETTINGS_BRANCHES[] = {
    {"KESTO_FCIPElementSettingData", M3, NO_PORT, &MANAGED_SETTING, "KESTO_FCIPElementSettingData", {"KESTO_FCIPProtocolEndPoint", FCIP_ENDPOINT}, {"KESTO_FCIPSettings", FCIP_SETTINGS}},
};
constexpr ReferenceBranch IP_SETTINGS_BRANCHES[] = {
    {"KESTO_IPElementSettingData", M3, NO_PORT, &MANAGED_SETTING, "KESTO_IPElementSettingData", {"KESTO_IPProtocolEndPoint", IP_ENDPOINT}, {"KESTO_IPSettings", IP_SETTINGS}},
};
constexpr ReferenceBranch TCP_SETTINGS_BRANCHES[] = {
    {"KESTO_TCPElementSettingData", M3, NO_PORT, &MANAGED_SETTING, OWN, {"KESTO_TCPProtocolEndPoint", TCP_ENDPOINT}, {"KESTO_TCPSettings", TCP_SETTINGS}},
};
constexpr ReferenceBranch IP_STAT[] = {
    {"KESTO_IPEndpointStatisticalData", M3, NO_PORT, &MANAGED_STATS, "KESTO_IPEndpointStatisticalData", {"KESTO_IPProtocolEndPoint", IP_ENDPOINT}, {"KESTO_IPEndpointStatistics", STATISTICS}},
};
constexpr ReferenceBranch TCP_STAT[] = {
    {"KESTO_TCPEndpointStatisticalData", M3, NO_PORT, &MANAGED_STATS, "KESTO_TCPEndpointStatisticalData", {"KESTO_TCPProtocolEndpoint", TCP_ENDPOINT}, {"KESTO_TCPEndpointStatistics", STATISTICS}},
};
constexpr ReferenceBranch PROFILE[] = {
    {"KESTO_FCIPPEBasedOn", M5, NO_PORT, &GROUP_PART, "KESTO_FCIPPEBasedOn", {"KESTO_FCIPProfile", PROFILE_OF_LINK}, {"KESTO_FCIPProtocolEndpoint", FCIP_ENDPOINT}},
};

// The association of a port with its endpoint goes by the name of the IP settings' association.
constexpr ReferenceBranch ETH_PORT[] = {
    {"KESTO_EthernetPortProtocolEndpoint", M2, ETHERNET_OF_LINK, &REALIZE, "KESTO_IPElementSettingData", {"KESTO_EthernetPort", port_path}, {"KESTO_LANEndpoint", lan_endpoint_path_of_key}},
    {"KESTO_EthernetPortStatisticalData", M2, ETHERNET_OF_LINK, &MANAGED_STATS, "KESTO_EthernetPortStatisticalData", {"KESTO_EthernetPort", port_path}, {"KESTO_EthernetPortStatistics", port_statistics_path}},
};
constexpr ReferenceBranch ETH_STAT[] = {
    {"KESTO_EthernetPortStatisticalData", NO_LINK, ETHERNET_OF_KEY, &MANAGED_STATS, "KESTO_EthernetPortStatisticalData", {"KESTO_EthernetPort", port_path}, {"KESTO_EthernetPortStatistics", port_statistics_path}},
};
// clang-format on

// The words around the association class in a member's trace; none without a first.
struct Trace {
    const char* before;
    const char* behind;
};
constexpr Trace PLAIN{"Result Class :", " \n"};
constexpr Trace STARRED{" ****** Result Class :", "  ********** \n"};
constexpr Trace NARROW{"Result Class : ", "\n"};
constexpr Trace SILENT{nullptr, nullptr};

// When a member looks whether both ends could be made.
enum class EndTest { BeforeBuilding, BehindBuilding, Never };

struct ReferenceMember {
    std::span<const ReferenceBranch> branches;
    Trace trace;
    EndTest endTest = EndTest::BeforeBuilding;
};

// Two objects of a family, by what the operation asks for.
CMPIObjectPath* make_name(const AssociationFamily& family, const char* className, const char* nameSpace,
                          const CMPIObjectPath* end1, const CMPIObjectPath* end2) {
    return family.fill(className, nameSpace, end1, end2, _broker);
}
CMPIInstance* make_instance(const AssociationFamily& family, const char* className, const char* nameSpace,
                            const CMPIObjectPath* end1, const CMPIObjectPath* end2) {
    return family.build(className, nameSpace, end1, end2);
}

void release(CMPIObjectPath* path) {
    if (is_usable(path)) path->ft->release(path);
}

// Returns the association of one branch: 0, or -1 when an end is missing.
template <typename Make>
int take_branch(const ReferenceBranch& branch, EndTest endTest, const char* keyValue, const char* assocClass,
                const CMPIResult* result, const char* nameSpace, Make make) {
    Branch at{keyValue, nameSpace, nullptr, result};
    if (!look_link_up(at, branch.mode)) return 0;
    if (branch.port.fetch != nullptr && !branch.port.fetch(at)) {
        return branch.port.missing == MissingPort::Fails ? -1 : 0;
    }
    CMPIObjectPath* end1 = branch.end1.path(at, branch.end1.className);
    CMPIObjectPath* end2 = branch.end2.path(at, branch.end2.className);
    const bool incomplete = endTest != EndTest::Never && (!is_object(end1) || !is_object(end2));
    const char* name = branch.name != OWN ? branch.name : assocClass;
    if (!incomplete || endTest == EndTest::BehindBuilding) {
        auto* association = make(*branch.family, name, nameSpace, end1, end2);
        if (!incomplete) hand_over(result, association);
    }
    if (!incomplete) return 0;
    release(end1);
    release(end2);
    return -1;
}

// The frame of all members. A NULL association class matches nothing.
template <typename Make>
int traverse(const char* function, const ReferenceMember& member, const char* keyValue,
             const char* assocClass, const CMPIResult* result, const char* nameSpace, Make make) {
    trace_entering(function);
    if (assocClass == nullptr) return 0;
    const ReferenceBranch* branch = find_class(member.branches, assocClass);
    if (member.trace.before != nullptr) {
        std::printf("%s%s%s", member.trace.before, assocClass, member.trace.behind);
    }
    if (branch != nullptr &&
        take_branch(*branch, member.endTest, keyValue, assocClass, result, nameSpace, make) != 0) {
        return -1;
    }
    trace_exiting(function);
    return 0;
}

constexpr ReferenceMember FCIP_PE_MEMBER{FCIP_PE, STARRED};
constexpr ReferenceMember IP_PE_MEMBER{IP_PE, PLAIN};
constexpr ReferenceMember TCP_PE_MEMBER{TCP_PE, PLAIN};
constexpr ReferenceMember FCIP_REMOTE_PE_MEMBER{FCIP_REMOTE_PE, SILENT};
constexpr ReferenceMember FCIP_REMOTE_PE_NAMES_MEMBER{FCIP_REMOTE_PE, SILENT, EndTest::BehindBuilding};
constexpr ReferenceMember IP_REMOTE_PE_MEMBER{IP_REMOTE_PE, PLAIN};
constexpr ReferenceMember TCP_REMOTE_PE_MEMBER{TCP_REMOTE_PE, PLAIN};
constexpr ReferenceMember LAN_ENDPOINT_MEMBER{LAN_ENDPOINT, PLAIN};
constexpr ReferenceMember FCIP_SETTINGS_MEMBER{FCIP_SETTINGS_BRANCHES, PLAIN};
constexpr ReferenceMember IP_SETTINGS_NAMES_MEMBER{IP_SETTINGS_BRANCHES, PLAIN};
constexpr ReferenceMember IP_SETTINGS_MEMBER{IP_SETTINGS_BRANCHES, PLAIN, EndTest::Never};
constexpr ReferenceMember TCP_SETTINGS_MEMBER{TCP_SETTINGS_BRANCHES, PLAIN};
constexpr ReferenceMember IP_STAT_MEMBER{IP_STAT, SILENT};
constexpr ReferenceMember TCP_STAT_MEMBER{TCP_STAT, PLAIN};
constexpr ReferenceMember PROFILE_MEMBER{PROFILE, PLAIN};
constexpr ReferenceMember ETH_PORT_MEMBER{ETH_PORT, PLAIN};
constexpr ReferenceMember ETH_STAT_MEMBER{ETH_STAT, NARROW};

} // namespace

// The members. The role is the CIM server's business, and associations have no property filter.
#define REFERENCE_NAMES(function, member)                                                             \
    int function(const char* keyValue, const char* assocClass, const char*, const CMPIResult* result, \
                 const char* nameSpace) {                                                             \
        return traverse(__func__, member, keyValue, assocClass, result, nameSpace, make_name);        \
    }
#define REFERENCES(function, member)                                                               \
    int function(const char* keyValue, const char* assocClass, const char*, const char**,          \
                 const CMPIResult* result, const char* nameSpace) {                                \
        return traverse(__func__, member, keyValue, assocClass, result, nameSpace, make_instance); \
    }

REFERENCE_NAMES(get_fcip_pe_reference_names, FCIP_PE_MEMBER)
REFERENCES(get_fcip_pe_references, FCIP_PE_MEMBER)
REFERENCE_NAMES(get_ip_pe_reference_names, IP_PE_MEMBER)
REFERENCES(get_ip_pe_references, IP_PE_MEMBER)
REFERENCE_NAMES(get_tcp_pe_reference_names, TCP_PE_MEMBER)
REFERENCES(get_tcp_pe_references, TCP_PE_MEMBER)
REFERENCE_NAMES(get_fcip_remote_pe_reference_names, FCIP_REMOTE_PE_NAMES_MEMBER)
REFERENCES(get_fcip_remote_pe_references, FCIP_REMOTE_PE_MEMBER)
REFERENCE_NAMES(get_ip_remote_pe_reference_names, IP_REMOTE_PE_MEMBER)
REFERENCES(get_ip_remote_pe_references, IP_REMOTE_PE_MEMBER)
REFERENCE_NAMES(get_tcp_remote_pe_reference_names, TCP_REMOTE_PE_MEMBER)
REFERENCES(get_tcp_remote_pe_references, TCP_REMOTE_PE_MEMBER)
REFERENCE_NAMES(get_lan_endpoint_reference_names, LAN_ENDPOINT_MEMBER)
REFERENCES(get_lan_endpoint_references, LAN_ENDPOINT_MEMBER)
REFERENCE_NAMES(get_fcip_settings_reference_names, FCIP_SETTINGS_MEMBER)
REFERENCES(get_fcip_settings_references, FCIP_SETTINGS_MEMBER)
REFERENCE_NAMES(get_ip_settings_reference_names, IP_SETTINGS_NAMES_MEMBER)
REFERENCES(get_ip_settings_references, IP_SETTINGS_MEMBER)
REFERENCE_NAMES(get_tcp_settings_reference_names, TCP_SETTINGS_MEMBER)
REFERENCES(get_tcp_settings_references, TCP_SETTINGS_MEMBER)
REFERENCE_NAMES(get_ip_stat_reference_names, IP_STAT_MEMBER)
REFERENCES(get_ip_stat_references, IP_STAT_MEMBER)
REFERENCE_NAMES(get_tcp_stat_reference_names, TCP_STAT_MEMBER)
REFERENCES(get_tcp_stat_references, TCP_STAT_MEMBER)
REFERENCE_NAMES(get_profile_reference_names, PROFILE_MEMBER)
REFERENCES(get_profile_references, PROFILE_MEMBER)
REFERENCE_NAMES(get_eth_port_reference_names, ETH_PORT_MEMBER)
REFERENCES(get_eth_port_references, ETH_PORT_MEMBER)
REFERENCE_NAMES(get_eth_stat_reference_names, ETH_STAT_MEMBER)
REFERENCES(get_eth_stat_references, ETH_STAT_MEMBER)
