// One call of one operation of the provider: arguments into CMPI objects, results out of them.
//
// Every call has a memory pool of its own. What leaves a call (results, messages) is plain data.
#ifndef KESTO_SERVER_PROVIDER_PROVIDER_CALLS_H
#define KESTO_SERVER_PROVIDER_PROVIDER_CALLS_H

#include <optional>
#include <string>
#include <vector>

#include "server/model/cim_model.h"
#include "server/model/result_sink.h"
#include "server/provider/provider.h"

namespace cimserver {

// The entries of the CMPIContext that a provider is called with.
struct CallContext {
    NamedValues entries;
};

// The properties that a client wants; without a list, all of them.
using PropertyNames = std::optional<std::vector<std::string>>;

struct AssociatorFilter {
    std::optional<std::string> associationClass, resultClass, role, resultRole;
};

struct ReferenceFilter {
    std::optional<std::string> associationClass, role; // CMPI calls the former the result class
};

struct Outcome {
    CMPIrc code = CMPI_RC_OK;
    std::string message;
    unsigned delivered = 0;
    unsigned ignored = 0; // objects that were none, see CMPIResult

    bool ok() const { return code == CMPI_RC_OK; }
    static Outcome error(CMPIrc code, std::string message = {}) { return {code, std::move(message), 0, 0}; }
};

class ProviderCalls {
  public:
    explicit ProviderCalls(const Provider& provider) : provider_(provider) {}

    Outcome enumerate_instance_names(const CallContext& context, const ObjectPath& classPath,
                                     ResultSink& sink) const;
    Outcome enumerate_instances(const CallContext& context, const ObjectPath& classPath,
                                const PropertyNames& wanted, ResultSink& sink) const;
    Outcome get_instance(const CallContext& context, const ObjectPath& path, const PropertyNames& wanted,
                         ResultSink& sink) const;
    Outcome create_instance(const CallContext& context, const Instance& instance, ResultSink& sink) const;
    Outcome modify_instance(const CallContext& context, const Instance& instance, const PropertyNames& wanted,
                            ResultSink& sink) const;
    Outcome delete_instance(const CallContext& context, const ObjectPath& path, ResultSink& sink) const;
    Outcome exec_query(const CallContext& context, const ObjectPath& classPath, const std::string& language,
                       const std::string& query, ResultSink& sink) const;

    Outcome associators(const CallContext& context, const ObjectPath& source, const AssociatorFilter& filter,
                        const PropertyNames& wanted, ResultSink& sink) const;
    Outcome associator_names(const CallContext& context, const ObjectPath& source,
                             const AssociatorFilter& filter, ResultSink& sink) const;
    Outcome references(const CallContext& context, const ObjectPath& source, const ReferenceFilter& filter,
                       const PropertyNames& wanted, ResultSink& sink) const;
    Outcome reference_names(const CallContext& context, const ObjectPath& source,
                            const ReferenceFilter& filter, ResultSink& sink) const;

  private:
    const Provider& provider_;
};

} // namespace cimserver

#endif
