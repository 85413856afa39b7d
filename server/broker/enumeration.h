// CMPIEnumeration.
#ifndef KESTO_SERVER_BROKER_ENUMERATION_H
#define KESTO_SERVER_BROKER_ENUMERATION_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstddef>
#include <vector>

#include "server/broker/array.h"
#include "server/broker/encapsulated.h"
#include "server/model/cim_model.h"

namespace cimserver {

struct EnumerationContent {
    ArrayContent items; // all of type CMPI_instance, CMPI_ref, or of one data type
    std::size_t next = 0;
};

using EnumerationObject = Encapsulated<CMPIEnumeration, EnumerationContent>;

template <>
struct FunctionTableOf<CMPIEnumeration> {
    static const CMPIEnumerationFT* table();
};

CMPIEnumeration* make_enumeration(CMPIType type, std::vector<Value> items);

} // namespace cimserver

#endif
