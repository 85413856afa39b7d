#include "server/provider/operations.h"

#include <utility>

#include "server/provider/traversal.h"

namespace cimserver {

namespace {

// Passes on the first instance only.
class FirstInstance : public ResultSink {
  public:
    explicit FirstInstance(ResultSink& next) : next_(next) {}
    void deliver(const Instance& instance) override {
        if (!std::exchange(found, true)) next_.deliver(instance);
    }
    void deliver(const ObjectPath&) override {}
    bool found = false;

  private:
    ResultSink& next_;
};

class Nowhere : public ResultSink {
  public:
    void deliver(const Instance&) override {}
    void deliver(const ObjectPath&) override {}
};

} // namespace

Outcome Operations::enumerate_instance_names(const CallContext& context, const ObjectPath& classPath,
                                             ResultSink& sink) const {
    return provider_.enumerate_instance_names(context, classPath, sink);
}

Outcome Operations::enumerate_instances(const CallContext& context, const ObjectPath& classPath,
                                        const PropertyNames& wanted, ResultSink& sink) const {
    return provider_.enumerate_instances(context, classPath, wanted, sink);
}

Outcome Operations::get_instance(const CallContext& context, const ObjectPath& path,
                                 const PropertyNames& wanted, ResultSink& sink) const {
    FirstInstance first(sink);
    Outcome outcome = provider_.get_instance(context, path, wanted, first);
    if (outcome.ok() && !first.found) outcome.code = CMPI_RC_ERR_NOT_FOUND;
    return outcome;
}

Outcome Operations::create_instance(const CallContext& context, const Instance& instance,
                                    ResultSink& sink) const {
    return provider_.create_instance(context, instance, sink);
}

Outcome Operations::modify_instance(const CallContext& context, const Instance& instance,
                                    const PropertyNames& wanted) const {
    Nowhere nowhere;
    return provider_.modify_instance(context, instance, wanted, nowhere);
}

Outcome Operations::delete_instance(const CallContext& context, const ObjectPath& path) const {
    Nowhere nowhere;
    return provider_.delete_instance(context, path, nowhere);
}

Outcome Operations::exec_query(const CallContext& context, const ObjectPath& classPath,
                               const std::string& language, const std::string& query,
                               ResultSink& sink) const {
    return provider_.exec_query(context, classPath, language, query, sink);
}

Outcome Operations::associators(const CallContext& context, const ObjectPath& source,
                                const AssociatorFilter& filter, const PropertyNames& wanted,
                                ResultSink& sink) const {
    const auto ask = [&](const AssociatorFilter& one, ResultSink& results) {
        return provider_.associators(context, source, one, wanted, results);
    };
    return traverse({provider_, associations_, context, source}, filter, ask, sink);
}

Outcome Operations::associator_names(const CallContext& context, const ObjectPath& source,
                                     const AssociatorFilter& filter, ResultSink& sink) const {
    const auto ask = [&](const AssociatorFilter& one, ResultSink& results) {
        return provider_.associator_names(context, source, one, results);
    };
    return traverse({provider_, associations_, context, source}, filter, ask, sink);
}

Outcome Operations::references(const CallContext& context, const ObjectPath& source,
                               const ReferenceFilter& filter, const PropertyNames& wanted,
                               ResultSink& sink) const {
    const auto ask = [&](const ReferenceFilter& one, ResultSink& results) {
        return provider_.references(context, source, one, wanted, results);
    };
    return traverse({provider_, associations_, context, source}, filter, ask, sink);
}

Outcome Operations::reference_names(const CallContext& context, const ObjectPath& source,
                                    const ReferenceFilter& filter, ResultSink& sink) const {
    const auto ask = [&](const ReferenceFilter& one, ResultSink& results) {
        return provider_.reference_names(context, source, one, results);
    };
    return traverse({provider_, associations_, context, source}, filter, ask, sink);
}

} // namespace cimserver
