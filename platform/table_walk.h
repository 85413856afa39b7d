// The walks over the platform's tables. There is one scheme: ask for the row that follows a key, look at the
// row, make its key the next one. The first failure ends the walk; a success without a row ends it too, or is
// asked for again, as the walk chooses.
#ifndef KESTO_PLATFORM_TABLE_WALK_H
#define KESTO_PLATFORM_TABLE_WALK_H

#include <cstdint>
#include <utility>

#include "platform/circle_guard.h"
#include "platform/platform_records.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"

// How a walk ended.
enum class WalkEnd {
    Stopped,       // the visitor had seen enough
    NoRow,         // the table's end, or a failure without a row
    FailedWithRow, // a failure that brought a row all the same (it has been released)
};

enum class Visit { GoOn, Stop };

// What a success without a row means: the table's end, or that the request is to be repeated.
enum class EmptyAnswer { Ends, IsRepeated };

// A request that has been repeated so often in a row will not be answered with a row any more.
inline constexpr unsigned MOST_REPEATS = 65536;

// next(key, row) asks for the row that follows the key and returns the platform's status; keyOf(row) is the
// row's key; visit(row) looks at it.
template <typename Row, typename Key, typename Next, typename KeyOf, typename Visitor>
WalkEnd walk_table(Key key, EmptyAnswer emptyAnswer, Next next, KeyOf keyOf, Visitor visit) {
    CircleGuard<Key> guard;
    unsigned repeats = 0;
    for (;;) {
        PlatformRow<Row> row;
        const int status = fetch_row(row, [&](Row** out) { return next(key, out); });
        if (status != 0) return row ? WalkEnd::FailedWithRow : WalkEnd::NoRow;
        if (!row) {
            if (emptyAnswer == EmptyAnswer::Ends || repeats == MOST_REPEATS) return WalkEnd::NoRow;
            ++repeats;
            continue;
        }
        repeats = 0;
        key = keyOf(*row);
        if (guard.is_circle(key)) return WalkEnd::NoRow;
        if (visit(static_cast<const Row&>(*row)) == Visit::Stop) return WalkEnd::Stopped;
    }
}

// All FCIP links (tunnels).
template <typename Visitor>
WalkEnd walk_links(std::uint32_t queue, Visitor visit) {
    return walk_table<FcipLinkEntry>(
        std::pair<std::uint32_t, std::uint32_t>{0, 0}, EmptyAnswer::Ends,
        [queue](const auto& key, FcipLinkEntry** row) {
            const FcipLinkKey request{key.first, key.second};
            return fcip_get_link_entry(queue, 2, &request, row, 30, 1);
        },
        [](const FcipLinkEntry& row) {
            return std::pair{row.kfmFcipEntityId, row.kfmFcipLinkIndex};
        },
        visit);
}

// All FCIP entities (profiles).
template <typename Visitor>
WalkEnd walk_entities(std::uint32_t queue, EmptyAnswer emptyAnswer, Visitor visit) {
    return walk_table<FcipEntityEntry>(
        std::uint32_t{0}, emptyAnswer,
        [queue](std::uint32_t id, FcipEntityEntry** row) {
            return fcip_get_entity_entry(queue, 2, id, row, 5);
        },
        [](const FcipEntityEntry& row) { return row.kfmFcipEntityId; }, visit);
}

// The port manager returns the Ethernet ports as one run after this if-index; ports of other types follow.
inline constexpr std::uint32_t BEFORE_FIRST_ETHERNET_PORT = 0x9AFFFFFF;
// The interface type of Ethernet ports.
inline constexpr std::uint8_t ETHERNET_INTERFACE = 26;

// All ports after BEFORE_FIRST_ETHERNET_PORT.
template <typename Visitor>
WalkEnd walk_ports(Visitor visit) {
    return walk_table<PortInfo>(
        BEFORE_FIRST_ETHERNET_PORT, EmptyAnswer::Ends,
        [](std::uint32_t ifIndex, PortInfo** row) { return pm_cim_get_port_info(row, 0, ifIndex, mts_q); },
        [](const PortInfo& row) { return std::uint32_t{row.ifIndex}; }, visit);
}

// True when the interface's type can be had and is Ethernet.
inline bool is_ethernet(std::uint32_t ifIndex) {
    std::uint8_t type = 0;
    return if_index_get_type(ifIndex, &type) == 0 && type == ETHERNET_INTERFACE;
}

// The first run of Ethernet ports: visit(port) for each, until the first port that is not Ethernet.
template <typename Visitor>
WalkEnd walk_ethernet_ports(Visitor visit) {
    return walk_ports([&](const PortInfo& port) {
        if (!is_ethernet(port.ifIndex)) return Visit::Stop;
        visit(port);
        return Visit::GoOn;
    });
}

#endif
