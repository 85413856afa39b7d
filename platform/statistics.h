// Live counters of an interface, asked from the line card that carries it with one request/reply exchange
// over the platform's message transport.
//
// All functions expect the provider lock to be held. Every reply is dropped before a function returns, but
// for get_ip_stats without a copy, and for stats_request and stats_receive, whose caller drops it.
#ifndef KESTO_PLATFORM_STATISTICS_H
#define KESTO_PLATFORM_STATISTICS_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "common/export.h"
#include "platform/platform_records.h"

extern "C" {

// IP counters of a Gigabit Ethernet port. With wantCopy the whole reply is stored in *out, a malloc'ed block
// of at least sizeof(IpStatsReply) bytes (zero after the reply's end) that belongs to the caller. 0, -1 when
// the request could not be sent, otherwise the transport's or the line card's status.
FCIP_API int get_ip_stats(std::uint32_t queue, std::uint32_t ifIndex, std::uint32_t wantCopy,
                          IpStatsReply** out);
// MAC counters of a Gigabit Ethernet port. 0 or -1.
FCIP_API int get_ethernetport_statistics(std::uint32_t ifIndex, EthMacStats* out);
// TCP counters of a Gigabit Ethernet port. 0, or -1 (after the counters were stored when only the end of the
// reply series is missing).
FCIP_API int get_tcp_stats(std::uint32_t ifIndex, TcpStatsReply* out);
// Sets the nine FCIP error counters of a link on the instance; returns the instance.
FCIP_API CMPIInstance* populate_fcip_statistics(CMPIInstance* instance, const FcipLinkErrors* errors);
// Dumps the counters of a packed port record (339 bytes) to standard output; returns the last print's result.
FCIP_API int print_errors(const unsigned char* record);
// Sends one request and waits for its reply, which the handle then holds. 0, or a non-zero status with no
// reply held.
FCIP_API int stats_request(std::uint32_t queue, std::uint32_t node, std::uint32_t service, std::uint32_t code,
                           const void* payload, std::uint32_t length, MtsMessage* reply,
                           std::uint32_t option);
// Receives the reply with this token (0 = whatever comes next) and checks its status.
FCIP_API int stats_receive(std::uint32_t queue, MtsMessage* reply, std::uint32_t token, std::uint32_t option);

} // extern "C"

// Asks the line card for the TCP counters of a port. No property shows them; a failure is a line of output.
void request_tcp_counters(std::uint32_t ifIndex);

#endif
