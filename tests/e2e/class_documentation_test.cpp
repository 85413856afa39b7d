// docs/classes.md against the switch: a class's table lists exactly the properties that a client reads, with
// their types, and marks exactly the keys of its object paths.
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "tests/e2e/served_switch.h"

namespace e2e {
namespace {

struct DocumentedProperty {
    std::string type;
    bool isKey = false;
};
using DocumentedClass = std::map<std::string, DocumentedProperty>; // by property name

// The cells of a table's row, without the blanks around them; empty when the line is none.
std::vector<std::string> cells_of(const std::string& line) {
    std::vector<std::string> cells;
    if (!line.starts_with("|")) return cells;
    std::istringstream text(line.substr(1));
    for (std::string cell; std::getline(text, cell, '|');) {
        const std::size_t first = cell.find_first_not_of(' ');
        const std::size_t last = cell.find_last_not_of(' ');
        cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
    }
    return cells;
}

std::string between(const std::string& text, const std::string& open, const std::string& close) {
    const std::size_t start = text.find(open);
    if (start == std::string::npos) return "";
    const std::size_t begin = start + open.size();
    return text.substr(begin, text.find(close, begin) - begin);
}

// Every class that has a heading of its own.
std::map<std::string, DocumentedClass> documented_classes() {
    std::ifstream document(PROJECT_FOLDER "/docs/classes.md");
    std::map<std::string, DocumentedClass> classes;
    std::string current;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with("## ")) current = line.starts_with("## KESTO_") ? line.substr(3) : "";
        const std::vector<std::string> cells = cells_of(line);
        if (current.empty() || cells.size() < 4 || !cells[0].starts_with("`")) continue;
        classes[current][between(cells[0], "`", "`")] = {cells[1], cells[0].ends_with("**key**")};
    }
    return classes;
}

class ClassDocumentation : public ServedSwitch, public testing::WithParamInterface<std::string> {};

std::vector<std::string> class_names() {
    std::vector<std::string> names;
    for (const auto& [name, properties] : documented_classes()) {
        names.push_back(name);
    }
    return names;
}
INSTANTIATE_TEST_SUITE_P(Document, ClassDocumentation, testing::ValuesIn(class_names()),
                         [](const auto& parameter) { return parameter.param; });

TEST_P(ClassDocumentation, ListsThePropertiesAndTypesThatAClientReads) {
    const DocumentedClass documented = documented_classes()[GetParam()];
    std::map<std::string, std::string> read;
    const std::string answer = client().run("ei", {"-dx"}, GetParam());
    for (std::size_t at = 0; (at = answer.find("<PROPERTY ", at)) != std::string::npos; ++at) {
        const std::string tag = answer.substr(at, answer.find('>', at) - at);
        read[between(tag, "NAME=\"", "\"")] = between(tag, "TYPE=\"", "\"");
    }
    std::map<std::string, std::string> expected;
    for (const auto& [name, property] : documented) {
        expected[name] = property.type;
    }
    EXPECT_EQ(read, expected);
}

TEST_P(ClassDocumentation, MarksTheKeysOfTheObjectPaths) {
    const DocumentedClass documented = documented_classes()[GetParam()];
    std::set<std::string> expected;
    for (const auto& [name, property] : documented) {
        if (property.isKey) expected.insert(name);
    }
    const std::vector<std::string> names = client().enumerate_names(GetParam()).front().key_names();
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()), expected);
}

TEST(ClassDocumentationFile, HasATableForEachOfTheFifteenInstanceClasses) {
    EXPECT_EQ(documented_classes().size(), 15U);
}

} // namespace
} // namespace e2e
