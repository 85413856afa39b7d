// Reads the ports of a scenario, and the members that refer to a port.
#ifndef KESTO_EMULATOR_SCENARIO_PORTS_H
#define KESTO_EMULATOR_SCENARIO_PORTS_H

#include <cstdint>

#include "emulator/scenario_draft.h"
#include "emulator/scenario_reader.h"

namespace emulator {

void read_port(const Reader& object, Draft& draft);

// An interface by if-index or by name. It must be a port that has been read; 0 is no interface.
std::uint32_t read_interface(const Reader& value, const Draft& draft);

} // namespace emulator

#endif
