// A provider for the server's own tests: each of its classes does one thing that the server has to cope with.
//
// The class of a request picks the behaviour from the tables at the end. It traces to standard output like
// the providers that the server is made for, and never calls returnDone.
#include <cmpidt.h>
#include <cmpift.h>
#include <cmpimacs.h>
#include <strings.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

const CMPIBroker* broker = nullptr;

// What a request's functions get: where to return to, and what was asked.
struct Asked {
    const CMPIContext* context;
    const CMPIResult* result;
    const CMPIObjectPath* path;
    const char** properties;
};

const CMPIValue* chars(const char* text) {
    return reinterpret_cast<const CMPIValue*>(text);
}

void set(const CMPIInstance* instance, const char* name, const char* text) {
    CMSetProperty(instance, name, chars(text), CMPI_chars);
}

void set_number(const CMPIInstance* instance, const char* name, CMPIUint32 number) {
    CMPIValue value{};
    value.uint32 = number;
    CMSetProperty(instance, name, &value, CMPI_uint32);
}

CMPIObjectPath* new_path(const char* className, const char* key = nullptr, const char* value = nullptr) {
    CMPIObjectPath* path = CMNewObjectPath(broker, "root/cimv2", className, nullptr);
    if (key != nullptr) CMAddKey(path, key, chars(value), CMPI_chars);
    return path;
}

CMPIObjectPath* thing(const char* name) {
    return new_path("Probe_Thing", "Name", name);
}

CMPIInstance* new_thing(const char* name) {
    return CMNewInstance(broker, thing(name), nullptr);
}

std::string class_of(const CMPIObjectPath* path) {
    return CMGetCharPtr(CMGetClassName(path, nullptr));
}

bool is_a(const CMPIObjectPath* path, const char* className) {
    return strcasecmp(class_of(path).c_str(), className) == 0;
}

std::string key_of(const CMPIObjectPath* path, const char* key) {
    CMPIStatus status{};
    const CMPIData data = CMGetKey(path, key, &status);
    return status.rc == CMPI_RC_OK && data.type == CMPI_string ? CMGetCharPtr(data.value.string) : "";
}

template <typename Object>
Object* minus_one() {
    return reinterpret_cast<Object*>(static_cast<std::intptr_t>(-1));
}

CMPIStatus ok() {
    return {CMPI_RC_OK, nullptr};
}

// ---- Instances. ----

// Two instances with names in their paths, which honour the request's property filter.
CMPIStatus enumerate_things(const Asked& asked) {
    for (const char* name : {"one", "two"}) {
        CMPIInstance* instance = new_thing(name);
        CMSetPropertyFilter(instance, asked.properties, nullptr);
        set(instance, "Colour", "red");
        set_number(instance, "Size", 7);
        CMReturnInstance(asked.result, instance);
    }
    return ok();
}

// A path without keys; the filter is applied last, as the properties are already there.
CMPIStatus enumerate_keyless(const Asked& asked) {
    CMPIInstance* instance = CMNewInstance(broker, new_path("Probe_Keyless"), nullptr);
    set(instance, "Label", "first");
    set(instance, "InstanceID", "id-1");
    set(instance, "Label", "last");
    CMSetPropertyFilter(instance, asked.properties, nullptr);
    CMReturnInstance(asked.result, instance);
    return ok();
}

// Everything that is no object, and one object twice, before and after a change.
CMPIStatus enumerate_odd(const Asked& asked) {
    CMReturnInstance(asked.result, nullptr);
    CMReturnInstance(asked.result, minus_one<CMPIInstance>());
    CMPIInstance* instance = new_thing("again");
    CMReturnInstance(asked.result, instance);
    set_number(instance, "Size", 2);
    CMReturnInstance(asked.result, instance);
    CMPIInstance* released = new_thing("released");
    CMRelease(released);
    CMReturnInstance(asked.result, released);
    return ok();
}

CMPIStatus odd_names(const Asked& asked) {
    CMReturnObjectPath(asked.result, nullptr);
    CMReturnObjectPath(asked.result, minus_one<CMPIObjectPath>());
    CMReturnObjectPath(asked.result, thing("only"));
    return ok();
}

