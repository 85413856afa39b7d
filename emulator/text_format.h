// Texts made as by printf.
#ifndef KESTO_EMULATOR_TEXT_FORMAT_H
#define KESTO_EMULATOR_TEXT_FORMAT_H

#include <string>

namespace emulator {

// The whole text, however long it gets.
[[gnu::format(printf, 1, 2)]] std::string format(const char* pattern, ...);

} // namespace emulator

#endif
