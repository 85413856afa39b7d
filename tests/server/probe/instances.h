// The probe provider's instances: the class of a request picks the behaviour.
#ifndef KESTO_TESTS_SERVER_PROBE_INSTANCES_H
#define KESTO_TESTS_SERVER_PROBE_INSTANCES_H

#include <cmpidt.h>

#include "tests/server/probe/objects.h"

namespace probe {

// Each answers nothing for a class that it does not know.
CMPIStatus instance_names(const Asked& asked);
CMPIStatus instances(const Asked& asked);
CMPIStatus instance(const Asked& asked);

} // namespace probe

#endif
