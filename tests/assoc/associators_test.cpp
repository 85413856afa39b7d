// The associators members, row by row: the instance at the far end of each association they know.
#include <sys/mman.h>
#include <unistd.h>

#include <new>

#include "include/classes.h"
#include "tests/assoc/associator_suite.h"

using namespace golden;
using emulator::Effect;
using test_support::Answer;
using test_support::Failure;
using test_support::Filter;
using test_support::Make;
using test_support::Object;
using test_support::RecordedInstance;

namespace {

// ---- Every row. ----

class AssociatorsTunnelRow : public AssociatorSuite<AssociatorsRow> {};

TEST_P(AssociatorsTunnelRow, EachKeyNamesItsTunnelInTheRowsMode) {
    each_key_names_its_tunnel();
}
TEST_P(AssociatorsTunnelRow, LetterCaseOfTheAssociationClassDoesNotMatter) {
    letter_case_does_not_matter();
}
TEST_P(AssociatorsTunnelRow, AFailedLookupReturnsNothing) {
    a_failed_lookup_returns_nothing();
}
TEST_P(AssociatorsTunnelRow, EachCallMayFailOnItsOwn) {
    each_call_may_fail_on_its_own();
}

INSTANTIATE_TEST_SUITE_P(Rows, AssociatorsTunnelRow, testing::ValuesIn(tunnel_rows(ASSOCIATORS_ROWS)),
                         RowName());

class AssociatorsPortRow : public AssociatorSuite<AssociatorsRow> {};

TEST_P(AssociatorsPortRow, TheKeyIsThePortsIfIndex) {
    const Answer hit = ask_hit();
    EXPECT_EQ(returned(hit), expected_of_port(GIGABIT_PORT));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(own_trace(hit), whole_trace());
    EXPECT_EQ(returned(ask(std::string(GIGABIT_PORT_TEXT) + "_text behind it", row().tested)),
              expected_of_port(GIGABIT_PORT));
}
TEST_P(AssociatorsPortRow, AnUnknownPortReturnsNothing) {
    for (const char* key : {"999", "", "no number"}) {
        SCOPED_TRACE(key);
        const Answer miss = ask(key, row().tested);
        EXPECT_EQ(returned(miss), Texts{});
        EXPECT_EQ(status, 0);
        EXPECT_EQ(own_trace(miss), whole_trace());
    }
}
TEST_P(AssociatorsPortRow, LetterCaseOfTheAssociationClassDoesNotMatter) {
    letter_case_does_not_matter();
}
TEST_P(AssociatorsPortRow, NoTunnelIsLookedUp) {
    ask_hit();
    EXPECT_EQ(emulator::count("fcip_get_link_entry"), 0U);
}

INSTANTIATE_TEST_SUITE_P(Rows, AssociatorsPortRow, testing::ValuesIn(port_rows(ASSOCIATORS_ROWS)), RowName());

// Each service below a row failing, and the broker failing.
class AssociatorsFailure : public AssociatorSuite<AssociatorsRow> {};

const std::vector<PlatformFailure>& instance_failures() {
    static const std::vector<PlatformFailure> FAILURES{
        {"fcip_get_entity_entry",
         "",
         STATUS_FAILURES,
         {End::FcipEndpoint, End::TcpEndpoint, End::IpEndpoint, End::FcipSettings, End::TcpSettings,
          End::IpSettings, End::RemoteFcipPort, End::RemoteIpAccessPoint, End::RemoteTcpPort, End::Profile}},
        {"fcip_snmp_get_link_errors", "", ROW_FAILURES, {End::Statistics}},
        {emulator::LINE_CARD, "", {Effect::NoAnswer}, {End::Statistics}},
        {"cmi_req_resp", "", ROW_FAILURES, {End::IpSettings}},
        {"fcip_get_link_entry", "op=1", ROW_FAILURES, {End::TcpSettings}},
        {"pm_cim_get_port_info",
         "",
         STATUS_FAILURES,
         {End::LanEndpoint, End::EthernetStatistics, End::EthernetPort}},
        {"pm_get_port_counters", "", STATUS_FAILURES, {End::EthernetStatistics}},
        {"pm_cim_find_interface", "", {Effect::Fail}, {End::FcPort}},
        {"fcport_build_instance_pm", "", {Effect::Fail}, {End::FcPort}},
        {"vsan_cim_get_vsanEntry", "", STATUS_FAILURES, {End::HostingSystem}},
        {"dm_cim_get_dmEntry", "", STATUS_FAILURES, {End::HostingSystem}},
        {"switch_build_instance_str", "", {Effect::Fail}, {End::HostingSystem}},
    };
    return FAILURES;
}

bool fails_below(const AssociatorsRow& row) {
    return std::any_of(instance_failures().begin(), instance_failures().end(),
                       [&](const PlatformFailure& failure) { return failure.breaks_end(row.far[0].end); });
}
std::vector<AssociatorsRow> rows_with_platform_failures() {
    std::vector<AssociatorsRow> found;
    std::copy_if(ASSOCIATORS_ROWS.begin(), ASSOCIATORS_ROWS.end(), std::back_inserter(found), fails_below);
    return found;
}

TEST_P(AssociatorsFailure, AnEndThatThePlatformFailsIsSkipped) {
    an_end_that_the_platform_fails_is_skipped(instance_failures());
}
INSTANTIATE_TEST_SUITE_P(Rows, AssociatorsFailure, testing::ValuesIn(rows_with_platform_failures()),
                         RowName());

class AssociatorsBrokerFailure : public AssociatorSuite<AssociatorsRow> {};

TEST_P(AssociatorsBrokerFailure, AnInstanceWithoutAPathIsSkipped) {
    an_object_that_the_broker_cannot_make_is_skipped(Make::ObjectPath);
}
TEST_P(AssociatorsBrokerFailure, AnInstanceThatTheBrokerCannotMakeIsSkipped) {
    an_object_that_the_broker_cannot_make_is_skipped(Make::Instance);
}
INSTANTIATE_TEST_SUITE_P(Rows, AssociatorsBrokerFailure, testing::ValuesIn(tunnel_rows(ASSOCIATORS_ROWS)),
                         RowName());

// Rows whose instance the library builds: it hands the request's properties on, and an instance without a
// handle as it is.
class AssociatorsBuiltRow : public AssociatorSuite<AssociatorsRow> {};

TEST_P(AssociatorsBuiltRow, ThePropertyListIsHandedToTheBuilderUnchanged) {
    const char* properties[] = {"InstanceID", "Caption", nullptr};
    const Answer answer = call(row().member->function, hit_key().c_str(), row().tested, properties);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].filters(),
              (std::vector<Filter>{
                  {std::vector<std::string>{"InstanceID", "Caption"}, std::vector<std::string>{}}}));
}
TEST_P(AssociatorsBuiltRow, WithoutAPropertyListTheFilterGetsNone) {
    const Answer answer = ask_hit();
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].filters(),
              (std::vector<Filter>{{std::nullopt, std::vector<std::string>{}}}));
}
TEST_P(AssociatorsBuiltRow, AnInstanceWithoutAHandleIsReturnedAsItIs) {
    broker.fail_every(Make::Instance, Failure::WithoutHandle);
    const Answer answer = ask_hit();
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].kind(), Object::WithoutHandle);
}

