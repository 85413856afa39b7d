// Replies that no platform should give: shorter than they say, without the message that they announce, or
// with another block in place of one that was lent. The services that give them are this program's own here,
// which the provider finds before the platform's.
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "include/associations.h"
#include "include/classes.h"
#include "platform/computer_system.h"
#include "platform/diagnostics.h"
#include "platform/fcip_config.h"
#include "platform/platform_services.h"
#include "platform/statistics.h"
#include "tests/support/provider_test.h"
#include "tests/support/rows.h"

#define SEEN_BY_ALL __attribute__((visibility("default")))

namespace {

using test_support::entity_row;
using test_support::link_row;
using test_support::NAMESPACE;
using test_support::port_row;
using test_support::printed_by;

// A malloc'ed block, as the platform hands it out.
template <typename Block>
Block* handed_out(const Block& block) {
    return static_cast<Block*>(std::memcpy(std::malloc(sizeof block), &block, sizeof block));
}

void* handed_out_words(const std::vector<std::uint32_t>& words) {
    return std::memcpy(std::malloc(4 * words.size()), words.data(), 4 * words.size());
}

// What the services of this program answer. A test sets those that it is about.
struct Answers {
    std::vector<std::uint32_t> words; // of the IP configuration, or of the interface list
    std::uint32_t length = 0;         // as the service reports it
    std::size_t emptySuccesses = 0;   // requests for a profile that succeed without one, before the rows
    std::vector<FcipEntityEntry> profiles;
    std::size_t profileRequests = 0;
    std::size_t replacedEntries = 0;
};
Answers answers;

} // namespace

extern "C" {

SEEN_BY_ALL int cmi_req_resp(std::uint32_t, std::uint32_t, std::uint32_t, void** reply,
                             std::uint32_t* replyLength, std::uint32_t, std::uint32_t, std::uint32_t,
                             std::uint32_t, std::uint32_t) {
    *reply = handed_out_words(answers.words);
    *replyLength = answers.length;
    return 0;
}

SEEN_BY_ALL int fcip_send_recv_with_mts_q(std::uint32_t, std::uint32_t, std::uint32_t, const void*,
                                          std::uint32_t, std::uint32_t, void** reply,
                                          std::uint32_t* replyLength, void*) {
    *reply = handed_out_words(answers.words);
    *replyLength = answers.length;
    return 0;
}

SEEN_BY_ALL int fcip_get_entity_entry(std::uint32_t, int op, std::uint32_t entityId, FcipEntityEntry** row,
                                      int) {
    ++answers.profileRequests;
    if (answers.emptySuccesses > 0) {
        --answers.emptySuccesses;
        return 0;
    }
    for (const FcipEntityEntry& profile : answers.profiles) {
        const std::uint32_t id = profile.kfmFcipEntityId;
        if (op == 1 ? id != entityId : id <= entityId) continue;
        *row = handed_out(profile);
        return 0;
    }
    return -1;
}

// Says that a message has come, and brings none.
SEEN_BY_ALL int mts_recv(std::uint32_t, MtsMessage*, const void*) {
    return 0;
}

// Names are longer here than those of the emulated switch.
SEEN_BY_ALL int sprintf_if_index(char* buffer, std::uint32_t) {
    std::strcpy(buffer, "an interface whose name has more than thirty characters");
    return 0;
}

SEEN_BY_ALL int vsan_cim_get_vsan_key(char* text, void** vsanEntry, void** domainEntry) {
    for (void** entry : {vsanEntry, domainEntry}) {
        std::free(*entry);
        *entry = std::malloc(8);
        ++answers.replacedEntries;
    }
    std::strcpy(text, "20:01:00:0d:ec:12:34:56");
    return 0;
}

SEEN_BY_ALL int vsan_cim_get_vsan_admindomain_key(char* text, void** domainEntry) {
    std::free(*domainEntry);
    *domainEntry = std::malloc(8);
    ++answers.replacedEntries;
    std::strcpy(text, "short");
    return 0;
}

} // extern "C"

