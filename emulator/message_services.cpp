// The message transport as its callers see it. The line card that a request is sent to answers at once; the
// answer waits on the queue until it is received.
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "emulator/call.h"
#include "emulator/control.h"
#include "emulator/exported_services.h"
#include "emulator/line_card.h"
#include "emulator/runtime.h"
#include "emulator/text_format.h"
#include "emulator/transport.h"
#include "platform/platform_records.h"

using namespace emulator;

namespace {

Message* message_of(const Call& call, const MtsMessage* slot) {
    Message* message = runtime().transport.held(slot);
    call.require(message != nullptr, "no message, or one that was dropped");
    return message;
}

} // namespace

int init_mts(std::uint32_t* queue) {
    const Call call("init_mts", CallerLock::Needed);
    if (!call.require(queue != nullptr, "the out-parameter is NULL")) return FAILED;
    if (call.failed()) return call.status() < 0 ? call.status() : FAILED; // only a negative result is failure
    if (runtime().refused) return FAILED;
    runtime().transport.open = true;
    *queue = QUEUE_HANDLE;
    return OK;
}

int mts_send(std::uint32_t queue, std::uint32_t node, std::uint32_t service, std::uint32_t code,
             const void* payload, std::uint32_t length, MtsMessage* request, std::uint32_t flags,
             std::uint32_t priority) {
    const Call call("mts_send", CallerLock::Needed, [&] {
        return format("node=0x%04x service=%u code=%u length=%u", node, service, code, length);
    });
    if (!call.require((payload != nullptr || length == 0) && request != nullptr,
                      "no payload or no message slot") ||
        !call.usable(queue)) {
        return FAILED;
    }
    call.require(flags == 0 && priority == 0, "the constant arguments are not 0 and 0");
    if (call.failed()) return call.status();
    if (!node_exists(node)) return FAILED;

    Transport& transport = runtime().transport;
    const std::uint32_t token = transport.next_token();
    const std::span<const std::uint8_t> bytes(static_cast<const std::uint8_t*>(payload), length);
    if (runtime().recording) {
        runtime().requests.push_back({node, service, code, token, {bytes.begin(), bytes.end()}});
    }
    transport.hand_out(std::make_unique<Message>(token, bytes), request);
    answer_request({node, service, code, token, bytes});
    return OK;
}

std::uint32_t mts_rr_token_get(const MtsMessage* request) {
    const Call call("mts_rr_token_get", CallerLock::NotNeeded);
    const Message* message = message_of(call, request);
    return message == nullptr ? 0 : message->token();
}

int mts_recv(std::uint32_t queue, MtsMessage* reply, const void* selector) {
    MtsSelector wanted{};
    if (selector != nullptr) std::memcpy(&wanted, selector, sizeof wanted);
    const Call call("mts_recv", CallerLock::Needed,
                    [&] { return format("token=%u option=%u", wanted.token, wanted.option); });
    if (!call.require(reply != nullptr && selector != nullptr, "no message slot or no selector") ||
        !call.usable(queue)) {
        return FAILED;
    }
    bool rest = wanted.reserved_4 == 0;
    for (const std::uint32_t word : wanted.reserved_16) {
        rest = rest && word == 0;
    }
    call.require(wanted.kind == 1 && wanted.option == 5 && rest,
                 "a selector other than 1 in word 0, 5 in word 2, the token in word 3 and 0 elsewhere");
    if (call.failed()) return call.status();
    std::unique_ptr<Message> message = runtime().transport.receive(wanted.token);
    if (message == nullptr) return NO_ANSWER; // a switch would have waited
    runtime().transport.hand_out(std::move(message), reply);
    return OK;
}

void* mts_payload_get(const MtsMessage* message) {
    const Call call("mts_payload_get", CallerLock::NotNeeded);
    Message* held = message_of(call, message);
    return held == nullptr ? nullptr : held->payload();
}

std::uint32_t mts_payload_size(const MtsMessage* message) {
    const Call call("mts_payload_size", CallerLock::NotNeeded);
    const Message* held = message_of(call, message);
    return held == nullptr ? 0 : held->size();
}

int mts_drop(std::uint32_t queue, MtsMessage* message) {
    const Call call("mts_drop", CallerLock::Needed);
    if (!call.usable(queue)) return FAILED;
    const bool dropped = runtime().transport.drop(message);
    call.require(dropped, "no message, or one that was dropped");
    if (call.failed()) return call.status();
    return dropped ? OK : FAILED;
}

std::uint32_t mts_sap_get(std::uint32_t queue) {
    const Call call("mts_sap_get", CallerLock::Needed);
    return call.usable(queue) ? SERVICE_ACCESS_POINT : 0;
}
