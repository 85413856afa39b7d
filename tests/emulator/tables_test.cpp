// The FCIP service's tables: exact and get-next requests, key order, row contents.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

using Keys = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

class FcipTables : public LockedTest {
  protected:
    static FcipLinkEntry link_row(std::uint32_t entityId, std::uint32_t linkIndex) {
        FcipLinkEntry row{};
        row.kfmFcipEntityId = entityId;
        row.kfmFcipLinkIndex = linkIndex;
        return row;
    }

    static Keys walk_links() {
        Keys keys;
        FcipLinkKey key{0, 0};
        Row<FcipLinkEntry> row;
        while (fcip_get_link_entry(mts_q, 2, &key, row.slot(), 30, 1) == 0) {
            key = {row->kfmFcipEntityId, row->kfmFcipLinkIndex};
            keys.emplace_back(key.entityId, key.linkIndex);
        }
        EXPECT_FALSE(row) << "no row comes at the end of a table";
        return keys;
    }
};

TEST_F(FcipTables, LinksAreWalkedInUnsignedKeyOrder) {
    emulator::clear_links();
    for (const auto& [entityId, linkIndex] :
         Keys{{0x80000001, 2}, {2, 0xFFFFFFFF}, {10, 1}, {2, 0x7FFFFFFF}, {2, 0x80000000}, {1, 5}}) {
        emulator::add_link(link_row(entityId, linkIndex));
    }
    EXPECT_EQ(walk_links(),
              Keys({{1, 5}, {2, 0x7FFFFFFF}, {2, 0x80000000}, {2, 0xFFFFFFFF}, {10, 1}, {0x80000001, 2}}));
}

TEST_F(FcipTables, BuiltInSwitchHasFiveTunnels) {
    EXPECT_EQ(walk_links(), Keys({{1, 0}, {1, 1}, {2, 2}, {2, 3}, {3, 4}}));
}

TEST_F(FcipTables, GetNextTakesAnyKeyNotOnlyExistingOnes) {
    const FcipLinkKey key{1, 77};
    Row<FcipLinkEntry> row;
    ASSERT_EQ(fcip_get_link_entry(mts_q, 2, &key, row.slot(), 30, 1), 0);
    EXPECT_EQ(row->kfmFcipEntityId, 2U);
}

TEST_F(FcipTables, LinkWithKeyZeroIsReachedByExactRequestOnly) {
    emulator::clear_links();
    emulator::add_link(link_row(0, 0));
    EXPECT_TRUE(walk_links().empty());
    const FcipLinkKey key{0, 0};
    Row<FcipLinkEntry> row;
    EXPECT_EQ(fcip_get_link_entry(mts_q, 1, &key, row.slot(), 30, 1), 0);
    EXPECT_TRUE(row);
}

TEST_F(FcipTables, MissingRowFailsAndLeavesTheSlotAlone) {
    FcipLinkEntry mark{};
    FcipLinkEntry* row = &mark;
    const FcipLinkKey key{9, 9};
    EXPECT_NE(fcip_get_link_entry(mts_q, 1, &key, &row, 30, 1), 0);
    EXPECT_EQ(row, &mark);
}

TEST_F(FcipTables, LinkRowIsHandedOutWholeAndFresh) {
    FcipLinkEntry wanted = link_row(7, 7);
    std::memset(wanted.reserved_144, 0xA5, sizeof wanted.reserved_144);
    emulator::add_link(wanted);
    const FcipLinkKey key{7, 7};
    Row<FcipLinkEntry> first, second;
    ASSERT_EQ(fcip_get_link_entry(mts_q, 1, &key, first.slot(), 30, 1), 0);
    ASSERT_EQ(fcip_get_link_entry(mts_q, 1, &key, second.slot(), 30, 1), 0);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(std::memcmp(first.get(), &wanted, sizeof wanted), 0);
}

TEST_F(FcipTables, EntitiesAreWalkedInUnsignedOrder) {
    FcipEntityEntry high{};
    high.kfmFcipEntityId = 0xFFFFFFFF;
    emulator::add_entity(high);
    std::vector<std::uint32_t> ids;
    std::uint32_t id = 0;
    Row<FcipEntityEntry> row;
    while (fcip_get_entity_entry(mts_q, 2, id, row.slot(), 5) == 0) {
        ids.push_back(id = row->kfmFcipEntityId);
    }
    EXPECT_EQ(ids, (std::vector<std::uint32_t>{1, 2, 3, 0xFFFFFFFF}));
}

TEST_F(FcipTables, EntityRowCarriesTheProfile) {
    Row<FcipEntityEntry> row;
    ASSERT_EQ(fcip_get_entity_entry(mts_q, 1, 3, row.slot(), 30), 0);
    char text[64];
    EXPECT_EQ(ip_addr_to_str(&row->kfmFcipEntityAddress, text, sizeof text), 0);
    EXPECT_STREQ(text, "2001:db8:10::1");
    EXPECT_EQ(row->kfmFcipEntityTcpPort, 3225U);
    EXPECT_EQ(row->kfmFcipEntityPmtuResetTimeout, 3600U);
    EXPECT_EQ(row->kfmFcipEntityIfIndex, ETHERNET_1_2);
    EXPECT_EQ(row->kfmFcipEntityMaxJitter, 500U);
}

