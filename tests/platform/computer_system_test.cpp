// The VSAN of a port, and the computer system that it is.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/computer_system.h"
#include "platform/platform_services.h"
#include "tests/platform/empty_switch.h"
#include "tests/support/faults.h"
#include "tests/support/rows.h"
#include "tests/support/stdout_capture.h"

namespace {

using emulator::Effect;
using platform_tests::EmptySwitchTest;
using test_support::for_each_effect;
using test_support::NAMESPACE;
using test_support::Object;
using test_support::port_row;
using test_support::printed_by;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::ROW_FAILURES;
using Calls = std::vector<std::string>;

// The VSAN of a port.

class VsanTest : public EmptySwitchTest {
  protected:
    void SetUp() override {
        EmptySwitchTest::SetUp();
        emulator::Port port = port_row(17, test_support::FCIP_PORT, 10);
        port.otherVsan = 4093;
        emulator::add_port(port);
        emulator::add_port(port_row(18, test_support::FCIP_PORT, 20));
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
};

TEST_F(VsanTest, VsanIdIsThatOfThePort) {
    EXPECT_EQ(ask(get_vsan_id, 17), (Answered{0, 10, ""}));
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"), (Calls{"pm_cim_get_port_info op=1 if=0x00000011"}));
}

TEST_F(VsanTest, VsanIdOfAnUnknownPortFails) {
    EXPECT_EQ(ask(get_vsan_id, 99), (Answered{-1, 777, "error : pm_cim_get_port_info \n"}));
}

TEST_F(VsanTest, VsanIdFailsWithARowAsWithout) {
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .effect = Effect::FailWithRow});
    EXPECT_EQ(ask(get_vsan_id, 17), (Answered{-1, 777, "error : pm_cim_get_port_info \n"}));
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
    for_each_effect(ROW_FAILURES, {.symbol = "pm_cmi_get_port_config"}, [&] {
        EXPECT_EQ(ask(get_vsan_from_ifindex, 17), (Answered{-1, 777, ""}));
    });
}

// The name of the VSAN's computer system.

class VsanNameTest : public VsanTest {
  protected:
    // The whole buffer after the call, '#' where nothing was written.
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
    EXPECT_EQ(named.buffer.substr(20), "####") << "nothing may be written after 20 characters";
}

TEST_F(VsanNameTest, UnknownPortLeavesTheBuffer) {
    EXPECT_EQ(name_of(99), (Named{-1, padded("", '#'), "error : pm_cim_get_port_info \n"}));
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .effect = Effect::FailWithRow});
    EXPECT_EQ(name_of(17), (Named{-1, padded("", '#'), "error : pm_cim_get_port_info \n"}));
}

TEST_F(VsanNameTest, PortWithoutARowFailsSilently) {
    emulator::add_fault({.symbol = "pm_cim_get_port_info", .effect = Effect::SucceedWithoutRow});
    EXPECT_EQ(name_of(17), (Named{-1, padded("", '#'), ""}));
}

TEST_F(VsanNameTest, MissingDomainReadsAsNull) {
    const Named named = name_of(18);
    EXPECT_EQ(named.result, -1);
    EXPECT_STREQ(named.buffer.c_str(), "NULL");
    EXPECT_EQ(named.output, "error : dm_cim_get_dmEntry \n");
}

TEST_F(VsanNameTest, DomainThatFailsWithARowReadsAsNull) {
    emulator::add_fault({.symbol = "dm_cim_get_dmEntry", .effect = Effect::FailWithRow});
    const Named named = name_of(17);
    EXPECT_EQ(named.result, -1);
    EXPECT_STREQ(named.buffer.c_str(), "NULL");
}

TEST_F(VsanNameTest, DomainThatSucceedsIsAskedForItsKeyWithOrWithoutARecord) {
    emulator::add_fault({.symbol = "dm_cim_get_dmEntry", .effect = Effect::SucceedWithoutRow});
    const Named named = name_of(17);
    EXPECT_EQ(named.result, 0) << "the record is opaque, only the status counts";
    EXPECT_STREQ(named.buffer.c_str(), "") << "the platform has no key for it";
    EXPECT_EQ(named.output, "");
    EXPECT_EQ(emulator::count("vsan_cim_get_vsan_admindomain_key"), 1U);
}

// The logical computer system.

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
    ASSERT_EQ(instance.filters().size(), 1U);
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
    EXPECT_EQ(emulator::count("dm_cim_get_dmEntry"), 0U);
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
        emulator::add_fault({.symbol = symbol, .effect = Effect::FailWithRow});
        EXPECT_EQ(path_of(17).first.kind(), Object::MinusOne) << symbol;
        EXPECT_EQ(instance_of(17).first.kind(), Object::MinusOne) << symbol;
    }
}

TEST_F(LogicalComputerTest, OnlyTheStatusOfTheRecordsCounts) {
    for (const char* symbol : {"vsan_cim_get_vsanEntry", "dm_cim_get_dmEntry"}) {
        emulator::clear_faults();
        emulator::add_fault({.symbol = symbol, .effect = Effect::SucceedWithoutRow});
        EXPECT_EQ(path_of(17).second, std::string(PATH_TRACE) + "error during get vsan id\n") << symbol;
        EXPECT_EQ(path_of(17).first.key("Name"), "") << symbol;
        EXPECT_EQ(instance_of(17).second, std::string(INSTANCE_TRACE) + "error during get vsan id\n")
            << symbol;
    }
}

TEST_F(LogicalComputerTest, UnknownPortGoesOnToTheVsanRecords) {
    const auto [path, output] = path_of(99);
    EXPECT_TRUE(
        output.starts_with("Entering get_logical_computer_keys\nerror : pm_cim_get_port_info \nvsan_index "))
        << output;
    EXPECT_EQ(emulator::count("vsan_cim_get_vsanEntry"), 1U);
    EXPECT_EQ(emulator::count("dm_cim_get_dmEntry"), 1U);
}

TEST_F(LogicalComputerTest, FailedKeyIsOnlyTraced) {
    emulator::fail_always("vsan_cim_get_vsan_key");
    EXPECT_EQ(path_of(17).second, std::string(PATH_TRACE) + "error during get vsan id\n");
    EXPECT_EQ(instance_of(17).second, std::string(INSTANCE_TRACE) + "error during get vsan id\n");
    EXPECT_EQ(emulator::count("switch_fill_reference_str"), 1U);
    EXPECT_EQ(emulator::count("switch_build_instance_str"), 1U);
}

TEST_F(LogicalComputerTest, WhatThePlatformCannotMakeIsNull) {
    emulator::fail_always("switch_fill_reference_str");
    emulator::fail_always("switch_build_instance_str");
    EXPECT_EQ(path_of(17).first.kind(), Object::Null);
    EXPECT_EQ(instance_of(17).first.kind(), Object::Null);
}

} // namespace
