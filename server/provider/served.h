// What the server serves: namespaces, their classes, and which provider answers for each.
#ifndef KESTO_SERVER_PROVIDER_SERVED_H
#define KESTO_SERVER_PROVIDER_SERVED_H

#include <string>
#include <string_view>
#include <vector>

#include "server/model/perform.h"
#include "server/provider/registrations.h"
#include "server/schema/class_schema.h"

namespace cimserver {

// A class for which a provider is called.
struct ServedClass {
    std::string name;
    Perform provider;
    bool instances;
    bool associations;
};

struct ServedNameSpace {
    std::string name;
    ClassSchema schema;
    std::vector<ServedClass> classes; // in the order of their registration

    // NULL when no provider is registered for instances of the class itself.
    const ServedClass* find_instances(std::string_view className) const;
};

// The classes of one provider in one namespace. Throws RegistrationError for a class that is not declared.
void serve_registered(ServedNameSpace& nameSpace, const std::vector<Registration>& registrations,
                      const Perform& provider);

} // namespace cimserver

#endif
