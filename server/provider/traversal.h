// What the server adds to a provider's traversal of associations.
//
// - A traversal that names no association class asks the provider once for each class that the association
//   table allows for the source, and merges the answers: an object that two classes lead to is returned once.
// - ResultClass, Role and ResultRole go to the provider, which is free to ignore them, and are applied to
// what it
//   returns. Without class declarations a ResultClass lets through the objects of exactly that class; one
//   that names a superclass lets through nothing.
// - Which roles two associated objects play is read off the association objects between them. The references
// of
//   the source tell; where they say nothing of a far end, that end's own references of the same class do (a
//   provider may know an association from one end only). An object whose role nothing tells does not pass a
//   filter by role.
#ifndef KESTO_SERVER_PROVIDER_TRAVERSAL_H
#define KESTO_SERVER_PROVIDER_TRAVERSAL_H

#include <functional>

#include "server/provider/association_table.h"
#include "server/provider/provider_calls.h"

namespace cimserver {

struct Traversal {
    const ProviderCalls& provider;
    const AssociationTable& associations;
    const CallContext& context;
    const ObjectPath& source;
};

Outcome traverse(const Traversal& traversal, const AssociatorFilter& filter,
                 const std::function<Outcome(const AssociatorFilter&, ResultSink&)>& ask, ResultSink& sink);
Outcome traverse(const Traversal& traversal, const ReferenceFilter& filter,
                 const std::function<Outcome(const ReferenceFilter&, ResultSink&)>& ask, ResultSink& sink);

} // namespace cimserver

#endif
