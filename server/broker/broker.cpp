#include "server/broker/broker.h"

#include <utility>

#include "server/broker/encapsulation.h"
#include "server/broker/memory.h"
#include "server/broker/threads.h"
#include "server/broker/upcalls.h"

namespace cimserver {

Broker::Broker(Log log, bool tracing)
    : handle_{this, broker_upcalls(), broker_encapsulation(), broker_threads(), broker_memory()},
      log_(std::move(log)),
      tracing_(tracing) {}

const Broker* Broker::of(const CMPIBroker* handle) {
    return handle != nullptr && handle->bft == broker_upcalls() ? static_cast<const Broker*>(handle->hdl)
                                                                : nullptr;
}

} // namespace cimserver
