// A CMPI broker for tests: it makes the objects that a provider asks for, keeps every call in order, and
// fails on demand.
//
// It is a broker of version 1.0 as real ones are: the members that 2.0 and 2.1 added, and mft, are NULL, so
// that a provider that uses one crashes its test. Members of 1.0 that this provider has no business calling
// fail the test, and so does a call on a released object. A call on an object without a handle is answered
// with CMPI_RC_ERR_INVALID_HANDLE. Every object lives until clear() or the broker's end, whether released or
// not.
//
//     RecordingBroker broker;
//     emulator::Locked locked;
//     CMPIInstance* made = fcip_pe_build_instance("KESTO_...", "root/x", &link, nullptr);
//     EXPECT_EQ(broker.recorded(made).sets(), (Sets{{"Name", CMPI_chars, "1_10.1.1.1_10.1.1.2"}, ...}));
//
// The provider's own _broker must be this broker first: see ProviderTest in provider_test.h.
#ifndef KESTO_TESTS_SUPPORT_RECORDING_BROKER_H
#define KESTO_TESTS_SUPPORT_RECORDING_BROKER_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/recorded.h"

namespace test_support {

// A key of a request's object path.
struct Key {
    Key(std::string keyName, const char* text); // CMPI_string
    Key(std::string keyName, const std::string& text);
    Key(std::string keyName, const CMPIObjectPath* path); // CMPI_ref
    // Any type; for CMPI_string a NULL value gives a key whose string is missing.
    Key(std::string keyName, CMPIType keyType, const Value& keyValue);

    std::string name;
    CMPIType type;
    Value value;
    const CMPIObjectPath* reference = nullptr;
};

// One call to the broker or to an object it made, for example
//   newObjectPath root/kesto KESTO_FCIPSettings
//   setHostname "switch-a"
//   newInstance KESTO_FCIPSettings
//   setProperty TunnelID CMPI_uint16 5
//   addKey Name CMPI_chars "5_10.1.1.1_10.1.1.2"
//   setPropertyFilter properties={Name, TunnelID} keys={}
//   returnInstance KESTO_FCIPSettings          returnObjectPath NULL          returnInstance -1
//   newString "invalid key name"
//   setProperty without a handle
//   getClassName, getNameSpace, getKeyCount, getKeyAt 0, getCharPtr, releaseObjectPath KESTO_..., returnDone
struct Call {
    std::string text;
    bool locked = false; // the platform's lock was held by the calling thread

    std::string function() const { return text.substr(0, text.find(' ')); }
};

enum class Make { ObjectPath, Instance, String };
enum class Failure { Null, WithoutHandle };

class RecordingBroker {
  public:
    RecordingBroker();
    ~RecordingBroker();
    RecordingBroker(const RecordingBroker&) = delete;
    RecordingBroker& operator=(const RecordingBroker&) = delete;

    const CMPIBroker* cmpi() const { return &broker_; }

    // Forgets objects, calls and faults. No pointer of an object may be used afterwards.
    void clear();

    // What was called.
    std::vector<Call> calls() const;
    std::vector<std::string> call_texts() const;
    std::vector<std::string> call_texts(const std::string& function) const; // only these
    void clear_calls();

    // What the provider made. Accepts NULL and the value -1.
    RecordedInstance recorded(const CMPIInstance* instance) const;
    RecordedPath recorded(const CMPIObjectPath* path) const;

    // Objects for a request. Making and filling them is not recorded; reading them is.
    CMPIObjectPath* path(const std::string& nameSpace, const std::string& className,
                         const std::vector<Key>& keys = {});

    // Faults.
    // The nth object of this kind made from now on (1 = the next) is NULL or has no handle.
    void fail_nth(Make what, std::size_t nth, Failure how);
    void fail_every(Make what, Failure how);
    void clear_faults();
    bool fault_hit() const; // since the last fail_... call
    // Since construction, clear() or the last fail_...; failed ones included.
    std::size_t made(Make what) const;

  private:
    friend struct BrokerCalls;
    friend class RecordingResult;
    struct Fault {
        std::size_t nth = 0; // 0 = every
        Failure how = Failure::Null;
    };
    enum class Fate { Make, Null, WithoutHandle };

    void log(const std::string& text);
    Fate next_fate(Make what);
    // Makes an object that lives as long as the broker.
    template <typename T>
    T* keep() {
        auto made = std::make_shared<T>();
        std::lock_guard guard(mutex_);
        objects_.push_back(made);
        return made.get();
    }

    CMPIBroker broker_{};
    mutable std::mutex mutex_; // operations of several threads share the broker
    std::vector<std::shared_ptr<void>> objects_;
    std::vector<Call> calls_;
    std::map<Make, std::size_t> made_;
    std::map<Make, Fault> faults_;
    bool faultHit_ = false;
};

// One object handed to a result.
struct Returned {
    enum class Kind { Instance, Path };
    Kind kind = Kind::Instance;
    RecordedInstance instance; // of a returnInstance
    RecordedPath path;         // of a returnObjectPath

    // "instance KESTO_...", "instance NULL", "path -1", "path //.../...:KESTO_...{...}"
    friend std::ostream& operator<<(std::ostream& out, const Returned& returned);
};

// The result object of a request. Objects are kept as they were when they were handed over.
class RecordingResult {
  public:
    explicit RecordingResult(RecordingBroker& broker);
    ~RecordingResult();
    RecordingResult(const RecordingResult&) = delete;
    RecordingResult& operator=(const RecordingResult&) = delete;

    const CMPIResult* cmpi() const;
    const std::vector<Returned>& returned() const;
    std::vector<RecordedInstance> instances() const; // those of returnInstance, NULL and -1 among them
    std::vector<RecordedPath> paths() const;         // those of returnObjectPath
    std::size_t done_calls() const;

  private:
    friend struct BrokerCalls;
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace test_support

#endif
