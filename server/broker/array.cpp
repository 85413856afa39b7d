#include "server/broker/array.h"

#include <optional>
#include <utility>

#include "server/broker/values.h"

namespace cimserver {

namespace {

CMPICount get_size(const CMPIArray* array, CMPIStatus* rc) {
    ArrayObject* ours = from_handle<ArrayObject>(array);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? static_cast<CMPICount>(ours->content().elements.size()) : 0;
}

CMPIType get_simple_type(const CMPIArray* array, CMPIStatus* rc) {
    ArrayObject* ours = from_handle<ArrayObject>(array);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? ours->content().elementType : static_cast<CMPIType>(CMPI_null);
}

CMPIData get_element_at(const CMPIArray* array, CMPICount index, CMPIStatus* rc) {
    ArrayObject* ours = from_handle<ArrayObject>(array);
    if (ours == nullptr || index >= ours->content().elements.size()) {
        set_status(rc, ours != nullptr ? CMPI_RC_ERR_NO_SUCH_PROPERTY : CMPI_RC_ERR_INVALID_HANDLE);
        return no_data();
    }
    set_status(rc, CMPI_RC_OK);
    return to_cmpi(ours->content().elements[index]);
}

CMPIStatus set_element_at(const CMPIArray* array, CMPICount index, const CMPIValue* value, CMPIType type) {
    ArrayObject* ours = from_handle<ArrayObject>(array);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ArrayContent& content = ours->content();
    if (index >= content.elements.size()) return status(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    std::optional<Value> element = from_cmpi(value, type);
    if (!element) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    if (element->type == CMPI_null) element = Value::null(content.elementType);
    if (element->type != content.elementType) return status(CMPI_RC_ERR_TYPE_MISMATCH);
    content.elements[index] = std::move(*element);
    return status(CMPI_RC_OK);
}

constexpr CMPIArrayFT TABLE = {CMPICurrentVersion,
                               release_object<ArrayObject, CMPIArray>,
                               clone_object<ArrayObject, CMPIArray>,
                               get_size,
                               get_simple_type,
                               get_element_at,
                               set_element_at};

} // namespace

const CMPIArrayFT* FunctionTableOf<CMPIArray>::table() {
    return &TABLE;
}

} // namespace cimserver
