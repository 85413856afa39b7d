#include "server/broker/instance.h"

#include <optional>
#include <string>
#include <utility>

#include "server/broker/object_path.h"
#include "server/broker/property_list.h"
#include "server/broker/values.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

CMPIData get_property(const CMPIInstance* instance, const char* name, CMPIStatus* rc) {
    InstanceObject* ours = from_handle<InstanceObject>(instance);
    if (ours != nullptr) {
        return read_named(ours->content().properties, name, CMPI_RC_ERR_NO_SUCH_PROPERTY, CMPI_goodValue, rc);
    }
    set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return no_data(CMPI_badValue);
}

CMPIData get_property_at(const CMPIInstance* instance, CMPICount index, CMPIString** name, CMPIStatus* rc) {
    InstanceObject* ours = from_handle<InstanceObject>(instance);
    if (ours != nullptr) {
        return read_named_at(ours->content().properties, index, name, CMPI_RC_ERR_NO_SUCH_PROPERTY,
                             CMPI_goodValue, rc);
    }
    set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return no_data(CMPI_badValue);
}

CMPICount get_property_count(const CMPIInstance* instance, CMPIStatus* rc) {
    InstanceObject* ours = from_handle<InstanceObject>(instance);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? static_cast<CMPICount>(ours->content().properties.size()) : 0;
}

CMPIStatus set_property_with_origin(const CMPIInstance* instance, const char* name, const CMPIValue* value,
                                    const CMPIType type, const char* origin) {
    InstanceObject* ours = from_handle<InstanceObject>(instance);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (name == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<Value> property = from_cmpi(value, type);
    if (!property) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    ours->content().set(name, std::move(*property), origin != nullptr ? origin : "");
    return status(CMPI_RC_OK);
}

CMPIStatus set_property(const CMPIInstance* instance, const char* name, const CMPIValue* value,
                        CMPIType type) {
    return set_property_with_origin(instance, name, value, type, nullptr);
}

CMPIObjectPath* get_object_path(const CMPIInstance* instance, CMPIStatus* rc) {
    InstanceObject* ours = from_handle<InstanceObject>(instance);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? make_path(ours->content().path) : nullptr;
}

CMPIStatus set_property_filter(const CMPIInstance* instance, const char** properties, const char** keyList) {
    InstanceObject* ours = from_handle<InstanceObject>(instance);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (properties == nullptr) {
        ours->content().apply_filter(std::nullopt);
        return status(CMPI_RC_OK);
    }
    NameSet filter;
    for (const char** names : {properties, keyList}) {
        for (std::string& name : names_from(names)) {
            filter.insert(std::move(name));
        }
    }
    for (const NamedValue& key : ours->content().path.keys.all()) {
        filter.insert(key.name);
    }
    ours->content().apply_filter(std::move(filter));
    return status(CMPI_RC_OK);
}

CMPIStatus set_object_path(const CMPIInstance* instance, const CMPIObjectPath* path) {
    InstanceObject* ours = from_handle<InstanceObject>(instance);
    PathObject* from = from_handle<PathObject>(path);
    if (ours == nullptr || from == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().path = from->content();
    return status(CMPI_RC_OK);
}

constexpr CMPIInstanceFT TABLE = {CMPICurrentVersion,
                                  release_object<InstanceObject, CMPIInstance>,
                                  clone_object<InstanceObject, CMPIInstance>,
                                  get_property,
                                  get_property_at,
                                  get_property_count,
                                  set_property,
                                  get_object_path,
                                  set_property_filter,
                                  set_object_path,
                                  set_property_with_origin};

} // namespace

const CMPIInstanceFT* FunctionTableOf<CMPIInstance>::table() {
    return &TABLE;
}

CMPIInstance* make_instance(Instance instance) {
    return make_pooled<InstanceObject>(std::move(instance));
}

} // namespace cimserver
