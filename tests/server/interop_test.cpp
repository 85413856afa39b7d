// What the server says of itself to clients that look for it.
#include "server/interop/interop.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "server/provider/registrations.h"
#include "tests/server/probe_service.h"

namespace {

using namespace cimserver;
using List = std::vector<std::string>;

constexpr auto NAMES = "//IRETURNVALUE//INSTANCENAME/KEYBINDING[@NAME='Name']/KEYVALUE";
constexpr const char* INTEROP[] = {"interop", "root/interop"};

std::vector<ServedNameSpace> with_interop(std::vector<ServedNameSpace> served, bool asksForUsers = false) {
    serve_interop(served, {.systemName = "machine", .asksForUsers = asksForUsers});
    return served;
}

class Interop : public ProbeService {
  protected:
    Response ask(const std::string& nameSpace, const std::string& method,
                 const std::string& parameters) const {
        return Response(
            own.answer(post(imethod_call(method, parameters, nameSpace), method, nameSpace)).body);
    }
    Response ask_class(const std::string& nameSpace, const std::string& method,
                       const std::string& className) const {
        return ask(nameSpace, method, parameter("ClassName", class_name(className)));
    }
    List names(const std::string& nameSpace, const std::string& className) const {
        List found = ask_class(nameSpace, "EnumerateInstanceNames", className).texts(NAMES);
        std::sort(found.begin(), found.end());
        return found;
    }

