// Profiles as they are read from the switch: by a key, by a number, by a link, and all of them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "platform/fcip_config.h"
#include "platform/platform_services.h"
#include "tests/platform/empty_switch.h"
#include "tests/support/faults.h"
#include "tests/support/rows.h"
#include "tests/support/stdout_capture.h"

namespace {

using emulator::Effect;
using platform_tests::EmptySwitchTest;
using test_support::entity_row;
using test_support::link_row;
using test_support::printed_by;
using test_support::ROW_FAILURES;
using test_support::STATUS_FAILURES;
using Calls = std::vector<std::string>;
using Found = std::pair<int, std::uint32_t>;

// The profile whose number is exactly the key.

class ProfileOfKeyTest : public EmptySwitchTest {
  protected:
    void SetUp() override {
        EmptySwitchTest::SetUp();
        for (const std::uint32_t id : {1U, 2U, 10U, 0x9B000000U}) {
            FcipEntityEntry row = entity_row(id);
            row.kfmFcipEntityMaxJitter = id + 1; // the last word of the row
            emulator::add_entity(row);
        }
    }

    static std::uint32_t id_of(const FcipEntityEntry& row) {
        EXPECT_EQ(row.kfmFcipEntityMaxJitter, row.kfmFcipEntityId == 0 ? 0 : row.kfmFcipEntityId + 1)
            << "the row was not copied whole";
        return row.kfmFcipEntityId;
    }
    // The result, and the id that was stored (0: nothing was).
    static Found lookup(const char* key) {
        FcipEntityEntry out{};
        const int result = locked([&] { return get_fcip_entity_from_key_value(mts_q, key, &out); });
        return {result, id_of(out)};
    }
};

TEST_F(ProfileOfKeyTest, TheNumberItselfFindsTheProfile) {
    EXPECT_EQ(lookup("1"), Found(1, 1));
    EXPECT_EQ(lookup("10"), Found(1, 10));
}

TEST_F(ProfileOfKeyTest, AnyOtherSpellingOfTheNumberFindsNothing) {
    for (const char* key : {"01", " 1", "1 ", "1_0", "1_10.1.1.1", "+1", "", "3", "0", "x"}) {
        EXPECT_EQ(lookup(key), Found(0, 0)) << '"' << key << '"';
    }
}

TEST_F(ProfileOfKeyTest, NumbersAbove31BitsAreSpelledNegative) {
    EXPECT_EQ(lookup("-1694498816"), Found(1, 0x9B000000));
    EXPECT_EQ(lookup("2600468480"), Found(0, 0));
}

TEST_F(ProfileOfKeyTest, TheWalkGoesOnAfterTheMatch) {
    lookup("1");
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=2 5", "fcip_get_entity_entry op=2 id=10 5",
                     "fcip_get_entity_entry op=2 id=2600468480 5"}));
}

TEST_F(ProfileOfKeyTest, SuccessWithoutARowIsAskedAgainWithTheSameKey) {
    emulator::add_fault(
        {.symbol = "fcip_get_entity_entry", .first = 2, .last = 4, .effect = Effect::SucceedWithoutRow});
    EXPECT_EQ(lookup("2"), Found(1, 2));
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=1 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=1 5", "fcip_get_entity_entry op=2 id=2 5",
                     "fcip_get_entity_entry op=2 id=10 5", "fcip_get_entity_entry op=2 id=2600468480 5"}));
}

TEST_F(ProfileOfKeyTest, FailureEndsTheWalkWithWhatWasFoundBefore) {
    for (const Effect effect : STATUS_FAILURES) {
        for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t nth) {
            EXPECT_EQ(lookup("2"), nth <= 2 ? Found(0, 0) : Found(1, 2));
        });
    }
}

TEST_F(ProfileOfKeyTest, EmptyTableFindsNothing) {
    emulator::clear_entities();
    EXPECT_EQ(lookup("1"), Found(0, 0));
}

// The profile whose number the key begins with.

class ProfileOfNumberTest : public ProfileOfKeyTest {
  protected:
    static Found lookup(const char* key) {
        FcipEntityEntry out{};
        const int result = locked([&] { return get_fcip_entity_from(key, &out); });
        return {result, id_of(out)};
    }
};

TEST_F(ProfileOfNumberTest, NullKeyIsAFailure) {
    EXPECT_EQ(lookup(nullptr), Found(-1, 0));
    EXPECT_EQ(emulator::count("fcip_get_entity_entry"), 0U);
}

TEST_F(ProfileOfNumberTest, AnySpellingOfTheNumberFindsTheProfile) {
    for (const char* key : {"2", "02", " 2", "2_0", "2abc"}) {
        EXPECT_EQ(lookup(key), Found(0, 2)) << '"' << key << '"';
    }
    EXPECT_EQ(lookup("-1694498816"), Found(0, 0x9B000000));
}

