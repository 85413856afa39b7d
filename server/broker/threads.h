// The broker's threads and locks for providers: POSIX threads under the interface's handles.
#ifndef KESTO_SERVER_BROKER_THREADS_H
#define KESTO_SERVER_BROKER_THREADS_H

#include <cmpidt.h>
#include <cmpift.h>

namespace cimserver {

const CMPIBrokerExtFT* broker_threads();

} // namespace cimserver

#endif
