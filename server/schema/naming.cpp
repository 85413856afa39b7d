#include "server/schema/naming.h"

#include "server/model/cim_class.h"

namespace cimserver {

namespace {

const NamedValue* find_set(const Instance& instance, std::string_view name) {
    const NamedValue* property = instance.properties.find(name);
    return property != nullptr ? property : instance.filteredOut.find(name);
}

} // namespace

ObjectPath named_path(const Instance& instance, const ClassSchema& schema) {
    ObjectPath path = instance.path;
    const ClassDeclaration* declared = path.keys.empty() ? schema.find(path.className) : nullptr;
    if (declared == nullptr) return path;
    for (const PropertyDeclaration& property : declared->properties) {
        if (!is_key(property)) continue;
        if (const NamedValue* key = find_set(instance, property.name)) path.keys.set(key->name, key->value);
    }
    return path;
}

} // namespace cimserver
