// One call of a platform service, from its entry to its answer: it is counted and logged, its caller is
// checked, and the faults that are scripted for it decide before the switch does.
//
//     const Call call("pm_cim_get_port_info", CallerLock::Needed, [&] { return format("op=%d", op); });
//     if (!call.usable(queue)) return FAILED;
//     return call.answer(row, row_of(port));
#ifndef KESTO_EMULATOR_CALL_H
#define KESTO_EMULATOR_CALL_H

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <type_traits>

#include "emulator/control.h"
#include "emulator/runtime.h"

namespace emulator {

// What services return without a fault.
inline constexpr int OK = 0;
inline constexpr int FAILED = -1;
inline constexpr int NOT_FOUND = ENOENT;
inline constexpr int NO_ANSWER = ETIMEDOUT;

// Whether the service may only be called with the platform's lock held.
enum class CallerLock { Needed, NotNeeded };

class Call {
  public:
    Call(const char* symbol, CallerLock lock) : Call(symbol, lock, [] { return std::string(); }) {}
    // `arguments` makes the text of the call log; it is called only when somebody reads the text.
    template <typename Arguments>
    Call(const char* symbol, CallerLock lock, Arguments arguments)
        : symbol_(symbol), guard_(runtime().mutex) {
        enter(lock, reads_arguments() ? arguments() : std::string());
    }

    // Complains about the caller unless `holds`.
    bool require(bool holds, const char* what) const {
        if (!holds) complain(what);
        return holds;
    }

    // True if the caller's queue is the open one. A closed queue is no misuse: opening it may have failed.
    bool usable(std::uint32_t queue) const;

    bool failed() const { return verdict_.effect == Effect::Fail || verdict_.effect == Effect::FailWithRow; }
    int status() const { return verdict_.status; }
    const Verdict& verdict() const { return verdict_; }

    // Stores a row as a fresh block, which the caller then owns, and returns the status. `found` is null if
    // the switch has no such row.
    template <typename Slot, typename Row>
    int answer(Slot** slot, const Row* found) const {
        static_assert(std::is_trivially_copyable_v<Row>);
        static const Row EMPTY{};
        return answer_bytes(slot, found, found == nullptr ? &EMPTY : found, sizeof(Row));
    }

    // The same for a block whose size only the call knows; `row` is what a fault stores if nothing is found.
    template <typename Slot>
    int answer_bytes(Slot** slot, const void* found, const void* row, std::size_t size) const {
        if (!require(slot != nullptr, "the out-parameter is NULL")) return FAILED;
        switch (verdict_.effect) {
            case Effect::Fail:
                return status();
            case Effect::SucceedWithoutRow:
                *slot = nullptr;
                return OK;
            case Effect::FailWithRow:
                *slot = static_cast<Slot*>(fresh_block(row, size));
                return status();
            default:
                break;
        }
        if (found == nullptr) return NOT_FOUND;
        *slot = static_cast<Slot*>(fresh_block(row, size));
        return OK;
    }

  private:
    void complain(const char* what) const;
    bool reads_arguments() const;
    void enter(CallerLock lock, const std::string& arguments);
    static void* fresh_block(const void* bytes, std::size_t size);

    const char* symbol_;
    std::unique_lock<std::recursive_mutex> guard_;
    Verdict verdict_;
};

} // namespace emulator

#endif
