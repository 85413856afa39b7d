#include "server/provider/operations.h"

#include <cmpidt.h>

#include <algorithm>
#include <string>
#include <utility>

#include "server/model/cim_class.h"
#include "server/model/cim_model.h"
#include "server/model/text.h"
#include "server/model/types.h"
#include "server/provider/class_operations.h"
#include "server/provider/traversal.h"
#include "server/schema/naming.h"

namespace cimserver {

namespace {

// Passes on the first instance only.
class FirstInstance : public ResultSink {
  public:
    explicit FirstInstance(ResultSink& next) : next_(next) {}
    void deliver(const Instance& instance) override {
        if (!std::exchange(found, true)) next_.deliver(instance);
    }
    void deliver(const ObjectPath&) override {}
    bool found = false;

  private:
    ResultSink& next_;
};

// Passes on instances with the properties of a set alone. Providers need not honour the list they are given.
class Narrowed : public ResultSink {
  public:
    Narrowed(ResultSink& next, NameSet properties) : next_(next), properties_(std::move(properties)) {}
    void deliver(const Instance& instance) override {
        Instance narrowed = instance;
        narrowed.apply_filter(properties_);
        next_.deliver(narrowed);
    }
    void deliver(const ObjectPath& path) override { next_.deliver(path); }

  private:
    ResultSink& next_;
    NameSet properties_;
};

// Calls the provider of a class for the properties that count: all that are wanted, or only those that the
// class declares itself, or, of a subclass without its own properties, those of the class that the client
// named.
Outcome ask_for_properties(const ServedClass& candidate, const ClassSchema& schema,
                           const ClassDeclaration& named, const Request& request, ResultSink& sink) {
    const ClassDeclaration& own = *schema.find(candidate.name);
    if (!request.localOnly && (request.deepInheritance || &own == &named)) {
        return candidate.provider(request, sink);
    }
    std::vector<std::string> wanted;
    for (const PropertyDeclaration& property : own.properties) {
        const bool local = !request.localOnly || !property.propagated;
        const bool known = request.deepInheritance || named.property(property.name) != nullptr;
        const bool asked = !request.wanted || contains_name(*request.wanted, property.name);
        if (local && known && asked) wanted.push_back(property.name);
    }
    Narrowed narrowed(sink, NameSet(wanted.begin(), wanted.end()));
    Request limited = request;
    limited.wanted = std::move(wanted);
    return candidate.provider(limited, narrowed);
}

Outcome enumerate(const ServedNameSpace& served, const ClassDeclaration& named, const Request& request,
                  ResultSink& sink) {
    Outcome total;
    for (const ServedClass& candidate : served.classes) {
        if (!candidate.instances || !served.schema.is_a(candidate.name, named.name)) continue;
        Request one = request;
        // The class itself reaches the provider as the client spells it.
        if (!same_name(candidate.name, named.name)) one.target.className = candidate.name;
        total.follow_with(ask_for_properties(candidate, served.schema, named, one, sink));
        if (!total.ok()) break; // part of an answer would look like all of it
    }
    return total;
}

Outcome get_instance(const ServedClass& candidate, const ClassSchema& schema, Request request,
                     ResultSink& sink) {
    request.operation = Operation::GetInstance;
    FirstInstance first(sink);
    Outcome outcome = ask_for_properties(candidate, schema, *schema.find(candidate.name), request, first);
    if (outcome.ok() && !first.found) outcome.code = CMPI_RC_ERR_NOT_FOUND;
    return outcome;
}

// The value in the type that the key is declared with: clients that do not know the class guess it.
Value typed_key(const Value& given, const PropertyDeclaration& declared) {
    const bool isScalar = given.as_reference() == nullptr && !given.is_array() && !given.is_null();
    if (!isScalar || given.type == declared.type) return given;
    return parse_scalar(scalar_text(given), declared.type).value_or(given);
}

// The keys as the class declares them. A class with one key may be named by the bare value.
void declare_keys(ObjectPath& path, const ClassDeclaration& declared) {
    const bool isBare = path.keys.size() == 1 && path.keys.find("") != nullptr;
    NamedValues keys;
    for (const NamedValue& key : path.keys.all()) {
        const auto property =
            std::find_if(declared.properties.begin(), declared.properties.end(),
                         [&](const PropertyDeclaration& candidate) {
                             return is_key(candidate) && (isBare || same_name(candidate.name, key.name));
                         });
        const bool known = property != declared.properties.end();
        keys.set(known && isBare ? property->name : key.name,
                 known ? typed_key(key.value, *property) : key.value);
    }
    path.keys = std::move(keys);
}

// The path has both ends of the association. Keys beside the ends count where both paths have them.
bool names_association(const ObjectPath& path, const ObjectPath& association) {
    const auto& keys = association.keys.all();
    return may_be_same_object(path, association) &&
           std::all_of(keys.begin(), keys.end(), [&path](const NamedValue& key) {
               return key.value.as_reference() == nullptr || path.keys.find(key.name) != nullptr;
           });
}

// Passes on the associations that a path names.
class Named : public ResultSink {
  public:
    Named(ResultSink& next, const ClassSchema& schema, const ObjectPath& path)
        : next_(next), schema_(schema), path_(path) {}
    void deliver(const Instance& instance) override {
        if (names_association(path_, named_path(instance, schema_))) next_.deliver(instance);
    }
    void deliver(const ObjectPath&) override {}

