// The walks over the platform's tables. There is one scheme: ask for the row that follows a key, look at the
// row, make its key the next one; the first failure ends the walk, and so does a success without a row.
//
// A platform that keeps handing out rows it has handed out before would hold the provider lock for ever.
// Every walk remembers one of its keys, a later one each time its length has doubled, and ends when it has
// met remembered keys many times: a table of any size in any order is walked whole, even one that holds a key
// more than once, and a circle is left.
#ifndef KESTO_PLATFORM_TABLE_WALK_H
#define KESTO_PLATFORM_TABLE_WALK_H

#include <cstdint>
#include <utility>

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

// What a success without a row means: the end, or a request to repeat.
enum class EmptyAnswer { Ends, IsRepeated };

// next(key, row) asks for the row behind key and returns the platform's status; key_of(row) is the row's key;
// visit(row) looks at it.
template <typename Row, typename Key, typename Next, typename KeyOf, typename Visitor>
WalkEnd walk_table(Key key, EmptyAnswer emptyAnswer, Next next, KeyOf keyOf, Visitor visit) {
    constexpr unsigned MANY_MEETINGS = 100;
    Key remembered{};
    unsigned meetings = 0;
    std::uint64_t visited = 0;
    std::uint64_t rememberAgainAt = 1;
    for (;;) {
        PlatformRow<Row> row;
        const int status = fetch_row(row, [&](Row** out) { return next(key, out); });
        if (status != 0) return row ? WalkEnd::FailedWithRow : WalkEnd::NoRow;
        if (!row) {
            if (emptyAnswer == EmptyAnswer::IsRepeated) continue;
            return WalkEnd::NoRow;
        }
        key = keyOf(*row);
        if (visited > 0 && key == remembered && ++meetings == MANY_MEETINGS) return WalkEnd::NoRow;
        if (++visited == rememberAgainAt) {
            remembered = key;
            rememberAgainAt *= 2;
        }
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

// The port manager returns the Ethernet ports as one run behind this if-index; ports of other types follow.
inline constexpr std::uint32_t BEFORE_FIRST_ETHERNET_PORT = 0x9AFFFFFF;
// The interface type of Ethernet ports.
inline constexpr std::uint8_t ETHERNET_INTERFACE = 26;

// All ports behind BEFORE_FIRST_ETHERNET_PORT.
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
