// CMPIString.
#ifndef KESTO_SERVER_BROKER_STRING_H
#define KESTO_SERVER_BROKER_STRING_H

#include <cmpidt.h>
#include <cmpift.h>

#include <string>

#include "server/broker/encapsulated.h"

namespace cimserver {

struct StringContent {
    std::string text;
};

using StringObject = Encapsulated<CMPIString, StringContent>;

template <>
struct FunctionTableOf<CMPIString> {
    static const CMPIStringFT* table();
};

CMPIString* make_string(std::string text);

// A CMPIString's text; empty for no string.
std::string text_of(const CMPIString* string);

} // namespace cimserver

#endif
