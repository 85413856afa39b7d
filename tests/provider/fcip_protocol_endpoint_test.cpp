// KESTO_FCIPProtocolEndPoint: its instances, its object paths and its walkers, and with them what all
// builders, fillers and walkers have in common.
#include <string>
#include <vector>

#include "include/classes.h"
#include "tests/provider/tunnel_switch.h"
#include "tests/support/rows.h"

namespace {

using namespace provider_tests;
using emulator::Effect;
using test_support::address;
using test_support::Answer;
using test_support::Failure;
using test_support::Filter;
using test_support::filter_for;
using test_support::Make;
using test_support::NAMESPACE;
using test_support::Object;
using test_support::printed_by;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::Sets;
using test_support::Value;
using Calls = std::vector<std::string>;
using Names = std::vector<std::string>;

constexpr const char* CLASS = "KESTO_FCIPProtocolEndPoint";
constexpr const char* BUILDER = "fcip_pe_build_instance";

class FcipEndpointTest : public TunnelSwitchTest {
  protected:
    // Builds from `link` after the switch was brought to `link` and `profile`; `trace` is what was printed.
    RecordedInstance build(const char** properties = nullptr) {
        update();
        RecordedInstance instance;
        trace = printed_by([&] {
            instance = built([&] { return fcip_pe_build_instance(CLASS, NAMESPACE, &link, properties); });
        });
        return instance;
    }
    RecordedPath fill() {
        update();
        RecordedPath path;
        trace = printed_by(
            [&] { path = built([&] { return fcip_pe_fill_reference(CLASS, NAMESPACE, &link); }); });
        return path;
    }
    // The endpoint's Name in the instance and in the path.
    std::pair<std::string, std::string> names() {
        return {build().value("Name").text(), fill().key("Name").text()};
    }
    static std::pair<std::string, std::string> both(const std::string& name) { return {name, name}; }
    static void fault(const char* symbol, Effect effect) {
        emulator::Fault fault;
        fault.symbol = symbol;
        fault.effect = effect;
        emulator::add_fault(fault);
    }

    std::string trace;
};

// ---- The instance. ----

TEST_F(FcipEndpointTest, PropertiesStandInTheirOrder) {
    EXPECT_EQ(build().sets(), (Sets{{"SystemCreationClassName", CMPI_chars, "KESTO_LogicalComputerSystem"},
                                    {"SystemName", CMPI_chars, "20:0a:00:0d:ec:12:34"},
                                    {"Name", CMPI_chars, "5_10.1.1.1_10.1.1.2"},
                                    {"CreationClassName", CMPI_chars, "KESTO_FCIPProtocolEndPoint"},
                                    {"NameFormat", CMPI_chars, "Other"},
                                    {"TunnelID", CMPI_uint16, 5},
                                    {"RemoteIPAddress", CMPI_chars, "10.1.1.2"},
                                    {"LocalIPAddress", CMPI_chars, "10.1.1.1"},
                                    {"RemoteWWN", CMPI_chars, "20:00:00:0d:ec:04:05:06"},
                                    {"LocalWWN", CMPI_chars, "20:00:00:0d:ec:01:02:03"},
                                    {"CommittedRate", CMPI_uint32, 1000000},
                                    {"Compression", CMPI_boolean, true},
                                    {"SelectiveACK", CMPI_boolean, true},
                                    {"WAN_TOV", CMPI_boolean, true},
                                    {"PathMTU", CMPI_boolean, true},
                                    {"MaxRetransmissions", CMPI_uint32, 4},
                                    {"KeepAliveTimeout", CMPI_uint32, 60},
                                    {"RetransmitTime", CMPI_uint16, 29775},
                                    {"ProtocolIFType", CMPI_uint16, 56}}));
}

TEST_F(FcipEndpointTest, InstanceIsMadeOnAPathOfTheRequestWithTheHostName) {
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.path(), RecordedPath(NAMESPACE, CLASS, {}, HOST));
}

