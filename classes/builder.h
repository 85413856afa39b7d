// What every builder and filler of the instance model does the same way.
//
// A builder: start_instance, then one or more set_properties tables in the class's own order, then
// finish_instance. A filler: new_object_path, then add_keys.
#ifndef KESTO_CLASSES_BUILDER_H
#define KESTO_CLASSES_BUILDER_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>

#include "classes/text.h"

// Values that several classes have in common.
inline constexpr const char* NAME_FORMAT = "Other";
inline constexpr std::uint16_t ADDRESS_ORIGIN_STATIC = 3;
inline constexpr std::uint16_t PROTOCOL_IF_IPV4 = 4096;

// The system name of a path when the VSAN's computer system has none.
inline constexpr const char* UNKNOWN_SYSTEM = "Unknown";

// One property or key: a row of a class's table. A text is not copied: it has to outlive the table.
struct Property {
    const char* name;
    CMPIType type;
    const char* text; // of CMPI_chars
    CMPIValue value;  // of all other types
};

inline Property chars(const char* name, const char* text) {
    return {name, CMPI_chars, text != nullptr ? text : "", {}};
}
template <std::size_t Size>
Property chars(const char* name, const Text<Size>& text) {
    return chars(name, text.chars);
}
template <std::size_t Size>
Property chars(const char* name, Text<Size>&& text) = delete;

// The byte is handed on as it is: any value but 0 is true.
inline Property boolean_byte(const char* name, std::uint8_t value) {
    Property property{name, CMPI_boolean, nullptr, {}};
    property.value.boolean = value;
    return property;
}
inline Property boolean(const char* name, bool value) {
    return boolean_byte(name, value ? 1 : 0);
}
inline Property uint8(const char* name, std::uint8_t value) {
    Property property{name, CMPI_uint8, nullptr, {}};
    property.value.uint8 = value;
    return property;
}
inline Property uint16(const char* name, std::uint16_t value) {
    Property property{name, CMPI_uint16, nullptr, {}};
    property.value.uint16 = value;
    return property;
}
inline Property uint32(const char* name, std::uint32_t value) {
    Property property{name, CMPI_uint32, nullptr, {}};
    property.value.uint32 = value;
    return property;
}
inline Property uint64(const char* name, std::uint64_t value) {
    Property property{name, CMPI_uint64, nullptr, {}};
    property.value.uint64 = value;
    return property;
}

// The low byte of a word, for the flags that count as true in any value of it.
inline std::uint8_t low_byte(std::uint32_t word) {
    return static_cast<std::uint8_t>(word);
}

// Statuses are not looked at: a property that the CIM server refuses is left out.
void set_properties(CMPIInstance* instance, std::span<const Property> properties);
inline void set_properties(CMPIInstance* instance, std::initializer_list<Property> properties) {
    set_properties(instance, std::span(properties.begin(), properties.size()));
}

// A new path of the request's namespace and class, or NULL.
CMPIObjectPath* new_object_path(const char* className, const char* nameSpace);

// A path without a handle is handed on as it is, without host name and keys.
void set_host_name(CMPIObjectPath* path);
void add_keys(CMPIObjectPath* path, std::span<const Property> keys);
inline void add_keys(CMPIObjectPath* path, std::initializer_list<Property> keys) {
    add_keys(path, std::span(keys.begin(), keys.size()));
}

// The common start of a builder. Unless it is ready, the builder returns the instance as it is: NULL, or an
// instance without a handle.
struct NewInstance {
    CMPIInstance* instance;
    bool ready;
};
NewInstance start_instance(const char* className, const char* nameSpace);
// The same, for builders that trace their exit also when their path cannot be made.
NewInstance start_traced_instance(const char* function, const char* className, const char* nameSpace);

// What the paths of a class carry: an id of its own, or the object's system and its name there.
enum class NamedBy { InstanceId, SystemAndName };

// The request's property list becomes the instance's filter. Some foreign servers make the instance's path of
// the properties that are left, so that for them the keys pass the filter, too.
void apply_filter(CMPIInstance* instance, const char** properties, NamedBy naming);
// The common end of a builder: the filter, and the trace of its exit.
CMPIInstance* finish_instance(CMPIInstance* instance, const char** properties, NamedBy naming,
                              const char* function);
// The same, for builders that mark the place of their end.
CMPIInstance* finish_marked_instance(CMPIInstance* instance, const char** properties, NamedBy naming,
                                     const char* function, int line);

#endif