    cimserver::Operations described{with_interop(probe_name_spaces(provider))};
    CimXmlService own{described, {.host = "testhost"}};
};

std::string keys_in_system(const std::string& className, const std::string& name) {
    return key("SystemCreationClassName", "CIM_ComputerSystem") + key("SystemName", "machine") +
           key("CreationClassName", className) + key("Name", name);
}
std::string manager() {
    return instance_name("CIM_ObjectManager", keys_in_system("CIM_ObjectManager", "kesto-cimserver"));
}

TEST_F(Interop, EveryNamespaceHasAnObjectUnderEitherName) {
    for (const char* interop : INTEROP) {
        EXPECT_EQ(names(interop, "CIM_Namespace"),
                  (List{"interop", "root", "root/Other", "root/cimv2", "root/interop"}));
    }
}

TEST_F(Interop, ANamespaceObjectIsFoundByItsKeys) {
    const std::string keys =
        key("SystemCreationClassName", "CIM_ComputerSystem") + key("SystemName", "machine") +
        key("ObjectManagerCreationClassName", "CIM_ObjectManager") +
        key("ObjectManagerName", "kesto-cimserver") + key("CreationClassName", "CIM_Namespace");
    const auto get = [&](const std::string& name) {
        const std::string path = instance_name("CIM_Namespace", keys + key("Name", name));
        return ask("interop", "GetInstance", parameter("InstanceName", path));
    };
    EXPECT_EQ(get("root/cimv2").property("ElementName"), "root/cimv2");
    EXPECT_EQ(get("root/nowhere").error_code(), 6);
}

TEST_F(Interop, TheServerIsOneObjectManager) {
    const Response response = ask_class("interop", "EnumerateInstances", "CIM_ObjectManager");
    EXPECT_EQ(response.count("//INSTANCE"), 1U);
    EXPECT_EQ(response.property("ElementName"), "kesto-cimserver");
    EXPECT_TRUE(response.property("Description").starts_with("Embedded CIM server, version "));
    EXPECT_EQ(response.property("Started"), "TRUE");
}

TEST_F(Interop, ItsProtocolIsCimXml) {
    const Response response =
        ask_class("interop", "EnumerateInstances", "CIM_ObjectManagerCommunicationMechanism");
    EXPECT_EQ(response.text("//INSTANCE/@CLASSNAME"), "CIM_CIMXMLCommunicationMechanism");
    EXPECT_EQ(response.property("CommunicationMechanism"), "2");
    constexpr auto AUTHENTICATION = "//PROPERTY.ARRAY[@NAME='AuthenticationMechanismsSupported']//VALUE";
    EXPECT_EQ(response.texts(AUTHENTICATION), List{"2"});

    const cimserver::Operations guarded(with_interop(probe_name_spaces(provider), true));
    const CimXmlService asking(guarded, {.host = "testhost"});
    const std::string parameters = parameter("ClassName", class_name("CIM_CIMXMLCommunicationMechanism"));
    const HttpReply reply = asking.answer(
        post(imethod_call("EnumerateInstances", parameters, "interop"), "EnumerateInstances", "interop"));
    EXPECT_EQ(Response(reply.body).texts(AUTHENTICATION), List{"3"});
}

TEST_F(Interop, NoProfileIsRegistered) {
    const Response response = ask_class("interop", "EnumerateInstances", "CIM_RegisteredProfile");
    EXPECT_EQ(response.error_code(), 0);
    EXPECT_EQ(response.count("//INSTANCE"), 0U);
}

TEST_F(Interop, TheServerLeadsToItsNamespacesAndItsProtocol) {
    const std::string from = parameter("ObjectName", manager());
    const auto association = [](const std::string& name) {
        return parameter("AssocClass", class_name(name));
    };
    const Response nameSpaces =
        ask("interop", "AssociatorNames", from + association("CIM_NamespaceInManager"));
    EXPECT_EQ(nameSpaces.texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/@CLASSNAME"),
              List(5, "CIM_Namespace"));
    EXPECT_EQ(nameSpaces.text("//INSTANCEPATH/NAMESPACEPATH/LOCALNAMESPACEPATH/NAMESPACE/@NAME"), "interop");
    const Response mechanisms =
        ask("root/interop", "Associators",
            from + association("CIM_ServiceAccessBySAP") + parameter("ResultRole", value("Dependent")));
    EXPECT_EQ(mechanisms.property("ElementName"), "CIM-XML over HTTP");
    EXPECT_EQ(mechanisms.texts("//INSTANCEPATH/NAMESPACEPATH/LOCALNAMESPACEPATH/NAMESPACE/@NAME"),
              (List{"root", "interop"}));
    EXPECT_EQ(ask("interop", "ReferenceNames", from).count("//OBJECTPATH"), 6U);
}

TEST_F(Interop, ANamespaceLeadsToTheServerOnly) {
    const Response enumerated = ask_class("interop", "EnumerateInstances", "CIM_NamespaceInManager");
    EXPECT_EQ(enumerated.count("//INSTANCE"), 5U);
    const std::string mechanism = instance_name(
        "CIM_CIMXMLCommunicationMechanism", keys_in_system("CIM_CIMXMLCommunicationMechanism", "CIM-XML"));
    const Response back = ask("interop", "AssociatorNames", parameter("ObjectName", mechanism));
    EXPECT_EQ(back.texts("//OBJECTPATH/INSTANCEPATH/INSTANCENAME/@CLASSNAME"), List{"CIM_ObjectManager"});
}

TEST_F(Interop, PropertyListsLimitTheObjects) {
    const Response response = ask("interop", "EnumerateInstances",
                                  parameter("ClassName", class_name("CIM_Namespace")) +
                                      parameter("PropertyList", value_array({"Name"})));
    EXPECT_EQ(response.texts("//INSTANCE/PROPERTY/@NAME"), List(5, "Name"));
}

TEST_F(Interop, TheObjectsCanBePulled) {
    const Response opened =
        ask("interop", "OpenEnumerateInstancePaths",
            parameter("ClassName", class_name("CIM_Namespace")) + parameter("MaxObjectCount", value("3")));
    EXPECT_EQ(opened.count("//IRETURNVALUE/INSTANCEPATH"), 3U);
    EXPECT_EQ(opened.text("//PARAMVALUE[@NAME='EndOfSequence']/VALUE"), "FALSE");
}

TEST_F(Interop, TheObjectsDoNotChange) {
    EXPECT_EQ(ask("interop", "DeleteInstance", parameter("InstanceName", manager())).error_code(), 7);
    EXPECT_EQ(ask_class("interop", "EnumerateInstances", "CIM_ObjectManager").count("//INSTANCE"), 1U);
}

TEST_F(Interop, ANamespaceNamesThoseDirectlyBelowIt) {
    EXPECT_EQ(names("root", "__Namespace"), (List{"Other", "cimv2", "interop"}));
    EXPECT_EQ(names("root/cimv2", "__Namespace"), List{});
    EXPECT_EQ(names("interop", "__Namespace"), List{});
}

TEST_F(Interop, WhatTheProviderServesIsServedAsBefore) {
    EXPECT_EQ(names("root/cimv2", "Probe_Thing"), (List{"one", "two"}));
    EXPECT_EQ(ask_class("interop", "EnumerateInstances", "Probe_Thing").error_code(), 5);
    EXPECT_EQ(ask_class("root", "EnumerateInstances", "Probe_Thing").error_code(), 5);
}

TEST_F(Interop, AProviderCannotTakeTheNamespaceOver) {
    std::vector<ServedNameSpace> served;
    served.push_back({"Root/Interop", ClassSchema("Root/Interop"), {}});
    EXPECT_THROW(serve_interop(served, {.systemName = "machine"}), RegistrationError);
}

} // namespace
