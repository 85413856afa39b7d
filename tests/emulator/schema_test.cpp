// The schema of scenarios lists the members that the loader accepts, object by object.
#include <algorithm>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

using Members = std::map<std::string, std::vector<std::string>>;

Members sorted(Members members) {
    for (auto& [name, list] : members)
        std::sort(list.begin(), list.end());
    return members;
}

TEST(Schema, ListsTheMembersThatTheLoaderAccepts) {
    std::ifstream file(std::string(EMULATOR_FOLDER) + "/switch.schema.json");
    const auto schema = nlohmann::json::parse(file);
    Members members;
    for (const auto& [name, definition] : schema.at("$defs").items()) {
        if (definition.contains("properties")) {
            for (const auto& [member, value] : definition.at("properties").items())
                members[name].push_back(member);
        }
    }
    EXPECT_EQ(sorted(members), sorted(emulator::scenario_members()));
}

} // namespace
} // namespace emulator_test
