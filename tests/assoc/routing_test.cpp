// The four association operations: where each source class is sent, what they trace, and when they take and
// release the lock.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <set>

#include "tests/assoc/association_test.h"
#include "tests/assoc/associator_rows.h"
#include "tests/assoc/reference_rows.h"

using namespace golden;
using emulator::Effect;
using test_support::Answer;
using test_support::Key;

namespace {

enum class Operation { Associators, AssociatorNames, References, ReferenceNames };
const std::vector<Operation> EVERY_OPERATION{Operation::Associators, Operation::AssociatorNames,
                                             Operation::References, Operation::ReferenceNames};

const char* name_of(Operation operation) {
    switch (operation) {
        case Operation::Associators:
            return "FCIP_Associators";
        case Operation::AssociatorNames:
            return "FCIP_AssociatorNames";
        case Operation::References:
            return "FCIP_References";
        case Operation::ReferenceNames:
            break;
    }
    return "FCIP_ReferenceNames";
}

struct Route {
    Operation operation;
    const char *sourceClass, *keyName, *target;
};

void PrintTo(const Route& route, std::ostream* out) {
    *out << name_of(route.operation) << " " << route.sourceClass;
}

constexpr Operation RN = Operation::ReferenceNames;
constexpr Operation R = Operation::References;
constexpr Operation AN = Operation::AssociatorNames;
constexpr Operation A = Operation::Associators;

// clang-format off
const std::vector<Route> ROUTES{
    {RN, "KESTO_FCIPProtocolEndPoint", "Name", "get_fcip_pe_reference_names"},
    {RN, "KESTO_RemoteFCIPPort", "Name", "get_ip_pe_reference_names"},
    {RN, "KESTO_IPProtocolEndPoint", "Name", "get_ip_pe_reference_names"},
    {RN, "KESTO_RemoteIPServiceAccessPoint", "Name", "get_ip_pe_reference_names"},
    {RN, "KESTO_TCPProtocolEndPoint", "Name", "get_tcp_pe_reference_names"},
    {RN, "KESTO_RemoteTCPPort", "Name", "get_tcp_pe_reference_names"},
    {RN, "KESTO_LanEndPoint", "Name", "get_lan_endpoint_reference_names"},
    {RN, "KESTO_IPEndPointStatistics", "InstanceID", "get_ip_stat_reference_names"},
    {RN, "KESTO_TCPEndPointStatistics", "InstanceID", "get_tcp_stat_reference_names"},
    {RN, "KESTO_FCIPSettings", "InstanceID", "get_fcip_settings_reference_names"},
    {RN, "KESTO_IPSettings", "InstanceID", "get_ip_settings_reference_names"},
    {RN, "KESTO_TCPSettings", "InstanceID", "get_tcp_settings_reference_names"},
    {RN, "KESTO_EthernetPort", "DeviceID", "get_eth_port_reference_names"},
    {RN, "KESTO_EthernetPortStatistics", "InstanceID", "get_eth_stat_reference_names"},
    {RN, "KESTO_FCIPProfile", "InstanceID", "get_profile_reference_names"},

    {R, "KESTO_FCIPProtocolEndPoint", "Name", "get_fcip_pe_references"},
    {R, "KESTO_RemoteFCIPPort", "Name", "get_fcip_remote_pe_references"},
    {R, "KESTO_IPProtocolEndPoint", "Name", "get_ip_pe_references"},
    {R, "KESTO_RemoteIPServiceAccessPoint", "Name", "get_ip_remote_pe_references"},
    {R, "KESTO_TCPProtocolEndPoint", "Name", "get_tcp_pe_references"},
    {R, "KESTO_RemoteTCPPort", "Name", "get_tcp_remote_pe_references"},
    {R, "KESTO_FCIPSettings", "InstanceID", "get_fcip_settings_references"},
    {R, "KESTO_IPSettings", "InstanceID", "get_ip_settings_references"},
    {R, "KESTO_TCPSettings", "InstanceID", "get_tcp_settings_references"},
    {R, "KESTO_FCIPProfile", "InstanceID", "get_profile_references"},
    {R, "KESTO_LanEndPoint", "Name", "get_lan_endpoint_references"},
    {R, "KESTO_IPEndPointStatistics", "InstanceID", "get_ip_stat_references"},
    {R, "KESTO_TCPEndPointStatistics", "InstanceID", "get_tcp_stat_references"},
    {R, "KESTO_EthernetPort", "DeviceID", "get_eth_port_references"},
    {R, "KESTO_EthernetPortStatistics", "InstanceID", "get_eth_stat_references"},

    {AN, "KESTO_FCIPProtocolEndPoint", "Name", "get_fcip_pe_associator_names"},
    {AN, "KESTO_RemoteFCIPPort", "Name", "get_fcip_remote_pe_associator_names"},
    {AN, "KESTO_RemoteIPServiceAccessPoint", "Name", "get_ip_remote_pe_associator_names"},
    {AN, "KESTO_RemoteTCPPort", "Name", "get_tcp_remote_pe_associator_names"},
    {AN, "KESTO_IPProtocolEndPoint", "Name", "get_ip_pe_associator_names"},
    {AN, "KESTO_TCPProtocolEndPoint", "Name", "get_tcp_pe_associator_names"},
    {AN, "KESTO_LanEndPoint", "Name", "get_lan_endpoint_associator_names"},
    {AN, "KESTO_FCIPSettings", "InstanceID", "get_fcip_settings_associator_names"},
    {AN, "KESTO_IPSettings", "InstanceID", "get_ip_setting_associator_names"},
    {AN, "KESTO_TCPSettings", "InstanceID", "get_tcp_setting_associator_names"},
    {AN, "KESTO_EthernetPort", "DeviceID", "get_eth_port_associator_names"},
    {AN, "KESTO_EthernetPortStatistics", "InstanceID", "get_eth_stat_associator_names"},
    {AN, "KESTO_IPEndPointStatistics", "InstanceID", "get_ip_stat_associator_names"},
    {AN, "KESTO_TCPEndPointStatistics", "InstanceID", "get_tcp_stat_associator_names"},
    {AN, "KESTO_FCIPProfile", "InstanceID", "get_profile_associator_names"},

    {A, "KESTO_FCIPProtocolEndPoint", "Name", "get_fcip_pe_associators"},
    {A, "KESTO_RemoteFCIPPort", "Name", "get_fcip_remote_pe_associators"},
    {A, "KESTO_IPProtocolEndPoint", "Name", "get_ip_pe_associators"},
    {A, "KESTO_RemoteIPServiceAccessPoint", "Name", "get_ip_remote_pe_associators"},
    {A, "KESTO_TCPProtocolEndPoint", "Name", "get_tcp_pe_associators"},
    {A, "KESTO_RemoteTCPPort", "Name", "get_tcp_remote_pe_associators"},
    {A, "KESTO_LanEndPoint", "Name", "get_lan_endpoint_associators"},
    {A, "KESTO_FCIPSettings", "InstanceID", "get_fcip_settings_associators"},
    {A, "KESTO_IPSettings", "InstanceID", "get_ip_setting_associators"},
    {A, "KESTO_TCPSettings", "InstanceID", "get_tcp_setting_associators"},
    {A, "KESTO_EthernetPort", "DeviceID", "get_eth_port_associators"},
    {A, "KESTO_EthernetPortStatistics", "InstanceID", "get_eth_stat_associators"},
    {A, "KESTO_IPEndPointStatistics", "InstanceID", "get_ip_stat_associators"},
    {A, "KESTO_TCPEndPointStatistics", "InstanceID", "get_tcp_stat_associators"},
    {A, "KESTO_FCIPProfile", "InstanceID", "get_profile_associators"},
};
// clang-format on

constexpr const char* UNKNOWN = "KESTO_NoSuchAssociation";

// The traversal members entered, in order.
std::vector<std::string> members_entered(const std::string& output) {
    std::vector<std::string> found;
    for (std::size_t at = output.find("Entering get_"); at != std::string::npos;
         at = output.find("Entering get_", at + 1)) {
        const std::size_t start = at + std::string("Entering ").size();
        const std::string function = output.substr(start, output.find('\n', start) - start);
        if (function.find("_associator") != std::string::npos ||
            function.find("_reference") != std::string::npos)
            found.push_back(function);
    }
    return found;
}

class AssociationOperation : public AssociationTest {
  protected:
    Answer ask(Operation operation, const std::string& className, const std::vector<Key>& keys,
               const char* asked) {
        switch (operation) {
            case Operation::Associators:
                return associators(className, keys, asked);
            case Operation::AssociatorNames:
                return associator_names(className, keys, asked);
            case Operation::References:
                return references(className, keys, asked);
            case Operation::ReferenceNames:
                break;
        }
        return reference_names(className, keys, asked);
    }
    static void expect_ok(const Answer& answer) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_EQ(answer.doneCalls, 0U);
    }
    // What was on standard output when the lock was released.
    struct Split {
        Answer answer;
        std::string beforeRelease;
    };
    Split ask_and_split(Operation operation) {
        off_t written = -1;
        emulator::Fault watch = fault("mutex_unlock", Effect::None);
        watch.action = [&] {
            std::fflush(stdout);
            written = lseek(STDOUT_FILENO, 0, SEEK_CUR);
        };
        emulator::add_fault(watch);
        Split split{ask(operation, "KESTO_FCIPProtocolEndPoint", {{"Name", "7_x"}}, "KESTO_FCIPTCPEndpoint"),
                    {}};
        emulator::clear_faults();
        EXPECT_GE(written, 0);
        split.beforeRelease = split.answer.output.substr(0, static_cast<std::size_t>(written));
        return split;
    }
};

