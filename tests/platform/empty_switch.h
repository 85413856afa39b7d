// The fixture of the suites that read the switch: a provider on a switch with empty tables.
#ifndef KESTO_TESTS_PLATFORM_EMPTY_SWITCH_H
#define KESTO_TESTS_PLATFORM_EMPTY_SWITCH_H

#include "emulator/control.h"
#include "tests/support/provider_test.h"

namespace platform_tests {

class EmptySwitchTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        emulator::load_empty();
        emulator::clear_calls();
    }
};

} // namespace platform_tests

#endif
