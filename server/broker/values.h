// Values on their way between a provider (CMPIValue, CMPIData) and the server (Value).
#ifndef KESTO_SERVER_BROKER_VALUES_H
#define KESTO_SERVER_BROKER_VALUES_H

#include <cmpidt.h>

#include <optional>

#include "server/model/cim_model.h"

namespace cimserver {

// Copies what a provider passed. `value` NULL is the NULL value of the type. For CMPI_chars the pointer is
// the characters themselves. Nothing when the type is unknown or the object is not one (NULL objects are NULL
// values).
std::optional<Value> from_cmpi(const CMPIValue* value, CMPIType type);

// The value as a provider reads it; objects in it belong to the current pool.
CMPIData to_cmpi(const Value& value, CMPIValueState state = CMPI_goodValue);
CMPIData no_data(CMPIValueState state = CMPI_nullValue);

// The reading functions that object paths, instances, arguments and contexts share.
CMPIData read_named(const NamedValues& values, const char* name, CMPIrc missing, CMPIValueState state,
                    CMPIStatus* rc);
CMPIData read_named_at(const NamedValues& values, CMPICount index, CMPIString** name, CMPIrc missing,
                       CMPIValueState state, CMPIStatus* rc);

} // namespace cimserver

#endif
