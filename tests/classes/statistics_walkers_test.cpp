// The walkers of KESTO_IPEndPointStatistics, KESTO_TCPEndPointStatistics and KESTO_TCPStatisticalData.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"

namespace class_tests {
namespace {

class StatisticsWalk : public ClassTest {
  protected:
    Answer walk_instances(const char* className, const char** properties = nullptr) {
        return ClassTest::walk_instances(get_all_statistics, className, properties);
    }
    Answer walk_paths(const char* className) { return walk_names(get_all_statistic_references, className); }
};

const std::pair<const char*, const char*> STATISTICS[] = {
    {"KESTO_IPEndPointStatistics", "ip_statistics_build_instance"},
    {"KESTO_TCPEndPointStatistics", "tcp_statistics_build_instance"},
    {"KESTO_TCPStatisticalData", "tcp_statistical_data_build_instance"},
};

TEST_F(StatisticsWalk, EachClassIsBuiltByItsOwnBuilderOnceATunnel) {
    add_two_tunnels();
    for (const auto& [className, builder] : STATISTICS) {
        const Answer answer = walk_instances(className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(answer.instances.size(), 3U) << className;
        EXPECT_EQ(answer.instances[0].sets(), golden_properties(builder)) << className;
        EXPECT_EQ(answer.instances[0].class_name(), className);
        EXPECT_EQ(answer.doneCalls, 0U);
    }
    EXPECT_EQ(walk_instances("KESTO_IPEndPointStatistics").instances[2].value("InstanceID"), "19");
    EXPECT_EQ(walk_instances("KESTO_TCPEndPointStatistics").instances[2].value("InstanceID"), "19");
    EXPECT_EQ(walk_instances("KESTO_TCPStatisticalData").instances[2].value("InstanceID"), "7");
}

TEST_F(StatisticsWalk, EachClassHasOnePathATunnelWithTheIfIndex) {
    add_two_tunnels();
    for (const auto& [className, builder] : STATISTICS) {
        const Answer answer = walk_paths(className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(answer.paths.size(), 3U) << className;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(answer.paths[i],
                      RecordedPath(NAMESPACE, className, {{"InstanceID", CMPI_chars, std::to_string(17 + i)}},
                                   one_tunnel::HOST));
        }
        EXPECT_EQ(answer.doneCalls, 0U);
    }
}

TEST_F(StatisticsWalk, AClassThatIsNotServedLeavesTheWalkersOwnTraceAlone) {
    add_two_tunnels();
    EXPECT_EQ(walk_instances("KESTO_EthernetPortStatistics").output, entering("get_all_statistics"));
    EXPECT_EQ(walk_paths("KESTO_EthernetPortStatistics").output, entering("get_all_statistic_references"));
}

TEST_F(StatisticsWalk, ClassNamesAreComparedWithoutCaseAndReturnedAsSpelled) {
    for (const char* className :
         {"kesto_ipendpointstatistics", "KESTO_TcpEndpointSTATISTICS", "kesto_tcpstatisticaldata"}) {
        const Answer instances = walk_instances(className);
        ASSERT_EQ(instances.instances.size(), 1U);
        EXPECT_EQ(instances.instances[0].class_name(), className);
        const Answer paths = walk_paths(className);
        ASSERT_EQ(paths.paths.size(), 1U);
        EXPECT_EQ(paths.paths[0].class_name(), className);
    }
}

TEST_F(StatisticsWalk, AnotherClassGivesOneNullATunnel) {
    add_two_tunnels();
    const Answer instances = walk_instances("KESTO_EthernetPortStatistics");
    ASSERT_EQ(instances.instances.size(), 3U);
    for (const RecordedInstance& instance : instances.instances) {
        EXPECT_EQ(instance.kind(), Object::Null);
    }
    const Answer paths = walk_paths("KESTO_EthernetPortStatistics");
    ASSERT_EQ(paths.paths.size(), 3U);
    for (const RecordedPath& path : paths.paths) {
        EXPECT_EQ(path.kind(), Object::Null);
    }
}

TEST_F(StatisticsWalk, ABuildThatFailsIsHandedOverAsItIs) {
    add_two_tunnels();
    emulator::add_fault({.symbol = "mts_send", .first = 2, .last = 2});
    const Answer ipWalk = walk_instances("KESTO_IPEndPointStatistics");
    ASSERT_EQ(ipWalk.instances.size(), 3U);
    EXPECT_TRUE(ipWalk.instances[0].is_valid());
    EXPECT_EQ(ipWalk.instances[1].kind(), Object::Null);
    EXPECT_TRUE(ipWalk.instances[2].is_valid());
    emulator::clear_faults();

    // The second look at the first tunnel fails, whichever walk step that is.
    emulator::add_fault({.symbol = "fcip_get_link_entry", .first = 2, .last = 2});
    const Answer dataWalk = walk_instances("KESTO_TCPStatisticalData");
    ASSERT_EQ(dataWalk.instances.size(), 3U);
    EXPECT_EQ(dataWalk.instances[0].kind(), Object::MinusOne);
    EXPECT_TRUE(dataWalk.instances[1].is_valid());
    emulator::clear_faults();

    emulator::add_fault({.symbol = "fcip_get_link_entry", .first = 2, .last = 2});
    const Answer tcpWalk = walk_instances("KESTO_TCPEndPointStatistics");
    ASSERT_EQ(tcpWalk.instances.size(), 3U);
    EXPECT_EQ(tcpWalk.instances[0].kind(), Object::Null);
    EXPECT_TRUE(tcpWalk.instances[1].is_valid());
}

} // namespace
} // namespace class_tests
