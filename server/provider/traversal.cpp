#include "server/provider/traversal.h"

#include <algorithm>
#include <map>

#include "server/model/naming.h"
#include "server/model/text.h"

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
    return (end != nullptr) && may_be_same_object(*end, object);
}

// Tells whether the source and a far end play the roles that a client asks for in one association class.
class Roles {
  public:
    Roles(const Traversal& traversal, const AssociatorFilter& filter)
        : traversal_(traversal), filter_(filter) {}

    bool let_pass(const ObjectPath& farEnd) {
        const auto joins = [&](const ObjectPath& link) { return joins_in_roles(link, farEnd); };
        const auto mentions = [&](const ObjectPath& link) { return joins_at_all(link, farEnd); };
        if (!sourceLinks_) sourceLinks_ = links_of(traversal_.source);
        if (std::any_of(sourceLinks_->begin(), sourceLinks_->end(), joins)) return true;
        if (std::any_of(sourceLinks_->begin(), sourceLinks_->end(), mentions)) return false;
        const std::vector<ObjectPath> farLinks = links_of(farEnd);
        return std::any_of(farLinks.begin(), farLinks.end(), joins);
    }

  private:
    // The association objects of the class at one end, by their names, or else by the references they hold.
    std::vector<ObjectPath> links_of(const ObjectPath& end) const {
        const ReferenceFilter reference{filter_.associationClass, std::nullopt};
        Collector found;
        traversal_.provider.reference_names(traversal_.context, end, reference, found);
        if (!found.paths.empty()) return found.paths;
        traversal_.provider.references(traversal_.context, end, reference, std::nullopt, found);
        for (const Instance& instance : found.instances) {
            found.paths.push_back(named_path(instance));
        }
        return found.paths;
    }

    bool joins_in_roles(const ObjectPath& link, const ObjectPath& farEnd) const {
        return joins(link, filter_.role, farEnd, filter_.resultRole);
    }

    bool joins_at_all(const ObjectPath& link, const ObjectPath& farEnd) const {
        return joins(link, std::nullopt, farEnd, std::nullopt);
    }

    bool joins(const ObjectPath& link, const std::optional<std::string>& role, const ObjectPath& farEnd,
               const std::optional<std::string>& resultRole) const {
        const auto& keys = link.keys.all();
        return std::any_of(keys.begin(), keys.end(), [&](const NamedValue& near) {
            return refers_to(near, role, traversal_.source) &&
                   std::any_of(keys.begin(), keys.end(), [&](const NamedValue& far) {
                       return &far != &near && refers_to(far, resultRole, farEnd);
                   });
        });
    }

    const Traversal& traversal_;
    const AssociatorFilter& filter_;
    std::optional<std::vector<ObjectPath>> sourceLinks_;
};

// The association classes to ask the provider for. It is asked with none at all only where no table tells
// which ones there are.
std::vector<std::optional<std::string>> classes_to_ask(const Traversal& traversal,
                                                       const std::optional<std::string>& named) {
    if (named || traversal.associations.empty()) return {named};
    std::vector<std::optional<std::string>> classes;
    for (std::string& association : traversal.associations.from(traversal.source.className)) {
        classes.emplace_back(std::move(association));
    }
    return classes;
}

// Asks for each class in turn. The first error ends it: part of an answer would look like all of it.
template <typename Filter, typename AskOne>
Outcome ask_for_each(const Traversal& traversal, const Filter& filter, AskOne askOne) {
    Outcome total;
    for (const auto& association : classes_to_ask(traversal, filter.associationClass)) {
        Filter one = filter;
        one.associationClass = association;
        Outcome outcome = askOne(one);
        outcome.delivered += total.delivered;
        outcome.ignored += total.ignored;
        total = std::move(outcome);
        if (!total.ok()) break;
    }
    return total;
}

// The provider is called again to learn the roles, so its results have to wait until its operation has
// returned.
Outcome ask_with_roles(const Traversal& traversal, const AssociatorFilter& filter,
                       const std::function<Outcome(const AssociatorFilter&, ResultSink&)>& ask,
                       ResultSink& sink) {
    Collector waiting;
    Outcome outcome = ask(filter, waiting);
    if (!outcome.ok()) return outcome;
    Roles roles(traversal, filter);
    Passing passing(sink, [&roles](const ObjectPath& path) { return roles.let_pass(path); });
    for (const ObjectPath& path : waiting.paths) {
        passing.deliver(path);
    }
    for (const Instance& instance : waiting.instances) {
        passing.deliver(instance);
    }
    return outcome;
}

} // namespace

Outcome traverse(const Traversal& traversal, const AssociatorFilter& filter,
                 const std::function<Outcome(const AssociatorFilter&, ResultSink&)>& ask, ResultSink& sink) {
    Distinct distinct(sink);
    ResultSink& merged = filter.associationClass ? sink : distinct;
    Passing ofClass(merged, [&filter](const ObjectPath& path) {
        return !filter.resultClass || same_name(path.className, *filter.resultClass);
    });
    return ask_for_each(traversal, filter, [&](const AssociatorFilter& one) {
        return one.role || one.resultRole ? ask_with_roles(traversal, one, ask, ofClass) : ask(one, ofClass);
    });
}

Outcome traverse(const Traversal& traversal, const ReferenceFilter& filter,
                 const std::function<Outcome(const ReferenceFilter&, ResultSink&)>& ask, ResultSink& sink) {
    Distinct distinct(sink);
    ResultSink& merged = filter.associationClass ? sink : distinct;
    Passing inRole(merged, [&](const ObjectPath& association) {
        const auto& ends = association.keys.all();
        return !filter.role || std::any_of(ends.begin(), ends.end(), [&](const NamedValue& end) {
            return refers_to(end, filter.role, traversal.source);
        });
    });
    return ask_for_each(traversal, filter, [&](const ReferenceFilter& one) { return ask(one, inRole); });
}

} // namespace cimserver
