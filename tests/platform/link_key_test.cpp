// How key strings find their link: the seven ways to read a key, what misses, and what no key can name.
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "platform/fcip_config.h"
#include "platform/link_key.h"
#include "platform/platform_services.h"
#include "tests/support/faults.h"
#include "tests/support/provider_test.h"
#include "tests/support/rows.h"

namespace {

using emulator::Effect;
using test_support::address;
using test_support::link_row;
using test_support::ROW_FAILURES;

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

// A key, read in one mode, and the link that it finds.
struct Case {
    const char* name;
    std::string key;
    int mode;
    Lookup lookup;
};
void PrintTo(const Case& row, std::ostream* out) {
    *out << '"' << row.key << "\" in mode " << row.mode;
}

class LinkOfKey : public LinkKeyTest, public testing::WithParamInterface<Case> {};

TEST_P(LinkOfKey, IsFoundOrNot) {
    EXPECT_EQ(lookup(GetParam().key, GetParam().mode), GetParam().lookup);
}

const std::vector<Case> CASES{
    // The first token of "_" is the tunnel number, one more than the link index.
    {"TunnelNumberOneFindsLinkIndexZero", "1_10.1.1.1_10.1.1.2", LINK_BY_TUNNEL, found(1, 0)},
    {"TunnelNumberFindsTheLinkOfThatIndexMinusOne", "5_10.1.1.1_10.1.1.3", LINK_BY_TUNNEL, found(1, 4)},
    {"TunnelNumberNeedsNothingAfterIt", "2", LINK_BY_TUNNEL, found(0, 1)},
    {"TunnelNumberZeroFindsNothing", "0_10.1.1.1_10.1.1.2", LINK_BY_TUNNEL, MISSING},
    {"TunnelNumberWithoutALinkFindsNothing", "4_10.1.1.1_10.1.1.2", LINK_BY_TUNNEL, MISSING},

    // The first token of "_" is the if-index of the FCIP interface. Text that is no number reads as 0.
    {"IfIndexTokenFindsTheLink", "17", LINK_BY_IF_INDEX_TOKEN, found(1, 0)},
    {"IfIndexTokenEndsAtAnUnderscore", "18_10.1.1.1_10.1.1.3", LINK_BY_IF_INDEX_TOKEN, found(1, 4)},
    {"ColonEndsTheNumberOfAnIfIndexToken", "18:5", LINK_BY_IF_INDEX_TOKEN, found(1, 4)},
    {"ColonBelongsToAnIfIndexToken", ":18", LINK_BY_IF_INDEX_TOKEN, found(0, 1)},
    {"ColonsAreAnIfIndexToken", "::_", LINK_BY_IF_INDEX_TOKEN, found(0, 1)},
    {"UnknownIfIndexTokenFindsNothing", "20", LINK_BY_IF_INDEX_TOKEN, MISSING},

    // The whole string is that if-index.
    {"WholeStringIfIndexFindsTheLink", "17", LINK_BY_IF_INDEX, found(1, 0)},
    {"WholeStringIfIndexMayHaveTextAfterIt", "19_whatever", LINK_BY_IF_INDEX, found(2, 0)},
    {"WholeStringIfIndexHasNoSeparators", "_17", LINK_BY_IF_INDEX, found(0, 1)},

    // The first token of ":" or "_" is the if-index of the Ethernet port.
    {"EthernetIfIndexEndsAtAnUnderscore", "9_1", LINK_BY_ETHERNET_IF_INDEX, found(1, 4)},
    {"EthernetIfIndexEndsAtAColon", "9:1", LINK_BY_ETHERNET_IF_INDEX, found(1, 4)},
    {"EthernetIfIndexNeedsNothingAfterIt", "9", LINK_BY_ETHERNET_IF_INDEX, found(1, 4)},
    {"SeparatorsBeforeTheEthernetIfIndexAreSkipped", ":_:9", LINK_BY_ETHERNET_IF_INDEX, found(1, 4)},
    {"ColonsAreNoEthernetIfIndex", "::_", LINK_BY_ETHERNET_IF_INDEX, UNUSABLE},
    {"FirstLinkOfAnEthernetPortIsFound", "8:00", LINK_BY_ETHERNET_IF_INDEX, found(1, 0)},
    {"UnknownEthernetIfIndexFindsNothing", "17", LINK_BY_ETHERNET_IF_INDEX, MISSING},

    // The whole string is the entity id.
    {"EntityIdFindsTheFirstLinkOfTheEntity", "1", LINK_BY_ENTITY, found(1, 0)},
    {"EntityIdMayHaveTextAfterIt", "2_x", LINK_BY_ENTITY, found(2, 0)},
    {"UnknownEntityIdFindsNothing", "17", LINK_BY_ENTITY, MISSING},

    // The first token of "_" is 0, the second the remote address as text.
    {"RemoteAddressAfterAZeroFindsTheLink", "0_10.1.1.3", LINK_BY_REMOTE_ADDRESS, found(1, 4)},
    {"RemoteAddressEndsAtAnUnderscore", "0_10.1.1.2_10.1.1.1", LINK_BY_REMOTE_ADDRESS, found(1, 0)},
    {"RemoteAddressIgnoresLetterCase", "0_2001:DB8::AB", LINK_BY_REMOTE_ADDRESS, found(2, 0)},
    {"RemoteAddressMustNotGoOn", "0_10.1.1.20", LINK_BY_REMOTE_ADDRESS, MISSING},
    {"RemoteAddressMustBeWhole", "0_10.1.1", LINK_BY_REMOTE_ADDRESS, MISSING},
    {"RemoteAddressHasNoBlanks", "0_ 10.1.1.2", LINK_BY_REMOTE_ADDRESS, MISSING},
    {"RemoteAddressAfterANonZeroNumberFindsNothing", "1_10.1.1.2", LINK_BY_REMOTE_ADDRESS, MISSING},
    {"NonZeroNumberNeedsNoRemoteAddress", "1", LINK_BY_REMOTE_ADDRESS, MISSING},
    {"RemoteAddressAfterTextFindsTheLink", "x_10.1.1.2", LINK_BY_REMOTE_ADDRESS, found(1, 0)},
    {"SaturatedNumberBeforeARemoteAddressIsNotZero", "4294967296_10.1.1.2", LINK_BY_REMOTE_ADDRESS, MISSING},

    // The first token of "_" is 0, the second the if-index of the FCIP interface.
    {"RemoteIfIndexAfterAZeroFindsTheLink", "0_17", LINK_BY_REMOTE_IF_INDEX, found(1, 0)},
    {"RemoteIfIndexEndsAtAnUnderscore", "0_18_3225", LINK_BY_REMOTE_IF_INDEX, found(1, 4)},
    {"RemoteIfIndexAfterANonZeroNumberFindsNothing", "17_17", LINK_BY_REMOTE_IF_INDEX, MISSING},
    {"NonZeroNumberNeedsNoRemoteIfIndex", "1", LINK_BY_REMOTE_IF_INDEX, MISSING},
    {"RemoteIfIndexThatIsNoNumberReadsAsZero", "0_x", LINK_BY_REMOTE_IF_INDEX, found(0, 1)},
    {"SaturatedNumberBeforeARemoteIfIndexIsNotZero", "4294967296_17", LINK_BY_REMOTE_IF_INDEX, MISSING},

    // Blanks, signs and leading zeros belong to the number, and negative ones name what prints so.
    {"BlanksBelongToTheNumber", "  17_x", LINK_BY_IF_INDEX_TOKEN, found(1, 0)},
    {"PlusSignBelongsToTheNumber", "+17", LINK_BY_IF_INDEX_TOKEN, found(1, 0)},
    {"LeadingZerosBelongToTheNumber", "0017", LINK_BY_IF_INDEX_TOKEN, found(1, 0)},
    {"LettersEndTheNumber", "17abc", LINK_BY_IF_INDEX_TOKEN, found(1, 0)},
    {"NegativeIfIndexToken", "-1694498816_1", LINK_BY_IF_INDEX_TOKEN, found(5, 6)},
    {"NegativeIfIndex", "-1694498816_1", LINK_BY_IF_INDEX, found(5, 6)},
    {"NegativeEthernetIfIndex", "-1694498816_1", LINK_BY_ETHERNET_IF_INDEX, found(5, 6)},
    {"NegativeRemoteIfIndex", "0_-1694498816", LINK_BY_REMOTE_IF_INDEX, found(5, 6)},
    {"MinusOneIsTheLargestIfIndex", "-1", LINK_BY_IF_INDEX, found(0xFFFFFFFF, 7)},
    {"MinusOneIsTheLargestEntityId", "-1", LINK_BY_ENTITY, found(0xFFFFFFFF, 7)},

    // An empty key is a number where the whole string counts.
    {"EmptyIfIndexIsZero", "", LINK_BY_IF_INDEX, found(0, 1)},
    {"EmptyEntityIdIsZero", "", LINK_BY_ENTITY, found(0, 1)},

    // Keys are cut to 511 characters before they are taken apart; where the whole string counts, they are
    // not.
    {"KeyOf600CharactersIsCut", std::string(510, '0') + "1" + std::string(89, '9'), LINK_BY_TUNNEL,
     found(1, 0)},
    {"SecondTokenAfterTheCutIsMissing", "0" + std::string(510, '_') + "10.1.1.2", LINK_BY_REMOTE_ADDRESS,
     UNUSABLE},
    {"OnlyTheOneIsLeftOfSeventeen", "0" + std::string(509, '_') + "17", LINK_BY_REMOTE_IF_INDEX, MISSING},
    {"WholeStringIfIndexIsNotCut", std::string(598, '0') + "17", LINK_BY_IF_INDEX, found(1, 0)},
    {"WholeStringEntityIdIsNotCut", std::string(599, '0') + "2", LINK_BY_ENTITY, found(2, 0)},
};
INSTANTIATE_TEST_SUITE_P(By, LinkOfKey, testing::ValuesIn(CASES),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LinkKeyTest, FirstLinkOfATunnelNumberInTableOrderIsFound) {
    emulator::remove_link({1, 0});
    EXPECT_EQ(lookup("1_x", LINK_BY_TUNNEL), found(2, 0));
}

TEST_F(LinkKeyTest, RemoteAddressIsFormattedInto128Bytes) {
    lookup("0_10.0.0.9", LINK_BY_REMOTE_ADDRESS);
    EXPECT_EQ(emulator::calls("ip_addr_to_str"), (std::vector<std::string>{"ip_addr_to_str 10.0.0.9 128"}));
}

TEST_F(LinkKeyTest, UnknownModesNeverMatchAndWalkToTheEnd) {
    for (const int mode : {0, 8, -1, 100}) {
        emulator::clear_calls();
        EXPECT_EQ(lookup("17", mode), MISSING) << "mode " << mode;
        EXPECT_EQ(lookup("", mode), MISSING) << "mode " << mode;
        EXPECT_EQ(rows_asked_for(), 2 * (ROWS + 1)) << "mode " << mode;
    }
}

// Misses and unusable keys.

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
            EXPECT_EQ(rows_asked_for(), 1U) << "mode " << mode << ", key \"" << key << '"';
        }
    }
}

