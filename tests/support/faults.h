// The ways in which the platform fails its callers.
#ifndef KESTO_TESTS_SUPPORT_FAULTS_H
#define KESTO_TESTS_SUPPORT_FAULTS_H

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "emulator/control.h"

namespace test_support {

// emulator::Fault, with a value for every member that a test does not name.
struct Fault {
    std::string symbol{};
    std::string where{};
    std::uint32_t first = 1;
    std::uint32_t last = UINT32_MAX;
    emulator::Effect effect = emulator::Effect::Fail;
    int status = -1;
    std::function<void()> action{};
};

inline void inject(const Fault& fault) {
    emulator::Fault added;
    added.symbol = fault.symbol;
    added.where = fault.where;
    added.first = fault.first;
    added.last = fault.last;
    added.effect = fault.effect;
    added.status = fault.status;
    added.action = fault.action;
    emulator::add_fault(added);
}

// How a service that hands out rows can fail, and how one whose success without a row means nothing.
inline const std::vector<emulator::Effect> ROW_FAILURES{emulator::Effect::Fail, emulator::Effect::FailWithRow,
                                                        emulator::Effect::SucceedWithoutRow};
inline const std::vector<emulator::Effect> STATUS_FAILURES{emulator::Effect::Fail,
                                                           emulator::Effect::FailWithRow};

inline std::string text_of(emulator::Effect effect) {
    return "effect " + std::to_string(static_cast<int>(effect));
}

// Runs check() once for each effect, with this fault alone.
template <typename Check>
void for_each_effect(const std::vector<emulator::Effect>& effects, Fault fault, Check&& check) {
    for (const emulator::Effect effect : effects) {
        SCOPED_TRACE(fault.symbol + " " + text_of(effect));
        emulator::clear_faults();
        fault.effect = effect;
        inject(fault);
        check();
    }
    emulator::clear_faults();
}

} // namespace test_support

#endif
