// EnumerateInstances, EnumerateInstanceNames and GetInstance of every instance class.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ostream>
#include <set>
#include <thread>

#include "tests/e2e/served_switch.h"

namespace e2e {
namespace {

// What there is one instance for.
enum class Row { Tunnel, Profile, EthernetPort, CountedPort };

struct InstanceClass {
    std::string name;
    std::vector<std::string> keys; // of its object paths
    Row row;
};

const std::vector<std::string> ENDPOINT_KEYS = {"CreationClassName", "Name", "SystemCreationClassName",
                                                "SystemName"};
const std::vector<std::string> ID_KEY = {"InstanceID"};

const InstanceClass INSTANCE_CLASSES[] = {
    {"KESTO_FCIPProtocolEndPoint", ENDPOINT_KEYS, Row::Tunnel},
    {"KESTO_TCPProtocolEndPoint", ENDPOINT_KEYS, Row::Tunnel},
    {"KESTO_IPProtocolEndPoint", ENDPOINT_KEYS, Row::Tunnel},
    {"KESTO_RemoteFCIPPort", ENDPOINT_KEYS, Row::Tunnel},
    {"KESTO_RemoteIPServiceAccessPoint", ENDPOINT_KEYS, Row::Tunnel},
    {"KESTO_RemoteTCPPort", ENDPOINT_KEYS, Row::Tunnel},
    {"KESTO_LANEndPoint", ENDPOINT_KEYS, Row::EthernetPort},
    {"KESTO_FCIPProfile", ID_KEY, Row::Profile},
    {"KESTO_FCIPSettings", ID_KEY, Row::Tunnel},
    {"KESTO_TCPSettings", ID_KEY, Row::Tunnel},
    {"KESTO_IPSettings", ID_KEY, Row::Tunnel},
    {"KESTO_IPEndPointStatistics", ID_KEY, Row::Tunnel},
    {"KESTO_TCPEndPointStatistics", ID_KEY, Row::Tunnel},
    {"KESTO_TCPStatisticalData", ID_KEY, Row::Tunnel},
    {"KESTO_EthernetPortStatistics", ID_KEY, Row::CountedPort},
};

void PrintTo(const InstanceClass& parameter, std::ostream* out) {
    *out << parameter.name;
}

std::string name_of(const testing::TestParamInfo<InstanceClass>& parameter) {
    return parameter.param.name;
}

std::vector<std::string> sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}

CimPath path_with(const std::string& className, const std::string& key, const std::string& value) {
    CimPath path;
    path.className = className;
    path.keys.push_back({key, value, true, {}});
    return path;
}

class EveryInstanceClass : public ServedSwitch, public testing::WithParamInterface<InstanceClass> {};
INSTANTIATE_TEST_SUITE_P(Model, EveryInstanceClass, testing::ValuesIn(INSTANCE_CLASSES), name_of);

TEST_P(EveryInstanceClass, EnumeratesOneInstanceARow) {
    const std::vector<CimInstance> instances = client().enumerate(GetParam().name);
    if (GetParam().row == Row::Tunnel) {
        EXPECT_EQ(instances.size(), client().enumerate_names("KESTO_FCIPProtocolEndPoint").size());
    }
    EXPECT_GE(instances.size(), GetParam().row == Row::EthernetPort ? 1 : 3);
    for (const CimInstance& instance : instances) {
        EXPECT_EQ(instance.path.className, GetParam().name);
        const std::vector<std::string> names = instance.names();
        EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size())
            << "a property arrives twice in " << instance.path.identity();
        for (const std::string& key : GetParam().keys) {
            EXPECT_TRUE(instance.has(key)) << key;
        }
    }
}

TEST_P(EveryInstanceClass, EnumeratesAsManyNamesAsInstances) {
    const std::vector<CimPath> names = client().enumerate_names(GetParam().name);
    EXPECT_EQ(names.size(), client().enumerate(GetParam().name).size());
    std::set<std::string> identities;
    for (const CimPath& path : names) {
        EXPECT_EQ(path.className, GetParam().name);
        EXPECT_EQ(sorted(path.key_names()), GetParam().keys);
        identities.insert(path.identity());
    }
    if (GetParam().row != Row::Tunnel) {
        EXPECT_EQ(identities.size(), names.size());
    }
}

