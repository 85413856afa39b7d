// The readers of the kernel's IP counters, over sample files.
//
// kernel_stats.cpp is compiled into this program with its folder set to the relative "proc_net". Every test
// works in a directory of its own, so it lays the files there that the readers are to find.
#include "platform/kernel_stats.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t UNTOUCHED = 0xEEEEEEEE;

std::string linuxInterfaceName;           // what the platform's name service answers
std::vector<std::uint32_t> namesAskedFor; // the if-indexes it was asked for

template <typename Record>
Record filled(std::uint32_t value) {
    Record record;
    std::fill(std::begin(record.words), std::end(record.words), value);
    return record;
}

template <typename Record>
std::vector<std::uint32_t> words_of(const Record& record) {
    return {std::begin(record.words), std::end(record.words)};
}

// The counters first, first + 1, ... of a sample file.
std::vector<std::uint32_t> run(std::uint32_t first, std::size_t count) {
    std::vector<std::uint32_t> values(count);
    for (std::size_t i = 0; i < count; ++i)
        values[i] = first + static_cast<std::uint32_t>(i);
    return values;
}

const std::vector<std::uint32_t> NO_IP(17, UNTOUCHED);
const std::vector<std::uint32_t> NO_ICMP(26, UNTOUCHED);
const std::vector<std::uint32_t> NO_TCP(14, UNTOUCHED);
const std::vector<std::uint32_t> NO_UDP(4, UNTOUCHED);

// The samples' Tcp line; MaxConn is -1 on every kernel, and reads as the largest 32-bit number.
const std::vector<std::uint32_t> SAMPLE_TCP{1,   200, 120000, 4294967295, 305, 306, 307,
                                            308, 309, 310,    311,        312, 313, 314};

class KernelStats : public testing::Test {
  protected:
    KernelIpCounters ip = filled<KernelIpCounters>(UNTOUCHED);
    KernelIcmpCounters icmp = filled<KernelIcmpCounters>(UNTOUCHED);
    KernelTcpCounters tcp = filled<KernelTcpCounters>(UNTOUCHED);
    KernelUdpCounters udp = filled<KernelUdpCounters>(UNTOUCHED);
    KernelIp6Counters ip6 = filled<KernelIp6Counters>(UNTOUCHED);
    KernelIcmp6Counters icmp6 = filled<KernelIcmp6Counters>(UNTOUCHED);

    void SetUp() override {
        linuxInterfaceName.clear();
        namesAskedFor.clear();
        std::string pattern = testing::TempDir() + "kernel_stats_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        directory_ = pattern;
        before_ = fs::current_path();
        fs::current_path(directory_);
        fs::create_directories("proc_net/dev_snmp6");
    }
    void TearDown() override {
        fs::current_path(before_);
        fs::remove_all(directory_);
    }

