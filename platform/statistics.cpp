#include "platform/statistics.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "common/results.h"
#include "common/trace.h"
#include "platform/byte_order.h"
#include "platform/key_number.h"
#include "platform/platform_services.h"

namespace {

// The line card's statistics service, its requests, and what is asked of the transport when it waits.
constexpr std::uint32_t STATISTICS_SERVICE = 943;
constexpr std::uint32_t IP_STATISTICS = 1917;
constexpr std::uint32_t ETHERNET_STATISTICS = 1918;
constexpr std::uint32_t TCP_STATISTICS = 1920;
constexpr std::uint32_t RECEIVE_OPTION = 5;

// Positions in a request.
constexpr std::size_t REQUEST_PORT = 4;
constexpr std::size_t REQUEST_IF_INDEX = 24;
constexpr std::size_t REQUEST_FLAG = 28;
constexpr std::size_t REQUEST_ACCESS_POINT = 32;
constexpr std::size_t REQUEST_LENGTH = 32;
constexpr std::size_t TCP_REQUEST_LENGTH = 40;

// Positions in a reply, and in the messages that continue a TCP reply.
constexpr std::size_t REPLY_STATUS = 10;
constexpr std::size_t MORE_FOLLOWS = 36;
// More messages than that are no series any more.
constexpr unsigned MAX_CONTINUATIONS = 65536;

constexpr std::uint16_t NO_PORT = 0xFFFF;

std::span<const unsigned char> payload_of(const MtsMessage& message) {
    const auto* bytes = static_cast<const unsigned char*>(mts_payload_get(&message));
    return {bytes, bytes != nullptr ? mts_payload_size(&message) : 0};
}

bool carries_16_bits_at(std::span<const unsigned char> payload, std::size_t position) {
    return payload.size() >= position + sizeof(std::uint16_t);
}

// The status that a message carries, or missing when the message ends before it.
int status_of(std::span<const unsigned char> payload, int missing) {
    return carries_16_bits_at(payload, REPLY_STATUS) ? big_endian_16(&payload[REPLY_STATUS]) : missing;
}

// Copies what the payload holds; the rest of the record reads as zero.
void copy_payload(const MtsMessage& message, std::span<unsigned char> record) {
    const auto payload = payload_of(message);
    const std::size_t held = std::min(payload.size(), record.size());
    std::fill(std::copy_n(payload.begin(), held, record.begin()), record.end(), std::uint8_t{0});
}

// A call of the transport that fails may have stored a message all the same.
void drop_if_held(std::uint32_t queue, MtsMessage* message) {
    if (message->handle != nullptr) mts_drop(queue, message);
}

// Waits for a message; the transport's status. A success that brings no message is a failure.
int receive_message(std::uint32_t queue, MtsMessage* message, std::uint32_t token, std::uint32_t option) {
    MtsSelector selector{};
    selector.kind = 1;
    selector.option = option;
    selector.token = token;
    message->handle = nullptr;
    const int status = mts_recv(queue, message, &selector);
    if (status == 0) return message->handle != nullptr ? 0 : -1;
    drop_if_held(queue, message);
    return status;
}

std::uint16_t port_of(std::uint32_t ifIndex) {
    std::uint16_t slot = 0;
    std::uint16_t port = 0;
    if (if_index_get_slot(ifIndex, &slot) != 0 || if_index_get_port(ifIndex, &port) != 0) return NO_PORT;
    return port;
}

// What the three requests have in common. The index goes out in network form; slot, port and node are those
// of lookupIndex.
std::uint32_t begin_request(std::span<unsigned char> request, std::uint32_t networkIndex,
                            std::uint32_t lookupIndex) {
    put_big_endian_16(&request[REQUEST_PORT], port_of(lookupIndex));
    put_host_order_32(&request[REQUEST_IF_INDEX], networkIndex);
    return idxmap_node_by_if_index(lookupIndex);
}

// Takes the messages that continue a TCP reply off the queue, up to the one that says that none follows.
int drain_continuations() {
    for (unsigned taken = 0; taken < MAX_CONTINUATIONS; ++taken) {
        MtsMessage message{};
        if (receive_message(mts_q, &message, 0, RECEIVE_OPTION) != 0) return -1;
        const auto payload = payload_of(message);
        const int status = status_of(payload, 0);
        const bool more = carries_16_bits_at(payload, MORE_FOLLOWS) &&
                          host_order<std::uint16_t>(payload.data(), MORE_FOLLOWS) != 0;
        mts_drop(mts_q, &message);
        if (status != 0) return -1;
        if (!more) return 0;
    }
    return -1;
}

} // namespace

int stats_receive(std::uint32_t queue, MtsMessage* reply, std::uint32_t token, std::uint32_t option) {
    const int received = receive_message(queue, reply, token, option);
    if (received != 0) return received;
    const int status = status_of(payload_of(*reply), -1);
    if (status != 0) mts_drop(queue, reply);
    return status;
}

int stats_request(std::uint32_t queue, std::uint32_t node, std::uint32_t service, std::uint32_t code,
                  const void* payload, std::uint32_t length, MtsMessage* reply, std::uint32_t option) {
    MtsMessage request{};
    if (mts_send(queue, node, service, code, payload, length, &request, 0, 0) != 0) {
        drop_if_held(queue, &request);
        return -1;
    }
    const int status = stats_receive(queue, reply, mts_rr_token_get(&request), option);
    mts_drop(queue, &request);
    return status;
}

