// The records that the switch's platform services hand to the provider.
//
// The platform owns these layouts; every one is held to the byte by the static assertions below, on 32-bit
// and 64-bit machines alike. Rows arrive as malloc'ed blocks that belong to the caller (see platform_row.h).
// Numbers are in host order unless a comment says "network order". Fields named reserved_* are never read.
#ifndef KESTO_PLATFORM_RECORDS_H
#define KESTO_PLATFORM_RECORDS_H

#include <cstddef>
#include <cstdint>

extern "C" {

// Address families of IpAddr::addrType.
enum : std::uint32_t { KFM_ADDR_UNSET = 0, KFM_ADDR_IPV4 = 1, KFM_ADDR_IPV6 = 2 };

// An IP address value. The unset address is all zero (the platform exports it as inet_addr_null).
struct IpAddr {
    std::uint32_t addrType;
    std::uint8_t addr[16]; // network order; an IPv4 address takes the first 4 bytes
};

// One FCIP entity, which the CIM model presents as an FCIP profile. Key: kfmFcipEntityId.
struct FcipEntityEntry {
    std::uint32_t kfmFcipEntityId;
    IpAddr kfmFcipEntityAddress;           // local address of the profile
    std::uint32_t kfmFcipEntityTcpPort;    // port on which the profile listens
    std::uint32_t kfmFcipEntitySackOption; // 1 = selective acknowledgement
    std::uint32_t kfmFcipEntitySeqNumWrap; // 1 = sequence-number wrap supported
    std::uint32_t kfmFcipEntityPhbSupport; // 1 = per-hop-behaviour support
    std::uint32_t reserved_40;
    std::uint32_t kfmFcipEntityPmtuEnable;        // 1 = path-MTU discovery
    std::uint32_t kfmFcipEntityPmtuResetTimeout;  // seconds, 0 = none
    std::uint32_t kfmFcipEntityKeepAliveTimeout;  // seconds
    std::uint32_t kfmFcipEntityMinRetransmitTime; // milliseconds
    std::uint32_t kfmFcipEntityMaxRetransmissions;
    std::uint32_t kfmFcipEntitySendBufSize;   // KB
    std::uint32_t kfmFcipEntityRoundTripTime; // microseconds
    std::uint32_t kfmFcipEntityMaxBandwidth;  // kbit/s
    std::uint32_t kfmFcipEntityMinBandwidth;  // kbit/s
    std::uint32_t kfmFcipEntityIfIndex;       // Ethernet interface the profile is bound to, 0 = none
    std::uint32_t kfmFcipEntityCwmEnable;     // 1 = congestion-window monitoring
    std::uint32_t kfmFcipEntityCwmBurstSize;  // KB
    std::uint32_t kfmFcipEntityMaxJitter;     // microseconds, 0 = automatic
};

// One FCIP link, that is one tunnel. Key: {kfmFcipEntityId, kfmFcipLinkIndex}.
struct FcipLinkEntry {
    std::uint32_t kfmFcipEntityId;
    std::uint32_t kfmFcipLinkIndex;   // zero-based; tunnel numbers in CIM keys are this plus one
    std::uint32_t kfmFcipLinkIfIndex; // if-index of the FCIP interface
    std::uint32_t kfmFcipLinkCost;
    std::uint32_t reserved_16;
    std::uint8_t kfmFcipLinkRemFcipEntityWWN[8];
    std::uint32_t kfmFcipLinkRemFcipEntityId;
    IpAddr kfmFcipLinkRemFcipEntityAddress;
    std::uint32_t reserved_52;
    std::uint32_t kfmFcipLinkStatus;
    std::uint32_t kfmFcipLinkExtPassiveMode; // non-zero = passive
    std::uint32_t kfmFcipLinkExtNumTcpConns;
    std::uint32_t kfmFcipLinkExtTimeStampEnable; // non-zero = time stamps are checked
    std::uint32_t kfmFcipLinkExtTimeStampTolerance;
    std::uint32_t kfmFcipLinkExtTcpRemPort;
    std::uint32_t kfmFcipLinkExtLocalPortEnable;    // 1 = enabled
    std::uint32_t kfmFcipLinkExtSpecialFrameEnable; // 1 = enabled
    std::uint32_t reserved_88;
    std::uint32_t kfmFcipLinkExtBPortKaEnable; // 1 = enabled
    std::uint32_t kfmFcipLinkExtCntrlQos;
    std::uint32_t kfmFcipLinkExtDataQos;
    std::uint32_t kfmFcipLinkExtEthIfIndex;    // Gigabit Ethernet port that carries the tunnel
    std::uint32_t kfmFcipLinkExtWriteAccel;    // 1 = configured
    std::uint32_t kfmFcipLinkExtIpCompression; // compression mode, 1 = none
    std::uint32_t kfmFcipLinkExtTapeAccel;     // 1 = configured
    std::uint32_t kfmFcipLinkExtFlowCtrlBufSize;
    std::uint32_t kfmFcipLinkExtIpSec;             // 1 = enabled
    std::uint32_t kfmFcipLinkExtPhyIfIndex;        // physical Gigabit port
    std::uint32_t kfmFcipLinkExtWriteAccelOper;    // 1 = operational
    std::uint32_t kfmFcipLinkExtTapeAccelOper;     // 1 = operational
    std::uint32_t kfmFcipLinkExtTapeAccelReadOper; // 1 = operational
    std::uint8_t reserved_144[1032];
};

// Key of the link table and of the link error table.
struct FcipLinkKey {
    std::uint32_t entityId;
    std::uint32_t linkIndex;
};

// The error counters of one link: nine 64-bit counters (low word first) and four more that are
// not read. The platform's row holds at least these 28 words; nothing may be read past them.
struct FcipLinkErrors {
    std::uint32_t kfmFcipEntityId;
    std::uint32_t kfmFcipLinkIndex;
    std::uint32_t counters[26]; // words 2 to 27 of the row
};

struct FcipTcpConnKey {
    std::uint32_t entityId;
    std::uint32_t linkIndex;
    std::uint16_t localPort;  // the entity's kfmFcipEntityTcpPort
    std::uint16_t remotePort; // the link's kfmFcipLinkExtTcpRemPort
};

// One TCP connection of a tunnel; the row may be longer.
struct FcipTcpConnEntry {
    std::uint32_t reserved_0[4];
    std::uint32_t connectionPurpose;
    std::uint32_t receiverWindowSize;
    std::uint32_t maximumSegmentSize;
    std::uint32_t connectionTimeOut;
};

// A port manager row. The layout is packed; the row may be longer.
struct __attribute__((packed)) PortInfo {
    std::uint32_t ifIndex;
    std::uint8_t reserved_4[209];
    std::uint32_t vsan;      // the port's VSAN
    std::uint32_t otherVsan; // a second VSAN number, only ever printed
};

// A port's frame and byte counters. The layout is packed; the record may be longer.
struct __attribute__((packed)) PortCounters {
    std::uint8_t reserved_0[259];
    std::uint32_t inMulticast;
    std::uint32_t inBroadcast;
    std::uint32_t outMulticast;
    std::uint32_t outBroadcast;
    std::uint64_t inBytes;
    std::uint64_t inUnicast;
    std::uint64_t reserved_291;
    std::uint64_t reserved_299;
    std::uint64_t outBytes;
    std::uint64_t outUnicast;
    std::uint64_t reserved_323;
    std::uint64_t reserved_331;
};

// The switch-wide IP configuration.
struct IpMiscCfg {
    std::uint32_t ipForwarding; // non-zero = enabled
    std::uint32_t defaultTtl;
};

// The interfaces that use a profile: count, followed by that many u32 if-indexes.
struct EntityIfList {
    std::uint32_t count;
};

// The two interface address records of the IP configuration service.
struct IpIntfAddress {
    std::uint32_t reserved_0;
    std::uint32_t subnetMask; // network order
    std::uint32_t reserved_8[7];
};
struct IpIntfInetAddrs {
    std::uint32_t reserved_0[8];
    std::uint32_t prefixLength;
};

// The line card's counters. All are big-endian on the wire and kept so here.
struct IpStatsReply {
    std::uint8_t bytes[172]; // what the provider uses of a reply; a received block has the reply's own size
};
struct EthMacStats {
    std::uint64_t counters[32];
};
struct TcpStatsReply {
    std::uint32_t words[338];
};

// A message of the transport. The transport fills the slot, mts_drop clears it.
struct MtsMessage {
    void* handle;
};

// What mts_recv waits for.
struct MtsSelector {
    std::uint32_t kind; // 1 on every receive of the provider
    std::uint32_t reserved_4;
    std::uint32_t option;
    std::uint32_t token; // the request's token, 0 = whatever comes next
    std::uint32_t reserved_16[6];
};

} // extern "C"

