#include "server/broker/datetime.h"

#include "server/broker/string.h"

namespace cimserver {

namespace {

CMPIUint64 get_binary_format(const CMPIDateTime* time, CMPIStatus* rc) {
    DateTimeObject* ours = from_handle<DateTimeObject>(time);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? ours->content().microseconds : 0;
}

CMPIString* get_string_format(const CMPIDateTime* time, CMPIStatus* rc) {
    DateTimeObject* ours = from_handle<DateTimeObject>(time);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? make_string(ours->content().to_string()) : nullptr;
}

CMPIBoolean is_interval(const CMPIDateTime* time, CMPIStatus* rc) {
    DateTimeObject* ours = from_handle<DateTimeObject>(time);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr && ours->content().interval ? 1 : 0;
}

constexpr CMPIDateTimeFT TABLE = {CMPICurrentVersion,
                                  release_object<DateTimeObject, CMPIDateTime>,
                                  clone_object<DateTimeObject, CMPIDateTime>,
                                  get_binary_format,
                                  get_string_format,
                                  is_interval};

} // namespace

const CMPIDateTimeFT* FunctionTableOf<CMPIDateTime>::table() {
    return &TABLE;
}

} // namespace cimserver
