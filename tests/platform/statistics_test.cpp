#include "tests/platform/statistics_test.h"

#include <dlfcn.h>

#include <cstring>

#include "platform/platform_services.h"

namespace statistics {

std::vector<MtsSelector> selectors;

Bytes reply(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(1 + i * 7 % 251);
    }
    for (std::size_t i = 10; i < 12 && i < size; ++i) {
        bytes[i] = 0;
    }
    return bytes;
}

Bytes reply_with_status(std::uint8_t high, std::uint8_t low, std::size_t size) {
    Bytes bytes = reply(size);
    bytes.at(10) = high;
    bytes.at(11) = low;
    return bytes;
}

Bytes reply_in_record(std::size_t size, std::size_t recordSize) {
    Bytes bytes = reply(size);
    bytes.resize(recordSize, 0);
    return bytes;
}

Bytes continuation(std::uint16_t moreFollows, std::size_t size) {
    Bytes bytes(size);
    std::memcpy(bytes.data() + 36, &moreFollows, sizeof moreFollows);
    return bytes;
}

Bytes bytes_of(const void* data, std::size_t size) {
    const auto* first = static_cast<const std::uint8_t*>(data);
    return {first, first + size};
}

Bytes big_endian(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

Bytes host_order(std::uint32_t value) {
    return bytes_of(&value, sizeof value);
}

Bytes joined(std::initializer_list<Bytes> pieces) {
    Bytes all;
    for (const Bytes& piece : pieces) {
        all.insert(all.end(), piece.begin(), piece.end());
    }
    return all;
}

void Statistics::SetUp() {
    emulator::reset();
    emulator::load_empty();
    emulator::Port port;
    port.ifIndex = ETHERNET_PORT;
    port.slot = 3;
    port.port = PORT_NUMBER;
    port.node = LINE_CARD_NODE;
    emulator::add_port(port);
    emulator::clear_calls();
    selectors.clear();
    lock = std::make_unique<emulator::Locked>();
}

void Statistics::TearDown() {
    EXPECT_EQ(emulator::messages_outstanding(), 0U);
    lock.reset();
    EXPECT_EQ(emulator::misuse_report(), "");
}

} // namespace statistics

// Stands before the transport's receive and keeps each selector.
extern "C" __attribute__((visibility("default"))) int mts_recv(std::uint32_t queue, MtsMessage* message,
                                                               const void* selector) {
    MtsSelector copy;
    std::memcpy(&copy, selector, sizeof copy);
    statistics::selectors.push_back(copy);
    using Receive = int(std::uint32_t, MtsMessage*, const void*);
    static Receive* const TRANSPORT = reinterpret_cast<Receive*>(dlsym(RTLD_NEXT, "mts_recv"));
    return TRANSPORT(queue, message, selector);
}
