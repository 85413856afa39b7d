// Object paths and instances that a provider makes through the broker, used as a provider uses them.
#include <cmpidt.h>
#include <cmpift.h>

#include "tests/server/broker_fixture.h"

namespace {

class Paths : public BrokerFixture {};
class Instances : public BrokerFixture {};

// Object paths.

TEST_F(Paths, HaveNamespaceHostAndClass) {
    CMPIObjectPath* made = path("First");
    made->ft->setNameSpace(made, "other");
    made->ft->setHostname(made, "switch1");
    made->ft->setClassName(made, "Second");
    EXPECT_EQ(text(made->ft->getNameSpace(made, &rc)), "other");
    EXPECT_EQ(text(made->ft->getHostname(made, &rc)), "switch1");
    EXPECT_EQ(class_of(made), "Second");
    EXPECT_EQ(text(handle->eft->toString(handle, made, nullptr)), "//switch1/other:Second");
}

TEST_F(Paths, CharsBecomeStrings) {
    CMPIObjectPath* made = path();
    made->ft->addKey(made, "Name", chars("value"), CMPI_chars);
    const CMPIData key = made->ft->getKey(made, "NAME", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(key.type, CMPI_string);
    EXPECT_EQ(key.state, CMPI_keyValue);
    EXPECT_EQ(text(key.value.string), "value");
}

TEST_F(Paths, ARepeatedKeyKeepsItsPlaceAndTakesTheLastValue) {
    CMPIObjectPath* made = path();
    for (const char* value : {"1", "2"}) {
        made->ft->addKey(made, "First", chars(value), CMPI_chars);
        made->ft->addKey(made, "Second", chars("s"), CMPI_chars);
    }
    ASSERT_EQ(made->ft->getKeyCount(made, nullptr), 2U);
    CMPIString* name = nullptr;
    const CMPIData first = made->ft->getKeyAt(made, 0, &name, &rc);
    EXPECT_EQ(text(name), "First");
    EXPECT_EQ(text(first.value.string), "2");
}

TEST_F(Paths, KeysBeyondTheLastAreNotFound) {
    CMPIString* name = minus_one<CMPIString>();
    const CMPIObjectPath* made = path();
    const CMPIData key = made->ft->getKeyAt(made, 0, &name, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(key.state, CMPI_notFound);
    EXPECT_EQ(name, nullptr);
    made->ft->getKey(made, "Name", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(Paths, ReferenceKeysAreCopies) {
    CMPIObjectPath* target = path("Target");
    CMPIValue value{};
    value.ref = target;
    CMPIObjectPath* made = path();
    made->ft->addKey(made, "End", &value, CMPI_ref);
    target->ft->setClassName(target, "Changed");
    EXPECT_EQ(class_of(made->ft->getKey(made, "End", nullptr).value.ref), "Target");
}

TEST_F(Paths, WhatIsNoObjectCannotBeAKey) {
    CMPIValue value{};
    value.ref = minus_one<CMPIObjectPath>();
    CMPIObjectPath* made = path();
    EXPECT_EQ(made->ft->addKey(made, "End", &value, CMPI_ref).rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    EXPECT_EQ(made->ft->addKey(made, "End", &value, 4999).rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    EXPECT_EQ(made->ft->addKey(made, nullptr, chars(""), CMPI_chars).rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(Paths, TakeNamespaceAndHostFromAnother) {
    CMPIObjectPath* source = handle->eft->newObjectPath(handle, "theirs", "C", nullptr);
    source->ft->setHostname(source, "there");
    CMPIObjectPath* made = path();
    made->ft->setNameSpaceFromObjectPath(made, source);
    EXPECT_EQ(text(handle->eft->toString(handle, made, nullptr)), "theirs:A_Class");
    made->ft->setHostAndNameSpaceFromObjectPath(made, source);
    EXPECT_EQ(text(handle->eft->toString(handle, made, nullptr)), "//there/theirs:A_Class");
}

TEST_F(Paths, QualifiersAreNotSupported) {
    const CMPIObjectPath* made = path();
    made->ft->getClassQualifier(made, "Key", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    made->ft->getParameterQualifier(made, "m", "p", "q", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

// Instances.

TEST_F(Instances, HaveTheKeysOfTheirPath) {
    CMPIObjectPath* named = path();
    named->ft->addKey(named, "Name", chars("n"), CMPI_chars);
    const CMPIInstance* made = handle->eft->newInstance(handle, named, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(property_text(made, "Name"), "n");
    EXPECT_EQ(text(handle->eft->toString(handle, made->ft->getObjectPath(made, nullptr), nullptr)),
              "root/test:A_Class.Name=\"n\"");
}

TEST_F(Instances, CannotBeMadeOfNothing) {
    EXPECT_EQ(handle->eft->newInstance(handle, nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(handle->eft->newInstance(handle, minus_one<CMPIObjectPath>(), &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(Instances, EveryWidthOfNumberComesBack) {
    CMPIInstance* made = instance();
    CMPIValue value{};
    value.sint8 = -1;
    made->ft->setProperty(made, "Tiny", &value, CMPI_sint8);
    value.uint16 = 65535;
    made->ft->setProperty(made, "Short", &value, CMPI_uint16);
    value.uint64 = 1ULL << 63U;
    made->ft->setProperty(made, "Long", &value, CMPI_uint64);
    value.real32 = 0.5F;
    made->ft->setProperty(made, "Real", &value, CMPI_real32);
    value.boolean = 7; // anything but 0 is true
    made->ft->setProperty(made, "Flag", &value, CMPI_boolean);
    EXPECT_EQ(made->ft->getProperty(made, "Tiny", nullptr).value.sint8, -1);
    EXPECT_EQ(made->ft->getProperty(made, "Short", nullptr).value.uint16, 65535);
    EXPECT_EQ(made->ft->getProperty(made, "Long", nullptr).value.uint64, 1ULL << 63U);
    EXPECT_EQ(made->ft->getProperty(made, "Real", nullptr).value.real32, 0.5F);
    EXPECT_EQ(made->ft->getProperty(made, "Flag", nullptr).value.boolean, 1);
}

TEST_F(Instances, ARepeatedPropertyKeepsItsPlaceAndTakesTheLastValue) {
    CMPIInstance* made = instance();
    made->ft->setProperty(made, "A", chars("1"), CMPI_chars);
    made->ft->setProperty(made, "B", chars("2"), CMPI_chars);
    made->ft->setProperty(made, "a", chars("3"), CMPI_chars);
    ASSERT_EQ(made->ft->getPropertyCount(made, nullptr), 2U);
    CMPIString* name = nullptr;
    EXPECT_EQ(text(made->ft->getPropertyAt(made, 0, &name, nullptr).value.string), "3");
    EXPECT_EQ(text(name), "A");
}

TEST_F(Instances, NullValuesAreNull) {
    CMPIInstance* made = instance();
    made->ft->setProperty(made, "Nothing", nullptr, CMPI_uint32);
    const CMPIData data = made->ft->getProperty(made, "Nothing", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    EXPECT_EQ(data.type, CMPI_uint32);
    EXPECT_EQ(data.state, CMPI_nullValue);
    made->ft->getProperty(made, "Missing", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

TEST_F(Instances, AFilterDropsWhatIsSetAfterwards) {
    CMPIInstance* made = instance();
    const char* wanted[] = {"colour", nullptr};
    const char* keys[] = {"Name", nullptr};
    made->ft->setPropertyFilter(made, wanted, keys);
    for (const char* name : {"Size", "NAME", "Colour"}) {
        EXPECT_EQ(made->ft->setProperty(made, name, chars(name), CMPI_chars).rc, CMPI_RC_OK);
    }
    ASSERT_EQ(made->ft->getPropertyCount(made, nullptr), 2U);
    EXPECT_EQ(property_text(made, "Name"), "NAME");
    EXPECT_EQ(property_text(made, "Colour"), "Colour");
}

TEST_F(Instances, AFilterDropsWhatHasBeenSetBefore) {
    CMPIInstance* made = instance();
    for (const char* name : {"Size", "Name", "Colour"}) {
        made->ft->setProperty(made, name, chars(name), CMPI_chars);
    }
    const char* wanted[] = {"COLOUR", nullptr};
    const char* noKeys[] = {nullptr};
    made->ft->setPropertyFilter(made, wanted, noKeys);
    ASSERT_EQ(made->ft->getPropertyCount(made, nullptr), 1U);
    EXPECT_EQ(property_text(made, "Colour"), "Colour");
}

TEST_F(Instances, AFilterKeepsTheKeysOfThePath) {
    CMPIObjectPath* named = path();
    named->ft->addKey(named, "Name", chars("n"), CMPI_chars);
    CMPIInstance* made = handle->eft->newInstance(handle, named, nullptr);
    const char* nothing[] = {nullptr};
    made->ft->setPropertyFilter(made, nothing, nullptr);
    made->ft->setProperty(made, "Size", chars("big"), CMPI_chars);
    ASSERT_EQ(made->ft->getPropertyCount(made, nullptr), 1U);
    EXPECT_EQ(property_text(made, "Name"), "n");
}

TEST_F(Instances, NoListIsNoFilter) {
    CMPIInstance* made = instance();
    made->ft->setProperty(made, "Size", chars("big"), CMPI_chars);
    EXPECT_EQ(made->ft->setPropertyFilter(made, nullptr, nullptr).rc, CMPI_RC_OK);
    made->ft->setProperty(made, "Colour", chars("red"), CMPI_chars);
    EXPECT_EQ(made->ft->getPropertyCount(made, nullptr), 2U);
}

TEST_F(Instances, TakeAnotherPath) {
    CMPIInstance* made = instance();
    made->ft->setObjectPath(made, path("Another"));
    EXPECT_EQ(class_of(made->ft->getObjectPath(made, nullptr)), "Another");
    EXPECT_EQ(made->ft->setObjectPath(made, nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(Instances, EmbeddedInstancesAreCopies) {
    CMPIInstance* inner = instance();
    inner->ft->setProperty(inner, "Colour", chars("red"), CMPI_chars);
    CMPIValue value{};
    value.inst = inner;
    CMPIInstance* outer = instance();
    outer->ft->setProperty(outer, "Inner", &value, CMPI_instance);
    inner->ft->setProperty(inner, "Colour", chars("blue"), CMPI_chars);
    EXPECT_EQ(property_text(outer->ft->getProperty(outer, "Inner", nullptr).value.inst, "Colour"), "red");
}

} // namespace
