// What the emulated switch holds: its tables, each in key order, and the values that move with its clock.
//
// A table is a std::map, which has the order in which a switch answers get-next requests: numeric, unsigned
// and, for keys of several numbers, lexicographic.
#ifndef KESTO_EMULATOR_SWITCH_STATE_H
#define KESTO_EMULATOR_SWITCH_STATE_H

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"

namespace emulator {

using LinkKey = std::pair<std::uint32_t, std::uint32_t>;
using TcpConnectionKey = std::tuple<std::uint32_t, std::uint32_t, std::uint16_t, std::uint16_t>;

inline LinkKey table_key(const FcipLinkKey& key) {
    return {key.entityId, key.linkIndex};
}
inline TcpConnectionKey table_key(const FcipTcpConnKey& key) {
    return {key.entityId, key.linkIndex, key.localPort, key.remotePort};
}

// The nine error counters of a link and the four that only its TCP statistics show, in the row's order.
using LinkErrorCounters = std::array<Counter, 13>;

// The real time since the switch was loaded, or a time at which the clock is stopped.
class Clock {
  public:
    double seconds() const;
    void start() { loaded_ = std::chrono::steady_clock::now(); }
    void stop_at(double seconds) { stopped_ = seconds; }
    void run() { stopped_.reset(); }

  private:
    std::chrono::steady_clock::time_point loaded_ = std::chrono::steady_clock::now();
    std::optional<double> stopped_;
};

struct SwitchState {
    std::string hostName = "switch";
    std::string systemName = "switch";
    std::array<std::uint8_t, 8> wwn{};
    IpMiscCfg ipConfiguration{};
    Clock clock;

    std::map<LinkKey, FcipLinkEntry> links;
    std::map<LinkKey, LinkErrorCounters> linkErrors;
    std::map<TcpConnectionKey, FcipTcpConnEntry> tcpConnections;
    std::map<std::uint32_t, FcipEntityEntry> entities;
    std::map<std::uint32_t, Port> ports;
    std::map<std::uint32_t, Vsan> vsans;
    std::vector<Fault> faults; // those of the scenario

    std::uint64_t value(const Counter& counter) const;
    const Port* find_port(std::uint32_t ifIndex) const;
};

// The port with its names and its node, where they were left open.
Port completed(Port port);

} // namespace emulator

#endif
