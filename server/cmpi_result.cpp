// CMPIResult: hands over to the request's sink and releases.
#include "server/cmpi_values.h"
#include "server/result_sink.h"

namespace cimserver {

namespace {

// NULL, -1 and released objects are swallowed: a provider that passes on what it could not make means
// "nothing".
template <typename Object, typename Face>
CMPIStatus handOver(const CMPIResult* result, const Face* object) {
    ResultObject* ours = opened<ResultObject>(result);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    Object* returned = opened<Object>(object);
    if (!returned) {
        ++ours->content().ignored;
        return status(CMPI_RC_OK);
    }
    ++ours->content().delivered;
    if (ours->content().sink) ours->content().sink->deliver(returned->content());
    RequestPool::current().releaseHandedOver(returned);
    return status(CMPI_RC_OK);
}

CMPIStatus returnInstance(const CMPIResult* result, const CMPIInstance* instance) {
    return handOver<InstanceObject>(result, instance);
}

CMPIStatus returnObjectPath(const CMPIResult* result, const CMPIObjectPath* path) {
    return handOver<PathObject>(result, path);
}

CMPIStatus returnData(const CMPIResult* result, const CMPIValue* value, const CMPIType type) {
    ResultObject* ours = opened<ResultObject>(result);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (type == CMPI_instance && value) return returnInstance(result, value->inst);
    if (type == CMPI_ref && value) return returnObjectPath(result, value->ref);
    return status(CMPI_RC_ERR_NOT_SUPPORTED); // only methods return plain data, and none are served
}

CMPIStatus returnDone(const CMPIResult* result) {
    ResultObject* ours = opened<ResultObject>(result);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().done = true; // only noted: the answer is complete when the operation returns
    return status(CMPI_RC_OK);
}

CMPIStatus returnError(const CMPIResult* result, const CMPIError* error) {
    ResultObject* ours = opened<ResultObject>(result);
    ErrorObject* returned = opened<ErrorObject>(error);
    if (!ours || !returned) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().errorMessage = returned->content().message;
    return status(CMPI_RC_OK);
}

constexpr CMPIResultFT kTable = {CMPICurrentVersion,
                                 releaseObject<ResultObject, CMPIResult>,
                                 cloneObject<ResultObject, CMPIResult>,
                                 returnData,
                                 returnInstance,
                                 returnObjectPath,
                                 returnDone,
                                 returnError};

} // namespace

const CMPIResultFT* TableOf<CMPIResult>::table() {
    return &kTable;
}

} // namespace cimserver
