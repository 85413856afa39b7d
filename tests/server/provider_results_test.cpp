// What a provider may do to its results, and what of it reaches the client.
#include <string>
#include <vector>

#include "tests/server/probe_service.h"

namespace {

using ProviderResults = ProbeService;

TEST_F(ProviderResults, NullMinusOneAndReleasedObjectsAreIgnored) {
    const Response response = ask_class("EnumerateInstances", "Probe_Odd");
    EXPECT_EQ(response.texts("//INSTANCE/PROPERTY[@NAME='Name']/VALUE"),
              (std::vector<std::string>{"again", "again"}));
    EXPECT_EQ(ask_class("EnumerateInstanceNames", "Probe_Odd").count("//INSTANCENAME"), 1U);
}

TEST_F(ProviderResults, IgnoredObjectsAreReported) {
    ask_class("EnumerateInstances", "Probe_Odd");
    ASSERT_EQ(reported.size(), 1U);
    EXPECT_EQ(reported[0], "EnumerateInstances Probe_Odd: 2 returned, 3 that were no objects ignored");
}

TEST_F(ProviderResults, AnObjectThatIsChangedAndReturnedAgainIsWrittenAsItIsEachTime) {
    const Response response = ask_class("EnumerateInstances", "Probe_Odd");
    EXPECT_EQ(response.property("Size", 0), "(no Size)");
    EXPECT_EQ(response.property("Size", 1), "2");
}

TEST_F(ProviderResults, OnePathForALongEnumeration) {
    const std::vector<std::string> names =
        ask_class("EnumerateInstanceNames", "Probe_Many").texts("//KEYVALUE");
    ASSERT_EQ(names.size(), 3000U);
    EXPECT_EQ(names.front(), "0");
    EXPECT_EQ(names.back(), "2999");
}

TEST_F(ProviderResults, EveryObjectOfALongEnumerationArrives) {
    EXPECT_EQ(ask_class("EnumerateInstances", "Probe_Many").count("//INSTANCE"), 3000U);
}

TEST_F(ProviderResults, APropertySetTwiceHasItsLastValueInItsFirstPlace) {
    const Response response = ask_class("EnumerateInstances", "Probe_Keyless");
    EXPECT_EQ(response.texts("//PROPERTY/@NAME"), (std::vector<std::string>{"Label", "InstanceID"}));
    EXPECT_EQ(response.property("Label"), "last");
}

TEST_F(ProviderResults, AnInstanceWithoutKeysIsNamedByItsProperties) {
    const Response response = ask_class("EnumerateInstances", "Probe_Keyless");
    EXPECT_EQ(response.text("//INSTANCENAME/KEYBINDING[@NAME='InstanceID']/KEYVALUE"), "id-1");
}

TEST_F(ProviderResults, TextIsWellFormedWhateverTheProviderSays) {
    const std::string fffd = "\xEF\xBF\xBD";
    const Response response = ask_class("EnumerateInstances", "Probe_Dirty");
    EXPECT_EQ(response.property("Controls"), "a" + fffd + "b" + fffd + "c");
    EXPECT_EQ(response.property("BrokenUtf8"), fffd + fffd + " " + fffd + " " + fffd + " end");
    EXPECT_EQ(response.property("Markup"), "</VALUE><![CDATA[ ]]> & \"quoted\" 'too'\r\n\ttab");
    EXPECT_EQ(response.property("Text"),
              "Gr\xC3\xBC\xC3\x9F"
              "e \xF0\x9F\x92\xA1");
    EXPECT_EQ(response.property("LoneSurrogate"), fffd);
    EXPECT_EQ(response.text("//KEYVALUE"), "dirty " + fffd + "<&>" + fffd);
    EXPECT_EQ(response.texts("//PROPERTY/@NAME").back(), "Bad \"name\" <" + fffd + ">");
}

TEST_F(ProviderResults, EveryTypeIsWritten) {
    const Response response = ask_class("EnumerateInstances", "Probe_Types");
    const auto typed = [&](const char* name, const char* type) {
        EXPECT_EQ(response.text(std::string("//PROPERTY[@NAME='") + name + "']/@TYPE"), type);
        return response.property(name);
    };
    EXPECT_EQ(typed("aBoolean", "boolean"), "TRUE");
    EXPECT_EQ(typed("aChar16", "char16"), "\xE2\x82\xAC");
    EXPECT_EQ(typed("aUint8", "uint8"), "255");
    EXPECT_EQ(typed("aUint16", "uint16"), "65535");
    EXPECT_EQ(typed("aUint32", "uint32"), "4294967295");
    EXPECT_EQ(typed("aUint64", "uint64"), "18446744073709551615");
    EXPECT_EQ(typed("aSint8", "sint8"), "-128");
    EXPECT_EQ(typed("aSint16", "sint16"), "-32768");
    EXPECT_EQ(typed("aSint32", "sint32"), "-2147483648");
    EXPECT_EQ(typed("aSint64", "sint64"), "-9223372036854775808");
    EXPECT_EQ(typed("aReal32", "real32"), "1.5");
    EXPECT_EQ(typed("aReal64", "real64"), "1.0e+300");
    EXPECT_EQ(typed("aString", "string"), "text");
    EXPECT_EQ(typed("aDateTime", "datetime"), "20240229123456.000789+060");
}

TEST_F(ProviderResults, ReferencesEmbeddedInstancesNullsAndArraysAreWritten) {
    const Response response = ask_class("EnumerateInstances", "Probe_Types");
    EXPECT_EQ(response.text("//PROPERTY.REFERENCE[@NAME='aReference']/@REFERENCECLASS"), "Probe_Thing");
    EXPECT_EQ(response.text(
                  "//PROPERTY.REFERENCE/VALUE.REFERENCE/LOCALINSTANCEPATH/INSTANCENAME/KEYBINDING/KEYVALUE"),
              "target");
    EXPECT_EQ(response.text("//PROPERTY[@NAME='anInstance']/@EmbeddedObject"), "instance");
    EXPECT_EQ(Response(response.property("anInstance")).text("/INSTANCE/PROPERTY/VALUE"), "inside");
    EXPECT_EQ(response.count("//PROPERTY[@NAME='aNull']"), 1U);
    EXPECT_EQ(response.count("//PROPERTY[@NAME='aNull']/*"), 0U);
    EXPECT_EQ(response.texts("//PROPERTY.ARRAY[@NAME='anArray'][@TYPE='uint16']/VALUE.ARRAY/*"),
              (std::vector<std::string>{"3", "", "3"}));
    EXPECT_EQ(response.count("//PROPERTY.ARRAY[@NAME='anArray']/VALUE.ARRAY/VALUE.NULL"), 1U);
    EXPECT_EQ(response.text("//PROPERTY.ARRAY[@NAME='aStringArray'][@TYPE='string']//VALUE"), "s");
}

TEST_F(ProviderResults, ProvidersReachTheServerThroughTheBroker) {
    const Response response = ask_class("EnumerateInstances", "Probe_ThroughBroker");
    EXPECT_EQ(response.texts("//INSTANCE/PROPERTY[@NAME='Name']/VALUE"),
              (std::vector<std::string>{"one", "two", "got", "two"}));
    EXPECT_EQ(response.texts("//INSTANCE[@CLASSNAME='Probe_Link']/PROPERTY.REFERENCE/@NAME"),
              (std::vector<std::string>{"Left", "Right"}));
    EXPECT_EQ(ask_class("EnumerateInstanceNames", "Probe_ThroughBroker")
                  .texts("//IRETURNVALUE/INSTANCENAME/@CLASSNAME"),
              (std::vector<std::string>{"Probe_Thing", "Probe_Thing", "Probe_Thing", "Probe_Link"}));
}

TEST_F(ProviderResults, ProvidersMakeObjectsOnThreadsOfTheirOwn) {
    EXPECT_EQ(ask_class("EnumerateInstances", "Probe_Threaded").property("Name"), "from another thread");
}

} // namespace
