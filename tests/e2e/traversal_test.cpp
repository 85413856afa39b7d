// Associators, AssociatorNames, References and ReferenceNames from every kind of object of a tunnel.
#include <algorithm>
#include <ostream>
#include <set>

#include "tests/e2e/traversal.h"

namespace e2e {
namespace {

const Names NOTHING = {};

// What one object answers when the client names one association class: the classes of the far objects, and
// the association class that the references have (empty = none).
struct Row {
    std::string source;
    std::string association;
    Names associatorNames;
    Names associators;
    std::string referenceNames;
    std::string references;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.source << " through " << row.association;
}

Row both(const std::string& source, const std::string& association, const std::string& far) {
    return {source, association, {far}, {far}, association, association};
}

// One row for each source and association class that the provider knows, as the first tunnel's objects
// answer.
std::vector<Row> rows() {
    const std::string fcip = "KESTO_FCIPProtocolEndPoint";
    const std::string tcp = "KESTO_TCPProtocolEndPoint";
    const std::string ip = "KESTO_IPProtocolEndPoint";
    const std::string system = "KESTO_LogicalComputerSystem";
    const std::string hostedIp = "KESTO_SwitchHostedIPAccessPoint";
    return {
        both(fcip, "KESTO_FCIPElementSettingData", "KESTO_FCIPSettings"),
        both(fcip, "KESTO_FCIPTCPEndpoint", tcp),
        both(fcip, "KESTO_SANFCIPEndpoint", "KESTO_RemoteFCIPPort"),
        both(fcip, "KESTO_FCPortProtocolEndPoint", "KESTO_FCPort"),
        both(fcip, "KESTO_FCIPPEBasedOn", "KESTO_FCIPProfile"),
        both(fcip, "KESTO_SwitchHostedFCIPAccessPoint", system),
        {ip,
         "KESTO_IPElementSettingData",
         {"KESTO_IPSettings", system},
         {"KESTO_IPSettings"},
         "KESTO_IPElementSettingData",
         "KESTO_IPElementSettingData"},
        // The error counters' row stands in for the link's own there, and names no port that could be asked.
        {ip,
         "KESTO_IPEndPointStatisticalData",
         {"KESTO_IPEndPointStatistics"},
         NOTHING,
         "KESTO_IPEndPointStatisticalData",
         "KESTO_IPEndPointStatisticalData"},
        both(ip, "KESTO_TCPIPEndpoint", tcp),
        both(ip, "KESTO_IPEthernetEndpoint", "KESTO_EthernetPort"),
        {ip,
         "KESTO_SwitchHostedIPAccessPoint",
         {fcip},
         {system},
         "KESTO_SwitchHostedIPAccessPoint",
         "KESTO_SwitchHostedIPAccessPoint"},
        both(ip, "KESTO_SANIPEndpoint", "KESTO_RemoteIPServiceAccessPoint"),
        // The names answer every class that the endpoint does not know, this one by its right.
        {ip, "CIM_HostedAccessPoint", {fcip, system}, {system}, hostedIp, hostedIp},
        {tcp,
         "KESTO_TCPEndPointStatisticalData",
         {"KESTO_TCPEndPointStatistics"},
         {"KESTO_TCPStatisticalData"},
         "KESTO_TCPEndPointStatisticalData",
         "KESTO_TCPEndPointStatisticalData"},
        // References listen to a shorter spelling of this association's name, and to that only.
        {tcp, "KESTO_FCIPTCPEndpoint", {fcip}, {fcip}, "", ""},
        {tcp, "KESTO_FCIPTCPEnpoint", NOTHING, NOTHING, "KESTO_FCIPTCPEndpoint", "KESTO_FCIPTCPEndpoint"},
        both(tcp, "KESTO_TCPIPEndpoint", ip),
        {tcp,
         "KESTO_SwitchHostedTCPAccessPoint",
         {"KESTO_PhysicalComputerSystem"},
         {system},
         "KESTO_SwitchHostedTCPAccessPoint",
         "KESTO_SwitchHostedTCPAccessPoint"},
        both(tcp, "KESTO_SANTCPEndpoint", "KESTO_RemoteTCPPort"),
        {tcp,
         "KESTO_TCPElementSettingData",
         NOTHING,
         {"KESTO_TCPSettings"},
         "KESTO_TCPElementSettingData",
         "KESTO_TCPElementSettingData"},
        // Reference names of the far ends go through the local endpoints' tables, where their keys find
        // nothing.
        {"KESTO_RemoteFCIPPort", "KESTO_SANFCIPEndpoint", {fcip}, {fcip}, "", "KESTO_SANFCIPEndpoint"},
        {"KESTO_RemoteIPServiceAccessPoint", "KESTO_SANIPEndpoint", {ip}, {ip}, "", "KESTO_SANIPEndpoint"},
        {"KESTO_RemoteTCPPort", "KESTO_SANTCPEndpoint", {tcp}, {tcp}, "", ""},
        both("KESTO_LANEndPoint", "KESTO_IPEthernetEndpoint", ip),
        both("KESTO_LANEndPoint", "KESTO_EthernetPortProtocolEndpoint", "KESTO_EthernetPort"),
        {"KESTO_LANEndPoint", "CIM_HostedAccessPoint", NOTHING, NOTHING, "", ""},
        both("KESTO_FCIPSettings", "KESTO_FCIPElementSettingData", fcip),
        both("KESTO_TCPSettings", "KESTO_TCPElementSettingData", tcp),
        both("KESTO_IPSettings", "KESTO_IPElementSettingData", ip),
        both("KESTO_IPEndPointStatistics", "KESTO_IPEndPointStatisticalData", ip),
        both("KESTO_TCPEndPointStatistics", "KESTO_TCPEndPointStatisticalData", tcp),
        both("KESTO_FCIPProfile", "KESTO_FCIPPEBasedOn", fcip),
        // References look for a tunnel of the port's number, which there is none of.
        {"KESTO_EthernetPort",
         "KESTO_EthernetPortProtocolEndpoint",
         {"KESTO_LANEndPoint"},
         {"KESTO_LANEndPoint"},
         "",
         ""},
        {"KESTO_EthernetPort",
         "KESTO_EthernetPortStatisticalData",
         NOTHING,
         {"KESTO_EthernetPortStatistics"},
         "",
         ""},
        both("KESTO_EthernetPortStatistics", "KESTO_EthernetPortStatisticalData", "KESTO_EthernetPort"),
        {"KESTO_LogicalComputerSystem", "KESTO_SwitchHostedFCIPAccessPoint", NOTHING, NOTHING, "", ""},
    };
}

class TraversalRows : public Traversal, public testing::WithParamInterface<Row> {};
INSTANTIATE_TEST_SUITE_P(Model, TraversalRows, testing::ValuesIn(rows()), [](const auto& parameter) {
    return parameter.param.source + "_" + parameter.param.association;
});

TEST_P(TraversalRows, AssociatorNames) {
    const std::vector<CimPath> paths =
        client().associator_names(source(GetParam().source), {GetParam().association, "", "", ""});
    EXPECT_EQ(folded(classes_of(paths)), folded(GetParam().associatorNames));
    for (const CimPath& path : paths) {
        EXPECT_FALSE(path.keys.empty());
    }
}

TEST_P(TraversalRows, Associators) {
    const std::vector<CimInstance> instances =
        client().associators(source(GetParam().source), {GetParam().association, "", "", ""});
    EXPECT_EQ(folded(classes_of(instances)), folded(GetParam().associators));
    for (const CimInstance& instance : instances) {
        EXPECT_FALSE(instance.properties.empty());
    }
}

TEST_P(TraversalRows, ReferenceNames) {
    const CimPath object = source(GetParam().source);
    const std::vector<CimPath> paths = client().reference_names(object, {"", GetParam().association, "", ""});
    const std::string& expected = GetParam().referenceNames;
    ASSERT_EQ(folded(classes_of(paths)), folded(expected.empty() ? NOTHING : Names{expected}));
    for (const CimPath& path : paths) {
        EXPECT_EQ(std::count_if(path.keys.begin(), path.keys.end(),
                                [](const CimKey& key) { return !key.reference.empty(); }),
                  2);
    }
}

TEST_P(TraversalRows, References) {
    const CimPath object = source(GetParam().source);
    const std::vector<CimInstance> instances =
        client().references(object, {"", GetParam().association, "", ""});
    const std::string& expected = GetParam().references;
    EXPECT_EQ(folded(classes_of(instances)), folded(expected.empty() ? NOTHING : Names{expected}));
}

TEST_P(TraversalRows, TheAssociationClassIsTakenInAnyLetterCase) {
    const CimPath object = source(GetParam().source);
    const Filter spelled = {lower_case(GetParam().association), "", "", ""};
    EXPECT_EQ(folded(classes_of(client().associator_names(object, spelled))),
              folded(GetParam().associatorNames));
}

// A client may leave the association class out: the server asks for each one.
class WithoutAssociationClass : public Traversal {};

TEST_F(WithoutAssociationClass, TheAnswersOfAllAssociationClassesAreMerged) {
    std::set<std::string> sources;
    for (const Row& row : rows()) {
        sources.insert(row.source);
    }
    for (const std::string& name : sources) {
        SCOPED_TRACE(name);
        const CimPath object = source(name);
        std::set<std::string> expected;
        for (const Row& row : rows()) {
            if (row.source != name) continue;
            for (const CimPath& path : client().associator_names(object, {row.association, "", "", ""})) {
                expected.insert(path.identity());
            }
        }
        const std::vector<CimPath> merged = client().associator_names(object);
        std::set<std::string> found;
        for (const CimPath& path : merged) {
            found.insert(path.identity());
        }
        EXPECT_EQ(found, expected);
        EXPECT_EQ(merged.size(), found.size()) << "an object is returned twice";
    }
}

TEST_F(WithoutAssociationClass, AnEndPointsReferencesHaveOneOfEachClass) {
    const std::vector<std::string> expected = {
        "kesto_fcipelementsettingdata", "kesto_fcippebasedon",   "kesto_fciptcpendpoint",
        "kesto_fcportprotocolendpoint", "kesto_sanfcipendpoint", "kesto_switchhostedfcipaccesspoint"};
    Names names = folded(classes_of(client().reference_names(first_tunnel())));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, expected);
    Names instances = folded(classes_of(client().references(first_tunnel())));
    std::sort(instances.begin(), instances.end());
    EXPECT_EQ(instances, expected);
}

class TraversalFilters : public Traversal {
  protected:
    // What the tunnel's endpoint answers about its settings with these roles.
    std::size_t settings(const std::string& role, const std::string& resultRole) const {
        const Filter filter = {"KESTO_FCIPElementSettingData", "", role, resultRole};
        const std::size_t names = client().associator_names(first_tunnel(), filter).size();
        EXPECT_EQ(client().associators(first_tunnel(), filter).size(), names);
        return names;
    }
};

TEST_F(TraversalFilters, ResultClassLetsOnlyItsObjectsThrough) {
    for (const char* spelling : {"KESTO_FCIPSettings", "kesto_fcipsettings"}) {
        EXPECT_EQ(classes_of(client().associator_names(first_tunnel(), {"", spelling, "", ""})),
                  Names{"KESTO_FCIPSettings"});
        EXPECT_EQ(classes_of(client().associators(first_tunnel(), {"", spelling, "", ""})),
                  Names{"KESTO_FCIPSettings"});
    }
    EXPECT_TRUE(client().associator_names(first_tunnel(), {"", "KESTO_IPSettings", "", ""}).empty());
}

TEST_F(TraversalFilters, RoleIsTheSourcesPartInTheAssociation) {
    EXPECT_EQ(settings("ManagedElement", ""), 1U);
    EXPECT_EQ(settings("managedelement", ""), 1U);
    EXPECT_EQ(settings("SettingData", ""), 0U);
    EXPECT_EQ(settings("NoSuchRole", ""), 0U);
}

TEST_F(TraversalFilters, ResultRoleIsTheFarObjectsPart) {
    EXPECT_EQ(settings("", "SettingData"), 1U);
    EXPECT_EQ(settings("", "ManagedElement"), 0U);
    EXPECT_EQ(settings("ManagedElement", "SettingData"), 1U);
    EXPECT_EQ(settings("SettingData", "ManagedElement"), 0U);
}

TEST_F(TraversalFilters, RoleHoldsForAFarObjectThatItsAssociationNamesOtherwise) {
    const auto farEnds = [&](const char* role) {
        return client().associators(first_tunnel(), {"KESTO_SANFCIPEndpoint", "", role, ""}).size();
    };
    EXPECT_EQ(farEnds("Antecedent"), 1U);
    EXPECT_EQ(farEnds("Dependent"), 0U);
}

TEST_F(TraversalFilters, RoleCountsForReferencesToo) {
    const auto references = [&](const char* role) {
        const Filter filter = {"", "KESTO_FCIPElementSettingData", role, ""};
        const std::size_t names = client().reference_names(first_tunnel(), filter).size();
        EXPECT_EQ(client().references(first_tunnel(), filter).size(), names);
        return names;
    };
    EXPECT_EQ(references("ManagedElement"), 1U);
    EXPECT_EQ(references("SettingData"), 0U);
}

TEST_F(TraversalFilters, OnlyThePropertiesAskedForAreSent) {
    const std::string answer = client().run("ai", {"-ac", "KESTO_FCIPElementSettingData"},
                                            first_tunnel().command_line_text(), "IPComp,TunnelID");
    EXPECT_NE(answer.find("\n-TunnelID="), std::string::npos) << answer;
    EXPECT_NE(answer.find("\n-IPComp="), std::string::npos) << answer;
    EXPECT_EQ(answer.find("\n-SystemName="), std::string::npos) << answer;
}

TEST_F(TraversalFilters, ClassesAboveStandForThoseBelow) {
    EXPECT_EQ(classes_of(client().associator_names(first_tunnel(), {"", "CIM_SettingData", "", ""})),
              (Names{"KESTO_FCIPProfile", "KESTO_FCIPSettings"}));
    EXPECT_EQ(folded(classes_of(client().associator_names(first_tunnel(), {"CIM_BindsTo", "", "", ""}))),
              Names{"kesto_tcpprotocolendpoint"});
}

TEST_F(TraversalFilters, ClassesThatAreNotThereOrNoAssociationsAreRefused) {
    const auto error = [this](const Filter& filter) {
        return error_of([&] { client().associator_names(first_tunnel(), filter); });
    };
    EXPECT_EQ(error({"KESTO_NoSuchAssociation", "", "", ""}), CIM_ERR_INVALID_PARAMETER);
    EXPECT_EQ(error({"KESTO_EthernetPortStatistics", "", "", ""}), CIM_ERR_INVALID_PARAMETER);
    EXPECT_EQ(error({"", "KESTO_NoSuchClass", "", ""}), CIM_ERR_INVALID_PARAMETER);
}

class TraversalEdges : public Traversal {};

TEST_F(TraversalEdges, WhatATraversalReturnsCanBeAskedForAsItIs) {
    std::size_t followed = 0;
    const auto follow = [&](const CimPath& path) {
        if (path.className.starts_with("KESTO_FCPort") || path.className.ends_with("ComputerSystem")) return;
        EXPECT_NO_THROW(client().get(path)) << path.identity();
        ++followed;
    };
    for (const CimPath& path : client().associator_names(first_tunnel())) {
        follow(path);
    }
    for (const CimPath& path : client().reference_names(first_tunnel())) {
        follow(path);
    }
    EXPECT_GT(followed, 8U);
}

TEST_F(TraversalEdges, AnUnknownObjectHasNoNeighbours) {
    CimPath nowhere = first_tunnel();
    for (CimKey& key : nowhere.keys) {
        if (key.name == "Name") key.value = "4711_x_y";
    }
    EXPECT_TRUE(client().associator_names(nowhere).empty());
    EXPECT_TRUE(client().associators(nowhere).empty());
    EXPECT_TRUE(client().reference_names(nowhere).empty());
    EXPECT_TRUE(client().references(nowhere).empty());
}

TEST_F(TraversalEdges, AssociationClassesAreNoSource) {
    CimPath association;
    association.className = "KESTO_FCIPPEBasedOn";
    association.keys.push_back({"Name", "1", true, {}});
    EXPECT_TRUE(client().associator_names(association, {"KESTO_FCIPPEBasedOn", "", "", ""}).empty());
    EXPECT_TRUE(client().reference_names(association, {"", "KESTO_FCIPPEBasedOn", "", ""}).empty());
}

TEST_F(TraversalEdges, StatisticsOfTheIpEndpointCountTheirEndsInTheOrderTheSwitchGives) {
    const CimPath endpoint = client().enumerate_names("KESTO_IPProtocolEndPoint").front();
    const std::vector<CimPath> names =
        client().reference_names(endpoint, {"", "KESTO_IPEndPointStatisticalData", "", ""});
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(lower_case(names[0].reference("ManagedElement").className), "kesto_ipendpointstatistics");
    EXPECT_EQ(lower_case(names[0].reference("Stats").className), "kesto_ipprotocolendpoint");
}

} // namespace
} // namespace e2e
