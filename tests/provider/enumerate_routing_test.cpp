// Where the two enumerations send each class, in any letter case.
#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "tests/provider/tunnel_switch.h"

namespace {

using namespace provider_tests;
using test_support::Answer;
using test_support::Filter;
using test_support::filter_for;
using test_support::NAMESPACE;
using test_support::Object;
using Calls = std::vector<std::string>;
using Names = std::vector<std::string>;

// Replies of the line card, so that the statistics builders come to an end.
void answer_statistics() {
    emulator::set_reply(1917, std::vector<std::uint8_t>(172));
    emulator::set_reply(1918, std::vector<std::uint8_t>(256));
    emulator::set_reply(1920, std::vector<std::uint8_t>(1352), {std::vector<std::uint8_t>(64)});
}

bool printed(const Answer& answer, const std::string& text) {
    return answer.output.find(text) != std::string::npos;
}

// The walker that served the request. Most walkers print their name; the others are known by what they call
// for each row.
std::string walker_of(const Answer& answer) {
    for (const std::string& name : entered(answer.output))
        if (name.starts_with("get_all_")) return name;
    if (!calls_of(answer.platformCalls, "fcport_fill_reference_pm").empty())
        return "get_all_eth_stat_data_references";
    if (printed(answer, "Entering eth_statistics_fill_reference\n")) return "get_all_eth_stat_references";
    if (printed(answer, "Entering eth_statistics_build_instance\n")) return "get_all_eth_stat_instances";
    if (printed(answer, "Entering lan_endpoint_fill_reference\n")) return "get_all_lan_endpoint_references";
    if (printed(answer, "Exiting lan_endpoint_build_instance\n")) return "get_all_lan_endpoint_instances";
    for (const char* builder : {"ip_statistics", "tcp_statistics", "tcp_statistical_data"}) {
        if (printed(answer, std::string("Entering ") + builder + "_build_instance\n"))
            return "get_all_statistics";
    }
    // The statistics' path filler asks for its own row once more.
    if (!calls_of(answer.platformCalls, "fcip_get_link_entry op=1").empty())
        return "get_all_statistic_references";
    return answer.platformCalls == Calls{"mutex_lock", "mutex_unlock"} ? "nothing" : "an unknown walker";
}

struct Route {
    const char* className;
    const char* walker;
};
void PrintTo(const Route& route, std::ostream* out) {
    *out << route.className << " goes to " << route.walker;
}

class RoutingTest : public TunnelSwitchTest, public testing::WithParamInterface<Route> {
  protected:
    void SetUp() override {
        TunnelSwitchTest::SetUp();
        answer_statistics();
    }

    static std::vector<std::string> spellings() {
        const std::string name = GetParam().className;
        std::vector<std::string> spellings{name, name, name};
        for (char& letter : spellings[1])
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        for (char& letter : spellings[2])
            letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        return spellings;
    }

