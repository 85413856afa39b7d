// What the emulated switch's own tests share: a fixture that starts from the built-in switch and allows no
// misuse, and rows that free themselves.
#ifndef KESTO_TESTS_EMULATOR_EMULATOR_TEST_H
#define KESTO_TESTS_EMULATOR_EMULATOR_TEST_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

#include "emulator/control.h"
#include "platform/platform_services.h"

namespace emulator_test {

// Ports of the built-in switch.
inline constexpr std::uint32_t ETHERNET_1_1 = 0x9B010001;
inline constexpr std::uint32_t ETHERNET_1_2 = 0x9B010002;
inline constexpr std::uint32_t ETHERNET_2_1 = 0x9B020001; // shows a network interface of the host
inline constexpr std::uint32_t MANAGEMENT = 0xA5000000;
inline constexpr std::uint32_t FCIP_1 = 0x0A000001;
inline constexpr std::uint32_t FC_1_1 = 0x01010001;
inline constexpr std::uint32_t UNKNOWN_INTERFACE = 0x9B770001;

class EmulatorTest : public testing::Test {
  protected:
    void SetUp() override { emulator::reset(); }

    void TearDown() override {
        EXPECT_EQ(emulator::misuse_report(), "");
        EXPECT_FALSE(emulator::lock_held());
        emulator::reset();
    }

    // Ends a test that misuses the switch on purpose: these misuses and no others were reported.
    static void expect_misuse(const std::string& report) {
        EXPECT_EQ(emulator::misuse_report(), report);
        emulator::clear_misuse();
    }
};

// The same with the lock held, as most services require.
class LockedTest : public EmulatorTest {
  protected:
    void SetUp() override {
        EmulatorTest::SetUp();
        mutex_lock();
        emulator::clear_calls();
    }
    void TearDown() override {
        if (emulator::lock_held()) mutex_unlock();
        EmulatorTest::TearDown();
    }
};

// The out-parameter of a service that hands out a row.
template <typename Record>
class Row {
  public:
    Row() = default;
    explicit Row(Record* row) : row_(row) {}
    Row(Row&& other) noexcept : row_(std::exchange(other.row_, nullptr)) {}
    Row& operator=(Row&&) = delete;
    ~Row() { std::free(row_); }

    Record** slot() {
        std::free(std::exchange(row_, nullptr));
        return &row_;
    }
    explicit operator bool() const { return row_ != nullptr; }
    const Record* get() const { return row_; }
    Record** current() { return &row_; } // the row itself, for services that take one back
    const Record* operator->() const { return row_; }

  private:
    Record* row_ = nullptr;
};

} // namespace emulator_test

#endif
