// What counts as misuse of the emulated switch.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "emulator/control.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

class Misuse : public EmulatorTest {};

TEST_F(Misuse, ServiceWithoutTheLock) {
    Row<FcipEntityEntry> row;
    EXPECT_EQ(fcip_get_entity_entry(mts_q, 1, 1, row.slot(), 5), 0) << "it answers nevertheless";
    EXPECT_EQ(emulator::misuse_count(), 1U);
    expect_misuse("fcip_get_entity_entry: called without the lock\n");
}

TEST_F(Misuse, LockOfAnotherThreadIsNoLock) {
    const emulator::Locked locked;
    std::thread([] {
        EXPECT_FALSE(emulator::lock_held());
        CSgetName(mts_q);
    }).join();
    expect_misuse("CSgetName: called without the lock\n");
}

TEST_F(Misuse, LockTakenTwiceAndReleasedTwice) {
    mutex_lock();
    mutex_lock();
    EXPECT_TRUE(emulator::lock_held());
    mutex_unlock();
    EXPECT_FALSE(emulator::lock_held());
    mutex_unlock();
    expect_misuse(
        "mutex_lock: the lock is taken twice by one thread\n"
        "mutex_unlock: the lock is not held by this thread\n");
}

TEST_F(Misuse, LockIsExclusiveBetweenThreads) {
    std::atomic<int> inside = 0;
    std::atomic<bool> alone = true;
    int sum = 0; // guarded by the platform's lock alone: the thread sanitizer watches
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 200; ++i) {
                const emulator::Locked locked;
                if (++inside != 1) alone = false;
                ++sum;
                CSgetName(mts_q);
                --inside;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(alone);
    EXPECT_EQ(sum, 800);
}

TEST_F(Misuse, MessageNotDropped) {
    mutex_lock();
    MtsMessage request{};
    const std::uint8_t payload[32]{};
    ASSERT_EQ(mts_send(mts_q, 0, 943, 1917, payload, sizeof payload, &request, 0, 0), 0);
    EXPECT_EQ(emulator::messages_outstanding(), 1U);
    mutex_unlock();
    expect_misuse("mutex_unlock: 1 message(s) not dropped when the lock is released\n");
    emulator::release_messages();
    EXPECT_EQ(emulator::messages_outstanding(), 0U);
}

TEST_F(Misuse, MessageUsedAfterItsDrop) {
    const emulator::Locked locked;
    MtsMessage request{};
    ASSERT_EQ(mts_send(mts_q, 0, 943, 1917, "", 0, &request, 0, 0), 0);
    MtsMessage copy = request;
    EXPECT_EQ(mts_drop(mts_q, &request), 0);
    EXPECT_EQ(request.handle, nullptr);
    EXPECT_EQ(mts_payload_get(&copy), nullptr);
    EXPECT_EQ(mts_payload_size(&copy), 0U);
    EXPECT_EQ(mts_rr_token_get(&request), 0U);
    EXPECT_NE(mts_drop(mts_q, &copy), 0);
    expect_misuse(
        "mts_payload_get: no message, or one that was dropped\n"
        "mts_payload_size: no message, or one that was dropped\n"
        "mts_rr_token_get: no message, or one that was dropped\n"
        "mts_drop: no message, or one that was dropped\n");
    emulator::release_messages();
}

