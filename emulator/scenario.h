// Reads a scenario: the JSON text that describes a switch. switch.schema.json is its grammar.
//
// scenario.cpp reads the objects in order, since later ones refer to earlier ones: the switch itself and its
// VSANs, then ports, profiles, tunnels and faults, each in a file of its own. scenario_reader.h checks types
// and ranges, scenario_objects.h lists the members of each object, and scenario_fields.h which number of a
// record each member sets.
#ifndef KESTO_EMULATOR_SCENARIO_H
#define KESTO_EMULATOR_SCENARIO_H

#include <string>
#include <string_view>

#include "emulator/switch_state.h"

namespace emulator {

// Both throw ScenarioError. `source` is what errors call the text.
SwitchState parse_scenario(std::string_view text, std::string_view source);
SwitchState parse_scenario_file(const std::string& path);

const SwitchState& builtin_switch(); // parsed once: every test starts from it

} // namespace emulator

#endif
