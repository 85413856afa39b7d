// KESTO_FCIPProtocolEndPoint: the local end of an FCIP tunnel.
#include "classes/builder.h"
#include "include/classes.h"

namespace {

// The same for every link, whatever the profile says.
constexpr std::uint16_t RETRANSMIT_TIME = 29775;
constexpr std::uint16_t FIBRE_CHANNEL = 56;

// An address as it stands in object paths, where it is cut to 19 characters.
constexpr std::size_t PATH_ADDRESS_SIZE = 20;

constexpr LinkClass CLASSES[] = {
    {"KESTO_FCIPProtocolEndPoint", fcip_pe_build_instance, fcip_pe_fill_reference},
    {"KESTO_RemoteFCIPPort", fcip_remote_pe_build_instance, fcip_remote_pe_fill_reference},
};
constexpr LinkWalk WALK{CLASSES, Unserved::Skipped, false};

} // namespace

CMPIInstance* fcip_pe_build_instance(const char* className, const char* nameSpace, const FcipLinkEntry* link,
                                     const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (fetch_profile(link->kfmFcipEntityId, profile) != 0 || !profile) return nullptr;
    const auto [ready, hasPath, instance] = start_instance(className, nameSpace);
    if (!ready) return instance;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto local = address_text(profile->kfmFcipEntityAddress);
    const auto remote = address_text(link->kfmFcipLinkRemFcipEntityAddress);
    const std::uint32_t tunnel = link->kfmFcipLinkIndex + 1;
    // The profile has no WAN time-out flag of its own: the SACK flag stands for both.
    const std::uint8_t sack = low_byte(profile->kfmFcipEntitySackOption);
    const Property table[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("SystemName", systemName.text),
        chars("Name", numbered_pair<31>(tunnel, local, remote)),
        chars("CreationClassName", "KESTO_FCIPProtocolEndPoint"),
        chars("NameFormat", NAME_FORMAT),
        uint16("TunnelID", static_cast<std::uint16_t>(tunnel)),
        chars("RemoteIPAddress", remote),
        chars("LocalIPAddress", local),
        chars("RemoteWWN", wwn_text(link->kfmFcipLinkRemFcipEntityWWN)),
        chars("LocalWWN", switch_wwn_text()),
        uint32("CommittedRate", profile->kfmFcipEntityMaxBandwidth),
        boolean("Compression", static_cast<std::uint8_t>(link->kfmFcipLinkExtIpCompression != 1)),
        boolean("SelectiveACK", sack),
        boolean("WAN_TOV", sack),
        boolean("PathMTU", low_byte(profile->kfmFcipEntityPmtuEnable)),
        uint32("MaxRetransmissions", profile->kfmFcipEntityMaxRetransmissions),
        uint32("KeepAliveTimeout", profile->kfmFcipEntityKeepAliveTimeout),
        uint16("RetransmitTime", RETRANSMIT_TIME),
        uint16("ProtocolIFType", FIBRE_CHANNEL),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, __func__);
}

CMPIObjectPath* fcip_pe_fill_reference(const char* className, const char* nameSpace,
                                       const FcipLinkEntry* link) {
    PlatformRow<FcipEntityEntry> profile;
    if (fetch_profile(link->kfmFcipEntityId, profile) != 0 || !profile) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (path == nullptr) return nullptr;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto local = address_text<PATH_ADDRESS_SIZE>(profile->kfmFcipEntityAddress);
    const auto remote = address_text<PATH_ADDRESS_SIZE>(link->kfmFcipLinkRemFcipEntityAddress);
    const Property keys[] = {
        chars("SystemName", name_or(systemName, UNKNOWN_SYSTEM)),
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("CreationClassName", "KESTO_FCIPProtocolEndPoint"),
        chars("Name", numbered_pair<31>(link->kfmFcipLinkIndex + 1, local, remote)),
    };
    add_keys(path, keys);
    return path;
}

int get_all_fcip_pe_instances(const char* className, const CMPIResult* result, const char** properties,
                              const char* nameSpace) {
    return return_link_instances(WALK, __func__, className, result, properties, nameSpace);
}

int get_all_fcip_pe_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_link_references(WALK, __func__, className, result, nameSpace);
}
