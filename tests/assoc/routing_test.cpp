// Where the four association operations send each source class.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "tests/assoc/association_operation.h"
#include "tests/assoc/associator_rows.h"
#include "tests/assoc/reference_rows.h"

using namespace golden;
using test_support::Key;

namespace {

// Where the operations send a source class, by the x of get_<x>_references and of get_<x>_associators.
struct Route {
    const char *sourceClass, *keyName;
    const char *references, *associators;
    const char* referenceNames = nullptr; // where it is not the references' own

    std::string target(Operation operation) const {
        const auto get = [](const char* source, const char* what) {
            return std::string("get_") + source + "_" + what;
        };
        switch (operation) {
            case Operation::Associators:
                return get(associators, "associators");
            case Operation::AssociatorNames:
                return get(associators, "associator_names");
            case Operation::References:
                return get(references, "references");
            case Operation::ReferenceNames:
                break;
        }
        return get(referenceNames != nullptr ? referenceNames : references, "reference_names");
    }
};

void PrintTo(const Route& route, std::ostream* out) {
    *out << route.sourceClass;
}

// The reference names of the remote ends go through the local endpoints' functions.
const std::vector<Route> ROUTES{
    {"KESTO_FCIPProtocolEndPoint", "Name", "fcip_pe", "fcip_pe"},
    {"KESTO_RemoteFCIPPort", "Name", "fcip_remote_pe", "fcip_remote_pe", "ip_pe"},
    {"KESTO_IPProtocolEndPoint", "Name", "ip_pe", "ip_pe"},
    {"KESTO_RemoteIPServiceAccessPoint", "Name", "ip_remote_pe", "ip_remote_pe", "ip_pe"},
    {"KESTO_TCPProtocolEndPoint", "Name", "tcp_pe", "tcp_pe"},
    {"KESTO_RemoteTCPPort", "Name", "tcp_remote_pe", "tcp_remote_pe", "tcp_pe"},
    {"KESTO_LanEndPoint", "Name", "lan_endpoint", "lan_endpoint"},
    {"KESTO_IPEndPointStatistics", "InstanceID", "ip_stat", "ip_stat"},
    {"KESTO_TCPEndPointStatistics", "InstanceID", "tcp_stat", "tcp_stat"},
    {"KESTO_FCIPSettings", "InstanceID", "fcip_settings", "fcip_settings"},
    {"KESTO_IPSettings", "InstanceID", "ip_settings", "ip_setting"},
    {"KESTO_TCPSettings", "InstanceID", "tcp_settings", "tcp_setting"},
    {"KESTO_EthernetPort", "DeviceID", "eth_port", "eth_port"},
    {"KESTO_EthernetPortStatistics", "InstanceID", "eth_stat", "eth_stat"},
    {"KESTO_FCIPProfile", "InstanceID", "profile", "profile"},
};

// Every source class in every operation.
class AssociationRoute : public AssociationOperation,
                         public testing::WithParamInterface<std::tuple<Operation, Route>> {
  protected:
    const Route& route() const { return std::get<1>(GetParam()); }
    std::vector<std::string> target() const { return {route().target(std::get<0>(GetParam()))}; }
    Answer ask(const std::string& className, const std::string& keyName, const char* asked) {
        return AssociationOperation::ask(std::get<0>(GetParam()), className, {{keyName, "7_x"}}, asked);
    }
};

TEST_P(AssociationRoute, ReachesItsFunctionAndNoOther) {
    const Answer answer = ask(route().sourceClass, route().keyName, UNKNOWN);
    EXPECT_EQ(traversals_entered(answer.output), target());
    expect_ok(answer);
}

TEST_P(AssociationRoute, IsFoundInAnyLetterCase) {
    const Answer answer = ask(in_mixed_case(route().sourceClass), in_mixed_case(route().keyName), UNKNOWN);
    EXPECT_EQ(traversals_entered(answer.output), target());
}

TEST_P(AssociationRoute, WithoutAnAssociationClassAnswersOkAndNothing) {
    const Answer answer = ask(route().sourceClass, route().keyName, nullptr);
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(traversals_entered(answer.output), target());
    expect_ok(answer);
}

std::string route_name(const testing::TestParamInfo<std::tuple<Operation, Route>>& info) {
    return text_of(std::get<0>(info.param)) + "_" + std::get<1>(info.param).sourceClass;
}
INSTANTIATE_TEST_SUITE_P(All, AssociationRoute,
                         testing::Combine(testing::ValuesIn(EVERY_OPERATION), testing::ValuesIn(ROUTES)),
                         route_name);

// The suites of the traversal functions go by tables; here is that the tables leave no function out.
TEST(TraversalTables, HoldEveryFunctionOfTheRoutesAndFiveThatNoRouteReaches) {
    std::set<std::string> routed;
    for (const Route& route : ROUTES) {
        for (const Operation operation : EVERY_OPERATION) {
            routed.insert(route.target(operation));
        }
    }
    // Statistical data, and the names of the three remote ends' references.
    std::set<std::string> wanted{"get_tcp_statical_data_associator_names",
                                 "get_tcp_statical_data_associators", "get_fcip_remote_pe_reference_names",
                                 "get_ip_remote_pe_reference_names", "get_tcp_remote_pe_reference_names"};
    for (const std::string& name : wanted) {
        EXPECT_FALSE(routed.contains(name)) << name;
    }
    wanted.insert(routed.begin(), routed.end());

    std::set<std::string> sources;
    std::set<std::string> rows;
    for (const Form form : FORMS) {
        for (const AssociatorSource* source : ASSOCIATOR_SOURCES) {
            sources.insert(source->function(form));
        }
        for (const ReferenceSource* source : REFERENCE_SOURCES) {
            sources.insert(source->function(form));
        }
        for (const ReferenceRow& row : REFERENCE_ROWS) {
            rows.insert(row.source->function(form));
        }
    }
    for (const AssociatorRow& row : associator_rows()) {
        rows.insert(row.source->function(row.form));
    }
    EXPECT_EQ(sources, wanted);
    EXPECT_EQ(rows, wanted);
    EXPECT_EQ(associator_rows().size(), 68U);
    EXPECT_EQ(REFERENCE_ROWS.size(), 33U);
}

// The remote FCIP port's names go through the IP endpoint, which does not know its association.
TEST_F(AssociationOperation, RemoteFcipPortFindsItsAssociationByReferencesAndNotByReferenceNames) {
    const std::vector<Key> keys{{"Name", "0_10.0.0.7_10.25.0.1"}};
    EXPECT_EQ(references("KESTO_RemoteFCIPPort", keys, "KESTO_SANFCIPEndpoint").instances.size(), 1U);
    EXPECT_EQ(reference_names("KESTO_RemoteFCIPPort", keys, "KESTO_SANFCIPEndpoint").returned.size(), 0U);
}

TEST_F(AssociationOperation, TcpStatisticalDataIsNoSourceForItAcceptsNoKey) {
    const Answer answer =
        associators("KESTO_TCPStatisticalData", {{"InstanceID", "7"}}, "KESTO_TCPEndPointStatistics");
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_EQ(answer.message, "invalid key name");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(answer.output, "Entering FCIP_Associators\nassociators can't find key\n");
    EXPECT_EQ(answer.platformCalls, std::vector<std::string>{});
}

TEST_F(AssociationOperation, AssociationClassesAreNoSources) {
    for (const char* source :
         {"KESTO_FCIPPEBasedOn", "KESTO_SANFCIPEndpoint", "KESTO_SANIPEndpoint", "KESTO_SANTCPEndpoint",
          "KESTO_FCIPTCPEndpoint", "KESTO_TCPIPEndpoint", "KESTO_IPEthernetEndpoint",
          "KESTO_SwitchHostedFCIPAccessPoint", "KESTO_SwitchHostedIPAccessPoint",
          "KESTO_SwitchHostedTCPAccessPoint", "KESTO_FCIPElementSettingData", "KESTO_TCPElementSettingData",
          "KESTO_IPElementSettingData", "KESTO_IPEndPointStatisticalData", "KESTO_TCPEndPointStatisticalData",
          "KESTO_EthernetPortStatisticalData"}) {
        for (const Operation operation : EVERY_OPERATION) {
            expect_ok(expect_no_source(operation, source, "Antecedent"));
        }
    }
}

TEST_F(AssociationOperation, OtherClassesAreNoSources) {
    for (const Operation operation : {Operation::References, Operation::ReferenceNames}) {
        expect_ok(expect_no_source(operation, "KESTO_LogicalComputerSystem", "Name"));
        expect_ok(expect_no_source(operation, "CIM_ComputerSystem", "Name"));
    }
    for (const Operation operation : EVERY_OPERATION) {
        EXPECT_EQ(expect_no_source(operation, "KESTO_RemoteIPPort", "Name").rc, CMPI_RC_OK);
    }
}

TEST_F(AssociationOperation, AssociatorNamesOfAProfileAssociationAnswerOkAndNothing) {
    const Answer answer =
        associator_names("KESTO_FCIPPEBasedOn", {{"GroupComponent", "7"}}, "KESTO_FCIPPEBasedOn");
    EXPECT_EQ(
        answer.output,
        "Entering FCIP_AssociatorNames\n\tfound key GroupComponent : 7\nExiting FCIP_AssociatorNames\n");
    EXPECT_EQ(answer.returned.size(), 0U);
    expect_ok(answer);
}

} // namespace
