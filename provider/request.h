// What the operations of both interfaces read from a request, and what they answer.
#ifndef KESTO_PROVIDER_REQUEST_H
#define KESTO_PROVIDER_REQUEST_H

#include <cmpidt.h>
#include <cmpift.h>

#include "platform/platform_services.h"
#include "provider/provider.h"

// The characters of a string of the CIM server's, "" for none.
inline const char* text_of(const CMPIString* string) {
    const char* chars = string != nullptr ? string->ft->getCharPtr(string, nullptr) : nullptr;
    return chars != nullptr ? chars : "";
}

inline const char* class_name_of(const CMPIObjectPath* op) {
    return text_of(op->ft->getClassName(op, nullptr));
}
inline const char* name_space_of(const CMPIObjectPath* op) {
    return text_of(op->ft->getNameSpace(op, nullptr));
}

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
