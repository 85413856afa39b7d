// Numbers in key strings.
#ifndef KESTO_PLATFORM_KEY_NUMBER_H
#define KESTO_PLATFORM_KEY_NUMBER_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

// The decimal number at the start of a key, as a 32-bit word. The supervisor is a 32-bit machine: numbers
// saturate at 32 bits on every machine, so that the same key finds the same row everywhere, and "-1" is the
// word 0xFFFFFFFF, the way "%d" prints it. No number at all is 0, and so is a null key.
inline std::uint32_t key_number(const char* text) {
    if (text == nullptr) return 0;
    const long long number = std::strtoll(text, nullptr, 10);
    return static_cast<std::uint32_t>(std::clamp<long long>(number, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

// The word as "%d" prints it.
inline std::int32_t as_printed(std::uint32_t word) {
    return static_cast<std::int32_t>(word);
}

#endif
