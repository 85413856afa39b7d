// The calls on strings, object paths, instances and results: each is written down, then done.
#include "tests/support/broker_calls.h"

#include <strings.h>

#include <ostream>
#include <sstream>
#include <utility>

namespace test_support {

namespace {

constexpr CMPIStatus OK{CMPI_RC_OK, nullptr};
constexpr CMPIStatus FAILED{CMPI_RC_ERR_FAILED, nullptr};
constexpr CMPIStatus INVALID_HANDLE{CMPI_RC_ERR_INVALID_HANDLE, nullptr};

void set_status(CMPIStatus* out, CMPIStatus status) {
    if (out != nullptr) *out = status;
}

template <typename Print>
std::string printed(Print&& print) {
    std::ostringstream out;
    print(out);
    return out.str();
}

} // namespace

RecordingBroker& BrokerCalls::owner(const CMPIBroker* mb) {
    return *static_cast<RecordingBroker*>(const_cast<void*>(mb->hdl));
}

// Strings.

CMPIString* BrokerCalls::make_string(RecordingBroker& broker, const std::string& text) {
    auto* made = broker.keep<StringObject>();
    made->hdl = made;
    made->ft = &STRING_TABLE;
    made->owner = &broker;
    made->text = text;
    return made;
}

CMPIString* BrokerCalls::new_string(const CMPIBroker* mb, const char* text, CMPIStatus* rc) {
    RecordingBroker& broker = owner(mb);
    broker.log(printed([&](std::ostream& out) { out << "newString " << Value(text); }));
    const auto fate = broker.next_fate(Make::String);
    set_status(rc, fate == RecordingBroker::Fate::Null ? FAILED : OK);
    if (fate == RecordingBroker::Fate::Null) return nullptr;
    CMPIString* made = make_string(broker, text != nullptr ? text : "");
    if (fate == RecordingBroker::Fate::WithoutHandle) made->hdl = nullptr;
    return made;
}

const char* BrokerCalls::get_char_ptr(const CMPIString* string, CMPIStatus* rc) {
    const auto& self = *static_cast<const StringObject*>(string);
    set_status(rc, OK);
    if (!usable(self, "getCharPtr")) return nullptr;
    self.owner->log("getCharPtr");
    return self.text.c_str();
}

CMPIStatus BrokerCalls::release_string(CMPIString* string) {
    auto& self = *static_cast<StringObject*>(string);
    if (!usable(self, "release")) return INVALID_HANDLE;
    self.owner->log("releaseString");
    self.released = true;
    return OK;
}

// Object paths.

PathObject* BrokerCalls::make_path(RecordingBroker& broker, const std::string& nameSpace,
                                   const std::string& className) {
    auto* made = broker.keep<PathObject>();
    made->hdl = made;
    made->ft = &PATH_TABLE;
    made->owner = &broker;
    made->record = RecordedPath(nameSpace, className);
    return made;
}

CMPIObjectPath* BrokerCalls::new_object_path(const CMPIBroker* mb, const char* nameSpace,
                                             const char* className, CMPIStatus* rc) {
    RecordingBroker& broker = owner(mb);
    broker.log(std::string("newObjectPath ") + (nameSpace != nullptr ? nameSpace : "NULL") + ' ' +
               (className != nullptr ? className : "NULL"));
    const auto fate = broker.next_fate(Make::ObjectPath);
    set_status(rc, fate == RecordingBroker::Fate::Null ? FAILED : OK);
    if (fate == RecordingBroker::Fate::Null) return nullptr;
    PathObject* made =
        make_path(broker, nameSpace != nullptr ? nameSpace : "", className != nullptr ? className : "");
    if (fate == RecordingBroker::Fate::WithoutHandle) {
        made->hdl = nullptr;
        made->record.kind_ = Object::WithoutHandle;
    }
    return made;
}

// The paths are made by this file and never const; CMPI's own signatures say const for setters too.
PathObject* BrokerCalls::path(const CMPIObjectPath* op, const char* function) {
    auto* self = const_cast<PathObject*>(static_cast<const PathObject*>(op));
    return usable(*self, function) ? self : nullptr;
}

CMPIStatus BrokerCalls::release_path(CMPIObjectPath* op) {
    PathObject* self = path(op, "release");
    if (self == nullptr) return INVALID_HANDLE;
    self->owner->log(result_text("releaseObjectPath", self->record));
    self->released = true;
    return OK;
}

CMPIStatus BrokerCalls::set_name_space(const CMPIObjectPath* op, const char* nameSpace) {
    PathObject* self = path(op, "setNameSpace");
    if (self == nullptr) return INVALID_HANDLE;
    self->owner->log(printed([&](std::ostream& out) { out << "setNameSpace " << Value(nameSpace); }));
    self->record.nameSpace_ = nameSpace;
    return OK;
}

CMPIString* BrokerCalls::get_name_space(const CMPIObjectPath* op, CMPIStatus* rc) {
    PathObject* self = path(op, "getNameSpace");
    set_status(rc, self != nullptr ? OK : INVALID_HANDLE);
    if (self == nullptr) return nullptr;
    self->owner->log("getNameSpace");
    return make_string(*self->owner, self->record.nameSpace_);
}

CMPIStatus BrokerCalls::set_host_name(const CMPIObjectPath* op, const char* host) {
    PathObject* self = path(op, "setHostname");
    if (self == nullptr) return INVALID_HANDLE;
    self->owner->log(printed([&](std::ostream& out) { out << "setHostname " << Value(host); }));
    if (host != nullptr) {
        self->record.host_ = host;
    } else {
        self->record.host_ = "NULL";
    }
    return OK;
}

CMPIString* BrokerCalls::get_host_name(const CMPIObjectPath* op, CMPIStatus* rc) {
    PathObject* self = path(op, "getHostname");
    set_status(rc, self != nullptr ? OK : INVALID_HANDLE);
    if (self == nullptr) return nullptr;
    self->owner->log("getHostname");
    return make_string(*self->owner, self->record.host_.value_or(""));
}

CMPIStatus BrokerCalls::set_class_name(const CMPIObjectPath* op, const char* className) {
    PathObject* self = path(op, "setClassName");
    if (self == nullptr) return INVALID_HANDLE;
    self->owner->log(printed([&](std::ostream& out) { out << "setClassName " << Value(className); }));
    self->record.className_ = className;
    return OK;
}

CMPIString* BrokerCalls::get_class_name(const CMPIObjectPath* op, CMPIStatus* rc) {
    PathObject* self = path(op, "getClassName");
    set_status(rc, self != nullptr ? OK : INVALID_HANDLE);
    if (self == nullptr) return nullptr;
    self->owner->log("getClassName");
    return make_string(*self->owner, self->record.className_);
}

CMPIStatus BrokerCalls::add_key(const CMPIObjectPath* op, const char* name, const CMPIValue* value,
                                CMPIType type) {
    PathObject* self = path(op, "addKey");
    if (self == nullptr) return INVALID_HANDLE;
    const Set set{name, type, read_value(value, type)};
    self->owner->log(printed([&](std::ostream& out) { out << "addKey " << set; }));
    self->record.keys_.push_back(set);

    // A key that was given as a C string reads back as a string, as in every server.
    CMPIData data{type, CMPI_keyValue, {}};
    if (type == CMPI_chars || type == CMPI_string) {
        data.type = CMPI_string;
        data.value.string = make_string(*self->owner, set.value.text());
    } else if (value != nullptr) {
        data.value = CMPIValue{};
        if (type == CMPI_ref) {
            data.value.ref = value->ref;
        } else {
            data.value = number_value(type, set.value.text());
        }
    }
    self->data.push_back(data);
    return OK;
}

// The key of a request: its type is the test's choice.
void BrokerCalls::give_key(PathObject& self, const Key& key) {
    CMPIData data{key.type, CMPI_keyValue, {}};
    if (key.type == CMPI_ref) {
        data.value.ref = const_cast<CMPIObjectPath*>(key.reference);
    } else if (key.type != CMPI_string) {
        data.value = number_value(key.type, key.value.text());
    } else if (!key.value.is_null()) {
        data.value.string = make_string(*self.owner, key.value.text());
    }
    self.data.push_back(data);
    self.record.keys_.push_back({key.name, key.type, key.value});
}

CMPIData BrokerCalls::no_data(CMPIStatus* rc) {
    set_status(rc, {CMPI_RC_ERR_NOT_FOUND, nullptr});
    return CMPIData{CMPI_null, CMPI_nullValue, {}};
}

CMPIData BrokerCalls::get_key(const CMPIObjectPath* op, const char* name, CMPIStatus* rc) {
    PathObject* self = path(op, "getKey");
    if (self == nullptr) return no_data(rc);
    self->owner->log(std::string("getKey ") + name);
    for (std::size_t i = 0; i < self->record.keys_.size(); ++i) {
        if (strcasecmp(self->record.keys_[i].name.c_str(), name) == 0) {
            set_status(rc, OK);
            return self->data[i];
        }
    }
    return no_data(rc);
}

CMPIData BrokerCalls::get_key_at(const CMPIObjectPath* op, CMPICount index, CMPIString** name,
                                 CMPIStatus* rc) {
    PathObject* self = path(op, "getKeyAt");
    if (self == nullptr) return no_data(rc);
    self->owner->log("getKeyAt " + std::to_string(index));
    if (index >= self->data.size()) return no_data(rc);
    if (name != nullptr) *name = make_string(*self->owner, self->record.keys_[index].name);
    set_status(rc, OK);
    return self->data[index];
}

CMPICount BrokerCalls::get_key_count(const CMPIObjectPath* op, CMPIStatus* rc) {
    PathObject* self = path(op, "getKeyCount");
    set_status(rc, self != nullptr ? OK : INVALID_HANDLE);
    if (self == nullptr) return 0;
    self->owner->log("getKeyCount");
    return static_cast<CMPICount>(self->data.size());
}

// Instances.

CMPIInstance* BrokerCalls::new_instance(const CMPIBroker* mb, const CMPIObjectPath* op, CMPIStatus* rc) {
    RecordingBroker& broker = owner(mb);
    PathObject* from = path(op, "newInstance");
    broker.log("newInstance " + (from != nullptr ? from->record.class_name() : "without a path"));
    const auto fate = broker.next_fate(Make::Instance);
    const bool fails = from == nullptr || fate == RecordingBroker::Fate::Null;
    set_status(rc, fails ? FAILED : OK);
    if (fails) return nullptr;
    auto* made = broker.keep<InstanceObject>();
    made->hdl = made;
    made->ft = &INSTANCE_TABLE;
    made->owner = &broker;
    made->record.path_ = from->record;
    if (fate == RecordingBroker::Fate::WithoutHandle) {
        made->hdl = nullptr;
        made->record.kind_ = Object::WithoutHandle;
    }
    return made;
}

InstanceObject* BrokerCalls::instance(const CMPIInstance* inst, const char* function) {
    auto* self = const_cast<InstanceObject*>(static_cast<const InstanceObject*>(inst));
    return usable(*self, function) ? self : nullptr;
}

CMPIStatus BrokerCalls::release_instance(CMPIInstance* inst) {
    InstanceObject* self = instance(inst, "release");
    if (self == nullptr) return INVALID_HANDLE;
    self->owner->log(result_text("releaseInstance", self->record));
    self->released = true;
    return OK;
}

CMPIStatus BrokerCalls::set_property(const CMPIInstance* inst, const char* name, const CMPIValue* value,
                                     CMPIType type) {
    InstanceObject* self = instance(inst, "setProperty");
    if (self == nullptr) return INVALID_HANDLE;
    const Set set{name, type, read_value(value, type)};
    self->owner->log(printed([&](std::ostream& out) { out << "setProperty " << set; }));
    self->record.sets_.push_back(set);
    return OK;
}

CMPIStatus BrokerCalls::set_property_filter(const CMPIInstance* inst, const char** properties,
                                            const char** keys) {
    InstanceObject* self = instance(inst, "setPropertyFilter");
    if (self == nullptr) return INVALID_HANDLE;
    const Filter filter{read_list(properties), read_list(keys)};
    self->owner->log(printed([&](std::ostream& out) { out << "setPropertyFilter " << filter; }));
    if (self->record.filters_.empty()) self->record.setsBeforeFilter_ = self->record.sets_.size();
    self->record.filters_.push_back(filter);
    return OK;
}

// Results.

RecordingResult::State& BrokerCalls::result(const CMPIResult* rslt) {
    return *const_cast<RecordingResult::State*>(static_cast<const RecordingResult::State*>(rslt));
}

CMPIStatus BrokerCalls::return_instance(const CMPIResult* rslt, const CMPIInstance* inst) {
    auto& self = result(rslt);
    Returned returned{Returned::Kind::Instance, snapshot(inst), {}};
    self.owner->log(result_text("returnInstance", returned.instance));
    self.returned.push_back(std::move(returned));
    return OK;
}

CMPIStatus BrokerCalls::return_object_path(const CMPIResult* rslt, const CMPIObjectPath* op) {
    auto& self = result(rslt);
    Returned returned{Returned::Kind::Path, {}, snapshot(op)};
    self.owner->log(result_text("returnObjectPath", returned.path));
    self.returned.push_back(std::move(returned));
    return OK;
}

CMPIStatus BrokerCalls::return_done(const CMPIResult* rslt) {
    auto& self = result(rslt);
    self.owner->log("returnDone");
    ++self.doneCalls;
    return OK;
}

} // namespace test_support
