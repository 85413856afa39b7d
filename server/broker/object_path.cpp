#include "server/broker/object_path.h"

#include <optional>
#include <string>
#include <utility>

#include "server/broker/string.h"
#include "server/broker/values.h"

namespace cimserver {

namespace {

template <std::string ObjectPath::*Part>
CMPIStatus set_part(const CMPIObjectPath* path, const char* text) {
    PathObject* ours = from_handle<PathObject>(path);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().*Part = text ? text : "";
    return status(CMPI_RC_OK);
}

template <std::string ObjectPath::*Part>
CMPIString* get_part(const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* ours = from_handle<PathObject>(path);
    set_status(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? make_string(ours->content().*Part) : nullptr;
}

CMPIStatus add_key(const CMPIObjectPath* path, const char* name, const CMPIValue* value,
                   const CMPIType type) {
    PathObject* ours = from_handle<PathObject>(path);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (name == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<Value> key = from_cmpi(value, type);
    if (!key || key->is_array()) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    ours->content().keys.set(name, std::move(*key));
    return status(CMPI_RC_OK);
}

CMPIData get_key(const CMPIObjectPath* path, const char* name, CMPIStatus* rc) {
    PathObject* ours = from_handle<PathObject>(path);
    if (ours != nullptr) {
        return read_named(ours->content().keys, name, CMPI_RC_ERR_NOT_FOUND, CMPI_keyValue, rc);
    }
    set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return no_data(CMPI_badValue);
}

CMPIData get_key_at(const CMPIObjectPath* path, CMPICount index, CMPIString** name, CMPIStatus* rc) {
    PathObject* ours = from_handle<PathObject>(path);
    if (ours != nullptr) {
        return read_named_at(ours->content().keys, index, name, CMPI_RC_ERR_NOT_FOUND, CMPI_keyValue, rc);
    }
    set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return no_data(CMPI_badValue);
}

CMPICount get_key_count(const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* ours = from_handle<PathObject>(path);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? static_cast<CMPICount>(ours->content().keys.size()) : 0;
}

CMPIStatus set_name_space_from(const CMPIObjectPath* path, const CMPIObjectPath* source) {
    PathObject* ours = from_handle<PathObject>(path);
    PathObject* from = from_handle<PathObject>(source);
    if (ours == nullptr || from == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().nameSpace = from->content().nameSpace;
    return status(CMPI_RC_OK);
}

CMPIStatus set_host_and_name_space_from(const CMPIObjectPath* path, const CMPIObjectPath* source) {
    const CMPIStatus set = set_name_space_from(path, source);
    if (set.rc == CMPI_RC_OK) {
        from_handle<PathObject>(path)->content().host = from_handle<PathObject>(source)->content().host;
    }
    return set;
}

// Qualifiers belong to class declarations, which this server does not hold.
template <typename... Names>
CMPIData no_qualifier(const CMPIObjectPath* path, Names..., CMPIStatus* rc) {
    set_status(rc, from_handle<PathObject>(path) ? CMPI_RC_ERR_NOT_SUPPORTED : CMPI_RC_ERR_INVALID_HANDLE);
    return no_data(CMPI_notFound);
}

CMPIString* to_string(const CMPIObjectPath* path, CMPIStatus* rc) {
    PathObject* ours = from_handle<PathObject>(path);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? make_string(ours->content().to_string()) : nullptr;
}

constexpr CMPIObjectPathFT TABLE = {CMPICurrentVersion,
                                    release_object<PathObject, CMPIObjectPath>,
                                    clone_object<PathObject, CMPIObjectPath>,
                                    set_part<&ObjectPath::nameSpace>,
                                    get_part<&ObjectPath::nameSpace>,
                                    set_part<&ObjectPath::host>,
                                    get_part<&ObjectPath::host>,
                                    set_part<&ObjectPath::className>,
                                    get_part<&ObjectPath::className>,
                                    add_key,
                                    get_key,
                                    get_key_at,
                                    get_key_count,
                                    set_name_space_from,
                                    set_host_and_name_space_from,
                                    no_qualifier<const char*>,
                                    no_qualifier<const char*, const char*>,
                                    no_qualifier<const char*, const char*>,
                                    no_qualifier<const char*, const char*, const char*>,
                                    to_string};

} // namespace

const CMPIObjectPathFT* FunctionTableOf<CMPIObjectPath>::table() {
    return &TABLE;
}

CMPIObjectPath* make_path(ObjectPath path) {
    return make_pooled<PathObject>(std::move(path));
}

} // namespace cimserver