TEST_F(Misuse, WrongConstants) {
    const emulator::Locked locked;
    const FcipLinkKey link{1, 0};
    const FcipTcpConnKey connection{1, 0, 3225, 3225};
    const std::uint32_t pair[2] = {ETHERNET_1_1, ETHERNET_1_2};
    std::uint32_t length = 8, record[64];
    Row<FcipLinkEntry> linkRow;
    Row<FcipEntityEntry> entity;
    Row<FcipTcpConnEntry> connectionRow;
    Row<FcipLinkErrors> errors;
    Row<PortInfo> port;
    Row<PortCounters> counters;
    Row<void> any;
    fcip_get_link_entry(mts_q, 1, &link, linkRow.slot(), 5, 1);
    fcip_get_entity_entry(mts_q, 1, 1, entity.slot(), 10);
    fcip_get_tcpconn_entry(mts_q, 1, &connection, connectionRow.slot(), 10);
    fcip_snmp_get_link_errors(mts_q, 1, &link, errors.slot(), 15);
    pm_cmi_get_port_config(mts_q, 1, 1, pair, &length, port.slot(), 4);
    pm_get_port_counters(mts_q, ETHERNET_1_1, 0, 5, counters.slot(), 0);
    pm_get_clear_eth_stats(mts_q, ETHERNET_1_1, ETHERNET_1_2, 1, record);
    dm_cim_get_dmEntry(mts_q, 1, 0, any.slot());
    length = 8;
    cmi_req_resp(873, 1, 0, any.slot(), &length, 0, 0, 35, mts_q, 4);
    length = 4;
    EXPECT_NE(cmi_req_resp(873, 1, 0, any.slot(), &length, 0, 0, 35, mts_q, 5), 0);
    EXPECT_NE(fcip_get_link_entry(mts_q, 0, &link, linkRow.slot(), 30, 1), 0);
    EXPECT_NE(fcip_get_link_entry(mts_q + 1, 1, &link, linkRow.slot(), 30, 1), 0);
    EXPECT_NE(pm_cim_get_port_info(port.slot(), 2, ETHERNET_1_1, mts_q), 0);
    MtsSelector selector{};
    selector.kind = 1;
    selector.option = 4;
    MtsMessage reply{};
    EXPECT_NE(mts_recv(mts_q, &reply, &selector), 0);
    expect_misuse(
        "fcip_get_link_entry: the constant arguments are not 30 and 1\n"
        "fcip_get_entity_entry: the constant argument is neither 5 nor 30\n"
        "fcip_get_tcpconn_entry: the constant argument is not 15\n"
        "fcip_snmp_get_link_errors: the constant argument is not 10\n"
        "pm_cmi_get_port_config: the two halves of the key differ\n"
        "pm_get_port_counters: the constant arguments are not 0, 6 and 0\n"
        "pm_get_clear_eth_stats: not the same interface twice and 1\n"
        "dm_cim_get_dmEntry: the constant argument is not 1\n"
        "cmi_req_resp: the constant arguments are not 1, 0, 0, 0 and 5\n"
        "cmi_req_resp: the length of the reply is not preset to 8\n"
        "fcip_get_link_entry: an operation that is neither 1 nor 2\n"
        "fcip_get_link_entry: a queue that init_mts did not hand out\n"
        "pm_cim_get_port_info: an operation that is neither 1 nor 0\n"
        "mts_recv: a selector other than 1 in word 0, 5 in word 2, the token in word 3 and 0 elsewhere\n");
}

TEST_F(Misuse, NullArguments) {
    const emulator::Locked locked;
    EXPECT_NE(fcip_get_entity_entry(mts_q, 1, 1, nullptr, 5), 0);
    EXPECT_NE(fcip_get_link_entry(mts_q, 1, nullptr, nullptr, 30, 1), 0);
    EXPECT_NE(if_index_get_type(ETHERNET_1_1, nullptr), 0);
    expect_misuse(
        "fcip_get_entity_entry: the out-parameter is NULL\n"
        "fcip_get_link_entry: the key is NULL\n"
        "if_index_get_type: the out-parameter is NULL\n");
}

TEST_F(Misuse, CallsOnAClosedQueueFailWithoutBeingMisuse) {
    const emulator::Locked locked;
    emulator::close_queue();
    Row<FcipEntityEntry> row;
    EXPECT_NE(fcip_get_entity_entry(mts_q, 1, 1, row.slot(), 5), 0);
    EXPECT_EQ(emulator::misuse_count(), 0U) << "opening the queue may have failed";
}

TEST_F(Misuse, FailingInitMtsIsNegativeAndLeavesTheHandle) {
    const emulator::Locked locked;
    emulator::close_queue();
    emulator::fail_always("init_mts", 5);
    EXPECT_LT(init_mts(&mts_q), 0);
    EXPECT_EQ(mts_q, 0U);
}

TEST_F(Misuse, IsPrintedOnStderrAndTheReportIsBounded) {
    testing::internal::CaptureStderr();
    for (int i = 0; i < 150; ++i) {
        CSgetName(mts_q);
    }
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_EQ(printed.substr(0, printed.find('\n')), "emulated switch: CSgetName: called without the lock");
    EXPECT_EQ(emulator::misuse_count(), 150U);
    const std::string report = emulator::misuse_report();
    EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 100);
    emulator::clear_misuse();
}

} // namespace
} // namespace emulator_test
