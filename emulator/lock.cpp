// The platform's one lock, which tells a caller that takes it twice or gives back what it does not hold.
//
// A thread that takes the lock again would wait for itself for ever; it is told off and goes on instead, so
// that a test fails rather than hangs. Its second release is then told off as well.
#include <atomic>
#include <mutex>
#include <thread>

#include "emulator/call.h"
#include "emulator/exported_services.h"

namespace emulator {
namespace {

std::mutex platformLock;
std::atomic<std::thread::id> owner;

} // namespace

bool lock_held() {
    return owner.load() == std::this_thread::get_id();
}

Locked::Locked() {
    mutex_lock();
}
Locked::~Locked() {
    mutex_unlock();
}

} // namespace emulator

using namespace emulator;

void mutex_lock(void) {
    const bool again = lock_held();
    if (!again) {
        platformLock.lock();
        owner = std::this_thread::get_id();
    }
    const Call call("mutex_lock", CallerLock::NotNeeded, [] { return std::string(); });
    call.require(!again, "the lock is taken twice by one thread");
}

void mutex_unlock(void) {
    bool held = false;
    {
        const Call call("mutex_unlock", CallerLock::NotNeeded, [] { return std::string(); });
        held = call.require(lock_held(), "the lock is not held by this thread");
        const std::size_t messages = runtime().transport.held_count();
        if (held && messages != 0) {
            call.require(false,
                         format("%zu message(s) not dropped when the lock is released", messages).c_str());
        }
    }
    if (held) {
        owner = std::thread::id();
        platformLock.unlock();
    }
}
