// The one emulated switch of the process: its state, its message transport, the faults that are scripted and
// the record of what its callers did.
#ifndef KESTO_EMULATOR_RUNTIME_H
#define KESTO_EMULATOR_RUNTIME_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "emulator/control.h"
#include "emulator/switch_state.h"
#include "emulator/transport.h"

namespace emulator {

// What the faults make of one call.
struct Verdict {
    Effect effect = Effect::None;
    int status = 0;
    std::uint32_t size = 0;
};

// The faults in force, each with its own count and random sequence.
class Faults {
  public:
    void add(Fault fault);
    void clear() { armed_.clear(); }
    bool empty() const { return armed_.empty(); }
    // Counts the call for every fault of the symbol; `actions` receives those of the faults that hit it.
    Verdict judge(std::string_view symbol, const std::string& arguments,
                  std::vector<std::function<void()>>& actions);

  private:
    struct Armed {
        Fault fault;
        std::uint32_t seen = 0;
        std::mt19937 random;
    };
    std::vector<Armed> armed_;
};

// A line card's reply and the messages that follow it.
struct CardAnswer {
    std::vector<std::uint8_t> payload;
    std::vector<std::vector<std::uint8_t>> continuations;
};

class Runtime {
  public:
    // Guards everything below. Recursive, since a fault's action may change the switch through control.h.
    std::recursive_mutex mutex;

    SwitchState state;
    bool refused = false; // the scenario of KESTO_SWITCH was bad: the tables are empty, init_mts fails
    Faults faults;
    Transport transport;
    std::map<std::uint32_t, CardAnswer> fixedReplies; // by message code

    bool recording = false;
    std::vector<std::string> callLog;
    std::map<std::string, std::size_t, std::less<>> callCounts;
    std::vector<SentRequest> requests;

    std::size_t misuses = 0;
    std::vector<std::string> misuseTexts;

    void load(SwitchState loaded); // replaces the switch
    void count_call(const char* symbol);
    void misuse(const std::string& what);
    const char* keep(const std::string& text); // the same text at an address that stays valid

  private:
    std::set<std::string> kept_;
};

// Made at its first use, from KESTO_SWITCH or the built-in switch, and never destroyed, since threads may
// still call while the process exits.
Runtime& runtime();

bool is_service(std::string_view symbol); // LINE_CARD is one, too

} // namespace emulator

#endif
