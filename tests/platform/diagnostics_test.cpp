// The "show"-style listings, to the letter. The expected texts are written out by hand.
#include "platform/diagnostics.h"

#include <cstring>
#include <string>
#include <vector>

#include "tests/support/provider_test.h"
#include "tests/support/rows.h"

namespace {

using test_support::address;
using test_support::printed_by;

// A listing's parts, which each test exchanges for its own.
struct Listing {
    std::string address = "    Internet address is not configured\n";
    std::string tunnels;
    std::string sack = "        SACK is disabled\n";
    std::string pmtu = "        PMTU discovery is disabled\n";
    std::string congestionWindow = "        Congestion window monitoring is disabled\n";
    std::string jitter = "        Auto jitter detection is enabled\n";

    std::string text() const {
        return "FCIP Profile 12\n" + address + tunnels +
               "    Listen Port is 3225\n"
               "    TCP parameters\n" +
               sack + pmtu +
               "        Keep alive is 60 sec\n"
               "        Minimum retransmission timeout is 200 ms\n"
               "        Maximum number of re-transmissions is 4\n"
               "        Send buffer size is 7 KB\n"
               "        Maximum allowed bandwidth is 1000000 kbps\n"
               "        Maximum allowed bandwidth is 1000000 kbps\n"
               "        Minimum available bandwidth is 500000 kbps\n"
               "        Configured round trip time is 1500 usec\n" +
               congestionWindow + jitter;
    }
};

class DiagnosticsTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        emulator::load_empty();
        add_interface(0x0A000001, "fcip1");
        add_interface(0x0A000002, "fcip2");
        add_interface(0x9B010000, "GigabitEthernet1/1");

        entity.kfmFcipEntityId = 12;
        entity.kfmFcipEntityTcpPort = 3225;
        entity.kfmFcipEntityKeepAliveTimeout = 60;
        entity.kfmFcipEntityMinRetransmitTime = 200;
        entity.kfmFcipEntityMaxRetransmissions = 4;
        entity.kfmFcipEntitySendBufSize = 7;
        entity.kfmFcipEntityMaxBandwidth = 1000000;
        entity.kfmFcipEntityMinBandwidth = 500000;
        entity.kfmFcipEntityRoundTripTime = 1500;
    }

    static void add_interface(std::uint32_t ifIndex, const char* name) {
        emulator::Port port = test_support::port_row(ifIndex, 26, 1);
        port.name = name;
        emulator::add_port(port);
    }

    // Prints the entity; the interface list is `tunnels` with its count in front.
    std::string print(int* printResult = nullptr) {
        std::vector<std::uint32_t> words{static_cast<std::uint32_t>(tunnels.size())};
        words.insert(words.end(), tunnels.begin(), tunnels.end());
        emulator::Locked lock;
        return printed_by([&] {
            const int value = fcip_print_entity(&entity, reinterpret_cast<const EntityIfList*>(words.data()));
            if (printResult != nullptr) *printResult = value;
        });
    }

    FcipEntityEntry entity{};
    std::vector<std::uint32_t> tunnels;
    Listing expected;
};