TEST_P(EveryInstanceClass, IsServedInAnyLetterCaseAndKeepsTheClientsSpelling) {
    const std::string spelled = lower_case(GetParam().name);
    const std::vector<CimPath> names = client().enumerate_names(spelled);
    ASSERT_EQ(names.size(), client().enumerate_names(GetParam().name).size());
    for (const CimPath& path : names) {
        EXPECT_EQ(path.className, spelled);
    }
}

TEST_P(EveryInstanceClass, SendsOnlyThePropertiesAskedFor) {
    // Two that every instance has, whatever state its row is in.
    std::vector<std::string> common;
    const std::vector<CimInstance> whole = client().enumerate(GetParam().name);
    ASSERT_FALSE(whole.empty());
    for (const std::string& name : whole.front().names()) {
        if (std::all_of(whole.begin(), whole.end(),
                        [&](const auto& instance) { return instance.has(name); })) {
            common.push_back(name);
        }
    }
    const std::vector<std::string> wanted = {common.front(), common.back()};
    for (const CimInstance& instance : client().enumerate(GetParam().name, wanted[0] + "," + wanted[1])) {
        EXPECT_EQ(instance.names(), wanted);
    }
}

// The classes of which every name that the switch gives leads back to its own object.
class EveryClassFoundByName : public ServedSwitch, public testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Model, EveryClassFoundByName,
                         testing::Values("KESTO_FCIPProtocolEndPoint", "KESTO_TCPProtocolEndPoint",
                                         "KESTO_IPProtocolEndPoint", "KESTO_RemoteIPServiceAccessPoint",
                                         "KESTO_RemoteTCPPort", "KESTO_FCIPSettings", "KESTO_TCPSettings",
                                         "KESTO_IPSettings", "KESTO_IPEndPointStatistics",
                                         "KESTO_TCPEndPointStatistics", "KESTO_EthernetPortStatistics"),
                         [](const auto& parameter) { return std::string(parameter.param); });

TEST_P(EveryClassFoundByName, GetsEachNameBack) {
    const std::vector<CimInstance> enumerated = client().enumerate(GetParam());
    const std::vector<CimPath> names = client().enumerate_names(GetParam());
    ASSERT_EQ(names.size(), enumerated.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        SCOPED_TRACE(names[i].identity());
        const CimInstance instance = client().get(names[i]);
        EXPECT_EQ(instance.names(), enumerated[i].names());
        const bool tunnelId = names[i].className == "KESTO_FCIPProtocolEndPoint";
        // A path of an IPv6 tunnel cuts its addresses shorter than the instance does; the tunnel is the same.
        const std::string same = tunnelId ? "TunnelID" : names[i].keys.size() == 1 ? "InstanceID" : "Name";
        EXPECT_EQ(instance[same], enumerated[i][same]);
        if (!tunnelId) {
            EXPECT_EQ(instance[same], names[i].key(same));
        }
    }
}

TEST_P(EveryClassFoundByName, SendsOnlyThePropertiesAskedForOfASingleInstance) {
    const CimPath path = client().enumerate_names(GetParam()).front();
    const std::string last = client().get(path).names().back();
    EXPECT_EQ(client().get(path, last).names(), std::vector<std::string>{last});
}

TEST_P(EveryClassFoundByName, AnUnknownKeyIsNotFound) {
    CimPath path = client().enumerate_names(GetParam()).front();
    for (CimKey& key : path.keys) {
        if (key.name == "Name" || key.name == "InstanceID") key.value = "987654321_0";
    }
    EXPECT_EQ(error_of([&] { client().get(path); }), CIM_ERR_NOT_FOUND);
}

class InstanceKeys : public ServedSwitch {};

