// What the server adds to a provider's traversal of associations.
//
// - A traversal that names no association class asks the provider once for each class that the association
//   table allows for the source, and merges the answers: an object that two classes lead to is returned once.
// - ResultClass, Role and ResultRole go to the provider, which is free to ignore them, and are applied to its
//   results. Without class declarations a ResultClass lets through the objects of exactly that class; one
//   that names a superclass lets through nothing.
// - Which roles two associated objects play is read off the association objects between them. The references
//   of the source show it; where they say nothing of a far end, that end's own references of the same class
//   do (a provider may know an association from one end only). An object whose role nothing shows does not
//   pass a filter by role.
#ifndef KESTO_SERVER_PROVIDER_TRAVERSAL_H
#define KESTO_SERVER_PROVIDER_TRAVERSAL_H

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/provider/association_table.h"
#include "server/provider/provider.h"

namespace cimserver {

// Associators, AssociatorNames, References or ReferenceNames.
Outcome traverse(const Provider& provider, const AssociationTable& associations, const Request& request,
                 ResultSink& sink);

} // namespace cimserver

#endif
