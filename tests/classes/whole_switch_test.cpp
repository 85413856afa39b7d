// Every class on the built-in switch: what a client that reads the whole switch finds, and which objects find
// their way back through their names.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/kernel_stats.h"
#include "tests/classes/class_test.h"

namespace class_tests {
namespace {

// Every instance class, and how many objects of it the built-in switch has: five tunnels, three profiles,
// three Ethernet ports and a management port.
struct Population {
    const char* className;
    std::size_t instances;
    std::size_t paths;
};
const Population POPULATION[] = {
    {"KESTO_FCIPProtocolEndPoint", 5, 5},
    {"KESTO_TCPProtocolEndPoint", 5, 5},
    {"KESTO_IPProtocolEndPoint", 5, 5},
    {"KESTO_RemoteFCIPPort", 5, 5},
    {"KESTO_RemoteIPServiceAccessPoint", 5, 5},
    {"KESTO_RemoteTCPPort", 5, 5},
    {"KESTO_FCIPSettings", 5, 5},
    {"KESTO_TCPSettings", 5, 5},
    {"KESTO_IPSettings", 5, 5},
    {"KESTO_FCIPProfile", 3, 3},
    {"KESTO_LANEndPoint", 3, 3},
    {"KESTO_IPEndPointStatistics", 5, 5},
    {"KESTO_TCPEndPointStatistics", 5, 5},
    {"KESTO_TCPStatisticalData", 5, 5},
    {"KESTO_EthernetPortStatistics", 4, 4},
    {"KESTO_EthernetPortStatisticalData", 3, 4}, // instances end at the management port, names do not
};

class WholeSwitch : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        emulator::load_builtin();
        emulator::set_clock(0);
    }

    // The numbers under this property of every instance, in their order.
    std::vector<std::uint64_t> counters(const char* className, const char* property) {
        std::vector<std::uint64_t> values;
        for (const RecordedInstance& instance : enumerate(className).instances) {
            values.push_back(std::stoull(instance.value(property).text()));
        }
        return values;
    }

    // Asks for the object that each name of the class belongs to.
    std::vector<Answer> get_by_names(const std::string& className) {
        std::vector<Answer> answers;
        for (const RecordedPath& path : enumerate_names(className).paths) {
            std::vector<Key> keys;
            for (const Set& key : path.keys()) {
                keys.emplace_back(key.name, key.value.text());
            }
            answers.push_back(get_instance(className, keys));
        }
        return answers;
    }
};

TEST_F(WholeSwitch, EveryClassHasItsObjects) {
    for (const Population& population : POPULATION) {
        const Answer instances = enumerate(population.className);
        EXPECT_EQ(instances.rc, 0);
        EXPECT_EQ(instances.instances.size(), population.instances) << population.className;
        for (const RecordedInstance& instance : instances.instances) {
            ASSERT_TRUE(instance.is_valid()) << population.className;
            EXPECT_EQ(instance.class_name(), population.className);
            EXPECT_EQ(instance.path().name_space(), NAMESPACE);
        }
        const Answer paths = enumerate_names(population.className);
        EXPECT_EQ(paths.rc, 0);
        EXPECT_EQ(paths.paths.size(), population.paths) << population.className;
        for (const RecordedPath& path : paths.paths) {
            ASSERT_TRUE(path.is_valid()) << population.className;
            EXPECT_EQ(path.class_name(), population.className);
        }
    }
}

TEST_F(WholeSwitch, EveryClassIsServedWhateverTheCaseOfItsName) {
    for (const Population& population : POPULATION) {
        std::string lower = population.className;
        for (char& letter : lower) {
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        }
        EXPECT_EQ(enumerate(lower).instances.size(), population.instances) << lower;
        EXPECT_EQ(enumerate_names(lower).paths.size(), population.paths) << lower;
    }
}

TEST_F(WholeSwitch, EveryNameOfAClassIsOfItsOwn) {
    for (const Population& population : POPULATION) {
        std::vector<std::string> texts;
        for (const RecordedPath& path : enumerate_names(population.className).paths) {
            texts.push_back(path.text());
        }
        std::sort(texts.begin(), texts.end());
        EXPECT_EQ(std::adjacent_find(texts.begin(), texts.end()), texts.end()) << population.className;
    }
}

TEST_F(WholeSwitch, EveryEthernetPortsLiveCountersGrow) {
    // The port that is bound to an interface of the host counts as the host does; it is left out here.
    for (const std::uint32_t ifIndex : emulator::port_indexes()) {
        emulator::Port port = emulator::find_port(ifIndex).value();
        port.device.clear();
        emulator::add_port(port);
    }
    for (const char* property : {"BytesTransmitted", "BytesReceived", "PacketsTransmitted", "PacketsReceived",
                                 "UnicastFramesTransmitted", "UnicastFramesReceived"}) {
        emulator::set_clock(0);
        const auto before = counters("KESTO_EthernetPortStatistics", property);
        emulator::advance_clock(1);
        const auto after = counters("KESTO_EthernetPortStatistics", property);
        ASSERT_EQ(before.size(), after.size());
        ASSERT_FALSE(before.empty());
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_GT(after[i], before[i]) << property << " of port " << i;
        }
    }
}

