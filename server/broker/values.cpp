#include "server/broker/values.h"

#include <cstdint>
#include <string>
#include <variant>

#include "server/broker/array.h"
#include "server/broker/datetime.h"
#include "server/broker/encapsulated.h"
#include "server/broker/instance.h"
#include "server/broker/object_path.h"
#include "server/broker/string.h"
#include "server/model/datetime.h"

namespace cimserver {

namespace {

std::optional<Value> number_from(const CMPIValue& value, CMPIType type) {
    switch (type) {
        case CMPI_boolean:
            return Value::boolean(value.boolean != 0);
        case CMPI_char16:
            return Value::integer(type, std::uint64_t{value.char16});
        case CMPI_uint8:
            return Value::integer(type, std::uint64_t{value.uint8});
        case CMPI_uint16:
            return Value::integer(type, std::uint64_t{value.uint16});
        case CMPI_uint32:
            return Value::integer(type, std::uint64_t{value.uint32});
        case CMPI_uint64:
            return Value::integer(type, std::uint64_t{value.uint64});
        case CMPI_sint8:
            return Value::integer(type, std::int64_t{value.sint8});
        case CMPI_sint16:
            return Value::integer(type, std::int64_t{value.sint16});
        case CMPI_sint32:
            return Value::integer(type, std::int64_t{value.sint32});
        case CMPI_sint64:
            return Value::integer(type, std::int64_t{value.sint64});
        case CMPI_real32:
            return Value{type, double{value.real32}};
        case CMPI_real64:
            return Value{type, value.real64};
        default:
            return std::nullopt;
    }
}

// The content of an object as a value; NULL stays NULL, anything that is not a live object of ours is
// refused.
template <typename Object, typename Handle, typename Convert>
std::optional<Value> object_from(const Handle* object, CMPIType type, Convert convert) {
    if (!object) return Value::null(type);
    Object* ours = from_handle<Object>(object);
    if (!ours) return std::nullopt;
    return convert(ours->content());
}

CMPIType canonical(CMPIType type) {
    const auto scalar = static_cast<CMPIType>(type & ~CMPI_ARRAY);
    if (scalar == CMPI_chars) return static_cast<CMPIType>(CMPI_string | (type & CMPI_ARRAY));
    return type;
}

bool is_known(CMPIType scalar) {
    switch (scalar) {
        case CMPI_boolean:
        case CMPI_char16:
        case CMPI_uint8:
        case CMPI_uint16:
        case CMPI_uint32:
        case CMPI_uint64:
        case CMPI_sint8:
        case CMPI_sint16:
        case CMPI_sint32:
        case CMPI_sint64:
        case CMPI_real32:
        case CMPI_real64:
        case CMPI_string:
        case CMPI_chars:
        case CMPI_dateTime:
        case CMPI_ref:
        case CMPI_instance:
        case CMPI_ptr:
            return true;
        default:
            return false;
    }
}

} // namespace

std::optional<Value> from_cmpi(const CMPIValue* value, CMPIType type) {
    const auto scalar = static_cast<CMPIType>(type & ~CMPI_ARRAY);
    if (type == CMPI_null) return Value{};
    if (!is_known(scalar)) return std::nullopt;
    if (value == nullptr) return Value::null(canonical(type));
    if ((type & CMPI_ARRAY) != 0) {
        return object_from<ArrayObject>(value->array, canonical(type), [type](const ArrayContent& array) {
            // The array knows its element type better than the caller, who may have said just "chars".
            const CMPIType elements = array.elementType == CMPI_null ? canonical(type) : array.elementType;
            return Value{static_cast<CMPIType>(elements | CMPI_ARRAY), array.elements};
        });
    }
    switch (type) {
        case CMPI_chars:
            return Value::text(reinterpret_cast<const char*>(value));
        case CMPI_string:
            return object_from<StringObject>(
                value->string, type, [](const StringContent& string) { return Value::text(string.text); });
        case CMPI_dateTime:
            return object_from<DateTimeObject>(value->dateTime, type, [](const CimDateTime& time) {
                return Value{CMPI_dateTime, time.to_string()};
            });
        case CMPI_ref:
            return object_from<PathObject>(value->ref, type,
                                           [](const ObjectPath& path) { return Value::reference(path); });
        case CMPI_instance:
            return object_from<InstanceObject>(
                value->inst, type, [](const Instance& instance) { return Value::embedded(instance); });
        case CMPI_ptr:
            return Value{type, OpaquePointer{value->dataPtr.ptr, value->dataPtr.length}};
        default:
            return number_from(*value, type);
    }
}

CMPIData no_data(CMPIValueState state) {
    CMPIData data{};
    data.type = CMPI_null;
    data.state = state;
    return data;
}

CMPIData to_cmpi(const Value& value, CMPIValueState state) {
    CMPIData data{};
    data.type = value.type;
    data.state = state;
    if (value.is_null()) {
        data.state = static_cast<CMPIValueState>(data.state | CMPI_nullValue);
        return data;
    }
    if (const auto* elements = value.as_array()) {
        data.value.array = make_pooled<ArrayObject>(ArrayContent{value.element_type(), *elements});
        return data;
    }
    if (const ObjectPath* path = value.as_reference()) {
        data.value.ref = make_path(*path);
    } else if (const Instance* instance = value.as_instance()) {
        data.value.inst = make_instance(*instance);
    } else if (const auto* pointer = std::get_if<OpaquePointer>(&value.content)) {
        data.value.dataPtr = {pointer->address, pointer->length};
    } else if (const std::string* text = value.as_text()) {
        if (value.type == CMPI_dateTime) {
            data.value.dateTime =
                make_pooled<DateTimeObject>(CimDateTime::parse(*text).value_or(CimDateTime{}));
        } else {
            data.value.string = make_string(*text);
        }
    } else if (const auto* flag = std::get_if<bool>(&value.content)) {
        data.value.boolean = *flag ? 1 : 0;
    } else if (const auto* real = std::get_if<double>(&value.content)) {
        if (value.type == CMPI_real32) {
            data.value.real32 = static_cast<CMPIReal32>(*real);
        } else {
            data.value.real64 = *real;
        }
    } else {
        const auto* natural = std::get_if<std::uint64_t>(&value.content);
        const auto bits =
            natural != nullptr ? *natural : static_cast<std::uint64_t>(std::get<std::int64_t>(value.content));
        switch (value.type) { // each width in its own field: where a narrow one lies depends on the machine
            case CMPI_uint8:
            case CMPI_sint8:
                data.value.uint8 = static_cast<CMPIUint8>(bits);
                break;
            case CMPI_char16:
            case CMPI_uint16:
            case CMPI_sint16:
                data.value.uint16 = static_cast<CMPIUint16>(bits);
                break;
            case CMPI_uint32:
            case CMPI_sint32:
                data.value.uint32 = static_cast<CMPIUint32>(bits);
                break;
            default:
                data.value.uint64 = bits;
                break;
        }
    }
    return data;
}

CMPIData read_named(const NamedValues& values, const char* name, CMPIrc missing, CMPIValueState state,
                    CMPIStatus* rc) {
    const NamedValue* found = name != nullptr ? values.find(name) : nullptr;
    set_status(rc, found != nullptr ? CMPI_RC_OK : missing);
    return found != nullptr ? to_cmpi(found->value, state) : no_data(CMPI_notFound);
}

CMPIData read_named_at(const NamedValues& values, CMPICount index, CMPIString** name, CMPIrc missing,
                       CMPIValueState state, CMPIStatus* rc) {
    if (name != nullptr) *name = nullptr;
    if (index >= values.size()) {
        set_status(rc, missing);
        return no_data(CMPI_notFound);
    }
    const NamedValue& found = values.all()[index];
    if (name != nullptr) *name = make_string(found.name);
    set_status(rc, CMPI_RC_OK);
    return to_cmpi(found.value, state);
}

} // namespace cimserver
