#include "server/cimxml_reader.h"

#include <charconv>
#include <optional>
#include <pugixml.hpp>

#include "server/cimxml_errors.h"
#include "server/cimxml_types.h"
#include "server/text.h"
#include "server/xml_check.h"

namespace cimserver {

struct CimXmlRequest::Document {
    pugi::xml_document xml;
    pugi::xml_node call; // IMETHODCALL or METHODCALL
};

namespace {

constexpr unsigned kBadRequest = 400;
constexpr unsigned kNotImplemented = 501;

[[noreturn]] void refuse(const std::string& detail) {
    throw HttpError{kBadRequest, "request-not-loosely-valid", detail};
}

[[noreturn]] void refuseValue(const std::string& detail) {
    throw CimError{CMPI_RC_ERR_INVALID_PARAMETER, detail};
}

std::string_view nameOf(const pugi::xml_node& node) {
    return node.name();
}

bool isElement(const pugi::xml_node& node) {
    return node.type() == pugi::node_element;
}

std::vector<pugi::xml_node> elementsOf(const pugi::xml_node& parent) {
    std::vector<pugi::xml_node> elements;
    for (const pugi::xml_node& child : parent.children()) {
        if (isElement(child)) {
            elements.push_back(child);
        } else if (!trimmed(child.value()).empty()) {
            refuse(std::string("text in ") + parent.name());
        }
    }
    return elements;
}

pugi::xml_node onlyElementOf(const pugi::xml_node& parent) {
    const std::vector<pugi::xml_node> elements = elementsOf(parent);
    if (elements.size() != 1) refuse(std::string(parent.name()) + " must hold one element");
    return elements.front();
}

std::string textOf(const pugi::xml_node& element) {
    std::string text;
    for (const pugi::xml_node& child : element.children()) {
        if (isElement(child)) refuse(std::string(child.name()) + " in " + element.name());
        text += child.value();
    }
    return text;
}

std::string requiredAttribute(const pugi::xml_node& element, const char* name) {
    const pugi::xml_attribute attribute = element.attribute(name);
    if (!attribute || !*attribute.value()) refuse(std::string(element.name()) + " without " + name);
    return attribute.value();
}

// "2.0" and the like; the major number must be the given one.
unsigned minorVersion(const std::string& version, char major, const char* cimError) {
    unsigned minor = 0;
    const char* end = version.data() + version.size();
    const bool fits = version.size() >= 3 && version[0] == major && version[1] == '.';
    // A revision may follow: 2.3.1.
    const auto read = std::from_chars(version.data() + (fits ? 2 : 0), end, minor);
    if (!fits || read.ec != std::errc()) throw HttpError{kNotImplemented, cimError, "version " + version};
    return minor;
}

std::string readNameSpacePath(const pugi::xml_node& element) {
    std::string path;
    for (const pugi::xml_node& part : elementsOf(element)) {
        if (nameOf(part) != "NAMESPACE") refuse(std::string(part.name()) + " in LOCALNAMESPACEPATH");
        if (!path.empty()) path += '/';
        path += requiredAttribute(part, "NAME");
    }
    if (path.empty()) refuse("LOCALNAMESPACEPATH without NAMESPACE");
    return path;
}

// Reads the objects of parameters. The namespace is the one that a name without any belongs to.
class ObjectReader {
  public:
    explicit ObjectReader(std::string nameSpace) : nameSpace_(std::move(nameSpace)) {}

    ObjectPath instanceName(const pugi::xml_node& element) { return instanceNameIn(element, nameSpace_, {}); }

    Instance instance(const pugi::xml_node& element) {
        Instance result;
        result.path.nameSpace = nameSpace_;
        result.path.className = requiredAttribute(element, "CLASSNAME");
        for (const pugi::xml_node& child : elementsOf(element)) {
            if (nameOf(child) == "QUALIFIER") continue; // an instance's qualifiers mean nothing
            result.properties.set(requiredAttribute(child, "NAME"), property(child),
                                  child.attribute("CLASSORIGIN").value());
        }
        return result;
    }

    Instance namedInstance(const pugi::xml_node& element) {
        const std::vector<pugi::xml_node> parts = elementsOf(element);
        if (parts.size() != 2 || nameOf(parts[0]) != "INSTANCENAME" || nameOf(parts[1]) != "INSTANCE") {
            refuse("VALUE.NAMEDINSTANCE must hold INSTANCENAME and INSTANCE");
        }
        Instance result = instance(parts[1]);
        result.path = instanceName(parts[0]);
        return result;
    }

  private:
    ObjectPath instanceNameIn(const pugi::xml_node& element, std::string nameSpace, std::string host) {
        ObjectPath path{std::move(host), std::move(nameSpace), requiredAttribute(element, "CLASSNAME"), {}};
        for (const pugi::xml_node& child : elementsOf(element)) {
            if (nameOf(child) == "KEYBINDING") {
                const std::string name = requiredAttribute(child, "NAME");
                if (path.keys.find(name)) refuseValue("key " + name + " occurs twice");
                path.keys.set(name, keyValue(onlyElementOf(child)));
            } else {
                // A class with one key may be named by the bare value.
                if (!path.keys.empty()) refuse("more than one unnamed key");
                path.keys.set("", keyValue(child));
            }
        }
        return path;
    }

