// One call of one operation of the provider: the request into CMPI objects, results out of them.
//
// Every call has a memory pool of its own. What leaves a call (results, messages) is plain data.
#ifndef KESTO_SERVER_PROVIDER_PROVIDER_CALL_H
#define KESTO_SERVER_PROVIDER_PROVIDER_CALL_H

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/provider/provider.h"

namespace cimserver {

// The request as it stands: nothing is completed or filtered.
Outcome call_provider(const Provider& provider, const Request& request, ResultSink& sink);

} // namespace cimserver

#endif