TEST_F(InstanceKeys, TheTunnelNumberAloneFindsATunnel) {
    const std::vector<CimInstance> tunnels = client().enumerate("KESTO_FCIPProtocolEndPoint");
    for (const CimInstance& tunnel : tunnels) {
        const CimPath path = path_with("KESTO_FCIPProtocolEndPoint", "Name", tunnel["TunnelID"]);
        EXPECT_EQ(client().get(path)["RemoteIPAddress"], tunnel["RemoteIPAddress"]);
    }
}

TEST_F(InstanceKeys, AKeyThatIsNotTheClasssOwnFindsNothing) {
    const CimInstance statistics = client().enumerate("KESTO_IPEndPointStatistics").front();
    const CimPath path = path_with("KESTO_IPEndPointStatistics", "Name", statistics["InstanceID"]);
    EXPECT_EQ(error_of([&] { client().get(path); }), CIM_ERR_NOT_FOUND);
}

TEST_F(InstanceKeys, TcpEndPointStatisticsTakeAKeyOfAnyName) {
    const CimInstance statistics = client().enumerate("KESTO_TCPEndPointStatistics").front();
    const CimPath path = path_with("KESTO_TCPEndPointStatistics", "Whatever", statistics["InstanceID"]);
    EXPECT_EQ(client().get(path)["InstanceID"], statistics["InstanceID"]);
}

// The deliberate asymmetries: what a name does not find.
class NamesThatDoNotLeadBack : public ServedSwitch {};

TEST_F(NamesThatDoNotLeadBack, TcpStatisticalDataIsFoundByNoKey) {
    for (const CimPath& path : client().enumerate_names("KESTO_TCPStatisticalData")) {
        EXPECT_EQ(error_of([&] { client().get(path); }), CIM_ERR_NOT_FOUND);
    }
}

TEST_F(NamesThatDoNotLeadBack, TcpStatisticalDataIsNumberedDifferentlyInInstanceAndPath) {
    const std::vector<CimInstance> instances = client().enumerate("KESTO_TCPStatisticalData");
    const std::vector<CimPath> names = client().enumerate_names("KESTO_TCPStatisticalData");
    const std::vector<CimInstance> tunnels = client().enumerate("KESTO_FCIPProtocolEndPoint");
    const std::vector<CimInstance> settings = client().enumerate("KESTO_FCIPSettings");
    ASSERT_EQ(instances.size(), tunnels.size());
    for (std::size_t i = 0; i < instances.size(); ++i) {
        EXPECT_EQ(instances[i]["InstanceID"], tunnels[i]["TunnelID"]);
        EXPECT_EQ(names[i].key("InstanceID"), settings[i]["InstanceID"]);
    }
}

TEST_F(NamesThatDoNotLeadBack, ALanEndPointIsAnsweredWithItsFirstTunnelsInterface) {
    // The lookup goes through the tunnels: the answer names the FCIP interface of the first tunnel on the
    // port.
    const std::vector<CimInstance> settings = client().enumerate("KESTO_FCIPSettings");
    std::size_t carrying = 0;
    for (const CimPath& path : client().enumerate_names("KESTO_LANEndPoint")) {
        const std::string port = path.key("Name").substr(0, path.key("Name").find(':'));
        std::string tunnelInterface;
        for (const CimInstance& tunnel : settings) {
            // The setting is unsigned, the name signed.
            const auto index = static_cast<std::int32_t>(std::stoul(tunnel["EthIfIndex"]));
            if (std::to_string(index) == port) {
                tunnelInterface = tunnel["InstanceID"];
                break;
            }
        }
        SCOPED_TRACE(path.key("Name"));
        if (tunnelInterface.empty()) {
            EXPECT_EQ(error_of([&] { client().get(path); }), CIM_ERR_NOT_FOUND);
        } else {
            ++carrying;
            EXPECT_TRUE(client().get(path)["Name"].starts_with(tunnelInterface + ":"));
        }
    }
    EXPECT_GT(carrying, 0U);
}

TEST_F(NamesThatDoNotLeadBack, ALanEndPointsPathSpellsItsClassAndSystemDifferently) {
    const CimInstance instance = client().enumerate("KESTO_LANEndPoint").front();
    const CimPath path = client().enumerate_names("KESTO_LANEndPoint").front();
    EXPECT_EQ(instance["CreationClassName"], "KESTO_LANEndPoint");
    EXPECT_EQ(path.key("CreationClassName"), "KESTO_LanEndPoint");
    EXPECT_NE(instance["SystemName"], path.key("SystemName"));
}

