# The warnings of every target of the project, each of which links fcip_warnings. The presets make them errors
# (CMAKE_COMPILE_WARNING_AS_ERROR); a packager's build only shows them.
add_library(fcip_warnings INTERFACE)
target_compile_options(fcip_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual
    -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual
    # GCC 12 raises these by mistake in optimised code: where it inlines a std::optional, and where a literal
    # and a std::string are joined.
    -Wno-maybe-uninitialized -Wno-restrict
    # Texts are formatted into buffers of fixed sizes, and cut there on purpose.
    -Wno-format-truncation)
