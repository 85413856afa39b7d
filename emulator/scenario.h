// Reads a scenario: the JSON text that describes a switch. switch.schema.json is its grammar.
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
std::string_view builtin_scenario(); // the text of examples/two-sites.json, compiled in

} // namespace emulator

#endif
