// What the operations answer.
#ifndef KESTO_PROVIDER_STATUS_H
#define KESTO_PROVIDER_STATUS_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/broker.h"

inline CMPIStatus ok() {
    return {CMPI_RC_OK, nullptr};
}

inline CMPIStatus not_supported() {
    return {CMPI_RC_ERR_NOT_SUPPORTED, nullptr};
}

// A missing key shows in the message of a success alone.
inline CMPIStatus invalid_key_name() {
    return {CMPI_RC_OK, _broker->eft->newString(_broker, "invalid key name", nullptr)};
}

#endif
