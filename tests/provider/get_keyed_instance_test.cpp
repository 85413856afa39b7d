// Get-instance of the classes whose key is read in a way of its own: Ethernet statistics, profiles, LAN
// endpoints.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/provider/get_test.h"
#include "tests/support/faults.h"
#include "tests/support/rows.h"

namespace {

using namespace provider_tests;
using test_support::Answer;
using test_support::calls_of;
using test_support::for_each_effect;
using test_support::ROW_FAILURES;
using test_support::STATUS_FAILURES;
using Calls = std::vector<std::string>;

// Ethernet port statistics: the key is an if-index.

class GetEthernetStatisticsTest : public GetTest {
  protected:
    Answer get(const char* key) {
        return get_instance("KESTO_EthernetPortStatistics", {{"InstanceID", key}});
    }
    static Calls port_requests(const Answer& answer) {
        return calls_of(answer.platformCalls, "pm_cim_get_port_info");
    }
};

TEST_F(GetEthernetStatisticsTest, TheDecimalIfIndexFindsThePort) {
    const Answer answer = get("-1694433280");
    EXPECT_EQ(port_requests(answer), (Calls{"pm_cim_get_port_info op=1 if=0x9b010000"}));
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_EthernetPortStatistics");
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "-1694433280");
    EXPECT_NE(answer.output.find("Entering eth_statistics_build_instance\n"), std::string::npos);
    EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_link_entry"), Calls{}) << "no link is looked up";
}

TEST_F(GetEthernetStatisticsTest, ClassNameInLowerCaseKeepsTheClientsSpelling) {
    const Answer answer = get_instance("kesto_ethernetportstatistics", {{"instanceid", "-1694433280"}});
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), "kesto_ethernetportstatistics");
}

TEST_F(GetEthernetStatisticsTest, KeyThatIsNoNumberAsksForIfIndexZero) {
    for (const char* key : {"eth1", "", "_17"}) {
        const Answer answer = get(key);
        EXPECT_EQ(port_requests(answer), (Calls{"pm_cim_get_port_info op=1 if=0x00000000"}))
            << '"' << key << '"';
        expect_nothing(answer);
    }
}

TEST_F(GetEthernetStatisticsTest, NumbersSaturateAt32Bits) {
    EXPECT_EQ(port_requests(get("2600534016")), (Calls{"pm_cim_get_port_info op=1 if=0x7fffffff"}));
    EXPECT_EQ(port_requests(get("99999999999")), (Calls{"pm_cim_get_port_info op=1 if=0x7fffffff"}));
    EXPECT_EQ(port_requests(get("-99999999999")), (Calls{"pm_cim_get_port_info op=1 if=0x80000000"}));
}

TEST_F(GetEthernetStatisticsTest, TextAfterTheNumberIsIgnored) {
    EXPECT_EQ(get("-1694433280_x").instances.size(), 1U);
}

TEST_F(GetEthernetStatisticsTest, FailureOfThePortManagerFindsNothing) {
    for_each_effect(ROW_FAILURES, {.symbol = "pm_cim_get_port_info"},
                    [&] { expect_nothing(get("-1694433280")); });
}

// Profiles: the key must name a tunnel first, and then the profile.

class GetProfileTest : public GetTest {
  protected:
    void SetUp() override {
        GetTest::SetUp();
        // Tunnel 3 of profile 3.
        emulator::clear_links();
        link.kfmFcipLinkIndex = 2;
        update();
        emulator::clear_calls();
    }
    Answer get(const char* key) { return get_instance("KESTO_FCIPProfile", {{"InstanceID", key}}); }
};

TEST_F(GetProfileTest, KeyThatNamesATunnelAndTheProfileFindsTheProfile) {
    const Answer answer = get("3");
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_FCIPProfile");
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "3");
    EXPECT_NE(answer.output.find("Entering fcip_profile_build_instance\n"), std::string::npos);
}

TEST_F(GetProfileTest, ClassNameIsTheLiteralWhateverTheClientsSpelling) {
    const Answer answer = get_instance("kesto_fcipprofile", {{"InstanceID", "3"}});
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_FCIPProfile");
}

TEST_F(GetProfileTest, ProfileWithoutATunnelOfItsNumberIsNotFound) {
    emulator::add_entity(test_support::entity_row(9));
    emulator::clear_calls();
    const Answer answer = get("9");
    expect_nothing(answer);
    EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_entity_entry"), Calls{})
        << "the profiles are not even walked";
}

TEST_F(GetProfileTest, TunnelWithoutAProfileOfItsNumberIsNotFound) {
    link.kfmFcipLinkIndex = 7;
    update();
    expect_nothing(get("8"));
}

TEST_F(GetProfileTest, KeyMustBeTheProfileNumberToTheLetter) {
    for (const char* key : {"3_x", "03", " 3", "+3"}) {
        expect_nothing(get(key));
    }
}

TEST_F(GetProfileTest, FailedProfileWalkFindsNothing) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_entity_entry"}, [&] { expect_nothing(get("3")); });
}

// LAN endpoints: the key's Ethernet port finds a link, and the link's own interface is built.

class GetLanEndpointTest : public GetTest {
  protected:
    Answer get(const char* key) { return get_instance("KESTO_LANEndPoint", {{"Name", key}}); }
};

TEST_F(GetLanEndpointTest, InterfaceOfTheLinkIsBuilt) {
    for (const char* key : {"-1694433280:02:00:00:00:00:01", "-1694433280_x", "-1694433280"}) {
        const Answer answer = get(key);
        ASSERT_EQ(answer.instances.size(), 1U) << key;
        EXPECT_EQ(answer.instances[0].class_name(), "KESTO_LANEndPoint");
        EXPECT_EQ(calls_of(answer.platformCalls, "pm_cim_get_port_info"),
                  (Calls{"pm_cim_get_port_info op=1 if=0x00000011"}));
        EXPECT_NE(answer.output.find("Exiting lan_endpoint_build_instance\n"), std::string::npos);
    }
}

TEST_F(GetLanEndpointTest, ClassNameKeepsTheClientsSpelling) {
    for (const char* className : {"KESTO_LanEndpoint", "kesto_lanendpoint"}) {
        const Answer answer = get_instance(className, {{"Name", "-1694433280:02"}});
        ASSERT_EQ(answer.instances.size(), 1U);
        EXPECT_EQ(answer.instances[0].class_name(), className);
    }
}

TEST_F(GetLanEndpointTest, InterfaceOfTheTunnelIsNoKey) {
    expect_nothing(get("17:02:00"));
    expect_nothing(get(""));
}

} // namespace
