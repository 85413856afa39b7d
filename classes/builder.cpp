#include "classes/builder.h"

#include "include/class_table.h"
#include "platform/fcip_config.h"
#include "platform/platform_services.h"
#include "provider/provider.h"

namespace {

// Texts travel as they are, numbers by address.
const CMPIValue* value_of(const Property& property) {
    if (property.type == CMPI_chars) return reinterpret_cast<const CMPIValue*>(property.text.c_str());
    return &property.value;
}

// Hands the object that make(row of the class table, link) gives to the result, for every link.
template <typename Object, typename Make>
int return_for_each_link(const LinkWalk& walk, const char* function, const char* className,
                         const CMPIResult* result, Make make) {
    trace_entering(function);
    const LinkClass* served = find_class(walk.classes, className);
    const WalkEnd end = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        if (walk.traceLines) trace_line(function, __LINE__);
        Object* object = served != nullptr ? make(*served, link) : nullptr;
        if (served != nullptr || walk.unserved == Unserved::NullForEachLink) hand_over(result, object);
        return Visit::GoOn;
    });
    if (walk.traceLines && end == WalkEnd::FailedWithRow) trace_line(function, __LINE__);
    return 0;
}

} // namespace

SystemName system_name(std::uint32_t ifIndex) {
    SystemName name{};
    name.status = get_vsan_wwn(ifIndex, name.text.chars);
    return name;
}

Text<31> interface_name(std::uint32_t ifIndex) {
    char longName[256] = {};
    sprintf_if_index(longName, ifIndex);
    return cut<31>(longName);
}

Text<64> wwn_text(const std::uint8_t (&wwn)[8]) {
    Text<64> text;
    cim_sprintf_wwn(text.chars, &wwn);
    return text;
}

Text<64> switch_wwn_text() {
    std::uint8_t wwn[8];
    init_wwn(wwn);
    system_cim_get_switch_wwn(mts_q, &wwn);
    return wwn_text(wwn);
}

void set_properties(CMPIInstance* instance, std::span<const Property> properties) {
    for (const Property& property : properties) {
        instance->ft->setProperty(instance, property.name, value_of(property), property.type);
    }
}

void add_keys(CMPIObjectPath* path, std::span<const Property> keys) {
    for (const Property& key : keys)
        path->ft->addKey(path, key.name, value_of(key), key.type);
}

CMPIObjectPath* new_object_path(const char* className, const char* nameSpace) {
    return _broker->eft->newObjectPath(_broker, nameSpace, className, nullptr);
}

void set_host_name(CMPIObjectPath* path) {
    path->ft->setHostname(path, getCSName());
}

NewInstance start_instance(const char* className, const char* nameSpace) {
    CMPIObjectPath* path = new_object_path(className, nameSpace);
    if (!is_usable(path)) return {.ready = false, .hasPath = false, .instance = nullptr};
    set_host_name(path);
    CMPIInstance* instance = _broker->eft->newInstance(_broker, path, nullptr);
    const bool ready = instance != nullptr && instance->hdl != nullptr;
    return {.ready = ready, .hasPath = true, .instance = instance};
}

void apply_filter(CMPIInstance* instance, const char** properties) {
    const char* noKeys[] = {nullptr};
    instance->ft->setPropertyFilter(instance, properties, noKeys);
}

CMPIInstance* finish_instance(CMPIInstance* instance, const char** properties, const char* function) {
    apply_filter(instance, properties);
    trace_exiting(function);
    return instance;
}

int return_link_instances(const LinkWalk& walk, const char* function, const char* className,
                          const CMPIResult* result, const char** properties, const char* nameSpace) {
    return return_for_each_link<CMPIInstance>(
        walk, function, className, result, [&](const LinkClass& served, const FcipLinkEntry& link) {
            return served.build(className, nameSpace, &link, properties);
        });
}

int return_link_references(const LinkWalk& walk, const char* function, const char* className,
                           const CMPIResult* result, const char* nameSpace) {
    return return_for_each_link<CMPIObjectPath>(walk, function, className, result,
                                                [&](const LinkClass& served, const FcipLinkEntry& link) {
                                                    return served.fill(className, nameSpace, &link);
                                                });
}
