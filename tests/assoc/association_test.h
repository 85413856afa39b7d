// The fixture of the association suites: a provider on the golden switch, and its traversal members called as
// an operation calls them, under the lock.
#ifndef KESTO_TESTS_ASSOC_ASSOCIATION_TEST_H
#define KESTO_TESTS_ASSOC_ASSOCIATION_TEST_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <vector>

#include "include/traversal.h"
#include "tests/assoc/golden_switch.h"
#include "tests/support/provider_test.h"

namespace golden {

class AssociationTest : public test_support::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        nameSpace = NAMESPACE;
        install();
        emulator::clear_calls();
    }

    // One call of a member with this key and association class. `status` is what the member returned.
    test_support::Answer call(AssociatorNamesFn* member, const char* key, const char* asked) {
        return walk(
            [&](const CMPIResult* result) {
                return member(key, asked, nullptr, nullptr, nullptr, result, NAMESPACE);
            },
            &status);
    }
    test_support::Answer call(AssociatorsFn* member, const char* key, const char* asked,
                              const char** properties = nullptr) {
        return walk(
            [&](const CMPIResult* result) {
                return member(key, asked, nullptr, nullptr, nullptr, properties, result, NAMESPACE);
            },
            &status);
    }
    test_support::Answer call(ReferenceNamesFn* member, const char* key, const char* asked) {
        return walk([&](const CMPIResult* result) { return member(key, asked, nullptr, result, NAMESPACE); },
                    &status);
    }
    test_support::Answer call(ReferencesFn* member, const char* key, const char* asked) {
        return walk(
            [&](const CMPIResult* result) { return member(key, asked, nullptr, nullptr, result, NAMESPACE); },
            &status);
    }

    int status = 0;
};

// The trace that a function wrote itself: the lines that name it, and the one with the association class that
// reference members write. Builders and lookups below it write their own, some without an end of line.
inline std::string trace_of(const std::string& output, const std::string& function) {
    const std::string beginnings[] = {"Entering " + function, "Exiting " + function,
                                      " Function : " + function, " ****** Result Class", "Result Class"};
    std::string found;
    for (std::size_t at = 0; at < output.size(); ++at) {
        for (const std::string& beginning : beginnings) {
            if (output.compare(at, beginning.size(), beginning) != 0) continue;
            const std::size_t end = std::min(output.find('\n', at), output.size() - 1);
            found += output.substr(at, end + 1 - at);
            at = end;
            break;
        }
    }
    return found;
}

// A key that names a tunnel when it is read in this mode. Every mode has one.
inline const Probe& hit_of(int mode) {
    return *std::find_if(PROBES.begin(), PROBES.end(),
                         [&](const Probe& probe) { return probe.tunnel[mode] != nullptr; });
}

inline std::string entering(const std::string& function) {
    return "Entering " + function + "\n";
}
inline std::string exiting(const std::string& function) {
    return "Exiting " + function + "\n";
}

// The same class name in letters that no table uses.
inline std::string in_mixed_case(std::string text) {
    bool upper = false;
    for (char& letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        letter = static_cast<char>(upper ? std::toupper(code) : std::tolower(code));
        upper = !upper;
    }
    return text;
}

// Nothing that is an object reached the result.
inline void expect_no_object(const test_support::Answer& answer) {
    for (const test_support::Returned& returned : answer.returned)
        ADD_FAILURE() << "returned " << testing::PrintToString(returned);
}

// The services that one request calls, and how often, without the lock's.
inline std::map<std::string, std::uint32_t> services_called(const test_support::Answer& answer) {
    std::map<std::string, std::uint32_t> counts;
    for (const std::string& call : answer.platformCalls)
        ++counts[call.substr(0, call.find(' '))];
    counts.erase("mutex_lock");
    counts.erase("mutex_unlock");
    return counts;
}

// The failures of the platform that a service which hands out rows can have.
inline const std::vector<emulator::Effect> ROW_FAILURES{emulator::Effect::Fail, emulator::Effect::FailWithRow,
                                                        emulator::Effect::SucceedWithoutRow};

// Those of a service whose success without a row means nothing.
inline const std::vector<emulator::Effect> STATUS_FAILURES{emulator::Effect::Fail,
                                                           emulator::Effect::FailWithRow};

// Runs request() with each call of each service below it failing alone, in every way that the service can,
// and hands each answer to check. Whatever happens, no service may be misused: the fixture looks at that.
template <typename Request, typename Check>
void for_each_failing_call(Request request, Check check) {
    const std::map<std::string, std::uint32_t> services = services_called(request());
    ASSERT_FALSE(services.empty());
    for (const auto& [symbol, count] : services) {
        for (const emulator::Effect effect : ROW_FAILURES) {
            for (std::uint32_t nth = 1; nth <= count; ++nth) {
                SCOPED_TRACE(symbol + " call " + std::to_string(nth) + " effect " +
                             std::to_string(static_cast<int>(effect)));
                emulator::Fault alone;
                alone.symbol = symbol;
                alone.first = alone.last = nth;
                alone.effect = effect;
                emulator::add_fault(alone);
                check(request());
                emulator::clear_faults();
            }
        }
    }
}

inline emulator::Fault fault(const char* symbol, emulator::Effect effect, const char* where = "") {
    emulator::Fault made;
    made.symbol = symbol;
    made.where = where;
    made.effect = effect;
    return made;
}

} // namespace golden

#endif
