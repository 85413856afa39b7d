// The fixture of the class suites, on the switch with one tunnel, and what the suites share.
#ifndef KESTO_TESTS_CLASSES_CLASS_TEST_H
#define KESTO_TESTS_CLASSES_CLASS_TEST_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "emulator/control.h"
#include "include/classes.h"
#include "platform/platform_services.h"
#include "tests/support/faults.h"
#include "tests/support/one_tunnel.h"
#include "tests/support/provider_test.h"
#include "tests/support/recorded.h"
#include "tests/support/recording_broker.h"
#include "tests/support/stdout_capture.h"
#include "tests/support/traces.h"

namespace class_tests {

using emulator::Effect;
using test_support::Answer;
using test_support::calls_of;
using test_support::entering;
using test_support::exiting;
using test_support::Failure;
using test_support::Filter;
using test_support::filter_for;
using test_support::for_each_effect;
using test_support::Key;
using test_support::Make;
using test_support::NAMESPACE;
using test_support::Object;
using test_support::occurrences;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::Returned;
using test_support::ROW_FAILURES;
using test_support::Set;
using test_support::Sets;
using test_support::STATUS_FAILURES;
using test_support::Value;

using InstanceWalker = int(const char* className, const CMPIResult* result, const char** properties,
                           const char* nameSpace);
using NameWalker = int(const char* className, const CMPIResult* result, const char* nameSpace);

// Every number that is not explained is from one_tunnel.h.
class ClassTest : public one_tunnel::OneTunnelTest {
  protected:
    // Makes one object; `trace` is what was printed meanwhile.
    template <typename Function>
    auto make(Function&& run) {
        test_support::StdoutCapture capture;
        auto object = built(run);
        trace = capture.text();
        return object;
    }

    // Runs one walker; `status` is what it returned.
    Answer walk_instances(InstanceWalker* walker, const std::string& className,
                          const char** properties = nullptr) {
        return walk(
            [&](const CMPIResult* result) {
                return walker(className.c_str(), result, properties, NAMESPACE);
            },
            &status);
    }
    Answer walk_names(NameWalker* walker, const std::string& className) {
        return walk([&](const CMPIResult* result) { return walker(className.c_str(), result, NAMESPACE); },
                    &status);
    }

    std::string trace;
    int status = -99;
};

// As parts of regular expressions: a line trace, and any text.
std::string any_line_trace(const std::string& function);
inline const std::string ANY = ".*";
inline const std::string SOME = ".+";

// Whether the whole text matches the extended regular expression; its "." matches line ends too.
bool matches(const std::string& text, const std::string& pattern);

// The calls of these services, in the order in which they were made.
std::vector<std::string> calls_of_any(const std::vector<std::string>& calls,
                                      const std::vector<std::string>& services);

// The table without the rows of these names, and with the value of one row (of every row of that name)
// replaced.
Sets without(Sets sets, const std::vector<std::string>& names);
Sets with(Sets sets, const std::string& name, const Value& value);

} // namespace class_tests

#endif
