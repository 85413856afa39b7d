// Every operation, from request to response.
#include <string>
#include <vector>

#include "tests/server/probe_service.h"

namespace {

using Operations = ProbeService;

constexpr auto NAMES = "//IRETURNVALUE/INSTANCENAME/KEYBINDING[@NAME='Name']/KEYVALUE";

TEST_F(Operations, EnumerateInstanceNamesReturnsNames) {
    const Response response = ask_class("EnumerateInstanceNames", "Probe_Thing");
    EXPECT_EQ(response.texts(NAMES), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(response.text("//IMETHODRESPONSE/@NAME"), "EnumerateInstanceNames");
    EXPECT_EQ(response.text("//MESSAGE/@ID"), "42");
}

TEST_F(Operations, EnumerateInstancesReturnsNamedInstances) {
    const Response response = ask_class("EnumerateInstances", "Probe_Thing");
    EXPECT_EQ(response.count("//IRETURNVALUE/VALUE.NAMEDINSTANCE/INSTANCENAME"), 2U);
    EXPECT_EQ(response.count("//IRETURNVALUE/VALUE.NAMEDINSTANCE/INSTANCE"), 2U);
    EXPECT_EQ(response.property("Name"), "one");
    EXPECT_EQ(response.property("Colour"), "red");
    EXPECT_EQ(response.property("Size"), "7");
}

TEST_F(Operations, ClassNamesReachTheProviderAsTheClientSpellsThem) {
    const Response response = ask_class("EnumerateInstances", "pRObe_conTEXT");
    EXPECT_EQ(response.property("AskedClass"), "pRObe_conTEXT");
}

TEST_F(Operations, AClassThatNoProviderServesHasNoInstances) {
    const Response response = ask_class("EnumerateInstances", "Probe_Unserved");
    EXPECT_EQ(response.error_code(), 0);
    EXPECT_EQ(response.count("//IRETURNVALUE"), 1U);
    EXPECT_EQ(response.count("//IRETURNVALUE/*"), 0U);
    const std::string name = instance_name("Probe_Unserved", key("InstanceID", "i"));
    const Response got = ask("GetInstance", parameter("InstanceName", name));
    EXPECT_EQ(got.error_code(), 6);
    EXPECT_EQ(got.error_description(), "no provider serves instances of Probe_Unserved");
}

TEST_F(Operations, AClassThatIsNotDeclaredIsInvalid) {
    for (const char* method : {"EnumerateInstances", "EnumerateInstanceNames"}) {
        EXPECT_EQ(ask_class(method, "Probe_Unknown").error_code(), 5);
    }
    const std::string name = instance_name("Probe_Unknown", key("InstanceID", "i"));
    const Response got = ask("GetInstance", parameter("InstanceName", name));
    EXPECT_EQ(got.error_code(), 5);
    EXPECT_EQ(got.error_description(), "there is no class Probe_Unknown");
}

TEST_F(Operations, WhatWasNotFoundIsNamed) {
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thing_name("missing"))).error_description(),
              "there is no instance root/cimv2:Probe_Thing.Name=\"missing\"");
}

TEST_F(Operations, GetInstanceReturnsTheInstanceAlone) {
    const Response response = ask("GetInstance", parameter("InstanceName", thing_name("one")));
    EXPECT_EQ(response.count("//IRETURNVALUE/INSTANCE"), 1U);
    EXPECT_EQ(response.property("Colour"), "blue");
}

TEST_F(Operations, GetInstanceReturnsOneInstanceWhateverTheProviderReturns) {
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thing_name("twice"))).count("//INSTANCE"), 1U);
}

TEST_F(Operations, GetInstanceWithoutAnInstanceIsNotFound) {
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thing_name("missing"))).error_code(), 6);
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thing_name("null"))).error_code(), 6);
}

TEST_F(Operations, WhatTheProviderSaysOfAMissingInstanceIsPassedOn) {
    const Response response = ask("GetInstance", parameter("InstanceName", thing_name("hint")));
    EXPECT_EQ(response.error_code(), 6);
    EXPECT_EQ(response.error_description(), "try another name");
}

TEST_F(Operations, CreateInstanceReturnsTheName) {
    const std::string instance =
        "<INSTANCE CLASSNAME=\"Probe_Thing\"><PROPERTY NAME=\"Name\" TYPE=\"string\">"
        "<VALUE>new</VALUE></PROPERTY></INSTANCE>";
    const Response response = ask("CreateInstance", parameter("NewInstance", instance));
    EXPECT_EQ(response.texts(NAMES), std::vector<std::string>{"new"});
}

TEST_F(Operations, CreateInstanceBringsTheProvidersErrorBack) {
    const Response response =
        ask("CreateInstance", parameter("NewInstance", "<INSTANCE CLASSNAME=\"Probe_Odd\"></INSTANCE>"));
    EXPECT_EQ(response.error_code(), 7);
    EXPECT_EQ(response.error_description(), "CIM_ERR_NOT_SUPPORTED");
}

std::string modification(const std::string& name) {
    return parameter("ModifiedInstance", "<VALUE.NAMEDINSTANCE>" + thing_name(name) +
                                             "<INSTANCE CLASSNAME=\"Probe_Thing\"><PROPERTY NAME=\"Colour\" "
                                             "TYPE=\"string\"><VALUE>grey</VALUE></PROPERTY></INSTANCE>"
                                             "</VALUE.NAMEDINSTANCE>") +
           parameter("IncludeQualifiers", value("false")) +
           parameter("PropertyList", value_array({"Colour"}));
}

