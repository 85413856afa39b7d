// The broker's threads and locks.
#include <cmpidt.h>
#include <cmpift.h>

#include <cerrno>
#include <ctime>

#include "server/broker/datetime.h"
#include "server/broker/named_lists.h"
#include "server/broker/string.h"
#include "tests/server/broker_fixture.h"

namespace {

class Threads : public BrokerFixture {
  protected:
    const CMPIBrokerExtFT* threads = handle->xft;
};

TEST_F(Threads, RunAndReturn) {
    int value = 1;
    CMPI_THREAD_TYPE thread = threads->newThread(
        [](void* parameter) -> void* {
            ++*static_cast<int*>(parameter);
            return parameter;
        },
        &value, 0);
    ASSERT_NE(thread, nullptr);
    CMPI_THREAD_RETURN returned = nullptr;
    EXPECT_EQ(threads->joinThread(thread, &returned), 0);
    EXPECT_EQ(returned, &value);
    EXPECT_EQ(value, 2);
}

TEST_F(Threads, RunOnce) {
    static int runs;
    runs = 0;
    int once = 0;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(threads->threadOnce(&once, [] { ++runs; }), 0);
    }
    EXPECT_EQ(runs, 1);
}

TEST_F(Threads, KeepSpecificData) {
    CMPI_THREAD_KEY_TYPE key = 0;
    ASSERT_EQ(threads->createThreadKey(&key, nullptr), 0);
    int data = 0;
    EXPECT_EQ(threads->setThreadSpecific(key, &data), 0);
    EXPECT_EQ(threads->getThreadSpecific(key), &data);
    EXPECT_EQ(threads->destroyThreadKey(key), 0);
}

TEST_F(Threads, LocksAreRecursive) {
    CMPI_MUTEX_TYPE lock = threads->newMutex(0);
    threads->lockMutex(lock);
    EXPECT_EQ(threads->lockMutex2(lock), 0);
    EXPECT_EQ(threads->unlockMutex2(lock), 0);
    threads->unlockMutex(lock);
    EXPECT_EQ(threads->destroyMutex2(lock), 0);
}

TEST_F(Threads, ConditionsTimeOut) {
    CMPI_MUTEX_TYPE lock = threads->newMutex(0);
    CMPI_COND_TYPE condition = threads->newCondition(0);
    EXPECT_EQ(threads->signalCondition(condition), 0);
    timespec past{};
    threads->lockMutex(lock);
    EXPECT_EQ(threads->timedCondWait(condition, lock, &past), ETIMEDOUT);
    threads->unlockMutex(lock);
    threads->destroyCondition(condition);
    threads->destroyMutex(lock);
}

TEST_F(Threads, ConditionsWakeWaiters) {
    struct Shared {
        const CMPIBrokerExtFT* threads;
        CMPI_MUTEX_TYPE lock;
        CMPI_COND_TYPE condition;
        bool signalled;
    } shared{threads, threads->newMutex(0), threads->newCondition(0), false};
    threads->lockMutex(shared.lock);
    CMPI_THREAD_TYPE signaller = threads->newThread(
        [](void* parameter) -> void* {
            auto& with = *static_cast<Shared*>(parameter);
            with.threads->lockMutex(with.lock);
            with.signalled = true;
            with.threads->signalCondition(with.condition);
            with.threads->unlockMutex(with.lock);
            return nullptr;
        },
        &shared, 0);
    while (!shared.signalled) {
        EXPECT_EQ(threads->condWait(shared.condition, shared.lock), 0);
    }
    threads->unlockMutex(shared.lock);
    threads->joinThread(signaller, nullptr);
    EXPECT_EQ(threads->destroyCondition2(shared.condition), 0);
    threads->destroyMutex(shared.lock);
}

TEST_F(Threads, NothingIsDoneToNothing) {
    EXPECT_EQ(threads->joinThread(nullptr, nullptr), EINVAL);
    EXPECT_EQ(threads->lockMutex2(nullptr), EINVAL);
    EXPECT_EQ(threads->newThread(nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(threads->threadOnce(nullptr, nullptr), EINVAL);
}

TEST_F(Threads, LibraryNames) {
    EXPECT_STREQ(threads->resolveFileName("Probe"), "libProbe.so");
}

TEST_F(Threads, AttachedThreadsHaveAPoolOfTheirOwn) {
    CMPIContext* context = handle->bft->prepareAttachThread(
        handle, cimserver::make_pooled<cimserver::ContextObject>(cimserver::ContextContent{}));
    ASSERT_NE(context, nullptr);
    const auto* before = &cimserver::RequestPool::current();
    EXPECT_EQ(handle->bft->attachThread(handle, context).rc, CMPI_RC_OK);
    EXPECT_NE(&cimserver::RequestPool::current(), before);
    EXPECT_EQ(handle->bft->detachThread(handle, context).rc, CMPI_RC_OK);
    EXPECT_EQ(&cimserver::RequestPool::current(), before);
    EXPECT_EQ(handle->bft->attachThread(handle, nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(handle->bft->prepareAttachThread(handle, nullptr), nullptr);
}

} // namespace
