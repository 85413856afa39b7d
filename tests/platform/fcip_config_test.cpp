// The IP configuration, Ethernet ports, LAN endpoint keys and addresses, as they are read from the switch.
#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "platform/computer_system.h"
#include "platform/fcip_config.h"
#include "platform/ip_address.h"
#include "platform/link_key.h"
#include "platform/platform_services.h"
#include "tests/platform/empty_switch.h"
#include "tests/support/faults.h"
#include "tests/support/rows.h"
#include "tests/support/stdout_capture.h"

namespace {

using emulator::Effect;
using platform_tests::EmptySwitchTest;
using test_support::address;
using test_support::Answer;
using test_support::NAMESPACE;
using test_support::port_row;
using test_support::printed_by;
using test_support::ROW_FAILURES;
using Calls = std::vector<std::string>;

constexpr std::uint8_t MANAGEMENT = 5; // a type of port

// The switch-wide IP configuration.

TEST_F(EmptySwitchTest, IpConfigurationIsReadWithOneRequest) {
    emulator::set_ip_configuration({1, 64});
    IpMiscCfg out{};
    EXPECT_EQ(locked([&] { return get_ip_misc_cfg(&out); }), 0);
    EXPECT_EQ(out.ipForwarding, 1U);
    EXPECT_EQ(out.defaultTtl, 64U);
    EXPECT_EQ(emulator::calls("cmi_req_resp"), (Calls{"cmi_req_resp code=873 1 0 0 0 service=35 5"}));
}

TEST_F(EmptySwitchTest, IpConfigurationFailsWithTheRequest) {
    emulator::set_ip_configuration({1, 64});
    for (const Effect effect : ROW_FAILURES) {
        for_each_platform_failure("cmi_req_resp", effect, [&](std::size_t nth) {
            IpMiscCfg out{7, 7};
            EXPECT_EQ(locked([&] { return get_ip_misc_cfg(&out); }), nth == 1 ? -1 : 0);
            EXPECT_EQ(out.ipForwarding, nth == 1 ? 7U : 1U);
        });
    }
}

// Ethernet ports.

class EthernetPortTest : public EmptySwitchTest {
  protected:
    void SetUp() override {
        EmptySwitchTest::SetUp();
        emulator::add_port(port_row(0x0A000001, test_support::GIGABIT_ETHERNET_PORT, 1)); // before the run
        emulator::add_port(port_row(0x9B010000, test_support::GIGABIT_ETHERNET_PORT, 1));
        emulator::add_port(port_row(0x9B010001, test_support::GIGABIT_ETHERNET_PORT, 1));
        emulator::add_port(port_row(0x9B010002, test_support::GIGABIT_ETHERNET_PORT, 1));
        emulator::add_port(port_row(0xA5000000, MANAGEMENT, 1)); // ends it
        emulator::add_port(port_row(0xA6000000, test_support::GIGABIT_ETHERNET_PORT, 1));
        emulator::clear_calls();
    }

