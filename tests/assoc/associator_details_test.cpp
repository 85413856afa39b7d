// The associator functions, what is particular to single sources: second lookups, statistics, ports.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <new>
#include <string>
#include <vector>

#include "include/classes.h"
#include "tests/assoc/association_test.h"

using namespace golden;
using emulator::Effect;
using test_support::entering;
using test_support::exiting;
using test_support::for_each_effect;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::ROW_FAILURES;

namespace {

using Texts = std::vector<std::string>;

struct Associators {
    AssociatorNamesFn* names;
    AssociatorsFn* instances;
};
constexpr Associators FCIP_PE{get_fcip_pe_associator_names, get_fcip_pe_associators};
constexpr Associators IP_PE{get_ip_pe_associator_names, get_ip_pe_associators};
constexpr Associators IP_REMOTE_PE{get_ip_remote_pe_associator_names, get_ip_remote_pe_associators};
constexpr Associators LAN_ENDPOINT{get_lan_endpoint_associator_names, get_lan_endpoint_associators};
constexpr Associators ETH_PORT{get_eth_port_associator_names, get_eth_port_associators};

class AssociatorTest : public AssociationTest {
  protected:
    Texts names(AssociatorNamesFn* function, const char* key, const char* asked) {
        Texts texts;
        for (const RecordedPath& made : call(function, key, asked).paths) {
            texts.push_back(made.text());
        }
        return texts;
    }
    Texts instances(End end, AssociatorsFn* function, const char* key, const char* asked) {
        Texts texts;
        for (const RecordedInstance& made : call(function, key, asked).instances) {
            texts.push_back(identity(end, made));
        }
        return texts;
    }
};

// What both functions of a source show.
class AssociatorForms : public AssociatorTest, public testing::WithParamInterface<Form> {
  protected:
    Form form() const { return GetParam(); }
    Texts found(End end, const Associators& source, const char* key, const char* asked) {
        return form() == Form::Names ? names(source.names, key, asked)
                                     : instances(end, source.instances, key, asked);
    }
};

TEST_P(AssociatorForms, SpellingsOfTheRemoteAccessPointAssociationMatchAlike) {
    for (const char* asked : {"KESTO_SANIPEndPoint", "KESTO_SANIpEndPoint", "KESTO_SANIPEndpoint"}) {
        EXPECT_EQ(
            found(End::RemoteIpAccessPoint, IP_PE, "7_x", asked),
            Texts{object(form(), End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint", BY_IF_INDEX)});
        EXPECT_EQ(found(End::IpEndpoint, IP_REMOTE_PE, "0_10.0.0.7_10.25.0.1", asked),
                  Texts{object(form(), End::IpEndpoint, "KESTO_IPProtocolEndPoint", BY_ADDRESS)});
    }
}

TEST_P(AssociatorForms, IpEndpointTracesTheAssociationClassBeforeItLooksAtIt) {
    const std::string function =
        form() == Form::Names ? "get_ip_pe_associator_names" : "get_ip_pe_associators";
    const Answer known = call(form(), IP_PE, "7_x", "KESTO_TCPIPEndpoint");
    EXPECT_TRUE(known.output.starts_with(entering(function) + "Association Class KESTO_TCPIPEndpoint \n"))
        << known.output;
    const Answer none = call(form(), IP_PE, "7_x", nullptr);
    EXPECT_EQ(none.output, entering(function) + "Association Class (null) \n");
    const Answer other = call(form(), FCIP_PE, "7_x", "KESTO_FCIPTCPEndpoint");
    EXPECT_EQ(other.output.find("Association Class "), std::string::npos);
}

// The port manager's status is not looked at here, only the block.
TEST_P(AssociatorForms, IpEndpointTakesTheEthernetPortsBlockWhateverTheStatus) {
    const Texts wanted{object(form(), End::EthernetPort, "KESTO_EthernetPort", BY_IF_INDEX)};
    emulator::clear_calls();
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .effect = Effect::FailWithRow});
    EXPECT_EQ(found(End::EthernetPort, IP_PE, "7_x", "KESTO_IPEthernetEndpoint"), wanted);
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), Texts{"pm_cim_get_port_info op=1 if=0x00000192"});
}

