// How key strings find their link: the seven ways to read a key, what misses, and what no key can name.
#include <cstring>
#include <optional>
#include <ostream>
#include <string>

#include "platform/fcip_config.h"
#include "platform/platform_services.h"
#include "tests/support/provider_test.h"
#include "tests/support/rows.h"

namespace {

using emulator::Effect;
using test_support::address;
using test_support::link_row;

// What one lookup did: its status, and the row it stored if it stored one.
struct Lookup {
    int status = 0;
    std::optional<FcipLinkKey> found;

    friend bool operator==(const Lookup& a, const Lookup& b) {
        const auto key = [](const Lookup& lookup) {
            return lookup.found ? std::pair{lookup.found->entityId, lookup.found->linkIndex}
                                : std::pair{UINT32_MAX, UINT32_MAX};
        };
        return a.status == b.status && key(a) == key(b);
    }
    friend std::ostream& operator<<(std::ostream& out, const Lookup& lookup) {
        out << "status " << lookup.status << ", ";
        if (!lookup.found) return out << "output untouched";
        return out << "link {" << lookup.found->entityId << ", " << lookup.found->linkIndex << "}";
    }
};

Lookup found(std::uint32_t entityId, std::uint32_t linkIndex) {
    return {0, FcipLinkKey{entityId, linkIndex}};
}
const Lookup MISSING{0, std::nullopt};
const Lookup UNUSABLE{-1, std::nullopt};

// The links in table order. {0, 1} holds zeros wherever a key may ask for them.
class LinkKeyTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        emulator::load_empty();
        add(0, 1, 0, 0, "10.0.0.9");
        add(1, 0, 17, 8, "10.1.1.2");
        add(1, 4, 18, 9, "10.1.1.3");
        add(2, 0, 19, 8, "2001:db8::ab");
        add(3, 0x7FFFFFFE, 0x7FFFFFFF, 0x7FFFFFFF, "10.1.1.4");
        add(4, 5, 0x80000000, 0x80000000, "10.1.1.5");
        add(5, 6, 0x9B000000, 0x9B000000, "10.1.1.6");
        add(0xFFFFFFFF, 7, 0xFFFFFFFF, 0xFFFFFFFF, "10.1.1.7");
        emulator::clear_calls();
    }

    static void add(std::uint32_t entityId, std::uint32_t linkIndex, std::uint32_t ifIndex,
                    std::uint32_t ethIfIndex, const char* remoteAddress) {
        FcipLinkEntry row = link_row(entityId, linkIndex, ifIndex);
        row.kfmFcipLinkExtEthIfIndex = ethIfIndex;
        row.kfmFcipLinkRemFcipEntityAddress = address(remoteAddress);
        row.reserved_144[1031] = 0x5A; // the last byte of the row
        emulator::add_link(row);
    }

    static Lookup lookup(const std::string& key, int mode) {
        FcipLinkEntry untouched;
        std::memset(&untouched, 0xC3, sizeof untouched);
        FcipLinkEntry out = untouched;
        Lookup result;
        result.status = locked([&] { return get_fcip_link_entry_from(key.c_str(), &out, mode); });
        if (std::memcmp(&out, &untouched, sizeof out) == 0) return result;
        result.found = FcipLinkKey{out.kfmFcipEntityId, out.kfmFcipLinkIndex};
        EXPECT_EQ(out.reserved_144[1031], 0x5A) << "the row was not copied whole";
        return result;
    }

    static std::size_t rows_asked_for() { return emulator::count("fcip_get_link_entry"); }
    static constexpr std::size_t ROWS = 8;
};

// ---- Mode 1: the first token of "_" is the tunnel number, one more than the link index. ----

TEST_F(LinkKeyTest, TunnelNumberOneFindsLinkIndexZero) {
    EXPECT_EQ(lookup("1_10.1.1.1_10.1.1.2", 1), found(1, 0));
}
TEST_F(LinkKeyTest, TunnelNumberFindsTheLinkOfThatIndexMinusOne) {
    EXPECT_EQ(lookup("5_10.1.1.1_10.1.1.3", 1), found(1, 4));
    EXPECT_EQ(lookup("2", 1), found(0, 1));
}
TEST_F(LinkKeyTest, TunnelNumberZeroFindsNothing) {
    EXPECT_EQ(lookup("0_10.1.1.1_10.1.1.2", 1), MISSING);
}
TEST_F(LinkKeyTest, TunnelNumberWithoutALinkFindsNothing) {
    EXPECT_EQ(lookup("4_10.1.1.1_10.1.1.2", 1), MISSING);
}
TEST_F(LinkKeyTest, FirstLinkOfATunnelNumberInTableOrderIsFound) {
    emulator::remove_link({1, 0});
    EXPECT_EQ(lookup("1_x", 1), found(2, 0));
}

