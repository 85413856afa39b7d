// Makes a scenario with any number of tunnels, the same for the same seed everywhere.
#ifndef KESTO_EMULATOR_GENERATOR_H
#define KESTO_EMULATOR_GENERATOR_H

#include <cstdint>
#include <string>

namespace emulator {

inline constexpr std::uint32_t MOST_TUNNELS = 50000; // as many as there are if-indexes for

std::string generate_scenario(std::uint32_t tunnels, std::uint32_t seed);

} // namespace emulator

#endif
