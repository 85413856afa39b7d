// Where the two enumerations send each class, in any letter case.
#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

#include "include/associations.h"
#include "include/classes.h"
#include "tests/support/one_tunnel.h"
#include "tests/support/traces.h"

namespace {

using one_tunnel::OneTunnelTest;
using test_support::Answer;
using test_support::calls_of;
using test_support::entering;
using test_support::Filter;
using test_support::filter_for;
using test_support::NAMESPACE;
using test_support::Object;
using Calls = std::vector<std::string>;
using Names = std::vector<std::string>;

using NameWalker = int(const char* className, const CMPIResult* result, const char* nameSpace);
using InstanceWalker = int(const char* className, const CMPIResult* result, const char** properties,
                           const char* nameSpace);

struct Route {
    const char* className;
    NameWalker* names;
    InstanceWalker* instances; // nullptr: nothing is walked
};
void PrintTo(const Route& route, std::ostream* out) {
    *out << route.className;
}

const Route ROUTES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_all_fcip_pe_references, get_all_fcip_pe_instances},
    {"KESTO_RemoteFCIPPort", get_all_fcip_pe_references, get_all_fcip_pe_instances},
    {"KESTO_IPProtocolEndPoint", get_all_ip_pe_references, get_all_ip_pe_instances},
    {"KESTO_RemoteTCPPort", get_all_ip_pe_references, get_all_ip_pe_instances},
    {"KESTO_RemoteIPServiceAccessPoint", get_all_ip_pe_references, get_all_ip_pe_instances},
    {"KESTO_TCPProtocolEndPoint", get_all_ip_pe_references, get_all_ip_pe_instances},
    {"KESTO_FCIPSettings", get_all_ip_pe_references, get_all_ip_pe_instances},
    {"KESTO_IPSettings", get_all_ip_pe_references, get_all_ip_pe_instances},
    {"KESTO_TCPSettings", get_all_ip_pe_references, get_all_ip_pe_instances},
    {"KESTO_IPEndPointStatistics", get_all_statistic_references, get_all_statistics},
    {"KESTO_TCPEndPointStatistics", get_all_statistic_references, get_all_statistics},
    {"KESTO_TCPStatisticalData", get_all_statistic_references, get_all_statistics},
    {"KESTO_EthernetPortStatistics", get_all_eth_stat_references, get_all_eth_stat_instances},
    {"KESTO_EthernetPortStatisticalData", get_all_eth_stat_data_references, get_all_eth_stat_data_instances},
    {"KESTO_LANEndPoint", get_all_lan_endpoint_references, get_all_lan_endpoint_instances},
    {"KESTO_FCIPProfile", get_all_fcip_profile_references, get_all_fcip_profiles},
    {"KESTO_RemoteIPPort", get_all_binds_to_references, get_all_ip_pe_instances},
    {"KESTO_FCPortProtocolEndPoint", get_all_binds_to_references, nullptr},
    {"KESTO_EthernetPortProtocolEndpoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_SANFCIPEndpoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_SANIPEndpoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_SANTCPEndpoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_FCIPTCPEndpoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_TCPIPEndpoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_IPEthernetEndpoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_SwitchHostedFCIPAccessPoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_SwitchHostedIPAccessPoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_SwitchHostedTCPAccessPoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_FCIPPEBasedOn", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_FCIPElementSettingData", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_TCPElementSettingData", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_IPElementSettingData", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_IPEndPointStatisticalData", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_TCPEndPointStatisticalData", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_LogicalComputerSystem", get_all_binds_to_references, get_all_binds_to_instances},
    {"KESTO_EthernetPort", get_all_binds_to_references, get_all_binds_to_instances},
    {"CIM_HostedAccessPoint", get_all_binds_to_references, get_all_binds_to_instances},
    {"NoSuchClass", get_all_binds_to_references, get_all_binds_to_instances},
};

class EnumerationRoute : public OneTunnelTest, public testing::WithParamInterface<Route> {
  protected:
    static Names spellings() {
        const std::string name = GetParam().className;
        Names spellings{name, name, name};
        for (char& letter : spellings[1]) {
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        }
        for (char& letter : spellings[2]) {
            letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        }
        return spellings;
    }

    // The calls but those that carry a new token each time.
    static Calls repeatable(Calls calls) {
        std::erase_if(calls, [](const std::string& call) { return call.starts_with("mts_recv "); });
        return calls;
    }
    // The operation answers as its walker does by itself.
    static void expect_same(const Answer& operation, const Answer& walker) {
        EXPECT_EQ(operation.output, walker.output);
        EXPECT_EQ(repeatable(operation.platformCalls), repeatable(walker.platformCalls));
        EXPECT_EQ(testing::PrintToString(operation.returned), testing::PrintToString(walker.returned));
        expect_success(operation);
    }
    static void expect_success(const Answer& answer) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_EQ(answer.doneCalls, 0U) << "the server closes the result itself";
    }
};

TEST_P(EnumerationRoute, NamesAreThoseOfTheClassWalker) {
    for (const std::string& className : spellings()) {
        SCOPED_TRACE(className);
        const Answer walker = walk(
            [&](const CMPIResult* result) { return GetParam().names(className.c_str(), result, NAMESPACE); });
        expect_same(enumerate_names(className), walker);
    }
}

TEST_P(EnumerationRoute, InstancesAreThoseOfTheClassWalker) {
    for (const std::string& className : spellings()) {
        SCOPED_TRACE(className);
        const Answer operation = enumerate(className);
        if (GetParam().instances == nullptr) {
            EXPECT_TRUE(operation.returned.empty());
            EXPECT_EQ(operation.output, "");
            EXPECT_EQ(operation.platformCalls, (Calls{"mutex_lock", "mutex_unlock"}));
            expect_success(operation);
            continue;
        }
        const Answer walker = walk([&](const CMPIResult* result) {
            return GetParam().instances(className.c_str(), result, nullptr, NAMESPACE);
        });
        expect_same(operation, walker);
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, EnumerationRoute, testing::ValuesIn(ROUTES),
                         [](const auto& route) { return std::string(route.param.className); });

// What is peculiar about the routes.

class EnumerationTest : public OneTunnelTest {};

TEST_F(EnumerationTest, FcPortEndpointsHaveNoNamesThoughTheAssociationsAreWalked) {
    const Answer answer = enumerate_names("KESTO_FCPortProtocolEndPoint");
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_TRUE(answer.returned.empty());
    EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_link_entry").size(), 2U);
}

TEST_F(EnumerationTest, RemoteIpPortsHaveInstancesButNoNames) {
    EXPECT_TRUE(enumerate_names("KESTO_RemoteIPPort").returned.empty());
    // The walker does not serve the class: one NULL for the one link.
    const Answer instances = enumerate("KESTO_RemoteIPPort");
    ASSERT_EQ(instances.instances.size(), 1U);
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
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].path().class_name(), "Kesto_FcipProtocolEndpoint");
    EXPECT_EQ(answer.instances[0].path().name_space(), "root/other");
    EXPECT_EQ(answer.instances[0].filters(), (std::vector<Filter>{filter_for(Names{"Name", "TunnelID"})}));
}

TEST_F(EnumerationTest, ClassAndNamespaceReachTheFiller) {
    nameSpace = "root/other";
    const Answer answer = enumerate_names("Kesto_FcipProtocolEndpoint");
    ASSERT_EQ(answer.paths.size(), 1U);
    EXPECT_EQ(answer.paths[0].class_name(), "Kesto_FcipProtocolEndpoint");
    EXPECT_EQ(answer.paths[0].name_space(), "root/other");
}

} // namespace