TEST_F(ProfileOfNumberTest, NoMatchAnswersZeroToo) {
    for (const char* key : {"3", "", "x", "4294967297"}) {
        EXPECT_EQ(lookup(key), Found(0, 0)) << '"' << key << '"';
    }
}

TEST_F(ProfileOfNumberTest, TheWalkStopsAtTheMatch) {
    lookup("2");
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5"}));
}

TEST_F(ProfileOfNumberTest, TheMatchIsTraced) {
    EXPECT_EQ(printed_by([] { lookup("2"); }), "Match Found \n");
    EXPECT_EQ(printed_by([] { lookup("3"); }), "");
}

TEST_F(ProfileOfNumberTest, EmptyTableLeavesTheOutput) {
    emulator::clear_entities();
    EXPECT_EQ(lookup("1"), Found(0, 0));
}

TEST_F(ProfileOfNumberTest, FailuresEndTheWalk) {
    for (const Effect effect : ROW_FAILURES) {
        for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t nth) {
            EXPECT_EQ(lookup("2"), nth <= 2 ? Found(0, 0) : Found(0, 2));
        });
    }
}

// The profile of a link.

class ProfileOfLinkTest : public ProfileOfKeyTest {
  protected:
    static Found lookup(std::uint32_t entityId) {
        const FcipLinkEntry link = link_row(entityId, 4, 17);
        FcipEntityEntry out{};
        const int result = locked([&] { return get_profile_from_link_entry(&link, &out); });
        return {result, id_of(out)};
    }
    static constexpr const char* TRACE = "get_profile_from_link_entry : Error\n";
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
    emulator::add_fault({.symbol = "fcip_get_entity_entry", .effect = Effect::FailWithRow});
    EXPECT_EQ(printed_by([] { EXPECT_EQ(lookup(2), Found(-1, 0)); }), TRACE);
}

TEST_F(ProfileOfLinkTest, SuccessWithoutARowIsAFailure) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry", .effect = Effect::SucceedWithoutRow});
    EXPECT_EQ(lookup(2), Found(-1, 0));
}

// The interfaces of a profile, and all profiles.

class ProfileInterfacesTest : public EmptySwitchTest {
  protected:
    void SetUp() override {
        EmptySwitchTest::SetUp();
        for (const std::uint32_t id : {1U, 2U}) {
            emulator::add_entity(entity_row(id));
        }
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
        for (std::size_t i = 1; i < words.size(); ++i) {
            text += " " + std::to_string(words[i]);
        }
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
    emulator::add_fault({.symbol = "fcip_send_recv_with_mts_q", .effect = Effect::FailWithRow});
    EXPECT_EQ(interfaces(1), "count 2 17 18");
}

TEST_F(ProfileInterfacesTest, AllProfilesArePrintedInTableOrder) {
    int result = -1;
    const std::string output =
        printed_by([&] { result = locked([] { return get_all_fcip_entities(mts_q); }); });
    EXPECT_EQ(result, 0);
    const std::size_t first = output.find("FCIP Profile 1\n");
    const std::size_t second = output.find("FCIP Profile 2\n");
    EXPECT_EQ(first, 0U);
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
        EXPECT_EQ(output.find("FCIP Profile 1\n"), nth == 1 ? std::string::npos : 0U);
        EXPECT_EQ(output.find("FCIP Profile 2\n") == std::string::npos, nth <= 2);
        EXPECT_EQ(emulator::count("fcip_get_entity_entry"), nth <= 2 ? nth : 3U);
    });
}

TEST_F(ProfileInterfacesTest, SuccessWithoutAProfileIsAskedAgain) {
    emulator::add_fault(
        {.symbol = "fcip_get_entity_entry", .first = 2, .last = 3, .effect = Effect::SucceedWithoutRow});
    printed_by([] { EXPECT_EQ(locked([] { return get_all_fcip_entities(mts_q); }), 0); });
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              (Calls{"fcip_get_entity_entry op=2 id=0 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=1 5", "fcip_get_entity_entry op=2 id=1 5",
                     "fcip_get_entity_entry op=2 id=2 5"}));
}

TEST_F(ProfileInterfacesTest, FailureEndsTheWalkNormally) {
    for (const Effect effect : STATUS_FAILURES) {
        for_each_platform_failure("fcip_get_entity_entry", effect, [&](std::size_t) {
            printed_by([] { EXPECT_EQ(locked([] { return get_all_fcip_entities(mts_q); }), 0); });
        });
    }
}

TEST_F(ProfileInterfacesTest, NoProfilesPrintNothing) {
    emulator::clear_entities();
    EXPECT_EQ(printed_by([] { EXPECT_EQ(locked([] { return get_all_fcip_entities(mts_q); }), 0); }), "");
}

} // namespace
