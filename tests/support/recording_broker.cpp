#include "tests/support/recording_broker.h"

#include <gtest/gtest.h>

#include <strings.h>
#include <cstdint>
#include <deque>
#include <ostream>
#include <sstream>
#include <utility>

#include "emulator/control.h"

namespace test_support {

namespace {

constexpr CMPIStatus OK{CMPI_RC_OK, nullptr};
constexpr CMPIStatus FAILED{CMPI_RC_ERR_FAILED, nullptr};
constexpr CMPIStatus INVALID_HANDLE{CMPI_RC_ERR_INVALID_HANDLE, nullptr};

// Fills the members that this provider has no business calling, whatever their signature.
struct Unexpected {
    template <class Result, class... Arguments>
    using Function = Result (*)(Arguments...);
    template <class Result, class... Arguments>
    using VariadicFunction = Result (*)(Arguments..., ...);

    template <class Result, class... Arguments>
    operator Function<Result, Arguments...>() const {
        return [](Arguments...) -> Result {
            ADD_FAILURE() << "a CMPI function was called that the provider has no use for: "
                          << __PRETTY_FUNCTION__;
            return Result();
        };
    }
};
constexpr Unexpected unexpected;

CMPIString* unexpected_message(const CMPIBroker*, const char*, const char*, CMPIStatus*, CMPICount, ...) {
    ADD_FAILURE() << "getMessage was called";
    return nullptr;
}

template <class Pointer>
bool is_minus_one(Pointer* pointer) {
    return reinterpret_cast<std::intptr_t>(pointer) == -1;
}

void set_status(CMPIStatus* out, CMPIStatus status) {
    if (out) *out = status;
}

template <class Print>
std::string printed(Print&& print) {
    std::ostringstream out;
    print(out);
    return out.str();
}

} // namespace

struct StringObject : CMPIString {
    RecordingBroker* owner = nullptr;
    bool released = false;
    std::string text;
};

struct PathObject : CMPIObjectPath {
    RecordingBroker* owner = nullptr;
    bool released = false;
    RecordedPath record;
    std::vector<CMPIData> data; // of the keys, in their order
};

struct InstanceObject : CMPIInstance {
    RecordingBroker* owner = nullptr;
    bool released = false;
    RecordedInstance record;
};

struct RecordingResult::State : CMPIResult {
    RecordingBroker* owner = nullptr;
    bool released = false;
    std::vector<Returned> returned;
    std::size_t doneCalls = 0;
};

namespace {

RecordedPath snapshot(const CMPIObjectPath* path) {
    if (!path) return RecordedPath::of(Object::null);
    if (is_minus_one(path)) return RecordedPath::of(Object::minus_one);
    return static_cast<const PathObject*>(path)->record;
}

RecordedInstance snapshot(const CMPIInstance* instance) {
    if (!instance) return RecordedInstance::of(Object::null);
    if (is_minus_one(instance)) return RecordedInstance::of(Object::minus_one);
    return static_cast<const InstanceObject*>(instance)->record;
}

// The value of a setProperty or addKey call. A C string is the pointer itself.
Value read_value(const CMPIValue* value, CMPIType type) {
    if (!value) return nullptr;
    switch (type) {
        case CMPI_chars:
            return Value(reinterpret_cast<const char*>(value));
        case CMPI_string:
            return value->string ? Value(static_cast<const StringObject*>(value->string)->text) : Value();
        case CMPI_ref:
            return Value(snapshot(value->ref));
        case CMPI_boolean:
            return value->boolean;
        case CMPI_char16:
            return value->char16;
        case CMPI_uint8:
            return value->uint8;
        case CMPI_uint16:
            return value->uint16;
        case CMPI_uint32:
            return value->uint32;
        case CMPI_uint64:
            return value->uint64;
        case CMPI_sint8:
            return value->sint8;
        case CMPI_sint16:
            return value->sint16;
        case CMPI_sint32:
            return value->sint32;
        case CMPI_sint64:
            return value->sint64;
        case CMPI_real32:
            return static_cast<double>(value->real32);
        case CMPI_real64:
            return value->real64;
        default:
            ADD_FAILURE() << "a value of " << type_name(type) << " cannot be recorded";
            return nullptr;
    }
}

std::optional<std::vector<std::string>> read_list(const char** list) {
    if (!list) return std::nullopt;
    std::vector<std::string> texts;
    for (; *list; ++list)
        texts.emplace_back(*list);
    return texts;
}

// A number as CMPIData. The request's text is decimal and fits its type.
CMPIValue number_value(CMPIType type, const std::string& text) {
    CMPIValue value{};
    const std::int64_t number = type == CMPI_real32 || type == CMPI_real64 ? 0 : std::stoll(text);
    switch (type) {
        case CMPI_boolean:
            value.boolean = static_cast<CMPIBoolean>(number);
            break;
        case CMPI_uint8:
            value.uint8 = static_cast<CMPIUint8>(number);
            break;
        case CMPI_uint16:
            value.uint16 = static_cast<CMPIUint16>(number);
            break;
        case CMPI_uint32:
            value.uint32 = static_cast<CMPIUint32>(number);
            break;
        case CMPI_uint64:
            value.uint64 = static_cast<CMPIUint64>(number);
            break;
        case CMPI_sint32:
            value.sint32 = static_cast<CMPISint32>(number);
            break;
        case CMPI_sint64:
            value.sint64 = number;
            break;
        default:
            ADD_FAILURE() << "a key of " << type_name(type) << " cannot be made";
    }
    return value;
}

std::string result_text(const char* function, const RecordedPath& path) {
    return printed([&](std::ostream& out) { out << function << ' ' << path; });
}

std::string result_text(const char* function, const RecordedInstance& instance) {
    std::string what = instance.class_name();
    if (instance.kind() == Object::null) what = "NULL";
    if (instance.kind() == Object::minus_one) what = "-1";
    if (instance.kind() == Object::without_handle) what = "without handle";
    return std::string(function) + ' ' + what;
}

} // namespace

Key::Key(std::string keyName, const char* text) : name(std::move(keyName)), type(CMPI_string), value(text) {}
Key::Key(std::string keyName, const std::string& text) : Key(std::move(keyName), text.c_str()) {}
Key::Key(std::string keyName, const CMPIObjectPath* path)
    : name(std::move(keyName)), type(CMPI_ref), value(snapshot(path)), reference(path) {}
Key::Key(std::string keyName, CMPIType keyType, const Value& keyValue)
    : name(std::move(keyName)), type(keyType), value(keyValue) {}

// The functions of the tables.
struct BrokerCalls {
    static RecordingBroker& owner(const CMPIBroker* mb) {
        return *static_cast<RecordingBroker*>(const_cast<void*>(mb->hdl));
    }

