// The switch of the provider's own suites: one profile and one tunnel, whose numbers differ from each other,
// so that a key that is read in a wrong way finds nothing.
//
//   profile 3   10.1.1.1
//   tunnel 5    link {3, 4}, FCIP interface 17 in VSAN 10, to 10.1.1.2 (profile 7), over port 0x9B010000
#ifndef KESTO_TESTS_PROVIDER_TUNNEL_SWITCH_H
#define KESTO_TESTS_PROVIDER_TUNNEL_SWITCH_H

#include <string>

#include "tests/support/provider_test.h"

namespace provider_tests {

inline constexpr const char* HOST = "switch-a.example.net";
inline constexpr const char* SWITCH_WWN = "20:00:00:0d:ec:01:02:03";
inline constexpr const char* REMOTE_WWN = "20:00:00:0d:ec:04:05:06";
// The VSAN's system name is longer; its first 20 characters count.
inline constexpr const char* SYSTEM_NAME = "20:0a:00:0d:ec:12:34";
inline constexpr std::uint32_t ETHERNET_PORT = 0x9B010000; // -1694433280 with "%d"
inline constexpr std::uint8_t FCIP_TYPE = 11;
inline constexpr std::uint8_t ETHERNET_TYPE = 26;

class TunnelSwitchTest : public test_support::ProviderTest {
  protected:
    void SetUp() override;

    // A second and a third tunnel of the profile: links {3, 5} and {3, 6}, interfaces 18 and 19.
    void add_two_tunnels();

    // Puts the changed rows on the switch.
    void update();

    FcipEntityEntry profile{};
    FcipLinkEntry link{};
};

inline std::string entering(const std::string& function) {
    return "Entering " + function + "\n";
}
inline std::string exiting(const std::string& function) {
    return "Exiting " + function + "\n";
}

// The names that stand behind "Entering " in what was printed.
std::vector<std::string> entered(const std::string& output);

// The calls among these that begin with the name of this service or broker function.
std::vector<std::string> calls_of(const std::vector<std::string>& calls, const std::string& name);

} // namespace provider_tests

#endif
