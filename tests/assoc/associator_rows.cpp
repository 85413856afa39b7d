#include "tests/assoc/associator_rows.h"

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
    ip_setting,
    tcp_setting,
    ip_stat,
    tcp_stat,
    tcp_statical_data,
    profile,
    eth_port,
    eth_stat,
};

} // namespace

// clang-format off
const std::vector<AssociatorNamesMember> associatorNamesMembers{
    {"fcip_pe", "get_fcip_pe_associator_names", get_fcip_pe_associator_names},
    {"ip_pe", "get_ip_pe_associator_names", get_ip_pe_associator_names},
    {"tcp_pe", "get_tcp_pe_associator_names", get_tcp_pe_associator_names},
    {"fcip_remote_pe", "get_fcip_remote_pe_associator_names", get_fcip_remote_pe_associator_names},
    {"ip_remote_pe", "get_ip_remote_pe_associator_names", get_ip_remote_pe_associator_names},
    {"tcp_remote_pe", "get_tcp_remote_pe_associator_names", get_tcp_remote_pe_associator_names},
    {"lan_endpoint", "get_lan_endpoint_associator_names", get_lan_endpoint_associator_names},
    {"fcip_settings", "get_fcip_settings_associator_names", get_fcip_settings_associator_names},
    {"ip_setting", "get_ip_setting_associator_names", get_ip_setting_associator_names},
    {"tcp_setting", "get_tcp_setting_associator_names", get_tcp_setting_associator_names},
    {"ip_stat", "get_ip_stat_associator_names", get_ip_stat_associator_names},
    {"tcp_stat", "get_tcp_stat_associator_names", get_tcp_stat_associator_names},
    {"tcp_statical_data", "get_tcp_statical_data_associator_names", get_tcp_statical_data_associator_names},
    {"profile", "get_profile_associator_names", get_profile_associator_names},
    {"eth_port", "get_eth_port_associator_names", get_eth_port_associator_names},
    {"eth_stat", "get_eth_stat_associator_names", get_eth_stat_associator_names},
};

const std::vector<AssociatorsMember> associatorsMembers{
    {"fcip_pe", "get_fcip_pe_associators", get_fcip_pe_associators},
    {"ip_pe", "get_ip_pe_associators", get_ip_pe_associators},
    {"tcp_pe", "get_tcp_pe_associators", get_tcp_pe_associators},
    {"fcip_remote_pe", "get_fcip_remote_pe_associators", get_fcip_remote_pe_associators},
    {"ip_remote_pe", "get_ip_remote_pe_associators", get_ip_remote_pe_associators},
    {"tcp_remote_pe", "get_tcp_remote_pe_associators", get_tcp_remote_pe_associators},
    {"lan_endpoint", "get_lan_endpoint_associators", get_lan_endpoint_associators},
    {"fcip_settings", "get_fcip_settings_associators", get_fcip_settings_associators},
    {"ip_setting", "get_ip_setting_associators", get_ip_setting_associators},
    {"tcp_setting", "get_tcp_setting_associators", get_tcp_setting_associators},
    {"ip_stat", "get_ip_stat_associators", get_ip_stat_associators},
    {"tcp_stat", "get_tcp_stat_associators", get_tcp_stat_associators},
    {"tcp_statical_data", "get_tcp_statical_data_associators", get_tcp_statical_data_associators},
    {"profile", "get_profile_associators", get_profile_associators},
    {"eth_port", "get_eth_port_associators", get_eth_port_associators},
    {"eth_stat", "get_eth_stat_associators", get_eth_stat_associators},
};