TEST_F(LinkKeyTest, EmptyKeyFindsNothingWithoutALinkOfZeros) {
    emulator::remove_link({0, 1});
    EXPECT_EQ(lookup("", 3), MISSING);
    EXPECT_EQ(lookup("", 5), MISSING);
}

TEST_F(LinkKeyTest, ZeroWithoutASecondTokenIsUnusableAtTheFirstRow) {
    for (const int mode : {6, 7}) {
        for (const char* key : {"0", "0_", "0__", "x"}) {
            emulator::clear_calls();
            EXPECT_EQ(lookup(key, mode), UNUSABLE) << "mode " << mode << ", key \"" << key << '"';
            EXPECT_EQ(rows_asked_for(), 1U);
        }
    }
}

TEST_F(LinkKeyTest, UnusableKeyIsNoticedOnlyAtARow) {
    emulator::clear_links();
    EXPECT_EQ(lookup("", 1), MISSING);
    EXPECT_EQ(lookup("0", 6), MISSING);
}

TEST_F(LinkKeyTest, NumbersAbove32BitsSaturateToTheLargest) {
    for (const char* key : {"2147483647", "2147483648", "2600468480", "4294967295", "4294967296",
                            "99999999999", "99999999999999999999999999"}) {
        for (const int mode : {1, 2, 3, 4}) {
            EXPECT_EQ(lookup(key, mode), found(3, 0x7FFFFFFE)) << mode << ' ' << key;
        }
        EXPECT_EQ(lookup(std::string("0_") + key, 7), found(3, 0x7FFFFFFE)) << key;
    }
}

