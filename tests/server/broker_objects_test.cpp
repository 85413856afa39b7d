// The other objects that a provider makes through the broker, used as a provider uses them.
#include <cmpidt.h>
#include <cmpift.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/server/broker_fixture.h"

namespace {

class Strings : public BrokerFixture {};
class Arrays : public BrokerFixture {};
class DateTimes : public BrokerFixture {};
class Lists : public BrokerFixture {};
class OtherObjects : public BrokerFixture {};

// Strings.

TEST_F(Strings, HoldACopy) {
    char data[] = "text";
    const CMPIString* string = handle->eft->newString(handle, data, &rc);
    data[0] = 'n';
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(text(string), "text");
}

TEST_F(Strings, NoDataIsTheEmptyString) {
    EXPECT_EQ(text(handle->eft->newString(handle, nullptr, &rc)), "");
}

TEST_F(Strings, ConvertBetweenCodePages) {
    const CMPIString* string = handle->eft->newString(handle, "\xE2\x82\xAC\xF0\x9F\x92\xA1", nullptr);
    const char* utf16 = string->ft->newCharsCP(string, CMPI_CPID_UTF16, &rc);
    ASSERT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(std::memcmp(utf16, u"\u20AC\U0001F4A1", 4 * sizeof(char16_t)), 0);
    EXPECT_EQ(text(handle->eft->newStringCP(handle, utf16, CMPI_CPID_UTF16, &rc)),
              "\xE2\x82\xAC\xF0\x9F\x92\xA1");
    EXPECT_EQ(string->ft->newCharsCP(string, CMPI_CPID_USASCII, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
    EXPECT_EQ(text(handle->eft->newStringCP(handle, "plain", CMPI_CPID_USASCII, &rc)), "plain");
    EXPECT_EQ(handle->eft->newStringCP(handle, "\xC3\xBC", CMPI_CPID_USASCII, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
    const char16_t loneSurrogate[] = {0xD83D, 'x', 0};
    EXPECT_EQ(
        handle->eft->newStringCP(handle, reinterpret_cast<const char*>(loneSurrogate), CMPI_CPID_UTF16, &rc),
        nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_IN_CODEPAGE);
}

// Arrays.

TEST_F(Arrays, StartAsNulls) {
    const CMPIArray* array = handle->eft->newArray(handle, 2, CMPI_uint16, &rc);
    EXPECT_EQ(array->ft->getSize(array, nullptr), 2U);
    EXPECT_EQ(array->ft->getSimpleType(array, nullptr), CMPI_uint16);
    EXPECT_EQ(array->ft->getElementAt(array, 1, &rc).state, CMPI_nullValue);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
}

TEST_F(Arrays, CheckIndexAndType) {
    CMPIArray* array = handle->eft->newArray(handle, 1, CMPI_string, nullptr);
    EXPECT_EQ(array->ft->setElementAt(array, 0, chars("a"), CMPI_chars).rc, CMPI_RC_OK);
    EXPECT_EQ(text(array->ft->getElementAt(array, 0, nullptr).value.string), "a");
    CMPIValue value{};
    EXPECT_EQ(array->ft->setElementAt(array, 0, &value, CMPI_uint8).rc, CMPI_RC_ERR_TYPE_MISMATCH);
    EXPECT_EQ(array->ft->setElementAt(array, 1, chars("b"), CMPI_chars).rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
    array->ft->getElementAt(array, 1, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
    EXPECT_EQ(handle->eft->newArray(handle, 1, CMPI_null, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
}

TEST_F(Arrays, ComeBackFromProperties) {
    CMPIValue value{};
    value.array = handle->eft->newArray(handle, 1, CMPI_chars, nullptr);
    value.array->ft->setElementAt(value.array, 0, chars("a"), CMPI_chars);
    CMPIInstance* made = instance();
    made->ft->setProperty(made, "List", &value, CMPI_charsA);
    const CMPIData data = made->ft->getProperty(made, "List", &rc);
    EXPECT_EQ(data.type, CMPI_stringA);
    EXPECT_EQ(text(data.value.array->ft->getElementAt(data.value.array, 0, nullptr).value.string), "a");
}

// Dates.

TEST_F(DateTimes, ComeFromTextAndNumber) {
    const CMPIDateTime* time = handle->eft->newDateTimeFromChars(handle, "19700101000001.000002+000", &rc);
    EXPECT_EQ(time->ft->getBinaryFormat(time, nullptr), 1000002U);
    EXPECT_FALSE(time->ft->isInterval(time, nullptr));
    const CMPIDateTime* interval = handle->eft->newDateTimeFromBinary(handle, 1000002, 1, &rc);
    EXPECT_EQ(text(interval->ft->getStringFormat(interval, nullptr)), "00000000000001.000002:000");
    EXPECT_TRUE(interval->ft->isInterval(interval, nullptr));
    EXPECT_EQ(handle->eft->newDateTimeFromChars(handle, "yesterday", &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    const CMPIDateTime* now = handle->eft->newDateTime(handle, nullptr);
    EXPECT_GT(now->ft->getBinaryFormat(now, nullptr), 1500000000000000U);
}

// Arguments and contexts.

TEST_F(Lists, ArgumentsComeBackByNameAndPlace) {
    CMPIArgs* args = handle->eft->newArgs(handle, &rc);
    args->ft->addArg(args, "Text", chars("t"), CMPI_chars);
    CMPIValue value{};
    value.dataPtr = {&rc, 5};
    args->ft->addArg(args, "Pointer", &value, CMPI_ptr);
    EXPECT_EQ(args->ft->getArgCount(args, nullptr), 2U);
    EXPECT_EQ(text(args->ft->getArg(args, "text", nullptr).value.string), "t");
    CMPIString* name = nullptr;
    const CMPIData pointer = args->ft->getArgAt(args, 1, &name, nullptr);
    EXPECT_EQ(text(name), "Pointer");
    EXPECT_EQ(pointer.value.dataPtr.ptr, &rc);
    EXPECT_EQ(pointer.value.dataPtr.length, 5U);
    args->ft->getArg(args, "Missing", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
}

// The rest.

TEST_F(OtherObjects, NameTheirTypes) {
    EXPECT_EQ(text(handle->eft->getType(handle, instance(), &rc)), "CMPIInstance");
    EXPECT_TRUE(handle->eft->isOfType(handle, path(), "CMPIObjectPath", &rc));
    EXPECT_FALSE(handle->eft->isOfType(handle, path(), "CMPIInstance", &rc));
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(handle->eft->getType(handle, nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    handle->eft->toString(handle, minus_one<void>(), &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(OtherObjects, ShowWhatTheyHold) {
    CMPIInstance* made = instance();
    made->ft->setProperty(made, "Colour", chars("red"), CMPI_chars);
    EXPECT_EQ(text(handle->eft->toString(handle, made, nullptr)),
              "instance of A_Class { Colour = \"red\"; }");
    EXPECT_EQ(text(handle->eft->toString(handle, handle->eft->newString(handle, "s", nullptr), nullptr)),
              "s");
    CMPIArray* array = handle->eft->newArray(handle, 2, CMPI_boolean, nullptr);
    CMPIValue yes{};
    yes.boolean = 1;
    array->ft->setElementAt(array, 0, &yes, CMPI_boolean);
    EXPECT_EQ(text(handle->eft->toString(handle, array, nullptr)), "{ elements = {TRUE, NULL}; }");
}

TEST_F(OtherObjects, AClassIsItselfOnly) {
    EXPECT_TRUE(handle->eft->classPathIsA(handle, path("A_Class"), "a_class", &rc));
    EXPECT_FALSE(handle->eft->classPathIsA(handle, path("A_Class"), "A_Base", &rc));
}

TEST_F(OtherObjects, MessagesAreFilledIn) {
    const CMPIString* message = handle->eft->getMessage(
        handle, "id", "$0 of $1, $2 $3 $4 $9 $", &rc, 5, CMPI_chars, "one", CMPI_uint64, 7ULL, CMPI_boolean,
        1, CMPI_real64, 0.5, CMPI_string, handle->eft->newString(handle, "end", nullptr));
    EXPECT_EQ(text(message), "one of 7, true 0.5 end $9 $");
    message = handle->eft->getMessage2(handle, "id", nullptr, "$0", &rc, 1, CMPI_sint32, -3L);
    EXPECT_EQ(text(message), "-3");
    CMPIMsgFileHandle file = &rc;
    EXPECT_EQ(handle->eft->openMessageFile(handle, "messages", &file).rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(OtherObjects, LogMessagesReachTheLogAndTracesOnlyOnDemand) {
    handle->eft->logMessage(handle, CMPI_SEV_ERROR, "Probe", "it broke", nullptr);
    handle->eft->logMessage(handle, CMPI_SEV_INFO, nullptr, nullptr,
                            handle->eft->newString(handle, "a string", nullptr));
    handle->eft->trace(handle, CMPI_LEV_INFO, "Probe", "here", nullptr);
    EXPECT_EQ(logged, (std::vector<std::string>{"error: Probe: it broke", "a string"}));

    std::vector<std::string> traced;
    const cimserver::Broker tracing([&traced](const std::string& line) { traced.push_back(line); }, true);
    tracing.handle()->eft->trace(tracing.handle(), CMPI_LEV_INFO, "Probe", "here", nullptr);
    EXPECT_EQ(traced, std::vector<std::string>{"Probe: here"});
}

TEST_F(OtherObjects, ErrorsHoldWhatTheyAreGiven) {
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
    CMPIArray* actions = handle->eft->newArray(handle, 1, CMPI_string, nullptr);
    EXPECT_EQ(error->ft->setRecommendedActions(error, actions).rc, CMPI_RC_OK);
    const CMPIArray* given = error->ft->getRecommendedActions(error, nullptr);
    EXPECT_EQ(given->ft->getSize(given, nullptr), 1U);
    EXPECT_EQ(error->ft->setMessageArguments(error, handle->eft->newArray(handle, 1, CMPI_uint8, nullptr)).rc,
              CMPI_RC_ERR_TYPE_MISMATCH);
}

TEST_F(OtherObjects, PropertyListsKnowWhatIsInThem) {
    const char* names[] = {"One", "Two", nullptr};
    const CMPIPropertyList* list = handle->eft->newPropertyList(handle, names, &rc);
    EXPECT_TRUE(list->ft->isPropertyInList(list, "two", nullptr));
    EXPECT_FALSE(list->ft->isPropertyInList(list, "three", nullptr));
    EXPECT_STREQ(list->ft->getProperties(list, nullptr)[1], "Two");
    EXPECT_EQ(list->ft->getProperties(list, nullptr)[2], nullptr);
    CMPIPropertyList* copy = list->ft->clone(list, &rc);
    EXPECT_STREQ(copy->ft->getProperties(copy, nullptr)[0], "One");
    copy->ft->release(copy);
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
