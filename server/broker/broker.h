// The broker that a provider is given: everything it may ask of the server.
//
// Four function tables hang on it: calls back into the server (upcalls.h), makers of objects
// (encapsulation.h), threads and locks (threads.h), and memory (memory.h). No slot of any of them is empty;
// what the server does not offer answers CMPI_RC_ERR_NOT_SUPPORTED.
#ifndef KESTO_SERVER_BROKER_BROKER_H
#define KESTO_SERVER_BROKER_BROKER_H

#include <cmpidt.h>
#include <cmpift.h>

#include <functional>
#include <string>
#include <utility>

#include "server/model/perform.h"
#include "server/model/request.h"
#include "server/model/result_sink.h"

namespace cimserver {

class Broker {
  public:
    // What a provider logs (and, with tracing on, traces) is handed to `log`, a line at a time.
    using Log = std::function<void(const std::string& line)>;
    explicit Broker(Log log, bool tracing = false);
    Broker(const Broker&) = delete;
    Broker& operator=(const Broker&) = delete;

    const CMPIBroker* handle() const { return &handle_; }

    // Performs a provider's calls back into the server; until it is set they answer
    // CMPI_RC_ERR_NOT_SUPPORTED.
    void serve(Perform perform) { perform_ = std::move(perform); }
    Outcome perform(const Request& request, ResultSink& sink) const {
        return perform_ ? perform_(request, sink) : Outcome::error(CMPI_RC_ERR_NOT_SUPPORTED);
    }

    void log(const std::string& line) const { log_(line); }
    bool tracing() const { return tracing_; }

    // The broker whose handle a provider passes; NULL when it is not one.
    static const Broker* of(const CMPIBroker* handle);

  private:
    CMPIBroker handle_;
    Perform perform_;
    Log log_;
    bool tracing_;
};

} // namespace cimserver

#endif
