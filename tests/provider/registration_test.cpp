// The CMPI boundary: the factories, the function tables, start-up, and the operations that do no work.
#include <string>
#include <vector>

#include "platform/platform_services.h"
#include "provider/provider.h"
#include "tests/support/one_tunnel.h"
#include "tests/support/traces.h"

namespace {

using one_tunnel::OneTunnelTest;
using test_support::Answer;
using test_support::calls_of;
using test_support::NAMESPACE;
using test_support::printed_by;
using test_support::RecordingBroker;
using Calls = std::vector<std::string>;

constexpr const char* QUEUE_ERROR = "get_using_cmi done init mts response q with error\n";

class RegistrationTest : public OneTunnelTest {
  protected:
    static void fail_init_mts() { emulator::fail_always("init_mts", -1); }
};

// The two management interfaces.

TEST_F(RegistrationTest, InstanceTableCarriesVersionsAndName) {
    EXPECT_EQ(instanceMi->hdl, nullptr);
    EXPECT_EQ(instanceMi->ft->ftVersion, 100);
    EXPECT_EQ(instanceMi->ft->miVersion, 100);
    EXPECT_STREQ(instanceMi->ft->miName, "instanceFCIPProvider");
}

TEST_F(RegistrationTest, AssociationTableCarriesVersionsAndName) {
    EXPECT_EQ(associationMi->hdl, nullptr);
    EXPECT_EQ(associationMi->ft->ftVersion, 100);
    EXPECT_EQ(associationMi->ft->miVersion, 100);
    EXPECT_STREQ(associationMi->ft->miName, "associationFCIPProvider");
}

TEST_F(RegistrationTest, InstanceTableHoldsTheOperations) {
    const CMPIInstanceMIFT& table = *instanceMi->ft;
    EXPECT_EQ(table.cleanup, &FCIP_Cleanup);
    EXPECT_EQ(table.enumerateInstanceNames, &FCIP_EnumInstanceNames);
    EXPECT_EQ(table.enumerateInstances, &FCIP_EnumInstances);
    EXPECT_EQ(table.getInstance, &FCIP_GetInstance);
    EXPECT_EQ(table.createInstance, &FCIP_CreateInstance);
    EXPECT_EQ(table.modifyInstance, &FCIP_ModifyInstance);
    EXPECT_EQ(table.deleteInstance, &FCIP_DeleteInstance);
    EXPECT_EQ(table.execQuery, &FCIP_ExecQuery);
}

TEST_F(RegistrationTest, AssociationTableHoldsTheOperations) {
    const CMPIAssociationMIFT& table = *associationMi->ft;
    EXPECT_EQ(table.cleanup, &FCIP_AssociationCleanup);
    EXPECT_EQ(table.associators, &FCIP_Associators);
    EXPECT_EQ(table.associatorNames, &FCIP_AssociatorNames);
    EXPECT_EQ(table.references, &FCIP_References);
    EXPECT_EQ(table.referenceNames, &FCIP_ReferenceNames);
}

TEST_F(RegistrationTest, FactoriesReturnTheSameTwoObjectsEveryTime) {
    EXPECT_EQ(FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, nullptr), instanceMi);
    EXPECT_EQ(FCIPProvider_Create_AssociationMI(broker.cmpi(), nullptr, nullptr), associationMi);
    EXPECT_NE(static_cast<const void*>(instanceMi), static_cast<const void*>(associationMi));
}

TEST_F(RegistrationTest, FactoriesLeaveTheStatusUntouched) {
    for (const bool queueFails : {false, true}) {
        if (queueFails) fail_init_mts();
        CMPIStatus status{CMPI_RC_ERR_FAILED, nullptr};
        printed_by([&] { FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, &status); });
        EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
        printed_by([&] { FCIPProvider_Create_AssociationMI(broker.cmpi(), nullptr, &status); });
        EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
        EXPECT_EQ(status.msg, nullptr);
    }
}

TEST_F(RegistrationTest, FactoriesCallNothingOfTheBroker) {
    FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, nullptr);
    FCIPProvider_Create_AssociationMI(broker.cmpi(), nullptr, nullptr);
    EXPECT_EQ(broker.call_texts(), Calls{});
}

// A get without a key makes one string through the provider's broker.
TEST_F(RegistrationTest, BrokerOfTheMostRecentFactoryCallIsUsed) {
    RecordingBroker second;
    FCIPProvider_Create_AssociationMI(second.cmpi(), nullptr, nullptr);
    get_instance("KESTO_FCIPSettings", {});
    EXPECT_EQ(second.call_texts("newString"), (Calls{"newString \"invalid key name\""}));
    EXPECT_EQ(broker.call_texts("newString"), Calls{});

    FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, nullptr);
    get_instance("KESTO_FCIPSettings", {});
    EXPECT_EQ(broker.call_texts("newString"), (Calls{"newString \"invalid key name\""}));
}

