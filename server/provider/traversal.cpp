#include "server/provider/traversal.h"

#include <cmpidt.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/model/cim_class.h"
#include "server/model/cim_model.h"
#include "server/model/perform.h"
#include "server/model/text.h"
#include "server/schema/naming.h"

namespace cimserver {

namespace {

// The same text for all paths that name the same object with the same keys. Clients and providers leave the
// namespace out where it goes without saying.
void append_identity(std::string& text, const ObjectPath& path, std::string_view nameSpace);

void append_identity(std::string& text, const Value& value, std::string_view nameSpace) {
    if (const ObjectPath* target = value.as_reference()) {
        append_identity(text, *target, nameSpace);
        return;
    }
    const std::string plain = scalar_text(value);
    if (value.as_text() != nullptr) text += '\''; // the text "1" is not the number
    text.append(std::to_string(plain.size())).append(":").append(plain);
}

void append_identity(std::string& text, const NamedValues& values, std::string_view nameSpace) {
    std::map<std::string, const Value*> sorted;
    for (const NamedValue& entry : values.all()) {
        sorted.emplace(lower_cased(entry.name), &entry.value);
    }
    text += '(';
    for (const auto& [name, value] : sorted) {
        text.append(name).append("=");
        append_identity(text, *value, nameSpace);
    }
    text += ')';
}

void append_identity(std::string& text, const ObjectPath& path, std::string_view nameSpace) {
    text.append(lower_cased(path.nameSpace.empty() ? nameSpace : path.nameSpace)).append(":");
    text.append(lower_cased(path.className));
    append_identity(text, path.keys, nameSpace);
}

// Passes each object on once.
class Distinct : public ResultSink {
  public:
    Distinct(const ServedNameSpace& served, ResultSink& next) : served_(served), next_(next) {}

    void deliver(const ObjectPath& path) override {
        std::string identity;
        append_identity(identity, path, served_.name);
        if (seen_.insert(std::move(identity)).second) next_.deliver(path);
    }

    // An instance is known by its name; one that has none by everything it says.
    void deliver(const Instance& instance) override {
        const ObjectPath name = named_path(instance, served_.schema);
        std::string identity;
        append_identity(identity, name, served_.name);
        if (name.keys.empty()) append_identity(identity, instance.properties, served_.name);
        if (seen_.insert(std::move(identity)).second) next_.deliver(instance);
    }

  private:
    const ServedNameSpace& served_;
    ResultSink& next_;
    std::set<std::string> seen_;
};

// Passes on the objects for which a test of their path holds.
class Passing : public ResultSink {
  public:
    using Test = std::function<bool(const ObjectPath&)>;
    Passing(const ClassSchema& schema, ResultSink& next, Test test)
        : schema_(schema), next_(next), test_(std::move(test)) {}
    void deliver(const ObjectPath& path) override {
        if (test_(path)) next_.deliver(path);
    }
    void deliver(const Instance& instance) override {
        if (test_(named_path(instance, schema_))) next_.deliver(instance);
    }

  private:
    const ClassSchema& schema_;
    ResultSink& next_;
    Test test_;
};

bool is_role(const std::string& end, const std::optional<std::string>& asked) {
    return !asked || same_name(end, *asked);
}

bool refers_to(const NamedValue& key, const std::optional<std::string>& role, const ObjectPath& object) {
    if (!is_role(key.name, role)) return false;
    const ObjectPath* end = key.value.as_reference();
    return end != nullptr && may_be_same_object(*end, object);
}

// Finds out whether the source and a far end play the roles that a request for the associators of one
// association class asks for: by an association object that holds both; where the provider spells the far end
// otherwise in there, by the source's role in its association objects; where it has none, by the class.
class Roles {
  public:
    Roles(const ClassSchema& schema, const Perform& provider, const Request& request)
        : schema_(schema), provider_(provider), request_(request) {}

    bool let_pass(const ObjectPath& farEnd) {
        const auto joins = [&](const ObjectPath& link) {
            return joins_in(link, request_.role, farEnd, request_.resultRole);
        };
        const auto mentions = [&](const ObjectPath& link) {
            return joins_in(link, std::nullopt, farEnd, std::nullopt);
        };
        if (!sourceLinks_) sourceLinks_ = links_of(request_.target);
        if (std::any_of(sourceLinks_->begin(), sourceLinks_->end(), joins)) return true;
        if (std::any_of(sourceLinks_->begin(), sourceLinks_->end(), mentions)) return false;
        const std::vector<ObjectPath> farLinks = links_of(farEnd);
        if (std::any_of(farLinks.begin(), farLinks.end(), joins)) return true;
        if (std::any_of(farLinks.begin(), farLinks.end(), mentions)) return false;
        if (sourceLinks_->empty()) return are_declared();
        return std::any_of(sourceLinks_->begin(), sourceLinks_->end(),
                           [this](const ObjectPath& link) { return are_in(link); });
    }

