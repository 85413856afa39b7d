#include "server/schema/class_schema.h"

#include <cmpidt.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace cimserver {

namespace {

// What a declaration takes over from the qualifiers of the one that it inherits from.
void inherit_qualifiers(Qualifiers& own, const Qualifiers& inherited) {
    for (const Qualifier& qualifier : inherited) {
        if (!qualifier.flavors.toSubclass || find_qualifier(own, qualifier.name) != nullptr) continue;
        own.push_back(qualifier);
        own.back().propagated = true;
    }
}

void inherit_parameters(MethodDeclaration& own, const MethodDeclaration& inherited) {
    for (Element& parameter : own.parameters) {
        const auto same = std::find_if(
            inherited.parameters.begin(), inherited.parameters.end(),
            [&parameter](const Element& other) { return same_name(other.name, parameter.name); });
        if (same != inherited.parameters.end()) inherit_qualifiers(parameter.qualifiers, same->qualifiers);
    }
}

void inherit_parameters(PropertyDeclaration& own, const PropertyDeclaration& inherited) {
    if (own.defaultValue.is_null()) own.defaultValue = inherited.defaultValue;
}

// The superclass's elements first, overridden ones in their place, then what the class adds.
template <typename Declaration>
void inherit_elements(std::vector<Declaration>& own, const std::vector<Declaration>& inherited,
                      const std::string& className) {
    std::vector<Declaration> all;
    for (const Declaration& element : inherited) {
        const auto overriding = std::find_if(own.begin(), own.end(), [&element](const Declaration& other) {
            return same_name(other.name, element.name);
        });
        if (overriding == own.end()) {
            all.push_back(element);
            all.back().propagated = true;
            all.back().qualifiers.clear();
            inherit_qualifiers(all.back().qualifiers, element.qualifiers);
            continue;
        }
        if (overriding->type != element.type) {
            throw SchemaError(className + "." + element.name + " overrides " + element.origin + "." +
                              element.name + " with another type");
        }
        overriding->origin = element.origin;
        inherit_qualifiers(overriding->qualifiers, element.qualifiers);
        inherit_parameters(*overriding, element);
        all.push_back(std::move(*overriding));
        own.erase(overriding);
    }
    std::move(own.begin(), own.end(), std::back_inserter(all));
    own = std::move(all);
}

} // namespace

void ClassSchema::declare(QualifierType declared) {
    const std::string name = declared.name;
    if (!qualifierTypes_.emplace(name, std::move(declared)).second) {
        throw SchemaError("the qualifier " + name + " is declared twice");
    }
}

void ClassSchema::declare(ClassDeclaration declared) {
    if (find(declared.name) != nullptr) {
        throw SchemaError("the class " + declared.name + " is declared twice");
    }
    declared.nameSpace = nameSpace_;
    if (!declared.superclass.empty()) inherit(declared);
    const std::string name = declared.name;
    inOrder_.push_back(&classes_.emplace(name, std::move(declared)).first->second);
}

void ClassSchema::inherit(ClassDeclaration& declared) const {
    const ClassDeclaration* superclass = find(declared.superclass);
    if (superclass == nullptr) {
        throw SchemaError("the superclass " + declared.superclass + " of " + declared.name +
                          " is not declared");
    }
    declared.superclass = superclass->name;
    inherit_qualifiers(declared.qualifiers, superclass->qualifiers);
    inherit_elements(declared.properties, superclass->properties, declared.name);
    inherit_elements(declared.methods, superclass->methods, declared.name);
}

const QualifierType* ClassSchema::qualifier_type(std::string_view name) const {
    const auto found = qualifierTypes_.find(name);
    return found != qualifierTypes_.end() ? &found->second : nullptr;
}

const ClassDeclaration* ClassSchema::find(std::string_view className) const {
    const auto found = classes_.find(className);
    return found != classes_.end() ? &found->second : nullptr;
}

bool ClassSchema::is_a(std::string_view className, std::string_view ancestor) const {
    for (const ClassDeclaration* at = find(className); at != nullptr; at = find(at->superclass)) {
        if (same_name(at->name, ancestor)) return true;
    }
    return false;
}

bool ClassSchema::is_end_for(const PropertyDeclaration& property, std::string_view className) const {
    return property.type == CMPI_ref && is_a(className, property.referencedClass);
}

std::vector<const ClassDeclaration*> ClassSchema::subclasses(std::string_view className, bool deep) const {
    std::vector<const ClassDeclaration*> below;
    for (const ClassDeclaration* candidate : inOrder_) {
        const bool direct = same_name(candidate->superclass, className);
        const bool indirect = deep && (className.empty() || is_a(candidate->superclass, className));
        if (direct || indirect) below.push_back(candidate);
    }
    return below;
}

} // namespace cimserver
