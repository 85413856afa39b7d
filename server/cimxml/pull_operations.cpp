#include "server/cimxml/pull_operations.h"

#include <cmpidt.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>

#include "server/cimxml/errors.h"
#include "server/cimxml/xml_writer.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

std::string read_context(OperationParameters& parameters) {
    return parameters.text("EnumerationContext");
}

template <ObjectForm FORM>
PullAnswer pull(OperationParameters& parameters, EnumerationSessions& sessions,
                const EnumerationOwner& owner) {
    const std::string context = read_context(parameters);
    const std::uint32_t most = parameters.number("MaxObjectCount");
    parameters.expect_no_more();
    return portion_answer(sessions.pull(context, owner, FORM, most));
}

PullAnswer close(OperationParameters& parameters, EnumerationSessions& sessions,
                 const EnumerationOwner& owner) {
    const std::string context = read_context(parameters);
    parameters.expect_no_more();
    sessions.close(context, owner);
    return {.content = "", .report = "closed"};
}

PullAnswer count(OperationParameters& parameters, EnumerationSessions& sessions,
                 const EnumerationOwner& owner) {
    const std::string context = read_context(parameters);
    parameters.expect_no_more();
    const std::string number = std::to_string(sessions.to_come(context, owner));
    XmlWriter xml;
    xml.element("VALUE", number);
    return {.content = return_value(xml.result()), .report = number + " to come"};
}

constexpr PullOperation PULL_OPERATIONS[] = {
    {"PullInstancesWithPath", pull<ObjectForm::InstanceWithPath>},
    {"PullInstancePaths", pull<ObjectForm::InstancePath>},
    {"PullInstances", pull<ObjectForm::Instance>},
    {"CloseEnumeration", close},
    {"EnumerationCount", count},
};

void write_out_parameter(XmlWriter& xml, std::string_view name, std::string_view type,
                         const std::string& value) {
    xml.open("PARAMVALUE", {{"NAME", name}, {"PARAMTYPE", type}});
    if (!value.empty()) xml.element("VALUE", value);
    xml.close("PARAMVALUE");
}

} // namespace

OpenTerms read_open_terms(OperationParameters& parameters) {
    const std::optional<std::uint32_t> timeout = parameters.optional_number("OperationTimeout");
    if (timeout && (*timeout == 0 || *timeout > LONGEST_OPERATION_TIMEOUT.count())) {
        throw CimError(
            CIM_RC_INVALID_OPERATION_TIMEOUT,
            "OperationTimeout can be 1 to " + std::to_string(LONGEST_OPERATION_TIMEOUT.count()) + " seconds");
    }
    if (parameters.flag("ContinueOnError", false)) {
        throw CimError(CIM_RC_CONTINUATION_ON_ERROR_NOT_SUPPORTED);
    }
    const bool isFiltered = parameters.optional_text("FilterQueryLanguage").has_value();
    if (parameters.optional_text("FilterQuery") || isFiltered) {
        throw CimError(CIM_RC_FILTERED_ENUMERATION_NOT_SUPPORTED);
    }
    return {timeout ? std::chrono::seconds(*timeout) : USUAL_OPERATION_TIMEOUT,
            parameters.optional_number("MaxObjectCount").value_or(0)};
}

void SeparateObjects::deliver(const Instance& instance) {
    writer_.deliver(instance);
    mark_end();
}

void SeparateObjects::deliver(const ObjectPath& path) {
    writer_.deliver(path);
    mark_end();
}

// What a provider should not have returned is not written.
void SeparateObjects::mark_end() {
    const std::size_t end = writer_.length();
    if (end != (ends_.empty() ? 0 : ends_.back())) ends_.push_back(end);
}

PullAnswer portion_answer(const Portion& portion) {
    XmlWriter xml;
    xml.raw(return_value(portion.xml));
    write_out_parameter(xml, "EnumerationContext", "string", portion.context);
    write_out_parameter(xml, "EndOfSequence", "boolean", portion.toCome == 0 ? "TRUE" : "FALSE");
    return {.content = xml.take(),
            .report = std::to_string(portion.objects) + " returned, " + std::to_string(portion.toCome) +
                      " to come"};
}

const PullOperation* find_pull_operation(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(PULL_OPERATIONS), std::end(PULL_OPERATIONS),
                     [name](const PullOperation& operation) { return same_name(operation.name, name); });
    return found != std::end(PULL_OPERATIONS) ? found : nullptr;
}

} // namespace cimserver
