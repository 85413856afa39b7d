// The recording broker itself: what a suite believes of it.
#include "tests/support/recording_broker.h"
#include "common/results.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <sstream>

#include "emulator/control.h"
#include "tests/support/stdout_capture.h"

namespace {

using namespace test_support;
using Texts = std::vector<std::string>;

class RecordingBrokerTest : public testing::Test {
  protected:
    const CMPIBroker* mb = broker().cmpi();

    // Failures that gtest expects of a statement can only be seen in a static function's reach.
    static RecordingBroker& broker() {
        static RecordingBroker broker;
        return broker;
    }
    void SetUp() override { broker().clear(); }

    CMPIObjectPath* new_path() { return mb->eft->newObjectPath(mb, "root/x", "KESTO_Class", nullptr); }
    CMPIInstance* new_instance() { return mb->eft->newInstance(mb, new_path(), nullptr); }
    static const CMPIValue* chars(const char* text) { return reinterpret_cast<const CMPIValue*>(text); }
};

TEST_F(RecordingBrokerTest, IsABrokerOfVersionOne) {
    EXPECT_EQ(mb->bft->brokerVersion, 100);
    EXPECT_EQ(mb->eft->ftVersion, 100);
    EXPECT_EQ(mb->mft, nullptr);
    EXPECT_EQ(mb->eft->newCMPIError, nullptr);
    EXPECT_EQ(mb->eft->newStringCP, nullptr);
    EXPECT_EQ(mb->bft->enumerateInstancesFiltered, nullptr);
    EXPECT_EQ(new_instance()->ft->setPropertyWithOrigin, nullptr);
    EXPECT_NE(mb->eft->newDateTime, nullptr);
    EXPECT_NE(mb->bft->getInstance, nullptr);
}

TEST_F(RecordingBrokerTest, KeepsCallsInTheirOrder) {
    CMPIObjectPath* path = new_path();
    path->ft->setHostname(path, "host");
    CMPIInstance* instance = mb->eft->newInstance(mb, path, nullptr);
    CMPIValue value{};
    value.uint16 = 5;
    instance->ft->setProperty(instance, "TunnelID", &value, CMPI_uint16);
    const char* keys[] = {nullptr};
    instance->ft->setPropertyFilter(instance, nullptr, keys);
    EXPECT_EQ(broker().call_texts(),
              (Texts{"newObjectPath root/x KESTO_Class", "setHostname \"host\"", "newInstance KESTO_Class",
                     "setProperty TunnelID CMPI_uint16 5", "setPropertyFilter properties=NULL keys={}"}));
}

TEST_F(RecordingBrokerTest, TextsAreReadAtTheTimeOfTheCall) {
    CMPIInstance* instance = new_instance();
    char buffer[8] = "first";
    instance->ft->setProperty(instance, "Name", chars(buffer), CMPI_chars);
    std::strcpy(buffer, "second");
    instance->ft->setProperty(instance, "Name", chars(buffer), CMPI_chars);
    EXPECT_EQ(broker().recorded(instance).sets(),
              (Sets{{"Name", CMPI_chars, "first"}, {"Name", CMPI_chars, "second"}}));
    EXPECT_EQ(broker().recorded(instance).value("Name"), "second");
}

TEST_F(RecordingBrokerTest, NumbersAreReadInTheWidthOfTheirType) {
    CMPIInstance* instance = new_instance();
    CMPIValue value;
    std::memset(&value, 0xFF, sizeof value);
    for (const int type : {CMPI_uint8, CMPI_uint16, CMPI_uint32, CMPI_uint64, CMPI_sint32, CMPI_boolean}) {
        instance->ft->setProperty(instance, "N", &value, static_cast<CMPIType>(type));
    }
    EXPECT_EQ(broker().recorded(instance).sets(), (Sets{{"N", CMPI_uint8, 255},
                                                        {"N", CMPI_uint16, 65535},
                                                        {"N", CMPI_uint32, 4294967295U},
                                                        {"N", CMPI_uint64, 18446744073709551615U},
                                                        {"N", CMPI_sint32, -1},
                                                        {"N", CMPI_boolean, 255}}));
}

TEST_F(RecordingBrokerTest, DifferencesAreSeen) {
    const Set set{"Name", CMPI_chars, "1"};
    EXPECT_NE(set, (Set{"name", CMPI_chars, "1"}));
    EXPECT_NE(set, (Set{"Name", CMPI_string, "1"}));
    EXPECT_NE(set, (Set{"Name", CMPI_chars, "2"}));
    EXPECT_NE(set, (Set{"Name", CMPI_chars, 1}));
    EXPECT_NE(set, (Set{"Name", CMPI_chars, nullptr}));
    EXPECT_NE(Value(""), Value(nullptr));
}

TEST_F(RecordingBrokerTest, SetsPrintOneCallALine) {
    std::ostringstream out;
    out << Sets{{"Name", CMPI_chars, "x"}, {"TunnelID", CMPI_uint16, 5}};
    EXPECT_EQ(out.str(), "\n      Name CMPI_chars \"x\"\n      TunnelID CMPI_uint16 5");
}

TEST_F(RecordingBrokerTest, ReferencesAreKeptAsWholePaths) {
    CMPIObjectPath* end = new_path();
    end->ft->addKey(end, "Name", chars("5"), CMPI_chars);
    CMPIInstance* instance = new_instance();
    CMPIValue value{};
    value.ref = end;
    instance->ft->setProperty(instance, "Antecedent", &value, CMPI_ref);
    EXPECT_EQ(broker().recorded(instance).value("Antecedent"),
              RecordedPath("root/x", "KESTO_Class", {{"Name", CMPI_chars, "5"}}));
}

TEST_F(RecordingBrokerTest, KeysOfARequestReadBackAsTheyWereGiven) {
    CMPIObjectPath* path =
        broker().path("root/x", "KESTO_Class", {{"Name", "text"}, {"Number", CMPI_uint32, 7}});
    EXPECT_EQ(path->ft->getKeyCount(path, nullptr), 2U);
    CMPIString* name = nullptr;
    const CMPIData text = path->ft->getKeyAt(path, 0, &name, nullptr);
    EXPECT_STREQ(name->ft->getCharPtr(name, nullptr), "Name");
    EXPECT_EQ(text.type, CMPI_string);
    EXPECT_STREQ(text.value.string->ft->getCharPtr(text.value.string, nullptr), "text");
    const CMPIData number = path->ft->getKey(path, "NUMBER", nullptr);
    EXPECT_EQ(number.type, CMPI_uint32);
    EXPECT_EQ(number.value.uint32, 7U);
    CMPIStatus status{};
    EXPECT_EQ(path->ft->getKeyAt(path, 2, nullptr, &status).state, CMPI_nullValue);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(RecordingBrokerTest, NthObjectFails) {
    broker().fail_nth(Make::ObjectPath, 2, Failure::Null);
    EXPECT_NE(new_path(), nullptr);
    EXPECT_FALSE(broker().fault_hit());
    EXPECT_EQ(new_path(), nullptr);
    EXPECT_TRUE(broker().fault_hit());
    EXPECT_NE(new_path(), nullptr);
    EXPECT_EQ(broker().made(Make::ObjectPath), 3U);
}

TEST_F(RecordingBrokerTest, EveryObjectFails) {
    broker().fail_every(Make::String, Failure::Null);
    CMPIStatus status{};
    EXPECT_EQ(mb->eft->newString(mb, "x", &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    EXPECT_EQ(mb->eft->newString(mb, "x", nullptr), nullptr);
    broker().clear_faults();
    EXPECT_NE(mb->eft->newString(mb, "x", nullptr), nullptr);
}

TEST_F(RecordingBrokerTest, ObjectWithoutAHandleTakesNothing) {
    broker().fail_nth(Make::Instance, 1, Failure::WithoutHandle);
    CMPIInstance* instance = new_instance();
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(instance->hdl, nullptr);
    EXPECT_EQ(instance->ft->setProperty(instance, "Name", chars("x"), CMPI_chars).rc,
              CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(broker().recorded(instance).kind(), Object::WithoutHandle);
    EXPECT_TRUE(broker().recorded(instance).sets().empty());
    EXPECT_EQ(broker().call_texts().back(), "setProperty without a handle");
}

TEST_F(RecordingBrokerTest, UseOfAReleasedObjectFailsTheTest) {
    static CMPIObjectPath* path;
    path = new_path();
    path->ft->release(path);
    EXPECT_EQ(broker().call_texts().back(), "releaseObjectPath root/x:KESTO_Class{}");
    EXPECT_NONFATAL_FAILURE(path->ft->setHostname(path, "x"), "released object");
}

TEST_F(RecordingBrokerTest, CallThatTheProviderHasNoUseForFailsTheTest) {
    static const CMPIBroker* caller;
    caller = mb;
    EXPECT_NONFATAL_FAILURE(caller->eft->newDateTime(caller, nullptr), "has no use for");
}

TEST_F(RecordingBrokerTest, ResultKeepsEverythingInItsOrder) {
    RecordingResult result(broker());
    const CMPIResult* rslt = result.cmpi();
    rslt->ft->returnInstance(rslt, new_instance());
    rslt->ft->returnObjectPath(rslt, nullptr);
    rslt->ft->returnInstance(rslt, error_object<CMPIInstance>());
    rslt->ft->returnObjectPath(rslt, new_path());
    rslt->ft->returnDone(rslt);
    std::ostringstream out;
    for (const Returned& returned : result.returned()) {
        out << returned << '\n';
    }
    EXPECT_EQ(out.str(),
              "instance KESTO_Class\n"
              "path NULL\n"
              "instance -1\n"
              "path root/x:KESTO_Class{}\n");
    EXPECT_EQ(result.instances().size(), 2U);
    EXPECT_EQ(result.paths().size(), 2U);
    EXPECT_EQ(result.done_calls(), 1U);
}

TEST_F(RecordingBrokerTest, CallsShowWhetherTheLockWasHeld) {
    new_path();
    {
        emulator::Locked lock;
        new_path();
    }
    const std::vector<Call> calls = broker().calls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_FALSE(calls[0].locked);
    EXPECT_TRUE(calls[1].locked);
    EXPECT_EQ(calls[0].function(), "newObjectPath");
}

TEST(StdoutCaptureTest, CatchesWhatStdioAndTheDescriptorPrint) {
    EXPECT_EQ(printed_by([] {
                  std::printf("a %d\n", 1);
                  std::puts("b");
                  std::fputs("c", stdout);
              }),
              "a 1\nb\nc");
    EXPECT_EQ(printed_by([] {}), "");
}

TEST(StdoutCaptureTest, CapturesNest) {
    std::string inner;
    const std::string outer = printed_by([&] {
        std::fputs("1", stdout);
        inner = printed_by([] { std::fputs("2", stdout); });
        std::fputs("3", stdout);
    });
    EXPECT_EQ(outer, "13");
    EXPECT_EQ(inner, "2");
}

} // namespace