namespace {

constexpr std::uint32_t MINUS_ONE = UINT32_MAX;
constexpr std::uint32_t ETHERNET_PORT = 0x9B010000;

class OddRepliesTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        emulator::add_vsan({.id = 10, .name = "ten", .systemName = "unused"});
        emulator::add_vsan({.id = 1, .name = "one", .systemName = "unused"});
        emulator::Port port = port_row(ETHERNET_PORT, 26, 10);
        port.name = "port-a";
        emulator::add_port(port);
        answers = {};
    }
    void TearDown() override {
        emulator::release_messages(); // the replies that mts_recv of this program did not fetch
        ProviderTest::TearDown();
    }

    // The status and what it left in the record, which held {7, 7}.
    static std::array<std::uint32_t, 3> ip_configuration() {
        IpMiscCfg configuration{7, 7};
        const int status = locked([&] { return get_ip_misc_cfg(&configuration); });
        return {static_cast<std::uint32_t>(status), configuration.ipForwarding, configuration.defaultTtl};
    }

    // The tunnels of a profile as they are printed.
    static std::string printed_tunnels() {
        const FcipEntityEntry profile = entity_row(1);
        return printed_by([&] {
            emulator::Locked lock;
            EntityIfList* tunnels = fcip_get_ifs_for_this_profile(1, mts_q);
            fcip_print_entity(&profile, tunnels);
            std::free(tunnels);
        });
    }
};

TEST_F(OddRepliesTest, AnIpConfigurationOfEightBytesIsTaken) {
    answers.words = {1, 64};
    answers.length = 8;
    EXPECT_EQ(ip_configuration(), (std::array<std::uint32_t, 3>{0, 1, 64}));
}

TEST_F(OddRepliesTest, AShorterIpConfigurationIsAFailureThatLeavesTheRecord) {
    answers.words = {1};
    for (const std::uint32_t length : {0U, 4U, 7U}) {
        answers.length = length;
        EXPECT_EQ(ip_configuration(), (std::array<std::uint32_t, 3>{MINUS_ONE, 7, 7})) << length;
    }
}

TEST_F(OddRepliesTest, AnInterfaceListEndsWithItsReply) {
    answers.words = {1000, ETHERNET_PORT, ETHERNET_PORT};
    for (const std::uint32_t length : {12U, 15U}) {
        answers.length = length;
        EXPECT_NE(printed_tunnels().find("    Tunnels Using this Profile: port-a port-a\n"),
                  std::string::npos)
            << length;
    }
}

TEST_F(OddRepliesTest, AnInterfaceListWithRoomForMoreThanItCountsIsReadByItsCount) {
    answers.words = {1, ETHERNET_PORT, ETHERNET_PORT};
    answers.length = 12;
    EXPECT_NE(printed_tunnels().find("    Tunnels Using this Profile: port-a\n"), std::string::npos);
}

TEST_F(OddRepliesTest, AnInterfaceListOfFourBytesHoldsNone) {
    answers.words = {3};
    answers.length = 4;
    EXPECT_EQ(printed_tunnels().find("Tunnels"), std::string::npos);
}

TEST_F(OddRepliesTest, AReplyWithoutRoomForACountIsNoInterfaceList) {
    answers.words = {3};
    answers.length = 3;
    EXPECT_EQ(locked([] { return fcip_get_ifs_for_this_profile(1, mts_q); }), nullptr);
}

TEST_F(OddRepliesTest, AnInterfaceListOfUnknownLengthIsReadByItsCount) {
    answers.words = {2, ETHERNET_PORT, ETHERNET_PORT};
    answers.length = 0;
    EXPECT_NE(printed_tunnels().find("    Tunnels Using this Profile: port-a port-a\n"), std::string::npos);
}

TEST_F(OddRepliesTest, AReceiveWithoutAMessageFails) {
    TcpStatsReply tcp{};
    EthMacStats mac{};
    IpStatsReply* ip = nullptr;
    EXPECT_EQ(printed_by([&] {
                  emulator::Locked lock;
                  EXPECT_EQ(get_tcp_stats(ETHERNET_PORT, &tcp), -1);
                  EXPECT_EQ(get_ethernetport_statistics(ETHERNET_PORT, &mac), -1);
                  EXPECT_EQ(get_ip_stats(mts_q, ETHERNET_PORT, 1, &ip), -1);
              }),
              "Entering get_tcp_stats\n"
              "if_index : -1694433280 \n"
              "Failed retrieval of mac stats information from linecard\n"
              "\n inside get_ip_stats\n ");
    EXPECT_EQ(ip, nullptr);
}

