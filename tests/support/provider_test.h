// The fixture of every suite that tests the provider: the emulated switch, the recording broker, and the
// provider loaded through its factories.
//
// SetUp brings the emulated switch back to the built-in one (emulator::reset()), calls both factories with
// the broker and then forgets those calls. TearDown fails the test when the provider misused a platform
// service, still holds the lock, or left a message undropped.
//
// Operations go through the function tables that the factories return:
//
//     Answer answer = get_instance("KESTO_FCIPProtocolEndPoint", {{"Name", "1_10.1.1.1_10.1.1.2"}});
//     EXPECT_EQ(answer.output, "Entering FCIP_GetInstance\n...");
//     ASSERT_EQ(answer.instances.size(), 1U);
//     EXPECT_EQ(answer.instances[0].sets(), (Sets{{"SystemCreationClassName", CMPI_chars, "..."}, ...}));
//
// Functions below the operations expect the lock: hold emulator::Locked, or use locked(...).
#ifndef KESTO_TESTS_SUPPORT_PROVIDER_TEST_H
#define KESTO_TESTS_SUPPORT_PROVIDER_TEST_H

#include <cmpidt.h>
#include <cmpift.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "emulator/control.h"
#include "tests/support/recorded.h"
#include "tests/support/recording_broker.h"
#include "tests/support/stdout_capture.h"

namespace test_support {

// The namespace of requests that do not name one.
inline constexpr const char* NAMESPACE = "root/kesto";

// What a client would have seen of one operation, and the trace it left.
struct Answer {
    int rc = 0;
    std::optional<std::string> message; // nullopt: the status message was NULL
    std::vector<RecordedInstance> instances;
    std::vector<RecordedPath> paths;
    std::vector<Returned> returned; // both in their order
    std::size_t doneCalls = 0;
    std::string output;            // standard output
    std::vector<Call> brokerCalls; // the broker calls of this operation
    std::vector<std::string> platformCalls;
};

// The properties argument of a request; nullopt passes NULL.
using PropertyList = std::optional<std::vector<std::string>>;

class ProviderTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    RecordingBroker broker;
    CMPIInstanceMI* instanceMi = nullptr;
    CMPIAssociationMI* associationMi = nullptr;
    std::string nameSpace = NAMESPACE; // of the requests made below

    Answer enumerate_names(const std::string& className);
    Answer enumerate(const std::string& className, const PropertyList& properties = std::nullopt);
    Answer get_instance(const std::string& className, const std::vector<Key>& keys,
                        const PropertyList& properties = std::nullopt);
    // The class arguments are passed as NULL when nullptr.
    Answer associators(const std::string& className, const std::vector<Key>& keys, const char* assocClass,
                       const PropertyList& properties = std::nullopt, const char* resultClass = nullptr,
                       const char* role = nullptr, const char* resultRole = nullptr);
    Answer associator_names(const std::string& className, const std::vector<Key>& keys,
                            const char* assocClass, const char* resultClass = nullptr,
                            const char* role = nullptr, const char* resultRole = nullptr);
    Answer references(const std::string& className, const std::vector<Key>& keys, const char* resultClass,
                      const PropertyList& properties = std::nullopt, const char* role = nullptr);
    Answer reference_names(const std::string& className, const std::vector<Key>& keys,
                           const char* resultClass, const char* role = nullptr);

    // Runs any call that takes a result, as an operation: run(const CMPIResult*) returns a CMPIStatus.
    template <typename Function>
    Answer operate(Function&& run) {
        Recording recording(*this);
        return recording.finish(run(recording.result.cmpi()));
    }

    // Runs a walker or traversal function under the lock: run(const CMPIResult*) returns an int, which is
    // stored in *functionResult when that is given.
    template <typename Function>
    Answer walk(Function&& run, int* functionResult = nullptr) {
        Recording recording(*this);
        {
            emulator::Locked lock;
            const int value = run(recording.result.cmpi());
            if (functionResult != nullptr) *functionResult = value;
        }
        return recording.finish(CMPIStatus{CMPI_RC_OK, nullptr});
    }

    // Runs a builder under the lock and returns what it made.
    template <typename Function>
    auto built(Function&& run) {
        emulator::Locked lock;
        return broker.recorded(run());
    }

    template <typename Function>
    static auto locked(Function&& run) {
        emulator::Locked lock;
        return run();
    }

    // Calls run(n) with the nth object of this kind failing, for n = 1, 2, ... until nothing failed any more.
    // Returns how many failures there were: at least one, or the test fails.
    template <typename Function>
    std::size_t for_each_broker_failure(Make what, Failure how, Function&& run) {
        for (std::size_t nth = 1;; ++nth) {
            SCOPED_TRACE("broker failure " + std::to_string(nth));
            broker.fail_nth(what, nth, how);
            run(nth);
            const bool hit = broker.fault_hit();
            broker.clear_faults();
            if (!hit) return at_least_one(nth - 1);
        }
    }

    // The same for the nth call of a platform service.
    template <typename Function>
    std::size_t for_each_platform_failure(const std::string& symbol, emulator::Effect effect,
                                          Function&& run) {
        for (std::size_t nth = 1;; ++nth) {
            SCOPED_TRACE(symbol + " failure " + std::to_string(nth));
            emulator::clear_calls();
            emulator::clear_faults();
            const auto call = static_cast<std::uint32_t>(nth);
            emulator::add_fault({.symbol = symbol, .first = call, .last = call, .effect = effect});
            run(nth);
            const bool hit = emulator::count(symbol) >= nth;
            emulator::clear_faults();
            if (!hit) return at_least_one(nth - 1);
        }
    }

  private:
    // One operation: what it prints, returns and calls.
    struct Recording {
        explicit Recording(ProviderTest& owner);
        Answer finish(CMPIStatus status);

        ProviderTest& test;
        RecordingResult result;
        std::size_t brokerCallsBefore;
        std::size_t platformCallsBefore;
        StdoutCapture capture;
    };

    static std::size_t at_least_one(std::size_t failures);
};

// The function names of the calls that were made without, or with, the lock held, each once, in first order.
std::vector<std::string> functions_called(const std::vector<Call>& calls, bool locked);

} // namespace test_support

#endif
