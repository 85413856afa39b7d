// The CIM objects that the platform makes, as seen by a broker that has only the functions of CMPI 1.0.
#include <cmpidt.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"
#include "tests/support/recorded.h"
#include "tests/support/recording_broker.h"

namespace emulator_test {
namespace {

using test_support::Failure;
using test_support::Make;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::RecordingBroker;
using test_support::Sets;

constexpr const char* NAMESPACE = "root/kesto";
constexpr const char* HOST = "north-sw1.example.net";

class CimUtilities : public LockedTest {
  protected:
    static PortInfo port(std::uint32_t ifIndex) {
        PortInfo row{};
        row.ifIndex = ifIndex;
        return row;
    }
    static Sets port_keys(const char* className, const char* deviceId) {
        return {{"SystemCreationClassName", CMPI_chars, "KESTO_PhysicalComputerSystem"},
                {"SystemName", CMPI_chars, "north-sw1"},
                {"CreationClassName", CMPI_chars, className},
                {"DeviceID", CMPI_chars, deviceId}};
    }
    static RecordedPath port_path(const char* className, const char* deviceId) {
        return {NAMESPACE, className, port_keys(className, deviceId), HOST};
    }
    static RecordedPath statistics_path(const char* instanceId) {
        return {NAMESPACE, "KESTO_EthernetPortStatistics", {{"InstanceID", CMPI_chars, instanceId}}, HOST};
    }

