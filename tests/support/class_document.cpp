#include "tests/support/class_document.h"

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string_view>

namespace test_support {

namespace {

constexpr std::string_view HEADING = "## ";
constexpr std::string_view CLASS_PREFIX = "KESTO_";
constexpr std::string_view SUPERCLASS = "Superclass: ";

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

// What stands between the first two backquotes.
std::string quoted(const std::string& text) {
    const std::size_t open = text.find('`');
    if (open == std::string::npos) return "";
    return text.substr(open + 1, text.find('`', open + 1) - open - 1);
}

// take(class of the heading or "", line) for each line.
template <typename Take>
void for_each_line(Take take) {
    std::ifstream document(PROJECT_FOLDER "/docs/classes.md");
    std::string className;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with(HEADING)) {
            const std::string heading = line.substr(HEADING.size());
            className = heading.starts_with(CLASS_PREFIX) ? heading : "";
        }
        take(className, line);
    }
}

} // namespace

std::map<std::string, DocumentedClass> documented_classes() {
    std::map<std::string, DocumentedClass> classes;
    for_each_line([&](const std::string& className, const std::string& line) {
        if (className.empty()) return;
        DocumentedClass& documented = classes[className];
        if (line.starts_with(SUPERCLASS)) documented.superclasses = line.substr(SUPERCLASS.size());
        const std::vector<std::string> cells = cells_of(line);
        if (cells.size() < 4 || !cells[0].starts_with("`")) return;
        documented.properties[quoted(cells[0])] = {cells[1], cells[2], cells[0].ends_with("**key**")};
    });
    return classes;
}

std::map<std::string, std::vector<std::string>> documented_class_rows() {
    std::map<std::string, std::vector<std::string>> rows;
    for_each_line([&](const std::string& className, const std::string& line) {
        const std::vector<std::string> cells = cells_of(line);
        if (!className.empty() || cells.empty() || !quoted(cells[0]).starts_with(CLASS_PREFIX)) return;
        rows[quoted(cells[0])].assign(cells.begin() + 1, cells.end());
    });
    return rows;
}

} // namespace test_support
