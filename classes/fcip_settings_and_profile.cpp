// KESTO_FCIPSettings, the parameters of one tunnel, and KESTO_FCIPProfile, those of the profile that it uses.
#include <cstdint>
#include <cstdio>

#include "classes/builder.h"
#include "classes/settings.h"
#include "classes/text.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/computer_system.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"
#include "platform/table_walk.h"

namespace {

constexpr std::uint32_t DEFAULT_KEEP_ALIVE = 30; // seconds
constexpr std::uint16_t CONNECTION_USAGE = 2;
constexpr std::uint32_t SPECIAL_FRAME_TIMEOUT = 90;

// The keep-alive is read with a request of its own. A profile that vanishes in between leaves it unset.
void set_keep_alive(CMPIInstance* instance, const FcipLinkEntry& link) {
    PlatformRow<FcipEntityEntry> profile;
    if (fetch_profile(link.kfmFcipEntityId, profile, 30) != 0) {
        std::puts(" fcip_get_entity_entry returned error ");
        return;
    }
    const std::uint32_t seconds = profile ? profile->kfmFcipEntityKeepAliveTimeout : DEFAULT_KEEP_ALIVE;
    set_properties(instance, {uint32("KeepAliveTimeout", seconds)});
}

// visit(profile) for each profile.
template <typename Visitor>
void for_each_profile(Visitor visit) {
    walk_entities(mts_q, EmptyAnswer::Ends, [&](const FcipEntityEntry& profile) {
        visit(profile);
        return Visit::GoOn;
    });
}

} // namespace

CMPIInstance* fcip_settings_build_instance(const char* className, const char* nameSpace,
                                           const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(link->kfmFcipEntityId, profile)) return nullptr;
    const auto [instance, ready] = start_traced_instance(__func__, className, nameSpace);
    if (!ready) return instance;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto interface = decimal<31>(link->kfmFcipLinkIfIndex);
    const Property identity[] = {
        chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM),
        chars("SystemName", systemName.text),
        chars("ElementName", interface),
        chars("InstanceID", interface),
        chars("CreationClassName", "KESTO_FCIPSettings"),
        uint16("ConnectionUsageFlags", CONNECTION_USAGE),
        uint32("SpecialFrameTimeout", SPECIAL_FRAME_TIMEOUT),
    };
    set_properties(instance, identity);
    set_keep_alive(instance, *link);
    // Passive mode and time-stamp checking are on at any value, the other flags at 1 only.
    const Property parameters[] = {
        uint32("TunnelID", link->kfmFcipLinkIndex),
        boolean_byte("PassiveMode", low_byte(link->kfmFcipLinkExtPassiveMode)),
        uint32("NumTcpConnections", link->kfmFcipLinkExtNumTcpConns),
        boolean_byte("CheckTimestamp", low_byte(link->kfmFcipLinkExtTimeStampEnable)),
        uint32("TimeStampTolerance", link->kfmFcipLinkExtTimeStampTolerance),
        uint32("TcpRemPort", link->kfmFcipLinkExtTcpRemPort),
        boolean("LocalPortEnable", link->kfmFcipLinkExtLocalPortEnable == 1),
        boolean("SpecialFrameEnable", link->kfmFcipLinkExtSpecialFrameEnable == 1),
        boolean("BPortKAEnable", link->kfmFcipLinkExtBPortKaEnable == 1),
        uint32("CntrlQOSField", link->kfmFcipLinkExtCntrlQos),
        uint32("DataQOSField", link->kfmFcipLinkExtDataQos),
        uint32("EthIfIndex", link->kfmFcipLinkExtEthIfIndex),
        boolean("WriteAccelerator", link->kfmFcipLinkExtWriteAccel == 1),
        boolean("TapeAccelerator", link->kfmFcipLinkExtTapeAccel == 1),
        boolean("IPSec", link->kfmFcipLinkExtIpSec == 1),
        boolean("WriteAccOper", link->kfmFcipLinkExtWriteAccelOper == 1),
        boolean("TapeAccOper", link->kfmFcipLinkExtTapeAccelOper == 1),
        boolean("TapeAccReadOper", link->kfmFcipLinkExtTapeAccelReadOper == 1),
        uint32("IPComp", link->kfmFcipLinkExtIpCompression),
        uint32("FlowCtrlBufSize", link->kfmFcipLinkExtFlowCtrlBufSize),
    };
    set_properties(instance, parameters);
    return finish_instance(instance, properties, NamedBy::InstanceId, __func__);
}

CMPIObjectPath* fcip_settings_fill_reference(const char* className, const char* nameSpace,
                                             const FcipLinkEntry* link) {
    return fill_settings_reference(__func__, className, nameSpace, link);
}

CMPIInstance* fcip_profile_build_instance(const char* className, const char* nameSpace,
                                          const FcipEntityEntry* entity, const char** properties) {
    trace_entering(__func__);
    const auto [instance, ready] = start_traced_instance(__func__, className, nameSpace);
    if (!ready) return instance;

    const auto number = decimal<31>(entity->kfmFcipEntityId);
    std::puts(number.chars);
    const auto address = address_text(entity->kfmFcipEntityAddress);
    const Property table[] = {
        chars("InstanceID", number),
        chars("Name", number),
        chars("Caption", number),
        chars("ElementName", number),
        chars("FcipEntityAddress", address),
        uint32("FcipEntityTcpConnPort", entity->kfmFcipEntityTcpPort),
        boolean("FcipEntitySeqNumWrap", entity->kfmFcipEntitySeqNumWrap == 1),
        boolean("FcipEntitySACKOption", entity->kfmFcipEntitySackOption == 1),
        boolean("FcipEntityPHBSupport", entity->kfmFcipEntityPhbSupport == 1),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, NamedBy::InstanceId, __func__);
}

CMPIObjectPath* fcip_profile_fill_reference(const char* className, const char* nameSpace,
                                            const FcipEntityEntry* entity) {
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    // Profile numbers are small: the key has room for eight digits.
    const auto number = decimal<9>(entity->kfmFcipEntityId);
    add_keys(path, {chars("InstanceID", number)});
    return path;
}

int get_all_fcip_profiles(const char* className, const CMPIResult* result, const char** properties,
                          const char* nameSpace) {
    const char* const function = __func__;
    trace_entering(function);
    trace_line(function, 144); // the first round begins
    for_each_profile([&](const FcipEntityEntry& profile) {
        trace_line(function, 146);
        hand_over(result, fcip_profile_build_instance(className, nameSpace, &profile, properties));
        trace_line(function, 148); // the next round begins
    });
    trace_line(function, 150);
    trace_exiting(function);
    return 0;
}

int get_all_fcip_profile_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    trace_entering(__func__);
    for_each_profile([&](const FcipEntityEntry& profile) {
        hand_over(result, fcip_profile_fill_reference(className, nameSpace, &profile));
    });
    trace_exiting(__func__);
    return 0;
}
