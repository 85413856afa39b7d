// CMPIPropertyList.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

CMPIBoolean is_property_in_list(const CMPIPropertyList* list, const char* name, CMPIStatus* rc) {
    PropertyListObject* ours = opened<PropertyListObject>(list);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    if ((ours == nullptr) || (name == nullptr)) return 0;
    return ours->content().everything || contains_name(ours->content().names, name) ? 1 : 0;
}

const char** get_properties(const CMPIPropertyList* list, CMPIStatus* rc) {
    PropertyListObject* ours = opened<PropertyListObject>(list);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return (ours != nullptr) && !ours->content().everything ? ours->content().pointers.data() : nullptr;
}

constexpr CMPIPropertyListFT TABLE = {
    CMPICurrentVersion, release_object<PropertyListObject, CMPIPropertyList>,
    clone_object<PropertyListObject, CMPIPropertyList>, is_property_in_list, get_properties};

} // namespace

const CMPIPropertyListFT* TableOf<CMPIPropertyList>::table() {
    return &TABLE;
}

PropertyListContent::PropertyListContent(const char** properties)
    : everything(properties == nullptr), names(names_from(properties)), pointers(pointers_to(names)) {}

PropertyListContent::PropertyListContent(const PropertyListContent& other)
    : everything(other.everything), names(other.names), pointers(pointers_to(names)) {}

} // namespace cimserver