    Answer ask(std::uint32_t ifIndex, bool wantInstance) {
        const char* properties[] = {"DeviceID", nullptr};
        int functionResult = -1;
        Answer answer = walk(
            [&](const CMPIResult* result) {
                return get_etherport_from_if_index(ifIndex, wantInstance ? 1 : 0, "KESTO_Ignored", result,
                                                   NAMESPACE, properties, broker.cmpi());
            },
            &functionResult);
        EXPECT_EQ(functionResult, 0);
        return answer;
    }
    static Calls port_requests(std::size_t count) {
        const Calls all{"pm_cim_get_port_info op=0 if=0x9affffff", "pm_cim_get_port_info op=0 if=0x9b010000",
                        "pm_cim_get_port_info op=0 if=0x9b010001", "pm_cim_get_port_info op=0 if=0x9b010002"};
        return Calls(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
    }
};

TEST_F(EthernetPortTest, InstanceOfThePortGoesToTheResult) {
    const Answer answer = ask(0x9B010001, true);
    ASSERT_EQ(answer.returned.size(), 1U);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_EthernetPort");
    EXPECT_EQ(answer.instances[0].path().name_space(), NAMESPACE);
    EXPECT_EQ(emulator::calls("fcport_build_instance_pm"),
              (Calls{"fcport_build_instance_pm KESTO_EthernetPort root/kesto if=0x9b010001"}));
    ASSERT_EQ(answer.instances[0].filters().size(), 1U);
    EXPECT_EQ(answer.instances[0].filters()[0].properties, (std::vector<std::string>{"DeviceID"}));
}

TEST_F(EthernetPortTest, PathOfThePortIsAskedForWithNamespaceAndClassExchanged) {
    const Answer answer = ask(0x9B010001, false);
    ASSERT_EQ(answer.returned.size(), 1U);
    ASSERT_EQ(answer.paths.size(), 1U);
    EXPECT_EQ(answer.paths[0].class_name(), "KESTO_EthernetPort");
    EXPECT_EQ(answer.paths[0].name_space(), NAMESPACE);
    EXPECT_EQ(emulator::calls("fcport_fill_reference_pm"),
              (Calls{"fcport_fill_reference_pm root/kesto KESTO_EthernetPort if=0x9b010001"}));
}

TEST_F(EthernetPortTest, TheWalkGoesOnAfterTheMatchToTheFirstOtherPort) {
    ask(0x9B010000, true);
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), port_requests(4));
    EXPECT_EQ(emulator::count("if_index_get_type"), 4U);
}

TEST_F(EthernetPortTest, PortsOutsideTheRunAreNotFound) {
    for (const std::uint32_t ifIndex : {0x0A000001U, 0xA5000000U, 0xA6000000U, 99U}) {
        EXPECT_TRUE(ask(ifIndex, true).returned.empty());
        EXPECT_TRUE(ask(ifIndex, false).returned.empty());
    }
}

TEST_F(EthernetPortTest, PortWithoutATypeEndsTheWalk) {
    for_each_platform_failure("if_index_get_type", Effect::Fail, [&](std::size_t nth) {
        EXPECT_EQ(ask(0x9B010001, true).returned.size(), nth <= 2 ? 0U : 1U);
        EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), port_requests(nth <= 4 ? nth : 4));
    });
}

TEST_F(EthernetPortTest, FailedRequestEndsTheWalk) {
    for (const Effect effect : ROW_FAILURES) {
        for_each_platform_failure("pm_cim_get_port_info", effect, [&](std::size_t nth) {
            EXPECT_EQ(ask(0x9B010001, false).returned.size(), nth <= 2 ? 0U : 1U);
            EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), port_requests(nth <= 4 ? nth : 4));
        });
    }
}

// A LAN endpoint's key, and the if-index read from it.
struct KeyCase {
    const char* name;
    std::string key;
    std::uint32_t ifIndex;
    const char* printed; // as the trace shows it
};
void PrintTo(const KeyCase& row, std::ostream* out) {
    *out << '"' << row.key << '"';
}

class EthernetKey : public testing::TestWithParam<KeyCase> {};

TEST_P(EthernetKey, NamesItsIfIndex) {
    std::uint32_t ifIndex = 777;
    const std::string output =
        printed_by([&] { EXPECT_EQ(get_eth_ifidx_from_keyvalue(&ifIndex, GetParam().key.c_str()), 0); });
    EXPECT_EQ(ifIndex, GetParam().ifIndex);
    EXPECT_EQ(output, std::string("Entering get_eth_ifidx_from_keyvalue\nif_index : ") + GetParam().printed +
                          " \nExiting get_eth_ifidx_from_keyvalue\n");
}

