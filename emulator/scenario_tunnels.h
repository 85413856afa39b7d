// Reads the profiles and tunnels of a scenario.
#ifndef KESTO_EMULATOR_SCENARIO_TUNNELS_H
#define KESTO_EMULATOR_SCENARIO_TUNNELS_H

#include <map>

#include "emulator/scenario_draft.h"
#include "emulator/scenario_reader.h"
#include "emulator/switch_state.h"
#include "platform/platform_records.h"

namespace emulator {

// A tunnel's rows: the link, its errors and its TCP connections.
struct Tunnel {
    LinkKey key;
    FcipLinkEntry row{};
    LinkErrorCounters errors{};
    std::map<TcpConnectionKey, FcipTcpConnEntry> connections;

    void enter(SwitchState& state) const; // replaces the rows of the same keys
};

void read_profile(const Reader& object, Draft& draft);
void read_tunnel(const Reader& object, Draft& draft);

// A tunnel that is not entered yet: one that a fault adds.
Tunnel tunnel_of(const Reader& object, const Draft& draft);

} // namespace emulator

#endif
