// Whoever performs operations: a provider, or the server on behalf of one.
#ifndef KESTO_SERVER_MODEL_PERFORM_H
#define KESTO_SERVER_MODEL_PERFORM_H

#include <functional>

#include "server/model/request.h"
#include "server/model/result_sink.h"

namespace cimserver {

using Perform = std::function<Outcome(const Request&, ResultSink&)>;

} // namespace cimserver

#endif
