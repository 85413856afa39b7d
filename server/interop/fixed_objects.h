// A provider in the server itself, for objects that stay as they are while it runs.
#ifndef KESTO_SERVER_INTEROP_FIXED_OBJECTS_H
#define KESTO_SERVER_INTEROP_FIXED_OBJECTS_H

#include <vector>

#include "server/model/cim_model.h"
#include "server/model/perform.h"

namespace cimserver {

// Enumerates and gets the objects, and follows the associations that are among them: those with references
// as keys. Their paths name no namespace, so that they are objects of the one that is asked.
Perform serve_fixed_objects(std::vector<Instance> objects);

} // namespace cimserver

#endif
