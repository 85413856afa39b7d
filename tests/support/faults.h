// The ways in which the platform fails its callers.
#ifndef KESTO_TESTS_SUPPORT_FAULTS_H
#define KESTO_TESTS_SUPPORT_FAULTS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "emulator/control.h"

namespace test_support {

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
void for_each_effect(const std::vector<emulator::Effect>& effects, emulator::Fault fault, Check&& check) {
    for (const emulator::Effect effect : effects) {
        SCOPED_TRACE(fault.symbol + " " + text_of(effect));
        emulator::clear_faults();
        fault.effect = effect;
        emulator::add_fault(fault);
        check();
    }
    emulator::clear_faults();
}

} // namespace test_support

#endif
