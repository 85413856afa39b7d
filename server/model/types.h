// The names of CIM's data types, the same in MOF and in CIM-XML, and values as text.
#ifndef KESTO_SERVER_MODEL_TYPES_H
#define KESTO_SERVER_MODEL_TYPES_H

#include <cmpidt.h>

#include <optional>
#include <string_view>

#include "server/model/cim_model.h"

namespace cimserver {

// "uint16" and the like; "string" for anything that is shown as one.
const char* type_name(CMPIType scalar);
// The type with that name; nothing for an unknown one ("reference" is CMPI_ref).
std::optional<CMPIType> type_named(std::string_view name);

// The value that the text stands for in that type, range and form checked.
std::optional<Value> parse_scalar(std::string_view text, CMPIType type);
// The value of a number of unknown type: the widest integer that holds it, or a real.
std::optional<Value> parse_number(std::string_view text);

} // namespace cimserver

#endif