    RecordingBroker broker;
};

TEST_F(CimUtilities, PathOfThePhysicalSwitch) {
    const CMPIObjectPath* path =
        switch_fill_reference("KESTO_PhysicalComputerSystem", NAMESPACE, broker.cmpi());
    EXPECT_EQ(broker.recorded(path),
              RecordedPath(NAMESPACE, "KESTO_PhysicalComputerSystem",
                           {{"CreationClassName", CMPI_chars, "KESTO_PhysicalComputerSystem"},
                            {"Name", CMPI_chars, "north-sw1"}},
                           HOST));
}

TEST_F(CimUtilities, PathAndInstanceOfALogicalSwitch) {
    const Sets keys{{"CreationClassName", CMPI_chars, "KESTO_LogicalComputerSystem"},
                    {"Name", CMPI_chars, "2001024b53000001"}};
    const RecordedPath expected(NAMESPACE, "KESTO_LogicalComputerSystem", keys, HOST);
    EXPECT_EQ(broker.recorded(switch_fill_reference_str("KESTO_LogicalComputerSystem", NAMESPACE,
                                                        "2001024b53000001", broker.cmpi())),
              expected);
    const char* properties[] = {"Name", nullptr};
    const RecordedInstance instance = broker.recorded(switch_build_instance_str(
        "KESTO_LogicalComputerSystem", NAMESPACE, "2001024b53000001", 0, properties, broker.cmpi()));
    EXPECT_EQ(instance.path(), expected);
    EXPECT_EQ(instance.value("Name"), "2001024b53000001");
    EXPECT_EQ(instance.value("ElementName"), "2001024b53000001");
    ASSERT_EQ(instance.filters().size(), 1U);
    EXPECT_EQ(instance.filters()[0], (test_support::Filter{{{"Name"}}, {{"CreationClassName", "Name"}}}));
    EXPECT_EQ(instance.sets_before_filter(), 0U);
}

TEST_F(CimUtilities, WithoutAPropertyListThereIsNoFilter) {
    const PortInfo row = port(ETHERNET_1_1);
    EXPECT_TRUE(
        broker
            .recorded(fcport_build_instance_pm("KESTO_EthernetPort", NAMESPACE, &row, nullptr, broker.cmpi()))
            .filters()
            .empty());
}

TEST_F(CimUtilities, PortObjectsTakeClassAndNamespaceInEitherOrder) {
    const PortInfo row = port(ETHERNET_1_1);
    for (const bool swapped : {false, true}) {
        const char* first = swapped ? NAMESPACE : "kesto_ethernetport";
        const char* second = swapped ? "kesto_ethernetport" : NAMESPACE;
        const RecordedPath expected = port_path("kesto_ethernetport", "-1694433279");
        EXPECT_EQ(broker.recorded(fcport_fill_reference_pm(first, second, &row, broker.cmpi())), expected);
        const RecordedInstance instance =
            broker.recorded(fcport_build_instance_pm(first, second, &row, nullptr, broker.cmpi()));
        EXPECT_EQ(instance.path(), expected);
        Sets sets = port_keys("kesto_ethernetport", "-1694433279");
        sets.push_back({"ElementName", CMPI_chars, "GigabitEthernet1/1"});
        sets.push_back({"PermanentAddress", CMPI_chars, "02:4b:53:00:01:01"});
        sets.push_back({"PortNumber", CMPI_uint16, 1});
        EXPECT_EQ(instance.sets(), sets);
    }
}

TEST_F(CimUtilities, FcPortIsMadeOfAnyPort) {
    const PortInfo row = port(FCIP_1);
    EXPECT_EQ(broker.recorded(fcport_fill_reference_pm("KESTO_FCPort", NAMESPACE, &row, broker.cmpi())),
              port_path("KESTO_FCPort", "167772161"));
}

TEST_F(CimUtilities, StatisticalDataTiesThePortToItsStatistics) {
    const PortInfo row = port(ETHERNET_1_1);
    const Sets ends{{"ManagedElement", CMPI_ref, port_path("KESTO_EthernetPort", "-1694433279")},
                    {"Stats", CMPI_ref, statistics_path("-1694433279")}};
    const char* className = "KESTO_EthernetPortStatisticalData";
    const RecordedInstance instance =
        broker.recorded(fcport_build_instance_pm(NAMESPACE, className, &row, nullptr, broker.cmpi()));
    EXPECT_EQ(instance.sets(), ends);
    EXPECT_EQ(instance.class_name(), className);
    EXPECT_EQ(broker.recorded(fcport_fill_reference_pm(NAMESPACE, className, &row, broker.cmpi())),
              RecordedPath(NAMESPACE, className, ends, HOST));
}

TEST_F(CimUtilities, AssociationHoldsBothPathsUnderTheirRoles) {
    CMPIObjectPath* first = broker.path(NAMESPACE, "KESTO_A", {{"Name", "a"}});
    CMPIObjectPath* second = broker.path(NAMESPACE, "KESTO_B", {{"Name", "b"}});
    const RecordedInstance instance = broker.recorded(association_class_build_instance_path(
        "KESTO_AB", NAMESPACE, first, second, "Antecedent", "Dependent", broker.cmpi()));
    EXPECT_EQ(instance.path(), RecordedPath(NAMESPACE, "KESTO_AB", {}, HOST));
    EXPECT_EQ(instance.sets(), (Sets{{"Antecedent", CMPI_ref, broker.recorded(first)},
                                     {"Dependent", CMPI_ref, broker.recorded(second)}}));
    EXPECT_EQ(association_class_build_instance_path("KESTO_AB", NAMESPACE, nullptr, second, "Antecedent",
                                                    "Dependent", broker.cmpi()),
              nullptr);
}

TEST_F(CimUtilities, BrokerThatMakesNothingGivesNothing) {
    const PortInfo row = port(ETHERNET_1_1);
    for (const Make what : {Make::ObjectPath, Make::Instance}) {
        for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
            broker.fail_every(what, how);
            fcport_fill_reference_pm("KESTO_EthernetPort", NAMESPACE, &row, broker.cmpi());
            fcport_fill_reference_pm("KESTO_EthernetPortStatisticalData", NAMESPACE, &row, broker.cmpi());
            const CMPIInstance* made[] = {
                fcport_build_instance_pm("KESTO_EthernetPort", NAMESPACE, &row, nullptr, broker.cmpi()),
                fcport_build_instance_pm("KESTO_EthernetPortStatisticalData", NAMESPACE, &row, nullptr,
                                         broker.cmpi()),
                switch_build_instance_str("KESTO_LogicalComputerSystem", NAMESPACE, "key", 0, nullptr,
                                          broker.cmpi())};
            for (const CMPIInstance* instance : made) {
                EXPECT_FALSE(broker.recorded(instance).is_valid());
            }
        }
    }
}

TEST_F(CimUtilities, FaultsGiveNull) {
    const PortInfo row = port(ETHERNET_1_1);
    for (const char* symbol :
         {"switch_fill_reference", "switch_fill_reference_str", "switch_build_instance_str",
          "association_class_build_instance_path", "fcport_build_instance_pm", "fcport_fill_reference_pm"}) {
        emulator::fail_always(symbol);
    }
    CMPIObjectPath* end = broker.path(NAMESPACE, "KESTO_A");
    EXPECT_EQ(switch_fill_reference("KESTO_A", NAMESPACE, broker.cmpi()), nullptr);
    EXPECT_EQ(switch_fill_reference_str("KESTO_A", NAMESPACE, "key", broker.cmpi()), nullptr);
    EXPECT_EQ(switch_build_instance_str("KESTO_A", NAMESPACE, "key", 0, nullptr, broker.cmpi()), nullptr);
    EXPECT_EQ(association_class_build_instance_path("KESTO_A", NAMESPACE, end, end, "A", "B", broker.cmpi()),
              nullptr);
    EXPECT_EQ(fcport_build_instance_pm("KESTO_A", NAMESPACE, &row, nullptr, broker.cmpi()), nullptr);
    EXPECT_EQ(fcport_fill_reference_pm("KESTO_A", NAMESPACE, &row, broker.cmpi()), nullptr);
}

TEST_F(CimUtilities, MissingArgumentsAndForeignClassesAreMisuse) {
    const PortInfo row = port(ETHERNET_1_1);
    EXPECT_EQ(switch_fill_reference("KESTO_A", NAMESPACE, nullptr), nullptr);
    EXPECT_EQ(switch_fill_reference_str("KESTO_A", NAMESPACE, nullptr, broker.cmpi()), nullptr);
    EXPECT_EQ(fcport_fill_reference_pm("KESTO_A", NAMESPACE, nullptr, broker.cmpi()), nullptr);
    EXPECT_EQ(fcport_fill_reference_pm("CIM_Port", NAMESPACE, &row, broker.cmpi()), nullptr);
    expect_misuse(
        "switch_fill_reference: the broker, the class name or the namespace is NULL\n"
        "switch_fill_reference_str: the key is NULL\n"
        "fcport_fill_reference_pm: the row is NULL\n"
        "fcport_fill_reference_pm: no class name with the prefix KESTO_\n");
}

} // namespace
} // namespace emulator_test
