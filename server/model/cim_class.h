// Class and qualifier declarations as plain data: what MOF says and GetClass answers.
#ifndef KESTO_SERVER_MODEL_CIM_CLASS_H
#define KESTO_SERVER_MODEL_CIM_CLASS_H

#include <cmpidt.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/model/cim_model.h"

namespace cimserver {

struct Flavors {
    bool overridable = true;
    bool toSubclass = true;
    bool toInstance = false;
    bool translatable = false;
    bool operator==(const Flavors&) const = default;
};

// A qualifier on a class or on an element of one.
struct Qualifier {
    std::string name;
    Value value;
    Flavors flavors;
    bool propagated = false; // inherited from the superclass
};
using Qualifiers = std::vector<Qualifier>;

// What the declaration of a qualifier says of all its uses.
struct QualifierType {
    std::string name;
    CMPIType type = CMPI_string; // CMPI_ARRAY included
    Value defaultValue;
    std::vector<std::string> scopes; // "class", "association", "property", ..., or "any"
    Flavors flavors;
};

// What properties, methods and parameters are made of.
struct Element {
    std::string name;
    CMPIType type = CMPI_null;         // CMPI_ref for references; CMPI_ARRAY included
    std::string referencedClass;       // of a reference
    std::optional<unsigned> arraySize; // of an array with a fixed number of elements
    Qualifiers qualifiers;
};

struct PropertyDeclaration : Element {
    Value defaultValue;
    std::string origin;      // class that declared it first
    bool propagated = false; // neither declared nor overridden in this class
};

struct MethodDeclaration : Element { // its type is that of the return value
    std::vector<Element> parameters;
    std::string origin;
    bool propagated = false;
};

struct ClassDeclaration {
    std::string name;
    std::string superclass; // empty for a class at the top
    std::string nameSpace;
    Qualifiers qualifiers;
    std::vector<PropertyDeclaration> properties;
    std::vector<MethodDeclaration> methods;

    // NULL when the class has none of that name.
    const PropertyDeclaration* property(std::string_view propertyName) const;
    bool is_association() const;
};

const Qualifier* find_qualifier(const Qualifiers& qualifiers, std::string_view name);
// The qualifier is there, and not false.
bool has_qualifier(const Qualifiers& qualifiers, std::string_view name);

inline bool is_key(const Element& property) {
    return has_qualifier(property.qualifiers, "Key");
}

} // namespace cimserver

#endif
