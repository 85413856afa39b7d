// Profiles, VSANs, the computer system behind a VSAN, the IP configuration, Ethernet ports and addresses, as
// they are read from the switch.
#include "platform/fcip_config.h"

#include <cstring>
#include <string>
#include <vector>

#include "platform/platform_services.h"
#include "tests/support/provider_test.h"
#include "tests/support/rows.h"

namespace {

using emulator::Effect;
using test_support::address;
using test_support::Answer;
using test_support::entity_row;
using test_support::Filter;
using test_support::link_row;
using test_support::NAMESPACE;
using test_support::Object;
using test_support::port_row;
using test_support::printed_by;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using Calls = std::vector<std::string>;

constexpr std::uint8_t FCIP = 11;
constexpr std::uint8_t ETHERNET = 26;
constexpr std::uint8_t MANAGEMENT = 5;

class FcipConfigTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        emulator::load_empty();
        emulator::clear_calls();
    }
};

// ---- The profile whose number is exactly the key. ----

class ProfileOfKeyTest : public FcipConfigTest {
  protected:
    void SetUp() override {
        FcipConfigTest::SetUp();
        for (const std::uint32_t id : {1u, 2u, 10u, 0x9B000000u}) {
            FcipEntityEntry row = entity_row(id);
            row.kfmFcipEntityMaxJitter = id + 1; // the last word of the row
            emulator::add_entity(row);
        }
    }

    // The result, and the id that was stored (0: nothing was).
    static std::pair<int, std::uint32_t> lookup(const char* key) {
        FcipEntityEntry out{};
        const int result = locked([&] { return get_fcip_entity_from_key_value(mts_q, key, &out); });
        EXPECT_EQ(out.kfmFcipEntityMaxJitter, out.kfmFcipEntityId ? out.kfmFcipEntityId + 1 : 0)
            << "the row was not copied whole";
        return {result, out.kfmFcipEntityId};
    }
};
using Found = std::pair<int, std::uint32_t>;

TEST_F(ProfileOfKeyTest, TheNumberItselfFindsTheProfile) {
    EXPECT_EQ(lookup("1"), Found(1, 1));
    EXPECT_EQ(lookup("10"), Found(1, 10));
}

TEST_F(ProfileOfKeyTest, AnyOtherSpellingOfTheNumberFindsNothing) {
    for (const char* key : {"01", " 1", "1 ", "1_0", "1_10.1.1.1", "+1", "", "3", "0", "x"})
        EXPECT_EQ(lookup(key), Found(0, 0)) << '"' << key << '"';
}

TEST_F(ProfileOfKeyTest, NumbersAbove31BitsAreSpelledNegative) {
    EXPECT_EQ(lookup("-1694498816"), Found(1, 0x9B000000));
    EXPECT_EQ(lookup("2600468480"), Found(0, 0));
}

TEST_F(ProfileOfKeyTest, TheWalkGoesOnBehindTheMatch) {
    lookup("1");
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=2 5", "fcip_get_entity_entry op=2 id=10 5",
                     "fcip_get_entity_entry op=2 id=2600468480 5"}));
}

TEST_F(ProfileOfKeyTest, SuccessWithoutARowIsAskedAgainWithTheSameKey) {
    emulator::Fault fault;
    fault.symbol = "fcip_get_entity_entry";
    fault.first = 2;
    fault.last = 4;
    fault.effect = Effect::SucceedWithoutRow;
    emulator::add_fault(fault);
    EXPECT_EQ(lookup("2"), Found(1, 2));
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=1 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=1 5", "fcip_get_entity_entry op=2 id=2 5",
                     "fcip_get_entity_entry op=2 id=10 5", "fcip_get_entity_entry op=2 id=2600468480 5"}));
}

TEST_F(ProfileOfKeyTest, FailureEndsTheWalkWithWhatWasFoundBefore) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow}) {
        for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t nth) {
            EXPECT_EQ(lookup("2"), nth <= 2 ? Found(0, 0) : Found(1, 2));
        });
    }
}

TEST_F(ProfileOfKeyTest, EmptyTableFindsNothing) {
    emulator::clear_entities();
    EXPECT_EQ(lookup("1"), Found(0, 0));
}

// ---- The profile whose number the key begins with. ----

class ProfileOfNumberTest : public ProfileOfKeyTest {
  protected:
    static Found lookup(const char* key) {
        FcipEntityEntry out{};
        const int result = locked([&] { return get_fcip_entity_from(key, &out); });
        EXPECT_EQ(out.kfmFcipEntityMaxJitter, out.kfmFcipEntityId ? out.kfmFcipEntityId + 1 : 0)
            << "the row was not copied whole";
        return {result, out.kfmFcipEntityId};
    }
};