TEST_F(FcipEndpointTest, CallsOfTheBuilderStandInTheirOrder) {
    broker.clear_calls();
    build();
    const Calls calls = broker.call_texts();
    ASSERT_EQ(calls.size(), 3u + 19u + 1u);
    EXPECT_EQ(calls[0], "newObjectPath root/kesto KESTO_FCIPProtocolEndPoint");
    EXPECT_EQ(calls[1], "setHostname \"switch-a.example.net\"");
    EXPECT_EQ(calls[2], "newInstance KESTO_FCIPProtocolEndPoint");
    for (std::size_t i = 3; i < 22; ++i)
        EXPECT_TRUE(calls[i].starts_with("setProperty ")) << calls[i];
    EXPECT_EQ(calls[22], "setPropertyFilter properties=NULL keys={}");
}

TEST_F(FcipEndpointTest, FilterIsTheRequestsPropertiesAndAnEmptyKeyList) {
    const char* properties[] = {"Name", "TunnelID", nullptr};
    EXPECT_EQ(build(properties).filters(), (std::vector<Filter>{filter_for(Names{"Name", "TunnelID"})}));
    const char* none[] = {nullptr};
    EXPECT_EQ(build(none).filters(), (std::vector<Filter>{filter_for(Names{})}));
    EXPECT_EQ(build(nullptr).filters(), (std::vector<Filter>{filter_for(std::nullopt)}));
}

TEST_F(FcipEndpointTest, PropertiesAreSetWhateverTheFilter) {
    const char* properties[] = {"Name", nullptr};
    const RecordedInstance instance = build(properties);
    EXPECT_EQ(instance.sets().size(), 19u);
    EXPECT_EQ(instance.sets_before_filter(), 19u);
}

TEST_F(FcipEndpointTest, BuilderTracesItsEntryAndExit) {
    build();
    EXPECT_EQ(trace, entering(BUILDER) + exiting(BUILDER));
}

TEST_F(FcipEndpointTest, ProfileIsAskedForByTheLinksEntity) {
    build();
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"), (Calls{"fcip_get_entity_entry op=1 id=3 5"}));
}

TEST_F(FcipEndpointTest, SystemIsThatOfTheFcipInterfacesVsan) {
    build();
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), (Calls{"pm_cim_get_port_info op=1 if=0x00000011"}));
    EXPECT_EQ(emulator::calls("dm_cim_get_dmEntry"), (Calls{"dm_cim_get_dmEntry vsan=10 1"}));
}

TEST_F(FcipEndpointTest, ClassNameOfTheInstanceIsTheCallersSpelling) {
    const RecordedInstance instance = built(
        [&] { return fcip_pe_build_instance("kesto_fcipprotocolendpoint", NAMESPACE, &link, nullptr); });
    EXPECT_EQ(instance.class_name(), "kesto_fcipprotocolendpoint");
    EXPECT_EQ(instance.value("CreationClassName"), "KESTO_FCIPProtocolEndPoint");
}

// ---- The object path. ----

TEST_F(FcipEndpointTest, KeysStandInTheirOrder) {
    EXPECT_EQ(fill(), RecordedPath(NAMESPACE, CLASS,
                                   {{"SystemName", CMPI_chars, "20:0a:00:0d:ec:12:34"},
                                    {"SystemCreationClassName", CMPI_chars, "KESTO_LogicalComputerSystem"},
                                    {"CreationClassName", CMPI_chars, "KESTO_FCIPProtocolEndPoint"},
                                    {"Name", CMPI_chars, "5_10.1.1.1_10.1.1.2"}}));
}

TEST_F(FcipEndpointTest, PathHasNoHostName) {
    EXPECT_EQ(fill().host(), std::nullopt);
}

TEST_F(FcipEndpointTest, FillerPrintsNothing) {
    fill();
    EXPECT_EQ(trace, "");
}

