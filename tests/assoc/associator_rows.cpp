#include "tests/assoc/associator_rows.h"

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
    IP_SETTING,
    TCP_SETTING,
    IP_STAT,
    TCP_STAT,
    TCP_STATICAL_DATA,
    PROFILE,
    ETH_PORT,
    ETH_STAT,
};

} // namespace

// clang-format off
const std::vector<AssociatorNamesMember> ASSOCIATOR_NAMES_MEMBERS{
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

const std::vector<AssociatorsMember> ASSOCIATORS_MEMBERS{
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
const std::vector<AssociatorNamesRow> ASSOCIATOR_NAMES_ROWS{
    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_PE], "KESTO_FCIPElementSettingData", 1, {{End::FcipSettings, "KESTO_FCIPSettings"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_PE], "KESTO_FCIPTCPEndpoint", 1, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_PE], "KESTO_SANFCIPEndpoint", 1, {{End::RemoteFcipPort, "KESTO_RemoteFCIPPort"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_PE], "KESTO_FCPortProtocolEndPoint", 1, {{End::FcPort, "KESTO_FCPort"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_PE], "KESTO_FCIPPEBasedOn", 1, {{End::Profile, "KESTO_FCIPProfile"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_PE], "KESTO_SwitchHostedFCIPAccessPoint", 1, {{End::HostingSystem, "KESTO_LogicalComputerSystem"}}},

    {&ASSOCIATOR_NAMES_MEMBERS[IP_PE], "KESTO_IPElementSettingData", 2, {{End::IpSettings, "KESTO_IPSettings"},
                                                                     {End::HostingSystem, "KESTO_LogicalComputerSystem"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_PE], "KESTO_IPEndPointStatisticalData", 2, {{End::Statistics, "KESTO_IPEndPointStatistics"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_PE], "KESTO_TCPIPEndpoint", 2, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_PE], "KESTO_IPEthernetEndpoint", 2, {{End::EthernetPort, "KESTO_EthernetPort"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_PE], "KESTO_SwitchHostedIPAccessPoint", 2, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_PE], "KESTO_SANIPEndPoint", 2, {{End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_PE], "AnyOtherAssociation", 2, {{End::HostingSystem, "KESTO_LogicalComputerSystem"}}},

    {&ASSOCIATOR_NAMES_MEMBERS[TCP_PE], "KESTO_TCPEndPointStatisticalData", 2, {{End::Statistics, "KESTO_TCPEndPointStatistics"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_PE], "KESTO_FCIPTCPEndpoint", 3, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_PE], "KESTO_TCPIPEndpoint", 3, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_PE], "KESTO_SwitchHostedTCPAccessPoint", 3, {{End::PhysicalSystem, "KESTO_PhysicalComputerSystem"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_PE], "KESTO_SANTCPEndpoint", 3, {{End::RemoteTcpPort, "KESTO_RemoteTCPPort"}}},

    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_REMOTE_PE], "KESTO_SANFCIPEndpoint", 6, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_REMOTE_PE], "KESTO_SANIPEndpoint", 6, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_REMOTE_PE], "KESTO_SANTCPEndpoint", 7, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&ASSOCIATOR_NAMES_MEMBERS[LAN_ENDPOINT], "KESTO_IPEthernetEndpoint", 4, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[LAN_ENDPOINT], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::EthernetPort, "KESTO_EthernetPort"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[LAN_ENDPOINT], "CIM_HostedAccessPoint", 3, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&ASSOCIATOR_NAMES_MEMBERS[FCIP_SETTINGS], "KESTO_FCIPElementSettingData", 3, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[IP_SETTING], "KESTO_IPElementSettingData", 3, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_SETTING], "KESTO_TCPElementSettingData", 3, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&ASSOCIATOR_NAMES_MEMBERS[IP_STAT], "KESTO_IPEndPointStatisticalData", 3, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_STAT], "KESTO_TCPEndPointStatisticalData", 3, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[TCP_STATICAL_DATA], "KESTO_TCPEndPointStatistics", 5, {}}, // built, and not returned

    {&ASSOCIATOR_NAMES_MEMBERS[PROFILE], "KESTO_FCIPPEBasedOn", 5, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&ASSOCIATOR_NAMES_MEMBERS[ETH_PORT], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::LanEndpoint, "KESTO_LANEndPoint"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[ETH_PORT], "KESTO_EthernetPortStatistics", 0, {{End::EthernetStatistics, "KESTO_EthernetPortStatistics"}}},
    {&ASSOCIATOR_NAMES_MEMBERS[ETH_STAT], "KESTO_EthernetPortStatisticalData", 0, {{End::EthernetPort, "KESTO_EthernetPort"}}},
};

