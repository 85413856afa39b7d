#include "tests/support/recording_broker.h"

#include <ostream>
#include <utility>

#include "emulator/control.h"
#include "tests/support/broker_calls.h"

namespace test_support {

Key::Key(std::string keyName, const char* text) : name(std::move(keyName)), type(CMPI_string), value(text) {}
Key::Key(std::string keyName, const std::string& text) : Key(std::move(keyName), text.c_str()) {}
Key::Key(std::string keyName, const CMPIObjectPath* path)
    : name(std::move(keyName)), type(CMPI_ref), value(snapshot(path)), reference(path) {}
Key::Key(std::string keyName, CMPIType keyType, const Value& keyValue)
    : name(std::move(keyName)), type(keyType), value(keyValue) {}

RecordingBroker::RecordingBroker() {
    broker_.hdl = this;
    broker_.bft = &BrokerCalls::BROKER_TABLE;
    broker_.eft = &BrokerCalls::MAKER_TABLE;
}

RecordingBroker::~RecordingBroker() = default;

void RecordingBroker::clear() {
    std::lock_guard guard(mutex_);
    objects_.clear();
    calls_.clear();
    made_.clear();
    faults_.clear();
    faultHit_ = false;
}

std::vector<Call> RecordingBroker::calls() const {
    std::lock_guard guard(mutex_);
    return calls_;
}

std::vector<std::string> RecordingBroker::call_texts() const {
    std::vector<std::string> texts;
    for (const Call& call : calls()) {
        texts.push_back(call.text);
    }
    return texts;
}

std::vector<std::string> RecordingBroker::call_texts(const std::string& function) const {
    std::vector<std::string> texts;
    for (const Call& call : calls()) {
        if (call.function() == function) texts.push_back(call.text);
    }
    return texts;
}

void RecordingBroker::clear_calls() {
    std::lock_guard guard(mutex_);
    calls_.clear();
}

RecordedInstance RecordingBroker::recorded(const CMPIInstance* instance) const {
    return snapshot(instance);
}

RecordedPath RecordingBroker::recorded(const CMPIObjectPath* path) const {
    return snapshot(path);
}

CMPIObjectPath* RecordingBroker::path(const std::string& nameSpace, const std::string& className,
                                      const std::vector<Key>& keys) {
    PathObject* made = BrokerCalls::make_path(*this, nameSpace, className);
    for (const Key& key : keys) {
        BrokerCalls::give_key(*made, key);
    }
    return made;
}

void RecordingBroker::fail_nth(Make what, std::size_t nth, Failure how) {
    std::lock_guard guard(mutex_);
    made_[what] = 0;
    faults_[what] = Fault{nth, how};
    faultHit_ = false;
}

void RecordingBroker::fail_every(Make what, Failure how) {
    fail_nth(what, 0, how);
}

void RecordingBroker::clear_faults() {
    std::lock_guard guard(mutex_);
    faults_.clear();
}

bool RecordingBroker::fault_hit() const {
    std::lock_guard guard(mutex_);
    return faultHit_;
}

std::size_t RecordingBroker::made(Make what) const {
    std::lock_guard guard(mutex_);
    const auto found = made_.find(what);
    return found == made_.end() ? 0 : found->second;
}

void RecordingBroker::log(const std::string& text) {
    const bool locked = emulator::lock_held();
    std::lock_guard guard(mutex_);
    calls_.push_back({text, locked});
}

RecordingBroker::Fate RecordingBroker::next_fate(Make what) {
    std::lock_guard guard(mutex_);
    const std::size_t number = ++made_[what];
    const auto fault = faults_.find(what);
    if (fault == faults_.end() || (fault->second.nth != 0 && fault->second.nth != number)) return Fate::Make;
    faultHit_ = true;
    return fault->second.how == Failure::Null ? Fate::Null : Fate::WithoutHandle;
}

std::ostream& operator<<(std::ostream& out, const Returned& returned) {
    if (returned.kind == Returned::Kind::Path) return out << result_text("path", returned.path);
    return out << result_text("instance", returned.instance);
}

RecordingResult::RecordingResult(RecordingBroker& broker) : state_(std::make_unique<State>()) {
    state_->hdl = state_.get();
    state_->ft = &BrokerCalls::RESULT_TABLE;
    state_->owner = &broker;
}

RecordingResult::~RecordingResult() = default;

const CMPIResult* RecordingResult::cmpi() const {
    return state_.get();
}

const std::vector<Returned>& RecordingResult::returned() const {
    return state_->returned;
}

std::vector<RecordedInstance> RecordingResult::instances() const {
    std::vector<RecordedInstance> instances;
    for (const Returned& returned : state_->returned) {
        if (returned.kind == Returned::Kind::Instance) instances.push_back(returned.instance);
    }
    return instances;
}

std::vector<RecordedPath> RecordingResult::paths() const {
    std::vector<RecordedPath> paths;
    for (const Returned& returned : state_->returned) {
        if (returned.kind == Returned::Kind::Path) paths.push_back(returned.path);
    }
    return paths;
}

std::size_t RecordingResult::done_calls() const {
    return state_->doneCalls;
}

} // namespace test_support