// Member, association class tested, mode, far ends in the order returned.
const std::vector<AssociatorNamesRow> associatorNamesRows{
    {&associatorNamesMembers[fcip_pe], "KESTO_FCIPElementSettingData", 1, {{End::fcipSettings, "KESTO_FCIPSettings"}}},
    {&associatorNamesMembers[fcip_pe], "KESTO_FCIPTCPEndpoint", 1, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&associatorNamesMembers[fcip_pe], "KESTO_SANFCIPEndpoint", 1, {{End::remoteFcipPort, "KESTO_RemoteFCIPPort"}}},
    {&associatorNamesMembers[fcip_pe], "KESTO_FCPortProtocolEndPoint", 1, {{End::fcPort, "KESTO_FCPort"}}},
    {&associatorNamesMembers[fcip_pe], "KESTO_FCIPPEBasedOn", 1, {{End::profile, "KESTO_FCIPProfile"}}},
    {&associatorNamesMembers[fcip_pe], "KESTO_SwitchHostedFCIPAccessPoint", 1, {{End::hostingSystem, "KESTO_LogicalComputerSystem"}}},

    {&associatorNamesMembers[ip_pe], "KESTO_IPElementSettingData", 2, {{End::ipSettings, "KESTO_IPSettings"},
                                                                     {End::hostingSystem, "KESTO_LogicalComputerSystem"}}},
    {&associatorNamesMembers[ip_pe], "KESTO_IPEndPointStatisticalData", 2, {{End::statistics, "KESTO_IPEndPointStatistics"}}},
    {&associatorNamesMembers[ip_pe], "KESTO_TCPIPEndpoint", 2, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&associatorNamesMembers[ip_pe], "KESTO_IPEthernetEndpoint", 2, {{End::ethernetPort, "KESTO_EthernetPort"}}},
    {&associatorNamesMembers[ip_pe], "KESTO_SwitchHostedIPAccessPoint", 2, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&associatorNamesMembers[ip_pe], "KESTO_SANIPEndPoint", 2, {{End::remoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}}},
    {&associatorNamesMembers[ip_pe], "AnyOtherAssociation", 2, {{End::hostingSystem, "KESTO_LogicalComputerSystem"}}},

    {&associatorNamesMembers[tcp_pe], "KESTO_TCPEndPointStatisticalData", 2, {{End::statistics, "KESTO_TCPEndPointStatistics"}}},
    {&associatorNamesMembers[tcp_pe], "KESTO_FCIPTCPEndpoint", 3, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&associatorNamesMembers[tcp_pe], "KESTO_TCPIPEndpoint", 3, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorNamesMembers[tcp_pe], "KESTO_SwitchHostedTCPAccessPoint", 3, {{End::physicalSystem, "KESTO_PhysicalComputerSystem"}}},
    {&associatorNamesMembers[tcp_pe], "KESTO_SANTCPEndpoint", 3, {{End::remoteTcpPort, "KESTO_RemoteTCPPort"}}},

    {&associatorNamesMembers[fcip_remote_pe], "KESTO_SANFCIPEndpoint", 6, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&associatorNamesMembers[ip_remote_pe], "KESTO_SANIPEndpoint", 6, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorNamesMembers[tcp_remote_pe], "KESTO_SANTCPEndpoint", 7, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&associatorNamesMembers[lan_endpoint], "KESTO_IPEthernetEndpoint", 4, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorNamesMembers[lan_endpoint], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::ethernetPort, "KESTO_EthernetPort"}}},
    {&associatorNamesMembers[lan_endpoint], "CIM_HostedAccessPoint", 3, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&associatorNamesMembers[fcip_settings], "KESTO_FCIPElementSettingData", 3, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&associatorNamesMembers[ip_setting], "KESTO_IPElementSettingData", 3, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorNamesMembers[tcp_setting], "KESTO_TCPElementSettingData", 3, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&associatorNamesMembers[ip_stat], "KESTO_IPEndPointStatisticalData", 3, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorNamesMembers[tcp_stat], "KESTO_TCPEndPointStatisticalData", 3, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&associatorNamesMembers[tcp_statical_data], "KESTO_TCPEndPointStatistics", 5, {}}, // built, and not returned

    {&associatorNamesMembers[profile], "KESTO_FCIPPEBasedOn", 5, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&associatorNamesMembers[eth_port], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::lanEndpoint, "KESTO_LANEndPoint"}}},
    {&associatorNamesMembers[eth_port], "KESTO_EthernetPortStatistics", 0, {{End::ethernetStatistics, "KESTO_EthernetPortStatistics"}}},
    {&associatorNamesMembers[eth_stat], "KESTO_EthernetPortStatisticalData", 0, {{End::ethernetPort, "KESTO_EthernetPort"}}},
};

