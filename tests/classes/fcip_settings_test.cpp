// KESTO_FCIPSettings and KESTO_FCIPProfile.
#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"
#include "tests/support/rows.h"

namespace class_tests {
namespace {

class FcipSettings : public ClassTest {
  protected:
    RecordedInstance build() {
        return make(
            [&] { return fcip_settings_build_instance("KESTO_FCIPSettings", NAMESPACE, &link, nullptr); });
    }
    RecordedPath fill() {
        return make([&] { return fcip_settings_fill_reference("KESTO_FCIPSettings", NAMESPACE, &link); });
    }
    const Sets properties = golden_properties("fcip_settings_build_instance");
};

TEST_F(FcipSettings, TunnelIdIsTheLinkIndexItselfUnlikeTheEndpoints) {
    link.kfmFcipLinkIndex = 0;
    const RecordedInstance settings = build();
    EXPECT_EQ(settings.value("TunnelID"), 0);
    EXPECT_EQ(settings.type("TunnelID"), CMPI_uint32);
    const RecordedInstance endpoint =
        make([&] { return fcip_pe_build_instance("KESTO_FCIPProtocolEndPoint", NAMESPACE, &link, nullptr); });
    EXPECT_EQ(endpoint.value("TunnelID"), 1);
    EXPECT_EQ(endpoint.type("TunnelID"), CMPI_uint16);
}

TEST_F(FcipSettings, PassiveModeAndCheckTimestampAreLowBytes) {
    const std::pair<std::uint32_t, int> cases[] = {{0, 0}, {1, 1}, {2, 2}, {0x100, 0}, {0xFFFFFFFF, 255}};
    for (const auto& [word, byte] : cases) {
        link = one_tunnel::link();
        link.kfmFcipLinkExtPassiveMode = word;
        EXPECT_EQ(build().sets(), with(properties, "PassiveMode", byte)) << word;
        link = one_tunnel::link();
        link.kfmFcipLinkExtTimeStampEnable = word;
        EXPECT_EQ(build().sets(), with(properties, "CheckTimestamp", byte)) << word;
    }
}

TEST_F(FcipSettings, TheOtherFlagsAreTrueForOneOnlyAndEachIsItsOwnField) {
    const struct {
        const char* property;
        std::uint32_t FcipLinkEntry::*field;
    } flags[] = {
        {"LocalPortEnable", &FcipLinkEntry::kfmFcipLinkExtLocalPortEnable},
        {"SpecialFrameEnable", &FcipLinkEntry::kfmFcipLinkExtSpecialFrameEnable},
        {"BPortKAEnable", &FcipLinkEntry::kfmFcipLinkExtBPortKaEnable},
        {"WriteAccelerator", &FcipLinkEntry::kfmFcipLinkExtWriteAccel},
        {"TapeAccelerator", &FcipLinkEntry::kfmFcipLinkExtTapeAccel},
        {"IPSec", &FcipLinkEntry::kfmFcipLinkExtIpSec},
        {"WriteAccOper", &FcipLinkEntry::kfmFcipLinkExtWriteAccelOper},
        {"TapeAccOper", &FcipLinkEntry::kfmFcipLinkExtTapeAccelOper},
        {"TapeAccReadOper", &FcipLinkEntry::kfmFcipLinkExtTapeAccelReadOper},
    };
    for (const auto& flag : flags) {
        for (const std::uint32_t word : {0U, 2U, 0x101U, 0xFFFFFFFFU}) {
            link = one_tunnel::link();
            link.*flag.field = word;
            EXPECT_EQ(build().sets(), with(properties, flag.property, 0)) << word;
        }
    }
}

TEST_F(FcipSettings, KeepAliveIsReadFromTheProfileOnceMore) {
    build();
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (std::vector<std::string>{"fcip_get_entity_entry op=1 id=3 5",
                                        "fcip_get_entity_entry op=1 id=3 30"}));
}

TEST_F(FcipSettings, KeepAliveIsThatOfTheSecondAnswer) {
    emulator::add_fault(
        {.symbol = "fcip_get_entity_entry", .first = 2, .last = 2, .effect = Effect::None, .action = [] {
             FcipEntityEntry changed = one_tunnel::profile();
             changed.kfmFcipEntityKeepAliveTimeout = 77;
             emulator::add_entity(changed);
         }});
    EXPECT_EQ(build().sets(), with(properties, "KeepAliveTimeout", 77));
}

TEST_F(FcipSettings, KeepAliveIsThirtyWithoutASecondRow) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry", .first = 2, .effect = Effect::SucceedWithoutRow});
    EXPECT_EQ(build().sets(), with(properties, "KeepAliveTimeout", 30));
}

