// The switch as far as its scenario has been read.
#ifndef KESTO_EMULATOR_SCENARIO_DRAFT_H
#define KESTO_EMULATOR_SCENARIO_DRAFT_H

#include <cstdint>
#include <map>
#include <string>

#include "emulator/switch_state.h"

namespace emulator {

struct Draft {
    SwitchState state;
    std::map<std::string, std::uint32_t> ifIndexes; // by port name
};

} // namespace emulator

#endif
