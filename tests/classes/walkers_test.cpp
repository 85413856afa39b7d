// What all walkers of the instance model have in common, class by class, on a switch with three tunnels,
// three profiles and three Ethernet ports.
#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "tests/classes/class_test.h"
#include "tests/support/rows.h"

namespace class_tests {
namespace {

using Kinds = std::vector<Object>;

// A table that walkers step through: the service that reads it, the four requests of a walk over three rows,
// and how they can fail.
struct Table {
    const char* service;
    std::vector<const char*> requests;
    std::vector<Effect> failures;
    void (*clear)();
};
const Table LINKS{"fcip_get_link_entry",
                  {"op=2 key={0,0}", "op=2 key={3,4}", "op=2 key={3,5}", "op=2 key={3,6}"},
                  ROW_FAILURES,
                  emulator::clear_links};
const Table PROFILES{"fcip_get_entity_entry",
                     {"op=2 id=0 ", "op=2 id=3 ", "op=2 id=4 ", "op=2 id=5 "},
                     ROW_FAILURES,
                     emulator::clear_entities};
const Table PORTS{"pm_cim_get_port_info",
                  {"op=0 if=0x9affffff", "op=0 if=0x9b010000", "op=0 if=0x9b010001", "op=0 if=0x9b010002"},
                  ROW_FAILURES,
                  emulator::clear_ports};

struct Walked {
    const char* className;
    InstanceWalker* instances;
    NameWalker* names;
    const Table* table;
};

void PrintTo(const Walked& walked, std::ostream* out) {
    *out << walked.className;
}

const Walked CLASSES[] = {
    {"KESTO_FCIPProtocolEndPoint", get_all_fcip_pe_instances, get_all_fcip_pe_references, &LINKS},
    {"KESTO_RemoteFCIPPort", get_all_fcip_pe_instances, get_all_fcip_pe_references, &LINKS},
    {"KESTO_IPProtocolEndPoint", get_all_ip_pe_instances, get_all_ip_pe_references, &LINKS},
    {"KESTO_RemoteIPServiceAccessPoint", get_all_ip_pe_instances, get_all_ip_pe_references, &LINKS},
    {"KESTO_RemoteTCPPort", get_all_ip_pe_instances, get_all_ip_pe_references, &LINKS},
    {"KESTO_TCPProtocolEndPoint", get_all_ip_pe_instances, get_all_ip_pe_references, &LINKS},
    {"KESTO_FCIPSettings", get_all_ip_pe_instances, get_all_ip_pe_references, &LINKS},
    {"KESTO_IPSettings", get_all_ip_pe_instances, get_all_ip_pe_references, &LINKS},
    {"KESTO_TCPSettings", get_all_ip_pe_instances, get_all_ip_pe_references, &LINKS},
    {"KESTO_IPEndPointStatistics", get_all_statistics, get_all_statistic_references, &LINKS},
    {"KESTO_TCPEndPointStatistics", get_all_statistics, get_all_statistic_references, &LINKS},
    {"KESTO_TCPStatisticalData", get_all_statistics, get_all_statistic_references, &LINKS},
    {"KESTO_FCIPProfile", get_all_fcip_profiles, get_all_fcip_profile_references, &PROFILES},
    {"KESTO_EthernetPortStatistics", get_all_eth_stat_instances, get_all_eth_stat_references, &PORTS},
    {"KESTO_EthernetPortStatisticalData", get_all_eth_stat_data_instances, get_all_eth_stat_data_references,
     &PORTS},
    {"KESTO_LANEndPoint", get_all_lan_endpoint_instances, get_all_lan_endpoint_references, &PORTS},
};

class Walker : public ClassTest, public testing::WithParamInterface<Walked> {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        add_two_tunnels();
        for (const std::uint32_t next : {1U, 2U}) {
            FcipEntityEntry another = one_tunnel::profile();
            another.kfmFcipEntityId += next;
            emulator::add_entity(another);
            emulator::Port port = emulator::find_port(one_tunnel::ETHERNET).value();
            port.ifIndex += next;
            emulator::add_port(port);
        }
        forget();
    }

