// CMPIArgs and CMPIContext: lists of named values of any type.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

NamedValues& listOf(ArgsObject& args) {
    return args.content().arguments;
}

NamedValues& listOf(ContextObject& context) {
    return context.content().entries;
}

template <typename Object, typename Face>
CMPIStatus addTo(const Face* list, const char* name, const CMPIValue* value, const CMPIType type) {
    Object* ours = opened<Object>(list);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (!name) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    std::optional<Value> added = fromCmpi(value, type);
    if (!added) return status(CMPI_RC_ERR_INVALID_DATA_TYPE);
    listOf(*ours).set(name, std::move(*added));
    return status(CMPI_RC_OK);
}

template <typename Object, CMPIrc missing, typename Face>
CMPIData getFrom(const Face* list, const char* name, CMPIStatus* rc) {
    Object* ours = opened<Object>(list);
    if (ours) return readNamed(listOf(*ours), name, missing, CMPI_goodValue, rc);
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return noData(CMPI_badValue);
}

template <typename Object, CMPIrc missing, typename Face>
CMPIData getAt(const Face* list, CMPICount index, CMPIString** name, CMPIStatus* rc) {
    Object* ours = opened<Object>(list);
    if (ours) return readNamedAt(listOf(*ours), index, name, missing, CMPI_goodValue, rc);
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return noData(CMPI_badValue);
}

template <typename Object, typename Face>
CMPICount countOf(const Face* list, CMPIStatus* rc) {
    Object* ours = opened<Object>(list);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? static_cast<CMPICount>(listOf(*ours).size()) : 0;
}

constexpr CMPIrc kMissing = CMPI_RC_ERR_NOT_FOUND;
constexpr CMPIArgsFT kArgsTable = {CMPICurrentVersion,
                                   releaseObject<ArgsObject, CMPIArgs>,
                                   cloneObject<ArgsObject, CMPIArgs>,
                                   addTo<ArgsObject, CMPIArgs>,
                                   getFrom<ArgsObject, kMissing, CMPIArgs>,
                                   getAt<ArgsObject, kMissing, CMPIArgs>,
                                   countOf<ArgsObject, CMPIArgs>};

constexpr CMPIContextFT kContextTable = {CMPICurrentVersion,
                                         releaseObject<ContextObject, CMPIContext>,
                                         cloneObject<ContextObject, CMPIContext>,
                                         getFrom<ContextObject, kMissing, CMPIContext>,
                                         getAt<ContextObject, kMissing, CMPIContext>,
                                         countOf<ContextObject, CMPIContext>,
                                         addTo<ContextObject, CMPIContext>};

} // namespace

const CMPIArgsFT* TableOf<CMPIArgs>::table() {
    return &kArgsTable;
}

const CMPIContextFT* TableOf<CMPIContext>::table() {
    return &kContextTable;
}

} // namespace cimserver
