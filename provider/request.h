// What the operations of both interfaces read from a request, and what they answer.
#ifndef KESTO_PROVIDER_REQUEST_H
#define KESTO_PROVIDER_REQUEST_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/broker.h"
#include "platform/platform_services.h"
#include "provider/provider.h"

inline CMPIStatus status_of(CMPIrc rc, CMPIString* message = nullptr) {
    return {rc, message};
}
inline CMPIStatus ok() {
    return status_of(CMPI_RC_OK);
}

// A missing key is told by the message of a success alone.
inline CMPIStatus invalid_key_name() {
    return status_of(CMPI_RC_OK, _broker->eft->newString(_broker, "invalid key name", nullptr));
}

// Runs the routed part of an operation under the provider lock. Nothing may fly out of it: there is a C
// caller behind, and the lock would stay taken.
template <typename Routed>
void with_provider_lock(Routed routed) noexcept {
    mutex_lock();
    routed();
    mutex_unlock();
}

#endif
