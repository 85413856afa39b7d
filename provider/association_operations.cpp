// The four operations of the association interface. Each is a route from the source object's class to the
// traversal function that knows its associations. The four routes differ, and are meant to.
#include <cstdio>

#include "common/class_table.h"
#include "common/trace.h"
#include "include/traversal.h"
#include "provider/provider.h"
#include "provider/request.h"
#include "provider/request_key.h"

namespace {

template <typename Member>
struct Route {
    const char* className;
    Member* traverse; // null: answered with nothing
};

// The remote ends have no traversal of their own here: they take that of the IP or the TCP endpoint.
constexpr Route<ReferenceNamesFn> REFERENCE_NAME_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_fcip_pe_reference_names},
    {"KESTO_RemoteFCIPPort", get_ip_pe_reference_names},
    {"KESTO_IPProtocolEndPoint", get_ip_pe_reference_names},
    {"KESTO_RemoteIPServiceAccessPoint", get_ip_pe_reference_names},
    {"KESTO_TCPProtocolEndPoint", get_tcp_pe_reference_names},
    {"KESTO_RemoteTCPPort", get_tcp_pe_reference_names},
    {"KESTO_LanEndPoint", get_lan_endpoint_reference_names},
    {"KESTO_IPEndPointStatistics", get_ip_stat_reference_names},
    {"KESTO_TCPEndPointStatistics", get_tcp_stat_reference_names},
    {"KESTO_FCIPSettings", get_fcip_settings_reference_names},
    {"KESTO_IPSettings", get_ip_settings_reference_names},
    {"KESTO_TCPSettings", get_tcp_settings_reference_names},
    {"KESTO_EthernetPort", get_eth_port_reference_names},
    {"KESTO_EthernetPortStatistics", get_eth_stat_reference_names},
    {"KESTO_LogicalComputerSystem", nullptr},
    {"KESTO_FCIPProfile", get_profile_reference_names},
};

constexpr Route<ReferencesFn> REFERENCE_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_fcip_pe_references},
    {"KESTO_RemoteFCIPPort", get_fcip_remote_pe_references},
    {"KESTO_IPProtocolEndPoint", get_ip_pe_references},
    {"KESTO_RemoteIPServiceAccessPoint", get_ip_remote_pe_references},
    {"KESTO_TCPProtocolEndPoint", get_tcp_pe_references},
    {"KESTO_RemoteTCPPort", get_tcp_remote_pe_references},
    {"KESTO_FCIPSettings", get_fcip_settings_references},
    {"KESTO_IPSettings", get_ip_settings_references},
    {"KESTO_TCPSettings", get_tcp_settings_references},
    {"KESTO_FCIPProfile", get_profile_references},
    {"KESTO_LanEndPoint", get_lan_endpoint_references},
    {"KESTO_IPEndPointStatistics", get_ip_stat_references},
    {"KESTO_TCPEndPointStatistics", get_tcp_stat_references},
    {"KESTO_EthernetPort", get_eth_port_references},
    {"KESTO_EthernetPortStatistics", get_eth_stat_references},
};

constexpr Route<AssociatorNamesFn> ASSOCIATOR_NAME_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_fcip_pe_associator_names},
    {"KESTO_RemoteFCIPPort", get_fcip_remote_pe_associator_names},
    {"KESTO_RemoteIPServiceAccessPoint", get_ip_remote_pe_associator_names},
    {"KESTO_RemoteTCPPort", get_tcp_remote_pe_associator_names},
    {"KESTO_IPProtocolEndPoint", get_ip_pe_associator_names},
    {"KESTO_TCPProtocolEndPoint", get_tcp_pe_associator_names},
    {"KESTO_LanEndPoint", get_lan_endpoint_associator_names},
    {"KESTO_FCIPSettings", get_fcip_settings_associator_names},
    {"KESTO_IPSettings", get_ip_setting_associator_names},
    {"KESTO_TCPSettings", get_tcp_setting_associator_names},
    {"KESTO_EthernetPort", get_eth_port_associator_names},
    {"KESTO_EthernetPortStatistics", get_eth_stat_associator_names},
    {"KESTO_IPEndPointStatistics", get_ip_stat_associator_names},
    {"KESTO_TCPEndPointStatistics", get_tcp_stat_associator_names},
    {"KESTO_FCIPProfile", get_profile_associator_names},
};

