#include "emulator/text_format.h"

#include <cstdarg>
#include <cstdio>

namespace emulator {

std::string format(const char* pattern, ...) {
    va_list arguments, sameArguments;
    va_start(arguments, pattern);
    va_copy(sameArguments, arguments);
    const int length = std::vsnprintf(nullptr, 0, pattern, arguments);
    va_end(arguments);
    std::string text(length < 0 ? 0 : static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, pattern, sameArguments);
    va_end(sameArguments);
    return text;
}

} // namespace emulator