TEST_F(FcipEndpointTest, FillerFormatsAddressesInto20Bytes) {
    emulator::clear_calls();
    fill();
    EXPECT_EQ(emulator::calls("ip_addr_to_str"),
              (Calls{"ip_addr_to_str 10.1.1.1 20", "ip_addr_to_str 10.1.1.2 20"}));
}

TEST_F(FcipEndpointTest, BuilderFormatsAddressesInto128Bytes) {
    emulator::clear_calls();
    build();
    for (const std::string& call : emulator::calls("ip_addr_to_str"))
        EXPECT_TRUE(call.ends_with(" 128")) << call;
}

TEST_F(FcipEndpointTest, ClassNameOfThePathIsTheCallersSpelling) {
    const RecordedPath path =
        built([&] { return fcip_pe_fill_reference("kesto_fcipprotocolendpoint", NAMESPACE, &link); });
    EXPECT_EQ(path.class_name(), "kesto_fcipprotocolendpoint");
    EXPECT_EQ(path.key("CreationClassName"), "KESTO_FCIPProtocolEndPoint");
}

// ---- The name. ----

TEST_F(FcipEndpointTest, LinkIndexFourIsTunnelFiveInInstanceAndPath) {
    EXPECT_EQ(names(), both("5_10.1.1.1_10.1.1.2"));
}

TEST_F(FcipEndpointTest, LinkIndexZeroIsTunnelOne) {
    link.kfmFcipLinkIndex = 0;
    EXPECT_EQ(names(), both("1_10.1.1.1_10.1.1.2"));
    EXPECT_EQ(build().value("TunnelID"), 1);
}

TEST_F(FcipEndpointTest, NameIsCutTo30CharactersInInstanceAndPath) {
    link.kfmFcipLinkIndex = 0;
    profile.kfmFcipEntityAddress = address("192.168.100.100");
    link.kfmFcipLinkRemFcipEntityAddress = address("192.168.100.101");
    EXPECT_EQ(names(), both("1_192.168.100.100_192.168.100."));
    EXPECT_EQ(build().value("RemoteIPAddress"), "192.168.100.101");
    EXPECT_EQ(build().value("LocalIPAddress"), "192.168.100.100");
}

TEST_F(FcipEndpointTest, NameOf30CharactersIsWhole) {
    link.kfmFcipLinkIndex = 0;
    profile.kfmFcipEntityAddress = address("192.168.10.100");
    link.kfmFcipLinkRemFcipEntityAddress = address("192.168.1.101");
    EXPECT_EQ(names(), both("1_192.168.10.100_192.168.1.101"));
}

TEST_F(FcipEndpointTest, Ipv6AddressIsCutTo19CharactersInThePathOnly) {
    link.kfmFcipLinkIndex = 0;
    profile.kfmFcipEntityAddress = address("2001:db8:1234:5678::1");
    link.kfmFcipLinkRemFcipEntityAddress = address("2001:db8::2");
    EXPECT_EQ(names().first, "1_2001:db8:1234:5678::1_2001:d");
    EXPECT_EQ(names().second, "1_2001:db8:1234:5678:_2001:db8");
    EXPECT_EQ(build().value("LocalIPAddress"), "2001:db8:1234:5678::1");
}

TEST_F(FcipEndpointTest, TunnelNumberIsCutTo16BitsInTheTunnelIdOnly) {
    link.kfmFcipLinkIndex = 65535;
    EXPECT_EQ(build().value("TunnelID"), 0);
    EXPECT_EQ(names(), both("65536_10.1.1.1_10.1.1.2"));
}

TEST_F(FcipEndpointTest, TunnelNumberAbove31BitsPrintsNegative) {
    link.kfmFcipLinkIndex = 0x7FFFFFFF;
    EXPECT_EQ(names(), both("-2147483648_10.1.1.1_10.1.1.2"));
}

// ---- Single values. ----

TEST_F(FcipEndpointTest, CompressionIsOffOnlyForModeOne) {
    for (const std::uint32_t mode : {0u, 2u, 3u, 257u}) {
        link.kfmFcipLinkExtIpCompression = mode;
        EXPECT_EQ(build().value("Compression"), true) << mode;
    }
    link.kfmFcipLinkExtIpCompression = 1;
    EXPECT_EQ(build().value("Compression"), false);
}

