// Enumerations that the client takes in portions.
#include <cstddef>
#include <string>
#include <vector>

#include "tests/server/probe_service.h"

namespace {

using List = std::vector<std::string>;

constexpr int INVALID_PARAMETER = 4;
constexpr int INVALID_CONTEXT = 21;

constexpr auto WITH_PATH = "//IRETURNVALUE/VALUE.INSTANCEWITHPATH";
constexpr auto PATH = "//IRETURNVALUE/INSTANCEPATH";
constexpr auto NAME = "//IRETURNVALUE//INSTANCENAME/KEYBINDING[@NAME='Name']/KEYVALUE";

std::string of_class(const std::string& name) {
    return parameter("ClassName", class_name(name));
}
std::string from(const std::string& source) {
    return parameter("InstanceName", source);
}
std::string at_most(unsigned count) {
    return parameter("MaxObjectCount", value(std::to_string(count)));
}
std::string context(const std::string& text) {
    return parameter("EnumerationContext", value(text));
}

std::string context_in(const Response& response) {
    return response.text("//PARAMVALUE[@NAME='EnumerationContext']/VALUE");
}
bool is_last(const Response& response) {
    const std::string end = response.text("//PARAMVALUE[@NAME='EndOfSequence']/VALUE");
    EXPECT_TRUE(end == "TRUE" || end == "FALSE") << end;
    return end == "TRUE";
}

class PullOperations : public ProbeService {
  protected:
    // The context of an enumeration with three paths to come.
    std::string open_paths() const {
        return context_in(ask("OpenEnumerateInstancePaths", of_class("Probe_Base")));
    }
    Response pull_paths(const std::string& opened, unsigned most) const {
        return ask("PullInstancePaths", context(opened) + at_most(most));
    }
    int error_of(const std::string& method, const std::string& parameters) const {
        return ask(method, parameters).error_code();
    }
    Response ask_as(const std::string& user, const std::string& method, const std::string& parameters,
                    const std::string& nameSpace = "root/cimv2") const {
        cimserver::HttpRequest request = post(imethod_call(method, parameters, nameSpace), method, nameSpace);
        request.user = user;
        return Response(send(request).body);
    }
};

TEST_F(PullOperations, ObjectsOfSeveralClassesComeInTheirOrderPortionByPortion) {
    const Response opened = ask("OpenEnumerateInstancePaths", of_class("Probe_Base") + at_most(1));
    EXPECT_EQ(opened.texts(NAME), List{"one"});
    EXPECT_FALSE(is_last(opened));
    const Response second = pull_paths(context_in(opened), 1);
    EXPECT_EQ(second.texts(NAME), List{"two"});
    EXPECT_FALSE(is_last(second));
    const Response last = pull_paths(context_in(second), 5);
    EXPECT_EQ(last.texts(NAME), List{"only"});
    EXPECT_TRUE(is_last(last));
}

TEST_F(PullOperations, AnOpeningReturnsNoObjectUnlessTheClientWantsSome) {
    const Response opened = ask("OpenEnumerateInstances", of_class("Probe_Thing"));
    EXPECT_EQ(opened.count(WITH_PATH), 0U);
    EXPECT_FALSE(is_last(opened));
    const Response pulled = ask("PullInstancesWithPath", context(context_in(opened)) + at_most(10));
    EXPECT_EQ(pulled.count(WITH_PATH), 2U);
    EXPECT_TRUE(is_last(pulled));
}

TEST_F(PullOperations, AnOpeningThatReturnsEverythingLeavesNothingOpen) {
    const Response opened = ask("OpenEnumerateInstances", of_class("Probe_Thing") + at_most(2));
    EXPECT_EQ(opened.count(WITH_PATH), 2U);
    EXPECT_TRUE(is_last(opened));
    EXPECT_EQ(opened.count("//PARAMVALUE[@NAME='EnumerationContext']"), 1U);
    EXPECT_EQ(opened.count("//PARAMVALUE[@NAME='EnumerationContext']/VALUE"), 0U);
}

TEST_F(PullOperations, NothingToEnumerateIsAtItsEndAtOnce) {
    const Response opened = ask("OpenEnumerateInstances", of_class("Probe_Unserved"));
    EXPECT_EQ(opened.error_code(), 0);
    EXPECT_TRUE(is_last(opened));
}

TEST_F(PullOperations, InstancesComeWithTheirPaths) {
    const Response opened = ask("OpenEnumerateInstances", of_class("Probe_Thing") + at_most(1));
    EXPECT_EQ(opened.text("//VALUE.INSTANCEWITHPATH/INSTANCEPATH/NAMESPACEPATH/HOST"), "testhost");
    EXPECT_EQ(opened.texts(NAME), List{"one"});
    EXPECT_EQ(opened.property("Colour"), "red");
}

TEST_F(PullOperations, PropertyListsAndOriginsApplyToOpenedInstances) {
    const Response opened = ask("OpenEnumerateInstances",
                                of_class("Probe_Thing") + parameter("PropertyList", value_array({"Size"})) +
                                    parameter("IncludeClassOrigin", value("true")) + at_most(1));
    EXPECT_EQ(opened.texts("//INSTANCE/PROPERTY/@NAME"), List{"Size"});
    EXPECT_EQ(opened.text("//INSTANCE/PROPERTY/@CLASSORIGIN"), "Probe_Base");
}

TEST_F(PullOperations, WithoutDeepInheritanceSubclassesHaveThePropertiesOfTheClassNamed) {
    const Response opened =
        ask("OpenEnumerateInstances",
            of_class("Probe_Base") + parameter("DeepInheritance", value("false")) + at_most(1));
    EXPECT_EQ(opened.property("Size"), "7");
    EXPECT_EQ(opened.property("Colour"), "(no Colour)");
}

TEST_F(PullOperations, TraversalsOpenWithTheirFilters) {
    const std::string one = from(thing_name("one")) + at_most(10);
    const std::string link = parameter("AssocClass", class_name("Probe_Link"));
    const std::string left = parameter("Role", value("Left"));
    const auto classes = [this](const std::string& method, const std::string& parameters) {
        return ask(method, parameters).texts("//IRETURNVALUE//INSTANCEPATH/INSTANCENAME/@CLASSNAME");
    };
    EXPECT_EQ(classes("OpenAssociatorInstancePaths", one), (List{"Probe_Thing", "Probe_Piece"}));
    EXPECT_EQ(
        classes("OpenAssociatorInstancePaths", one + link + left + parameter("ResultRole", value("Right"))),
        List{"Probe_Thing"});
    EXPECT_EQ(classes("OpenAssociatorInstances", one + parameter("ResultClass", class_name("Probe_Piece"))),
              List{"Probe_Piece"});
    EXPECT_EQ(ask("OpenReferenceInstancePaths", one + left).texts("//INSTANCEPATH/INSTANCENAME/@CLASSNAME"),
              (List{"Probe_Link", "Probe_Twin"}));
    const Response references =
        ask("OpenReferenceInstances", one + parameter("ResultClass", class_name("Probe_Link")));
    EXPECT_EQ(references.texts("//VALUE.INSTANCEWITHPATH/INSTANCE/@CLASSNAME"), List{"Probe_Link"});
}

TEST_F(PullOperations, AQueryOpensInstancesWithoutPaths) {
    const std::string query = parameter("FilterQueryLanguage", value("WQL")) +
                              parameter("FilterQuery", value("select * from Probe_Thing"));
    const Response opened = ask("OpenQueryInstances", query);
    EXPECT_EQ(opened.error_code(), 0);
    const Response pulled = ask("PullInstances", context(context_in(opened)) + at_most(1));
    EXPECT_EQ(pulled.count("//IRETURNVALUE/INSTANCE"), 1U);
    EXPECT_EQ(pulled.property("ClassAsked"), "Probe_Thing");
    EXPECT_EQ(error_of("OpenQueryInstances", parameter("FilterQueryLanguage", value("WQL"))),
              INVALID_PARAMETER);
    EXPECT_EQ(error_of("OpenQueryInstances", query + parameter("ReturnQueryResultClass", value("true"))), 7);
}

TEST_F(PullOperations, NoObjectIsLostOrRepeatedInALongEnumeration) {
    Response portion = ask("OpenEnumerateInstancePaths", of_class("Probe_Many") + at_most(7));
    List names = portion.texts(NAME);
    while (!is_last(portion) && !HasFailure()) {
        portion = pull_paths(context_in(portion), 700);
        const List more = portion.texts(NAME);
        names.insert(names.end(), more.begin(), more.end());
    }
    ASSERT_EQ(names.size(), 3000U);
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(names[i], std::to_string(i));
    }
}

