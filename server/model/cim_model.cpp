#include "server/model/cim_model.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "server/model/text.h"

namespace cimserver {

namespace {

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + '"';
}

// A value as people write it in object paths and instance listings. References are put in parentheses:
// quoting them would double the quotes' escapes at every level of nesting.
std::string display_text(const Value& value) {
    if (value.is_null()) return "NULL";
    if (const auto* elements = value.as_array()) {
        std::string result = "{";
        for (const Value& element : *elements) {
            if (result.size() > 1) result += ", ";
            result += display_text(element);
        }
        return result + "}";
    }
    if (const ObjectPath* path = value.as_reference()) return "(" + path->to_string() + ")";
    if (const Instance* instance = value.as_instance()) return instance->to_string();
    return value.as_text() != nullptr ? quoted(*value.as_text()) : scalar_text(value);
}

// Numbers compare by value whatever their width: a client knows a key as a number, not as a uint16.
bool same_number(const Value& a, const Value& b) {
    const auto split = [](const Value& value) -> std::optional<std::pair<bool, std::uint64_t>> {
        if (const auto* natural = std::get_if<std::uint64_t>(&value.content)) return {{false, *natural}};
        if (const auto* integer = std::get_if<std::int64_t>(&value.content)) {
            return {{*integer < 0, static_cast<std::uint64_t>(*integer)}};
        }
        return std::nullopt;
    };
    const auto left = split(a);
    return left && left == split(b);
}

template <typename Plain>
bool same_plain(const Value& a, const Value& b) {
    const auto* left = std::get_if<Plain>(&a.content);
    const auto* right = std::get_if<Plain>(&b.content);
    return left && right && *left == *right;
}

bool same_name_space(std::string_view a, std::string_view b) {
    const auto bare = [](std::string_view text) {
        while (text.starts_with('/')) {
            text.remove_prefix(1);
        }
        while (text.ends_with('/')) {
            text.remove_suffix(1);
        }
        return text;
    };
    return same_name(bare(a), bare(b));
}

bool same_class_and_name_space(const ObjectPath& a, const ObjectPath& b) {
    return same_name(a.className, b.className) &&
           (a.nameSpace.empty() || b.nameSpace.empty() || same_name_space(a.nameSpace, b.nameSpace));
}

} // namespace

Value Value::reference(ObjectPath path) {
    return {CMPI_ref, std::make_shared<const ObjectPath>(std::move(path))};
}

Value Value::embedded(Instance instance) {
    return {CMPI_instance, std::make_shared<const Instance>(std::move(instance))};
}

const ObjectPath* Value::as_reference() const {
    const auto* path = std::get_if<std::shared_ptr<const ObjectPath>>(&content);
    return path != nullptr ? path->get() : nullptr;
}

const Instance* Value::as_instance() const {
    const auto* instance = std::get_if<std::shared_ptr<const Instance>>(&content);
    return instance != nullptr ? instance->get() : nullptr;
}

void NamedValues::set(std::string_view name, Value value, std::string_view origin) {
    const auto known = positions_.find(name);
    if (known == positions_.end()) {
        positions_.emplace(name, values_.size());
        values_.push_back({std::string(name), std::move(value), std::string(origin)});
    } else {
        NamedValue& entry = values_[known->second];
        entry.value = std::move(value);
        if (!origin.empty()) entry.origin = origin;
    }
}

const NamedValue* NamedValues::find(std::string_view name) const {
    const auto known = positions_.find(name);
    return known == positions_.end() ? nullptr : &values_[known->second];
}

std::string ObjectPath::to_string() const {
    std::string result;
    if (!host.empty()) result = "//" + host + "/";
    if (!nameSpace.empty()) result += nameSpace + ":";
    result += className;
    char separator = '.';
    for (const NamedValue& key : keys.all()) {
        result += separator + key.name + "=" + display_text(key.value);
        separator = ',';
    }
    return result;
}

bool contains_name(const std::vector<std::string>& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [name](const auto& entry) { return same_name(entry, name); });
}

void Instance::set(std::string_view name, Value value, std::string_view origin) {
    NamedValues& place = !filter || filter->contains(name) ? properties : filteredOut;
    place.set(name, std::move(value), origin);
}

void Instance::apply_filter(std::optional<NameSet> newFilter) {
    filter = std::move(newFilter);
    if (!filter) return;
    const NamedValues before = std::exchange(properties, {});
    for (const NamedValue& property : before.all()) {
        set(property.name, property.value, property.origin);
    }
}

std::string Instance::to_string() const {
    std::string result = "instance of " + path.className + " {";
    for (const NamedValue& property : properties.all()) {
        result += " " + property.name + " = " + display_text(property.value) + ";";
    }
    return result + " }";
}

std::string real_text(double value, CMPIType type) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
    char digits[64];
    const auto written = type == CMPI_real32
                             ? std::to_chars(digits, digits + sizeof digits, static_cast<float>(value))
                             : std::to_chars(digits, digits + sizeof digits, value);
    std::string result(digits, written.ptr);
    if (result.find('.') == std::string::npos) {
        const std::size_t exponent = std::min(result.find('e'), result.size());
        result.insert(exponent, ".0");
    }
    return result;
}

std::string scalar_text(const Value& value) {
    if (const auto* flag = std::get_if<bool>(&value.content)) return *flag ? "TRUE" : "FALSE";
    if (const auto* natural = std::get_if<std::uint64_t>(&value.content)) {
        if (value.type != CMPI_char16) return std::to_string(*natural);
        std::string character;
        append_utf8(character, static_cast<char32_t>(*natural)); // a lone surrogate is escaped by the writer
        return character;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value.content)) return std::to_string(*integer);
    if (const auto* real = std::get_if<double>(&value.content)) return real_text(*real, value.type);
    return value.as_text() != nullptr ? *value.as_text() : std::string();
}

bool same_value(const Value& a, const Value& b) {
    if (const ObjectPath* left = a.as_reference()) {
        const ObjectPath* right = b.as_reference();
        return right != nullptr && may_be_same_object(*left, *right);
    }
    if (const Instance* left = a.as_instance()) {
        const Instance* right = b.as_instance();
        return right != nullptr && same_name(left->path.className, right->path.className) &&
               same_properties(left->properties, right->properties);
    }
    if (const auto* left = a.as_array()) {
        const auto* right = b.as_array();
        return right != nullptr &&
               std::equal(left->begin(), left->end(), right->begin(), right->end(), same_value);
    }
    return (a.is_null() && b.is_null()) || same_number(a, b) || same_plain<bool>(a, b) ||
           same_plain<double>(a, b) || same_plain<std::string>(a, b) || same_plain<OpaquePointer>(a, b);
}

bool same_properties(const NamedValues& a, const NamedValues& b) {
    return a.size() == b.size() &&
           std::all_of(a.all().begin(), a.all().end(), [&b](const NamedValue& property) {
               const NamedValue* other = b.find(property.name);
               return other != nullptr && same_value(property.value, other->value);
           });
}

bool may_be_same_object(const ObjectPath& a, const ObjectPath& b) {
    if (!same_class_and_name_space(a, b)) return false;
    if (a.keys.empty() && b.keys.empty()) return true;
    bool common = false;
    for (const NamedValue& key : a.keys.all()) {
        const NamedValue* other = b.keys.find(key.name);
        if (other == nullptr) continue;
        if (!same_value(key.value, other->value)) return false;
        common = true;
    }
    return common;
}

bool is_same_path(const ObjectPath& a, const ObjectPath& b) {
    return same_class_and_name_space(a, b) && same_properties(a.keys, b.keys);
}

} // namespace cimserver
