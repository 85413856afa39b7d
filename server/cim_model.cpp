#include "server/cim_model.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "server/text.h"

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
std::string displayText(const Value& value) {
    if (value.isNull()) return "NULL";
    if (const auto* elements = value.asArray()) {
        std::string result = "{";
        for (const Value& element : *elements) {
            if (result.size() > 1) result += ", ";
            result += displayText(element);
        }
        return result + "}";
    }
    if (const ObjectPath* path = value.asReference()) return "(" + path->toString() + ")";
    if (const Instance* instance = value.asInstance()) return instance->toString();
    return value.asText() ? quoted(*value.asText()) : scalarText(value);
}

// Numbers compare by value whatever their width: a client knows a key as a number, not as a uint16.
bool sameNumber(const Value& a, const Value& b) {
    const auto split = [](const Value& value) -> std::optional<std::pair<bool, std::uint64_t>> {
        if (const auto* natural = std::get_if<std::uint64_t>(&value.content)) return {{false, *natural}};
        if (const auto* integer = std::get_if<std::int64_t>(&value.content))
            return {{*integer < 0, static_cast<std::uint64_t>(*integer)}};
        return std::nullopt;
    };
    const auto left = split(a);
    return left && left == split(b);
}

template <typename Plain>
bool samePlain(const Value& a, const Value& b) {
    const auto* left = std::get_if<Plain>(&a.content);
    const auto* right = std::get_if<Plain>(&b.content);
    return left && right && *left == *right;
}

bool sameNameSpace(std::string_view a, std::string_view b) {
    const auto bare = [](std::string_view text) {
        while (text.starts_with('/'))
            text.remove_prefix(1);
        while (text.ends_with('/'))
            text.remove_suffix(1);
        return text;
    };
    return sameName(bare(a), bare(b));
}

bool sameClassAndNameSpace(const ObjectPath& a, const ObjectPath& b) {
    return sameName(a.className, b.className) &&
           (a.nameSpace.empty() || b.nameSpace.empty() || sameNameSpace(a.nameSpace, b.nameSpace));
}

} // namespace

Value Value::reference(ObjectPath path) {
    return {CMPI_ref, std::make_shared<const ObjectPath>(std::move(path))};
}

Value Value::embedded(Instance instance) {
    return {CMPI_instance, std::make_shared<const Instance>(std::move(instance))};
}

const ObjectPath* Value::asReference() const {
    const auto* path = std::get_if<std::shared_ptr<const ObjectPath>>(&content);
    return path ? path->get() : nullptr;
}

const Instance* Value::asInstance() const {
    const auto* instance = std::get_if<std::shared_ptr<const Instance>>(&content);
    return instance ? instance->get() : nullptr;
}

void NamedValues::set(std::string_view name, Value value, std::string_view origin) {
    const auto known = std::find_if(values_.begin(), values_.end(),
                                    [name](const NamedValue& entry) { return sameName(entry.name, name); });
    if (known == values_.end()) {
        values_.push_back({std::string(name), std::move(value), std::string(origin)});
    } else {
        known->value = std::move(value);
        if (!origin.empty()) known->origin = origin;
    }
}

void NamedValues::remove(std::string_view name) {
    std::erase_if(values_, [name](const NamedValue& entry) { return sameName(entry.name, name); });
}

const NamedValue* NamedValues::find(std::string_view name) const {
    const auto known = std::find_if(values_.begin(), values_.end(),
                                    [name](const NamedValue& entry) { return sameName(entry.name, name); });
    return known == values_.end() ? nullptr : &*known;
}

std::string ObjectPath::toString() const {
    std::string result;
    if (!host.empty()) result = "//" + host + "/";
    if (!nameSpace.empty()) result += nameSpace + ":";
    result += className;
    char separator = '.';
    for (const NamedValue& key : keys.all()) {
        result += separator + key.name + "=" + displayText(key.value);
        separator = ',';
    }
    return result;
}

bool containsName(const std::vector<std::string>& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [name](const auto& entry) { return sameName(entry, name); });
}

bool PropertyFilter::lets(std::string_view name) const {
    return containsName(wanted, name) || containsName(keys, name);
}

void Instance::set(std::string_view name, Value value, std::string_view origin) {
    NamedValues& place = !filter || filter->lets(name) ? properties : filteredOut;
    place.set(name, std::move(value), origin);
}

void Instance::applyFilter(std::optional<PropertyFilter> newFilter) {
    filter = std::move(newFilter);
    if (!filter) return;
    const std::vector<NamedValue> before = properties.all();
    for (const NamedValue& property : before) {
        if (filter->lets(property.name)) continue;
        filteredOut.set(property.name, property.value, property.origin);
        properties.remove(property.name);
    }
}

std::string Instance::toString() const {
    std::string result = "instance of " + path.className + " {";
    for (const NamedValue& property : properties.all()) {
        result += " " + property.name + " = " + displayText(property.value) + ";";
    }
    return result + " }";
}

std::string realText(double value, CMPIType type) {
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

std::string scalarText(const Value& value) {
    if (const auto* flag = std::get_if<bool>(&value.content)) return *flag ? "TRUE" : "FALSE";
    if (const auto* natural = std::get_if<std::uint64_t>(&value.content)) {
        if (value.type != CMPI_char16) return std::to_string(*natural);
        std::string character;
        appendUtf8(character, static_cast<char32_t>(*natural)); // a lone surrogate is escaped by the writer
        return character;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value.content)) return std::to_string(*integer);
    if (const auto* real = std::get_if<double>(&value.content)) return realText(*real, value.type);
    return value.asText() ? *value.asText() : std::string();
}

bool sameValue(const Value& a, const Value& b) {
    if (const ObjectPath* left = a.asReference()) {
        const ObjectPath* right = b.asReference();
        return right && mayBeSameObject(*left, *right);
    }
    if (const Instance* left = a.asInstance()) {
        const Instance* right = b.asInstance();
        return right && sameName(left->path.className, right->path.className) &&
               sameProperties(left->properties, right->properties);
    }
    if (const auto* left = a.asArray()) {
        const auto* right = b.asArray();
        return right && std::equal(left->begin(), left->end(), right->begin(), right->end(), sameValue);
    }
    return (a.isNull() && b.isNull()) || sameNumber(a, b) || samePlain<bool>(a, b) ||
           samePlain<double>(a, b) || samePlain<std::string>(a, b) || samePlain<OpaquePointer>(a, b);
}

bool sameProperties(const NamedValues& a, const NamedValues& b) {
    return a.size() == b.size() &&
           std::all_of(a.all().begin(), a.all().end(), [&b](const NamedValue& property) {
               const NamedValue* other = b.find(property.name);
               return other && sameValue(property.value, other->value);
           });
}

bool mayBeSameObject(const ObjectPath& a, const ObjectPath& b) {
    if (!sameClassAndNameSpace(a, b)) return false;
    if (a.keys.empty() && b.keys.empty()) return true;
    bool common = false;
    for (const NamedValue& key : a.keys.all()) {
        const NamedValue* other = b.keys.find(key.name);
        if (!other) continue;
        if (!sameValue(key.value, other->value)) return false;
        common = true;
    }
    return common;
}

bool isSamePath(const ObjectPath& a, const ObjectPath& b) {
    return sameClassAndNameSpace(a, b) && sameProperties(a.keys, b.keys);
}

} // namespace cimserver
