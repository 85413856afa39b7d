// The kernel writes its IPv4 counters as pairs of lines, names above values, and its IPv6 counters as one
// line for each counter. Both are read in the fixed order that the switch's kernel uses; a file that goes
// another way is read up to the first line that differs.
#include "platform/kernel_stats.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/platform_services.h"

// The folder of the kernel's files. The tests build this file with a folder of samples.
#ifndef FCIP_PROC_NET
#define FCIP_PROC_NET "/proc/net"
#endif

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::FILE* open_kernel_file(const std::string& name) {
    return std::fopen((std::string(FCIP_PROC_NET "/") + name).c_str(), "r");
}

bool is_space(char character) {
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}

void skip_space(std::string_view& text) {
    while (!text.empty() && is_space(text.front()))
        text.remove_prefix(1);
}

bool take_literal(std::string_view& text, std::string_view literal) {
    if (!text.starts_with(literal)) return false;
    text.remove_prefix(literal.size());
    return true;
}

// Takes one number as "%lu" does where long has 32 bits: white space before it is skipped, a sign is allowed
// (the kernel prints "no limit" as -1), and a number of more than 32 bits is the largest one.
bool take_counter(std::string_view& text, std::uint32_t& counter) {
    constexpr std::uint64_t LARGEST = std::numeric_limits<std::uint32_t>::max();
    std::string_view rest = text;
    skip_space(rest);
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) rest.remove_prefix(1);
    std::uint64_t number = 0;
    std::size_t digits = 0;
    while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9') {
        number = number * 10 + static_cast<std::uint64_t>(rest[digits] - '0');
        if (number > LARGEST) number = LARGEST + 1;
        ++digits;
    }
    if (digits == 0) return false;
    rest.remove_prefix(digits);
    if (number > LARGEST) {
        counter = static_cast<std::uint32_t>(LARGEST);
    } else {
        counter = static_cast<std::uint32_t>(negative ? 0 - number : number);
    }
    text = rest;
    return true;
}

// Takes the counters of a value line, as far as the line goes.
void take_counters(std::string_view line, std::string_view label, unsigned unused,
                   std::span<std::uint32_t> counters) {
    if (!take_literal(line, label)) return;
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

// Takes "name number" and the white space around it.
bool take_line(std::string_view& text, std::string_view name, std::uint32_t& counter) {
    skip_space(text);
    return take_literal(text, name) && take_counter(text, counter);
}

bool take_lines(std::string_view& text, std::span<const CounterLine> lines, std::span<std::uint32_t> words) {
    for (const auto& [name, word] : lines) {
        if (!take_line(text, name, words[word])) return false;
    }
    return true;
}

std::string read_all(std::FILE* file) {
    std::string text;
    char block[4096];
    while (const std::size_t length = std::fread(block, 1, sizeof block, file))
        text.append(block, length);
    return text;
}

} // namespace

int ipconf_linux_get_ip_stats(KernelIpCounters* ip, KernelIcmpCounters* icmp, KernelTcpCounters* tcp,
                              KernelUdpCounters* udp) {
    std::FILE* file = open_kernel_file("snmp");
    if (file == nullptr) return 0;

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
        // At the file's end the values stay those of the section before, which bear another label.
        if (std::fgets(names, sizeof names, file) == nullptr) continue;
        if (std::fgets(values, sizeof values, file) == nullptr) continue;
        take_counters(values, label, unused, counters);
    }
    return std::fclose(file);
}

int ipconf_linux_get_ipv6_stats(std::uint32_t ifIndex, KernelIp6Counters* ip6, KernelIcmp6Counters* icmp6) {
    KernelIp6Counters ip6Scratch;
    KernelIcmp6Counters icmp6Scratch;
    if (ip6 == nullptr) ip6 = &ip6Scratch;
    if (icmp6 == nullptr) icmp6 = &icmp6Scratch;
    char interfaceName[256] = {};
    if (ifIndex != 0) netcfg_print_ifname(interfaceName, ifIndex);
    *ip6 = {};
    *icmp6 = {};

    const std::unique_ptr<std::FILE, CloseFile> file(
        open_kernel_file(ifIndex != 0 ? std::string("dev_snmp6/") + interfaceName : "snmp6"));
    if (!file) return 0;
    const std::string content = read_all(file.get());
    std::string_view text = content;
    std::uint32_t scratch = 0;
    if (ifIndex != 0 && !take_line(text, "ifIndex", scratch)) return 0;
    if (take_lines(text, IP6_LINES, ip6->words)) take_lines(text, ICMP6_LINES, icmp6->words);
    return 0;
}