// ---- Mode 2: the first token of "_" is the if-index of the FCIP interface. ----

TEST_F(LinkKeyTest, IfIndexTokenFindsTheLink) {
    EXPECT_EQ(lookup("17", 2), found(1, 0));
    EXPECT_EQ(lookup("18_10.1.1.1_10.1.1.3", 2), found(1, 4));
}
TEST_F(LinkKeyTest, ColonDoesNotSeparateIfIndexTokensButEndsTheNumber) {
    EXPECT_EQ(lookup("18:5", 2), found(1, 4));
    EXPECT_EQ(lookup(":18", 2), found(0, 1)) << "\":18\" is no number and reads as 0";
}
TEST_F(LinkKeyTest, UnknownIfIndexTokenFindsNothing) {
    EXPECT_EQ(lookup("20", 2), MISSING);
}

// ---- Mode 3: the whole string is that if-index. ----

TEST_F(LinkKeyTest, WholeStringIfIndexFindsTheLink) {
    EXPECT_EQ(lookup("17", 3), found(1, 0));
    EXPECT_EQ(lookup("19_whatever", 3), found(2, 0));
}
TEST_F(LinkKeyTest, WholeStringIfIndexHasNoSeparators) {
    EXPECT_EQ(lookup("_17", 3), found(0, 1)) << "\"_17\" is no number and reads as 0";
}

// ---- Mode 4: the first token of ":" or "_" is the if-index of the Ethernet port. ----

TEST_F(LinkKeyTest, EthernetIfIndexEndsAtAColonOrAnUnderscore) {
    EXPECT_EQ(lookup("9_1", 4), found(1, 4));
    EXPECT_EQ(lookup("9:1", 4), found(1, 4));
    EXPECT_EQ(lookup("9", 4), found(1, 4));
}
TEST_F(LinkKeyTest, SeparatorsBeforeTheEthernetIfIndexAreSkipped) {
    EXPECT_EQ(lookup(":_:9", 4), found(1, 4));
}
TEST_F(LinkKeyTest, FirstLinkOfAnEthernetPortIsFound) {
    EXPECT_EQ(lookup("8:00", 4), found(1, 0));
}
TEST_F(LinkKeyTest, UnknownEthernetIfIndexFindsNothing) {
    EXPECT_EQ(lookup("17", 4), MISSING);
}

// ---- Mode 5: the whole string is the entity id. ----

TEST_F(LinkKeyTest, EntityIdFindsTheFirstLinkOfTheEntity) {
    EXPECT_EQ(lookup("1", 5), found(1, 0));
    EXPECT_EQ(lookup("2_x", 5), found(2, 0));
}
TEST_F(LinkKeyTest, UnknownEntityIdFindsNothing) {
    EXPECT_EQ(lookup("17", 5), MISSING);
}

// ---- Mode 6: the first token of "_" is 0, the second the remote address as text. ----

