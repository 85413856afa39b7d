// KESTO_IPEndPointStatistics, KESTO_TCPEndPointStatistics and KESTO_TCPStatisticalData: the counters of one
// tunnel, as the line card of its Gigabit Ethernet port keeps them.
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "classes/builder.h"
#include "classes/text.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/byte_order.h"
#include "platform/computer_system.h"
#include "platform/fcip_config.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"
#include "platform/statistics.h"

namespace {

// An IP counter: the sum of the big-endian words at these positions of the reply, less the one at `minus`.
// Position 0 holds the reply's header and stands for none.
struct IpCounter {
    const char* name;
    std::size_t plus[6];
    std::size_t minus;
};

constexpr IpCounter IP_COUNTERS[] = {
    {"ReceivedPDUs", {36}, 0},
    {"ReceivedPDUHeaderErrors", {68, 64, 76, 72, 56, 140}, 0},
    {"ReceivedPDUAddressErrors", {80}, 0},
    {"ReceivedPDUForwards", {92}, 0},
    {"ReceivedPDUUnknownProtocolErrors", {108}, 0},
    {"ReceivedPDUDiscards", {152}, 0},
    {"PDUDelivers", {40}, 0},
    {"SentPDUs", {52}, 0},
    {"SentPDUDiscards", {84}, 0},
    {"SentPDUNoRouteErrors", {136}, 0},
    {"ReassemblyRequireds", {80}, 116}, // wraps when the word at 116 is the larger one
    {"ReassembledPackets", {116}, 0},
    {"ReassemblyFailed", {148}, 0},
    {"Fragmentation", {120}, 0},
    {"FragmentationFaileds", {128}, 0},
    {"FragmentedPDUCreates", {124}, 0},
    {"FragmentationFaileds", {128}, 0}, // set a second time
    {"RouteEntriesDiscards", {152}, 0},
};

std::uint32_t ip_counter(const IpStatsReply& reply, const IpCounter& counter) {
    std::uint32_t value = 0;
    for (const std::size_t position : counter.plus) {
        if (position != 0) value += big_endian_32(&reply.bytes[position]);
    }
    if (counter.minus != 0) value -= big_endian_32(&reply.bytes[counter.minus]);
    return value;
}

} // namespace

CMPIInstance* ip_statistics_build_instance(const char* className, const char* nameSpace,
                                           const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;
    if (link == nullptr) return nullptr;

    // The row may be a link error row, which ends after word 27: fields are read one by one, never the
    // whole.
    IpStatsReply* received = nullptr;
    if (get_ip_stats(mts_q, link->kfmFcipLinkExtEthIfIndex, 1, &received) == 0) {
        std::puts("Great!!!");
    } else {
        trace_line(__func__, 96);
    }
    const PlatformRow<IpStatsReply> reply(received);
    if (!reply) return nullptr;

    const SystemName systemName = system_name(link->kfmFcipLinkIfIndex);
    const auto interface = decimal<31>(link->kfmFcipLinkIfIndex);
    const Property identity[] = {
        chars("InstanceID", interface),
        chars("SystemName", systemName.text),
        chars("CreationClassName", "KESTO_IPEndPointStatistics"),
    };
    set_properties(instance, identity);
    for (const IpCounter& counter : IP_COUNTERS) {
        set_properties(instance, {uint32(counter.name, ip_counter(*reply, counter))});
    }
    return finish_instance(instance, properties, NamedBy::InstanceId, __func__);
}

CMPIInstance* tcp_statistics_build_instance(const char* className, const char* nameSpace,
                                            const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    FcipLinkEntry fresh{};
    if (get_link_from_link_index(mts_q, link->kfmFcipLinkIndex, &fresh) != 0) {
        trace_line(__func__, 119);
        return nullptr;
    }
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(fresh.kfmFcipEntityId, profile)) {
        trace_line(__func__, 124);
        return nullptr;
    }
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    set_properties(instance, {chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM)});
    request_tcp_counters(fresh.kfmFcipLinkExtEthIfIndex);
    const SystemName systemName = system_name(fresh.kfmFcipLinkIfIndex);
    const auto interface = decimal<31>(fresh.kfmFcipLinkIfIndex);
    const Property table[] = {
        chars("SystemName", name_or(systemName, "0000")),
        uint32("ReceivedSegmentsInError", 0),
        uint32("SentResetSegments", 0),
        chars("InstanceID", interface),
        chars("CreationClassName", "KESTO_TCPEndPointStatistics"),
        // Words 20 to 27 of the caller's row, whatever row that is.
        uint64("TooManyErrors", word_pair(link, 20)),
        uint64("KeepAliveTimeOut", word_pair(link, 22)),
        uint64("DatagramsDropped", word_pair(link, 24)),
        uint64("SaParamMismatch", word_pair(link, 26)),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, NamedBy::InstanceId, __func__);
}

CMPIInstance* tcp_statistical_data_build_instance(const char* className, const char* nameSpace,
                                                  const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    set_properties(instance, {chars("SystemCreationClassName", LOGICAL_COMPUTER_SYSTEM)});
    const auto tunnel = decimal<31>(link->kfmFcipLinkIndex + 1);
    trace_line(__func__, 159);
    FcipLinkEntry fresh{};
    if (get_link_from_link_index(mts_q, link->kfmFcipLinkIndex, &fresh) != 0) {
        trace_line(__func__, 162);
        return error_object<CMPIInstance>();
    }
    request_tcp_counters(fresh.kfmFcipLinkExtEthIfIndex);
    const SystemName systemName = system_name(fresh.kfmFcipLinkIfIndex);
    // The line card is asked, and its counters are not shown: all of them read 0.
    const Property table[] = {
        chars("SystemName", systemName.text),
        uint32("ReceivedSegmentsInError", 0),
        uint32("SentResetSegments", 0),
        chars("InstanceID", tunnel),
        uint32("ActiveOpenConnections", 0),
        uint32("PassiveOpenConnections", 0),
        uint32("AttemptFails", 0),
        uint32("EstablishedResets", 0),
        uint32("EstablishedConnections", 0),
        uint32("ReceivedSegments", 0),
        uint32("RetransmittedSegments", 0),
    };
    set_properties(instance, table);
    return finish_instance(instance, properties, NamedBy::InstanceId, __func__);
}

CMPIObjectPath* stat_fill_reference(const char* className, const char* nameSpace, const FcipLinkEntry* link) {
    PlatformRow<FcipEntityEntry> profile;
    if (!read_profile(link->kfmFcipEntityId, profile)) {
        trace_line(__func__, 189);
        return nullptr;
    }
    PlatformRow<FcipLinkEntry> fresh;
    if (!find_link_again(key_of(*link), fresh)) {
        trace_line(__func__, 194);
        return nullptr;
    }
    // Without an Ethernet port there is nothing that counts.
    if (fresh->kfmFcipLinkExtEthIfIndex == 0) return nullptr;
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    set_host_name(path);
    const auto interface = decimal<59>(fresh->kfmFcipLinkIfIndex);
    add_keys(path, {chars("InstanceID", interface)});
    return path;
}
