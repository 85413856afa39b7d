// The broker's makers of objects, and its messages to the operator.
#include <cstdarg>

#include "server/cmpi_broker.h"
#include "server/cmpi_codepage.h"
#include "server/cmpi_values.h"
#include "server/text.h"

namespace cimserver {

namespace {

template <typename Made>
Made* refuse(CMPIStatus* rc, CMPIrc why) {
    setStatus(rc, why);
    return nullptr;
}

CMPIInstance* newInstance(const CMPIBroker*, const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* from = opened<PathObject>(path);
    if (!from) return refuse<CMPIInstance>(rc, CMPI_RC_ERR_INVALID_HANDLE);
    setStatus(rc, CMPI_RC_OK);
    Instance instance;
    instance.path = from->content();
    // An instance has the keys of its path as properties.
    for (const NamedValue& key : instance.path.keys.all()) {
        instance.properties.set(key.name, key.value);
    }
    return makeInstance(std::move(instance));
}

CMPIObjectPath* newObjectPath(const CMPIBroker*, const char* nameSpace, const char* className,
                              CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    return makePath({{}, nameSpace ? nameSpace : "", className ? className : "", {}});
}

CMPIArgs* newArgs(const CMPIBroker*, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    return makePooled<ArgsObject>(ArgsContent{});
}

CMPIString* newString(const CMPIBroker*, const char* data, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    return makeString(data ? data : "");
}

CMPIString* newStringCP(const CMPIBroker*, const char* data, const CMPICodepageID codepage, CMPIStatus* rc) {
    if (!data) return refuse<CMPIString>(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<std::string> text = decodeFrom(codepage, data, rc);
    return text ? makeString(std::move(*text)) : nullptr;
}

CMPIArray* newArray(const CMPIBroker*, CMPICount size, CMPIType type, CMPIStatus* rc) {
    // Asking for the NULL value of the type tells whether there is such a type, and its canonical form.
    const std::optional<Value> element = fromCmpi(nullptr, static_cast<CMPIType>(type & ~CMPI_ARRAY));
    if (!element || element->type == CMPI_null) return refuse<CMPIArray>(rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    setStatus(rc, CMPI_RC_OK);
    return makePooled<ArrayObject>(ArrayContent{element->type, std::vector<Value>(size, *element)});
}

CMPIDateTime* newDateTime(const CMPIBroker*, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    return makePooled<DateTimeObject>(CimDateTime::now());
}

CMPIDateTime* newDateTimeFromBinary(const CMPIBroker*, CMPIUint64 time, CMPIBoolean interval,
                                    CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    return makePooled<DateTimeObject>(CimDateTime{time, interval != 0, 0});
}

CMPIDateTime* newDateTimeFromChars(const CMPIBroker*, const char* text, CMPIStatus* rc) {
    const std::optional<CimDateTime> time = CimDateTime::parse(text ? text : "");
    if (!time) return refuse<CMPIDateTime>(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    setStatus(rc, CMPI_RC_OK);
    return makePooled<DateTimeObject>(*time);
}

// The server parses no queries.
CMPISelectExp* newSelectExp(const CMPIBroker*, const char*, const char*, CMPIArray** projection,
                            CMPIStatus* rc) {
    if (projection) *projection = nullptr;
    return refuse<CMPISelectExp>(rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIEnumerationFilter* newEnumerationFilter(const CMPIBroker*, const char*, const char*, CMPIStatus* rc) {
    return refuse<CMPIEnumerationFilter>(rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

// Without class declarations a class is known to be itself and nothing else.
CMPIBoolean classPathIsA(const CMPIBroker*, const CMPIObjectPath* path, const char* className,
                         CMPIStatus* rc) {
    PathObject* ours = opened<PathObject>(path);
    setStatus(rc, !ours       ? CMPI_RC_ERR_INVALID_HANDLE
                  : className ? CMPI_RC_OK
                              : CMPI_RC_ERR_INVALID_PARAMETER);
    return ours && className && sameName(ours->content().className, className) ? 1 : 0;
}

// What an object of any type says of itself. The types share one layout, so the function table tells the
// type.
struct Description {
    const char* type;
    std::string text;
};

template <typename Object, typename Face, typename Describe>
bool describeAs(const void* object, const char* type, Description& description, Describe describe) {
    Object* ours = opened<Object>(static_cast<const Face*>(object));
    if (ours) description = {type, describe(ours->content())};
    return ours != nullptr;
}

std::string listText(const NamedValues& values) {
    Instance listing;
    listing.properties = values;
    return listing.toString().substr(std::string_view("instance of  ").size());
}

std::string listText(const ArrayContent& array) {
    NamedValues all;
    all.set("elements", Value{static_cast<CMPIType>(array.elementType | CMPI_ARRAY), array.elements});
    return listText(all);
}

std::optional<Description> describe(const void* object) {
    if (!object || reinterpret_cast<std::intptr_t>(object) == -1) return std::nullopt;
    Description found;
    const auto nothing = [](const auto&) { return std::string(); };
    const bool known =
        describeAs<StringObject, CMPIString>(object, "CMPIString", found, [](auto& s) { return s.text; }) ||
        describeAs<PathObject, CMPIObjectPath>(object, "CMPIObjectPath", found,
                                               [](auto& p) { return p.toString(); }) ||
        describeAs<InstanceObject, CMPIInstance>(object, "CMPIInstance", found,
                                                 [](auto& i) { return i.toString(); }) ||
        describeAs<ArrayObject, CMPIArray>(object, "CMPIArray", found, [](auto& a) { return listText(a); }) ||
        describeAs<DateTimeObject, CMPIDateTime>(object, "CMPIDateTime", found,
                                                 [](auto& t) { return t.toString(); }) ||
        describeAs<ArgsObject, CMPIArgs>(object, "CMPIArgs", found,
                                         [](auto& a) { return listText(a.arguments); }) ||
        describeAs<ContextObject, CMPIContext>(object, "CMPIContext", found,
                                               [](auto& c) { return listText(c.entries); }) ||
        describeAs<EnumerationObject, CMPIEnumeration>(object, "CMPIEnumeration", found,
                                                       [](auto& e) { return listText(e.items); }) ||
        describeAs<ErrorObject, CMPIError>(object, "CMPIError", found, [](auto& e) { return e.message; }) ||
        describeAs<PropertyListObject, CMPIPropertyList>(object, "CMPIPropertyList", found, nothing) ||
        describeAs<ResultObject, CMPIResult>(object, "CMPIResult", found, nothing);
    return known ? std::optional(found) : std::nullopt;
}

CMPIString* toString(const CMPIBroker*, const void* object, CMPIStatus* rc) {
    const std::optional<Description> description = describe(object);
    setStatus(rc, description ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return description ? makeString(description->text) : nullptr;
}

CMPIBoolean isOfType(const CMPIBroker*, const void* object, const char* type, CMPIStatus* rc) {
    const std::optional<Description> description = describe(object);
    setStatus(rc, !description ? CMPI_RC_ERR_INVALID_HANDLE
                  : type       ? CMPI_RC_OK
                               : CMPI_RC_ERR_INVALID_PARAMETER);
    return description && type && std::string_view(type) == description->type ? 1 : 0;
}

CMPIString* getType(const CMPIBroker*, const void* object, CMPIStatus* rc) {
    const std::optional<Description> description = describe(object);
    setStatus(rc, description ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return description ? makeString(description->type) : nullptr;
}

// One insert of a message: a type code, then a value as variable arguments carry it.
std::string nextInsert(std::va_list* arguments) {
    switch (va_arg(*arguments, int)) {
        case CMPI_sint32:
            return std::to_string(va_arg(*arguments, long));
        case CMPI_uint32:
            return std::to_string(va_arg(*arguments, unsigned long));
        case CMPI_sint64:
            return std::to_string(va_arg(*arguments, long long));
        case CMPI_uint64:
            return std::to_string(va_arg(*arguments, unsigned long long));
        case CMPI_real64:
            return realText(va_arg(*arguments, double), CMPI_real64);
        case CMPI_boolean:
            return va_arg(*arguments, int) ? "true" : "false";
        case CMPI_chars: {
            const char* text = va_arg(*arguments, char*);
            return text ? text : "";
        }
        case CMPI_string:
            return textOf(va_arg(*arguments, CMPIString*));
        default:
            return {};
    }
}

// The server has no message catalogues: a message is its default text with $0, $1, ... filled in.
CMPIString* fillMessage(const char* text, CMPIStatus* rc, CMPICount count, std::va_list* arguments) {
    std::vector<std::string> inserts;
    for (CMPICount i = 0; i < count; ++i) {
        inserts.push_back(nextInsert(arguments));
    }
    std::string message;
    for (std::string_view rest = text ? text : ""; !rest.empty();) {
        const bool insert = rest.size() > 1 && rest[0] == '$' && rest[1] >= '0' && rest[1] <= '9';
        const auto index = static_cast<std::size_t>(insert ? rest[1] - '0' : 0);
        if (insert && index < inserts.size()) {
            message += inserts[index];
            rest.remove_prefix(2);
        } else {
            message += rest[0];
            rest.remove_prefix(1);
        }
    }
    setStatus(rc, CMPI_RC_OK);
    return makeString(std::move(message));
}

CMPIString* getMessage(const CMPIBroker*, const char*, const char* text, CMPIStatus* rc, CMPICount count,
                       ...) {
    std::va_list arguments;
    va_start(arguments, count);
    CMPIString* message = fillMessage(text, rc, count, &arguments);
    va_end(arguments);
    return message;
}

CMPIString* getMessage2(const CMPIBroker*, const char*, const CMPIMsgFileHandle, const char* text,
                        CMPIStatus* rc, CMPICount count, ...) {
    std::va_list arguments;
    va_start(arguments, count);
    CMPIString* message = fillMessage(text, rc, count, &arguments);
    va_end(arguments);
    return message;
}

CMPIStatus openMessageFile(const CMPIBroker*, const char*, CMPIMsgFileHandle* handle) {
    if (handle) *handle = nullptr;
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIStatus closeMessageFile(const CMPIBroker*, const CMPIMsgFileHandle) {
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

std::string logLine(const char* who, const char* text, const CMPIString* string) {
    std::string line = who ? std::string(who) + ": " : std::string();
    line += text ? text : textOf(string);
    return line;
}

CMPIStatus logMessage(const CMPIBroker* broker, CMPISeverity severity, const char* id, const char* text,
                      const CMPIString* string) {
    const Broker* ours = Broker::of(broker);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    const char* kind = severity == CMPI_SEV_ERROR     ? "error: "
                       : severity == CMPI_SEV_WARNING ? "warning: "
                                                      : "";
    ours->log(kind + logLine(id, text, string));
    return status(CMPI_RC_OK);
}

CMPIStatus trace(const CMPIBroker* broker, CMPILevel, const char* component, const char* text,
                 const CMPIString* string) {
    const Broker* ours = Broker::of(broker);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (ours->tracing()) ours->log(logLine(component, text, string));
    return status(CMPI_RC_OK);
}

CMPIError* newCMPIError(const CMPIBroker*, const char* owner, const char* messageId, const char* message,
                        const CMPIErrorSeverity severity, const CMPIErrorProbableCause cause,
                        const CMPIrc statusCode, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    ErrorContent error;
    error.owner = owner ? owner : "";
    error.messageId = messageId ? messageId : "";
    error.message = message ? message : "";
    error.severity = severity;
    error.cause = cause;
    error.statusCode = statusCode;
    error.recommendedActions.elementType = CMPI_string;
    error.messageArguments.elementType = CMPI_string;
    return makePooled<ErrorObject>(std::move(error));
}

CMPIPropertyList* newPropertyList(const CMPIBroker*, const char** properties, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    return makePooled<PropertyListObject>(PropertyListContent(properties));
}

constexpr CMPIBrokerEncFT kTable = {CMPICurrentVersion,
                                    newInstance,
                                    newObjectPath,
                                    newArgs,
                                    newString,
                                    newArray,
                                    newDateTime,
                                    newDateTimeFromBinary,
                                    newDateTimeFromChars,
                                    newSelectExp,
                                    classPathIsA,
                                    toString,
                                    isOfType,
                                    getType,
                                    getMessage,
                                    logMessage,
                                    trace,
                                    newCMPIError,
                                    openMessageFile,
                                    closeMessageFile,
                                    getMessage2,
                                    newPropertyList,
                                    newStringCP,
                                    newEnumerationFilter};

} // namespace

const CMPIBrokerEncFT* brokerObjects() {
    return &kTable;
}

} // namespace cimserver