const std::vector<KeyCase> KEYS{
    {"NumberUpToAnUnderscore", "8_00:0d:ec", 8, "8"},
    {"NumberUpToAColon", "8:00", 8, "8"},
    {"NumberAlone", "8", 8, "8"},
    {"SeparatorsFirst", ":_8_9", 8, "8"},
    {"IfIndexAbove31BitsIsReadFromItsNegativePrint", "-1694433280_00:0d", 0x9B010000, "-1694433280"},
    {"LargeNumbersSaturate", "2600534016", 0x7FFFFFFF, "2147483647"},
    {"SmallNumbersSaturate", "-99999999999", 0x80000000, "-2147483648"},
    {"TextIsZero", "eth", 0, "0"},
    {"KeyOf600CharactersIsCutTo511", std::string(510, '0') + "8" + std::string(89, '9'), 8, "8"},
};
INSTANTIATE_TEST_SUITE_P(Of, EthernetKey, testing::ValuesIn(KEYS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(EthernetKeyTest, KeyWithoutATokenFails) {
    for (const char* key : {"", "_", "::__"}) {
        std::uint32_t ifIndex = 777;
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(get_eth_ifidx_from_keyvalue(&ifIndex, key), -1); }),
                  "Entering get_eth_ifidx_from_keyvalue\n")
            << '"' << key << '"';
        EXPECT_EQ(ifIndex, 777U);
    }
}

// An address, the size of the buffer for its text, and what is made of it.
struct AddressCase {
    const char* name;
    IpAddr address;
    std::uint32_t size;
    int result;
    const char* text;     // "#" = untouched
    std::uint32_t isIpv6; // 777 = untouched
};
void PrintTo(const AddressCase& row, std::ostream* out) {
    *out << row.name;
}

IpAddr of_family(std::uint32_t family, std::uint8_t lastByte = 0) {
    IpAddr addr{};
    addr.addrType = family;
    addr.addr[15] = lastByte;
    return addr;
}

class AddressText : public testing::TestWithParam<AddressCase> {};

TEST_P(AddressText, IsMade) {
    std::string buffer(64, '\0');
    buffer[0] = '#';
    std::uint32_t isIpv6 = 777;
    EXPECT_EQ(ip_addr_to_str_type(&GetParam().address, buffer.data(), GetParam().size, &isIpv6),
              GetParam().result);
    EXPECT_STREQ(buffer.c_str(), GetParam().text);
    EXPECT_EQ(isIpv6, GetParam().isIpv6);
}

const std::vector<AddressCase> ADDRESSES{
    {"Ipv4", address("10.1.1.2"), 64, 0, "10.1.1.2", 0},
    {"Ipv4OfZeros", address("0.0.0.0"), 64, 0, "0.0.0.0", 0},
    {"Ipv6", address("2001:db8::ab"), 64, 0, "2001:db8::ab", 1},
    {"Ipv6OfZeros", address("::"), 64, 0, "::", 1},
    {"UnsetAddressIsTheTextNull", IpAddr{}, 64, 0, "null", 777},
    {"UnsetFamilyWithAnyBytesFails", of_family(0, 1), 64, -1, "#", 777},
    {"Family3Fails", of_family(3), 64, -1, "#", 777},
    {"Family10Fails", of_family(10), 64, -1, "#", 777},
    {"LargestFamilyFails", of_family(0xFFFFFFFF), 64, -1, "#", 777},
    {"Ipv4TextThatFits", address("192.168.100.100"), 16, 0, "192.168.100.100", 0},
    {"Ipv6TextThatFits", address("2001:db8::ab"), 13, 0, "2001:db8::ab", 1},
};
INSTANTIATE_TEST_SUITE_P(Of, AddressText, testing::ValuesIn(ADDRESSES),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(AddressTextTest, TextThatDoesNotFitFails) {
    char buffer[64] = "";
    std::uint32_t isIpv6 = 777;
    const IpAddr ipv4 = address("192.168.100.100");
    EXPECT_EQ(ip_addr_to_str_type(&ipv4, buffer, 15, &isIpv6), -1);
    const IpAddr ipv6 = address("2001:db8::ab");
    EXPECT_EQ(ip_addr_to_str_type(&ipv6, buffer, 12, &isIpv6), -1);
}

TEST(AddressTextTest, FamilyIsTheRecordsOwn) {
    for (const std::uint32_t family : {0U, 1U, 2U, 77U}) {
        const IpAddr addr = of_family(family);
        EXPECT_EQ(get_ip_addr_type(&addr), family);
    }
}

TEST(WwnTest, InitClearsTheEightBytesAndReturnsThem) {
    unsigned char wwn[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(init_wwn(wwn), wwn);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(wwn[i], 0) << i;
    }
    EXPECT_EQ(wwn[8], 9);
}

} // namespace
