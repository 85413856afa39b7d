#include "server/provider/provider_calls.h"

#include "server/broker/instance.h"
#include "server/broker/named_lists.h"
#include "server/broker/object_path.h"
#include "server/broker/property_list.h"
#include "server/broker/result.h"
#include "server/broker/string.h"

namespace cimserver {

namespace {

// The list of wanted properties as a provider takes it: pointers closed by NULL, or NULL for everything.
class PropertyPointers {
  public:
    explicit PropertyPointers(const PropertyNames& names) {
        if (names) pointers_ = pointers_to(*names);
    }
    const char** get() { return pointers_.empty() ? nullptr : pointers_.data(); }

  private:
    std::vector<const char*> pointers_;
};

const char* chars_or_null(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}

// Calls one operation of a management interface and waits for its results. The objects that the provider
// makes meanwhile are gone when this returns.
template <typename Interface, typename Operation, typename... Arguments>
Outcome call(Interface* interface, Operation operation, const CallContext& context, const ObjectPath& path,
             ResultSink& sink, Arguments... arguments) {
    if (!interface || !(interface->ft->*operation)) return Outcome::error(CMPI_RC_ERR_NOT_SUPPORTED);

    CMPIContext* callContext = make_pooled<ContextObject>(ContextContent{context.entries});
    auto* result = make_pooled<ResultObject>(ResultContent{});
    result->content().sink = &sink;
    const CMPIStatus answered =
        (interface->ft->*operation)(interface, callContext, result, make_path(path), arguments...);

    Outcome outcome;
    outcome.code = answered.rc;
    outcome.message = text_of(answered.msg);
    if (from_handle<ResultObject>(static_cast<CMPIResult*>(result))) {
        outcome.delivered = result->content().delivered;
        outcome.ignored = result->content().ignored;
        if (outcome.message.empty() && !outcome.ok()) outcome.message = result->content().errorMessage;
    }
    return outcome;
}

} // namespace

Outcome ProviderCalls::enumerate_instance_names(const CallContext& context, const ObjectPath& classPath,
                                                ResultSink& sink) const {
    const RequestScope scope;
    return call(provider_.instances(), &CMPIInstanceMIFT::enumerateInstanceNames, context, classPath, sink);
}

Outcome ProviderCalls::enumerate_instances(const CallContext& context, const ObjectPath& classPath,
                                           const PropertyNames& wanted, ResultSink& sink) const {
    const RequestScope scope;
    PropertyPointers properties(wanted);
    return call(provider_.instances(), &CMPIInstanceMIFT::enumerateInstances, context, classPath, sink,
                properties.get());
}

Outcome ProviderCalls::get_instance(const CallContext& context, const ObjectPath& path,
                                    const PropertyNames& wanted, ResultSink& sink) const {
    const RequestScope scope;
    PropertyPointers properties(wanted);
    return call(provider_.instances(), &CMPIInstanceMIFT::getInstance, context, path, sink, properties.get());
}

Outcome ProviderCalls::create_instance(const CallContext& context, const Instance& instance,
                                       ResultSink& sink) const {
    const RequestScope scope;
    return call(provider_.instances(), &CMPIInstanceMIFT::createInstance, context, instance.path, sink,
                make_instance(instance));
}

Outcome ProviderCalls::modify_instance(const CallContext& context, const Instance& instance,
                                       const PropertyNames& wanted, ResultSink& sink) const {
    const RequestScope scope;
    PropertyPointers properties(wanted);
    return call(provider_.instances(), &CMPIInstanceMIFT::modifyInstance, context, instance.path, sink,
                make_instance(instance), properties.get());
}

Outcome ProviderCalls::delete_instance(const CallContext& context, const ObjectPath& path,
                                       ResultSink& sink) const {
    const RequestScope scope;
    return call(provider_.instances(), &CMPIInstanceMIFT::deleteInstance, context, path, sink);
}

Outcome ProviderCalls::exec_query(const CallContext& context, const ObjectPath& classPath,
                                  const std::string& language, const std::string& query,
                                  ResultSink& sink) const {
    const RequestScope scope;
    return call(provider_.instances(), &CMPIInstanceMIFT::execQuery, context, classPath, sink, query.c_str(),
                language.c_str());
}

Outcome ProviderCalls::associators(const CallContext& context, const ObjectPath& source,
                                   const AssociatorFilter& filter, const PropertyNames& wanted,
                                   ResultSink& sink) const {
    const RequestScope scope;
    PropertyPointers properties(wanted);
    return call(provider_.associations(), &CMPIAssociationMIFT::associators, context, source, sink,
                chars_or_null(filter.associationClass), chars_or_null(filter.resultClass),
                chars_or_null(filter.role), chars_or_null(filter.resultRole), properties.get());
}

Outcome ProviderCalls::associator_names(const CallContext& context, const ObjectPath& source,
                                        const AssociatorFilter& filter, ResultSink& sink) const {
    const RequestScope scope;
    return call(provider_.associations(), &CMPIAssociationMIFT::associatorNames, context, source, sink,
                chars_or_null(filter.associationClass), chars_or_null(filter.resultClass),
                chars_or_null(filter.role), chars_or_null(filter.resultRole));
}

Outcome ProviderCalls::references(const CallContext& context, const ObjectPath& source,
                                  const ReferenceFilter& filter, const PropertyNames& wanted,
                                  ResultSink& sink) const {
    const RequestScope scope;
    PropertyPointers properties(wanted);
    return call(provider_.associations(), &CMPIAssociationMIFT::references, context, source, sink,
                chars_or_null(filter.associationClass), chars_or_null(filter.role), properties.get());
}

Outcome ProviderCalls::reference_names(const CallContext& context, const ObjectPath& source,
                                       const ReferenceFilter& filter, ResultSink& sink) const {
    const RequestScope scope;
    return call(provider_.associations(), &CMPIAssociationMIFT::referenceNames, context, source, sink,
                chars_or_null(filter.associationClass), chars_or_null(filter.role));
}

} // namespace cimserver