TEST_F(PullOperations, TheNumberOfObjectsToComeIsCounted) {
    const std::string opened = open_paths();
    EXPECT_EQ(ask("EnumerationCount", context(opened)).text("//IRETURNVALUE/VALUE"), "3");
    pull_paths(opened, 2);
    EXPECT_EQ(ask("EnumerationCount", context(opened)).text("//IRETURNVALUE/VALUE"), "1");
}

TEST_F(PullOperations, APullOfNoObjectsKeepsTheEnumerationOpen) {
    const std::string opened = open_paths();
    const Response pulled = pull_paths(opened, 0);
    EXPECT_EQ(pulled.count(PATH), 0U);
    EXPECT_FALSE(is_last(pulled));
    EXPECT_EQ(pull_paths(opened, 3).count(PATH), 3U);
}

TEST_F(PullOperations, AClosedEnumerationIsGone) {
    const std::string opened = open_paths();
    const Response closed = ask("CloseEnumeration", context(opened));
    EXPECT_EQ(closed.error_code(), 0);
    EXPECT_EQ(closed.count("//IMETHODRESPONSE/*"), 0U);
    EXPECT_EQ(pull_paths(opened, 1).error_code(), INVALID_CONTEXT);
    EXPECT_EQ(error_of("CloseEnumeration", context(opened)), INVALID_CONTEXT);
    EXPECT_EQ(error_of("EnumerationCount", context(opened)), INVALID_CONTEXT);
}