  private:
    // Whether the source has its role in an association object, and another end the other.
    bool are_in(const ObjectPath& link) const {
        const auto& keys = link.keys.all();
        return std::any_of(keys.begin(), keys.end(), [&](const NamedValue& near) {
            return refers_to(near, request_.role, request_.target) &&
                   std::any_of(keys.begin(), keys.end(), [&](const NamedValue& far) {
                       return &far != &near && far.value.as_reference() != nullptr &&
                              is_role(far.name, request_.resultRole);
                   });
        });
    }

    bool are_declared() const {
        const auto& ends = schema_.find(*request_.associationClass)->properties;
        return std::any_of(ends.begin(), ends.end(), [&](const PropertyDeclaration& near) {
            return is_role(near.name, request_.role) && schema_.is_end_for(near, request_.target.className) &&
                   std::any_of(ends.begin(), ends.end(), [&](const PropertyDeclaration& far) {
                       return &far != &near && far.type == CMPI_ref && is_role(far.name, request_.resultRole);
                   });
        });
    }

    // The association objects of the class at one end, by their names, or else by the references they hold.
    std::vector<ObjectPath> links_of(const ObjectPath& end) const {
        Request links{.operation = Operation::ReferenceNames,
                      .context = request_.context,
                      .target = end,
                      .associationClass = request_.associationClass};
        Collector found;
        provider_(links, found);
        if (!found.paths.empty()) return found.paths;
        links.operation = Operation::References;
        provider_(links, found);
        for (const Instance& instance : found.instances) {
            found.paths.push_back(named_path(instance, schema_));
        }
        return found.paths;
    }

    bool joins_in(const ObjectPath& link, const std::optional<std::string>& role, const ObjectPath& farEnd,
                  const std::optional<std::string>& resultRole) const {
        const auto& keys = link.keys.all();
        return std::any_of(keys.begin(), keys.end(), [&](const NamedValue& near) {
            return refers_to(near, role, request_.target) &&
                   std::any_of(keys.begin(), keys.end(), [&](const NamedValue& far) {
                       return &far != &near && refers_to(far, resultRole, farEnd);
                   });
        });
    }

    const ClassSchema& schema_;
    const Perform& provider_;
    const Request& request_;
    std::optional<std::vector<ObjectPath>> sourceLinks_;
};

bool asks_for_far_ends(const Request& request) {
    return request.operation == Operation::Associators || request.operation == Operation::AssociatorNames;
}

// A far end passes the filter by class, an association object the filter by the source's role in it.
bool is_result(const ClassSchema& schema, const Request& request, const ObjectPath& path) {
    if (asks_for_far_ends(request)) {
        return !request.resultClass || schema.is_a(path.className, *request.resultClass);
    }
    const auto& ends = path.keys.all();
    return !request.role || std::any_of(ends.begin(), ends.end(), [&](const NamedValue& end) {
        return refers_to(end, request.role, request.target);
    });
}

// The provider is called again to learn the roles, so its results have to wait until its operation has
// returned.
Outcome ask_with_roles(const ClassSchema& schema, const Perform& provider, const Request& request,
                       ResultSink& sink) {
    Collector waiting;
    Outcome outcome = provider(request, waiting);
    if (!outcome.ok()) return outcome;
    Roles roles(schema, provider, request);
    Passing passing(schema, sink, [&roles](const ObjectPath& path) { return roles.let_pass(path); });
    for (const ObjectPath& path : waiting.paths) {
        passing.deliver(path);
    }
    for (const Instance& instance : waiting.instances) {
        passing.deliver(instance);
    }
    return outcome;
}

// Whether the source can take part in the association, as its class is declared.
bool is_end(const ClassSchema& schema, const std::string& association, const std::string& source) {
    const ClassDeclaration* declared = schema.find(association);
    return std::any_of(declared->properties.begin(), declared->properties.end(),
                       [&](const PropertyDeclaration& end) { return schema.is_end_for(end, source); });
}

} // namespace

Outcome traverse(const ServedNameSpace& served, const Request& request, ResultSink& sink) {
    const ClassSchema& schema = served.schema;
    Distinct distinct(served, sink);
    Passing results(schema, distinct,
                    [&](const ObjectPath& path) { return is_result(schema, request, path); });
    const bool byRoles = asks_for_far_ends(request) && (request.role || request.resultRole);
    Outcome total;
    Request one = request;
    for (const ServedClass& candidate : served.classes) {
        const bool named =
            !request.associationClass || schema.is_a(candidate.name, *request.associationClass);
        if (!candidate.associations || !named) continue;
        if (!is_end(schema, candidate.name, request.target.className)) continue;
        // The class itself reaches the provider as the client spells it.
        const bool itself = request.associationClass && same_name(candidate.name, *request.associationClass);
        one.associationClass = itself ? *request.associationClass : candidate.name;
        total.follow_with(byRoles ? ask_with_roles(schema, candidate.provider, one, results)
                                  : candidate.provider(one, results));
        if (!total.ok()) break; // part of an answer would look like all of it
    }
    return total;
}

} // namespace cimserver
