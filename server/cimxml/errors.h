// The two ways in which a request fails.
#ifndef KESTO_SERVER_CIMXML_ERRORS_H
#define KESTO_SERVER_CIMXML_ERRORS_H

#include <cmpidt.h>

#include <string>

namespace cimserver {

// The request cannot be understood at all: an HTTP status, and what the CIMError header says (or nothing).
struct HttpError {
    unsigned status;
    std::string cimError;
    std::string detail;
};

// The request is understood and refused: an ERROR element in an ordinary response.
struct CimError {
    CMPIrc code;
    std::string description;
};

// The status codes of CIM by name, as descriptions begin with them: CIM_ERR_NOT_FOUND, ...
const char* cim_error_name(CMPIrc code);
// A provider's result code as a CIM status code; codes that only the provider interface knows mean "failed".
CMPIrc cim_error_code(CMPIrc code);

} // namespace cimserver

#endif