TEST_F(ProfileOfNumberTest, NullKeyIsAFailure) {
    EXPECT_EQ(lookup(nullptr), Found(-1, 0));
    EXPECT_EQ(emulator::count("fcip_get_entity_entry"), 0u);
}

TEST_F(ProfileOfNumberTest, AnySpellingOfTheNumberFindsTheProfile) {
    for (const char* key : {"2", "02", " 2", "2_0", "2abc"})
        EXPECT_EQ(lookup(key), Found(0, 2)) << '"' << key << '"';
    EXPECT_EQ(lookup("-1694498816"), Found(0, 0x9B000000));
}

TEST_F(ProfileOfNumberTest, NoMatchAnswersZeroToo) {
    for (const char* key : {"3", "", "x", "4294967297"})
        EXPECT_EQ(lookup(key), Found(0, 0)) << '"' << key << '"';
}

TEST_F(ProfileOfNumberTest, TheWalkStopsAtTheMatch) {
    lookup("2");
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5"}));
}

TEST_F(ProfileOfNumberTest, TheMatchIsTraced) {
    EXPECT_EQ(printed_by([] { lookup("2"); }), "Match Found ");
    EXPECT_EQ(printed_by([] { lookup("3"); }), "");
}

TEST_F(ProfileOfNumberTest, EmptyTableLeavesTheOutput) {
    emulator::clear_entities();
    EXPECT_EQ(lookup("1"), Found(0, 0));
}

TEST_F(ProfileOfNumberTest, FailuresEndTheWalk) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t nth) {
            EXPECT_EQ(lookup("2"), nth <= 2 ? Found(0, 0) : Found(0, 2));
        });
    }
}

// ---- The profile of a link. ----

class ProfileOfLinkTest : public ProfileOfKeyTest {
  protected:
    static Found lookup(std::uint32_t entityId) {
        const FcipLinkEntry link = link_row(entityId, 4, 17);
        FcipEntityEntry out{};
        const int result = locked([&] { return get_profile_from_link_entry(&link, &out); });
        EXPECT_EQ(out.kfmFcipEntityMaxJitter, out.kfmFcipEntityId ? out.kfmFcipEntityId + 1 : 0)
            << "the row was not copied whole";
        return {result, out.kfmFcipEntityId};
    }
    static constexpr const char* TRACE = "get_profile_from_link_entry : Error";
};

TEST_F(ProfileOfLinkTest, OneExactRequestFindsTheProfile) {
    EXPECT_EQ(lookup(2), Found(0, 2));
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"), (Calls{"fcip_get_entity_entry op=1 id=2 5"}));
}

TEST_F(ProfileOfLinkTest, SuccessPrintsTheErrorTextToo) {
    EXPECT_EQ(printed_by([] { lookup(2); }), TRACE);
}

TEST_F(ProfileOfLinkTest, FailureWithoutARowIsSilent) {
    EXPECT_EQ(printed_by([] { EXPECT_EQ(lookup(3), Found(-1, 0)); }), "");
    emulator::fail_call("fcip_get_entity_entry");
    EXPECT_EQ(printed_by([] { EXPECT_EQ(lookup(2), Found(-1, 0)); }), "");
}

TEST_F(ProfileOfLinkTest, FailureWithARowPrintsTheErrorText) {
    emulator::Fault fault;
    fault.symbol = "fcip_get_entity_entry";
    fault.effect = Effect::FailWithRow;
    emulator::add_fault(fault);
    EXPECT_EQ(printed_by([] { EXPECT_EQ(lookup(2), Found(-1, 0)); }), TRACE);
}

TEST_F(ProfileOfLinkTest, SuccessWithoutARowIsAFailure) {
    emulator::Fault fault;
    fault.symbol = "fcip_get_entity_entry";
    fault.effect = Effect::SucceedWithoutRow;
    emulator::add_fault(fault);
    EXPECT_EQ(lookup(2), Found(-1, 0));
}

// ---- The interfaces of a profile, and all profiles. ----

class ProfileInterfacesTest : public FcipConfigTest {
  protected:
    void SetUp() override {
        FcipConfigTest::SetUp();
        for (const std::uint32_t id : {1u, 2u})
            emulator::add_entity(entity_row(id));
        emulator::add_link(link_row(1, 0, 17));
        emulator::add_link(link_row(1, 1, 18));
    }

    // The if-indexes, or "null".
    static std::string interfaces(std::uint32_t entityId) {
        EntityIfList* list = locked([&] { return fcip_get_ifs_for_this_profile(entityId, mts_q); });
        if (list == nullptr) return "null";
        std::vector<std::uint32_t> words(list->count + 1);
        std::memcpy(words.data(), list, words.size() * sizeof words[0]);
        std::free(list);
        std::string text = "count " + std::to_string(words[0]);
        for (std::size_t i = 1; i < words.size(); ++i)
            text += " " + std::to_string(words[i]);
        return text;
    }
};