int get_ip_stats(std::uint32_t queue, std::uint32_t ifIndex, std::uint32_t wantCopy, IpStatsReply** out) {
    std::fputs("\n inside get_ip_stats\n ", stdout);
    std::array<unsigned char, REQUEST_LENGTH> request{};
    const std::uint32_t node = begin_request(request, hton_if_index(ifIndex), ifIndex);
    put_big_endian_32(&request[REQUEST_FLAG], wantCopy);

    *out = nullptr;
    MtsMessage reply{};
    const int status = stats_request(queue, node, STATISTICS_SERVICE, IP_STATISTICS, request.data(),
                                     request.size(), &reply, RECEIVE_OPTION);
    // Without a copy the reply stays held by the transport.
    if (status != 0 || wantCopy == 0) return status;
    const std::size_t size = std::max<std::size_t>(mts_payload_size(&reply), sizeof(IpStatsReply));
    auto* block = static_cast<unsigned char*>(std::malloc(size));
    if (block != nullptr) copy_payload(reply, {block, size});
    mts_drop(queue, &reply);
    if (block == nullptr) return -1;
    *out = reinterpret_cast<IpStatsReply*>(block);
    return 0;
}

int get_ethernetport_statistics(std::uint32_t ifIndex, EthMacStats* out) {
    std::array<unsigned char, REQUEST_LENGTH> request{};
    const std::uint32_t networkIndex = hton_if_index(ifIndex);
    const std::uint32_t node = begin_request(request, networkIndex, hton_if_index(networkIndex));
    put_host_order_32(&request[REQUEST_FLAG], 1);

    MtsMessage reply{};
    if (stats_request(mts_q, node, STATISTICS_SERVICE, ETHERNET_STATISTICS, request.data(), request.size(),
                      &reply, RECEIVE_OPTION) != 0) {
        std::puts("Failed retrieval of mac stats information from linecard");
        return -1;
    }
    copy_payload(reply, {reinterpret_cast<unsigned char*>(out), sizeof *out});
    mts_drop(mts_q, &reply);
    trace_exiting(__func__);
    return 0;
}

int get_tcp_stats(std::uint32_t ifIndex, TcpStatsReply* out) {
    trace_entering(__func__);
    std::printf("if_index : %d \n", as_printed(ifIndex));
    std::array<unsigned char, TCP_REQUEST_LENGTH> request{};
    const std::uint32_t networkIndex = hton_if_index(ifIndex);
    const std::uint32_t node = begin_request(request, networkIndex, hton_if_index(networkIndex));
    put_host_order_32(&request[REQUEST_FLAG], 1);
    put_big_endian_32(&request[REQUEST_ACCESS_POINT], mts_sap_get(mts_q));

    MtsMessage reply{};
    if (stats_request(mts_q, node, STATISTICS_SERVICE, TCP_STATISTICS, request.data(), request.size(), &reply,
                      RECEIVE_OPTION) != 0) {
        return -1;
    }
    copy_payload(reply, {reinterpret_cast<unsigned char*>(out), sizeof *out});
    mts_drop(mts_q, &reply);
    if (drain_continuations() != 0) return -1;
    trace_exiting(__func__);
    return 0;
}

void request_tcp_counters(std::uint32_t ifIndex) {
    TcpStatsReply unused{};
    if (get_tcp_stats(ifIndex, &unused) != 0) std::puts("******* Error ******** ");
}

// Offered to other code of the switch, as the dump below; nothing here calls them.
CMPIInstance* populate_fcip_statistics(CMPIInstance* instance, const FcipLinkErrors* errors) {
    // Word pairs 1 to 9 of the row, in this order.
    static constexpr const char* COUNTERS[] = {
        "FcipLossofFcSynchs", "FcipSfNotRcv",       "FcipSfRespNotRcv",
        "FcipSfRespMismatch", "FcipSfInvalidNonce", "FcipDuplicateSfRcv",
        "FcipSfInvalidWWN",   "FcipBB2LkaTimeOut",  "FcipSntpTimeStampExp",
    };
    trace_entering(__func__);
    if (!is_object(instance) || instance->hdl == nullptr || errors == nullptr) return instance;
    std::size_t lowWord = 2;
    for (const char* counter : COUNTERS) {
        CMPIValue value{};
        value.uint64 = word_pair(errors, lowWord);
        instance->ft->setProperty(instance, counter, &value, CMPI_uint64);
        lowWord += 2;
    }
    trace_exiting(__func__);
    return instance;
}

int print_errors(const unsigned char* record) {
    constexpr std::size_t WORDS[] = {259, 263, 267, 271};
    // Of the 64-bit counters only the low words show.
    constexpr std::size_t COUNTERS[] = {275, 283, 291, 299, 307, 315, 323, 331};
    int printed = 0;
    for (const std::size_t position : WORDS) {
        printed = std::printf(" %d \n", host_order<std::int32_t>(record, position));
    }
    for (const std::size_t position : COUNTERS) {
        const auto counter = host_order<std::uint64_t>(record, position);
        printed = std::printf(" %d \n", as_printed(static_cast<std::uint32_t>(counter)));
    }
    return printed;
}