    Value keyValue(const pugi::xml_node& element) {
        if (nameOf(element) == "VALUE.REFERENCE") return reference(element);
        if (nameOf(element) != "KEYVALUE") refuse(std::string(element.name()) + " as a key");
        const std::string text = textOf(element);
        std::optional<Value> value;
        if (const pugi::xml_attribute type = element.attribute("TYPE")) {
            const std::optional<CMPIType> known = typeNamed(type.value());
            if (!known || *known == CMPI_ref) refuse(std::string("a key of type ") + type.value());
            value = parseScalar(text, *known);
        } else {
            const std::string_view kind = element.attribute("VALUETYPE").as_string("string");
            if (kind == "string") {
                value = Value::text(text);
            } else if (kind == "boolean") {
                value = parseScalar(text, CMPI_boolean);
            } else if (kind == "numeric") {
                value = parseNumber(text);
            } else {
                throw HttpError{kBadRequest, "request-not-valid", "a key of kind " + std::string(kind)};
            }
        }
        if (!value) refuseValue("key value " + text + " is not of its type");
        return *value;
    }

    Value reference(const pugi::xml_node& valueReference) {
        if (++depth_ > kDeepestReference) refuseValue("references nested too deeply");
        Value result = Value::reference(path(onlyElementOf(valueReference)));
        --depth_;
        return result;
    }

    ObjectPath path(const pugi::xml_node& element) {
        const std::string_view kind = nameOf(element);
        if (kind == "INSTANCENAME") return instanceNameIn(element, nameSpace_, {});
        if (kind == "CLASSNAME") return {{}, nameSpace_, requiredAttribute(element, "NAME"), {}};
        const std::vector<pugi::xml_node> parts = elementsOf(element);
        if (parts.size() != 2) refuse(std::string(element.name()) + " must hold two elements");
        const auto [nameSpace, host] = where(kind, parts[0]);
        const bool ofInstance = nameOf(parts[1]) == "INSTANCENAME";
        if (ofInstance && (kind == "INSTANCEPATH" || kind == "LOCALINSTANCEPATH")) {
            return instanceNameIn(parts[1], nameSpace, host);
        }
        if (nameOf(parts[1]) == "CLASSNAME" && (kind == "CLASSPATH" || kind == "LOCALCLASSPATH")) {
            return {host, nameSpace, requiredAttribute(parts[1], "NAME"), {}};
        }
        refuse(std::string(parts[1].name()) + " in " + element.name());
    }

    // The namespace and the host that a path begins with.
    static std::pair<std::string, std::string> where(std::string_view kind, const pugi::xml_node& element) {
        if (nameOf(element) == "LOCALNAMESPACEPATH" && kind.starts_with("LOCAL"))
            return {readNameSpacePath(element), ""};
        if (nameOf(element) != "NAMESPACEPATH" || kind.starts_with("LOCAL")) {
            refuse(std::string(element.name()) + " in " + std::string(kind));
        }
        const std::vector<pugi::xml_node> parts = elementsOf(element);
        if (parts.size() != 2 || nameOf(parts[0]) != "HOST" || nameOf(parts[1]) != "LOCALNAMESPACEPATH") {
            refuse("NAMESPACEPATH must hold HOST and LOCALNAMESPACEPATH");
        }
        return {readNameSpacePath(parts[1]), textOf(parts[0])};
    }

    Value property(const pugi::xml_node& element) {
        const std::string_view kind = nameOf(element);
        if (kind == "PROPERTY.REFERENCE") {
            const std::vector<pugi::xml_node> values = elementsOf(element);
            return values.empty() ? Value::null(CMPI_ref) : reference(values.back());
        }
        if (kind != "PROPERTY" && kind != "PROPERTY.ARRAY")
            refuse(std::string(element.name()) + " in INSTANCE");
        const std::optional<CMPIType> type = typeNamed(requiredAttribute(element, "TYPE"));
        if (!type || *type == CMPI_ref) refuse("a property of an unknown type");
        pugi::xml_node held;
        for (const pugi::xml_node& child : elementsOf(element)) {
            if (nameOf(child) != "QUALIFIER") held = child;
        }
        if (kind == "PROPERTY") return held ? scalar(held, *type) : Value::null(*type);
        const auto arrayType = static_cast<CMPIType>(*type | CMPI_ARRAY);
        if (!held) return Value::null(arrayType);
        std::vector<Value> elements;
        for (const pugi::xml_node& value : elementsOf(held)) {
            elements.push_back(nameOf(value) == "VALUE.NULL" ? Value::null(*type) : scalar(value, *type));
        }
        return {arrayType, std::move(elements)};
    }

