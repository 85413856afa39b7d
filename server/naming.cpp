#include "server/naming.h"

#include <array>

namespace cimserver {

namespace {

// InstanceID names an instance alone; the others name it together, as far as it has them.
constexpr std::string_view kSoleKey = "InstanceID";
constexpr std::array<std::string_view, 5> kJointKeys = {"SystemCreationClassName", "SystemName",
                                                        "CreationClassName", "DeviceID", "Name"};
// A logical device is named by its DeviceID and keeps Name as a mere label.
constexpr std::string_view kDeviceKey = "DeviceID";
constexpr std::string_view kLabelOfDevices = "Name";

const NamedValue* findSet(const Instance& instance, std::string_view name) {
    const NamedValue* property = instance.properties.find(name);
    if (!property) property = instance.filteredOut.find(name);
    return property && !property->value.isNull() && !property->value.isArray() ? property : nullptr;
}

void addReferences(NamedValues& keys, const NamedValues& properties) {
    for (const NamedValue& property : properties.all()) {
        if (property.value.asReference()) keys.set(property.name, property.value);
    }
}

} // namespace

ObjectPath namedPath(const Instance& instance) {
    ObjectPath path = instance.path;
    if (!path.keys.empty()) return path;

    addReferences(path.keys, instance.properties);
    addReferences(path.keys, instance.filteredOut);
    if (!path.keys.empty()) return path;

    if (const NamedValue* id = findSet(instance, kSoleKey)) {
        path.keys.set(id->name, id->value);
        return path;
    }
    for (const std::string_view name : kJointKeys) {
        if (name == kLabelOfDevices && findSet(instance, kDeviceKey)) continue;
        if (const NamedValue* key = findSet(instance, name)) path.keys.set(key->name, key->value);
    }
    return path;
}

} // namespace cimserver