TEST_F(FcipEndpointTest, SackByteStandsForTheWanTimeoutToo) {
    for (const std::uint32_t option : {0u, 1u, 2u, 255u}) {
        profile.kfmFcipEntitySackOption = option;
        const RecordedInstance instance = build();
        EXPECT_EQ(instance.value("SelectiveACK"), option);
        EXPECT_EQ(instance.value("WAN_TOV"), option);
    }
}

TEST_F(FcipEndpointTest, OnlyTheLowByteOfAFlagCounts) {
    profile.kfmFcipEntitySackOption = 0x100;
    profile.kfmFcipEntityPmtuEnable = 0x302;
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("SelectiveACK"), 0);
    EXPECT_EQ(instance.value("WAN_TOV"), 0);
    EXPECT_EQ(instance.value("PathMTU"), 2);
}

TEST_F(FcipEndpointTest, ConstantsDoNotFollowTheRow) {
    profile.kfmFcipEntityMinRetransmitTime = 200;
    for (const std::uint32_t index : {0u, 4u, 100u}) {
        link.kfmFcipLinkIndex = index;
        const RecordedInstance instance = build();
        EXPECT_EQ(instance.value("RetransmitTime"), 29775);
        EXPECT_EQ(instance.value("ProtocolIFType"), 56);
    }
}

TEST_F(FcipEndpointTest, NumbersOfTheProfileAreUnsigned) {
    profile.kfmFcipEntityMaxBandwidth = 0xFFFFFFFF;
    profile.kfmFcipEntityMaxRetransmissions = 0x80000000;
    profile.kfmFcipEntityKeepAliveTimeout = 0xFFFFFFFE;
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.value("CommittedRate"), 4294967295u);
    EXPECT_EQ(instance.value("MaxRetransmissions"), 2147483648u);
    EXPECT_EQ(instance.value("KeepAliveTimeout"), 4294967294u);
}

// ---- What fails. ----

TEST_F(FcipEndpointTest, MissingProfileIsNull) {
    emulator::remove_entity(3);
    RecordedInstance instance;
    EXPECT_EQ(printed_by([&] {
                  instance = built([&] { return fcip_pe_build_instance(CLASS, NAMESPACE, &link, nullptr); });
              }),
              entering(BUILDER));
    EXPECT_EQ(instance.kind(), Object::Null);
    const RecordedPath path = built([&] { return fcip_pe_fill_reference(CLASS, NAMESPACE, &link); });
    EXPECT_EQ(path.kind(), Object::Null);
    EXPECT_EQ(broker.call_texts(), Calls{}) << "nothing is made without the profile";
}

TEST_F(FcipEndpointTest, ProfileThatComesWithAFailureIsReleasedAndNull) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow}) {
        emulator::clear_faults();
        fault("fcip_get_entity_entry", effect);
        EXPECT_EQ(build().kind(), Object::Null);
        EXPECT_EQ(trace, entering(BUILDER));
        EXPECT_EQ(fill().kind(), Object::Null);
        EXPECT_EQ(trace, "");
    }
}

TEST_F(FcipEndpointTest, UnknownPortLeavesTheSystemNameEmptyInTheInstance) {
    emulator::remove_port(17);
    EXPECT_EQ(build().value("SystemName"), "");
    EXPECT_EQ(trace, entering(BUILDER) + "error : pm_cim_get_port_info " + exiting(BUILDER));
}

TEST_F(FcipEndpointTest, UnknownPortReadsAsUnknownInThePath) {
    emulator::remove_port(17);
    EXPECT_EQ(fill().key("SystemName"), "Unknown");
}

TEST_F(FcipEndpointTest, MissingDomainReadsAsNullInTheInstanceAndUnknownInThePath) {
    emulator::remove_vsan(10);
    EXPECT_EQ(build().value("SystemName"), "NULL");
    EXPECT_EQ(fill().key("SystemName"), "Unknown");
}

