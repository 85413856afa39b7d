#include "tests/schema/observation.h"

#include <deque>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "emulator/control.h"
#include "tests/support/one_tunnel.h"

namespace schema_tests {

using test_support::Answer;
using test_support::Key;
using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::RecordingBroker;
using test_support::Set;
using test_support::Sets;

namespace {

CMPIType as_declared(CMPIType type) {
    return type == CMPI_chars ? CMPI_string : type;
}

TypedNames typed_names(const Sets& sets) {
    TypedNames names;
    for (const Set& set : sets) {
        names.emplace(set.name, as_declared(set.type));
    }
    return names;
}

NameSet classes_in(const Answer& answer) {
    NameSet classes;
    for (const RecordedInstance& instance : answer.instances) {
        if (instance.is_valid()) classes.insert(instance.class_name());
    }
    for (const RecordedPath& path : answer.paths) {
        if (path.is_valid()) classes.insert(path.class_name());
    }
    return classes;
}

// The keys of an object that was answered, for a request about it.
std::vector<Key> keys_of(RecordingBroker& broker, const RecordedPath& path) {
    std::vector<Key> keys;
    for (const Set& key : path.keys()) {
        if (const RecordedPath* end = key.value.path()) {
            keys.emplace_back(key.name,
                              broker.path(end->name_space(), end->class_name(), keys_of(broker, *end)));
        } else {
            keys.emplace_back(key.name, as_declared(key.type), key.value);
        }
    }
    return keys;
}

// Writes down what is answered, and keeps the paths that were not there before.
class Notes {
  public:
    explicit Notes(Observation& observation) : observation_(observation) {}

    std::optional<RecordedPath> next_path() {
        if (pending_.empty()) return std::nullopt;
        RecordedPath path = std::move(pending_.front());
        pending_.pop_front();
        return path;
    }

    void take(const Answer& answer) {
        for (const RecordedInstance& instance : answer.instances) {
            if (!instance.is_valid()) continue;
            observation_.properties[instance.class_name()].merge(typed_names(instance.sets()));
            note_ends(observation_.ends, instance.class_name(), instance.sets());
            for (const Set& set : instance.sets()) {
                if (set.value.path() != nullptr) take(*set.value.path());
            }
        }
        for (const RecordedPath& path : answer.paths) {
            take(path);
        }
    }

    void take_step(const std::string& association, const std::string& source, const Answer& answer) {
        for (const std::string& far : classes_in(answer)) {
            observation_.steps[association].emplace(source, far);
        }
        take(answer);
    }

    void take_source(const std::string& association, const std::string& source, const Answer& answer) {
        if (!classes_in(answer).empty()) observation_.sources[association].insert(source);
        take(answer);
    }

    void take_references(const std::string& association, const std::string& source, const Answer& answer) {
        for (const RecordedInstance& instance : answer.instances) {
            note_ends(observation_.referenced, instance.class_name(), instance.sets());
        }
        for (const RecordedPath& path : answer.paths) {
            note_ends(observation_.referenced, path.class_name(), path.keys());
        }
        take_source(association, source, answer);
    }

  private:
    void take(const RecordedPath& path) {
        if (!path.is_valid() || !seen_.insert(path.text()).second) return;
        observation_.keys[path.class_name()].insert(typed_names(path.keys()));
        note_ends(observation_.ends, path.class_name(), path.keys());
        pending_.push_back(path);
        for (const Set& key : path.keys()) {
            if (key.value.path() != nullptr) take(*key.value.path());
        }
    }

    static void note_ends(ByClass<std::set<Ends>>& all, const std::string& className, const Sets& sets) {
        Ends ends;
        for (const Set& set : sets) {
            if (set.value.path() != nullptr) ends[set.name] = set.value.path()->class_name();
        }
        if (!ends.empty()) all[className].insert(ends);
    }

    Observation& observation_;
    NameSet seen_;
    std::deque<RecordedPath> pending_;
};

} // namespace

ByClass<RegisteredClass> registered_classes() {
    std::ifstream list(PROJECT_FOLDER "/packaging/classes.txt");
    ByClass<RegisteredClass> classes;
    for (std::string line; std::getline(list, line);) {
        if (line.empty() || line.starts_with("#")) continue;
        std::istringstream words(line);
        std::string name;
        words >> name;
        for (std::string kind; words >> kind;) {
            if (kind == "instance") classes[name].instances = true;
            if (kind == "association") classes[name].associations = true;
        }
    }
    return classes;
}

const Observation& ObservedProvider::observed() {
    static std::optional<Observation> observation;
    if (observation) return *observation;
    observation.emplace();

    const ByClass<RegisteredClass> classes = registered_classes();
    const auto lookAtSwitch = [&] {
        Notes notes(*observation);
        for (const auto& [className, kinds] : classes) {
            notes.take(enumerate(className));
            notes.take(enumerate_names(className));
        }
        while (const std::optional<RecordedPath> path = notes.next_path()) {
            const std::string& source = path->class_name();
            const std::vector<Key> keys = keys_of(broker, *path);
            notes.take(get_instance(source, keys));
            for (const auto& [association, kinds] : classes) {
                if (!kinds.associations) continue;
                const char* asked = association.c_str();
                notes.take_references(association, source, references(source, keys, asked));
                notes.take_references(association, source, reference_names(source, keys, asked));
                const Answer far = associators(source, keys, asked);
                notes.take_source(association, source, far);
                notes.take_step(association, source, far);
                notes.take_step(association, source, associator_names(source, keys, asked));
                broker.clear_calls(); // of thousands of requests
                emulator::clear_calls();
            }
            broker.clear();
        }
    };
    one_tunnel::install();
    lookAtSwitch();
    emulator::load_builtin();
    lookAtSwitch();
    return *observation;
}

} // namespace schema_tests
