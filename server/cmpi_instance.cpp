// CMPIInstance.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

CMPIData getProperty(const CMPIInstance* instance, const char* name, CMPIStatus* rc) {
    InstanceObject* ours = opened<InstanceObject>(instance);
    if (ours)
        return readNamed(ours->content().properties, name, CMPI_RC_ERR_NO_SUCH_PROPERTY, CMPI_goodValue, rc);
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return noData(CMPI_badValue);
}

CMPIData getPropertyAt(const CMPIInstance* instance, CMPICount index, CMPIString** name, CMPIStatus* rc) {
    InstanceObject* ours = opened<InstanceObject>(instance);
    if (ours) {
        return readNamedAt(ours->content().properties, index, name, CMPI_RC_ERR_NO_SUCH_PROPERTY,
                           CMPI_goodValue, rc);
    }
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return noData(CMPI_badValue);
}

CMPICount getPropertyCount(const CMPIInstance* instance, CMPIStatus* rc) {
    InstanceObject* ours = opened<InstanceObject>(instance);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? static_cast<CMPICount>(ours->content().properties.size()) : 0;
}

CMPIStatus setPropertyWithOrigin(const CMPIInstance* instance, const char* name, const CMPIValue* value,
                                 const CMPIType type, const char* origin) {
    InstanceObject* ours = opened<InstanceObject>(instance);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (!name) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<Value> property = fromCmpi(value, type);
    if (!property) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    ours->content().set(name, std::move(*property), origin ? origin : "");
    return status(CMPI_RC_OK);
}

CMPIStatus setProperty(const CMPIInstance* instance, const char* name, const CMPIValue* value,
                       CMPIType type) {
    return setPropertyWithOrigin(instance, name, value, type, nullptr);
}

CMPIObjectPath* getObjectPath(const CMPIInstance* instance, CMPIStatus* rc) {
    InstanceObject* ours = opened<InstanceObject>(instance);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? makePath(ours->content().path) : nullptr;
}

CMPIStatus setPropertyFilter(const CMPIInstance* instance, const char** properties, const char** keyList) {
    InstanceObject* ours = opened<InstanceObject>(instance);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (!properties) {
        ours->content().applyFilter(std::nullopt);
        return status(CMPI_RC_OK);
    }
    PropertyFilter filter{namesFrom(properties), namesFrom(keyList)};
    for (const NamedValue& key : ours->content().path.keys.all()) {
        filter.keys.push_back(key.name);
    }
    ours->content().applyFilter(std::move(filter));
    return status(CMPI_RC_OK);
}

CMPIStatus setObjectPath(const CMPIInstance* instance, const CMPIObjectPath* path) {
    InstanceObject* ours = opened<InstanceObject>(instance);
    PathObject* from = opened<PathObject>(path);
    if (!ours || !from) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().path = from->content();
    return status(CMPI_RC_OK);
}

constexpr CMPIInstanceFT kTable = {CMPICurrentVersion,
                                   releaseObject<InstanceObject, CMPIInstance>,
                                   cloneObject<InstanceObject, CMPIInstance>,
                                   getProperty,
                                   getPropertyAt,
                                   getPropertyCount,
                                   setProperty,
                                   getObjectPath,
                                   setPropertyFilter,
                                   setObjectPath,
                                   setPropertyWithOrigin};

} // namespace

const CMPIInstanceFT* TableOf<CMPIInstance>::table() {
    return &kTable;
}

CMPIInstance* makeInstance(Instance instance) {
    return makePooled<InstanceObject>(std::move(instance));
}

} // namespace cimserver