TEST_F(WholeSwitch, EveryTunnelsIpCountersGrow) {
    for (const char* property : {"ReceivedPDUs", "PDUDelivers", "SentPDUs"}) {
        emulator::set_clock(0);
        const auto before = counters("KESTO_IPEndPointStatistics", property);
        emulator::advance_clock(1);
        const auto after = counters("KESTO_IPEndPointStatistics", property);
        ASSERT_EQ(before.size(), 5U);
        ASSERT_EQ(after.size(), 5U);
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_GT(after[i], before[i]) << property << " of tunnel " << i;
        }
    }
}

TEST_F(WholeSwitch, TheTcpClassesCountersStandStill) {
    for (const char* className : {"KESTO_TCPEndPointStatistics", "KESTO_TCPStatisticalData"}) {
        const auto before = enumerate(className).instances;
        emulator::advance_clock(60);
        EXPECT_EQ(enumerate(className).instances, before) << className;
    }
}

TEST_F(WholeSwitch, ABoundPortCountsAsTheHostsInterfaceDoes) {
    emulator::Port bound;
    for (const std::uint32_t ifIndex : emulator::port_indexes()) {
        const emulator::Port port = emulator::find_port(ifIndex).value();
        if (!port.device.empty()) bound = port;
    }
    ASSERT_FALSE(bound.device.empty()) << "the built-in switch binds a port";
    ASSERT_TRUE(std::filesystem::exists("/sys/class/net/lo"));
    bound.device = "lo"; // there on every host
    emulator::add_port(bound);
    const auto sentByLo = [] {
        std::uint64_t bytes = 0;
        std::ifstream("/sys/class/net/lo/statistics/tx_bytes") >> bytes;
        return bytes;
    };
    emulator::fail_always(emulator::LINE_CARD); // what the port manager counts is left to see
    const std::uint64_t before = sentByLo();
    const RecordedInstance instance = built([&] {
        PortInfo row{};
        row.ifIndex = bound.ifIndex;
        return eth_statistics_build_instance("KESTO_EthernetPortStatistics", NAMESPACE, &row, nullptr);
    });
    ASSERT_TRUE(instance.is_valid());
    const std::uint64_t shown = std::stoull(instance.value("BytesTransmitted").text());
    EXPECT_GE(shown, before);
    EXPECT_LE(shown, sentByLo());
}

TEST_F(WholeSwitch, TheLibraryReadsTheKernelsOwnFiles) {
    const auto receivedPackets = [] {
        std::ifstream file("/proc/net/snmp");
        std::string line;
        while (std::getline(file, line)) {
            // The second line that begins so holds the values; InReceives is the third of them.
            if (!line.starts_with("Ip: ") || (std::isalpha(static_cast<unsigned char>(line[4])) != 0)) {
                continue;
            }
            std::istringstream values(line.substr(4));
            std::uint64_t forwarding = 0, ttl = 0, received = 0;
            values >> forwarding >> ttl >> received;
            return static_cast<std::uint32_t>(std::min<std::uint64_t>(received, 0xFFFFFFFF));
        }
        return std::uint32_t{0};
    };
    ASSERT_TRUE(std::filesystem::exists("/proc/net/snmp"));
    KernelIpCounters ip{};
    const std::uint32_t before = receivedPackets();
    EXPECT_EQ(ipconf_linux_get_ip_stats(&ip, nullptr, nullptr, nullptr), 0);
    EXPECT_GE(ip.words[0], before);
    EXPECT_LE(ip.words[0], receivedPackets());
}

// Names and the objects that they find.

TEST_F(WholeSwitch, NamesOfTheseClassesFindTheirOwnInstances) {
    for (const char* className :
         {"KESTO_FCIPProtocolEndPoint", "KESTO_TCPProtocolEndPoint", "KESTO_IPProtocolEndPoint",
          "KESTO_RemoteIPServiceAccessPoint", "KESTO_RemoteTCPPort", "KESTO_FCIPSettings",
          "KESTO_TCPSettings", "KESTO_IPSettings", "KESTO_IPEndPointStatistics"}) {
        SCOPED_TRACE(className);
        const auto enumerated = enumerate(className).instances;
        const auto answers = get_by_names(className);
        ASSERT_EQ(answers.size(), enumerated.size());
        for (std::size_t i = 0; i < answers.size(); ++i) {
            ASSERT_EQ(answers[i].instances.size(), 1U) << i;
            EXPECT_EQ(answers[i].instances[0], enumerated[i]) << i;
        }
    }
}

