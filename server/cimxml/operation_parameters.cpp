#include "server/cimxml/operation_parameters.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "server/cimxml/errors.h"
#include "server/model/text.h"
#include "server/model/types.h"

namespace cimserver {

namespace {

[[noreturn]] void refuse(std::string_view name, const std::string& why) {
    throw CimError(CMPI_RC_ERR_INVALID_PARAMETER, "parameter " + std::string(name) + " " + why);
}

template <typename Kind>
std::optional<Kind> as(ParameterValue value, std::string_view name) {
    if (std::holds_alternative<std::monostate>(value)) return std::nullopt;
    if (auto* held = std::get_if<Kind>(&value)) return std::move(*held);
    refuse(name, "is of the wrong kind");
}

template <typename Kind>
Kind required(std::optional<Kind> value, std::string_view name) {
    if (!value) refuse(name, "is missing");
    return std::move(*value);
}

} // namespace

OperationParameters::OperationParameters(std::vector<Parameter> parameters)
    : parameters_(std::move(parameters)) {
    NameSet known;
    NameSet repeated;
    for (const Parameter& parameter : parameters_) {
        if (!known.insert(parameter.name).second) repeated.insert(parameter.name);
    }
    for (const Parameter& parameter : parameters_) {
        if (repeated.contains(parameter.name)) refuse(parameter.name, "occurs twice");
    }
}

ParameterValue OperationParameters::take(std::string_view name) {
    const auto found =
        std::find_if(parameters_.begin(), parameters_.end(),
                     [name](const Parameter& parameter) { return same_name(parameter.name, name); });
    if (found == parameters_.end()) return std::monostate{};
    ParameterValue value = std::move(found->value);
    parameters_.erase(found);
    return value;
}

bool OperationParameters::flag(std::string_view name, bool byDefault, CMPIFlags whenTrue) {
    const auto text = as<std::string>(take(name), name);
    const bool isTrue = text ? same_name(trimmed(*text), "true") : byDefault;
    if (text && !isTrue && !same_name(trimmed(*text), "false")) refuse(name, "is no boolean");
    if (isTrue) flags_ |= whenTrue;
    return isTrue;
}

bool OperationParameters::is_given(std::string_view name) const {
    return std::any_of(parameters_.begin(), parameters_.end(), [name](const Parameter& parameter) {
        return same_name(parameter.name, name) && !std::holds_alternative<std::monostate>(parameter.value);
    });
}

std::optional<std::string> OperationParameters::optional_text(std::string_view name) {
    auto text = as<std::string>(take(name), name);
    if (text && text->empty()) text.reset(); // some clients send what they have not been given as empty
    return text;
}

std::string OperationParameters::text(std::string_view name) {
    return required(as<std::string>(take(name), name), name);
}

std::optional<std::uint32_t> OperationParameters::optional_number(std::string_view name) {
    const auto text = as<std::string>(take(name), name);
    if (!text) return std::nullopt;
    const std::optional<Value> value = parse_scalar(trimmed(*text), CMPI_uint32);
    if (!value) refuse(name, "is no number of 32 bits");
    return static_cast<std::uint32_t>(std::get<std::uint64_t>(value->content));
}

std::uint32_t OperationParameters::number(std::string_view name) {
    return required(optional_number(name), name);
}

std::optional<std::string> OperationParameters::optional_class_name(std::string_view name) {
    auto value = as<ClassNameValue>(take(name), name);
    return value ? std::optional(std::move(value->name)) : std::nullopt;
}

std::string OperationParameters::class_name(std::string_view name) {
    return required(optional_class_name(name), name);
}

ObjectPath OperationParameters::instance_name(std::string_view name) {
    return required(as<ObjectPath>(take(name), name), name);
}

OperationParameters::ObjectName OperationParameters::object_name(std::string_view name) {
    ParameterValue value = take(name);
    if (const auto* named = std::get_if<ClassNameValue>(&value)) return {{{}, {}, named->name, {}}, true};
    return {required(as<ObjectPath>(std::move(value), name), name), false};
}

Instance OperationParameters::instance(std::string_view name) {
    return required(as<Instance>(take(name), name), name);
}

PropertyNames OperationParameters::property_list() {
    constexpr std::string_view NAME = "PropertyList";
    return as<std::vector<std::string>>(take(NAME), NAME);
}

void OperationParameters::expect_no_more() const {
    if (!parameters_.empty()) refuse(parameters_.front().name, "is unknown to this operation");
}

} // namespace cimserver
