#include "tests/classes/golden_tables.h"

#include <cmpidt.h>
using test_support::Sets;

namespace class_tests::golden {

namespace {

constexpr const char* LOGICAL = "KESTO_LogicalComputerSystem";
constexpr const char* PHYSICAL = "KESTO_PhysicalComputerSystem";
constexpr const char* VSAN_SYSTEM = "20:0a:00:05:30:01:02"; // the first 20 characters of the VSAN's name
constexpr const char* REMOTE_FORMAT = "Remote Entity ID_LocalIP_RemoteIP "; // ends in a blank

} // namespace

// Endpoints.

const Sets FCIP_ENDPOINT{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"Name", CMPI_chars, "5_10.1.1.1_10.1.1.2"},
    {"CreationClassName", CMPI_chars, "KESTO_FCIPProtocolEndPoint"},
    {"NameFormat", CMPI_chars, "Other"},
    {"TunnelID", CMPI_uint16, 5},
    {"RemoteIPAddress", CMPI_chars, "10.1.1.2"},
    {"LocalIPAddress", CMPI_chars, "10.1.1.1"},
    {"RemoteWWN", CMPI_chars, "20:00:00:05:30:04:05:06"},
    {"LocalWWN", CMPI_chars, "20:00:00:05:30:01:02:03"},
    {"CommittedRate", CMPI_uint32, 2072},
    {"Compression", CMPI_boolean, 1},
    {"SelectiveACK", CMPI_boolean, 1},
    {"WAN_TOV", CMPI_boolean, 1},
    {"PathMTU", CMPI_boolean, 1},
    {"MaxRetransmissions", CMPI_uint32, 2060},
    {"KeepAliveTimeout", CMPI_uint32, 2052},
    {"RetransmitTime", CMPI_uint16, 29775},
    {"ProtocolIFType", CMPI_uint16, 56},
};
const Sets FCIP_ENDPOINT_KEYS{
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"CreationClassName", CMPI_chars, "KESTO_FCIPProtocolEndPoint"},
    {"Name", CMPI_chars, "5_10.1.1.1_10.1.1.2"},
};

const Sets TCP_ENDPOINT{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"Name", CMPI_chars, "17"},
    {"CreationClassName", CMPI_chars, "KESTO_TCPProtocolEndPoint"},
    {"NameFormat", CMPI_chars, "Other"},
    {"PortNumber", CMPI_uint32, 2024},
    {"RemotePortNumber", CMPI_uint32, 1076},
    {"MaximumSegmentSize", CMPI_uint32, 3024},
    {"ReceiverWindowSize", CMPI_uint32, 3020},
    {"ConnectionTimeOut", CMPI_uint32, 3028},
    {"ConnectionPurpose", CMPI_chars, "2"},
};
const Sets TCP_ENDPOINT_KEYS{
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"CreationClassName", CMPI_chars, "KESTO_TCPProtocolEndPoint"},
    {"Name", CMPI_chars, "17"},
};

const Sets IP_ENDPOINT{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"IPv4Address", CMPI_chars, "10.1.1.1"},
    {"IPv6Address", CMPI_chars, "NULL"},
    {"Name", CMPI_chars, "17_10.1.1.1_10.1.1.2"},
    {"CreationClassName", CMPI_chars, "KESTO_IPProtocolEndPoint"},
    {"NameFormat", CMPI_chars, "Other"},
    {"SubnetMask", CMPI_chars, "255.255.254.0"},
    {"PrefixLength", CMPI_uint8, 23},
    {"AddressOrigin", CMPI_uint16, 3},
    {"ProtocolIFType", CMPI_uint16, 4096},
    {"MaxTransmissionUnit", CMPI_uint32, 2300},
    {"EnableIPForwarding", CMPI_boolean, 0},
    {"PathMTUDiscovery", CMPI_boolean, 1},
    {"FragmentationEnabled", CMPI_boolean, 0},
};
const Sets IP_ENDPOINT_KEYS{
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"CreationClassName", CMPI_chars, "KESTO_IPProtocolEndPoint"},
    {"Name", CMPI_chars, "17_10.1.1.1_10.1.1.2"},
};

// Settings and profile.

