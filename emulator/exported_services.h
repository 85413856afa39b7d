// The platform services, declared so that the library exports what its sources define of them.
#ifndef KESTO_EMULATOR_EXPORTED_SERVICES_H
#define KESTO_EMULATOR_EXPORTED_SERVICES_H

#include <cmpidt.h>
#include <cmpift.h>

#include "platform/platform_records.h"

#pragma GCC visibility push(default)
#include "platform/platform_services.h"
#pragma GCC visibility pop

#endif
