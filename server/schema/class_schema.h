// The classes of a namespace, with all that they inherit.
//
// Each declaration is completed when it is added: elements and qualifiers of the superclass are propagated
// into it, so that a question about a class is answered from its own record. A superclass has to be declared
// before its subclasses.
#ifndef KESTO_SERVER_SCHEMA_CLASS_SCHEMA_H
#define KESTO_SERVER_SCHEMA_CLASS_SCHEMA_H

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/model/cim_class.h"
#include "server/model/error.h"
#include "server/model/text.h"
#include "server/schema/mof_parser.h"

namespace cimserver {

class SchemaError : public Error {
  public:
    using Error::Error;
};

class ClassSchema : public MofReceiver {
  public:
    explicit ClassSchema(std::string nameSpace = {}) : nameSpace_(std::move(nameSpace)) {}

    ClassSchema(const ClassSchema&) = delete; // its parts point at each other
    ClassSchema& operator=(const ClassSchema&) = delete;
    ClassSchema(ClassSchema&&) = default;
    ClassSchema& operator=(ClassSchema&&) = default;
    ~ClassSchema() override = default;

    // A name that is declared already, a superclass or qualifier that is not, and elements that do not fit
    // what they override throw SchemaError.
    void declare(QualifierType declared) override;
    void declare(ClassDeclaration declared) override;
    const QualifierType* qualifier_type(std::string_view name) const override;
    const std::map<std::string, QualifierType, NameOrder>& qualifier_types() const { return qualifierTypes_; }

    // NULL for a class that is not declared.
    const ClassDeclaration* find(std::string_view className) const;

    // The class itself, or one below it. False for classes that are not declared.
    bool is_a(std::string_view className, std::string_view ancestor) const;

    // The property is a reference that objects of the class can stand in.
    bool is_end_for(const PropertyDeclaration& property, std::string_view className) const;

    // The classes below one, in the order of their declaration: all, or only those directly below. Those at
    // the top are below the class with the empty name.
    std::vector<const ClassDeclaration*> subclasses(std::string_view className, bool deep) const;

  private:
    void inherit(ClassDeclaration& declared) const;

    std::string nameSpace_;
    std::map<std::string, QualifierType, NameOrder> qualifierTypes_;
    std::map<std::string, ClassDeclaration, NameOrder> classes_;
    std::vector<const ClassDeclaration*> inOrder_;
};

} // namespace cimserver

#endif
