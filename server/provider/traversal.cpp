#include "server/provider/traversal.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "server/model/cim_model.h"
#include "server/model/naming.h"
#include "server/model/text.h"
#include "server/provider/provider_call.h"

namespace cimserver {

namespace {

// Passes each object on once.
class Distinct : public ResultSink {
  public:
    explicit Distinct(ResultSink& next) : next_(next) {}

    void deliver(const ObjectPath& path) override {
        if (is_new(path)) next_.deliver(path);
    }

    // An instance is known by its name; one that has none by everything it says.
    void deliver(const Instance& instance) override {
        const ObjectPath name = named_path(instance);
        if (name.keys.empty() ? is_new(instance) : is_new(name)) next_.deliver(instance);
    }

  private:
    bool is_new(const ObjectPath& path) {
        const auto same = [&path](const ObjectPath& seen) { return is_same_path(seen, path); };
        if (std::any_of(paths_.begin(), paths_.end(), same)) return false;
        paths_.push_back(path);
        return true;
    }

    bool is_new(const Instance& instance) {
        const auto same = [&instance](const Instance& seen) {
            return is_same_path(seen.path, instance.path) &&
                   same_properties(seen.properties, instance.properties);
        };
        if (std::any_of(nameless_.begin(), nameless_.end(), same)) return false;
        nameless_.push_back(instance);
        return true;
    }

    ResultSink& next_;
    std::vector<ObjectPath> paths_;
    std::vector<Instance> nameless_;
};

// Passes on the objects for which a test of their path holds.
class Passing : public ResultSink {
  public:
    using Test = std::function<bool(const ObjectPath&)>;
    Passing(ResultSink& next, Test test) : next_(next), test_(std::move(test)) {}
    void deliver(const ObjectPath& path) override {
        if (test_(path)) next_.deliver(path);
    }
    void deliver(const Instance& instance) override {
        if (test_(named_path(instance))) next_.deliver(instance);
    }

  private:
    ResultSink& next_;
    Test test_;
};

bool refers_to(const NamedValue& key, const std::optional<std::string>& role, const ObjectPath& object) {
    if (role && !same_name(key.name, *role)) return false;
    const ObjectPath* end = key.value.as_reference();
    return end != nullptr && may_be_same_object(*end, object);
}

// Finds out whether the source and a far end play the roles that a request for the associators of one
// association class asks for.
class Roles {
  public:
    Roles(const Provider& provider, const Request& request) : provider_(provider), request_(request) {}

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
        return std::any_of(farLinks.begin(), farLinks.end(), joins);
    }

  private:
    // The association objects of the class at one end, by their names, or else by the references they hold.
    std::vector<ObjectPath> links_of(const ObjectPath& end) const {
        Request links{.operation = Operation::ReferenceNames,
                      .context = request_.context,
                      .target = end,
                      .associationClass = request_.associationClass};
        Collector found;
        call_provider(provider_, links, found);
        if (!found.paths.empty()) return found.paths;
        links.operation = Operation::References;
        call_provider(provider_, links, found);
        for (const Instance& instance : found.instances) {
            found.paths.push_back(named_path(instance));
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

    const Provider& provider_;
    const Request& request_;
    std::optional<std::vector<ObjectPath>> sourceLinks_;
};

bool asks_for_far_ends(const Request& request) {
    return request.operation == Operation::Associators || request.operation == Operation::AssociatorNames;
}

// A far end passes the filter by class, an association object the filter by the source's role in it.
bool is_result(const Request& request, const ObjectPath& path) {
    if (asks_for_far_ends(request)) {
        return !request.resultClass || same_name(path.className, *request.resultClass);
    }
    const auto& ends = path.keys.all();
    return !request.role || std::any_of(ends.begin(), ends.end(), [&](const NamedValue& end) {
        return refers_to(end, request.role, request.target);
    });
}

// The provider is called again to learn the roles, so its results have to wait until its operation has
// returned.
Outcome ask_with_roles(const Provider& provider, const Request& request, ResultSink& sink) {
    Collector waiting;
    Outcome outcome = call_provider(provider, request, waiting);
    if (!outcome.ok()) return outcome;
    Roles roles(provider, request);
    Passing passing(sink, [&roles](const ObjectPath& path) { return roles.let_pass(path); });
    for (const ObjectPath& path : waiting.paths) {
        passing.deliver(path);
    }
    for (const Instance& instance : waiting.instances) {
        passing.deliver(instance);
    }
    return outcome;
}

// The association classes to ask the provider for. It is asked with none at all only where no table shows
// which ones there are.
std::vector<std::optional<std::string>> classes_to_ask(const AssociationTable& associations,
                                                       const Request& request) {
    if (request.associationClass || associations.empty()) return {request.associationClass};
    std::vector<std::optional<std::string>> classes;
    for (std::string& association : associations.from(request.target.className)) {
        classes.emplace_back(std::move(association));
    }
    return classes;
}

} // namespace

Outcome traverse(const Provider& provider, const AssociationTable& associations, const Request& request,
                 ResultSink& sink) {
    Distinct distinct(sink);
    Passing results(request.associationClass ? sink : distinct,
                    [&request](const ObjectPath& path) { return is_result(request, path); });
    const bool byRoles = asks_for_far_ends(request) && (request.role || request.resultRole);
    Outcome total;
    Request one = request;
    for (const auto& association : classes_to_ask(associations, request)) {
        one.associationClass = association;
        Outcome outcome =
            byRoles ? ask_with_roles(provider, one, results) : call_provider(provider, one, results);
        outcome.delivered += total.delivered;
        outcome.ignored += total.ignored;
        total = std::move(outcome);
        if (!total.ok()) break; // part of an answer would look like all of it
    }
    return total;
}

} // namespace cimserver
