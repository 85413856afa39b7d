#include "server/operations.h"

#include <utility>

#include "server/traversal.h"

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

Outcome Operations::enumerateInstanceNames(const CallContext& context, const ObjectPath& classPath,
                                           ResultSink& sink) const {
    return provider_.enumerateInstanceNames(context, classPath, sink);
}

Outcome Operations::enumerateInstances(const CallContext& context, const ObjectPath& classPath,
                                       const PropertyNames& wanted, ResultSink& sink) const {
    return provider_.enumerateInstances(context, classPath, wanted, sink);
}

Outcome Operations::getInstance(const CallContext& context, const ObjectPath& path,
                                const PropertyNames& wanted, ResultSink& sink) const {
    FirstInstance first(sink);
    Outcome outcome = provider_.getInstance(context, path, wanted, first);
    if (outcome.ok() && !first.found) outcome.code = CMPI_RC_ERR_NOT_FOUND;
    return outcome;
}

Outcome Operations::createInstance(const CallContext& context, const Instance& instance,
                                   ResultSink& sink) const {
    return provider_.createInstance(context, instance, sink);
}

Outcome Operations::modifyInstance(const CallContext& context, const Instance& instance,
                                   const PropertyNames& wanted) const {
    Nowhere nowhere;
    return provider_.modifyInstance(context, instance, wanted, nowhere);
}

Outcome Operations::deleteInstance(const CallContext& context, const ObjectPath& path) const {
    Nowhere nowhere;
    return provider_.deleteInstance(context, path, nowhere);
}

Outcome Operations::execQuery(const CallContext& context, const ObjectPath& classPath,
                              const std::string& language, const std::string& query, ResultSink& sink) const {
    return provider_.execQuery(context, classPath, language, query, sink);
}

Outcome Operations::associators(const CallContext& context, const ObjectPath& source,
                                const AssociatorFilter& filter, const PropertyNames& wanted,
                                ResultSink& sink) const {
    const auto ask = [&](const AssociatorFilter& one, ResultSink& results) {
        return provider_.associators(context, source, one, wanted, results);
    };
    return traverse({provider_, associations_, context, source}, filter, ask, sink);
}

Outcome Operations::associatorNames(const CallContext& context, const ObjectPath& source,
                                    const AssociatorFilter& filter, ResultSink& sink) const {
    const auto ask = [&](const AssociatorFilter& one, ResultSink& results) {
        return provider_.associatorNames(context, source, one, results);
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

Outcome Operations::referenceNames(const CallContext& context, const ObjectPath& source,
                                   const ReferenceFilter& filter, ResultSink& sink) const {
    const auto ask = [&](const ReferenceFilter& one, ResultSink& results) {
        return provider_.referenceNames(context, source, one, results);
    };
    return traverse({provider_, associations_, context, source}, filter, ask, sink);
}

} // namespace cimserver
