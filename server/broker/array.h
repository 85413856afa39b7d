// CMPIArray.
#ifndef KESTO_SERVER_BROKER_ARRAY_H
#define KESTO_SERVER_BROKER_ARRAY_H

#include <cmpidt.h>
#include <cmpift.h>

#include <vector>

#include "server/broker/encapsulated.h"
#include "server/model/cim_model.h"

namespace cimserver {

struct ArrayContent {
    CMPIType elementType = CMPI_null;
    std::vector<Value> elements;
};

using ArrayObject = Encapsulated<CMPIArray, ArrayContent>;

template <>
struct FunctionTableOf<CMPIArray> {
    static const CMPIArrayFT* table();
};

} // namespace cimserver

#endif
