#include "tests/assoc/reference_rows.h"

#include <cstdlib>
#include <ostream>

namespace golden {

namespace {

enum Source : std::size_t {
    fcip_pe,
    ip_pe,
    tcp_pe,
    fcip_remote_pe,
    ip_remote_pe,
    tcp_remote_pe,
    lan_endpoint,
    fcip_settings,
    ip_settings,
    tcp_settings,
    ip_stat,
    tcp_stat,
    profile,
    eth_port,
    eth_stat,
};

} // namespace

const std::vector<ReferenceMember> referenceMembers{
    {"fcip_pe", get_fcip_pe_reference_names, get_fcip_pe_references, ResultLine::starred},
    {"ip_pe", get_ip_pe_reference_names, get_ip_pe_references, ResultLine::usual},
    {"tcp_pe", get_tcp_pe_reference_names, get_tcp_pe_references, ResultLine::usual},
    {"fcip_remote_pe", get_fcip_remote_pe_reference_names, get_fcip_remote_pe_references, ResultLine::none},
    {"ip_remote_pe", get_ip_remote_pe_reference_names, get_ip_remote_pe_references, ResultLine::usual},
    {"tcp_remote_pe", get_tcp_remote_pe_reference_names, get_tcp_remote_pe_references, ResultLine::usual},
    {"lan_endpoint", get_lan_endpoint_reference_names, get_lan_endpoint_references, ResultLine::usual},
    {"fcip_settings", get_fcip_settings_reference_names, get_fcip_settings_references, ResultLine::usual},
    {"ip_settings", get_ip_settings_reference_names, get_ip_settings_references, ResultLine::usual},
    {"tcp_settings", get_tcp_settings_reference_names, get_tcp_settings_references, ResultLine::usual},
    {"ip_stat", get_ip_stat_reference_names, get_ip_stat_references, ResultLine::none},
    {"tcp_stat", get_tcp_stat_reference_names, get_tcp_stat_references, ResultLine::usual},
    {"profile", get_profile_reference_names, get_profile_references, ResultLine::usual},
    {"eth_port", get_eth_port_reference_names, get_eth_port_references, ResultLine::usual},
    {"eth_stat", get_eth_stat_reference_names, get_eth_stat_references, ResultLine::spaced},
};

// clang-format off
// One line a row: member, association class tested, mode, kind, name; then the ends in the order passed.
const std::vector<ReferenceRow> referenceRows{
    {&referenceMembers[fcip_pe], "KESTO_FCIPElementSettingData", 1, Kind::managedSetting, "KESTO_FCIPElementSettingData",
     {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::fcipSettings, "KESTO_FCIPSettings"}},
    {&referenceMembers[fcip_pe], "KESTO_FCIPTCPEndpoint", 1, Kind::realize, "KESTO_FCIPTCPEndpoint",
     {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::tcpEndpoint, "KESTO_TCPProtocolEndpoint"}},
    {&referenceMembers[fcip_pe], "KESTO_SANFCIPEndpoint", 1, Kind::realize, "KESTO_SANFCIPEndpoint",
     {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::remoteFcipPort, "KESTO_RemoteFCIPPort"}},
    {&referenceMembers[fcip_pe], "KESTO_FCPortProtocolEndPoint", 1, Kind::realize, "KESTO_FCPortProtocolEndPoint",
     {End::fcPort, "KESTO_FCPort"}, {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},
    {&referenceMembers[fcip_pe], "KESTO_FCIPPEBasedOn", 1, Kind::groupPart, "KESTO_FCIPPEBasedOn",
     {End::profile, "KESTO_FCIPProfile"}, {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},
    {&referenceMembers[fcip_pe], "KESTO_SwitchHostedFCIPAccessPoint", 1, Kind::realize, "KESTO_SwitchHostedFCIPAccessPoint",
     {End::hostingSystem, "KESTO_LogicalComputerSystem"}, {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},

    {&referenceMembers[ip_pe], "KESTO_IPElementSettingData", 2, Kind::managedSetting, "KESTO_IPElementSettingData",
     {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}, {End::ipSettings, "KESTO_IPSettings"}},
    {&referenceMembers[ip_pe], "KESTO_IPEndPointStatisticalData", 2, Kind::managedStats, OWN,
     {End::statistics, "KESTO_IPEndpointStatistics"}, {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}},
    {&referenceMembers[ip_pe], "KESTO_TCPIPEndpoint", 2, Kind::realize, OWN,
     {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}, {End::tcpEndpoint, "KESTO_TCPProtocolEndpoint"}},
    {&referenceMembers[ip_pe], "KESTO_IPEthernetEndpoint", 2, Kind::realize, OWN,
     {End::ethernetPort, "KESTO_EthernetPort"}, {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}},
    {&referenceMembers[ip_pe], "KESTO_SwitchHostedIPAccessPoint", 2, Kind::realize, OWN,
     {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}, {End::hostingSystem, "KESTO_LogicalComputerSystem"}},
    {&referenceMembers[ip_pe], "KESTO_SANIpEndPoint", 2, Kind::realize, OWN,
     {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}, {End::remoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}},

    {&referenceMembers[tcp_pe], "KESTO_TCPEndPointStatisticalData", 2, Kind::managedStats, "KESTO_TCPEndPointStatisticalData",
     {End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}, {End::statistics, "KESTO_TCPEndPointStatistics"}},
    {&referenceMembers[tcp_pe], "KESTO_FCIPTCPEnpoint", 2, Kind::realize, "KESTO_FCIPTCPEndpoint",
     {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}},
    {&referenceMembers[tcp_pe], "KESTO_TCPIPEndpoint", 2, Kind::realize, OWN,
     {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}, {End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}},
    {&referenceMembers[tcp_pe], "KESTO_SwitchHostedTCPAccessPoint", 2, Kind::realize, OWN,
     {End::tcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::hostingSystem, "KESTO_LogicalComputerSystem"}},
    {&referenceMembers[tcp_pe], "KESTO_SANTCPEndpoint", 2, Kind::realize, OWN,
     {End::tcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::remoteTcpPort, "KESTO_RemoteTCPPort"}},
    {&referenceMembers[tcp_pe], "KESTO_TCPElementSettingData", 3, Kind::managedSetting, OWN,
     {End::tcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::tcpSettings, "KESTO_TCPSettings"}},

    {&referenceMembers[fcip_remote_pe], "KESTO_SANFCIPEndpoint", 6, Kind::realize, OWN,
     {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}, {End::remoteFcipPort, "KESTO_RemoteFCIPPort"}},

    {&referenceMembers[ip_remote_pe], "KESTO_SANIPEndPoint", 6, Kind::realize, OWN,
     {End::ipEndpoint, "KESTO_IPProtocolEndpoint"}, {End::remoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}},

    {&referenceMembers[tcp_remote_pe], "KESTO_SANTCPEndpoint", 2, Kind::realize, OWN,
     {End::tcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::remoteTcpPort, "KESTO_RemoteTCPPort"}},

    {&referenceMembers[lan_endpoint], "KESTO_IPEthernetEndpoint", 4, Kind::realize, OWN,
     {End::ipEndpoint, "KESTO_IPProtocolEndPoint"}, {End::lanEndpoint, "KESTO_LANEndpoint", From::key}},
    {&referenceMembers[lan_endpoint], "KESTO_EthernetPortProtocolEndpoint", 0, Kind::realize, OWN,
     {End::ethernetPort, "KESTO_EthernetPort"}, {End::lanEndpoint, "KESTO_LANEndpoint"}},
    {&referenceMembers[lan_endpoint], "CIM_HostedAccessPoint", 3, Kind::realize, "CIM_HostedAccessPoint",
     {End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, {End::lanEndpoint, "KESTO_LANEndpoint"}},

    {&referenceMembers[fcip_settings], "KESTO_FCIPElementSettingData", 3, Kind::managedSetting, "KESTO_FCIPElementSettingData",
     {End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, {End::fcipSettings, "KESTO_FCIPSettings"}},

    {&referenceMembers[ip_settings], "KESTO_IPElementSettingData", 3, Kind::managedSetting, "KESTO_IPElementSettingData",
     {End::ipEndpoint, "KESTO_IPProtocolEndPoint"}, {End::ipSettings, "KESTO_IPSettings"}},

    {&referenceMembers[tcp_settings], "KESTO_TCPElementSettingData", 3, Kind::managedSetting, OWN,
     {End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}, {End::tcpSettings, "KESTO_TCPSettings"}},

    {&referenceMembers[ip_stat], "KESTO_IPEndpointStatisticalData", 3, Kind::managedStats, "KESTO_IPEndpointStatisticalData",
     {End::ipEndpoint, "KESTO_IPProtocolEndPoint"}, {End::statistics, "KESTO_IPEndpointStatistics"}},

    {&referenceMembers[tcp_stat], "KESTO_TCPEndpointStatisticalData", 3, Kind::managedStats, "KESTO_TCPEndpointStatisticalData",
     {End::tcpEndpoint, "KESTO_TCPProtocolEndpoint"}, {End::statistics, "KESTO_TCPEndpointStatistics"}},

    {&referenceMembers[profile], "KESTO_FCIPPEBasedOn", 5, Kind::groupPart, "KESTO_FCIPPEBasedOn",
     {End::profile, "KESTO_FCIPProfile"}, {End::fcipEndpoint, "KESTO_FCIPProtocolEndpoint"}},

    {&referenceMembers[eth_port], "KESTO_EthernetPortProtocolEndpoint", 2, Kind::realize, "KESTO_IPElementSettingData",
     {End::ethernetPort, "KESTO_EthernetPort"}, {End::lanEndpoint, "KESTO_LANEndpoint", From::key}},
    {&referenceMembers[eth_port], "KESTO_EthernetPortStatisticalData", 2, Kind::managedStats, "KESTO_EthernetPortStatisticalData",
     {End::ethernetPort, "KESTO_EthernetPort"}, {End::ethernetStatistics, "KESTO_EthernetPortStatistics"}},

    {&referenceMembers[eth_stat], "KESTO_EthernetPortStatisticalData", 0, Kind::managedStats, "KESTO_EthernetPortStatisticalData",
     {End::ethernetPort, "KESTO_EthernetPort"}, {End::ethernetStatistics, "KESTO_EthernetPortStatistics"}},
};
// clang-format on

std::string result_line(ResultLine line, const std::string& associationClass) {
    switch (line) {
        case ResultLine::none:
            break;
        case ResultLine::usual:
            return "Result Class :" + associationClass + " \n";
        case ResultLine::starred:
            return " ****** Result Class :" + associationClass + "  ********** \n";
        case ResultLine::spaced:
            return "Result Class : " + associationClass + "\n";
    }
    return "";
}

std::string row_name(const ReferenceRow& row) {
    return std::string(row.member->source) + "_" + row.tested;
}

namespace {

test_support::RecordedPath end_path(const ReferenceEnd& end, const Tunnel& tunnel, const std::string& key) {
    if (end.from == From::key) {
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