TEST_F(ProfileInterfacesTest, TheReplyIsTheCountAndTheIfIndexes) {
    EXPECT_EQ(interfaces(1), "count 2 17 18");
    EXPECT_EQ(interfaces(2), "count 0");
}

TEST_F(ProfileInterfacesTest, OneRequestGoesToTheFcipService) {
    interfaces(1);
    EXPECT_EQ(emulator::calls(),
              (Calls{"mutex_lock", "fcip_send_recv_with_mts_q code=8946 node=0xfe000000 service=60 id=1",
                     "mutex_unlock"}));
}

TEST_F(ProfileInterfacesTest, FailureWithoutAReplyIsNull) {
    EXPECT_EQ(interfaces(3), "null");
    emulator::fail_call("fcip_send_recv_with_mts_q");
    EXPECT_EQ(interfaces(1), "null");
}

TEST_F(ProfileInterfacesTest, TheStatusOfTheRequestDoesNotCount) {
    emulator::Fault fault;
    fault.symbol = "fcip_send_recv_with_mts_q";
    fault.effect = Effect::FailWithRow;
    emulator::add_fault(fault);
    EXPECT_EQ(interfaces(1), "count 2 17 18");
}

TEST_F(ProfileInterfacesTest, AllProfilesArePrintedInTableOrder) {
    int result = -1;
    const std::string output =
        printed_by([&] { result = locked([] { return get_all_fcip_entities(mts_q); }); });
    EXPECT_EQ(result, 0);
    const std::size_t first = output.find("FCIP Profile 1\n");
    const std::size_t second = output.find("FCIP Profile 2\n");
    EXPECT_EQ(first, 0u);
    EXPECT_NE(second, std::string::npos);
    EXPECT_EQ(output.find("FCIP Profile", second + 1), std::string::npos);
    EXPECT_NE(output.find("    Tunnels Using this Profile:"), std::string::npos);
    EXPECT_LT(output.find("    Tunnels Using this Profile:"), second) << "profile 2 has no tunnel";
}

TEST_F(ProfileInterfacesTest, AProfileWithoutAnInterfaceListEndsTheWalkWithOne) {
    for_each_platform_failure("fcip_send_recv_with_mts_q", Effect::Fail, [&](std::size_t nth) {
        int result = -1;
        const std::string output =
            printed_by([&] { result = locked([] { return get_all_fcip_entities(mts_q); }); });
        EXPECT_EQ(result, nth <= 2 ? 1 : 0);
        EXPECT_EQ(output.find("FCIP Profile 1\n"), nth == 1 ? std::string::npos : 0u);
        EXPECT_EQ(output.find("FCIP Profile 2\n") == std::string::npos, nth <= 2);
        EXPECT_EQ(emulator::count("fcip_get_entity_entry"), nth <= 2 ? nth : 3u);
    });
}

TEST_F(ProfileInterfacesTest, SuccessWithoutAProfileIsAskedAgain) {
    emulator::Fault fault;
    fault.symbol = "fcip_get_entity_entry";
    fault.first = 2;
    fault.last = 3;
    fault.effect = Effect::SucceedWithoutRow;
    emulator::add_fault(fault);
    printed_by([] { EXPECT_EQ(locked([] { return get_all_fcip_entities(mts_q); }), 0); });
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=1 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=2 5"}));
}

TEST_F(ProfileInterfacesTest, FailureEndsTheWalkNormally) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow}) {
        for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t) {
            printed_by([] { EXPECT_EQ(locked([] { return get_all_fcip_entities(mts_q); }), 0); });
        });
    }
}

TEST_F(ProfileInterfacesTest, NoProfilesPrintNothing) {
    emulator::clear_entities();
    EXPECT_EQ(printed_by([] { EXPECT_EQ(locked([] { return get_all_fcip_entities(mts_q); }), 0); }), "");
}

// ---- The VSAN of a port. ----

class VsanTest : public FcipConfigTest {
  protected:
    void SetUp() override {
        FcipConfigTest::SetUp();
        emulator::Port port = port_row(17, FCIP, 10);
        port.otherVsan = 4093;
        emulator::add_port(port);
        emulator::add_port(port_row(18, FCIP, 20));
        emulator::add_vsan({1, "default", true, "20:01:00:0d:ec:00:00:01"});
        emulator::add_vsan({10, "ten", true, "twenty characters ok"});
        emulator::add_vsan({20, "twenty", false, "never seen"});
        emulator::clear_calls();
    }

