// KESTO_RemoteFCIPPort, KESTO_RemoteIPServiceAccessPoint and KESTO_RemoteTCPPort: the far end of a tunnel,
// seen from the peer's side. What the peer calls local is the link's remote address, and what it calls
// remote is the switch's own.
#include <cstdint>
#include <cstdio>

#include "classes/builder.h"
#include "classes/text.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/computer_system.h"
#include "platform/key_number.h"
#include "platform/platform_row.h"
#include "platform/row_lookup.h"

namespace {

// How the names are made up, for management tools; the blank at the end belongs to it.
constexpr const char* NAME_LAYOUT = "Remote Entity ID_LocalIP_RemoteIP ";

constexpr std::uint16_t INFO_FORMAT_OTHER = 1;
constexpr std::uint16_t PORT_PROTOCOL_TCP = 2;

// Names in paths, and those of the IP class, leave the peer's entity id out.
constexpr std::uint32_t NO_ENTITY_ID = 0;

// "0_" and the if-index of the tunnel's interface.
Text<31> tcp_port_name(const FcipLinkEntry& link) {
    Text<31> name;
    std::snprintf(name.chars, sizeof name.chars, "%d_%d", 0, as_printed(link.kfmFcipLinkIfIndex));
    return name;
}

CMPIInstance* build_tcp_port(const char* function, const char* className, const char* nameSpace,
                             const FcipLinkEntry* link, const char** properties) {
    trace_entering(function);
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_traced_instance(function, className, nameSpace);
    if (!ready) return instance;

    set_properties(instance, {chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM)});
    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    if (systemName.status != -1) set_properties(instance, {chars("SystemName", systemName.text)});
    const auto name = tcp_port_name(*link);
    const Property table[] = {
        chars("Name", name),
        chars("CreationClassName", "KESTO_RemoteTCPPort"),
        chars("NameFormat", NAME_FORMAT),
        uint32("RemotePortNumber", profile->kfmFcipEntityTcpPort),
        uint32("PortNumber", link->kfmFcipLinkExtTcpRemPort),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, NamedBy::SystemAndName, function);
}

CMPIObjectPath* fill_tcp_port(const char* className, const char* nameSpace, const FcipLinkEntry* link) {
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(link->kfmFcipEntityId, profile)) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (path == nullptr) return nullptr;

    set_host_name(path);
    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto name = tcp_port_name(*link);
    const Property keys[] = {
        chars("SystemName", name_or(systemName, UNKNOWN_SYSTEM)),
        chars("Name", name),
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("CreationClassName", className),
    };
    add_keys(path, keys);
    return path;
}

} // namespace

CMPIInstance* fcip_remote_pe_build_instance(const char* className, const char* nameSpace,
                                            const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto remote = address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const auto local = address_text(profile->kfmFcipEntityAddress);
    const auto name = numbered_pair<31>(link->kfmFcipLinkRemFcipEntityId, remote.chars, local.chars);
    const Property table[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("SystemName", systemName.text),
        chars("Name", name),
        chars("CreationClassName", "KESTO_RemoteFCIPPort"),
        chars("NameFormat", NAME_FORMAT),
        chars("RemoteIPAddress", local),
        chars("LocalIPAddress", remote),
        uint16("InfoFormat", INFO_FORMAT_OTHER),
        chars("OtherInfoFormatDescription", NAME_LAYOUT),
        chars("AccessInfo", remote),
        chars("PortInfo", remote),
        uint16("PortProtocol", PORT_PROTOCOL_TCP),
        chars("OtherProtocolDescription", "TCP"),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, NamedBy::SystemAndName, __func__);
}

CMPIObjectPath* fcip_remote_pe_fill_reference(const char* className, const char* nameSpace,
                                              const FcipLinkEntry* link) {
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (path == nullptr) return nullptr;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto remote = path_address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const auto local = path_address_text(profile->kfmFcipEntityAddress);
    const auto name = numbered_pair<31>(NO_ENTITY_ID, remote.chars, local.chars);
    const Property keys[] = {
        chars("SystemName", name_or(systemName, UNKNOWN_SYSTEM)),
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("CreationClassName", "KESTO_RemoteFCIPPort"),
        chars("Name", name),
    };
    add_keys(path, keys);
    return path;
}

CMPIInstance* ip_remote_pe_build_instance(const char* className, const char* nameSpace,
                                          const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto remote = address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const auto local = address_text(profile->kfmFcipEntityAddress);
    const auto name = numbered_pair<59>(NO_ENTITY_ID, remote.chars, local.chars);
    const Property table[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("SystemName", systemName.text),
        chars("Name", name),
        chars("CreationClassName", "KESTO_RemoteIPServiceAccessPoint"),
        chars("NameFormat", NAME_FORMAT),
        chars("IPv4Address", remote), // of IPv6 peers too
        chars("OtherInfoFormatDescription", NAME_LAYOUT),
        chars("AccessInfo", remote),
        uint16("InfoFormat", INFO_FORMAT_OTHER),
        uint16("AddressOrigin", ADDRESS_ORIGIN_STATIC),
        uint16("ProtocolIFType", PROTOCOL_IF_IPV4),
    };
    set_properties(instance, table);
    return finish_marked_instance(instance, properties, NamedBy::SystemAndName, __func__, 147);
}

CMPIObjectPath* ip_remote_pe_fill_reference(const char* className, const char* nameSpace,
                                            const FcipLinkEntry* link) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (path == nullptr) return nullptr;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    add_keys(path, {chars("SystemName", name_or(systemName, UNKNOWN_SYSTEM))});
    set_host_name(path);
    const auto remote = address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const auto local = address_text(profile->kfmFcipEntityAddress);
    const auto name = numbered_pair<59>(NO_ENTITY_ID, remote.chars, local.chars);
    // The platform is asked a second time; its answer is not used.
    system_name(link->kfmFcipLinkIfIndex);
    const Property keys[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("CreationClassName", "KESTO_RemoteIPServiceAccessPoint"),
        chars("Name", name),
    };
    add_keys(path, keys);
    return path;
}

CMPIInstance* remote_service_ap_build_instance(const char* className, const char* nameSpace,
                                               const FcipLinkEntry* link, const char** properties) {
    return build_tcp_port(__func__, className, nameSpace, link, properties);
}

CMPIInstance* tcp_remote_pe_build_instance(const char* className, const char* nameSpace,
                                           const FcipLinkEntry* link, const char** properties) {
    return build_tcp_port(__func__, className, nameSpace, link, properties);
}

CMPIObjectPath* remote_service_ap_fill_reference(const char* className, const char* nameSpace,
                                                 const FcipLinkEntry* link) {
    return fill_tcp_port(className, nameSpace, link);
}

CMPIObjectPath* tcp_remote_pe_fill_reference(const char* className, const char* nameSpace,
                                             const FcipLinkEntry* link) {
    return fill_tcp_port(className, nameSpace, link);
}
