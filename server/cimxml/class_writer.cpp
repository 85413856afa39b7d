#include "server/cimxml/class_writer.h"

#include <cmpidt.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/model/cim_model.h"
#include "server/model/types.h"

namespace cimserver {

namespace {

using Attribute = std::pair<std::string_view, std::string_view>;

// Left out where its value is the default one.
Attribute flag(std::string_view name, bool value, bool byDefault) {
    return {value != byDefault ? name : std::string_view(), value ? "true" : "false"};
}

CMPIType scalar_type(CMPIType type) {
    return static_cast<CMPIType>(type & ~CMPI_ARRAY);
}

void write_value(XmlWriter& xml, const Value& value) {
    if (value.is_null()) return;
    const auto* elements = value.as_array();
    if (elements == nullptr) {
        xml.element("VALUE", scalar_text(value));
        return;
    }
    xml.open("VALUE.ARRAY");
    for (const Value& element : *elements) {
        if (element.is_null()) {
            xml.empty("VALUE.NULL");
        } else {
            xml.element("VALUE", scalar_text(element));
        }
    }
    xml.close("VALUE.ARRAY");
}

void write_qualifier(XmlWriter& xml, const Qualifier& qualifier) {
    const Flavors usual;
    xml.open("QUALIFIER", {{"NAME", qualifier.name},
                           {"TYPE", type_name(qualifier.value.element_type())},
                           flag("PROPAGATED", qualifier.propagated, false),
                           flag("OVERRIDABLE", qualifier.flavors.overridable, usual.overridable),
                           flag("TOSUBCLASS", qualifier.flavors.toSubclass, usual.toSubclass),
                           flag("TOINSTANCE", qualifier.flavors.toInstance, usual.toInstance),
                           flag("TRANSLATABLE", qualifier.flavors.translatable, usual.translatable)});
    write_value(xml, qualifier.value);
    xml.close("QUALIFIER");
}

class ClassWriter {
  public:
    ClassWriter(XmlWriter& xml, const ClassExtent& extent) : xml_(xml), extent_(extent) {}

    void write(const ClassDeclaration& declared) {
        xml_.open("CLASS", {{"NAME", declared.name},
                            {declared.superclass.empty() ? "" : "SUPERCLASS", declared.superclass}});
        qualifiers(declared.qualifiers);
        for (const PropertyDeclaration& declaration : declared.properties) {
            const bool local = !extent_.localOnly || !declaration.propagated;
            if (local && (!extent_.wanted || extent_.wanted->contains(declaration.name))) {
                property(declaration);
            }
        }
        for (const MethodDeclaration& declaration : declared.methods) {
            if (!extent_.localOnly || !declaration.propagated) method(declaration);
        }
        xml_.close("CLASS");
    }

  private:
    void qualifiers(const Qualifiers& written) {
        if (extent_.qualifiers) write_qualifiers(xml_, written, extent_.localOnly);
    }

    Attribute origin(const std::string& className) const {
        return {extent_.classOrigin ? "CLASSORIGIN" : "", className};
    }

    static std::string array_size(const Element& element) {
        return element.arraySize ? std::to_string(*element.arraySize) : std::string();
    }

    // PROPERTY, PARAMETER and their .ARRAY and .REFERENCE variants carry their type in the same way.
    std::string open_element(std::string_view kind, const Element& element, const Attribute& where,
                             const Attribute& propagated) {
        const std::string size = array_size(element);
        std::string tag(kind);
        if (element.type == CMPI_ref) {
            tag += ".REFERENCE";
            xml_.open(
                tag,
                {{"NAME", element.name}, {"REFERENCECLASS", element.referencedClass}, where, propagated});
            return tag;
        }
        if ((element.type & CMPI_ARRAY) != 0) {
            tag += scalar_type(element.type) == CMPI_ref ? ".REFARRAY" : ".ARRAY";
        }
        xml_.open(tag, {{"NAME", element.name},
                        {"TYPE", type_name(scalar_type(element.type))},
                        {size.empty() ? "" : "ARRAYSIZE", size},
                        where,
                        propagated});
        return tag;
    }

    void property(const PropertyDeclaration& declaration) {
        const std::string tag = open_element("PROPERTY", declaration, origin(declaration.origin),
                                             flag("PROPAGATED", declaration.propagated, false));
        qualifiers(declaration.qualifiers);
        write_value(xml_, declaration.defaultValue);
        xml_.close(tag);
    }

    void method(const MethodDeclaration& declaration) {
        xml_.open("METHOD", {{"NAME", declaration.name},
                             {"TYPE", type_name(declaration.type)},
                             origin(declaration.origin),
                             flag("PROPAGATED", declaration.propagated, false)});
        qualifiers(declaration.qualifiers);
        for (const Element& parameter : declaration.parameters) {
            const std::string tag = open_element("PARAMETER", parameter, {}, {});
            qualifiers(parameter.qualifiers);
            xml_.close(tag);
        }
        xml_.close("METHOD");
    }

    XmlWriter& xml_;
    const ClassExtent& extent_;
};

} // namespace

void write_qualifiers(XmlWriter& xml, const Qualifiers& qualifiers, bool localOnly) {
    for (const Qualifier& qualifier : qualifiers) {
        if (!localOnly || !qualifier.propagated) write_qualifier(xml, qualifier);
    }
}

void write_class(XmlWriter& xml, const ClassDeclaration& declared, const ClassExtent& extent) {
    ClassWriter(xml, extent).write(declared);
}

void write_qualifier_type(XmlWriter& xml, const QualifierType& declared) {
    const Flavors usual;
    xml.open("QUALIFIER.DECLARATION",
             {{"NAME", declared.name},
              {"TYPE", type_name(scalar_type(declared.type))},
              {"ISARRAY", (declared.type & CMPI_ARRAY) != 0 ? "true" : "false"},
              flag("OVERRIDABLE", declared.flavors.overridable, usual.overridable),
              flag("TOSUBCLASS", declared.flavors.toSubclass, usual.toSubclass),
              flag("TOINSTANCE", declared.flavors.toInstance, usual.toInstance),
              flag("TRANSLATABLE", declared.flavors.translatable, usual.translatable)});
    const auto scope = [&declared](std::string_view name) -> Attribute {
        const bool any = contains_name(declared.scopes, "any");
        return flag(name, any || contains_name(declared.scopes, name), false);
    };
    xml.empty("SCOPE", {scope("CLASS"), scope("ASSOCIATION"), scope("REFERENCE"), scope("PROPERTY"),
                        scope("METHOD"), scope("PARAMETER"), scope("INDICATION")});
    write_value(xml, declared.defaultValue);
    xml.close("QUALIFIER.DECLARATION");
}

} // namespace cimserver