TEST_F(FcipSettings, KeepAliveIsLeftUnsetWhenTheSecondAnswerFails) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_entity_entry", .first = 2}, [&] {
        const RecordedInstance instance = build();
        EXPECT_EQ(instance.sets(), without(properties, {"KeepAliveTimeout"}));
        EXPECT_EQ(instance.filters().size(), 1U);
        EXPECT_EQ(trace, entering("fcip_settings_build_instance") +
                             " fcip_get_entity_entry returned error \n" +
                             exiting("fcip_settings_build_instance"));
    });
}

TEST_F(FcipSettings, InstanceAndPathAgreeOnTheIfIndexAsInstanceId) {
    const std::pair<std::uint32_t, const char*> cases[] = {
        {100, "100"}, {0xFFFFFFFF, "-1"}, {0x80000000, "-2147483648"}};
    for (const auto& [ifIndex, text] : cases) {
        link.kfmFcipLinkIfIndex = ifIndex;
        EXPECT_EQ(build().value("InstanceID"), text);
        EXPECT_EQ(build().value("ElementName"), text);
        EXPECT_EQ(fill().key("InstanceID"), text);
    }
}

// Profile.

class FcipProfile : public ClassTest {
  protected:
    RecordedInstance build() {
        return make(
            [&] { return fcip_profile_build_instance("KESTO_FCIPProfile", NAMESPACE, &profile, nullptr); });
    }
    RecordedPath fill() {
        return make([&] { return fcip_profile_fill_reference("KESTO_FCIPProfile", NAMESPACE, &profile); });
    }
    const Sets properties = golden_properties("fcip_profile_build_instance");
};

TEST_F(FcipProfile, AsksNothingOfThePlatformButTextsAndNames) {
    build();
    fill();
    for (const char* service : {"fcip_get_entity_entry", "fcip_get_link_entry", "pm_cim_get_port_info"}) {
        EXPECT_TRUE(emulator::calls(service).empty()) << service;
    }
}

TEST_F(FcipProfile, APathsKeyIsCutToEightDigitsTheInstancesAreNot) {
    profile.kfmFcipEntityId = 123456789;
    const RecordedInstance instance = build();
    for (const char* name : {"InstanceID", "Name", "Caption", "ElementName"}) {
        EXPECT_EQ(instance.value(name), "123456789") << name;
    }
    EXPECT_EQ(fill().key("InstanceID"), "12345678");
}

TEST_F(FcipProfile, EightDigitsAreWhole) {
    profile.kfmFcipEntityId = 12345678;
    EXPECT_EQ(fill().key("InstanceID"), "12345678");
}

TEST_F(FcipProfile, NumbersAreTheProfilesOwn) {
    const std::pair<std::uint32_t, const char*> cases[] = {
        {0, "0"}, {0x7FFFFFFF, "2147483647"}, {0xFFFFFFFF, "-1"}};
    for (const auto& [id, text] : cases) {
        profile.kfmFcipEntityId = id;
        EXPECT_EQ(build().value("InstanceID"), text);
    }
}

TEST_F(FcipProfile, FlagsAreTrueForOneOnlyAndEachIsItsOwnField) {
    const struct {
        const char* property;
        std::uint32_t FcipEntityEntry::*field;
    } flags[] = {
        {"FcipEntitySeqNumWrap", &FcipEntityEntry::kfmFcipEntitySeqNumWrap},
        {"FcipEntitySACKOption", &FcipEntityEntry::kfmFcipEntitySackOption},
        {"FcipEntityPHBSupport", &FcipEntityEntry::kfmFcipEntityPhbSupport},
    };
    for (const auto& flag : flags) {
        for (const std::uint32_t word : {0U, 2U, 0x101U}) {
            profile = one_tunnel::profile();
            profile.*flag.field = word;
            EXPECT_EQ(build().sets(), with(properties, flag.property, 0)) << word;
        }
    }
}

TEST_F(FcipProfile, AddressesOfBothFamiliesAreTexts) {
    profile.kfmFcipEntityAddress = test_support::address("2001:db8:1111:2222:3333:4444:5555:6666");
    EXPECT_EQ(build().value("FcipEntityAddress"), "2001:db8:1111:2222:3333:4444:5555:6666");
    profile.kfmFcipEntityAddress = IpAddr{};
    EXPECT_EQ(build().value("FcipEntityAddress"), "");
}

// Profile walkers.

class ProfileWalk : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        for (const std::uint32_t id : {8U, 0x80000000U}) {
            FcipEntityEntry another = one_tunnel::profile();
            another.kfmFcipEntityId = id;
            emulator::add_entity(another);
        }
    }
    Answer walk_instances(const char* className, const char** properties = nullptr) {
        return ClassTest::walk_instances(get_all_fcip_profiles, className, properties);
    }
    Answer walk_paths(const char* className) {
        return walk_names(get_all_fcip_profile_references, className);
    }
};