    // Every call on an object goes through here. As in a real broker, a call on an object without a handle is
    // answered with an error status; it shows in the calls.
    template <class T>
    static bool usable(const T& object, const char* function) {
        if (object.released) ADD_FAILURE() << function << " was called on a released object";
        if (!object.hdl) object.owner->log(std::string(function) + " without a handle");
        return object.hdl && !object.released;
    }

    // ---- Strings. ----

    static CMPIString* make_string(RecordingBroker& broker, const std::string& text) {
        auto* made = broker.keep<StringObject>();
        made->hdl = made;
        made->ft = &stringTable;
        made->owner = &broker;
        made->text = text;
        return made;
    }

    static CMPIString* new_string(const CMPIBroker* mb, const char* text, CMPIStatus* rc) {
        RecordingBroker& broker = owner(mb);
        broker.log(printed([&](std::ostream& out) { out << "newString " << Value(text); }));
        const auto fate = broker.next_fate(Make::string);
        set_status(rc, fate == RecordingBroker::Fate::null ? FAILED : OK);
        if (fate == RecordingBroker::Fate::null) return nullptr;
        CMPIString* made = make_string(broker, text ? text : "");
        if (fate == RecordingBroker::Fate::without_handle) made->hdl = nullptr;
        return made;
    }

    static const char* get_char_ptr(const CMPIString* string, CMPIStatus* rc) {
        const auto& self = *static_cast<const StringObject*>(string);
        set_status(rc, OK);
        if (!usable(self, "getCharPtr")) return nullptr;
        self.owner->log("getCharPtr");
        return self.text.c_str();
    }

    static CMPIStatus release_string(CMPIString* string) {
        auto& self = *static_cast<StringObject*>(string);
        if (!usable(self, "release")) return INVALID_HANDLE;
        self.owner->log("releaseString");
        self.released = true;
        return OK;
    }

