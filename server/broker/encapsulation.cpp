#include "server/broker/encapsulation.h"

#include <cmpidt.h>

#include <cstdarg>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/broker/array.h"
#include "server/broker/broker.h"
#include "server/broker/codepage.h"
#include "server/broker/datetime.h"
#include "server/broker/encapsulated.h"
#include "server/broker/enumeration.h"
#include "server/broker/error.h"
#include "server/broker/instance.h"
#include "server/broker/named_lists.h"
#include "server/broker/object_path.h"
#include "server/broker/property_list.h"
#include "server/broker/result.h"
#include "server/broker/string.h"
#include "server/broker/values.h"
#include "server/model/cim_model.h"
#include "server/model/datetime.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

template <typename Made>
Made* refuse(CMPIStatus* rc, CMPIrc why) {
    set_status(rc, why);
    return nullptr;
}

CMPIInstance* new_instance(const CMPIBroker*, const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* from = from_handle<PathObject>(path);
    if (from == nullptr) return refuse<CMPIInstance>(rc, CMPI_RC_ERR_INVALID_HANDLE);
    set_status(rc, CMPI_RC_OK);
    Instance instance;
    instance.path = from->content();
    // An instance has the keys of its path as properties.
    for (const NamedValue& key : instance.path.keys.all()) {
        instance.properties.set(key.name, key.value);
    }
    return make_instance(std::move(instance));
}

CMPIObjectPath* new_object_path(const CMPIBroker*, const char* nameSpace, const char* className,
                                CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    return make_path({{}, nameSpace != nullptr ? nameSpace : "", className != nullptr ? className : "", {}});
}

CMPIArgs* new_args(const CMPIBroker*, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    return make_pooled<ArgsObject>(ArgsContent{});
}

CMPIString* new_string(const CMPIBroker*, const char* data, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    return make_string(data != nullptr ? data : "");
}