    // Calls a lookup that stores a VSAN: its result, the VSAN (777 = untouched) and what it printed.
    struct Answered {
        int result;
        std::uint32_t vsan;
        std::string output;
        friend bool operator==(const Answered&, const Answered&) = default;
    };
    template <typename Function>
    static Answered ask(Function&& function, std::uint32_t ifIndex) {
        Answered answered{0, 777, ""};
        answered.output =
            printed_by([&] { answered.result = locked([&] { return function(ifIndex, &answered.vsan); }); });
        return answered;
    }
    static void fault(const char* symbol, Effect effect) {
        emulator::Fault fault;
        fault.symbol = symbol;
        fault.effect = effect;
        emulator::add_fault(fault);
    }
};

TEST_F(VsanTest, VsanIdIsThatOfThePort) {
    EXPECT_EQ(ask(get_vsan_id, 17), (Answered{0, 10, ""}));
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), (Calls{"pm_cim_get_port_info op=1 if=0x00000011"}));
}

TEST_F(VsanTest, VsanIdOfAnUnknownPortFails) {
    EXPECT_EQ(ask(get_vsan_id, 99), (Answered{-1, 777, "error : pm_cim_get_port_info "}));
}

TEST_F(VsanTest, VsanIdFailsWithARowAsWithout) {
    fault("pm_cim_get_port_info", Effect::FailWithRow);
    EXPECT_EQ(ask(get_vsan_id, 17), (Answered{-1, 777, "error : pm_cim_get_port_info "}));
}

TEST_F(VsanTest, VsanFromIfIndexPrintsBothNumbersAndStoresTheFirst) {
    EXPECT_EQ(ask(get_vsan_from_ifindex, 17), (Answered{0, 10,
                                                        " fcip interface is in the vsan 10 \n"
                                                        " fcip interface is in the vsan 4093 \n"}));
    EXPECT_EQ(emulator::calls("pm_cmi_get_port_config"),
              (Calls{"pm_cmi_get_port_config 1 1 key={0x00000011,0x00000011} 4"}));
}

TEST_F(VsanTest, VsanFromIfIndexFailsSilently) {
    EXPECT_EQ(ask(get_vsan_from_ifindex, 99), (Answered{-1, 777, ""}));
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        emulator::clear_faults();
        fault("pm_cmi_get_port_config", effect);
        EXPECT_EQ(ask(get_vsan_from_ifindex, 17), (Answered{-1, 777, ""}));
    }
}

// ---- The name of the VSAN's computer system. ----

class VsanNameTest : public VsanTest {
  protected:
    // The whole buffer behind the call, '#' where nothing was written.
    struct Named {
        int result;
        std::string buffer;
        std::string output;
        friend bool operator==(const Named&, const Named&) = default;
    };
    static Named name_of(std::uint32_t ifIndex) {
        Named named{0, std::string(24, '#'), ""};
        named.output = printed_by(
            [&] { named.result = locked([&] { return get_vsan_wwn(ifIndex, named.buffer.data()); }); });
        return named;
    }
    static std::string padded(std::string text, char filler) {
        text.resize(24, filler);
        return text;
    }
};

TEST_F(VsanNameTest, NameOf20CharactersIsCopiedWithoutATerminator) {
    EXPECT_EQ(name_of(17), (Named{0, padded("twenty characters ok", '#'), ""}));
    EXPECT_EQ(emulator::calls("dm_cim_get_dmEntry"), (Calls{"dm_cim_get_dmEntry vsan=10 1"}));
}

TEST_F(VsanNameTest, LongerNameIsCutTo20Characters) {
    emulator::add_vsan({10, "ten", true, "20:0a:00:0d:ec:12:34:56"});
    EXPECT_EQ(name_of(17), (Named{0, padded("20:0a:00:0d:ec:12:34", '#'), ""}));
}

TEST_F(VsanNameTest, ShorterNameIsTerminated) {
    emulator::add_vsan({10, "ten", true, "switch-a"});
    const Named named = name_of(17);
    EXPECT_EQ(named.result, 0);
    EXPECT_STREQ(named.buffer.c_str(), "switch-a");
    EXPECT_EQ(named.buffer.substr(20), "####") << "nothing may be written behind 20 characters";
}

TEST_F(VsanNameTest, UnknownPortLeavesTheBuffer) {
    EXPECT_EQ(name_of(99), (Named{-1, padded("", '#'), "error : pm_cim_get_port_info "}));
    fault("pm_cim_get_port_info", Effect::FailWithRow);
    EXPECT_EQ(name_of(17), (Named{-1, padded("", '#'), "error : pm_cim_get_port_info "}));
}

