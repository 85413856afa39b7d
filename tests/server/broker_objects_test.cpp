// The objects that a provider makes through the broker, used as a provider uses them.
#include <cstring>

#include "tests/server/broker_fixture.h"

namespace {

class Strings : public BrokerFixture {};
class Paths : public BrokerFixture {};
class Instances : public BrokerFixture {};
class Arrays : public BrokerFixture {};
class DateTimes : public BrokerFixture {};
class Lists : public BrokerFixture {};
class OtherObjects : public BrokerFixture {};

// ---- Strings. ----

TEST_F(Strings, HoldACopy) {
    char data[] = "text";
    const CMPIString* string = CMNewString(handle, data, &rc);
    data[0] = 'n';
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(text(string), "text");
}

TEST_F(Strings, NoDataIsTheEmptyString) {
    EXPECT_EQ(text(CMNewString(handle, nullptr, &rc)), "");
}

TEST_F(Strings, ConvertBetweenCodePages) {
    const CMPIString* string = CMNewString(handle, "\xE2\x82\xAC\xF0\x9F\x92\xA1", nullptr);
    const char* utf16 = string->ft->newCharsCP(string, CMPI_CPID_UTF16, &rc);
    ASSERT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(std::memcmp(utf16, u"\u20AC\U0001F4A1", 4 * sizeof(char16_t)), 0);
    EXPECT_EQ(text(handle->eft->newStringCP(handle, utf16, CMPI_CPID_UTF16, &rc)),
              "\xE2\x82\xAC\xF0\x9F\x92\xA1");
    EXPECT_EQ(string->ft->newCharsCP(string, CMPI_CPID_USASCII, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
}

// ---- Object paths. ----

TEST_F(Paths, HaveNamespaceHostAndClass) {
    CMPIObjectPath* made = path("First");
    CMSetNameSpace(made, "other");
    CMSetHostname(made, "switch1");
    CMSetClassName(made, "Second");
    EXPECT_EQ(text(CMGetNameSpace(made, &rc)), "other");
    EXPECT_EQ(text(CMGetHostname(made, &rc)), "switch1");
    EXPECT_EQ(text(CMGetClassName(made, &rc)), "Second");
    EXPECT_EQ(text(CDToString(handle, made, nullptr)), "//switch1/other:Second");
}

TEST_F(Paths, CharsBecomeStrings) {
    CMPIObjectPath* made = path();
    CMAddKey(made, "Name", chars("value"), CMPI_chars);
    const CMPIData key = CMGetKey(made, "NAME", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(key.type, CMPI_string);
    EXPECT_EQ(key.state, CMPI_keyValue);
    EXPECT_EQ(text(key.value.string), "value");
}

TEST_F(Paths, ARepeatedKeyKeepsItsPlaceAndTakesTheLastValue) {
    CMPIObjectPath* made = path();
    for (const char* value : {"1", "2"}) {
        CMAddKey(made, "First", chars(value), CMPI_chars);
        CMAddKey(made, "Second", chars("s"), CMPI_chars);
    }
    ASSERT_EQ(CMGetKeyCount(made, nullptr), 2U);
    CMPIString* name = nullptr;
    const CMPIData first = CMGetKeyAt(made, 0, &name, &rc);
    EXPECT_EQ(text(name), "First");
    EXPECT_EQ(text(first.value.string), "2");
}

TEST_F(Paths, KeysBeyondTheLastAreNotFound) {
    CMPIString* name = minus_one<CMPIString>();
    const CMPIData key = CMGetKeyAt(path(), 0, &name, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(key.state, CMPI_notFound);
    EXPECT_EQ(name, nullptr);
    CMGetKey(path(), "Name", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(Paths, ReferenceKeysAreCopies) {
    CMPIObjectPath* target = path("Target");
    CMPIValue value{};
    value.ref = target;
    CMPIObjectPath* made = path();
    CMAddKey(made, "End", &value, CMPI_ref);
    CMSetClassName(target, "Changed");
    EXPECT_EQ(text(CMGetClassName(CMGetKey(made, "End", nullptr).value.ref, nullptr)), "Target");
}

TEST_F(Paths, WhatIsNoObjectCannotBeAKey) {
    CMPIValue value{};
    value.ref = minus_one<CMPIObjectPath>();
    EXPECT_EQ(CMAddKey(path(), "End", &value, CMPI_ref).rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    EXPECT_EQ(CMAddKey(path(), "End", &value, 4999).rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    EXPECT_EQ(CMAddKey(path(), nullptr, chars(""), CMPI_chars).rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(Paths, TakeNamespaceAndHostFromAnother) {
    CMPIObjectPath* source = CMNewObjectPath(handle, "theirs", "C", nullptr);
    CMSetHostname(source, "there");
    CMPIObjectPath* made = path();
    CMSetNameSpaceFromObjectPath(made, source);
    EXPECT_EQ(text(CDToString(handle, made, nullptr)), "theirs:A_Class");
    CMSetHostAndNameSpaceFromObjectPath(made, source);
    EXPECT_EQ(text(CDToString(handle, made, nullptr)), "//there/theirs:A_Class");
}

TEST_F(Paths, QualifiersAreNotSupported) {
    const CMPIObjectPath* made = path();
    made->ft->getClassQualifier(made, "Key", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    made->ft->getParameterQualifier(made, "m", "p", "q", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

// ---- Instances. ----

TEST_F(Instances, HaveTheKeysOfTheirPath) {
    CMPIObjectPath* named = path();
    CMAddKey(named, "Name", chars("n"), CMPI_chars);
    const CMPIInstance* made = CMNewInstance(handle, named, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(property_text(made, "Name"), "n");
    EXPECT_EQ(text(CDToString(handle, CMGetObjectPath(made, nullptr), nullptr)),
              "root/test:A_Class.Name=\"n\"");
}

TEST_F(Instances, CannotBeMadeOfNothing) {
    EXPECT_EQ(CMNewInstance(handle, nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(CMNewInstance(handle, minus_one<CMPIObjectPath>(), &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(Instances, EveryWidthOfNumberComesBack) {
    CMPIInstance* made = instance();
    CMPIValue value{};
    value.sint8 = -1;
    CMSetProperty(made, "Tiny", &value, CMPI_sint8);
    value.uint16 = 65535;
    CMSetProperty(made, "Short", &value, CMPI_uint16);
    value.uint64 = 1ULL << 63U;
    CMSetProperty(made, "Long", &value, CMPI_uint64);
    value.real32 = 0.5F;
    CMSetProperty(made, "Real", &value, CMPI_real32);
    value.boolean = 7; // anything but 0 is true
    CMSetProperty(made, "Flag", &value, CMPI_boolean);
    EXPECT_EQ(CMGetProperty(made, "Tiny", nullptr).value.sint8, -1);
    EXPECT_EQ(CMGetProperty(made, "Short", nullptr).value.uint16, 65535);
    EXPECT_EQ(CMGetProperty(made, "Long", nullptr).value.uint64, 1ULL << 63U);
    EXPECT_EQ(CMGetProperty(made, "Real", nullptr).value.real32, 0.5F);
    EXPECT_EQ(CMGetProperty(made, "Flag", nullptr).value.boolean, 1);
}

TEST_F(Instances, ARepeatedPropertyKeepsItsPlaceAndTakesTheLastValue) {
    CMPIInstance* made = instance();
    CMSetProperty(made, "A", chars("1"), CMPI_chars);
    CMSetProperty(made, "B", chars("2"), CMPI_chars);
    CMSetProperty(made, "a", chars("3"), CMPI_chars);
    ASSERT_EQ(CMGetPropertyCount(made, nullptr), 2U);
    CMPIString* name = nullptr;
    EXPECT_EQ(text(CMGetPropertyAt(made, 0, &name, nullptr).value.string), "3");
    EXPECT_EQ(text(name), "A");
}

TEST_F(Instances, NullValuesAreNull) {
    CMPIInstance* made = instance();
    CMSetProperty(made, "Nothing", nullptr, CMPI_uint32);
    const CMPIData data = CMGetProperty(made, "Nothing", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(data.type, CMPI_uint32);
    EXPECT_EQ(data.state, CMPI_nullValue);
    CMGetProperty(made, "Missing", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

TEST_F(Instances, AFilterDropsWhatIsSetAfterwards) {
    CMPIInstance* made = instance();
    const char* wanted[] = {"colour", nullptr};
    const char* keys[] = {"Name", nullptr};
    CMSetPropertyFilter(made, wanted, keys);
    for (const char* name : {"Size", "NAME", "Colour"}) {
        EXPECT_EQ(CMSetProperty(made, name, chars(name), CMPI_chars).rc, CMPI_RC_OK);
    }
    ASSERT_EQ(CMGetPropertyCount(made, nullptr), 2U);
    EXPECT_EQ(property_text(made, "Name"), "NAME");
    EXPECT_EQ(property_text(made, "Colour"), "Colour");
}

TEST_F(Instances, AFilterDropsWhatHasBeenSetBefore) {
    CMPIInstance* made = instance();
    for (const char* name : {"Size", "Name", "Colour"}) {
        CMSetProperty(made, name, chars(name), CMPI_chars);
    }
    const char* wanted[] = {"COLOUR", nullptr};
    const char* noKeys[] = {nullptr};
    CMSetPropertyFilter(made, wanted, noKeys);
    ASSERT_EQ(CMGetPropertyCount(made, nullptr), 1U);
    EXPECT_EQ(property_text(made, "Colour"), "Colour");
}

TEST_F(Instances, AFilterKeepsTheKeysOfThePath) {
    CMPIObjectPath* named = path();
    CMAddKey(named, "Name", chars("n"), CMPI_chars);
    CMPIInstance* made = CMNewInstance(handle, named, nullptr);
    const char* nothing[] = {nullptr};
    CMSetPropertyFilter(made, nothing, nullptr);
    CMSetProperty(made, "Size", chars("big"), CMPI_chars);
    ASSERT_EQ(CMGetPropertyCount(made, nullptr), 1U);
    EXPECT_EQ(property_text(made, "Name"), "n");
}

TEST_F(Instances, NoListIsNoFilter) {
    CMPIInstance* made = instance();
    CMSetProperty(made, "Size", chars("big"), CMPI_chars);
    EXPECT_EQ(CMSetPropertyFilter(made, nullptr, nullptr).rc, CMPI_RC_OK);
    CMSetProperty(made, "Colour", chars("red"), CMPI_chars);
    EXPECT_EQ(CMGetPropertyCount(made, nullptr), 2U);
}

TEST_F(Instances, TakeAnotherPath) {
    CMPIInstance* made = instance();
    CMSetObjectPath(made, path("Another"));
    EXPECT_EQ(text(CMGetClassName(CMGetObjectPath(made, nullptr), nullptr)), "Another");
    EXPECT_EQ(CMSetObjectPath(made, nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(Instances, EmbeddedInstancesAreCopies) {
    CMPIInstance* inner = instance();
    CMSetProperty(inner, "Colour", chars("red"), CMPI_chars);
    CMPIValue value{};
    value.inst = inner;
    CMPIInstance* outer = instance();
    CMSetProperty(outer, "Inner", &value, CMPI_instance);
    CMSetProperty(inner, "Colour", chars("blue"), CMPI_chars);
    EXPECT_EQ(property_text(CMGetProperty(outer, "Inner", nullptr).value.inst, "Colour"), "red");
}

// ---- Arrays. ----

TEST_F(Arrays, StartAsNulls) {
    const CMPIArray* array = CMNewArray(handle, 2, CMPI_uint16, &rc);
    EXPECT_EQ(CMGetArrayCount(array, nullptr), 2U);
    EXPECT_EQ(CMGetArrayType(array, nullptr), CMPI_uint16);
    EXPECT_EQ(CMGetArrayElementAt(array, 1, &rc).state, CMPI_nullValue);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
}

TEST_F(Arrays, CheckIndexAndType) {
    CMPIArray* array = CMNewArray(handle, 1, CMPI_string, nullptr);
    EXPECT_EQ(CMSetArrayElementAt(array, 0, chars("a"), CMPI_chars).rc, CMPI_RC_OK);
    EXPECT_EQ(text(CMGetArrayElementAt(array, 0, nullptr).value.string), "a");
    CMPIValue value{};
    EXPECT_EQ(CMSetArrayElementAt(array, 0, &value, CMPI_uint8).rc, CMPI_RC_ERR_TYPE_MISMATCH);
    EXPECT_EQ(CMSetArrayElementAt(array, 1, chars("b"), CMPI_chars).rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
    CMGetArrayElementAt(array, 1, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
    EXPECT_EQ(CMNewArray(handle, 1, CMPI_null, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
}

TEST_F(Arrays, ComeBackFromProperties) {
    CMPIValue value{};
    value.array = CMNewArray(handle, 1, CMPI_chars, nullptr);
    CMSetArrayElementAt(value.array, 0, chars("a"), CMPI_chars);
    CMPIInstance* made = instance();
    CMSetProperty(made, "List", &value, CMPI_charsA);
    const CMPIData data = CMGetProperty(made, "List", &rc);
    EXPECT_EQ(data.type, CMPI_stringA);
    EXPECT_EQ(text(CMGetArrayElementAt(data.value.array, 0, nullptr).value.string), "a");
}

// ---- Dates. ----

TEST_F(DateTimes, ComeFromTextAndNumber) {
    const CMPIDateTime* time = CMNewDateTimeFromChars(handle, "19700101000001.000002+000", &rc);
    EXPECT_EQ(CMGetBinaryFormat(time, nullptr), 1000002U);
    EXPECT_FALSE(CMIsInterval(time, nullptr));
    const CMPIDateTime* interval = CMNewDateTimeFromBinary(handle, 1000002, 1, &rc);
    EXPECT_EQ(text(CMGetStringFormat(interval, nullptr)), "00000000000001.000002:000");
    EXPECT_TRUE(CMIsInterval(interval, nullptr));
    EXPECT_EQ(CMNewDateTimeFromChars(handle, "yesterday", &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_GT(CMGetBinaryFormat(CMNewDateTime(handle, nullptr), nullptr), 1500000000000000U);
}

// ---- Arguments and contexts. ----

TEST_F(Lists, ArgumentsComeBackByNameAndPlace) {
    CMPIArgs* args = CMNewArgs(handle, &rc);
    CMAddArg(args, "Text", chars("t"), CMPI_chars);
    CMPIValue value{};
    value.dataPtr = {&rc, 5};
    CMAddArg(args, "Pointer", &value, CMPI_ptr);
    EXPECT_EQ(CMGetArgCount(args, nullptr), 2U);
    EXPECT_EQ(text(CMGetArg(args, "text", nullptr).value.string), "t");
    CMPIString* name = nullptr;
    const CMPIData pointer = CMGetArgAt(args, 1, &name, nullptr);
    EXPECT_EQ(text(name), "Pointer");
    EXPECT_EQ(pointer.value.dataPtr.ptr, &rc);
    EXPECT_EQ(pointer.value.dataPtr.length, 5U);
    CMGetArg(args, "Missing", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
}

// ---- The rest. ----

TEST_F(OtherObjects, TellTheirTypes) {
    EXPECT_EQ(text(CDGetType(handle, instance(), &rc)), "CMPIInstance");
    EXPECT_TRUE(CDIsOfType(handle, path(), "CMPIObjectPath", &rc));
    EXPECT_FALSE(CDIsOfType(handle, path(), "CMPIInstance", &rc));
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(CDGetType(handle, nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    CDToString(handle, minus_one<void>(), &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(OtherObjects, ShowWhatTheyHold) {
    CMPIInstance* made = instance();
    CMSetProperty(made, "Colour", chars("red"), CMPI_chars);
    EXPECT_EQ(text(CDToString(handle, made, nullptr)), "instance of A_Class { Colour = \"red\"; }");
    EXPECT_EQ(text(CDToString(handle, CMNewString(handle, "s", nullptr), nullptr)), "s");
    CMPIArray* array = CMNewArray(handle, 2, CMPI_boolean, nullptr);
    CMPIValue yes{};
    yes.boolean = 1;
    CMSetArrayElementAt(array, 0, &yes, CMPI_boolean);
    EXPECT_EQ(text(CDToString(handle, array, nullptr)), "{ elements = {TRUE, NULL}; }");
}

TEST_F(OtherObjects, AClassIsItselfOnly) {
    EXPECT_TRUE(CMClassPathIsA(handle, path("A_Class"), "a_class", &rc));
    EXPECT_FALSE(CMClassPathIsA(handle, path("A_Class"), "A_Base", &rc));
}

TEST_F(OtherObjects, MessagesAreFilledIn) {
    const CMPIString* message = handle->eft->getMessage(
        handle, "id", "$0 of $1, $2 $3 $4 $9 $", &rc, 5, CMPI_chars, "one", CMPI_uint64, 7ULL, CMPI_boolean,
        1, CMPI_real64, 0.5, CMPI_string, CMNewString(handle, "end", nullptr));
    EXPECT_EQ(text(message), "one of 7, true 0.5 end $9 $");
    message = handle->eft->getMessage2(handle, "id", nullptr, "$0", &rc, 1, CMPI_sint32, -3L);
    EXPECT_EQ(text(message), "-3");
    CMPIMsgFileHandle file = &rc;
    EXPECT_EQ(handle->eft->openMessageFile(handle, "messages", &file).rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(OtherObjects, LogMessagesReachTheLogAndTracesOnlyOnDemand) {
    handle->eft->logMessage(handle, CMPI_SEV_ERROR, "Probe", "it broke", nullptr);
    handle->eft->logMessage(handle, CMPI_SEV_INFO, nullptr, nullptr,
                            CMNewString(handle, "a string", nullptr));
    handle->eft->trace(handle, CMPI_LEV_INFO, "Probe", "here", nullptr);
    EXPECT_EQ(logged, (std::vector<std::string>{"error: Probe: it broke", "a string"}));

    std::vector<std::string> traced;
    const cimserver::Broker tracing([&traced](const std::string& line) { traced.push_back(line); }, true);
    tracing.handle()->eft->trace(tracing.handle(), CMPI_LEV_INFO, "Probe", "here", nullptr);
    EXPECT_EQ(traced, std::vector<std::string>{"Probe: here"});
}

TEST_F(OtherObjects, ErrorsHoldWhatTheyAreTold) {
    CMPIError* error = handle->eft->newCMPIError(handle, "owner", "id", "message", ErrorSevHigh,
                                                 ErrorProbCauseOther, CMPI_RC_ERR_FAILED, &rc);
    EXPECT_EQ(text(error->ft->getOwningEntity(error, nullptr)), "owner");
    EXPECT_EQ(text(error->ft->getMessageID(error, nullptr)), "id");
    EXPECT_EQ(text(error->ft->getMessage(error, nullptr)), "message");
    EXPECT_EQ(error->ft->getPerceivedSeverity(error, nullptr), ErrorSevHigh);
    EXPECT_EQ(error->ft->getCIMStatusCode(error, nullptr), CMPI_RC_ERR_FAILED);
    error->ft->setErrorType(error, HardwareError);
    EXPECT_EQ(error->ft->getErrorType(error, nullptr), HardwareError);
    error->ft->setErrorSource(error, "source");
    EXPECT_EQ(text(error->ft->getErrorSource(error, nullptr)), "source");
    CMPIArray* actions = CMNewArray(handle, 1, CMPI_string, nullptr);
    EXPECT_EQ(error->ft->setRecommendedActions(error, actions).rc, CMPI_RC_OK);
    EXPECT_EQ(CMGetArrayCount(error->ft->getRecommendedActions(error, nullptr), nullptr), 1U);
    EXPECT_EQ(error->ft->setMessageArguments(error, CMNewArray(handle, 1, CMPI_uint8, nullptr)).rc,
              CMPI_RC_ERR_TYPE_MISMATCH);
}

TEST_F(OtherObjects, PropertyListsTellWhatIsInThem) {
    const char* names[] = {"One", "Two", nullptr};
    const CMPIPropertyList* list = handle->eft->newPropertyList(handle, names, &rc);
    EXPECT_TRUE(list->ft->isPropertyInList(list, "two", nullptr));
    EXPECT_FALSE(list->ft->isPropertyInList(list, "three", nullptr));
    EXPECT_STREQ(list->ft->getProperties(list, nullptr)[1], "Two");
    EXPECT_EQ(list->ft->getProperties(list, nullptr)[2], nullptr);
    CMPIPropertyList* copy = CMClone(list, &rc);
    EXPECT_STREQ(copy->ft->getProperties(copy, nullptr)[0], "One");
    CMRelease(copy);
    const CMPIPropertyList* everything = handle->eft->newPropertyList(handle, nullptr, &rc);
    EXPECT_TRUE(everything->ft->isPropertyInList(everything, "anything", nullptr));
    EXPECT_EQ(everything->ft->getProperties(everything, nullptr), nullptr);
}

TEST_F(OtherObjects, QueriesAreNotSupported) {
    CMPIArray* projection = minus_one<CMPIArray>();
    EXPECT_EQ(handle->eft->newSelectExp(handle, "select *", "WQL", &projection, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(projection, nullptr);
    EXPECT_EQ(handle->eft->newEnumerationFilter(handle, "WQL", "select *", &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

} // namespace
