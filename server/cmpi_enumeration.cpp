// CMPIEnumeration.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

CMPIData getNext(const CMPIEnumeration* enumeration, CMPIStatus* rc) {
    EnumerationObject* ours = opened<EnumerationObject>(enumeration);
    if (!ours || ours->content().next >= ours->content().items.elements.size()) {
        setStatus(rc, ours ? CMPI_RC_ERR_NOT_FOUND : CMPI_RC_ERR_INVALID_HANDLE);
        return noData();
    }
    setStatus(rc, CMPI_RC_OK);
    return toCmpi(ours->content().items.elements[ours->content().next++]);
}

CMPIBoolean hasNext(const CMPIEnumeration* enumeration, CMPIStatus* rc) {
    EnumerationObject* ours = opened<EnumerationObject>(enumeration);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours && ours->content().next < ours->content().items.elements.size() ? 1 : 0;
}

CMPIArray* toArray(const CMPIEnumeration* enumeration, CMPIStatus* rc) {
    EnumerationObject* ours = opened<EnumerationObject>(enumeration);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? makePooled<ArrayObject>(ours->content().items) : nullptr;
}

constexpr CMPIEnumerationFT kTable = {CMPICurrentVersion,
                                      releaseObject<EnumerationObject, CMPIEnumeration>,
                                      cloneObject<EnumerationObject, CMPIEnumeration>,
                                      getNext,
                                      hasNext,
                                      toArray};

} // namespace

const CMPIEnumerationFT* TableOf<CMPIEnumeration>::table() {
    return &kTable;
}

CMPIEnumeration* makeEnumeration(CMPIType type, std::vector<Value> items) {
    return makePooled<EnumerationObject>(EnumerationContent{{type, std::move(items)}, 0});
}

} // namespace cimserver
