// The broker that a provider is given: everything it may ask of the server.
//
// Four function tables hang on it: calls back into the server (cmpi_broker_calls.cpp), makers of objects
// (cmpi_broker_objects.cpp), threads and locks (cmpi_broker_threads.cpp), and memory
// (cmpi_broker_memory.cpp). No slot of any of them is empty; what the server does not offer answers
// CMPI_RC_ERR_NOT_SUPPORTED.
#ifndef KESTO_SERVER_CMPI_BROKER_H
#define KESTO_SERVER_CMPI_BROKER_H

#include <cmpidt.h>
#include <cmpift.h>

#include <functional>
#include <string>

namespace cimserver {

class Operations;

class Broker {
  public:
    // What a provider logs (and, with tracing on, traces) is handed to `log`, a line at a time.
    using Log = std::function<void(const std::string& line)>;
    explicit Broker(Log log, bool tracing = false);
    Broker(const Broker&) = delete;
    Broker& operator=(const Broker&) = delete;

    const CMPIBroker* face() const { return &face_; }

    // Calls back into the server go here; until it is set they answer CMPI_RC_ERR_NOT_SUPPORTED.
    void serve(Operations* operations) { operations_ = operations; }
    Operations* operations() const { return operations_; }

    void log(const std::string& line) const { log_(line); }
    bool tracing() const { return tracing_; }

    // The broker behind the face that a provider passes; NULL when it is none.
    static const Broker* of(const CMPIBroker* face);

  private:
    CMPIBroker face_;
    Operations* operations_ = nullptr;
    Log log_;
    bool tracing_;
};

const CMPIBrokerFT* broker_calls();
const CMPIBrokerEncFT* broker_objects();
const CMPIBrokerExtFT* broker_threads();
const CMPIBrokerMemFT* broker_memory();

} // namespace cimserver

#endif
