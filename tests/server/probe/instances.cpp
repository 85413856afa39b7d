#include "tests/server/probe/instances.h"

#include <cmpidt.h>
#include <cmpift.h>

#include <atomic>
#include <cstdio>
#include <string>

namespace probe {

namespace {

// Two instances with names in their paths, which honour the request's property filter.
CMPIStatus enumerate_things(const Asked& asked) {
    for (const char* name : {"one", "two"}) {
        CMPIInstance* instance = new_thing(name);
        instance->ft->setPropertyFilter(instance, asked.properties, nullptr);
        set(instance, "Colour", "red");
        set_number(instance, "Size", 7);
        return_instance(asked, instance);
    }
    return ok();
}

// A path without keys; the filter is applied last, as the properties are already there.
CMPIStatus enumerate_keyless(const Asked& asked) {
    CMPIInstance* instance = new_instance(new_path("Probe_Keyless"));
    set(instance, "Label", "first");
    set(instance, "InstanceID", "id-1");
    set(instance, "Label", "last");
    instance->ft->setPropertyFilter(instance, asked.properties, nullptr);
    return_instance(asked, instance);
    return ok();
}

// Everything that is no object, and one object twice, before and after a change.
CMPIStatus enumerate_odd(const Asked& asked) {
    return_instance(asked, nullptr);
    return_instance(asked, minus_one<CMPIInstance>());
    CMPIInstance* instance = new_thing("again");
    return_instance(asked, instance);
    set_number(instance, "Size", 2);
    return_instance(asked, instance);
    CMPIInstance* released = new_thing("released");
    released->ft->release(released);
    return_instance(asked, released);
    return ok();
}

CMPIStatus odd_names(const Asked& asked) {
    return_path(asked, nullptr);
    return_path(asked, minus_one<CMPIObjectPath>());
    return_path(asked, thing("only"));
    return ok();
}

CMPIStatus fail_halfway(const Asked& asked) {
    return_instance(asked, new_thing("half"));
    return {CMPI_RC_ERR_ACCESS_DENIED, new_string("the <door> is locked")};
}

CMPIStatus fail_oddly(const Asked&) {
    return {CMPI_RC_ERR_INVALID_HANDLE, nullptr}; // a code that CIM does not have
}

CMPIStatus fail_with_error_object(const Asked& asked) {
    CMPIError* error =
        broker->eft->newCMPIError(broker, "Probe", "P1", "the error object explains", ErrorSevHigh,
                                  ErrorProbCauseUnknown, CMPI_RC_ERR_FAILED, nullptr);
    asked.result->ft->returnError(asked.result, error);
    return {CMPI_RC_ERR_FAILED, nullptr};
}

CMPIStatus enumerate_noisy(const Asked& asked) {
    std::puts("Probe_Noisy was enumerated");
    return_instance(asked, new_thing("noisy"));
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
    instance->ft->setProperty(instance, "LoneSurrogate", &loneSurrogate, CMPI_char16);
    set(instance, "Bad \"name\" <\x03>", "x");
    return_instance(asked, instance);
    return ok();
}

// One property of every type.
CMPIStatus enumerate_types(const Asked& asked) {
    CMPIInstance* instance = new_thing("types");
    CMPIValue v{};
    const auto put = [&](const char* name, CMPIType type) {
        instance->ft->setProperty(instance, name, &v, type);
    };
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
    v.string = new_string("text"), put("aString", CMPI_string);
    v.dateTime = broker->eft->newDateTimeFromChars(broker, "20240229123456.000789+060", nullptr),
    put("aDateTime", CMPI_dateTime);
    v.ref = thing("target"), put("aReference", CMPI_ref);
    v.inst = new_thing("inside"), put("anInstance", CMPI_instance);
    instance->ft->setProperty(instance, "aNull", nullptr, CMPI_string);
    v.array = broker->eft->newArray(broker, 3, CMPI_uint16, nullptr);
    CMPIValue element{};
    element.uint16 = 3;
    v.array->ft->setElementAt(v.array, 0, &element, CMPI_uint16);
    v.array->ft->setElementAt(v.array, 2, &element, CMPI_uint16);
    put("anArray", CMPI_uint16A);
    v.array = broker->eft->newArray(broker, 1, CMPI_chars, nullptr);
    v.array->ft->setElementAt(v.array, 0, chars("s"), CMPI_chars);
    put("aStringArray", CMPI_stringA);
    instance->ft->setPropertyWithOrigin(instance, "withOrigin", chars("o"), CMPI_chars, "Probe_Base");
    return_instance(asked, instance);
    return ok();
}

constexpr int MANY = 3000;

// One path for all, changed and returned again and again.
CMPIStatus many_names(const Asked& asked) {
    CMPIObjectPath* path = new_path("Probe_Thing");
    for (int i = 0; i < MANY; ++i) {
        const std::string name = std::to_string(i);
        path->ft->addKey(path, "Name", chars(name.c_str()), CMPI_chars);
        return_path(asked, path);
    }
    return ok();
}

CMPIStatus enumerate_many(const Asked& asked) {
    for (int i = 0; i < MANY; ++i) {
        return_instance(asked, new_thing(std::to_string(i).c_str()));
    }
    return ok();
}

std::atomic<int> inside{0};
std::atomic<int> mostInside{0};

// Reports how many requests have been inside at the same time.
CMPIStatus enumerate_slow(const Asked& asked) {
    const int now = ++inside;
    for (int most = mostInside; most < now && !mostInside.compare_exchange_weak(most, now);) {
    }
    broker->xft->threadSleep(300);
    CMPIInstance* instance = new_thing("slow");
    set_number(instance, "MostInside", static_cast<CMPIUint32>(mostInside.load()));
    return_instance(asked, instance);
    --inside;
    return ok();
}

CMPIStatus enumerate_context(const Asked& asked) {
    CMPIInstance* instance = new_thing("context");
    const CMPICount count = asked.context->ft->getEntryCount(asked.context, nullptr);
    for (CMPICount i = 0; i < count; ++i) {
        CMPIString* name = nullptr;
        const CMPIData entry = asked.context->ft->getEntryAt(asked.context, i, &name, nullptr);
        instance->ft->setProperty(instance, chars_of(name), &entry.value, entry.type);
    }
    set(instance, "AskedClass", class_of(asked.path).c_str());
    set(instance, "AskedNameSpace", chars_of(asked.path->ft->getNameSpace(asked.path, nullptr)));
    CMPICount wanted = 0;
    while (asked.properties != nullptr && (asked.properties[wanted] != nullptr)) {
        ++wanted;
    }
    set_number(instance, "WantedCount", asked.properties != nullptr ? wanted : 99);
    return_instance(asked, instance);
    return ok();
}

// Hands on what calls back into the server yield.
CMPIStatus enumerate_through_broker(const Asked& asked) {
    CMPIStatus status{};
    const auto returnAll = [&](const CMPIEnumeration* found) {
        while (found != nullptr && (found->ft->hasNext(found, nullptr) != 0)) {
            return_instance(asked, found->ft->getNext(found, nullptr).value.inst);
        }
    };
    returnAll(
        broker->bft->enumerateInstances(broker, asked.context, new_path("Probe_Thing"), nullptr, &status));
    if (status.rc != CMPI_RC_OK) return status;
    return_instance(asked, broker->bft->getInstance(broker, asked.context, thing("got"), nullptr, &status));
    if (status.rc != CMPI_RC_OK) return status;
    returnAll(broker->bft->associators(broker, asked.context, thing("one"), "Probe_Link", nullptr, nullptr,
                                       nullptr, nullptr, &status));
    if (status.rc != CMPI_RC_OK) return status;
    returnAll(broker->bft->references(broker, asked.context, thing("one"), "Probe_Link", nullptr, nullptr,
                                      &status));
    return status;
}

CMPIStatus names_through_broker(const Asked& asked) {
    CMPIStatus status{};
    const auto returnAll = [&](const CMPIEnumeration* found) {
        const CMPIArray* paths = found != nullptr ? found->ft->toArray(found, nullptr) : nullptr;
        for (CMPICount i = 0; paths != nullptr && i < paths->ft->getSize(paths, nullptr); ++i) {
            return_path(asked, paths->ft->getElementAt(paths, i, nullptr).value.ref);
        }
    };
    returnAll(broker->bft->enumerateInstanceNames(broker, asked.context, new_path("Probe_Thing"), &status));
    returnAll(broker->bft->associatorNames(broker, asked.context, thing("one"), "Probe_Link", nullptr,
                                           nullptr, nullptr, &status));
    returnAll(
        broker->bft->referenceNames(broker, asked.context, thing("one"), "Probe_Link", nullptr, &status));
    return status;
}

struct OtherThread {
    CMPIContext* context;
    CMPIInstance* made;
};

void* make_on_other_thread(void* parameter) {
    auto* work = static_cast<OtherThread*>(parameter);
    broker->bft->attachThread(broker, work->context);
    CMPIInstance* mine = new_thing("from another thread");
    work->made = mine->ft->clone(mine, nullptr);
    broker->bft->detachThread(broker, work->context);
    return nullptr;
}

CMPIStatus enumerate_threaded(const Asked& asked) {
    OtherThread work{broker->bft->prepareAttachThread(broker, asked.context), nullptr};
    CMPI_THREAD_TYPE thread = broker->xft->newThread(make_on_other_thread, &work, 0);
    broker->xft->joinThread(thread, nullptr);
    return_instance(asked, work.made);
    work.made->ft->release(work.made); // a clone is its maker's to release
    return ok();
}

CMPIStatus get_thing(const Asked& asked) {
    const std::string name = key_of(asked.path, "Name");
    if (name == "missing") return ok();
    if (name == "null") {
        return_instance(asked, nullptr);
        return ok();
    }
    if (name == "hint") return {CMPI_RC_OK, new_string("try another name")};
    CMPIInstance* instance = new_thing(name.c_str());
    set(instance, "Colour", "blue");
    return_instance(asked, instance);
    if (name == "twice") return_instance(asked, new_thing("second"));
    return ok();
}

// Gives the keys back as properties, and their types as text.
CMPIStatus get_echo(const Asked& asked) {
    CMPIInstance* instance = new_instance(new_path("Probe_Echo"));
    const CMPICount count = asked.path->ft->getKeyCount(asked.path, nullptr);
    for (CMPICount i = 0; i < count; ++i) {
        CMPIString* name = nullptr;
        const CMPIData key = asked.path->ft->getKeyAt(asked.path, i, &name, nullptr);
        instance->ft->setProperty(instance, chars_of(name), &key.value, key.type);
        set_number(instance, (std::string("typeOf") + chars_of(name)).c_str(), key.type);
    }
    set(instance, "PathText", chars_of(broker->eft->toString(broker, asked.path, nullptr)));
    return_instance(asked, instance);
    return ok();
}

struct Behaviour {
    const char* className;
    CMPIStatus (*names)(const Asked&);
    CMPIStatus (*instances)(const Asked&);
    CMPIStatus (*get)(const Asked&);
};

CMPIStatus thing_names(const Asked& asked) {
    return_path(asked, thing("one"));
    return_path(asked, thing("two"));
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

CMPIStatus perform(CMPIStatus (*Behaviour::*operation)(const Asked&), const Asked& asked) {
    for (const Behaviour& behaviour : BEHAVIOURS) {
        if (is_a(asked.path, behaviour.className) && (behaviour.*operation != nullptr)) {
            return (behaviour.*operation)(asked);
        }
    }
    return ok();
}

} // namespace

CMPIStatus instance_names(const Asked& asked) {
    return perform(&Behaviour::names, asked);
}

CMPIStatus instances(const Asked& asked) {
    return perform(&Behaviour::instances, asked);
}

CMPIStatus instance(const Asked& asked) {
    return perform(&Behaviour::get, asked);
}

} // namespace probe
