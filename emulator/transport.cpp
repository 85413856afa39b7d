// Queueing, receiving and dropping of messages.
#include "emulator/transport.h"

#include <algorithm>
#include <utility>

namespace emulator {
namespace {

// Late answers that nobody fetches must not pile up in a server.
constexpr std::size_t LONGEST_QUEUE = 1024;

} // namespace

Message::Message(std::uint32_t token, std::span<const std::uint8_t> payload)
    : token_(token),
      size_(static_cast<std::uint32_t>(payload.size())),
      payload_(new std::uint8_t[payload.size()]) {
    std::copy(payload.begin(), payload.end(), payload_.get());
}

void Transport::enqueue(std::unique_ptr<Message> message) {
    if (queue_.size() == LONGEST_QUEUE) queue_.pop_front();
    queue_.push_back(std::move(message));
}

std::unique_ptr<Message> Transport::receive(std::uint32_t token) {
    const auto matches = [token](const auto& message) { return token == 0 || message->token() == token; };
    const auto found = std::find_if(queue_.begin(), queue_.end(), [&](const auto& message) {
        return message->arrived && matches(message);
    });
    if (found == queue_.end()) {
        for (const auto& message : queue_) {
            message->arrived = true;
        }
        return nullptr;
    }
    std::unique_ptr<Message> message = std::move(*found);
    queue_.erase(found);
    return message;
}

void Transport::hand_out(std::unique_ptr<Message> message, MtsMessage* slot) {
    slot->handle = message.get();
    held_.emplace(slot->handle, std::move(message));
}

Message* Transport::held(const MtsMessage* slot) const {
    if (slot == nullptr) return nullptr;
    const auto found = held_.find(slot->handle);
    return found == held_.end() ? nullptr : found->second.get();
}

bool Transport::drop(MtsMessage* slot) {
    if (slot == nullptr || held_.erase(slot->handle) == 0) return false;
    slot->handle = nullptr;
    return true;
}

void Transport::release_all() {
    held_.clear();
    queue_.clear();
}

} // namespace emulator
