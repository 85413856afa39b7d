// CMPIPropertyList.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

CMPIBoolean isPropertyInList(const CMPIPropertyList* list, const char* name, CMPIStatus* rc) {
    PropertyListObject* ours = opened<PropertyListObject>(list);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    if (!ours || !name) return 0;
    return ours->content().everything || containsName(ours->content().names, name) ? 1 : 0;
}

const char** getProperties(const CMPIPropertyList* list, CMPIStatus* rc) {
    PropertyListObject* ours = opened<PropertyListObject>(list);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours && !ours->content().everything ? ours->content().pointers.data() : nullptr;
}

constexpr CMPIPropertyListFT kTable = {
    CMPICurrentVersion, releaseObject<PropertyListObject, CMPIPropertyList>,
    cloneObject<PropertyListObject, CMPIPropertyList>, isPropertyInList, getProperties};

} // namespace

const CMPIPropertyListFT* TableOf<CMPIPropertyList>::table() {
    return &kTable;
}

PropertyListContent::PropertyListContent(const char** properties)
    : everything(properties == nullptr), names(namesFrom(properties)), pointers(pointersTo(names)) {}

PropertyListContent::PropertyListContent(const PropertyListContent& other)
    : everything(other.everything), names(other.names), pointers(pointersTo(names)) {}

} // namespace cimserver
