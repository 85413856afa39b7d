// The reader of /proc/net/snmp: which words of the four records a file fills.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "tests/platform/kernel_stats_test.h"

namespace {

using namespace kernel_stats;

constexpr std::uint32_t LARGEST = 4294967295;

// The samples' Tcp line; MaxConn is -1 on every kernel, and reads as the largest 32-bit number.
const Words SAMPLE_TCP{1, 200, 120000, LARGEST, 305, 306, 307, 308, 309, 310, 311, 312, 313, 314};

// The four sections in the only order that older kernels know.
const std::string FOUR_SECTIONS =
    "Ip: header\nIp: 1 64 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17\n"
    "Icmp: header\nIcmp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26\n"
    "Tcp: header\nTcp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14\n"
    "Udp: header\nUdp: 1 2 3 4\n";
// The same with a first line of this many characters.
std::string with_first_line_of(std::size_t length) {
    return std::string(length, 'H') + FOUR_SECTIONS.substr(FOUR_SECTIONS.find('\n'));
}

// The words at the start of each record that a file fills; the rest of each stays as it was.
struct Filled {
    Words ip{}, icmp{}, tcp{}, udp{};
};

struct File {
    const char* name;
    std::string text;
    Filled filled;
};
void PrintTo(const File& file, std::ostream* out) {
    *out << '"' << file.text << '"';
}

class Ipv4Counters : public KernelStats {
  protected:
    int read() { return ipconf_linux_get_ip_stats(&ip, &icmp, &tcp, &udp); }
    void expect_filled(const Filled& filled) {
        EXPECT_EQ(words_of(ip), padded(filled.ip, 17, UNTOUCHED));
        EXPECT_EQ(words_of(icmp), padded(filled.icmp, 26, UNTOUCHED));
        EXPECT_EQ(words_of(tcp), padded(filled.tcp, 14, UNTOUCHED));
        EXPECT_EQ(words_of(udp), padded(filled.udp, 4, UNTOUCHED));
    }
};

class Ipv4CountersOf : public Ipv4Counters, public testing::WithParamInterface<File> {};

TEST_P(Ipv4CountersOf, AFile) {
    write_file("snmp", GetParam().text);
    EXPECT_EQ(read(), 0);
    expect_filled(GetParam().filled);
}

const Filled ALL{run(1, 17), run(1, 26), run(1, 14), run(1, 4)};

const std::vector<File> FILES{
    {"HeaderLinesAreNotLookedAt", FOUR_SECTIONS, ALL},
    {"LastLineWithoutItsLineEndIsRead", FOUR_SECTIONS.substr(0, FOUR_SECTIONS.size() - 1), ALL},
    {"EmptyFileWritesNothing", "", {}},
    {"FileThatEndsInItsHeaderWritesNothing", "Ip: Forwarding DefaultTTL InReceives\n", {}},
    {"FileThatEndsAfterASectionFillsTheSectionsBeforeItsEnd", "h\nIp: 1 64 11\nh\nIcmp: 21\n", {{11}, {21}}},
    // The file starts with the Ip values.
    {"FileWithoutItsFirstLineShiftsEverySection", FOUR_SECTIONS.substr(FOUR_SECTIONS.find('\n') + 1), {}},

    {"TcpAndUdpColumnsAfterTheExpectedOnesAreIgnored",
     "Ip: h\nIp: 1 64\nIcmp: h\nIcmp: 1\n"
     "Tcp: h\nTcp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\nUdp: h\nUdp: 1 2 3 4 5 6 7\n",
     {{}, {1}, run(1, 14), run(1, 4)}},
    // Tcp first: the value line of each place must still carry the name expected there.
    {"SectionsAreKnownByTheirPlaceOnly",
     "Tcp: h\nTcp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14\nIcmp: h\nIcmp: 7 8\n"
     "Ip: h\nIp: 1 64 3 4\nUdp: h\nUdp: 1 2 3 4\n",
     {{}, {7, 8}, {}, run(1, 4)}},
    {"NameIsMatchedToTheLetter", "h\nIP: 1 64 11\nh\nicmp: 21\nh\nTcpExt: 31\nh\nUdpLite: 41\n", {}},
    {"BlanksBetweenNumbersMayBeAnyOrNoneAfterTheName",
     "h\nIp:1\t64   11\t\t12\nh\nIcmp:\t21  22\nh\nTcp:31\nh\nUdp:   41\n",
     {{11, 12}, {21, 22}, {31}, {41}}},
    {"ShortValueLineLeavesTheRestOfTheRecord",
     "Ip: h\nIp: 1 64 11 12\nIcmp: h\nIcmp: 21\nTcp: h\nTcp:\nUdp: h\nUdp: 41 42 43\n",
     {{11, 12}, {21}, {}, {41, 42, 43}}},
    {"IpLineWithItsTwoSettingsOnlyWritesNothing", "Ip: h\nIp: 1 64\n", {}},

    // Of a word that begins with digits, the digits count.
    {"WordThatIsNoNumberEndsItsSection",
     "Ip: h\nIp: 1 64 11 twelve 13\nIcmp: h\nIcmp: 21 22\nTcp: h\nTcp: x 2\nUdp: h\nUdp: 41 4x 43\n",
     {{11}, {21, 22}, {}, {41, 4}}},
    // 2^32 - 1, 2^32, 2^32 + 1, 2^64 - 1, 2^64, and more than any word holds; the number after them is still
    // read.
    {"NumbersAreSaturatedToThirtyTwoBits",
     "h\nIp: 1 64 4294967295 4294967296 4294967297 18446744073709551615 18446744073709551616 "
     "99999999999999999999999999 7\n",
     {{LARGEST, LARGEST, LARGEST, LARGEST, LARGEST, LARGEST, 7}}},
    // The last one is out of range.
    {"NegativeNumbersReadAsTheirThirtyTwoBitWord",
     "h\nIp: 1 64 -1 -2 -4294967295 -4294967296\n",
     {{LARGEST, LARGEST - 1, 1, LARGEST}}},
    {"HugeForwardingColumnDoesNotReachTheRecord",
     "h\nIp: 18446744073709551615 18446744073709551615 11 12\n",
     {{11, 12}}},

    // A line of more than 1022 characters is taken for two, and every section shifts: by the rest of the
    // line, or by its line end alone.
    {"HeaderOf1022CharactersStillFits", with_first_line_of(1022), ALL},
    {"HeaderOf1023CharactersLeavesItsLineEndAsALine", with_first_line_of(1023), {}},
    {"HeaderOf1104CharactersIsTakenForTwoLines", with_first_line_of(1104), {}},
    // "77" stands across the cut, and the rest of the line is taken for the Icmp header.
    {"ValueLineIsReadToIts1023rdCharacter",
     "Ip: header\nIp: 1 64 11 " + std::string(1010, ' ') + "77 13\nIcmp: header\nIcmp: 21\n",
     {{11, 7}}},
};

INSTANTIATE_TEST_SUITE_P(That, Ipv4CountersOf, testing::ValuesIn(FILES),
                         [](const auto& file) { return std::string(file.param.name); });

struct Sample {
    const char *name, *kernel;
    Filled filled;
};
void PrintTo(const Sample& sample, std::ostream* out) {
    *out << sample.kernel;
}

class Ipv4CountersOfKernel : public Ipv4Counters, public testing::WithParamInterface<Sample> {};

TEST_P(Ipv4CountersOfKernel, Sample) {
    use_sample(GetParam().kernel);
    EXPECT_EQ(read(), 0);
    expect_filled(GetParam().filled);
}

// The Ip line is "Ip: 1 64 101 102 ... 117": the record begins after Forwarding and DefaultTTL. In 5.10 the
// 27 Icmp columns are InMsgs InErrors InCsumErrors InDestUnreachs ..., in 6.8 there are 29, and Ip has
// OutTransmits after FragCreates.
const std::vector<Sample> SAMPLES{
    {"ClassicKernelIsReadInFileOrder", "linux-2.4", {run(101, 17), run(201, 26), SAMPLE_TCP, run(401, 4)}},
    {"IcmpMsgSectionShiftsTcpAndUdpOutOfReach", "linux-2.6.27", {run(101, 17), run(201, 26)}},
    {"ChecksumColumnIsReadByPosition", "linux-5.10", {run(101, 17), run(201, 26)}},
    {"ColumnsAfterTheExpectedOnesAreIgnored", "linux-6.8", {run(101, 17), run(201, 26)}},
};
INSTANTIATE_TEST_SUITE_P(Whose, Ipv4CountersOfKernel, testing::ValuesIn(SAMPLES),
                         [](const auto& sample) { return std::string(sample.param.name); });

TEST_F(Ipv4Counters, MissingFileLeavesTheRecordsUntouchedAndSucceeds) {
    EXPECT_EQ(read(), 0);
    expect_filled({});
}

TEST_F(Ipv4Counters, UnwantedSectionIsStillConsumed) {
    write_file("snmp", FOUR_SECTIONS);
    EXPECT_EQ(ipconf_linux_get_ip_stats(nullptr, &icmp, nullptr, &udp), 0);
    expect_filled({{}, run(1, 26), {}, run(1, 4)});
    EXPECT_EQ(ipconf_linux_get_ip_stats(&ip, nullptr, &tcp, nullptr), 0);
    expect_filled(ALL);
}

TEST_F(Ipv4Counters, NoRecordAtAllIsTolerated) {
    write_file("snmp", FOUR_SECTIONS);
    EXPECT_EQ(ipconf_linux_get_ip_stats(nullptr, nullptr, nullptr, nullptr), 0);
    std::filesystem::remove("proc_net/snmp");
    EXPECT_EQ(ipconf_linux_get_ip_stats(nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(Ipv4Counters, ReadingDoesNotKeepTheFileOpen) {
    write_file("snmp", FOUR_SECTIONS);
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto atStart = openFiles();
    for (int i = 0; i < 5; ++i) {
        read();
        ipconf_linux_get_ipv6_stats(0, nullptr, nullptr);
    }
    EXPECT_EQ(openFiles(), atStart);
}

} // namespace
