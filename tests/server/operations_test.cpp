// Every operation, from request to response.
#include "tests/server/probe_service.h"

namespace {

using Operations = ProbeService;

constexpr auto kNames = "//IRETURNVALUE/INSTANCENAME/KEYBINDING[@NAME='Name']/KEYVALUE";

TEST_F(Operations, EnumerateInstanceNamesReturnsNames) {
    const Response response = askClass("EnumerateInstanceNames", "Probe_Thing");
    EXPECT_EQ(response.texts(kNames), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(response.text("//IMETHODRESPONSE/@NAME"), "EnumerateInstanceNames");
    EXPECT_EQ(response.text("//MESSAGE/@ID"), "42");
}

TEST_F(Operations, EnumerateInstancesReturnsNamedInstances) {
    const Response response = askClass("EnumerateInstances", "Probe_Thing");
    EXPECT_EQ(response.count("//IRETURNVALUE/VALUE.NAMEDINSTANCE/INSTANCENAME"), 2U);
    EXPECT_EQ(response.count("//IRETURNVALUE/VALUE.NAMEDINSTANCE/INSTANCE"), 2U);
    EXPECT_EQ(response.property("Name"), "one");
    EXPECT_EQ(response.property("Colour"), "red");
    EXPECT_EQ(response.property("Size"), "7");
}

TEST_F(Operations, ClassNamesReachTheProviderAsTheClientSpellsThem) {
    const Response response = askClass("EnumerateInstances", "pRObe_conTEXT");
    EXPECT_EQ(response.property("AskedClass"), "pRObe_conTEXT");
}

TEST_F(Operations, AClassThatTheProviderDoesNotKnowHasNoInstances) {
    const Response response = askClass("EnumerateInstances", "Probe_Unknown");
    EXPECT_EQ(response.errorCode(), 0);
    EXPECT_EQ(response.count("//IRETURNVALUE"), 1U);
    EXPECT_EQ(response.count("//IRETURNVALUE/*"), 0U);
}

TEST_F(Operations, GetInstanceReturnsTheInstanceAlone) {
    const Response response = ask("GetInstance", parameter("InstanceName", thingName("one")));
    EXPECT_EQ(response.count("//IRETURNVALUE/INSTANCE"), 1U);
    EXPECT_EQ(response.property("Colour"), "blue");
}

TEST_F(Operations, GetInstanceReturnsOneInstanceWhateverTheProviderReturns) {
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thingName("twice"))).count("//INSTANCE"), 1U);
}

TEST_F(Operations, GetInstanceWithoutAnInstanceIsNotFound) {
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thingName("missing"))).errorCode(), 6);
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thingName("null"))).errorCode(), 6);
}

TEST_F(Operations, WhatTheProviderSaysOfAMissingInstanceIsPassedOn) {
    const Response response = ask("GetInstance", parameter("InstanceName", thingName("hint")));
    EXPECT_EQ(response.errorCode(), 6);
    EXPECT_EQ(response.errorDescription(), "try another name");
}

TEST_F(Operations, CreateInstanceReturnsTheName) {
    const std::string instance =
        "<INSTANCE CLASSNAME=\"Probe_Thing\"><PROPERTY NAME=\"Name\" TYPE=\"string\">"
        "<VALUE>new</VALUE></PROPERTY></INSTANCE>";
    const Response response = ask("CreateInstance", parameter("NewInstance", instance));
    EXPECT_EQ(response.texts(kNames), std::vector<std::string>{"new"});
}

TEST_F(Operations, CreateInstanceBringsTheProvidersErrorBack) {
    const Response response =
        ask("CreateInstance", parameter("NewInstance", "<INSTANCE CLASSNAME=\"Probe_Odd\"></INSTANCE>"));
    EXPECT_EQ(response.errorCode(), 7);
    EXPECT_EQ(response.errorDescription(), "CIM_ERR_NOT_SUPPORTED");
}

std::string modification(const std::string& name) {
    return parameter("ModifiedInstance", "<VALUE.NAMEDINSTANCE>" + thingName(name) +
                                             "<INSTANCE CLASSNAME=\"Probe_Thing\"><PROPERTY NAME=\"Colour\" "
                                             "TYPE=\"string\"><VALUE>grey</VALUE></PROPERTY></INSTANCE>"
                                             "</VALUE.NAMEDINSTANCE>") +
           parameter("IncludeQualifiers", value("false")) + parameter("PropertyList", valueArray({"Colour"}));
}

TEST_F(Operations, ModifyInstanceReachesTheProvider) {
    const Response response = ask("ModifyInstance", modification("one"));
    EXPECT_EQ(response.errorCode(), 0);
    EXPECT_EQ(response.count("//IMETHODRESPONSE"), 1U);
    EXPECT_EQ(response.count("//IMETHODRESPONSE/*"), 0U);
}

TEST_F(Operations, ModifyInstanceBringsTheProvidersErrorBack) {
    const Response response = ask("ModifyInstance", modification("other"));
    EXPECT_EQ(response.errorCode(), 6);
    EXPECT_EQ(response.errorDescription(), "nothing to modify");
}

