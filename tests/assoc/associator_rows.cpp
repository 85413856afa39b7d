#include "tests/assoc/associator_rows.h"

#include <ostream>

namespace golden {

namespace {

enum class In { Both, Names, Instances };

// A row of the table below, which stands for one form or for both.
struct TableRow {
    In in;
    const AssociatorSource* source;
    const char* asked;
    Reading reading;
    std::vector<FarEnd> far;
};

using enum In;
using enum Reading;

const AssociatorSource FROM_FCIP_PE{"fcip_pe", get_fcip_pe_associator_names, get_fcip_pe_associators};
const AssociatorSource FROM_IP_PE{"ip_pe", get_ip_pe_associator_names, get_ip_pe_associators};
const AssociatorSource FROM_TCP_PE{"tcp_pe", get_tcp_pe_associator_names, get_tcp_pe_associators};
const AssociatorSource FROM_FCIP_REMOTE_PE{"fcip_remote_pe", get_fcip_remote_pe_associator_names,
                                           get_fcip_remote_pe_associators};
const AssociatorSource FROM_IP_REMOTE_PE{"ip_remote_pe", get_ip_remote_pe_associator_names,
                                         get_ip_remote_pe_associators};
const AssociatorSource FROM_TCP_REMOTE_PE{"tcp_remote_pe", get_tcp_remote_pe_associator_names,
                                          get_tcp_remote_pe_associators};
const AssociatorSource FROM_LAN_ENDPOINT{"lan_endpoint", get_lan_endpoint_associator_names,
                                         get_lan_endpoint_associators};
const AssociatorSource FROM_FCIP_SETTINGS{"fcip_settings", get_fcip_settings_associator_names,
                                          get_fcip_settings_associators};
const AssociatorSource FROM_IP_SETTING{"ip_setting", get_ip_setting_associator_names,
                                       get_ip_setting_associators};
const AssociatorSource FROM_TCP_SETTING{"tcp_setting", get_tcp_setting_associator_names,
                                        get_tcp_setting_associators};
const AssociatorSource FROM_IP_STAT{"ip_stat", get_ip_stat_associator_names, get_ip_stat_associators};
const AssociatorSource FROM_TCP_STAT{"tcp_stat", get_tcp_stat_associator_names, get_tcp_stat_associators};
const AssociatorSource FROM_TCP_STATICAL_DATA{"tcp_statical_data", get_tcp_statical_data_associator_names,
                                              get_tcp_statical_data_associators};
const AssociatorSource FROM_PROFILE{"profile", get_profile_associator_names, get_profile_associators};
const AssociatorSource FROM_ETH_PORT{"eth_port", get_eth_port_associator_names, get_eth_port_associators};
const AssociatorSource FROM_ETH_STAT{"eth_stat", get_eth_stat_associator_names, get_eth_stat_associators};

constexpr FarEnd ETHERNET_PORT{End::EthernetPort, "KESTO_EthernetPort"};
constexpr FarEnd ETHERNET_STATISTICS{End::EthernetStatistics, "KESTO_EthernetPortStatistics"};
constexpr FarEnd FC_PORT{End::FcPort, "KESTO_FCPort"};
constexpr FarEnd FCIP_ENDPOINT{End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"};
constexpr FarEnd FCIP_SETTINGS{End::FcipSettings, "KESTO_FCIPSettings"};
constexpr FarEnd HOSTING_SYSTEM{End::HostingSystem, "KESTO_LogicalComputerSystem"};
constexpr FarEnd IP_ENDPOINT{End::IpEndpoint, "KESTO_IPProtocolEndPoint"};
constexpr FarEnd IP_SETTINGS{End::IpSettings, "KESTO_IPSettings"};
constexpr FarEnd LAN_ENDPOINT{End::LanEndpoint, "KESTO_LANEndPoint"};
constexpr FarEnd PHYSICAL_SYSTEM{End::PhysicalSystem, "KESTO_PhysicalComputerSystem"};
constexpr FarEnd PROFILE{End::Profile, "KESTO_FCIPProfile"};
constexpr FarEnd REMOTE_FCIP_PORT{End::RemoteFcipPort, "KESTO_RemoteFCIPPort"};
constexpr FarEnd REMOTE_IP_ACCESS_POINT{End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint"};
constexpr FarEnd REMOTE_TCP_PORT{End::RemoteTcpPort, "KESTO_RemoteTCPPort"};
constexpr FarEnd IP_STATISTICS{End::Statistics, "KESTO_IPEndPointStatistics"};
constexpr FarEnd TCP_STATISTICS{End::Statistics, "KESTO_TCPEndPointStatistics"};
constexpr FarEnd TCP_ENDPOINT{End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"};
constexpr FarEnd TCP_SETTINGS{End::TcpSettings, "KESTO_TCPSettings"};
constexpr FarEnd TCP_STATISTICAL_DATA{End::TcpStatisticalData, "KESTO_TCPStatisticalData"};

const std::vector<TableRow> TABLE{
    {Both, &FROM_FCIP_PE, "KESTO_FCIPElementSettingData", TunnelNumber, {FCIP_SETTINGS}},
    {Both, &FROM_FCIP_PE, "KESTO_FCIPTCPEndpoint", TunnelNumber, {TCP_ENDPOINT}},
    {Both, &FROM_FCIP_PE, "KESTO_SANFCIPEndpoint", TunnelNumber, {REMOTE_FCIP_PORT}},
    {Both, &FROM_FCIP_PE, "KESTO_FCPortProtocolEndPoint", TunnelNumber, {FC_PORT}},
    {Both, &FROM_FCIP_PE, "KESTO_FCIPPEBasedOn", TunnelNumber, {PROFILE}},
    {Both, &FROM_FCIP_PE, "KESTO_SwitchHostedFCIPAccessPoint", TunnelNumber, {HOSTING_SYSTEM}},

    {Names, &FROM_IP_PE, "KESTO_IPElementSettingData", IfIndexToken, {IP_SETTINGS, HOSTING_SYSTEM}},
    {Instances, &FROM_IP_PE, "KESTO_IPElementSettingData", IfIndexToken, {IP_SETTINGS}},
    {Both, &FROM_IP_PE, "KESTO_IPEndPointStatisticalData", IfIndexToken, {IP_STATISTICS}},
    {Both, &FROM_IP_PE, "KESTO_TCPIPEndpoint", IfIndexToken, {TCP_ENDPOINT}},
    {Both, &FROM_IP_PE, "KESTO_IPEthernetEndpoint", IfIndexToken, {ETHERNET_PORT}},
    {Names, &FROM_IP_PE, "KESTO_SwitchHostedIPAccessPoint", IfIndexToken, {FCIP_ENDPOINT}},
    {Instances, &FROM_IP_PE, "KESTO_SwitchHostedIPAccessPoint", IfIndexToken, {HOSTING_SYSTEM}},
    {Both, &FROM_IP_PE, "KESTO_SANIPEndPoint", IfIndexToken, {REMOTE_IP_ACCESS_POINT}},
    {Names, &FROM_IP_PE, "AnyOtherAssociation", IfIndexToken, {HOSTING_SYSTEM}},

    {Names, &FROM_TCP_PE, "KESTO_TCPEndPointStatisticalData", IfIndexToken, {TCP_STATISTICS}},
    {Instances, &FROM_TCP_PE, "KESTO_TCPEndPointStatisticalData", IfIndexToken, {TCP_STATISTICAL_DATA}},
    {Both, &FROM_TCP_PE, "KESTO_FCIPTCPEndpoint", IfIndex, {FCIP_ENDPOINT}},
    {Both, &FROM_TCP_PE, "KESTO_TCPIPEndpoint", IfIndex, {IP_ENDPOINT}},
    {Names, &FROM_TCP_PE, "KESTO_SwitchHostedTCPAccessPoint", IfIndex, {PHYSICAL_SYSTEM}},
    {Instances, &FROM_TCP_PE, "KESTO_SwitchHostedTCPAccessPoint", IfIndex, {HOSTING_SYSTEM}},
    {Both, &FROM_TCP_PE, "KESTO_SANTCPEndpoint", IfIndex, {REMOTE_TCP_PORT}},
    {Instances, &FROM_TCP_PE, "KESTO_TCPElementSettingData", IfIndex, {TCP_SETTINGS}},

    {Both, &FROM_FCIP_REMOTE_PE, "KESTO_SANFCIPEndpoint", RemoteAddress, {FCIP_ENDPOINT}},
    {Both, &FROM_IP_REMOTE_PE, "KESTO_SANIPEndpoint", RemoteAddress, {IP_ENDPOINT}},
    {Both, &FROM_TCP_REMOTE_PE, "KESTO_SANTCPEndpoint", RemoteIfIndex, {TCP_ENDPOINT}},

    {Both, &FROM_LAN_ENDPOINT, "KESTO_IPEthernetEndpoint", EthernetIfIndex, {IP_ENDPOINT}},
    {Both, &FROM_LAN_ENDPOINT, "KESTO_EthernetPortProtocolEndpoint", Port, {ETHERNET_PORT}},
    {Both, &FROM_LAN_ENDPOINT, "CIM_HostedAccessPoint", IfIndex, {FCIP_ENDPOINT}},

    {Both, &FROM_FCIP_SETTINGS, "KESTO_FCIPElementSettingData", IfIndex, {FCIP_ENDPOINT}},
    {Both, &FROM_IP_SETTING, "KESTO_IPElementSettingData", IfIndex, {IP_ENDPOINT}},
    {Both, &FROM_TCP_SETTING, "KESTO_TCPElementSettingData", IfIndex, {TCP_ENDPOINT}},
    {Both, &FROM_IP_STAT, "KESTO_IPEndPointStatisticalData", IfIndex, {IP_ENDPOINT}},
    {Both, &FROM_TCP_STAT, "KESTO_TCPEndPointStatisticalData", IfIndex, {TCP_ENDPOINT}},

    {Names, &FROM_TCP_STATICAL_DATA, "KESTO_TCPEndPointStatistics", Entity, {}},
    {Instances, &FROM_TCP_STATICAL_DATA, "KESTO_TCPEndPointStatistics", Entity, {TCP_ENDPOINT}},

    {Both, &FROM_PROFILE, "KESTO_FCIPPEBasedOn", Entity, {FCIP_ENDPOINT}},

    {Both, &FROM_ETH_PORT, "KESTO_EthernetPortProtocolEndpoint", Port, {LAN_ENDPOINT}},
    {Names, &FROM_ETH_PORT, "KESTO_EthernetPortStatistics", Port, {ETHERNET_STATISTICS}},
    {Instances, &FROM_ETH_PORT, "KESTO_EthernetPortStatisticalData", Port, {ETHERNET_STATISTICS}},
    {Both, &FROM_ETH_STAT, "KESTO_EthernetPortStatisticalData", Port, {ETHERNET_PORT}},
};

std::vector<AssociatorRow> rows_of_each_form() {
    std::vector<AssociatorRow> rows;
    for (const TableRow& row : TABLE) {
        if (row.in != Instances) rows.push_back({Form::Names, row.source, row.asked, row.reading, row.far});
        if (row.in != Names) rows.push_back({Form::Instances, row.source, row.asked, row.reading, row.far});
    }
    return rows;
}

} // namespace

const std::vector<const AssociatorSource*> ASSOCIATOR_SOURCES{
    &FROM_FCIP_PE,           &FROM_IP_PE,         &FROM_TCP_PE,       &FROM_FCIP_REMOTE_PE,
    &FROM_IP_REMOTE_PE,      &FROM_TCP_REMOTE_PE, &FROM_LAN_ENDPOINT, &FROM_FCIP_SETTINGS,
    &FROM_IP_SETTING,        &FROM_TCP_SETTING,   &FROM_IP_STAT,      &FROM_TCP_STAT,
    &FROM_TCP_STATICAL_DATA, &FROM_PROFILE,       &FROM_ETH_PORT,     &FROM_ETH_STAT};

std::string AssociatorSource::function(Form form) const {
    return std::string("get_") + name + (form == Form::Names ? "_associator_names" : "_associators");
}

const std::vector<AssociatorRow>& associator_rows() {
    static const std::vector<AssociatorRow> ROWS = rows_of_each_form();
    return ROWS;
}

void PrintTo(const AssociatorRow& row, std::ostream* out) {
    *out << row.source->function(row.form) << " " << row.asked;
}

} // namespace golden
