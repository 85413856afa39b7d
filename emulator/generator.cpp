// Generated switches: three tunnels to a profile, one profile to a Gigabit Ethernet port, eight such ports to
// a line card. Every fourth profile runs over IPv6; the options of tunnels and profiles are drawn at random.
#include "emulator/generator.h"

#include <iterator>
#include <nlohmann/json.hpp>
#include <random>

#include "emulator/interface_types.h"
#include "emulator/text_format.h"

namespace emulator {
namespace {

using nlohmann::ordered_json;

constexpr std::uint32_t TUNNELS_OF_PROFILE = 3;
constexpr std::uint32_t PORTS_OF_CARD = 8;
constexpr std::uint32_t VSANS[] = {1, 20, 30, 40};

class Generator {
  public:
    explicit Generator(std::uint32_t seed) : random_(seed) {}

    ordered_json scenario(std::uint32_t tunnels) {
        const std::uint32_t profiles = (tunnels + TUNNELS_OF_PROFILE - 1) / TUNNELS_OF_PROFILE;
        ordered_json made;
        made["description"] = "Generated: " + std::to_string(tunnels) + " tunnels.";
        made["system"] = {
            {"hostName", "generated-sw1"}, {"name", "generated-sw1"}, {"wwn", "20:00:02:4b:53:00:00:03"}};
        made["ip"] = {{"forwarding", true}, {"defaultTtl", 64}};
        made["vsans"] = ordered_json::array();
        for (const std::uint32_t id : VSANS) {
            made["vsans"].push_back(
                {{"id", id}, {"domain", {{"systemName", format("2%03x024b53000003", id)}}}});
        }
        made["ports"] = ordered_json::array();
        for (std::uint32_t i = 0; i < tunnels; ++i) {
            made["ports"].push_back(fcip_interface(i));
        }
        for (std::uint32_t i = 0; i < profiles; ++i) {
            made["ports"].push_back(ethernet_port(i));
        }
        made["profiles"] = ordered_json::array();
        for (std::uint32_t i = 0; i < profiles; ++i) {
            made["profiles"].push_back(profile(i));
        }
        made["tunnels"] = ordered_json::array();
        for (std::uint32_t i = 0; i < tunnels; ++i) {
            made["tunnels"].push_back(tunnel(i));
        }
        return made;
    }

  private:
    // A plain remainder, since the library's distributions differ from one implementation to the next.
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    bool chance() { return below(2) == 1; }
    ordered_json counter(std::uint32_t largestStart, std::uint32_t largestRate) {
        return {{"start", below(largestStart)}, {"rate", 1 + below(largestRate)}};
    }

    static std::uint32_t card(std::uint32_t profile) { return profile / PORTS_OF_CARD + 1; }
    static std::uint32_t card_port(std::uint32_t profile) { return profile % PORTS_OF_CARD + 1; }
    static bool is_ipv6(std::uint32_t profile) { return profile % 4 == 3; }
    static std::string ethernet_name(std::uint32_t profile) {
        return format("GigabitEthernet%u/%u", card(profile), card_port(profile));
    }
    // In the profile's own network the near end is host 1, and the far ends are the hosts from 129 on.
    static std::string address(std::uint32_t profile, std::uint32_t host) {
        return is_ipv6(profile) ? format("2001:db8:%x::%x", profile + 1, host)
                                : format("10.%u.%u.%u", profile / 256, profile % 256, host);
    }

    ordered_json fcip_interface(std::uint32_t tunnel) {
        return {{"ifIndex", IF_INDEX_FCIP + tunnel + 1},
                {"type", IF_TYPE_FCIP},
                {"slot", card(tunnel / TUNNELS_OF_PROFILE)},
                {"port", tunnel + 1},
                {"vsan", VSANS[below(std::size(VSANS))]}};
    }

    ordered_json ethernet_port(std::uint32_t profile) {
        return {{"ifIndex", IF_INDEX_ETHERNET + (card(profile) << 16) + card_port(profile)},
                {"type", IF_TYPE_ETHERNET},
                {"slot", card(profile)},
                {"port", card_port(profile)},
                {"address", format("02:4b:53:%02x:%02x:%02x", card(profile) >> 8, card(profile) & 0xFF,
                                   card_port(profile))},
                {"vsan", 1},
                {"mtu", chance() ? 1500 : 9000},
                {"subnetMask", "255.255.255.0"},
                {"prefixLength", is_ipv6(profile) ? 64 : 24},
                {"counters",
                 {{"inBytes", counter(1000000, 10000000)},
                  {"outBytes", counter(1000000, 10000000)},
                  {"inUnicast", counter(1000, 10000)},
                  {"outUnicast", counter(1000, 10000)}}},
                {"ipStats", {{"received", counter(1000, 10000)}, {"sent", counter(1000, 10000)}}},
                {"ethernetStats",
                 {{"bytesReceived", counter(1000000, 10000000)},
                  {"bytesTransmitted", counter(1000000, 10000000)}}},
                {"tcpStats", {{"segmentsReceived", counter(1000, 10000)}, {"continuations", 1 + below(3)}}}};
    }

    ordered_json profile(std::uint32_t profile) {
        return {{"entityId", profile + 1},
                {"address", address(profile, 1)},
                {"sackOption", chance()},
                {"pmtuEnable", chance()},
                {"keepAliveTimeout", 30 + below(60)},
                {"minRetransmitTime", 200 + below(300)},
                {"maxRetransmissions", 1 + below(8)},
                {"maxBandwidth", 1000 * (1 + below(1000))},
                {"minBandwidth", 1000},
                {"ifIndex", ethernet_name(profile)},
                {"cwmEnable", chance()}};
    }

    ordered_json tunnel(std::uint32_t tunnel) {
        const std::uint32_t profile = tunnel / TUNNELS_OF_PROFILE;
        const std::string port = ethernet_name(profile);
        const bool up = below(10) != 0;
        const bool writeAccel = chance();
        const bool tapeAccel = chance();
        return {{"entityId", profile + 1},
                {"linkIndex", tunnel},
                {"ifIndex", "fcip" + std::to_string(tunnel + 1)},
                {"remEntityWwn", format("20:00:02:4b:53:00:01:%02x", 1 + below(200))},
                {"remEntityId", 1 + below(16)},
                {"remEntityAddress", address(profile, 129 + tunnel % TUNNELS_OF_PROFILE)},
                {"status", up ? 1 : 2},
                {"numTcpConns", 1 + below(2)},
                {"ethIfIndex", port},
                {"phyIfIndex", port},
                {"ipCompression", 1 + below(4)},
                {"writeAccel", writeAccel},
                {"writeAccelOper", writeAccel && up},
                {"tapeAccel", tapeAccel},
                {"tapeAccelOper", tapeAccel && up},
                {"errors", {{"lossOfFcSynchs", counter(10, 2)}, {"datagramsDropped", counter(100, 5)}}},
                {"tcpConnections", ordered_json::array({{{"connectionPurpose", 1 + below(3)},
                                                         {"receiverWindowSize", 65535},
                                                         {"maximumSegmentSize", 1460},
                                                         {"connectionTimeOut", 60}}})}};
    }

    std::mt19937 random_;
};

} // namespace

std::string generate_scenario(std::uint32_t tunnels, std::uint32_t seed) {
    return Generator(seed).scenario(tunnels).dump(1) + "\n";
}

} // namespace emulator
