// The server's own picture of CIM data: values, object paths and instances as plain C++ values.
//
// The CMPI objects that a provider sees wrap these (server/broker/encapsulated.h), and CIM-XML is read into
// and written from them, so that neither side knows the other. Types carry their CMPI codes, in their
// canonical form: text is always CMPI_string (CMPI_chars is a way of passing a value, not a type of one).
#ifndef KESTO_SERVER_MODEL_CIM_MODEL_H
#define KESTO_SERVER_MODEL_CIM_MODEL_H

#include <cmpidt.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "server/model/text.h"

namespace cimserver {

struct ObjectPath;
struct Instance;

// Memory that only the provider understands; it can be an argument or a context entry, never a CIM value.
struct OpaquePointer {
    void* address = nullptr;
    CMPICount length = 0;
    bool operator==(const OpaquePointer&) const = default;
};

struct Value {
    // std::monostate is the NULL value of its type. Booleans are bool, unsigned integers and char16
    // std::uint64_t, signed integers std::int64_t, reals double, strings and date-times (in their
    // 25-character form) std::string. References and embedded instances are shared because nobody changes
    // them in place.
    using Content = std::variant<std::monostate, bool, std::uint64_t, std::int64_t, double, std::string,
                                 std::shared_ptr<const ObjectPath>, std::shared_ptr<const Instance>,
                                 std::vector<Value>, OpaquePointer>;

    CMPIType type = CMPI_null;
    Content content;

    bool is_null() const { return std::holds_alternative<std::monostate>(content); }
    bool is_array() const { return (type & CMPI_ARRAY) != 0; }
    CMPIType element_type() const { return static_cast<CMPIType>(type & ~CMPI_ARRAY); }

    static Value null(CMPIType type) { return {type, std::monostate{}}; }
    static Value text(std::string text) { return {CMPI_string, std::move(text)}; }
    static Value boolean(bool value) { return {CMPI_boolean, value}; }
    static Value integer(CMPIType type, std::uint64_t value) { return {type, value}; }
    static Value integer(CMPIType type, std::int64_t value) { return {type, value}; }
    static Value reference(ObjectPath path);
    static Value embedded(Instance instance);

    const std::string* as_text() const { return std::get_if<std::string>(&content); }
    const ObjectPath* as_reference() const;
    const Instance* as_instance() const;
    const std::vector<Value>* as_array() const { return std::get_if<std::vector<Value>>(&content); }
};

struct NamedValue {
    std::string name;
    Value value;
    std::string origin; // class that declared it, when the provider named it
};

// A list of named values in which a name, compared without case, occurs once: setting it again replaces the
// value and keeps the place and the first spelling.
class NamedValues {
  public:
    void set(std::string_view name, Value value, std::string_view origin = {});
    const NamedValue* find(std::string_view name) const;
    const std::vector<NamedValue>& all() const { return values_; }
    std::size_t size() const { return values_.size(); }
    bool empty() const { return values_.empty(); }

  private:
    std::vector<NamedValue> values_;
    std::map<std::string, std::size_t, NameOrder> positions_; // requests may bring thousands of names
};

struct ObjectPath {
    std::string host;
    std::string nameSpace;
    std::string className;
    NamedValues keys;

    std::string to_string() const; // //host/namespace:Class.Key="value",Ref=(...)
};

struct Instance {
    ObjectPath path;
    NamedValues properties;
    NamedValues filteredOut; // set by the provider but kept back by the filter; they still name the instance
    std::optional<NameSet> filter; // the properties that it may have, keys included; without it, any

    void set(std::string_view name, Value value, std::string_view origin = {});
    void apply_filter(std::optional<NameSet> newFilter);
    std::string to_string() const;
};

bool contains_name(const std::vector<std::string>& names, std::string_view name);

// A scalar as text, in the form that CIM-XML uses between the tags. Empty for NULL, references and instances.
std::string scalar_text(const Value& value);
// A real number as CIM-XML writes it: shortest digits that read back as the same number, always with a point.
std::string real_text(double value, CMPIType type);

bool same_value(const Value& a, const Value& b);
bool same_properties(const NamedValues& a, const NamedValues& b);

// The two paths may name the same object. Clients and providers leave out what goes without saying, so the
// namespace counts only where both paths have it, and so do keys, of which at least one must be common (or
// neither path has any). The host never counts: one machine has many names, and all objects here are its own.
bool may_be_same_object(const ObjectPath& a, const ObjectPath& b);

// The two paths name the same object and carry the same keys: what makes a result a duplicate of another.
bool is_same_path(const ObjectPath& a, const ObjectPath& b);

} // namespace cimserver

#endif