    Answer instances(const char** properties = nullptr) {
        return succeeded(walk_instances(GetParam().instances, GetParam().className, properties));
    }
    Answer names() { return succeeded(walk_names(GetParam().names, GetParam().className)); }
    Answer succeeded(Answer answer) const {
        EXPECT_EQ(status, 0);
        EXPECT_EQ(answer.doneCalls, 0U) << "the server closes the result itself";
        return answer;
    }
    static Kinds kinds_of(const Answer& answer) {
        Kinds kinds;
        for (const RecordedInstance& instance : answer.instances) {
            kinds.push_back(instance.kind());
        }
        for (const RecordedPath& path : answer.paths) {
            kinds.push_back(path.kind());
        }
        return kinds;
    }
    // Three objects, the nth of which is of this kind.
    static Kinds three_with(std::size_t nth, Object kind) {
        Kinds kinds(3, Object::Valid);
        if (nth <= kinds.size()) kinds[nth - 1] = kind;
        return kinds;
    }
};

// The library makes the objects of all classes but the Ethernet statistical data, which are the platform's.
class BuildingWalker : public Walker {};

TEST_P(BuildingWalker, EachFailureOfTheBrokerCostsOneInstance) {
    const struct {
        Make what;
        Failure how;
        Object returned;
    } failures[] = {{Make::ObjectPath, Failure::Null, Object::Null},
                    {Make::ObjectPath, Failure::WithoutHandle, Object::Null},
                    {Make::Instance, Failure::Null, Object::Null},
                    {Make::Instance, Failure::WithoutHandle, Object::WithoutHandle}};
    for (const auto& failure : failures) {
        const auto request = [&](std::size_t nth) {
            EXPECT_EQ(kinds_of(instances()), three_with(nth, failure.returned));
        };
        EXPECT_EQ(for_each_broker_failure(failure.what, failure.how, request), 3U) << "one object a row";
    }
}

TEST_P(BuildingWalker, EachFailureOfTheBrokerCostsOnePath) {
    const auto request = [&](std::size_t nth) {
        EXPECT_EQ(kinds_of(names()), three_with(nth, Object::Null));
    };
    EXPECT_EQ(for_each_broker_failure(Make::ObjectPath, Failure::Null, request), 3U);
}

TEST_P(Walker, FailedRequestEndsTheWalkWithWhatWasSent) {
    const Table& table = *GetParam().table;
    for (std::size_t sent = 0; sent < table.requests.size(); ++sent) {
        SCOPED_TRACE(table.requests[sent]);
        for_each_effect(table.failures, {.symbol = table.service, .where = table.requests[sent]}, [&] {
            EXPECT_EQ(instances().instances.size(), sent);
            EXPECT_EQ(names().paths.size(), sent);
        });
    }
}

TEST_P(Walker, EmptyTableReturnsNothing) {
    GetParam().table->clear();
    EXPECT_TRUE(instances().returned.empty());
    EXPECT_TRUE(names().returned.empty());
}

TEST_P(BuildingWalker, PropertyListReachesTheBuilder) {
    const char* wanted[] = {"Name", "InstanceID", nullptr};
    const Answer answer = instances(wanted);
    ASSERT_EQ(answer.instances.size(), 3U);
    for (const RecordedInstance& instance : answer.instances) {
        ASSERT_EQ(instance.filters().size(), 1U);
        EXPECT_EQ(instance.filters()[0].properties, (std::vector<std::string>{"Name", "InstanceID"}));
    }
}

std::string class_name(const testing::TestParamInfo<Walked>& info) {
    return info.param.className;
}
std::vector<Walked> classes_that_the_library_builds() {
    std::vector<Walked> built(std::begin(CLASSES), std::end(CLASSES));
    std::erase_if(built,
                  [](const Walked& walked) { return walked.instances == get_all_eth_stat_data_instances; });
    return built;
}
INSTANTIATE_TEST_SUITE_P(Classes, Walker, testing::ValuesIn(CLASSES), class_name);
INSTANTIATE_TEST_SUITE_P(Classes, BuildingWalker, testing::ValuesIn(classes_that_the_library_builds()),
                         class_name);

} // namespace
} // namespace class_tests
