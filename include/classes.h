// The CIM classes of the instance model: one builder, one object-path filler and the walkers of each class.
//
// Builders (<x>_build_instance) turn one platform row into a new CMPIInstance, fillers (<x>_fill_reference)
// into a new CMPIObjectPath that carries only the keys. Both return NULL when the object cannot be made; the
// class name becomes the returned object's own, spelled as handed in. Objects belong to the CIM server's
// request and are never released here. Rows stay the caller's.
//
// Walkers (get_all_<x>) step through a platform table and hand every object to the result, a NULL included;
// they always return 0, and those that serve several classes know by the class name which one is wanted.
//
// All of them expect the provider lock to be held by the caller.
#ifndef KESTO_FCIP_CLASSES_H
#define KESTO_FCIP_CLASSES_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "common/export.h"
#include "platform/platform_records.h"

extern "C" {

// The types of the builders and fillers whose row is a link.
typedef CMPIInstance* LinkBuilder(const char* className, const char* nameSpace, const FcipLinkEntry* link,
                                  const char** properties);
typedef CMPIObjectPath* LinkFiller(const char* className, const char* nameSpace, const FcipLinkEntry* link);

// KESTO_FCIPProtocolEndPoint; the walkers serve KESTO_RemoteFCIPPort as well.
FCIP_API CMPIInstance* fcip_pe_build_instance(const char* className, const char* nameSpace,
                                              const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* fcip_pe_fill_reference(const char* className, const char* nameSpace,
                                                const FcipLinkEntry* link);
FCIP_API int get_all_fcip_pe_instances(const char* className, const CMPIResult* result,
                                       const char** properties, const char* nameSpace);
FCIP_API int get_all_fcip_pe_references(const char* className, const CMPIResult* result,
                                        const char* nameSpace);

// KESTO_TCPProtocolEndPoint and KESTO_IPProtocolEndPoint; the walkers serve seven link-based classes.
FCIP_API CMPIInstance* tcp_pe_build_instance(const char* className, const char* nameSpace,
                                             const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* tcp_pe_fill_reference(const char* className, const char* nameSpace,
                                               const FcipLinkEntry* link);
FCIP_API CMPIInstance* ip_pe_build_instance(const char* className, const char* nameSpace,
                                            const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* ip_pe_fill_reference(const char* className, const char* nameSpace,
                                              const FcipLinkEntry* link);
FCIP_API int get_all_ip_pe_instances(const char* className, const CMPIResult* result, const char** properties,
                                     const char* nameSpace);
FCIP_API int get_all_ip_pe_references(const char* className, const CMPIResult* result, const char* nameSpace);

// KESTO_FCIPSettings and KESTO_FCIPProfile.
FCIP_API CMPIInstance* fcip_settings_build_instance(const char* className, const char* nameSpace,
                                                    const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* fcip_settings_fill_reference(const char* className, const char* nameSpace,
                                                      const FcipLinkEntry* link);
FCIP_API CMPIInstance* fcip_profile_build_instance(const char* className, const char* nameSpace,
                                                   const FcipEntityEntry* entity, const char** properties);
FCIP_API CMPIObjectPath* fcip_profile_fill_reference(const char* className, const char* nameSpace,
                                                     const FcipEntityEntry* entity);
FCIP_API int get_all_fcip_profiles(const char* className, const CMPIResult* result, const char** properties,
                                   const char* nameSpace);
FCIP_API int get_all_fcip_profile_references(const char* className, const CMPIResult* result,
                                             const char* nameSpace);

// KESTO_TCPSettings and KESTO_IPSettings. The TCP settings builder returns the value -1 instead of an
// instance when the link cannot be found again.
FCIP_API CMPIInstance* tcp_settings_build_instance(const char* className, const char* nameSpace,
                                                   const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* tcp_settings_fill_reference(const char* className, const char* nameSpace,
                                                     const FcipLinkEntry* link);
FCIP_API CMPIInstance* ip_settings_build_instance(const char* className, const char* nameSpace,
                                                  const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* ip_settings_fill_reference(const char* className, const char* nameSpace,
                                                    const FcipLinkEntry* link);

// KESTO_RemoteFCIPPort, KESTO_RemoteIPServiceAccessPoint and KESTO_RemoteTCPPort: the tunnel's far end. The
// last has two pairs: enumeration uses remote_service_ap_*, single gets and associations tcp_remote_pe_*.
FCIP_API CMPIInstance* fcip_remote_pe_build_instance(const char* className, const char* nameSpace,
                                                     const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* fcip_remote_pe_fill_reference(const char* className, const char* nameSpace,
                                                       const FcipLinkEntry* link);
FCIP_API CMPIInstance* ip_remote_pe_build_instance(const char* className, const char* nameSpace,
                                                   const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* ip_remote_pe_fill_reference(const char* className, const char* nameSpace,
                                                     const FcipLinkEntry* link);
FCIP_API CMPIInstance* tcp_remote_pe_build_instance(const char* className, const char* nameSpace,
                                                    const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* tcp_remote_pe_fill_reference(const char* className, const char* nameSpace,
                                                      const FcipLinkEntry* link);
FCIP_API CMPIInstance* remote_service_ap_build_instance(const char* className, const char* nameSpace,
                                                        const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIObjectPath* remote_service_ap_fill_reference(const char* className, const char* nameSpace,
                                                          const FcipLinkEntry* link);

// KESTO_LANEndPoint; the row is the bare if-index of the Ethernet port.
FCIP_API CMPIInstance* lan_endpoint_build_instance(const char* className, const char* nameSpace,
                                                   std::uint32_t ifIndex, const char** properties);
FCIP_API CMPIObjectPath* lan_endpoint_fill_reference(const char* className, const char* nameSpace,
                                                     std::uint32_t ifIndex);
FCIP_API int get_all_lan_endpoint_instances(const char* className, const CMPIResult* result,
                                            const char** properties, const char* nameSpace);
FCIP_API int get_all_lan_endpoint_references(const char* className, const CMPIResult* result,
                                             const char* nameSpace);

// KESTO_IPEndPointStatistics, KESTO_TCPEndPointStatistics and KESTO_TCPStatisticalData. The last builder
// returns the value -1 when the link cannot be found again. ip_statistics_build_instance may be handed a link
// error row in place of the link; nothing after its word 27 is read.
FCIP_API CMPIInstance* ip_statistics_build_instance(const char* className, const char* nameSpace,
                                                    const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIInstance* tcp_statistics_build_instance(const char* className, const char* nameSpace,
                                                     const FcipLinkEntry* link, const char** properties);
FCIP_API CMPIInstance* tcp_statistical_data_build_instance(const char* className, const char* nameSpace,
                                                           const FcipLinkEntry* link,
                                                           const char** properties);
// One path for the three classes. Only the row's two key words are read, so a link error row does as well.
FCIP_API CMPIObjectPath* stat_fill_reference(const char* className, const char* nameSpace,
                                             const FcipLinkEntry* link);
FCIP_API int get_all_statistics(const char* className, const CMPIResult* result, const char** properties,
                                const char* nameSpace);
FCIP_API int get_all_statistic_references(const char* className, const CMPIResult* result,
                                          const char* nameSpace);

// KESTO_EthernetPortStatistics, and the enumerations of its association KESTO_EthernetPortStatisticalData.
FCIP_API CMPIInstance* eth_statistics_build_instance(const char* className, const char* nameSpace,
                                                     const PortInfo* port, const char** properties);
FCIP_API CMPIObjectPath* eth_statistics_fill_reference(const char* className, const char* nameSpace,
                                                       const PortInfo* port);
FCIP_API int get_all_eth_stat_instances(const char* className, const CMPIResult* result,
                                        const char** properties, const char* nameSpace);
FCIP_API int get_all_eth_stat_references(const char* className, const CMPIResult* result,
                                         const char* nameSpace);
FCIP_API int get_all_eth_stat_data_instances(const char* className, const CMPIResult* result,
                                             const char** properties, const char* nameSpace);
FCIP_API int get_all_eth_stat_data_references(const char* className, const CMPIResult* result,
                                              const char* nameSpace);

} // extern "C"

#endif
