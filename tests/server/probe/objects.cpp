#include "tests/server/probe/objects.h"

#include <strings.h>

namespace probe {

const CMPIBroker* broker = nullptr;

const CMPIValue* chars(const char* text) {
    return reinterpret_cast<const CMPIValue*>(text);
}

const char* chars_of(const CMPIString* string) {
    return string->ft->getCharPtr(string, nullptr);
}

void set(const CMPIInstance* instance, const char* name, const char* text) {
    instance->ft->setProperty(instance, name, chars(text), CMPI_chars);
}

void set_number(const CMPIInstance* instance, const char* name, CMPIUint32 number) {
    CMPIValue value{};
    value.uint32 = number;
    instance->ft->setProperty(instance, name, &value, CMPI_uint32);
}

CMPIObjectPath* new_path(const char* className, const char* key, const char* value) {
    CMPIObjectPath* path = broker->eft->newObjectPath(broker, "root/cimv2", className, nullptr);
    if (key != nullptr) path->ft->addKey(path, key, chars(value), CMPI_chars);
    return path;
}

CMPIObjectPath* thing(const char* name) {
    return new_path("Probe_Thing", "Name", name);
}

CMPIInstance* new_thing(const char* name) {
    return new_instance(thing(name));
}

std::string class_of(const CMPIObjectPath* path) {
    return chars_of(path->ft->getClassName(path, nullptr));
}

bool is_a(const CMPIObjectPath* path, const char* className) {
    return strcasecmp(class_of(path).c_str(), className) == 0;
}

std::string key_of(const CMPIObjectPath* path, const char* key) {
    CMPIStatus status{};
    const CMPIData data = path->ft->getKey(path, key, &status);
    return status.rc == CMPI_RC_OK && data.type == CMPI_string
               ? data.value.string->ft->getCharPtr(data.value.string, nullptr)
               : "";
}

CMPIString* new_string(const char* text) {
    return broker->eft->newString(broker, text, nullptr);
}

CMPIInstance* new_instance(const CMPIObjectPath* path) {
    return broker->eft->newInstance(broker, path, nullptr);
}

void return_instance(const Asked& asked, const CMPIInstance* instance) {
    asked.result->ft->returnInstance(asked.result, instance);
}

void return_path(const Asked& asked, const CMPIObjectPath* path) {
    asked.result->ft->returnObjectPath(asked.result, path);
}

} // namespace probe