TEST_F(FcipEndpointTest, PathThatCannotBeMadeIsNullWithoutAnExitTrace) {
    for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
        broker.fail_nth(Make::ObjectPath, 1, how);
        EXPECT_EQ(build().kind(), Object::Null);
        EXPECT_EQ(trace, entering(BUILDER));
        EXPECT_EQ(broker.made(Make::Instance), 0u);
    }
}

TEST_F(FcipEndpointTest, InstanceThatCannotBeMadeIsNullWithoutAnExitTrace) {
    broker.fail_nth(Make::Instance, 1, Failure::Null);
    EXPECT_EQ(build().kind(), Object::Null);
    EXPECT_EQ(trace, entering(BUILDER));
}

TEST_F(FcipEndpointTest, InstanceWithoutAHandleIsReturnedUntouched) {
    broker.fail_nth(Make::Instance, 1, Failure::WithoutHandle);
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.kind(), Object::WithoutHandle);
    EXPECT_EQ(trace, entering(BUILDER));
    EXPECT_EQ(calls_of(broker.call_texts(), "setProperty"), Calls{});
    EXPECT_EQ(calls_of(broker.call_texts(), "setPropertyFilter"), Calls{});
}

TEST_F(FcipEndpointTest, KeyPathThatCannotBeMadeIsNull) {
    broker.fail_nth(Make::ObjectPath, 1, Failure::Null);
    EXPECT_EQ(fill().kind(), Object::Null);
    EXPECT_EQ(calls_of(broker.call_texts(), "addKey"), Calls{});
}

TEST_F(FcipEndpointTest, ObjectsOfTheBrokerAreNotReleased) {
    build();
    fill();
    EXPECT_EQ(calls_of(broker.call_texts(), "releaseObjectPath"), Calls{});
    EXPECT_EQ(calls_of(broker.call_texts(), "releaseInstance"), Calls{});
}

// ---- The walkers. ----

class FcipEndpointWalkTest : public FcipEndpointTest {
  protected:
    void SetUp() override {
        FcipEndpointTest::SetUp();
        add_two_tunnels();
    }

    Answer walk_instances(const char* className = CLASS) {
        int value = -1;
        const Answer answer = walk(
            [&](const CMPIResult* result) {
                return get_all_fcip_pe_instances(className, result, nullptr, NAMESPACE);
            },
            &value);
        EXPECT_EQ(value, 0);
        return answer;
    }
    Answer walk_references(const char* className = CLASS) {
        int value = -1;
        const Answer answer = walk(
            [&](const CMPIResult* result) {
                return get_all_fcip_pe_references(className, result, NAMESPACE);
            },
            &value);
        EXPECT_EQ(value, 0);
        return answer;
    }