// Start-up.

TEST_F(RegistrationTest, EachFactoryOpensTheQueueOnceUnderTheLock) {
    const Calls opened{"mutex_lock", "init_mts", "mutex_unlock"};
    FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, nullptr);
    EXPECT_EQ(emulator::calls(), opened);
    emulator::clear_calls();
    FCIPProvider_Create_AssociationMI(broker.cmpi(), nullptr, nullptr);
    EXPECT_EQ(emulator::calls(), opened);
    emulator::clear_calls();
    initialize();
    EXPECT_EQ(emulator::calls(), opened);
}

TEST_F(RegistrationTest, OpeningTheQueuePrintsNothing) {
    EXPECT_EQ(printed_by([&] { FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, nullptr); }), "");
}

TEST_F(RegistrationTest, QueueThatCannotBeOpenedPrintsOneLine) {
    ASSERT_EQ(std::string(QUEUE_ERROR).size(), 50U);
    fail_init_mts();
    EXPECT_EQ(printed_by([&] {
                  EXPECT_EQ(FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, nullptr), instanceMi);
              }),
              QUEUE_ERROR);
    EXPECT_EQ(printed_by([&] {
                  EXPECT_EQ(FCIPProvider_Create_AssociationMI(broker.cmpi(), nullptr, nullptr),
                            associationMi);
              }),
              QUEUE_ERROR);
    EXPECT_EQ(printed_by(initialize), QUEUE_ERROR);
    EXPECT_FALSE(emulator::lock_held());
}

TEST_F(RegistrationTest, WithoutAQueueRequestsFindNothing) {
    emulator::close_queue();
    fail_init_mts();
    printed_by([&] { FCIPProvider_Create_InstanceMI(broker.cmpi(), nullptr, nullptr); });

    const Answer names = enumerate_names("KESTO_FCIPProtocolEndPoint");
    EXPECT_EQ(names.rc, CMPI_RC_OK);
    EXPECT_TRUE(names.returned.empty());
    const Answer instance = get_instance("KESTO_FCIPProtocolEndPoint", {{"Name", "5_10.1.1.1_10.1.1.2"}});
    EXPECT_EQ(instance.rc, CMPI_RC_OK);
    EXPECT_TRUE(instance.returned.empty());
}

// Clean-up.

TEST_F(RegistrationTest, CleanupsSucceedAndTouchNothing) {
    for (const CMPIBoolean terminating : {CMPIBoolean{0}, CMPIBoolean{1}}) {
        const std::string output = printed_by([&] {
            const CMPIStatus instances = instanceMi->ft->cleanup(instanceMi, nullptr, terminating);
            EXPECT_EQ(instances.rc, CMPI_RC_OK);
            EXPECT_EQ(instances.msg, nullptr);
            const CMPIStatus associations = associationMi->ft->cleanup(associationMi, nullptr, terminating);
            EXPECT_EQ(associations.rc, CMPI_RC_OK);
            EXPECT_EQ(associations.msg, nullptr);
        });
        EXPECT_EQ(output, "");
    }
    EXPECT_EQ(emulator::calls(), Calls{});
    EXPECT_EQ(broker.call_texts(), Calls{});
}

TEST_F(RegistrationTest, CleanedUpProviderGoesOnServing) {
    instanceMi->ft->cleanup(instanceMi, nullptr, 1);
    associationMi->ft->cleanup(associationMi, nullptr, 1);
    EXPECT_EQ(enumerate("KESTO_FCIPProtocolEndPoint").instances.size(), 1U);
}

// Create, modify, delete and query: for every class, served or not.

class UnsupportedOperationTest : public OneTunnelTest, public testing::WithParamInterface<const char*> {
  protected:
    void expect_not_supported(const CMPIStatus& status) {
        EXPECT_EQ(status.rc, 7);
        EXPECT_EQ(status.msg, nullptr);
        EXPECT_EQ(emulator::calls(), Calls{}) << "neither the lock nor any service is needed";
        EXPECT_EQ(broker.call_texts(), Calls{});
    }
    const CMPIObjectPath* op = nullptr;

    void SetUp() override {
        OneTunnelTest::SetUp();
        op = broker.path(NAMESPACE, GetParam(), {{"Name", "5_10.1.1.1_10.1.1.2"}});
    }
};

TEST_P(UnsupportedOperationTest, CreateInstance) {
    test_support::RecordingResult result(broker);
    expect_not_supported(instanceMi->ft->createInstance(instanceMi, nullptr, result.cmpi(), op, nullptr));
    EXPECT_TRUE(result.returned().empty());
}