    // ---- Object paths. ----

    static PathObject* make_path(RecordingBroker& broker, const std::string& nameSpace,
                                 const std::string& className) {
        auto* made = broker.keep<PathObject>();
        made->hdl = made;
        made->ft = &pathTable;
        made->owner = &broker;
        made->record = RecordedPath(nameSpace, className);
        return made;
    }

    static CMPIObjectPath* new_object_path(const CMPIBroker* mb, const char* nameSpace, const char* className,
                                           CMPIStatus* rc) {
        RecordingBroker& broker = owner(mb);
        broker.log(std::string("newObjectPath ") + (nameSpace ? nameSpace : "NULL") + ' ' +
                   (className ? className : "NULL"));
        const auto fate = broker.next_fate(Make::object_path);
        set_status(rc, fate == RecordingBroker::Fate::null ? FAILED : OK);
        if (fate == RecordingBroker::Fate::null) return nullptr;
        PathObject* made = make_path(broker, nameSpace ? nameSpace : "", className ? className : "");
        if (fate == RecordingBroker::Fate::without_handle) {
            made->hdl = nullptr;
            made->record.kind_ = Object::without_handle;
        }
        return made;
    }

    // The paths are made by this file and never const; CMPI's own signatures say const for setters too.
    static PathObject* path(const CMPIObjectPath* op, const char* function) {
        auto* self = const_cast<PathObject*>(static_cast<const PathObject*>(op));
        return usable(*self, function) ? self : nullptr;
    }

    static CMPIStatus release_path(CMPIObjectPath* op) {
        PathObject* self = path(op, "release");
        if (!self) return INVALID_HANDLE;
        self->owner->log(result_text("releaseObjectPath", self->record));
        self->released = true;
        return OK;
    }

    static CMPIStatus set_name_space(const CMPIObjectPath* op, const char* nameSpace) {
        PathObject* self = path(op, "setNameSpace");
        if (!self) return INVALID_HANDLE;
        self->owner->log(printed([&](std::ostream& out) { out << "setNameSpace " << Value(nameSpace); }));
        self->record.nameSpace_ = nameSpace;
        return OK;
    }

    static CMPIString* get_name_space(const CMPIObjectPath* op, CMPIStatus* rc) {
        PathObject* self = path(op, "getNameSpace");
        set_status(rc, self ? OK : INVALID_HANDLE);
        if (!self) return nullptr;
        self->owner->log("getNameSpace");
        return make_string(*self->owner, self->record.nameSpace_);
    }

    static CMPIStatus set_host_name(const CMPIObjectPath* op, const char* host) {
        PathObject* self = path(op, "setHostname");
        if (!self) return INVALID_HANDLE;
        self->owner->log(printed([&](std::ostream& out) { out << "setHostname " << Value(host); }));
        if (host)
            self->record.host_ = host;
        else
            self->record.host_ = "NULL";
        return OK;
    }

    static CMPIString* get_host_name(const CMPIObjectPath* op, CMPIStatus* rc) {
        PathObject* self = path(op, "getHostname");
        set_status(rc, self ? OK : INVALID_HANDLE);
        if (!self) return nullptr;
        self->owner->log("getHostname");
        return make_string(*self->owner, self->record.host_.value_or(""));
    }

    static CMPIStatus set_class_name(const CMPIObjectPath* op, const char* className) {
        PathObject* self = path(op, "setClassName");
        if (!self) return INVALID_HANDLE;
        self->owner->log(printed([&](std::ostream& out) { out << "setClassName " << Value(className); }));
        self->record.className_ = className;
        return OK;
    }

    static CMPIString* get_class_name(const CMPIObjectPath* op, CMPIStatus* rc) {
        PathObject* self = path(op, "getClassName");
        set_status(rc, self ? OK : INVALID_HANDLE);
        if (!self) return nullptr;
        self->owner->log("getClassName");
        return make_string(*self->owner, self->record.className_);
    }

