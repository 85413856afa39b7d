// The broker's threads and locks for providers: POSIX threads behind the interface's handles.
#include <pthread.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>

#include "server/cmpi_broker.h"
#include "server/cmpi_memory.h"

namespace cimserver {

namespace {

static_assert(sizeof(CMPI_THREAD_KEY_TYPE) == sizeof(pthread_key_t));
static_assert(sizeof(CMPI_THREAD_TYPE) == sizeof(pthread_t));

char* resolveFileName(const char* libName) {
    if (!libName) return nullptr;
    const std::string fileName = "lib" + std::string(libName) + ".so";
    void* copy = RequestPool::current().allocate(fileName.size() + 1);
    if (copy) std::memcpy(copy, fileName.c_str(), fileName.size() + 1);
    return static_cast<char*>(copy);
}

pthread_t threadOf(CMPI_THREAD_TYPE handle) {
    pthread_t thread{};
    std::memcpy(&thread, &handle, sizeof thread);
    return thread;
}

CMPI_THREAD_TYPE newThread(CMPIThreadFunc start, void* parameter, int detached) {
    if (!start) return nullptr;
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, start, parameter) != 0) return nullptr;
    if (detached) pthread_detach(thread);
    CMPI_THREAD_TYPE handle = nullptr;
    std::memcpy(&handle, &thread, sizeof handle);
    return handle;
}

int joinThread(CMPI_THREAD_TYPE thread, CMPI_THREAD_RETURN* result) {
    return thread ? pthread_join(threadOf(thread), result) : EINVAL;
}

int exitThread(CMPI_THREAD_RETURN result) {
    pthread_exit(result);
}

int cancelThread(CMPI_THREAD_TYPE thread) {
    return thread ? pthread_cancel(threadOf(thread)) : EINVAL;
}

int threadSleep(CMPIUint32 milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    return 0;
}

// One lock for every once-object: they are run once in the life of a process, and rarely at the same time.
// Recursive, so that the function may use a once-object of its own.
std::recursive_mutex& onceLock() {
    static std::recursive_mutex lock;
    return lock;
}

int threadOnce(int* once, CMPIThreadOnceFunc function) {
    if (!once || !function) return EINVAL;
    const std::lock_guard guard(onceLock());
    if (*once == 0) {
        *once = 1;
        function();
    }
    return 0;
}

int createThreadKey(CMPI_THREAD_KEY_TYPE* key, CMPIThreadKeyCleanupFunc cleanup) {
    return key ? pthread_key_create(key, cleanup) : EINVAL;
}

int destroyThreadKey(CMPI_THREAD_KEY_TYPE key) {
    return pthread_key_delete(key);
}

void* getThreadSpecific(CMPI_THREAD_KEY_TYPE key) {
    return pthread_getspecific(key);
}

int setThreadSpecific(CMPI_THREAD_KEY_TYPE key, void* value) {
    return pthread_setspecific(key, value);
}

CMPI_MUTEX_TYPE newMutex(int) {
    auto mutex = std::make_unique<pthread_mutex_t>();
    pthread_mutexattr_t recursive;
    if (pthread_mutexattr_init(&recursive) != 0) return nullptr;
    pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
    const int made = pthread_mutex_init(mutex.get(), &recursive);
    pthread_mutexattr_destroy(&recursive);
    return made == 0 ? mutex.release() : nullptr;
}

int destroyMutex2(CMPI_MUTEX_TYPE mutex) {
    if (!mutex) return EINVAL;
    const int destroyed = pthread_mutex_destroy(static_cast<pthread_mutex_t*>(mutex));
    if (destroyed == 0) delete static_cast<pthread_mutex_t*>(mutex);
    return destroyed;
}

int lockMutex2(CMPI_MUTEX_TYPE mutex) {
    return mutex ? pthread_mutex_lock(static_cast<pthread_mutex_t*>(mutex)) : EINVAL;
}

int unlockMutex2(CMPI_MUTEX_TYPE mutex) {
    return mutex ? pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex)) : EINVAL;
}

void destroyMutex(CMPI_MUTEX_TYPE mutex) {
    destroyMutex2(mutex);
}

void lockMutex(CMPI_MUTEX_TYPE mutex) {
    lockMutex2(mutex);
}

void unlockMutex(CMPI_MUTEX_TYPE mutex) {
    unlockMutex2(mutex);
}

CMPI_COND_TYPE newCondition(int) {
    auto condition = std::make_unique<pthread_cond_t>();
    return pthread_cond_init(condition.get(), nullptr) == 0 ? condition.release() : nullptr;
}

int destroyCondition2(CMPI_COND_TYPE condition) {
    if (!condition) return EINVAL;
    const int destroyed = pthread_cond_destroy(static_cast<pthread_cond_t*>(condition));
    if (destroyed == 0) delete static_cast<pthread_cond_t*>(condition);
    return destroyed;
}

void destroyCondition(CMPI_COND_TYPE condition) {
    destroyCondition2(condition);
}

int condWait(CMPI_COND_TYPE condition, CMPI_MUTEX_TYPE mutex) {
    if (!condition || !mutex) return EINVAL;
    return pthread_cond_wait(static_cast<pthread_cond_t*>(condition), static_cast<pthread_mutex_t*>(mutex));
}

int timedCondWait(CMPI_COND_TYPE condition, CMPI_MUTEX_TYPE mutex, struct timespec* until) {
    if (!condition || !mutex || !until) return EINVAL;
    return pthread_cond_timedwait(static_cast<pthread_cond_t*>(condition),
                                  static_cast<pthread_mutex_t*>(mutex), until);
}

int signalCondition(CMPI_COND_TYPE condition) {
    return condition ? pthread_cond_signal(static_cast<pthread_cond_t*>(condition)) : EINVAL;
}

constexpr CMPIBrokerExtFT kTable = {
    CMPICurrentVersion, resolveFileName,   newThread,        joinThread,      exitThread,
    cancelThread,       threadSleep,       threadOnce,       createThreadKey, destroyThreadKey,
    getThreadSpecific,  setThreadSpecific, newMutex,         destroyMutex,    lockMutex,
    unlockMutex,        newCondition,      destroyCondition, condWait,        timedCondWait,
    signalCondition,    destroyMutex2,     lockMutex2,       unlockMutex2,    destroyCondition2};

} // namespace

const CMPIBrokerExtFT* brokerThreads() {
    return &kTable;
}

} // namespace cimserver