TEST_F(VsanNameTest, PortWithoutARowFailsSilently) {
    fault("pm_cim_get_port_info", Effect::SucceedWithoutRow);
    EXPECT_EQ(name_of(17), (Named{-1, padded("", '#'), ""}));
}

TEST_F(VsanNameTest, MissingDomainReadsAsNull) {
    const Named named = name_of(18);
    EXPECT_EQ(named.result, -1);
    EXPECT_STREQ(named.buffer.c_str(), "NULL");
    EXPECT_EQ(named.output, "error : dm_cim_get_dmEntry ");
}

TEST_F(VsanNameTest, DomainThatFailsWithARowReadsAsNull) {
    fault("dm_cim_get_dmEntry", Effect::FailWithRow);
    const Named named = name_of(17);
    EXPECT_EQ(named.result, -1);
    EXPECT_STREQ(named.buffer.c_str(), "NULL");
}

TEST_F(VsanNameTest, DomainThatSucceedsIsAskedForItsKeyWithOrWithoutARecord) {
    fault("dm_cim_get_dmEntry", Effect::SucceedWithoutRow);
    const Named named = name_of(17);
    EXPECT_EQ(named.result, 0) << "the record is opaque, only the status counts";
    EXPECT_STREQ(named.buffer.c_str(), "") << "the platform has no key for it";
    EXPECT_EQ(named.output, "");
    EXPECT_EQ(emulator::count("vsan_cim_get_vsan_admindomain_key"), 1u);
}

// ---- The logical computer system. ----

class LogicalComputerTest : public VsanTest {
  protected:
    std::pair<RecordedPath, std::string> path_of(std::uint32_t ifIndex) {
        RecordedPath path;
        const std::string output = printed_by([&] {
            path = built([&] { return get_logical_computer_keys(ifIndex, NAMESPACE, broker.cmpi()); });
        });
        return {path, output};
    }
    std::pair<RecordedInstance, std::string> instance_of(std::uint32_t ifIndex) {
        const char* properties[] = {"Name", nullptr};
        RecordedInstance instance;
        const std::string output = printed_by([&] {
            instance = built(
                [&] { return get_logical_computer_instance(ifIndex, NAMESPACE, properties, broker.cmpi()); });
        });
        return {instance, output};
    }
    static constexpr const char* PATH_TRACE = "Entering get_logical_computer_keys\nvsan_index 10 \n";
    static constexpr const char* INSTANCE_TRACE = "Entering get_logical_computer_instance\nvsan_index 10 \n";
};

TEST_F(LogicalComputerTest, PathIsMadeByThePlatformFromTheVsanKey) {
    const auto [path, output] = path_of(17);
    EXPECT_EQ(output, PATH_TRACE);
    EXPECT_EQ(path.class_name(), "KESTO_LogicalComputerSystem");
    EXPECT_EQ(path.key("Name"), "twenty characters ok");
    EXPECT_EQ(emulator::calls(),
              (Calls{"mutex_lock", "pm_cim_get_port_info op=1 if=0x00000011", "vsan_cim_get_vsanEntry vsan=1",
                     "dm_cim_get_dmEntry vsan=10 1", "vsan_cim_get_vsan_key",
                     "switch_fill_reference_str KESTO_LogicalComputerSystem root/kesto twenty characters ok",
                     "mutex_unlock"}));
}

TEST_F(LogicalComputerTest, InstanceIsMadeByThePlatformFromTheVsanKey) {
    const auto [instance, output] = instance_of(17);
    EXPECT_EQ(output, INSTANCE_TRACE);
    EXPECT_EQ(instance.class_name(), "KESTO_LogicalComputerSystem");
    EXPECT_EQ(instance.value("Name"), "twenty characters ok");
    ASSERT_EQ(instance.filters().size(), 1u);
    EXPECT_EQ(instance.filters()[0].properties, (std::vector<std::string>{"Name"}));
    EXPECT_EQ(
        emulator::calls(),
        (Calls{"mutex_lock", "pm_cim_get_port_info op=1 if=0x00000011", "vsan_cim_get_vsanEntry vsan=1",
               "dm_cim_get_dmEntry vsan=10 1", "vsan_cim_get_vsan_key",
               "switch_build_instance_str KESTO_LogicalComputerSystem root/kesto twenty characters ok 0",
               "mutex_unlock"}));
}

TEST_F(LogicalComputerTest, VsanOneIsAskedForWhateverThePortsVsan) {
    emulator::remove_vsan(1);
    EXPECT_EQ(path_of(17),
              (std::pair<RecordedPath, std::string>(RecordedPath::of(Object::MinusOne), PATH_TRACE)));
    EXPECT_EQ(instance_of(17).first.kind(), Object::MinusOne);
    EXPECT_EQ(emulator::count("dm_cim_get_dmEntry"), 0u);
}

