// Reads the faults that a scenario scripts.
#ifndef KESTO_EMULATOR_SCENARIO_FAULTS_H
#define KESTO_EMULATOR_SCENARIO_FAULTS_H

#include "emulator/scenario_draft.h"
#include "emulator/scenario_reader.h"

namespace emulator {

void read_fault(const Reader& object, Draft& draft);

} // namespace emulator

#endif
