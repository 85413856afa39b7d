// docs/classes.md against the switch: a class's table lists exactly the properties that a client reads, with
// their types, and marks exactly the keys of its object paths.
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/e2e/served_switch.h"
#include "tests/support/class_document.h"

namespace e2e {
namespace {

using test_support::documented_classes;
using test_support::DocumentedClass;

std::string between(const std::string& text, const std::string& open, const std::string& close) {
    const std::size_t start = text.find(open);
    if (start == std::string::npos) return "";
    const std::size_t begin = start + open.size();
    return text.substr(begin, text.find(close, begin) - begin);
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
    for (const auto& [name, property] : documented.properties) {
        expected[name] = property.type;
    }
    EXPECT_EQ(read, expected);
}

TEST_P(ClassDocumentation, MarksTheKeysOfTheObjectPaths) {
    const DocumentedClass documented = documented_classes()[GetParam()];
    std::set<std::string> expected;
    for (const auto& [name, property] : documented.properties) {
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
