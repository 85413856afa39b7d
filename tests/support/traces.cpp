#include "tests/support/traces.h"

#include <algorithm>
#include <iterator>

namespace test_support {

std::string entering(const std::string& function) {
    return "Entering " + function + "\n";
}

std::string exiting(const std::string& function) {
    return "Exiting " + function + "\n";
}

std::string line_trace(const std::string& function, int line) {
    return " Function : " + function + " Line " + std::to_string(line) + " \n";
}

std::size_t occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

std::vector<std::string> functions_entered(const std::string& output) {
    const std::string mark = "Entering ";
    std::vector<std::string> names;
    for (std::size_t at = output.find(mark); at != std::string::npos; at = output.find(mark, at + 1)) {
        const std::size_t begin = at + mark.size();
        names.push_back(output.substr(begin, output.find_first_of(" \n", begin) - begin));
    }
    return names;
}

std::vector<std::string> calls_of(const std::vector<std::string>& calls, const std::string& name) {
    std::vector<std::string> chosen;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(chosen),
                 [&](const std::string& call) { return call == name || call.starts_with(name + " "); });
    return chosen;
}

} // namespace test_support
