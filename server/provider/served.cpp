#include "server/provider/served.h"

#include <algorithm>

#include "server/model/text.h"

namespace cimserver {

const ServedClass* ServedNameSpace::find_instances(std::string_view className) const {
    const auto found = std::find_if(classes.begin(), classes.end(), [className](const ServedClass& served) {
        return served.instances && same_name(served.name, className);
    });
    return found != classes.end() ? &*found : nullptr;
}

void serve_registered(ServedNameSpace& nameSpace, const std::vector<Registration>& registrations,
                      const Perform& provider) {
    for (const Registration& row : registrations) {
        if (nameSpace.schema.find(row.className) == nullptr) {
            throw RegistrationError("the registered class " + row.className +
                                    " is not declared in the schema");
        }
        nameSpace.classes.push_back({row.className, provider, row.instances, row.associations});
    }
}

} // namespace cimserver