// ---- Every row of the four tables. ----

class AssociationRoute : public AssociationOperation, public testing::WithParamInterface<Route> {
  protected:
    Answer ask(const std::string& className, const std::string& keyName, const char* asked) {
        return AssociationOperation::ask(GetParam().operation, className, {{keyName, "7_x"}}, asked);
    }
};

TEST_P(AssociationRoute, ReachesItsMemberAndNoOther) {
    const Answer answer = ask(GetParam().sourceClass, GetParam().keyName, UNKNOWN);
    EXPECT_EQ(members_entered(answer.output), std::vector<std::string>{GetParam().target});
    expect_ok(answer);
}

TEST_P(AssociationRoute, IsFoundInAnyLetterCase) {
    const Answer answer =
        ask(in_mixed_case(GetParam().sourceClass), in_mixed_case(GetParam().keyName), UNKNOWN);
    EXPECT_EQ(members_entered(answer.output), std::vector<std::string>{GetParam().target});
}

TEST_P(AssociationRoute, WithoutAnAssociationClassAnswersOkAndNothing) {
    const Answer answer = ask(GetParam().sourceClass, GetParam().keyName, nullptr);
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(members_entered(answer.output), std::vector<std::string>{GetParam().target});
    expect_ok(answer);
}

struct RouteName {
    std::string operator()(const testing::TestParamInfo<Route>& route) const {
        return std::string(name_of(route.param.operation)) + "_" + route.param.sourceClass;
    }
};
INSTANTIATE_TEST_SUITE_P(Table, AssociationRoute, testing::ValuesIn(ROUTES), RouteName());

