// Prints the members that the scenario loader accepts, one "object member" a line, for check_schema.py.
#include <iostream>

#include "emulator/control.h"

int main() {
    for (const auto& [object, members] : emulator::scenario_members()) {
        for (const auto& member : members) {
            std::cout << object << ' ' << member << '\n';
        }
    }
}
