#include "server/provider/provider_call.h"

#include <cmpidt.h>
#include <cmpift.h>

#include <optional>
#include <string>
#include <vector>

#include "server/broker/encapsulated.h"
#include "server/broker/instance.h"
#include "server/broker/named_lists.h"
#include "server/broker/object_path.h"
#include "server/broker/property_list.h"
#include "server/broker/request_pool.h"
#include "server/broker/result.h"
#include "server/broker/string.h"

namespace cimserver {

namespace {

const char* chars_or_null(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}

// Calls one function of a management interface and waits for its results.
template <typename Interface, typename Function, typename... Arguments>
Outcome call(Interface* interface, Function function, const Request& request, ResultSink& sink,
             Arguments... arguments) {
    if (interface == nullptr || interface->ft->*function == nullptr) {
        return Outcome::error(CMPI_RC_ERR_NOT_SUPPORTED);
    }
    CMPIContext* context = make_pooled<ContextObject>(ContextContent{request.context});
    auto* result = make_pooled<ResultObject>(ResultContent{});
    result->content().sink = &sink;
    const CMPIStatus answered =
        (interface->ft->*function)(interface, context, result, make_path(request.target), arguments...);

    Outcome outcome;
    outcome.code = answered.rc;
    outcome.message = text_of(answered.msg);
    if (from_handle<ResultObject>(static_cast<CMPIResult*>(result)) != nullptr) {
        outcome.delivered = result->content().delivered;
        outcome.ignored = result->content().ignored;
        if (outcome.message.empty() && !outcome.ok()) outcome.message = result->content().errorMessage;
    }
    return outcome;
}

} // namespace

Outcome call_provider(const Provider& provider, const Request& request, ResultSink& sink) {
    const RequestScope scope; // what the provider makes meanwhile is gone when this returns
    CMPIInstanceMI* instances = provider.instances();
    CMPIAssociationMI* associations = provider.associations();
    std::vector<const char*> pointers;
    if (request.wanted) pointers = pointers_to(*request.wanted);
    const char** wanted = request.wanted ? pointers.data() : nullptr;
    const char* association = chars_or_null(request.associationClass);
    const char* resultClass = chars_or_null(request.resultClass);
    const char* role = chars_or_null(request.role);
    const char* resultRole = chars_or_null(request.resultRole);

    switch (request.operation) {
        case Operation::EnumerateInstances:
            return call(instances, &CMPIInstanceMIFT::enumerateInstances, request, sink, wanted);
        case Operation::EnumerateInstanceNames:
            return call(instances, &CMPIInstanceMIFT::enumerateInstanceNames, request, sink);
        case Operation::GetInstance:
            return call(instances, &CMPIInstanceMIFT::getInstance, request, sink, wanted);
        case Operation::CreateInstance:
            return call(instances, &CMPIInstanceMIFT::createInstance, request, sink,
                        make_instance(request.instance));
        case Operation::ModifyInstance:
            return call(instances, &CMPIInstanceMIFT::modifyInstance, request, sink,
                        make_instance(request.instance), wanted);
        case Operation::DeleteInstance:
            return call(instances, &CMPIInstanceMIFT::deleteInstance, request, sink);
        case Operation::ExecQuery:
            return call(instances, &CMPIInstanceMIFT::execQuery, request, sink, request.query.c_str(),
                        request.queryLanguage.c_str());
        case Operation::Associators:
            return call(associations, &CMPIAssociationMIFT::associators, request, sink, association,
                        resultClass, role, resultRole, wanted);
        case Operation::AssociatorNames:
            return call(associations, &CMPIAssociationMIFT::associatorNames, request, sink, association,
                        resultClass, role, resultRole);
        case Operation::References:
            return call(associations, &CMPIAssociationMIFT::references, request, sink, association, role,
                        wanted);
        case Operation::ReferenceNames:
            return call(associations, &CMPIAssociationMIFT::referenceNames, request, sink, association, role);
        default:
            return Outcome::error(CMPI_RC_ERR_NOT_SUPPORTED);
    }
}

} // namespace cimserver
