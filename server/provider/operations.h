// The operations that the server offers on its provider, in the server's own terms.
//
// Clients reach them over CIM-XML (server/cimxml/service.h), and the provider itself through the broker. An
// operation delivers its results to a sink while the provider returns them, and reports its outcome at the
// end; when the outcome is an error, what has been delivered does not count.
#ifndef KESTO_SERVER_PROVIDER_OPERATIONS_H
#define KESTO_SERVER_PROVIDER_OPERATIONS_H

#include <utility>

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/provider/association_table.h"
#include "server/provider/provider.h"

namespace cimserver {

class Operations {
  public:
    Operations(const Provider& provider, AssociationTable associations)
        : provider_(provider), associations_(std::move(associations)) {}

    // GetInstance delivers exactly one instance, or ends with CMPI_RC_ERR_NOT_FOUND. Traversals are completed
    // and filtered (traversal.h). All other operations are the provider's alone.
    Outcome perform(const Request& request, ResultSink& sink) const;

  private:
    const Provider& provider_;
    AssociationTable associations_;
};

} // namespace cimserver

#endif
