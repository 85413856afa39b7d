#include "server/cimxml/service.h"

#include <cmpidt.h>

#include <cstdint>
#include <optional>

#include "server/cimxml/errors.h"
#include "server/cimxml/http_binding.h"
#include "server/cimxml/operation_parameters.h"
#include "server/cimxml/writer.h"
#include "server/model/cim_model.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

// What a provider learns about the client.
NamedValues context_of(CMPIFlags flags, const CimXmlRequest& message, const HttpRequest& http) {
    NamedValues context;
    context.set(CMPIInvocationFlags, Value::integer(CMPI_uint32, std::uint64_t{flags}));
    context.set(CMPIInitNameSpace, Value::text(message.nameSpace));
    context.set(CMPIPrincipal, Value::text(http.user));
    if (const std::string* language = http.header("Accept-Language")) {
        context.set(CMPIAcceptLanguage, Value::text(*language));
    }
    return context;
}

EnumerationOwner owner_of(const HttpRequest& http, const CimXmlRequest& message) {
    return {lower_cased(message.nameSpace), http.user};
}

// A traversal from a class leads to classes.
ObjectForm form_of(const CimXmlOperation& operation, const Request& request) {
    if (!request.ofClass) return operation.form;
    return operation.form == ObjectForm::ObjectPath ? ObjectForm::ClassPath : ObjectForm::ClassWithPath;
}

// What a report says the operation is about, and what came of it.
std::string subject_of(const ObjectPath& target) {
    if (target.className.empty()) return {};
    return " " + (target.keys.empty() ? target.className : target.to_string());
}

std::string result_of(const Outcome& outcome) {
    std::string text = ": " + std::to_string(outcome.delivered) + " returned";
    if (outcome.ignored != 0) {
        text += ", " + std::to_string(outcome.ignored) + " that were no objects ignored";
    }
    if (!outcome.message.empty()) text += " (" + outcome.message + ")";
    return text;
}

} // namespace

HttpReply CimXmlService::answer(const HttpRequest& request) const {
    try {
        const CimHeaders headers(request);
        const CimXmlRequest message(request.body);
        headers.expect_to_match(message);
        return headers.reply(run_operation(request, message));
    } catch (const HttpError& error) {
        if (settings_.report) {
            settings_.report("refused with HTTP " + std::to_string(error.status) + " " + error.cimError +
                             ": " + error.what());
        }
        return error_reply(error);
    }
}

std::string CimXmlService::run_operation(const HttpRequest& http, const CimXmlRequest& message) const {
    const ResponseFrame frame{message.messageId, message.method, message.extrinsic, message.typedKeys};
    std::string line = message.method;
    std::string answer;
    try {
        const CimXmlOperation* operation = message.extrinsic ? nullptr : find_operation(message.method);
        const PullOperation* pull = message.extrinsic ? nullptr : find_pull_operation(message.method);
        if (operation == nullptr && pull == nullptr) {
            throw CimError(CMPI_RC_ERR_NOT_SUPPORTED, message.method + " is not served");
        }
        const ServedNameSpace* served = operations_.find_name_space(message.nameSpace);
        if (served == nullptr) {
            throw CimError(CMPI_RC_ERR_INVALID_NAMESPACE, "there is no namespace " + message.nameSpace);
        }
        answer = response(frame, operation != nullptr ? perform(*operation, *served, http, message, line)
                                                      : perform(*pull, http, message, line));
    } catch (const CimError& error) {
        const std::string why = error.what();
        line += std::string(": ") + cim_error_name(cim_error_code(error.code));
        if (!why.empty()) line += " (" + why + ")";
        answer = error_response(frame, error);
    }
    if (settings_.report) settings_.report(line);
    return answer;
}

std::string CimXmlService::perform(const CimXmlOperation& operation, const ServedNameSpace& served,
                                   const HttpRequest& http, const CimXmlRequest& message,
                                   std::string& line) const {
    OperationParameters parameters(message.parameters());
    Request request{.operation = operation.operation};
    request.target.nameSpace = message.nameSpace;
    operation.read(parameters, request);
    const std::optional<OpenTerms> terms =
        operation.opens ? std::optional(read_open_terms(parameters)) : std::nullopt;
    parameters.expect_no_more();
    request.context = context_of(parameters.flags(), message, http);
    if (settings_.report) line += subject_of(request.target);

    const std::string* host = http.header("Host");
    ObjectWriter writer(form_of(operation, request),
                        {.schema = served.schema,
                         .host = host != nullptr && !host->empty() ? *host : settings_.host,
                         .nameSpace = message.nameSpace,
                         .keepHosts = settings_.keepHosts,
                         .typedKeys = message.typedKeys,
                         .localOnly = request.localOnly,
                         .qualifiers = request.includeQualifiers,
                         .classOrigin = request.includeClassOrigin,
                         .wanted = name_set(request.wanted)});
    SeparateObjects separate(writer);
    const Outcome outcome = operations_.perform(request, terms ? static_cast<ResultSink&>(separate) : writer);
    if (!outcome.ok()) throw CimError(outcome.code, outcome.message);
    std::string content;
    if (terms) {
        content = portion_answer(sessions_.open({owner_of(http, message), operation.form, terms->timeout,
                                                 separate.take()},
                                                terms->firstPortion))
                      .content;
    } else if (operation.form != ObjectForm::Nothing) {
        content = return_value(writer.take());
    }
    line += result_of(outcome);
    return content;
}

std::string CimXmlService::perform(const PullOperation& operation, const HttpRequest& http,
                                   const CimXmlRequest& message, std::string& line) const {
    OperationParameters parameters(message.parameters());
    const PullAnswer answer = operation.perform(parameters, sessions_, owner_of(http, message));
    line += ": " + answer.report;
    return answer.content;
}

} // namespace cimserver