TEST_P(UnsupportedOperationTest, ModifyInstance) {
    test_support::RecordingResult result(broker);
    expect_not_supported(
        instanceMi->ft->modifyInstance(instanceMi, nullptr, result.cmpi(), op, nullptr, nullptr));
    EXPECT_TRUE(result.returned().empty());
}

TEST_P(UnsupportedOperationTest, DeleteInstance) {
    test_support::RecordingResult result(broker);
    expect_not_supported(instanceMi->ft->deleteInstance(instanceMi, nullptr, result.cmpi(), op));
    EXPECT_TRUE(result.returned().empty());
}

TEST_P(UnsupportedOperationTest, ExecQuery) {
    test_support::RecordingResult result(broker);
    expect_not_supported(instanceMi->ft->execQuery(instanceMi, nullptr, result.cmpi(), op,
                                                   "SELECT * FROM KESTO_FCIPSettings", "WQL"));
    EXPECT_TRUE(result.returned().empty());
}

TEST_P(UnsupportedOperationTest, ArgumentsAreNotTouched) {
    expect_not_supported(instanceMi->ft->createInstance(nullptr, nullptr, nullptr, nullptr, nullptr));
    expect_not_supported(
        instanceMi->ft->modifyInstance(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
    expect_not_supported(instanceMi->ft->deleteInstance(nullptr, nullptr, nullptr, nullptr));
    expect_not_supported(instanceMi->ft->execQuery(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
}

INSTANTIATE_TEST_SUITE_P(Classes, UnsupportedOperationTest,
                         testing::Values("KESTO_FCIPProtocolEndPoint", "KESTO_FCIPSettings",
                                         "KESTO_FCIPPEBasedOn", "KESTO_LogicalComputerSystem",
                                         "CIM_ComputerSystem"),
                         [](const auto& parameter) { return std::string(parameter.param); });

// The lock.

TEST_F(RegistrationTest, EnumerationReadsTheRequestFirstAndThenHoldsTheLockOnce) {
    for (const bool names : {true, false}) {
        const Answer answer =
            names ? enumerate_names("KESTO_FCIPProtocolEndPoint") : enumerate("KESTO_FCIPProtocolEndPoint");
        ASSERT_EQ(answer.returned.size(), 1U);
        EXPECT_EQ(test_support::functions_called(answer.brokerCalls, false),
                  (Calls{"getClassName", "getCharPtr", "getNameSpace"}));
        ASSERT_GE(answer.platformCalls.size(), 3U);
        EXPECT_EQ(answer.platformCalls.front(), "mutex_lock");
        EXPECT_EQ(answer.platformCalls.back(), "mutex_unlock");
        EXPECT_EQ(calls_of(answer.platformCalls, "mutex_lock").size(), 1U);
        EXPECT_EQ(calls_of(answer.platformCalls, "mutex_unlock").size(), 1U);
    }
}

TEST_F(RegistrationTest, WorkOfARequestHappensUnderTheLock) {
    EXPECT_EQ(test_support::functions_called(enumerate_names("KESTO_FCIPProtocolEndPoint").brokerCalls, true),
              (Calls{"newObjectPath", "addKey", "returnObjectPath"}));
    EXPECT_EQ(test_support::functions_called(enumerate("KESTO_FCIPProtocolEndPoint").brokerCalls, true),
              (Calls{"newObjectPath", "setHostname", "newInstance", "setProperty", "setPropertyFilter",
                     "returnInstance"}));
}

TEST_F(RegistrationTest, GetReadsTheKeyBeforeItTakesTheLock) {
    const Answer answer = get_instance("KESTO_FCIPProtocolEndPoint", {{"Name", "5_10.1.1.1_10.1.1.2"}});
    ASSERT_EQ(answer.returned.size(), 1U);
    const Calls before = test_support::functions_called(answer.brokerCalls, false);
    EXPECT_EQ(before, (Calls{"getClassName", "getCharPtr", "getNameSpace", "getKeyCount", "getKeyAt"}));
    EXPECT_EQ(test_support::functions_called(answer.brokerCalls, true),
              (Calls{"newObjectPath", "setHostname", "newInstance", "setProperty", "setPropertyFilter",
                     "returnInstance"}));
    EXPECT_EQ(answer.platformCalls.front(), "mutex_lock");
    EXPECT_EQ(answer.platformCalls.back(), "mutex_unlock");
    EXPECT_EQ(calls_of(answer.platformCalls, "mutex_lock").size(), 1U);
    EXPECT_EQ(calls_of(answer.platformCalls, "mutex_unlock").size(), 1U);
}

TEST_F(RegistrationTest, UnservedClassTakesTheLockOnceToo) {
    const Answer answer = enumerate("KESTO_FCPortProtocolEndPoint");
    EXPECT_EQ(answer.platformCalls, (Calls{"mutex_lock", "mutex_unlock"}));
}

} // namespace
