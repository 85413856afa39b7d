// The broker's calls back into the server: a provider may ask for CIM objects just as a client does, and may
// attach threads of its own.
#ifndef KESTO_SERVER_BROKER_UPCALLS_H
#define KESTO_SERVER_BROKER_UPCALLS_H

#include <cmpidt.h>
#include <cmpift.h>

namespace cimserver {

const CMPIBrokerFT* broker_upcalls();

} // namespace cimserver

#endif
