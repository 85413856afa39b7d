#include "server/broker/result.h"

#include "server/broker/error.h"
#include "server/broker/instance.h"
#include "server/broker/object_path.h"
#include "server/broker/request_pool.h"
#include "server/model/result_sink.h"

namespace cimserver {

namespace {

// NULL, -1 and released objects are swallowed: a provider that passes on what it could not make means
// "nothing".
template <typename Object, typename Handle>
CMPIStatus hand_over(const CMPIResult* result, const Handle* object) {
    ResultObject* ours = from_handle<ResultObject>(result);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    Object* returned = from_handle<Object>(object);
    if (!returned) {
        ++ours->content().ignored;
        return status(CMPI_RC_OK);
    }
    ++ours->content().delivered;
    if (ours->content().sink) ours->content().sink->deliver(returned->content());
    RequestPool::current().release_handed_over(returned);
    return status(CMPI_RC_OK);
}

CMPIStatus return_instance(const CMPIResult* result, const CMPIInstance* instance) {
    return hand_over<InstanceObject>(result, instance);
}

CMPIStatus return_object_path(const CMPIResult* result, const CMPIObjectPath* path) {
    return hand_over<PathObject>(result, path);
}

CMPIStatus return_data(const CMPIResult* result, const CMPIValue* value, const CMPIType type) {
    ResultObject* ours = from_handle<ResultObject>(result);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (type == CMPI_instance && value != nullptr) return return_instance(result, value->inst);
    if (type == CMPI_ref && value != nullptr) return return_object_path(result, value->ref);
    return status(CMPI_RC_ERR_NOT_SUPPORTED); // only methods return plain data, and none are served
}

CMPIStatus return_done(const CMPIResult* result) {
    ResultObject* ours = from_handle<ResultObject>(result);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    return status(CMPI_RC_OK);
}

CMPIStatus return_error(const CMPIResult* result, const CMPIError* error) {
    ResultObject* ours = from_handle<ResultObject>(result);
    ErrorObject* returned = from_handle<ErrorObject>(error);
    if (ours == nullptr || returned == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().errorMessage = returned->content().message;
    return status(CMPI_RC_OK);
}

constexpr CMPIResultFT TABLE = {CMPICurrentVersion,
                                release_object<ResultObject, CMPIResult>,
                                clone_object<ResultObject, CMPIResult>,
                                return_data,
                                return_instance,
                                return_object_path,
                                return_done,
                                return_error};

} // namespace

const CMPIResultFT* FunctionTableOf<CMPIResult>::table() {
    return &TABLE;
}

} // namespace cimserver
