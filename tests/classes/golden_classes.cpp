#include "tests/classes/golden_classes.h"

#include <ostream>
#include <stdexcept>

#include "include/classes.h"
#include "tests/classes/class_test.h"
#include "tests/classes/golden_tables.h"
#include "tests/support/one_tunnel.h"

namespace class_tests {
namespace {

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

constexpr SystemNames WHAT_THE_LOOKUP_LEFT{"", "NULL"};
constexpr SystemNames NO_NAME{nullptr, nullptr};
constexpr SystemNames UNKNOWN{"Unknown", "Unknown"};

std::string framed(const std::string& function, const std::string& between = "") {
    return entering(function) + between + exiting(function);
}

} // namespace

const std::vector<GoldenBuilder>& golden_builders() {
    static const std::vector<GoldenBuilder> BUILDERS{
        {.function = "fcip_pe_build_instance",
         .className = "KESTO_FCIPProtocolEndPoint",
         .build = of_link(fcip_pe_build_instance),
         .properties = golden::FCIP_ENDPOINT,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         .trace = framed("fcip_pe_build_instance"),
         .needsProfile = true},
        {.function = "tcp_pe_build_instance",
         .className = "KESTO_TCPProtocolEndPoint",
         .build = of_link(tcp_pe_build_instance),
         .properties = golden::TCP_ENDPOINT,
         .systemNames = NO_NAME,
         .trace = framed("tcp_pe_build_instance"),
         .needsProfile = true},
        {.function = "ip_pe_build_instance",
         .className = "KESTO_IPProtocolEndPoint",
         .build = of_link(ip_pe_build_instance),
         .properties = golden::IP_ENDPOINT,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         // A free text names the address family.
         .trace = framed("ip_pe_build_instance", SOME + any_line_trace("ip_pe_build_instance")),
         .needsProfile = true},
        {.function = "fcip_settings_build_instance",
         .className = "KESTO_FCIPSettings",
         .build = of_link(fcip_settings_build_instance),
         .properties = golden::FCIP_SETTINGS,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         .trace = framed("fcip_settings_build_instance"),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "fcip_profile_build_instance",
         .className = "KESTO_FCIPProfile",
         .build = build_profile,
         .properties = golden::PROFILE,
         .trace = framed("fcip_profile_build_instance", ANY + "3" + ANY),
         .exitTraceWithoutPath = true},
        {.function = "ip_settings_build_instance",
         .className = "KESTO_IPSettings",
         .build = of_link(ip_settings_build_instance),
         .properties = golden::IP_SETTINGS,
         .trace = framed("ip_settings_build_instance", "\n inside get_ip_stats\n "),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "tcp_settings_build_instance",
         .className = "KESTO_TCPSettings",
         .build = of_link(tcp_settings_build_instance),
         .properties = golden::TCP_SETTINGS,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         .trace = framed("tcp_settings_build_instance", SOME + framed("get_tcp_stats", ANY) + SOME),
         .exitTraceWithoutPath = true},
        {.function = "fcip_remote_pe_build_instance",
         .className = "KESTO_RemoteFCIPPort",
         .build = of_link(fcip_remote_pe_build_instance),
         .properties = golden::REMOTE_FCIP_PORT,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         .trace = framed("fcip_remote_pe_build_instance"),
         .needsProfile = true},
        {.function = "ip_remote_pe_build_instance",
         .className = "KESTO_RemoteIPServiceAccessPoint",
         .build = of_link(ip_remote_pe_build_instance),
         .properties = golden::REMOTE_IP_ACCESS_POINT,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         .trace = framed("ip_remote_pe_build_instance", any_line_trace("ip_remote_pe_build_instance")),
         .needsProfile = true},
        {.function = "remote_service_ap_build_instance",
         .className = "KESTO_RemoteTCPPort",
         .build = of_link(remote_service_ap_build_instance),
         .properties = golden::REMOTE_TCP_PORT,
         .systemNames = NO_NAME,
         .trace = framed("remote_service_ap_build_instance"),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "tcp_remote_pe_build_instance",
         .className = "KESTO_RemoteTCPPort",
         .build = of_link(tcp_remote_pe_build_instance),
         .properties = golden::REMOTE_TCP_PORT,
         .systemNames = NO_NAME,
         .trace = framed("tcp_remote_pe_build_instance"),
         .needsProfile = true,
         .exitTraceWithoutPath = true},
        {.function = "lan_endpoint_build_instance",
         .className = "KESTO_LANEndPoint",
         .build = build_lan_endpoint,
         .properties = golden::LAN_ENDPOINT,
         .trace = exiting("lan_endpoint_build_instance"),
         .entryTrace = false},
        {.function = "ip_statistics_build_instance",
         .className = "KESTO_IPEndPointStatistics",
         .build = of_link(ip_statistics_build_instance),
         .properties = golden::IP_STATISTICS,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         .trace =
             framed("ip_statistics_build_instance", "\n inside get_ip_stats\n " + ANY + "Great!!!\n" + ANY)},
        {.function = "tcp_statistics_build_instance",
         .className = "KESTO_TCPEndPointStatistics",
         .build = of_link(tcp_statistics_build_instance),
         .properties = golden::TCP_STATISTICS,
         .systemNames = SystemNames{"0000", "0000"},
         .trace = framed("tcp_statistics_build_instance", ANY + framed("get_tcp_stats", ANY) + ANY)},
        {.function = "tcp_statistical_data_build_instance",
         .className = "KESTO_TCPStatisticalData",
         .build = of_link(tcp_statistical_data_build_instance),
         .properties = golden::TCP_STATISTICAL_DATA,
         .systemNames = WHAT_THE_LOOKUP_LEFT,
         .trace =
             framed("tcp_statistical_data_build_instance",
                    any_line_trace("tcp_statistical_data_build_instance") + framed("get_tcp_stats", ANY))},
        {.function = "eth_statistics_build_instance",
         .className = "KESTO_EthernetPortStatistics",
         .build = build_ethernet_statistics,
         .properties = golden::ETHERNET_STATISTICS,
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
         .keys = golden::FCIP_ENDPOINT_KEYS,
         .systemNames = UNKNOWN,
         .hostName = false,
         .needsProfile = true},
        {.function = "tcp_pe_fill_reference",
         .className = "KESTO_TCPProtocolEndPoint",
         .fill = of_link(tcp_pe_fill_reference),
         .keys = golden::TCP_ENDPOINT_KEYS,
         .systemNames = SystemNames{"LogicalComputerSystem", "LogicalComputerSystem"},
         .hostName = true,
         .trace = entering("tcp_pe_fill_reference"),
         .traceWithoutPath = entering("tcp_pe_fill_reference"),
         .needsProfile = true,
         .traceWithoutProfile = entering("tcp_pe_fill_reference")},
        {.function = "ip_pe_fill_reference",
         .className = "KESTO_IPProtocolEndPoint",
         .fill = of_link(ip_pe_fill_reference),
         .keys = golden::IP_ENDPOINT_KEYS,
         .systemNames = UNKNOWN,
         .hostName = true,
         .trace = framed("ip_pe_fill_reference", "17_10\\.1\\.1\\.1_10\\.1\\.1\\.2 \n"),
         .traceWithoutPath = framed("ip_pe_fill_reference"),
         .needsProfile = true,
         .traceWithoutProfile = entering("ip_pe_fill_reference") + "Error \n"},
        {.function = "fcip_settings_fill_reference",
         .className = "KESTO_FCIPSettings",
         .fill = of_link(fcip_settings_fill_reference),
         .keys = golden::SETTINGS_KEYS,
         .hostName = true,
         .trace = framed("fcip_settings_fill_reference", any_line_trace("fcip_settings_fill_reference")),
         .traceWithoutPath = framed("fcip_settings_fill_reference"),
         .checksHandle = true,
         .needsProfile = true,
         .traceWithoutProfile = entering("fcip_settings_fill_reference")},
        {.function = "fcip_profile_fill_reference",
         .className = "KESTO_FCIPProfile",
         .fill = fill_profile,
         .keys = golden::PROFILE_KEYS,
         .hostName = false},
        {.function = "ip_settings_fill_reference",
         .className = "KESTO_IPSettings",
         .fill = of_link(ip_settings_fill_reference),
         .keys = golden::SETTINGS_KEYS,
         .hostName = true,
         .trace = framed("ip_settings_fill_reference", SOME),
         .traceWithoutPath = framed("ip_settings_fill_reference"),
         .checksHandle = true,
         .needsProfile = true,
         .traceWithoutProfile = entering("ip_settings_fill_reference")},
        {.function = "tcp_settings_fill_reference",
         .className = "KESTO_TCPSettings",
         .fill = of_link(tcp_settings_fill_reference),
         .keys = golden::SETTINGS_KEYS,
         .hostName = true,
         .trace = framed("tcp_settings_fill_reference", SOME),
         .traceWithoutPath = framed("tcp_settings_fill_reference"),
         .checksHandle = true,
         .needsProfile = true,
         .traceWithoutProfile = entering("tcp_settings_fill_reference")},
        {.function = "fcip_remote_pe_fill_reference",
         .className = "KESTO_RemoteFCIPPort",
         .fill = of_link(fcip_remote_pe_fill_reference),
         .keys = golden::REMOTE_FCIP_PORT_KEYS,
         .systemNames = UNKNOWN,
         .hostName = false,
         .needsProfile = true},
        {.function = "ip_remote_pe_fill_reference",
         .className = "KESTO_RemoteIPServiceAccessPoint",
         .fill = of_link(ip_remote_pe_fill_reference),
         .keys = golden::REMOTE_IP_ACCESS_POINT_KEYS,
         .systemNames = UNKNOWN,
         .hostName = true,
         .trace = entering("ip_remote_pe_fill_reference"),
         .traceWithoutPath = entering("ip_remote_pe_fill_reference"),
         .needsProfile = true,
         .traceWithoutProfile = entering("ip_remote_pe_fill_reference")},
        {.function = "remote_service_ap_fill_reference",
         .className = "KESTO_RemoteTCPPort",
         .fill = of_link(remote_service_ap_fill_reference),
         .keys = golden::REMOTE_TCP_PORT_KEYS,
         .systemNames = UNKNOWN,
         .hostName = true,
         .needsProfile = true},
        {.function = "tcp_remote_pe_fill_reference",
         .className = "KESTO_RemoteTCPPort",
         .fill = of_link(tcp_remote_pe_fill_reference),
         .keys = golden::REMOTE_TCP_PORT_KEYS,
         .systemNames = UNKNOWN,
         .hostName = true,
         .needsProfile = true},
        {.function = "lan_endpoint_fill_reference",
         .className = "KESTO_LANEndPoint",
         .fill = fill_lan_endpoint,
         .keys = golden::LAN_ENDPOINT_KEYS,
         .hostName = true,
         .trace = framed("lan_endpoint_fill_reference"),
         .traceWithoutPath = framed("lan_endpoint_fill_reference"),
         .checksHandle = true},
        {.function = "stat_fill_reference",
         .className = "KESTO_IPEndPointStatistics",
         .fill = of_link(stat_fill_reference),
         .keys = golden::STATISTICS_KEYS,
         .hostName = true,
         .needsProfile = true,
         .traceWithoutProfile = SOME},
        {.function = "eth_statistics_fill_reference",
         .className = "KESTO_EthernetPortStatistics",
         .fill = fill_ethernet_statistics,
         .keys = golden::ETHERNET_STATISTICS_KEYS,
         .hostName = true,
         .trace = framed("eth_statistics_fill_reference"),
         .traceWithoutPath = framed("eth_statistics_fill_reference"),
         .checksHandle = true},
    };
    return FILLERS;
}

const Sets& golden_properties(const std::string& function) {
    for (const GoldenBuilder& builder : golden_builders()) {
        if (function == builder.function) return builder.properties;
    }
    throw std::invalid_argument(function);
}

const Sets& golden_keys(const std::string& function) {
    for (const GoldenFiller& filler : golden_fillers()) {
        if (function == filler.function) return filler.keys;
    }
    throw std::invalid_argument(function);
}

void PrintTo(const GoldenBuilder& builder, std::ostream* out) {
    *out << builder.function;
}
void PrintTo(const GoldenFiller& filler, std::ostream* out) {
    *out << filler.function;
}

} // namespace class_tests