TEST_F(LinkKeyTest, RemoteAddressBehindAZeroFindsTheLink) {
    EXPECT_EQ(lookup("0_10.1.1.3", 6), found(1, 4));
    EXPECT_EQ(lookup("0_10.1.1.2_10.1.1.1", 6), found(1, 0));
}
TEST_F(LinkKeyTest, RemoteAddressIgnoresLetterCase) {
    EXPECT_EQ(lookup("0_2001:DB8::AB", 6), found(2, 0));
}
TEST_F(LinkKeyTest, RemoteAddressMustBeTheWholeToken) {
    EXPECT_EQ(lookup("0_10.1.1.20", 6), MISSING);
    EXPECT_EQ(lookup("0_10.1.1", 6), MISSING);
    EXPECT_EQ(lookup("0_ 10.1.1.2", 6), MISSING);
}
TEST_F(LinkKeyTest, RemoteAddressBehindANonZeroNumberFindsNothing) {
    EXPECT_EQ(lookup("1_10.1.1.2", 6), MISSING);
    EXPECT_EQ(lookup("1", 6), MISSING) << "the second token is not needed then";
}
TEST_F(LinkKeyTest, RemoteAddressBehindATokenThatIsNoNumberReadsItAsZero) {
    EXPECT_EQ(lookup("x_10.1.1.2", 6), found(1, 0));
}
TEST_F(LinkKeyTest, RemoteAddressIsFormattedInto128Bytes) {
    lookup("0_10.0.0.9", 6);
    EXPECT_EQ(emulator::calls("ip_addr_to_str"), (std::vector<std::string>{"ip_addr_to_str 10.0.0.9 128"}));
}

// ---- Mode 7: the first token of "_" is 0, the second the if-index of the FCIP interface. ----

TEST_F(LinkKeyTest, RemoteIfIndexBehindAZeroFindsTheLink) {
    EXPECT_EQ(lookup("0_17", 7), found(1, 0));
    EXPECT_EQ(lookup("0_18_3225", 7), found(1, 4));
}
TEST_F(LinkKeyTest, RemoteIfIndexBehindANonZeroNumberFindsNothing) {
    EXPECT_EQ(lookup("17_17", 7), MISSING);
    EXPECT_EQ(lookup("1", 7), MISSING) << "the second token is not needed then";
}
TEST_F(LinkKeyTest, RemoteIfIndexThatIsNoNumberReadsAsZero) {
    EXPECT_EQ(lookup("0_x", 7), found(0, 1));
}

// ---- Any other mode. ----

TEST_F(LinkKeyTest, UnknownModesNeverMatchAndWalkToTheEnd) {
    for (const int mode : {0, 8, -1, 100}) {
        emulator::clear_calls();
        EXPECT_EQ(lookup("17", mode), MISSING) << "mode " << mode;
        EXPECT_EQ(lookup("", mode), MISSING) << "mode " << mode;
        EXPECT_EQ(rows_asked_for(), 2 * (ROWS + 1)) << "mode " << mode;
    }
}

// ---- Misses and unusable keys. ----

TEST_F(LinkKeyTest, MissesWalkTheWholeTable) {
    for (const int mode : {1, 2, 3, 4, 5, 6, 7}) {
        emulator::clear_calls();
        EXPECT_EQ(lookup("12345_12345", mode), MISSING) << "mode " << mode;
        EXPECT_EQ(rows_asked_for(), ROWS + 1) << "mode " << mode;
    }
}

TEST_F(LinkKeyTest, EmptyKeyIsUnusableAtTheFirstRowWhereATokenIsNeeded) {
    for (const int mode : {1, 2, 4, 6, 7}) {
        for (const char* key : {"", "_", "____"}) {
            emulator::clear_calls();
            EXPECT_EQ(lookup(key, mode), UNUSABLE) << "mode " << mode << ", key \"" << key << '"';
            EXPECT_EQ(rows_asked_for(), 1u) << "mode " << mode << ", key \"" << key << '"';
        }
    }
}

TEST_F(LinkKeyTest, ColonsAloneAreNoTokenOfAnEthernetKeyOnly) {
    EXPECT_EQ(lookup("::_", 4), UNUSABLE);
    EXPECT_EQ(lookup("::_", 2), found(0, 1)) << "\"::\" is a token that reads as 0";
}

TEST_F(LinkKeyTest, EmptyKeyReadsAsZeroWhereTheWholeStringCounts) {
    EXPECT_EQ(lookup("", 3), found(0, 1));
    EXPECT_EQ(lookup("", 5), found(0, 1));
    emulator::remove_link({0, 1});
    EXPECT_EQ(lookup("", 3), MISSING);
    EXPECT_EQ(lookup("", 5), MISSING);
}

TEST_F(LinkKeyTest, ZeroWithoutASecondTokenIsUnusableAtTheFirstRow) {
    for (const int mode : {6, 7}) {
        for (const char* key : {"0", "0_", "0__", "x"}) {
            emulator::clear_calls();
            EXPECT_EQ(lookup(key, mode), UNUSABLE) << "mode " << mode << ", key \"" << key << '"';
            EXPECT_EQ(rows_asked_for(), 1u);
        }
    }
}