const std::vector<AssociatorsRow> associatorsRows{
    {&associatorsMembers[fcip_pe], "KESTO_FCIPElementSettingData", 1, {{End::fcipSettings, "KESTO_FCIPSettings"}}},
    {&associatorsMembers[fcip_pe], "KESTO_FCIPTCPEndpoint", 1, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&associatorsMembers[fcip_pe], "KESTO_SANFCIPEndpoint", 1, {{End::remoteFcipPort, "KESTO_RemoteFCIPPort"}}},
    {&associatorsMembers[fcip_pe], "KESTO_FCPortProtocolEndPoint", 1, {{End::fcPort, "KESTO_FCPort"}}},
    {&associatorsMembers[fcip_pe], "KESTO_FCIPPEBasedOn", 1, {{End::profile, "KESTO_FCIPProfile"}}},
    {&associatorsMembers[fcip_pe], "KESTO_SwitchHostedFCIPAccessPoint", 1, {{End::hostingSystem, "KESTO_LogicalComputerSystem"}}},

    {&associatorsMembers[ip_pe], "KESTO_IPElementSettingData", 2, {{End::ipSettings, "KESTO_IPSettings"}}},
    {&associatorsMembers[ip_pe], "KESTO_IPEndPointStatisticalData", 2, {{End::statistics, "KESTO_IPEndPointStatistics"}}},
    {&associatorsMembers[ip_pe], "KESTO_TCPIPEndpoint", 2, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&associatorsMembers[ip_pe], "KESTO_IPEthernetEndpoint", 2, {{End::ethernetPort, "KESTO_EthernetPort"}}},
    {&associatorsMembers[ip_pe], "KESTO_SwitchHostedIPAccessPoint", 2, {{End::hostingSystem, "KESTO_LogicalComputerSystem"}}},
    {&associatorsMembers[ip_pe], "KESTO_SANIpEndPoint", 2, {{End::remoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}}},

    {&associatorsMembers[tcp_pe], "KESTO_TCPEndPointStatisticalData", 2, {{End::tcpStatisticalData, "KESTO_TCPStatisticalData"}}},
    {&associatorsMembers[tcp_pe], "KESTO_FCIPTCPEndpoint", 3, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&associatorsMembers[tcp_pe], "KESTO_TCPIPEndpoint", 3, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorsMembers[tcp_pe], "KESTO_SwitchHostedTCPAccessPoint", 3, {{End::hostingSystem, "KESTO_LogicalComputerSystem"}}},
    {&associatorsMembers[tcp_pe], "KESTO_SANTCPEndpoint", 3, {{End::remoteTcpPort, "KESTO_RemoteTCPPort"}}},
    {&associatorsMembers[tcp_pe], "KESTO_TCPElementSettingData", 3, {{End::tcpSettings, "KESTO_TCPSettings"}}},

    {&associatorsMembers[fcip_remote_pe], "KESTO_SANFCIPEndpoint", 6, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&associatorsMembers[ip_remote_pe], "KESTO_SANIPEndpoint", 6, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorsMembers[tcp_remote_pe], "KESTO_SANTCPEndpoint", 7, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&associatorsMembers[lan_endpoint], "KESTO_IPEthernetEndpoint", 4, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorsMembers[lan_endpoint], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::ethernetPort, "KESTO_EthernetPort"}}},
    {&associatorsMembers[lan_endpoint], "CIM_HostedAccessPoint", 3, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&associatorsMembers[fcip_settings], "KESTO_FCIPElementSettingData", 3, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&associatorsMembers[ip_setting], "KESTO_IPElementSettingData", 3, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorsMembers[tcp_setting], "KESTO_TCPElementSettingData", 3, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&associatorsMembers[ip_stat], "KESTO_IPEndPointStatisticalData", 3, {{End::ipEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&associatorsMembers[tcp_stat], "KESTO_TCPEndPointStatisticalData", 3, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&associatorsMembers[tcp_statical_data], "KESTO_TCPEndPointStatistics", 5, {{End::tcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&associatorsMembers[profile], "KESTO_FCIPPEBasedOn", 5, {{End::fcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&associatorsMembers[eth_port], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::lanEndpoint, "KESTO_LANEndPoint"}}},
    {&associatorsMembers[eth_port], "KESTO_EthernetPortStatisticalData", 0, {{End::ethernetStatistics, "KESTO_EthernetPortStatistics"}}},
    {&associatorsMembers[eth_stat], "KESTO_EthernetPortStatisticalData", 0, {{End::ethernetPort, "KESTO_EthernetPort"}}},
};
// clang-format on

} // namespace golden
