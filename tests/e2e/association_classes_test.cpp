// EnumerateInstances, EnumerateInstanceNames and GetInstance of every association class.
#include <ostream>

#include "tests/e2e/served_switch.h"

namespace e2e {
namespace {

// One end of an association: the reference's name and the class that it points to.
struct End {
    std::string role;
    std::string className;
};

struct AssociationClass {
    std::string name;
    End first;
    End second;
    bool namesSwapEnds = false; // the names hold the objects under the other role
};

void PrintTo(const AssociationClass& parameter, std::ostream* out) {
    *out << parameter.name;
}

const std::string TCP_SETTINGS = "KESTO_TCPSettings";

// The orientation of some of these runs against the usual reading; the switch's own tools rely on it.
const AssociationClass ASSOCIATION_CLASSES[] = {
    {"KESTO_SANFCIPEndpoint",
     {"Antecedent", "KESTO_RemoteFCIPPort"},
     {"Dependent", "KESTO_FCIPProtocolEndPoint"}},
    {"KESTO_SANIPEndpoint",
     {"Antecedent", "KESTO_RemoteIPPort"},
     {"Dependent", "KESTO_FCIPProtocolEndPoint"}},
    {"KESTO_FCIPTCPEndpoint",
     {"Antecedent", "KESTO_TCPProtocolEndPoint"},
     {"Dependent", "KESTO_FCIPProtocolEndPoint"}},
    {"KESTO_TCPIPEndpoint",
     {"Antecedent", "KESTO_TCPProtocolEndPoint"},
     {"Dependent", "KESTO_IPProtocolEndPoint"}},
    {"KESTO_IPEthernetEndpoint",
     {"Antecedent", "KESTO_LANEndPoint"},
     {"Dependent", "KESTO_IPProtocolEndPoint"}},
    {"KESTO_SwitchHostedFCIPAccessPoint",
     {"Antecedent", "KESTO_LogicalComputerSystem"},
     {"Dependent", "KESTO_FCIPProtocolEndPoint"}},
    {"KESTO_SwitchHostedIPAccessPoint",
     {"Antecedent", "KESTO_LogicalComputerSystem"},
     {"Dependent", "KESTO_IPProtocolEndPoint"}},
    {"KESTO_SwitchHostedTCPAccessPoint",
     {"Antecedent", "KESTO_LogicalComputerSystem"},
     {"Dependent", "KESTO_TCPProtocolEndPoint"}},
    {"KESTO_FCIPElementSettingData",
     {"ManagedElement", "KESTO_FCIPSettings"},
     {"SettingData", "KESTO_FCIPProtocolEndPoint"}},
    {"KESTO_TCPElementSettingData",
     {"ManagedElement", TCP_SETTINGS},
     {"SettingData", "KESTO_TCPProtocolEndPoint"}},
    // The IP association too points to the TCP settings.
    {"KESTO_IPElementSettingData",
     {"ManagedElement", TCP_SETTINGS},
     {"SettingData", "KESTO_IPProtocolEndPoint"}},
    {"KESTO_FCIPPEBasedOn",
     {"GroupComponent", "KESTO_FCIPProfile"},
     {"PartComponent", "KESTO_FCIPProtocolEndPoint"}},
    {"KESTO_TCPEndPointStatisticalData",
     {"ManagedElement", "KESTO_FCIPProtocolEndPoint"},
     {"Stats", "KESTO_TCPEndPointStatistics"},
     true},
    {"KESTO_IPEndPointStatisticalData",
     {"ManagedElement", "KESTO_IPProtocolEndPoint"},
     {"Stats", "KESTO_IPEndPointStatistics"},
     true},
};

class EveryAssociationClass : public ServedSwitch, public testing::WithParamInterface<AssociationClass> {
  protected:
    static bool is_setting() { return GetParam().name.ends_with("ElementSettingData"); }
    std::size_t tunnels() const { return client().enumerate_names("KESTO_FCIPProtocolEndPoint").size(); }
};
INSTANTIATE_TEST_SUITE_P(Model, EveryAssociationClass, testing::ValuesIn(ASSOCIATION_CLASSES),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_P(EveryAssociationClass, EnumeratesOneInstanceATunnel) {
    const std::vector<CimInstance> instances = client().enumerate(GetParam().name);
    EXPECT_EQ(instances.size(), tunnels());
    for (const CimInstance& instance : instances) {
        EXPECT_EQ(instance.reference(GetParam().first.role).className, GetParam().first.className);
        EXPECT_EQ(instance.reference(GetParam().second.role).className, GetParam().second.className);
        EXPECT_FALSE(instance.reference(GetParam().second.role).keys.empty());
        if (is_setting()) {
            EXPECT_EQ(instance["IsDefault"], "1");
            EXPECT_EQ(instance["IsCurrent"], "1");
        }
        EXPECT_EQ(instance.properties.size(), is_setting() ? 4U : 2U);
    }
}

TEST_P(EveryAssociationClass, EnumeratesOneNameATunnel) {
    const std::vector<CimPath> names = client().enumerate_names(GetParam().name);
    EXPECT_EQ(names.size(), tunnels());
    const bool swapped = GetParam().namesSwapEnds;
    for (const CimPath& path : names) {
        const std::string& first = (swapped ? GetParam().second : GetParam().first).className;
        const std::string& second = (swapped ? GetParam().first : GetParam().second).className;
        EXPECT_EQ(path.reference(GetParam().first.role).className, first);
        EXPECT_EQ(path.reference(GetParam().second.role).className, second);
        if (is_setting()) {
            EXPECT_EQ(path.key("IsDefault"), "1");
            EXPECT_EQ(path.key("IsCurrent"), "1");
        }
        EXPECT_EQ(path.keys.size(), is_setting() ? 4U : 2U);
    }
}

TEST_P(EveryAssociationClass, GetsEachNameBackWithTheSameEnds) {
    const std::vector<CimPath> names = client().enumerate_names(GetParam().name);
    ASSERT_FALSE(names.empty());
    for (const CimPath& path : names) {
        const CimInstance instance = client().get(path);
        for (const std::string& role : {GetParam().first.role, GetParam().second.role}) {
            EXPECT_EQ(instance.reference(role).identity(), path.reference(role).identity());
        }
        EXPECT_EQ(instance.properties.size(), 2U) << "a single association carries its ends only";
    }
}

TEST_P(EveryAssociationClass, OneEndAloneGetsNothing) {
    CimPath path = client().enumerate_names(GetParam().name).front();
    std::erase_if(path.keys, [](const CimKey& key) { return key.name == GetParam().second.role; });
    EXPECT_EQ(error_of([&] { client().get(path); }), CIM_ERR_NOT_FOUND);
}

TEST_P(EveryAssociationClass, TheLocalEndsAreTheTunnelsOwnObjects) {
    const std::vector<CimPath> objects = client().enumerate_names(GetParam().second.className);
    const std::vector<CimPath> names = client().enumerate_names(GetParam().name);
    ASSERT_EQ(objects.size(), names.size());
    const std::string& role = GetParam().namesSwapEnds ? GetParam().first.role : GetParam().second.role;
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(names[i].reference(role).identity(), objects[i].identity());
    }
}

class EthernetPortStatisticalData : public ServedSwitch {};

TEST_F(EthernetPortStatisticalData, IsEnumeratedForEveryEthernetPort) {
    const std::size_t ports = client().enumerate_names("KESTO_LANEndPoint").size();
    EXPECT_EQ(client().enumerate("KESTO_EthernetPortStatisticalData").size(), ports);
    EXPECT_GE(client().enumerate_names("KESTO_EthernetPortStatisticalData").size(), ports);
}

TEST_F(EthernetPortStatisticalData, AGetEchoesTheEndsAskedFor) {
    const CimPath path = CimPath::parse(
        R"(KESTO_EthernetPortStatisticalData.ManagedElement={KESTO_EthernetPort.DeviceID="1"},)"
        R"(Stats={KESTO_EthernetPortStatistics.InstanceID="1"})");
    const CimInstance instance = client().get(path);
    EXPECT_EQ(instance.reference("ManagedElement").key("DeviceID"), "1");
    EXPECT_EQ(instance.reference("Stats").key("InstanceID"), "1");
}

class AssociationAsymmetries : public ServedSwitch {};

TEST_F(AssociationAsymmetries, SettingsOfTheIpEndpointAreNamedAsTcpSettings) {
    const std::vector<CimPath> names = client().enumerate_names("KESTO_IPElementSettingData");
    for (const CimPath& path : names) {
        const CimPath& settings = path.reference("ManagedElement");
        EXPECT_EQ(settings.className, "KESTO_TCPSettings");
        // Its keys are those of an IP endpoint, which the settings have no use for.
        EXPECT_EQ(settings.key("CreationClassName"), "KESTO_IPProtocolEndPoint");
    }
}

TEST_F(AssociationAsymmetries, AGetDoesNotAskWhetherTheEndsExist) {
    const CimPath path =
        CimPath::parse(R"(KESTO_FCIPPEBasedOn.GroupComponent={KESTO_FCIPProfile.InstanceID="no"},)"
                       R"(PartComponent={KESTO_FCIPProtocolEndPoint.Name="nothing"})");
    EXPECT_EQ(client().get(path).reference("PartComponent").key("Name"), "nothing");
}

} // namespace
} // namespace e2e
