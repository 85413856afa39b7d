// The CIM server's broker, and what the library reads from the server's strings and object paths.
#ifndef KESTO_COMMON_BROKER_H
#define KESTO_COMMON_BROKER_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/export.h"

extern "C" {

// The broker of the most recent factory call; everything the library creates is made through it.
FCIP_API extern const CMPIBroker* _broker;

} // extern "C"

// The characters of a string of the CIM server's, "" for none. They belong to the string.
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

#endif
