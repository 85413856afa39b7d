// Inside the recording broker: the objects behind the pointers that the provider holds, how their values are
// read, and the functions that the tables point to.
#ifndef KESTO_TESTS_SUPPORT_BROKER_CALLS_H
#define KESTO_TESTS_SUPPORT_BROKER_CALLS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/recording_broker.h"

namespace test_support {

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

// Values (broker_values.cpp).

// The object as it is now; NULL and -1 are objects of their own kind.
RecordedPath snapshot(const CMPIObjectPath* path);
RecordedInstance snapshot(const CMPIInstance* instance);
Value read_value(const CMPIValue* value, CMPIType type);
std::optional<std::vector<std::string>> read_list(const char** list);
CMPIValue number_value(CMPIType type, const std::string& text);
// A call that hands the object over, as it stands among the calls.
std::string result_text(const char* function, const RecordedPath& path);
std::string result_text(const char* function, const RecordedInstance& instance);

// The functions of the tables.

struct BrokerCalls {
    static RecordingBroker& owner(const CMPIBroker* mb);
    // Every call on an object goes through here. As in a real broker, a call on an object without a handle is
    // answered with an error status; it shows in the calls.
    template <typename T>
    static bool usable(const T& object, const char* function) {
        if (object.released) ADD_FAILURE() << function << " was called on a released object";
        if (object.hdl == nullptr) object.owner->log(std::string(function) + " without a handle");
        return object.hdl != nullptr && !object.released;
    }

    // Strings.
    static CMPIString* make_string(RecordingBroker& broker, const std::string& text);
    static CMPIString* new_string(const CMPIBroker* mb, const char* text, CMPIStatus* rc);
    static const char* get_char_ptr(const CMPIString* string, CMPIStatus* rc);
    static CMPIStatus release_string(CMPIString* string);

    // Object paths.
    static PathObject* make_path(RecordingBroker& broker, const std::string& nameSpace,
                                 const std::string& className);
    static CMPIObjectPath* new_object_path(const CMPIBroker* mb, const char* nameSpace, const char* className,
                                           CMPIStatus* rc);
    static PathObject* path(const CMPIObjectPath* op, const char* function);
    static CMPIStatus release_path(CMPIObjectPath* op);
    static CMPIStatus set_name_space(const CMPIObjectPath* op, const char* nameSpace);
    static CMPIString* get_name_space(const CMPIObjectPath* op, CMPIStatus* rc);
    static CMPIStatus set_host_name(const CMPIObjectPath* op, const char* host);
    static CMPIString* get_host_name(const CMPIObjectPath* op, CMPIStatus* rc);
    static CMPIStatus set_class_name(const CMPIObjectPath* op, const char* className);
    static CMPIString* get_class_name(const CMPIObjectPath* op, CMPIStatus* rc);
    static CMPIStatus add_key(const CMPIObjectPath* op, const char* name, const CMPIValue* value,
                              CMPIType type);
    static void give_key(PathObject& self, const Key& key);
    static CMPIData no_data(CMPIStatus* rc);
    static CMPIData get_key(const CMPIObjectPath* op, const char* name, CMPIStatus* rc);
    static CMPIData get_key_at(const CMPIObjectPath* op, CMPICount index, CMPIString** name, CMPIStatus* rc);
    static CMPICount get_key_count(const CMPIObjectPath* op, CMPIStatus* rc);

    // Instances.
    static CMPIInstance* new_instance(const CMPIBroker* mb, const CMPIObjectPath* op, CMPIStatus* rc);
    static InstanceObject* instance(const CMPIInstance* inst, const char* function);
    static CMPIStatus release_instance(CMPIInstance* inst);
    static CMPIStatus set_property(const CMPIInstance* inst, const char* name, const CMPIValue* value,
                                   CMPIType type);
    static CMPIStatus set_property_filter(const CMPIInstance* inst, const char** properties,
                                          const char** keys);

    // Results.
    static RecordingResult::State& result(const CMPIResult* rslt);
    static CMPIStatus return_instance(const CMPIResult* rslt, const CMPIInstance* inst);
    static CMPIStatus return_object_path(const CMPIResult* rslt, const CMPIObjectPath* op);
    static CMPIStatus return_done(const CMPIResult* rslt);

    // The tables. Members that are not named stay NULL: those of later versions.
    static CMPIBrokerFT broker_table();
    static CMPIBrokerEncFT maker_table();
    static CMPIStringFT string_table();
    static CMPIObjectPathFT path_table();
    static CMPIInstanceFT instance_table();
    static CMPIResultFT result_table();
    static const CMPIBrokerFT BROKER_TABLE;
    static const CMPIBrokerEncFT MAKER_TABLE;
    static const CMPIStringFT STRING_TABLE;
    static const CMPIObjectPathFT PATH_TABLE;
    static const CMPIInstanceFT INSTANCE_TABLE;
    static const CMPIResultFT RESULT_TABLE;
};

} // namespace test_support

#endif
