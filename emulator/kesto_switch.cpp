// kesto-switch: checks and makes scenarios of the emulated switch.
#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>

#include "emulator/control.h"
#include "emulator/generator.h"

int main(int argc, char** argv) {
    CLI::App app("Checks and makes scenarios of the emulated switch (the files that KESTO_SWITCH names).");
    app.require_subcommand(1);

    std::string file;
    CLI::App* check = app.add_subcommand("check", "Read a scenario and say what is wrong with it");
    check->add_option("FILE", file, "The scenario")->required();

    std::uint32_t tunnels = 0;
    std::uint32_t seed = 1;
    CLI::App* generate = app.add_subcommand("generate", "Print a scenario with a number of tunnels");
    generate->add_option("--tunnels", tunnels, "How many")
        ->required()
        ->check(CLI::Range(0U, emulator::MOST_TUNNELS));
    generate->add_option("--seed", seed, "The same seed makes the same switch")->capture_default_str();

    const CLI::App* builtin = app.add_subcommand("builtin", "Print the built-in scenario");
    CLI11_PARSE(app, argc, argv);

    unsetenv("KESTO_SWITCH"); // only the scenario of the command line counts here

    try {
        if (check->parsed()) {
            emulator::load_file(file);
            std::cout << file << ": good\n";
        } else if (generate->parsed()) {
            std::cout << emulator::generate_scenario(tunnels, seed);
        } else if (builtin->parsed()) {
            std::cout << emulator::builtin_text();
        }
    } catch (const emulator::ScenarioError& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}