    static Value scalar(const pugi::xml_node& element, CMPIType type) {
        if (nameOf(element) != "VALUE") refuse(std::string(element.name()) + " as a value");
        const std::string text = textOf(element);
        std::optional<Value> value = parseScalar(text, type);
        if (!value) refuseValue("value " + text + " is not of type " + typeName(type));
        return *value;
    }

    std::string nameSpace_;
    unsigned depth_ = 0;
};

ParameterValue readParameter(const pugi::xml_node& holder, const std::string& nameSpace) {
    const std::vector<pugi::xml_node> held = elementsOf(holder);
    if (held.empty()) return std::monostate{};
    if (held.size() > 1) refuse("more than one value in a parameter");
    const pugi::xml_node& element = held.front();
    const std::string_view kind = nameOf(element);
    ObjectReader reader(nameSpace);
    if (kind == "VALUE") return textOf(element);
    if (kind == "CLASSNAME") return ClassNameValue{requiredAttribute(element, "NAME")};
    if (kind == "INSTANCENAME") return reader.instanceName(element);
    if (kind == "INSTANCE") return reader.instance(element);
    if (kind == "VALUE.NAMEDINSTANCE") return reader.namedInstance(element);
    if (kind == "VALUE.ARRAY") {
        std::vector<std::string> values;
        for (const pugi::xml_node& value : elementsOf(element)) {
            if (nameOf(value) != "VALUE") refuse(std::string(value.name()) + " in VALUE.ARRAY");
            values.push_back(textOf(value));
        }
        return values;
    }
    return UnreadValue{element.name()};
}

} // namespace

CimXmlRequest::CimXmlRequest(const std::string& text) : document_(std::make_unique<Document>()) {
    constexpr auto kNotWellFormed = "request-not-well-formed";
    if (const auto wrong = findIllFormed(text)) throw HttpError{kBadRequest, kNotWellFormed, *wrong};
    constexpr unsigned kOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                  pugi::parse_ws_pcdata | pugi::parse_wconv_attribute;
    const pugi::xml_parse_result parsed =
        document_->xml.load_buffer(text.data(), text.size(), kOptions, pugi::encoding_utf8);
    if (!parsed) throw HttpError{kBadRequest, kNotWellFormed, parsed.description()};

    const pugi::xml_node cim = document_->xml.document_element();
    if (nameOf(cim) != "CIM") refuse("the document element is not CIM");
    minorVersion(requiredAttribute(cim, "CIMVERSION"), '2', "unsupported-cim-version");
    constexpr unsigned kFirstWithTypedKeys = 3;
    typedKeys = minorVersion(requiredAttribute(cim, "DTDVERSION"), '2', "unsupported-dtd-version") >=
                kFirstWithTypedKeys;

    const pugi::xml_node message = onlyElementOf(cim);
    if (nameOf(message) != "MESSAGE") refuse("CIM does not hold MESSAGE");
    messageId = requiredAttribute(message, "ID");
    minorVersion(requiredAttribute(message, "PROTOCOLVERSION"), '1', "unsupported-protocol-version");

    const pugi::xml_node request = onlyElementOf(message);
    if (nameOf(request) == "MULTIREQ") {
        throw HttpError{kNotImplemented, "multiple-requests-unsupported", "one operation a request, please"};
    }
    if (nameOf(request) != "SIMPLEREQ") refuse("MESSAGE does not hold SIMPLEREQ");
    for (const pugi::xml_node& element : elementsOf(request)) {
        if (nameOf(element) == "CORRELATOR") continue;
        if (document_->call) refuse("more than one operation in SIMPLEREQ");
        document_->call = element;
    }
    extrinsic = nameOf(document_->call) == "METHODCALL";
    if (!extrinsic && nameOf(document_->call) != "IMETHODCALL")
        refuse("SIMPLEREQ does not hold an operation");
    method = requiredAttribute(document_->call, "NAME");
    if (extrinsic) return;

    const std::vector<pugi::xml_node> parts = elementsOf(document_->call);
    if (parts.empty() || nameOf(parts.front()) != "LOCALNAMESPACEPATH")
        refuse("IMETHODCALL without LOCALNAMESPACEPATH");
    nameSpace = readNameSpacePath(parts.front());
}

CimXmlRequest::~CimXmlRequest() = default;
CimXmlRequest::CimXmlRequest(CimXmlRequest&&) noexcept = default;

std::vector<Parameter> CimXmlRequest::parameters() const {
    std::vector<Parameter> result;
    const std::vector<pugi::xml_node> parts = elementsOf(document_->call);
    for (std::size_t i = 1; i < parts.size(); ++i) { // the first is the namespace
        if (nameOf(parts[i]) != "IPARAMVALUE") refuse(std::string(parts[i].name()) + " in IMETHODCALL");
        result.push_back({requiredAttribute(parts[i], "NAME"), readParameter(parts[i], nameSpace)});
    }
    return result;
}

} // namespace cimserver
