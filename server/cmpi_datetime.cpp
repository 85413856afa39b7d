// CMPIDateTime.
#include "server/cmpi_objects.h"

namespace cimserver {

namespace {

CMPIUint64 getBinaryFormat(const CMPIDateTime* time, CMPIStatus* rc) {
    DateTimeObject* ours = opened<DateTimeObject>(time);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? ours->content().microseconds : 0;
}

CMPIString* getStringFormat(const CMPIDateTime* time, CMPIStatus* rc) {
    DateTimeObject* ours = opened<DateTimeObject>(time);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? makeString(ours->content().toString()) : nullptr;
}

CMPIBoolean isInterval(const CMPIDateTime* time, CMPIStatus* rc) {
    DateTimeObject* ours = opened<DateTimeObject>(time);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours && ours->content().interval ? 1 : 0;
}

constexpr CMPIDateTimeFT kTable = {CMPICurrentVersion,
                                   releaseObject<DateTimeObject, CMPIDateTime>,
                                   cloneObject<DateTimeObject, CMPIDateTime>,
                                   getBinaryFormat,
                                   getStringFormat,
                                   isInterval};

} // namespace

const CMPIDateTimeFT* TableOf<CMPIDateTime>::table() {
    return &kTable;
}

} // namespace cimserver
