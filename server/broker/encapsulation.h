// The broker's makers of objects, and its messages to the operator.
#ifndef KESTO_SERVER_BROKER_ENCAPSULATION_H
#define KESTO_SERVER_BROKER_ENCAPSULATION_H

#include <cmpidt.h>
#include <cmpift.h>

namespace cimserver {

const CMPIBrokerEncFT* broker_encapsulation();

} // namespace cimserver

#endif