// The port walk begins after 0x9AFFFFFF: a port before it is no Ethernet port here.
TEST_P(AssociatorForms, LanEndpointReadsAPortOfTheEthernetRunAtTheStartOfItsKey) {
    const char* asked = "KESTO_EthernetPortProtocolEndpoint";
    const Texts port{port_object(form(), End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT)};
    for (const char* key :
         {"-1694433280:02:00:00:00:00:10", "-1694433280_10.1.1.1", ":-1694433280", "_-1694433280"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(found(End::EthernetPort, LAN_ENDPOINT, key, asked), port);
    }
    EXPECT_EQ(found(End::EthernetPort, LAN_ENDPOINT, "402:x", asked), Texts{});
}

TEST_P(AssociatorForms, FcipEndpointWithoutAnInterfaceHasNoFcPort) {
    emulator::remove_port(BY_NUMBER.ifIndex);
    EXPECT_EQ(found(End::FcPort, FCIP_PE, "7_x", "KESTO_FCPortProtocolEndPoint"), Texts{});
    EXPECT_EQ(emulator::calls("pm_cim_find_interface"), Texts{"pm_cim_find_interface op=1 if=0x0000012d"});
}

// Each form has its own class for the statistics of an Ethernet port, and does not know the other's.
TEST_P(AssociatorForms, EthernetPortKnowsOneClassForItsStatistics) {
    const char* other =
        form() == Form::Names ? "KESTO_EthernetPortStatisticalData" : "KESTO_EthernetPortStatistics";
    EXPECT_EQ(found(End::EthernetStatistics, ETH_PORT, GIGABIT_PORT_TEXT, other), Texts{});
}

TEST_P(AssociatorForms, ResultClassAndRolesAreNotLookedAt) {
    const Answer answer = walk([&](const CMPIResult* result) {
        if (form() == Form::Names) {
            return get_fcip_pe_associator_names("7_x", "KESTO_FCIPTCPEndpoint", "KESTO_NoSuchClass", "NoRole",
                                                "NoRole", result, NAMESPACE);
        }
        return get_fcip_pe_associators("7_x", "KESTO_FCIPTCPEndpoint", "KESTO_NoSuchClass", "NoRole",
                                       "NoRole", nullptr, result, NAMESPACE);
    });
    EXPECT_EQ(answer.returned.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Of, AssociatorForms, testing::ValuesIn(FORMS), testing::PrintToStringParamName());

// Names

TEST_F(AssociatorTest, IpEndpointNamesTheHostingSystemForAnyAssociationItDoesNotKnow) {
    for (const char* asked : {"KESTO_NoSuchAssociation", "", "CIM_Dependency", "KESTO_FCIPTCPEndpoint"}) {
        SCOPED_TRACE(asked);
        EXPECT_EQ(names(get_ip_pe_associator_names, "7_x", asked),
                  Texts{path(End::HostingSystem, "KESTO_LogicalComputerSystem", BY_IF_INDEX).text()});
        EXPECT_TRUE(call(get_ip_pe_associators, "7_x", asked).returned.empty())
            << "as instances it is nothing";
    }
}

// Each of the two paths has a lookup of its own.
TEST_F(AssociatorTest, IpEndpointLooksItsTunnelUpTwiceToNameItsSettings) {
    call(get_ip_pe_associator_names, "7_x", "KESTO_IPElementSettingData");
    // The table's order is by profile: 7, 21, and the tunnel wanted is the third row.
    const Texts walk{"fcip_get_link_entry op=2 key={0,0} 30 1", "fcip_get_link_entry op=2 key={7,33} 30 1",
                     "fcip_get_link_entry op=2 key={21,6} 30 1"};
    Texts twice = walk;
    twice.insert(twice.end(), walk.begin(), walk.end());
    EXPECT_EQ(emulator::calls("fcip_get_link_entry"), twice);
}

TEST_F(AssociatorTest, IpEndpointReturnsItsSettingsWithoutTheHostingSystem) {
    call(get_ip_pe_associators, "7_x", "KESTO_IPElementSettingData");
    EXPECT_EQ(emulator::count("vsan_cim_get_vsanEntry"), 0U) << "the hosting system is for the names only";
}

TEST_F(AssociatorTest, StatisticsAreNamedAfterTheErrorCountersWereRead) {
    const Texts read{"fcip_snmp_get_link_errors op=1 key={22,31} 10"};
    call(get_ip_pe_associator_names, "7_x", "KESTO_IPEndPointStatisticalData");
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"), read);
    emulator::clear_calls();
    call(get_tcp_pe_associator_names, "7_x", "KESTO_TCPEndPointStatisticalData");
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"), read);
}

TEST_F(AssociatorTest, TunnelWithoutAnEthernetPortHasNoStatisticsPath) {
    FcipLinkEntry row = link_row(BY_IF_INDEX);
    row.kfmFcipLinkExtEthIfIndex = 0;
    emulator::add_link(row);
    EXPECT_EQ(names(get_ip_pe_associator_names, "7_x", "KESTO_IPEndPointStatisticalData"), Texts{});
    EXPECT_EQ(names(get_tcp_pe_associator_names, "7_x", "KESTO_TCPEndPointStatisticalData"), Texts{});
}

TEST_F(AssociatorTest, TcpEndpointNamesNoSettings) {
    EXPECT_EQ(names(get_tcp_pe_associator_names, "7", "KESTO_TCPElementSettingData"), Texts{});
}

TEST_F(AssociatorTest, TcpStatisticalDataMakesThePathOfItsProfilesTunnelAndReturnsNothing) {
    for (const Probe& probe : PROBES) {
        SCOPED_TRACE(std::string("key \"") + probe.key + "\"");
        broker.clear_calls();
        const Answer answer =
            call(get_tcp_statical_data_associator_names, probe.key, "KESTO_TCPEndPointStatistics");
        const bool names = probe.tunnel(Reading::Entity) != nullptr;
        EXPECT_EQ(broker.call_texts("newObjectPath"),
                  names ? Texts{"newObjectPath root/kesto KESTO_TCPProtocolEndPoint"} : Texts{});
        EXPECT_EQ(answer.output, entering("get_tcp_statical_data_associator_names") +
                                     (names ? entering("tcp_pe_fill_reference") : "") +
                                     exiting("get_tcp_statical_data_associator_names"));
    }
}

// Numbers in keys saturate at 32 bits, so the largest if-index that a key can name is 0x7FFFFFFF.
TEST_F(AssociatorTest, NumberBeyond32BitsNamesTheLargestIfIndex) {
    emulator::Port port;
    port.ifIndex = 0x7FFFFFFFU;
    emulator::add_port(port);
    for (const char* key : {"2147483647", "4294967296", "99999999999999999999"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(names(get_eth_stat_associator_names, key, "KESTO_EthernetPortStatisticalData"),
                  Texts{port_path(End::EthernetPort, "KESTO_EthernetPort", 0x7FFFFFFFU).text()});
    }
}

// Under the address sanitizer a use after the release, or no release at all, fails here.
TEST_F(AssociatorTest, PortBlockIsUsedBeforeItIsFreed) {
    for (int round = 0; round < 3; ++round) {
        call(get_fcip_pe_associator_names, "7_x", "KESTO_FCPortProtocolEndPoint");
        call(get_ip_pe_associator_names, "7_x", "KESTO_IPEthernetEndpoint");
        call(get_eth_stat_associator_names, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData");
        call(get_eth_port_associator_names, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatistics");
    }
    EXPECT_EQ(emulator::count("fcport_fill_reference_pm"), 9U);
}

// Instances: the IP endpoint hands its statistics builder the link's error row in place of the link.

class StatisticsAssociators : public AssociatorTest {
  protected:
    Answer ip_statistics() { return call(get_ip_pe_associators, "7_x", "KESTO_IPEndPointStatisticalData"); }
    Answer tcp_statistics() {
        return call(get_tcp_pe_associators, "7_x", "KESTO_TCPEndPointStatisticalData");
    }
};

TEST_F(StatisticsAssociators, IpStatisticsAreBuiltFromTheErrorRowInPlaceOfTheLink) {
    const Answer answer = ip_statistics();
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_IPEndPointStatistics");
    // The error row's first counter stands where a link has its if-index, word 26 where it has its Ethernet
    // port.
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "500022");
    ASSERT_EQ(emulator::sent_requests().size(), 1U);
    EXPECT_EQ(emulator::sent_requests()[0].code, 1917U);
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"),
              Texts{"fcip_snmp_get_link_errors op=1 key={22,31} 10"});
}

TEST_F(StatisticsAssociators, IpStatisticsWithoutErrorCountersAreSkipped) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_snmp_get_link_errors"}, [&] {
        const Answer answer = ip_statistics();
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(status, 0);
        EXPECT_NE(answer.output.find(entering("ip_statistics_build_instance")), std::string::npos)
            << "the builder is called with no row";
    });
}

