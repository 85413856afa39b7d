#include "tests/support/one_tunnel.h"

#include <algorithm>
#include <iterator>

#include "tests/support/rows.h"

namespace one_tunnel {

FcipLinkEntry link() {
    FcipLinkEntry row = test_support::link_row(PROFILE, LINK_INDEX, IF_INDEX);
    row.kfmFcipLinkCost = 1012;
    row.reserved_16 = 1016;
    const std::uint8_t wwn[8] = {0x20, 0x00, 0x00, 0x05, 0x30, 0x04, 0x05, 0x06};
    std::copy(std::begin(wwn), std::end(wwn), row.kfmFcipLinkRemFcipEntityWWN);
    row.kfmFcipLinkRemFcipEntityId = 7;
    row.kfmFcipLinkRemFcipEntityAddress = test_support::address("10.1.1.2");
    row.reserved_52 = 1052;
    row.kfmFcipLinkStatus = 1056;
    row.kfmFcipLinkExtPassiveMode = 1060; // low byte 36
    row.kfmFcipLinkExtNumTcpConns = 1064;
    row.kfmFcipLinkExtTimeStampEnable = 1068; // low byte 44
    row.kfmFcipLinkExtTimeStampTolerance = 1072;
    row.kfmFcipLinkExtTcpRemPort = 1076;
    row.kfmFcipLinkExtLocalPortEnable = 1;
    row.kfmFcipLinkExtSpecialFrameEnable = 1;
    row.reserved_88 = 1088;
    row.kfmFcipLinkExtBPortKaEnable = 1;
    row.kfmFcipLinkExtCntrlQos = 1096;
    row.kfmFcipLinkExtDataQos = 1100;
    row.kfmFcipLinkExtEthIfIndex = ETHERNET;
    row.kfmFcipLinkExtWriteAccel = 1;
    row.kfmFcipLinkExtIpCompression = 1112;
    row.kfmFcipLinkExtTapeAccel = 1;
    row.kfmFcipLinkExtFlowCtrlBufSize = 1120;
    row.kfmFcipLinkExtIpSec = 1;
    row.kfmFcipLinkExtPhyIfIndex = 1128;
    row.kfmFcipLinkExtWriteAccelOper = 1;
    row.kfmFcipLinkExtTapeAccelOper = 1;
    row.kfmFcipLinkExtTapeAccelReadOper = 1;
    return row;
}

FcipEntityEntry profile() {
    FcipEntityEntry row = test_support::entity_row(PROFILE);
    row.kfmFcipEntityAddress = test_support::address("10.1.1.1");
    row.kfmFcipEntityTcpPort = 2024;
    row.kfmFcipEntitySackOption = 1;
    row.kfmFcipEntitySeqNumWrap = 1;
    row.kfmFcipEntityPhbSupport = 1;
    row.reserved_40 = 2040;
    row.kfmFcipEntityPmtuEnable = 1;
    row.kfmFcipEntityPmtuResetTimeout = 2048;
    row.kfmFcipEntityKeepAliveTimeout = 2052;
    row.kfmFcipEntityMinRetransmitTime = 2056;
    row.kfmFcipEntityMaxRetransmissions = 2060;
    row.kfmFcipEntitySendBufSize = 2064;
    row.kfmFcipEntityRoundTripTime = 2068;
    row.kfmFcipEntityMaxBandwidth = 2072;
    row.kfmFcipEntityMinBandwidth = 2076;
    row.kfmFcipEntityIfIndex = 2080;
    row.kfmFcipEntityCwmEnable = 2084;
    row.kfmFcipEntityCwmBurstSize = 2088;
    row.kfmFcipEntityMaxJitter = 2092;
    return row;
}

FcipTcpConnKey tcp_connection_key() {
    return {PROFILE, LINK_INDEX, 2024, 1076};
}

FcipTcpConnEntry tcp_connection() {
    FcipTcpConnEntry row{};
    row.connectionPurpose = 2;
    row.receiverWindowSize = 3020;
    row.maximumSegmentSize = 3024;
    row.connectionTimeOut = 3028;
    return row;
}

PortInfo ethernet_row() {
    PortInfo row{};
    row.ifIndex = ETHERNET;
    return row;
}

void put_big_endian_32(std::vector<std::uint8_t>& bytes, std::size_t position, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes.at(position + i) = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
}

void put_big_endian_64(std::vector<std::uint8_t>& bytes, std::size_t position, std::uint64_t value) {
    put_big_endian_32(bytes, position, static_cast<std::uint32_t>(value >> 32));
    put_big_endian_32(bytes, position + 4, static_cast<std::uint32_t>(value));
}

// The status at byte 10 stays 0 in all three. The bytes before it, which nothing reads, do not.
std::vector<std::uint8_t> ip_reply() {
    std::vector<std::uint8_t> bytes(172);
    std::fill_n(bytes.begin(), 10, std::uint8_t{0xFF});
    for (std::size_t n = 12; n < bytes.size(); n += 4) {
        put_big_endian_32(bytes, n, static_cast<std::uint32_t>(100000 + n));
    }
    put_big_endian_32(bytes, 116, 116);
    return bytes;
}

std::vector<std::uint8_t> mac_reply() {
    std::vector<std::uint8_t> bytes(256);
    for (std::size_t n = 16; n < bytes.size(); n += 8) {
        put_big_endian_64(bytes, n, 0x100000000ULL + n);
    }
    return bytes;
}

std::vector<std::uint8_t> tcp_reply() {
    std::vector<std::uint8_t> bytes(1352);
    for (std::size_t n = 12; n < bytes.size(); n += 4) {
        put_big_endian_32(bytes, n, static_cast<std::uint32_t>(200000 + n));
    }
    return bytes;
}

void install() {
    emulator::load_empty();
    emulator::set_clock(0);
    emulator::set_system(HOST, SYSTEM, {0x20, 0x00, 0x00, 0x05, 0x30, 0x01, 0x02, 0x03});
    emulator::set_ip_configuration({1, 64});
    // A system name is at most 20 characters of the VSAN's.
    emulator::add_vsan({10, "fcip", true, "20:0a:00:05:30:01:02:03"});

    emulator::Port fcip = test_support::port_row(IF_INDEX, test_support::FCIP_PORT, 10);
    fcip.name = "fcip5";
    emulator::add_port(fcip);

    emulator::Port ethernet;
    ethernet.ifIndex = ETHERNET;
    ethernet.type = test_support::GIGABIT_ETHERNET_PORT;
    ethernet.name = "GigabitEthernet1/1";
    ethernet.address = "02:00:00:00:00:01";
    ethernet.mtu = 2300;
    ethernet.subnetMask = 0xFFFFFE00;
    ethernet.prefixLength = 23;
    // The counters hold their positions in the record, the 64-bit ones 2^33 more.
    ethernet.inMulticast.start = 259;
    ethernet.inBroadcast.start = 263;
    ethernet.outMulticast.start = 267;
    ethernet.outBroadcast.start = 271;
    ethernet.inBytes.start = 0x200000000 + 275;
    ethernet.inUnicast.start = 0x200000000 + 283;
    ethernet.outBytes.start = 0x200000000 + 307;
    ethernet.outUnicast.start = 0x200000000 + 315;
    emulator::add_port(ethernet);

    emulator::add_entity(profile());
    emulator::add_link(link());
    emulator::add_tcp_connection(tcp_connection_key(), tcp_connection());
    emulator::set_reply(IP_STATISTICS, ip_reply());
    emulator::set_reply(MAC_STATISTICS, mac_reply());
    emulator::set_reply(TCP_STATISTICS, tcp_reply(), {std::vector<std::uint8_t>(64)});
}

void OneTunnelTest::SetUp() {
    ProviderTest::SetUp();
    install();
    forget();
}

void OneTunnelTest::forget() {
    broker.clear_calls();
    emulator::clear_calls();
}

void OneTunnelTest::update() {
    emulator::add_entity(profile);
    emulator::add_link(link);
}

void OneTunnelTest::add_two_tunnels() {
    for (const std::uint32_t next : {1U, 2U}) {
        FcipLinkEntry another = one_tunnel::link();
        another.kfmFcipLinkIndex += next;
        another.kfmFcipLinkIfIndex += next;
        emulator::add_link(another);
        emulator::add_port(test_support::port_row(another.kfmFcipLinkIfIndex, test_support::FCIP_PORT, 10));
    }
}

} // namespace one_tunnel
