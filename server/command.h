// What the server's commands have in common.
#ifndef KESTO_SERVER_COMMAND_H
#define KESTO_SERVER_COMMAND_H

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace cimserver {

constexpr int USAGE_ERROR = 2; // the exit status of a command line that makes no sense

// The exit status of the command. What it throws is printed on standard error, after the command's name.
inline int run_command(const char* name, int (*run)(int argc, char** argv), int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", name, error.what());
        return EXIT_FAILURE;
    }
}

} // namespace cimserver

#endif
