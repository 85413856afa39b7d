// Comparing and printing of what the recording broker keeps.
#include "tests/support/recorded.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <sstream>
#include <utility>

namespace test_support {

namespace {

void print_list(std::ostream& out, const std::optional<std::vector<std::string>>& list) {
    if (!list) {
        out << "NULL";
        return;
    }
    out << '{';
    for (std::size_t i = 0; i < list->size(); ++i) {
        out << (i != 0 ? ", " : "") << (*list)[i];
    }
    out << '}';
}

const Set* find_last(const Sets& sets, const std::string& name) {
    const Set* found = nullptr;
    for (const Set& set : sets) {
        if (set.name == name) found = &set;
    }
    return found;
}

const char* object_text(Object kind) {
    switch (kind) {
        case Object::Null:
            return "NULL";
        case Object::MinusOne:
            return "-1";
        case Object::WithoutHandle:
            return "without handle";
        case Object::Valid:
            break;
    }
    return "valid";
}

} // namespace

Value::Value(const char* text) {
    if (text == nullptr) return;
    kind_ = Kind::Text;
    text_ = text;
}

Value::Value(const std::string& text) : kind_(Kind::Text), text_(text) {}

Value::Value(const RecordedPath& path)
    : kind_(Kind::Path), text_(path.text()), path_(std::make_shared<const RecordedPath>(path)) {}

Value::Value(double number) : kind_(Kind::Number) {
    std::ostringstream text;
    text << number;
    text_ = text.str();
}

std::ostream& operator<<(std::ostream& out, const Value& value) {
    switch (value.kind_) {
        case Value::Kind::Null:
            return out << "NULL";
        case Value::Kind::Text:
            return out << '"' << value.text_ << '"';
        case Value::Kind::Number:
        case Value::Kind::Path:
            break;
    }
    return out << value.text_;
}

std::ostream& operator<<(std::ostream& out, const Set& set) {
    return out << set.name << ' ' << type_name(set.type) << ' ' << set.value;
}

std::vector<std::string> Sets::names() const {
    std::vector<std::string> names;
    for (const Set& set : *this) {
        names.push_back(set.name);
    }
    return names;
}

std::ostream& operator<<(std::ostream& out, const Sets& sets) {
    if (sets.empty()) return out << "(none)";
    for (const Set& set : sets) {
        out << "\n      " << set;
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, const Filter& filter) {
    out << "properties=";
    print_list(out, filter.properties);
    out << " keys=";
    print_list(out, filter.keys);
    return out;
}

RecordedPath::RecordedPath(std::string nameSpace, std::string className, Sets keys,
                           std::optional<std::string> host)
    : nameSpace_(std::move(nameSpace)),
      className_(std::move(className)),
      host_(std::move(host)),
      keys_(std::move(keys)) {}

RecordedPath RecordedPath::of(Object kind) {
    RecordedPath path;
    path.kind_ = kind;
    return path;
}

Value RecordedPath::key(const std::string& name) const {
    const Set* found = find_last(keys_, name);
    if (found == nullptr) ADD_FAILURE() << "no key " << name << " in " << *this;
    return found != nullptr ? found->value : Value();
}

std::string RecordedPath::text() const {
    if (kind_ != Object::Valid) return object_text(kind_);
    std::ostringstream text;
    if (host_) text << "//" << *host_ << '/';
    text << nameSpace_ << ':' << className_ << '{';
    for (std::size_t i = 0; i < keys_.size(); ++i) {
        text << (i != 0 ? ", " : "") << keys_[i];
    }
    text << '}';
    return text.str();
}

std::ostream& operator<<(std::ostream& out, const RecordedPath& path) {
    return out << path.text();
}

RecordedInstance RecordedInstance::of(Object kind) {
    RecordedInstance instance;
    instance.kind_ = kind;
    return instance;
}

Value RecordedInstance::value(const std::string& name) const {
    const Set* found = find_last(sets_, name);
    if (found == nullptr) ADD_FAILURE() << "property " << name << " was not set on " << *this;
    return found != nullptr ? found->value : Value();
}

CMPIType RecordedInstance::type(const std::string& name) const {
    const Set* found = find_last(sets_, name);
    if (found == nullptr) ADD_FAILURE() << "property " << name << " was not set on " << *this;
    return found != nullptr ? found->type : CMPIType{CMPI_null};
}

bool RecordedInstance::has(const std::string& name) const {
    return find_last(sets_, name) != nullptr;
}

std::ostream& operator<<(std::ostream& out, const RecordedInstance& instance) {
    if (instance.kind_ != Object::Valid) return out << "instance " << object_text(instance.kind_);
    out << "instance of " << instance.path_ << ' ' << instance.sets_;
    for (const Filter& filter : instance.filters_) {
        out << "\n      filter " << filter;
    }
    return out;
}

std::string type_name(CMPIType type) {
    const std::string array = (type & CMPI_ARRAY) != 0 ? "A" : "";
    switch (type & ~CMPI_ARRAY) {
        case CMPI_null:
            return "CMPI_null" + array;
        case CMPI_boolean:
            return "CMPI_boolean" + array;
        case CMPI_char16:
            return "CMPI_char16" + array;
        case CMPI_real32:
            return "CMPI_real32" + array;
        case CMPI_real64:
            return "CMPI_real64" + array;
        case CMPI_uint8:
            return "CMPI_uint8" + array;
        case CMPI_uint16:
            return "CMPI_uint16" + array;
        case CMPI_uint32:
            return "CMPI_uint32" + array;
        case CMPI_uint64:
            return "CMPI_uint64" + array;
        case CMPI_sint8:
            return "CMPI_sint8" + array;
        case CMPI_sint16:
            return "CMPI_sint16" + array;
        case CMPI_sint32:
            return "CMPI_sint32" + array;
        case CMPI_sint64:
            return "CMPI_sint64" + array;
        case CMPI_instance:
            return "CMPI_instance" + array;
        case CMPI_ref:
            return "CMPI_ref" + array;
        case CMPI_string:
            return "CMPI_string" + array;
        case CMPI_chars:
            return "CMPI_chars" + array;
        case CMPI_dateTime:
            return "CMPI_dateTime" + array;
        default:
            return "type " + std::to_string(type);
    }
}

} // namespace test_support