    static void expect_routed(const Answer& answer, const std::string& className) {
        EXPECT_EQ(walker_of(answer), GetParam().walker) << className << " printed\n" << answer.output;
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_EQ(answer.doneCalls, 0u) << "the server closes the result itself";
    }
};

std::string name_of(const testing::TestParamInfo<Route>& parameter) {
    return parameter.param.className;
}

// ---- Enumerate instance names. ----

class NameRoutingTest : public RoutingTest {};

TEST_P(NameRoutingTest, GoesToItsWalker) {
    for (const std::string& className : spellings())
        expect_routed(enumerate_names(className), className);
}

constexpr const char* BINDS_NAMES = "get_all_binds_to_references";
constexpr Route NAME_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", "get_all_fcip_pe_references"},
    {"KESTO_RemoteFCIPPort", "get_all_fcip_pe_references"},
    {"KESTO_IPProtocolEndPoint", "get_all_ip_pe_references"},
    {"KESTO_RemoteTCPPort", "get_all_ip_pe_references"},
    {"KESTO_RemoteIPServiceAccessPoint", "get_all_ip_pe_references"},
    {"KESTO_TCPProtocolEndPoint", "get_all_ip_pe_references"},
    {"KESTO_FCIPSettings", "get_all_ip_pe_references"},
    {"KESTO_IPSettings", "get_all_ip_pe_references"},
    {"KESTO_TCPSettings", "get_all_ip_pe_references"},
    {"KESTO_IPEndPointStatistics", "get_all_statistic_references"},
    {"KESTO_TCPEndPointStatistics", "get_all_statistic_references"},
    {"KESTO_TCPStatisticalData", "get_all_statistic_references"},
    {"KESTO_EthernetPortStatistics", "get_all_eth_stat_references"},
    {"KESTO_EthernetPortStatisticalData", "get_all_eth_stat_data_references"},
    {"KESTO_LANEndPoint", "get_all_lan_endpoint_references"},
    {"KESTO_FCIPProfile", "get_all_fcip_profile_references"},
    {"KESTO_RemoteIPPort", BINDS_NAMES},
    {"KESTO_FCPortProtocolEndPoint", BINDS_NAMES},
    {"KESTO_EthernetPortProtocolEndpoint", BINDS_NAMES},
    {"KESTO_SANFCIPEndpoint", BINDS_NAMES},
    {"KESTO_SANIPEndpoint", BINDS_NAMES},
    {"KESTO_SANTCPEndpoint", BINDS_NAMES},
    {"KESTO_FCIPTCPEndpoint", BINDS_NAMES},
    {"KESTO_TCPIPEndpoint", BINDS_NAMES},
    {"KESTO_IPEthernetEndpoint", BINDS_NAMES},
    {"KESTO_SwitchHostedFCIPAccessPoint", BINDS_NAMES},
    {"KESTO_SwitchHostedIPAccessPoint", BINDS_NAMES},
    {"KESTO_SwitchHostedTCPAccessPoint", BINDS_NAMES},
    {"KESTO_FCIPPEBasedOn", BINDS_NAMES},
    {"KESTO_FCIPElementSettingData", BINDS_NAMES},
    {"KESTO_TCPElementSettingData", BINDS_NAMES},
    {"KESTO_IPElementSettingData", BINDS_NAMES},
    {"KESTO_IPEndPointStatisticalData", BINDS_NAMES},
    {"KESTO_TCPEndPointStatisticalData", BINDS_NAMES},
    {"KESTO_LogicalComputerSystem", BINDS_NAMES},
    {"KESTO_EthernetPort", BINDS_NAMES},
    {"CIM_HostedAccessPoint", BINDS_NAMES},
    {"NoSuchClass", BINDS_NAMES},
};
INSTANTIATE_TEST_SUITE_P(Classes, NameRoutingTest, testing::ValuesIn(NAME_ROUTES), name_of);

// ---- Enumerate instances. ----

class InstanceRoutingTest : public RoutingTest {};

TEST_P(InstanceRoutingTest, GoesToItsWalker) {
    for (const std::string& className : spellings())
        expect_routed(enumerate(className), className);
}

constexpr const char* BINDS_INSTANCES = "get_all_binds_to_instances";
constexpr Route INSTANCE_ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", "get_all_fcip_pe_instances"},
    {"KESTO_RemoteFCIPPort", "get_all_fcip_pe_instances"},
    {"KESTO_IPProtocolEndPoint", "get_all_ip_pe_instances"},
    {"KESTO_RemoteIPServiceAccessPoint", "get_all_ip_pe_instances"},
    {"KESTO_RemoteTCPPort", "get_all_ip_pe_instances"},
    {"KESTO_TCPProtocolEndPoint", "get_all_ip_pe_instances"},
    {"KESTO_FCIPSettings", "get_all_ip_pe_instances"},
    {"KESTO_IPSettings", "get_all_ip_pe_instances"},
    {"KESTO_TCPSettings", "get_all_ip_pe_instances"},
    {"KESTO_RemoteIPPort", "get_all_ip_pe_instances"},
    {"KESTO_IPEndPointStatistics", "get_all_statistics"},
    {"KESTO_TCPEndPointStatistics", "get_all_statistics"},
    {"KESTO_TCPStatisticalData", "get_all_statistics"},
    {"KESTO_EthernetPortStatistics", "get_all_eth_stat_instances"},
    {"KESTO_EthernetPortStatisticalData", "get_all_eth_stat_data_instances"},
    {"KESTO_FCIPProfile", "get_all_fcip_profiles"},
    {"KESTO_LANEndPoint", "get_all_lan_endpoint_instances"},
    {"KESTO_FCPortProtocolEndPoint", "nothing"},
    {"KESTO_EthernetPortProtocolEndpoint", BINDS_INSTANCES},
    {"KESTO_SANFCIPEndpoint", BINDS_INSTANCES},
    {"KESTO_SANIPEndpoint", BINDS_INSTANCES},
    {"KESTO_SANTCPEndpoint", BINDS_INSTANCES},
    {"KESTO_FCIPTCPEndpoint", BINDS_INSTANCES},
    {"KESTO_TCPIPEndpoint", BINDS_INSTANCES},
    {"KESTO_IPEthernetEndpoint", BINDS_INSTANCES},
    {"KESTO_SwitchHostedFCIPAccessPoint", BINDS_INSTANCES},
    {"KESTO_SwitchHostedIPAccessPoint", BINDS_INSTANCES},
    {"KESTO_SwitchHostedTCPAccessPoint", BINDS_INSTANCES},
    {"KESTO_FCIPPEBasedOn", BINDS_INSTANCES},
    {"KESTO_FCIPElementSettingData", BINDS_INSTANCES},
    {"KESTO_TCPElementSettingData", BINDS_INSTANCES},
    {"KESTO_IPElementSettingData", BINDS_INSTANCES},
    {"KESTO_IPEndPointStatisticalData", BINDS_INSTANCES},
    {"KESTO_TCPEndPointStatisticalData", BINDS_INSTANCES},
    {"KESTO_LogicalComputerSystem", BINDS_INSTANCES},
    {"KESTO_EthernetPort", BINDS_INSTANCES},
    {"CIM_HostedAccessPoint", BINDS_INSTANCES},
    {"NoSuchClass", BINDS_INSTANCES},
};
INSTANTIATE_TEST_SUITE_P(Classes, InstanceRoutingTest, testing::ValuesIn(INSTANCE_ROUTES), name_of);

