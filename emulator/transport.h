// The message transport's queue and the messages that its callers hold.
//
// A message that a caller holds is known by the address in its MtsMessage slot until it is dropped. A receive
// that names a token takes the message with this token, one that names none takes the next message.
#ifndef KESTO_EMULATOR_TRANSPORT_H
#define KESTO_EMULATOR_TRANSPORT_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <span>

#include "platform/platform_records.h"

namespace emulator {

inline constexpr std::uint32_t QUEUE_HANDLE = 17;         // what init_mts hands out
inline constexpr std::uint32_t SERVICE_ACCESS_POINT = 61; // of the caller's queue

class Message {
  public:
    Message(std::uint32_t token, std::span<const std::uint8_t> payload);
    std::uint32_t token() const { return token_; }
    std::uint32_t size() const { return size_; }
    std::uint8_t* payload() { return payload_.get(); }

    bool arrived = true; // false: it arrives only after a receive has waited for it in vain

  private:
    std::uint32_t token_;
    std::uint32_t size_;
    std::unique_ptr<std::uint8_t[]> payload_; // of exactly this size, so that overreads are noticed
};

class Transport {
  public:
    bool open = false;

    std::uint32_t next_token() { return ++lastToken_; }
    void enqueue(std::unique_ptr<Message> message);
    std::unique_ptr<Message> receive(std::uint32_t token); // null if nothing came

    void hand_out(std::unique_ptr<Message> message, MtsMessage* slot);
    Message* held(const MtsMessage* slot) const; // null if it is none, or was dropped
    bool drop(MtsMessage* slot);

    std::size_t held_count() const { return held_.size(); }
    std::size_t queued_count() const { return queue_.size(); }
    void clear_queue() { queue_.clear(); }
    void release_all();

  private:
    std::uint32_t lastToken_ = 0;
    std::deque<std::unique_ptr<Message>> queue_;
    std::map<const void*, std::unique_ptr<Message>> held_;
};

} // namespace emulator

#endif
