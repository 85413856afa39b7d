// Ports that are bound to a network interface of the host.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <net/if.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

constexpr std::uint32_t BOUND = 0x9B0A0001;

std::string kernel_value(const std::string& interface, const std::string& file) {
    std::ifstream stream("/sys/class/net/" + interface + "/" + file);
    std::string value;
    EXPECT_TRUE(stream >> value) << interface << "/" << file;
    return value;
}

std::uint64_t kernel_counter(const std::string& interface, const std::string& counter) {
    return std::stoull(kernel_value(interface, "statistics/" + counter));
}

// Every Linux machine has the loopback interface.
class BoundPort : public LockedTest {
  protected:
    static void bind(const char* device) {
        emulator::add_port({.ifIndex = BOUND,
                            .slot = 10,
                            .address = "02:00:00:00:00:99",
                            .mtu = 1234,
                            .subnetMask = 0xFFFF0000,
                            .prefixLength = 16,
                            .device = device,
                            .inBytes = {77, 0},
                            .ethernetStats = emulator::LineCardReply()});
    }
    static std::uint32_t mtu() {
        std::uint32_t record[64]{};
        EXPECT_EQ(pm_get_clear_eth_stats(mts_q, BOUND, BOUND, 1, record), 0);
        return ntohl(record[7]);
    }
    static std::uint32_t word_of(int (*service)(std::uint32_t, std::uint32_t, void**), std::size_t word) {
        Row<void> record;
        EXPECT_EQ(service(mts_q, BOUND, record.slot()), 0);
        std::uint32_t words[9]{};
        if (record) std::memcpy(words, record.get(), sizeof words);
        return words[word];
    }
    static std::string address() {
        char text[32] = "";
        PortInfo row{};
        row.ifIndex = BOUND;
        EXPECT_EQ(pm_cim_get_network_address(text, &row, 26), 0);
        return text;
    }
    static std::uint64_t in_bytes() {
        Row<PortCounters> row;
        EXPECT_EQ(pm_get_port_counters(mts_q, BOUND, 0, 6, row.slot(), 0), 0);
        return row->inBytes;
    }
};

TEST_F(BoundPort, ShowsTheKernelsValues) {
    bind("lo");
    EXPECT_EQ(std::to_string(mtu()), kernel_value("lo", "mtu"));
    EXPECT_EQ(address(), kernel_value("lo", "address"));
    const std::uint64_t before = kernel_counter("lo", "rx_bytes");
    const std::uint64_t shown = in_bytes();
    EXPECT_LE(before, shown);
    EXPECT_LE(shown, kernel_counter("lo", "rx_bytes"));
    char name[32] = "";
    EXPECT_EQ(netcfg_print_ifname(name, BOUND), 0);
    EXPECT_STREQ(name, "lo");
}

TEST_F(BoundPort, ShowsTheInterfacesMaskAndPrefix) {
    bind("lo");
    EXPECT_EQ(word_of(ipconf_get_intf_ip_address, 1), htonl(0xFF000000)) << "127.0.0.1/8";
    const std::uint32_t prefix = word_of(ipconf_get_if_inet_addrs, 8);
    EXPECT_TRUE(prefix == 8 || prefix == 128) << prefix << " is neither 127.0.0.1/8 nor ::1/128";
}

TEST_F(BoundPort, LineCardAnswersTheKernelsCounters) {
    bind("lo");
    const std::uint64_t before = kernel_counter("lo", "rx_bytes");
    std::uint8_t payload[32]{};
    payload[5] = 1;
    const std::uint32_t network = hton_if_index(BOUND), one = 1;
    std::memcpy(payload + 24, &network, sizeof network);
    std::memcpy(payload + 28, &one, sizeof one);
    MtsMessage request{}, reply{};
    ASSERT_EQ(
        mts_send(mts_q, idxmap_node_by_if_index(BOUND), 943, 1918, payload, sizeof payload, &request, 0, 0),
        0);
    MtsSelector selector{};
    selector.kind = 1;
    selector.option = 5;
    selector.token = mts_rr_token_get(&request);
    mts_drop(mts_q, &request);
    ASSERT_EQ(mts_recv(mts_q, &reply, &selector), 0);
    const auto* bytes = static_cast<const std::uint8_t*>(mts_payload_get(&reply));
    std::uint64_t shown = 0;
    for (int i = 112; i < 120; ++i) {
        shown = shown << 8 | bytes[i];
    }
    mts_drop(mts_q, &reply);
    EXPECT_LE(before, shown);
    EXPECT_LE(shown, kernel_counter("lo", "rx_bytes"));
}

TEST_F(BoundPort, WithoutTheInterfaceThePortsOwnValuesStand) {
    bind("no-such-if0");
    EXPECT_EQ(if_nametoindex("no-such-if0"), 0U);
    EXPECT_EQ(mtu(), 1234U);
    EXPECT_EQ(address(), "02:00:00:00:00:99");
    EXPECT_EQ(in_bytes(), 77U);
    EXPECT_EQ(word_of(ipconf_get_intf_ip_address, 1), htonl(0xFFFF0000));
    EXPECT_EQ(word_of(ipconf_get_if_inet_addrs, 8), 16U);
    char name[32] = "";
    EXPECT_EQ(netcfg_print_ifname(name, BOUND), 0);
    EXPECT_STREQ(name, "gige10-1");
}

TEST_F(BoundPort, FirstIsARealInterfaceOrNone) {
    bind("first");
    const std::string name = emulator::find_port(BOUND)->linuxName;
    EXPECT_NE(name, "lo");
    if (if_nametoindex(name.c_str()) == 0) {
        EXPECT_EQ(mtu(), 1234U) << "a host without a network";
    } else {
        EXPECT_EQ(std::to_string(mtu()), kernel_value(name, "mtu"));
    }
}

} // namespace
} // namespace emulator_test
