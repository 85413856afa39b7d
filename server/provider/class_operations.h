// The operations on classes and qualifiers, answered from the schema of a namespace.
#ifndef KESTO_SERVER_PROVIDER_CLASS_OPERATIONS_H
#define KESTO_SERVER_PROVIDER_CLASS_OPERATIONS_H

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/schema/class_schema.h"

namespace cimserver {

// GetClass, EnumerateClasses and EnumerateClassNames, GetQualifier and EnumerateQualifiers. Class names are
// delivered as paths without keys.
Outcome perform_class_operation(const ClassSchema& schema, const Request& request, ResultSink& sink);

// A traversal whose source is a class: the far ends that associations are declared to have, or the
// association classes themselves.
Outcome traverse_classes(const ClassSchema& schema, const Request& request, ResultSink& sink);

} // namespace cimserver

#endif
