// The builders and fillers of the instance model, and what each sets and prints on the switch with one
// tunnel.
#ifndef KESTO_TESTS_CLASSES_GOLDEN_CLASSES_H
#define KESTO_TESTS_CLASSES_GOLDEN_CLASSES_H

#include <cmpidt.h>
#include <cmpift.h>
#include <gtest/gtest.h>

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/recorded.h"

namespace class_tests {

// The SystemName where the port of the FCIP interface, and where its VSAN's domain, cannot be read; nullptr
// is no property at all.
struct SystemNames {
    const char* withoutPort;
    const char* withoutDomain;
};

struct GoldenBuilder {
    const char* function = nullptr;
    const char* className = nullptr;
    // Builds from the one tunnel's rows.
    std::function<CMPIInstance*(const char* className, const char* nameSpace, const char** properties)>
        build{};
    test_support::Sets properties{};
    std::optional<SystemNames> systemNames{}; // nullopt: no VSAN's system is named
    std::string trace{};                      // of a successful build, as a regular expression
    bool needsProfile = false; // the builder gives up without the link's profile, after its "Entering" line
    bool entryTrace = true;    // whether it prints that line
    bool exitTraceWithoutPath = false; // whether "Exiting" is printed when the object path cannot be made
};

struct GoldenFiller {
    const char* function = nullptr;
    const char* className = nullptr;
    std::function<CMPIObjectPath*(const char* className, const char* nameSpace)> fill{};
    test_support::Sets keys{};
    std::optional<SystemNames> systemNames{};
    bool hostName = false;          // whether the path carries the switch's host name
    std::string trace{};            // of a successful fill, as a regular expression
    std::string traceWithoutPath{}; // when the object path cannot be made
    bool checksHandle = false;      // whether a path without a handle is traced as a missing one is
    bool needsProfile = false;
    std::string traceWithoutProfile{};
};

const std::vector<GoldenBuilder>& golden_builders();
const std::vector<GoldenFiller>& golden_fillers();

const test_support::Sets& golden_properties(const std::string& function);
const test_support::Sets& golden_keys(const std::string& function);

void PrintTo(const GoldenBuilder& builder, std::ostream* out);
void PrintTo(const GoldenFiller& filler, std::ostream* out);

} // namespace class_tests

#endif