  private:
    ResultSink& next_;
    const ClassSchema& schema_;
    const ObjectPath& path_;
};

// A provider may know an association as a reference of its ends only, and not by its own name. Ends are what
// the class declares as such: a client can put any number of other references into a path.
Outcome find_among_references(const ServedNameSpace& served, const ClassDeclaration& declared,
                              const Request& request, ResultSink& sink) {
    FirstInstance first(sink);
    Named named(first, served.schema, request.target);
    for (const PropertyDeclaration& property : declared.properties) {
        const NamedValue* key = property.type == CMPI_ref ? request.target.keys.find(property.name) : nullptr;
        const ObjectPath* end = key != nullptr ? key->value.as_reference() : nullptr;
        if (end == nullptr || first.found || served.schema.find(end->className) == nullptr) continue;
        Request references = request;
        references.operation = Operation::References;
        references.associationClass = request.target.className;
        references.target = *end;
        Outcome outcome = traverse(served, references, named);
        if (!outcome.ok()) return outcome;
    }
    return first.found ? Outcome{} : Outcome::error(CMPI_RC_ERR_NOT_FOUND);
}

Outcome perform_on_instance(const ServedNameSpace& served, const ClassDeclaration& declared, Request request,
                            ResultSink& sink) {
    declare_keys(request.target, declared);
    const ServedClass* candidate = served.find_instances(declared.name);
    const bool gets =
        request.operation == Operation::GetInstance || request.operation == Operation::GetProperty;
    Outcome outcome;
    if (candidate == nullptr) {
        outcome = Outcome::error(gets ? CMPI_RC_ERR_NOT_FOUND : CMPI_RC_ERR_NOT_SUPPORTED,
                                 "no provider serves instances of " + declared.name);
    } else if (gets) {
        outcome = get_instance(*candidate, served.schema, request, sink);
        if (outcome.code == CMPI_RC_ERR_NOT_FOUND && declared.is_association()) {
            const Outcome found = find_among_references(served, declared, request, sink);
            if (found.ok()) outcome = found;
        }
    } else {
        outcome = candidate->provider(request, sink);
    }
    if (outcome.code == CMPI_RC_ERR_NOT_FOUND && outcome.message.empty()) {
        outcome.message = "there is no instance " + request.target.to_string();
    }
    return outcome;
}

// For GetInstance and the like, enumerations, and the writing operations, in a namespace that is served.
Outcome perform_on_instances(const ServedNameSpace& served, const Request& request, ResultSink& sink) {
    const ClassDeclaration* declared = served.schema.find(request.target.className);
    if (declared == nullptr && request.operation == Operation::ExecQuery &&
        request.target.className.empty()) {
        return Outcome::error(CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED,
                              "only queries FROM a class reach a provider");
    }
    if (declared == nullptr) {
        return Outcome::error(CMPI_RC_ERR_INVALID_CLASS, "there is no class " + request.target.className);
    }
    switch (request.operation) {
        case Operation::EnumerateInstances:
        case Operation::EnumerateInstanceNames:
            return enumerate(served, *declared, request, sink);
        case Operation::GetProperty:
            for (const std::string& name : *request.wanted) {
                if (declared->property(name) != nullptr) continue;
                return Outcome::error(CMPI_RC_ERR_NO_SUCH_PROPERTY,
                                      declared->name + " has no property " + name);
            }
            break;
        default:
            break;
    }
    return perform_on_instance(served, *declared, request, sink);
}

// The classes that a traversal names must be there, and lead to something.
Outcome check_classes_of_traversal(const ClassSchema& schema, const Request& request) {
    const auto refuse = [](const std::string& why) {
        return Outcome::error(CMPI_RC_ERR_INVALID_PARAMETER, why);
    };
    if (schema.find(request.target.className) == nullptr) {
        return refuse("there is no class " + request.target.className);
    }
    if (request.associationClass) {
        const ClassDeclaration* association = schema.find(*request.associationClass);
        if (association == nullptr) return refuse("there is no class " + *request.associationClass);
        if (!association->is_association()) {
            return refuse(*request.associationClass + " is no association class");
        }
    }
    if (request.resultClass && schema.find(*request.resultClass) == nullptr) {
        return refuse("there is no class " + *request.resultClass);
    }
    return {};
}

Outcome perform_traversal(const ServedNameSpace& served, Request request, ResultSink& sink) {
    Outcome checked = check_classes_of_traversal(served.schema, request);
    if (!checked.ok()) return checked;
    if (request.ofClass) return traverse_classes(served.schema, request, sink);
    declare_keys(request.target, *served.schema.find(request.target.className));
    return traverse(served, request, sink);
}

} // namespace

const ServedNameSpace* Operations::find_name_space(std::string_view name) const {
    const auto found =
        std::find_if(nameSpaces_.begin(), nameSpaces_.end(),
                     [name](const ServedNameSpace& served) { return same_name(served.name, name); });
    return found != nameSpaces_.end() ? &*found : nullptr;
}

Outcome Operations::perform(const Request& request, ResultSink& sink) const {
    const std::string& name = request.target.nameSpace;
    const ServedNameSpace* served = name.empty() ? &nameSpaces_.front() : find_name_space(name);
    if (served == nullptr) {
        return Outcome::error(CMPI_RC_ERR_INVALID_NAMESPACE, "there is no namespace " + name);
    }
    switch (request.operation) {
        case Operation::Associators:
        case Operation::AssociatorNames:
        case Operation::References:
        case Operation::ReferenceNames:
            return perform_traversal(*served, request, sink);
        case Operation::GetClass:
        case Operation::EnumerateClasses:
        case Operation::EnumerateClassNames:
        case Operation::GetQualifier:
        case Operation::EnumerateQualifiers:
            return perform_class_operation(served->schema, request, sink);
        default:
            return perform_on_instances(*served, request, sink);
    }
}

} // namespace cimserver
