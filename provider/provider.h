// The CMPI boundary of the provider FCIPProvider: the two factory functions that a CIM server looks up, and
// the operations of their function tables.
//
// The library is stateless but for _broker. Every operation that reaches the platform takes the platform's
// process-wide lock once, after it has found the request's key, and releases it on its only way out.
#ifndef KESTO_PROVIDER_PROVIDER_H
#define KESTO_PROVIDER_PROVIDER_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/broker.h"
#include "common/export.h"

extern "C" {

// Each stores the broker, opens the reply queue and returns the address of a static MI. The context is not
// used and the status is left untouched: a factory never fails.
FCIP_API CMPIInstanceMI* FCIPProvider_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* context,
                                                        CMPIStatus* status);
FCIP_API CMPIAssociationMI* FCIPProvider_Create_AssociationMI(const CMPIBroker* broker,
                                                              const CMPIContext* context, CMPIStatus* status);

// Opens the platform's reply queue (mts_q) under the provider lock. Runs once for each factory call.
FCIP_API void initialize(void);

// Instance interface.
FCIP_API CMPIStatus FCIP_Cleanup(CMPIInstanceMI* mi, const CMPIContext* context, CMPIBoolean terminating);
FCIP_API CMPIStatus FCIP_EnumInstanceNames(CMPIInstanceMI* mi, const CMPIContext* context,
                                           const CMPIResult* result, const CMPIObjectPath* op);
FCIP_API CMPIStatus FCIP_EnumInstances(CMPIInstanceMI* mi, const CMPIContext* context,
                                       const CMPIResult* result, const CMPIObjectPath* op,
                                       const char** properties);
FCIP_API CMPIStatus FCIP_GetInstance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                     const CMPIObjectPath* op, const char** properties);
FCIP_API CMPIStatus FCIP_CreateInstance(CMPIInstanceMI* mi, const CMPIContext* context,
                                        const CMPIResult* result, const CMPIObjectPath* op,
                                        const CMPIInstance* instance);
FCIP_API CMPIStatus FCIP_ModifyInstance(CMPIInstanceMI* mi, const CMPIContext* context,
                                        const CMPIResult* result, const CMPIObjectPath* op,
                                        const CMPIInstance* instance, const char** properties);
FCIP_API CMPIStatus FCIP_DeleteInstance(CMPIInstanceMI* mi, const CMPIContext* context,
                                        const CMPIResult* result, const CMPIObjectPath* op);
FCIP_API CMPIStatus FCIP_ExecQuery(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                   const CMPIObjectPath* op, const char* query, const char* language);

// Association interface. In the two reference operations resultClass names the association class wanted.
FCIP_API CMPIStatus FCIP_AssociationCleanup(CMPIAssociationMI* mi, const CMPIContext* context,
                                            CMPIBoolean terminating);
FCIP_API CMPIStatus FCIP_Associators(CMPIAssociationMI* mi, const CMPIContext* context,
                                     const CMPIResult* result, const CMPIObjectPath* op,
                                     const char* assocClass, const char* resultClass, const char* role,
                                     const char* resultRole, const char** properties);
FCIP_API CMPIStatus FCIP_AssociatorNames(CMPIAssociationMI* mi, const CMPIContext* context,
                                         const CMPIResult* result, const CMPIObjectPath* op,
                                         const char* assocClass, const char* resultClass, const char* role,
                                         const char* resultRole);
FCIP_API CMPIStatus FCIP_References(CMPIAssociationMI* mi, const CMPIContext* context,
                                    const CMPIResult* result, const CMPIObjectPath* op,
                                    const char* resultClass, const char* role, const char** properties);
FCIP_API CMPIStatus FCIP_ReferenceNames(CMPIAssociationMI* mi, const CMPIContext* context,
                                        const CMPIResult* result, const CMPIObjectPath* op,
                                        const char* resultClass, const char* role);

} // extern "C"

#endif