static_assert(sizeof(IpAddr) == 20);
static_assert(sizeof(FcipEntityEntry) == 96);
static_assert(offsetof(FcipEntityEntry, kfmFcipEntityTcpPort) == 24);
static_assert(offsetof(FcipEntityEntry, kfmFcipEntitySackOption) == 28);
static_assert(offsetof(FcipEntityEntry, kfmFcipEntityPmtuEnable) == 44);
static_assert(offsetof(FcipEntityEntry, kfmFcipEntityRoundTripTime) == 68);
static_assert(offsetof(FcipEntityEntry, kfmFcipEntityIfIndex) == 80);
static_assert(offsetof(FcipEntityEntry, kfmFcipEntityMaxJitter) == 92);
static_assert(sizeof(FcipLinkEntry) == 1176);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkRemFcipEntityWWN) == 20);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkRemFcipEntityId) == 28);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkRemFcipEntityAddress) == 32);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkStatus) == 56);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkExtTcpRemPort) == 76);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkExtBPortKaEnable) == 92);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkExtEthIfIndex) == 104);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkExtIpCompression) == 112);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkExtPhyIfIndex) == 128);
static_assert(offsetof(FcipLinkEntry, kfmFcipLinkExtTapeAccelReadOper) == 140);
static_assert(offsetof(FcipLinkEntry, reserved_144) == 144);
static_assert(sizeof(FcipLinkKey) == 8);
static_assert(sizeof(FcipLinkErrors) == 112);
static_assert(sizeof(FcipTcpConnKey) == 12);
static_assert(offsetof(FcipTcpConnEntry, connectionPurpose) == 16);
static_assert(sizeof(FcipTcpConnEntry) == 32);
static_assert(offsetof(PortInfo, vsan) == 213);
static_assert(sizeof(PortInfo) == 221);
static_assert(offsetof(PortCounters, inMulticast) == 259);
static_assert(offsetof(PortCounters, inBytes) == 275);
static_assert(offsetof(PortCounters, outBytes) == 307);
static_assert(offsetof(PortCounters, outUnicast) == 315);
static_assert(sizeof(PortCounters) == 339);
static_assert(sizeof(IpMiscCfg) == 8);
static_assert(sizeof(EntityIfList) == 4);
static_assert(sizeof(IpIntfAddress) == 36);
static_assert(sizeof(IpIntfInetAddrs) == 36);
static_assert(sizeof(EthMacStats) == 256);
static_assert(sizeof(TcpStatsReply) == 1352);
static_assert(sizeof(MtsMessage) == sizeof(void*));
static_assert(sizeof(MtsSelector) == 40);

#endif
