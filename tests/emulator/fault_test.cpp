// Scripted faults: which calls they hit, and what becomes of the call.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

using Outcomes = std::vector<bool>; // of calls in order: true = success

class Faults : public LockedTest {
  protected:
    static int get_entity(std::uint32_t id, int op = 1) {
        Row<FcipEntityEntry> row;
        return fcip_get_entity_entry(mts_q, op, id, row.slot(), 5);
    }

    static Outcomes outcomes(int calls) {
        Outcomes results;
        for (int i = 0; i < calls; ++i) {
            results.push_back(get_entity(1) == 0);
        }
        return results;
    }
};

TEST_F(Faults, NthCallFailsOnce) {
    emulator::fail_call("fcip_get_entity_entry", 2, 99);
    EXPECT_EQ(get_entity(1), 0);
    EXPECT_EQ(get_entity(1), 99);
    EXPECT_EQ(get_entity(1), 0);
}

TEST_F(Faults, EveryCallFailsUntilTheFaultsAreCleared) {
    emulator::fail_always("fcip_get_entity_entry");
    EXPECT_EQ(outcomes(3), Outcomes({false, false, false}));
    emulator::clear_faults();
    EXPECT_EQ(get_entity(1), 0);
}

TEST_F(Faults, CountStartsWhenTheFaultIsAdded) {
    EXPECT_EQ(outcomes(2), Outcomes({true, true}));
    emulator::fail_call("fcip_get_entity_entry", 1);
    EXPECT_EQ(outcomes(2), Outcomes({false, true}));
}

TEST_F(Faults, RangeOfCalls) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry", .first = 2, .last = 3});
    EXPECT_EQ(outcomes(4), Outcomes({true, false, false, true}));
}

TEST_F(Faults, OnlyCallsWithTheArgumentsCount) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry", .where = "op=1 id=2", .first = 2, .status = 7});
    EXPECT_EQ(get_entity(2), 0);
    EXPECT_EQ(get_entity(1), 0);
    EXPECT_EQ(get_entity(1, 2), 0);
    EXPECT_EQ(get_entity(2), 7);
}

TEST_F(Faults, RandomFaultsRepeatWithTheSeed) {
    const auto withSeed = [](std::uint32_t seed) {
        emulator::clear_faults();
        emulator::add_fault({.symbol = "fcip_get_entity_entry", .probability = 0.5, .seed = seed});
        return outcomes(200);
    };
    const Outcomes first = withSeed(1);
    EXPECT_EQ(withSeed(1), first);
    EXPECT_NE(withSeed(2), first);
    const auto failures = std::count(first.begin(), first.end(), false);
    EXPECT_GT(failures, 60);
    EXPECT_LT(failures, 140);
}

TEST_F(Faults, FailureMayStoreARow) {
    emulator::add_fault(
        {.symbol = "fcip_get_entity_entry", .effect = emulator::Effect::FailWithRow, .status = 7});
    Row<FcipEntityEntry> row;
    EXPECT_EQ(fcip_get_entity_entry(mts_q, 1, 3, row.slot(), 5), 7);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->kfmFcipEntityId, 3U);
    EXPECT_EQ(fcip_get_entity_entry(mts_q, 1, 999, row.slot(), 5), 7);
    ASSERT_TRUE(row) << "even where the switch has no such row";
    EXPECT_EQ(row->kfmFcipEntityId, 0U);
}

TEST_F(Faults, FailureLeavesTheSlotAlone) {
    emulator::fail_always("fcip_get_entity_entry");
    FcipEntityEntry mark{};
    FcipEntityEntry* row = &mark;
    EXPECT_NE(fcip_get_entity_entry(mts_q, 1, 1, &row, 5), 0);
    EXPECT_EQ(row, &mark);
}

TEST_F(Faults, SuccessMayComeWithoutARow) {
    emulator::add_fault({.symbol = "fcip_get_entity_entry", .effect = emulator::Effect::SucceedWithoutRow});
    FcipEntityEntry mark{};
    FcipEntityEntry* row = &mark;
    EXPECT_EQ(fcip_get_entity_entry(mts_q, 1, 1, &row, 5), 0);
    EXPECT_EQ(row, nullptr);
}

TEST_F(Faults, ServicesWithoutAStatusGiveNothing) {
    emulator::fail_always("pm_cim_find_interface");
    EXPECT_EQ(pm_cim_find_interface(1, FCIP_1, mts_q), nullptr);
    emulator::clear_faults();
    emulator::add_fault({.symbol = "pm_cim_find_interface", .effect = emulator::Effect::FailWithRow});
    EXPECT_EQ(pm_cim_find_interface(1, FCIP_1, mts_q), nullptr);
}

