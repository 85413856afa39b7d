#include "tests/provider/tunnel_switch.h"
#include "tests/support/rows.h"

#include <algorithm>

namespace provider_tests {

using test_support::address;
using test_support::port_row;

void TunnelSwitchTest::SetUp() {
    ProviderTest::SetUp();
    emulator::load_empty();
    emulator::set_system(HOST, "switch-a", {0x20, 0x00, 0x00, 0x0D, 0xEC, 0x01, 0x02, 0x03});
    emulator::add_vsan({10, "ten", true, "20:0a:00:0d:ec:12:34:56"});
    emulator::add_port(port_row(17, FCIP_TYPE, 10));
    emulator::add_port(port_row(ETHERNET_PORT, ETHERNET_TYPE, 10));

    profile = test_support::entity_row(3);
    profile.kfmFcipEntityAddress = address("10.1.1.1");
    profile.kfmFcipEntityTcpPort = 3225;
    profile.kfmFcipEntitySackOption = 1;
    profile.kfmFcipEntityPmtuEnable = 1;
    profile.kfmFcipEntityKeepAliveTimeout = 60;
    profile.kfmFcipEntityMaxRetransmissions = 4;
    profile.kfmFcipEntityMaxBandwidth = 1000000;

    link = test_support::link_row(3, 4, 17);
    const std::uint8_t remoteWwn[8] = {0x20, 0x00, 0x00, 0x0D, 0xEC, 0x04, 0x05, 0x06};
    std::copy(std::begin(remoteWwn), std::end(remoteWwn), link.kfmFcipLinkRemFcipEntityWWN);
    link.kfmFcipLinkRemFcipEntityId = 7;
    link.kfmFcipLinkRemFcipEntityAddress = address("10.1.1.2");
    link.kfmFcipLinkExtTcpRemPort = 3226;
    link.kfmFcipLinkExtEthIfIndex = ETHERNET_PORT;
    link.kfmFcipLinkExtIpCompression = 2;
    update();
    emulator::clear_calls();
}

void TunnelSwitchTest::update() {
    emulator::add_entity(profile);
    emulator::add_link(link);
}

void TunnelSwitchTest::add_two_tunnels() {
    for (const std::uint32_t next : {1u, 2u}) {
        FcipLinkEntry row = link;
        row.kfmFcipLinkIndex += next;
        row.kfmFcipLinkIfIndex += next;
        emulator::add_port(port_row(row.kfmFcipLinkIfIndex, FCIP_TYPE, 10));
        emulator::add_link(row);
    }
    emulator::clear_calls();
}

std::vector<std::string> entered(const std::string& output) {
    const std::string mark = "Entering ";
    std::vector<std::string> names;
    for (std::size_t at = output.find(mark); at != std::string::npos; at = output.find(mark, at + 1)) {
        const std::size_t begin = at + mark.size();
        names.push_back(output.substr(begin, output.find_first_of(" \n", begin) - begin));
    }
    return names;
}

std::vector<std::string> calls_of(const std::vector<std::string>& calls, const std::string& name) {
    std::vector<std::string> chosen;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(chosen),
                 [&](const std::string& call) { return call == name || call.starts_with(name + " "); });
    return chosen;
}

} // namespace provider_tests
