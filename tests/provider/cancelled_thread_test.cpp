// The CIM server cancels a thread that is inside an operation. The thread ends, and nothing else does: the
// provider lock is free again, and the next request is answered.
#include <pthread.h>

#include <semaphore>
#include <string>
#include <thread>

#include "tests/support/provider_test.h"

namespace {

using test_support::NAMESPACE;
using test_support::RecordingResult;

// The operation that the thread is in when it is cancelled.
struct Operation {
    CMPIInstanceMI* mi;
    const CMPIResult* result;
    const CMPIObjectPath* op;
};

void* enumerate_instances(void* argument) {
    const auto* operation = static_cast<const Operation*>(argument);
    operation->mi->ft->enumerateInstances(operation->mi, nullptr, operation->result, operation->op, nullptr);
    return nullptr;
}

class CancelledThreadTest : public test_support::ProviderTest {
  protected:
    // Enumerates a class on a thread of its own, which is cancelled while it waits in its nth call of the
    // service. True when the thread was ended by that.
    bool cancel_in(const std::string& symbol, std::uint32_t nth, const std::string& className) {
        std::binary_semaphore isWaiting(0);
        emulator::Fault wait;
        wait.symbol = symbol;
        wait.first = wait.last = nth;
        wait.effect = emulator::Effect::None;
        wait.action = [&isWaiting] {
            isWaiting.release();
            for (;;) {
                pthread_testcancel();
                std::this_thread::yield();
            }
        };
        emulator::add_fault(wait);

        RecordingResult result(broker);
        Operation operation{instanceMi, result.cmpi(), broker.path(NAMESPACE, className)};
        void* ended = nullptr;
        test_support::printed_by([&] {
            pthread_t thread{};
            ASSERT_EQ(pthread_create(&thread, nullptr, enumerate_instances, &operation), 0);
            isWaiting.acquire();
            ASSERT_EQ(pthread_cancel(thread), 0);
            ASSERT_EQ(pthread_join(thread, &ended), 0);
        });
        emulator::clear_faults();
        return ended == PTHREAD_CANCELED;
    }
};

TEST_F(CancelledThreadTest, LeavesTheLockFreeForTheNextRequest) {
    const std::string className = "KESTO_FCIPProtocolEndPoint";
    const std::size_t instances = enumerate(className).instances.size();
    ASSERT_TRUE(cancel_in("fcip_get_link_entry", 2, className));
    EXPECT_EQ(enumerate(className).instances.size(), instances);
}

TEST_F(CancelledThreadTest, LeavesTheLockFreeFromWithinABuilder) {
    const std::string className = "KESTO_IPProtocolEndPoint";
    const std::size_t instances = enumerate(className).instances.size();
    ASSERT_TRUE(cancel_in("pm_get_clear_eth_stats", 1, className));
    EXPECT_EQ(enumerate(className).instances.size(), instances);
}

TEST_F(CancelledThreadTest, LeavesTheLockFreeWhileItWaitsForALineCard) {
    const std::string className = "KESTO_TCPStatisticalData";
    const std::size_t instances = enumerate(className).instances.size();
    ASSERT_TRUE(cancel_in("mts_sap_get", 1, className));
    EXPECT_EQ(enumerate(className).instances.size(), instances);
}

} // namespace