constexpr Route<AssociatorsFn> ASSOCIATOR_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_fcip_pe_associators},
    {"KESTO_RemoteFCIPPort", get_fcip_remote_pe_associators},
    {"KESTO_IPProtocolEndPoint", get_ip_pe_associators},
    {"KESTO_RemoteIPServiceAccessPoint", get_ip_remote_pe_associators},
    {"KESTO_TCPProtocolEndPoint", get_tcp_pe_associators},
    {"KESTO_RemoteTCPPort", get_tcp_remote_pe_associators},
    {"KESTO_LanEndPoint", get_lan_endpoint_associators},
    {"KESTO_FCIPSettings", get_fcip_settings_associators},
    {"KESTO_IPSettings", get_ip_setting_associators},
    {"KESTO_TCPSettings", get_tcp_setting_associators},
    {"KESTO_EthernetPort", get_eth_port_associators},
    {"KESTO_EthernetPortStatistics", get_eth_stat_associators},
    {"KESTO_IPEndPointStatistics", get_ip_stat_associators},
    {"KESTO_TCPEndPointStatistics", get_tcp_stat_associators},
    // Never reached: paths of this class have no key that is accepted.
    {"KESTO_TCPStatisticalData", get_tcp_statical_data_associators},
    {"KESTO_FCIPProfile", get_profile_associators},
};

// Calls traverse(member, nameSpace) for the member that serves the class, if any.
template <typename Member, std::size_t Rows, typename Traverse>
void route(const Route<Member> (&routes)[Rows], const char* className, const CMPIObjectPath* op,
           Traverse traverse) {
    const Route<Member>* found = find_class(routes, className);
    if (found != nullptr && found->traverse != nullptr) traverse(found->traverse, name_space_of(op));
}

} // namespace

CMPIStatus FCIP_ReferenceNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                               const CMPIResult* result, const CMPIObjectPath* op, const char* resultClass,
                               const char* role) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    // Without a key the traversal runs all the same, with an empty one that names no instance.
    if (find_request_key(op, className, " \n", &key) == 0) {
        std::fputs("references names can't find key\n", stdout);
    }
    const char* const function = __func__;
    with_provider_lock([&] {
        route(REFERENCE_NAME_ROUTES, className, op, [&](ReferenceNamesFn* traverse, const char* nameSpace) {
            traverse(key.value, resultClass, role, result, nameSpace);
        });
        trace_exiting(function); // this operation alone traces its exit before it releases the lock
    });
    return ok();
}

CMPIStatus FCIP_References(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                           const CMPIResult* result, const CMPIObjectPath* op, const char* resultClass,
                           const char* role, const char** properties) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    if (find_request_key(op, className, " \n", &key) == 0) {
        std::fputs("references can't find key\n", stdout);
    }
    with_provider_lock([&] {
        route(REFERENCE_ROUTES, className, op, [&](ReferencesFn* traverse, const char* nameSpace) {
            traverse(key.value, resultClass, role, properties, result, nameSpace);
        });
    });
    trace_exiting(__func__);
    return ok();
}

CMPIStatus FCIP_AssociatorNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                                const CMPIResult* result, const CMPIObjectPath* op, const char* assocClass,
                                const char* resultClass, const char* role, const char* resultRole) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    if (find_request_key(op, className, "\n", &key) == 0) {
        std::fputs("associator names can't find key\n", stdout);
        return invalid_key_name();
    }
    with_provider_lock([&] {
        route(ASSOCIATOR_NAME_ROUTES, className, op, [&](AssociatorNamesFn* traverse, const char* nameSpace) {
            traverse(key.value, assocClass, resultClass, role, resultRole, result, nameSpace);
        });
    });
    trace_exiting(__func__);
    return ok();
}

CMPIStatus FCIP_Associators(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                            const CMPIResult* result, const CMPIObjectPath* op, const char* assocClass,
                            const char* resultClass, const char* role, const char* resultRole,
                            const char** properties) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    if (find_request_key(op, className, "\n", &key) == 0) {
        std::fputs("associators can't find key\n", stdout);
        return invalid_key_name();
    }
    with_provider_lock([&] {
        route(ASSOCIATOR_ROUTES, className, op, [&](AssociatorsFn* traverse, const char* nameSpace) {
            traverse(key.value, assocClass, resultClass, role, resultRole, properties, result, nameSpace);
        });
    });
    trace_exiting(__func__);
    return ok();
}
