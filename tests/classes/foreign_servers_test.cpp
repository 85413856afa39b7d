// The classes as a library for foreign servers builds them. This program contains the provider's sources,
// compiled for such servers.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"

namespace class_tests {
namespace {

// The order of keys differs from class to class, and means nothing.
std::vector<std::string> sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}

std::string test_name(const testing::TestParamInfo<GoldenBuilder>& builder) {
    return builder.param.function;
}

class BuilderForForeignServers : public ClassTest, public testing::WithParamInterface<GoldenBuilder> {};

TEST_P(BuilderForForeignServers, LetsTheKeysOfItsClassPassTheFilter) {
    const char* wanted[] = {"Caption", nullptr};
    const RecordedInstance instance =
        make([&] { return GetParam().build(GetParam().className, NAMESPACE, wanted); });
    ASSERT_EQ(instance.filters().size(), 1U);
    EXPECT_EQ(instance.filters()[0].properties, std::vector<std::string>{"Caption"});
    ASSERT_TRUE(instance.filters()[0].keys.has_value());

    const std::vector<RecordedPath> paths = enumerate_names(GetParam().className).paths;
    ASSERT_FALSE(paths.empty());
    EXPECT_EQ(sorted(*instance.filters()[0].keys), sorted(paths[0].keys().names()));
}

INSTANTIATE_TEST_SUITE_P(Classes, BuilderForForeignServers, testing::ValuesIn(golden_builders()), test_name);

} // namespace
} // namespace class_tests