TEST_F(LinkKeyTest, NumbersBelow32BitsSaturateToTheSmallest) {
    for (const char* key :
         {"-2147483648", "-2147483649", "-4294967295", "-99999999999", "-99999999999999999999999"}) {
        for (const int mode : {2, 3, 4}) {
            EXPECT_EQ(lookup(key, mode), found(4, 5)) << mode << ' ' << key;
        }
        EXPECT_EQ(lookup(std::string("0_") + key, 7), found(4, 5)) << key;
    }
}

// The platform's answers.

TEST_F(LinkKeyTest, WalkAsksForTheRowAfterTheLastAndStopsAtTheMatch) {
    lookup("18", 2);
    EXPECT_EQ(emulator::calls("fcip_get_link_entry"),
              (std::vector<std::string>{"fcip_get_link_entry op=2 key={0,0} 30 1",
                                        "fcip_get_link_entry op=2 key={0,1} 30 1",
                                        "fcip_get_link_entry op=2 key={1,0} 30 1"}));
}

TEST_F(LinkKeyTest, FailedRequestEndsTheWalkAsAMiss) {
    for (const Effect effect : ROW_FAILURES) {
        const std::size_t failures =
            for_each_platform_failure("fcip_get_link_entry", effect, [&](std::size_t nth) {
                EXPECT_EQ(lookup("18", 2), nth <= 3 ? MISSING : found(1, 4));
                EXPECT_EQ(rows_asked_for(), nth <= 3 ? nth : 3U);
            });
        EXPECT_EQ(failures, 3U);
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

// The other link walks.

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
    for (const Effect effect : ROW_FAILURES) {
        for_each_platform_failure("fcip_get_link_entry", effect, [&](std::size_t nth) {
            EXPECT_EQ(locked([] { return get_all_link_entries(mts_q); }), 0);
            EXPECT_EQ(rows_asked_for(), nth <= ROWS + 1 ? nth : ROWS + 1);
        });
    }
}

TEST_F(LinkKeyTest, LinkOfAnIndexIsTheFirstWhateverItsEntity) {
    FcipLinkEntry out{};
    EXPECT_EQ(locked([&] { return get_link_from_link_index(mts_q, 0, &out); }), 0);
    EXPECT_EQ(out.kfmFcipEntityId, 1U);
    EXPECT_EQ(out.kfmFcipLinkIfIndex, 17U);
    EXPECT_EQ(out.reserved_144[1031], 0x5A) << "the row was not copied whole";
    EXPECT_EQ(rows_asked_for(), 2U);
}

TEST_F(LinkKeyTest, LinkOfAnUnknownIndexIsAFailure) {
    FcipLinkEntry out = link_row(77, 77, 77);
    EXPECT_EQ(locked([&] { return get_link_from_link_index(mts_q, 3, &out); }), -1);
    EXPECT_EQ(out.kfmFcipEntityId, 77U) << "the output must stay untouched";
    EXPECT_EQ(rows_asked_for(), ROWS + 1);
}

TEST_F(LinkKeyTest, LinkOfAnIndexFailsWithTheRequest) {
    for (const Effect effect : ROW_FAILURES) {
        for_each_platform_failure("fcip_get_link_entry", effect, [&](std::size_t nth) {
            FcipLinkEntry out = link_row(77, 77, 77);
            EXPECT_EQ(locked([&] { return get_link_from_link_index(mts_q, 4, &out); }), nth <= 3 ? -1 : 0);
            EXPECT_EQ(out.kfmFcipEntityId, nth <= 3 ? 77U : 1U);
        });
    }
}

} // namespace
