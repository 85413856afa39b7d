// What the parts of the probe provider share: the request at hand, and the objects that it is answered with.
#ifndef KESTO_TESTS_SERVER_PROBE_OBJECTS_H
#define KESTO_TESTS_SERVER_PROBE_OBJECTS_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>
#include <string>

namespace probe {

extern const CMPIBroker* broker;

// What a request's functions get: where to return to, and what was asked.
struct Asked {
    const CMPIContext* context;
    const CMPIResult* result;
    const CMPIObjectPath* path;
    const char** properties;
};

const CMPIValue* chars(const char* text);
const char* chars_of(const CMPIString* string);
CMPIString* new_string(const char* text);
void set(const CMPIInstance* instance, const char* name, const char* text);
void set_number(const CMPIInstance* instance, const char* name, CMPIUint32 number);

CMPIObjectPath* new_path(const char* className, const char* key = nullptr, const char* value = nullptr);
CMPIObjectPath* thing(const char* name); // of the class Probe_Thing
CMPIInstance* new_thing(const char* name);
CMPIInstance* new_instance(const CMPIObjectPath* path);
void return_instance(const Asked& asked, const CMPIInstance* instance);
void return_path(const Asked& asked, const CMPIObjectPath* path);

std::string class_of(const CMPIObjectPath* path);
bool is_a(const CMPIObjectPath* path, const char* className);
std::string key_of(const CMPIObjectPath* path, const char* key); // empty when it has none

template <typename Object>
Object* minus_one() {
    return reinterpret_cast<Object*>(std::intptr_t{-1}); // NOLINT(performance-no-int-to-ptr)
}

inline CMPIStatus ok() {
    return {CMPI_RC_OK, nullptr};
}

} // namespace probe

#endif
