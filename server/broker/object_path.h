// CMPIObjectPath.
#ifndef KESTO_SERVER_BROKER_OBJECT_PATH_H
#define KESTO_SERVER_BROKER_OBJECT_PATH_H

#include <cmpidt.h>
#include <cmpift.h>

#include "server/broker/encapsulated.h"
#include "server/model/cim_model.h"

namespace cimserver {

using PathObject = Encapsulated<CMPIObjectPath, ObjectPath>;

template <>
struct FunctionTableOf<CMPIObjectPath> {
    static const CMPIObjectPathFT* table();
};

CMPIObjectPath* make_path(ObjectPath path);

} // namespace cimserver

#endif
