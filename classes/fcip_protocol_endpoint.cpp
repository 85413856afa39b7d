// KESTO_FCIPProtocolEndPoint: the local end of an FCIP tunnel.
#include <cstdint>

#include "classes/builder.h"
#include "classes/text.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/computer_system.h"
#include "platform/platform_row.h"
#include "platform/row_lookup.h"

namespace {

// The same for every link, whatever the profile says.
constexpr std::uint16_t RETRANSMIT_TIME = 29775;
constexpr std::uint16_t FIBRE_CHANNEL = 56;

} // namespace

CMPIInstance* fcip_pe_build_instance(const char* className, const char* nameSpace, const FcipLinkEntry* link,
                                     const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto local = address_text(profile->kfmFcipEntityAddress);
    const auto remote = address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const std::uint32_t tunnel = link->kfmFcipLinkIndex + 1;
    const auto name = numbered_pair<31>(tunnel, local.chars, remote.chars);
    const auto remoteWwn = wwn_text(link->kfmFcipLinkRemFcipEntityWWN);
    const auto localWwn = switch_wwn_text();
    // The profile has no WAN time-out flag of its own: the SACK flag stands for both.
    const std::uint8_t sack = low_byte(profile->kfmFcipEntitySackOption);
    const Property table[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("SystemName", systemName.text),
        chars("Name", name),
        chars("CreationClassName", "KESTO_FCIPProtocolEndPoint"),
        chars("NameFormat", NAME_FORMAT),
        uint16("TunnelID", static_cast<std::uint16_t>(tunnel)),
        chars("RemoteIPAddress", remote),
        chars("LocalIPAddress", local),
        chars("RemoteWWN", remoteWwn),
        chars("LocalWWN", localWwn),
        uint32("CommittedRate", profile->kfmFcipEntityMaxBandwidth),
        boolean("Compression", link->kfmFcipLinkExtIpCompression != 1),
        boolean_byte("SelectiveACK", sack),
        boolean_byte("WAN_TOV", sack),
        boolean_byte("PathMTU", low_byte(profile->kfmFcipEntityPmtuEnable)),
        uint32("MaxRetransmissions", profile->kfmFcipEntityMaxRetransmissions),
        uint32("KeepAliveTimeout", profile->kfmFcipEntityKeepAliveTimeout),
        uint16("RetransmitTime", RETRANSMIT_TIME),
        uint16("ProtocolIFType", FIBRE_CHANNEL),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, NamedBy::SystemAndName, __func__);
}

CMPIObjectPath* fcip_pe_fill_reference(const char* className, const char* nameSpace,
                                       const FcipLinkEntry* link) {
    PlatformRow<FcipEntityEntry> profile;
    if (!find_profile(link->kfmFcipEntityId, profile)) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (path == nullptr) return nullptr;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto local = path_address_text(profile->kfmFcipEntityAddress);
    const auto remote = path_address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const auto name = numbered_pair<31>(link->kfmFcipLinkIndex + 1, local.chars, remote.chars);
    const Property keys[] = {
        chars("SystemName", name_or(systemName, UNKNOWN_SYSTEM)),
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("CreationClassName", "KESTO_FCIPProtocolEndPoint"),
        chars("Name", name),
    };
    add_keys(path, keys);
    return path;
}