CMPIStatus fail_halfway(const Asked& asked) {
    CMReturnInstance(asked.result, new_thing("half"));
    return {CMPI_RC_ERR_ACCESS_DENIED, CMNewString(broker, "the <door> is locked", nullptr)};
}

CMPIStatus fail_oddly(const Asked&) {
    return {CMPI_RC_ERR_INVALID_HANDLE, nullptr}; // a code that CIM does not have
}

CMPIStatus fail_with_error_object(const Asked& asked) {
    CMPIError* error =
        broker->eft->newCMPIError(broker, "Probe", "P1", "the error object tells", ErrorSevHigh,
                                  ErrorProbCauseUnknown, CMPI_RC_ERR_FAILED, nullptr);
    asked.result->ft->returnError(asked.result, error);
    return {CMPI_RC_ERR_FAILED, nullptr};
}

CMPIStatus enumerate_noisy(const Asked& asked) {
    std::puts("Probe_Noisy was enumerated");
    CMReturnInstance(asked.result, new_thing("noisy"));
    return ok();
}

CMPIStatus enumerate_dirty(const Asked& asked) {
    CMPIInstance* instance = new_thing("dirty \x01<&>\xC3");
    set(instance, "Controls",
        "a\x02"
        "b\x1F"
        "c");
    set(instance, "BrokenUtf8", "\xFF\xC0\x80 \xE2\x82 \xED\xA0\x80 end");
    set(instance, "Markup", "</VALUE><![CDATA[ ]]> & \"quoted\" 'too'\r\n\ttab");
    set(instance, "Text",
        "Gr\xC3\xBC\xC3\x9F"
        "e \xF0\x9F\x92\xA1");
    CMPIValue loneSurrogate{};
    loneSurrogate.char16 = 0xD800;
    CMSetProperty(instance, "LoneSurrogate", &loneSurrogate, CMPI_char16);
    set(instance, "Bad \"name\" <\x03>", "x");
    CMReturnInstance(asked.result, instance);
    return ok();
}

// One property of every type.
CMPIStatus enumerate_types(const Asked& asked) {
    CMPIInstance* instance = new_thing("types");
    CMPIValue v{};
    const auto put = [&](const char* name, CMPIType type) { CMSetProperty(instance, name, &v, type); };
    v.boolean = 1, put("aBoolean", CMPI_boolean);
    v.char16 = 0x20AC, put("aChar16", CMPI_char16);
    v.uint8 = 255, put("aUint8", CMPI_uint8);
    v.uint16 = 65535, put("aUint16", CMPI_uint16);
    v.uint32 = 4294967295U, put("aUint32", CMPI_uint32);
    v.uint64 = 18446744073709551615ULL, put("aUint64", CMPI_uint64);
    v.sint8 = -128, put("aSint8", CMPI_sint8);
    v.sint16 = -32768, put("aSint16", CMPI_sint16);
    v.sint32 = -2147483647 - 1, put("aSint32", CMPI_sint32);
    v.sint64 = -9223372036854775807LL - 1, put("aSint64", CMPI_sint64);
    v.real32 = 1.5F, put("aReal32", CMPI_real32);
    v.real64 = 1e300, put("aReal64", CMPI_real64);
    v.string = CMNewString(broker, "text", nullptr), put("aString", CMPI_string);
    v.dateTime = CMNewDateTimeFromChars(broker, "20240229123456.000789+060", nullptr),
    put("aDateTime", CMPI_dateTime);
    v.ref = thing("target"), put("aReference", CMPI_ref);
    v.inst = new_thing("inside"), put("anInstance", CMPI_instance);
    CMSetProperty(instance, "aNull", nullptr, CMPI_string);
    v.array = CMNewArray(broker, 3, CMPI_uint16, nullptr);
    CMPIValue element{};
    element.uint16 = 3;
    CMSetArrayElementAt(v.array, 0, &element, CMPI_uint16);
    CMSetArrayElementAt(v.array, 2, &element, CMPI_uint16);
    put("anArray", CMPI_uint16A);
    v.array = CMNewArray(broker, 1, CMPI_chars, nullptr);
    CMSetArrayElementAt(v.array, 0, chars("s"), CMPI_chars);
    put("aStringArray", CMPI_stringA);
    instance->ft->setPropertyWithOrigin(instance, "withOrigin", chars("o"), CMPI_chars, "Probe_Base");
    CMReturnInstance(asked.result, instance);
    return ok();
}

