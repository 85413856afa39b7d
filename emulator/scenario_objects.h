// The objects of a scenario and the members that each may have. switch.schema.json lists the same ones under
// the same names.
#ifndef KESTO_EMULATOR_SCENARIO_OBJECTS_H
#define KESTO_EMULATOR_SCENARIO_OBJECTS_H

#include <vector>

#include "emulator/scenario_reader.h"

namespace emulator {

namespace kind {

extern const ObjectKind SCENARIO;
extern const ObjectKind SYSTEM;
extern const ObjectKind IP;
extern const ObjectKind VSAN;
extern const ObjectKind DOMAIN_OF_VSAN;
extern const ObjectKind PORT;
extern const ObjectKind PORT_COUNTERS;
extern const ObjectKind IP_STATS;
extern const ObjectKind ETHERNET_STATS;
extern const ObjectKind TCP_STATS;
extern const ObjectKind PROFILE;
extern const ObjectKind TUNNEL;
extern const ObjectKind LINK_ERRORS;
extern const ObjectKind TCP_CONNECTION;
extern const ObjectKind FAULT;
extern const ObjectKind LINK_KEY;
extern const ObjectKind MOVING_COUNTER;

} // namespace kind

std::vector<const ObjectKind*> object_kinds(); // all of them

} // namespace emulator

#endif