TEST_F(LinkKeyTest, UnusableKeyIsNoticedOnlyAtARow) {
    emulator::clear_links();
    EXPECT_EQ(lookup("", 1), MISSING);
    EXPECT_EQ(lookup("0", 6), MISSING);
}

// ---- Numbers. ----

TEST_F(LinkKeyTest, BlanksSignsAndLeadingZerosBelongToTheNumber) {
    EXPECT_EQ(lookup("  17_x", 2), found(1, 0));
    EXPECT_EQ(lookup("+17", 2), found(1, 0));
    EXPECT_EQ(lookup("0017", 2), found(1, 0));
    EXPECT_EQ(lookup("17abc", 2), found(1, 0));
}

TEST_F(LinkKeyTest, NegativeNumberFindsTheIfIndexThatPrintsSo) {
    for (const int mode : {2, 3, 4})
        EXPECT_EQ(lookup("-1694498816_1", mode), found(5, 6)) << "mode " << mode;
    EXPECT_EQ(lookup("0_-1694498816", 7), found(5, 6));
    EXPECT_EQ(lookup("-1", 3), found(0xFFFFFFFF, 7));
    EXPECT_EQ(lookup("-1", 5), found(0xFFFFFFFF, 7));
}

TEST_F(LinkKeyTest, NumbersAbove32BitsSaturateToTheLargest) {
    for (const char* key : {"2147483647", "2147483648", "2600468480", "4294967295", "4294967296",
                            "99999999999", "99999999999999999999999999"}) {
        for (const int mode : {1, 2, 3, 4})
            EXPECT_EQ(lookup(key, mode), found(3, 0x7FFFFFFE)) << mode << ' ' << key;
        EXPECT_EQ(lookup(std::string("0_") + key, 7), found(3, 0x7FFFFFFE)) << key;
    }
}

TEST_F(LinkKeyTest, NumbersBelow32BitsSaturateToTheSmallest) {
    for (const char* key :
         {"-2147483648", "-2147483649", "-4294967295", "-99999999999", "-99999999999999999999999"}) {
        for (const int mode : {2, 3, 4})
            EXPECT_EQ(lookup(key, mode), found(4, 5)) << mode << ' ' << key;
        EXPECT_EQ(lookup(std::string("0_") + key, 7), found(4, 5)) << key;
    }
}

TEST_F(LinkKeyTest, SaturatedFirstNumberIsNotZero) {
    EXPECT_EQ(lookup("4294967296_10.1.1.2", 6), MISSING);
    EXPECT_EQ(lookup("4294967296_17", 7), MISSING);
}

// ---- Long keys. ----

TEST_F(LinkKeyTest, KeyOf600CharactersIsCutTo511BeforeItIsTakenApart) {
    const std::string key = std::string(510, '0') + "1" + std::string(89, '9');
    ASSERT_EQ(key.size(), 600u);
    EXPECT_EQ(lookup(key, 1), found(1, 0)) << "the 511 characters that are left read as 1";
}
TEST_F(LinkKeyTest, SecondTokenBehindTheCutIsMissing) {
    EXPECT_EQ(lookup("0" + std::string(510, '_') + "10.1.1.2", 6), UNUSABLE);
    EXPECT_EQ(lookup("0" + std::string(509, '_') + "17", 7), MISSING) << "only the 1 is left of 17";
}
TEST_F(LinkKeyTest, WholeStringIsNotCut) {
    EXPECT_EQ(lookup(std::string(598, '0') + "17", 3), found(1, 0));
    EXPECT_EQ(lookup(std::string(599, '0') + "2", 5), found(2, 0));
}

// ---- The platform's answers. ----

TEST_F(LinkKeyTest, WalkAsksForTheRowBehindTheLastAndStopsAtTheMatch) {
    lookup("18", 2);
    EXPECT_EQ(emulator::calls("fcip_get_link_entry"),
              (std::vector<std::string>{"fcip_get_link_entry op=2 key={0,0} 30 1",
                                        "fcip_get_link_entry op=2 key={0,1} 30 1",
                                        "fcip_get_link_entry op=2 key={1,0} 30 1"}));
}