    static void use_sample(const std::string& name) {
        fs::copy(fs::path(KERNEL_SAMPLES) / name, "proc_net",
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
    static void write_file(const std::string& name, const std::string& text) {
        std::ofstream("proc_net/" + name, std::ios::binary) << text;
    }
    static std::string read_sample(const std::string& name) {
        std::ifstream file(fs::path(KERNEL_SAMPLES) / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    int read_ipv4() { return ipconf_linux_get_ip_stats(&ip, &icmp, &tcp, &udp); }
    void expect_ipv4(const std::vector<std::uint32_t>& wantIp, const std::vector<std::uint32_t>& wantIcmp,
                     const std::vector<std::uint32_t>& wantTcp, const std::vector<std::uint32_t>& wantUdp) {
        EXPECT_EQ(words_of(ip), wantIp);
        EXPECT_EQ(words_of(icmp), wantIcmp);
        EXPECT_EQ(words_of(tcp), wantTcp);
        EXPECT_EQ(words_of(udp), wantUdp);
    }
    void expect_ipv6_all_zero() {
        EXPECT_EQ(words_of(ip6), std::vector<std::uint32_t>(23, 0));
        EXPECT_EQ(words_of(icmp6), std::vector<std::uint32_t>(34, 0));
    }

  private:
    fs::path directory_, before_;
};

// The four sections in the only order that older kernels know.
constexpr const char* FOUR_SECTIONS =
    "Ip: header\nIp: 1 64 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17\n"
    "Icmp: header\nIcmp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26\n"
    "Tcp: header\nTcp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14\n"
    "Udp: header\nUdp: 1 2 3 4\n";

} // namespace

// The platform's name service, as the readers call it.
extern "C" int netcfg_print_ifname(char* name, std::uint32_t ifIndex) {
    namesAskedFor.push_back(ifIndex);
    std::strcpy(name, linuxInterfaceName.c_str());
    return linuxInterfaceName.empty() ? 1 : 0;
}

// --- /proc/net/snmp ---------------------------------------------------------------------------------------

TEST_F(KernelStats, IpWordsAreTheColumnsBehindForwardingAndDefaultTtl) {
    use_sample("linux-2.4");
    EXPECT_EQ(read_ipv4(), 0);
    // The line is "Ip: 1 64 101 102 ... 117".
    const struct {
        std::size_t word;
        const char* column;
        std::uint32_t value;
    } table[] = {
        {0, "InReceives", 101},    {1, "InHdrErrors", 102},     {2, "InAddrErrors", 103},
        {3, "ForwDatagrams", 104}, {4, "InUnknownProtos", 105}, {5, "InDiscards", 106},
        {6, "InDelivers", 107},    {7, "OutRequests", 108},     {8, "OutDiscards", 109},
        {9, "OutNoRoutes", 110},   {10, "ReasmTimeout", 111},   {11, "ReasmReqds", 112},
        {12, "ReasmOKs", 113},     {13, "ReasmFails", 114},     {14, "FragOKs", 115},
        {15, "FragFails", 116},    {16, "FragCreates", 117},
    };
    for (const auto& row : table)
        EXPECT_EQ(ip.words[row.word], row.value) << row.column;
}

TEST_F(KernelStats, EverySectionOfAClassicKernelIsReadInFileOrder) {
    use_sample("linux-2.4");
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(run(101, 17), run(201, 26), SAMPLE_TCP, run(401, 4));
}

TEST_F(KernelStats, AnIcmpMsgSectionShiftsTcpAndUdpOutOfReach) {
    use_sample("linux-2.6.27");
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(run(101, 17), run(201, 26), NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AChecksumColumnOfLaterKernelsIsReadByPosition) {
    use_sample("linux-5.10"); // Icmp has 27 columns: InMsgs InErrors InCsumErrors InDestUnreachs ...
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(icmp.words[2], 203u) << "InCsumErrors stands where older kernels have InDestUnreachs";
    expect_ipv4(run(101, 17), run(201, 26), NO_TCP, NO_UDP);
}

TEST_F(KernelStats, ColumnsBehindTheExpectedOnesAreIgnored) {
    use_sample("linux-6.8"); // Ip has OutTransmits behind FragCreates, Icmp has 29 columns
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(run(101, 17), run(201, 26), NO_TCP, NO_UDP);
}

TEST_F(KernelStats, TcpAndUdpColumnsBehindTheExpectedOnesAreIgnored) {
    write_file("snmp",
               "Ip: h\nIp: 1 64\nIcmp: h\nIcmp: 1\n"
               "Tcp: h\nTcp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\nUdp: h\nUdp: 1 2 3 4 5 6 7\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(words_of(tcp), run(1, 14));
    EXPECT_EQ(words_of(udp), run(1, 4));
}

TEST_F(KernelStats, HeaderLinesAreNotLookedAt) {
    write_file("snmp", FOUR_SECTIONS);
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(run(1, 17), run(1, 26), run(1, 14), run(1, 4));
}

TEST_F(KernelStats, SectionsAreKnownByTheirPlaceOnly) {
    // Tcp first: the value line of each place must still carry the name expected there.
    write_file("snmp",
               "Tcp: h\nTcp: 1 2 3 4 5 6 7 8 9 10 11 12 13 14\nIcmp: h\nIcmp: 7 8\n"
               "Ip: h\nIp: 1 64 3 4\nUdp: h\nUdp: 1 2 3 4\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(words_of(ip), NO_IP);
    EXPECT_EQ(icmp.words[0], 7u);
    EXPECT_EQ(words_of(tcp), NO_TCP);
    EXPECT_EQ(words_of(udp), run(1, 4));
}

TEST_F(KernelStats, AShortValueLineLeavesTheRestOfTheRecord) {
    write_file("snmp", "Ip: h\nIp: 1 64 11 12\nIcmp: h\nIcmp: 21\nTcp: h\nTcp:\nUdp: h\nUdp: 41 42 43\n");
    EXPECT_EQ(read_ipv4(), 0);
    std::vector<std::uint32_t> wantIp = NO_IP, wantIcmp = NO_ICMP, wantUdp = NO_UDP;
    wantIp[0] = 11;
    wantIp[1] = 12;
    wantIcmp[0] = 21;
    wantUdp[0] = 41;
    wantUdp[1] = 42;
    wantUdp[2] = 43;
    expect_ipv4(wantIp, wantIcmp, NO_TCP, wantUdp);
}

TEST_F(KernelStats, AnIpLineWithItsTwoSettingsOnlyWritesNothing) {
    write_file("snmp", "Ip: h\nIp: 1 64\n");
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AWordThatIsNoNumberEndsItsSection) {
    write_file(
        "snmp",
        "Ip: h\nIp: 1 64 11 twelve 13\nIcmp: h\nIcmp: 21 22\nTcp: h\nTcp: x 2\nUdp: h\nUdp: 41 4x 43\n");
    EXPECT_EQ(read_ipv4(), 0);
    std::vector<std::uint32_t> wantIp = NO_IP, wantIcmp = NO_ICMP, wantUdp = NO_UDP;
    wantIp[0] = 11;
    wantIcmp[0] = 21;
    wantIcmp[1] = 22;
    wantUdp[0] = 41;
    wantUdp[1] = 4; // the digits at its start count
    expect_ipv4(wantIp, wantIcmp, NO_TCP, wantUdp);
}

TEST_F(KernelStats, BlanksBetweenNumbersMayBeAnyOrNoneBehindTheName) {
    write_file("snmp", "h\nIp:1\t64   11\t\t12\nh\nIcmp:\t21  22\nh\nTcp:31\nh\nUdp:   41\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(ip.words[0], 11u);
    EXPECT_EQ(ip.words[1], 12u);
    EXPECT_EQ(icmp.words[1], 22u);
    EXPECT_EQ(tcp.words[0], 31u);
    EXPECT_EQ(udp.words[0], 41u);
}

TEST_F(KernelStats, TheNameIsMatchedToTheLetter) {
    write_file("snmp", "h\nIP: 1 64 11\nh\nicmp: 21\nh\nTcpExt: 31\nh\nUdpLite: 41\n");
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, NumbersAreSaturatedToThirtyTwoBits) {
    write_file("snmp",
               "h\nIp: 1 64 4294967295 4294967296 4294967297 18446744073709551615 18446744073709551616 "
               "99999999999999999999999999 7\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(ip.words[0], 4294967295u);
    EXPECT_EQ(ip.words[1], 4294967295u) << "2^32";
    EXPECT_EQ(ip.words[2], 4294967295u) << "2^32 + 1";
    EXPECT_EQ(ip.words[3], 4294967295u) << "2^64 - 1";
    EXPECT_EQ(ip.words[4], 4294967295u) << "2^64";
    EXPECT_EQ(ip.words[5], 4294967295u) << "more than any word holds";
    EXPECT_EQ(ip.words[6], 7u) << "the number behind them is still read";
    EXPECT_EQ(ip.words[7], UNTOUCHED);
}

TEST_F(KernelStats, NegativeNumbersReadAsTheirThirtyTwoBitWord) {
    write_file("snmp", "h\nIp: 1 64 -1 -2 -4294967295 -4294967296\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(ip.words[0], 4294967295u);
    EXPECT_EQ(ip.words[1], 4294967294u);
    EXPECT_EQ(ip.words[2], 1u);
    EXPECT_EQ(ip.words[3], 4294967295u) << "out of range";
}

TEST_F(KernelStats, AHugeForwardingColumnDoesNotReachTheRecord) {
    write_file("snmp", "h\nIp: 18446744073709551615 18446744073709551615 11 12\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(ip.words[0], 11u);
    EXPECT_EQ(ip.words[1], 12u);
    EXPECT_EQ(ip.words[2], UNTOUCHED);
}

TEST_F(KernelStats, ALastLineWithoutItsLineEndIsRead) {
    std::string text = FOUR_SECTIONS;
    text.pop_back();
    write_file("snmp", text);
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(words_of(udp), run(1, 4));
}

TEST_F(KernelStats, AHeaderLongerThanItsBufferIsTakenForTwoLines) {
    // The rest of the Ip header stands where the Ip values are expected, and every section shifts by a line.
    write_file("snmp", "Ip: " + std::string(1100, 'H') + std::strchr(FOUR_SECTIONS, '\n'));
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AHeaderOf1022CharactersStillFits) {
    write_file("snmp", std::string(1022, 'H') + std::strchr(FOUR_SECTIONS, '\n'));
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(run(1, 17), run(1, 26), run(1, 14), run(1, 4));
}

TEST_F(KernelStats, ALineOf1023CharactersLeavesItsLineEndAsALine) {
    // 1023 characters fill the buffer; the line end alone is then taken for the Ip values.
    write_file("snmp", std::string(1023, 'H') + std::strchr(FOUR_SECTIONS, '\n'));
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AValueLineIsReadToIts1023rdCharacter) {
    // "77" stands across the cut: its first digit is the last character of the buffer.
    std::string line = "Ip: 1 64 11 ";
    line += std::string(1022 - line.size(), ' ') + "77 13";
    write_file("snmp", "Ip: header\n" + line + "\nIcmp: header\nIcmp: 21\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(ip.words[0], 11u);
    EXPECT_EQ(ip.words[1], 7u);
    EXPECT_EQ(ip.words[2], UNTOUCHED);
    EXPECT_EQ(words_of(icmp), NO_ICMP) << "the rest of the line was taken for the Icmp header";
}

TEST_F(KernelStats, AnEmptyFileWritesNothing) {
    write_file("snmp", "");
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AFileThatEndsInItsHeaderWritesNothing) {
    write_file("snmp", "Ip: Forwarding DefaultTTL InReceives\n");
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AFileThatEndsBehindASectionFillsTheSectionsBeforeItsEnd) {
    write_file("snmp", "h\nIp: 1 64 11\nh\nIcmp: 21\n");
    EXPECT_EQ(read_ipv4(), 0);
    EXPECT_EQ(ip.words[0], 11u);
    EXPECT_EQ(icmp.words[0], 21u);
    EXPECT_EQ(words_of(tcp), NO_TCP);
    EXPECT_EQ(words_of(udp), NO_UDP);
}

TEST_F(KernelStats, AFileWithoutTheExpectedFirstLineShiftsEverySection) {
    const std::string text = FOUR_SECTIONS;
    write_file("snmp", text.substr(text.find('\n') + 1)); // starts with the Ip values
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AMissingFileLeavesTheRecordsUntouchedAndSucceeds) {
    EXPECT_EQ(read_ipv4(), 0);
    expect_ipv4(NO_IP, NO_ICMP, NO_TCP, NO_UDP);
}

TEST_F(KernelStats, AnUnwantedSectionIsStillConsumed) {
    write_file("snmp", FOUR_SECTIONS);
    EXPECT_EQ(ipconf_linux_get_ip_stats(nullptr, &icmp, nullptr, &udp), 0);
    expect_ipv4(NO_IP, run(1, 26), NO_TCP, run(1, 4));
    EXPECT_EQ(ipconf_linux_get_ip_stats(&ip, nullptr, &tcp, nullptr), 0);
    expect_ipv4(run(1, 17), run(1, 26), run(1, 14), run(1, 4));
}

TEST_F(KernelStats, NoRecordAtAllIsTolerated) {
    write_file("snmp", FOUR_SECTIONS);
    EXPECT_EQ(ipconf_linux_get_ip_stats(nullptr, nullptr, nullptr, nullptr), 0);
    fs::remove("proc_net/snmp");
    EXPECT_EQ(ipconf_linux_get_ip_stats(nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(KernelStats, ReadingDoesNotKeepTheFileOpen) {
    write_file("snmp", FOUR_SECTIONS);
    const auto openFiles = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto atStart = openFiles();
    for (int i = 0; i < 5; ++i) {
        read_ipv4();
        ipconf_linux_get_ipv6_stats(0, nullptr, nullptr);
    }
    EXPECT_EQ(openFiles(), atStart);
}

// --- /proc/net/snmp6 and /proc/net/dev_snmp6 --------------------------------------------------------------

TEST_F(KernelStats, Ip6WordsFollowTheFileFromLastChange) {
    use_sample("supervisor");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    const struct {
        std::size_t word;
        const char* line;
        std::uint32_t value;
    } table[] = {
        {0, "Ip6LastChange", 1000},      {1, "Ip6InReceives", 1001},        {2, "Ip6InHdrErrors", 1002},
        {3, "Ip6InTooBigErrors", 1003},  {4, "Ip6InNoRoutes", 1004},        {5, "Ip6InAddrErrors", 1005},
        {6, "Ip6InUnknownProtos", 1006}, {7, "Ip6InTruncatedPkts", 1007},   {8, "Ip6InDiscards", 1008},
        {9, "Ip6InDelivers", 1009},      {10, "Ip6OutForwDatagrams", 1010}, {11, "Ip6OutRequests", 1011},
        {12, "Ip6OutDiscards", 1012},    {13, "Ip6OutNoRoutes", 1013},      {14, "Ip6ReasmTimeout", 1014},
        {15, "Ip6ReasmReqds", 1015},     {16, "Ip6ReasmOKs", 1016},         {17, "Ip6ReasmFails", 1017},
        {18, "Ip6FragOKs", 1018},        {19, "Ip6FragFails", 1019},        {20, "Ip6FragCreates", 1020},
        {21, "Ip6InMcastPkts", 1021},    {22, "Ip6OutMcastPkts", 1022},
    };
    for (const auto& row : table)
        EXPECT_EQ(ip6.words[row.word], row.value) << row.line;
}

TEST_F(KernelStats, Icmp6WordsHaveAnOrderOfTheirOwn) {
    use_sample("supervisor");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    // The lines of the file count up from 1100; the words of the record go another way.
    const struct {
        std::size_t word;
        const char* line;
        std::uint32_t value;
    } table[] = {
        {0, "Icmp6InMsgs", 1100},
        {1, "Icmp6InErrors", 1101},
        {2, "Icmp6InDestUnreachs", 1102},
        {6, "Icmp6InAdminProhibs", 1103},
        {4, "Icmp6InTimeExcds", 1104},
        {5, "Icmp6InParmProblems", 1105},
        {3, "Icmp6InPktTooBigs", 1106},
        {7, "Icmp6InEchos", 1107},
        {8, "Icmp6InEchoReplies", 1108},
        {12, "Icmp6InRouterSolicits", 1109},
        {13, "Icmp6InRouterAdvertisements", 1110},
        {14, "Icmp6InNeighborSolicits", 1111},
        {15, "Icmp6InNeighborAdvertisements", 1112},
        {16, "Icmp6InRedirects", 1113},
        {9, "Icmp6InGroupMembQueries", 1114},
        {10, "Icmp6InGroupMembResponses", 1115},
        {11, "Icmp6InGroupMembReductions", 1116},
        {17, "Icmp6OutMsgs", 1117},
        {18, "Icmp6OutErrors", 1118},
        {19, "Icmp6OutDestUnreachs", 1119},
        {23, "Icmp6OutAdminProhibs", 1120},
        {21, "Icmp6OutTimeExcds", 1121},
        {22, "Icmp6OutParmProblems", 1122},
        {20, "Icmp6OutPktTooBigs", 1123},
        {24, "Icmp6OutEchos", 1124},
        {25, "Icmp6OutEchoReplies", 1125},
        {29, "Icmp6OutRouterSolicits", 1126},
        {30, "Icmp6OutRouterAdvertisements", 1127},
        {31, "Icmp6OutNeighborSolicits", 1128},
        {32, "Icmp6OutNeighborAdvertisements", 1129},
        {33, "Icmp6OutRedirects", 1130},
        {26, "Icmp6OutGroupMembQueries", 1131},
        {27, "Icmp6OutGroupMembResponses", 1132},
        {28, "Icmp6OutGroupMembReductions", 1133},
    };
    static_assert(std::size(table) == std::size(KernelIcmp6Counters{}.words));
    for (const auto& row : table)
        EXPECT_EQ(icmp6.words[row.word], row.value) << row.line;
}

TEST_F(KernelStats, TheWholeHostNeedsNoInterfaceName) {
    use_sample("supervisor");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    EXPECT_TRUE(namesAskedFor.empty());
}

TEST_F(KernelStats, AnInterfaceIsReadFromTheFileOfItsLinuxName) {
    use_sample("supervisor");
    linuxInterfaceName = "Gig2_1";
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0x82000000, &ip6, &icmp6), 0);
    EXPECT_EQ(namesAskedFor, std::vector<std::uint32_t>{0x82000000});
    EXPECT_EQ(words_of(ip6), run(2000, 23));
    EXPECT_EQ(icmp6.words[0], 2100u);
    EXPECT_EQ(icmp6.words[28], 2133u);
}

TEST_F(KernelStats, AnInterfaceFileThatDoesNotStartWithIfIndexReadsAsZero) {
    use_sample("supervisor");
    linuxInterfaceName = "Gig2_2";
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(7, &ip6, &icmp6), 0);
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, AWholeHostFileThatStartsWithIfIndexReadsAsZero) {
    write_file("snmp6", read_sample("supervisor/dev_snmp6/Gig2_1"));
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, AStockKernelWithoutLastChangeReadsAsZero) {
    use_sample("linux-5.10");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, AStockInterfaceFileWithoutLastChangeReadsAsZero) {
    use_sample("linux-5.10");
    linuxInterfaceName = "eth0";
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(4, &ip6, &icmp6), 0);
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, AMissingIpv6FileReadsAsZero) {
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, AnInterfaceWithoutAFileReadsAsZero) {
    linuxInterfaceName = "Gig9_9";
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(9, &ip6, &icmp6), 0);
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, AnInterfaceWithoutANameReadsAsZero) {
    use_sample("supervisor");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(9, &ip6, &icmp6), 0);
    EXPECT_EQ(namesAskedFor, std::vector<std::uint32_t>{9});
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, AnEmptyIpv6FileReadsAsZero) {
    write_file("snmp6", "");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    expect_ipv6_all_zero();
}

TEST_F(KernelStats, TheIpv6RecordsMayBeAbsent) {
    use_sample("supervisor");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, nullptr, &icmp6), 0);
    EXPECT_EQ(icmp6.words[33], 1130u);
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, nullptr), 0);
    EXPECT_EQ(words_of(ip6), run(1000, 23));
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, nullptr, nullptr), 0);
}

TEST_F(KernelStats, TheFirstOtherIp6LineEndsTheReading) {
    std::string text = read_sample("supervisor/snmp6");
    const std::size_t line = text.find("Ip6InTooBigErrors");
    text.insert(line, "Ip6InSomethingNew 5\n");
    write_file("snmp6", text);
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    std::vector<std::uint32_t> want(23, 0);
    want[0] = 1000;
    want[1] = 1001;
    want[2] = 1002;
    EXPECT_EQ(words_of(ip6), want);
    EXPECT_EQ(words_of(icmp6), std::vector<std::uint32_t>(34, 0));
}

TEST_F(KernelStats, TheFirstOtherIcmp6LineEndsTheReading) {
    std::string text = read_sample("supervisor/snmp6");
    text.erase(text.find("Icmp6InDestUnreachs"),
               text.find("Icmp6InAdminProhibs") - text.find("Icmp6InDestUnreachs"));
    write_file("snmp6", text);
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    EXPECT_EQ(words_of(ip6), run(1000, 23));
    std::vector<std::uint32_t> want(34, 0);
    want[0] = 1100;
    want[1] = 1101;
    EXPECT_EQ(words_of(icmp6), want);
}

TEST_F(KernelStats, AWordThatIsNoNumberEndsTheIpv6Reading) {
    write_file("snmp6", "Ip6LastChange 11\nIp6InReceives none\nIp6InHdrErrors 13\n");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    EXPECT_EQ(ip6.words[0], 11u);
    EXPECT_EQ(ip6.words[1], 0u);
    EXPECT_EQ(ip6.words[2], 0u);
}

TEST_F(KernelStats, TextBehindANumberEndsTheIpv6Reading) {
    write_file("snmp6", "Ip6LastChange 11 s\nIp6InReceives 12\n");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    EXPECT_EQ(ip6.words[0], 11u);
    EXPECT_EQ(ip6.words[1], 0u);
}

TEST_F(KernelStats, AFileThatEndsEarlyLeavesTheRestZero) {
    write_file("snmp6", "Ip6LastChange 11\nIp6InReceives 12");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    std::vector<std::uint32_t> want(23, 0);
    want[0] = 11;
    want[1] = 12;
    EXPECT_EQ(words_of(ip6), want);
}

TEST_F(KernelStats, BlankLinesAndWideBlanksDoNotEndTheIpv6Reading) {
    write_file("snmp6", "Ip6LastChange     \t 11\n\n\n   Ip6InReceives\t12\nIp6InHdrErrors13\n");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    EXPECT_EQ(ip6.words[0], 11u);
    EXPECT_EQ(ip6.words[1], 12u);
    EXPECT_EQ(ip6.words[2], 13u) << "the blank before the number may be missing";
}

TEST_F(KernelStats, Ipv6NumbersAreSaturatedToThirtyTwoBits) {
    write_file("snmp6",
               "Ip6LastChange 4294967296\nIp6InReceives 18446744073709551616\nIp6InHdrErrors -1\n"
               "Ip6InTooBigErrors 5\n");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, &icmp6), 0);
    EXPECT_EQ(ip6.words[0], 4294967295u);
    EXPECT_EQ(ip6.words[1], 4294967295u);
    EXPECT_EQ(ip6.words[2], 4294967295u);
    EXPECT_EQ(ip6.words[3], 5u);
    EXPECT_EQ(ip6.words[4], 0u);
}

TEST_F(KernelStats, AHugeIfIndexLineDoesNotReachTheRecords) {
    linuxInterfaceName = "Gig2_1";
    write_file("dev_snmp6/Gig2_1", "ifIndex 18446744073709551615\nIp6LastChange 11\n");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(5, &ip6, &icmp6), 0);
    std::vector<std::uint32_t> want(23, 0);
    want[0] = 11;
    EXPECT_EQ(words_of(ip6), want);
    EXPECT_EQ(words_of(icmp6), std::vector<std::uint32_t>(34, 0));
}
