// The one place where objects leave the library for the CIM server's result.
//
// A builder that fails yields NULL, and a few of them the value -1; walkers hand such values on as they come,
// and the result of the switch's own server tolerates them. Foreign servers crash on them: a library that is
// built for these keeps them back here.
#ifndef KESTO_COMMON_RESULTS_H
#define KESTO_COMMON_RESULTS_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "common/foreign_servers.h"

// What some builders return in place of an object.
template <typename Object>
Object* error_object() {
    return reinterpret_cast<Object*>(std::intptr_t{-1}); // NOLINT(performance-no-int-to-ptr)
}

// Whether a pointer stands for an object at all: neither NULL nor -1.
template <typename Object>
bool is_object(const Object* object) {
    return object != nullptr && reinterpret_cast<std::intptr_t>(object) != -1;
}

// Whether a path can be written to. The broker may make one without a handle, which cannot.
inline bool is_usable(const CMPIObjectPath* path) {
    return is_object(path) && path->hdl != nullptr;
}

inline void hand_over(const CMPIResult* result, const CMPIInstance* instance) {
    if (!FOR_FOREIGN_SERVERS || is_object(instance)) result->ft->returnInstance(result, instance);
}

inline void hand_over(const CMPIResult* result, const CMPIObjectPath* path) {
    if (!FOR_FOREIGN_SERVERS || is_object(path)) result->ft->returnObjectPath(result, path);
}

// The switch's own server closes the result of a single instance itself. OpenPegasus reads the value that a
// client asks for by GetProperty from a closed result only.
inline void end_results(const CMPIResult* result) {
    if (FOR_FOREIGN_SERVERS) result->ft->returnDone(result);
}

// Hands an object over only when it could be built.
template <typename Object>
void hand_over_built(const CMPIResult* result, const Object* object) {
    if (is_object(object)) hand_over(result, object);
}

#endif