TEST_F(ProfileWalk, OneInstanceAndOnePathAProfileInTableOrder) {
    const Answer instances = walk_instances("KESTO_FCIPProfile");
    EXPECT_EQ(status, 0);
    ASSERT_EQ(instances.instances.size(), 3U);
    EXPECT_EQ(instances.instances[0].sets(), golden_properties("fcip_profile_build_instance"));
    EXPECT_EQ(instances.instances[1].value("InstanceID"), "8");
    EXPECT_EQ(instances.instances[2].value("InstanceID"), "-2147483648");
    EXPECT_EQ(instances.doneCalls, 0U);
    const Answer paths = walk_paths("KESTO_FCIPProfile");
    EXPECT_EQ(status, 0);
    ASSERT_EQ(paths.paths.size(), 3U);
    EXPECT_EQ(paths.paths[0].keys(), golden_keys("fcip_profile_fill_reference"));
    EXPECT_EQ(paths.paths[1].key("InstanceID"), "8");
    EXPECT_EQ(paths.paths[2].key("InstanceID"), "-2147483") << "eight characters";
    EXPECT_EQ(paths.doneCalls, 0U);
}

TEST_F(ProfileWalk, TheClassNameIsNotLookedAt) {
    const Answer instances = walk_instances("kesto_whatever");
    ASSERT_EQ(instances.instances.size(), 3U);
    for (const RecordedInstance& instance : instances.instances) {
        EXPECT_TRUE(instance.is_valid());
        EXPECT_EQ(instance.class_name(), "kesto_whatever");
    }
    const Answer paths = walk_paths("kesto_whatever");
    ASSERT_EQ(paths.paths.size(), 3U);
    for (const RecordedPath& path : paths.paths) {
        EXPECT_EQ(path.class_name(), "kesto_whatever");
    }
}

TEST_F(ProfileWalk, AsksForTheNextProfileAfterEachOnesNumberFromZero) {
    const std::vector<std::string> want{
        "fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=3 5",
        "fcip_get_entity_entry op=2 id=8 5", "fcip_get_entity_entry op=2 id=2147483648 5"};
    EXPECT_EQ(calls_of(walk_instances("KESTO_FCIPProfile").platformCalls, "fcip_get_entity_entry"), want);
    EXPECT_EQ(calls_of(walk_paths("KESTO_FCIPProfile").platformCalls, "fcip_get_entity_entry"), want);
}

TEST_F(ProfileWalk, InstancesAreTracedEachRoundBeforeEachBuildAndAtTheEnd) {
    const std::string round = any_line_trace("get_all_fcip_profiles");
    const std::string build =
        entering("fcip_profile_build_instance") + ANY + exiting("fcip_profile_build_instance");
    std::string want = entering("get_all_fcip_profiles");
    for (int i = 0; i < 3; ++i) {
        want += round + round + build;
    }
    want += round + round + exiting("get_all_fcip_profiles"); // the round that finds no profile, then the end
    const Answer answer = walk_instances("KESTO_FCIPProfile");
    EXPECT_TRUE(matches(answer.output, want)) << answer.output;
    EXPECT_EQ(occurrences(answer.output, " Function : get_all_fcip_profiles Line "), 8U);
}

TEST_F(ProfileWalk, PathsAreTracedAtEntryAndExitOnly) {
    EXPECT_EQ(walk_paths("KESTO_FCIPProfile").output,
              entering("get_all_fcip_profile_references") + exiting("get_all_fcip_profile_references"));
}

TEST_F(ProfileWalk, AnEmptyTableReturnsNothing) {
    emulator::clear_entities();
    EXPECT_TRUE(walk_instances("KESTO_FCIPProfile").returned.empty());
    EXPECT_EQ(status, 0);
    const Answer paths = walk_paths("KESTO_FCIPProfile");
    EXPECT_TRUE(paths.returned.empty());
    EXPECT_EQ(status, 0);
    EXPECT_EQ(paths.output,
              entering("get_all_fcip_profile_references") + exiting("get_all_fcip_profile_references"));
}

TEST_F(ProfileWalk, AFailureInTheMiddleOfTheTableIsTracedAsItsEnd) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_get_entity_entry", .first = 3}, [&] {
        EXPECT_TRUE(walk_instances("KESTO_FCIPProfile").output.ends_with(exiting("get_all_fcip_profiles")));
    });
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_get_entity_entry", .first = 3}, [&] {
        EXPECT_EQ(walk_paths("KESTO_FCIPProfile").output,
                  entering("get_all_fcip_profile_references") + exiting("get_all_fcip_profile_references"));
    });
}

} // namespace
} // namespace class_tests