// The error row ends with its word 27. Here it ends with its page too, so that a read after it is a fault.
TEST_F(StatisticsAssociators, IpStatisticsReadNothingAfterWord27OfTheErrorRow) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    auto* bytes = static_cast<unsigned char*>(pages);
    ASSERT_EQ(mprotect(bytes + page, page, PROT_NONE), 0);
    void* place = bytes + page - sizeof(FcipLinkErrors);
    auto* errors = new (place) FcipLinkErrors{22, 31, {}};
    errors->counters[0] = 4711;
    errors->counters[24] = BY_IF_INDEX.ethernet;

    const RecordedInstance made = built([&] {
        return ip_statistics_build_instance("KESTO_IPEndPointStatistics", NAMESPACE,
                                            static_cast<const FcipLinkEntry*>(place), nullptr);
    });
    EXPECT_EQ(made.value("InstanceID"), "4711");
    munmap(pages, 2 * page);
}

TEST_F(StatisticsAssociators, TcpEndpointReturnsStatisticalDataOfItsTunnelNumber) {
    const Answer answer = tcp_statistics();
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "32"); // the tunnel number, not the if-index
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"),
              Texts{"fcip_snmp_get_link_errors op=1 key={22,31} 10"});
}

TEST_F(StatisticsAssociators, TcpEndpointReturnsStatisticalDataEvenWithoutErrorCounters) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_snmp_get_link_errors"}, [&] {
        const Answer answer = tcp_statistics();
        ASSERT_EQ(answer.instances.size(), 1U);
        EXPECT_EQ(identity(End::TcpStatisticalData, answer.instances[0]),
                  instance(End::TcpStatisticalData, "KESTO_TCPStatisticalData", BY_IF_INDEX));
    });
}

