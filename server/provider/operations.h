// The operations that the server offers on its provider, in the server's own terms.
//
// Clients reach them over CIM-XML (server/cimxml/service.h), and the provider itself through the broker. An
// operation delivers its results to a sink while the provider returns them, and tells its outcome at the end;
// when the outcome is an error, what has been delivered does not count.
#ifndef KESTO_SERVER_PROVIDER_OPERATIONS_H
#define KESTO_SERVER_PROVIDER_OPERATIONS_H

#include <optional>
#include <string>
#include <vector>

#include "server/provider/association_table.h"
#include "server/provider/provider_calls.h"

namespace cimserver {

class Operations {
  public:
    Operations(const ProviderCalls& provider, AssociationTable associations)
        : provider_(provider), associations_(std::move(associations)) {}

    Outcome enumerate_instance_names(const CallContext& context, const ObjectPath& classPath,
                                     ResultSink& sink) const;
    Outcome enumerate_instances(const CallContext& context, const ObjectPath& classPath,
                                const PropertyNames& wanted, ResultSink& sink) const;
    // Exactly one instance, or CMPI_RC_ERR_NOT_FOUND.
    Outcome get_instance(const CallContext& context, const ObjectPath& path, const PropertyNames& wanted,
                         ResultSink& sink) const;
    Outcome create_instance(const CallContext& context, const Instance& instance, ResultSink& sink) const;
    Outcome modify_instance(const CallContext& context, const Instance& instance,
                            const PropertyNames& wanted) const;
    Outcome delete_instance(const CallContext& context, const ObjectPath& path) const;
    Outcome exec_query(const CallContext& context, const ObjectPath& classPath, const std::string& language,
                       const std::string& query, ResultSink& sink) const;

    // A traversal that names no association class covers every class of the association table in which the
    // source can take part, without duplicates. The filters that the provider is free to ignore are applied
    // here.
    Outcome associators(const CallContext& context, const ObjectPath& source, const AssociatorFilter& filter,
                        const PropertyNames& wanted, ResultSink& sink) const;
    Outcome associator_names(const CallContext& context, const ObjectPath& source,
                             const AssociatorFilter& filter, ResultSink& sink) const;
    Outcome references(const CallContext& context, const ObjectPath& source, const ReferenceFilter& filter,
                       const PropertyNames& wanted, ResultSink& sink) const;
    Outcome reference_names(const CallContext& context, const ObjectPath& source,
                            const ReferenceFilter& filter, ResultSink& sink) const;

  private:
    const ProviderCalls& provider_;
    AssociationTable associations_;
};

} // namespace cimserver

#endif
