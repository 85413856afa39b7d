#include "server/cimxml/service.h"

#include <cmpidt.h>

#include <cstdint>

#include "server/cimxml/errors.h"
#include "server/cimxml/http_binding.h"
#include "server/cimxml/operation_parameters.h"
#include "server/cimxml/operations.h"
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
    context.set(CMPIPrincipal, Value::text(""));
    if (const std::string* language = http.header("Accept-Language")) {
        context.set(CMPIAcceptLanguage, Value::text(*language));
    }
    return context;
}

// A traversal from a class leads to classes.
ObjectForm form_of(const CimXmlOperation& operation, const Request& request) {
    if (!request.ofClass) return operation.form;
    return operation.form == ObjectForm::ObjectPath ? ObjectForm::ClassPath : ObjectForm::ClassWithPath;
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
    try {
        const CimXmlOperation* operation = message.extrinsic ? nullptr : find_operation(message.method);
        if (operation == nullptr) {
            throw CimError(CMPI_RC_ERR_NOT_SUPPORTED, message.method + " is not served");
        }
        const ServedNameSpace* served = operations_.find_name_space(message.nameSpace);
        if (served == nullptr) {
            throw CimError(CMPI_RC_ERR_INVALID_NAMESPACE, "there is no namespace " + message.nameSpace);
        }
        OperationParameters parameters(message.parameters());
        Request request{.operation = operation->operation};
        request.target.nameSpace = message.nameSpace;
        operation->read(parameters, request);
        parameters.expect_no_more();
        request.context = context_of(parameters.flags(), message, http);

        const std::string* host = http.header("Host");
        ObjectWriter writer(form_of(*operation, request),
                            {.schema = served->schema,
                             .host = host != nullptr && !host->empty() ? *host : settings_.host,
                             .nameSpace = message.nameSpace,
                             .keepHosts = settings_.keepHosts,
                             .typedKeys = message.typedKeys,
                             .localOnly = request.localOnly,
                             .qualifiers = request.includeQualifiers,
                             .classOrigin = request.includeClassOrigin,
                             .wanted = name_set(request.wanted)});
        const Outcome outcome = operations_.perform(request, writer);
        report(message, request, outcome);
        if (!outcome.ok()) throw CimError(outcome.code, outcome.message);
        return operation->form == ObjectForm::Nothing ? empty_response(frame)
                                                      : result_response(frame, writer.take());
    } catch (const CimError& error) {
        return error_response(frame, error);
    }
}

void CimXmlService::report(const CimXmlRequest& message, const Request& request,
                           const Outcome& outcome) const {
    if (!settings_.report) return;
    const ObjectPath& target = request.target;
    std::string line =
        message.method + " " + (target.keys.empty() ? target.className : target.to_string()) + ": ";
    line += outcome.ok() ? std::to_string(outcome.delivered) + " returned"
                         : cim_error_name(cim_error_code(outcome.code));
    if (outcome.ignored != 0) {
        line += ", " + std::to_string(outcome.ignored) + " that were no objects ignored";
    }
    if (!outcome.message.empty()) line += " (" + outcome.message + ")";
    settings_.report(line);
}

} // namespace cimserver
