#include "server/broker/upcalls.h"

#include <cmpidt.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "server/broker/broker.h"
#include "server/broker/encapsulated.h"
#include "server/broker/enumeration.h"
#include "server/broker/instance.h"
#include "server/broker/named_lists.h"
#include "server/broker/object_path.h"
#include "server/broker/property_list.h"
#include "server/broker/request_pool.h"
#include "server/broker/string.h"
#include "server/broker/values.h"
#include "server/model/request.h"
#include "server/model/result_sink.h"

namespace cimserver {

namespace {

std::optional<std::string> text_or_none(const char* text) {
    return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
}

Request traversal(Operation operation, const char* associationClass, const char* resultClass,
                  const char* role, const char* resultRole) {
    return {.operation = operation,
            .associationClass = text_or_none(associationClass),
            .resultClass = text_or_none(resultClass),
            .role = text_or_none(role),
            .resultRole = text_or_none(resultRole)};
}

PropertyNames wanted_from(const char** properties) {
    return properties != nullptr ? PropertyNames(names_from(properties)) : std::nullopt;
}

// Performs the request for the object that the path names, in the given context.
CMPIStatus perform(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                   Request request, ResultSink& sink) {
    const Broker* ours = Broker::of(broker);
    PathObject* target = from_handle<PathObject>(path);
    if (ours == nullptr || target == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (ContextObject* given = from_handle<ContextObject>(context)) {
        request.context = given->content().entries;
    }
    request.target = target->content();
    request.instance.path = request.target;
    const Outcome outcome = ours->perform(request, sink);
    return {outcome.code, outcome.message.empty() ? nullptr : make_string(outcome.message)};
}

// The same for requests that are answered with an enumeration.
CMPIEnumeration* enumerate(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                           CMPIStatus* rc, Request request) {
    Collector found;
    const CMPIStatus outcome = perform(broker, context, path, std::move(request), found);
    if (rc != nullptr) *rc = outcome;
    if (outcome.rc != CMPI_RC_OK) return nullptr;
    std::vector<Value> items;
    for (Instance& instance : found.instances) {
        items.push_back(Value::embedded(std::move(instance)));
    }
    for (ObjectPath& name : found.paths) {
        items.push_back(Value::reference(std::move(name)));
    }
    return make_enumeration(found.instances.empty() ? CMPI_ref : CMPI_instance, std::move(items));
}

// Threads of the provider's own.

// A copy of the context for the new thread, which gives it back when it detaches.
CMPIContext* prepare_attach_thread(const CMPIBroker*, const CMPIContext* context) {
    return clone_object<ContextObject>(context, nullptr);
}

thread_local std::vector<std::unique_ptr<RequestScope>> attachments;

CMPIStatus attach_thread(const CMPIBroker*, const CMPIContext* context) {
    if (from_handle<ContextObject>(context) == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    attachments.push_back(std::make_unique<RequestScope>());
    return status(CMPI_RC_OK);
}

CMPIStatus detach_thread(const CMPIBroker*, const CMPIContext* context) {
    ContextObject* ours = from_handle<ContextObject>(context);
    if (ours == nullptr || attachments.empty()) return status(CMPI_RC_ERR_INVALID_HANDLE);
    attachments.pop_back();
    if (ours->owner() == nullptr) delete ours;
    return status(CMPI_RC_OK);
}

// CIM operations.

CMPIStatus deliver_indication(const CMPIBroker*, const CMPIContext*, const char*, const CMPIInstance*) {
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIEnumeration* enumerate_instance_names(const CMPIBroker* broker, const CMPIContext* context,
                                          const CMPIObjectPath* path, CMPIStatus* rc) {
    return enumerate(broker, context, path, rc, {.operation = Operation::EnumerateInstanceNames});
}

CMPIEnumeration* enumerate_instances(const CMPIBroker* broker, const CMPIContext* context,
                                     const CMPIObjectPath* path, const char** properties, CMPIStatus* rc) {
    return enumerate(broker, context, path, rc,
                     {.operation = Operation::EnumerateInstances, .wanted = wanted_from(properties)});
}

CMPIInstance* get_instance(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                           const char** properties, CMPIStatus* rc) {
    Collector found;
    const CMPIStatus outcome =
        perform(broker, context, path,
                {.operation = Operation::GetInstance, .wanted = wanted_from(properties)}, found);
    if (rc != nullptr) *rc = outcome;
    return outcome.rc == CMPI_RC_OK && !found.instances.empty() ? make_instance(found.instances.front())
                                                                : nullptr;
}

CMPIObjectPath* create_instance(const CMPIBroker* broker, const CMPIContext* context,
                                const CMPIObjectPath* path, const CMPIInstance* instance, CMPIStatus* rc) {
    InstanceObject* given = from_handle<InstanceObject>(instance);
    if (given == nullptr) {
        set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
        return nullptr;
    }
    Collector found;
    const CMPIStatus outcome = perform(
        broker, context, path, {.operation = Operation::CreateInstance, .instance = given->content()}, found);
    if (rc != nullptr) *rc = outcome;
    return outcome.rc == CMPI_RC_OK && !found.paths.empty() ? make_path(found.paths.front()) : nullptr;
}

CMPIStatus modify_instance(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                           const CMPIInstance* instance, const char** properties) {
    InstanceObject* given = from_handle<InstanceObject>(instance);
    if (given == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    Collector nothing;
    return perform(broker, context, path,
                   {.operation = Operation::ModifyInstance,
                    .wanted = wanted_from(properties),
                    .instance = given->content()},
                   nothing);
}

CMPIStatus delete_instance(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path) {
    Collector nothing;
    return perform(broker, context, path, {.operation = Operation::DeleteInstance}, nothing);
}

CMPIEnumeration* exec_query(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                            const char* query, const char* language, CMPIStatus* rc) {
    return enumerate(broker, context, path, rc,
                     {.operation = Operation::ExecQuery,
                      .query = query != nullptr ? query : "",
                      .queryLanguage = language != nullptr ? language : ""});
}

CMPIEnumeration* associators(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                             const char* associationClass, const char* resultClass, const char* role,
                             const char* resultRole, const char** properties, CMPIStatus* rc) {
    Request request = traversal(Operation::Associators, associationClass, resultClass, role, resultRole);
    request.wanted = wanted_from(properties);
    return enumerate(broker, context, path, rc, std::move(request));
}

CMPIEnumeration* associator_names(const CMPIBroker* broker, const CMPIContext* context,
                                  const CMPIObjectPath* path, const char* associationClass,
                                  const char* resultClass, const char* role, const char* resultRole,
                                  CMPIStatus* rc) {
    return enumerate(broker, context, path, rc,
                     traversal(Operation::AssociatorNames, associationClass, resultClass, role, resultRole));
}

// The result class of references is the association class.
CMPIEnumeration* references(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                            const char* resultClass, const char* role, const char** properties,
                            CMPIStatus* rc) {
    Request request = traversal(Operation::References, resultClass, nullptr, role, nullptr);
    request.wanted = wanted_from(properties);
    return enumerate(broker, context, path, rc, std::move(request));
}

CMPIEnumeration* reference_names(const CMPIBroker* broker, const CMPIContext* context,
                                 const CMPIObjectPath* path, const char* resultClass, const char* role,
                                 CMPIStatus* rc) {
    return enumerate(broker, context, path, rc,
                     traversal(Operation::ReferenceNames, resultClass, nullptr, role, nullptr));
}

// What the server does not offer.

CMPIData invoke_method(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                       const CMPIArgs*, CMPIArgs*, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return no_data();
}

CMPIStatus set_property(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                        const CMPIValue*, CMPIType) {
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIData get_property(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                      CMPIStatus* rc) {
    set_status(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return no_data();
}

CMPIEnumeration* enumerate_instances_filtered(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*,
                                              const char**, const char*, const char*, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

CMPIEnumeration* associators_filtered(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*,
                                      const char*, const char*, const char*, const char*, const char**,
                                      const char*, const char*, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

CMPIEnumeration* references_filtered(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*,
                                     const char*, const char*, const char**, const char*, const char*,
                                     CMPIStatus* rc) {
    set_status(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

constexpr unsigned CAPABILITIES = CMPI_MB_BasicRead | CMPI_MB_BasicWrite | CMPI_MB_InstanceManipulation |
                                  CMPI_MB_AssociationTraversal | CMPI_MB_OSEncapsulationSupport |
                                  CMPI_MB_Supports_MemEnhancements | CMPI_MB_Supports_Extended_Error |
                                  CMPI_MB_Logging | CMPI_MB_Tracing | CMPI_MB_CodepageConversion;

constexpr CMPIBrokerFT TABLE = {CAPABILITIES,         CMPICurrentVersion,
                                "kesto-cimserver",    prepare_attach_thread,
                                attach_thread,        detach_thread,
                                deliver_indication,   enumerate_instance_names,
                                get_instance,         create_instance,
                                modify_instance,      delete_instance,
                                exec_query,           enumerate_instances,
                                associators,          associator_names,
                                references,           reference_names,
                                invoke_method,        set_property,
                                get_property,         enumerate_instances_filtered,
                                associators_filtered, references_filtered};

} // namespace

const CMPIBrokerFT* broker_upcalls() {
    return &TABLE;
}

} // namespace cimserver