TEST_F(FcipTables, TcpConnectionIsFoundByItsFourNumbers) {
    FcipTcpConnKey key{1, 0, 3225, 3225};
    Row<FcipTcpConnEntry> row;
    ASSERT_EQ(fcip_get_tcpconn_entry(mts_q, 1, &key, row.slot(), 15), 0);
    EXPECT_EQ(row->connectionPurpose, 1U);
    EXPECT_EQ(row->receiverWindowSize, 65535U);
    EXPECT_EQ(row->maximumSegmentSize, 2260U);
    EXPECT_EQ(row->connectionTimeOut, 60U);
    key.localPort = 3227;
    ASSERT_EQ(fcip_get_tcpconn_entry(mts_q, 1, &key, row.slot(), 15), 0);
    EXPECT_EQ(row->connectionPurpose, 2U);
    key.remotePort = 1;
    EXPECT_NE(fcip_get_tcpconn_entry(mts_q, 1, &key, row.slot(), 15), 0);
}

TEST_F(FcipTables, LinkErrorsCarryLowWordsFirst) {
    FcipLinkErrors errors{};
    errors.kfmFcipEntityId = 1;
    for (std::uint32_t i = 0; i < 26; ++i) {
        errors.counters[i] = 0x1000 + i;
    }
    emulator::set_link_errors(errors);
    const FcipLinkKey key{1, 0};
    Row<FcipLinkErrors> row;
    ASSERT_EQ(fcip_snmp_get_link_errors(mts_q, 1, &key, row.slot(), 10), 0);
    EXPECT_EQ(std::memcmp(row.get(), &errors, sizeof errors), 0);
}

TEST_F(FcipTables, LinkErrorsMoveWithTheClockAcrossTheWordBoundary) {
    emulator::load_json(R"({"system": {"hostName": "h", "name": "n", "wwn": "20:00:02:4b:53:00:00:01"},
        "ports": [{"ifIndex": 5, "type": 11}],
        "profiles": [{"entityId": 1, "address": "192.0.2.1"}],
        "tunnels": [{"entityId": 1, "linkIndex": 0, "ifIndex": 5, "remEntityAddress": "192.0.2.2",
                     "errors": {"lossOfFcSynchs": {"start": 4294967290, "rate": 2}, "saParamMismatch": 9}}]})");
    emulator::set_clock(0);
    const FcipLinkKey key{1, 0};
    Row<FcipLinkErrors> row;
    ASSERT_EQ(fcip_snmp_get_link_errors(mts_q, 1, &key, row.slot(), 10), 0);
    EXPECT_EQ(row->counters[0], 4294967290U);
    EXPECT_EQ(row->counters[1], 0U);
    emulator::advance_clock(4);
    ASSERT_EQ(fcip_snmp_get_link_errors(mts_q, 1, &key, row.slot(), 10), 0);
    EXPECT_EQ(row->counters[0], 2U);
    EXPECT_EQ(row->counters[1], 1U);
    EXPECT_EQ(row->counters[24], 9U);
}

TEST_F(FcipTables, ProfileInterfacesAreThoseOfItsTunnels) {
    const std::uint32_t entityId = 2;
    Row<void> reply;
    std::uint32_t length = 0;
    MtsMessage buffer{};
    ASSERT_EQ(
        fcip_send_recv_with_mts_q(8946, 0xFE000000, 60, &entityId, 4, mts_q, reply.slot(), &length, &buffer),
        0);
    ASSERT_EQ(length, 12U);
    std::vector<std::uint32_t> words(3);
    std::memcpy(words.data(), reply.get(), 12);
    EXPECT_EQ(words, (std::vector<std::uint32_t>{2, 0x0A000003, 0x0A000004}));
}

TEST_F(FcipTables, ProfileWithoutTunnelsHasAnEmptyListAndAnUnknownProfileNone) {
    emulator::clear_links();
    std::uint32_t entityId = 2;
    Row<void> reply;
    std::uint32_t length = 0;
    ASSERT_EQ(
        fcip_send_recv_with_mts_q(8946, 0xFE000000, 60, &entityId, 4, mts_q, reply.slot(), &length, nullptr),
        0);
    EXPECT_EQ(length, 4U);
    entityId = 99;
    EXPECT_NE(
        fcip_send_recv_with_mts_q(8946, 0xFE000000, 60, &entityId, 4, mts_q, reply.slot(), &length, nullptr),
        0);
    EXPECT_FALSE(reply);
}

} // namespace
} // namespace emulator_test
