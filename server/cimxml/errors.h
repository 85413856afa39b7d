// The two ways in which a request fails.
#ifndef KESTO_SERVER_CIMXML_ERRORS_H
#define KESTO_SERVER_CIMXML_ERRORS_H

#include <cmpidt.h>

#include <string>
#include <utility>

#include "server/model/error.h"

namespace cimserver {

// The request cannot be understood at all: an HTTP status, and what the CIMError header says (or nothing).
class HttpError : public Error {
  public:
    HttpError(unsigned httpStatus, std::string cimErrorHeader, const std::string& detail)
        : Error(detail), status(httpStatus), cimError(std::move(cimErrorHeader)) {}

    unsigned status;
    std::string cimError;
};

// The statuses that refusals have.
constexpr unsigned BAD_REQUEST = 400;
constexpr unsigned METHOD_NOT_ALLOWED = 405;
constexpr unsigned UNSUPPORTED_MEDIA_TYPE = 415;
constexpr unsigned NOT_IMPLEMENTED = 501;
constexpr unsigned NOT_EXTENDED = 510;

// The request is understood and refused: an ERROR element in an ordinary response.
class CimError : public Error {
  public:
    explicit CimError(CMPIrc statusCode, const std::string& description = {})
        : Error(description), code(statusCode) {}

    CMPIrc code;
};

// Status codes of CIM that no provider returns: they are about enumerations in portions, which the server
// alone knows.
constexpr auto CIM_RC_INVALID_ENUMERATION_CONTEXT = static_cast<CMPIrc>(21);
constexpr auto CIM_RC_INVALID_OPERATION_TIMEOUT = static_cast<CMPIrc>(22);
constexpr auto CIM_RC_FILTERED_ENUMERATION_NOT_SUPPORTED = static_cast<CMPIrc>(25);
constexpr auto CIM_RC_CONTINUATION_ON_ERROR_NOT_SUPPORTED = static_cast<CMPIrc>(26);

// The status codes of CIM by name, as descriptions begin with them: CIM_ERR_NOT_FOUND, ...
const char* cim_error_name(CMPIrc code);
// A provider's result code as a CIM status code; codes that only the provider interface knows mean "failed".
CMPIrc cim_error_code(CMPIrc code);

} // namespace cimserver

#endif
