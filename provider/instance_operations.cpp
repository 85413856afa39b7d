// The three read operations of the instance interface. What answers them stands in the catalogue.
#include <cstdio>

#include "common/broker.h"
#include "common/results.h"
#include "common/trace.h"
#include "provider/catalogue.h"
#include "provider/get_instance.h"
#include "provider/provider.h"
#include "provider/provider_lock.h"
#include "provider/request_key.h"
#include "provider/status.h"

CMPIStatus FCIP_EnumInstanceNames(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                                  const CMPIResult* result, const CMPIObjectPath* op) {
    const char* className = class_name_of(op);
    const char* nameSpace = name_space_of(op);
    const ProviderLock lock;
    const ServedClass& served = served_class(className);
    if (served.names != nullptr) served.names(className, result, nameSpace);
    return ok();
}

CMPIStatus FCIP_EnumInstances(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                              const CMPIResult* result, const CMPIObjectPath* op, const char** properties) {
    const char* className = class_name_of(op);
    const char* nameSpace = name_space_of(op);
    const ProviderLock lock;
    const ServedClass& served = served_class(className);
    if (served.instances != nullptr) served.instances(className, result, properties, nameSpace);
    return ok();
}

CMPIStatus FCIP_GetInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                            const CMPIObjectPath* op, const char** properties) {
    const char* className = class_name_of(op);
    const char* nameSpace = name_space_of(op);
    trace_entering(__func__);
    RequestKey key;
    if (find_request_key(op, className, "\n", &key) == 0) {
        std::puts("getInstance can't find key");
        return invalid_key_name();
    }
    const ProviderLock lock;
    get_instance(served_class(className).get, {op, className, nameSpace, key.value, properties, result});
    end_results(result);
    return ok();
}
