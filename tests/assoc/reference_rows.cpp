#include "tests/assoc/reference_rows.h"

#include <cstdlib>
#include <ostream>

namespace golden {

namespace {

using enum Kind;
using enum Reading;

const ReferenceSource FROM_FCIP_PE{"fcip_pe", get_fcip_pe_reference_names, get_fcip_pe_references,
                                   ResultLine::Starred};
const ReferenceSource FROM_IP_PE{"ip_pe", get_ip_pe_reference_names, get_ip_pe_references, ResultLine::Usual};
const ReferenceSource FROM_TCP_PE{"tcp_pe", get_tcp_pe_reference_names, get_tcp_pe_references,
                                  ResultLine::Usual};
const ReferenceSource FROM_FCIP_REMOTE_PE{"fcip_remote_pe", get_fcip_remote_pe_reference_names,
                                          get_fcip_remote_pe_references, ResultLine::None};
const ReferenceSource FROM_IP_REMOTE_PE{"ip_remote_pe", get_ip_remote_pe_reference_names,
                                        get_ip_remote_pe_references, ResultLine::Usual};
const ReferenceSource FROM_TCP_REMOTE_PE{"tcp_remote_pe", get_tcp_remote_pe_reference_names,
                                         get_tcp_remote_pe_references, ResultLine::Usual};
const ReferenceSource FROM_LAN_ENDPOINT{"lan_endpoint", get_lan_endpoint_reference_names,
                                        get_lan_endpoint_references, ResultLine::Usual};
const ReferenceSource FROM_FCIP_SETTINGS{"fcip_settings", get_fcip_settings_reference_names,
                                         get_fcip_settings_references, ResultLine::Usual};
const ReferenceSource FROM_IP_SETTINGS{"ip_settings", get_ip_settings_reference_names,
                                       get_ip_settings_references, ResultLine::Usual};
const ReferenceSource FROM_TCP_SETTINGS{"tcp_settings", get_tcp_settings_reference_names,
                                        get_tcp_settings_references, ResultLine::Usual};
const ReferenceSource FROM_IP_STAT{"ip_stat", get_ip_stat_reference_names, get_ip_stat_references,
                                   ResultLine::None};
const ReferenceSource FROM_TCP_STAT{"tcp_stat", get_tcp_stat_reference_names, get_tcp_stat_references,
                                    ResultLine::Usual};
const ReferenceSource FROM_PROFILE{"profile", get_profile_reference_names, get_profile_references,
                                   ResultLine::Usual};
const ReferenceSource FROM_ETH_PORT{"eth_port", get_eth_port_reference_names, get_eth_port_references,
                                    ResultLine::Usual};
const ReferenceSource FROM_ETH_STAT{"eth_stat", get_eth_stat_reference_names, get_eth_stat_references,
                                    ResultLine::Spaced};

// The functions spell the class of some ends in two ways: END_POINT stands for "EndPoint" in it.
constexpr ReferenceEnd ETHERNET_PORT{End::EthernetPort, "KESTO_EthernetPort"};
constexpr ReferenceEnd ETHERNET_STATISTICS{End::EthernetStatistics, "KESTO_EthernetPortStatistics"};
constexpr ReferenceEnd FC_PORT{End::FcPort, "KESTO_FCPort"};
constexpr ReferenceEnd FCIP_END_POINT{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"};
constexpr ReferenceEnd FCIP_ENDPOINT{End::FcipEndpoint, "KESTO_FCIPProtocolEndpoint"};
constexpr ReferenceEnd FCIP_SETTINGS{End::FcipSettings, "KESTO_FCIPSettings"};
constexpr ReferenceEnd HOSTING_SYSTEM{End::HostingSystem, "KESTO_LogicalComputerSystem"};
constexpr ReferenceEnd IP_END_POINT{End::IpEndpoint, "KESTO_IPProtocolEndPoint"};
constexpr ReferenceEnd IP_ENDPOINT{End::IpEndpoint, "KESTO_IPProtocolEndpoint"};
constexpr ReferenceEnd IP_SETTINGS{End::IpSettings, "KESTO_IPSettings"};
constexpr ReferenceEnd LAN_ENDPOINT{End::LanEndpoint, "KESTO_LANEndpoint"};
constexpr ReferenceEnd LAN_ENDPOINT_OF_KEY{End::LanEndpoint, "KESTO_LANEndpoint", From::Key};
constexpr ReferenceEnd PROFILE{End::Profile, "KESTO_FCIPProfile"};
constexpr ReferenceEnd REMOTE_FCIP_PORT{End::RemoteFcipPort, "KESTO_RemoteFCIPPort"};
constexpr ReferenceEnd REMOTE_IP_ACCESS_POINT{End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"};
constexpr ReferenceEnd REMOTE_TCP_PORT{End::RemoteTcpPort, "KESTO_RemoteTCPPort"};
constexpr ReferenceEnd IP_STATISTICS{End::Statistics, "KESTO_IPEndpointStatistics"};
constexpr ReferenceEnd TCP_END_POINT_STATISTICS{End::Statistics, "KESTO_TCPEndPointStatistics"};
constexpr ReferenceEnd TCP_STATISTICS{End::Statistics, "KESTO_TCPEndpointStatistics"};
constexpr ReferenceEnd TCP_END_POINT{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"};
constexpr ReferenceEnd TCP_ENDPOINT{End::TcpEndpoint, "KESTO_TCPProtocolEndpoint"};
constexpr ReferenceEnd TCP_SETTINGS{End::TcpSettings, "KESTO_TCPSettings"};

test_support::RecordedPath end_path(const ReferenceEnd& end, const Tunnel& tunnel, const std::string& key) {
    if (end.from == From::Tunnel) return path(end.end, end.className, tunnel);
    return port_path(end.end, end.className,
                     static_cast<std::uint32_t>(std::strtoll(key.c_str(), nullptr, 10)));
}

} // namespace

const std::vector<const ReferenceSource*> REFERENCE_SOURCES{
    &FROM_FCIP_PE,       &FROM_IP_PE,        &FROM_TCP_PE,        &FROM_FCIP_REMOTE_PE, &FROM_IP_REMOTE_PE,
    &FROM_TCP_REMOTE_PE, &FROM_LAN_ENDPOINT, &FROM_FCIP_SETTINGS, &FROM_IP_SETTINGS,    &FROM_TCP_SETTINGS,
    &FROM_IP_STAT,       &FROM_TCP_STAT,     &FROM_PROFILE,       &FROM_ETH_PORT,       &FROM_ETH_STAT};

// The ends stand in the order in which they are passed to the association.
const std::vector<ReferenceRow> REFERENCE_ROWS{
    {&FROM_FCIP_PE, "KESTO_FCIPElementSettingData", TunnelNumber, ManagedSetting,
     "KESTO_FCIPElementSettingData", FCIP_ENDPOINT, FCIP_SETTINGS},
    {&FROM_FCIP_PE, "KESTO_FCIPTCPEndpoint", TunnelNumber, Realize, "KESTO_FCIPTCPEndpoint", FCIP_ENDPOINT,
     TCP_ENDPOINT},
    {&FROM_FCIP_PE, "KESTO_SANFCIPEndpoint", TunnelNumber, Realize, "KESTO_SANFCIPEndpoint", FCIP_ENDPOINT,
     REMOTE_FCIP_PORT},
    {&FROM_FCIP_PE, "KESTO_FCPortProtocolEndPoint", TunnelNumber, Realize, "KESTO_FCPortProtocolEndPoint",
     FC_PORT, FCIP_ENDPOINT},
    {&FROM_FCIP_PE, "KESTO_FCIPPEBasedOn", TunnelNumber, GroupPart, "KESTO_FCIPPEBasedOn", PROFILE,
     FCIP_ENDPOINT},
    {&FROM_FCIP_PE, "KESTO_SwitchHostedFCIPAccessPoint", TunnelNumber, Realize,
     "KESTO_SwitchHostedFCIPAccessPoint", HOSTING_SYSTEM, FCIP_ENDPOINT},

    {&FROM_IP_PE, "KESTO_IPElementSettingData", IfIndexToken, ManagedSetting, "KESTO_IPElementSettingData",
     IP_ENDPOINT, IP_SETTINGS},
    {&FROM_IP_PE, "KESTO_IPEndPointStatisticalData", IfIndexToken, ManagedStats, AS_ASKED, IP_STATISTICS,
     IP_ENDPOINT},
    {&FROM_IP_PE, "KESTO_TCPIPEndpoint", IfIndexToken, Realize, AS_ASKED, IP_ENDPOINT, TCP_ENDPOINT},
    {&FROM_IP_PE, "KESTO_IPEthernetEndpoint", IfIndexToken, Realize, AS_ASKED, ETHERNET_PORT, IP_ENDPOINT},
    {&FROM_IP_PE, "KESTO_SwitchHostedIPAccessPoint", IfIndexToken, Realize, AS_ASKED, IP_ENDPOINT,
     HOSTING_SYSTEM},
    {&FROM_IP_PE, "KESTO_SANIpEndPoint", IfIndexToken, Realize, AS_ASKED, IP_ENDPOINT,
     REMOTE_IP_ACCESS_POINT},

    {&FROM_TCP_PE, "KESTO_TCPEndPointStatisticalData", IfIndexToken, ManagedStats,
     "KESTO_TCPEndPointStatisticalData", TCP_END_POINT, TCP_END_POINT_STATISTICS},
    {&FROM_TCP_PE, "KESTO_FCIPTCPEnpoint", IfIndexToken, Realize, "KESTO_FCIPTCPEndpoint", FCIP_ENDPOINT,
     TCP_END_POINT},
    {&FROM_TCP_PE, "KESTO_TCPIPEndpoint", IfIndexToken, Realize, AS_ASKED, IP_ENDPOINT, TCP_END_POINT},
    {&FROM_TCP_PE, "KESTO_SwitchHostedTCPAccessPoint", IfIndexToken, Realize, AS_ASKED, TCP_ENDPOINT,
     HOSTING_SYSTEM},
    {&FROM_TCP_PE, "KESTO_SANTCPEndpoint", IfIndexToken, Realize, AS_ASKED, TCP_ENDPOINT, REMOTE_TCP_PORT},
    {&FROM_TCP_PE, "KESTO_TCPElementSettingData", IfIndex, ManagedSetting, AS_ASKED, TCP_ENDPOINT,
     TCP_SETTINGS},

    {&FROM_FCIP_REMOTE_PE, "KESTO_SANFCIPEndpoint", RemoteAddress, Realize, AS_ASKED, FCIP_ENDPOINT,
     REMOTE_FCIP_PORT},
    {&FROM_IP_REMOTE_PE, "KESTO_SANIPEndPoint", RemoteAddress, Realize, AS_ASKED, IP_ENDPOINT,
     REMOTE_IP_ACCESS_POINT},
    {&FROM_TCP_REMOTE_PE, "KESTO_SANTCPEndpoint", IfIndexToken, Realize, AS_ASKED, TCP_ENDPOINT,
     REMOTE_TCP_PORT},

    {&FROM_LAN_ENDPOINT, "KESTO_IPEthernetEndpoint", EthernetIfIndex, Realize, AS_ASKED, IP_END_POINT,
     LAN_ENDPOINT_OF_KEY},
    {&FROM_LAN_ENDPOINT, "KESTO_EthernetPortProtocolEndpoint", Port, Realize, AS_ASKED, ETHERNET_PORT,
     LAN_ENDPOINT},
    {&FROM_LAN_ENDPOINT, "CIM_HostedAccessPoint", IfIndex, Realize, "CIM_HostedAccessPoint", FCIP_END_POINT,
     LAN_ENDPOINT},

    {&FROM_FCIP_SETTINGS, "KESTO_FCIPElementSettingData", IfIndex, ManagedSetting,
     "KESTO_FCIPElementSettingData", FCIP_END_POINT, FCIP_SETTINGS},
    {&FROM_IP_SETTINGS, "KESTO_IPElementSettingData", IfIndex, ManagedSetting, "KESTO_IPElementSettingData",
     IP_END_POINT, IP_SETTINGS},
    {&FROM_TCP_SETTINGS, "KESTO_TCPElementSettingData", IfIndex, ManagedSetting, AS_ASKED, TCP_END_POINT,
     TCP_SETTINGS},

    {&FROM_IP_STAT, "KESTO_IPEndpointStatisticalData", IfIndex, ManagedStats,
     "KESTO_IPEndpointStatisticalData", IP_END_POINT, IP_STATISTICS},
    {&FROM_TCP_STAT, "KESTO_TCPEndpointStatisticalData", IfIndex, ManagedStats,
     "KESTO_TCPEndpointStatisticalData", TCP_ENDPOINT, TCP_STATISTICS},

    {&FROM_PROFILE, "KESTO_FCIPPEBasedOn", Entity, GroupPart, "KESTO_FCIPPEBasedOn", PROFILE, FCIP_ENDPOINT},

    {&FROM_ETH_PORT, "KESTO_EthernetPortProtocolEndpoint", IfIndexToken, Realize,
     "KESTO_IPElementSettingData", ETHERNET_PORT, LAN_ENDPOINT_OF_KEY},
    {&FROM_ETH_PORT, "KESTO_EthernetPortStatisticalData", IfIndexToken, ManagedStats,
     "KESTO_EthernetPortStatisticalData", ETHERNET_PORT, ETHERNET_STATISTICS},
    {&FROM_ETH_STAT, "KESTO_EthernetPortStatisticalData", Port, ManagedStats,
     "KESTO_EthernetPortStatisticalData", ETHERNET_PORT, ETHERNET_STATISTICS},
};

std::string ReferenceSource::function(Form form) const {
    return std::string("get_") + name + (form == Form::Names ? "_reference_names" : "_references");
}

std::string ReferenceSource::result_line(const std::string& asked) const {
    switch (line) {
        case ResultLine::None:
            break;
        case ResultLine::Usual:
            return "Result Class :" + asked + " \n";
        case ResultLine::Starred:
            return " ****** Result Class :" + asked + "  ********** \n";
        case ResultLine::Spaced:
            return "Result Class : " + asked + "\n";
    }
    return "";
}

test_support::RecordedPath expected(const ReferenceRow& row, const std::string& asked, const Tunnel& tunnel,
                                    const std::string& key) {
    return association(row.kind, row.name != AS_ASKED ? row.name : asked, end_path(row.first, tunnel, key),
                       end_path(row.second, tunnel, key));
}

test_support::RecordedPath expected_for_port(const ReferenceRow& row, const std::string& asked,
                                             std::uint32_t ifIndex) {
    return association(row.kind, row.name != AS_ASKED ? row.name : asked,
                       port_path(row.first.end, row.first.className, ifIndex),
                       port_path(row.second.end, row.second.className, ifIndex));
}

void PrintTo(const ReferenceRow& row, std::ostream* out) {
    *out << row.source->name << " " << row.asked;
}

} // namespace golden
