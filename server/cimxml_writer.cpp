#include "server/cimxml_writer.h"

#include "server/cimxml_types.h"
#include "server/naming.h"
#include "server/text.h"

namespace cimserver {

namespace {

constexpr std::string_view kNoAttribute;

const char* keyKind(const Value& value) {
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
        case ObjectForm::kInstance:
            instance(delivered);
            break;
        case ObjectForm::kObject:
            xml_.open("VALUE.OBJECT");
            instance(delivered);
            xml_.close("VALUE.OBJECT");
            break;
        case ObjectForm::kNamedInstance:
            xml_.open("VALUE.NAMEDINSTANCE");
            instanceName(namedPath(delivered));
            instance(delivered);
            xml_.close("VALUE.NAMEDINSTANCE");
            break;
        case ObjectForm::kObjectWithPath:
            xml_.open("VALUE.OBJECTWITHPATH");
            instancePath(namedPath(delivered));
            instance(delivered);
            xml_.close("VALUE.OBJECTWITHPATH");
            break;
        case ObjectForm::kInstanceName:
        case ObjectForm::kObjectPath:
            break;
    }
}

void ObjectWriter::deliver(const ObjectPath& path) {
    if (form_ == ObjectForm::kInstanceName) {
        instanceName(path);
    } else if (form_ == ObjectForm::kObjectPath) {
        xml_.open("OBJECTPATH");
        instancePath(path);
        xml_.close("OBJECTPATH");
    }
}

void ObjectWriter::instance(const Instance& written) {
    xml_.open("INSTANCE", {{"CLASSNAME", written.path.className}});
    for (const NamedValue& entry : written.properties.all()) {
        if (!options_.wanted || containsName(*options_.wanted, entry.name)) property(entry);
    }
    xml_.close("INSTANCE");
}

void ObjectWriter::property(const NamedValue& written) {
    const Value& value = written.value;
    const bool isReference = value.type == CMPI_ref;
    const bool isEmbedded = value.elementType() == CMPI_instance;
    const std::string_view element = value.isArray() ? "PROPERTY.ARRAY"
                                     : isReference   ? "PROPERTY.REFERENCE"
                                                     : "PROPERTY";
    const bool tellOrigin = options_.classOrigin && !written.origin.empty();
    const ObjectPath* target = value.asReference();
    const std::pair<std::string_view, std::string_view> type =
        !isReference ? std::pair<std::string_view, std::string_view>("TYPE", typeName(value.elementType()))
        : target     ? std::pair<std::string_view, std::string_view>("REFERENCECLASS", target->className)
                     : std::pair<std::string_view, std::string_view>(kNoAttribute, "");
    xml_.open(element, {{"NAME", written.name},
                        type,
                        {tellOrigin ? "CLASSORIGIN" : kNoAttribute, written.origin},
                        {isEmbedded ? "EmbeddedObject" : kNoAttribute, "instance"}});
    if (!value.isNull()) values(value);
    xml_.close(element);
}

void ObjectWriter::values(const Value& value) {
    if (const ObjectPath* path = value.asReference()) {
        reference(*path);
    } else if (const auto* elements = value.asArray()) {
        xml_.open("VALUE.ARRAY");
        for (const Value& element : *elements) {
            if (element.isNull()) {
                xml_.empty("VALUE.NULL");
            } else {
                scalarElement(element);
            }
        }
        xml_.close("VALUE.ARRAY");
    } else {
        scalarElement(value);
    }
}

void ObjectWriter::scalarElement(const Value& value) {
    if (const ObjectPath* path = value.asReference()) { // in an array, where a reference has no other form
        xml_.element("VALUE", path->toString());
    } else if (const Instance* embedded = value.asInstance()) {
        WriteOptions options = options_;
        options.wanted.reset();
        ObjectWriter inner(ObjectForm::kInstance, std::move(options));
        inner.deliver(*embedded);
        xml_.element("VALUE", inner.take());
    } else {
        xml_.element("VALUE", scalarText(value));
    }
}

void ObjectWriter::instanceName(const ObjectPath& path) {
    xml_.open("INSTANCENAME", {{"CLASSNAME", path.className}});
    for (const NamedValue& key : path.keys.all()) {
        if (key.value.isNull()) continue; // a key has a value or it is none
        xml_.open("KEYBINDING", {{"NAME", key.name}});
        if (const ObjectPath* target = key.value.asReference()) {
            reference(*target);
        } else {
            xml_.element("KEYVALUE", scalarText(key.value),
                         {{"VALUETYPE", keyKind(key.value)},
                          {options_.typedKeys ? "TYPE" : kNoAttribute, typeName(key.value.type)}});
        }
        xml_.close("KEYBINDING");
    }
    xml_.close("INSTANCENAME");
}

void ObjectWriter::instancePath(const ObjectPath& path) {
    xml_.open("INSTANCEPATH");
    xml_.open("NAMESPACEPATH");
    xml_.element("HOST", path.host.empty() ? options_.host : path.host);
    localNameSpace(path.nameSpace);
    xml_.close("NAMESPACEPATH");
    instanceName(path);
    xml_.close("INSTANCEPATH");
}

// A reference says as much of where its target is as the provider does.
void ObjectWriter::reference(const ObjectPath& path) {
    xml_.open("VALUE.REFERENCE");
    if (!path.host.empty()) {
        instancePath(path);
    } else if (!path.nameSpace.empty()) {
        xml_.open("LOCALINSTANCEPATH");
        localNameSpace(path.nameSpace);
        instanceName(path);
        xml_.close("LOCALINSTANCEPATH");
    } else {
        instanceName(path);
    }
    xml_.close("VALUE.REFERENCE");
}

void ObjectWriter::localNameSpace(const std::string& nameSpace) {
    xml_.open("LOCALNAMESPACEPATH");
    std::string_view rest = nameSpace.empty() ? options_.nameSpace : nameSpace;
    while (!rest.empty()) {
        const std::size_t slash = std::min(rest.find('/'), rest.size());
        if (slash > 0) xml_.empty("NAMESPACE", {{"NAME", rest.substr(0, slash)}});
        rest.remove_prefix(std::min(slash + 1, rest.size()));
    }
    xml_.close("LOCALNAMESPACEPATH");
}

namespace {

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

} // namespace

std::string resultResponse(const ResponseFrame& frame, const std::string& returnValue) {
    return response(frame, "<IRETURNVALUE>" + returnValue + "</IRETURNVALUE>");
}

std::string emptyResponse(const ResponseFrame& frame) {
    return response(frame, "");
}

std::string errorResponse(const ResponseFrame& frame, const CimError& error) {
    const CMPIrc code = cimErrorCode(error.code);
    XmlWriter xml;
    xml.empty("ERROR", {{"CODE", std::to_string(static_cast<int>(code))},
                        {"DESCRIPTION", error.description.empty() ? cimErrorName(code) : error.description}});
    return response(frame, xml.result());
}

} // namespace cimserver
