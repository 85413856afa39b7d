// Values that occur in several places of a scenario: numbers in texts, counters, WWNs, addresses and masks.
#ifndef KESTO_EMULATOR_SCENARIO_VALUES_H
#define KESTO_EMULATOR_SCENARIO_VALUES_H

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "emulator/control.h"
#include "emulator/scenario_reader.h"
#include "platform/platform_records.h"

namespace emulator {

// "0x9b010001" or "2600534017" as a number of at most `largest`.
std::optional<std::uint32_t> number_in(std::string_view text, std::uint32_t largest);

// Calls read(number, value) for each member of an object whose names are numbers: the words of a row, or
// counters by byte offset.
void read_numbered(const Reader& object, std::uint32_t largest,
                   const std::function<void(std::uint32_t, const Reader&)>& read);

void read_description(const Reader& object); // an optional text, kept nowhere
Counter read_counter(const Reader& value);
std::array<std::uint8_t, 8> read_wwn(const Reader& value);
IpAddr read_address(const Reader& value);     // an empty text is the unset address
std::uint32_t read_mask(const Reader& value); // in host order

} // namespace emulator

#endif