TEST_F(Operations, ModifyInstanceReachesTheProvider) {
    const Response response = ask("ModifyInstance", modification("one"));
    EXPECT_EQ(response.error_code(), 0);
    EXPECT_EQ(response.count("//IMETHODRESPONSE"), 1U);
    EXPECT_EQ(response.count("//IMETHODRESPONSE/*"), 0U);
}

TEST_F(Operations, ModifyInstanceBringsTheProvidersErrorBack) {
    const Response response = ask("ModifyInstance", modification("other"));
    EXPECT_EQ(response.error_code(), 6);
    EXPECT_EQ(response.error_description(), "nothing to modify");
}

TEST_F(Operations, DeleteInstanceReachesTheProviderAndBringsItsErrorBack) {
    EXPECT_EQ(ask("DeleteInstance", parameter("InstanceName", thing_name("one"))).error_code(), 0);
    EXPECT_EQ(ask("DeleteInstance", parameter("InstanceName", thing_name("other"))).error_code(), 6);
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
    EXPECT_EQ(ask("ExecQuery", query("CQL")).error_code(), 14);
}

TEST_F(Operations, ErrorStatusReplacesTheResults) {
    const Response response = ask_class("EnumerateInstances", "Probe_Failing");
    EXPECT_EQ(response.error_code(), 2);
    EXPECT_EQ(response.error_description(), "the <door> is locked");
    EXPECT_EQ(response.count("//INSTANCE"), 0U);
    EXPECT_EQ(response.count("//IRETURNVALUE"), 0U);
}

TEST_F(Operations, StatusCodesThatCimDoesNotHaveBecomeFailed) {
    const Response response = ask_class("EnumerateInstances", "Probe_OddlyFailing");
    EXPECT_EQ(response.error_code(), 1);
    EXPECT_EQ(response.error_description(), "CIM_ERR_FAILED");
}

TEST_F(Operations, AnErrorObjectExplainsAStatusWithoutAMessage) {
    EXPECT_EQ(ask_class("EnumerateInstances", "Probe_ErrorObject").error_description(),
              "the error object explains");
}

TEST_F(Operations, OtherOperationsAreNotSupported) {
    for (const char* method : {"CreateClass", "ModifyClass", "DeleteClass", "SetProperty", "SetQualifier",
                               "DeleteQualifier", "NoSuchOperation"}) {
        const Response response = ask(method, parameter("ClassName", class_name("Probe_Thing")));
        EXPECT_EQ(response.error_code(), 7) << method;
        EXPECT_EQ(response.text("//IMETHODRESPONSE/@NAME"), method);
    }
}

TEST_F(Operations, ParametersOfOperationsThatAreNotServedDoNotMatter) {
    EXPECT_EQ(ask("SetQualifier", parameter("QualifierDeclaration", "<QUALIFIER.DECLARATION NAME=\"Key\"/>"))
                  .error_code(),
              7);
}

TEST_F(Operations, MethodsOfClassesAreNotSupported) {
    const std::string body = message(
        "<SIMPLEREQ><METHODCALL NAME=\"Reset\"><LOCALINSTANCEPATH><LOCALNAMESPACEPATH><NAMESPACE "
        "NAME=\"root\"/>"
        "</LOCALNAMESPACEPATH>" +
        thing_name("one") + "</LOCALINSTANCEPATH></METHODCALL></SIMPLEREQ>");
    const Response response(send(post(body, "Reset", "root:Probe_Thing.Name=\"one\"")).body);
    EXPECT_EQ(response.error_code(), 7);
    EXPECT_EQ(response.text("//METHODRESPONSE/@NAME"), "Reset");
}

TEST_F(Operations, NamespacesCompareWithoutCase) {
    const std::string parameters = parameter("ClassName", class_name("Probe_Context"));
    const Response response(send(post(imethod_call("EnumerateInstances", parameters, "ROOT/other"),
                                      "EnumerateInstances", "root%2FOTHER"))
                                .body);
    EXPECT_EQ(response.property("AskedNameSpace"), "ROOT/other");
}

TEST_F(Operations, UnknownNamespacesAreRefused) {
    const std::string parameters = parameter("ClassName", class_name("Probe_Thing"));
    const Response response(send(post(imethod_call("EnumerateInstances", parameters, "root/nowhere"),
                                      "EnumerateInstances", "root/nowhere"))
                                .body);
    EXPECT_EQ(response.error_code(), 3);
}

TEST_F(Operations, TheReportShowsWhatTheServerAnswersItselfToo) {
    ask_class("GetClass", "Probe_Thing");
    ask("EnumerateClassNames", "");
    ask("GetInstance", "");
    ask("PullInstances", parameter("EnumerationContext", value("x")));
    ask("Frobnicate", "");
    EXPECT_EQ(reported, (std::vector<std::string>{
                            "GetClass Probe_Thing: 1 returned", "EnumerateClassNames: 7 returned",
                            "GetInstance: CIM_ERR_INVALID_PARAMETER (parameter InstanceName is missing)",
                            "PullInstances: CIM_ERR_INVALID_PARAMETER (parameter MaxObjectCount is missing)",
                            "Frobnicate: CIM_ERR_NOT_SUPPORTED (Frobnicate is not served)"}));
}

TEST_F(Operations, TheReportShowsWhatWasAskedAndReturned) {
    ask_class("EnumerateInstances", "Probe_Thing");
    ask("GetInstance", parameter("InstanceName", thing_name("hint")));
    ASSERT_EQ(reported.size(), 2U);
    EXPECT_EQ(reported[0], "EnumerateInstances Probe_Thing: 2 returned");
    EXPECT_EQ(reported[1],
              "GetInstance root/cimv2:Probe_Thing.Name=\"hint\": CIM_ERR_NOT_FOUND (try another name)");
}

} // namespace
