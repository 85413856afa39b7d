// The broker's memory for providers. All of it belongs to the current pool, whoever frees it.
#ifndef KESTO_SERVER_BROKER_MEMORY_H
#define KESTO_SERVER_BROKER_MEMORY_H

#include <cmpidt.h>
#include <cmpift.h>

namespace cimserver {

const CMPIBrokerMemFT* broker_memory();

} // namespace cimserver

#endif