TEST_F(NamesThatDoNotLeadBack, AProfileIsAnsweredOnlyWhenATunnelHasItsNumber) {
    std::set<std::string> tunnels;
    for (const CimInstance& tunnel : client().enumerate("KESTO_FCIPProtocolEndPoint")) {
        tunnels.insert(tunnel["TunnelID"]);
    }
    for (const CimPath& path : client().enumerate_names("KESTO_FCIPProfile")) {
        const std::string number = path.key("InstanceID");
        SCOPED_TRACE(number);
        if (tunnels.contains(number)) {
            EXPECT_EQ(client().get(path)["InstanceID"], number);
        } else {
            EXPECT_EQ(error_of([&] { client().get(path); }), CIM_ERR_NOT_FOUND);
        }
    }
}

TEST_F(NamesThatDoNotLeadBack, ARemoteFcipPortIsFoundByItsPathButNotByItsInstancesName) {
    const std::vector<CimInstance> instances = client().enumerate("KESTO_RemoteFCIPPort");
    const std::vector<CimPath> names = client().enumerate_names("KESTO_RemoteFCIPPort");
    ASSERT_EQ(instances.size(), names.size());
    std::size_t numbered = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        SCOPED_TRACE(names[i].key("Name"));
        const std::string far = instances[i]["LocalIPAddress"];
        // A path holds 19 characters of an address; one that was cut finds nothing.
        if (far.size() <= 19) {
            EXPECT_EQ(client().get(names[i])["LocalIPAddress"], far);
        } else {
            EXPECT_EQ(error_of([&] { client().get(names[i]); }), CIM_ERR_NOT_FOUND);
        }
        if (instances[i]["Name"].starts_with("0_")) continue;
        ++numbered;
        const CimPath path = path_with("KESTO_RemoteFCIPPort", "Name", instances[i]["Name"]);
        EXPECT_EQ(error_of([&] { client().get(path); }), CIM_ERR_NOT_FOUND);
    }
    EXPECT_GT(numbered, 0U);
}

TEST_F(NamesThatDoNotLeadBack, ARemoteTcpPortsPathEchoesTheRequestsSpellingAsItsCreationClass) {
    for (const CimPath& path : client().enumerate_names("kesto_REMOTEtcpport")) {
        EXPECT_EQ(path.key("CreationClassName"), "kesto_REMOTEtcpport");
    }
}

class ClassesWithoutInstances : public ServedSwitch, public testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Model, ClassesWithoutInstances,
                         testing::Values("KESTO_RemoteIPPort", "KESTO_FCPortProtocolEndPoint",
                                         "KESTO_EthernetPortProtocolEndpoint", "KESTO_SANTCPEndpoint",
                                         "KESTO_EthernetPort", "KESTO_LogicalComputerSystem"),
                         [](const auto& parameter) { return std::string(parameter.param); });

TEST_P(ClassesWithoutInstances, EnumerateAsEmpty) {
    EXPECT_TRUE(client().enumerate(GetParam()).empty());
    EXPECT_TRUE(client().enumerate_names(GetParam()).empty());
}

TEST_P(ClassesWithoutInstances, HaveNoInstanceToGet) {
    EXPECT_EQ(error_of([&] { client().get(path_with(GetParam(), "Name", "1")); }), CIM_ERR_NOT_FOUND);
}

class ClassesAbove : public ServedSwitch {};

TEST_F(ClassesAbove, EnumerateTheInstancesOfAllClassesBelow) {
    const auto count = [this](const char* className) { return client().enumerate_names(className).size(); };
    EXPECT_EQ(count("CIM_ProtocolEndpoint"),
              count("KESTO_FCIPProtocolEndPoint") + count("KESTO_TCPProtocolEndPoint") +
                  count("KESTO_IPProtocolEndPoint") + count("KESTO_LANEndPoint"));
    EXPECT_EQ(client().enumerate("CIM_ProtocolEndpoint").size(), count("CIM_ProtocolEndpoint"));
    EXPECT_GT(count("CIM_ProtocolEndpoint"), 15U);
}

