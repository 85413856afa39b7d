// The services around the tables: ports, if-indexes, VSANs, addresses, names.
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

using Numbers = std::vector<std::uint32_t>;
using Texts = std::vector<std::string>;

class PortManager : public LockedTest {
  protected:
    static Numbers walk_from(std::uint32_t ifIndex) {
        Numbers found;
        Row<PortInfo> row;
        while (pm_cim_get_port_info(row.slot(), 0, ifIndex, mts_q) == 0) {
            found.push_back(ifIndex = row->ifIndex);
        }
        EXPECT_FALSE(row);
        return found;
    }
    static emulator::Port port(std::uint32_t ifIndex, std::uint8_t type) {
        return {.ifIndex = ifIndex, .type = type, .name = "port" + std::to_string(ifIndex)};
    }
};

TEST_F(PortManager, EthernetPortsAreOneRunAfterTheStartIndex) {
    EXPECT_EQ(walk_from(0x9AFFFFFF), Numbers({ETHERNET_1_1, ETHERNET_1_2, ETHERNET_2_1, MANAGEMENT}));
    std::uint8_t type = 0;
    for (const std::uint32_t ifIndex : {ETHERNET_1_1, ETHERNET_1_2, ETHERNET_2_1}) {
        EXPECT_EQ(if_index_get_type(ifIndex, &type), 0);
        EXPECT_EQ(type, 26);
    }
    EXPECT_EQ(if_index_get_type(MANAGEMENT, &type), 0);
    EXPECT_EQ(type, 5);
}

