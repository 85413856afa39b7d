#include "server/model/cim_class.h"

#include <algorithm>
#include <variant>

#include "server/model/text.h"

namespace cimserver {

const PropertyDeclaration* ClassDeclaration::property(std::string_view propertyName) const {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [propertyName](const PropertyDeclaration& property) {
                                        return same_name(property.name, propertyName);
                                    });
    return found != properties.end() ? &*found : nullptr;
}

bool ClassDeclaration::is_association() const {
    return has_qualifier(qualifiers, "Association");
}

const Qualifier* find_qualifier(const Qualifiers& qualifiers, std::string_view name) {
    const auto found = std::find_if(qualifiers.begin(), qualifiers.end(), [name](const Qualifier& qualifier) {
        return same_name(qualifier.name, name);
    });
    return found != qualifiers.end() ? &*found : nullptr;
}

bool has_qualifier(const Qualifiers& qualifiers, std::string_view name) {
    const Qualifier* found = find_qualifier(qualifiers, name);
    if (found == nullptr) return false;
    const bool* flag = std::get_if<bool>(&found->value.content);
    return flag == nullptr || *flag;
}

} // namespace cimserver