TEST_F(DiagnosticsTest, ProfileWithEverythingOff) {
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, ProfileWithEverythingOn) {
    entity.kfmFcipEntityAddress = address("10.1.1.1");
    entity.kfmFcipEntityIfIndex = 0x9B010000;
    entity.kfmFcipEntitySackOption = 1;
    entity.kfmFcipEntityPmtuEnable = 1;
    entity.kfmFcipEntityPmtuResetTimeout = 3600;
    entity.kfmFcipEntityCwmEnable = 1;
    entity.kfmFcipEntityCwmBurstSize = 50;
    entity.kfmFcipEntityMaxJitter = 1000;
    tunnels = {0x0A000001, 0x0A000002};
    expected.address = "    Internet Address is 10.1.1.1  (interface GigabitEthernet1/1)\n";
    expected.tunnels = "    Tunnels Using this Profile: fcip1 fcip2\n";
    expected.sack = "        SACK is enabled\n";
    expected.pmtu = "        PMTU discovery is enabled, reset timeout is 3600 sec\n";
    expected.congestionWindow = "        Congestion window monitoring is enabled, burst size is 50 KB\n";
    expected.jitter = "        Configured maximum jitter is 1000 us\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, Ipv4AddressOfZeroIsNotConfigured) {
    entity.kfmFcipEntityAddress = address("0.0.0.0");
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, Ipv4AddressWithOneByteSetIsConfigured) {
    entity.kfmFcipEntityAddress = address("0.0.0.1");
    expected.address = "    Internet Address is 0.0.0.1\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, Ipv4AddressCountsByItsFirstWordOnly) {
    entity.kfmFcipEntityAddress = address("0.0.0.0");
    entity.kfmFcipEntityAddress.addr[4] = 1;
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, Ipv6AddressOfZeroIsNotConfigured) {
    entity.kfmFcipEntityAddress = address("::");
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, Ipv6AddressIsConfigured) {
    entity.kfmFcipEntityAddress = address("2001:db8::1");
    expected.address = "    Internet Address is 2001:db8::1\n";
    EXPECT_EQ(print(), expected.text());
    entity.kfmFcipEntityAddress = address("::1");
    expected.address = "    Internet Address is ::1\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, AddressOfAnyOtherFamilyIsNotConfigured) {
    for (const std::uint32_t family : {0U, 3U, 0xFFFFFFFFU}) {
        entity.kfmFcipEntityAddress = address("10.1.1.1");
        entity.kfmFcipEntityAddress.addrType = family;
        EXPECT_EQ(print(), expected.text()) << family;
    }
}

TEST_F(DiagnosticsTest, ConfiguredAddressWithoutAnInterface) {
    entity.kfmFcipEntityAddress = address("10.1.1.1");
    expected.address = "    Internet Address is 10.1.1.1\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, InterfaceWithoutAConfiguredAddressIsNotPrinted) {
    entity.kfmFcipEntityIfIndex = 0x9B010000;
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, AddressIsFormattedInto128Bytes) {
    entity.kfmFcipEntityAddress = address("10.1.1.1");
    emulator::clear_calls();
    print();
    EXPECT_EQ(emulator::calls("ip_addr_to_str"), (std::vector<std::string>{"ip_addr_to_str 10.1.1.1 128"}));
}

TEST_F(DiagnosticsTest, TunnelsStandInListOrder) {
    tunnels = {0x0A000002, 0x0A000001, 0x0A000002};
    expected.tunnels = "    Tunnels Using this Profile: fcip2 fcip1 fcip2\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, EmptyTunnelListPrintsNoLine) {
    tunnels.clear();
    EXPECT_EQ(print().find("Tunnels"), std::string::npos);
}

TEST_F(DiagnosticsTest, FlagsCountAsEnabledOnlyWhenOne) {
    entity.kfmFcipEntitySackOption = 2;
    entity.kfmFcipEntityPmtuEnable = 2;
    entity.kfmFcipEntityPmtuResetTimeout = 3600;
    entity.kfmFcipEntityCwmEnable = 2;
    entity.kfmFcipEntityCwmBurstSize = 50;
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, PmtuOffWithAResetTimeoutHasABareLineEnd) {
    entity.kfmFcipEntityPmtuResetTimeout = 3600;
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, PmtuOnWithoutAResetTimeoutHasABareLineEnd) {
    entity.kfmFcipEntityPmtuEnable = 1;
    expected.pmtu = "        PMTU discovery is enabled\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, CongestionWindowOffWithABurstSizeHasABareLineEnd) {
    entity.kfmFcipEntityCwmBurstSize = 50;
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, CongestionWindowOnWithoutABurstSizeHasABareLineEnd) {
    entity.kfmFcipEntityCwmEnable = 1;
    expected.congestionWindow = "        Congestion window monitoring is enabled\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, NumbersAbove31BitsPrintNegative) {
    entity.kfmFcipEntityMaxJitter = 0xFFFFFFFF;
    expected.jitter = "        Configured maximum jitter is -1 us\n";
    EXPECT_EQ(print(), expected.text());
}

TEST_F(DiagnosticsTest, ResultIsThatOfTheLastPrint) {
    int result = -1;
    entity.kfmFcipEntityMaxJitter = 1000;
    print(&result);
    EXPECT_EQ(result, 45) << "the length of the jitter line and its end";
    entity.kfmFcipEntityMaxJitter = 0;
    print(&result);
    EXPECT_GE(result, 0);
}

// A link in brief.

