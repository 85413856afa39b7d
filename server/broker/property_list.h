// CMPIPropertyList, and the plain lists of names that the interface passes as well.
#ifndef KESTO_SERVER_BROKER_PROPERTY_LIST_H
#define KESTO_SERVER_BROKER_PROPERTY_LIST_H

#include <cmpidt.h>
#include <cmpift.h>

#include <string>
#include <vector>

#include "server/broker/encapsulated.h"

namespace cimserver {

struct PropertyListContent {
    bool everything = false; // made from no list at all
    std::vector<std::string> names;
    std::vector<const char*> pointers; // to the names, closed by NULL

    explicit PropertyListContent(const char** properties);
    PropertyListContent(const PropertyListContent& other);
    PropertyListContent(PropertyListContent&& other) noexcept = default;
    PropertyListContent& operator=(const PropertyListContent&) = delete;
    ~PropertyListContent() = default;
};

using PropertyListObject = Encapsulated<CMPIPropertyList, PropertyListContent>;

template <>
struct FunctionTableOf<CMPIPropertyList> {
    static const CMPIPropertyListFT* table();
};

// A list of names closed by NULL; no list has no names.
std::vector<std::string> names_from(const char** names);
std::vector<const char*> pointers_to(const std::vector<std::string>& names);

} // namespace cimserver

#endif
