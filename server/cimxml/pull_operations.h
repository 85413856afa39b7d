// Enumerations in portions: what the operations Open..., Pull..., CloseEnumeration and EnumerationCount have
// to do beside finding the objects, which is the business of the operation that an Open... stands for
// (operations.h).
#ifndef KESTO_SERVER_CIMXML_PULL_OPERATIONS_H
#define KESTO_SERVER_CIMXML_PULL_OPERATIONS_H

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/cimxml/enumeration_sessions.h"
#include "server/cimxml/operation_parameters.h"
#include "server/cimxml/writer.h"
#include "server/model/cim_model.h"
#include "server/model/result_sink.h"

namespace cimserver {

// What a client that does not care gets, and the longest that one can have: what waits for a client that does
// not come back takes memory from the others.
constexpr std::chrono::seconds USUAL_OPERATION_TIMEOUT{300};
constexpr std::chrono::seconds LONGEST_OPERATION_TIMEOUT{900};

// The parameters that all Open... operations have. Throws CimError for what this server does not do: filter,
// go on after an error, or wait for ever.
struct OpenTerms {
    std::chrono::seconds timeout;
    std::size_t firstPortion;
};
OpenTerms read_open_terms(OperationParameters& parameters);

// Remembers where each object ends that is written.
class SeparateObjects : public ResultSink {
  public:
    explicit SeparateObjects(ObjectWriter& writer) : writer_(writer) {}
    void deliver(const Instance& instance) override;
    void deliver(const ObjectPath& path) override;
    WrittenObjects take() { return {writer_.take(), std::move(ends_)}; }

  private:
    void mark_end();

    ObjectWriter& writer_;
    std::vector<std::size_t> ends_;
};

// The content of a response with a portion, and the line that reports it.
struct PullAnswer {
    std::string content;
    std::string report;
};
PullAnswer portion_answer(const Portion& portion);

// The operations on an open enumeration, a row each.
struct PullOperation {
    std::string_view name;
    PullAnswer (*perform)(OperationParameters& parameters, EnumerationSessions& sessions,
                          const EnumerationOwner& owner);
};

// NULL for an operation that is none of these. Names compare without case.
const PullOperation* find_pull_operation(std::string_view name);

} // namespace cimserver

#endif
