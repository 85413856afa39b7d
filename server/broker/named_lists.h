// CMPIArgs and CMPIContext: lists of named values of any type.
#ifndef KESTO_SERVER_BROKER_NAMED_LISTS_H
#define KESTO_SERVER_BROKER_NAMED_LISTS_H

#include <cmpidt.h>
#include <cmpift.h>

#include "server/broker/encapsulated.h"
#include "server/model/cim_model.h"

namespace cimserver {

struct ArgsContent {
    NamedValues arguments;
};

struct ContextContent {
    NamedValues entries;
};

using ArgsObject = Encapsulated<CMPIArgs, ArgsContent>;
using ContextObject = Encapsulated<CMPIContext, ContextContent>;

template <>
struct FunctionTableOf<CMPIArgs> {
    static const CMPIArgsFT* table();
};

template <>
struct FunctionTableOf<CMPIContext> {
    static const CMPIContextFT* table();
};

} // namespace cimserver

#endif
