// The catalogue of the classes that requests may name: what each accepts as its key, and what answers each of
// the seven operations.
#ifndef KESTO_PROVIDER_CATALOGUE_H
#define KESTO_PROVIDER_CATALOGUE_H

#include <cmpidt.h>
#include <cmpift.h>

#include "include/associations.h"
#include "include/traversal.h"
#include "provider/get_instance.h"

using NameWalker = int(const char* className, const CMPIResult* result, const char* nameSpace);
using InstanceWalker = int(const char* className, const CMPIResult* result, const char** properties,
                           const char* nameSpace);

// In place of a key's name: the class accepts whatever key comes first.
inline constexpr char ANY_KEY[] = "*";

struct ServedClass {
    const char* className;
    const char* key = nullptr; // null: no key is accepted
    // Classes without a walker of their own go to the association walkers, which leave out what is no
    // association of theirs. Null: answered with nothing.
    NameWalker* names = get_all_binds_to_references;
    InstanceWalker* instances = get_all_binds_to_instances;
    GetWay get = {};
    // The traversals from an object of the class. Null: answered with nothing.
    AssociatorNamesFn* associatorNames = nullptr;
    AssociatorsFn* associators = nullptr;
    ReferenceNamesFn* referenceNames = nullptr;
    ReferencesFn* references = nullptr;
};

// The row of a class, whatever the case of its letters. A class that is not in the catalogue has the row of
// defaults.
const ServedClass& served_class(const char* className);

#endif
