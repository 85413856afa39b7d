#include "server/cimxml/reader.h"

#include <cmpidt.h>

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "server/cimxml/errors.h"
#include "server/model/text.h"
#include "server/model/types.h"

namespace cimserver {

namespace {

[[noreturn]] void refuse(const std::string& detail) {
    throw HttpError(BAD_REQUEST, "request-not-loosely-valid", detail);
}

[[noreturn]] void refuse_value(const std::string& detail) {
    throw CimError(CMPI_RC_ERR_INVALID_PARAMETER, detail);
}

// The elements in one that holds nothing else.
const std::vector<XmlElement>& elements_of(const XmlElement& parent) {
    if (!trimmed(parent.text).empty()) refuse("text in " + parent.name);
    return parent.children;
}

const XmlElement& only_element_of(const XmlElement& parent) {
    const std::vector<XmlElement>& elements = elements_of(parent);
    if (elements.size() != 1) refuse(parent.name + " must hold one element");
    return elements.front();
}

const std::string& text_of(const XmlElement& element) {
    if (!element.children.empty()) refuse(element.children.front().name + " in " + element.name);
    return element.text;
}

const std::string& required_attribute(const XmlElement& element, std::string_view name) {
    const std::string* value = element.attribute(name);
    if (value == nullptr || value->empty()) refuse(element.name + " without " + std::string(name));
    return *value;
}

// "2.0" and the like; the major number must be the given one.
unsigned minor_version(const std::string& version, char major, const char* cimError) {
    unsigned minor = 0;
    const char* end = version.data() + version.size();
    const bool fits = version.size() >= 3 && version[0] == major && version[1] == '.';
    // A revision may follow: 2.3.1.
    const auto read = std::from_chars(version.data() + (fits ? 2 : 0), end, minor);
    if (!fits || read.ec != std::errc()) throw HttpError(NOT_IMPLEMENTED, cimError, "version " + version);
    return minor;
}

std::string read_name_space_path(const XmlElement& element) {
    std::string path;
    for (const XmlElement& part : elements_of(element)) {
        if (part.name != "NAMESPACE") refuse(part.name + " in LOCALNAMESPACEPATH");
        if (!path.empty()) path += '/';
        path += required_attribute(part, "NAME");
    }
    if (path.empty()) refuse("LOCALNAMESPACEPATH without NAMESPACE");
    return path;
}

// Reads the objects of parameters. The namespace is the one that a name without any belongs to.
class ObjectReader {
  public:
    explicit ObjectReader(std::string nameSpace) : nameSpace_(std::move(nameSpace)) {}

    ObjectPath instance_name(const XmlElement& element) { return instance_name_in(element, nameSpace_, {}); }

    Instance instance(const XmlElement& element) {
        Instance result;
        result.path.nameSpace = nameSpace_;
        result.path.className = required_attribute(element, "CLASSNAME");
        for (const XmlElement& child : elements_of(element)) {
            if (child.name == "QUALIFIER") continue; // an instance's qualifiers mean nothing
            const std::string* origin = child.attribute("CLASSORIGIN");
            result.properties.set(required_attribute(child, "NAME"), property(child),
                                  origin != nullptr ? *origin : std::string());
        }
        return result;
    }

    Instance named_instance(const XmlElement& element) {
        const std::vector<XmlElement>& parts = elements_of(element);
        if (parts.size() != 2 || parts[0].name != "INSTANCENAME" || parts[1].name != "INSTANCE") {
            refuse("VALUE.NAMEDINSTANCE must hold INSTANCENAME and INSTANCE");
        }
        Instance result = instance(parts[1]);
        result.path = instance_name(parts[0]);
        return result;
    }

  private:
    ObjectPath instance_name_in(const XmlElement& element, std::string nameSpace, std::string host) {
        ObjectPath path{std::move(host), std::move(nameSpace), required_attribute(element, "CLASSNAME"), {}};
        for (const XmlElement& child : elements_of(element)) {
            if (child.name == "KEYBINDING") {
                const std::string name = required_attribute(child, "NAME");
                if (path.keys.find(name) != nullptr) refuse_value("key " + name + " occurs twice");
                path.keys.set(name, key_value(only_element_of(child)));
            } else {
                // A class with one key may be named by the bare value.
                if (!path.keys.empty()) refuse("more than one unnamed key");
                path.keys.set("", key_value(child));
            }
        }
        return path;
    }

