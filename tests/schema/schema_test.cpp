#include "tests/schema/schema_test.h"

#include "server/model/cim_class.h"
#include "server/model/types.h"
#include "server/schema/mof_parser.h"

namespace schema_tests {

using cimserver::ClassDeclaration;
using cimserver::ClassSchema;
using cimserver::PropertyDeclaration;

namespace {

constexpr std::string_view OUR_PREFIX = "KESTO_";

bool is_ours(std::string_view className) {
    return className.starts_with(OUR_PREFIX);
}

} // namespace

const ClassSchema& schema() {
    static const ClassSchema PARSED = [] {
        ClassSchema classes("root/kesto");
        cimserver::parse_mof_file(SCHEMA_MOF, classes);
        return classes;
    }();
    return PARSED;
}

std::vector<const ClassDeclaration*> concrete_classes() {
    std::vector<const ClassDeclaration*> classes = schema().subclasses("", true);
    std::erase_if(classes, [](const ClassDeclaration* declared) {
        return !is_ours(declared->name) || cimserver::has_qualifier(declared->qualifiers, "Abstract");
    });
    return classes;
}

std::string declaring_class(const ClassDeclaration& declared, std::string_view property) {
    const ClassDeclaration* at = &declared;
    while (at != nullptr) {
        const PropertyDeclaration* found = at->property(property);
        if (found == nullptr) return "";
        if (!found->propagated) return at->name;
        at = schema().find(at->superclass);
    }
    return "";
}

std::vector<const PropertyDeclaration*> own_properties(const ClassDeclaration& declared) {
    std::vector<const PropertyDeclaration*> properties;
    for (const PropertyDeclaration& property : declared.properties) {
        if (is_ours(declaring_class(declared, property.name))) properties.push_back(&property);
    }
    return properties;
}

TypedNames key_names(const ClassDeclaration& declared) {
    TypedNames names;
    for (const PropertyDeclaration& property : declared.properties) {
        if (cimserver::is_key(property)) names.emplace(property.name, property.type);
    }
    return names;
}

Ends declared_ends(const ClassDeclaration& association) {
    Ends ends;
    for (const PropertyDeclaration& property : association.properties) {
        if (property.type == CMPI_ref) ends[property.name] = property.referencedClass;
    }
    return ends;
}

std::string declared_name(const std::string& className) {
    const ClassDeclaration* declared = schema().find(className);
    return declared != nullptr ? declared->name : className;
}

std::string type_text(CMPIType type) {
    return type == CMPI_ref ? "reference" : std::string(cimserver::type_name(type));
}

std::string text_of(const TypedNames& names) {
    std::string text;
    for (const auto& [name, type] : names) {
        text += (text.empty() ? "" : ", ") + name + ' ' + type_text(type);
    }
    return text;
}

} // namespace schema_tests
