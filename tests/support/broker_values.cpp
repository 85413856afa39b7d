// Reading what the provider passes, and writing it down.
#include <gtest/gtest.h>

#include <cstdint>

#include "tests/support/broker_calls.h"

namespace test_support {

namespace {

template <typename Pointer>
bool is_minus_one(Pointer* pointer) {
    return reinterpret_cast<std::intptr_t>(pointer) == -1;
}

} // namespace

RecordedPath snapshot(const CMPIObjectPath* path) {
    if (path == nullptr) return RecordedPath::of(Object::Null);
    if (is_minus_one(path)) return RecordedPath::of(Object::MinusOne);
    return static_cast<const PathObject*>(path)->record;
}

RecordedInstance snapshot(const CMPIInstance* instance) {
    if (instance == nullptr) return RecordedInstance::of(Object::Null);
    if (is_minus_one(instance)) return RecordedInstance::of(Object::MinusOne);
    return static_cast<const InstanceObject*>(instance)->record;
}

// The value of a setProperty or addKey call. A C string is the pointer itself.
Value read_value(const CMPIValue* value, CMPIType type) {
    if (value == nullptr) return nullptr;
    switch (type) {
        case CMPI_chars:
            return Value(reinterpret_cast<const char*>(value));
        case CMPI_string:
            return value->string != nullptr ? Value(static_cast<const StringObject*>(value->string)->text)
                                            : Value();
        case CMPI_ref:
            return Value(snapshot(value->ref));
        case CMPI_boolean:
            return value->boolean;
        case CMPI_char16:
            return value->char16;
        case CMPI_uint8:
            return value->uint8;
        case CMPI_uint16:
            return value->uint16;
        case CMPI_uint32:
            return value->uint32;
        case CMPI_uint64:
            return value->uint64;
        case CMPI_sint8:
            return value->sint8;
        case CMPI_sint16:
            return value->sint16;
        case CMPI_sint32:
            return value->sint32;
        case CMPI_sint64:
            return value->sint64;
        case CMPI_real32:
            return static_cast<double>(value->real32);
        case CMPI_real64:
            return value->real64;
        default:
            ADD_FAILURE() << "a value of " << type_name(type) << " cannot be recorded";
            return nullptr;
    }
}

std::optional<std::vector<std::string>> read_list(const char** list) {
    if (list == nullptr) return std::nullopt;
    std::vector<std::string> texts;
    for (; *list != nullptr; ++list) {
        texts.emplace_back(*list);
    }
    return texts;
}

// A number as CMPIData. The request's text is decimal and fits its type.
CMPIValue number_value(CMPIType type, const std::string& text) {
    CMPIValue value{};
    const std::int64_t number = type == CMPI_real32 || type == CMPI_real64 ? 0 : std::stoll(text);
    switch (type) {
        case CMPI_boolean:
            value.boolean = static_cast<CMPIBoolean>(number);
            break;
        case CMPI_uint8:
            value.uint8 = static_cast<CMPIUint8>(number);
            break;
        case CMPI_uint16:
            value.uint16 = static_cast<CMPIUint16>(number);
            break;
        case CMPI_uint32:
            value.uint32 = static_cast<CMPIUint32>(number);
            break;
        case CMPI_uint64:
            value.uint64 = static_cast<CMPIUint64>(number);
            break;
        case CMPI_sint32:
            value.sint32 = static_cast<CMPISint32>(number);
            break;
        case CMPI_sint64:
            value.sint64 = number;
            break;
        default:
            ADD_FAILURE() << "a key of " << type_name(type) << " cannot be made";
    }
    return value;
}

std::string result_text(const char* function, const RecordedPath& path) {
    return std::string(function) + ' ' + path.text();
}

std::string result_text(const char* function, const RecordedInstance& instance) {
    std::string what = instance.class_name();
    if (instance.kind() == Object::Null) what = "NULL";
    if (instance.kind() == Object::MinusOne) what = "-1";
    if (instance.kind() == Object::WithoutHandle) what = "without handle";
    return std::string(function) + ' ' + what;
}

} // namespace test_support
