// The reader of /proc/net/snmp6 and /proc/net/dev_snmp6: which words of the two records a file fills.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "tests/platform/kernel_stats_test.h"

namespace {

using namespace kernel_stats;

constexpr std::uint32_t LARGEST = 4294967295;

// The place in the record of each Icmp6 line, in the order of the file. Ip6's are in order.
constexpr std::size_t ICMP6_ORDER[] = {
    0,  1,  2,          // InMsgs, InErrors, InDestUnreachs
    6,  4,  5,  3,      // InAdminProhibs, InTimeExcds, InParmProblems, InPktTooBigs
    7,  8,              // InEchos, InEchoReplies
    12, 13, 14, 15, 16, // In, router and neighbor: Solicits and Advertisements; InRedirects
    9,  10, 11,         // InGroupMembQueries, InGroupMembResponses, InGroupMembReductions
    17, 18, 19,         // OutMsgs, OutErrors, OutDestUnreachs
    23, 21, 22, 20,     // and so on, as above
    24, 25,             // OutEchos
    29, 30, 31, 32, 33, // OutRouterSolicits
    26, 27, 28,         // OutGroupMembQueries
};
static_assert(std::size(ICMP6_ORDER) == std::size(KernelIcmp6Counters{}.words));

// The record of a file whose Icmp6 lines count up from `first`.
Words icmp6_run(std::uint32_t first) {
    Words words(std::size(ICMP6_ORDER));
    for (std::size_t line = 0; line < words.size(); ++line) {
        words[ICMP6_ORDER[line]] = first + static_cast<std::uint32_t>(line);
    }
    return words;
}

class Ipv6Counters : public KernelStats {
  protected:
    // Reads both records; words that are not named are 0.
    void expect_filled(std::uint32_t ifIndex, const Words& wantIp6, const Words& wantIcmp6 = {}) {
        EXPECT_EQ(ipconf_linux_get_ipv6_stats(ifIndex, &ip6, &icmp6), 0);
        EXPECT_EQ(words_of(ip6), padded(wantIp6, 23, 0));
        EXPECT_EQ(words_of(icmp6), padded(wantIcmp6, 34, 0));
    }
};

// Ip6LastChange is the first word, and nothing comes before it.
TEST_F(Ipv6Counters, OfTheWholeHostFollowTheFileAndNeedNoInterfaceName) {
    use_sample("supervisor");
    expect_filled(0, run(1000, 23), icmp6_run(1100));
    EXPECT_TRUE(namesAskedFor.empty());
}

TEST_F(Ipv6Counters, OfAnInterfaceAreReadFromTheFileOfItsLinuxName) {
    use_sample("supervisor");
    linuxInterfaceName = "Gig2_1";
    expect_filled(0x82000000, run(2000, 23), icmp6_run(2100));
    EXPECT_EQ(namesAskedFor, std::vector<std::uint32_t>{0x82000000});
}

TEST_F(Ipv6Counters, OfAnInterfaceWithoutANameAreZero) {
    use_sample("supervisor");
    expect_filled(9, {});
    EXPECT_EQ(namesAskedFor, std::vector<std::uint32_t>{9});
}

TEST_F(Ipv6Counters, OfAnInterfaceWithoutAFileAreZero) {
    linuxInterfaceName = "Gig9_9";
    expect_filled(9, {});
}

TEST_F(Ipv6Counters, OfAnInterfaceFileThatDoesNotStartWithIfIndexAreZero) {
    use_sample("supervisor");
    linuxInterfaceName = "Gig2_2";
    expect_filled(7, {});
}

TEST_F(Ipv6Counters, OfAStockKernelWithoutLastChangeAreZero) {
    use_sample("linux-5.10");
    expect_filled(0, {});
    linuxInterfaceName = "eth0";
    expect_filled(4, {});
}

TEST_F(Ipv6Counters, OfAMissingFileAreZero) {
    expect_filled(0, {});
}

TEST_F(Ipv6Counters, MayBeReadIntoOneRecordOrNone) {
    use_sample("supervisor");
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, nullptr, &icmp6), 0);
    EXPECT_EQ(words_of(icmp6), icmp6_run(1100));
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, &ip6, nullptr), 0);
    EXPECT_EQ(words_of(ip6), run(1000, 23));
    EXPECT_EQ(ipconf_linux_get_ipv6_stats(0, nullptr, nullptr), 0);
}

TEST_F(Ipv6Counters, AWholeHostFileThatStartsWithIfIndexIsZero) {
    write_file("snmp6", read_sample("supervisor/dev_snmp6/Gig2_1"));
    expect_filled(0, {});
}

TEST_F(Ipv6Counters, EndAtTheFirstOtherIp6Line) {
    std::string text = read_sample("supervisor/snmp6");
    text.insert(text.find("Ip6InTooBigErrors"), "Ip6InSomethingNew 5\n");
    write_file("snmp6", text);
    expect_filled(0, {1000, 1001, 1002});
}

TEST_F(Ipv6Counters, EndAtTheFirstOtherIcmp6Line) {
    std::string text = read_sample("supervisor/snmp6");
    const std::size_t missing = text.find("Icmp6InDestUnreachs");
    text.erase(missing, text.find("Icmp6InAdminProhibs") - missing);
    write_file("snmp6", text);
    expect_filled(0, run(1000, 23), {1100, 1101});
}

TEST_F(Ipv6Counters, OfAHugeIfIndexLineAreThoseOfTheLinesAfterIt) {
    linuxInterfaceName = "Gig2_1";
    write_file("dev_snmp6/Gig2_1", "ifIndex 18446744073709551615\nIp6LastChange 11\n");
    expect_filled(5, {11});
}

struct File {
    const char *name, *text;
    Words ip6;
};
void PrintTo(const File& file, std::ostream* out) {
    *out << '"' << file.text << '"';
}

class Ipv6CountersOf : public Ipv6Counters, public testing::WithParamInterface<File> {};

TEST_P(Ipv6CountersOf, AFile) {
    write_file("snmp6", GetParam().text);
    expect_filled(0, GetParam().ip6);
}

const std::vector<File> FILES{
    {"EmptyFileReadsAsZero", "", {}},
    {"WordThatIsNoNumberEndsTheReading", "Ip6LastChange 11\nIp6InReceives none\nIp6InHdrErrors 13\n", {11}},
    {"TextAfterANumberEndsTheReading", "Ip6LastChange 11 s\nIp6InReceives 12\n", {11}},
    {"FileThatEndsEarlyLeavesTheRestZero", "Ip6LastChange 11\nIp6InReceives 12", {11, 12}},
    // The blank before the number may be missing.
    {"BlankLinesAndWideBlanksDoNotEndTheReading",
     "Ip6LastChange     \t 11\n\n\n   Ip6InReceives\t12\nIp6InHdrErrors13\n",
     {11, 12, 13}},
    {"NumbersAreSaturatedToThirtyTwoBits",
     "Ip6LastChange 4294967296\nIp6InReceives 18446744073709551616\nIp6InHdrErrors -1\n"
     "Ip6InTooBigErrors 5\n",
     {LARGEST, LARGEST, LARGEST, 5}},
};
INSTANTIATE_TEST_SUITE_P(That, Ipv6CountersOf, testing::ValuesIn(FILES),
                         [](const auto& file) { return std::string(file.param.name); });

} // namespace