TEST_F(OddRepliesTest, AnEntryThatThePlatformReplacesIsReleasedOnce) {
    char name[101] = {};
    printed_by([&] {
        emulator::Locked lock;
        EXPECT_EQ(get_vsan_wwn(ETHERNET_PORT, name), 0);
        get_logical_computer_keys(ETHERNET_PORT, NAMESPACE, broker.cmpi());
        get_logical_computer_instance(ETHERNET_PORT, NAMESPACE, nullptr, broker.cmpi());
    });
    EXPECT_EQ(answers.replacedEntries, 5U);
}

TEST_F(OddRepliesTest, AShortSystemNameIsPaddedToTwentyBytes) {
    std::string name(30, 'x');
    printed_by([&] {
        emulator::Locked lock;
        EXPECT_EQ(get_vsan_wwn(ETHERNET_PORT, name.data()), 0);
    });
    EXPECT_EQ(name, "short" + std::string(15, '\0') + std::string(10, 'x'));
}

// The walks that repeat a request whose success brings no row.
TEST_F(OddRepliesTest, ASuccessWithoutARowIsRepeatedUntilTheRowComes) {
    answers.profiles = {entity_row(4)};
    answers.emptySuccesses = 65536;
    FcipEntityEntry found{};
    EXPECT_EQ(locked([&] { return get_fcip_entity_from_key_value(mts_q, "4", &found); }), 1);
    EXPECT_EQ(answers.profileRequests, 65536U + 2U);
}

TEST_F(OddRepliesTest, ASuccessWithoutARowIsRepeatedNoMoreThan65536Times) {
    answers.profiles = {entity_row(4)};
    answers.emptySuccesses = SIZE_MAX;
    FcipEntityEntry found{};
    EXPECT_EQ(locked([&] { return get_fcip_entity_from_key_value(mts_q, "4", &found); }), 0);
    EXPECT_EQ(answers.profileRequests, 65536U + 1U);
    answers.profileRequests = 0;
    EXPECT_EQ(locked([] { return get_all_fcip_entities(mts_q); }), 0);
    EXPECT_EQ(answers.profileRequests, 65536U + 1U);
}

TEST_F(OddRepliesTest, IpSettingsCarryTheInterfaceNameWhole) {
    answers.words = {1, 64};
    answers.length = 8;
    answers.profiles = {entity_row(3)};
    const FcipLinkEntry link = link_row(3, 0, 17);
    printed_by([&] {
        const auto settings =
            built([&] { return ip_settings_build_instance("KESTO_IPSettings", NAMESPACE, &link, nullptr); });
        EXPECT_EQ(settings.value("Caption"), "an interface whose name has more than thirty characters");
        EXPECT_EQ(settings.value("Description"), "an interface whose name has more than thirty characters");
    });
}

TEST_F(OddRepliesTest, IpSettingsAreNullWithoutAWholeIpConfiguration) {
    answers.words = {1};
    answers.length = 4;
    answers.profiles = {entity_row(3)};
    const FcipLinkEntry link = link_row(3, 0, 17);
    printed_by([&] {
        const auto settings =
            built([&] { return ip_settings_build_instance("KESTO_IPSettings", NAMESPACE, &link, nullptr); });
        EXPECT_EQ(settings.kind(), test_support::Object::Null);
    });
}

TEST_F(OddRepliesTest, EthernetStatisticsCarryThirtyCharactersOfTheInterfaceName) {
    PortInfo port{};
    port.ifIndex = ETHERNET_PORT;
    printed_by([&] {
        const auto statistics = built([&] {
            return eth_statistics_build_instance("KESTO_EthernetPortStatistics", NAMESPACE, &port, nullptr);
        });
        EXPECT_EQ(statistics.value("Caption"), "an interface whose name has mo");
    });
}

// The profile's path is made of the link's row: no profile is asked for but those of the two ends.
TEST_F(OddRepliesTest, AProfilesMembershipTakesTheProfileFromTheLink) {
    emulator::clear_links();
    emulator::add_link(link_row(3, 0, 17));
    answers.profiles = {entity_row(3), entity_row(4)};
    const auto names = walk([](const CMPIResult* result) {
        return get_all_binds_to_references("KESTO_FCIPPEBasedOn", result, NAMESPACE);
    });
    ASSERT_EQ(names.paths.size(), 1U);
    EXPECT_EQ(answers.profileRequests, 1U);
    EXPECT_EQ(names.output.find("get_profile_from_link_entry"), std::string::npos);
}

} // namespace