TEST_F(LinkKeyTest, FailedRequestEndsTheWalkAsAMiss) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        const std::size_t failures =
            for_each_platform_failure("fcip_get_link_entry", effect, [&](std::size_t nth) {
                EXPECT_EQ(lookup("18", 2), nth <= 3 ? MISSING : found(1, 4));
                EXPECT_EQ(rows_asked_for(), nth <= 3 ? nth : 3u);
            });
        EXPECT_EQ(failures, 3u);
    }
}

TEST_F(LinkKeyTest, FailedRequestIsAMissEvenForAnUnusableKey) {
    emulator::fail_always("fcip_get_link_entry");
    EXPECT_EQ(lookup("", 1), MISSING);
}

TEST_F(LinkKeyTest, ClosedQueueIsAMiss) {
    emulator::close_queue();
    EXPECT_EQ(lookup("17", 2), MISSING);
}

TEST_F(LinkKeyTest, LookupPrintsNothing) {
    EXPECT_EQ(test_support::printed_by([] {
                  lookup("17", 2);
                  lookup("0_10.1.1.2", 6);
                  lookup("", 1);
              }),
              "");
}

// ---- The other link walks. ----

TEST_F(LinkKeyTest, AllLinkEntriesAreWalkedAndDiscarded) {
    EXPECT_EQ(locked([] { return get_all_link_entries(mts_q); }), 0);
    EXPECT_EQ(
        emulator::calls("fcip_get_link_entry"),
        (std::vector<std::string>{
            "fcip_get_link_entry op=2 key={0,0} 30 1", "fcip_get_link_entry op=2 key={0,1} 30 1",
            "fcip_get_link_entry op=2 key={1,0} 30 1", "fcip_get_link_entry op=2 key={1,4} 30 1",
            "fcip_get_link_entry op=2 key={2,0} 30 1", "fcip_get_link_entry op=2 key={3,2147483646} 30 1",
            "fcip_get_link_entry op=2 key={4,5} 30 1", "fcip_get_link_entry op=2 key={5,6} 30 1",
            "fcip_get_link_entry op=2 key={4294967295,7} 30 1"}));
}

TEST_F(LinkKeyTest, AllLinkEntriesAnswersZeroWhateverFails) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        for_each_platform_failure("fcip_get_link_entry", effect, [&](std::size_t nth) {
            EXPECT_EQ(locked([] { return get_all_link_entries(mts_q); }), 0);
            EXPECT_EQ(rows_asked_for(), nth <= ROWS + 1 ? nth : ROWS + 1);
        });
    }
}

TEST_F(LinkKeyTest, LinkOfAnIndexIsTheFirstWhateverItsEntity) {
    FcipLinkEntry out{};
    EXPECT_EQ(locked([&] { return get_link_from_link_index(mts_q, 0, &out); }), 0);
    EXPECT_EQ(out.kfmFcipEntityId, 1u);
    EXPECT_EQ(out.kfmFcipLinkIfIndex, 17u);
    EXPECT_EQ(out.reserved_144[1031], 0x5A) << "the row was not copied whole";
    EXPECT_EQ(rows_asked_for(), 2u);
}

TEST_F(LinkKeyTest, LinkOfAnUnknownIndexIsAFailure) {
    FcipLinkEntry out = link_row(77, 77, 77);
    EXPECT_EQ(locked([&] { return get_link_from_link_index(mts_q, 3, &out); }), -1);
    EXPECT_EQ(out.kfmFcipEntityId, 77u) << "the output must stay untouched";
    EXPECT_EQ(rows_asked_for(), ROWS + 1);
}

TEST_F(LinkKeyTest, LinkOfAnIndexFailsWithTheRequest) {
    for (const Effect effect : {Effect::Fail, Effect::FailWithRow, Effect::SucceedWithoutRow}) {
        for_each_platform_failure("fcip_get_link_entry", effect, [&](std::size_t nth) {
            FcipLinkEntry out = link_row(77, 77, 77);
            EXPECT_EQ(locked([&] { return get_link_from_link_index(mts_q, 4, &out); }), nth <= 3 ? -1 : 0);
            EXPECT_EQ(out.kfmFcipEntityId, nth <= 3 ? 77u : 1u);
        });
    }
}

} // namespace
