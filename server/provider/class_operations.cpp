#include "server/provider/class_operations.h"

#include <cmpidt.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "server/model/cim_class.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

Outcome unknown_class(CMPIrc code, const std::string& className) {
    return Outcome::error(code, "there is no class " + className);
}

Outcome delivered(std::size_t count) {
    Outcome outcome;
    outcome.delivered = static_cast<unsigned>(count);
    return outcome;
}

void deliver_name(const ClassDeclaration& declared, ResultSink& sink) {
    sink.deliver(ObjectPath{{}, declared.nameSpace, declared.name, {}});
}

Outcome get_class(const ClassSchema& schema, const Request& request, ResultSink& sink) {
    const ClassDeclaration* found = schema.find(request.target.className);
    if (found == nullptr) return unknown_class(CMPI_RC_ERR_NOT_FOUND, request.target.className);
    sink.deliver_class(*found);
    return delivered(1);
}

Outcome enumerate_classes(const ClassSchema& schema, const Request& request, ResultSink& sink) {
    const std::string& top = request.target.className;
    if (!top.empty() && schema.find(top) == nullptr) return unknown_class(CMPI_RC_ERR_INVALID_CLASS, top);
    const std::vector<const ClassDeclaration*> below = schema.subclasses(top, request.deepInheritance);
    for (const ClassDeclaration* declared : below) {
        if (request.operation == Operation::EnumerateClasses) {
            sink.deliver_class(*declared);
        } else {
            deliver_name(*declared, sink);
        }
    }
    return delivered(below.size());
}

Outcome get_qualifier(const ClassSchema& schema, const Request& request, ResultSink& sink) {
    const QualifierType* found = schema.qualifier_type(request.qualifier);
    if (found == nullptr) {
        return Outcome::error(CMPI_RC_ERR_NOT_FOUND, "there is no qualifier " + request.qualifier);
    }
    sink.deliver_qualifier(*found);
    return delivered(1);
}

bool allows(const std::optional<std::string>& role, const PropertyDeclaration& end) {
    return !role || same_name(*role, end.name);
}

// The classes at the other ends of an association in which the source can take part.
void add_far_ends(const ClassSchema& schema, const Request& request, const ClassDeclaration& association,
                  std::vector<const ClassDeclaration*>& found) {
    for (const PropertyDeclaration& near : association.properties) {
        if (!allows(request.role, near) || !schema.is_end_for(near, request.target.className)) continue;
        for (const PropertyDeclaration& far : association.properties) {
            const bool isEnd = far.type == CMPI_ref && &far != &near && allows(request.resultRole, far);
            const ClassDeclaration* end = isEnd ? schema.find(far.referencedClass) : nullptr;
            if (end == nullptr || (request.resultClass && !schema.is_a(end->name, *request.resultClass))) {
                continue;
            }
            if (std::find(found.begin(), found.end(), end) == found.end()) found.push_back(end);
        }
    }
}

bool has_end(const ClassSchema& schema, const Request& request, const ClassDeclaration& association) {
    return std::any_of(
        association.properties.begin(), association.properties.end(), [&](const PropertyDeclaration& end) {
            return allows(request.role, end) && schema.is_end_for(end, request.target.className);
        });
}

} // namespace

Outcome perform_class_operation(const ClassSchema& schema, const Request& request, ResultSink& sink) {
    switch (request.operation) {
        case Operation::GetClass:
            return get_class(schema, request, sink);
        case Operation::EnumerateClasses:
        case Operation::EnumerateClassNames:
            return enumerate_classes(schema, request, sink);
        case Operation::GetQualifier:
            return get_qualifier(schema, request, sink);
        case Operation::EnumerateQualifiers:
            for (const auto& entry : schema.qualifier_types()) {
                sink.deliver_qualifier(entry.second);
            }
            return delivered(schema.qualifier_types().size());
        default:
            return Outcome::error(CMPI_RC_ERR_NOT_SUPPORTED);
    }
}

Outcome traverse_classes(const ClassSchema& schema, const Request& request, ResultSink& sink) {
    const bool toFarEnds =
        request.operation == Operation::Associators || request.operation == Operation::AssociatorNames;
    std::vector<const ClassDeclaration*> found;
    for (const ClassDeclaration* association : schema.subclasses({}, true)) {
        const bool asked =
            !request.associationClass || schema.is_a(association->name, *request.associationClass);
        if (!asked || !association->is_association()) continue;
        if (toFarEnds) {
            add_far_ends(schema, request, *association, found);
        } else if (has_end(schema, request, *association)) {
            found.push_back(association);
        }
    }
    const bool names =
        request.operation == Operation::AssociatorNames || request.operation == Operation::ReferenceNames;
    for (const ClassDeclaration* declared : found) {
        if (names) {
            deliver_name(*declared, sink);
        } else {
            sink.deliver_class(*declared);
        }
    }
    return delivered(found.size());
}

} // namespace cimserver