const std::vector<AssociatorsRow> ASSOCIATORS_ROWS{
    {&ASSOCIATORS_MEMBERS[FCIP_PE], "KESTO_FCIPElementSettingData", 1, {{End::FcipSettings, "KESTO_FCIPSettings"}}},
    {&ASSOCIATORS_MEMBERS[FCIP_PE], "KESTO_FCIPTCPEndpoint", 1, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[FCIP_PE], "KESTO_SANFCIPEndpoint", 1, {{End::RemoteFcipPort, "KESTO_RemoteFCIPPort"}}},
    {&ASSOCIATORS_MEMBERS[FCIP_PE], "KESTO_FCPortProtocolEndPoint", 1, {{End::FcPort, "KESTO_FCPort"}}},
    {&ASSOCIATORS_MEMBERS[FCIP_PE], "KESTO_FCIPPEBasedOn", 1, {{End::Profile, "KESTO_FCIPProfile"}}},
    {&ASSOCIATORS_MEMBERS[FCIP_PE], "KESTO_SwitchHostedFCIPAccessPoint", 1, {{End::HostingSystem, "KESTO_LogicalComputerSystem"}}},

    {&ASSOCIATORS_MEMBERS[IP_PE], "KESTO_IPElementSettingData", 2, {{End::IpSettings, "KESTO_IPSettings"}}},
    {&ASSOCIATORS_MEMBERS[IP_PE], "KESTO_IPEndPointStatisticalData", 2, {{End::Statistics, "KESTO_IPEndPointStatistics"}}},
    {&ASSOCIATORS_MEMBERS[IP_PE], "KESTO_TCPIPEndpoint", 2, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[IP_PE], "KESTO_IPEthernetEndpoint", 2, {{End::EthernetPort, "KESTO_EthernetPort"}}},
    {&ASSOCIATORS_MEMBERS[IP_PE], "KESTO_SwitchHostedIPAccessPoint", 2, {{End::HostingSystem, "KESTO_LogicalComputerSystem"}}},
    {&ASSOCIATORS_MEMBERS[IP_PE], "KESTO_SANIpEndPoint", 2, {{End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"}}},

    {&ASSOCIATORS_MEMBERS[TCP_PE], "KESTO_TCPEndPointStatisticalData", 2, {{End::TcpStatisticalData, "KESTO_TCPStatisticalData"}}},
    {&ASSOCIATORS_MEMBERS[TCP_PE], "KESTO_FCIPTCPEndpoint", 3, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[TCP_PE], "KESTO_TCPIPEndpoint", 3, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[TCP_PE], "KESTO_SwitchHostedTCPAccessPoint", 3, {{End::HostingSystem, "KESTO_LogicalComputerSystem"}}},
    {&ASSOCIATORS_MEMBERS[TCP_PE], "KESTO_SANTCPEndpoint", 3, {{End::RemoteTcpPort, "KESTO_RemoteTCPPort"}}},
    {&ASSOCIATORS_MEMBERS[TCP_PE], "KESTO_TCPElementSettingData", 3, {{End::TcpSettings, "KESTO_TCPSettings"}}},

    {&ASSOCIATORS_MEMBERS[FCIP_REMOTE_PE], "KESTO_SANFCIPEndpoint", 6, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[IP_REMOTE_PE], "KESTO_SANIPEndpoint", 6, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[TCP_REMOTE_PE], "KESTO_SANTCPEndpoint", 7, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&ASSOCIATORS_MEMBERS[LAN_ENDPOINT], "KESTO_IPEthernetEndpoint", 4, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[LAN_ENDPOINT], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::EthernetPort, "KESTO_EthernetPort"}}},
    {&ASSOCIATORS_MEMBERS[LAN_ENDPOINT], "CIM_HostedAccessPoint", 3, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&ASSOCIATORS_MEMBERS[FCIP_SETTINGS], "KESTO_FCIPElementSettingData", 3, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[IP_SETTING], "KESTO_IPElementSettingData", 3, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[TCP_SETTING], "KESTO_TCPElementSettingData", 3, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&ASSOCIATORS_MEMBERS[IP_STAT], "KESTO_IPEndPointStatisticalData", 3, {{End::IpEndpoint, "KESTO_IPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[TCP_STAT], "KESTO_TCPEndPointStatisticalData", 3, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[TCP_STATICAL_DATA], "KESTO_TCPEndPointStatistics", 5, {{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}}},

    {&ASSOCIATORS_MEMBERS[PROFILE], "KESTO_FCIPPEBasedOn", 5, {{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}}},

    {&ASSOCIATORS_MEMBERS[ETH_PORT], "KESTO_EthernetPortProtocolEndpoint", 0, {{End::LanEndpoint, "KESTO_LANEndPoint"}}},
    {&ASSOCIATORS_MEMBERS[ETH_PORT], "KESTO_EthernetPortStatisticalData", 0, {{End::EthernetStatistics, "KESTO_EthernetPortStatistics"}}},
    {&ASSOCIATORS_MEMBERS[ETH_STAT], "KESTO_EthernetPortStatisticalData", 0, {{End::EthernetPort, "KESTO_EthernetPort"}}},
};
// clang-format on

} // namespace golden
