// The operations that the server offers, in the server's own terms.
//
// Clients reach them over CIM-XML (server/cimxml/service.h), and the provider itself through the broker. An
// operation delivers its results to a sink while the provider returns them, and reports its outcome at the
// end; when the outcome is an error, what has been delivered does not count.
//
// The schema of the namespace says which classes there are and what is below what, the registrations which of
// them a provider is called for:
//
// - An enumeration asks for each registered class at or below the class that is named.
// - GetInstance delivers exactly one instance, or ends with CMPI_RC_ERR_NOT_FOUND. An association that its
//   provider does not find by its name is looked for among the references of its ends.
// - Traversals are completed and filtered (traversal.h).
// - Operations on classes are answered from the schema alone (class_operations.h).
#ifndef KESTO_SERVER_PROVIDER_OPERATIONS_H
#define KESTO_SERVER_PROVIDER_OPERATIONS_H

#include <string_view>
#include <utility>
#include <vector>

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/provider/served.h"

namespace cimserver {

class Operations {
  public:
    explicit Operations(std::vector<ServedNameSpace> nameSpaces) : nameSpaces_(std::move(nameSpaces)) {}

    // In the namespace of the request's target; in the first one when it names none.
    Outcome perform(const Request& request, ResultSink& sink) const;

    // NULL for a namespace that is not served.
    const ServedNameSpace* find_name_space(std::string_view name) const;

  private:
    std::vector<ServedNameSpace> nameSpaces_;
};

} // namespace cimserver

#endif
