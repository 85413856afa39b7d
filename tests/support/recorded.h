// What the recording broker keeps of the objects that a provider makes: plain values that outlive the
// objects, compare with EXPECT_EQ and print like the property tables they are compared with.
#ifndef KESTO_TESTS_SUPPORT_RECORDED_H
#define KESTO_TESTS_SUPPORT_RECORDED_H

#include <cmpidt.h>
#include <cmpift.h>

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

class RecordedPath;

// A value as it was passed, read at the time of the call. The CMPI type stands beside it, so a Value only
// distinguishes text, numbers, paths and NULL. A boolean is the byte that was passed: true equals 1, not 2.
class Value {
  public:
    Value() = default; // NULL
    Value(std::nullptr_t) {}
    Value(const char* text);
    Value(const std::string& text);
    Value(const RecordedPath& path);
    Value(double number);
    template <std::integral Number>
    Value(Number number) : kind_(Kind::Number), text_(std::to_string(number)) {}

    bool is_null() const { return kind_ == Kind::Null; }
    // The text without quotes, the number in decimal, the path's text; empty for NULL.
    const std::string& text() const { return text_; }
    // The path that a reference holds; NULL for other values.
    const RecordedPath* path() const { return path_.get(); }

    friend bool operator==(const Value& a, const Value& b) {
        return a.kind_ == b.kind_ && a.text_ == b.text_; // a path's text is all of it
    }
    friend std::ostream& operator<<(std::ostream& out, const Value& value);

  private:
    enum class Kind { Null, Text, Number, Path };
    Kind kind_ = Kind::Null;
    std::string text_;
    std::shared_ptr<const RecordedPath> path_;
};

// One setProperty or addKey call.
struct Set {
    std::string name;
    CMPIType type = CMPI_null;
    Value value;

    friend bool operator==(const Set&, const Set&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Set& set);
};

// Such calls in their order; a name that was set twice stands there twice. Prints one call a line.
class Sets : public std::vector<Set> {
  public:
    using std::vector<Set>::vector;

    std::vector<std::string> names() const;
    friend std::ostream& operator<<(std::ostream& out, const Sets& sets);
};

// One setPropertyFilter call. A list that was passed as NULL is nullopt; an empty list is {}.
struct Filter {
    std::optional<std::vector<std::string>> properties;
    std::optional<std::vector<std::string>> keys;

    friend bool operator==(const Filter&, const Filter&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Filter& filter);
};

// The filter that a builder applies: the request's properties, and a key list that is empty.
inline Filter filter_for(std::optional<std::vector<std::string>> properties) {
    return {std::move(properties), std::vector<std::string>{}};
}

// What a pointer handed to a result, or returned by a builder, was. What had been done to an object without a
// handle before its handle was taken away is still recorded.
enum class Object { Valid, WithoutHandle, Null, MinusOne };

class RecordedPath {
  public:
    RecordedPath() = default;
    RecordedPath(std::string nameSpace, std::string className, Sets keys = {},
                 std::optional<std::string> host = std::nullopt);
    static RecordedPath of(Object kind); // no path: Null or MinusOne

    Object kind() const { return kind_; }
    bool is_valid() const { return kind_ == Object::Valid; }
    const std::string& name_space() const { return nameSpace_; }
    const std::string& class_name() const { return className_; }
    const std::optional<std::string>& host() const { return host_; } // nullopt: setHostname was not called
    const Sets& keys() const { return keys_; }
    // The key's value, the name spelled exactly so; fails the test when there is no such key.
    Value key(const std::string& name) const;
    // "//host/namespace:Class{Name chars "1_...", ...}", "NULL" or "-1".
    std::string text() const;

    friend bool operator==(const RecordedPath&, const RecordedPath&) = default;
    friend std::ostream& operator<<(std::ostream& out, const RecordedPath& path);

  private:
    friend struct BrokerCalls;
    Object kind_ = Object::Valid;
    std::string nameSpace_, className_;
    std::optional<std::string> host_;
    Sets keys_;
};

class RecordedInstance {
  public:
    RecordedInstance() = default;
    static RecordedInstance of(Object kind); // no instance: Null or MinusOne

    Object kind() const { return kind_; }
    bool is_valid() const { return kind_ == Object::Valid; }
    const RecordedPath& path() const { return path_; } // as it was when newInstance was called
    const std::string& class_name() const { return path_.class_name(); }
    const Sets& sets() const { return sets_; }
    // Every setPropertyFilter call, and how many properties had been set before the first of them.
    const std::vector<Filter>& filters() const { return filters_; }
    std::optional<std::size_t> sets_before_filter() const { return setsBeforeFilter_; }
    // The value set last; fails the test when the property was never set.
    Value value(const std::string& name) const;
    CMPIType type(const std::string& name) const;
    bool has(const std::string& name) const;

    friend bool operator==(const RecordedInstance&, const RecordedInstance&) = default;
    friend std::ostream& operator<<(std::ostream& out, const RecordedInstance& instance);

  private:
    friend struct BrokerCalls;
    Object kind_ = Object::Valid;
    RecordedPath path_;
    Sets sets_;
    std::vector<Filter> filters_;
    std::optional<std::size_t> setsBeforeFilter_;
};

// "CMPI_uint16" and the like.
std::string type_name(CMPIType type);

} // namespace test_support

#endif