    // The tunnels of what was returned: numbers, "NULL" and "handle".
    static Calls tunnels(const Answer& answer) {
        Calls texts;
        for (const RecordedInstance& instance : answer.instances) {
            if (instance.kind() == Object::Null) {
                texts.push_back("NULL");
            } else if (instance.kind() == Object::WithoutHandle) {
                texts.push_back("handle");
            } else {
                texts.push_back(instance.value("TunnelID").text());
            }
        }
        for (const RecordedPath& path : answer.paths) {
            const bool named = path.is_valid() && !path.keys().empty();
            texts.push_back(named             ? path.key("Name").text().substr(0, 1)
                            : path.is_valid() ? "no keys"
                                              : "NULL");
        }
        return texts;
    }
    static Calls next_requests(std::size_t count) {
        const Calls all{"fcip_get_link_entry op=2 key={0,0} 30 1", "fcip_get_link_entry op=2 key={3,4} 30 1",
                        "fcip_get_link_entry op=2 key={3,5} 30 1", "fcip_get_link_entry op=2 key={3,6} 30 1"};
        return Calls(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
    }
};

TEST_F(FcipEndpointWalkTest, EveryLinkIsReturnedInTableOrder) {
    EXPECT_EQ(tunnels(walk_instances()), (Calls{"5", "6", "7"}));
    EXPECT_EQ(tunnels(walk_references()), (Calls{"5", "6", "7"}));
}

TEST_F(FcipEndpointWalkTest, EachRequestCarriesTheKeyOfTheRowBefore) {
    EXPECT_EQ(calls_of(walk_instances().platformCalls, "fcip_get_link_entry"), next_requests(4));
    EXPECT_EQ(calls_of(walk_references().platformCalls, "fcip_get_link_entry"), next_requests(4));
}

TEST_F(FcipEndpointWalkTest, WalkersTraceTheirEntryOnly) {
    const std::string each = entering(BUILDER) + exiting(BUILDER);
    EXPECT_EQ(walk_instances().output, entering("get_all_fcip_pe_instances") + each + each + each);
    EXPECT_EQ(walk_references().output, entering("get_all_fcip_pe_references"));
}

TEST_F(FcipEndpointWalkTest, NoLinksReturnNothing) {
    emulator::clear_links();
    EXPECT_TRUE(walk_instances().returned.empty());
    EXPECT_TRUE(walk_references().returned.empty());
}

TEST_F(FcipEndpointWalkTest, AnyLetterCaseIsServedAndKept) {
    for (const char* className :
         {"kesto_fcipprotocolendpoint", "KESTO_FCIPPROTOCOLENDPOINT", "KESTO_FCIPProtocolEndPOint"}) {
        const Answer instances = walk_instances(className);
        ASSERT_EQ(instances.instances.size(), 3u);
        for (const RecordedInstance& instance : instances.instances)
            EXPECT_EQ(instance.class_name(), className);
        const Answer paths = walk_references(className);
        ASSERT_EQ(paths.paths.size(), 3u);
        for (const RecordedPath& path : paths.paths)
            EXPECT_EQ(path.class_name(), className);
    }
}

TEST_F(FcipEndpointWalkTest, RemoteFcipPortsAreServedByTheSameWalkers) {
    const Answer instances = walk_instances("KESTO_RemoteFCIPPort");
    ASSERT_EQ(instances.instances.size(), 3u);
    EXPECT_EQ(instances.instances[0].value("CreationClassName"), "KESTO_RemoteFCIPPort");
    EXPECT_NE(instances.output.find(entering("fcip_remote_pe_build_instance")), std::string::npos);
    const Answer paths = walk_references("KESTO_RemoteFCIPPort");
    ASSERT_EQ(paths.paths.size(), 3u);
    EXPECT_EQ(paths.paths[0].key("CreationClassName"), "KESTO_RemoteFCIPPort");
}

TEST_F(FcipEndpointWalkTest, LinksAreSkippedForAnyOtherClass) {
    for (const char* className : {"KESTO_IPProtocolEndPoint", "KESTO_FCIPProtocolEndPoin", ""}) {
        const Answer instances = walk_instances(className);
        EXPECT_TRUE(instances.returned.empty());
        EXPECT_EQ(calls_of(instances.platformCalls, "fcip_get_link_entry"), next_requests(4));
        EXPECT_TRUE(walk_references(className).returned.empty());
    }
}

TEST_F(FcipEndpointWalkTest, ResultIsNotClosed) {
    EXPECT_EQ(walk_instances().doneCalls, 0u);
    EXPECT_EQ(walk_references().doneCalls, 0u);
}

TEST_F(FcipEndpointWalkTest, FailedRequestEndsTheWalkWithWhatWasSent) {
    const Calls all{"5", "6", "7"};
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        for (const bool instances : {true, false}) {
            for_each_platform_failure("fcip_get_link_entry", effect, [&](std::size_t nth) {
                const Answer answer = instances ? walk_instances() : walk_references();
                const std::size_t sent = std::min<std::size_t>(nth - 1, 3);
                EXPECT_EQ(tunnels(answer),
                          Calls(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(sent)));
                EXPECT_EQ(calls_of(answer.platformCalls, "fcip_get_link_entry"),
                          next_requests(std::min<std::size_t>(nth, 4)));
            });
        }
    }
}