constexpr int MANY = 3000;

// One path for all, changed and returned again and again.
CMPIStatus many_names(const Asked& asked) {
    CMPIObjectPath* path = new_path("Probe_Thing");
    for (int i = 0; i < MANY; ++i) {
        const std::string name = std::to_string(i);
        CMAddKey(path, "Name", chars(name.c_str()), CMPI_chars);
        CMReturnObjectPath(asked.result, path);
    }
    return ok();
}

CMPIStatus enumerate_many(const Asked& asked) {
    for (int i = 0; i < MANY; ++i) {
        CMReturnInstance(asked.result, new_thing(std::to_string(i).c_str()));
    }
    return ok();
}

std::atomic<int> inside{0};
std::atomic<int> mostInside{0};

// Tells how many requests have been inside at the same time.
CMPIStatus enumerate_slow(const Asked& asked) {
    const int now = ++inside;
    for (int most = mostInside; most < now && !mostInside.compare_exchange_weak(most, now);) {
    }
    broker->xft->threadSleep(300);
    CMPIInstance* instance = new_thing("slow");
    set_number(instance, "MostInside", static_cast<CMPIUint32>(mostInside.load()));
    CMReturnInstance(asked.result, instance);
    --inside;
    return ok();
}

CMPIStatus enumerate_context(const Asked& asked) {
    CMPIInstance* instance = new_thing("context");
    const CMPICount count = CMGetContextEntryCount(asked.context, nullptr);
    for (CMPICount i = 0; i < count; ++i) {
        CMPIString* name = nullptr;
        const CMPIData entry = CMGetContextEntryAt(asked.context, i, &name, nullptr);
        CMSetProperty(instance, CMGetCharPtr(name), &entry.value, entry.type);
    }
    set(instance, "AskedClass", class_of(asked.path).c_str());
    set(instance, "AskedNameSpace", CMGetCharPtr(CMGetNameSpace(asked.path, nullptr)));
    CMPICount wanted = 0;
    while ((asked.properties != nullptr) && (asked.properties[wanted] != nullptr))
        ++wanted;
    set_number(instance, "WantedCount", asked.properties != nullptr ? wanted : 99);
    CMReturnInstance(asked.result, instance);
    return ok();
}

// Hands on what calls back into the server yield.
CMPIStatus enumerate_through_broker(const Asked& asked) {
    CMPIStatus status{};
    const auto returnAll = [&](const CMPIEnumeration* found) {
        while ((found != nullptr) && (CMHasNext(found, nullptr) != 0)) {
            CMReturnInstance(asked.result, CMGetNext(found, nullptr).value.inst);
        }
    };
    returnAll(CBEnumInstances(broker, asked.context, new_path("Probe_Thing"), nullptr, &status));
    if (status.rc != CMPI_RC_OK) return status;
    CMReturnInstance(asked.result, CBGetInstance(broker, asked.context, thing("got"), nullptr, &status));
    if (status.rc != CMPI_RC_OK) return status;
    returnAll(CBAssociators(broker, asked.context, thing("one"), "Probe_Link", nullptr, nullptr, nullptr,
                            nullptr, &status));
    if (status.rc != CMPI_RC_OK) return status;
    returnAll(CBReferences(broker, asked.context, thing("one"), "Probe_Link", nullptr, nullptr, &status));
    return status;
}

CMPIStatus names_through_broker(const Asked& asked) {
    CMPIStatus status{};
    const auto returnAll = [&](const CMPIEnumeration* found) {
        const CMPIArray* paths = found != nullptr ? CMToArray(found, nullptr) : nullptr;
        for (CMPICount i = 0; (paths != nullptr) && i < CMGetArrayCount(paths, nullptr); ++i) {
            CMReturnObjectPath(asked.result, CMGetArrayElementAt(paths, i, nullptr).value.ref);
        }
    };
    returnAll(CBEnumInstanceNames(broker, asked.context, new_path("Probe_Thing"), &status));
    returnAll(CBAssociatorNames(broker, asked.context, thing("one"), "Probe_Link", nullptr, nullptr, nullptr,
                                &status));
    returnAll(CBReferenceNames(broker, asked.context, thing("one"), "Probe_Link", nullptr, &status));
    return status;
}

