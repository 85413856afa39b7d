#ifndef KESTO_EMULATOR_TEXT_FORMAT_H
#define KESTO_EMULATOR_TEXT_FORMAT_H

#include <string>

namespace emulator {

// A text made as by printf, cut at 511 characters.
[[gnu::format(printf, 1, 2)]] std::string format(const char* pattern, ...);

} // namespace emulator

#endif