TEST_F(Faults, EachServiceWithAStatusCanFail) {
    std::uint8_t type = 0, wwn[8];
    std::uint16_t number = 0;
    char text[300];
    std::uint32_t record[64], length = 8, queue = 0;
    const std::uint32_t pair[2] = {ETHERNET_1_1, ETHERNET_1_1}, entityId = 1;
    const FcipLinkKey link{1, 0};
    const FcipTcpConnKey connection{1, 0, 3225, 3225};
    const IpAddr address{KFM_ADDR_IPV4, {1, 2, 3, 4}};
    PortInfo port{};
    port.ifIndex = ETHERNET_1_1;
    Row<FcipLinkEntry> linkRow;
    Row<FcipTcpConnEntry> connectionRow;
    Row<FcipLinkErrors> errors;
    Row<PortInfo> portRow;
    Row<PortCounters> counters;
    Row<void> any, vsan, domain;
    ASSERT_EQ(vsan_cim_get_vsanEntry(mts_q, 1, vsan.slot()), 0);
    ASSERT_EQ(dm_cim_get_dmEntry(mts_q, 1, 1, domain.slot()), 0);
    MtsMessage message{};
    const std::pair<const char*, std::function<int()>> services[] = {
        {"fcip_get_link_entry", [&] { return fcip_get_link_entry(mts_q, 1, &link, linkRow.slot(), 30, 1); }},
        {"fcip_get_tcpconn_entry",
         [&] { return fcip_get_tcpconn_entry(mts_q, 1, &connection, connectionRow.slot(), 15); }},
        {"fcip_snmp_get_link_errors",
         [&] { return fcip_snmp_get_link_errors(mts_q, 1, &link, errors.slot(), 10); }},
        {"fcip_send_recv_with_mts_q",
         [&] {
             return fcip_send_recv_with_mts_q(8946, 0xFE000000, 60, &entityId, 4, mts_q, any.slot(), &length,
                                              nullptr);
         }},
        {"pm_cim_get_port_info",
         [&] { return pm_cim_get_port_info(portRow.slot(), 1, ETHERNET_1_1, mts_q); }},
        {"pm_cim_get_network_address", [&] { return pm_cim_get_network_address(text, &port, 26); }},
        {"pm_cmi_get_port_config",
         [&] { return pm_cmi_get_port_config(mts_q, 1, 1, pair, &length, portRow.slot(), 4); }},
        {"pm_get_port_counters",
         [&] { return pm_get_port_counters(mts_q, ETHERNET_1_1, 0, 6, counters.slot(), 0); }},
        {"pm_get_clear_eth_stats",
         [&] { return pm_get_clear_eth_stats(mts_q, ETHERNET_1_1, ETHERNET_1_1, 1, record); }},
        {"if_index_get_type", [&] { return if_index_get_type(ETHERNET_1_1, &type); }},
        {"if_index_get_slot", [&] { return if_index_get_slot(ETHERNET_1_1, &number); }},
        {"if_index_get_port", [&] { return if_index_get_port(ETHERNET_1_1, &number); }},
        {"sprintf_if_index", [&] { return sprintf_if_index(text, ETHERNET_1_1); }},
        {"vsan_cim_get_vsanEntry", [&] { return vsan_cim_get_vsanEntry(mts_q, 1, any.slot()); }},
        {"dm_cim_get_dmEntry", [&] { return dm_cim_get_dmEntry(mts_q, 1, 1, any.slot()); }},
        {"vsan_cim_get_vsan_key",
         [&] { return vsan_cim_get_vsan_key(text, vsan.current(), domain.current()); }},
        {"vsan_cim_get_vsan_admindomain_key",
         [&] { return vsan_cim_get_vsan_admindomain_key(text, domain.current()); }},
        {"ip_addr_to_str", [&] { return ip_addr_to_str(&address, text, sizeof text); }},
        {"ipconf_get_intf_ip_address",
         [&] { return ipconf_get_intf_ip_address(mts_q, ETHERNET_1_1, any.slot()); }},
        {"ipconf_get_if_inet_addrs",
         [&] { return ipconf_get_if_inet_addrs(mts_q, ETHERNET_1_1, any.slot()); }},
        {"netcfg_print_ifname", [&] { return netcfg_print_ifname(text, ETHERNET_1_1); }},
        {"system_cim_get_switch_wwn", [&] { return system_cim_get_switch_wwn(mts_q, &wwn); }},
        {"cmi_req_resp",
         [&] {
             length = 8;
             return cmi_req_resp(873, 1, 0, any.slot(), &length, 0, 0, 35, mts_q, 5);
         }},
        {"mts_send", [&] { return mts_send(mts_q, 0, 943, 1917, nullptr, 0, &message, 0, 0); }},
        {"init_mts", [&] { return init_mts(&queue); }},
    };
    for (const auto& [symbol, service] : services) {
        EXPECT_EQ(service(), 0) << symbol;
        emulator::fail_always(symbol, -5);
        EXPECT_EQ(service(), -5) << symbol;
        emulator::clear_faults();
    }
    emulator::release_messages();
}

