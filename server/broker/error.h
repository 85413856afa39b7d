// CMPIError.
#ifndef KESTO_SERVER_BROKER_ERROR_H
#define KESTO_SERVER_BROKER_ERROR_H

#include <cmpidt.h>
#include <cmpift.h>

#include <string>

#include "server/broker/array.h"
#include "server/broker/encapsulated.h"

namespace cimserver {

struct ErrorContent {
    CMPIErrorType type = UnknownErrorType;
    CMPIErrorSeverity severity = ErrorSevUnknown;
    CMPIErrorProbableCause cause = ErrorProbCauseUnknown;
    CMPIErrorSrcFormat sourceFormat = CMPIErrSrcUnknown;
    CMPIrc statusCode = CMPI_RC_OK;
    std::string otherType, owner, messageId, message, causeDescription, source, otherSourceFormat,
        statusDescription;
    ArrayContent recommendedActions, messageArguments;
};

using ErrorObject = Encapsulated<CMPIError, ErrorContent>;

template <>
struct FunctionTableOf<CMPIError> {
    static const CMPIErrorFT* table();
};

} // namespace cimserver

#endif