TEST_F(LogicalComputerTest, MissingDomainIsMinusOne) {
    const auto [path, output] = path_of(18);
    EXPECT_EQ(path.kind(), Object::MinusOne);
    EXPECT_EQ(output, "Entering get_logical_computer_keys\nvsan_index 20 \n");
    EXPECT_EQ(instance_of(18).first.kind(), Object::MinusOne);
}

TEST_F(LogicalComputerTest, RecordsThatComeWithAFailureAreMinusOneToo) {
    for (const char* symbol : {"vsan_cim_get_vsanEntry", "dm_cim_get_dmEntry"}) {
        emulator::clear_faults();
        fault(symbol, Effect::FailWithRow);
        EXPECT_EQ(path_of(17).first.kind(), Object::MinusOne) << symbol;
        EXPECT_EQ(instance_of(17).first.kind(), Object::MinusOne) << symbol;
    }
}

TEST_F(LogicalComputerTest, OnlyTheStatusOfTheRecordsCounts) {
    for (const char* symbol : {"vsan_cim_get_vsanEntry", "dm_cim_get_dmEntry"}) {
        emulator::clear_faults();
        fault(symbol, Effect::SucceedWithoutRow);
        EXPECT_EQ(path_of(17).second, std::string(PATH_TRACE) + "error during get vsan id") << symbol;
        EXPECT_EQ(path_of(17).first.key("Name"), "") << symbol;
        EXPECT_EQ(instance_of(17).second, std::string(INSTANCE_TRACE) + "error during get vsan id") << symbol;
    }
}

TEST_F(LogicalComputerTest, UnknownPortGoesOnToTheVsanRecords) {
    const auto [path, output] = path_of(99);
    EXPECT_TRUE(
        output.starts_with("Entering get_logical_computer_keys\nerror : pm_cim_get_port_info vsan_index "))
        << output;
    EXPECT_EQ(emulator::count("vsan_cim_get_vsanEntry"), 1u);
    EXPECT_EQ(emulator::count("dm_cim_get_dmEntry"), 1u);
}

TEST_F(LogicalComputerTest, FailedKeyIsOnlyTraced) {
    emulator::fail_always("vsan_cim_get_vsan_key");
    EXPECT_EQ(path_of(17).second, std::string(PATH_TRACE) + "error during get vsan id");
    EXPECT_EQ(instance_of(17).second, std::string(INSTANCE_TRACE) + "error during get vsan id");
    EXPECT_EQ(emulator::count("switch_fill_reference_str"), 1u);
    EXPECT_EQ(emulator::count("switch_build_instance_str"), 1u);
}

TEST_F(LogicalComputerTest, WhatThePlatformCannotMakeIsNull) {
    emulator::fail_always("switch_fill_reference_str");
    emulator::fail_always("switch_build_instance_str");
    EXPECT_EQ(path_of(17).first.kind(), Object::Null);
    EXPECT_EQ(instance_of(17).first.kind(), Object::Null);
}

// ---- The switch-wide IP configuration. ----

TEST_F(FcipConfigTest, IpConfigurationIsReadWithOneRequest) {
    emulator::set_ip_configuration({1, 64});
    IpMiscCfg out{};
    EXPECT_EQ(locked([&] { return get_ip_misc_cfg(&out); }), 0);
    EXPECT_EQ(out.ipForwarding, 1u);
    EXPECT_EQ(out.defaultTtl, 64u);
    EXPECT_EQ(emulator::calls("cmi_req_resp"), (Calls{"cmi_req_resp code=873 1 0 0 0 service=35 5"}));
}

TEST_F(FcipConfigTest, IpConfigurationFailsWithTheRequest) {
    emulator::set_ip_configuration({1, 64});
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        for_each_platform_failure("cmi_req_resp", effect, [&](std::size_t nth) {
            IpMiscCfg out{7, 7};
            EXPECT_EQ(locked([&] { return get_ip_misc_cfg(&out); }), nth == 1 ? -1 : 0);
            EXPECT_EQ(out.ipForwarding, nth == 1 ? 7u : 1u);
        });
    }
}

// ---- Ethernet ports. ----

class EthernetPortTest : public FcipConfigTest {
  protected:
    void SetUp() override {
        FcipConfigTest::SetUp();
        emulator::add_port(port_row(0x0A000001, ETHERNET, 1)); // in front of the run
        emulator::add_port(port_row(0x9B010000, ETHERNET, 1));
        emulator::add_port(port_row(0x9B010001, ETHERNET, 1));
        emulator::add_port(port_row(0x9B010002, ETHERNET, 1));
        emulator::add_port(port_row(0xA5000000, MANAGEMENT, 1)); // ends it
        emulator::add_port(port_row(0xA6000000, ETHERNET, 1));
        emulator::clear_calls();
    }

