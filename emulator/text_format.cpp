#include "emulator/text_format.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace emulator {

std::string format(const char* pattern, ...) {
    va_list arguments;
    va_start(arguments, pattern);
    const int length = std::vsnprintf(nullptr, 0, pattern, arguments);
    va_end(arguments);
    std::string text(length < 0 ? 0 : static_cast<std::size_t>(length), '\0');
    va_start(arguments, pattern);
    std::vsnprintf(text.data(), text.size() + 1, pattern, arguments);
    va_end(arguments);
    return text;
}

} // namespace emulator