TEST_F(ClassesAbove, AreNoClassesWhenNothingDeclaresThem) {
    EXPECT_EQ(error_of([&] { client().enumerate("KESTO_NoSuchClass"); }), CIM_ERR_INVALID_CLASS);
    EXPECT_EQ(error_of([&] { client().enumerate_names("KESTO_NoSuchClass"); }), CIM_ERR_INVALID_CLASS);
    EXPECT_EQ(error_of([&] { client().get(path_with("KESTO_NoSuchClass", "Name", "1")); }),
              CIM_ERR_INVALID_CLASS);
}

class ModelFacts : public ServedSwitch {};

TEST_F(ModelFacts, TunnelsCountFromOneInEndpointsAndFromZeroInSettings) {
    const std::vector<CimInstance> endpoints = client().enumerate("KESTO_FCIPProtocolEndPoint");
    const std::vector<CimInstance> settings = client().enumerate("KESTO_FCIPSettings");
    ASSERT_EQ(endpoints.size(), settings.size());
    for (std::size_t i = 0; i < endpoints.size(); ++i) {
        EXPECT_EQ(std::stoi(endpoints[i]["TunnelID"]), std::stoi(settings[i]["TunnelID"]) + 1);
        EXPECT_TRUE(endpoints[i]["Name"].starts_with(endpoints[i]["TunnelID"] + "_"));
    }
}

TEST_F(ModelFacts, TheThreeSettingsOfATunnelShareTheirInstanceId) {
    const std::vector<CimPath> fcip = client().enumerate_names("KESTO_FCIPSettings");
    const std::vector<CimPath> tcp = client().enumerate_names("KESTO_TCPSettings");
    const std::vector<CimPath> ip = client().enumerate_names("KESTO_IPSettings");
    ASSERT_EQ(fcip.size(), tcp.size());
    ASSERT_EQ(fcip.size(), ip.size());
    for (std::size_t i = 0; i < fcip.size(); ++i) {
        EXPECT_EQ(tcp[i].key("InstanceID"), fcip[i].key("InstanceID"));
        EXPECT_EQ(ip[i].key("InstanceID"), fcip[i].key("InstanceID"));
    }
}

TEST_F(ModelFacts, LocalAndRemoteChangePlacesAtTheFarEnd) {
    const std::vector<CimInstance> near = client().enumerate("KESTO_FCIPProtocolEndPoint");
    const std::vector<CimInstance> far = client().enumerate("KESTO_RemoteFCIPPort");
    ASSERT_EQ(near.size(), far.size());
    for (std::size_t i = 0; i < near.size(); ++i) {
        EXPECT_EQ(far[i]["LocalIPAddress"], near[i]["RemoteIPAddress"]);
        EXPECT_EQ(far[i]["RemoteIPAddress"], near[i]["LocalIPAddress"]);
    }
}

TEST_F(ModelFacts, RetransmitTimeIsTheSameForEveryTunnel) {
    for (const CimInstance& tunnel : client().enumerate("KESTO_FCIPProtocolEndPoint")) {
        EXPECT_EQ(tunnel["RetransmitTime"], "29775");
    }
}

TEST_F(ModelFacts, CountersOfALiveSwitchGrow) {
    const auto sum = [&](const char* className, const char* property) {
        std::uint64_t total = 0;
        for (const CimInstance& instance : client().enumerate(className)) {
            if (instance.has(property)) total += std::stoull(instance[property]);
        }
        return total;
    };
    const std::uint64_t packets = sum("KESTO_IPEndPointStatistics", "ReceivedPDUs");
    const std::uint64_t bytes = sum("KESTO_EthernetPortStatistics", "BytesReceived");
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    EXPECT_GT(sum("KESTO_IPEndPointStatistics", "ReceivedPDUs"), packets);
    EXPECT_GT(sum("KESTO_EthernetPortStatistics", "BytesReceived"), bytes);
}

} // namespace
} // namespace e2e
