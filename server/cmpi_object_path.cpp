// CMPIObjectPath.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

template <std::string ObjectPath::*Part>
CMPIStatus setPart(const CMPIObjectPath* path, const char* text) {
    PathObject* ours = opened<PathObject>(path);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().*Part = text ? text : "";
    return status(CMPI_RC_OK);
}

template <std::string ObjectPath::*Part>
CMPIString* getPart(const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* ours = opened<PathObject>(path);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? makeString(ours->content().*Part) : nullptr;
}

CMPIStatus addKey(const CMPIObjectPath* path, const char* name, const CMPIValue* value, const CMPIType type) {
    PathObject* ours = opened<PathObject>(path);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (!name) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<Value> key = fromCmpi(value, type);
    if (!key || key->isArray()) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    ours->content().keys.set(name, std::move(*key));
    return status(CMPI_RC_OK);
}

CMPIData getKey(const CMPIObjectPath* path, const char* name, CMPIStatus* rc) {
    PathObject* ours = opened<PathObject>(path);
    if (ours) return readNamed(ours->content().keys, name, CMPI_RC_ERR_NOT_FOUND, CMPI_keyValue, rc);
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return noData(CMPI_badValue);
}

CMPIData getKeyAt(const CMPIObjectPath* path, CMPICount index, CMPIString** name, CMPIStatus* rc) {
    PathObject* ours = opened<PathObject>(path);
    if (ours) return readNamedAt(ours->content().keys, index, name, CMPI_RC_ERR_NOT_FOUND, CMPI_keyValue, rc);
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return noData(CMPI_badValue);
}

CMPICount getKeyCount(const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* ours = opened<PathObject>(path);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? static_cast<CMPICount>(ours->content().keys.size()) : 0;
}

CMPIStatus setNameSpaceFrom(const CMPIObjectPath* path, const CMPIObjectPath* source) {
    PathObject* ours = opened<PathObject>(path);
    PathObject* from = opened<PathObject>(source);
    if (!ours || !from) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().nameSpace = from->content().nameSpace;
    return status(CMPI_RC_OK);
}

CMPIStatus setHostAndNameSpaceFrom(const CMPIObjectPath* path, const CMPIObjectPath* source) {
    const CMPIStatus set = setNameSpaceFrom(path, source);
    if (set.rc == CMPI_RC_OK) {
        opened<PathObject>(path)->content().host = opened<PathObject>(source)->content().host;
    }
    return set;
}

// Qualifiers belong to class declarations, which this server does not hold.
template <typename... Names>
CMPIData noQualifier(const CMPIObjectPath* path, Names..., CMPIStatus* rc) {
    setStatus(rc, opened<PathObject>(path) ? CMPI_RC_ERR_NOT_SUPPORTED : CMPI_RC_ERR_INVALID_HANDLE);
    return noData(CMPI_notFound);
}

CMPIString* toString(const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* ours = opened<PathObject>(path);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? makeString(ours->content().toString()) : nullptr;
}

constexpr CMPIObjectPathFT kTable = {CMPICurrentVersion,
                                     releaseObject<PathObject, CMPIObjectPath>,
                                     cloneObject<PathObject, CMPIObjectPath>,
                                     setPart<&ObjectPath::nameSpace>,
                                     getPart<&ObjectPath::nameSpace>,
                                     setPart<&ObjectPath::host>,
                                     getPart<&ObjectPath::host>,
                                     setPart<&ObjectPath::className>,
                                     getPart<&ObjectPath::className>,
                                     addKey,
                                     getKey,
                                     getKeyAt,
                                     getKeyCount,
                                     setNameSpaceFrom,
                                     setHostAndNameSpaceFrom,
                                     noQualifier<const char*>,
                                     noQualifier<const char*, const char*>,
                                     noQualifier<const char*, const char*>,
                                     noQualifier<const char*, const char*, const char*>,
                                     toString};

} // namespace

const CMPIObjectPathFT* TableOf<CMPIObjectPath>::table() {
    return &kTable;
}

CMPIObjectPath* makePath(ObjectPath path) {
    return makePooled<PathObject>(std::move(path));
}

} // namespace cimserver
