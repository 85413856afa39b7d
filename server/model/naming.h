// The name of an instance whose provider did not give it one.
//
// A provider may build its instances on an object path without keys and set the key values as properties
// only. A server with a schema completes the path from the class's key properties; without one, the naming
// rules that the standard model has used throughout serve as well: an association is named by its references,
// anything else by the properties below, as far as it has them.
#ifndef KESTO_SERVER_MODEL_NAMING_H
#define KESTO_SERVER_MODEL_NAMING_H

#include "server/model/cim_model.h"

namespace cimserver {

// The instance's own path, completed with keys from its properties when it has none.
ObjectPath named_path(const Instance& instance);

} // namespace cimserver

#endif
