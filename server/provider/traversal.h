// What the server adds to a provider's traversal of associations.
//
// - The provider is asked once for each registered association class at or below the one that the client
//   names (or any, when it names none) in which the source's class is a declared end. The answers are merged:
//   an object that two classes lead to is returned once.
// - ResultClass, Role and ResultRole go to the provider, which is free to ignore them, and are applied to its
//   results.
// - Which roles two associated objects play is read off the association objects between them. The references
//   of the source show it; where they say nothing of a far end, that end's own references of the same class
//   do (a provider may know an association from one end only). Where neither mentions both, the roles in the
//   source's other association objects of the class count, or, when it has none, the declared ends.
#ifndef KESTO_SERVER_PROVIDER_TRAVERSAL_H
#define KESTO_SERVER_PROVIDER_TRAVERSAL_H

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/provider/served.h"

namespace cimserver {

// Associators, AssociatorNames, References or ReferenceNames of an instance. The classes that the request
// names are declared.
Outcome traverse(const ServedNameSpace& served, const Request& request, ResultSink& sink);

} // namespace cimserver

#endif
