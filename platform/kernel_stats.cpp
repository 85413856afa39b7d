// The kernel writes its IPv4 counters as pairs of lines, names above values, and its IPv6 counters as one
// line for each counter. Both are read in the fixed order that the switch's kernel uses; a file that goes
// another way is read up to the first line that differs.
//
// Nothing here allocates: the files are read where they are, piece by piece.
#include "platform/kernel_stats.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <span>

#include "platform/platform_services.h"

// The folder of the kernel's files. The tests build this file with a folder of samples.
#ifndef FCIP_PROC_NET
#define FCIP_PROC_NET "/proc/net"
#endif

namespace {

// Files are closed where they have been read. This closes one that is left because the thread is cancelled;
// closing is itself a point of cancellation, which a destructor must not be.
struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using KernelFile = std::unique_ptr<std::FILE, CloseFile>;

// A number of the kernel's as a word, the way "%lu" reads it where long has 32 bits: a number that needs more
// bits is the largest one, and "-1", which the kernel prints for "no limit", is the word 0xFFFFFFFF.
std::uint32_t counter_of(long long number) {
    constexpr long long LARGEST = std::numeric_limits<std::uint32_t>::max();
    if (number < -LARGEST) number = LARGEST;
    return static_cast<std::uint32_t>(std::min(number, LARGEST));
}

// Takes the next number of a line. False when there is none.
bool take_counter(const char*& line, std::uint32_t& counter) {
    char* end = nullptr;
    const long long number = std::strtoll(line, &end, 10);
    if (end == line) return false;
    counter = counter_of(number);
    line = end;
    return true;
}

// Takes the counters of a value line, as far as the line goes.
void take_counters(const char* line, const char* label, unsigned unused, std::span<std::uint32_t> counters) {
    const std::size_t length = std::strlen(label);
    if (std::strncmp(line, label, length) != 0) return;
    line += length;
    std::uint32_t scratch = 0;
    while (unused-- > 0) {
        if (!take_counter(line, scratch)) return;
    }
    for (std::uint32_t& counter : counters) {
        if (!take_counter(line, counter)) return;
    }
}

// One line of the IPv6 files and the word that it fills.
struct CounterLine {
    const char* name;
    std::size_t word;
};

constexpr CounterLine IP6_LINES[] = {
    {"Ip6LastChange", 0},   {"Ip6InReceives", 1},   {"Ip6InHdrErrors", 2},       {"Ip6InTooBigErrors", 3},
    {"Ip6InNoRoutes", 4},   {"Ip6InAddrErrors", 5}, {"Ip6InUnknownProtos", 6},   {"Ip6InTruncatedPkts", 7},
    {"Ip6InDiscards", 8},   {"Ip6InDelivers", 9},   {"Ip6OutForwDatagrams", 10}, {"Ip6OutRequests", 11},
    {"Ip6OutDiscards", 12}, {"Ip6OutNoRoutes", 13}, {"Ip6ReasmTimeout", 14},     {"Ip6ReasmReqds", 15},
    {"Ip6ReasmOKs", 16},    {"Ip6ReasmFails", 17},  {"Ip6FragOKs", 18},          {"Ip6FragFails", 19},
    {"Ip6FragCreates", 20}, {"Ip6InMcastPkts", 21}, {"Ip6OutMcastPkts", 22},
};

// The kernel's line order; the record keeps AdminProhibs, PktTooBigs and the group messages elsewhere.
constexpr CounterLine ICMP6_LINES[] = {
    {"Icmp6InMsgs", 0},
    {"Icmp6InErrors", 1},
    {"Icmp6InDestUnreachs", 2},
    {"Icmp6InAdminProhibs", 6},
    {"Icmp6InTimeExcds", 4},
    {"Icmp6InParmProblems", 5},
    {"Icmp6InPktTooBigs", 3},
    {"Icmp6InEchos", 7},
    {"Icmp6InEchoReplies", 8},
    {"Icmp6InRouterSolicits", 12},
    {"Icmp6InRouterAdvertisements", 13},
    {"Icmp6InNeighborSolicits", 14},
    {"Icmp6InNeighborAdvertisements", 15},
    {"Icmp6InRedirects", 16},
    {"Icmp6InGroupMembQueries", 9},
    {"Icmp6InGroupMembResponses", 10},
    {"Icmp6InGroupMembReductions", 11},
    {"Icmp6OutMsgs", 17},
    {"Icmp6OutErrors", 18},
    {"Icmp6OutDestUnreachs", 19},
    {"Icmp6OutAdminProhibs", 23},
    {"Icmp6OutTimeExcds", 21},
    {"Icmp6OutParmProblems", 22},
    {"Icmp6OutPktTooBigs", 20},
    {"Icmp6OutEchos", 24},
    {"Icmp6OutEchoReplies", 25},
    {"Icmp6OutRouterSolicits", 29},
    {"Icmp6OutRouterAdvertisements", 30},
    {"Icmp6OutNeighborSolicits", 31},
    {"Icmp6OutNeighborAdvertisements", 32},
    {"Icmp6OutRedirects", 33},
    {"Icmp6OutGroupMembQueries", 26},
    {"Icmp6OutGroupMembResponses", 27},
    {"Icmp6OutGroupMembReductions", 28},
};

// Takes "name number" and the white space before each.
bool take_line(std::FILE* file, const char* name, std::uint32_t& counter) {
    if (std::fscanf(file, " ") == EOF) return false;
    for (; *name != '\0'; ++name) {
        if (std::fgetc(file) != *name) return false;
    }
    long long number = 0;
    if (std::fscanf(file, "%lld", &number) != 1) return false;
    counter = counter_of(number);
    return true;
}

bool take_lines(std::FILE* file, std::span<const CounterLine> lines, std::span<std::uint32_t> words) {
    for (const auto& [name, word] : lines) {
        if (!take_line(file, name, words[word])) return false;
    }
    return true;
}

KernelFile open_ipv6_file(std::uint32_t ifIndex) {
    if (ifIndex == 0) return KernelFile(std::fopen(FCIP_PROC_NET "/snmp6", "r"));
    char interfaceName[256] = {};
    netcfg_print_ifname(interfaceName, ifIndex);
    char path[sizeof FCIP_PROC_NET "/dev_snmp6/" + sizeof interfaceName];
    std::snprintf(path, sizeof path, FCIP_PROC_NET "/dev_snmp6/%s", interfaceName);
    return KernelFile(std::fopen(path, "r"));
}

} // namespace

