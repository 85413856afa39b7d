#include "server/interop/fixed_objects.h"

#include <cmpidt.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

using Objects = std::vector<Instance>;

// The reference is to that object.
bool leads_to(const NamedValue& end, const ObjectPath& object) {
    const ObjectPath* target = end.value.as_reference();
    return target != nullptr && is_same_path(*target, object);
}

class Answer {
  public:
    Answer(const Objects& objects, const Request& request, ResultSink& sink)
        : objects_(objects), request_(request), sink_(sink) {}

    Outcome perform() {
        const ObjectPath& target = request_.target;
        switch (request_.operation) {
            case Operation::EnumerateInstances:
                deliver_if([&](const Instance& each) { return is_a(each, target.className); });
                break;
            case Operation::EnumerateInstanceNames:
                names_ = true;
                deliver_if([&](const Instance& each) { return is_a(each, target.className); });
                break;
            case Operation::GetInstance:
                deliver_if([&](const Instance& each) { return is_same_path(each.path, target); });
                break;
            case Operation::ReferenceNames:
                names_ = true;
                [[fallthrough]];
            case Operation::References:
                deliver_if([&](const Instance& each) { return is_link(each); });
                break;
            case Operation::AssociatorNames:
                names_ = true;
                [[fallthrough]];
            case Operation::Associators:
                deliver_if([&](const Instance& each) { return is_linked(each); });
                break;
            default:
                return Outcome::error(CMPI_RC_ERR_NOT_SUPPORTED, "the server's own objects can only be read");
        }
        return outcome_;
    }

  private:
    static bool is_a(const Instance& object, std::string_view className) {
        return same_name(object.path.className, className);
    }

    // An association object of the class in question, at the source.
    bool is_link(const Instance& object) const {
        const auto& ends = object.path.keys.all();
        return is_a(object, request_.associationClass.value_or("")) &&
               std::any_of(ends.begin(), ends.end(),
                           [this](const NamedValue& end) { return leads_to(end, request_.target); });
    }

    // An object that such an association object joins with the source.
    bool is_linked(const Instance& object) const {
        if (is_same_path(object.path, request_.target)) return false;
        return std::any_of(objects_.begin(), objects_.end(), [&](const Instance& link) {
            const auto& ends = link.path.keys.all();
            return is_link(link) && std::any_of(ends.begin(), ends.end(), [&object](const NamedValue& end) {
                       return leads_to(end, object.path);
                   });
        });
    }

    template <typename Test>
    void deliver_if(Test test) {
        for (const Instance& object : objects_) {
            if (!test(object)) continue;
            ++outcome_.delivered;
            if (names_) {
                sink_.deliver(object.path);
            } else {
                Instance wanted = object;
                wanted.apply_filter(name_set(request_.wanted));
                sink_.deliver(wanted);
            }
        }
    }

    const Objects& objects_;
    const Request& request_;
    ResultSink& sink_;
    bool names_ = false;
    Outcome outcome_;
};

} // namespace

Perform serve_fixed_objects(std::vector<Instance> objects) {
    return [kept = std::make_shared<const Objects>(std::move(objects))](
               const Request& request, ResultSink& sink) { return Answer(*kept, request, sink).perform(); };
}

} // namespace cimserver