TEST_F(PullOperations, AnEnumerationAtItsEndIsGone) {
    const std::string opened = open_paths();
    pull_paths(opened, 3);
    EXPECT_EQ(pull_paths(opened, 1).error_code(), INVALID_CONTEXT);
}

TEST_F(PullOperations, PathsAreNotPulledAsInstances) {
    const std::string opened = open_paths();
    EXPECT_EQ(error_of("PullInstancesWithPath", context(opened) + at_most(1)), INVALID_CONTEXT);
    EXPECT_EQ(error_of("PullInstances", context(opened) + at_most(1)), INVALID_CONTEXT);
    EXPECT_EQ(pull_paths(opened, 3).count(PATH), 3U);
}

TEST_F(PullOperations, AnEnumerationBelongsToItsUserAndNamespace) {
    const std::string opened =
        context_in(ask_as("ann", "OpenEnumerateInstancePaths", of_class("Probe_Base")));
    const std::string portion = context(opened) + at_most(3);
    EXPECT_EQ(ask_as("bob", "PullInstancePaths", portion).error_code(), INVALID_CONTEXT);
    EXPECT_EQ(ask_as("", "CloseEnumeration", context(opened)).error_code(), INVALID_CONTEXT);
    EXPECT_EQ(ask_as("ann", "PullInstancePaths", portion, "root/Other").error_code(), INVALID_CONTEXT);
    EXPECT_EQ(ask_as("ann", "PullInstancePaths", portion, "ROOT/cimv2").count(PATH), 3U);
}

TEST_F(PullOperations, WhatTheServerCannotPromiseIsRefused) {
    const auto refusal = [this](const std::string& name, const std::string& text) {
        return error_of("OpenEnumerateInstances", of_class("Probe_Thing") + parameter(name, value(text)));
    };
    EXPECT_EQ(refusal("OperationTimeout", "0"), 22);
    EXPECT_EQ(refusal("OperationTimeout", "901"), 22);
    EXPECT_EQ(refusal("OperationTimeout", "900"), 0);
    EXPECT_EQ(refusal("ContinueOnError", "true"), 26);
    EXPECT_EQ(refusal("ContinueOnError", "false"), 0);
    EXPECT_EQ(refusal("FilterQuery", "Size > 1"), 25);
    EXPECT_EQ(refusal("FilterQueryLanguage", "DMTF:FQL"), 25);
    EXPECT_EQ(refusal("FilterQueryLanguage", ""), 0);
}

TEST_F(PullOperations, WrongParametersAreRefused) {
    const std::string thing = of_class("Probe_Thing");
    for (const std::string& wrong :
         {parameter("IncludeQualifiers", value("true")), parameter("LocalOnly", value("true")),
          parameter("MaxObjectCount", value("-1")), parameter("MaxObjectCount", value("4294967296")),
          parameter("OperationTimeout", value("soon"))}) {
        EXPECT_EQ(error_of("OpenEnumerateInstances", thing + wrong), INVALID_PARAMETER) << wrong;
    }
    EXPECT_EQ(error_of("OpenAssociatorInstances", from(class_name("Probe_Thing"))), INVALID_PARAMETER);
    const std::string opened = open_paths();
    EXPECT_EQ(error_of("PullInstancePaths", context(opened)), INVALID_PARAMETER);
    EXPECT_EQ(error_of("PullInstancePaths", at_most(1)), INVALID_PARAMETER);
    EXPECT_EQ(error_of("CloseEnumeration", context(opened) + at_most(1)), INVALID_PARAMETER);
    EXPECT_EQ(pull_paths(opened, 3).count(PATH), 3U);
}

TEST_F(PullOperations, AnErrorOpensNothing) {
    const Response failed = ask("OpenEnumerateInstances", of_class("Probe_Failing"));
    EXPECT_EQ(failed.error_code(), 2);
    EXPECT_EQ(failed.count("//PARAMVALUE"), 0U);
    EXPECT_EQ(error_of("OpenEnumerateInstancePaths", of_class("Probe_Unknown")), 5);
}

TEST_F(PullOperations, TheReportShowsHowMuchIsToCome) {
    const std::string opened = open_paths();
    reported.clear();
    pull_paths(opened, 2);
    ask("EnumerationCount", context(opened));
    ask("CloseEnumeration", context(opened));
    EXPECT_EQ(reported, (List{"PullInstancePaths: 2 returned, 1 to come", "EnumerationCount: 1 to come",
                              "CloseEnumeration: closed"}));
}

} // namespace
