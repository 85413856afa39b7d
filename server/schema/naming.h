// The name of an instance whose provider did not give it one.
//
// A provider may build its instances on an object path without keys and set the key values as properties
// only. The class's declaration shows which properties they are.
#ifndef KESTO_SERVER_SCHEMA_NAMING_H
#define KESTO_SERVER_SCHEMA_NAMING_H

#include "server/model/cim_model.h"
#include "server/schema/class_schema.h"

namespace cimserver {

// The instance's own path, completed with keys from its properties when it has none.
ObjectPath named_path(const Instance& instance, const ClassSchema& schema);

} // namespace cimserver

#endif
