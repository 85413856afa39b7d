// The platform's one lock, which notices a caller that takes it twice or releases it without holding it.
//
// A thread that took the lock again would wait for itself for ever. Instead its misuse is reported and it
// continues, so that a test fails rather than hangs; its second release is then a misuse as well.
#include "emulator/lock.h"

#include <atomic>
#include <cstddef>
#include <mutex>
#include <thread>

#include "emulator/call.h"
#include "emulator/exported_services.h"
#include "emulator/runtime.h"
#include "emulator/text_format.h"
#include "emulator/transport.h"

namespace emulator {
namespace {

std::mutex platformLock;
std::atomic<std::thread::id> owner;

} // namespace

bool this_thread_holds_lock() {
    return owner.load() == std::this_thread::get_id();
}

} // namespace emulator

using namespace emulator;

void mutex_lock(void) {
    const bool again = this_thread_holds_lock();
    if (!again) {
        platformLock.lock();
        owner = std::this_thread::get_id();
    }
    const Call call("mutex_lock", CallerLock::NotNeeded);
    call.require(!again, "the lock is taken twice by one thread");
}

void mutex_unlock(void) {
    bool held = false;
    {
        const Call call("mutex_unlock", CallerLock::NotNeeded);
        held = call.require(this_thread_holds_lock(), "the lock is not held by this thread");
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
