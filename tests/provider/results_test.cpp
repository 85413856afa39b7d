// What reaches the CIM server's result when an object could not be built. The program is built twice: as the
// provider is by default, and as packages for foreign CIM servers build it.
#include "common/results.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/recording_broker.h"

namespace {

using test_support::RecordingBroker;
using test_support::RecordingResult;
using test_support::Returned;

// What reaches the result when NULL, -1 and a path of the broker's are handed over.
std::vector<std::string> handed_over() {
    RecordingBroker broker;
    RecordingResult result(broker);
    hand_over(result.cmpi(), static_cast<const CMPIInstance*>(nullptr));
    hand_over(result.cmpi(), error_object<const CMPIInstance>());
    hand_over(result.cmpi(), static_cast<const CMPIObjectPath*>(nullptr));
    hand_over(result.cmpi(), error_object<const CMPIObjectPath>());
    hand_over(result.cmpi(), broker.path("root/kesto", "KESTO_FCIPSettings"));
    std::vector<std::string> texts;
    for (const Returned& returned : result.returned()) {
        texts.push_back(testing::PrintToString(returned));
    }
    return texts;
}

// How often the result is closed when a single instance has been handed over.
std::size_t closed() {
    RecordingBroker broker;
    RecordingResult result(broker);
    end_results(result.cmpi());
    return result.done_calls();
}

#ifdef FCIP_FOREIGN_SERVERS

TEST(ForeignServersResults, TheResultOfASingleInstanceIsClosed) {
    EXPECT_EQ(closed(), 1U);
}

TEST(ForeignServersResults, NullAndMinusOneAreKeptBack) {
    const auto texts = handed_over();
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_NE(texts[0].find("KESTO_FCIPSettings"), std::string::npos) << texts[0];
}

#else

TEST(Results, TheResultOfASingleInstanceIsLeftOpen) {
    EXPECT_EQ(closed(), 0U);
}

TEST(Results, NullAndMinusOneAreHandedOverAsTheyAre) {
    const auto texts = handed_over();
    ASSERT_EQ(texts.size(), 5U);
    EXPECT_EQ(texts[0], "instance NULL");
    EXPECT_EQ(texts[1], "instance -1");
    EXPECT_EQ(texts[2], "path NULL");
    EXPECT_EQ(texts[3], "path -1");
    EXPECT_NE(texts[4].find("KESTO_FCIPSettings"), std::string::npos) << texts[4];
}

TEST(Results, WhatMustBeBuiltIsSkippedWhenItCouldNotBe) {
    RecordingBroker broker;
    RecordingResult result(broker);
    hand_over_built(result.cmpi(), static_cast<const CMPIInstance*>(nullptr));
    hand_over_built(result.cmpi(), error_object<const CMPIObjectPath>());
    EXPECT_TRUE(result.returned().empty());
    hand_over_built(result.cmpi(), broker.path("root/kesto", "KESTO_FCIPSettings"));
    EXPECT_EQ(result.returned().size(), 1U);
}

#endif

} // namespace
