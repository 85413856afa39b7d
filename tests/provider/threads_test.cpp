// Several threads of the CIM server call the provider at once.
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/one_tunnel.h"

namespace {

using one_tunnel::OneTunnelTest;
using test_support::NAMESPACE;
using test_support::printed_by;
using test_support::RecordedInstance;
using test_support::RecordingResult;
using test_support::Sets;

class ThreadsTest : public OneTunnelTest {
  protected:
    static constexpr int THREADS = 6;
    static constexpr int ROUNDS = 20;

    void SetUp() override {
        OneTunnelTest::SetUp();
        add_two_tunnels();
        emulator::record_calls(false);
    }

    // Runs work(round) on every thread; what is printed meanwhile is thrown away.
    template <typename Work>
    static void on_all_threads(Work work) {
        printed_by([&] {
            std::vector<std::thread> threads;
            for (int i = 0; i < THREADS; ++i) {
                threads.emplace_back([&work] {
                    for (int round = 0; round < ROUNDS; ++round) {
                        work(round);
                    }
                });
            }
            for (std::thread& thread : threads) {
                thread.join();
            }
        });
    }

    static constexpr const char* CLASS = "KESTO_FCIPProtocolEndPoint";
};

TEST_F(ThreadsTest, EveryEnumerationIsWhole) {
    const std::vector<RecordedInstance> expected = enumerate(CLASS).instances;
    ASSERT_EQ(expected.size(), 3U);
    const CMPIObjectPath* op = broker.path(NAMESPACE, CLASS);
    std::atomic<int> whole = 0;
    on_all_threads([&](int) {
        RecordingResult result(broker);
        const CMPIStatus status =
            instanceMi->ft->enumerateInstances(instanceMi, nullptr, result.cmpi(), op, nullptr);
        if (status.rc == CMPI_RC_OK && result.instances() == expected) ++whole;
    });
    EXPECT_EQ(whole, THREADS * ROUNDS);
}

TEST_F(ThreadsTest, EveryGetFindsItsOwnInstance) {
    const char* names[] = {"5_x", "6_x", "7_x"};
    std::vector<Sets> expected;
    std::vector<const CMPIObjectPath*> paths;
    for (const char* name : names) {
        expected.push_back(get_instance(CLASS, {{"Name", name}}).instances.at(0).sets());
        paths.push_back(broker.path(NAMESPACE, CLASS, {{"Name", name}}));
    }
    std::atomic<int> found = 0;
    on_all_threads([&](int round) {
        const auto number = static_cast<std::size_t>(round) % paths.size();
        RecordingResult result(broker);
        instanceMi->ft->getInstance(instanceMi, nullptr, result.cmpi(), paths[number], nullptr);
        if (result.instances().size() == 1 && result.instances()[0].sets() == expected[number]) ++found;
    });
    EXPECT_EQ(found, THREADS * ROUNDS);
}

TEST_F(ThreadsTest, RequestsWithoutAKeyDoNotWaitForTheLock) {
    const CMPIObjectPath* op = broker.path(NAMESPACE, CLASS);
    std::atomic<int> answered = 0;
    emulator::Locked lock; // held for the whole test
    on_all_threads([&](int) {
        RecordingResult result(broker);
        const CMPIStatus status =
            instanceMi->ft->getInstance(instanceMi, nullptr, result.cmpi(), op, nullptr);
        if (status.rc == CMPI_RC_OK && status.msg != nullptr && result.returned().empty()) ++answered;
    });
    EXPECT_EQ(answered, THREADS * ROUNDS);
}

} // namespace