const Sets FCIP_SETTINGS{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"ElementName", CMPI_chars, "17"},
    {"InstanceID", CMPI_chars, "17"},
    {"CreationClassName", CMPI_chars, "KESTO_FCIPSettings"},
    {"ConnectionUsageFlags", CMPI_uint16, 2},
    {"SpecialFrameTimeout", CMPI_uint32, 90},
    {"KeepAliveTimeout", CMPI_uint32, 2052},
    {"TunnelID", CMPI_uint32, 4},
    {"PassiveMode", CMPI_boolean, 36}, // the low byte of 1060
    {"NumTcpConnections", CMPI_uint32, 1064},
    {"CheckTimestamp", CMPI_boolean, 44}, // the low byte of 1068
    {"TimeStampTolerance", CMPI_uint32, 1072},
    {"TcpRemPort", CMPI_uint32, 1076},
    {"LocalPortEnable", CMPI_boolean, 1},
    {"SpecialFrameEnable", CMPI_boolean, 1},
    {"BPortKAEnable", CMPI_boolean, 1},
    {"CntrlQOSField", CMPI_uint32, 1096},
    {"DataQOSField", CMPI_uint32, 1100},
    {"EthIfIndex", CMPI_uint32, 2600534016},
    {"WriteAccelerator", CMPI_boolean, 1},
    {"TapeAccelerator", CMPI_boolean, 1},
    {"IPSec", CMPI_boolean, 1},
    {"WriteAccOper", CMPI_boolean, 1},
    {"TapeAccOper", CMPI_boolean, 1},
    {"TapeAccReadOper", CMPI_boolean, 1},
    {"IPComp", CMPI_uint32, 1112},
    {"FlowCtrlBufSize", CMPI_uint32, 1120},
};
const Sets SETTINGS_KEYS{{"InstanceID", CMPI_chars, "17"}};

const Sets PROFILE{
    {"InstanceID", CMPI_chars, "3"},
    {"Name", CMPI_chars, "3"},
    {"Caption", CMPI_chars, "3"},
    {"ElementName", CMPI_chars, "3"},
    {"FcipEntityAddress", CMPI_chars, "10.1.1.1"},
    {"FcipEntityTcpConnPort", CMPI_uint32, 2024},
    {"FcipEntitySeqNumWrap", CMPI_boolean, 1},
    {"FcipEntitySACKOption", CMPI_boolean, 1},
    {"FcipEntityPHBSupport", CMPI_boolean, 1},
};
const Sets PROFILE_KEYS{{"InstanceID", CMPI_chars, "3"}};

const Sets IP_SETTINGS{
    {"Caption", CMPI_chars, "fcip5"},        {"Description", CMPI_chars, "fcip5"},
    {"ElementName", CMPI_chars, "17"},       {"InstanceID", CMPI_chars, "17"},
    {"EnableIPForwarding", CMPI_boolean, 1}, {"FragmentationTimeout", CMPI_uint32, 500},
    {"DefaultTimeToLive", CMPI_uint32, 64},
};

const Sets TCP_SETTINGS{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"InstanceID", CMPI_chars, "17"},
    {"Description", CMPI_chars, "17"},
    {"Caption", CMPI_chars, "17"},
    {"ElementName", CMPI_chars, "17"},
    {"RetransmissionTimeoutMax", CMPI_uint16, 5000},
    {"RetransmissionTimeoutMin", CMPI_uint16, 200},
    {"RetransmissionTimeoutAlgorithm", CMPI_uint16, 4},
};

// Remote endpoints.

const Sets REMOTE_FCIP_PORT{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"Name", CMPI_chars, "7_10.1.1.2_10.1.1.1"},
    {"CreationClassName", CMPI_chars, "KESTO_RemoteFCIPPort"},
    {"NameFormat", CMPI_chars, "Other"},
    {"RemoteIPAddress", CMPI_chars, "10.1.1.1"},
    {"LocalIPAddress", CMPI_chars, "10.1.1.2"},
    {"InfoFormat", CMPI_uint16, 1},
    {"OtherInfoFormatDescription", CMPI_chars, REMOTE_FORMAT},
    {"AccessInfo", CMPI_chars, "10.1.1.2"},
    {"PortInfo", CMPI_chars, "10.1.1.2"},
    {"PortProtocol", CMPI_uint16, 2},
    {"OtherProtocolDescription", CMPI_chars, "TCP"},
};
const Sets REMOTE_FCIP_PORT_KEYS{
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"CreationClassName", CMPI_chars, "KESTO_RemoteFCIPPort"},
    {"Name", CMPI_chars, "0_10.1.1.2_10.1.1.1"},
};