TEST_F(Operations, DeleteInstanceReachesTheProviderAndBringsItsErrorBack) {
    EXPECT_EQ(ask("DeleteInstance", parameter("InstanceName", thingName("one"))).errorCode(), 0);
    EXPECT_EQ(ask("DeleteInstance", parameter("InstanceName", thingName("other"))).errorCode(), 6);
}

std::string query(const std::string& language) {
    return parameter("QueryLanguage", value(language)) +
           parameter("Query", value("select * from Probe_Thing where Size &gt; 1"));
}

TEST_F(Operations, ExecQueryReachesTheProvider) {
    const Response response = ask("ExecQuery", query("WQL"));
    EXPECT_EQ(response.count("//IRETURNVALUE/VALUE.OBJECT/INSTANCE"), 1U);
    EXPECT_EQ(response.property("Query"), "select * from Probe_Thing where Size > 1");
    EXPECT_EQ(response.property("ClassAsked"), "Probe_Thing");
}

TEST_F(Operations, ExecQueryBringsTheProvidersErrorBack) {
    EXPECT_EQ(ask("ExecQuery", query("CQL")).errorCode(), 14);
}

TEST_F(Operations, ErrorStatusReplacesTheResults) {
    const Response response = askClass("EnumerateInstances", "Probe_Failing");
    EXPECT_EQ(response.errorCode(), 2);
    EXPECT_EQ(response.errorDescription(), "the <door> is locked");
    EXPECT_EQ(response.count("//INSTANCE"), 0U);
    EXPECT_EQ(response.count("//IRETURNVALUE"), 0U);
}

TEST_F(Operations, StatusCodesThatCimDoesNotHaveBecomeFailed) {
    const Response response = askClass("EnumerateInstances", "Probe_OddlyFailing");
    EXPECT_EQ(response.errorCode(), 1);
    EXPECT_EQ(response.errorDescription(), "CIM_ERR_FAILED");
}

TEST_F(Operations, AnErrorObjectExplainsAStatusWithoutAMessage) {
    EXPECT_EQ(askClass("EnumerateInstances", "Probe_ErrorObject").errorDescription(),
              "the error object tells");
}

TEST_F(Operations, OtherOperationsAreNotSupported) {
    for (const char* method :
         {"GetClass", "EnumerateClasses", "EnumerateClassNames", "CreateClass", "ModifyClass", "DeleteClass",
          "GetProperty", "SetProperty", "GetQualifier", "SetQualifier", "EnumerateQualifiers",
          "OpenEnumerateInstances", "PullInstances", "NoSuchOperation"}) {
        const Response response = ask(method, parameter("ClassName", className("Probe_Thing")));
        EXPECT_EQ(response.errorCode(), 7) << method;
        EXPECT_EQ(response.text("//IMETHODRESPONSE/@NAME"), method);
    }
}

TEST_F(Operations, ParametersOfOperationsThatAreNotServedDoNotMatter) {
    EXPECT_EQ(ask("SetQualifier", parameter("QualifierDeclaration", "<QUALIFIER.DECLARATION NAME=\"Key\"/>"))
                  .errorCode(),
              7);
}

TEST_F(Operations, MethodsOfClassesAreNotSupported) {
    const std::string body = message(
        "<SIMPLEREQ><METHODCALL NAME=\"Reset\"><LOCALINSTANCEPATH><LOCALNAMESPACEPATH><NAMESPACE "
        "NAME=\"root\"/>"
        "</LOCALNAMESPACEPATH>" +
        thingName("one") + "</LOCALINSTANCEPATH></METHODCALL></SIMPLEREQ>");
    const Response response(send(post(body, "Reset", "root:Probe_Thing.Name=\"one\"")).body);
    EXPECT_EQ(response.errorCode(), 7);
    EXPECT_EQ(response.text("//METHODRESPONSE/@NAME"), "Reset");
}

TEST_F(Operations, NamespacesCompareWithoutCase) {
    const std::string parameters = parameter("ClassName", className("Probe_Context"));
    const Response response(send(post(imethodCall("EnumerateInstances", parameters, "ROOT/other"),
                                      "EnumerateInstances", "root%2FOTHER"))
                                .body);
    EXPECT_EQ(response.property("AskedNameSpace"), "ROOT/other");
}

TEST_F(Operations, UnknownNamespacesAreRefused) {
    const std::string parameters = parameter("ClassName", className("Probe_Thing"));
    const Response response(send(post(imethodCall("EnumerateInstances", parameters, "root/nowhere"),
                                      "EnumerateInstances", "root/nowhere"))
                                .body);
    EXPECT_EQ(response.errorCode(), 3);
}

TEST_F(Operations, TheReportTellsWhatWasAskedAndReturned) {
    askClass("EnumerateInstances", "Probe_Thing");
    ask("GetInstance", parameter("InstanceName", thingName("hint")));
    ASSERT_EQ(reported_.size(), 2U);
    EXPECT_EQ(reported_[0], "EnumerateInstances Probe_Thing: 2 returned");
    EXPECT_EQ(reported_[1],
              "GetInstance root/cimv2:Probe_Thing.Name=\"hint\": CIM_ERR_NOT_FOUND (try another name)");
}

} // namespace
