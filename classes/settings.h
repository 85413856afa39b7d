// The object path that the three settings classes have in common.
#ifndef KESTO_CLASSES_SETTINGS_H
#define KESTO_CLASSES_SETTINGS_H

#include <cmpidt.h>
#include <cmpift.h>

#include "platform/platform_records.h"

// A path with the one key InstanceID, the if-index of the link's FCIP interface. function is the filler's
// name, for its traces.
CMPIObjectPath* fill_settings_reference(const char* function, const char* className, const char* nameSpace,
                                        const FcipLinkEntry* link);

#endif
