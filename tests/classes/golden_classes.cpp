#include "tests/classes/golden_classes.h"

#include <ostream>
#include <stdexcept>

#include "tests/classes/class_test.h"

namespace class_tests {
namespace {

constexpr const char* LOGICAL = "KESTO_LogicalComputerSystem";
constexpr const char* PHYSICAL = "KESTO_PhysicalComputerSystem";
constexpr const char* VSAN_SYSTEM = "20:0a:00:05:30:01:02"; // the first 20 characters of the VSAN's name
constexpr const char* REMOTE_FORMAT = "Remote Entity ID_LocalIP_RemoteIP "; // ends in a blank

// --- Endpoints --------------------------------------------------------------------------------------------

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

// --- Settings and profile ---------------------------------------------------------------------------------

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

// --- Remote endpoints -------------------------------------------------------------------------------------

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

// --- LAN endpoint -----------------------------------------------------------------------------------------

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

// --- Statistics -------------------------------------------------------------------------------------------

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

// --- The functions ----------------------------------------------------------------------------------------

using LinkBuilder = CMPIInstance*(const char*, const char*, const FcipLinkEntry*, const char**);
using LinkFiller = CMPIObjectPath*(const char*, const char*, const FcipLinkEntry*);

auto of_link(LinkBuilder* build) {
    return [build](const char* className, const char* nameSpace, const char** properties) {
        const FcipLinkEntry link = one_tunnel::link();
        return build(className, nameSpace, &link, properties);
    };
}

auto of_link(LinkFiller* fill) {
    return [fill](const char* className, const char* nameSpace) {
        const FcipLinkEntry link = one_tunnel::link();
        return fill(className, nameSpace, &link);
    };
}

CMPIInstance* build_profile(const char* className, const char* nameSpace, const char** properties) {
    const FcipEntityEntry profile = one_tunnel::profile();
    return fcip_profile_build_instance(className, nameSpace, &profile, properties);
}

CMPIObjectPath* fill_profile(const char* className, const char* nameSpace) {
    const FcipEntityEntry profile = one_tunnel::profile();
    return fcip_profile_fill_reference(className, nameSpace, &profile);
}

CMPIInstance* build_lan_endpoint(const char* className, const char* nameSpace, const char** properties) {
    return lan_endpoint_build_instance(className, nameSpace, one_tunnel::ETHERNET, properties);
}

CMPIObjectPath* fill_lan_endpoint(const char* className, const char* nameSpace) {
    return lan_endpoint_fill_reference(className, nameSpace, one_tunnel::ETHERNET);
}

CMPIInstance* build_ethernet_statistics(const char* className, const char* nameSpace,
                                        const char** properties) {
    const PortInfo row = one_tunnel::ethernet_row();
    return eth_statistics_build_instance(className, nameSpace, &row, properties);
}

CMPIObjectPath* fill_ethernet_statistics(const char* className, const char* nameSpace) {
    const PortInfo row = one_tunnel::ethernet_row();
    return eth_statistics_fill_reference(className, nameSpace, &row);
}

std::string framed(const std::string& function, const std::string& between = "") {
    return entering(function) + between + exiting(function);
}

} // namespace

const std::vector<GoldenBuilder>& golden_builders() {
    static const std::vector<GoldenBuilder> BUILDERS{
        {.function = "fcip_pe_build_instance",
         .className = "KESTO_FCIPProtocolEndPoint",
         .build = of_link(fcip_pe_build_instance),
         .properties = FCIP_ENDPOINT,
         .trace = framed("fcip_pe_build_instance"),
         .needsProfile = true},
        {.function = "tcp_pe_build_instance",
         .className = "KESTO_TCPProtocolEndPoint",
         .build = of_link(tcp_pe_build_instance),
         .properties = TCP_ENDPOINT,
         .trace = framed("tcp_pe_build_instance"),
         .needsProfile = true},
        {.function = "ip_pe_build_instance",
         .className = "KESTO_IPProtocolEndPoint",
         .build = of_link(ip_pe_build_instance),
         .properties = IP_ENDPOINT,
         // A free text names the address family.
         .trace = framed("ip_pe_build_instance", SOME + line_trace("ip_pe_build_instance")),
         .needsProfile = true},
        {.function = "fcip_settings_build_instance",
         .className = "KESTO_FCIPSettings",
         .build = of_link(fcip_settings_build_instance),
         .properties = FCIP_SETTINGS,
         .trace = framed("fcip_settings_build_instance"),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "fcip_profile_build_instance",
         .className = "KESTO_FCIPProfile",
         .build = build_profile,
         .properties = PROFILE,
         .trace = framed("fcip_profile_build_instance", ANY + "3" + ANY),
         .exitTraceWithoutPath = true},
        {.function = "ip_settings_build_instance",
         .className = "KESTO_IPSettings",
         .build = of_link(ip_settings_build_instance),
         .properties = IP_SETTINGS,
         .trace = framed("ip_settings_build_instance", "\n inside get_ip_stats\n "),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "tcp_settings_build_instance",
         .className = "KESTO_TCPSettings",
         .build = of_link(tcp_settings_build_instance),
         .properties = TCP_SETTINGS,
         .trace = framed("tcp_settings_build_instance", SOME + framed("get_tcp_stats", ANY) + SOME),
         .exitTraceWithoutPath = true},
        {.function = "fcip_remote_pe_build_instance",
         .className = "KESTO_RemoteFCIPPort",
         .build = of_link(fcip_remote_pe_build_instance),
         .properties = REMOTE_FCIP_PORT,
         .trace = framed("fcip_remote_pe_build_instance"),
         .needsProfile = true},
        {.function = "ip_remote_pe_build_instance",
         .className = "KESTO_RemoteIPServiceAccessPoint",
         .build = of_link(ip_remote_pe_build_instance),
         .properties = REMOTE_IP_ACCESS_POINT,
         .trace = framed("ip_remote_pe_build_instance", line_trace("ip_remote_pe_build_instance")),
         .needsProfile = true},
        {.function = "remote_service_ap_build_instance",
         .className = "KESTO_RemoteTCPPort",
         .build = of_link(remote_service_ap_build_instance),
         .properties = REMOTE_TCP_PORT,
         .trace = framed("remote_service_ap_build_instance"),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "tcp_remote_pe_build_instance",
         .className = "KESTO_RemoteTCPPort",
         .build = of_link(tcp_remote_pe_build_instance),
         .properties = REMOTE_TCP_PORT,
         .trace = framed("tcp_remote_pe_build_instance"),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "lan_endpoint_build_instance",
         .className = "KESTO_LANEndPoint",
         .build = build_lan_endpoint,
         .properties = LAN_ENDPOINT,
         .trace = exiting("lan_endpoint_build_instance"),
         .entryTrace = false},
        {.function = "ip_statistics_build_instance",
         .className = "KESTO_IPEndPointStatistics",
         .build = of_link(ip_statistics_build_instance),
         .properties = IP_STATISTICS,
         .trace =
             framed("ip_statistics_build_instance", "\n inside get_ip_stats\n " + ANY + "Great!!!" + ANY)},
        {.function = "tcp_statistics_build_instance",
         .className = "KESTO_TCPEndPointStatistics",
         .build = of_link(tcp_statistics_build_instance),
         .properties = TCP_STATISTICS,
         .trace = framed("tcp_statistics_build_instance", ANY + framed("get_tcp_stats", ANY) + ANY)},
        {.function = "tcp_statistical_data_build_instance",
         .className = "KESTO_TCPStatisticalData",
         .build = of_link(tcp_statistical_data_build_instance),
         .properties = TCP_STATISTICAL_DATA,
         .trace = framed("tcp_statistical_data_build_instance",
                         line_trace("tcp_statistical_data_build_instance") + framed("get_tcp_stats", ANY))},
        {.function = "eth_statistics_build_instance",
         .className = "KESTO_EthernetPortStatistics",
         .build = build_ethernet_statistics,
         .properties = ETHERNET_STATISTICS,
         // A free line of text stands before the two byte counters.
         .trace =
             framed("eth_statistics_build_instance", exiting("get_ethernetport_statistics") + SOME +
                                                         "Bytes Tran -?[0-9]+ \nBytes Received -?[0-9]+\n"),
         .exitTraceWithoutPath = true},
    };
    return BUILDERS;
}

const std::vector<GoldenFiller>& golden_fillers() {
    static const std::vector<GoldenFiller> FILLERS{
        {.function = "fcip_pe_fill_reference",
         .className = "KESTO_FCIPProtocolEndPoint",
         .fill = of_link(fcip_pe_fill_reference),
         .keys = FCIP_ENDPOINT_KEYS,
         .hostName = false,
         .needsProfile = true},
        {.function = "tcp_pe_fill_reference",
         .className = "KESTO_TCPProtocolEndPoint",
         .fill = of_link(tcp_pe_fill_reference),
         .keys = TCP_ENDPOINT_KEYS,
         .hostName = true,
         .trace = entering("tcp_pe_fill_reference"),
         .traceWithoutPath = entering("tcp_pe_fill_reference"),
         .needsProfile = true,
         .traceWithoutProfile = entering("tcp_pe_fill_reference")},
        {.function = "ip_pe_fill_reference",
         .className = "KESTO_IPProtocolEndPoint",
         .fill = of_link(ip_pe_fill_reference),
         .keys = IP_ENDPOINT_KEYS,
         .hostName = true,
         .trace = framed("ip_pe_fill_reference", "17_10\\.1\\.1\\.1_10\\.1\\.1\\.2 \n"),
         .traceWithoutPath = framed("ip_pe_fill_reference"),
         .needsProfile = true,
         .traceWithoutProfile = entering("ip_pe_fill_reference") + "Error \n"},
        {.function = "fcip_settings_fill_reference",
         .className = "KESTO_FCIPSettings",
         .fill = of_link(fcip_settings_fill_reference),
         .keys = SETTINGS_KEYS,
         .hostName = true,
         .trace = framed("fcip_settings_fill_reference", line_trace("fcip_settings_fill_reference")),
         .traceWithoutPath = framed("fcip_settings_fill_reference"),
         .checksHandle = true,
         .needsProfile = true,
         .traceWithoutProfile = entering("fcip_settings_fill_reference")},
        {.function = "fcip_profile_fill_reference",
         .className = "KESTO_FCIPProfile",
         .fill = fill_profile,
         .keys = PROFILE_KEYS,
         .hostName = false},
        {.function = "ip_settings_fill_reference",
         .className = "KESTO_IPSettings",
         .fill = of_link(ip_settings_fill_reference),
         .keys = SETTINGS_KEYS,
         .hostName = true,
         .trace = framed("ip_settings_fill_reference", SOME),
         .traceWithoutPath = framed("ip_settings_fill_reference"),
         .checksHandle = true,
         .needsProfile = true,
         .traceWithoutProfile = entering("ip_settings_fill_reference")},
        {.function = "tcp_settings_fill_reference",
         .className = "KESTO_TCPSettings",
         .fill = of_link(tcp_settings_fill_reference),
         .keys = SETTINGS_KEYS,
         .hostName = true,
         .trace = framed("tcp_settings_fill_reference", SOME),
         .traceWithoutPath = framed("tcp_settings_fill_reference"),
         .checksHandle = true,
         .needsProfile = true,
         .traceWithoutProfile = entering("tcp_settings_fill_reference")},
        {.function = "fcip_remote_pe_fill_reference",
         .className = "KESTO_RemoteFCIPPort",
         .fill = of_link(fcip_remote_pe_fill_reference),
         .keys = REMOTE_FCIP_PORT_KEYS,
         .hostName = false,
         .needsProfile = true},
        {.function = "ip_remote_pe_fill_reference",
         .className = "KESTO_RemoteIPServiceAccessPoint",
         .fill = of_link(ip_remote_pe_fill_reference),
         .keys = REMOTE_IP_ACCESS_POINT_KEYS,
         .hostName = true,
         .trace = entering("ip_remote_pe_fill_reference"),
         .traceWithoutPath = entering("ip_remote_pe_fill_reference"),
         .needsProfile = true,
         .traceWithoutProfile = entering("ip_remote_pe_fill_reference")},
        {.function = "remote_service_ap_fill_reference",
         .className = "KESTO_RemoteTCPPort",
         .fill = of_link(remote_service_ap_fill_reference),
         .keys = REMOTE_TCP_PORT_KEYS,
         .hostName = true,
         .needsProfile = true},
        {.function = "tcp_remote_pe_fill_reference",
         .className = "KESTO_RemoteTCPPort",
         .fill = of_link(tcp_remote_pe_fill_reference),
         .keys = REMOTE_TCP_PORT_KEYS,
         .hostName = true,
         .needsProfile = true},
        {.function = "lan_endpoint_fill_reference",
         .className = "KESTO_LANEndPoint",
         .fill = fill_lan_endpoint,
         .keys = LAN_ENDPOINT_KEYS,
         .hostName = true,
         .trace = framed("lan_endpoint_fill_reference"),
         .traceWithoutPath = framed("lan_endpoint_fill_reference"),
         .checksHandle = true},
        {.function = "stat_fill_reference",
         .className = "KESTO_IPEndPointStatistics",
         .fill = of_link(stat_fill_reference),
         .keys = STATISTICS_KEYS,
         .hostName = true,
         .needsProfile = true,
         .traceWithoutProfile = SOME},
        {.function = "eth_statistics_fill_reference",
         .className = "KESTO_EthernetPortStatistics",
         .fill = fill_ethernet_statistics,
         .keys = ETHERNET_STATISTICS_KEYS,
         .hostName = true,
         .trace = framed("eth_statistics_fill_reference"),
         .traceWithoutPath = framed("eth_statistics_fill_reference"),
         .checksHandle = true},
    };
    return FILLERS;
}

const Sets& golden_properties(const std::string& function) {
    for (const GoldenBuilder& builder : golden_builders())
        if (function == builder.function) return builder.properties;
    throw std::invalid_argument(function);
}

const Sets& golden_keys(const std::string& function) {
    for (const GoldenFiller& filler : golden_fillers())
        if (function == filler.function) return filler.keys;
    throw std::invalid_argument(function);
}

void PrintTo(const GoldenBuilder& builder, std::ostream* out) {
    *out << builder.function;
}
void PrintTo(const GoldenFiller& filler, std::ostream* out) {
    *out << filler.function;
}

} // namespace class_tests
