// The CIM utility library: the switch's names, and the CIM objects of what the provider does not model
// itself.
//
// Objects are made through the caller's broker, with the functions that every broker has had since
// version 1.0. The emulator's own lock is not held while the broker is called: it may call anything.
#include <cmpidt.h>
#include <cmpift.h>
#include <strings.h>

#include <cstdint>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include "emulator/call.h"
#include "emulator/control.h"
#include "emulator/exported_services.h"
#include "emulator/runtime.h"
#include "emulator/switch_state.h"
#include "emulator/text_format.h"
#include "platform/platform_records.h"

using namespace emulator;

namespace {

constexpr const char* PHYSICAL_SYSTEM = "KESTO_PhysicalComputerSystem";
constexpr const char* ETHERNET_PORT = "KESTO_EthernetPort";
constexpr const char* ETHERNET_STATISTICS = "KESTO_EthernetPortStatistics";
constexpr const char* ETHERNET_STATISTICAL_DATA = "KESTO_EthernetPortStatisticalData";

// By CMPI's convention a CMPI_chars value is the address of the characters themselves.
CMPIValue* chars_value(const char* text) {
    return static_cast<CMPIValue*>(static_cast<void*>(const_cast<char*>(text)));
}

const char* kept_host_name() {
    Runtime& emulated = runtime();
    const std::lock_guard guard(emulated.mutex);
    return emulated.keep(emulated.state.hostName);
}

struct NamedText {
    const char* name;
    std::string text;
};
using Keys = std::vector<NamedText>;

CMPIObjectPath* make_path(const CMPIBroker* broker, const char* nameSpace, const char* className,
                          const Keys& keys) {
    CMPIObjectPath* path = broker->eft->newObjectPath(broker, nameSpace, className, nullptr);
    if (path == nullptr || path->hdl == nullptr) return path;
    path->ft->setHostname(path, kept_host_name());
    for (const NamedText& key : keys) {
        path->ft->addKey(path, key.name, chars_value(key.text.c_str()), CMPI_chars);
    }
    return path;
}

// An instance on a path. The property filter is set before the first property, so that it applies to all of
// them.
CMPIInstance* make_instance(const CMPIBroker* broker, const CMPIObjectPath* path, const char** properties,
                            const Keys& keys, const Keys& others) {
    if (path == nullptr || path->hdl == nullptr) return nullptr;
    CMPIInstance* instance = broker->eft->newInstance(broker, path, nullptr);
    if (instance == nullptr || instance->hdl == nullptr) return instance;
    if (properties != nullptr) {
        std::vector<const char*> keyList;
        for (const NamedText& key : keys) {
            keyList.push_back(key.name);
        }
        keyList.push_back(nullptr);
        instance->ft->setPropertyFilter(instance, properties, keyList.data());
    }
    for (const Keys* list : {&keys, &others}) {
        for (const NamedText& entry : *list) {
            instance->ft->setProperty(instance, entry.name, chars_value(entry.text.c_str()), CMPI_chars);
        }
    }
    return instance;
}

CMPIInstance* make_association(const CMPIBroker* broker, const char* nameSpace, const char* className,
                               CMPIObjectPath* ref1, CMPIObjectPath* ref2, const char* role1,
                               const char* role2) {
    if (ref1 == nullptr || ref2 == nullptr) return nullptr;
    CMPIInstance* instance =
        make_instance(broker, make_path(broker, nameSpace, className, {}), nullptr, {}, {});
    if (instance == nullptr || instance->hdl == nullptr) return instance;
    CMPIValue value;
    value.ref = ref1;
    instance->ft->setProperty(instance, role1, &value, CMPI_ref);
    value.ref = ref2;
    instance->ft->setProperty(instance, role2, &value, CMPI_ref);
    return instance;
}

Keys system_keys(const char* className, const std::string& name) {
    return {{"CreationClassName", className}, {"Name", name}};
}

// Whether the call is to make its object: the arguments are there and no fault prevents it.
bool is_to_make(const Call& call, const CMPIBroker* broker, const char* className, const char* nameSpace) {
    return call.require(broker != nullptr && className != nullptr && nameSpace != nullptr,
                        "the broker, the class name or the namespace is NULL") &&
           !call.failed() && call.verdict().effect != Effect::SucceedWithoutRow;
}

std::string class_and_namespace(const char* className, const char* nameSpace) {
    return std::string(className == nullptr ? "NULL" : className) + " " +
           (nameSpace == nullptr ? "NULL" : nameSpace);
}

// What the objects of a port say about it.
struct PortFacts {
    std::string id; // decimal if-index, negative from 0x80000000 on, as clients send it back
    std::string name;
    std::string address;
    std::string systemName;
    std::uint16_t number = 0;
};

// A call of one of the two port services: it checks and orders the arguments, then reads the port's facts.
struct PortRequest {
    PortRequest(const char* symbol, const char* first, const char* second, const PortInfo* row,
                const CMPIBroker* broker) {
        const Call call(symbol, CallerLock::NotNeeded, [&] {
            return class_and_namespace(first, second) +
                   (row == nullptr ? " NULL" : format(" if=0x%08x", row->ifIndex));
        });
        if (!call.require(row != nullptr, "the row is NULL") || !is_to_make(call, broker, first, second)) {
            return;
        }
        const bool inOrder = is_class(first);
        if (!call.require(inOrder || is_class(second), "no class name with the prefix KESTO_")) return;
        className = inOrder ? first : second;
        nameSpace = inOrder ? second : first;
        facts.id = format("%d", static_cast<int>(row->ifIndex));
        facts.systemName = runtime().state.systemName;
        if (const Port* port = runtime().state.find_port(row->ifIndex)) {
            facts.name = port->name;
            facts.number = port->port;
            facts.address = port->address;
        }
        accepted = true;
    }

