// Reading and writing numbers at byte positions of messages and packed records, whatever the machine.
#ifndef KESTO_PLATFORM_BYTE_ORDER_H
#define KESTO_PLATFORM_BYTE_ORDER_H

#include <cstddef>
#include <cstdint>
#include <cstring>

// Big-endian numbers of the wire.
inline std::uint16_t big_endian_16(const unsigned char* at) {
    return static_cast<std::uint16_t>(at[0] << 8 | at[1]);
}
inline std::uint32_t big_endian_32(const unsigned char* at) {
    return std::uint32_t{at[0]} << 24 | std::uint32_t{at[1]} << 16 | std::uint32_t{at[2]} << 8 | at[3];
}
inline std::uint64_t big_endian_64(const unsigned char* at) {
    return std::uint64_t{big_endian_32(at)} << 32 | big_endian_32(at + 4);
}
inline void put_big_endian_16(unsigned char* at, std::uint16_t value) {
    at[0] = static_cast<unsigned char>(value >> 8);
    at[1] = static_cast<unsigned char>(value);
}
inline void put_big_endian_32(unsigned char* at, std::uint32_t value) {
    put_big_endian_16(at, static_cast<std::uint16_t>(value >> 16));
    put_big_endian_16(at + 2, static_cast<std::uint16_t>(value));
}

// Host-order numbers at any position.
template <typename Number>
Number host_order(const void* record, std::size_t position) {
    Number value;
    std::memcpy(&value, static_cast<const unsigned char*>(record) + position, sizeof value);
    return value;
}
inline void put_host_order_32(unsigned char* at, std::uint32_t value) {
    std::memcpy(at, &value, sizeof value);
}

// A 64-bit counter that a row keeps as two host-order words, the low word first.
inline std::uint64_t word_pair(const void* row, std::size_t lowWord) {
    const auto low = host_order<std::uint32_t>(row, 4 * lowWord);
    const auto high = host_order<std::uint32_t>(row, 4 * (lowWord + 1));
    return std::uint64_t{high} << 32 | low;
}

#endif