CMPIString* new_string_cp(const CMPIBroker*, const char* data, const CMPICodepageID codepage,
                          CMPIStatus* rc) {
    if (data == nullptr) return refuse<CMPIString>(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<std::string> text = decode_from(codepage, data, rc);
    return text ? make_string(std::move(*text)) : nullptr;
}

CMPIArray* new_array(const CMPIBroker*, CMPICount size, CMPIType type, CMPIStatus* rc) {
    // The NULL value of the type shows whether there is such a type, and its canonical form.
    const std::optional<Value> element = from_cmpi(nullptr, static_cast<CMPIType>(type & ~CMPI_ARRAY));
    if (!element || element->type == CMPI_null) return refuse<CMPIArray>(rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    set_status(rc, CMPI_RC_OK);
    return make_pooled<ArrayObject>(ArrayContent{element->type, std::vector<Value>(size, *element)});
}

CMPIDateTime* new_date_time(const CMPIBroker*, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    return make_pooled<DateTimeObject>(CimDateTime::now());
}

CMPIDateTime* new_date_time_from_binary(const CMPIBroker*, CMPIUint64 time, CMPIBoolean interval,
                                        CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    return make_pooled<DateTimeObject>(CimDateTime{time, interval != 0, 0});
}

CMPIDateTime* new_date_time_from_chars(const CMPIBroker*, const char* text, CMPIStatus* rc) {
    const std::optional<CimDateTime> time = CimDateTime::parse(text != nullptr ? text : "");
    if (!time) return refuse<CMPIDateTime>(rc, CMPI_RC_ERR_INVALID_PARAMETER);
    set_status(rc, CMPI_RC_OK);
    return make_pooled<DateTimeObject>(*time);
}

// The server parses no queries.
CMPISelectExp* new_select_exp(const CMPIBroker*, const char*, const char*, CMPIArray** projection,
                              CMPIStatus* rc) {
    if (projection != nullptr) *projection = nullptr;
    return refuse<CMPISelectExp>(rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIEnumerationFilter* new_enumeration_filter(const CMPIBroker*, const char*, const char*, CMPIStatus* rc) {
    return refuse<CMPIEnumerationFilter>(rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

// Without class declarations a class is known to be itself and nothing else.
CMPIBoolean class_path_is_a(const CMPIBroker*, const CMPIObjectPath* path, const char* className,
                            CMPIStatus* rc) {
    PathObject* ours = from_handle<PathObject>(path);
    set_status(rc, ours == nullptr        ? CMPI_RC_ERR_INVALID_HANDLE
                   : className != nullptr ? CMPI_RC_OK
                                          : CMPI_RC_ERR_INVALID_PARAMETER);
    return ours != nullptr && className != nullptr && same_name(ours->content().className, className) ? 1 : 0;
}

// What an object of any type says of itself. The types share one layout; the function table shows which it
// is.
struct Description {
    const char* type;
    std::string text;
};

template <typename Object, typename Handle, typename Describe>
bool describe_as(const void* object, const char* type, Description& description, Describe describe) {
    Object* ours = from_handle<Object>(static_cast<const Handle*>(object));
    if (ours) description = {type, describe(ours->content())};
    return ours != nullptr;
}

std::string list_text(const NamedValues& values) {
    Instance listing;
    listing.properties = values;
    return listing.to_string().substr(std::string_view("instance of  ").size());
}

std::string list_text(const ArrayContent& array) {
    NamedValues all;
    all.set("elements", Value{static_cast<CMPIType>(array.elementType | CMPI_ARRAY), array.elements});
    return list_text(all);
}

std::optional<Description> describe(const void* object) {
    Description found;
    const auto nothing = [](const auto&) { return std::string(); };
    const bool known =
        describe_as<StringObject, CMPIString>(object, "CMPIString", found, [](auto& s) { return s.text; }) ||
        describe_as<PathObject, CMPIObjectPath>(object, "CMPIObjectPath", found,
                                                [](auto& p) { return p.to_string(); }) ||
        describe_as<InstanceObject, CMPIInstance>(object, "CMPIInstance", found,
                                                  [](auto& i) { return i.to_string(); }) ||
        describe_as<ArrayObject, CMPIArray>(object, "CMPIArray", found,
                                            [](auto& a) { return list_text(a); }) ||
        describe_as<DateTimeObject, CMPIDateTime>(object, "CMPIDateTime", found,
                                                  [](auto& t) { return t.to_string(); }) ||
        describe_as<ArgsObject, CMPIArgs>(object, "CMPIArgs", found,
                                          [](auto& a) { return list_text(a.arguments); }) ||
        describe_as<ContextObject, CMPIContext>(object, "CMPIContext", found,
                                                [](auto& c) { return list_text(c.entries); }) ||
        describe_as<EnumerationObject, CMPIEnumeration>(object, "CMPIEnumeration", found,
                                                        [](auto& e) { return list_text(e.items); }) ||
        describe_as<ErrorObject, CMPIError>(object, "CMPIError", found, [](auto& e) { return e.message; }) ||
        describe_as<PropertyListObject, CMPIPropertyList>(object, "CMPIPropertyList", found, nothing) ||
        describe_as<ResultObject, CMPIResult>(object, "CMPIResult", found, nothing);
    return known ? std::optional(found) : std::nullopt;
}

CMPIString* to_string(const CMPIBroker*, const void* object, CMPIStatus* rc) {
    const std::optional<Description> description = describe(object);
    set_status(rc, description ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return description ? make_string(description->text) : nullptr;
}

CMPIBoolean is_of_type(const CMPIBroker*, const void* object, const char* type, CMPIStatus* rc) {
    const std::optional<Description> description = describe(object);
    set_status(rc, !description      ? CMPI_RC_ERR_INVALID_HANDLE
                   : type != nullptr ? CMPI_RC_OK
                                     : CMPI_RC_ERR_INVALID_PARAMETER);
    return description && type != nullptr && std::string_view(type) == description->type ? 1 : 0;
}

CMPIString* get_type(const CMPIBroker*, const void* object, CMPIStatus* rc) {
    const std::optional<Description> description = describe(object);
    set_status(rc, description ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return description ? make_string(description->type) : nullptr;
}

// One insert of a message: a type code, then a value as variable arguments carry it.
std::string next_insert(std::va_list* arguments) {
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
            return real_text(va_arg(*arguments, double), CMPI_real64);
        case CMPI_boolean:
            return va_arg(*arguments, int) ? "true" : "false";
        case CMPI_chars: {
            const char* text = va_arg(*arguments, char*);
            return text != nullptr ? text : "";
        }
        case CMPI_string:
            return text_of(va_arg(*arguments, CMPIString*));
        default:
            return {};
    }
}

// The server has no message catalogues: a message is its default text with $0, $1, ... filled in.
CMPIString* fill_message(const char* text, CMPIStatus* rc, CMPICount count, std::va_list* arguments) {
    std::vector<std::string> inserts;
    for (CMPICount i = 0; i < count; ++i) {
        inserts.push_back(next_insert(arguments));
    }
    std::string message;
    for (std::string_view rest = text != nullptr ? text : ""; !rest.empty();) {
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
    set_status(rc, CMPI_RC_OK);
    return make_string(std::move(message));
}

CMPIString* get_message(const CMPIBroker*, const char*, const char* text, CMPIStatus* rc, CMPICount count,
                        ...) {
    std::va_list arguments;
    va_start(arguments, count);
    CMPIString* message = fill_message(text, rc, count, &arguments);
    va_end(arguments);
    return message;
}

CMPIString* get_message2(const CMPIBroker*, const char*, const CMPIMsgFileHandle, const char* text,
                         CMPIStatus* rc, CMPICount count, ...) {
    std::va_list arguments;
    va_start(arguments, count);
    CMPIString* message = fill_message(text, rc, count, &arguments);
    va_end(arguments);
    return message;
}

CMPIStatus open_message_file(const CMPIBroker*, const char*, CMPIMsgFileHandle* handle) {
    if (handle != nullptr) *handle = nullptr;
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIStatus close_message_file(const CMPIBroker*, const CMPIMsgFileHandle) {
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

std::string log_line(const char* who, const char* text, const CMPIString* string) {
    std::string line = who != nullptr ? std::string(who) + ": " : std::string();
    line += text != nullptr ? text : text_of(string);
    return line;
}

CMPIStatus log_message(const CMPIBroker* broker, CMPISeverity severity, const char* id, const char* text,
                       const CMPIString* string) {
    const Broker* ours = Broker::of(broker);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    const char* kind = severity == CMPI_SEV_ERROR     ? "error: "
                       : severity == CMPI_SEV_WARNING ? "warning: "
                                                      : "";
    ours->log(kind + log_line(id, text, string));
    return status(CMPI_RC_OK);
}

CMPIStatus trace(const CMPIBroker* broker, CMPILevel, const char* component, const char* text,
                 const CMPIString* string) {
    const Broker* ours = Broker::of(broker);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (ours->tracing()) ours->log(log_line(component, text, string));
    return status(CMPI_RC_OK);
}

CMPIError* new_cmpi_error(const CMPIBroker*, const char* owner, const char* messageId, const char* message,
                          const CMPIErrorSeverity severity, const CMPIErrorProbableCause cause,
                          const CMPIrc statusCode, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    ErrorContent error;
    error.owner = owner != nullptr ? owner : "";
    error.messageId = messageId != nullptr ? messageId : "";
    error.message = message != nullptr ? message : "";
    error.severity = severity;
    error.cause = cause;
    error.statusCode = statusCode;
    error.recommendedActions.elementType = CMPI_string;
    error.messageArguments.elementType = CMPI_string;
    return make_pooled<ErrorObject>(std::move(error));
}

CMPIPropertyList* new_property_list(const CMPIBroker*, const char** properties, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    return make_pooled<PropertyListObject>(PropertyListContent(properties));
}

constexpr CMPIBrokerEncFT TABLE = {CMPICurrentVersion,
                                   new_instance,
                                   new_object_path,
                                   new_args,
                                   new_string,
                                   new_array,
                                   new_date_time,
                                   new_date_time_from_binary,
                                   new_date_time_from_chars,
                                   new_select_exp,
                                   class_path_is_a,
                                   to_string,
                                   is_of_type,
                                   get_type,
                                   get_message,
                                   log_message,
                                   trace,
                                   new_cmpi_error,
                                   open_message_file,
                                   close_message_file,
                                   get_message2,
                                   new_property_list,
                                   new_string_cp,
                                   new_enumeration_filter};

} // namespace

const CMPIBrokerEncFT* broker_encapsulation() {
    return &TABLE;
}

} // namespace cimserver