const Sets REMOTE_IP_ACCESS_POINT{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"Name", CMPI_chars, "0_10.1.1.2_10.1.1.1"},
    {"CreationClassName", CMPI_chars, "KESTO_RemoteIPServiceAccessPoint"},
    {"NameFormat", CMPI_chars, "Other"},
    {"IPv4Address", CMPI_chars, "10.1.1.2"},
    {"OtherInfoFormatDescription", CMPI_chars, REMOTE_FORMAT},
    {"AccessInfo", CMPI_chars, "10.1.1.2"},
    {"InfoFormat", CMPI_uint16, 1},
    {"AddressOrigin", CMPI_uint16, 3},
    {"ProtocolIFType", CMPI_uint16, 4096},
};
const Sets REMOTE_IP_ACCESS_POINT_KEYS{
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"CreationClassName", CMPI_chars, "KESTO_RemoteIPServiceAccessPoint"},
    {"Name", CMPI_chars, "0_10.1.1.2_10.1.1.1"},
};

const Sets REMOTE_TCP_PORT{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"Name", CMPI_chars, "0_17"},
    {"CreationClassName", CMPI_chars, "KESTO_RemoteTCPPort"},
    {"NameFormat", CMPI_chars, "Other"},
    {"RemotePortNumber", CMPI_uint32, 2024},
    {"PortNumber", CMPI_uint32, 1076},
};
const Sets REMOTE_TCP_PORT_KEYS{
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"Name", CMPI_chars, "0_17"},
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"CreationClassName", CMPI_chars, "KESTO_RemoteTCPPort"},
};

// LAN endpoint.

const Sets LAN_ENDPOINT{
    {"SystemCreationClassName", CMPI_chars, PHYSICAL},
    {"SystemName", CMPI_chars, "20:00:00:05:30:01:02:03"},
    {"Name", CMPI_chars, "-1694433280:02:00:00:00:00:01"},
    {"CreationClassName", CMPI_chars, "KESTO_LANEndPoint"},
    {"NameFormat", CMPI_chars, "Other"},
};
const Sets LAN_ENDPOINT_KEYS{
    {"SystemName", CMPI_chars, "switch-a"},
    {"SystemCreationClassName", CMPI_chars, PHYSICAL},
    {"CreationClassName", CMPI_chars, "KESTO_LanEndPoint"},
    {"Name", CMPI_chars, "-1694433280:02:00:00:00:00:01"},
};

// Statistics.

const Sets IP_STATISTICS{
    {"InstanceID", CMPI_chars, "17"},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"CreationClassName", CMPI_chars, "KESTO_IPEndPointStatistics"},
    {"ReceivedPDUs", CMPI_uint32, 100036},
    {"ReceivedPDUHeaderErrors", CMPI_uint32, 600476}, // 68 + 64 + 76 + 72 + 56 + 140
    {"ReceivedPDUAddressErrors", CMPI_uint32, 100080},
    {"ReceivedPDUForwards", CMPI_uint32, 100092},
    {"ReceivedPDUUnknownProtocolErrors", CMPI_uint32, 100108},
    {"ReceivedPDUDiscards", CMPI_uint32, 100152},
    {"PDUDelivers", CMPI_uint32, 100040},
    {"SentPDUs", CMPI_uint32, 100052},
    {"SentPDUDiscards", CMPI_uint32, 100084},
    {"SentPDUNoRouteErrors", CMPI_uint32, 100136},
    {"ReassemblyRequireds", CMPI_uint32, 99964}, // 100080 - 116
    {"ReassembledPackets", CMPI_uint32, 116},
    {"ReassemblyFailed", CMPI_uint32, 100148},
    {"Fragmentation", CMPI_uint32, 100120},
    {"FragmentationFaileds", CMPI_uint32, 100128},
    {"FragmentedPDUCreates", CMPI_uint32, 100124},
    {"FragmentationFaileds", CMPI_uint32, 100128},
    {"RouteEntriesDiscards", CMPI_uint32, 100152},
};