int ipconf_linux_get_ip_stats(KernelIpCounters* ip, KernelIcmpCounters* icmp, KernelTcpCounters* tcp,
                              KernelUdpCounters* udp) {
    KernelFile file(std::fopen(FCIP_PROC_NET "/snmp", "r"));
    if (!file) return 0;

    // The sections are known by their place alone. Forwarding and DefaultTTL of the first are not kept.
    struct Section {
        const char* label;
        unsigned unused;
        std::span<std::uint32_t> counters;
    };
    const auto words = [](auto* record) {
        return record != nullptr ? std::span<std::uint32_t>(record->words) : std::span<std::uint32_t>();
    };
    const Section sections[] = {
        {"Ip:", 2, words(ip)}, {"Icmp:", 0, words(icmp)}, {"Tcp:", 0, words(tcp)}, {"Udp:", 0, words(udp)}};
    char names[1024] = {};
    char values[1024] = {};
    for (const auto& [label, unused, counters] : sections) {
        // A section that the file does not have in full is left as it was.
        if (std::fgets(names, sizeof names, file.get()) == nullptr) continue;
        if (std::fgets(values, sizeof values, file.get()) == nullptr) continue;
        take_counters(values, label, unused, counters);
    }
    return std::fclose(file.release());
}

int ipconf_linux_get_ipv6_stats(std::uint32_t ifIndex, KernelIp6Counters* ip6, KernelIcmp6Counters* icmp6) {
    KernelIp6Counters ip6Scratch;
    KernelIcmp6Counters icmp6Scratch;
    if (ip6 == nullptr) ip6 = &ip6Scratch;
    if (icmp6 == nullptr) icmp6 = &icmp6Scratch;
    *ip6 = {};
    *icmp6 = {};

    KernelFile file = open_ipv6_file(ifIndex);
    if (!file) return 0;
    std::uint32_t scratch = 0;
    if ((ifIndex == 0 || take_line(file.get(), "ifIndex", scratch)) &&
        take_lines(file.get(), IP6_LINES, ip6->words)) {
        take_lines(file.get(), ICMP6_LINES, icmp6->words);
    }
    std::fclose(file.release());
    return 0;
}
