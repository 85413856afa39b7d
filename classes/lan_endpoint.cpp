// KESTO_LANEndPoint: an Ethernet port that can carry FCIP traffic. Its system is the physical switch.
#include <cstdint>
#include <cstdio>

#include "classes/builder.h"
#include "classes/text.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/computer_system.h"
#include "platform/key_number.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"
#include "platform/table_walk.h"

namespace {

// The interface types assumed where the platform gives none; instances and paths assume differently.
constexpr std::uint8_t ASSUMED_FOR_INSTANCES = ETHERNET_INTERFACE;
constexpr std::uint8_t ASSUMED_FOR_PATHS = 2;

// "ifIndex:address"
Text<99> endpoint_name(std::uint32_t ifIndex, const PortInfo* port, std::uint8_t assumedType) {
    std::uint8_t type = assumedType;
    if (port == nullptr || if_index_get_type(port->ifIndex, &type) != 0) type = assumedType;
    char address[128] = {};
    if (port != nullptr) pm_cim_get_network_address(address, port, type);
    Text<99> name;
    std::snprintf(name.chars, sizeof name.chars, "%d:%s", as_printed(ifIndex), address);
    return name;
}

// Walks the Ethernet ports; make(ifIndex) gives the object for the result.
template <typename Make>
int return_for_each_port(const CMPIResult* result, Make make) {
    walk_ports([&](const PortInfo& port) {
        const std::uint32_t ifIndex = port.ifIndex;
        std::printf("if_index %d \n", as_printed(ifIndex));
        if (!is_ethernet(ifIndex)) return Visit::Stop;
        hand_over(result, make(ifIndex));
        return Visit::GoOn;
    });
    return 0;
}

} // namespace

CMPIInstance* lan_endpoint_build_instance(const char* className, const char* nameSpace, std::uint32_t ifIndex,
                                          const char** properties) {
    PlatformRow<PortInfo> port;
    if (fetch_port(ifIndex, port) != 0 || !port) return nullptr;
    const auto name = endpoint_name(port->ifIndex, port.get(), ASSUMED_FOR_INSTANCES);
    const auto [instance, ready] = start_instance(className, nameSpace);
    if (!ready) return instance;

    set_properties(instance, {chars("SystemCreationClassName", PHYSICAL_COMPUTER_SYSTEM)});
    if (port->ifIndex != 0) {
        const auto switchWwn = switch_wwn_text();
        const Property table[] = {
            chars("SystemName", switchWwn),
            chars("Name", name),
            chars("CreationClassName", "KESTO_LANEndPoint"),
            chars("NameFormat", NAME_FORMAT),
        };
        set_properties(instance, table);
    }
    return finish_instance(instance, properties, NamedBy::SystemAndName, __func__);
}

CMPIObjectPath* lan_endpoint_fill_reference(const char* className, const char* nameSpace,
                                            std::uint32_t ifIndex) {
    trace_entering(__func__);
    PlatformRow<PortInfo> port;
    if (fetch_port(ifIndex, port) != 0) return nullptr;
    const auto name = endpoint_name(port ? port->ifIndex : ifIndex, port.get(), ASSUMED_FOR_PATHS);
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (is_usable(path)) {
        set_host_name(path);
        // The path names the switch and spells the class otherwise than the instance.
        const Property keys[] = {
            chars("SystemName", CSgetName(mts_q)),
            chars("SystemCreationClassName", PHYSICAL_COMPUTER_SYSTEM),
            chars("CreationClassName", "KESTO_LanEndPoint"),
            chars("Name", name),
        };
        add_keys(path, keys);
    }
    trace_exiting(__func__);
    return path;
}

int get_all_lan_endpoint_instances(const char* className, const CMPIResult* result, const char** properties,
                                   const char* nameSpace) {
    return return_for_each_port(result, [&](std::uint32_t ifIndex) {
        return lan_endpoint_build_instance(className, nameSpace, ifIndex, properties);
    });
}

int get_all_lan_endpoint_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_for_each_port(result, [&](std::uint32_t ifIndex) {
        return lan_endpoint_fill_reference(className, nameSpace, ifIndex);
    });
}
