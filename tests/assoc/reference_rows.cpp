#include "tests/assoc/reference_rows.h"

#include <cstdlib>
#include <ostream>

namespace golden {

namespace {

enum Source : std::size_t {
    FCIP_PE,
    IP_PE,
    TCP_PE,
    FCIP_REMOTE_PE,
    IP_REMOTE_PE,
    TCP_REMOTE_PE,
    LAN_ENDPOINT,
    FCIP_SETTINGS,
    IP_SETTINGS,
    TCP_SETTINGS,
    IP_STAT,
    TCP_STAT,
    PROFILE,
    ETH_PORT,
    ETH_STAT,
};

} // namespace

const std::vector<ReferenceMember> REFERENCE_MEMBERS{
    {"fcip_pe", get_fcip_pe_reference_names, get_fcip_pe_references, ResultLine::Starred},
    {"ip_pe", get_ip_pe_reference_names, get_ip_pe_references, ResultLine::Usual},
    {"tcp_pe", get_tcp_pe_reference_names, get_tcp_pe_references, ResultLine::Usual},
    {"fcip_remote_pe", get_fcip_remote_pe_reference_names, get_fcip_remote_pe_references, ResultLine::None},
    {"ip_remote_pe", get_ip_remote_pe_reference_names, get_ip_remote_pe_references, ResultLine::Usual},
    {"tcp_remote_pe", get_tcp_remote_pe_reference_names, get_tcp_remote_pe_references, ResultLine::Usual},
    {"lan_endpoint", get_lan_endpoint_reference_names, get_lan_endpoint_references, ResultLine::Usual},
    {"fcip_settings", get_fcip_settings_reference_names, get_fcip_settings_references, ResultLine::Usual},
    {"ip_settings", get_ip_settings_reference_names, get_ip_settings_references, ResultLine::Usual},
    {"tcp_settings", get_tcp_settings_reference_names, get_tcp_settings_references, ResultLine::Usual},
    {"ip_stat", get_ip_stat_reference_names, get_ip_stat_references, ResultLine::None},
    {"tcp_stat", get_tcp_stat_reference_names, get_tcp_stat_references, ResultLine::Usual},
    {"profile", get_profile_reference_names, get_profile_references, ResultLine::Usual},
    {"eth_port", get_eth_port_reference_names, get_eth_port_references, ResultLine::Usual},
    {"eth_stat", get_eth_stat_reference_names, get_eth_stat_references, ResultLine::Spaced},
};

// clang-format off
// One line a row: member, association class tested, mode, kind, name; then the ends in the order passed.
const std::vector<ReferenceRow> REFERENCE_ROWS{
    {&REFERENCE_MEMBERS[FCIP_PE], "KESTO_FCIPElementSettingData", 1, Kind::ManagedSetting, "KESTO_FCIPElementSettingData",
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::FcipSettings, "KESTO_FCIPSettings"}},
    {&REFERENCE_MEMBERS[FCIP_PE], "KESTO_FCIPTCPEndpoint", 1, Kind::Realize, "KESTO_FCIPTCPEndpoint",
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"}},
    {&REFERENCE_MEMBERS[FCIP_PE], "KESTO_SANFCIPEndpoint", 1, Kind::Realize, "KESTO_SANFCIPEndpoint",
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::RemoteFcipPort, "KESTO_RemoteFCIPPort"}},
    {&REFERENCE_MEMBERS[FCIP_PE], "KESTO_FCPortProtocolEndPoint", 1, Kind::Realize, "KESTO_FCPortProtocolEndPoint",
     {End::FcPort, "KESTO_FCPort"}, {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},
    {&REFERENCE_MEMBERS[FCIP_PE], "KESTO_FCIPPEBasedOn", 1, Kind::GroupPart, "KESTO_FCIPPEBasedOn",
     {End::Profile, "KESTO_FCIPProfile"}, {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},
    {&REFERENCE_MEMBERS[FCIP_PE], "KESTO_SwitchHostedFCIPAccessPoint", 1, Kind::Realize, "KESTO_SwitchHostedFCIPAccessPoint",
     {End::HostingSystem, "KESTO_LogicalComputerSystem"}, {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},

    {&REFERENCE_MEMBERS[IP_PE], "KESTO_IPElementSettingData", 2, Kind::ManagedSetting, "KESTO_IPElementSettingData",
     {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}, {End::IpSettings, "KESTO_IPSettings"}},
    {&REFERENCE_MEMBERS[IP_PE], "KESTO_IPEndPointStatisticalData", 2, Kind::ManagedStats, OWN,
     {End::Statistics, "KESTO_IPEndpointStatistics"}, {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}},
    {&REFERENCE_MEMBERS[IP_PE], "KESTO_TCPIPEndpoint", 2, Kind::Realize, OWN,
     {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}, {End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"}},
    {&REFERENCE_MEMBERS[IP_PE], "KESTO_IPEthernetEndpoint", 2, Kind::Realize, OWN,
     {End::EthernetPort, "KESTO_EthernetPort"}, {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}},
    {&REFERENCE_MEMBERS[IP_PE], "KESTO_SwitchHostedIPAccessPoint", 2, Kind::Realize, OWN,
     {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}, {End::HostingSystem, "KESTO_LogicalComputerSystem"}},
    {&REFERENCE_MEMBERS[IP_PE], "KESTO_SANIpEndPoint", 2, Kind::Realize, OWN,
     {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}, {End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}},

    {&REFERENCE_MEMBERS[TCP_PE], "KESTO_TCPEndPointStatisticalData", 2, Kind::ManagedStats, "KESTO_TCPEndPointStatisticalData",
     {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}, {End::Statistics, "KESTO_TCPEndPointStatistics"}},
    {&REFERENCE_MEMBERS[TCP_PE], "KESTO_FCIPTCPEnpoint", 2, Kind::Realize, "KESTO_FCIPTCPEndpoint",
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}},
    {&REFERENCE_MEMBERS[TCP_PE], "KESTO_TCPIPEndpoint", 2, Kind::Realize, OWN,
     {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}, {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}},
    {&REFERENCE_MEMBERS[TCP_PE], "KESTO_SwitchHostedTCPAccessPoint", 2, Kind::Realize, OWN,
     {End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::HostingSystem, "KESTO_LogicalComputerSystem"}},
    {&REFERENCE_MEMBERS[TCP_PE], "KESTO_SANTCPEndpoint", 2, Kind::Realize, OWN,
     {End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::RemoteTcpPort, "KESTO_RemoteTCPPort"}},
    {&REFERENCE_MEMBERS[TCP_PE], "KESTO_TCPElementSettingData", 3, Kind::ManagedSetting, OWN,
     {End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::TcpSettings, "KESTO_TCPSettings"}},

    {&REFERENCE_MEMBERS[FCIP_REMOTE_PE], "KESTO_SANFCIPEndpoint", 6, Kind::Realize, OWN,
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::RemoteFcipPort, "KESTO_RemoteFCIPPort"}},

    {&REFERENCE_MEMBERS[IP_REMOTE_PE], "KESTO_SANIPEndPoint", 6, Kind::Realize, OWN,
     {End::IpEndpoint, "KESTO_IPProtocolEndpoint"}, {End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}},

    {&REFERENCE_MEMBERS[TCP_REMOTE_PE], "KESTO_SANTCPEndpoint", 2, Kind::Realize, OWN,
     {End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::RemoteTcpPort, "KESTO_RemoteTCPPort"}},

    {&REFERENCE_MEMBERS[LAN_ENDPOINT], "KESTO_IPEthernetEndpoint", 4, Kind::Realize, OWN,
     {End::IpEndpoint, "KESTO_IPProtocolEndPoint"}, {End::LanEndpoint, "KESTO_LANEndpoint", From::Key}},
    {&REFERENCE_MEMBERS[LAN_ENDPOINT], "KESTO_EthernetPortProtocolEndpoint", 0, Kind::Realize, OWN,
     {End::EthernetPort, "KESTO_EthernetPort"}, {End::LanEndpoint, "KESTO_LANEndpoint"}},
    {&REFERENCE_MEMBERS[LAN_ENDPOINT], "CIM_HostedAccessPoint", 3, Kind::Realize, "CIM_HostedAccessPoint",
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, {End::LanEndpoint, "KESTO_LANEndpoint"}},

    {&REFERENCE_MEMBERS[FCIP_SETTINGS], "KESTO_FCIPElementSettingData", 3, Kind::ManagedSetting, "KESTO_FCIPElementSettingData",
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, {End::FcipSettings, "KESTO_FCIPSettings"}},

    {&REFERENCE_MEMBERS[IP_SETTINGS], "KESTO_IPElementSettingData", 3, Kind::ManagedSetting, "KESTO_IPElementSettingData",
     {End::IpEndpoint, "KESTO_IPProtocolEndPoint"}, {End::IpSettings, "KESTO_IPSettings"}},

    {&REFERENCE_MEMBERS[TCP_SETTINGS], "KESTO_TCPElementSettingData", 3, Kind::ManagedSetting, OWN,
     {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}, {End::TcpSettings, "KESTO_TCPSettings"}},

    {&REFERENCE_MEMBERS[IP_STAT], "KESTO_IPEndpointStatisticalData", 3, Kind::ManagedStats, "KESTO_IPEndpointStatisticalData",
     {End::IpEndpoint, "KESTO_IPProtocolEndPoint"}, {End::Statistics, "KESTO_IPEndpointStatistics"}},

    {&REFERENCE_MEMBERS[TCP_STAT], "KESTO_TCPEndpointStatisticalData", 3, Kind::ManagedStats, "KESTO_TCPEndpointStatisticalData",
     {End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::Statistics, "KESTO_TCPEndpointStatistics"}},

    {&REFERENCE_MEMBERS[PROFILE], "KESTO_FCIPPEBasedOn", 5, Kind::GroupPart, "KESTO_FCIPPEBasedOn",
     {End::Profile, "KESTO_FCIPProfile"}, {End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},

    {&REFERENCE_MEMBERS[ETH_PORT], "KESTO_EthernetPortProtocolEndpoint", 2, Kind::Realize, "KESTO_IPElementSettingData",
     {End::EthernetPort, "KESTO_EthernetPort"}, {End::LanEndpoint, "KESTO_LANEndpoint", From::Key}},
    {&REFERENCE_MEMBERS[ETH_PORT], "KESTO_EthernetPortStatisticalData", 2, Kind::ManagedStats, "KESTO_EthernetPortStatisticalData",
     {End::EthernetPort, "KESTO_EthernetPort"}, {End::EthernetStatistics, "KESTO_EthernetPortStatistics"}},

    {&REFERENCE_MEMBERS[ETH_STAT], "KESTO_EthernetPortStatisticalData", 0, Kind::ManagedStats, "KESTO_EthernetPortStatisticalData",
     {End::EthernetPort, "KESTO_EthernetPort"}, {End::EthernetStatistics, "KESTO_EthernetPortStatistics"}},
};
// clang-format on

std::string result_line(ResultLine line, const std::string& associationClass) {
    switch (line) {
        case ResultLine::None:
            break;
        case ResultLine::Usual:
            return "Result Class :" + associationClass + " \n";
        case ResultLine::Starred:
            return " ****** Result Class :" + associationClass + "  ********** \n";
        case ResultLine::Spaced:
            return "Result Class : " + associationClass + "\n";
    }
    return "";
}

std::string row_name(const ReferenceRow& row) {
    return std::string(row.member->source) + "_" + row.tested;
}

namespace {

test_support::RecordedPath end_path(const ReferenceEnd& end, const Tunnel& tunnel, const std::string& key) {
    if (end.from == From::Key) {
        return port_path(end.end, end.className,
                         static_cast<std::uint32_t>(std::strtoll(key.c_str(), nullptr, 10)));
    }
    return path(end.end, end.className, tunnel);
}

} // namespace

test_support::RecordedPath expected(const ReferenceRow& row, const std::string& asked, const Tunnel& tunnel,
                                    const std::string& key) {
    return association(row.kind, row.name != OWN ? row.name : asked, end_path(row.first, tunnel, key),
                       end_path(row.second, tunnel, key));
}

test_support::RecordedPath expected_for_port(const ReferenceRow& row, const std::string& asked,
                                             std::uint32_t ifIndex) {
    return association(row.kind, row.name != OWN ? row.name : asked,
                       port_path(row.first.end, row.first.className, ifIndex),
                       port_path(row.second.end, row.second.className, ifIndex));
}

void PrintTo(const ReferenceRow& row, std::ostream* out) {
    *out << row_name(row);
}
void PrintTo(const ReferenceMember& member, std::ostream* out) {
    *out << member.source;
}

} // namespace golden
