#include "server/model/types.h"

#include <cmpidt.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>

#include "server/model/datetime.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

struct TypeName {
    CMPIType type;
    const char* name;
    int bits; // of an integer
};

constexpr std::array<TypeName, 15> TYPES = {{
    {CMPI_boolean, "boolean", 0},
    {CMPI_string, "string", 0},
    {CMPI_char16, "char16", 0},
    {CMPI_uint8, "uint8", 8},
    {CMPI_sint8, "sint8", 8},
    {CMPI_uint16, "uint16", 16},
    {CMPI_sint16, "sint16", 16},
    {CMPI_uint32, "uint32", 32},
    {CMPI_sint32, "sint32", 32},
    {CMPI_uint64, "uint64", 64},
    {CMPI_sint64, "sint64", 64},
    {CMPI_dateTime, "datetime", 0},
    {CMPI_real32, "real32", 0},
    {CMPI_real64, "real64", 0},
    {CMPI_ref, "reference", 0},
}};

const TypeName* find(CMPIType type) {
    const auto* known = std::find_if(TYPES.begin(), TYPES.end(),
                                     [type](const TypeName& entry) { return entry.type == type; });
    return known == TYPES.end() ? nullptr : known;
}

// Digits with an optional sign; hexadecimal ones after 0x.
struct Integer {
    bool negative = false;
    std::uint64_t magnitude = 0;
};

std::optional<Integer> parse_integer(std::string_view text) {
    Integer result;
    if (text.starts_with('+') || text.starts_with('-')) {
        result.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    const auto read =
        std::from_chars(text.data(), text.data() + text.size(), result.magnitude, hexadecimal ? 16 : 10);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
    return result;
}

std::optional<Value> as_unsigned(const Integer& integer, CMPIType type, int bits) {
    const std::uint64_t largest = std::numeric_limits<std::uint64_t>::max() >> (64 - bits);
    if (integer.magnitude > largest || (integer.negative && integer.magnitude != 0)) return std::nullopt;
    return Value::integer(type, integer.magnitude);
}

std::optional<Value> as_signed(const Integer& integer, CMPIType type, int bits) {
    const std::uint64_t largest = (std::numeric_limits<std::uint64_t>::max() >> (64 - bits)) >> 1;
    if (integer.magnitude > largest + (integer.negative ? 1 : 0)) return std::nullopt;
    // Two's complement: negating the unsigned magnitude gives the bits of the negative number.
    const std::uint64_t bitsOfValue = integer.negative ? 0 - integer.magnitude : integer.magnitude;
    return Value::integer(type, static_cast<std::int64_t>(bitsOfValue));
}

std::optional<Value> parse_real(std::string_view text, CMPIType type) {
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
    return Value{type, value};
}

std::optional<Value> parse_char16(std::string_view text) {
    if (text.empty()) return std::nullopt;
    const DecodedChar only = decode_utf8(text, 0);
    if (!only.valid || only.length != text.size() || only.code > 0xFFFF) return std::nullopt;
    return Value::integer(CMPI_char16, std::uint64_t{only.code});
}

} // namespace

const char* type_name(CMPIType scalar) {
    const TypeName* known = find(scalar);
    return known != nullptr ? known->name : "string";
}

std::optional<CMPIType> type_named(std::string_view name) {
    for (const TypeName& entry : TYPES) {
        if (same_name(name, entry.name)) return entry.type;
    }
    return std::nullopt;
}

std::optional<Value> parse_scalar(std::string_view text, CMPIType type) {
    if (type == CMPI_string) return Value::text(std::string(text));
    if (type == CMPI_char16) return parse_char16(text);
    text = trimmed(text);
    if (type == CMPI_boolean) {
        if (same_name(text, "true")) return Value::boolean(true);
        if (same_name(text, "false")) return Value::boolean(false);
        return std::nullopt;
    }
    if (type == CMPI_dateTime) {
        return CimDateTime::parse(text) ? std::optional(Value{type, std::string(text)}) : std::nullopt;
    }
    if (type == CMPI_real32 || type == CMPI_real64) return parse_real(text, type);

    const TypeName* known = find(type);
    const std::optional<Integer> integer =
        known != nullptr && (known->bits != 0) ? parse_integer(text) : std::nullopt;
    if (!integer) return std::nullopt;
    const bool isSigned = known->name[0] == 's';
    return isSigned ? as_signed(*integer, type, known->bits) : as_unsigned(*integer, type, known->bits);
}

std::optional<Value> parse_number(std::string_view text) {
    if (std::optional<Value> integer = parse_scalar(text, CMPI_sint64)) return integer;
    if (std::optional<Value> natural = parse_scalar(text, CMPI_uint64)) return natural;
    return parse_scalar(text, CMPI_real64);
}

} // namespace cimserver
