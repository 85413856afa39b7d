// CMPIInstance.
#ifndef KESTO_SERVER_BROKER_INSTANCE_H
#define KESTO_SERVER_BROKER_INSTANCE_H

#include <cmpidt.h>
#include <cmpift.h>

#include "server/broker/encapsulated.h"
#include "server/model/cim_model.h"

namespace cimserver {

using InstanceObject = Encapsulated<CMPIInstance, Instance>;

template <>
struct FunctionTableOf<CMPIInstance> {
    static const CMPIInstanceFT* table();
};

CMPIInstance* make_instance(Instance instance);

} // namespace cimserver

#endif
