#include "classes/builder.h"

#include "common/broker.h"
#include "common/foreign_servers.h"
#include "common/results.h"
#include "common/trace.h"
#include "platform/platform_services.h"

namespace {

// Texts travel as they are, numbers by address.
const CMPIValue* value_of(const Property& property) {
    if (property.type == CMPI_chars) return reinterpret_cast<const CMPIValue*>(property.text);
    return &property.value;
}

NewInstance instance_of(CMPIObjectPath* path) {
    set_host_name(path);
    CMPIInstance* instance = _broker->eft->newInstance(_broker, path, nullptr);
    return {instance, instance != nullptr && instance->hdl != nullptr};
}

// The list ends with NULL; the CIM server only reads it.
const char** key_names(NamedBy naming) {
    static const char* instanceId[] = {"InstanceID", nullptr};
    static const char* systemAndName[] = {"SystemCreationClassName", "SystemName", "CreationClassName",
                                          "Name", nullptr};
    return naming == NamedBy::InstanceId ? instanceId : systemAndName;
}

} // namespace

void set_properties(CMPIInstance* instance, std::span<const Property> properties) {
    for (const Property& property : properties) {
        instance->ft->setProperty(instance, property.name, value_of(property), property.type);
    }
}

CMPIObjectPath* new_object_path(const char* className, const char* nameSpace) {
    return _broker->eft->newObjectPath(_broker, nameSpace, className, nullptr);
}

void set_host_name(CMPIObjectPath* path) {
    if (is_usable(path)) path->ft->setHostname(path, getCSName());
}

void add_keys(CMPIObjectPath* path, std::span<const Property> keys) {
    if (!is_usable(path)) return;
    for (const Property& key : keys) {
        path->ft->addKey(path, key.name, value_of(key), key.type);
    }
}

NewInstance start_instance(const char* className, const char* nameSpace) {
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    return is_usable(path) ? instance_of(path) : NewInstance{nullptr, false};
}

NewInstance start_traced_instance(const char* function, const char* className, const char* nameSpace) {
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (is_usable(path)) return instance_of(path);
    trace_exiting(function);
    return {nullptr, false};
}

void apply_filter(CMPIInstance* instance, const char** properties, NamedBy naming) {
    const char* noKeys[] = {nullptr};
    instance->ft->setPropertyFilter(instance, properties, FOR_FOREIGN_SERVERS ? key_names(naming) : noKeys);
}

CMPIInstance* finish_instance(CMPIInstance* instance, const char** properties, NamedBy naming,
                              const char* function) {
    apply_filter(instance, properties, naming);
    trace_exiting(function);
    return instance;
}

CMPIInstance* finish_marked_instance(CMPIInstance* instance, const char** properties, NamedBy naming,
                                     const char* function, int line) {
    apply_filter(instance, properties, naming);
    trace_line(function, line);
    trace_exiting(function);
    return instance;
}
