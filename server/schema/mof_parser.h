// Reads MOF: qualifier and class declarations.
//
// What is written is taken as it stands; what it means together with the superclasses and the declarations of
// the qualifiers is the class schema's business (class_schema.h). Instances are not read, for all instances
// come from providers.
#ifndef KESTO_SERVER_SCHEMA_MOF_PARSER_H
#define KESTO_SERVER_SCHEMA_MOF_PARSER_H

#include <string>
#include <string_view>

#include "server/model/cim_class.h"
#include "server/schema/mof_tokens.h"

namespace cimserver {

// Where the parser hands each declaration, in the order of the text.
class MofReceiver {
  public:
    virtual ~MofReceiver() = default;
    virtual void declare(QualifierType declared) = 0;
    virtual void declare(ClassDeclaration declared) = 0;
    // Values and flavors of qualifiers in use depend on their declarations. NULL for an undeclared one.
    virtual const QualifierType* qualifier_type(std::string_view name) const = 0;
};

// Throws MofError, also for what the receiver throws as Error.
void parse_mof(std::string_view text, const std::string& file, MofReceiver& receiver);
// The same from a file. "#pragma include" names a file relative to the one that it stands in.
void parse_mof_file(const std::string& file, MofReceiver& receiver);

} // namespace cimserver

#endif
