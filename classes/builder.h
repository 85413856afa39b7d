// What every builder, filler and walker of the instance model does the same way.
//
// A builder: start_instance, then one or more set_properties tables in the class's own order, then
// finish_instance. A filler: new_object_path, then add_keys.
#ifndef KESTO_CLASSES_BUILDER_H
#define KESTO_CLASSES_BUILDER_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "include/classes.h"
#include "include/results.h"
#include "include/trace.h"
#include "platform/key_number.h"
#include "platform/platform_records.h"
#include "platform/row_lookup.h"
#include "platform/table_walk.h"

inline constexpr const char* LOGICAL_COMPUTER_SYSTEM = "KESTO_LogicalComputerSystem";
inline constexpr const char* PHYSICAL_COMPUTER_SYSTEM = "KESTO_PhysicalComputerSystem";
inline constexpr const char* NAME_FORMAT = "Other";

// The values of two properties of all IP endpoints.
inline constexpr std::uint16_t ADDRESS_ORIGIN_STATIC = 3;
inline constexpr std::uint16_t PROTOCOL_IF_IPV4 = 4096;

// The system name of a path when the VSAN's computer system has none.
inline constexpr const char* UNKNOWN_SYSTEM = "Unknown";

// Texts are formatted into buffers of fixed sizes, and longer ones are cut. The size counts the final NUL.
template <std::size_t Size>
struct Text {
    char chars[Size] = {};
    operator const char*() const { return chars; }
};

// A string as a text, cut to what fits.
template <std::size_t Size>
Text<Size> cut(std::string_view string) {
    Text<Size> text;
    string.copy(text.chars, Size - 1);
    return text;
}

// The decimal text of a word, as "%d" prints it.
template <std::size_t Size>
Text<Size> decimal(std::uint32_t word) {
    return cut<Size>(std::to_string(as_printed(word)));
}

// "number_first_second", the form of most endpoint names.
template <std::size_t Size>
Text<Size> numbered_pair(std::uint32_t number, const char* first, const char* second) {
    return cut<Size>(std::to_string(as_printed(number)) + '_' + first + '_' + second);
}

// An address as text; the platform cuts it to the buffer.
template <std::size_t Size = 128>
Text<Size> address_text(const IpAddr& address) {
    Text<Size> text;
    ip_addr_to_str(&address, text.chars, Size);
    return text;
}

// The name of the computer system of an interface's VSAN, and the lookup's status. The text is empty when the
// port is not known and "NULL" when its domain is not.
struct SystemName {
    int status;
    Text<100> text;
};
SystemName system_name(std::uint32_t ifIndex);

// The name, or a class's own word for a system without one.
inline const char* name_or(const SystemName& name, const char* fallback) {
    return name.status == 0 ? name.text.chars : fallback;
}

// The printable name of an interface, at most 30 characters.
Text<31> interface_name(std::uint32_t ifIndex);

// The switch's WWN, and any WWN, as text.
Text<64> wwn_text(const std::uint8_t (&wwn)[8]);
Text<64> switch_wwn_text();

// One property or key: a row of a class's table.
struct Property {
    const char* name;
    CMPIType type;
    std::string text; // of CMPI_chars
    CMPIValue value;  // of all other types
};

inline Property chars(const char* name, const char* text) {
    return {name, CMPI_chars, text != nullptr ? text : "", {}};
}
// The byte is handed on as it is: any value but 0 is true.
inline Property boolean(const char* name, std::uint8_t value) {
    Property property{name, CMPI_boolean, {}, {}};
    property.value.boolean = value;
    return property;
}
inline Property uint8(const char* name, std::uint8_t value) {
    Property property{name, CMPI_uint8, {}, {}};
    property.value.uint8 = value;
    return property;
}
inline Property uint16(const char* name, std::uint16_t value) {
    Property property{name, CMPI_uint16, {}, {}};
    property.value.uint16 = value;
    return property;
}
inline Property uint32(const char* name, std::uint32_t value) {
    Property property{name, CMPI_uint32, {}, {}};
    property.value.uint32 = value;
    return property;
}
inline Property uint64(const char* name, std::uint64_t value) {
    Property property{name, CMPI_uint64, {}, {}};
    property.value.uint64 = value;
    return property;
}

// The low byte of a word, for the flags that count as true in any value of it.
inline std::uint8_t low_byte(std::uint32_t word) {
    return static_cast<std::uint8_t>(word);
}

// Statuses are not looked at: a property that the CIM server refuses is left out.
void set_properties(CMPIInstance* instance, std::span<const Property> properties);
void add_keys(CMPIObjectPath* path, std::span<const Property> keys);
inline void set_properties(CMPIInstance* instance, std::initializer_list<Property> properties) {
    set_properties(instance, std::span(properties.begin(), properties.size()));
}
inline void add_keys(CMPIObjectPath* path, std::initializer_list<Property> keys) {
    add_keys(path, std::span(keys.begin(), keys.size()));
}

// A new path of the request's namespace and class, or NULL.
CMPIObjectPath* new_object_path(const char* className, const char* nameSpace);
void set_host_name(CMPIObjectPath* path);
// A path that can be written to.
inline bool is_usable(const CMPIObjectPath* path) {
    return is_object(path) && path->hdl != nullptr;
}

// The common start of a builder. Unless ready, the builder returns `instance` as it is: NULL, or an instance
// without a handle.
struct NewInstance {
    bool ready;
    bool hasPath; // whether it failed behind the path
    CMPIInstance* instance;
};
NewInstance start_instance(const char* className, const char* nameSpace);

// The common end of a builder: the request's property list becomes the instance's filter.
void apply_filter(CMPIInstance* instance, const char** properties);
CMPIInstance* finish_instance(CMPIInstance* instance, const char** properties, const char* function);

// A class that a link walker serves.
struct LinkClass {
    const char* className;
    LinkBuilder* build;
    LinkFiller* fill;
};

// What a link walker does with a class that it does not serve.
enum class Unserved { Skipped, NullForEachLink };

struct LinkWalk {
    std::span<const LinkClass> classes; // the first match of the class name counts
    Unserved unserved;
    bool traceLines; // whether each link, and a failure that brought a row, is traced with a line number
};

// The link walkers. function is the walker's name, for its traces. Always 0.
int return_link_instances(const LinkWalk& walk, const char* function, const char* className,
                          const CMPIResult* result, const char** properties, const char* nameSpace);
int return_link_references(const LinkWalk& walk, const char* function, const char* className,
                           const CMPIResult* result, const char* nameSpace);

#endif
