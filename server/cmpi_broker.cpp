#include "server/cmpi_broker.h"

#include <utility>

namespace cimserver {

Broker::Broker(Log log, bool tracing)
    : face_{this, broker_calls(), broker_objects(), broker_threads(), broker_memory()},
      log_(std::move(log)),
      tracing_(tracing) {}

const Broker* Broker::of(const CMPIBroker* face) {
    return (face != nullptr) && face->bft == broker_calls() ? static_cast<const Broker*>(face->hdl) : nullptr;
}

} // namespace cimserver
