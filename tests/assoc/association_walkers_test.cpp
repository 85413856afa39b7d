// The walkers that enumerate associations: for each association class, what its two references point to.
#include <algorithm>

#include "include/associations.h"
#include "tests/assoc/reference_suite.h"

using namespace golden;
using emulator::Effect;
using test_support::Answer;
using test_support::Failure;
using test_support::Make;
using test_support::Object;
using test_support::RecordedPath;

namespace {

// Which end's path is made first: that of the local endpoint. Where both are local endpoints, or neither is,
// the order is free.
enum class MadeFirst { First, Second, Either };

struct Reference {
    End end;
    const char* className;
};

struct WalkerRow {
    const char* className;
    Kind kind;
    Reference first, second; // as in the instances
    bool swappedInNames;
    MadeFirst madeFirst;
};

void PrintTo(const WalkerRow& row, std::ostream* out) {
    *out << row.className;
}

constexpr bool SWAPPED = true;
constexpr bool SAME = false;

// clang-format off
const std::vector<WalkerRow> CLASSES{
    {"KESTO_SANFCIPEndpoint", Kind::Realize, {End::RemoteFcipPort, "KESTO_RemoteFCIPPort"},
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_SANIPEndpoint", Kind::Realize, {End::RemoteIpAccessPoint, "KESTO_RemoteIPPort"},
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_FCIPTCPEndpoint", Kind::Realize, {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"},
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, SAME, MadeFirst::Either},
    {"KESTO_TCPIPEndpoint", Kind::Realize, {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"},
     {End::IpEndpoint, "KESTO_IPProtocolEndPoint"}, SAME, MadeFirst::Either},
    {"KESTO_IPEthernetEndpoint", Kind::Realize, {End::LanEndpoint, "KESTO_LANEndPoint"},
     {End::IpEndpoint, "KESTO_IPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_SwitchHostedFCIPAccessPoint", Kind::Realize, {End::VsanSystem, "KESTO_LogicalComputerSystem"},
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_SwitchHostedIPAccessPoint", Kind::Realize, {End::VsanSystem, "KESTO_LogicalComputerSystem"},
     {End::IpEndpoint, "KESTO_IPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_SwitchHostedTCPAccessPoint", Kind::Realize, {End::VsanSystem, "KESTO_LogicalComputerSystem"},
     {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_FCIPElementSettingData", Kind::ManagedSetting, {End::FcipSettings, "KESTO_FCIPSettings"},
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_TCPElementSettingData", Kind::ManagedSetting, {End::IpEndpoint, "KESTO_TCPSettings"},
     {End::TcpEndpoint, "KESTO_TCPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_IPElementSettingData", Kind::ManagedSetting, {End::IpEndpoint, "KESTO_TCPSettings"},
     {End::IpEndpoint, "KESTO_IPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_FCIPPEBasedOn", Kind::GroupPart, {End::Profile, "KESTO_FCIPProfile"},
     {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"}, SAME, MadeFirst::Second},
    {"KESTO_TCPEndPointStatisticalData", Kind::ManagedStats, {End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint"},
     {End::Statistics, "KESTO_TCPEndPointStatistics"}, SWAPPED, MadeFirst::First},
    {"KESTO_IPEndPointStatisticalData", Kind::ManagedStats, {End::IpEndpoint, "KESTO_IPProtocolEndPoint"},
     {End::Statistics, "KESTO_IPEndPointStatistics"}, SWAPPED, MadeFirst::First},
};

// Walked by the names only; its instances are the port walk's.
const WalkerRow ETHERNET_STATISTICAL_DATA{
    "KESTO_EthernetPortStatisticalData", Kind::ManagedStats, {End::Statistics, "KESTO_EthernetPortStatistics"},
    {End::IpEndpoint, "KESTO_EthernetPort"}, SAME, MadeFirst::Either};
// clang-format on

std::vector<WalkerRow> classes_of_names() {
    std::vector<WalkerRow> all = CLASSES;
    all.push_back(ETHERNET_STATISTICAL_DATA);
    return all;
}

// In the order of the link table: by profile, then by link index.
const std::vector<const Tunnel*> TABLE_ORDER{&BY_PROFILE, &BY_NUMBER, &BY_IF_INDEX, &BY_ETHERNET,
                                             &BY_ADDRESS};

template <Form form>
RecordedPath expected_association(const WalkerRow& row, const std::string& className, const Tunnel& tunnel) {
    const RecordedPath first = path(row.first.end, row.first.className, tunnel);
    const RecordedPath second = path(row.second.end, row.second.className, tunnel);
    return form == Form::Names && row.swappedInNames ? association(row.kind, className, second, first)
                                                     : association(row.kind, className, first, second);
}

template <Form form>
std::vector<RecordedPath> expected_associations(const WalkerRow& row, const std::string& className,
                                                std::size_t count = TABLE_ORDER.size()) {
    std::vector<RecordedPath> all;
    for (std::size_t at = 0; at < count; ++at)
        all.push_back(expected_association<form>(row, className, *TABLE_ORDER[at]));
    return all;
}

template <Form form>
class Walker : public AssociationTest {
  protected:
    using Paths = std::vector<RecordedPath>;

    static std::string function() {
        return form == Form::Names ? "get_all_binds_to_references" : "get_all_binds_to_instances";
    }
    Answer all(const std::string& className) {
        return walk(
            [&](const CMPIResult* result) {
                return form == Form::Names
                           ? get_all_binds_to_references(className.c_str(), result, NAMESPACE)
                           : get_all_binds_to_instances(className.c_str(), result, nullptr, NAMESPACE);
            },
            &status);
    }
    static std::string own_trace(const Answer& answer) { return trace_of(answer.output, function()); }
    static std::string line_trace(int line) {
        return " Function : " + function() + " Line " + std::to_string(line) + " \n";
    }
    static std::string whole_trace(const std::string& within = "") {
        return entering(function()) + within + exiting(function());
    }
    static std::size_t links_asked_for() {
        const std::vector<std::string> calls = emulator::calls("fcip_get_link_entry");
        return static_cast<std::size_t>(
            std::count_if(calls.begin(), calls.end(),
                          [](const std::string& text) { return text.find(" op=2 ") != std::string::npos; }));
    }
    static std::string class_of(const std::string& newObjectPath) {
        return newObjectPath.substr(newObjectPath.rfind(' ') + 1);
    }
};

template <Form form>
class WalkerRowSuite : public Walker<form>, public testing::WithParamInterface<WalkerRow> {
  protected:
    using Base = Walker<form>;
    const WalkerRow& row() const { return this->GetParam(); }
    Answer all() { return Base::all(row().className); }
    auto expected(std::size_t count = TABLE_ORDER.size()) {
        return expected_associations<form>(row(), row().className, count);
    }

    void one_association_a_tunnel() {
        const Answer answer = all();
        EXPECT_EQ(associations_of(answer), expected());
        EXPECT_EQ(form == Form::Names ? answer.instances.size() : answer.paths.size(), 0U);
        EXPECT_EQ(this->status, 0);
        EXPECT_EQ(answer.doneCalls, 0U);
        EXPECT_EQ(Base::own_trace(answer).rfind(entering(Base::function()), 0), 0U);
        EXPECT_NE(Base::own_trace(answer).find(exiting(Base::function())), std::string::npos);
    }

    void the_association_has_the_clients_spelling() {
        const std::string asked = in_mixed_case(row().className);
        EXPECT_EQ(associations_of(Base::all(asked)), expected_associations<form>(row(), asked));
    }

    void the_local_endpoint_is_made_first() {
        all();
        const std::vector<std::string> made = this->broker.call_texts("newObjectPath");
        ASSERT_EQ(made.size(), 3 * TABLE_ORDER.size());
        const bool firstFirst =
            row().madeFirst == MadeFirst::First ||
            (row().madeFirst == MadeFirst::Either && Base::class_of(made[0]) == row().first.className);
        for (std::size_t at = 0; at < made.size(); at += 3) {
            EXPECT_EQ(Base::class_of(made[at]), firstFirst ? row().first.className : row().second.className);
            EXPECT_EQ(Base::class_of(made[at + 1]),
                      firstFirst ? row().second.className : row().first.className);
            EXPECT_EQ(Base::class_of(made[at + 2]), row().className);
        }
    }

    // Each tunnel takes three paths: its two ends and the association.
    void a_path_that_the_broker_cannot_make() {
        const std::size_t failures =
            this->for_each_broker_failure(Make::ObjectPath, Failure::Null, [&](std::size_t nth) {
                const Answer answer = all();
                if (!this->broker.fault_hit()) {
                    EXPECT_EQ(associations_of(answer), expected());
                } else if (nth % 3 == 0) { // the association: its NULL is returned, and the walk goes on
                    auto wanted = expected();
                    wanted[nth / 3 - 1] = RecordedPath::of(Object::Null);
                    EXPECT_EQ(associations_of(answer), wanted);
                    EXPECT_EQ(this->status, 0);
                } else { // an end: the walk stops
                    EXPECT_EQ(associations_of(answer), expected(nth / 3));
                    EXPECT_EQ(this->status, -1);
                    EXPECT_EQ(Base::own_trace(answer).find("Exiting"), std::string::npos);
                }
            });
        EXPECT_EQ(failures, 3 * TABLE_ORDER.size());
    }

    void stops_at_the_first_tunnel_without_its_profile() {
        emulator::remove_entity(BY_IF_INDEX.entity);
        const Answer answer = all();
        EXPECT_EQ(associations_of(answer), expected(2));
        EXPECT_EQ(this->status, -1);
        EXPECT_EQ(Base::own_trace(answer).find("Exiting"), std::string::npos) << answer.output;
        EXPECT_EQ(Base::links_asked_for(), 3U) << "tunnels behind the one that failed are not visited";
    }

    void the_end_of_the_table_ends_the_walk() {
        for (const Effect effect : ROW_FAILURES) {
            SCOPED_TRACE("effect " + std::to_string(static_cast<int>(effect)));
            emulator::clear_faults();
            emulator::Fault third = fault("fcip_get_link_entry", effect, "op=2");
            third.first = third.last = 3;
            emulator::add_fault(third);
            const Answer answer = all();
            EXPECT_EQ(associations_of(answer), expected(2));
            EXPECT_EQ(this->status, 0);
            EXPECT_NE(Base::own_trace(answer).find(exiting(Base::function())), std::string::npos);
        }
    }

    void without_tunnels_nothing_but_the_trace() {
        emulator::clear_links();
        const Answer answer = all();
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(answer.output, Base::whole_trace());
        EXPECT_EQ(this->status, 0);
    }
};

struct WalkerRowName {
    std::string operator()(const testing::TestParamInfo<WalkerRow>& info) const {
        return info.param.className;
    }
};

class AssociationInstances : public WalkerRowSuite<Form::Instances> {};
TEST_P(AssociationInstances, AreOneATunnelInTableOrder) {
    one_association_a_tunnel();
}
TEST_P(AssociationInstances, HaveTheClientsSpellingOfTheClass) {
    the_association_has_the_clients_spelling();
}
TEST_P(AssociationInstances, AreMadeLocalEndpointFirst) {
    the_local_endpoint_is_made_first();
}
TEST_P(AssociationInstances, StopAtAnEndThatTheBrokerCannotMake) {
    a_path_that_the_broker_cannot_make();
}
TEST_P(AssociationInstances, StopAtTheFirstTunnelWithoutItsProfile) {
    stops_at_the_first_tunnel_without_its_profile();
}
TEST_P(AssociationInstances, EndWithTheLinkTable) {
    the_end_of_the_table_ends_the_walk();
}
TEST_P(AssociationInstances, WithoutTunnelsAreNone) {
    without_tunnels_nothing_but_the_trace();
}
TEST_P(AssociationInstances, AreReturnedAsNullWhenTheBrokerCannotMakeThem) {
    for_each_broker_failure(Make::Instance, Failure::Null, [&](std::size_t nth) {
        const Answer answer = all();
        auto wanted = expected();
        if (broker.fault_hit()) wanted[nth - 1] = RecordedPath::of(Object::Null);
        EXPECT_EQ(associations_of(answer), wanted);
        EXPECT_EQ(status, 0);
    });
}
INSTANTIATE_TEST_SUITE_P(Of, AssociationInstances, testing::ValuesIn(CLASSES), WalkerRowName());

class AssociationNames : public WalkerRowSuite<Form::Names> {};
TEST_P(AssociationNames, AreOneATunnelInTableOrder) {
    one_association_a_tunnel();
}
TEST_P(AssociationNames, HaveTheClientsSpellingOfTheClass) {
    the_association_has_the_clients_spelling();
}
TEST_P(AssociationNames, AreMadeLocalEndpointFirst) {
    the_local_endpoint_is_made_first();
}
TEST_P(AssociationNames, StopAtAnEndThatTheBrokerCannotMake) {
    a_path_that_the_broker_cannot_make();
}
TEST_P(AssociationNames, StopAtTheFirstTunnelWithoutItsProfile) {
    stops_at_the_first_tunnel_without_its_profile();
}
TEST_P(AssociationNames, EndWithTheLinkTable) {
    the_end_of_the_table_ends_the_walk();
}
TEST_P(AssociationNames, WithoutTunnelsAreNone) {
    without_tunnels_nothing_but_the_trace();
}
INSTANTIATE_TEST_SUITE_P(Of, AssociationNames, testing::ValuesIn(classes_of_names()), WalkerRowName());

// ---- What is particular. ----

class InstanceWalker : public Walker<Form::Instances> {};
class NameWalker : public Walker<Form::Names> {};

// The profile above stands in for any end; these are the ends that can be missing on their own.
template <typename Walk>
void expect_stop_after_two(Walk all, const char* className) {
    const Answer answer = all(className);
    EXPECT_EQ(answer.returned.size(), 2U) << className;
    EXPECT_EQ(answer.output.find("Exiting get_all_binds_to_"), std::string::npos) << className;
}

TEST_F(InstanceWalker, StopsAtATunnelWhoseOtherEndIsMissing) {
    emulator::remove_port(BY_IF_INDEX.ethernet);
    expect_stop_after_two([&](const char* name) { return all(name); }, "KESTO_IPEthernetEndpoint");
    EXPECT_EQ(status, -1);

    FcipLinkEntry withoutPort = link_row(BY_IF_INDEX);
    withoutPort.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(withoutPort);
    for (const char* className : {"KESTO_TCPEndPointStatisticalData", "KESTO_IPEndPointStatisticalData"}) {
        expect_stop_after_two([&](const char* name) { return all(name); }, className);
        EXPECT_EQ(status, -1);
    }
    for (const char* className : {"KESTO_SwitchHostedFCIPAccessPoint", "KESTO_SwitchHostedIPAccessPoint",
                                  "KESTO_SwitchHostedTCPAccessPoint"}) {
        emulator::clear_faults();
        emulator::fail_call("switch_fill_reference_str", 3);
        expect_stop_after_two([&](const char* name) { return all(name); }, className);
        EXPECT_EQ(status, -1);
    }
}

TEST_F(NameWalker, StopsAtATunnelWhoseOtherEndIsMissing) {
    emulator::remove_port(BY_IF_INDEX.ethernet);
    expect_stop_after_two([&](const char* name) { return all(name); }, "KESTO_IPEthernetEndpoint");
    EXPECT_EQ(status, -1);

    FcipLinkEntry withoutPort = link_row(BY_IF_INDEX);
    withoutPort.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(withoutPort);
    for (const char* className : {"KESTO_TCPEndPointStatisticalData", "KESTO_IPEndPointStatisticalData",
                                  "KESTO_EthernetPortStatisticalData"}) {
        expect_stop_after_two([&](const char* name) { return all(name); }, className);
        EXPECT_EQ(status, -1);
    }
    for (const char* className : {"KESTO_SwitchHostedFCIPAccessPoint", "KESTO_SwitchHostedIPAccessPoint",
                                  "KESTO_SwitchHostedTCPAccessPoint"}) {
        emulator::clear_faults();
        emulator::fail_call("switch_fill_reference_str", 3);
        expect_stop_after_two([&](const char* name) { return all(name); }, className);
        EXPECT_EQ(status, -1);
    }
}

TEST_F(InstanceWalker, MakesBothEndsBeforeItTestsEither) {
    emulator::add_fault(fault("fcip_get_entity_entry", Effect::Fail)); // no endpoint path can be made
    all("KESTO_SwitchHostedFCIPAccessPoint");
    EXPECT_EQ(emulator::count("switch_fill_reference_str"), 1U);
    EXPECT_EQ(status, -1);
}

TEST_F(NameWalker, MakesBothEndsBeforeItTestsEither) {
    emulator::add_fault(fault("fcip_get_entity_entry", Effect::Fail));
    all("KESTO_SwitchHostedFCIPAccessPoint");
    EXPECT_EQ(emulator::count("switch_fill_reference_str"), 1U);
    EXPECT_EQ(status, -1);
}

TEST_F(NameWalker, SwapsTheRolesOfStatisticsAgainstTheInstances) {
    const Answer ip = all("KESTO_IPEndPointStatisticalData");
    ASSERT_EQ(ip.paths.size(), 5U);
    EXPECT_EQ(ip.paths[0].key("ManagedElement"),
              test_support::Value(path(End::Statistics, "KESTO_IPEndPointStatistics", BY_PROFILE)));
    EXPECT_EQ(ip.paths[0].key("Stats"),
              test_support::Value(path(End::IpEndpoint, "KESTO_IPProtocolEndPoint", BY_PROFILE)));
    const Answer tcp = all("KESTO_TCPEndPointStatisticalData");
    ASSERT_EQ(tcp.paths.size(), 5U);
    EXPECT_EQ(tcp.paths[0].key("ManagedElement"),
              test_support::Value(path(End::Statistics, "KESTO_TCPEndPointStatistics", BY_PROFILE)));
    EXPECT_EQ(tcp.paths[0].key("Stats"),
              test_support::Value(path(End::FcipEndpoint, "KESTO_FCIPProtocolEndPoint", BY_PROFILE)));
}

TEST_F(InstanceWalker, HasTheEndpointAsTheManagedElementOfStatistics) {
    const Answer ip = all("KESTO_IPEndPointStatisticalData");
    ASSERT_EQ(ip.instances.size(), 5U);
    EXPECT_EQ(ip.instances[0].value("ManagedElement"),
              test_support::Value(path(End::IpEndpoint, "KESTO_IPProtocolEndPoint", BY_PROFILE)));
    EXPECT_EQ(ip.instances[0].value("Stats"),
              test_support::Value(path(End::Statistics, "KESTO_IPEndPointStatistics", BY_PROFILE)));
}

TEST_F(NameWalker, CarriesTheTwoFlagsOfSettingAssociationsAsKeys) {
    for (const char* className :
         {"KESTO_FCIPElementSettingData", "KESTO_TCPElementSettingData", "KESTO_IPElementSettingData"}) {
        SCOPED_TRACE(className);
        for (const RecordedPath& name : all(className).paths) {
            ASSERT_EQ(name.keys().size(), 4U);
            EXPECT_EQ(name.keys()[2], (test_support::Set{"IsDefault", CMPI_uint16, 1}));
            EXPECT_EQ(name.keys()[3], (test_support::Set{"IsCurrent", CMPI_uint16, 1}));
        }
    }
}

TEST_F(InstanceWalker, IpSettingsAssociationPointsToTheTcpSettingsPath) {
    const Answer answer = all("KESTO_IPElementSettingData");
    ASSERT_EQ(answer.instances.size(), 5U);
    EXPECT_EQ(answer.instances[0].value("ManagedElement"),
              test_support::Value(path(End::IpEndpoint, "KESTO_TCPSettings", BY_PROFILE)));
}

TEST_F(InstanceWalker, HasTheTcpEndpointAsTheAntecedentOfTheIpEndpoint) {
    const Answer answer = all("KESTO_TCPIPEndpoint");
    ASSERT_EQ(answer.instances.size(), 5U);
    EXPECT_EQ(answer.instances[0].value("Antecedent"),
              test_support::Value(path(End::TcpEndpoint, "KESTO_TCPProtocolEndPoint", BY_PROFILE)));
}

// ---- The class that produces nothing, the classes that are not walked. ----

const std::vector<std::string> FIVE_IP_ENDPOINTS(5, "newObjectPath root/kesto KESTO_IPProtocolEndPoint");

TEST_F(InstanceWalker, MakesAnIpEndpointPathForEachRemoteTcpAssociationAndDropsIt) {
    const Answer answer = all("KESTO_SANTCPEndpoint");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(broker.call_texts("newObjectPath"), FIVE_IP_ENDPOINTS);
    EXPECT_EQ(own_trace(answer), whole_trace());
    EXPECT_EQ(status, 0);
}

TEST_F(NameWalker, MakesAnIpEndpointPathForEachRemoteTcpAssociationAndDropsIt) {
    const Answer answer = all("kesto_santcpendpoint");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(broker.call_texts("newObjectPath"), FIVE_IP_ENDPOINTS);
    EXPECT_EQ(own_trace(answer), whole_trace());
    EXPECT_EQ(status, 0);
}

TEST_F(InstanceWalker, WalksNoEthernetStatisticalData) {
    const Answer answer = all("KESTO_EthernetPortStatisticalData");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(broker.call_texts("newObjectPath").size(), 0U);
}

TEST_F(InstanceWalker, VisitsEveryTunnelForAClassThatItDoesNotKnow) {
    for (const char* className :
         {"KESTO_NoSuchAssociation", "", "KESTO_FCPortProtocolEndPoint", "CIM_HostedAccessPoint"}) {
        emulator::clear_calls();
        const Answer answer = all(className);
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(answer.output, whole_trace());
        EXPECT_EQ(links_asked_for(), 6U);
        EXPECT_EQ(status, 0);
    }
}

TEST_F(NameWalker, VisitsEveryTunnelForAClassThatItDoesNotKnow) {
    const Answer answer = all("KESTO_RemoteIPPort");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(answer.output, whole_trace());
    EXPECT_EQ(links_asked_for(), 6U);
}

// ---- Tunnels of entity 65535, which have no Ethernet endpoint. ----

void add_tunnel_of_entity_65535() {
    FcipLinkEntry row = link_row(BY_ADDRESS);
    row.kfmFcipEntityId = 65535;
    emulator::add_link(row);
    FcipEntityEntry profile = emulator::find_entity(BY_ADDRESS.entity).value();
    profile.kfmFcipEntityId = 65535;
    emulator::add_entity(profile);
}

TEST_F(InstanceWalker, SkipsEntity65535ForTheEthernetEndpointOnly) {
    add_tunnel_of_entity_65535();
    const Answer answer = all("KESTO_IPEthernetEndpoint");
    EXPECT_EQ(answer.instances.size(), 5U);
    EXPECT_EQ(broker.call_texts("newObjectPath").size(), 15U) << "skipped before anything is built";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(all("KESTO_SwitchHostedIPAccessPoint").instances.size(), 6U);
}

TEST_F(NameWalker, SkipsEntity65535ForTheEthernetEndpointOnly) {
    add_tunnel_of_entity_65535();
    EXPECT_EQ(all("KESTO_IPEthernetEndpoint").paths.size(), 5U);
    EXPECT_EQ(broker.call_texts("newObjectPath").size(), 15U);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(all("KESTO_FCIPPEBasedOn").paths.size(), 6U);
}

TEST_F(NameWalker, GoesOnBehindATunnelOfEntity65535) {
    FcipLinkEntry skipped = link_row(BY_ADDRESS);
    skipped.kfmFcipEntityId = 65535;
    skipped.kfmFcipLinkIndex = 0;
    emulator::add_link(skipped);
    FcipLinkEntry behind = link_row(BY_ADDRESS);
    behind.kfmFcipEntityId = 65536;
    emulator::add_link(behind);
    FcipEntityEntry profile = emulator::find_entity(BY_ADDRESS.entity).value();
    profile.kfmFcipEntityId = 65536;
    emulator::add_entity(profile);
    EXPECT_EQ(all("KESTO_IPEthernetEndpoint").paths.size(), 6U);
}

// ---- The system that hosts a tunnel. ----

TEST_F(InstanceWalker, NamesTheHostingSystemWithoutALookAtItsLookup) {
    emulator::add_vsan({BY_PROFILE.vsan, "VSAN20", false, "unused"}); // no domain: the lookup writes "NULL"
    const Answer answer = all("KESTO_SwitchHostedTCPAccessPoint");
    ASSERT_EQ(answer.instances.size(), 5U);
    EXPECT_EQ(answer.instances[0].value("Antecedent"),
              test_support::Value(system_path("KESTO_LogicalComputerSystem", "NULL")));
}

TEST_F(NameWalker, NamesTheHostingSystemWithoutALookAtItsLookup) {
    emulator::add_vsan({BY_PROFILE.vsan, "VSAN20", false, "unused"});
    const Answer answer = all("KESTO_SwitchHostedTCPAccessPoint");
    ASSERT_EQ(answer.paths.size(), 5U);
    EXPECT_EQ(answer.paths[0].key("Antecedent"),
              test_support::Value(system_path("KESTO_LogicalComputerSystem", "NULL")));
}

// ---- Numbered trace lines. ----

std::string five_times(const std::string& line) {
    return line + line + line + line + line;
}

TEST_F(InstanceWalker, TracesLine1893ForEachEthernetEndpointAnd2024ForEachTcpStatistics) {
    EXPECT_EQ(own_trace(all("KESTO_IPEthernetEndpoint")), whole_trace(five_times(line_trace(1893))));
    EXPECT_EQ(own_trace(all("KESTO_TCPEndPointStatisticalData")), whole_trace(five_times(line_trace(2024))));
}

TEST_F(NameWalker, TracesLine1602ForEachEthernetEndpoint) {
    EXPECT_EQ(own_trace(all("KESTO_IPEthernetEndpoint")), whole_trace(five_times(line_trace(1602))));
}

TEST_F(InstanceWalker, TracesTheLineBehindTheIpEndpointsPath) {
    const std::string output = all("KESTO_IPEthernetEndpoint").output;
    EXPECT_LT(output.find(exiting("ip_pe_fill_reference")), output.find(line_trace(1893))) << output;
    EXPECT_LT(output.find(line_trace(1893)),
              output.find(entering("ip_pe_fill_reference"), output.find(line_trace(1893))));
}

TEST_F(NameWalker, TracesTheLineBehindTheIpEndpointsPath) {
    const std::string output = all("KESTO_IPEthernetEndpoint").output;
    EXPECT_LT(output.find(exiting("ip_pe_fill_reference")), output.find(line_trace(1602))) << output;
}

TEST_F(NameWalker, TracesNoOtherLines) {
    for (const WalkerRow& row : classes_of_names()) {
        if (std::string(row.className) == "KESTO_IPEthernetEndpoint") continue;
        EXPECT_EQ(own_trace(all(row.className)), whole_trace()) << row.className;
    }
}

TEST_F(InstanceWalker, TracesNoOtherLines) {
    for (const WalkerRow& row : CLASSES) {
        const std::string name = row.className;
        if (name == "KESTO_IPEthernetEndpoint" || name == "KESTO_TCPEndPointStatisticalData") continue;
        EXPECT_EQ(own_trace(all(name)), whole_trace()) << name;
    }
}

// ---- The rest of the contract. ----

TEST_F(InstanceWalker, DoesNotUseThePropertyList) {
    const char* properties[] = {"Antecedent", nullptr};
    const Answer answer = walk([&](const CMPIResult* result) {
        return get_all_binds_to_instances("KESTO_FCIPTCPEndpoint", result, properties, NAMESPACE);
    });
    EXPECT_EQ(associations_of(answer),
              expected_associations<Form::Instances>(CLASSES[2], "KESTO_FCIPTCPEndpoint"));
    for (const test_support::RecordedInstance& instance : answer.instances)
        EXPECT_TRUE(instance.filters().empty());
}

TEST_F(NameWalker, AreWhatTheOperationsEnumerate) {
    EXPECT_EQ(associations_of(enumerate_names("KESTO_FCIPTCPEndpoint")),
              expected_associations<Form::Names>(CLASSES[2], "KESTO_FCIPTCPEndpoint"));
    EXPECT_EQ(associations_of(enumerate("KESTO_FCIPTCPEndpoint")),
              expected_associations<Form::Instances>(CLASSES[2], "KESTO_FCIPTCPEndpoint"));
}

TEST_F(NameWalker, ReturnsNothingForRemoteTcpAssociationsHoweverManyTunnelsThereAre) {
    EXPECT_EQ(enumerate("KESTO_SANTCPEndpoint").returned.size(), 0U);
    EXPECT_EQ(enumerate_names("KESTO_SANTCPEndpoint").returned.size(), 0U);
}

} // namespace
