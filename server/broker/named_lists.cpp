#include "server/broker/named_lists.h"

#include <optional>
#include <utility>

#include "server/broker/values.h"

namespace cimserver {

namespace {

NamedValues& list_of(ArgsObject& args) {
    return args.content().arguments;
}

NamedValues& list_of(ContextObject& context) {
    return context.content().entries;
}

template <typename Object, typename Handle>
CMPIStatus add_to(const Handle* list, const char* name, const CMPIValue* value, const CMPIType type) {
    Object* ours = from_handle<Object>(list);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (!name) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<Value> added = from_cmpi(value, type);
    if (!added) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    list_of(*ours).set(name, std::move(*added));
    return status(CMPI_RC_OK);
}

template <typename Object, CMPIrc missing, typename Handle>
CMPIData get_from(const Handle* list, const char* name, CMPIStatus* rc) {
    Object* ours = from_handle<Object>(list);
    if (ours) return read_named(list_of(*ours), name, missing, CMPI_goodValue, rc);
    set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return no_data(CMPI_badValue);
}

template <typename Object, CMPIrc missing, typename Handle>
CMPIData get_at(const Handle* list, CMPICount index, CMPIString** name, CMPIStatus* rc) {
    Object* ours = from_handle<Object>(list);
    if (ours) return read_named_at(list_of(*ours), index, name, missing, CMPI_goodValue, rc);
    set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return no_data(CMPI_badValue);
}

template <typename Object, typename Handle>
CMPICount count_of(const Handle* list, CMPIStatus* rc) {
    Object* ours = from_handle<Object>(list);
    set_status(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? static_cast<CMPICount>(list_of(*ours).size()) : 0;
}

constexpr CMPIrc MISSING = CMPI_RC_ERR_NOT_FOUND;
constexpr CMPIArgsFT ARGS_TABLE = {CMPICurrentVersion,
                                   release_object<ArgsObject, CMPIArgs>,
                                   clone_object<ArgsObject, CMPIArgs>,
                                   add_to<ArgsObject, CMPIArgs>,
                                   get_from<ArgsObject, MISSING, CMPIArgs>,
                                   get_at<ArgsObject, MISSING, CMPIArgs>,
                                   count_of<ArgsObject, CMPIArgs>};

constexpr CMPIContextFT CONTEXT_TABLE = {CMPICurrentVersion,
                                         release_object<ContextObject, CMPIContext>,
                                         clone_object<ContextObject, CMPIContext>,
                                         get_from<ContextObject, MISSING, CMPIContext>,
                                         get_at<ContextObject, MISSING, CMPIContext>,
                                         count_of<ContextObject, CMPIContext>,
                                         add_to<ContextObject, CMPIContext>};

} // namespace

const CMPIArgsFT* FunctionTableOf<CMPIArgs>::table() {
    return &ARGS_TABLE;
}

const CMPIContextFT* FunctionTableOf<CMPIContext>::table() {
    return &CONTEXT_TABLE;
}

} // namespace cimserver