TEST_F(AssociationOperation, TablesNameEachRouteOnce) {
    std::set<std::pair<Operation, std::string>> seen;
    for (const Route& route : ROUTES)
        EXPECT_TRUE(seen.insert({route.operation, route.sourceClass}).second);
    EXPECT_EQ(seen.size(), 60U);
}

// The suites of the members go by tables; here is that the tables leave no member out.
TEST(TraversalTables, HoldEveryMemberAndARowForEach) {
    EXPECT_EQ(ASSOCIATOR_NAMES_MEMBERS.size() + ASSOCIATORS_MEMBERS.size(), 32U);
    EXPECT_EQ(REFERENCE_MEMBERS.size(), 15U);
    EXPECT_EQ(ASSOCIATOR_NAMES_ROWS.size(), 34U);
    EXPECT_EQ(ASSOCIATORS_ROWS.size(), 34U);
    EXPECT_EQ(REFERENCE_ROWS.size(), 33U);

    std::set<const void*> members;
    for (const AssociatorNamesRow& row : ASSOCIATOR_NAMES_ROWS)
        members.insert(row.member);
    for (const AssociatorsRow& row : ASSOCIATORS_ROWS)
        members.insert(row.member);
    EXPECT_EQ(members.size(), 32U);
    members.clear();
    for (const ReferenceRow& row : REFERENCE_ROWS)
        members.insert(row.member);
    EXPECT_EQ(members.size(), 15U);
}

