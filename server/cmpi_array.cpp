// CMPIArray.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

CMPICount getSize(const CMPIArray* array, CMPIStatus* rc) {
    ArrayObject* ours = opened<ArrayObject>(array);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? static_cast<CMPICount>(ours->content().elements.size()) : 0;
}

CMPIType getSimpleType(const CMPIArray* array, CMPIStatus* rc) {
    ArrayObject* ours = opened<ArrayObject>(array);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? ours->content().elementType : static_cast<CMPIType>(CMPI_null);
}

CMPIData getElementAt(const CMPIArray* array, CMPICount index, CMPIStatus* rc) {
    ArrayObject* ours = opened<ArrayObject>(array);
    if (!ours || index >= ours->content().elements.size()) {
        setStatus(rc, ours ? CMPI_RC_ERR_NO_SUCH_PROPERTY : CMPI_RC_ERR_INVALID_HANDLE);
        return noData();
    }
    setStatus(rc, CMPI_RC_OK);
    return toCmpi(ours->content().elements[index]);
}

CMPIStatus setElementAt(const CMPIArray* array, CMPICount index, const CMPIValue* value, CMPIType type) {
    ArrayObject* ours = opened<ArrayObject>(array);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ArrayContent& content = ours->content();
    if (index >= content.elements.size()) return status(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    std::optional<Value> element = fromCmpi(value, type);
    if (!element) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    if (element->type == CMPI_null) element = Value::null(content.elementType);
    if (element->type != content.elementType) return status(CMPI_RC_ERR_TYPE_MISMATCH);
    content.elements[index] = std::move(*element);
    return status(CMPI_RC_OK);
}

constexpr CMPIArrayFT kTable = {CMPICurrentVersion,
                                releaseObject<ArrayObject, CMPIArray>,
                                cloneObject<ArrayObject, CMPIArray>,
                                getSize,
                                getSimpleType,
                                getElementAt,
                                setElementAt};

} // namespace

const CMPIArrayFT* TableOf<CMPIArray>::table() {
    return &kTable;
}

} // namespace cimserver