    static CMPIStatus add_key(const CMPIObjectPath* op, const char* name, const CMPIValue* value,
                              CMPIType type) {
        PathObject* self = path(op, "addKey");
        if (!self) return INVALID_HANDLE;
        const Set set{name, type, read_value(value, type)};
        self->owner->log(printed([&](std::ostream& out) { out << "addKey " << set; }));
        self->record.keys_.push_back(set);

        // A key that was given as a C string reads back as a string, as in every server.
        CMPIData data{type, CMPI_keyValue, {}};
        if (type == CMPI_chars || type == CMPI_string) {
            data.type = CMPI_string;
            data.value.string = make_string(*self->owner, set.value.text());
        } else if (value) {
            data.value = CMPIValue{};
            if (type == CMPI_ref)
                data.value.ref = value->ref;
            else
                data.value = number_value(type, set.value.text());
        }
        self->data.push_back(data);
        return OK;
    }

    // The key of a request: its type is the test's choice.
    static void give_key(PathObject& self, const Key& key) {
        CMPIData data{key.type, CMPI_keyValue, {}};
        if (key.type == CMPI_ref)
            data.value.ref = const_cast<CMPIObjectPath*>(key.reference);
        else if (key.type != CMPI_string)
            data.value = number_value(key.type, key.value.text());
        else if (!key.value.is_null())
            data.value.string = make_string(*self.owner, key.value.text());
        self.data.push_back(data);
        self.record.keys_.push_back({key.name, key.type, key.value});
    }

    static CMPIData no_data(CMPIStatus* rc) {
        set_status(rc, {CMPI_RC_ERR_NOT_FOUND, nullptr});
        return CMPIData{CMPI_null, CMPI_nullValue, {}};
    }

    static CMPIData get_key(const CMPIObjectPath* op, const char* name, CMPIStatus* rc) {
        PathObject* self = path(op, "getKey");
        if (!self) return no_data(rc);
        self->owner->log(std::string("getKey ") + name);
        for (std::size_t i = 0; i < self->record.keys_.size(); ++i) {
            if (strcasecmp(self->record.keys_[i].name.c_str(), name) == 0) {
                set_status(rc, OK);
                return self->data[i];
            }
        }
        return no_data(rc);
    }

    static CMPIData get_key_at(const CMPIObjectPath* op, CMPICount index, CMPIString** name, CMPIStatus* rc) {
        PathObject* self = path(op, "getKeyAt");
        if (!self) return no_data(rc);
        self->owner->log("getKeyAt " + std::to_string(index));
        if (index >= self->data.size()) return no_data(rc);
        if (name) *name = make_string(*self->owner, self->record.keys_[index].name);
        set_status(rc, OK);
        return self->data[index];
    }

    static CMPICount get_key_count(const CMPIObjectPath* op, CMPIStatus* rc) {
        PathObject* self = path(op, "getKeyCount");
        set_status(rc, self ? OK : INVALID_HANDLE);
        if (!self) return 0;
        self->owner->log("getKeyCount");
        return static_cast<CMPICount>(self->data.size());
    }

    // ---- Instances. ----

    static CMPIInstance* new_instance(const CMPIBroker* mb, const CMPIObjectPath* op, CMPIStatus* rc) {
        RecordingBroker& broker = owner(mb);
        PathObject* from = path(op, "newInstance");
        broker.log("newInstance " + (from ? from->record.class_name() : "without a path"));
        const auto fate = broker.next_fate(Make::instance);
        const bool fails = !from || fate == RecordingBroker::Fate::null;
        set_status(rc, fails ? FAILED : OK);
        if (fails) return nullptr;
        auto* made = broker.keep<InstanceObject>();
        made->hdl = made;
        made->ft = &instanceTable;
        made->owner = &broker;
        made->record.path_ = from->record;
        if (fate == RecordingBroker::Fate::without_handle) {
            made->hdl = nullptr;
            made->record.kind_ = Object::without_handle;
        }
        return made;
    }

    static InstanceObject* instance(const CMPIInstance* inst, const char* function) {
        auto* self = const_cast<InstanceObject*>(static_cast<const InstanceObject*>(inst));
        return usable(*self, function) ? self : nullptr;
    }

    static CMPIStatus release_instance(CMPIInstance* inst) {
        InstanceObject* self = instance(inst, "release");
        if (!self) return INVALID_HANDLE;
        self->owner->log(result_text("releaseInstance", self->record));
        self->released = true;
        return OK;
    }

