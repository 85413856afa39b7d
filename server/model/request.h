// One CIM operation as it passes through the server, and how it ended.
//
// A client's request in CIM-XML and a provider's call back through the broker become the same record, which
// goes down to the provider as it is. An operation uses the fields that mean something to it.
#ifndef KESTO_SERVER_MODEL_REQUEST_H
#define KESTO_SERVER_MODEL_REQUEST_H

#include <cmpidt.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "server/model/cim_model.h"
#include "server/model/text.h"

namespace cimserver {

enum class Operation {
    EnumerateInstances,
    EnumerateInstanceNames,
    GetInstance,
    CreateInstance,
    ModifyInstance,
    DeleteInstance,
    ExecQuery,
    Associators,
    AssociatorNames,
    References,
    ReferenceNames,
    // What the server answers from the classes that it knows, without a provider.
    GetProperty,
    GetClass,
    EnumerateClasses,
    EnumerateClassNames,
    GetQualifier,
    EnumerateQualifiers,
};

// The properties that are wanted; without a list, all of them.
using PropertyNames = std::optional<std::vector<std::string>>;

inline std::optional<NameSet> name_set(const PropertyNames& names) {
    return names ? std::optional(NameSet(names->begin(), names->end())) : std::nullopt;
}

struct Request {
    Operation operation{};
    NamedValues context{}; // the entries of the CMPIContext that the provider is called with
    ObjectPath target{};   // the class, the instance, or the source of a traversal
    bool ofClass = false;  // the source of a traversal is the class itself, not an instance
    PropertyNames wanted{};
    bool localOnly = false;      // only what the class itself declares
    bool deepInheritance = true; // subclasses with all their properties, or at any depth
    bool includeQualifiers = false;
    bool includeClassOrigin = false;
    Instance instance{}; // to create or to modify; its path is the target

    // Of traversals. References know the association class (which CMPI calls their result class) and the
    // role.
    std::optional<std::string> associationClass{}, resultClass{}, role{}, resultRole{};

    std::string query{}, queryLanguage{};
    std::string qualifier{}; // the name of the one to get
};

struct Outcome {
    CMPIrc code = CMPI_RC_OK;
    std::string message;
    unsigned delivered = 0;
    unsigned ignored = 0; // objects that were none, see ResultContent

    bool ok() const { return code == CMPI_RC_OK; }
    // What has been asked next came out like that: its result counts, and the objects of both.
    void follow_with(Outcome next) {
        next.delivered += delivered;
        next.ignored += ignored;
        *this = std::move(next);
    }
    static Outcome error(CMPIrc code, std::string message = {}) { return {code, std::move(message), 0, 0}; }
};

} // namespace cimserver

#endif
