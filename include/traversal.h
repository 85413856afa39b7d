// Traversal of associations from one source object, a pair of functions for each operation and source class.
//
// keyValue is the value of the source object's key. The association class asked for selects the branch; a
// NULL or unknown one matches nothing. Result class, role and result role are taken and never looked at: the
// CIM server filters by them. Objects go straight to the result.
//
// Associator traversals always return 0. Reference traversals return 0, or -1 when an end path could not be
// made.
#ifndef KESTO_FCIP_TRAVERSAL_H
#define KESTO_FCIP_TRAVERSAL_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/export.h"

extern "C" {

// The types of the four kinds.
typedef int AssociatorNamesFn(const char* keyValue, const char* assocClass, const char* resultClass,
                              const char* role, const char* resultRole, const CMPIResult* result,
                              const char* nameSpace);
typedef int AssociatorsFn(const char* keyValue, const char* assocClass, const char* resultClass,
                          const char* role, const char* resultRole, const char** properties,
                          const CMPIResult* result, const char* nameSpace);
typedef int ReferenceNamesFn(const char* keyValue, const char* assocClass, const char* role,
                             const CMPIResult* result, const char* nameSpace);
typedef int ReferencesFn(const char* keyValue, const char* assocClass, const char* role,
                         const char** properties, const CMPIResult* result, const char* nameSpace);

// Paths of the objects at the far end.
FCIP_API AssociatorNamesFn get_fcip_pe_associator_names;
FCIP_API AssociatorNamesFn get_ip_pe_associator_names;
FCIP_API AssociatorNamesFn get_tcp_pe_associator_names;
FCIP_API AssociatorNamesFn get_fcip_remote_pe_associator_names;
FCIP_API AssociatorNamesFn get_ip_remote_pe_associator_names;
FCIP_API AssociatorNamesFn get_tcp_remote_pe_associator_names;
FCIP_API AssociatorNamesFn get_lan_endpoint_associator_names;
FCIP_API AssociatorNamesFn get_fcip_settings_associator_names;
FCIP_API AssociatorNamesFn get_ip_setting_associator_names;
FCIP_API AssociatorNamesFn get_tcp_setting_associator_names;
FCIP_API AssociatorNamesFn get_ip_stat_associator_names;
FCIP_API AssociatorNamesFn get_tcp_stat_associator_names;
FCIP_API AssociatorNamesFn get_tcp_statical_data_associator_names;
FCIP_API AssociatorNamesFn get_profile_associator_names;
FCIP_API AssociatorNamesFn get_eth_port_associator_names;
FCIP_API AssociatorNamesFn get_eth_stat_associator_names;

// The objects at the far end as instances.
FCIP_API AssociatorsFn get_fcip_pe_associators;
FCIP_API AssociatorsFn get_ip_pe_associators;
FCIP_API AssociatorsFn get_tcp_pe_associators;
FCIP_API AssociatorsFn get_fcip_remote_pe_associators;
FCIP_API AssociatorsFn get_ip_remote_pe_associators;
FCIP_API AssociatorsFn get_tcp_remote_pe_associators;
FCIP_API AssociatorsFn get_lan_endpoint_associators;
FCIP_API AssociatorsFn get_fcip_settings_associators;
FCIP_API AssociatorsFn get_ip_setting_associators;
FCIP_API AssociatorsFn get_tcp_setting_associators;
FCIP_API AssociatorsFn get_ip_stat_associators;
FCIP_API AssociatorsFn get_tcp_stat_associators;
FCIP_API AssociatorsFn get_tcp_statical_data_associators;
FCIP_API AssociatorsFn get_profile_associators;
FCIP_API AssociatorsFn get_eth_port_associators;
FCIP_API AssociatorsFn get_eth_stat_associators;

// Paths of the associations that the source takes part in.
FCIP_API ReferenceNamesFn get_fcip_pe_reference_names;
FCIP_API ReferenceNamesFn get_ip_pe_reference_names;
FCIP_API ReferenceNamesFn get_tcp_pe_reference_names;
FCIP_API ReferenceNamesFn get_fcip_remote_pe_reference_names;
FCIP_API ReferenceNamesFn get_ip_remote_pe_reference_names;
FCIP_API ReferenceNamesFn get_tcp_remote_pe_reference_names;
FCIP_API ReferenceNamesFn get_lan_endpoint_reference_names;
FCIP_API ReferenceNamesFn get_fcip_settings_reference_names;
FCIP_API ReferenceNamesFn get_ip_settings_reference_names;
FCIP_API ReferenceNamesFn get_tcp_settings_reference_names;
FCIP_API ReferenceNamesFn get_ip_stat_reference_names;
FCIP_API ReferenceNamesFn get_tcp_stat_reference_names;
FCIP_API ReferenceNamesFn get_profile_reference_names;
FCIP_API ReferenceNamesFn get_eth_port_reference_names;
FCIP_API ReferenceNamesFn get_eth_stat_reference_names;

// Those associations as instances.
FCIP_API ReferencesFn get_fcip_pe_references;
FCIP_API ReferencesFn get_ip_pe_references;
FCIP_API ReferencesFn get_tcp_pe_references;
FCIP_API ReferencesFn get_fcip_remote_pe_references;
FCIP_API ReferencesFn get_ip_remote_pe_references;
FCIP_API ReferencesFn get_tcp_remote_pe_references;
FCIP_API ReferencesFn get_lan_endpoint_references;
FCIP_API ReferencesFn get_fcip_settings_references;
FCIP_API ReferencesFn get_ip_settings_references;
FCIP_API ReferencesFn get_tcp_settings_references;
FCIP_API ReferencesFn get_ip_stat_references;
FCIP_API ReferencesFn get_tcp_stat_references;
FCIP_API ReferencesFn get_profile_references;
FCIP_API ReferencesFn get_eth_port_references;
FCIP_API ReferencesFn get_eth_stat_references;

} // extern "C"

#endif
