// Factory functions, start-up, the static MI tables, and the operations that do no work.
#include <cstdio>

#include "common/broker.h"
#include "platform/platform_services.h"
#include "provider/provider.h"
#include "provider/provider_lock.h"
#include "provider/status.h"

namespace {

// Newer headers have further members; a table of version 100 leaves them out.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
const CMPIInstanceMIFT INSTANCE_TABLE = {
    100, // ftVersion
    100, // miVersion
    "instanceFCIPProvider",
    FCIP_Cleanup,
    FCIP_EnumInstanceNames,
    FCIP_EnumInstances,
    FCIP_GetInstance,
    FCIP_CreateInstance,
    FCIP_ModifyInstance,
    FCIP_DeleteInstance,
    FCIP_ExecQuery,
};

const CMPIAssociationMIFT ASSOCIATION_TABLE = {
    100, // ftVersion
    100, // miVersion
    "associationFCIPProvider",
    FCIP_AssociationCleanup,
    FCIP_Associators,
    FCIP_AssociatorNames,
    FCIP_References,
    FCIP_ReferenceNames,
};
#pragma GCC diagnostic pop

// Some CMPI headers point to the tables as if they could be written to.
CMPIInstanceMI instanceMI = {nullptr, const_cast<CMPIInstanceMIFT*>(&INSTANCE_TABLE)};
CMPIAssociationMI associationMI = {nullptr, const_cast<CMPIAssociationMIFT*>(&ASSOCIATION_TABLE)};

} // namespace

void initialize(void) {
    const ProviderLock lock;
    if (init_mts(&mts_q) < 0) {
        // The provider serves all the same: platform calls fail on their own and read as empty tables.
        std::puts("get_using_cmi done init mts response q with error");
    }
}

CMPIInstanceMI* FCIPProvider_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* /*context*/,
                                               CMPIStatus* /*status*/) {
    _broker = broker;
    initialize();
    return &instanceMI;
}

CMPIAssociationMI* FCIPProvider_Create_AssociationMI(const CMPIBroker* broker, const CMPIContext* /*context*/,
                                                     CMPIStatus* /*status*/) {
    _broker = broker;
    initialize();
    return &associationMI;
}

// The queue stays open for the life of the process, and the provider usable after a clean-up.
CMPIStatus FCIP_Cleanup(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, CMPIBoolean /*terminating*/) {
    return ok();
}

CMPIStatus FCIP_AssociationCleanup(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                                   CMPIBoolean /*terminating*/) {
    return ok();
}

CMPIStatus FCIP_CreateInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                               const CMPIResult* /*result*/, const CMPIObjectPath* /*op*/,
                               const CMPIInstance* /*instance*/) {
    return not_supported();
}

CMPIStatus FCIP_ModifyInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                               const CMPIResult* /*result*/, const CMPIObjectPath* /*op*/,
                               const CMPIInstance* /*instance*/, const char** /*properties*/) {
    return not_supported();
}

CMPIStatus FCIP_DeleteInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                               const CMPIResult* /*result*/, const CMPIObjectPath* /*op*/) {
    return not_supported();
}

CMPIStatus FCIP_ExecQuery(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/,
                          const CMPIResult* /*result*/, const CMPIObjectPath* /*op*/, const char* /*query*/,
                          const char* /*language*/) {
    return not_supported();
}
