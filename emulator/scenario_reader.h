// Reads JSON values strictly: each object has a kind, which lists the members it may have, and each complaint
// names the place by its JSON pointer.
#ifndef KESTO_EMULATOR_SCENARIO_READER_H
#define KESTO_EMULATOR_SCENARIO_READER_H

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace emulator {

// The members that an object may have. The name is that of the object's definition in the schema.
struct ObjectKind {
    std::string name;
    std::vector<std::string> members;
    bool numbered = false; // its members are numbers of the object's own choosing, such as byte offsets
};

// Parses JSON; a syntax error or a member that stands twice is a ScenarioError.
nlohmann::json parse_json(std::string_view text, std::string_view source);

class Reader {
  public:
    Reader(const nlohmann::json& value, std::string source) : Reader(value, std::move(source), "") {}

    [[noreturn]] void refuse(const std::string& what) const;

    const Reader& object(const ObjectKind& kind) const; // refuses another type, and members of no such kind
    bool has(const std::string& member) const;
    Reader at(const std::string& member) const; // refuses when it is missing
    std::optional<Reader> find(const std::string& member) const;
    std::vector<Reader> elements() const;                             // of an array
    std::vector<std::pair<std::string, Reader>> members() const;      // of an object
    std::vector<Reader> elements_of(const std::string& member) const; // empty when it is missing

    std::uint64_t integer(std::uint64_t smallest, std::uint64_t largest) const;
    std::uint32_t u32(std::uint32_t smallest = 0, std::uint32_t largest = UINT32_MAX) const {
        return static_cast<std::uint32_t>(integer(smallest, largest));
    }
    std::int32_t i32() const;
    double real(double smallest, double largest) const;
    bool boolean() const;
    std::string text(std::size_t shortest,
                     std::size_t longest) const; // printable characters, counted as bytes

    bool is_object() const { return value_.is_object(); }
    bool is_boolean() const { return value_.is_boolean(); }
    bool is_text() const { return value_.is_string(); }

  private:
    Reader(const nlohmann::json& value, std::string source, std::string pointer)
        : value_(value), source_(std::move(source)), pointer_(std::move(pointer)) {}
    Reader inner(const nlohmann::json& value, const std::string& token) const;

    const nlohmann::json& value_;
    std::string source_;
    std::string pointer_;
};

} // namespace emulator

#endif
