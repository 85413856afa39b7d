// Includes between the server's folders go one way.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

namespace {

// Which folders each folder may use, besides itself.
const std::map<std::string, std::set<std::string>> USES = {
    {"model", {}},
    {"schema", {"model"}},
    {"broker", {"model"}},
    {"provider", {"model", "schema", "broker"}},
    {"interop", {"model", "schema", "provider"}},
    {"http", {"model"}},
    {"cimxml", {"model", "schema", "provider", "http"}},
};

// The folder of `#include "server/FOLDER/FILE.h"`; empty for any other line.
std::string included_folder(const std::string& line) {
    const std::string start = "#include \"server/";
    if (!line.starts_with(start)) return {};
    const std::string rest = line.substr(start.size());
    return rest.find('/') != std::string::npos ? rest.substr(0, rest.find('/')) : std::string();
}

TEST(Layers, FoldersUseOnlyThoseBelow) {
    int checked = 0;
    for (const auto& [folder, used] : USES) {
        for (const auto& file : std::filesystem::directory_iterator(SERVER_FOLDER "/" + folder)) {
            std::ifstream lines(file.path());
            for (std::string line; std::getline(lines, line);) {
                const std::string included = included_folder(line);
                if (included.empty() || included == folder) continue;
                ++checked;
                EXPECT_TRUE(used.contains(included)) << file.path() << ": " << line;
            }
        }
    }
    EXPECT_GT(checked, 50);
}

} // namespace
