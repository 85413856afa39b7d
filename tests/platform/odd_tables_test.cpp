// Platform tables that no switch should have: a key that stands there twice, and tables without an end. The
// services that read the tables are this program's own here, which the provider finds before the platform's.
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "include/classes.h"
#include "platform/fcip_config.h"
#include "platform/link_key.h"
#include "platform/platform_services.h"
#include "tests/support/provider_test.h"
#include "tests/support/rows.h"

#define SEEN_BY_ALL __attribute__((visibility("default")))

namespace {

using test_support::Answer;
using test_support::entity_row;
using test_support::link_row;
using test_support::NAMESPACE;
using test_support::port_row;

// The rows of a table in the order in which they are handed out, whatever key is asked for.
template <typename Row>
struct Script {
    std::vector<Row> rows;
    bool circle = false; // begins again after its last row
    std::size_t calls = 0;

    static constexpr std::size_t TOO_MANY = 10'000'000;

    int answer(Row** out) {
        const std::size_t number = calls++;
        if (number == TOO_MANY) ADD_FAILURE() << "the walk does not end";
        if (number >= TOO_MANY || rows.empty() || (number >= rows.size() && !circle)) return 1;
        *out = static_cast<Row*>(std::malloc(sizeof(Row)));
        std::memcpy(*out, &rows[number % rows.size()], sizeof(Row));
        return 0;
    }
};

Script<FcipLinkEntry> links;
Script<FcipEntityEntry> entities;
Script<PortInfo> ports;

} // namespace

extern "C" {

SEEN_BY_ALL int fcip_get_link_entry(std::uint32_t, int, const FcipLinkKey*, FcipLinkEntry** row, int, int) {
    return links.answer(row);
}
SEEN_BY_ALL int fcip_get_entity_entry(std::uint32_t, int, std::uint32_t, FcipEntityEntry** row, int) {
    return entities.answer(row);
}
SEEN_BY_ALL int pm_cim_get_port_info(PortInfo** row, int, std::uint32_t, std::uint32_t) {
    return ports.answer(row);
}

} // extern "C"

namespace {

class OddTablesTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        links = {};
        entities = {};
        ports = {};
    }

    static FcipEntityEntry entity(std::uint32_t id, std::uint32_t tcpPort) {
        FcipEntityEntry row = entity_row(id);
        row.kfmFcipEntityTcpPort = tcpPort;
        return row;
    }
    static PortInfo port(std::uint32_t ifIndex) {
        PortInfo row{};
        row.ifIndex = ifIndex;
        emulator::add_port(port_row(ifIndex, test_support::GIGABIT_ETHERNET_PORT, 1)); // its type
        return row;
    }
};

TEST_F(OddTablesTest, LastProfileOfANumberWins) {
    entities.rows = {entity(1, 10), entity(1, 20), entity(2, 30)};
    FcipEntityEntry out{};
    EXPECT_EQ(locked([&] { return get_fcip_entity_from_key_value(mts_q, "1", &out); }), 1);
    EXPECT_EQ(out.kfmFcipEntityTcpPort, 20U);
    EXPECT_EQ(entities.calls, 4U);
}

TEST_F(OddTablesTest, LastProfileOfANumberWinsHoweverFarOn) {
    entities.rows = {entity(1, 10), entity(2, 30), entity(3, 30), entity(1, 20)};
    FcipEntityEntry out{};
    EXPECT_EQ(locked([&] { return get_fcip_entity_from_key_value(mts_q, "1", &out); }), 1);
    EXPECT_EQ(out.kfmFcipEntityTcpPort, 20U);
}

TEST_F(OddTablesTest, FirstProfileOfANumberIsFoundWhereTheWalkStops) {
    entities.rows = {entity(1, 10), entity(1, 20)};
    FcipEntityEntry out{};
    test_support::printed_by([&] { EXPECT_EQ(locked([&] { return get_fcip_entity_from("1", &out); }), 0); });
    EXPECT_EQ(out.kfmFcipEntityTcpPort, 10U);
    EXPECT_EQ(entities.calls, 1U);
}

TEST_F(OddTablesTest, LinkAfterOneOfTheSameKeyIsVisited) {
    links.rows = {link_row(1, 0, 17), link_row(1, 0, 18), link_row(1, 1, 19)};
    FcipLinkEntry out{};
    EXPECT_EQ(locked([&] { return get_fcip_link_entry_from("18", &out, LINK_BY_IF_INDEX); }), 0);
    EXPECT_EQ(out.kfmFcipLinkIfIndex, 18U);
    links.calls = 0;
    EXPECT_EQ(locked([&] { return get_fcip_link_entry_from("19", &out, LINK_BY_IF_INDEX); }), 0);
    EXPECT_EQ(out.kfmFcipLinkIfIndex, 19U);
}

TEST_F(OddTablesTest, TableInAnyOrderIsWalkedWhole) {
    links.rows = {link_row(9, 9, 1), link_row(1, 0, 2), link_row(5, 0, 3), link_row(1, 7, 4)};
    for (const char* ifIndex : {"1", "2", "3", "4"}) {
        links.calls = 0;
        FcipLinkEntry out{};
        locked([&] { return get_fcip_link_entry_from(ifIndex, &out, LINK_BY_IF_INDEX); });
        EXPECT_EQ(std::to_string(out.kfmFcipLinkIfIndex), ifIndex);
    }
}

TEST_F(OddTablesTest, CircleOfLinksIsLeft) {
    links.circle = true;
    for (const std::size_t length : {1U, 2U, 3U, 100U}) {
        links.rows.clear();
        for (std::uint32_t index = 0; index < length; ++index) {
            links.rows.push_back(link_row(1, index, 17 + index));
        }
        links.calls = 0;
        EXPECT_EQ(locked([] { return get_all_link_entries(mts_q); }), 0);
        FcipLinkEntry out = link_row(77, 77, 77);
        links.calls = 0;
        EXPECT_EQ(locked([&] { return get_fcip_link_entry_from("9999", &out, LINK_BY_IF_INDEX); }), 0);
        EXPECT_EQ(out.kfmFcipEntityId, 77U);
    }
}

TEST_F(OddTablesTest, CircleOfProfilesIsLeft) {
    entities.circle = true;
    entities.rows = {entity(1, 10), entity(2, 20), entity(3, 30)};
    FcipEntityEntry out{};
    EXPECT_EQ(locked([&] { return get_fcip_entity_from_key_value(mts_q, "2", &out); }), 1);
    EXPECT_EQ(out.kfmFcipEntityTcpPort, 20U);
    entities.calls = 0;
    EXPECT_EQ(locked([&] { return get_fcip_entity_from("9", &out); }), 0);
}

TEST_F(OddTablesTest, CircleOfPortsIsLeft) {
    ports.circle = true;
    ports.rows = {port(0x9B010000), port(0x9B010001)};
    const Answer answer = walk([&](const CMPIResult* result) {
        return get_etherport_from_if_index(99, 0, "KESTO_EthernetPort", result, NAMESPACE, nullptr,
                                           broker.cmpi());
    });
    EXPECT_TRUE(answer.returned.empty());
}

TEST_F(OddTablesTest, EnumerationOfACircleEnds) {
    links.circle = true;
    links.rows = {link_row(1, 0, 17)};
    const Answer answer = enumerate("KESTO_FCIPProtocolEndPoint");
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    // The remembered row is met a hundred times: it was returned once, and then 99 times more.
    EXPECT_EQ(answer.returned.size(), 100U);
}

} // namespace