bool built_by_the_library(const AssociatorsRow& row) {
    const End end = row.far[0].end;
    return end != End::HostingSystem && end != End::FcPort && end != End::EthernetPort;
}
std::vector<AssociatorsRow> rows_built_by_the_library() {
    std::vector<AssociatorsRow> found;
    std::copy_if(ASSOCIATORS_ROWS.begin(), ASSOCIATORS_ROWS.end(), std::back_inserter(found),
                 built_by_the_library);
    return found;
}
INSTANTIATE_TEST_SUITE_P(Rows, AssociatorsBuiltRow, testing::ValuesIn(rows_built_by_the_library()),
                         RowName());

// ---- Every member. ----

class AssociatorsOfMember : public AssociationTest, public testing::WithParamInterface<AssociatorsMember> {
  protected:
    std::string function() const { return GetParam().name; }
};

TEST_P(AssociatorsOfMember, WithoutAnAssociationClassReturnsNothingAndDoesNotTraceItsExit) {
    for (const char* key : {"7_anything", "0_10.0.0.7", "0_7", GIGABIT_PORT_TEXT}) {
        const Answer answer = call(GetParam().function, key, nullptr);
        expect_no_object(answer);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(trace_of(answer.output, function()), entering(function()));
    }
}

TEST_P(AssociatorsOfMember, AnUnknownAssociationClassReturnsNothing) {
    for (const char* asked : {"KESTO_NoSuchAssociation", "", "KESTO_FCIPElementSettingDat"}) {
        SCOPED_TRACE(asked);
        const Answer answer = call(GetParam().function, "7_anything", asked);
        expect_no_object(answer);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(trace_of(answer.output, function()), entering(function()) + exiting(function()));
        EXPECT_EQ(answer.platformCalls, (std::vector<std::string>{"mutex_lock", "mutex_unlock"}));
    }
}

