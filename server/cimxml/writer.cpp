#include "server/cimxml/writer.h"

#include <cmpidt.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "server/cimxml/class_writer.h"
#include "server/model/text.h"
#include "server/model/types.h"
#include "server/schema/naming.h"

namespace cimserver {

namespace {

constexpr std::string_view NO_ATTRIBUTE;

const char* key_kind(const Value& value) {
    switch (value.type) {
        case CMPI_boolean:
            return "boolean";
        case CMPI_string:
        case CMPI_dateTime:
        case CMPI_char16:
            return "string";
        default:
            return "numeric";
    }
}

} // namespace

void ObjectWriter::deliver(const Instance& delivered) {
    switch (form_) {
        case ObjectForm::Instance:
            instance(delivered);
            break;
        case ObjectForm::Object:
            xml_.open("VALUE.OBJECT");
            instance(delivered);
            xml_.close("VALUE.OBJECT");
            break;
        case ObjectForm::NamedInstance:
            xml_.open("VALUE.NAMEDINSTANCE");
            instance_name(named_path(delivered, options_.schema));
            instance(delivered);
            xml_.close("VALUE.NAMEDINSTANCE");
            break;
        case ObjectForm::ObjectWithPath:
            xml_.open("VALUE.OBJECTWITHPATH");
            instance_path(named_path(delivered, options_.schema));
            instance(delivered);
            xml_.close("VALUE.OBJECTWITHPATH");
            break;
        case ObjectForm::InstanceWithPath:
            xml_.open("VALUE.INSTANCEWITHPATH");
            instance_path(named_path(delivered, options_.schema));
            instance(delivered);
            xml_.close("VALUE.INSTANCEWITHPATH");
            break;
        case ObjectForm::PropertyValue:
            for (const NamedValue& entry : delivered.properties.all()) {
                if (options_.wanted->contains(entry.name) && !entry.value.is_null()) values(entry.value);
            }
            break;
        default: // forms of names and of classes
            break;
    }
}

void ObjectWriter::deliver(const ObjectPath& path) {
    if (form_ == ObjectForm::InstanceName) {
        instance_name(path);
    } else if (form_ == ObjectForm::InstancePath) {
        instance_path(path);
    } else if (form_ == ObjectForm::ObjectPath) {
        xml_.open("OBJECTPATH");
        instance_path(path);
        xml_.close("OBJECTPATH");
    } else if (form_ == ObjectForm::ClassName) {
        class_name(path);
    } else if (form_ == ObjectForm::ClassPath) {
        xml_.open("OBJECTPATH");
        class_path(path);
        xml_.close("OBJECTPATH");
    }
}

void ObjectWriter::deliver_class(const ClassDeclaration& declared) {
    if (form_ == ObjectForm::Class) {
        declaration(declared);
    } else if (form_ == ObjectForm::ClassWithPath) {
        xml_.open("VALUE.OBJECTWITHPATH");
        class_path({{}, declared.nameSpace, declared.name, {}});
        declaration(declared);
        xml_.close("VALUE.OBJECTWITHPATH");
    }
}

void ObjectWriter::deliver_qualifier(const QualifierType& declared) {
    if (form_ == ObjectForm::Qualifier) write_qualifier_type(xml_, declared);
}

void ObjectWriter::declaration(const ClassDeclaration& declared) {
    write_class(xml_, declared,
                {.localOnly = options_.localOnly,
                 .qualifiers = options_.qualifiers,
                 .classOrigin = options_.classOrigin,
                 .wanted = options_.wanted});
}

void ObjectWriter::instance(const Instance& written) {
    const bool needsDeclaration = options_.qualifiers || options_.classOrigin;
    const ClassDeclaration* declared =
        needsDeclaration ? options_.schema.find(written.path.className) : nullptr;
    xml_.open("INSTANCE", {{"CLASSNAME", written.path.className}});
    if (options_.qualifiers && declared != nullptr) write_qualifiers(xml_, declared->qualifiers, false);
    for (const NamedValue& entry : written.properties.all()) {
        if (options_.wanted && !options_.wanted->contains(entry.name)) continue;
        property(entry, declared != nullptr ? declared->property(entry.name) : nullptr);
    }
    xml_.close("INSTANCE");
}

void ObjectWriter::property(const NamedValue& written, const PropertyDeclaration* declared) {
    const std::string& origin =
        written.origin.empty() && declared != nullptr ? declared->origin : written.origin;
    const Value& value = written.value;
    const bool isReference = value.type == CMPI_ref;
    const bool isEmbedded = value.element_type() == CMPI_instance;
    const std::string_view element = value.is_array() ? "PROPERTY.ARRAY"
                                     : isReference    ? "PROPERTY.REFERENCE"
                                                      : "PROPERTY";
    const bool showOrigin = options_.classOrigin && !origin.empty();
    const ObjectPath* target = value.as_reference();
    const std::pair<std::string_view, std::string_view> type =
        !isReference ? std::pair<std::string_view, std::string_view>("TYPE", type_name(value.element_type()))
        : target != nullptr
            ? std::pair<std::string_view, std::string_view>("REFERENCECLASS", target->className)
            : std::pair<std::string_view, std::string_view>(NO_ATTRIBUTE, "");
    xml_.open(element, {{"NAME", written.name},
                        type,
                        {showOrigin ? "CLASSORIGIN" : NO_ATTRIBUTE, origin},
                        {isEmbedded ? "EmbeddedObject" : NO_ATTRIBUTE, "instance"}});
    if (options_.qualifiers && declared != nullptr) write_qualifiers(xml_, declared->qualifiers, false);
    if (!value.is_null()) values(value);
    xml_.close(element);
}

void ObjectWriter::values(const Value& value) {
    if (const ObjectPath* path = value.as_reference()) {
        reference(*path);
    } else if (const auto* elements = value.as_array()) {
        xml_.open("VALUE.ARRAY");
        for (const Value& element : *elements) {
            if (element.is_null()) {
                xml_.empty("VALUE.NULL");
            } else {
                scalar_element(element);
            }
        }
        xml_.close("VALUE.ARRAY");
    } else {
        scalar_element(value);
    }
}

void ObjectWriter::scalar_element(const Value& value) {
    if (const ObjectPath* path = value.as_reference()) { // in an array, where a reference has no other form
        xml_.element("VALUE", path->to_string());
    } else if (const Instance* embedded = value.as_instance()) {
        WriteOptions options = options_;
        options.wanted.reset();
        ObjectWriter inner(ObjectForm::Instance, std::move(options));
        inner.deliver(*embedded);
        xml_.element("VALUE", inner.take());
    } else {
        xml_.element("VALUE", scalar_text(value));
    }
}

void ObjectWriter::instance_name(const ObjectPath& path) {
    xml_.open("INSTANCENAME", {{"CLASSNAME", path.className}});
    for (const NamedValue& key : path.keys.all()) {
        if (key.value.is_null()) continue; // a key without a value names nothing
        xml_.open("KEYBINDING", {{"NAME", key.name}});
        if (const ObjectPath* target = key.value.as_reference()) {
            reference(*target);
        } else {
            xml_.element("KEYVALUE", scalar_text(key.value),
                         {{"VALUETYPE", key_kind(key.value)},
                          {options_.typedKeys ? "TYPE" : NO_ATTRIBUTE, type_name(key.value.type)}});
        }
        xml_.close("KEYBINDING");
    }
    xml_.close("INSTANCENAME");
}

void ObjectWriter::instance_path(const ObjectPath& path) {
    xml_.open("INSTANCEPATH");
    name_space_path(path);
    instance_name(path);
    xml_.close("INSTANCEPATH");
}

void ObjectWriter::class_path(const ObjectPath& path) {
    xml_.open("CLASSPATH");
    name_space_path(path);
    class_name(path);
    xml_.close("CLASSPATH");
}

void ObjectWriter::class_name(const ObjectPath& path) {
    xml_.empty("CLASSNAME", {{"NAME", path.className}});
}

// Every object is this server's, whatever name the provider has for the machine: a client finds it where it
// has found the server.
void ObjectWriter::name_space_path(const ObjectPath& path) {
    xml_.open("NAMESPACEPATH");
    xml_.element("HOST", shows_host(path) ? path.host : options_.host);
    local_name_space(path.nameSpace);
    xml_.close("NAMESPACEPATH");
}

void ObjectWriter::reference(const ObjectPath& path) {
    xml_.open("VALUE.REFERENCE");
    if (shows_host(path)) {
        instance_path(path);
    } else {
        xml_.open("LOCALINSTANCEPATH");
        local_name_space(path.nameSpace);
        instance_name(path);
        xml_.close("LOCALINSTANCEPATH");
    }
    xml_.close("VALUE.REFERENCE");
}

void ObjectWriter::local_name_space(const std::string& nameSpace) {
    xml_.open("LOCALNAMESPACEPATH");
    std::string_view rest = nameSpace.empty() ? options_.nameSpace : nameSpace;
    while (!rest.empty()) {
        const std::size_t slash = std::min(rest.find('/'), rest.size());
        if (slash > 0) xml_.empty("NAMESPACE", {{"NAME", rest.substr(0, slash)}});
        rest.remove_prefix(std::min(slash + 1, rest.size()));
    }
    xml_.close("LOCALNAMESPACEPATH");
}

std::string return_value(const std::string& objects) {
    return "<IRETURNVALUE>" + objects + "</IRETURNVALUE>";
}

std::string response(const ResponseFrame& frame, const std::string& content) {
    const std::string_view element = frame.extrinsic ? "METHODRESPONSE" : "IMETHODRESPONSE";
    XmlWriter xml;
    xml.raw("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n");
    xml.open("CIM", {{"CIMVERSION", "2.0"}, {"DTDVERSION", frame.typedKeys ? "2.3" : "2.0"}});
    xml.open("MESSAGE", {{"ID", frame.messageId}, {"PROTOCOLVERSION", "1.0"}});
    xml.open("SIMPLERSP");
    xml.open(element, {{"NAME", frame.method}});
    xml.raw(content);
    xml.close(element);
    xml.close("SIMPLERSP");
    xml.close("MESSAGE");
    xml.close("CIM");
    xml.raw("\n");
    return xml.take();
}

std::string error_response(const ResponseFrame& frame, const CimError& error) {
    const CMPIrc code = cim_error_code(error.code);
    XmlWriter xml;
    xml.empty("ERROR", {{"CODE", std::to_string(static_cast<int>(code))},
                        {"DESCRIPTION", *error.what() != 0 ? error.what() : cim_error_name(code)}});
    return response(frame, xml.result());
}

} // namespace cimserver
