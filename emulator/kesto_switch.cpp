// kesto-switch: checks and makes scenarios of the emulated switch.
#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "emulator/control.h"
#include "emulator/generator.h"

namespace {

constexpr int MOST_FILES = 1 << 20;
constexpr int USAGE_ERROR = 2;

// Prints whether a scenario can be loaded, or why it cannot.
bool is_good(const std::string& file) {
    try {
        emulator::load_file(file);
        std::cout << file << ": good\n";
        return true;
    } catch (const emulator::ScenarioError& error) {
        std::cerr << error.what() << '\n';
        return false;
    }
}

int run(int argc, char** argv) {
    CLI::App app("Checks and makes scenarios of the emulated switch (the files that KESTO_SWITCH names).");
    app.set_version_flag("--version", "kesto-switch " KESTO_SWITCH_VERSION, "Print the version and exit");
    app.require_subcommand(1);

    CLI::App* check = app.add_subcommand("check", "Read scenarios and report what is wrong with each");
    const CLI::Option* files =
        check->add_option("FILE", "The scenarios")->required()->expected(1, MOST_FILES)->allow_extra_args();

    std::uint32_t tunnels = 0;
    std::uint32_t seed = 1;
    CLI::App* generate = app.add_subcommand("generate", "Print a scenario with a number of tunnels");
    generate->add_option("--tunnels", tunnels, "How many")
        ->required()
        ->check(CLI::Range(0U, emulator::MOST_TUNNELS));
    generate->add_option("--seed", seed, "The same seed makes the same switch")->capture_default_str();

    const CLI::App* builtin = app.add_subcommand("builtin", "Print the built-in scenario");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) { // --help and --version, too
        return app.exit(error) == 0 ? 0 : USAGE_ERROR;
    }

    unsetenv("KESTO_SWITCH"); // only the scenarios on the command line count here

    int bad = 0;
    for (const std::string& file : files->results()) {
        bad += is_good(file) ? 0 : 1;
    }
    if (generate->parsed()) std::cout << emulator::generate_scenario(tunnels, seed);
    if (builtin->parsed()) std::cout << emulator::builtin_text();
    return bad == 0 && std::cout.flush() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kesto-switch: %s\n", error.what());
        return 1;
    }
}