TEST(TraversalTables, NameEveryTargetOfTheRoutes) {
    std::set<std::string> targets;
    for (const Route& route : ROUTES)
        targets.insert(route.target);
    // What no route reaches: statistical data, and the names of the three remote ends' references.
    std::set<std::string> names{"get_tcp_statical_data_associator_names", "get_tcp_statical_data_associators",
                                "get_fcip_remote_pe_reference_names", "get_ip_remote_pe_reference_names",
                                "get_tcp_remote_pe_reference_names"};
    for (const std::string& name : names)
        EXPECT_EQ(targets.count(name), 0U) << name;
    names.insert(targets.begin(), targets.end());
    std::set<std::string> members;
    for (const AssociatorNamesMember& member : ASSOCIATOR_NAMES_MEMBERS)
        members.insert(member.name);
    for (const AssociatorsMember& member : ASSOCIATORS_MEMBERS)
        members.insert(member.name);
    for (const ReferenceMember& member : REFERENCE_MEMBERS) {
        members.insert(std::string("get_") + member.source + "_reference_names");
        members.insert(std::string("get_") + member.source + "_references");
    }
    EXPECT_EQ(names, members);
}

// ---- The differences between the tables. ----

TEST_F(AssociationOperation, RemoteFcipPortNamesGoThroughTheIpEndpointItsReferencesThroughItsOwnMember) {
    EXPECT_EQ(
        members_entered(reference_names("KESTO_RemoteFCIPPort", {{"Name", "0_10.0.0.7"}}, UNKNOWN).output),
        std::vector<std::string>{"get_ip_pe_reference_names"});
    EXPECT_EQ(members_entered(references("KESTO_RemoteFCIPPort", {{"Name", "0_10.0.0.7"}}, UNKNOWN).output),
              std::vector<std::string>{"get_fcip_remote_pe_references"});
}

TEST_F(AssociationOperation, RemoteFcipPortFindsItsAssociationByReferencesAndNotByReferenceNames) {
    const std::vector<Key> keys{{"Name", "0_10.0.0.7_10.25.0.1"}};
    EXPECT_EQ(references("KESTO_RemoteFCIPPort", keys, "KESTO_SANFCIPEndpoint").instances.size(), 1U);
    EXPECT_EQ(reference_names("KESTO_RemoteFCIPPort", keys, "KESTO_SANFCIPEndpoint").returned.size(), 0U);
}

