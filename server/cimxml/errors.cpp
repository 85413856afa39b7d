#include "server/cimxml/errors.h"

namespace cimserver {

const char* cim_error_name(CMPIrc code) {
    switch (code) {
        case CMPI_RC_ERR_ACCESS_DENIED:
            return "CIM_ERR_ACCESS_DENIED";
        case CMPI_RC_ERR_INVALID_NAMESPACE:
            return "CIM_ERR_INVALID_NAMESPACE";
        case CMPI_RC_ERR_INVALID_PARAMETER:
            return "CIM_ERR_INVALID_PARAMETER";
        case CMPI_RC_ERR_INVALID_CLASS:
            return "CIM_ERR_INVALID_CLASS";
        case CMPI_RC_ERR_NOT_FOUND:
            return "CIM_ERR_NOT_FOUND";
        case CMPI_RC_ERR_NOT_SUPPORTED:
            return "CIM_ERR_NOT_SUPPORTED";
        case CMPI_RC_ERR_CLASS_HAS_CHILDREN:
            return "CIM_ERR_CLASS_HAS_CHILDREN";
        case CMPI_RC_ERR_CLASS_HAS_INSTANCES:
            return "CIM_ERR_CLASS_HAS_INSTANCES";
        case CMPI_RC_ERR_INVALID_SUPERCLASS:
            return "CIM_ERR_INVALID_SUPERCLASS";
        case CMPI_RC_ERR_ALREADY_EXISTS:
            return "CIM_ERR_ALREADY_EXISTS";
        case CMPI_RC_ERR_NO_SUCH_PROPERTY:
            return "CIM_ERR_NO_SUCH_PROPERTY";
        case CMPI_RC_ERR_TYPE_MISMATCH:
            return "CIM_ERR_TYPE_MISMATCH";
        case CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED:
            return "CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED";
        case CMPI_RC_ERR_INVALID_QUERY:
            return "CIM_ERR_INVALID_QUERY";
        case CMPI_RC_ERR_METHOD_NOT_AVAILABLE:
            return "CIM_ERR_METHOD_NOT_AVAILABLE";
        case CMPI_RC_ERR_METHOD_NOT_FOUND:
            return "CIM_ERR_METHOD_NOT_FOUND";
        case CMPI_RC_ERR_SERVER_LIMITS_EXCEEDED:
            return "CIM_ERR_SERVER_LIMITS_EXCEEDED";
        case CMPI_RC_ERR_QUERY_FEATURE_NOT_SUPPORTED:
            return "CIM_ERR_QUERY_FEATURE_NOT_SUPPORTED";
        default:
            return "CIM_ERR_FAILED";
    }
}

CMPIrc cim_error_code(CMPIrc code) {
    const bool isCim = (code >= CMPI_RC_ERR_FAILED && code <= CMPI_RC_ERR_METHOD_NOT_FOUND) ||
                       code == CMPI_RC_ERR_SERVER_LIMITS_EXCEEDED ||
                       code == CMPI_RC_ERR_QUERY_FEATURE_NOT_SUPPORTED;
    return isCim ? code : CMPI_RC_ERR_FAILED;
}

} // namespace cimserver
