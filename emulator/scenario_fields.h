// The members of a scenario's objects that set one number of a record: their names and their places.
//
// The names are those of the platform's fields without their common prefix: kfmFcipLinkExtWriteAccel is
// "writeAccel", kfmFcipEntityTcpPort is "tcpPort".
#ifndef KESTO_EMULATOR_SCENARIO_FIELDS_H
#define KESTO_EMULATOR_SCENARIO_FIELDS_H

#include <cstddef>
#include <cstdint>

#include "emulator/switch_state.h"

namespace emulator {

enum class FieldKind {
    Number,
    Flag,      // true, false or any number
    Interface, // a port of the switch
};

template <typename Record>
struct Field {
    const char* name;
    std::uint32_t Record::*place;
    FieldKind kind = FieldKind::Number;
};

inline constexpr Field<FcipEntityEntry> PROFILE_FIELDS[] = {
    {"tcpPort", &FcipEntityEntry::kfmFcipEntityTcpPort},
    {"sackOption", &FcipEntityEntry::kfmFcipEntitySackOption, FieldKind::Flag},
    {"seqNumWrap", &FcipEntityEntry::kfmFcipEntitySeqNumWrap, FieldKind::Flag},
    {"phbSupport", &FcipEntityEntry::kfmFcipEntityPhbSupport, FieldKind::Flag},
    {"pmtuEnable", &FcipEntityEntry::kfmFcipEntityPmtuEnable, FieldKind::Flag},
    {"pmtuResetTimeout", &FcipEntityEntry::kfmFcipEntityPmtuResetTimeout},
    {"keepAliveTimeout", &FcipEntityEntry::kfmFcipEntityKeepAliveTimeout},
    {"minRetransmitTime", &FcipEntityEntry::kfmFcipEntityMinRetransmitTime},
    {"maxRetransmissions", &FcipEntityEntry::kfmFcipEntityMaxRetransmissions},
    {"sendBufSize", &FcipEntityEntry::kfmFcipEntitySendBufSize},
    {"roundTripTime", &FcipEntityEntry::kfmFcipEntityRoundTripTime},
    {"maxBandwidth", &FcipEntityEntry::kfmFcipEntityMaxBandwidth},
    {"minBandwidth", &FcipEntityEntry::kfmFcipEntityMinBandwidth},
    {"ifIndex", &FcipEntityEntry::kfmFcipEntityIfIndex, FieldKind::Interface},
    {"cwmEnable", &FcipEntityEntry::kfmFcipEntityCwmEnable, FieldKind::Flag},
    {"cwmBurstSize", &FcipEntityEntry::kfmFcipEntityCwmBurstSize},
    {"maxJitter", &FcipEntityEntry::kfmFcipEntityMaxJitter},
};

inline constexpr Field<FcipLinkEntry> TUNNEL_FIELDS[] = {
    {"ifIndex", &FcipLinkEntry::kfmFcipLinkIfIndex, FieldKind::Interface},
    {"cost", &FcipLinkEntry::kfmFcipLinkCost},
    {"remEntityId", &FcipLinkEntry::kfmFcipLinkRemFcipEntityId},
    {"status", &FcipLinkEntry::kfmFcipLinkStatus},
    {"passiveMode", &FcipLinkEntry::kfmFcipLinkExtPassiveMode, FieldKind::Flag},
    {"numTcpConns", &FcipLinkEntry::kfmFcipLinkExtNumTcpConns},
    {"timeStampEnable", &FcipLinkEntry::kfmFcipLinkExtTimeStampEnable, FieldKind::Flag},
    {"timeStampTolerance", &FcipLinkEntry::kfmFcipLinkExtTimeStampTolerance},
    {"tcpRemPort", &FcipLinkEntry::kfmFcipLinkExtTcpRemPort},
    {"localPortEnable", &FcipLinkEntry::kfmFcipLinkExtLocalPortEnable, FieldKind::Flag},
    {"specialFrameEnable", &FcipLinkEntry::kfmFcipLinkExtSpecialFrameEnable, FieldKind::Flag},
    {"bPortKaEnable", &FcipLinkEntry::kfmFcipLinkExtBPortKaEnable, FieldKind::Flag},
    {"cntrlQos", &FcipLinkEntry::kfmFcipLinkExtCntrlQos},
    {"dataQos", &FcipLinkEntry::kfmFcipLinkExtDataQos},
    {"ethIfIndex", &FcipLinkEntry::kfmFcipLinkExtEthIfIndex, FieldKind::Interface},
    {"writeAccel", &FcipLinkEntry::kfmFcipLinkExtWriteAccel, FieldKind::Flag},
    {"ipCompression", &FcipLinkEntry::kfmFcipLinkExtIpCompression},
    {"tapeAccel", &FcipLinkEntry::kfmFcipLinkExtTapeAccel, FieldKind::Flag},
    {"flowCtrlBufSize", &FcipLinkEntry::kfmFcipLinkExtFlowCtrlBufSize},
    {"ipSec", &FcipLinkEntry::kfmFcipLinkExtIpSec, FieldKind::Flag},
    {"phyIfIndex", &FcipLinkEntry::kfmFcipLinkExtPhyIfIndex, FieldKind::Interface},
    {"writeAccelOper", &FcipLinkEntry::kfmFcipLinkExtWriteAccelOper, FieldKind::Flag},
    {"tapeAccelOper", &FcipLinkEntry::kfmFcipLinkExtTapeAccelOper, FieldKind::Flag},
    {"tapeAccelReadOper", &FcipLinkEntry::kfmFcipLinkExtTapeAccelReadOper, FieldKind::Flag},
};

inline constexpr Field<FcipTcpConnEntry> TCP_CONNECTION_FIELDS[] = {
    {"connectionPurpose", &FcipTcpConnEntry::connectionPurpose},
    {"receiverWindowSize", &FcipTcpConnEntry::receiverWindowSize},
    {"maximumSegmentSize", &FcipTcpConnEntry::maximumSegmentSize},
    {"connectionTimeOut", &FcipTcpConnEntry::connectionTimeOut},
};

// In the row's order.
inline constexpr const char* LINK_ERROR_NAMES[] = {
    "lossOfFcSynchs",   "sfNotRcv",         "sfRespNotRcv",    "sfRespMismatch",   "sfInvalidNonce",
    "duplicateSfRcv",   "sfInvalidWwn",     "bb2LkaTimeOut",   "sntpTimeStampExp", "tooManyErrors",
    "keepAliveTimeOut", "datagramsDropped", "saParamMismatch",
};

struct PortCounterField {
    const char* name;
    Counter Port::*place;
};
inline constexpr PortCounterField PORT_COUNTER_FIELDS[] = {
    {"inMulticast", &Port::inMulticast},   {"inBroadcast", &Port::inBroadcast},
    {"outMulticast", &Port::outMulticast}, {"outBroadcast", &Port::outBroadcast},
    {"inBytes", &Port::inBytes},           {"inUnicast", &Port::inUnicast},
    {"outBytes", &Port::outBytes},         {"outUnicast", &Port::outUnicast},
};

enum class Width {
    Word, // as wide as the reply's words
    Long, // 64 bits
};

// A counter of a line card's reply, at a byte offset.
struct ReplyCounter {
    const char* name;
    std::uint32_t offset;
    Width width = Width::Word;
};
inline constexpr ReplyCounter IP_COUNTERS[] = {
    {"received", 36},          {"delivered", 40},          {"sent", 52},
    {"badLength", 56},         {"badHeaderLength", 64},    {"badChecksum", 68},
    {"badVersion", 72},        {"tooShort", 76},           {"fragmentsReceived", 80},
    {"sentDiscarded", 84},     {"forwarded", 92},          {"unknownProtocol", 108},
    {"reassembled", 116},      {"fragmented", 120},        {"fragmentsCreated", 124},
    {"cannotFragment", 128},   {"noRoute", 136},           {"badOptions", 140},
    {"reassemblyFailed", 148}, {"receivedDiscarded", 152},
};
inline constexpr ReplyCounter ETHERNET_COUNTERS[] = {
    {"bytesTransmitted", 32}, {"collisions", 40},         {"lateCollisions", 48}, {"macErrors", 56},
    {"fcsErrors", 64},        {"packetsTransmitted", 88}, {"bytesReceived", 112}, {"packetsReceived", 144},
    {"symbolErrors", 184},    {"alignmentErrors", 192},
};
inline constexpr ReplyCounter TCP_COUNTERS[] = {
    {"activeOpens", 36},
    {"passiveOpens", 44},
    {"established", 52},
    {"attemptFails", 68},
    {"segmentsRetransmitted", 196},
    {"segmentsReceived", 268},
    {"badChecksum", 288, Width::Long},
    {"badOffset", 296, Width::Long},
    {"tooShort", 304, Width::Long},
    {"afterWindow", 312, Width::Long},
    {"afterClose", 320, Width::Long},
};

} // namespace emulator

#endif