TEST_F(AssociationOperation, RemoteReferenceNamesMembersAreReachedByNoOperation) {
    for (const Route& route : ROUTES) {
        if (route.operation == RN) {
            EXPECT_EQ(std::string(route.target).find("_remote_"), std::string::npos);
        }
    }
    for (const char* source :
         {"KESTO_RemoteFCIPPort", "KESTO_RemoteIPServiceAccessPoint", "KESTO_RemoteTCPPort"}) {
        EXPECT_EQ(reference_names(source, {{"Name", "0_7"}}, UNKNOWN).output.find("_remote_pe_"),
                  std::string::npos);
    }
}

TEST_F(AssociationOperation, LogicalComputerSystemIsAnsweredWithNothing) {
    for (const Operation operation : {RN, R}) {
        const Answer answer =
            ask(operation, "KESTO_LogicalComputerSystem", {{"Name", "7"}}, "KESTO_SANIPEndpoint");
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_TRUE(members_entered(answer.output).empty());
        expect_ok(answer);
    }
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
        SCOPED_TRACE(source);
        for (const Operation operation : EVERY_OPERATION) {
            const Answer answer = ask(operation, source, {{"Antecedent", "7"}}, "KESTO_FCIPTCPEndpoint");
            EXPECT_EQ(answer.returned.size(), 0U);
            EXPECT_TRUE(members_entered(answer.output).empty());
            expect_ok(answer);
        }
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

TEST_F(AssociationOperation, RemoteIpPortIsNoSource) {
    for (const Operation operation : EVERY_OPERATION) {
        const Answer answer = ask(operation, "KESTO_RemoteIPPort", {{"Name", "7"}}, "KESTO_SANIPEndpoint");
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_TRUE(members_entered(answer.output).empty());
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
    }
}

// ---- Traces and the lock. ----

TEST_F(AssociationOperation, AssociatorsTraceTheirKeyTheirMemberAndTheirExit) {
    const std::vector<Key> keys{{"Name", "7_x"}};
    EXPECT_EQ(
        associators("KESTO_FCIPProtocolEndPoint", keys, UNKNOWN).output,
        "Entering FCIP_Associators\n\tfound key Name : 7_x\n"
        "Entering get_fcip_pe_associators\nExiting get_fcip_pe_associators\nExiting FCIP_Associators\n");
    EXPECT_EQ(associator_names("KESTO_FCIPProtocolEndPoint", keys, UNKNOWN).output,
              "Entering FCIP_AssociatorNames\n\tfound key Name : 7_x\n"
              "Entering get_fcip_pe_associator_names\nExiting get_fcip_pe_associator_names\n"
              "Exiting FCIP_AssociatorNames\n");
}

TEST_F(AssociationOperation, ReferencesTraceTheirKeyWithABlankBehindIt) {
    const std::vector<Key> keys{{"Name", "7_x"}};
    EXPECT_EQ(references("KESTO_FCIPProtocolEndPoint", keys, UNKNOWN).output,
              "Entering FCIP_References\n\tfound key Name : 7_x \n"
              "Entering get_fcip_pe_references\n ****** Result Class :KESTO_NoSuchAssociation  ********** \n"
              "Exiting get_fcip_pe_references\nExiting FCIP_References\n");
    EXPECT_EQ(
        reference_names("KESTO_FCIPProtocolEndPoint", keys, UNKNOWN).output,
        "Entering FCIP_ReferenceNames\n\tfound key Name : 7_x \n"
        "Entering get_fcip_pe_reference_names\n ****** Result Class :KESTO_NoSuchAssociation  ********** \n"
        "Exiting get_fcip_pe_reference_names\nExiting FCIP_ReferenceNames\n");
}

TEST_F(AssociationOperation, ReferenceNamesTraceTheirExitBeforeTheLockIsReleased) {
    const Split split = ask_and_split(RN);
    EXPECT_EQ(split.beforeRelease, split.answer.output);
    EXPECT_NE(split.beforeRelease.find("Exiting FCIP_ReferenceNames\n"), std::string::npos);
}

TEST_F(AssociationOperation, TheOthersReleaseTheLockBeforeTheyTraceTheirExit) {
    for (const Operation operation : {R, AN, A}) {
        const Split split = ask_and_split(operation);
        EXPECT_EQ(split.beforeRelease + exiting(name_of(operation)), split.answer.output);
    }
}

TEST_F(AssociationOperation, TheRequestIsReadBeforeTheLockIsTakenAndTheObjectsAreMadeUnderIt) {
    for (const Operation operation : EVERY_OPERATION) {
        const Answer answer =
            ask(operation, "KESTO_FCIPProtocolEndPoint", {{"Name", "7_x"}}, "KESTO_FCIPTCPEndpoint");
        ASSERT_EQ(answer.returned.size(), 1U);
        ASSERT_GE(answer.platformCalls.size(), 2U);
        EXPECT_EQ(answer.platformCalls.front(), "mutex_lock");
        EXPECT_EQ(answer.platformCalls.back(), "mutex_unlock");
        EXPECT_EQ(std::count(answer.platformCalls.begin(), answer.platformCalls.end(), "mutex_lock"), 1);
        for (const std::string& function : test_support::functions_called(answer.brokerCalls, false))
            EXPECT_TRUE(function.rfind("get", 0) == 0) << function << " without the lock";
        for (const std::string& function : test_support::functions_called(answer.brokerCalls, true))
            EXPECT_NE(function, "getKeyAt");
    }
}

// ---- Missing and unusable keys. ----

TEST_F(AssociationOperation, AssociatorsWithoutAKeyGiveUpBeforeTheLock) {
    for (const Operation operation : {A, AN}) {
        const std::string trace =
            operation == A ? "associators can't find key\n" : "associator names can't find key\n";
        for (const std::vector<Key>& keys : {std::vector<Key>{}, std::vector<Key>{{"InstanceID", "7"}}}) {
            const Answer answer = ask(operation, "KESTO_FCIPProtocolEndPoint", keys, "KESTO_FCIPTCPEndpoint");
            EXPECT_EQ(answer.rc, CMPI_RC_OK);
            EXPECT_EQ(answer.message, "invalid key name");
            EXPECT_EQ(answer.output, entering(name_of(operation)) + trace);
            EXPECT_EQ(answer.platformCalls, std::vector<std::string>{});
            EXPECT_EQ(answer.returned.size(), 0U);
        }
    }
}

TEST_F(AssociationOperation, ReferencesWithoutAKeyGoOnWithAnEmptyOne) {
    for (const Operation operation : {R, RN}) {
        const std::string trace =
            operation == R ? "references can't find key\n" : "references names can't find key\n";
        const std::string member = operation == R ? "get_fcip_pe_references" : "get_fcip_pe_reference_names";
        for (const std::vector<Key>& keys : {std::vector<Key>{}, std::vector<Key>{{"InstanceID", "7"}}}) {
            const Answer answer = ask(operation, "KESTO_FCIPProtocolEndPoint", keys, "KESTO_FCIPTCPEndpoint");
            expect_ok(answer);
            EXPECT_EQ(answer.output.rfind(entering(name_of(operation)) + trace + entering(member), 0), 0U)
                << answer.output;
            EXPECT_NE(answer.output.find(exiting(name_of(operation))), std::string::npos);
            EXPECT_EQ(answer.returned.size(), 0U);
        }
    }
}

// An empty key, read as a whole number, is 0, and a tunnel may have the if-index 0.
TEST_F(AssociationOperation, ReferencesWithoutAKeyFindTheTunnelWhoseIfIndexIs0) {
    FcipLinkEntry row = link_row(BY_NUMBER);
    row.kfmFcipLinkIfIndex = 0;
    emulator::add_link(row);
    EXPECT_EQ(references("KESTO_FCIPSettings", {}, "KESTO_FCIPElementSettingData").instances.size(), 1U);
    EXPECT_EQ(references("KESTO_FCIPProtocolEndPoint", {}, "KESTO_FCIPElementSettingData").instances.size(),
              0U);
}

TEST_F(AssociationOperation, AKeyThatIsNoStringCountsAsFoundAndIsEmpty) {
    for (const Operation operation : EVERY_OPERATION) {
        const Answer answer = ask(operation, "KESTO_FCIPProtocolEndPoint", {Key("Name", CMPI_uint32, 7)},
                                  "KESTO_FCIPTCPEndpoint");
        expect_ok(answer);
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(members_entered(answer.output).size(), 1U);
        EXPECT_EQ(answer.output.find("key"), std::string::npos) << answer.output;
    }
}

TEST_F(AssociationOperation, ClassesThatNobodyServesAnswerOkAndNothing) {
    for (const Operation operation : {R, RN}) {
        const Answer answer = ask(operation, "CIM_ComputerSystem", {{"Name", "7"}}, "KESTO_FCIPTCPEndpoint");
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_TRUE(members_entered(answer.output).empty());
        expect_ok(answer);
    }
}

// ---- What is passed on. ----

TEST_F(AssociationOperation, KeyAndNamespaceAndAssociationClassArePassedOn) {
    nameSpace = "root/elsewhere";
    const std::vector<Key> keys{{"Name", "7_x"}};
    const char* asked = "kesto_FCIPTCPendpoint";
    const Answer far = associator_names("KESTO_FCIPProtocolEndPoint", keys, asked);
    ASSERT_EQ(far.paths.size(), 1U);
    EXPECT_EQ(far.paths[0].name_space(), "root/elsewhere");
    EXPECT_EQ(far.paths[0].key("Name"), "301");
    const Answer instances = associators("KESTO_FCIPProtocolEndPoint", keys, asked);
    ASSERT_EQ(instances.instances.size(), 1U);
    EXPECT_EQ(instances.instances[0].path().name_space(), "root/elsewhere");
    const Answer own = reference_names("KESTO_IPProtocolEndPoint", keys, "kesto_TCPIPendpoint");
    ASSERT_EQ(own.paths.size(), 1U);
    EXPECT_EQ(own.paths[0].name_space(), "root/elsewhere");
    EXPECT_EQ(own.paths[0].class_name(), "kesto_TCPIPendpoint");
}

TEST_F(AssociationOperation, PropertiesReachTheBuildersOfAssociators) {
    const Answer answer =
        associators("KESTO_FCIPProtocolEndPoint", {{"Name", "7_x"}}, "KESTO_FCIPTCPEndpoint",
                    std::vector<std::string>{"Name", "PortNumber"});
    ASSERT_EQ(answer.instances.size(), 1U);
    ASSERT_EQ(answer.instances[0].filters().size(), 1U);
    EXPECT_EQ(answer.instances[0].filters()[0].properties, (std::vector<std::string>{"Name", "PortNumber"}));
}

TEST_F(AssociationOperation, FiltersOtherThanTheAssociationClassAreLeftToTheServer) {
    const Answer answer =
        associators("KESTO_FCIPProtocolEndPoint", {{"Name", "7_x"}}, "KESTO_FCIPTCPEndpoint", std::nullopt,
                    "KESTO_NoSuchClass", "NoRole", "NoRole");
    EXPECT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(
        reference_names("KESTO_FCIPProtocolEndPoint", {{"Name", "7_x"}}, "KESTO_FCIPTCPEndpoint", "NoRole")
            .paths.size(),
        1U);
}

TEST_F(AssociationOperation, AnyKeyOfTcpStatisticsIsItsInstanceId) {
    const Answer answer = associator_names("KESTO_TCPEndPointStatistics", {{"NoSuchKey", "7"}},
                                           "KESTO_TCPEndPointStatisticalData");
    ASSERT_EQ(answer.paths.size(), 1U);
    EXPECT_EQ(answer.paths[0], path(End::TcpEndpoint, "KESTO_TCPProtocolEndPoint", BY_IF_INDEX));
}

} // namespace
