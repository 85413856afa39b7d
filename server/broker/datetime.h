// CMPIDateTime.
#ifndef KESTO_SERVER_BROKER_DATETIME_H
#define KESTO_SERVER_BROKER_DATETIME_H

#include <cmpidt.h>
#include <cmpift.h>

#include "server/broker/encapsulated.h"
#include "server/model/datetime.h"

namespace cimserver {

using DateTimeObject = Encapsulated<CMPIDateTime, CimDateTime>;

template <>
struct FunctionTableOf<CMPIDateTime> {
    static const CMPIDateTimeFT* table();
};

} // namespace cimserver

#endif
