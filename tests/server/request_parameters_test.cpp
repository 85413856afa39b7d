// The parameters of requests on their way to the provider.
#include <cmpidt.h>

#include <string>
#include <vector>

#include "tests/server/probe_service.h"

namespace {

using RequestParameters = ProbeService;

class Keys : public ProbeService {
  protected:
    Response echo_of(const std::string& keys) const {
        return ask("GetInstance", parameter("InstanceName", instance_name("Probe_Echo", keys)));
    }
    std::string type_of(const Response& response, const std::string& key) const {
        return response.property("typeOf" + key);
    }
};

std::string text(int number) {
    return std::to_string(number);
}

TEST_F(Keys, StringIsTheDefault) {
    const Response response =
        echo_of("<KEYBINDING NAME=\"K\"><KEYVALUE> a &lt;b&gt; <![CDATA[<c>]]></KEYVALUE></KEYBINDING>");
    EXPECT_EQ(response.property("K"), " a <b> <c>");
    EXPECT_EQ(type_of(response, "K"), text(CMPI_string));
}

TEST_F(Keys, BlanksAreKept) {
    EXPECT_EQ(echo_of(key("K", "  ")).property("K"), "  ");
    EXPECT_EQ(echo_of(key("K", "")).property("K"), "");
}

TEST_F(Keys, BooleansAndNumbers) {
    const Response response =
        echo_of(key("B", "TRUE", "VALUETYPE=\"boolean\"") + key("N", "-5", "VALUETYPE=\"numeric\"") +
                key("U", "18446744073709551615", "VALUETYPE=\"numeric\"") +
                key("H", "0x1F", "VALUETYPE=\"numeric\"") + key("R", "1.5e1", "VALUETYPE=\"numeric\""));
    EXPECT_EQ(response.property("B"), "TRUE");
    EXPECT_EQ(type_of(response, "B"), text(CMPI_boolean));
    EXPECT_EQ(response.property("N"), "-5");
    EXPECT_EQ(type_of(response, "N"), text(CMPI_sint64));
    EXPECT_EQ(response.property("U"), "18446744073709551615");
    EXPECT_EQ(type_of(response, "U"), text(CMPI_uint64));
    EXPECT_EQ(response.property("H"), "31");
    EXPECT_EQ(response.property("R"), "15.0");
    EXPECT_EQ(type_of(response, "R"), text(CMPI_real64));
}

TEST_F(Keys, TypesThatTheClientGivesAreUsed) {
    const Response response = echo_of(key("N", "7", "VALUETYPE=\"numeric\" TYPE=\"uint16\""));
    EXPECT_EQ(response.property("N"), "7");
    EXPECT_EQ(type_of(response, "N"), text(CMPI_uint16));
}

TEST_F(Keys, ValuesThatAreNotOfTheirTypeAreRefused) {
    EXPECT_EQ(echo_of(key("N", "seven", "VALUETYPE=\"numeric\"")).error_code(), 4);
    EXPECT_EQ(echo_of(key("N", "65536", "VALUETYPE=\"numeric\" TYPE=\"uint16\"")).error_code(), 4);
    EXPECT_EQ(echo_of(key("N", "-1", "VALUETYPE=\"numeric\" TYPE=\"uint8\"")).error_code(), 4);
    EXPECT_EQ(echo_of(key("B", "maybe", "VALUETYPE=\"boolean\"")).error_code(), 4);
}

TEST_F(Keys, AKeyOccursOnce) {
    EXPECT_EQ(echo_of(key("K", "1") + key("k", "2")).error_code(), 4);
}

TEST_F(Keys, AnUnnamedKeyIsThatOfTheClass) {
    EXPECT_EQ(echo_of("<KEYVALUE>bare</KEYVALUE>").property("PathText"),
              "root/cimv2:Probe_Echo.InstanceID=\"bare\"");
}

TEST_F(Keys, AKeyHasTheTypeThatItsClassDeclares) {
    const Response response = echo_of(key("InstanceID", "7", "VALUETYPE=\"numeric\""));
    EXPECT_EQ(type_of(response, "InstanceID"), text(CMPI_string));
    EXPECT_EQ(response.property("InstanceID"), "7");
}

TEST_F(Keys, ReferencesTakeTheRequestsNamespaceWhenTheyHaveNone) {
    const Response response = echo_of(reference_key("R", thing_name("t")));
    EXPECT_EQ(type_of(response, "R"), text(CMPI_ref));
    EXPECT_EQ(response.count("//PROPERTY.REFERENCE[@NAME='R']/VALUE.REFERENCE/LOCALINSTANCEPATH"), 1U);
    EXPECT_EQ(response.texts("//LOCALNAMESPACEPATH/NAMESPACE/@NAME"),
              (std::vector<std::string>{"root", "cimv2"}));
    EXPECT_EQ(response.text("//VALUE.REFERENCE//KEYVALUE"), "t");
}

TEST_F(Keys, ReferencesKeepTheirNamespace) {
    const std::string nameSpace = "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"a\"/></LOCALNAMESPACEPATH>";
    const Response local = echo_of(
        reference_key("R", "<LOCALINSTANCEPATH>" + nameSpace + thing_name("t") + "</LOCALINSTANCEPATH>"));
    EXPECT_EQ(local.text("//LOCALINSTANCEPATH//NAMESPACE/@NAME"), "a");
    const Response full =
        echo_of(reference_key("R", "<INSTANCEPATH><NAMESPACEPATH><HOST>h:1</HOST>" + nameSpace +
                                       "</NAMESPACEPATH>" + thing_name("t") + "</INSTANCEPATH>"));
    EXPECT_EQ(full.text("//LOCALINSTANCEPATH//NAMESPACE/@NAME"), "a");
    EXPECT_EQ(full.property("PathText"), "root/cimv2:Probe_Echo.R=(//h:1/a:Probe_Thing.Name=\"t\")");
}

TEST_F(Keys, ReferencesToClasses) {
    const Response response = echo_of(reference_key("R", "<CLASSNAME NAME=\"Probe_Thing\"/>"));
    EXPECT_EQ(response.text("//PROPERTY.REFERENCE/@REFERENCECLASS"), "Probe_Thing");
}

std::string nested(unsigned depth) {
    std::string path = thing_name("core");
    for (unsigned i = 0; i < depth; ++i) {
        path = instance_name("Probe_Echo", reference_key("R", path));
    }
    return path;
}

TEST_F(Keys, ReferencesNest) {
    const Response response = ask("GetInstance", parameter("InstanceName", nested(20)));
    EXPECT_EQ(response.error_code(), 0);
    EXPECT_EQ(response.text("//KEYVALUE"), "core");
    EXPECT_EQ(response.count("//INSTANCE//VALUE.REFERENCE"), 20U);
}

TEST_F(Keys, ReferencesNestedBeyondReasonAreRefused) {
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", nested(33))).error_code(), 4);
}

TEST_F(Keys, TypesOfKeysAreWrittenForClientsThatKnowThem) {
    const std::string parameters =
        parameter("InstanceName", instance_name("Probe_Echo", reference_key("R", thing_name("t"))));
    std::string body = imethod_call("GetInstance", parameters);
    EXPECT_EQ(Response(send(post(body, "GetInstance")).body).count("//KEYVALUE/@TYPE"), 0U);
    body.replace(body.find("DTDVERSION=\"2.0\""), 16, "DTDVERSION=\"2.4\"");
    const Response response(send(post(body, "GetInstance")).body);
    EXPECT_EQ(response.text("//KEYVALUE/@TYPE"), "string");
    EXPECT_EQ(response.text("/CIM/@DTDVERSION"), "2.3");
}

TEST_F(RequestParameters, FlagsReachTheProvider) {
    const auto flags = [this](const std::string& more) {
        return ask("EnumerateInstances", parameter("ClassName", class_name("Probe_Context")) + more)
            .property(CMPIInvocationFlags);
    };
    EXPECT_EQ(flags(""), text(CMPI_FLAG_LocalOnly | CMPI_FLAG_DeepInheritance));
    EXPECT_EQ(flags(parameter("LocalOnly", value("FALSE")) + parameter("DeepInheritance", value("false"))),
              "0");
    EXPECT_EQ(
        flags(parameter("IncludeQualifiers", value("true")) + parameter("IncludeClassOrigin", value("True"))),
        "15");
}

TEST_F(RequestParameters, TheContextNamesNamespaceLanguageAndUser) {
    cimserver::HttpRequest request =
        post(imethod_call("EnumerateInstances", parameter("ClassName", class_name("Probe_Context"))),
             "EnumerateInstances");
    request.headers["accept-language"] = "de, en";
    request.user = "ada";
    const Response response(send(request).body);
    EXPECT_EQ(response.property(CMPIInitNameSpace), "root/cimv2");
    EXPECT_EQ(response.property(CMPIAcceptLanguage), "de, en");
    EXPECT_EQ(response.property(CMPIPrincipal), "ada");
}

TEST_F(RequestParameters, PropertyListsReachTheProvider) {
    const auto wanted = [this](const std::string& list) {
        const std::string parameters = parameter("ClassName", class_name("Probe_Context")) + list;
        return ask("EnumerateInstances", parameters).property("WantedCount");
    };
    EXPECT_EQ(wanted(""), "99"); // none at all
    EXPECT_EQ(wanted(parameter("PropertyList", value_array({"WantedCount", "Other"}))), "2");
}

TEST_F(RequestParameters, PropertyListsLimitTheAnswerWhateverTheProviderReturns) {
    // This class does not filter by itself.
    const Response response =
        ask("EnumerateInstances", parameter("ClassName", class_name("Probe_Types")) +
                                      parameter("PropertyList", value_array({"AUINT8", "aNull"})));
    EXPECT_EQ(response.texts("//INSTANCE/*/@NAME"), (std::vector<std::string>{"aUint8", "aNull"}));
}

TEST_F(RequestParameters, AnEmptyPropertyListLeavesNamesOnly) {
    const Response response = ask("EnumerateInstances", parameter("ClassName", class_name("Probe_Thing")) +
                                                            parameter("PropertyList", value_array({})));
    EXPECT_EQ(response.count("//VALUE.NAMEDINSTANCE/INSTANCENAME/KEYBINDING"), 2U);
    EXPECT_EQ(response.count("//INSTANCE/*"), 0U);
}

TEST_F(RequestParameters, NamesSurviveAPropertyListWithoutTheKeys) {
    const Response response =
        ask("EnumerateInstances", parameter("ClassName", class_name("Probe_Keyless")) +
                                      parameter("PropertyList", value_array({"Label"})));
    EXPECT_EQ(response.text("//INSTANCENAME/KEYBINDING[@NAME='InstanceID']/KEYVALUE"), "id-1");
    EXPECT_EQ(response.texts("//INSTANCE/*/@NAME"), std::vector<std::string>{"Label"});
}

TEST_F(RequestParameters, ClassOriginsAreWrittenOnDemand) {
    const std::string types = parameter("ClassName", class_name("Probe_Types"));
    EXPECT_EQ(ask("EnumerateInstances", types).count("//@CLASSORIGIN"), 0U);
    EXPECT_EQ(ask("EnumerateInstances", types + parameter("IncludeClassOrigin", value("true")))
                  .text("//@CLASSORIGIN"),
              "Probe_Base");
}

TEST_F(RequestParameters, MissingParametersAreRefused) {
    EXPECT_EQ(ask("EnumerateInstances", "").error_code(), 4);
    EXPECT_EQ(ask("GetInstance", "").error_code(), 4);
    EXPECT_EQ(ask("AssociatorNames", "").error_code(), 4);
    EXPECT_EQ(ask("CreateInstance", "").error_code(), 4);
    EXPECT_EQ(ask("ExecQuery", parameter("Query", value("select"))).error_code(), 4);
    EXPECT_EQ(ask("EnumerateInstances", "<IPARAMVALUE NAME=\"ClassName\"/>").error_code(), 4);
}

TEST_F(RequestParameters, UnknownAndRepeatedParametersAreRefused) {
    const std::string known = parameter("ClassName", class_name("Probe_Thing"));
    EXPECT_EQ(ask("EnumerateInstances", known + parameter("Colour", value("red"))).error_code(), 4);
    EXPECT_EQ(ask("EnumerateInstances", known + known).error_code(), 4);
}

TEST_F(RequestParameters, ParametersOfTheWrongKindAreRefused) {
    EXPECT_EQ(ask("EnumerateInstances", parameter("ClassName", value("Probe_Thing"))).error_code(), 4);
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", class_name("Probe_Thing"))).error_code(), 4);
    EXPECT_EQ(ask("EnumerateInstances", parameter("ClassName", class_name("Probe_Thing")) +
                                            parameter("LocalOnly", value("perhaps")))
                  .error_code(),
              4);
}

TEST_F(RequestParameters, NamesOfParametersCompareWithoutCase) {
    EXPECT_EQ(
        ask("EnumerateInstances", parameter("CLASSNAME", class_name("Probe_Thing"))).count("//INSTANCE"), 2U);
}

} // namespace
