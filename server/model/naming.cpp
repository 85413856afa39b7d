#include "server/model/naming.h"

#include <array>
#include <string_view>

namespace cimserver {

namespace {

// InstanceID names an instance alone; the others name it together, as far as it has them.
constexpr std::string_view SOLE_KEY = "InstanceID";
constexpr std::array<std::string_view, 5> JOINT_KEYS = {"SystemCreationClassName", "SystemName",
                                                        "CreationClassName", "DeviceID", "Name"};
// A logical device is named by its DeviceID and keeps Name as a mere label.
constexpr std::string_view DEVICE_KEY = "DeviceID";
constexpr std::string_view LABEL_OF_DEVICES = "Name";

const NamedValue* find_set(const Instance& instance, std::string_view name) {
    const NamedValue* property = instance.properties.find(name);
    if (property == nullptr) property = instance.filteredOut.find(name);
    return property != nullptr && !property->value.is_null() && !property->value.is_array() ? property
                                                                                            : nullptr;
}

void add_references(NamedValues& keys, const NamedValues& properties) {
    for (const NamedValue& property : properties.all()) {
        if (property.value.as_reference() != nullptr) keys.set(property.name, property.value);
    }
}

} // namespace

ObjectPath named_path(const Instance& instance) {
    ObjectPath path = instance.path;
    if (!path.keys.empty()) return path;

    add_references(path.keys, instance.properties);
    add_references(path.keys, instance.filteredOut);
    if (!path.keys.empty()) return path;

    if (const NamedValue* id = find_set(instance, SOLE_KEY)) {
        path.keys.set(id->name, id->value);
        return path;
    }
    for (const std::string_view name : JOINT_KEYS) {
        if (name == LABEL_OF_DEVICES && (find_set(instance, DEVICE_KEY) != nullptr)) continue;
        if (const NamedValue* key = find_set(instance, name)) path.keys.set(key->name, key->value);
    }
    return path;
}

} // namespace cimserver