const Sets TCP_STATISTICS{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"ReceivedSegmentsInError", CMPI_uint32, 0},
    {"SentResetSegments", CMPI_uint32, 0},
    {"InstanceID", CMPI_chars, "17"},
    {"CreationClassName", CMPI_chars, "KESTO_TCPEndPointStatistics"},
    // Words 20 to 27 of the row handed in, which in a link row are two flags, a gap, a flag, two QoS values,
    // the Ethernet port and a flag.
    {"TooManyErrors", CMPI_uint64, 4294967297},       // 1 + 2^32 * 1
    {"KeepAliveTimeOut", CMPI_uint64, 4294968384},    // 1088 + 2^32 * 1
    {"DatagramsDropped", CMPI_uint64, 4724464026696}, // 1096 + 2^32 * 1100
    {"SaParamMismatch", CMPI_uint64, 6895501312},     // 2600534016 + 2^32 * 1
};

const Sets TCP_STATISTICAL_DATA{
    {"SystemCreationClassName", CMPI_chars, LOGICAL},
    {"SystemName", CMPI_chars, VSAN_SYSTEM},
    {"ReceivedSegmentsInError", CMPI_uint32, 0},
    {"SentResetSegments", CMPI_uint32, 0},
    {"InstanceID", CMPI_chars, "5"},
    {"ActiveOpenConnections", CMPI_uint32, 0},
    {"PassiveOpenConnections", CMPI_uint32, 0},
    {"AttemptFails", CMPI_uint32, 0},
    {"EstablishedResets", CMPI_uint32, 0},
    {"EstablishedConnections", CMPI_uint32, 0},
    {"ReceivedSegments", CMPI_uint32, 0},
    {"RetransmittedSegments", CMPI_uint32, 0},
};
const Sets STATISTICS_KEYS{{"InstanceID", CMPI_chars, "17"}};

const Sets ETHERNET_STATISTICS{
    {"InstanceID", CMPI_chars, "-1694433280"},
    {"Caption", CMPI_chars, "GigabitEthernet1/1"},
    {"ElementName", CMPI_chars, "GigabitEthernet1/1"},
    {"Description", CMPI_chars, "GigabitEthernet1/1"},
    // From the port manager's record.
    {"BroadcastFramesReceived", CMPI_uint64, 263},
    {"BroadcastFramesTransmitted", CMPI_uint64, 271},
    {"MulticastFramesTransmitted", CMPI_uint64, 267},
    {"MulticastFramesReceived", CMPI_uint64, 259},
    {"UnicastFramesTransmitted", CMPI_uint64, 8589934907}, // 2^33 + 315
    {"PacketsTransmitted", CMPI_uint64, 8589934907},
    {"UnicastFramesReceived", CMPI_uint64, 8589934875}, // 2^33 + 283
    {"PacketsReceived", CMPI_uint64, 8589934875},
    {"BytesTransmitted", CMPI_uint64, 8589934899}, // 2^33 + 307
    {"BytesReceived", CMPI_uint64, 8589934867},    // 2^33 + 275
    // From the line card; the first four once more.
    {"BytesTransmitted", CMPI_uint64, 4294967328},   // 2^32 + 32
    {"BytesReceived", CMPI_uint64, 4294967408},      // 2^32 + 112
    {"PacketsTransmitted", CMPI_uint64, 4294967384}, // 2^32 + 88
    {"PacketsReceived", CMPI_uint64, 4294967440},    // 2^32 + 144
    {"SymbolErrors", CMPI_uint32, 184},
    {"AlignmentErrors", CMPI_uint64, 4294967488}, // 2^32 + 192
    {"FCSErrors", CMPI_uint64, 4294967360},       // 2^32 + 64
    {"SingleCollisionFrames", CMPI_uint32, 40},
    {"MultipleCollisionFrames", CMPI_uint32, 40},
    {"DeferredTransmissions", CMPI_uint32, 40},
    {"LateCollissions", CMPI_uint64, 4294967344},      // 2^32 + 48
    {"ExcessiveCollissions", CMPI_uint64, 4294967352}, // 2^32 + 56
    {"InternalMACTransmitErrors", CMPI_uint32, 56},
    {"InternalMACReceiveErrors", CMPI_uint32, 56},
    {"CarrierSenseErrors", CMPI_uint32, 56},
    {"FrameTooLongs", CMPI_uint32, 56},
};
const Sets ETHERNET_STATISTICS_KEYS{{"InstanceID", CMPI_chars, "-1694433280"}};

} // namespace class_tests::golden
