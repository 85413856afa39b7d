#include "tests/classes/class_test.h"

#include <regex.h>

#include <algorithm>
#include <stdexcept>

namespace class_tests {

std::string any_line_trace(const std::string& function) {
    return " Function : " + function + " Line [0-9]+ \n";
}

bool matches(const std::string& text, const std::string& pattern) {
    regex_t compiled;
    if (regcomp(&compiled, ("^(" + pattern + ")$").c_str(), REG_EXTENDED | REG_NOSUB) != 0) {
        throw std::invalid_argument(pattern);
    }
    const bool matched = regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
    regfree(&compiled);
    return matched;
}

std::vector<std::string> calls_of_any(const std::vector<std::string>& calls,
                                      const std::vector<std::string>& services) {
    std::vector<std::string> chosen;
    for (const std::string& call : calls) {
        for (const std::string& service : services) {
            if (call == service || call.starts_with(service + " ")) chosen.push_back(call);
        }
    }
    return chosen;
}

Sets without(Sets sets, const std::vector<std::string>& names) {
    std::erase_if(
        sets, [&](const Set& set) { return std::find(names.begin(), names.end(), set.name) != names.end(); });
    return sets;
}

Sets with(Sets sets, const std::string& name, const Value& value) {
    for (Set& set : sets) {
        if (set.name == name) set.value = value;
    }
    return sets;
}

} // namespace class_tests