struct OtherThread {
    CMPIContext* context;
    CMPIInstance* made;
};

void* make_on_other_thread(void* parameter) {
    auto* work = static_cast<OtherThread*>(parameter);
    CBAttachThread(broker, work->context);
    CMPIInstance* mine = new_thing("from another thread");
    work->made = CMClone(mine, nullptr);
    CBDetachThread(broker, work->context);
    return nullptr;
}

CMPIStatus enumerate_threaded(const Asked& asked) {
    OtherThread work{CBPrepareAttachThread(broker, asked.context), nullptr};
    CMPI_THREAD_TYPE thread = broker->xft->newThread(make_on_other_thread, &work, 0);
    broker->xft->joinThread(thread, nullptr);
    CMReturnInstance(asked.result, work.made);
    CMRelease(work.made); // a clone is its maker's to release
    return ok();
}

// ---- Getting an instance. ----

CMPIStatus get_thing(const Asked& asked) {
    const std::string name = key_of(asked.path, "Name");
    if (name == "missing") return ok();
    if (name == "null") {
        CMReturnInstance(asked.result, nullptr);
        return ok();
    }
    if (name == "hint") return {CMPI_RC_OK, CMNewString(broker, "try another name", nullptr)};
    CMPIInstance* instance = new_thing(name.c_str());
    set(instance, "Colour", "blue");
    CMReturnInstance(asked.result, instance);
    if (name == "twice") CMReturnInstance(asked.result, new_thing("second"));
    return ok();
}

// Gives the keys back as properties, and their types as text.
CMPIStatus get_echo(const Asked& asked) {
    CMPIInstance* instance = CMNewInstance(broker, new_path("Probe_Echo"), nullptr);
    const CMPICount count = CMGetKeyCount(asked.path, nullptr);
    for (CMPICount i = 0; i < count; ++i) {
        CMPIString* name = nullptr;
        const CMPIData key = CMGetKeyAt(asked.path, i, &name, nullptr);
        CMSetProperty(instance, CMGetCharPtr(name), &key.value, key.type);
        set_number(instance, (std::string("typeOf") + CMGetCharPtr(name)).c_str(), key.type);
    }
    set(instance, "PathText", CMGetCharPtr(CDToString(broker, asked.path, nullptr)));
    CMReturnInstance(asked.result, instance);
    return ok();
}

// ---- Associations. ----
//
// Probe_Link joins thing "one" (Left) and thing "two" (Right), and Probe_Twin joins the same two. Probe_Part
// joins thing "one" (Whole) and part "p" (Piece), but only the part knows of the association object. Asked
// for no class the provider answers nothing; asked for one that it does not know it answers with junk.

CMPIObjectPath* part() {
    return new_path("Probe_Piece", "InstanceID", "p");
}

CMPIObjectPath* link(const char* className, const char* role1, CMPIObjectPath* end1, const char* role2,
                     CMPIObjectPath* end2) {
    CMPIObjectPath* path = new_path(className);
    CMPIValue end{};
    end.ref = end1;
    CMAddKey(path, role1, &end, CMPI_ref);
    end.ref = end2;
    CMAddKey(path, role2, &end, CMPI_ref);
    return path;
}

bool asks_for(const char* asked, const char* className) {
    return (asked != nullptr) && strcasecmp(asked, className) == 0;
}

// The far end of an association class as the provider sees it from the source; NULL for none.
CMPIObjectPath* far_end(const CMPIObjectPath* source, const char* association) {
    if (association == nullptr) return nullptr;
    const bool isOne = is_a(source, "Probe_Thing") && key_of(source, "Name") == "one";
    const bool isTwo = is_a(source, "Probe_Thing") && key_of(source, "Name") == "two";
    if (asks_for(association, "Probe_Link") || asks_for(association, "Probe_Twin")) {
        // Another spelling of the class: it is the same class all the same.
        if (isOne)
            return new_path(asks_for(association, "Probe_Twin") ? "PROBE_THING" : "Probe_Thing", "Name",
                            "two");
        return isTwo ? thing("one") : nullptr;
    }
    if (asks_for(association, "Probe_Part")) {
        if (isOne) return part();
        return is_a(source, "Probe_Piece") ? thing("one") : nullptr;
    }
    if (asks_for(association, "Probe_Denied")) return minus_one<CMPIObjectPath>();
    return new_path("Probe_Junk", "InstanceID", association);
}