    Answer ask(std::uint32_t ifIndex, bool wantInstance) {
        const char* properties[] = {"DeviceID", nullptr};
        int functionResult = -1;
        const Answer answer = walk(
            [&](const CMPIResult* result) {
                return get_etherport_from_if_index(ifIndex, static_cast<int>(wantInstance), "KESTO_Ignored",
                                                   result, NAMESPACE, properties, broker.cmpi());
            },
            &functionResult);
        EXPECT_EQ(functionResult, 0);
        return answer;
    }
    static Calls port_requests(std::size_t count) {
        const Calls all{"pm_cim_get_port_info op=0 if=0x9affffff", "pm_cim_get_port_info op=0 if=0x9b010000",
                        "pm_cim_get_port_info op=0 if=0x9b010001", "pm_cim_get_port_info op=0 if=0x9b010002"};
        return Calls(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
    }
};

TEST_F(EthernetPortTest, InstanceOfThePortGoesToTheResult) {
    const Answer answer = ask(0x9B010001, true);
    ASSERT_EQ(answer.returned.size(), 1u);
    ASSERT_EQ(answer.instances.size(), 1u);
    EXPECT_EQ(answer.instances[0].class_name(), "KESTO_EthernetPort");
    EXPECT_EQ(answer.instances[0].path().name_space(), NAMESPACE);
    EXPECT_EQ(emulator::calls("fcport_build_instance_pm"),
              (Calls{"fcport_build_instance_pm KESTO_EthernetPort root/kesto if=0x9b010001"}));
    ASSERT_EQ(answer.instances[0].filters().size(), 1u);
    EXPECT_EQ(answer.instances[0].filters()[0].properties, (std::vector<std::string>{"DeviceID"}));
}

TEST_F(EthernetPortTest, PathOfThePortIsAskedForWithNamespaceAndClassExchanged) {
    const Answer answer = ask(0x9B010001, false);
    ASSERT_EQ(answer.returned.size(), 1u);
    ASSERT_EQ(answer.paths.size(), 1u);
    EXPECT_EQ(answer.paths[0].class_name(), "KESTO_EthernetPort");
    EXPECT_EQ(answer.paths[0].name_space(), NAMESPACE);
    EXPECT_EQ(emulator::calls("fcport_fill_reference_pm"),
              (Calls{"fcport_fill_reference_pm root/kesto KESTO_EthernetPort if=0x9b010001"}));
}

TEST_F(EthernetPortTest, TheWalkGoesOnBehindTheMatchToTheFirstOtherPort) {
    ask(0x9B010000, true);
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), port_requests(4));
    EXPECT_EQ(emulator::count("if_index_get_type"), 4u);
}

TEST_F(EthernetPortTest, PortsOutsideTheRunAreNotFound) {
    for (const std::uint32_t ifIndex : {0x0A000001u, 0xA5000000u, 0xA6000000u, 99u}) {
        EXPECT_TRUE(ask(ifIndex, true).returned.empty());
        EXPECT_TRUE(ask(ifIndex, false).returned.empty());
    }
}

TEST_F(EthernetPortTest, PortWithoutATypeEndsTheWalk) {
    for_each_platform_failure("if_index_get_type", Effect::Fail, [&](std::size_t nth) {
        EXPECT_EQ(ask(0x9B010001, true).returned.size(), nth <= 2 ? 0u : 1u);
        EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), port_requests(nth <= 4 ? nth : 4));
    });
}

TEST_F(EthernetPortTest, FailedRequestEndsTheWalk) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        for_each_platform_failure("pm_cim_get_port_info", effect, [&](std::size_t nth) {
            EXPECT_EQ(ask(0x9B010001, false).returned.size(), nth <= 2 ? 0u : 1u);
            EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), port_requests(nth <= 4 ? nth : 4));
        });
    }
}

// ---- The if-index in a LAN endpoint's key. ----

class EthernetKeyTest : public FcipConfigTest {
  protected:
    struct Read {
        int result;
        std::uint32_t ifIndex; // 777 = untouched
        std::string output;
        friend bool operator==(const Read&, const Read&) = default;
    };
    static Read read(const std::string& key) {
        Read read{0, 777, ""};
        read.output =
            printed_by([&] { read.result = get_eth_ifidx_from_keyvalue(&read.ifIndex, key.c_str()); });
        return read;
    }
    static std::string trace(const std::string& number) {
        return "Entering get_eth_ifidx_from_keyvalue\nif_index : " + number +
               " \nExiting get_eth_ifidx_from_keyvalue\n";
    }
};

