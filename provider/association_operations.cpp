// The four operations of the association interface. Each hands the request to the traversal that the
// catalogue has for the source object's class.
#include <cstdio>

#include "common/broker.h"
#include "common/trace.h"
#include "provider/catalogue.h"
#include "provider/provider.h"
#include "provider/provider_lock.h"
#include "provider/request_key.h"
#include "provider/status.h"

CMPIStatus FCIP_ReferenceNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                               const CMPIResult* result, const CMPIObjectPath* op, const char* resultClass,
                               const char* role) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    // Without a key the traversal runs all the same, with an empty one that names no instance.
    if (find_request_key(op, className, " \n", &key) == 0) std::puts("references names can't find key");
    const ProviderLock lock;
    if (ReferenceNamesFn* traverse = served_class(className).referenceNames; traverse != nullptr) {
        traverse(key.value, resultClass, role, result, name_space_of(op));
    }
    trace_exiting(__func__); // this operation alone traces its exit before it releases the lock
    return ok();
}

CMPIStatus FCIP_References(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                           const CMPIResult* result, const CMPIObjectPath* op, const char* resultClass,
                           const char* role, const char** properties) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    if (find_request_key(op, className, " \n", &key) == 0) std::puts("references can't find key");
    {
        const ProviderLock lock;
        if (ReferencesFn* traverse = served_class(className).references; traverse != nullptr) {
            traverse(key.value, resultClass, role, properties, result, name_space_of(op));
        }
    }
    trace_exiting(__func__);
    return ok();
}

CMPIStatus FCIP_AssociatorNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                                const CMPIResult* result, const CMPIObjectPath* op, const char* assocClass,
                                const char* resultClass, const char* role, const char* resultRole) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    if (find_request_key(op, className, "\n", &key) == 0) {
        std::puts("associator names can't find key");
        return invalid_key_name();
    }
    {
        const ProviderLock lock;
        if (AssociatorNamesFn* traverse = served_class(className).associatorNames; traverse != nullptr) {
            traverse(key.value, assocClass, resultClass, role, resultRole, result, name_space_of(op));
        }
    }
    trace_exiting(__func__);
    return ok();
}

CMPIStatus FCIP_Associators(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                            const CMPIResult* result, const CMPIObjectPath* op, const char* assocClass,
                            const char* resultClass, const char* role, const char* resultRole,
                            const char** properties) {
    trace_entering(__func__);
    const char* className = class_name_of(op);
    RequestKey key;
    if (find_request_key(op, className, "\n", &key) == 0) {
        std::puts("associators can't find key");
        return invalid_key_name();
    }
    {
        const ProviderLock lock;
        if (AssociatorsFn* traverse = served_class(className).associators; traverse != nullptr) {
            traverse(key.value, assocClass, resultClass, role, resultRole, properties, result,
                     name_space_of(op));
        }
    }
    trace_exiting(__func__);
    return ok();
}
