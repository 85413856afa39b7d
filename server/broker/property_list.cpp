#include "server/broker/property_list.h"

#include "server/model/cim_model.h"

namespace cimserver {

namespace {

CMPIBoolean is_property_in_list(const CMPIPropertyList* list, const char* name, CMPIStatus* rc) {
    PropertyListObject* ours = from_handle<PropertyListObject>(list);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    if (ours == nullptr || name == nullptr) return 0;
    return ours->content().everything || contains_name(ours->content().names, name) ? 1 : 0;
}

const char** get_properties(const CMPIPropertyList* list, CMPIStatus* rc) {
    PropertyListObject* ours = from_handle<PropertyListObject>(list);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr && !ours->content().everything ? ours->content().pointers.data() : nullptr;
}

constexpr CMPIPropertyListFT TABLE = {
    CMPICurrentVersion, release_object<PropertyListObject, CMPIPropertyList>,
    clone_object<PropertyListObject, CMPIPropertyList>, is_property_in_list, get_properties};

} // namespace

const CMPIPropertyListFT* FunctionTableOf<CMPIPropertyList>::table() {
    return &TABLE;
}

std::vector<std::string> names_from(const char** names) {
    std::vector<std::string> result;
    for (; names != nullptr && (*names != nullptr); ++names) {
        result.emplace_back(*names);
    }
    return result;
}

std::vector<const char*> pointers_to(const std::vector<std::string>& names) {
    std::vector<const char*> result;
    for (const std::string& name : names) {
        result.push_back(name.c_str());
    }
    result.push_back(nullptr);
    return result;
}

PropertyListContent::PropertyListContent(const char** properties)
    : everything(properties == nullptr), names(names_from(properties)), pointers(pointers_to(names)) {}

PropertyListContent::PropertyListContent(const PropertyListContent& other)
    : everything(other.everything), names(other.names), pointers(pointers_to(names)) {}

} // namespace cimserver
