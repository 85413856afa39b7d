// The platform services, declared so that this library exports those that its sources define. Every source
// that defines one includes this header instead of the platform's own.
#ifndef KESTO_EMULATOR_EXPORTED_SERVICES_H
#define KESTO_EMULATOR_EXPORTED_SERVICES_H

#include <cmpidt.h>
#include <cmpift.h>

#include "platform/platform_records.h"

#pragma GCC visibility push(default)
#include "platform/platform_services.h"
#pragma GCC visibility pop

#endif
