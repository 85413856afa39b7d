// CMPIResult: hands over to the request's sink and releases.
#ifndef KESTO_SERVER_BROKER_RESULT_H
#define KESTO_SERVER_BROKER_RESULT_H

#include <cmpidt.h>
#include <cmpift.h>

#include <string>

#include "server/broker/encapsulated.h"

namespace cimserver {

class ResultSink;

// Where a provider's results go, and what it did that a result tolerates but a log should show.
struct ResultContent {
    ResultSink* sink = nullptr;
    unsigned delivered = 0;
    unsigned ignored = 0;     // NULL, -1 or released objects
    std::string errorMessage; // of the last CMPIError handed over
};

using ResultObject = Encapsulated<CMPIResult, ResultContent>;

template <>
struct FunctionTableOf<CMPIResult> {
    static const CMPIResultFT* table();
};

} // namespace cimserver

#endif