INSTANTIATE_TEST_SUITE_P(Members, AssociatorsOfMember, testing::ValuesIn(ASSOCIATORS_MEMBERS), MemberName());

// ---- What is particular. ----

class AssociatorsTest : public AssociationTest {
  protected:
    using Texts = std::vector<std::string>;

    Texts found(End end, AssociatorsFn* member, const char* key, const char* asked) {
        Texts texts;
        for (const RecordedInstance& made : call(member, key, asked).instances)
            texts.push_back(identity(end, made));
        return texts;
    }
    Answer ip_statistics() { return call(get_ip_pe_associators, "7_x", "KESTO_IPEndPointStatisticalData"); }
    Answer tcp_statistics() {
        return call(get_tcp_pe_associators, "7_x", "KESTO_TCPEndPointStatisticalData");
    }
};

TEST_F(AssociatorsTest, IpEndpointReturnsOneInstanceForItsSettingsAssociation) {
    EXPECT_EQ(found(End::IpSettings, get_ip_pe_associators, "7_x", "KESTO_IPElementSettingData"),
              Texts{instance(End::IpSettings, "KESTO_IPSettings", BY_IF_INDEX)});
    emulator::clear_calls();
    call(get_ip_pe_associators, "7_x", "KESTO_IPElementSettingData");
    EXPECT_EQ(emulator::count("vsan_cim_get_vsanEntry"), 0U) << "the hosting system is for the names only";
}

TEST_F(AssociatorsTest, IpEndpointReturnsTheHostingSystemForItsHostedAccessPoint) {
    EXPECT_EQ(found(End::HostingSystem, get_ip_pe_associators, "7_x", "KESTO_SwitchHostedIPAccessPoint"),
              Texts{instance(End::HostingSystem, "KESTO_LogicalComputerSystem", BY_IF_INDEX)});
}

TEST_F(AssociatorsTest, IpEndpointReturnsNothingForAnAssociationItDoesNotKnow) {
    expect_no_object(call(get_ip_pe_associators, "7_x", "KESTO_NoSuchAssociation"));
    expect_no_object(call(get_ip_pe_associators, "7_x", "KESTO_FCIPTCPEndpoint"));
}

TEST_F(AssociatorsTest, IpEndpointSpellingsOfTheRemoteAccessPointAssociationMatchAlike) {
    for (const char* asked : {"KESTO_SANIPEndPoint", "KESTO_SANIpEndPoint", "KESTO_SANIPEndpoint"}) {
        EXPECT_EQ(found(End::RemoteIpAccessPoint, get_ip_pe_associators, "7_x", asked),
                  Texts{instance(End::RemoteIpAccessPoint, "KESTO_RemoteIPServiceAccessPoint", BY_IF_INDEX)});
        EXPECT_EQ(found(End::IpEndpoint, get_ip_remote_pe_associators, "0_10.0.0.7_10.25.0.1", asked),
                  Texts{instance(End::IpEndpoint, "KESTO_IPProtocolEndPoint", BY_ADDRESS)});
    }
}

TEST_F(AssociatorsTest, IpEndpointTracesTheAssociationClassBeforeItLooksAtIt) {
    const Answer known = call(get_ip_pe_associators, "7_x", "KESTO_TCPIPEndpoint");
    EXPECT_EQ(
        known.output.rfind("Entering get_ip_pe_associators\nAssociation Class KESTO_TCPIPEndpoint \n", 0), 0U)
        << known.output;
    const Answer none = call(get_ip_pe_associators, "7_x", nullptr);
    EXPECT_NE(none.output.find("Association Class "), std::string::npos) << none.output;
}

TEST_F(AssociatorsTest, IpEndpointTakesTheEthernetPortsBlockWhateverTheStatus) {
    const Texts wanted{instance(End::EthernetPort, "KESTO_EthernetPort", BY_IF_INDEX)};
    emulator::add_fault(fault("pm_cim_get_port_info", Effect::FailWithRow));
    EXPECT_EQ(found(End::EthernetPort, get_ip_pe_associators, "7_x", "KESTO_IPEthernetEndpoint"), wanted);
}

// ---- Statistics: the IP endpoint hands its builder the link's error row in place of the link. ----

