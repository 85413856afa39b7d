#include "server/broker/enumeration.h"

#include <utility>

#include "server/broker/values.h"

namespace cimserver {

namespace {

CMPIData get_next(const CMPIEnumeration* enumeration, CMPIStatus* rc) {
    EnumerationObject* ours = from_handle<EnumerationObject>(enumeration);
    if (ours == nullptr || ours->content().next >= ours->content().items.elements.size()) {
        set_status(rc, ours != nullptr ? CMPI_RC_ERR_NOT_FOUND : CMPI_RC_ERR_INVALID_HANDLE);
        return no_data();
    }
    set_status(rc, CMPI_RC_OK);
    return to_cmpi(ours->content().items.elements[ours->content().next++]);
}

CMPIBoolean has_next(const CMPIEnumeration* enumeration, CMPIStatus* rc) {
    EnumerationObject* ours = from_handle<EnumerationObject>(enumeration);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr && ours->content().next < ours->content().items.elements.size() ? 1 : 0;
}

CMPIArray* to_array(const CMPIEnumeration* enumeration, CMPIStatus* rc) {
    EnumerationObject* ours = from_handle<EnumerationObject>(enumeration);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? make_pooled<ArrayObject>(ours->content().items) : nullptr;
}

constexpr CMPIEnumerationFT TABLE = {CMPICurrentVersion,
                                     release_object<EnumerationObject, CMPIEnumeration>,
                                     clone_object<EnumerationObject, CMPIEnumeration>,
                                     get_next,
                                     has_next,
                                     to_array};

} // namespace

const CMPIEnumerationFT* FunctionTableOf<CMPIEnumeration>::table() {
    return &TABLE;
}

CMPIEnumeration* make_enumeration(CMPIType type, std::vector<Value> items) {
    return make_pooled<EnumerationObject>(EnumerationContent{{type, std::move(items)}, 0});
}

} // namespace cimserver
