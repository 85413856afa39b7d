// The supervisor's own IP counters, read from the Linux kernel's files under /proc/net.
#ifndef KESTO_PLATFORM_KERNEL_STATS_H
#define KESTO_PLATFORM_KERNEL_STATS_H

#include <cstdint>

#include "common/export.h"

extern "C" {

// Counters in the order of the kernel's columns; see kernel_stats.cpp for the one exception.
struct KernelIpCounters {
    std::uint32_t words[17]; // InReceives ... FragCreates
};
struct KernelIcmpCounters {
    std::uint32_t words[26]; // InMsgs ... OutAddrMaskReps
};
struct KernelTcpCounters {
    std::uint32_t words[14]; // RtoAlgorithm ... OutRsts
};
struct KernelUdpCounters {
    std::uint32_t words[4]; // InDatagrams, NoPorts, InErrors, OutDatagrams
};
struct KernelIp6Counters {
    std::uint32_t words[23]; // LastChange, InReceives ... OutMcastPkts
};
struct KernelIcmp6Counters {
    std::uint32_t words[34]; // InMsgs ... OutRedirects
};

// Fills the records that are not null from /proc/net/snmp. Records are not cleared first; a line that does
// not match leaves the rest of its record as it was. The file's close status, 0 also when it cannot be
// opened.
FCIP_API int ipconf_linux_get_ip_stats(KernelIpCounters* ip, KernelIcmpCounters* icmp, KernelTcpCounters* tcp,
                                       KernelUdpCounters* udp);
// Clears and fills the records that are not null from the kernel's file of the interface (0 = whole host).
// The first line that does not match ends the reading. Always 0.
FCIP_API int ipconf_linux_get_ipv6_stats(std::uint32_t ifIndex, KernelIp6Counters* ip6,
                                         KernelIcmp6Counters* icmp6);

} // extern "C"

#endif
