// Texts made as by printf.
#include "emulator/text_format.h"

#include <cstdarg>
#include <cstdio>

namespace emulator {

std::string format(const char* pattern, ...) {
    char text[512];
    va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(text, sizeof text, pattern, arguments);
    va_end(arguments);
    return text;
}

} // namespace emulator
