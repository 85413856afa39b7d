// The four association operations: what they trace, when they take and release the lock, and what they pass
// on.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/assoc/association_operation.h"

using namespace golden;
using test_support::entering;
using test_support::exiting;
using test_support::Key;

namespace {

class LockedOperation : public AssociationOperation {
  protected:
    // What was on standard output when the lock was released.
    struct Split {
        Answer answer;
        std::string beforeRelease;
    };
    Split ask_and_split(Operation operation) {
        off_t written = -1;
        const auto watch = [&] {
            std::fflush(stdout);
            written = lseek(STDOUT_FILENO, 0, SEEK_CUR);
        };
        emulator::add_fault({.symbol = "mutex_unlock", .effect = emulator::Effect::None, .action = watch});
        Split split{ask(operation, "KESTO_FCIPProtocolEndPoint", {{"Name", "7_x"}}, "KESTO_FCIPTCPEndpoint"),
                    {}};
        emulator::clear_faults();
        EXPECT_GE(written, 0);
        split.beforeRelease = split.answer.output.substr(0, static_cast<std::size_t>(written));
        return split;
    }
};

TEST_F(AssociationOperation, AssociatorsTraceTheirKeyTheirFunctionAndTheirExit) {
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

TEST_F(AssociationOperation, ReferencesTraceTheirKeyWithABlankAfterIt) {
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

TEST_F(LockedOperation, ReferenceNamesTraceTheirExitBeforeTheLockIsReleased) {
    const Split split = ask_and_split(Operation::ReferenceNames);
    EXPECT_EQ(split.beforeRelease, split.answer.output);
    EXPECT_NE(split.beforeRelease.find("Exiting FCIP_ReferenceNames\n"), std::string::npos);
}

TEST_F(LockedOperation, TheOthersReleaseTheLockBeforeTheyTraceTheirExit) {
    for (const Operation operation :
         {Operation::References, Operation::AssociatorNames, Operation::Associators}) {
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
        for (const std::string& function : test_support::functions_called(answer.brokerCalls, false)) {
            EXPECT_TRUE(function.starts_with("get")) << function << " without the lock";
        }
        for (const std::string& function : test_support::functions_called(answer.brokerCalls, true)) {
            EXPECT_NE(function, "getKeyAt");
        }
    }
}

TEST_F(AssociationOperation, AssociatorsWithoutAKeyGiveUpBeforeTheLock) {
    for (const Operation operation : {Operation::Associators, Operation::AssociatorNames}) {
        const std::string trace = operation == Operation::Associators ? "associators can't find key\n"
                                                                      : "associator names can't find key\n";
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
    for (const Operation operation : {Operation::References, Operation::ReferenceNames}) {
        const std::string trace = operation == Operation::References ? "references can't find key\n"
                                                                     : "references names can't find key\n";
        const std::string function =
            operation == Operation::References ? "get_fcip_pe_references" : "get_fcip_pe_reference_names";
        for (const std::vector<Key>& keys : {std::vector<Key>{}, std::vector<Key>{{"InstanceID", "7"}}}) {
            const Answer answer = ask(operation, "KESTO_FCIPProtocolEndPoint", keys, "KESTO_FCIPTCPEndpoint");
            expect_ok(answer);
            EXPECT_EQ(answer.output.rfind(entering(name_of(operation)) + trace + entering(function), 0), 0U)
                << answer.output;
            EXPECT_NE(answer.output.find(exiting(name_of(operation))), std::string::npos);
            EXPECT_EQ(answer.platformCalls.front(), "mutex_lock");
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
        EXPECT_EQ(traversals_entered(answer.output).size(), 1U);
        EXPECT_EQ(answer.output.find("key"), std::string::npos) << answer.output;
    }
}

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