    static bool is_class(const char* text) { return strncasecmp(text, "KESTO_", 6) == 0; }
    bool is_statistical_data() const { return strcasecmp(className, ETHERNET_STATISTICAL_DATA) == 0; }

    Keys port_keys(const char* portClass) const {
        return {{"SystemCreationClassName", PHYSICAL_SYSTEM},
                {"SystemName", facts.systemName},
                {"CreationClassName", portClass},
                {"DeviceID", facts.id}};
    }
    // The two ends of a port's association with its statistics.
    CMPIObjectPath* port_end(const CMPIBroker* broker) const {
        return make_path(broker, nameSpace, ETHERNET_PORT, port_keys(ETHERNET_PORT));
    }
    CMPIObjectPath* statistics_end(const CMPIBroker* broker) const {
        return make_path(broker, nameSpace, ETHERNET_STATISTICS, {{"InstanceID", facts.id}});
    }

    bool accepted = false;
    const char* className = nullptr;
    const char* nameSpace = nullptr;
    PortFacts facts;
};

} // namespace

const char* getCSName(void) {
    const Call call("getCSName", CallerLock::NotNeeded);
    return kept_host_name();
}

const char* CSgetName(std::uint32_t queue) {
    const Call call("CSgetName", CallerLock::Needed);
    call.usable(queue);
    return runtime().keep(runtime().state.systemName);
}

int system_cim_get_switch_wwn(std::uint32_t queue, std::uint8_t (*wwn)[8]) {
    const Call call("system_cim_get_switch_wwn", CallerLock::Needed);
    if (!call.require(wwn != nullptr, "the out-parameter is NULL") || !call.usable(queue)) return FAILED;
    if (call.failed()) return call.status();
    std::memcpy(*wwn, runtime().state.wwn.data(), sizeof *wwn);
    return OK;
}

char* cim_sprintf_wwn(char* text, const std::uint8_t (*wwn)[8]) {
    const Call call("cim_sprintf_wwn", CallerLock::NotNeeded);
    if (!call.require(text != nullptr && wwn != nullptr, "the text or the WWN is NULL")) return text;
    const auto& b = *wwn;
    const std::string written =
        format("%02x:%02x:%02x:%02x:%02x:%02x:%02x:%02x", b[0], b[1], b[2], b[3], b[4], b[5], b[6], b[7]);
    std::memcpy(text, written.c_str(), written.size() + 1);
    return text;
}

CMPIObjectPath* switch_fill_reference(const char* className, const char* nameSpace,
                                      const CMPIBroker* broker) {
    std::string name;
    {
        const Call call("switch_fill_reference", CallerLock::NotNeeded,
                        [&] { return class_and_namespace(className, nameSpace); });
        if (!is_to_make(call, broker, className, nameSpace)) return nullptr;
        name = runtime().state.systemName;
    }
    return make_path(broker, nameSpace, className, system_keys(className, name));
}

