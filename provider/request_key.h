// The one key of a request's object path that identifies the instance asked for.
#ifndef KESTO_PROVIDER_REQUEST_KEY_H
#define KESTO_PROVIDER_REQUEST_KEY_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/export.h"

extern "C" {

// Names and values longer than 253 characters are cut.
struct RequestKey {
    char name[255];
    char value[255]; // empty when the key is missing or not a string
    CMPIData data;
};

// 1 when a key of this name may identify an instance of className, else 0. Letter case is ignored.
FCIP_API int is_valid_key_for_class(const char* className, const char* keyName);

// Finds the first key of op that is_valid_key_for_class accepts. 1 when found, else 0. A string key's value
// is copied out and traced on standard output; lineEnd is how the calling operation ends that line.
FCIP_API int find_request_key(const CMPIObjectPath* op, const char* className, const char* lineEnd,
                              RequestKey* key);

} // extern "C"

#endif
