#include "server/provider/operations.h"

#include <cmpidt.h>

#include "server/model/cim_model.h"
#include "server/provider/provider_call.h"
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

} // namespace

Outcome Operations::perform(const Request& request, ResultSink& sink) const {
    switch (request.operation) {
        case Operation::GetInstance: {
            FirstInstance first(sink);
            Outcome outcome = call_provider(provider_, request, first);
            if (outcome.ok() && !first.found) outcome.code = CMPI_RC_ERR_NOT_FOUND;
            return outcome;
        }
        case Operation::Associators:
        case Operation::AssociatorNames:
        case Operation::References:
        case Operation::ReferenceNames:
            return traverse(provider_, associations_, request, sink);
        default:
            return call_provider(provider_, request, sink);
    }
}

} // namespace cimserver