    Value key_value(const XmlElement& element) {
        if (element.name == "VALUE.REFERENCE") return reference(element);
        if (element.name != "KEYVALUE") refuse(element.name + " as a key");
        const std::string text = text_of(element);
        std::optional<Value> value;
        if (const std::string* type = element.attribute("TYPE")) {
            const std::optional<CMPIType> known = type_named(*type);
            if (!known || *known == CMPI_ref) refuse("a key of type " + *type);
            value = parse_scalar(text, *known);
        } else {
            const std::string* given = element.attribute("VALUETYPE");
            const std::string kind = given != nullptr ? *given : "string";
            if (kind == "string") {
                value = Value::text(text);
            } else if (kind == "boolean") {
                value = parse_scalar(text, CMPI_boolean);
            } else if (kind == "numeric") {
                value = parse_number(text);
            } else {
                throw HttpError(BAD_REQUEST, "request-not-valid", "a key of kind " + kind);
            }
        }
        if (!value) refuse_value("key value " + text + " is not of its type");
        return *value;
    }

    Value reference(const XmlElement& valueReference) {
        if (++depth_ > DEEPEST_REFERENCE) refuse_value("references nested too deeply");
        Value result = Value::reference(path(only_element_of(valueReference)));
        --depth_;
        return result;
    }

    ObjectPath path(const XmlElement& element) {
        const std::string_view kind = element.name;
        if (kind == "INSTANCENAME") return instance_name_in(element, nameSpace_, {});
        if (kind == "CLASSNAME") return {{}, nameSpace_, required_attribute(element, "NAME"), {}};
        const std::vector<XmlElement>& parts = elements_of(element);
        if (parts.size() != 2) refuse(element.name + " must hold two elements");
        const auto [nameSpace, host] = where(kind, parts[0]);
        const bool ofInstance = parts[1].name == "INSTANCENAME";
        if (ofInstance && (kind == "INSTANCEPATH" || kind == "LOCALINSTANCEPATH")) {
            return instance_name_in(parts[1], nameSpace, host);
        }
        if (parts[1].name == "CLASSNAME" && (kind == "CLASSPATH" || kind == "LOCALCLASSPATH")) {
            return {host, nameSpace, required_attribute(parts[1], "NAME"), {}};
        }
        refuse(parts[1].name + " in " + element.name);
    }

    // The namespace and the host that a path begins with.
    static std::pair<std::string, std::string> where(std::string_view kind, const XmlElement& element) {
        if (element.name == "LOCALNAMESPACEPATH" && kind.starts_with("LOCAL")) {
            return {read_name_space_path(element), ""};
        }
        if (element.name != "NAMESPACEPATH" || kind.starts_with("LOCAL")) {
            refuse(element.name + " in " + std::string(kind));
        }
        const std::vector<XmlElement>& parts = elements_of(element);
        if (parts.size() != 2 || parts[0].name != "HOST" || parts[1].name != "LOCALNAMESPACEPATH") {
            refuse("NAMESPACEPATH must hold HOST and LOCALNAMESPACEPATH");
        }
        return {read_name_space_path(parts[1]), text_of(parts[0])};
    }

    Value property(const XmlElement& element) {
        const std::string_view kind = element.name;
        if (kind == "PROPERTY.REFERENCE") {
            const std::vector<XmlElement>& values = elements_of(element);
            return values.empty() ? Value::null(CMPI_ref) : reference(values.back());
        }
        if (kind != "PROPERTY" && kind != "PROPERTY.ARRAY") refuse(element.name + " in INSTANCE");
        const std::optional<CMPIType> type = type_named(required_attribute(element, "TYPE"));
        if (!type || *type == CMPI_ref) refuse("a property of an unknown type");
        const XmlElement* held = nullptr;
        for (const XmlElement& child : elements_of(element)) {
            if (child.name != "QUALIFIER") held = &child;
        }
        if (kind == "PROPERTY") return held != nullptr ? scalar(*held, *type) : Value::null(*type);
        const auto arrayType = static_cast<CMPIType>(*type | CMPI_ARRAY);
        if (held == nullptr) return Value::null(arrayType);
        std::vector<Value> elements;
        for (const XmlElement& value : elements_of(*held)) {
            elements.push_back(value.name == "VALUE.NULL" ? Value::null(*type) : scalar(value, *type));
        }
        return {arrayType, std::move(elements)};
    }