TEST_F(FcipEndpointWalkTest, LinkWithoutAProfileIsReturnedAsNullAndTheWalkGoesOn) {
    const Calls all{"5", "6", "7"};
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow}) {
        for (const bool instances : {true, false}) {
            for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t nth) {
                Calls expected = all;
                if (nth <= 3) expected[nth - 1] = "NULL";
                EXPECT_EQ(tunnels(instances ? walk_instances() : walk_references()), expected);
            });
        }
    }
}

// One test a kind of object and failure: the nth object that the broker makes fails, the others are as ever.
TEST_F(FcipEndpointWalkTest, EachFailureOfTheBrokerCostsOneInstance) {
    const Calls all{"5", "6", "7"};
    struct {
        Make what;
        Failure how;
        const char* returned;
    } const failures[] = {{Make::ObjectPath, Failure::Null, "NULL"},
                          {Make::ObjectPath, Failure::WithoutHandle, "NULL"},
                          {Make::Instance, Failure::Null, "NULL"},
                          {Make::Instance, Failure::WithoutHandle, "handle"}};
    for (const auto& failure : failures) {
        EXPECT_EQ(for_each_broker_failure(failure.what, failure.how,
                                          [&](std::size_t nth) {
                                              Calls expected = all;
                                              if (nth <= 3) expected[nth - 1] = failure.returned;
                                              EXPECT_EQ(tunnels(walk_instances()), expected);
                                          }),
                  3u);
    }
}

TEST_F(FcipEndpointWalkTest, EachFailureOfTheBrokerCostsOnePath) {
    const Calls all{"5", "6", "7"};
    EXPECT_EQ(for_each_broker_failure(Make::ObjectPath, Failure::Null,
                                      [&](std::size_t nth) {
                                          Calls expected = all;
                                          if (nth <= 3) expected[nth - 1] = "NULL";
                                          EXPECT_EQ(tunnels(walk_references()), expected);
                                      }),
              3u);
}

TEST_F(FcipEndpointWalkTest, EveryServiceMayFailWithoutStoppingTheWalk) {
    for (const char* symbol :
         {"pm_cim_get_port_info", "dm_cim_get_dmEntry", "vsan_cim_get_vsan_admindomain_key", "ip_addr_to_str",
          "system_cim_get_switch_wwn"}) {
        emulator::clear_faults();
        emulator::fail_always(symbol);
        EXPECT_EQ(tunnels(walk_instances()), (Calls{"5", "6", "7"})) << symbol;
        EXPECT_EQ(walk_references().paths.size(), 3u) << symbol;
    }
}

// ---- Through the operations, and back. ----

TEST_F(FcipEndpointWalkTest, EveryEnumeratedNameIsFoundAgain) {
    for (const RecordedPath& path : enumerate_names(CLASS).paths) {
        const Answer answer = get_instance(CLASS, {{"Name", path.key("Name").text()}});
        ASSERT_EQ(answer.instances.size(), 1u) << path;
        EXPECT_EQ(answer.instances[0].value("Name"), path.key("Name"));
    }
}

TEST_F(FcipEndpointTest, TunnelNumberAbove31BitsFindsItsWayBack) {
    emulator::clear_links();
    link.kfmFcipLinkIndex = 0x9B00FFFF;
    update();
    const Answer names = enumerate_names(CLASS);
    ASSERT_EQ(names.paths.size(), 1u);
    EXPECT_EQ(names.paths[0].key("Name"), "-1694433280_10.1.1.1_10.1.1.2");
    const Answer answer = get_instance(CLASS, {{"Name", names.paths[0].key("Name").text()}});
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].value("Name"), "-1694433280_10.1.1.1_10.1.1.2");
}

} // namespace