CMPIObjectPath* switch_fill_reference_str(const char* className, const char* nameSpace, const char* key,
                                          const CMPIBroker* broker) {
    {
        const Call call("switch_fill_reference_str", CallerLock::NotNeeded, [&] {
            return class_and_namespace(className, nameSpace) + " " + (key == nullptr ? "NULL" : key);
        });
        if (!call.require(key != nullptr, "the key is NULL") ||
            !is_to_make(call, broker, className, nameSpace)) {
            return nullptr;
        }
    }
    return make_path(broker, nameSpace, className, system_keys(className, key));
}

CMPIInstance* switch_build_instance_str(const char* className, const char* nameSpace, const char* key,
                                        std::uint32_t option, const char** properties,
                                        const CMPIBroker* broker) {
    {
        const Call call("switch_build_instance_str", CallerLock::NotNeeded, [&] {
            return class_and_namespace(className, nameSpace) + " " + (key == nullptr ? "NULL" : key) +
                   format(" %u", option);
        });
        call.require(option == 0, "the constant argument is not 0");
        if (!call.require(key != nullptr, "the key is NULL") ||
            !is_to_make(call, broker, className, nameSpace)) {
            return nullptr;
        }
    }
    const Keys keys = system_keys(className, key);
    return make_instance(broker, make_path(broker, nameSpace, className, keys), properties, keys,
                         {{"NameFormat", "WWN"}, {"ElementName", key}});
}

CMPIInstance* association_class_build_instance_path(const char* className, const char* nameSpace,
                                                    const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                                    const char* role1, const char* role2,
                                                    const CMPIBroker* broker) {
    {
        const Call call("association_class_build_instance_path", CallerLock::NotNeeded, [&] {
            return class_and_namespace(className, nameSpace) + " " + class_and_namespace(role1, role2);
        });
        if (!call.require(role1 != nullptr && role2 != nullptr, "a role is NULL") ||
            !is_to_make(call, broker, className, nameSpace)) {
            return nullptr;
        }
    }
    return make_association(broker, nameSpace, className, const_cast<CMPIObjectPath*>(ref1),
                            const_cast<CMPIObjectPath*>(ref2), role1, role2);
}

CMPIInstance* fcport_build_instance_pm(const char* className, const char* nameSpace, const PortInfo* row,
                                       const char** properties, const CMPIBroker* broker) {
    const PortRequest port("fcport_build_instance_pm", className, nameSpace, row, broker);
    if (!port.accepted) return nullptr;
    if (port.is_statistical_data()) {
        return make_association(broker, port.nameSpace, port.className, port.port_end(broker),
                                port.statistics_end(broker), "ManagedElement", "Stats");
    }
    const Keys keys = port.port_keys(port.className);
    CMPIInstance* instance =
        make_instance(broker, make_path(broker, port.nameSpace, port.className, keys), properties, keys,
                      {{"ElementName", port.facts.name}, {"PermanentAddress", port.facts.address}});
    if (instance == nullptr || instance->hdl == nullptr) return instance;
    CMPIValue number;
    number.uint16 = port.facts.number;
    instance->ft->setProperty(instance, "PortNumber", &number, CMPI_uint16);
    return instance;
}

CMPIObjectPath* fcport_fill_reference_pm(const char* className, const char* nameSpace, const PortInfo* row,
                                         const CMPIBroker* broker) {
    const PortRequest port("fcport_fill_reference_pm", className, nameSpace, row, broker);
    if (!port.accepted) return nullptr;
    if (!port.is_statistical_data()) {
        return make_path(broker, port.nameSpace, port.className, port.port_keys(port.className));
    }
    CMPIObjectPath* path = make_path(broker, port.nameSpace, port.className, {});
    if (path == nullptr || path->hdl == nullptr) return path;
    CMPIValue value;
    value.ref = port.port_end(broker);
    if (value.ref != nullptr) path->ft->addKey(path, "ManagedElement", &value, CMPI_ref);
    value.ref = port.statistics_end(broker);
    if (value.ref != nullptr) path->ft->addKey(path, "Stats", &value, CMPI_ref);
    return path;
}
