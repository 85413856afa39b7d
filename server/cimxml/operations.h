// The operations of CIM-XML, a row each: to serve another operation is to add its row.
#ifndef KESTO_SERVER_CIMXML_OPERATIONS_H
#define KESTO_SERVER_CIMXML_OPERATIONS_H

#include <string_view>

#include "server/cimxml/operation_parameters.h"
#include "server/cimxml/writer.h"
#include "server/model/request.h"

namespace cimserver {

struct CimXmlOperation {
    std::string_view name;
    Operation operation; // that it performs
    ObjectForm form;     // of the objects in its result
    void (*read)(OperationParameters& parameters, Request& request);
    bool opens = false; // an enumeration, which the client takes in portions (pull_operations.h)
};

// NULL for an operation that is not served. Names compare without case.
const CimXmlOperation* find_operation(std::string_view name);

} // namespace cimserver

#endif