TEST_F(PortManager, OrderIsUnsigned) {
    emulator::clear_ports();
    for (const std::uint32_t ifIndex : {0xFFFFFFFFU, 0x7FFFFFFFU, 1U, 0x80000000U, 0U}) {
        emulator::add_port(port(ifIndex, 26));
    }
    EXPECT_EQ(walk_from(0), Numbers({1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
    EXPECT_EQ(emulator::port_indexes(), Numbers({0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
}

TEST_F(PortManager, RowCarriesTheVsansOfThePort) {
    emulator::Port two = port(77, 11);
    two.vsan = 20;
    two.otherVsan = 4094;
    emulator::add_port(two);
    Row<PortInfo> row;
    ASSERT_EQ(pm_cim_get_port_info(row.slot(), 1, 77, mts_q), 0);
    EXPECT_EQ(row->ifIndex + 0, 77U);
    EXPECT_EQ(row->vsan + 0, 20U);
    EXPECT_EQ(row->otherVsan + 0, 4094U);
    EXPECT_NE(pm_cim_get_port_info(row.slot(), 1, UNKNOWN_INTERFACE, mts_q), 0);
    EXPECT_FALSE(row);
}

TEST_F(PortManager, ConfigurationAndInterfaceBlockAreTheSameRow) {
    const std::uint32_t key[2] = {FCIP_1, FCIP_1};
    std::uint32_t length = 0;
    Row<PortInfo> configuration;
    ASSERT_EQ(pm_cmi_get_port_config(mts_q, 1, 1, key, &length, configuration.slot(), 4), 0);
    EXPECT_EQ(length, 221U);
    const Row<PortInfo> block(pm_cim_find_interface(1, FCIP_1, mts_q));
    ASSERT_TRUE(block);
    EXPECT_EQ(std::memcmp(configuration.get(), block.get(), sizeof(PortInfo)), 0);
    EXPECT_EQ(pm_cim_find_interface(1, UNKNOWN_INTERFACE, mts_q), nullptr);
}

TEST_F(PortManager, CountersMoveWithTheClock) {
    emulator::Port moving = port(88, 26);
    moving.inBytes = {100, 10};
    moving.outUnicast = {0xFFFFFFFFFFULL, 0.5};
    moving.inMulticast = {0xFFFFFFFF, 1};
    emulator::add_port(moving);
    const auto counters = [] {
        Row<PortCounters> row;
        EXPECT_EQ(pm_get_port_counters(mts_q, 88, 0, 6, row.slot(), 0), 0);
        return *row.get();
    };
    emulator::set_clock(0);
    EXPECT_EQ(counters().inBytes + 0, 100U);
    emulator::set_clock(7);
    EXPECT_EQ(counters().inBytes + 0, 170U);
    EXPECT_EQ(counters().outUnicast + 0, 0xFFFFFFFFFFULL + 3);
    EXPECT_EQ(counters().inMulticast + 0, 6U) << "32-bit counters wrap";
}

TEST_F(PortManager, CountersMoveInRealTimeByDefault) {
    emulator::Port moving = port(88, 26);
    moving.inBytes = {0, 1e6};
    emulator::add_port(moving);
    Row<PortCounters> before, after;
    ASSERT_EQ(pm_get_port_counters(mts_q, 88, 0, 6, before.slot(), 0), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ASSERT_EQ(pm_get_port_counters(mts_q, 88, 0, 6, after.slot(), 0), 0);
    EXPECT_GT(after->inBytes + 0, before->inBytes + 0);
}

TEST_F(PortManager, EthernetRecordCarriesTheMtuInWordSeven) {
    std::uint32_t record[65];
    std::memset(record, 0xFF, sizeof record);
    ASSERT_EQ(pm_get_clear_eth_stats(mts_q, ETHERNET_1_1, ETHERNET_1_1, 1, record), 0);
    EXPECT_EQ(ntohl(record[7]), 2300U);
    EXPECT_EQ(record[64], 0xFFFFFFFF) << "not more than 256 bytes";
    EXPECT_NE(pm_get_clear_eth_stats(mts_q, FCIP_1, FCIP_1, 1, record), 0) << "not an Ethernet interface";
    EXPECT_NE(pm_get_clear_eth_stats(mts_q, UNKNOWN_INTERFACE, UNKNOWN_INTERFACE, 1, record), 0);
}

TEST_F(PortManager, NetworkAddressIsTheText) {
    Row<PortInfo> row;
    char buffer[32] = "";
    ASSERT_EQ(pm_cim_get_port_info(row.slot(), 1, ETHERNET_1_1, mts_q), 0);
    ASSERT_EQ(pm_cim_get_network_address(buffer, row.get(), 26), 0);
    EXPECT_STREQ(buffer, "02:4b:53:00:01:01");
    PortInfo unknown{};
    unknown.ifIndex = UNKNOWN_INTERFACE;
    EXPECT_NE(pm_cim_get_network_address(buffer, &unknown, 26), 0);
}

TEST_F(EmulatorTest, InterfaceIndexServiceNeedsNoLock) {
    std::uint16_t number = 0;
    char text[32] = "";
    EXPECT_EQ(if_index_get_slot(ETHERNET_2_1, &number), 0);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(if_index_get_port(ETHERNET_1_2, &number), 0);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(idxmap_node_by_if_index(ETHERNET_2_1), emulator::node_of_slot(2));
    EXPECT_EQ(hton_if_index(hton_if_index(ETHERNET_1_1)), ETHERNET_1_1);
    EXPECT_EQ(hton_if_index(ETHERNET_1_1), htonl(ETHERNET_1_1));
    EXPECT_EQ(sprintf_if_index(text, ETHERNET_2_1), 0);
    EXPECT_STREQ(text, "GigabitEthernet2/1");
    EXPECT_EQ(fcip_if_str(FCIP_1, text), text);
    EXPECT_STREQ(text, "fcip1");
    EXPECT_EQ(sprintf_if_index(text, FC_1_1), 0);
    EXPECT_STREQ(text, "fc1/1");
    EXPECT_EQ(netcfg_print_ifname(text, ETHERNET_1_1), 0);
    EXPECT_STREQ(text, "gige1-1");
}

TEST_F(EmulatorTest, UnknownInterfaceFailsAndTouchesNothing) {
    std::uint8_t type = 99;
    std::uint16_t number = 9999;
    char text[32] = "as before";
    EXPECT_NE(if_index_get_type(UNKNOWN_INTERFACE, &type), 0);
    EXPECT_NE(if_index_get_slot(UNKNOWN_INTERFACE, &number), 0);
    EXPECT_NE(if_index_get_port(UNKNOWN_INTERFACE, &number), 0);
    EXPECT_NE(sprintf_if_index(text, UNKNOWN_INTERFACE), 0);
    EXPECT_NE(netcfg_print_ifname(text, UNKNOWN_INTERFACE), 0);
    EXPECT_EQ(type, 99);
    EXPECT_EQ(number, 9999);
    EXPECT_STREQ(text, "as before");
    EXPECT_EQ(idxmap_node_by_if_index(UNKNOWN_INTERFACE), 0U);
    EXPECT_STREQ(fcip_if_str(UNKNOWN_INTERFACE, text), "0x9b770001") << "this service cannot fail";
}

class VsanService : public LockedTest {};

TEST_F(VsanService, BothKeysAreTheSystemNameOfTheDomain) {
    Row<void> vsan, domain;
    ASSERT_EQ(vsan_cim_get_vsanEntry(mts_q, 1, vsan.slot()), 0);
    ASSERT_EQ(dm_cim_get_dmEntry(mts_q, 20, 1, domain.slot()), 0);
    char text[64] = "";
    EXPECT_EQ(vsan_cim_get_vsan_key(text, vsan.current(), domain.current()), 0);
    EXPECT_STREQ(text, "2014024b53000001");
    text[0] = '\0';
    EXPECT_EQ(vsan_cim_get_vsan_admindomain_key(text, domain.current()), 0);
    EXPECT_STREQ(text, "2014024b53000001");
}

TEST_F(VsanService, UnknownVsanAndVsanWithoutDomainFail) {
    Row<void> entry;
    EXPECT_NE(vsan_cim_get_vsanEntry(mts_q, 3, entry.slot()), 0);
    EXPECT_NE(dm_cim_get_dmEntry(mts_q, 3, 1, entry.slot()), 0);
    emulator::add_vsan({.id = 3, .hasDomain = false});
    EXPECT_NE(dm_cim_get_dmEntry(mts_q, 3, 1, entry.slot()), 0);
    EXPECT_FALSE(entry);
    EXPECT_EQ(vsan_cim_get_vsanEntry(mts_q, 3, entry.slot()), 0);
    EXPECT_TRUE(entry);
}

TEST_F(VsanService, ForeignRecordIsRefused) {
    char text[64] = "";
    std::uint32_t block[32]{};
    void* foreign = block;
    EXPECT_NE(vsan_cim_get_vsan_admindomain_key(text, &foreign), 0);
    Row<void> vsan;
    ASSERT_EQ(vsan_cim_get_vsanEntry(mts_q, 1, vsan.slot()), 0);
    EXPECT_NE(vsan_cim_get_vsan_key(text, vsan.current(), vsan.current()), 0)
        << "a VSAN record is not a domain record";
    expect_misuse(
        "vsan_cim_get_vsan_admindomain_key: not the record that this key is made of\n"
        "vsan_cim_get_vsan_key: not the record that this key is made of\n");
}

IpAddr address(int family, const char* text) {
    IpAddr made{};
    made.addrType = family == AF_INET ? KFM_ADDR_IPV4 : KFM_ADDR_IPV6;
    EXPECT_EQ(inet_pton(family, text, made.addr), 1);
    return made;
}

TEST_F(EmulatorTest, AddressTextIsCutAndAlwaysTerminated) {
    const IpAddr six = address(AF_INET6, "2001:db8:ffff::1234");
    char text[40];
    EXPECT_EQ(ip_addr_to_str(&six, text, sizeof text), 0);
    EXPECT_STREQ(text, "2001:db8:ffff::1234");
    std::memset(text, 'x', sizeof text);
    EXPECT_EQ(ip_addr_to_str(&six, text, 10), 0);
    EXPECT_STREQ(text, "2001:db8:");
    EXPECT_EQ(text[10], 'x');
    EXPECT_EQ(ip_addr_to_str(&six, text, 1), 0);
    EXPECT_STREQ(text, "");
    const IpAddr four = address(AF_INET, "192.168.100.100");
    EXPECT_EQ(ip_addr_to_str(&four, text, 20), 0);
    EXPECT_STREQ(text, "192.168.100.100");
    EXPECT_NE(ip_addr_to_str(&inet_addr_null, text, 20), 0) << "the unset address has no text";
    EXPECT_STREQ(text, "");
}

TEST_F(EmulatorTest, AddressComparisonLooksAtFamilyAndItsBytes) {
    IpAddr four = address(AF_INET, "10.0.0.1");
    IpAddr same = four;
    same.addr[15] = 9; // after the four bytes of an IPv4 address
    EXPECT_EQ(ip_addr_compare(&four, &same), 0);
    same.addr[3] = 2;
    EXPECT_NE(ip_addr_compare(&four, &same), 0);
    four.addrType = KFM_ADDR_IPV6;
    EXPECT_NE(ip_addr_compare(&four, &inet_addr_null), 0);
    const IpAddr zero{};
    EXPECT_EQ(ip_addr_compare(&zero, &inet_addr_null), 0);
}

class IpConfiguration : public LockedTest {};

TEST_F(IpConfiguration, MaskAndPrefixOfAnInterface) {
    Row<void> record;
    ASSERT_EQ(ipconf_get_intf_ip_address(mts_q, ETHERNET_1_2, record.slot()), 0);
    std::uint32_t words[9];
    std::memcpy(words, record.get(), sizeof words);
    EXPECT_EQ(ntohl(words[1]), 0xFFFFFFF0U);
    ASSERT_EQ(ipconf_get_if_inet_addrs(mts_q, ETHERNET_1_2, record.slot()), 0);
    std::memcpy(words, record.get(), sizeof words);
    EXPECT_EQ(words[8], 64U);
    EXPECT_NE(ipconf_get_intf_ip_address(mts_q, FCIP_1, record.slot()), 0);
    EXPECT_NE(ipconf_get_if_inet_addrs(mts_q, UNKNOWN_INTERFACE, record.slot()), 0);
    EXPECT_FALSE(record);
}

TEST_F(IpConfiguration, SwitchWideValues) {
    emulator::set_ip_configuration({1, 77});
    Row<void> reply;
    std::uint32_t length = 8;
    ASSERT_EQ(cmi_req_resp(873, 1, 0, reply.slot(), &length, 0, 0, 35, mts_q, 5), 0);
    Numbers words(2);
    std::memcpy(words.data(), reply.get(), 8);
    EXPECT_EQ(words, Numbers({1, 77}));
    EXPECT_EQ(length, 8U);
}

TEST_F(IpConfiguration, NamesAndWwn) {
    EXPECT_STREQ(getCSName(), "north-sw1.example.net");
    EXPECT_STREQ(CSgetName(mts_q), "north-sw1");
    std::uint8_t wwn[8];
    char text[64];
    ASSERT_EQ(system_cim_get_switch_wwn(mts_q, &wwn), 0);
    EXPECT_EQ(cim_sprintf_wwn(text, &wwn), text);
    EXPECT_STREQ(text, "20:00:02:4b:53:00:00:01");
    const char* before = getCSName();
    emulator::set_system("other", "another", wwn);
    EXPECT_STREQ(before, "north-sw1.example.net") << "a name that was handed out stays readable";
    EXPECT_STREQ(getCSName(), "other");
    EXPECT_STREQ(CSgetName(mts_q), "another");
}

TEST_F(LockedTest, CallLogHoldsTheArguments) {
    const FcipLinkKey key{1, 0};
    Row<FcipLinkEntry> link;
    Row<PortInfo> port;
    fcip_get_link_entry(mts_q, 2, &key, link.slot(), 30, 1);
    pm_cim_get_port_info(port.slot(), 1, ETHERNET_1_1, mts_q);
    mutex_unlock();
    EXPECT_EQ(emulator::calls(), Texts({"fcip_get_link_entry op=2 key={1,0} 30 1",
                                        "pm_cim_get_port_info op=1 if=0x9b010001", "mutex_unlock"}));
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), Texts({"pm_cim_get_port_info op=1 if=0x9b010001"}));
    EXPECT_EQ(emulator::count("fcip_get_link_entry"), 1U);
    emulator::record_calls(false);
    getCSName();
    EXPECT_TRUE(emulator::calls("getCSName").empty());
    EXPECT_EQ(emulator::count("getCSName"), 1U) << "calls are counted even then";
}

} // namespace
} // namespace emulator_test
