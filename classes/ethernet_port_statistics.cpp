// KESTO_EthernetPortStatistics, the frame, byte and MAC error counters of a port, and the enumerations of its
// association with the port, KESTO_EthernetPortStatisticalData, which the platform's own library builds.
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "classes/builder.h"
#include "classes/text.h"
#include "common/broker.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/byte_order.h"
#include "platform/key_number.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/statistics.h"
#include "platform/table_walk.h"

namespace {

// Counters that the line card's MAC statistics give, after the bytes. Positions are those of big-endian
// 64-bit counters; 32-bit properties take the low half. Several properties share a counter.
struct MacCounter {
    const char* name;
    CMPIType type;
    std::size_t position;
};

constexpr MacCounter MAC_COUNTERS[] = {
    {"PacketsTransmitted", CMPI_uint64, 88},
    {"PacketsReceived", CMPI_uint64, 144},
    {"SymbolErrors", CMPI_uint32, 184},
    {"AlignmentErrors", CMPI_uint64, 192},
    {"FCSErrors", CMPI_uint64, 64},
    {"SingleCollisionFrames", CMPI_uint32, 40},
    {"MultipleCollisionFrames", CMPI_uint32, 40},
    {"DeferredTransmissions", CMPI_uint32, 40},
    {"LateCollissions", CMPI_uint64, 48},
    {"ExcessiveCollissions", CMPI_uint64, 56},
    {"InternalMACTransmitErrors", CMPI_uint32, 56},
    {"InternalMACReceiveErrors", CMPI_uint32, 56},
    {"CarrierSenseErrors", CMPI_uint32, 56},
    {"FrameTooLongs", CMPI_uint32, 56},
};
constexpr std::size_t MAC_BYTES_TRANSMITTED = 32;
constexpr std::size_t MAC_BYTES_RECEIVED = 112;

void set_port_counters(CMPIInstance* instance, const PortCounters& port) {
    const Property table[] = {
        uint64("BroadcastFramesReceived", port.inBroadcast),
        uint64("BroadcastFramesTransmitted", port.outBroadcast),
        uint64("MulticastFramesTransmitted", port.outMulticast),
        uint64("MulticastFramesReceived", port.inMulticast),
        uint64("UnicastFramesTransmitted", port.outUnicast),
        uint64("PacketsTransmitted", port.outUnicast),
        uint64("UnicastFramesReceived", port.inUnicast),
        uint64("PacketsReceived", port.inUnicast),
        uint64("BytesTransmitted", port.outBytes),
        uint64("BytesReceived", port.inBytes),
    };
    set_properties(instance, table);
}

// The line card's figures replace those of the port where both count.
void set_mac_counters(CMPIInstance* instance, const EthMacStats& statistics) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(statistics.counters);
    std::printf("Bytes Tran %d \n", host_order<std::int32_t>(bytes, MAC_BYTES_TRANSMITTED));
    set_properties(instance, {uint64("BytesTransmitted", big_endian_64(bytes + MAC_BYTES_TRANSMITTED))});
    std::printf("Bytes Received %d\n", host_order<std::int32_t>(bytes, MAC_BYTES_RECEIVED));
    set_properties(instance, {uint64("BytesReceived", big_endian_64(bytes + MAC_BYTES_RECEIVED))});
    for (const auto& [name, type, position] : MAC_COUNTERS) {
        const std::uint64_t value = big_endian_64(bytes + position);
        set_properties(instance, {type == CMPI_uint64 ? uint64(name, value)
                                                      : uint32(name, static_cast<std::uint32_t>(value))});
    }
}

// The statistics walkers take the port types 2, 5 and 26, and ports whose type cannot be had.
bool has_statistics(std::uint32_t ifIndex) {
    std::uint8_t type = 0;
    if (if_index_get_type(ifIndex, &type) != 0) return true;
    return type == 2 || type == 5 || type == ETHERNET_INTERFACE;
}

// Walks the ports that have statistics; make(port) gives the object for the result.
template <typename Make>
int return_for_each_port(const CMPIResult* result, Make make) {
    walk_ports([&](const PortInfo& port) {
        const std::uint32_t ifIndex = port.ifIndex;
        std::printf("if_index %d \n", as_printed(ifIndex));
        if (has_statistics(ifIndex)) hand_over(result, make(port));
        return Visit::GoOn;
    });
    return 0;
}

} // namespace

CMPIInstance* eth_statistics_build_instance(const char* className, const char* nameSpace,
                                            const PortInfo* port, const char** properties) {
    trace_entering(__func__);
    const std::uint32_t ifIndex = port->ifIndex;
    PlatformRow<PortCounters> counters;
    const int counted = fetch_row(
        counters, [&](PortCounters** out) { return pm_get_port_counters(mts_q, ifIndex, 0, 6, out, 0); });
    if (counted != 0 || !counters) {
        std::puts("no port counters");
        return nullptr;
    }
    const auto [instance, ready] = start_traced_instance(__func__, className, nameSpace);
    if (!ready) return instance;

    const auto number = decimal<31>(ifIndex);
    set_properties(instance, {chars("InstanceID", number)});
    EthMacStats macStatistics{};
    const int received = get_ethernetport_statistics(ifIndex, &macStatistics);
    const auto name = cut<31>(interface_name(ifIndex).chars);
    set_properties(instance,
                   {chars("Caption", name), chars("ElementName", name), chars("Description", name)});
    set_port_counters(instance, *counters);
    // Without the line card's figures not even the filter is applied.
    if (received == 0) {
        std::puts("MAC statistics received");
        set_mac_counters(instance, macStatistics);
        apply_filter(instance, properties, NamedBy::InstanceId);
    }
    trace_exiting(__func__);
    return instance;
}

CMPIObjectPath* eth_statistics_fill_reference(const char* className, const char* nameSpace,
                                              const PortInfo* port) {
    trace_entering(__func__);
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    set_host_name(path);
    const auto number = decimal<31>(port->ifIndex);
    add_keys(path, {chars("InstanceID", number)});
    trace_exiting(__func__);
    return path;
}

int get_all_eth_stat_instances(const char* className, const CMPIResult* result, const char** properties,
                               const char* nameSpace) {
    return return_for_each_port(result, [&](const PortInfo& port) {
        return eth_statistics_build_instance(className, nameSpace, &port, properties);
    });
}

int get_all_eth_stat_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_for_each_port(result, [&](const PortInfo& port) {
        return eth_statistics_fill_reference(className, nameSpace, &port);
    });
}

int get_all_eth_stat_data_instances(const char* className, const CMPIResult* result, const char** properties,
                                    const char* nameSpace) {
    std::fputs("\n Entering get_all_eth_stat_data_instances \n ", stdout);
    walk_ports([&](const PortInfo& port) {
        const std::uint32_t ifIndex = port.ifIndex;
        std::printf("if_index %d \n", as_printed(ifIndex));
        if (!is_ethernet(ifIndex)) {
            std::puts("not an Ethernet port");
            std::puts("end of the Ethernet ports");
            return Visit::Stop;
        }
        std::puts(" Call to fcport_build_instance_pm ");
        hand_over(result, fcport_build_instance_pm(nameSpace, className, &port, properties, _broker));
        return Visit::GoOn;
    });
    return 0;
}

int get_all_eth_stat_data_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    walk_ports([&](const PortInfo& port) {
        hand_over(result, fcport_fill_reference_pm(nameSpace, className, &port, _broker));
        return Visit::GoOn;
    });
    return 0;
}