TEST_F(Faults, TablesMayChangeBetweenTwoCalls) {
    emulator::add_fault({.symbol = "fcip_get_link_entry",
                         .first = 2,
                         .last = 2,
                         .effect = emulator::Effect::None,
                         .action = [] {
                             emulator::remove_link({1, 1});
                         }});
    FcipLinkKey key{0, 0};
    Row<FcipLinkEntry> row;
    std::vector<std::uint32_t> indexes;
    while (fcip_get_link_entry(mts_q, 2, &key, row.slot(), 30, 1) == 0) {
        key = {row->kfmFcipEntityId, row->kfmFcipLinkIndex};
        indexes.push_back(key.linkIndex);
    }
    EXPECT_EQ(indexes, (std::vector<std::uint32_t>{0, 2, 3, 4}));
}

TEST_F(Faults, ActionMayClearTheFaults) {
    emulator::add_fault({.symbol = "getCSName", .effect = emulator::Effect::None, .action = [] {
                             emulator::clear_faults();
                         }});
    EXPECT_STRNE(getCSName(), "");
    EXPECT_STRNE(getCSName(), "");
}

TEST_F(Faults, ScenarioScriptsFaultsAndChanges) {
    mutex_unlock();
    emulator::load_file(std::string(EMULATOR_FOLDER) + "/examples/one-tunnel-with-faults.json");
    mutex_lock();
    Row<PortCounters> row;
    EXPECT_EQ(pm_get_port_counters(mts_q, ETHERNET_1_1, 0, 6, row.slot(), 0), 0);
    EXPECT_EQ(row->inBytes + 0, 2000U) << "the clock is stopped at 10 seconds";
    EXPECT_EQ(pm_get_port_counters(mts_q, ETHERNET_1_1, 0, 6, row.slot(), 0), 0);
    EXPECT_EQ(pm_get_port_counters(mts_q, ETHERNET_1_1, 0, 6, row.slot(), 0), 5);
    EXPECT_TRUE(row);
    const FcipLinkKey key{1, 0};
    Row<FcipLinkEntry> link;
    for (int call = 1; call <= 100; ++call) {
        EXPECT_EQ(fcip_get_link_entry(mts_q, 1, &key, link.slot(), 30, 1) == 0, call < 100) << call;
    }
    emulator::load_builtin();
    EXPECT_EQ(pm_get_port_counters(mts_q, ETHERNET_1_1, 0, 6, row.slot(), 0), 0)
        << "another switch, no faults";
}

TEST_F(Faults, ScenarioMayAddATunnel) {
    emulator::load_json(R"({"system": {"hostName": "h", "name": "n", "wwn": "20:00:02:4b:53:00:00:01"},
        "ports": [{"ifIndex": 5, "type": 11}], "profiles": [{"entityId": 1, "address": ""}],
        "faults": [{"symbol": "fcip_get_link_entry", "first": 2, "last": 2, "effect": "none", "addTunnel":
            {"entityId": 1, "linkIndex": 6, "ifIndex": 5, "remEntityAddress": "", "tcpConnections": [{}]}}]})");
    FcipLinkKey key{0, 0};
    Row<FcipLinkEntry> row;
    EXPECT_NE(fcip_get_link_entry(mts_q, 2, &key, row.slot(), 30, 1), 0);
    ASSERT_EQ(fcip_get_link_entry(mts_q, 2, &key, row.slot(), 30, 1), 0);
    EXPECT_EQ(row->kfmFcipLinkIndex, 6U);
}

TEST_F(Faults, UnknownSymbolIsRefused) {
    EXPECT_THROW(emulator::fail_always("fcip_get_link_entries"), std::invalid_argument);
}

} // namespace
} // namespace emulator_test