    static CMPIStatus set_property(const CMPIInstance* inst, const char* name, const CMPIValue* value,
                                   CMPIType type) {
        InstanceObject* self = instance(inst, "setProperty");
        if (!self) return INVALID_HANDLE;
        const Set set{name, type, read_value(value, type)};
        self->owner->log(printed([&](std::ostream& out) { out << "setProperty " << set; }));
        self->record.sets_.push_back(set);
        return OK;
    }

    static CMPIStatus set_property_filter(const CMPIInstance* inst, const char** properties,
                                          const char** keys) {
        InstanceObject* self = instance(inst, "setPropertyFilter");
        if (!self) return INVALID_HANDLE;
        const Filter filter{read_list(properties), read_list(keys)};
        self->owner->log(printed([&](std::ostream& out) { out << "setPropertyFilter " << filter; }));
        if (self->record.filters_.empty()) self->record.setsBeforeFilter_ = self->record.sets_.size();
        self->record.filters_.push_back(filter);
        return OK;
    }

    // ---- Results. ----

    static RecordingResult::State& result(const CMPIResult* rslt) {
        return *const_cast<RecordingResult::State*>(static_cast<const RecordingResult::State*>(rslt));
    }

    static CMPIStatus return_instance(const CMPIResult* rslt, const CMPIInstance* inst) {
        auto& self = result(rslt);
        Returned returned{Returned::Kind::instance, snapshot(inst), {}};
        self.owner->log(result_text("returnInstance", returned.instance));
        self.returned.push_back(std::move(returned));
        return OK;
    }

    static CMPIStatus return_object_path(const CMPIResult* rslt, const CMPIObjectPath* op) {
        auto& self = result(rslt);
        Returned returned{Returned::Kind::path, {}, snapshot(op)};
        self.owner->log(result_text("returnObjectPath", returned.path));
        self.returned.push_back(std::move(returned));
        return OK;
    }

    static CMPIStatus return_done(const CMPIResult* rslt) {
        auto& self = result(rslt);
        self.owner->log("returnDone");
        ++self.doneCalls;
        return OK;
    }

    // ---- The tables. Members that are not named stay NULL: those of later versions. ----

    static CMPIBrokerFT broker_table() {
        CMPIBrokerFT table{};
        table.brokerCapabilities = CMPI_MB_BasicRead | CMPI_MB_AssociationTraversal;
        table.brokerVersion = CMPIVersion100;
        table.brokerName = "recording broker";
        table.prepareAttachThread = unexpected;
        table.attachThread = unexpected;
        table.detachThread = unexpected;
        table.deliverIndication = unexpected;
        table.enumerateInstanceNames = unexpected;
        table.getInstance = unexpected;
        table.createInstance = unexpected;
        table.modifyInstance = unexpected;
        table.deleteInstance = unexpected;
        table.execQuery = unexpected;
        table.enumerateInstances = unexpected;
        table.associators = unexpected;
        table.associatorNames = unexpected;
        table.references = unexpected;
        table.referenceNames = unexpected;
        table.invokeMethod = unexpected;
        table.setProperty = unexpected;
        table.getProperty = unexpected;
        return table;
    }

    static CMPIBrokerEncFT maker_table() {
        CMPIBrokerEncFT table{};
        table.ftVersion = CMPIVersion100;
        table.newInstance = new_instance;
        table.newObjectPath = new_object_path;
        table.newArgs = unexpected;
        table.newString = new_string;
        table.newArray = unexpected;
        table.newDateTime = unexpected;
        table.newDateTimeFromBinary = unexpected;
        table.newDateTimeFromChars = unexpected;
        table.newSelectExp = unexpected;
        table.classPathIsA = unexpected;
        table.toString = unexpected;
        table.isOfType = unexpected;
        table.getType = unexpected;
        table.getMessage = unexpected_message;
        table.logMessage = unexpected;
        table.trace = unexpected;
        return table;
    }

    static CMPIStringFT string_table() {
        CMPIStringFT table{};
        table.ftVersion = CMPIVersion100;
        table.release = release_string;
        table.clone = unexpected;
        table.getCharPtr = get_char_ptr;
        return table;
    }