CMPIObjectPath* link_of(const CMPIObjectPath* source, const char* association) {
    const bool isThing = is_a(source, "Probe_Thing");
    if (isThing && (asks_for(association, "Probe_Link") || asks_for(association, "Probe_Twin"))) {
        return link(association, "Left", thing("one"), "Right", thing("two"));
    }
    if (is_a(source, "Probe_Piece") && asks_for(association, "Probe_Part")) {
        return link("Probe_Part", "Whole", thing("one"), "Piece", part());
    }
    return nullptr;
}

CMPIStatus associator_names(const Asked& asked, const char* association) {
    if (asks_for(association, "Probe_Failing"))
        return {CMPI_RC_ERR_FAILED, CMNewString(broker, "no way", nullptr)};
    if (association != nullptr) CMReturnObjectPath(asked.result, far_end(asked.path, association));
    return ok();
}

CMPIStatus associators(const Asked& asked, const char* association) {
    const CMPIObjectPath* end = far_end(asked.path, association);
    if ((end == nullptr) || end == minus_one<CMPIObjectPath>()) {
        CMReturnInstance(asked.result, reinterpret_cast<const CMPIInstance*>(end));
        return ok();
    }
    CMPIInstance* instance = CMNewInstance(broker, end, nullptr);
    set(instance, "Colour", "green");
    CMReturnInstance(asked.result, instance);
    return ok();
}

CMPIStatus reference_names(const Asked& asked, const char* association) {
    const CMPIObjectPath* found = link_of(asked.path, association);
    if (found != nullptr) CMReturnObjectPath(asked.result, found);
    return ok();
}

CMPIStatus references(const Asked& asked, const char* association) {
    const CMPIObjectPath* found = link_of(asked.path, association);
    if (found != nullptr) CMReturnInstance(asked.result, CMNewInstance(broker, found, nullptr));
    return ok();
}

// ---- Which class does what. ----

struct Behaviour {
    const char* className;
    CMPIStatus (*names)(const Asked&);
    CMPIStatus (*instances)(const Asked&);
    CMPIStatus (*get)(const Asked&);
};

CMPIStatus thing_names(const Asked& asked) {
    CMReturnObjectPath(asked.result, thing("one"));
    CMReturnObjectPath(asked.result, thing("two"));
    return ok();
}

constexpr Behaviour BEHAVIOURS[] = {
    {"Probe_Thing", thing_names, enumerate_things, get_thing},
    {"Probe_Keyless", nullptr, enumerate_keyless, nullptr},
    {"Probe_Odd", odd_names, enumerate_odd, nullptr},
    {"Probe_Failing", fail_halfway, fail_halfway, fail_halfway},
    {"Probe_OddlyFailing", fail_oddly, fail_oddly, fail_oddly},
    {"Probe_ErrorObject", nullptr, fail_with_error_object, nullptr},
    {"Probe_Noisy", nullptr, enumerate_noisy, nullptr},
    {"Probe_Dirty", nullptr, enumerate_dirty, nullptr},
    {"Probe_Types", nullptr, enumerate_types, nullptr},
    {"Probe_Many", many_names, enumerate_many, nullptr},
    {"Probe_Slow", nullptr, enumerate_slow, nullptr},
    {"Probe_Context", nullptr, enumerate_context, enumerate_context},
    {"Probe_ThroughBroker", names_through_broker, enumerate_through_broker, nullptr},
    {"Probe_Threaded", nullptr, enumerate_threaded, nullptr},
    {"Probe_Echo", nullptr, nullptr, get_echo},
};

CMPIStatus dispatch(CMPIStatus (*Behaviour::*operation)(const Asked&), const Asked& asked) {
    for (const Behaviour& behaviour : BEHAVIOURS) {
        if (is_a(asked.path, behaviour.className) && (behaviour.*operation != nullptr))
            return (behaviour.*operation)(asked);
    }
    return ok();
}

