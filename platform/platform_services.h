// The platform services that the provider imports from libkestoplatform.so.1.
//
// On a switch that library is the platform's own; elsewhere it is the emulated switch in emulator/. Status
// results are 0 for success and anything else for failure. A row is malloc'ed by the platform, stored through
// the out-parameter, belongs to the caller and is released with free; a failing call may still store one.
#ifndef KESTO_PLATFORM_SERVICES_H
#define KESTO_PLATFORM_SERVICES_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "platform/platform_records.h"

extern "C" {

// One process-wide lock, not recursive.
void mutex_lock(void);
void mutex_unlock(void);

// Message transport. init_mts may be called again on an open queue; negative is failure.
extern std::uint32_t mts_q;
int init_mts(std::uint32_t* queue);
int mts_send(std::uint32_t queue, std::uint32_t node, std::uint32_t service, std::uint32_t code,
             const void* payload, std::uint32_t length, MtsMessage* request, std::uint32_t flags,
             std::uint32_t priority);
std::uint32_t mts_rr_token_get(const MtsMessage* request);
int mts_recv(std::uint32_t queue, MtsMessage* reply, const void* selector);
void* mts_payload_get(const MtsMessage* message);
std::uint32_t mts_payload_size(const MtsMessage* message);
int mts_drop(std::uint32_t queue, MtsMessage* message);
std::uint32_t mts_sap_get(std::uint32_t queue);
int cmi_req_resp(std::uint32_t code, std::uint32_t, std::uint32_t, void** reply, std::uint32_t* replyLength,
                 std::uint32_t, std::uint32_t, std::uint32_t service, std::uint32_t queue,
                 std::uint32_t option);

// FCIP management service. op 1 = the row with exactly this key, 2 = the row that follows the key.
int fcip_get_link_entry(std::uint32_t queue, int op, const FcipLinkKey* key, FcipLinkEntry** row, int, int);
int fcip_get_entity_entry(std::uint32_t queue, int op, std::uint32_t entityId, FcipEntityEntry** row, int);
int fcip_get_tcpconn_entry(std::uint32_t queue, int op, const FcipTcpConnKey* key, FcipTcpConnEntry** row,
                           int);
int fcip_snmp_get_link_errors(std::uint32_t queue, int op, const FcipLinkKey* key, FcipLinkErrors** row, int);
// Uses at most 512 bytes of the message buffer. The reply is malloc'ed; its length is in bytes.
int fcip_send_recv_with_mts_q(std::uint32_t code, std::uint32_t node, std::uint32_t service,
                              const void* payload, std::uint32_t length, std::uint32_t queue, void** reply,
                              std::uint32_t* replyLength, void* messageBuffer);
// Writes at most 256 bytes, the final NUL included; returns the buffer.
char* fcip_if_str(std::uint32_t ifIndex, char* buffer);

// Port manager. pm_cim_get_port_info: op 1 = this port, 0 = the next one.
int pm_cim_get_port_info(PortInfo** row, int op, std::uint32_t ifIndex, std::uint32_t queue);
PortInfo* pm_cim_find_interface(int op, std::uint32_t ifIndex, std::uint32_t queue);
// Writes at most 128 bytes, the final NUL included, into a cleared buffer.
int pm_cim_get_network_address(char* buffer, const PortInfo* row, std::uint8_t type);
int pm_cmi_get_port_config(std::uint32_t queue, std::uint32_t, std::uint32_t, const std::uint32_t key[2],
                           std::uint32_t* length, PortInfo** row, std::uint32_t);
int pm_get_port_counters(std::uint32_t queue, std::uint32_t ifIndex, std::uint32_t, std::uint32_t,
                         PortCounters** row, std::uint32_t);
// Writes at most 256 bytes into the buffer.
int pm_get_clear_eth_stats(std::uint32_t queue, std::uint32_t ifIndex, std::uint32_t ifIndex2, std::uint32_t,
                           void* buffer);

// Interface-index service.
int if_index_get_type(std::uint32_t ifIndex, std::uint8_t* type);
int if_index_get_slot(std::uint32_t ifIndex, std::uint16_t* slot);
int if_index_get_port(std::uint32_t ifIndex, std::uint16_t* port);
std::uint32_t idxmap_node_by_if_index(std::uint32_t ifIndex);
std::uint32_t hton_if_index(std::uint32_t ifIndex);
// Writes at most 256 bytes, the final NUL included.
int sprintf_if_index(char* buffer, std::uint32_t ifIndex);

// VSAN and domain records; the entries are opaque rows.
int vsan_cim_get_vsanEntry(std::uint32_t queue, std::uint32_t vsan, void** entry);
int dm_cim_get_dmEntry(std::uint32_t queue, std::uint32_t vsan, std::uint32_t, void** entry);
// The key texts: at most 256 bytes, the final NUL included, into a cleared buffer. The platform may put
// another entry in the place of one whose pointer it is given.
int vsan_cim_get_vsan_key(char* text, void** vsanEntry, void** domainEntry);
int vsan_cim_get_vsan_admindomain_key(char* text, void** domainEntry);

// IP utilities. ip_addr_to_str always terminates the text and cuts it at length - 1.
int ip_addr_to_str(const IpAddr* address, char* buffer, std::uint32_t length);
int ip_addr_compare(const IpAddr* a, const IpAddr* b); // 0 = equal
extern const IpAddr inet_addr_null;
int ipconf_get_intf_ip_address(std::uint32_t queue, std::uint32_t ifIndex, void** record);
int ipconf_get_if_inet_addrs(std::uint32_t queue, std::uint32_t ifIndex, void** record);
// Writes at most 256 bytes, the final NUL included.
int netcfg_print_ifname(char* name, std::uint32_t ifIndex);

// CIM utility library.
const char* getCSName(void);
const char* CSgetName(std::uint32_t queue);
int system_cim_get_switch_wwn(std::uint32_t queue, std::uint8_t (*wwn)[8]);
// Writes at most 64 bytes, the final NUL included; returns the text.
char* cim_sprintf_wwn(char* text, const std::uint8_t (*wwn)[8]);
CMPIObjectPath* switch_fill_reference(const char* className, const char* nameSpace, const CMPIBroker* broker);
CMPIObjectPath* switch_fill_reference_str(const char* className, const char* nameSpace, const char* key,
                                          const CMPIBroker* broker);
CMPIInstance* switch_build_instance_str(const char* className, const char* nameSpace, const char* key,
                                        std::uint32_t, const char** properties, const CMPIBroker* broker);
CMPIInstance* association_class_build_instance_path(const char* className, const char* nameSpace,
                                                    const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                                    const char* role1, const char* role2,
                                                    const CMPIBroker* broker);
// These two are called with the class name and the namespace in either order; the platform knows the class
// name by its KESTO_ prefix.
CMPIInstance* fcport_build_instance_pm(const char* className, const char* nameSpace, const PortInfo* row,
                                       const char** properties, const CMPIBroker* broker);
CMPIObjectPath* fcport_fill_reference_pm(const char* className, const char* nameSpace, const PortInfo* row,
                                         const CMPIBroker* broker);

} // extern "C"

#endif
