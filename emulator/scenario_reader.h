// Reads JSON values strictly: each object has a kind, which lists the members it may have, and each complaint
// names the place by its JSON pointer.
#ifndef KESTO_EMULATOR_SCENARIO_READER_H
#define KESTO_EMULATOR_SCENARIO_READER_H

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace emulator {

// The members that an object may have. The name is that of the object's definition in the schema.
struct ObjectKind {
    std::string name;
    std::vector<std::string> members;
};

// Parses JSON; a syntax error or a member that is given twice is a ScenarioError.
nlohmann::json parse_json(std::string_view text, std::string_view source);

// A value and its place. Reading it as another type, or out of range, throws the ScenarioError of refuse().
class Reader {
  public:
    Reader(const nlohmann::json& value, std::string source) : Reader(value, std::move(source), "") {}

    [[noreturn]] void refuse(const std::string& what) const;

    void expect_object(const ObjectKind& kind) const; // refuses members that the kind does not have, too
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
    std::uint16_t u16() const { return static_cast<std::uint16_t>(integer(0, UINT16_MAX)); }
    std::int32_t i32() const;
    double real(double smallest, double largest) const;
    bool boolean() const;
    // Without control characters; its length is in bytes.
    std::string text(std::size_t shortest, std::size_t longest) const;

    bool is_object() const;
    bool is_boolean() const;
    bool is_text() const;

  private:
    Reader(const nlohmann::json& value, std::string source, std::string pointer)
        : value_(value), source_(std::move(source)), pointer_(std::move(pointer)) {}
    Reader inner(const nlohmann::json& value, const std::string& token) const;

    const nlohmann::json& value_;
    std::string source_;
    std::string pointer_;
};

// Calls read(value) if the object has the member.
template <typename Function>
void if_there(const Reader& object, const std::string& member, Function read) {
    if (const std::optional<Reader> value = object.find(member)) read(*value);
}

} // namespace emulator

#endif
