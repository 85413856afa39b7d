#include "tests/platform/kernel_stats_test.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <fstream>

namespace fs = std::filesystem;

namespace kernel_stats {

std::string linuxInterfaceName;
std::vector<std::uint32_t> namesAskedFor;

namespace {

template <typename Record>
void fill(Record& record) {
    std::fill(std::begin(record.words), std::end(record.words), UNTOUCHED);
}

} // namespace

Words run(std::uint32_t first, std::size_t count) {
    Words values(count);
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = first + static_cast<std::uint32_t>(i);
    }
    return values;
}

Words padded(Words words, std::size_t count, std::uint32_t value) {
    words.resize(count, value);
    return words;
}

KernelStats::KernelStats() {
    fill(ip);
    fill(icmp);
    fill(tcp);
    fill(udp);
    fill(ip6);
    fill(icmp6);
}

void KernelStats::SetUp() {
    linuxInterfaceName.clear();
    namesAskedFor.clear();
    std::string pattern = testing::TempDir() + "kernel_stats_XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    directory_ = pattern;
    before_ = fs::current_path();
    fs::current_path(directory_);
    fs::create_directories("proc_net/dev_snmp6");
}

void KernelStats::TearDown() {
    fs::current_path(before_);
    fs::remove_all(directory_);
}

void KernelStats::use_sample(const std::string& name) {
    fs::copy(fs::path(KERNEL_SAMPLES) / name, "proc_net",
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

std::string KernelStats::read_sample(const std::string& name) {
    std::ifstream file(fs::path(KERNEL_SAMPLES) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void KernelStats::write_file(const std::string& name, const std::string& text) {
    std::ofstream("proc_net/" + name, std::ios::binary) << text;
}

} // namespace kernel_stats

// The platform's name service, as the readers call it.
extern "C" int netcfg_print_ifname(char* name, std::uint32_t ifIndex) {
    kernel_stats::namesAskedFor.push_back(ifIndex);
    std::strcpy(name, kernel_stats::linuxInterfaceName.c_str());
    return kernel_stats::linuxInterfaceName.empty() ? 1 : 0;
}