TEST_F(EthernetKeyTest, NumberUpToAColonOrAnUnderscore) {
    EXPECT_EQ(read("8_00:0d:ec"), (Read{0, 8, trace("8")}));
    EXPECT_EQ(read("8:00"), (Read{0, 8, trace("8")}));
    EXPECT_EQ(read("8"), (Read{0, 8, trace("8")}));
    EXPECT_EQ(read(":_8_9"), (Read{0, 8, trace("8")}));
}

TEST_F(EthernetKeyTest, IfIndexAbove31BitsIsReadFromItsNegativePrint) {
    EXPECT_EQ(read("-1694433280_00:0d"), (Read{0, 0x9B010000, trace("-1694433280")}));
}

TEST_F(EthernetKeyTest, NumbersSaturateAt32Bits) {
    EXPECT_EQ(read("2600534016"), (Read{0, 0x7FFFFFFF, trace("2147483647")}));
    EXPECT_EQ(read("-99999999999"), (Read{0, 0x80000000, trace("-2147483648")}));
}

TEST_F(EthernetKeyTest, TextIsZero) {
    EXPECT_EQ(read("eth"), (Read{0, 0, trace("0")}));
}

TEST_F(EthernetKeyTest, KeyWithoutATokenFails) {
    for (const char* key : {"", "_", "::__"})
        EXPECT_EQ(read(key), (Read{-1, 777, "Entering get_eth_ifidx_from_keyvalue\n"})) << '"' << key << '"';
}

TEST_F(EthernetKeyTest, KeyOf600CharactersIsCutTo511) {
    EXPECT_EQ(read(std::string(510, '0') + "8" + std::string(89, '9')), (Read{0, 8, trace("8")}));
}

// ---- Addresses. ----

struct Formatted {
    int result;
    std::string text;     // "#" = untouched
    std::uint32_t isIpv6; // 777 = untouched
    friend bool operator==(const Formatted&, const Formatted&) = default;
};

Formatted formatted(const IpAddr& addr, std::uint32_t length = 64) {
    std::string buffer(64, '\0');
    buffer[0] = '#';
    Formatted formatted{0, "", 777};
    formatted.result = ip_addr_to_str_type(&addr, buffer.data(), length, &formatted.isIpv6);
    formatted.text = buffer.c_str();
    return formatted;
}

TEST(AddressTextTest, Ipv4) {
    EXPECT_EQ(formatted(address("10.1.1.2")), (Formatted{0, "10.1.1.2", 0}));
    EXPECT_EQ(formatted(address("0.0.0.0")), (Formatted{0, "0.0.0.0", 0}));
}

TEST(AddressTextTest, Ipv6) {
    EXPECT_EQ(formatted(address("2001:db8::ab")), (Formatted{0, "2001:db8::ab", 1}));
    EXPECT_EQ(formatted(address("::")), (Formatted{0, "::", 1}));
}

TEST(AddressTextTest, UnsetAddressIsTheTextNull) {
    EXPECT_EQ(formatted(IpAddr{}), (Formatted{0, "null", 777}));
}

TEST(AddressTextTest, UnsetFamilyWithAnyBytesFails) {
    IpAddr addr{};
    addr.addr[15] = 1;
    EXPECT_EQ(formatted(addr), (Formatted{-1, "#", 777}));
}

TEST(AddressTextTest, UnknownFamilyFails) {
    for (const std::uint32_t family : {3u, 10u, 0xFFFFFFFFu}) {
        IpAddr addr{};
        addr.addrType = family;
        EXPECT_EQ(formatted(addr), (Formatted{-1, "#", 777})) << family;
    }
}

TEST(AddressTextTest, TextThatDoesNotFitFails) {
    EXPECT_EQ(formatted(address("192.168.100.100"), 15).result, -1);
    EXPECT_EQ(formatted(address("192.168.100.100"), 16).result, 0);
    EXPECT_EQ(formatted(address("2001:db8::ab"), 12).result, -1);
    EXPECT_EQ(formatted(address("2001:db8::ab"), 13).result, 0);
}

TEST(AddressTextTest, FamilyIsTheRecordsOwn) {
    for (const std::uint32_t family : {0u, 1u, 2u, 77u}) {
        IpAddr addr{};
        addr.addrType = family;
        EXPECT_EQ(get_ip_addr_type(&addr), family);
    }
}

TEST(WwnTest, InitClearsTheEightBytesAndReturnsThem) {
    unsigned char wwn[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(init_wwn(wwn), wwn);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(wwn[i], 0) << i;
    EXPECT_EQ(wwn[8], 9);
}

} // namespace
