// The fixture of the association suites: a provider on the golden switch, and its traversal functions called
// as an operation calls them, under the lock.
#ifndef KESTO_TESTS_ASSOC_ASSOCIATION_TEST_H
#define KESTO_TESTS_ASSOC_ASSOCIATION_TEST_H

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <string>
#include <vector>

#include "emulator/control.h"
#include "include/traversal.h"
#include "tests/assoc/golden_objects.h"
#include "tests/assoc/golden_switch.h"
#include "tests/support/faults.h"
#include "tests/support/provider_test.h"
#include "tests/support/traces.h"

namespace golden {

class AssociationTest : public test_support::ProviderTest {
  protected:
    using Answer = test_support::Answer;

    void SetUp() override {
        ProviderTest::SetUp();
        nameSpace = NAMESPACE;
        install();
        emulator::clear_calls();
    }

    // One call of a traversal function with this key and association class. `status` is what it returned.
    Answer call(AssociatorNamesFn* function, const char* key, const char* asked) {
        return walk(
            [&](const CMPIResult* result) {
                return function(key, asked, nullptr, nullptr, nullptr, result, NAMESPACE);
            },
            &status);
    }
    Answer call(AssociatorsFn* function, const char* key, const char* asked,
                const char** properties = nullptr) {
        return walk(
            [&](const CMPIResult* result) {
                return function(key, asked, nullptr, nullptr, nullptr, properties, result, NAMESPACE);
            },
            &status);
    }
    Answer call(ReferenceNamesFn* function, const char* key, const char* asked) {
        return walk(
            [&](const CMPIResult* result) { return function(key, asked, nullptr, result, NAMESPACE); },
            &status);
    }
    Answer call(ReferencesFn* function, const char* key, const char* asked,
                const char** properties = nullptr) {
        return walk(
            [&](const CMPIResult* result) {
                return function(key, asked, nullptr, properties, result, NAMESPACE);
            },
            &status);
    }
    // The same of the source's function in this form.
    template <typename Source>
    Answer call(Form form, const Source& source, const std::string& key, const char* asked) {
        return form == Form::Names ? call(source.names, key.c_str(), asked)
                                   : call(source.instances, key.c_str(), asked);
    }

    int status = 0;
};

// The function's own trace: its entry and what it prints at once, and at the end its exit.
inline void expect_whole_trace(const std::string& output, const std::string& function,
                               const std::string& opening = "") {
    EXPECT_TRUE(output.starts_with(test_support::entering(function) + opening)) << output;
    EXPECT_TRUE(output.ends_with(test_support::exiting(function))) << output;
    EXPECT_EQ(test_support::occurrences(output, function + "\n"), 2U) << output;
}
inline void expect_trace_without_exit(const std::string& output, const std::string& function,
                                      const std::string& opening = "") {
    EXPECT_TRUE(output.starts_with(test_support::entering(function) + opening)) << output;
    EXPECT_EQ(test_support::occurrences(output, function + "\n"), 1U) << output;
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

// The services that one request calls, and how often, without the lock's.
inline std::map<std::string, std::uint32_t> services_called(const test_support::Answer& answer) {
    std::map<std::string, std::uint32_t> counts;
    for (const std::string& call : answer.platformCalls) {
        ++counts[call.substr(0, call.find(' '))];
    }
    counts.erase("mutex_lock");
    counts.erase("mutex_unlock");
    return counts;
}

// Runs request() with each call of each service below it failing alone, in every way that the service can,
// and hands each answer to check. Whatever happens, no service may be misused: the fixture looks at that.
template <typename Request, typename Check>
void for_each_failing_call(Request request, Check check) {
    const std::map<std::string, std::uint32_t> services = services_called(request());
    ASSERT_FALSE(services.empty());
    for (const auto& [symbol, count] : services) {
        for (std::uint32_t nth = 1; nth <= count; ++nth) {
            SCOPED_TRACE("call " + std::to_string(nth));
            test_support::for_each_effect(test_support::ROW_FAILURES,
                                          {.symbol = symbol, .first = nth, .last = nth},
                                          [&] { check(request()); });
        }
    }
}

} // namespace golden

#endif
