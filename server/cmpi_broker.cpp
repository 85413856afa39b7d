#include "server/cmpi_broker.h"

#include <utility>

namespace cimserver {

Broker::Broker(Log log, bool tracing)
    : face_{this, brokerCalls(), brokerObjects(), brokerThreads(), brokerMemory()},
      log_(std::move(log)),
      tracing_(tracing) {}

const Broker* Broker::of(const CMPIBroker* face) {
    return face && face->bft == brokerCalls() ? static_cast<const Broker*>(face->hdl) : nullptr;
}

} // namespace cimserver
