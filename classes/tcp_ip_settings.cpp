// KESTO_TCPSettings and KESTO_IPSettings: the parameters of the switch's own stack in force on a tunnel.
//
// Both builders also ask for counters that no property shows: the requests are visible to the platform and
// its line cards.
#include <cstdint>

#include "classes/builder.h"
#include "classes/settings.h"
#include "classes/text.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/computer_system.h"
#include "platform/fcip_config.h"
#include "platform/kernel_stats.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"
#include "platform/statistics.h"

namespace {

constexpr std::uint32_t FRAGMENTATION_TIMEOUT = 500;
constexpr std::uint16_t RETRANSMISSION_TIMEOUT_MAX = 5000;
constexpr std::uint16_t RETRANSMISSION_TIMEOUT_MIN = 200;
constexpr std::uint16_t RETRANSMISSION_TIMEOUT_ALGORITHM = 4;

} // namespace

CMPIInstance* ip_settings_build_instance(const char* className, const char* nameSpace,
                                         const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_traced_instance(__func__, className, nameSpace);
    if (!ready) return instance;

    const auto name = interface_name(link->kfmFcipLinkIfIndex);
    set_properties(instance, {chars("Caption", name), chars("Description", name)});
    IpStatsReply* reply = nullptr;
    get_ip_stats(mts_q, link->kfmFcipLinkExtEthIfIndex, 1, &reply);
    const PlatformRow<IpStatsReply> releasedReply(reply);
    const auto interface = decimal<31>(link->kfmFcipLinkIfIndex);
    set_properties(instance, {chars("ElementName", interface), chars("InstanceID", interface)});

    IpMiscCfg configuration{};
    if (get_ip_misc_cfg(&configuration) != 0) return nullptr;
    ipconf_linux_get_ip_stats(nullptr, nullptr, nullptr, nullptr);
    const Property table[] = {
        boolean_byte("EnableIPForwarding", low_byte(configuration.ipForwarding)),
        uint32("FragmentationTimeout", FRAGMENTATION_TIMEOUT),
        uint32("DefaultTimeToLive", configuration.defaultTtl),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, NamedBy::InstanceId, __func__);
}

CMPIInstance* tcp_settings_build_instance(const char* className, const char* nameSpace,
                                          const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    const auto [instance, ready] = start_traced_instance(__func__, className, nameSpace);
    if (!ready) return instance;

    set_properties(instance, {chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM)});
    FcipLinkEntry fresh{};
    if (get_link_from_link_index(mts_q, link->kfmFcipLinkIndex, &fresh) != 0) {
        trace_line(__func__, 64);
        return error_object<CMPIInstance>();
    }
    const auto interface = decimal<31>(fresh.kfmFcipLinkIfIndex);
    trace_line(__func__, 68);
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(fresh.kfmFcipEntityId, profile)) return nullptr;
    request_tcp_counters(fresh.kfmFcipLinkExtEthIfIndex);

    const SystemName systemName = system_name(fresh.kfmFcipLinkIfIndex);
    const Property identity[] = {
        chars("SystemName", systemName.text), chars("InstanceID", interface),
        chars("Description", interface),      chars("Caption", interface),
        chars("ElementName", interface),
    };
    set_properties(instance, identity);
    ipconf_linux_get_ip_stats(nullptr, nullptr, nullptr, nullptr);
    const Property parameters[] = {
        uint16("RetransmissionTimeoutMax", RETRANSMISSION_TIMEOUT_MAX),
        uint16("RetransmissionTimeoutMin", RETRANSMISSION_TIMEOUT_MIN),
        uint16("RetransmissionTimeoutAlgorithm", RETRANSMISSION_TIMEOUT_ALGORITHM),
    };
    set_properties(instance, parameters);
    return finish_marked_instance(instance, properties, NamedBy::InstanceId, __func__, 89);
}

CMPIObjectPath* tcp_settings_fill_reference(const char* className, const char* nameSpace,
                                            const FcipLinkEntry* link) {
    return fill_settings_reference(__func__, className, nameSpace, link);
}

CMPIObjectPath* ip_settings_fill_reference(const char* className, const char* nameSpace,
                                           const FcipLinkEntry* link) {
    return fill_settings_reference(__func__, className, nameSpace, link);
}
