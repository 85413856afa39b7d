// The built-in switch.
#ifndef KESTO_EMULATOR_BUILTIN_SWITCH_H
#define KESTO_EMULATOR_BUILTIN_SWITCH_H

#include <string_view>

namespace emulator {

std::string_view builtin_scenario(); // the text of examples/two-sites.json, compiled in

} // namespace emulator

#endif