    static Value scalar(const XmlElement& element, CMPIType type) {
        if (element.name != "VALUE") refuse(element.name + " as a value");
        const std::string text = text_of(element);
        std::optional<Value> value = parse_scalar(text, type);
        if (!value) refuse_value("value " + text + " is not of type " + type_name(type));
        return *value;
    }

    std::string nameSpace_;
    unsigned depth_ = 0;
};

ParameterValue read_parameter(const XmlElement& holder, const std::string& nameSpace) {
    const std::vector<XmlElement>& held = elements_of(holder);
    if (held.empty()) return std::monostate{};
    if (held.size() > 1) refuse("more than one value in a parameter");
    const XmlElement& element = held.front();
    const std::string_view kind = element.name;
    ObjectReader reader(nameSpace);
    if (kind == "VALUE") return text_of(element);
    if (kind == "CLASSNAME") return ClassNameValue{required_attribute(element, "NAME")};
    if (kind == "INSTANCENAME") return reader.instance_name(element);
    if (kind == "INSTANCE") return reader.instance(element);
    if (kind == "VALUE.NAMEDINSTANCE") return reader.named_instance(element);
    if (kind == "VALUE.ARRAY") {
        std::vector<std::string> values;
        for (const XmlElement& value : elements_of(element)) {
            if (value.name != "VALUE") refuse(value.name + " in VALUE.ARRAY");
            values.push_back(text_of(value));
        }
        return values;
    }
    return UnreadValue{element.name};
}

XmlElement parse_document(const std::string& text) {
    try {
        return parse_xml(text);
    } catch (const XmlError& error) {
        throw HttpError(BAD_REQUEST, "request-not-well-formed", error.what());
    }
}

} // namespace

CimXmlRequest::CimXmlRequest(const std::string& text) : document_(parse_document(text)) {
    const XmlElement& cim = document_;
    if (cim.name != "CIM") refuse("the document element is not CIM");
    minor_version(required_attribute(cim, "CIMVERSION"), '2', "unsupported-cim-version");
    constexpr unsigned FIRST_WITH_TYPED_KEYS = 3;
    typedKeys = minor_version(required_attribute(cim, "DTDVERSION"), '2', "unsupported-dtd-version") >=
                FIRST_WITH_TYPED_KEYS;

    const XmlElement& message = only_element_of(cim);
    if (message.name != "MESSAGE") refuse("CIM does not hold MESSAGE");
    messageId = required_attribute(message, "ID");
    minor_version(required_attribute(message, "PROTOCOLVERSION"), '1', "unsupported-protocol-version");

    const XmlElement& request = only_element_of(message);
    if (request.name == "MULTIREQ") {
        throw HttpError(NOT_IMPLEMENTED, "multiple-requests-unsupported", "one operation a request, please");
    }
    if (request.name != "SIMPLEREQ") refuse("MESSAGE does not hold SIMPLEREQ");
    for (const XmlElement& element : elements_of(request)) {
        if (element.name == "CORRELATOR") continue;
        if (call_ != nullptr) refuse("more than one operation in SIMPLEREQ");
        call_ = &element;
    }
    extrinsic = call_ != nullptr && call_->name == "METHODCALL";
    if (call_ == nullptr || (!extrinsic && call_->name != "IMETHODCALL")) {
        refuse("SIMPLEREQ does not hold an operation");
    }
    method = required_attribute(*call_, "NAME");
    if (extrinsic) return;

    const std::vector<XmlElement>& parts = elements_of(*call_);
    if (parts.empty() || parts.front().name != "LOCALNAMESPACEPATH") {
        refuse("IMETHODCALL without LOCALNAMESPACEPATH");
    }
    nameSpace = read_name_space_path(parts.front());
}

std::vector<Parameter> CimXmlRequest::parameters() const {
    std::vector<Parameter> result;
    const std::vector<XmlElement>& parts = elements_of(*call_);
    for (std::size_t i = 1; i < parts.size(); ++i) { // the first is the namespace
        if (parts[i].name != "IPARAMVALUE") refuse(parts[i].name + " in IMETHODCALL");
        result.push_back({required_attribute(parts[i], "NAME"), read_parameter(parts[i], nameSpace)});
    }
    return result;
}

} // namespace cimserver
