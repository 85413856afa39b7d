// The broker's calls back into the server: a provider may ask for CIM objects just as a client does, and may
// attach threads of its own.
#include <vector>

#include "server/cmpi_broker.h"
#include "server/cmpi_values.h"
#include "server/operations.h"

namespace cimserver {

namespace {

std::optional<std::string> textOrNone(const char* text) {
    return text ? std::optional<std::string>(text) : std::nullopt;
}

PropertyNames wantedFrom(const char** properties) {
    return properties ? PropertyNames(namesFrom(properties)) : std::nullopt;
}

// A call back, its arguments checked: `run(operations, context, path)` does it.
template <typename Run>
CMPIStatus callBack(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                    Run run) {
    const Broker* ours = Broker::of(broker);
    PathObject* target = opened<PathObject>(path);
    if (!ours || !target) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (!ours->operations()) return status(CMPI_RC_ERR_NOT_SUPPORTED);
    ContextObject* given = opened<ContextObject>(context);
    const CallContext with{given ? given->content().entries : NamedValues{}};
    const Outcome outcome = run(*ours->operations(), with, target->content());
    return {outcome.code, outcome.message.empty() ? nullptr : makeString(outcome.message)};
}

// The same for calls that answer with an enumeration of what they collected.
template <typename Run>
CMPIEnumeration* callBackForAll(const CMPIBroker* broker, const CMPIContext* context,
                                const CMPIObjectPath* path, CMPIStatus* rc, Run run) {
    Collector found;
    const CMPIStatus outcome =
        callBack(broker, context, path,
                 [&](const Operations& operations, const CallContext& with, const ObjectPath& of) {
                     return run(operations, with, of, found);
                 });
    if (rc) *rc = outcome;
    if (outcome.rc != CMPI_RC_OK) return nullptr;
    std::vector<Value> items;
    for (Instance& instance : found.instances) {
        items.push_back(Value::embedded(std::move(instance)));
    }
    for (ObjectPath& name : found.paths) {
        items.push_back(Value::reference(std::move(name)));
    }
    return makeEnumeration(found.instances.empty() ? CMPI_ref : CMPI_instance, std::move(items));
}

// ---- Threads of the provider's own. ----

// A copy of the context for the new thread, which gives it back when it detaches.
CMPIContext* prepareAttachThread(const CMPIBroker*, const CMPIContext* context) {
    return cloneObject<ContextObject>(context, nullptr);
}

thread_local std::vector<std::unique_ptr<RequestScope>> attachments;

CMPIStatus attachThread(const CMPIBroker*, const CMPIContext* context) {
    if (!opened<ContextObject>(context)) return status(CMPI_RC_ERR_INVALID_HANDLE);
    attachments.push_back(std::make_unique<RequestScope>());
    return status(CMPI_RC_OK);
}

CMPIStatus detachThread(const CMPIBroker*, const CMPIContext* context) {
    ContextObject* ours = opened<ContextObject>(context);
    if (!ours || attachments.empty()) return status(CMPI_RC_ERR_INVALID_HANDLE);
    attachments.pop_back();
    if (!ours->owner()) delete ours;
    return status(CMPI_RC_OK);
}

// ---- CIM operations. ----

CMPIStatus deliverIndication(const CMPIBroker*, const CMPIContext*, const char*, const CMPIInstance*) {
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIEnumeration* enumerateInstanceNames(const CMPIBroker* broker, const CMPIContext* context,
                                        const CMPIObjectPath* path, CMPIStatus* rc) {
    return callBackForAll(broker, context, path, rc,
                          [](auto& operations, auto& with, auto& of, ResultSink& sink) {
                              return operations.enumerateInstanceNames(with, of, sink);
                          });
}

CMPIInstance* getInstance(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                          const char** properties, CMPIStatus* rc) {
    Collector found;
    const CMPIStatus outcome = callBack(broker, context, path, [&](auto& operations, auto& with, auto& of) {
        return operations.getInstance(with, of, wantedFrom(properties), found);
    });
    if (rc) *rc = outcome;
    return outcome.rc == CMPI_RC_OK && !found.instances.empty() ? makeInstance(found.instances.front())
                                                                : nullptr;
}

CMPIObjectPath* createInstance(const CMPIBroker* broker, const CMPIContext* context,
                               const CMPIObjectPath* path, const CMPIInstance* instance, CMPIStatus* rc) {
    InstanceObject* given = opened<InstanceObject>(instance);
    if (!given) {
        setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
        return nullptr;
    }
    Collector found;
    const CMPIStatus outcome = callBack(broker, context, path, [&](auto& operations, auto& with, auto& of) {
        Instance created = given->content();
        created.path = of;
        return operations.createInstance(with, created, found);
    });
    if (rc) *rc = outcome;
    return outcome.rc == CMPI_RC_OK && !found.paths.empty() ? makePath(found.paths.front()) : nullptr;
}

CMPIStatus modifyInstance(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                          const CMPIInstance* instance, const char** properties) {
    InstanceObject* given = opened<InstanceObject>(instance);
    if (!given) return status(CMPI_RC_ERR_INVALID_HANDLE);
    return callBack(broker, context, path, [&](auto& operations, auto& with, auto& of) {
        Instance modified = given->content();
        modified.path = of;
        return operations.modifyInstance(with, modified, wantedFrom(properties));
    });
}

CMPIStatus deleteInstance(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path) {
    return callBack(broker, context, path, [](auto& operations, auto& with, auto& of) {
        return operations.deleteInstance(with, of);
    });
}

CMPIEnumeration* execQuery(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                           const char* query, const char* language, CMPIStatus* rc) {
    return callBackForAll(
        broker, context, path, rc, [&](auto& operations, auto& with, auto& of, ResultSink& sink) {
            return operations.execQuery(with, of, language ? language : "", query ? query : "", sink);
        });
}

CMPIEnumeration* enumerateInstances(const CMPIBroker* broker, const CMPIContext* context,
                                    const CMPIObjectPath* path, const char** properties, CMPIStatus* rc) {
    return callBackForAll(broker, context, path, rc,
                          [&](auto& operations, auto& with, auto& of, ResultSink& sink) {
                              return operations.enumerateInstances(with, of, wantedFrom(properties), sink);
                          });
}

CMPIEnumeration* associators(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                             const char* associationClass, const char* resultClass, const char* role,
                             const char* resultRole, const char** properties, CMPIStatus* rc) {
    const AssociatorFilter filter{textOrNone(associationClass), textOrNone(resultClass), textOrNone(role),
                                  textOrNone(resultRole)};
    return callBackForAll(broker, context, path, rc,
                          [&](auto& operations, auto& with, auto& of, ResultSink& sink) {
                              return operations.associators(with, of, filter, wantedFrom(properties), sink);
                          });
}

CMPIEnumeration* associatorNames(const CMPIBroker* broker, const CMPIContext* context,
                                 const CMPIObjectPath* path, const char* associationClass,
                                 const char* resultClass, const char* role, const char* resultRole,
                                 CMPIStatus* rc) {
    const AssociatorFilter filter{textOrNone(associationClass), textOrNone(resultClass), textOrNone(role),
                                  textOrNone(resultRole)};
    return callBackForAll(broker, context, path, rc,
                          [&](auto& operations, auto& with, auto& of, ResultSink& sink) {
                              return operations.associatorNames(with, of, filter, sink);
                          });
}

CMPIEnumeration* references(const CMPIBroker* broker, const CMPIContext* context, const CMPIObjectPath* path,
                            const char* resultClass, const char* role, const char** properties,
                            CMPIStatus* rc) {
    const ReferenceFilter filter{textOrNone(resultClass), textOrNone(role)};
    return callBackForAll(broker, context, path, rc,
                          [&](auto& operations, auto& with, auto& of, ResultSink& sink) {
                              return operations.references(with, of, filter, wantedFrom(properties), sink);
                          });
}

CMPIEnumeration* referenceNames(const CMPIBroker* broker, const CMPIContext* context,
                                const CMPIObjectPath* path, const char* resultClass, const char* role,
                                CMPIStatus* rc) {
    const ReferenceFilter filter{textOrNone(resultClass), textOrNone(role)};
    return callBackForAll(broker, context, path, rc,
                          [&](auto& operations, auto& with, auto& of, ResultSink& sink) {
                              return operations.referenceNames(with, of, filter, sink);
                          });
}

// ---- What the server does not offer. ----

CMPIData invokeMethod(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                      const CMPIArgs*, CMPIArgs*, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return noData();
}

CMPIStatus setProperty(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                       const CMPIValue*, CMPIType) {
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIData getProperty(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                     CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return noData();
}

CMPIEnumeration* enumerateInstancesFiltered(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*,
                                            const char**, const char*, const char*, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

CMPIEnumeration* associatorsFiltered(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*,
                                     const char*, const char*, const char*, const char*, const char**,
                                     const char*, const char*, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

CMPIEnumeration* referencesFiltered(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                    const char*, const char**, const char*, const char*, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

constexpr unsigned kCapabilities = CMPI_MB_BasicRead | CMPI_MB_BasicWrite | CMPI_MB_InstanceManipulation |
                                   CMPI_MB_AssociationTraversal | CMPI_MB_OSEncapsulationSupport |
                                   CMPI_MB_Supports_MemEnhancements | CMPI_MB_Supports_Extended_Error |
                                   CMPI_MB_Logging | CMPI_MB_Tracing | CMPI_MB_CodepageConversion;

constexpr CMPIBrokerFT kTable = {kCapabilities,       CMPICurrentVersion,
                                 "kesto-cimserver",   prepareAttachThread,
                                 attachThread,        detachThread,
                                 deliverIndication,   enumerateInstanceNames,
                                 getInstance,         createInstance,
                                 modifyInstance,      deleteInstance,
                                 execQuery,           enumerateInstances,
                                 associators,         associatorNames,
                                 references,          referenceNames,
                                 invokeMethod,        setProperty,
                                 getProperty,         enumerateInstancesFiltered,
                                 associatorsFiltered, referencesFiltered};

} // namespace

const CMPIBrokerFT* brokerCalls() {
    return &kTable;
}

} // namespace cimserver
