# Every target of the project links fcip_warnings; a warning is an error.
add_library(fcip_warnings INTERFACE)
target_compile_options(fcip_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual
    -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    # GCC 12 raises these by mistake in optimised code: where it inlines a std::optional, and where a literal and
    # a std::string are joined.
    -Wno-maybe-uninitialized -Wno-restrict)
