#include "tests/assoc/golden_switch.h"

#include <algorithm>
#include <array>

#include "emulator/control.h"
#include "tests/support/rows.h"

using test_support::address;

namespace golden {

namespace {

constexpr std::array<const Tunnel*, 5> TUNNELS{&BY_NUMBER, &BY_IF_INDEX, &BY_ETHERNET, &BY_PROFILE,
                                               &BY_ADDRESS};

constexpr const char* VSAN_10 = "20:0a:00:0d:ec:aa:00:0a";
constexpr const char* VSAN_20 = "20:14:00:0d:ec:bb:00:14";

void install_port(std::uint32_t ifIndex, std::uint8_t type, std::uint32_t vsan) {
    emulator::Port port = test_support::port_row(ifIndex, type, vsan);
    port.address = port_address(ifIndex);
    port.mtu = 2300;
    port.ipStats = emulator::LineCardReply{};
    port.ethernetStats = emulator::LineCardReply{};
    port.tcpStats = emulator::LineCardReply{};
    emulator::add_port(port);
}

} // namespace

FcipLinkKey link_key(const Tunnel& tunnel) {
    return {tunnel.entity, tunnel.index};
}

FcipLinkEntry link_row(const Tunnel& tunnel) {
    FcipLinkEntry row = test_support::link_row(tunnel.entity, tunnel.index, tunnel.ifIndex);
    row.kfmFcipLinkRemFcipEntityId = tunnel.remoteEntity;
    row.kfmFcipLinkRemFcipEntityAddress = address(tunnel.remote);
    row.kfmFcipLinkExtTcpRemPort = 3225;
    row.kfmFcipLinkExtEthIfIndex = tunnel.ethernet;
    return row;
}

const char* vsan_name(const Tunnel& tunnel) {
    return tunnel.vsan == 10 ? VSAN_10 : VSAN_20;
}

std::string cut_vsan_name(const Tunnel& tunnel) {
    return std::string(vsan_name(tunnel)).substr(0, 20);
}

std::string port_address(std::uint32_t ifIndex) {
    return "02:00:00:00:00:" + std::to_string(ifIndex % 90 + 10);
}

std::uint32_t error_marker(const Tunnel& tunnel) {
    return 500000 + tunnel.entity;
}

void install() {
    emulator::load_empty();
    emulator::set_system(HOST, SYSTEM, {0x20, 0x00, 0x00, 0x0d, 0xec, 0x11, 0x22, 0x33});
    emulator::set_clock(0);
    emulator::add_vsan({1, "default", true, "20:01:00:0d:ec:00:00:01"});
    emulator::add_vsan({10, "VSAN10", true, VSAN_10});
    emulator::add_vsan({20, "VSAN20", true, VSAN_20});
    for (const Tunnel* tunnel : TUNNELS) {
        emulator::add_link(link_row(*tunnel));
        FcipEntityEntry profile = test_support::entity_row(tunnel->entity);
        profile.kfmFcipEntityAddress = address(tunnel->local);
        profile.kfmFcipEntityTcpPort = 3225;
        emulator::add_entity(profile);
        FcipLinkErrors errors{tunnel->entity, tunnel->index, {}};
        errors.counters[0] = error_marker(*tunnel);
        errors.counters[24] = tunnel->ethernet; // word 26, where a link row has its Ethernet port
        emulator::set_link_errors(errors);
        install_port(tunnel->ethernet, test_support::GIGABIT_ETHERNET_PORT, 1);
    }
    // Port 7 ends as the interface of BY_IF_INDEX.
    for (const Tunnel* tunnel : TUNNELS) {
        install_port(tunnel->ifIndex, test_support::FCIP_PORT, tunnel->vsan);
    }
    install_port(GIGABIT_PORT, test_support::GIGABIT_ETHERNET_PORT, 1);
    install_port(GIGABIT_PORT + 0x1000, test_support::GIGABIT_ETHERNET_PORT, 1);
}

const std::vector<Probe> PROBES{
    {"7_anything",
     {{Reading::TunnelNumber, &BY_NUMBER},
      {Reading::IfIndexToken, &BY_IF_INDEX},
      {Reading::IfIndex, &BY_IF_INDEX},
      {Reading::EthernetIfIndex, &BY_ETHERNET},
      {Reading::Entity, &BY_PROFILE}}},
    {"7:anything",
     {{Reading::TunnelNumber, &BY_NUMBER},
      {Reading::IfIndexToken, &BY_IF_INDEX},
      {Reading::IfIndex, &BY_IF_INDEX},
      {Reading::EthernetIfIndex, &BY_ETHERNET},
      {Reading::Entity, &BY_PROFILE}}},
    {"_7",
     {{Reading::TunnelNumber, &BY_NUMBER},
      {Reading::IfIndexToken, &BY_IF_INDEX},
      {Reading::EthernetIfIndex, &BY_ETHERNET}}},
    {":7", {{Reading::EthernetIfIndex, &BY_ETHERNET}}},
    {"0_7", {{Reading::RemoteIfIndex, &BY_IF_INDEX}}},
    {"0_10.0.0.7", {{Reading::RemoteAddress, &BY_ADDRESS}}},
    {"999_9", {}},
    {"", {}},  // no token to read
    {"0", {}}, // none after the 0 that a remote end's key begins with
};

const Tunnel* Probe::tunnel(Reading reading) const {
    const auto found = tunnels.find(reading);
    return found == tunnels.end() ? nullptr : found->second;
}

const Probe& hit_of(Reading reading) {
    return *std::find_if(PROBES.begin(), PROBES.end(),
                         [&](const Probe& probe) { return probe.tunnel(reading) != nullptr; });
}

std::string hit_key(Reading reading) {
    return reading == Reading::Port ? GIGABIT_PORT_TEXT : hit_of(reading).key;
}

} // namespace golden
