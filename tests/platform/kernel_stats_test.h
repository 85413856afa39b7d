// The fixture of the suites of the kernel's counters.
//
// kernel_stats.cpp is compiled into the suites' program with its folder set to the relative "proc_net". Every
// test works in a directory of its own, so it lays the files there that the readers are to find.
#ifndef KESTO_TESTS_PLATFORM_KERNEL_STATS_TEST_H
#define KESTO_TESTS_PLATFORM_KERNEL_STATS_TEST_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "platform/kernel_stats.h"

namespace kernel_stats {

using Words = std::vector<std::uint32_t>;

constexpr std::uint32_t UNTOUCHED = 0xEEEEEEEE;

// The counters first, first + 1, ... of a sample file.
Words run(std::uint32_t first, std::size_t count);
// The words at the start of a record, and this value in all that follow.
Words padded(Words words, std::size_t count, std::uint32_t value);

template <typename Record>
Words words_of(const Record& record) {
    return {std::begin(record.words), std::end(record.words)};
}

// What the platform's name service answers, and the if-indexes that it was asked for.
extern std::string linuxInterfaceName;
extern std::vector<std::uint32_t> namesAskedFor;

class KernelStats : public testing::Test {
  protected:
    KernelStats();
    void SetUp() override;
    void TearDown() override;

    static void use_sample(const std::string& name);
    static std::string read_sample(const std::string& name);
    static void write_file(const std::string& name, const std::string& text);

    KernelIpCounters ip{};
    KernelIcmpCounters icmp{};
    KernelTcpCounters tcp{};
    KernelUdpCounters udp{};
    KernelIp6Counters ip6{};
    KernelIcmp6Counters icmp6{};

  private:
    std::filesystem::path directory_, before_;
};

} // namespace kernel_stats

#endif