TEST_F(WholeSwitch, NamesOfRemoteFcipPortsFindTheirInstancesThoughTheirNamesDiffer) {
    const auto enumerated = enumerate("KESTO_RemoteFCIPPort").instances;
    const auto answers = get_by_names("KESTO_RemoteFCIPPort");
    const auto names = enumerate_names("KESTO_RemoteFCIPPort").paths;
    ASSERT_EQ(answers.size(), 5U);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        ASSERT_EQ(answers[i].instances.size(), 1U) << i;
        EXPECT_EQ(answers[i].instances[0], enumerated[i]) << i;
    }
    EXPECT_EQ(names[0].key("Name"), "0_192.0.2.129_192.0.2.1");
    EXPECT_EQ(enumerated[0].value("Name"), "1_192.0.2.129_192.0.2.1");
}

TEST_F(WholeSwitch, TheInstanceNameOfARemoteFcipPortFindsNothing) {
    // It begins with the peer's entity, and names of remote ports must begin with 0.
    const Answer answer = get_instance("KESTO_RemoteFCIPPort", {{"Name", "1_192.0.2.129_192.0.2.1"}});
    EXPECT_EQ(answer.rc, 0);
    EXPECT_TRUE(answer.returned.empty());
}

TEST_F(WholeSwitch, NamesOfTcpStatisticsFindInstancesUnderTheClassesOwnSpelling) {
    const auto enumerated = enumerate("KESTO_TCPEndPointStatistics").instances;
    const auto answers = get_by_names("kesto_tcpendpointstatistics");
    ASSERT_EQ(answers.size(), 5U);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        ASSERT_EQ(answers[i].instances.size(), 1U) << i;
        EXPECT_EQ(answers[i].instances[0].class_name(), "KESTO_TCPEndPointStatistics");
        EXPECT_EQ(answers[i].instances[0].sets(), enumerated[i].sets()) << i;
    }
}

TEST_F(WholeSwitch, NamesOfEthernetStatisticsFindTheirPorts) {
    const auto names = enumerate_names("KESTO_EthernetPortStatistics").paths;
    const auto answers = get_by_names("KESTO_EthernetPortStatistics");
    ASSERT_EQ(answers.size(), 4U);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        ASSERT_EQ(answers[i].instances.size(), 1U) << i;
        EXPECT_EQ(answers[i].instances[0].value("InstanceID"), names[i].key("InstanceID"));
    }
}

TEST_F(WholeSwitch, NamesOfProfilesFindThemWhereATunnelOfTheSameNumberExists) {
    const auto enumerated = enumerate("KESTO_FCIPProfile").instances;
    auto answers = get_by_names("KESTO_FCIPProfile");
    ASSERT_EQ(answers.size(), 3U);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        ASSERT_EQ(answers[i].instances.size(), 1U) << i;
        EXPECT_EQ(answers[i].instances[0], enumerated[i]) << i;
    }
    emulator::remove_link({2, 2}); // tunnel 3, which is none of profile 3
    answers = get_by_names("KESTO_FCIPProfile");
    EXPECT_EQ(answers[1].instances.size(), 1U);
    EXPECT_TRUE(answers[2].returned.empty()) << "the profile is there, but no tunnel 3";
}

TEST_F(WholeSwitch, NamesOfLanEndpointsFindTheFcipInterfaceOfAPortsFirstTunnel) {
    const auto answers = get_by_names("KESTO_LANEndPoint");
    ASSERT_EQ(answers.size(), 3U);
    for (const Answer& answer : answers) {
        ASSERT_EQ(answer.instances.size(), 1U);
    }
    // The first tunnels of the three ports are fcip1, fcip5 and fcip3.
    EXPECT_EQ(answers[0].instances[0].value("Name").text().substr(0, 10), "167772161:");
    EXPECT_EQ(answers[1].instances[0].value("Name").text().substr(0, 10), "167772165:");
    EXPECT_EQ(answers[2].instances[0].value("Name").text().substr(0, 10), "167772163:");
}

TEST_F(WholeSwitch, NamesOfTcpStatisticalDataAreNoKeysToGetItBy) {
    for (const Answer& answer : get_by_names("KESTO_TCPStatisticalData")) {
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, "invalid key name");
        EXPECT_TRUE(answer.returned.empty());
    }
}

TEST_F(WholeSwitch, RemoteIpPortsHaveNeitherObjectsNorNames) {
    const Answer instances = enumerate("KESTO_RemoteIPPort");
    ASSERT_EQ(instances.instances.size(), 5U);
    for (const RecordedInstance& instance : instances.instances) {
        EXPECT_EQ(instance.kind(), Object::Null);
    }
    EXPECT_TRUE(enumerate_names("KESTO_RemoteIPPort").returned.empty());
    EXPECT_EQ(get_instance("KESTO_RemoteIPPort", {{"Name", "167772161"}}).message, "invalid key name");
}

} // namespace
} // namespace class_tests
