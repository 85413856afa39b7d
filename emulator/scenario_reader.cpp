// The strict reading of JSON values.
#include "emulator/scenario_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>

#include "emulator/control.h"

namespace emulator {

using nlohmann::json;

json parse_json(std::string_view text, std::string_view source) {
    // The library would keep the last of two members with one name, but a scenario with two has a mistake.
    std::vector<std::set<std::string>> open;
    std::string repeated;
    const auto watch = [&](int, json::parse_event_t event, json& value) {
        if (event == json::parse_event_t::object_start) open.emplace_back();
        if (event == json::parse_event_t::object_end) open.pop_back();
        if (event == json::parse_event_t::key && !open.back().insert(value.get<std::string>()).second &&
            repeated.empty()) {
            repeated = value.get<std::string>();
        }
        return true;
    };
    json parsed;
    try {
        parsed = json::parse(text.begin(), text.end(), watch);
    } catch (const json::exception& error) {
        std::string what = error.what(); // "[json.exception....] parse error at line 3, column 5: ..."
        what.erase(0, what.find("] ") == std::string::npos ? 0 : what.find("] ") + 2);
        throw ScenarioError(std::string(source) + ": " + what);
    }
    if (!repeated.empty()) {
        throw ScenarioError(std::string(source) + ": the member \"" + repeated +
                            "\" is given twice in one object");
    }
    return parsed;
}

void Reader::refuse(const std::string& what) const {
    throw ScenarioError(source_ + ": " + (pointer_.empty() ? "/" : pointer_) + ": " + what);
}

Reader Reader::inner(const json& value, const std::string& token) const {
    std::string escaped;
    for (const char c : token) {
        escaped += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    }
    return {value, source_, pointer_ + "/" + escaped};
}

void Reader::expect_object(const ObjectKind& kind) const {
    if (!value_.is_object()) refuse("is not an object");
    for (const auto& [name, value] : value_.items()) {
        if (std::find(kind.members.begin(), kind.members.end(), name) == kind.members.end()) {
            inner(value, name).refuse("is not a member of \"" + kind.name + "\"");
        }
    }
}

bool Reader::has(const std::string& member) const {
    return value_.contains(member);
}

Reader Reader::at(const std::string& member) const {
    if (!has(member)) refuse("has no member \"" + member + "\"");
    return inner(value_.at(member), member);
}

std::optional<Reader> Reader::find(const std::string& member) const {
    return has(member) ? std::optional<Reader>(at(member)) : std::nullopt;
}

std::vector<Reader> Reader::elements() const {
    if (!value_.is_array()) refuse("is not an array");
    std::vector<Reader> readers;
    for (std::size_t i = 0; i < value_.size(); ++i) {
        readers.push_back(inner(value_[i], std::to_string(i)));
    }
    return readers;
}

std::vector<Reader> Reader::elements_of(const std::string& member) const {
    return has(member) ? at(member).elements() : std::vector<Reader>();
}

std::vector<std::pair<std::string, Reader>> Reader::members() const {
    if (!value_.is_object()) refuse("is not an object");
    std::vector<std::pair<std::string, Reader>> readers;
    for (const auto& [name, value] : value_.items()) {
        readers.emplace_back(name, inner(value, name));
    }
    return readers;
}

std::uint64_t Reader::integer(std::uint64_t smallest, std::uint64_t largest) const {
    const std::string range = std::to_string(smallest) + " to " + std::to_string(largest);
    if (!value_.is_number_integer()) refuse("is not an integer from " + range);
    if (!value_.is_number_unsigned() && value_.get<std::int64_t>() < 0) {
        refuse("is not in the range " + range);
    }
    const auto number = value_.get<std::uint64_t>();
    if (number < smallest || number > largest) refuse("is not in the range " + range);
    return number;
}

std::int32_t Reader::i32() const {
    if (!value_.is_number_integer()) refuse("is not an integer");
    const auto number = value_.get<std::int64_t>();
    if (number < INT32_MIN || number > INT32_MAX) refuse("does not fit into 32 bits");
    return static_cast<std::int32_t>(number);
}

double Reader::real(double smallest, double largest) const {
    if (!value_.is_number()) refuse("is not a number");
    const auto number = value_.get<double>();
    if (number < smallest || number > largest) refuse("is out of range");
    return number;
}

bool Reader::boolean() const {
    if (!value_.is_boolean()) refuse("is neither true nor false");
    return value_.get<bool>();
}

std::string Reader::text(std::size_t shortest, std::size_t longest) const {
    if (!value_.is_string()) refuse("is not a text");
    auto text = value_.get<std::string>();
    if (text.size() < shortest || text.size() > longest) {
        refuse("is not a text of " + std::to_string(shortest) + " to " + std::to_string(longest) +
               " characters");
    }
    if (std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; })) {
        refuse("has control characters");
    }
    return text;
}

bool Reader::is_object() const {
    return value_.is_object();
}

bool Reader::is_boolean() const {
    return value_.is_boolean();
}

bool Reader::is_text() const {
    return value_.is_string();
}

} // namespace emulator
