#include "server/cimxml/reader.h"

#include <charconv>
#include <optional>
#include <pugixml.hpp>

#include "server/cimxml/errors.h"
#include "server/cimxml/types.h"
#include "server/cimxml/xml_check.h"
#include "server/model/text.h"

namespace cimserver {

struct CimXmlRequest::Document {
    pugi::xml_document xml;
    pugi::xml_node call; // IMETHODCALL or METHODCALL
};

namespace {

[[noreturn]] void refuse(const std::string& detail) {
    throw HttpError(BAD_REQUEST, "request-not-loosely-valid", detail);
}

[[noreturn]] void refuse_value(const std::string& detail) {
    throw CimError(CMPI_RC_ERR_INVALID_PARAMETER, detail);
}

std::string_view name_of(const pugi::xml_node& node) {
    return node.name();
}

bool is_element(const pugi::xml_node& node) {
    return node.type() == pugi::node_element;
}

std::vector<pugi::xml_node> elements_of(const pugi::xml_node& parent) {
    std::vector<pugi::xml_node> elements;
    for (const pugi::xml_node& child : parent.children()) {
        if (is_element(child)) {
            elements.push_back(child);
        } else if (!trimmed(child.value()).empty()) {
            refuse(std::string("text in ") + parent.name());
        }
    }
    return elements;
}

pugi::xml_node only_element_of(const pugi::xml_node& parent) {
    const std::vector<pugi::xml_node> elements = elements_of(parent);
    if (elements.size() != 1) refuse(std::string(parent.name()) + " must hold one element");
    return elements.front();
}

std::string text_of(const pugi::xml_node& element) {
    std::string text;
    for (const pugi::xml_node& child : element.children()) {
        if (is_element(child)) refuse(std::string(child.name()) + " in " + element.name());
        text += child.value();
    }
    return text;
}

std::string required_attribute(const pugi::xml_node& element, const char* name) {
    const pugi::xml_attribute attribute = element.attribute(name);
    if (!attribute || (*attribute.value() == 0)) refuse(std::string(element.name()) + " without " + name);
    return attribute.value();
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

std::string read_name_space_path(const pugi::xml_node& element) {
    std::string path;
    for (const pugi::xml_node& part : elements_of(element)) {
        if (name_of(part) != "NAMESPACE") refuse(std::string(part.name()) + " in LOCALNAMESPACEPATH");
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

    ObjectPath instance_name(const pugi::xml_node& element) {
        return instance_name_in(element, nameSpace_, {});
    }

    Instance instance(const pugi::xml_node& element) {
        Instance result;
        result.path.nameSpace = nameSpace_;
        result.path.className = required_attribute(element, "CLASSNAME");
        for (const pugi::xml_node& child : elements_of(element)) {
            if (name_of(child) == "QUALIFIER") continue; // an instance's qualifiers mean nothing
            result.properties.set(required_attribute(child, "NAME"), property(child),
                                  child.attribute("CLASSORIGIN").value());
        }
        return result;
    }

    Instance named_instance(const pugi::xml_node& element) {
        const std::vector<pugi::xml_node> parts = elements_of(element);
        if (parts.size() != 2 || name_of(parts[0]) != "INSTANCENAME" || name_of(parts[1]) != "INSTANCE") {
            refuse("VALUE.NAMEDINSTANCE must hold INSTANCENAME and INSTANCE");
        }
        Instance result = instance(parts[1]);
        result.path = instance_name(parts[0]);
        return result;
    }

  private:
    ObjectPath instance_name_in(const pugi::xml_node& element, std::string nameSpace, std::string host) {
        ObjectPath path{std::move(host), std::move(nameSpace), required_attribute(element, "CLASSNAME"), {}};
        for (const pugi::xml_node& child : elements_of(element)) {
            if (name_of(child) == "KEYBINDING") {
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

    Value key_value(const pugi::xml_node& element) {
        if (name_of(element) == "VALUE.REFERENCE") return reference(element);
        if (name_of(element) != "KEYVALUE") refuse(std::string(element.name()) + " as a key");
        const std::string text = text_of(element);
        std::optional<Value> value;
        if (const pugi::xml_attribute type = element.attribute("TYPE")) {
            const std::optional<CMPIType> known = type_named(type.value());
            if (!known || *known == CMPI_ref) refuse(std::string("a key of type ") + type.value());
            value = parse_scalar(text, *known);
        } else {
            const std::string_view kind = element.attribute("VALUETYPE").as_string("string");
            if (kind == "string") {
                value = Value::text(text);
            } else if (kind == "boolean") {
                value = parse_scalar(text, CMPI_boolean);
            } else if (kind == "numeric") {
                value = parse_number(text);
            } else {
                throw HttpError(BAD_REQUEST, "request-not-valid", "a key of kind " + std::string(kind));
            }
        }
        if (!value) refuse_value("key value " + text + " is not of its type");
        return *value;
    }

    Value reference(const pugi::xml_node& valueReference) {
        if (++depth_ > DEEPEST_REFERENCE) refuse_value("references nested too deeply");
        Value result = Value::reference(path(only_element_of(valueReference)));
        --depth_;
        return result;
    }

    ObjectPath path(const pugi::xml_node& element) {
        const std::string_view kind = name_of(element);
        if (kind == "INSTANCENAME") return instance_name_in(element, nameSpace_, {});
        if (kind == "CLASSNAME") return {{}, nameSpace_, required_attribute(element, "NAME"), {}};
        const std::vector<pugi::xml_node> parts = elements_of(element);
        if (parts.size() != 2) refuse(std::string(element.name()) + " must hold two elements");
        const auto [nameSpace, host] = where(kind, parts[0]);
        const bool ofInstance = name_of(parts[1]) == "INSTANCENAME";
        if (ofInstance && (kind == "INSTANCEPATH" || kind == "LOCALINSTANCEPATH")) {
            return instance_name_in(parts[1], nameSpace, host);
        }
        if (name_of(parts[1]) == "CLASSNAME" && (kind == "CLASSPATH" || kind == "LOCALCLASSPATH")) {
            return {host, nameSpace, required_attribute(parts[1], "NAME"), {}};
        }
        refuse(std::string(parts[1].name()) + " in " + element.name());
    }

    // The namespace and the host that a path begins with.
    static std::pair<std::string, std::string> where(std::string_view kind, const pugi::xml_node& element) {
        if (name_of(element) == "LOCALNAMESPACEPATH" && kind.starts_with("LOCAL"))
            return {read_name_space_path(element), ""};
        if (name_of(element) != "NAMESPACEPATH" || kind.starts_with("LOCAL")) {
            refuse(std::string(element.name()) + " in " + std::string(kind));
        }
        const std::vector<pugi::xml_node> parts = elements_of(element);
        if (parts.size() != 2 || name_of(parts[0]) != "HOST" || name_of(parts[1]) != "LOCALNAMESPACEPATH") {
            refuse("NAMESPACEPATH must hold HOST and LOCALNAMESPACEPATH");
        }
        return {read_name_space_path(parts[1]), text_of(parts[0])};
    }

    Value property(const pugi::xml_node& element) {
        const std::string_view kind = name_of(element);
        if (kind == "PROPERTY.REFERENCE") {
            const std::vector<pugi::xml_node> values = elements_of(element);
            return values.empty() ? Value::null(CMPI_ref) : reference(values.back());
        }
        if (kind != "PROPERTY" && kind != "PROPERTY.ARRAY")
            refuse(std::string(element.name()) + " in INSTANCE");
        const std::optional<CMPIType> type = type_named(required_attribute(element, "TYPE"));
        if (!type || *type == CMPI_ref) refuse("a property of an unknown type");
        pugi::xml_node held;
        for (const pugi::xml_node& child : elements_of(element)) {
            if (name_of(child) != "QUALIFIER") held = child;
        }
        if (kind == "PROPERTY") return held != nullptr ? scalar(held, *type) : Value::null(*type);
        const auto arrayType = static_cast<CMPIType>(*type | CMPI_ARRAY);
        if (!held) return Value::null(arrayType);
        std::vector<Value> elements;
        for (const pugi::xml_node& value : elements_of(held)) {
            elements.push_back(name_of(value) == "VALUE.NULL" ? Value::null(*type) : scalar(value, *type));
        }
        return {arrayType, std::move(elements)};
    }

    static Value scalar(const pugi::xml_node& element, CMPIType type) {
        if (name_of(element) != "VALUE") refuse(std::string(element.name()) + " as a value");
        const std::string text = text_of(element);
        std::optional<Value> value = parse_scalar(text, type);
        if (!value) refuse_value("value " + text + " is not of type " + type_name(type));
        return *value;
    }

    std::string nameSpace_;
    unsigned depth_ = 0;
};

ParameterValue read_parameter(const pugi::xml_node& holder, const std::string& nameSpace) {
    const std::vector<pugi::xml_node> held = elements_of(holder);
    if (held.empty()) return std::monostate{};
    if (held.size() > 1) refuse("more than one value in a parameter");
    const pugi::xml_node& element = held.front();
    const std::string_view kind = name_of(element);
    ObjectReader reader(nameSpace);
    if (kind == "VALUE") return text_of(element);
    if (kind == "CLASSNAME") return ClassNameValue{required_attribute(element, "NAME")};
    if (kind == "INSTANCENAME") return reader.instance_name(element);
    if (kind == "INSTANCE") return reader.instance(element);
    if (kind == "VALUE.NAMEDINSTANCE") return reader.named_instance(element);
    if (kind == "VALUE.ARRAY") {
        std::vector<std::string> values;
        for (const pugi::xml_node& value : elements_of(element)) {
            if (name_of(value) != "VALUE") refuse(std::string(value.name()) + " in VALUE.ARRAY");
            values.push_back(text_of(value));
        }
        return values;
    }
    return UnreadValue{element.name()};
}

} // namespace

CimXmlRequest::CimXmlRequest(const std::string& text) : document_(std::make_unique<Document>()) {
    constexpr auto NOT_WELL_FORMED = "request-not-well-formed";
    if (const auto wrong = find_ill_formed(text)) throw HttpError(BAD_REQUEST, NOT_WELL_FORMED, *wrong);
    constexpr unsigned OPTIONS = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                 pugi::parse_ws_pcdata | pugi::parse_wconv_attribute;
    const pugi::xml_parse_result parsed =
        document_->xml.load_buffer(text.data(), text.size(), OPTIONS, pugi::encoding_utf8);
    if (!parsed) throw HttpError(BAD_REQUEST, NOT_WELL_FORMED, parsed.description());

    const pugi::xml_node cim = document_->xml.document_element();
    if (name_of(cim) != "CIM") refuse("the document element is not CIM");
    minor_version(required_attribute(cim, "CIMVERSION"), '2', "unsupported-cim-version");
    constexpr unsigned FIRST_WITH_TYPED_KEYS = 3;
    typedKeys = minor_version(required_attribute(cim, "DTDVERSION"), '2', "unsupported-dtd-version") >=
                FIRST_WITH_TYPED_KEYS;

    const pugi::xml_node message = only_element_of(cim);
    if (name_of(message) != "MESSAGE") refuse("CIM does not hold MESSAGE");
    messageId = required_attribute(message, "ID");
    minor_version(required_attribute(message, "PROTOCOLVERSION"), '1', "unsupported-protocol-version");

    const pugi::xml_node request = only_element_of(message);
    if (name_of(request) == "MULTIREQ") {
        throw HttpError(NOT_IMPLEMENTED, "multiple-requests-unsupported", "one operation a request, please");
    }
    if (name_of(request) != "SIMPLEREQ") refuse("MESSAGE does not hold SIMPLEREQ");
    for (const pugi::xml_node& element : elements_of(request)) {
        if (name_of(element) == "CORRELATOR") continue;
        if (document_->call != nullptr) refuse("more than one operation in SIMPLEREQ");
        document_->call = element;
    }
    extrinsic = name_of(document_->call) == "METHODCALL";
    if (!extrinsic && name_of(document_->call) != "IMETHODCALL")
        refuse("SIMPLEREQ does not hold an operation");
    method = required_attribute(document_->call, "NAME");
    if (extrinsic) return;

    const std::vector<pugi::xml_node> parts = elements_of(document_->call);
    if (parts.empty() || name_of(parts.front()) != "LOCALNAMESPACEPATH")
        refuse("IMETHODCALL without LOCALNAMESPACEPATH");
    nameSpace = read_name_space_path(parts.front());
}

CimXmlRequest::~CimXmlRequest() = default;
CimXmlRequest::CimXmlRequest(CimXmlRequest&&) noexcept = default;

std::vector<Parameter> CimXmlRequest::parameters() const {
    std::vector<Parameter> result;
    const std::vector<pugi::xml_node> parts = elements_of(document_->call);
    for (std::size_t i = 1; i < parts.size(); ++i) { // the first is the namespace
        if (name_of(parts[i]) != "IPARAMVALUE") refuse(std::string(parts[i].name()) + " in IMETHODCALL");
        result.push_back({required_attribute(parts[i], "NAME"), read_parameter(parts[i], nameSpace)});
    }
    return result;
}

} // namespace cimserver
