// KESTO_TCPProtocolEndPoint and KESTO_IPProtocolEndPoint: the local TCP port and the local IP address of a
// tunnel.
#include <arpa/inet.h>
#include <sys/socket.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "classes/builder.h"
#include "classes/text.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/byte_order.h"
#include "platform/computer_system.h"
#include "platform/ip_address.h"
#include "platform/key_number.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"

namespace {

constexpr const char* NO_ADDRESS = "NULL";

// The families that ip_addr_to_str_type reports; it leaves an unset address without one.
constexpr std::uint32_t FAMILY_IPV4 = 0;
constexpr std::uint32_t FAMILY_IPV6 = 1;
constexpr std::uint32_t FAMILY_UNREPORTED = 2;

constexpr std::uint32_t DEFAULT_MTU = 1500;

// What the port manager writes about an Ethernet port; the MTU stands in network order.
struct EthernetConfiguration {
    unsigned char bytes[256] = {};
};
constexpr std::size_t MTU_POSITION = 28;

void set_connection_properties(CMPIInstance* instance, const FcipTcpConnEntry& connection) {
    const Property table[] = {
        uint32("MaximumSegmentSize", connection.maximumSegmentSize),
        uint32("ReceiverWindowSize", connection.receiverWindowSize),
        uint32("ConnectionTimeOut", connection.connectionTimeOut),
    };
    set_properties(instance, table);
    // The class knows the purposes 1 to 3 only.
    if (connection.connectionPurpose >= 1 && connection.connectionPurpose <= 3) {
        const auto purpose = decimal<31>(connection.connectionPurpose);
        set_properties(instance, {chars("ConnectionPurpose", purpose)});
    }
}

// Sets the two address properties and returns the address as text.
Text<128> set_local_address(CMPIInstance* instance, const IpAddr& address) {
    Text<128> text;
    std::uint32_t family = FAMILY_UNREPORTED;
    if (ip_addr_to_str_type(&address, text.chars, sizeof text.chars, &family) != 0) {
        std::printf("address family unknown\n");
        set_properties(instance, {chars("IPv4Address", NO_ADDRESS), chars("IPv6Address", NO_ADDRESS)});
        return text;
    }
    std::printf("address family %d\n", as_printed(family));
    if (family == FAMILY_IPV4) {
        set_properties(instance, {chars("IPv4Address", text), chars("IPv6Address", NO_ADDRESS)});
    } else if (family == FAMILY_IPV6) {
        set_properties(instance, {chars("IPv4Address", NO_ADDRESS), chars("IPv6Address", text)});
    }
    return text;
}

void set_subnet_mask(CMPIInstance* instance, std::uint32_t ethernetIfIndex) {
    PlatformRow<void> record;
    const int status = fetch_row(
        record, [&](void** out) { return ipconf_get_intf_ip_address(mts_q, ethernetIfIndex, out); });
    if (status != 0 || !record) return;
    char mask[INET_ADDRSTRLEN] = {};
    inet_ntop(AF_INET, &static_cast<const IpIntfAddress*>(record.get())->subnetMask, mask, sizeof mask);
    set_properties(instance, {chars("SubnetMask", mask)});
}

void set_prefix_length(CMPIInstance* instance, std::uint32_t ethernetIfIndex) {
    PlatformRow<void> record;
    const int status =
        fetch_row(record, [&](void** out) { return ipconf_get_if_inet_addrs(mts_q, ethernetIfIndex, out); });
    if (status != 0 || !record) return;
    const auto* addresses = static_cast<const IpIntfInetAddrs*>(record.get());
    set_properties(instance, {uint8("PrefixLength", low_byte(addresses->prefixLength))});
}

} // namespace