    static CMPIObjectPathFT path_table() {
        CMPIObjectPathFT table{};
        table.ftVersion = CMPIVersion100;
        table.release = release_path;
        table.clone = unexpected;
        table.setNameSpace = set_name_space;
        table.getNameSpace = get_name_space;
        table.setHostname = set_host_name;
        table.getHostname = get_host_name;
        table.setClassName = set_class_name;
        table.getClassName = get_class_name;
        table.addKey = add_key;
        table.getKey = get_key;
        table.getKeyAt = get_key_at;
        table.getKeyCount = get_key_count;
        table.setNameSpaceFromObjectPath = unexpected;
        table.setHostAndNameSpaceFromObjectPath = unexpected;
        table.getClassQualifier = unexpected;
        table.getPropertyQualifier = unexpected;
        table.getMethodQualifier = unexpected;
        table.getParameterQualifier = unexpected;
        table.toString = unexpected;
        return table;
    }

    static CMPIInstanceFT instance_table() {
        CMPIInstanceFT table{};
        table.ftVersion = CMPIVersion100;
        table.release = release_instance;
        table.clone = unexpected;
        table.getProperty = unexpected;
        table.getPropertyAt = unexpected;
        table.getPropertyCount = unexpected;
        table.setProperty = set_property;
        table.getObjectPath = unexpected;
        table.setPropertyFilter = set_property_filter;
        table.setObjectPath = unexpected;
        return table;
    }

    static CMPIResultFT result_table() {
        CMPIResultFT table{};
        table.ftVersion = CMPIVersion100;
        table.release = unexpected;
        table.clone = unexpected;
        table.returnData = unexpected;
        table.returnInstance = return_instance;
        table.returnObjectPath = return_object_path;
        table.returnDone = return_done;
        return table;
    }

    static const CMPIBrokerFT brokerTable;
    static const CMPIBrokerEncFT makerTable;
    static const CMPIStringFT stringTable;
    static const CMPIObjectPathFT pathTable;
    static const CMPIInstanceFT instanceTable;
    static const CMPIResultFT resultTable;
};

const CMPIBrokerFT BrokerCalls::brokerTable = BrokerCalls::broker_table();
const CMPIBrokerEncFT BrokerCalls::makerTable = BrokerCalls::maker_table();
const CMPIStringFT BrokerCalls::stringTable = BrokerCalls::string_table();
const CMPIObjectPathFT BrokerCalls::pathTable = BrokerCalls::path_table();
const CMPIInstanceFT BrokerCalls::instanceTable = BrokerCalls::instance_table();
const CMPIResultFT BrokerCalls::resultTable = BrokerCalls::result_table();

RecordingBroker::RecordingBroker() {
    broker_.hdl = this;
    broker_.bft = &BrokerCalls::brokerTable;
    broker_.eft = &BrokerCalls::makerTable;
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
    for (const Call& call : calls())
        texts.push_back(call.text);
    return texts;
}

std::vector<std::string> RecordingBroker::call_texts(const std::string& function) const {
    std::vector<std::string> texts;
    for (const Call& call : calls())
        if (call.function() == function) texts.push_back(call.text);
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
    for (const Key& key : keys)
        BrokerCalls::give_key(*made, key);
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
    if (fault == faults_.end() || (fault->second.nth != 0 && fault->second.nth != number)) return Fate::make;
    faultHit_ = true;
    return fault->second.how == Failure::null ? Fate::null : Fate::without_handle;
}

template <class T, class... Arguments>
T* RecordingBroker::keep(Arguments&&... arguments) {
    auto made = std::make_shared<T>(std::forward<Arguments>(arguments)...);
    std::lock_guard guard(mutex_);
    objects_.push_back(made);
    return made.get();
}

std::ostream& operator<<(std::ostream& out, const Returned& returned) {
    if (returned.kind == Returned::Kind::path) return out << result_text("path", returned.path);
    return out << result_text("instance", returned.instance);
}

RecordingResult::RecordingResult(RecordingBroker& broker) : state_(std::make_unique<State>()) {
    state_->hdl = state_.get();
    state_->ft = &BrokerCalls::resultTable;
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
    for (const Returned& returned : state_->returned)
        if (returned.kind == Returned::Kind::instance) instances.push_back(returned.instance);
    return instances;
}

std::vector<RecordedPath> RecordingResult::paths() const {
    std::vector<RecordedPath> paths;
    for (const Returned& returned : state_->returned)
        if (returned.kind == Returned::Kind::path) paths.push_back(returned.path);
    return paths;
}

std::size_t RecordingResult::done_calls() const {
    return state_->doneCalls;
}

} // namespace test_support