// The builders look the tunnel up once more by its index, and return the value -1 when it is gone. The first
// three requests belong to the function's own lookup, which finds the tunnel in the third row.
TEST_F(StatisticsAssociators, StatisticalDataOfATunnelThatVanishesIsSkipped) {
    emulator::add_fault({.symbol = "fcip_get_link_entry", .where = "op=2", .first = 4});
    const Answer answer = tcp_statistics();
    EXPECT_EQ(answer.returned.size(), 0U);
    expect_whole_trace(answer.output, "get_tcp_pe_associators");
}

TEST_F(AssociatorTest, TcpSettingsOfATunnelThatVanishesAreSkipped) {
    emulator::add_fault({.symbol = "fcip_get_link_entry", .where = "op=2", .first = 4});
    EXPECT_EQ(call(get_tcp_pe_associators, "7", "KESTO_TCPElementSettingData").returned.size(), 0U);
    EXPECT_EQ(emulator::calls("fcip_get_link_entry").size(), 5U)
        << "the lookup, the second read, the builder's";
}

TEST_F(AssociatorTest, TcpEndpointReadsItsTunnelASecondTimeForItsSettings) {
    call(get_tcp_pe_associators, "7", "KESTO_TCPElementSettingData");
    const Texts reads = emulator::calls("fcip_get_link_entry");
    ASSERT_GE(reads.size(), 4U);
    EXPECT_EQ(reads[3], "fcip_get_link_entry op=1 key={22,31} 30 1");
}

// The objects that the platform builds are asked for with the request's properties as they came.
struct PlatformObject {
    AssociatorsFn* function;
    const char *key, *asked;
};

class AssociatorsOfThePlatform : public AssociatorTest, public testing::WithParamInterface<PlatformObject> {};

TEST_P(AssociatorsOfThePlatform, GetThePropertyListToo) {
    const char* properties[] = {"DeviceID", nullptr};
    const Answer answer = call(GetParam().function, GetParam().key, GetParam().asked, properties);
    ASSERT_EQ(answer.instances.size(), 1U);
    ASSERT_EQ(answer.instances[0].filters().size(), 1U);
    EXPECT_EQ(answer.instances[0].filters()[0].properties, Texts{"DeviceID"});
}

INSTANTIATE_TEST_SUITE_P(
    All, AssociatorsOfThePlatform,
    testing::Values(
        PlatformObject{get_lan_endpoint_associators, GIGABIT_PORT_TEXT, "KESTO_EthernetPortProtocolEndpoint"},
        PlatformObject{get_eth_stat_associators, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData"},
        PlatformObject{get_ip_pe_associators, "7_x", "KESTO_IPEthernetEndpoint"},
        PlatformObject{get_fcip_pe_associators, "7_x", "KESTO_FCPortProtocolEndPoint"},
        PlatformObject{get_fcip_pe_associators, "7_x", "KESTO_SwitchHostedFCIPAccessPoint"},
        PlatformObject{get_ip_pe_associators, "7_x", "KESTO_SwitchHostedIPAccessPoint"},
        PlatformObject{get_tcp_pe_associators, "7", "KESTO_SwitchHostedTCPAccessPoint"}),
    [](const auto& row) { return std::string(row.param.asked); });

} // namespace