class LinkBriefTest : public DiagnosticsTest {
  protected:
    void SetUp() override {
        DiagnosticsTest::SetUp();
        emulator::Port port = test_support::port_row(0x0A000001, 11, 10);
        port.otherVsan = 4093;
        emulator::add_port(port);

        link = test_support::link_row(2, 4, 0x0A000001);
        link.kfmFcipLinkExtTcpRemPort = 3226;
        link.kfmFcipLinkRemFcipEntityAddress = address("10.1.1.2");
        link.kfmFcipLinkCost = 30;
        link.kfmFcipLinkStatus = 2;
        link.kfmFcipLinkExtEthIfIndex = 0x9B010000;
        link.kfmFcipLinkExtPhyIfIndex = 0x9B010001;
    }

    std::string print(int* result) {
        emulator::Locked lock;
        return printed_by([&] { *result = fcip_print_link_entity_brief(&link); });
    }

    FcipLinkEntry link{};
    static constexpr const char* FIELDS =
        "kfmFcipEntityId : 2\n"
        "kfmFcipLinkExtTcpRemPort : 3226\n"
        "kfmFcipLinkRemFcipEntityAddress, : 10.1.1.2\n"
        "kfmFcipLinkIndex (fcip index)  : 4\n"
        "kfmFcipLinkIfIndex (fcip if-index) : 167772161\n"
        "kfmFcipLinkCost: 30\n"
        "kfmFcipLinkStatus : 2\n"
        "kfmFcipLinkExtEthIfIndex (Gigabit ifIndex) : -1694433280\n"
        "kfmFcipLinkExtPhyIfIndex:(Gigabit ifIndex) : -1694433279\n";
};

TEST_F(LinkBriefTest, FieldsStandInTheirOrderAndTheVsanFollows) {
    int result = -1;
    EXPECT_EQ(print(&result), std::string(FIELDS) +
                                  " fcip interface is in the vsan 10 \n"
                                  " fcip interface is in the vsan 4093 \n");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(emulator::calls("pm_cmi_get_port_config"),
              (std::vector<std::string>{"pm_cmi_get_port_config 1 1 key={0x0a000001,0x0a000001} 4"}));
}

TEST_F(LinkBriefTest, ResultIsThatOfTheVsanLookup) {
    emulator::fail_always("pm_cmi_get_port_config");
    int result = 0;
    EXPECT_EQ(print(&result), FIELDS);
    EXPECT_EQ(result, -1);
}

TEST_F(LinkBriefTest, RemoteAddressIsFormattedInto128Bytes) {
    int result = 0;
    emulator::clear_calls();
    print(&result);
    EXPECT_EQ(emulator::calls("ip_addr_to_str"), (std::vector<std::string>{"ip_addr_to_str 10.1.1.2 128"}));
}

// The MTU of an Ethernet interface.

// Word 7 of the record holds these bytes in network order.
std::pair<std::string, unsigned> mtu_of(std::uint8_t b0, std::uint8_t b1, std::uint8_t b2, std::uint8_t b3) {
    std::uint32_t record[8];
    std::memset(record, 0xEE, sizeof record);
    const std::uint8_t bytes[4] = {b0, b1, b2, b3};
    std::memcpy(&record[7], bytes, sizeof bytes);
    std::uint16_t mtu = 7;
    const std::string output = printed_by([&] { EXPECT_EQ(pm_cli_eth_intf_prefix_print(record, &mtu), 0); });
    return {output, mtu};
}

TEST(MtuPrintTest, WordSevenIsConvertedToHostOrder) {
    EXPECT_EQ(mtu_of(0, 0, 0x05, 0xDC), (std::pair<std::string, unsigned>("    MTU 1500  bytes\n", 1500)));
    EXPECT_EQ(mtu_of(0, 0, 0x08, 0xFC), (std::pair<std::string, unsigned>("    MTU 2300  bytes\n", 2300)));
}

TEST(MtuPrintTest, OnlyTheLow16BitsCount) {
    EXPECT_EQ(mtu_of(0x12, 0x34, 0xFF, 0xFF),
              (std::pair<std::string, unsigned>("    MTU 65535  bytes\n", 65535)));
    EXPECT_EQ(mtu_of(0, 1, 0, 0), (std::pair<std::string, unsigned>("    MTU 0  bytes\n", 0)));
}

} // namespace
