// The fixture of the class suites: ProviderTest on the switch with one tunnel, and what the suites share.
#ifndef KESTO_TESTS_CLASSES_CLASS_TEST_H
#define KESTO_TESTS_CLASSES_CLASS_TEST_H

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "include/classes.h"
#include "platform/platform_services.h"
#include "tests/classes/one_tunnel.h"
#include "tests/support/provider_test.h"

namespace class_tests {

using test_support::Answer;
using test_support::Failure;
using test_support::Filter;
using test_support::Key;
using test_support::Make;
using test_support::NAMESPACE;
using test_support::Object;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::Returned;
using test_support::Set;
using test_support::Sets;
using test_support::Value;

// emulator::Fault, with a value for every member that a test does not name.
struct Fault {
    std::string symbol{};
    std::string where{};
    std::uint32_t first = 1;
    std::uint32_t last = UINT32_MAX;
    emulator::Effect effect = emulator::Effect::Fail;
    int status = -1;
    std::function<void()> action{};
};

inline void let_down(const Fault& fault) {
    emulator::Fault added;
    added.symbol = fault.symbol;
    added.where = fault.where;
    added.first = fault.first;
    added.last = fault.last;
    added.effect = fault.effect;
    added.status = fault.status;
    added.action = fault.action;
    emulator::add_fault(added);
}

// Every number that is not said otherwise is from one_tunnel.h.
class ClassTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        one_tunnel::install();
        forget();
    }

    // Forgets what was called so far.
    void forget() {
        broker.clear_calls();
        emulator::clear_calls();
    }

    // Makes one object; `trace` is what was printed meanwhile.
    template <typename Function>
    auto make(Function&& run) {
        test_support::StdoutCapture capture;
        auto object = built(run);
        trace = capture.text();
        return object;
    }

    std::string trace;
    FcipLinkEntry link = one_tunnel::link();
    FcipEntityEntry profile = one_tunnel::profile();
};

inline std::string entering(const std::string& function) {
    return "Entering " + function + "\n";
}
inline std::string exiting(const std::string& function) {
    return "Exiting " + function + "\n";
}

// As parts of regular expressions: a line trace, and any text.
inline std::string line_trace(const std::string& function) {
    return " Function : " + function + " Line [0-9]+ \n";
}
inline const std::string ANY = ".*";
inline const std::string SOME = ".+";

// Whether the whole text matches the extended regular expression; its "." matches line ends too.
bool matches(const std::string& text, const std::string& pattern);

inline std::size_t occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

// The calls of these services, in the order in which they were made.
inline std::vector<std::string> calls_of(const std::vector<std::string>& calls,
                                         const std::vector<std::string>& services) {
    std::vector<std::string> chosen;
    for (const std::string& call : calls) {
        for (const std::string& service : services)
            if (call == service || call.starts_with(service + " ")) chosen.push_back(call);
    }
    return chosen;
}

inline Sets without(Sets sets, const std::vector<std::string>& names) {
    std::erase_if(
        sets, [&](const Set& set) { return std::find(names.begin(), names.end(), set.name) != names.end(); });
    return sets;
}

// The table with the value of one row (of every row of that name) replaced.
inline Sets with(Sets sets, const std::string& name, const Value& value) {
    for (Set& set : sets)
        if (set.name == name) set.value = value;
    return sets;
}

} // namespace class_tests

#endif
