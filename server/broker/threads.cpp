#include "server/broker/threads.h"

#include <cmpidt.h>
#include <pthread.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "server/broker/request_pool.h"

namespace cimserver {

namespace {

static_assert(sizeof(CMPI_THREAD_KEY_TYPE) == sizeof(pthread_key_t));
static_assert(sizeof(CMPI_THREAD_TYPE) == sizeof(pthread_t));

char* resolve_file_name(const char* libName) {
    if (libName == nullptr) return nullptr;
    const std::string fileName = "lib" + std::string(libName) + ".so";
    void* copy = RequestPool::current().allocate(fileName.size() + 1);
    if (copy != nullptr) std::memcpy(copy, fileName.c_str(), fileName.size() + 1);
    return static_cast<char*>(copy);
}

pthread_t thread_of(CMPI_THREAD_TYPE handle) {
    pthread_t thread{};
    std::memcpy(&thread, &handle, sizeof thread);
    return thread;
}

CMPI_THREAD_TYPE new_thread(CMPIThreadFunc start, void* parameter, int detached) {
    if (start == nullptr) return nullptr;
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, start, parameter) != 0) return nullptr;
    if (detached != 0) pthread_detach(thread);
    CMPI_THREAD_TYPE handle = nullptr;
    std::memcpy(&handle, &thread, sizeof handle);
    return handle;
}

int join_thread(CMPI_THREAD_TYPE thread, CMPI_THREAD_RETURN* result) {
    return thread != nullptr ? pthread_join(thread_of(thread), result) : EINVAL;
}

int exit_thread(CMPI_THREAD_RETURN result) {
    pthread_exit(result);
}

int cancel_thread(CMPI_THREAD_TYPE thread) {
    return thread != nullptr ? pthread_cancel(thread_of(thread)) : EINVAL;
}

int thread_sleep(CMPIUint32 milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    return 0;
}

// One lock for every once-object: they are run once in the life of a process, and rarely at the same time.
// Recursive, so that the function may use a once-object of its own.
std::recursive_mutex& once_lock() {
    static std::recursive_mutex lock;
    return lock;
}

int thread_once(int* once, CMPIThreadOnceFunc function) {
    if (once == nullptr || function == nullptr) return EINVAL;
    const std::lock_guard guard(once_lock());
    if (*once == 0) {
        *once = 1;
        function();
    }
    return 0;
}

int create_thread_key(CMPI_THREAD_KEY_TYPE* key, CMPIThreadKeyCleanupFunc cleanup) {
    return key != nullptr ? pthread_key_create(key, cleanup) : EINVAL;
}

int destroy_thread_key(CMPI_THREAD_KEY_TYPE key) {
    return pthread_key_delete(key);
}

void* get_thread_specific(CMPI_THREAD_KEY_TYPE key) {
    return pthread_getspecific(key);
}

int set_thread_specific(CMPI_THREAD_KEY_TYPE key, void* value) {
    return pthread_setspecific(key, value);
}

CMPI_MUTEX_TYPE new_mutex(int) {
    auto mutex = std::make_unique<pthread_mutex_t>();
    pthread_mutexattr_t recursive;
    if (pthread_mutexattr_init(&recursive) != 0) return nullptr;
    pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
    const int made = pthread_mutex_init(mutex.get(), &recursive);
    pthread_mutexattr_destroy(&recursive);
    return made == 0 ? mutex.release() : nullptr;
}

int destroy_mutex2(CMPI_MUTEX_TYPE mutex) {
    if (mutex == nullptr) return EINVAL;
    const int destroyed = pthread_mutex_destroy(static_cast<pthread_mutex_t*>(mutex));
    if (destroyed == 0) delete static_cast<pthread_mutex_t*>(mutex);
    return destroyed;
}

int lock_mutex2(CMPI_MUTEX_TYPE mutex) {
    return mutex != nullptr ? pthread_mutex_lock(static_cast<pthread_mutex_t*>(mutex)) : EINVAL;
}

int unlock_mutex2(CMPI_MUTEX_TYPE mutex) {
    return mutex != nullptr ? pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex)) : EINVAL;
}

void destroy_mutex(CMPI_MUTEX_TYPE mutex) {
    destroy_mutex2(mutex);
}

void lock_mutex(CMPI_MUTEX_TYPE mutex) {
    lock_mutex2(mutex);
}

void unlock_mutex(CMPI_MUTEX_TYPE mutex) {
    unlock_mutex2(mutex);
}

CMPI_COND_TYPE new_condition(int) {
    auto condition = std::make_unique<pthread_cond_t>();
    return pthread_cond_init(condition.get(), nullptr) == 0 ? condition.release() : nullptr;
}

int destroy_condition2(CMPI_COND_TYPE condition) {
    if (condition == nullptr) return EINVAL;
    const int destroyed = pthread_cond_destroy(static_cast<pthread_cond_t*>(condition));
    if (destroyed == 0) delete static_cast<pthread_cond_t*>(condition);
    return destroyed;
}

void destroy_condition(CMPI_COND_TYPE condition) {
    destroy_condition2(condition);
}

int cond_wait(CMPI_COND_TYPE condition, CMPI_MUTEX_TYPE mutex) {
    if (condition == nullptr || mutex == nullptr) return EINVAL;
    return pthread_cond_wait(static_cast<pthread_cond_t*>(condition), static_cast<pthread_mutex_t*>(mutex));
}

int timed_cond_wait(CMPI_COND_TYPE condition, CMPI_MUTEX_TYPE mutex, struct timespec* until) {
    if (condition == nullptr || mutex == nullptr || until == nullptr) return EINVAL;
    return pthread_cond_timedwait(static_cast<pthread_cond_t*>(condition),
                                  static_cast<pthread_mutex_t*>(mutex), until);
}

int signal_condition(CMPI_COND_TYPE condition) {
    return condition != nullptr ? pthread_cond_signal(static_cast<pthread_cond_t*>(condition)) : EINVAL;
}

constexpr CMPIBrokerExtFT TABLE = {
    CMPICurrentVersion,  resolve_file_name,   new_thread,        join_thread,       exit_thread,
    cancel_thread,       thread_sleep,        thread_once,       create_thread_key, destroy_thread_key,
    get_thread_specific, set_thread_specific, new_mutex,         destroy_mutex,     lock_mutex,
    unlock_mutex,        new_condition,       destroy_condition, cond_wait,         timed_cond_wait,
    signal_condition,    destroy_mutex2,      lock_mutex2,       unlock_mutex2,     destroy_condition2};

} // namespace

const CMPIBrokerExtFT* broker_threads() {
    return &TABLE;
}

} // namespace cimserver