TEST_F(AssociatorsTest, IpStatisticsAreBuiltFromTheErrorRowInPlaceOfTheLink) {
    const Answer answer = ip_statistics();
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_IPEndPointStatistics");
    // The error row's first counter stands where a link has its if-index, word 26 where it has its Ethernet
    // port.
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "500022");
    ASSERT_EQ(emulator::sent_requests().size(), 1U);
    EXPECT_EQ(emulator::sent_requests()[0].code, 1917U);
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"),
              std::vector<std::string>{"fcip_snmp_get_link_errors op=1 key={22,31} 10"});
}

TEST_F(AssociatorsTest, IpStatisticsWithoutErrorCountersAreSkipped) {
    for (const Effect effect : ROW_FAILURES) {
        emulator::clear_faults();
        emulator::add_fault(fault("fcip_snmp_get_link_errors", effect));
        const Answer answer = ip_statistics();
        EXPECT_EQ(answer.returned.size(), 0U);
        EXPECT_EQ(status, 0);
        EXPECT_NE(answer.output.find(entering("ip_statistics_build_instance")), std::string::npos)
            << "the builder is called with no row";
    }
}

// The error row ends with its word 27. Here it ends with its page too, so that a read behind it is a fault.
TEST_F(AssociatorsTest, IpStatisticsReadNothingBehindWord27OfTheErrorRow) {
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

TEST_F(AssociatorsTest, TcpEndpointAnswersItsStatisticsWithStatisticalData) {
    const Answer answer = tcp_statistics();
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(identity(End::TcpStatisticalData, answer.instances[0]),
              instance(End::TcpStatisticalData, "KESTO_TCPStatisticalData", BY_IF_INDEX));
    EXPECT_EQ(answer.instances[0].value("InstanceID"), "32"); // the tunnel number, not the if-index
    EXPECT_EQ(emulator::calls("fcip_snmp_get_link_errors"),
              std::vector<std::string>{"fcip_snmp_get_link_errors op=1 key={22,31} 10"});
}

TEST_F(AssociatorsTest, TcpEndpointReturnsStatisticalDataEvenWithoutErrorCounters) {
    for (const Effect effect : ROW_FAILURES) {
        emulator::clear_faults();
        emulator::add_fault(fault("fcip_snmp_get_link_errors", effect));
        const Answer answer = tcp_statistics();
        ASSERT_EQ(answer.instances.size(), 1U);
        EXPECT_EQ(identity(End::TcpStatisticalData, answer.instances[0]),
                  instance(End::TcpStatisticalData, "KESTO_TCPStatisticalData", BY_IF_INDEX));
    }
}

// The builders look the tunnel up once more by its index, and return the value -1 when it is gone. The first
// three requests belong to the member's own lookup, which finds the tunnel in the third row.
TEST_F(AssociatorsTest, StatisticalDataOfATunnelThatVanishesIsSkipped) {
    emulator::Fault later = fault("fcip_get_link_entry", Effect::Fail, "op=2");
    later.first = 4;
    emulator::add_fault(later);
    const Answer answer = tcp_statistics();
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(trace_of(answer.output, "get_tcp_pe_associators"),
              entering("get_tcp_pe_associators") + exiting("get_tcp_pe_associators"));
}

TEST_F(AssociatorsTest, TcpSettingsOfATunnelThatVanishesAreSkipped) {
    emulator::Fault later = fault("fcip_get_link_entry", Effect::Fail, "op=2");
    later.first = 4;
    emulator::add_fault(later);
    const Answer answer = call(get_tcp_pe_associators, "7", "KESTO_TCPElementSettingData");
    EXPECT_EQ(answer.returned.size(), 0U);
    EXPECT_EQ(emulator::calls("fcip_get_link_entry").size(), 5U)
        << "the lookup, the second read, the builder's";
}

TEST_F(AssociatorsTest, TcpEndpointReadsItsTunnelASecondTimeForItsSettings) {
    EXPECT_EQ(found(End::TcpSettings, get_tcp_pe_associators, "7", "KESTO_TCPElementSettingData"),
              Texts{instance(End::TcpSettings, "KESTO_TCPSettings", BY_IF_INDEX)});
    const std::vector<std::string> reads = emulator::calls("fcip_get_link_entry");
    ASSERT_GE(reads.size(), 4U);
    EXPECT_EQ(reads[3], "fcip_get_link_entry op=1 key={22,31} 30 1");
}

TEST_F(AssociatorsTest, TcpEndpointIsHostedByTheLogicalSystem) {
    EXPECT_EQ(found(End::HostingSystem, get_tcp_pe_associators, "7", "KESTO_SwitchHostedTCPAccessPoint"),
              Texts{instance(End::HostingSystem, "KESTO_LogicalComputerSystem", BY_IF_INDEX)});
}

TEST_F(AssociatorsTest, TcpStatisticalDataReturnsTheTcpEndpointOfItsProfile) {
    EXPECT_EQ(found(End::TcpEndpoint, get_tcp_statical_data_associators, "7", "KESTO_TCPEndPointStatistics"),
              Texts{instance(End::TcpEndpoint, "KESTO_TCPProtocolEndPoint", BY_PROFILE)});
}

TEST_F(AssociatorsTest, EthernetPortReturnsItsStatisticsByTheClassOfTheAssociation) {
    EXPECT_EQ(found(End::EthernetStatistics, get_eth_port_associators, GIGABIT_PORT_TEXT,
                    "KESTO_EthernetPortStatisticalData"),
              Texts{port_instance(End::EthernetStatistics, "KESTO_EthernetPortStatistics", GIGABIT_PORT)});
    EXPECT_EQ(found(End::EthernetStatistics, get_eth_port_associators, GIGABIT_PORT_TEXT,
                    "KESTO_EthernetPortStatistics"),
              Texts{});
}

TEST_F(AssociatorsTest, FcipEndpointWithoutAnInterfaceHasNoFcPort) {
    emulator::remove_port(BY_NUMBER.ifIndex);
    expect_no_object(call(get_fcip_pe_associators, "7_x", "KESTO_FCPortProtocolEndPoint"));
    EXPECT_EQ(emulator::calls("pm_cim_find_interface"),
              std::vector<std::string>{"pm_cim_find_interface op=1 if=0x0000012d"}); // 301
}

TEST_F(AssociatorsTest, LanEndpointReadsThePortAtTheStartOfItsKey) {
    const Texts port{port_instance(End::EthernetPort, "KESTO_EthernetPort", GIGABIT_PORT)};
    for (const char* key :
         {"-1694433280:02:00:00:00:00:10", "-1694433280_10.1.1.1", ":-1694433280", "_-1694433280"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(
            found(End::EthernetPort, get_lan_endpoint_associators, key, "KESTO_EthernetPortProtocolEndpoint"),
            port);
    }
    EXPECT_EQ(
        found(End::EthernetPort, get_lan_endpoint_associators, "402:x", "KESTO_EthernetPortProtocolEndpoint"),
        Texts{});
}

// The port of a LAN endpoint is handed over with the request's properties; a port's instance by the platform
// is asked for with the list as it came.
TEST_F(AssociatorsTest, PortsBuiltByThePlatformGetThePropertyListToo) {
    const char* properties[] = {"DeviceID", nullptr};
    struct Row {
        AssociatorsFn* member;
        const char *key, *asked;
    };
    for (const Row& row :
         {Row{get_lan_endpoint_associators, GIGABIT_PORT_TEXT, "KESTO_EthernetPortProtocolEndpoint"},
          Row{get_eth_stat_associators, GIGABIT_PORT_TEXT, "KESTO_EthernetPortStatisticalData"},
          Row{get_ip_pe_associators, "7_x", "KESTO_IPEthernetEndpoint"},
          Row{get_fcip_pe_associators, "7_x", "KESTO_FCPortProtocolEndPoint"},
          Row{get_fcip_pe_associators, "7_x", "KESTO_SwitchHostedFCIPAccessPoint"},
          Row{get_ip_pe_associators, "7_x", "KESTO_SwitchHostedIPAccessPoint"},
          Row{get_tcp_pe_associators, "7", "KESTO_SwitchHostedTCPAccessPoint"}}) {
        SCOPED_TRACE(row.asked);
        const Answer answer = call(row.member, row.key, row.asked, properties);
        ASSERT_EQ(answer.instances.size(), 1U);
        ASSERT_EQ(answer.instances[0].filters().size(), 1U);
        EXPECT_EQ(answer.instances[0].filters()[0].properties, std::vector<std::string>{"DeviceID"});
    }
}

TEST_F(AssociatorsTest, ResultClassAndRolesAreNotLookedAt) {
    const Answer answer = walk([&](const CMPIResult* result) {
        return get_fcip_pe_associators("7_x", "KESTO_FCIPTCPEndpoint", "KESTO_NoSuchClass", "NoRole",
                                       "NoRole", nullptr, result, NAMESPACE);
    });
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(identity(End::TcpEndpoint, answer.instances[0]),
              instance(End::TcpEndpoint, "KESTO_TCPProtocolEndPoint", BY_NUMBER));
}

} // namespace
