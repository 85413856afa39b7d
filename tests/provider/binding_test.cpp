// The library among other providers in one process: this program has functions and data of the library's own
// names and lets every library that is loaded see them, as another provider that was loaded first would. The
// library must go on using its own.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "emulator/control.h"
#include "tests/support/recording_broker.h"
#include "tests/support/stdout_capture.h"

#define SEEN_BY_ALL __attribute__((visibility("default")))

namespace {
int strangersCalled = 0;
}

extern "C" {

SEEN_BY_ALL extern const CMPIBroker* _broker;
const CMPIBroker* _broker = nullptr;

// The signatures do not matter: none of these must ever be called.
SEEN_BY_ALL void initialize(void) {
    ++strangersCalled;
}
SEEN_BY_ALL int find_request_key(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int is_valid_key_for_class(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int get_fcip_link_entry_from(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int get_vsan_wwn(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int init_wwn(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int stats_request(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int stats_receive(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int fcip_pe_build_instance(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int get_all_fcip_pe_instances(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int FCIP_EnumInstances(void) {
    return ++strangersCalled;
}
SEEN_BY_ALL int FCIP_GetInstance(void) {
    return ++strangersCalled;
}

} // extern "C"

namespace {

using test_support::RecordingBroker;
using test_support::RecordingResult;

template <typename Symbol>
Symbol* symbol(void* library, const char* name) {
    return reinterpret_cast<Symbol*>(dlsym(library, name));
}

class BindingTest : public testing::Test {
  protected:
    void SetUp() override {
        emulator::reset();
        emulator::clear_calls();
        strangersCalled = 0;
        library = dlopen(FCIP_PROVIDER, RTLD_NOW | RTLD_GLOBAL);
        ASSERT_NE(library, nullptr) << dlerror();
        using Factory = CMPIInstanceMI*(const CMPIBroker*, const CMPIContext*, CMPIStatus*);
        auto* factory = symbol<Factory>(library, "FCIPProvider_Create_InstanceMI");
        ASSERT_NE(factory, nullptr) << dlerror();
        mi = factory(broker.cmpi(), nullptr, nullptr);
        ASSERT_NE(mi, nullptr);
    }
    void TearDown() override {
        EXPECT_EQ(strangersCalled, 0);
        EXPECT_EQ(emulator::misuse_count(), 0U) << emulator::misuse_report();
    }

    void* library = nullptr;
    RecordingBroker broker;
    CMPIInstanceMI* mi = nullptr;
};

TEST_F(BindingTest, ThisProgramsNamesComeFirstInTheProcess) {
    EXPECT_EQ(symbol<void(void)>(RTLD_DEFAULT, "initialize"), &initialize);
    EXPECT_EQ(symbol<const CMPIBroker*>(RTLD_DEFAULT, "_broker"), &_broker);
    EXPECT_NE(symbol<void(void)>(library, "initialize"), &initialize) << "the library has one of its own";
    EXPECT_NE(symbol<const CMPIBroker*>(library, "_broker"), &_broker) << "the library has one of its own";
}

TEST_F(BindingTest, FactoryRunsTheLibrarysOwnInitialize) {
    EXPECT_EQ(emulator::calls(), (std::vector<std::string>{"mutex_lock", "init_mts", "mutex_unlock"}));
}

TEST_F(BindingTest, FactoryStoresTheLibrarysOwnBroker) {
    EXPECT_EQ(_broker, nullptr) << "this program's own must stay as it was";
    EXPECT_EQ(*symbol<const CMPIBroker*>(library, "_broker"), broker.cmpi());
}

TEST_F(BindingTest, TablesHoldTheLibrarysOwnOperations) {
    EXPECT_EQ(reinterpret_cast<void*>(mi->ft->enumerateInstances), dlsym(library, "FCIP_EnumInstances"));
    EXPECT_EQ(reinterpret_cast<void*>(mi->ft->getInstance), dlsym(library, "FCIP_GetInstance"));
}

TEST_F(BindingTest, RequestsRunInTheLibraryAlone) {
    RecordingResult enumerated(broker);
    RecordingResult found(broker);
    test_support::printed_by([&] {
        const CMPIObjectPath* path = broker.path("root/kesto", "KESTO_FCIPProtocolEndPoint");
        mi->ft->enumerateInstances(mi, nullptr, enumerated.cmpi(), path, nullptr);
        ASSERT_FALSE(enumerated.instances().empty()) << "the built-in switch has tunnels";
        const std::string name = enumerated.instances()[0].value("Name").text();
        path = broker.path("root/kesto", "KESTO_FCIPProtocolEndPoint", {{"Name", name}});
        mi->ft->getInstance(mi, nullptr, found.cmpi(), path, nullptr);
    });
    ASSERT_EQ(found.instances().size(), 1U);
    EXPECT_EQ(found.instances()[0].sets(), enumerated.instances()[0].sets());
}

} // namespace
