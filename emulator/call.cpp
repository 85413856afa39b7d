// Entering a service: the log, the caller's lock, the faults.
#include "emulator/call.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <vector>

#include "emulator/lock.h"
#include "emulator/transport.h"

namespace emulator {

bool Call::reads_arguments() const {
    return runtime().recording || !runtime().faults.empty();
}

void Call::enter(CallerLock lock, const std::string& arguments) {
    Runtime& emulated = runtime();
    emulated.count_call(symbol_);
    if (emulated.recording) {
        emulated.callLog.push_back(arguments.empty() ? symbol_ : symbol_ + (" " + arguments));
    }
    if (lock == CallerLock::Needed) require(this_thread_holds_lock(), "called without the lock");
    if (emulated.faults.empty()) return;
    std::vector<std::function<void()>> actions;
    verdict_ = emulated.faults.judge(symbol_, arguments, actions);
    for (const auto& action : actions) {
        action();
    }
}

void Call::complain(const char* what) const {
    runtime().misuse(std::string(symbol_) + ": " + what);
}

bool Call::usable(std::uint32_t queue) const {
    if (!runtime().transport.open) return false;
    return require(queue == QUEUE_HANDLE, "a queue that init_mts did not hand out");
}

void* Call::fresh_block(const void* bytes, std::size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr) std::abort();
    return std::memcpy(block, bytes, size);
}

} // namespace emulator