CMPIStatus ProbeCleanup(CMPIInstanceMI*, const CMPIContext*, CMPIBoolean) {
    return ok();
}

CMPIStatus ProbeEnumInstanceNames(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path) {
    return dispatch(&Behaviour::names, {context, result, path, nullptr});
}

CMPIStatus ProbeEnumInstances(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result,
                              const CMPIObjectPath* path, const char** properties) {
    return dispatch(&Behaviour::instances, {context, result, path, properties});
}

CMPIStatus ProbeGetInstance(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result,
                            const CMPIObjectPath* path, const char** properties) {
    return dispatch(&Behaviour::get, {context, result, path, properties});
}

CMPIStatus ProbeCreateInstance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult* result,
                               const CMPIObjectPath* path, const CMPIInstance* instance) {
    if (!is_a(path, "Probe_Thing")) return {CMPI_RC_ERR_NOT_SUPPORTED, nullptr};
    CMReturnObjectPath(result, thing(CMGetCharPtr(CMGetProperty(instance, "Name", nullptr).value.string)));
    return ok();
}

CMPIStatus ProbeModifyInstance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*,
                               const CMPIObjectPath* path, const CMPIInstance* instance,
                               const char** properties) {
    const bool oneWanted =
        (properties != nullptr) && (properties[0] != nullptr) && (properties[1] == nullptr);
    const bool coloured = CMGetProperty(instance, "Colour", nullptr).type == CMPI_string;
    if (key_of(path, "Name") == "one" && oneWanted && coloured) return ok();
    return {CMPI_RC_ERR_NOT_FOUND, CMNewString(broker, "nothing to modify", nullptr)};
}

CMPIStatus ProbeDeleteInstance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*,
                               const CMPIObjectPath* path) {
    if (key_of(path, "Name") == "one") return ok();
    return {CMPI_RC_ERR_NOT_FOUND, nullptr};
}

CMPIStatus ProbeExecQuery(CMPIInstanceMI*, const CMPIContext*, const CMPIResult* result,
                          const CMPIObjectPath* path, const char* query, const char* language) {
    if (strcasecmp(language, "WQL") != 0) return {CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED, nullptr};
    CMPIInstance* instance = new_thing("found");
    set(instance, "Query", query);
    set(instance, "ClassAsked", class_of(path).c_str());
    CMReturnInstance(result, instance);
    return ok();
}

CMPIStatus ProbeAssociationCleanup(CMPIAssociationMI*, const CMPIContext*, CMPIBoolean) {
    return ok();
}

CMPIStatus ProbeAssociators(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                            const CMPIObjectPath* path, const char* association, const char*, const char*,
                            const char*, const char** properties) {
    return associators({context, result, path, properties}, association);
}

CMPIStatus ProbeAssociatorNames(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                                const CMPIObjectPath* path, const char* association, const char*, const char*,
                                const char*) {
    return associator_names({context, result, path, nullptr}, association);
}

CMPIStatus ProbeReferences(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                           const CMPIObjectPath* path, const char* association, const char*,
                           const char** properties) {
    return references({context, result, path, properties}, association);
}

CMPIStatus ProbeReferenceNames(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                               const CMPIObjectPath* path, const char* association, const char*) {
    return reference_names({context, result, path, nullptr}, association);
}

} // namespace

CMInstanceMIStub(Probe, Probe, broker, CMNoHook) CMAssociationMIStub(Probe, Probe, broker, CMNoHook)

    // Two providers more: one without associations, one that cannot be made.
    namespace {
    const CMPIBroker* otherBroker = nullptr;
}
CMInstanceMIStub(Probe, InstancesOnly, otherBroker,
                 CMNoHook) CMPI_EXTERN_C CMPIInstanceMI* Unmakeable_Create_InstanceMI(const CMPIBroker* mb,
                                                                                      const CMPIContext*,
                                                                                      CMPIStatus* rc) {
    CMSetStatusWithChars(mb, rc, CMPI_RC_ERR_FAILED, "out of order");
    return nullptr;
}