// ---- What is peculiar about the routes. ----

class EnumerationTest : public TunnelSwitchTest {};

TEST_F(EnumerationTest, FcPortEndpointsHaveNoInstances) {
    const Answer answer = enumerate("KESTO_FCPortProtocolEndPoint");
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_TRUE(answer.returned.empty());
    EXPECT_EQ(answer.output, "");
}

TEST_F(EnumerationTest, FcPortEndpointsHaveNoNamesThoughTheAssociationsAreWalked) {
    const Answer answer = enumerate_names("KESTO_FCPortProtocolEndPoint");
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_TRUE(answer.returned.empty());
    EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_link_entry").size(), 2u);
}

TEST_F(EnumerationTest, RemoteIpPortsHaveInstancesButNoNames) {
    EXPECT_TRUE(enumerate_names("KESTO_RemoteIPPort").returned.empty());
    // The walker does not serve the class: one NULL for the one link.
    const Answer instances = enumerate("KESTO_RemoteIPPort");
    ASSERT_EQ(instances.instances.size(), 1u);
    EXPECT_EQ(instances.instances[0].kind(), Object::Null);
}

TEST_F(EnumerationTest, UnknownClassAnswersOkWithoutResults) {
    for (const char* className : {"NoSuchClass", "", "KESTO_", "CIM_HostedAccessPoint"}) {
        const Answer names = enumerate_names(className);
        EXPECT_EQ(names.rc, CMPI_RC_OK);
        EXPECT_TRUE(names.returned.empty());
        const Answer instances = enumerate(className);
        EXPECT_EQ(instances.rc, CMPI_RC_OK);
        EXPECT_TRUE(instances.returned.empty());
    }
}

TEST_F(EnumerationTest, EnumerationsPrintNothingOfTheirOwn) {
    emulator::clear_links();
    EXPECT_EQ(enumerate("KESTO_FCIPProtocolEndPoint").output, entering("get_all_fcip_pe_instances"));
    EXPECT_EQ(enumerate_names("KESTO_FCIPProtocolEndPoint").output, entering("get_all_fcip_pe_references"));
}

TEST_F(EnumerationTest, ClassNamespaceAndPropertiesReachTheBuilder) {
    nameSpace = "root/other";
    const Answer answer = enumerate("Kesto_FcipProtocolEndpoint", Names{"Name", "TunnelID"});
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].path().class_name(), "Kesto_FcipProtocolEndpoint");
    EXPECT_EQ(answer.instances[0].path().name_space(), "root/other");
    EXPECT_EQ(answer.instances[0].filters(), (std::vector<Filter>{filter_for(Names{"Name", "TunnelID"})}));
}

TEST_F(EnumerationTest, ClassAndNamespaceReachTheFiller) {
    nameSpace = "root/other";
    const Answer answer = enumerate_names("Kesto_FcipProtocolEndpoint");
    ASSERT_EQ(answer.paths.size(), 1u);
    EXPECT_EQ(answer.paths[0].class_name(), "Kesto_FcipProtocolEndpoint");
    EXPECT_EQ(answer.paths[0].name_space(), "root/other");
}

} // namespace
