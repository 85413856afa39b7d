// The schema as the embedded server reads it, and what the tests ask it.
#ifndef KESTO_TESTS_SCHEMA_SCHEMA_TEST_H
#define KESTO_TESTS_SCHEMA_SCHEMA_TEST_H

#include <string>
#include <string_view>
#include <vector>

#include "server/schema/class_schema.h"
#include "tests/schema/observation.h"

namespace schema_tests {

const cimserver::ClassSchema& schema();

// Our own classes, without the abstract ones that have no objects.
std::vector<const cimserver::ClassDeclaration*> concrete_classes();

// The class that declares the property, or overrides it last. Empty for a property that there is not.
std::string declaring_class(const cimserver::ClassDeclaration& declared, std::string_view property);
// The properties that our own classes declare or override, those of our own superclasses included.
std::vector<const cimserver::PropertyDeclaration*> own_properties(
    const cimserver::ClassDeclaration& declared);
TypedNames key_names(const cimserver::ClassDeclaration& declared);
// The references of an association, with the classes that can be there.
Ends declared_ends(const cimserver::ClassDeclaration& association);

// The class in the schema's spelling; the name as it is when there is no such class.
std::string declared_name(const std::string& className);
std::string type_text(CMPIType type);
// "Name string, TunnelID uint16".
std::string text_of(const TypedNames& names);

} // namespace schema_tests

#endif