CMPIInstance* tcp_pe_build_instance(const char* className, const char* nameSpace, const FcipLinkEntry* link,
                                    const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    set_properties(instance, {chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM)});
    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    if (systemName.status != -1) set_properties(instance, {chars("SystemName", systemName.text)});
    const auto name = decimal<31>(link->kfmFcipLinkIfIndex);
    const Property endpoint[] = {
        chars("Name", name),
        chars("CreationClassName", "KESTO_TCPProtocolEndPoint"),
        chars("NameFormat", NAME_FORMAT),
        uint32("PortNumber", profile->kfmFcipEntityTcpPort),
        uint32("RemotePortNumber", link->kfmFcipLinkExtTcpRemPort),
    };
    set_properties(instance, endpoint);

    const FcipTcpConnKey key{link->kfmFcipEntityId, link->kfmFcipLinkIndex,
                             static_cast<std::uint16_t>(profile->kfmFcipEntityTcpPort),
                             static_cast<std::uint16_t>(link->kfmFcipLinkExtTcpRemPort)};
    PlatformRow<FcipTcpConnEntry> connection;
    const int status = fetch_row(
        connection, [&](FcipTcpConnEntry** out) { return fcip_get_tcpconn_entry(mts_q, 1, &key, out, 15); });
    if (status == 0 && connection) set_connection_properties(instance, *connection);
    return finish_instance(instance, properties, NamedBy::SystemAndName, __func__);
}

CMPIObjectPath* tcp_pe_fill_reference(const char* className, const char* nameSpace,
                                      const FcipLinkEntry* link) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(link->kfmFcipEntityId, profile)) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (path == nullptr) return nullptr;

    set_host_name(path);
    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto name = decimal<59>(link->kfmFcipLinkIfIndex);
    const Property keys[] = {
        chars("SystemName", name_or(systemName, "LogicalComputerSystem")),
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("CreationClassName", "KESTO_TCPProtocolEndPoint"),
        chars("Name", name),
    };
    add_keys(path, keys);
    return path;
}

CMPIInstance* ip_pe_build_instance(const char* className, const char* nameSpace, const FcipLinkEntry* link,
                                   const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const Property identity[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("SystemName", systemName.text),
    };
    set_properties(instance, identity);
    const auto local = set_local_address(instance, profile->kfmFcipEntityAddress);
    const auto remote = address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const auto name = numbered_pair<59>(link->kfmFcipLinkIfIndex, local.chars, remote.chars);
    const Property naming[] = {
        chars("Name", name),
        chars("CreationClassName", "KESTO_IPProtocolEndPoint"),
        chars("NameFormat", NAME_FORMAT),
    };
    set_properties(instance, naming);

    const std::uint32_t ethernetIfIndex = link->kfmFcipLinkExtEthIfIndex;
    set_subnet_mask(instance, ethernetIfIndex);
    set_prefix_length(instance, ethernetIfIndex);
    EthernetConfiguration port;
    if (pm_get_clear_eth_stats(mts_q, ethernetIfIndex, ethernetIfIndex, 1, port.bytes) != 0) {
        port = {};
        set_properties(instance, {uint32("MaxTransmissionUnit", DEFAULT_MTU)});
    }
    const Property parameters[] = {
        uint16("AddressOrigin", ADDRESS_ORIGIN_STATIC),
        uint16("ProtocolIFType", PROTOCOL_IF_IPV4),
        // The port's own MTU wins over the default, even when it could not be read.
        uint32("MaxTransmissionUnit", big_endian_32(&port.bytes[MTU_POSITION])),
        boolean("EnableIPForwarding", false),
        boolean("PathMTUDiscovery", profile->kfmFcipEntityPmtuEnable == 1),
        boolean("FragmentationEnabled", false),
    };
    set_properties(instance, parameters);
    return finish_marked_instance(instance, properties, NamedBy::SystemAndName, __func__, 187);
}

CMPIObjectPath* ip_pe_fill_reference(const char* className, const char* nameSpace,
                                     const FcipLinkEntry* link) {
    trace_entering(__func__);
    if (link == nullptr) return nullptr;
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(link->kfmFcipEntityId, profile)) {
        std::puts("Error ");
        return nullptr;
    }
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (path == nullptr || !profile) {
        trace_exiting(__func__);
        return path;
    }

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    add_keys(path, {chars("SystemName", name_or(systemName, UNKNOWN_SYSTEM))});
    set_host_name(path);
    const auto local = address_text(profile->kfmFcipEntityAddress);
    const auto remote = address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const auto name = numbered_pair<59>(link->kfmFcipLinkIfIndex, local.chars, remote.chars);
    std::printf("%s \n", name.chars);
    const Property keys[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("CreationClassName", "KESTO_IPProtocolEndPoint"),
        chars("Name", name),
    };
    add_keys(path, keys);
    trace_exiting(__func__);
    return path;
}
