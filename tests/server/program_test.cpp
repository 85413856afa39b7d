// The program itself: its options, its console and its end.
#include "tests/server/program.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <future>
#include <string>
#include <vector>

#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"
#include "tests/server/response.h"
#include "tests/server/temporary_folder.h"

namespace {

TEST_F(Program, ReportsWhenItIsReadyAndStopsCleanlyOnSigterm) {
    serve();
    const std::string url = "http://127.0.0.1:" + std::to_string(port) + "/cimom";
    EXPECT_EQ(out(), "kesto-cimserver: serving " + url + " (namespace root/cimv2, root/Other)\n");
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(out(), "kesto-cimserver: serving " + url +
                         " (namespace root/cimv2, root/Other)\nkesto-cimserver: stopped\n");
    EXPECT_EQ(err(), "");
}

TEST_F(Program, StopsCleanlyOnSigint) {
    serve();
    EXPECT_EQ(stop(SIGINT), 0);
}

TEST_F(Program, FinishesRunningRequestsBeforeItStops) {
    serve();
    auto client =
        std::async(std::launch::async, [this] { return ask_class("EnumerateInstances", "Probe_Slow"); });
    usleep(150000);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(client.get().count("//INSTANCE"), 1U);
}

TEST_F(Program, ServesEveryOperationOverTheWire) {
    serve();
    const auto ask = [this](const std::string& method, const std::string& parameters) {
        return Response(exchange(port, post(imethod_call(method, parameters), method)).body);
    };
    const std::string source = parameter("ObjectName", thing_name("one"));
    EXPECT_EQ(ask_class("EnumerateInstances", "Probe_Thing").count("//VALUE.NAMEDINSTANCE"), 2U);
    EXPECT_EQ(ask_class("EnumerateInstanceNames", "Probe_Thing").count("//INSTANCENAME"), 2U);
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thing_name("one"))).count("//INSTANCE"), 1U);
    const std::string link = parameter("AssocClass", class_name("Probe_Link"));
    EXPECT_EQ(ask("Associators", source + link).count("//VALUE.OBJECTWITHPATH"), 1U);
    EXPECT_EQ(ask("AssociatorNames", source + link).count("//OBJECTPATH"), 1U);
    const std::string resultClass = parameter("ResultClass", class_name("Probe_Link"));
    EXPECT_EQ(ask("References", source + resultClass).count("//VALUE.OBJECTWITHPATH"), 1U);
    EXPECT_EQ(ask("ReferenceNames", source + resultClass).count("//OBJECTPATH"), 1U);
    EXPECT_EQ(ask("DeleteInstance", parameter("InstanceName", thing_name("one"))).error_code(), 0);
    EXPECT_EQ(
        ask("CreateInstance", parameter("NewInstance", "<INSTANCE CLASSNAME=\"Probe_Odd\"/>")).error_code(),
        7);
    EXPECT_EQ(ask("ExecQuery", parameter("QueryLanguage", value("CQL")) + parameter("Query", value("q")))
                  .error_code(),
              14);
    EXPECT_EQ(ask("GetClass", parameter("ClassName", class_name("Probe_Nowhere"))).error_code(), 6);
}

TEST_F(Program, ServesSeveralClientsAtATime) {
    serve();
    std::vector<std::future<Response>> clients;
    for (int i = 0; i < 4; ++i) {
        clients.push_back(
            std::async(std::launch::async, [this] { return ask_class("EnumerateInstances", "Probe_Slow"); }));
    }
    int most = 0;
    for (auto& client : clients) {
        most = std::max(most, std::atoi(client.get().property("MostInside").c_str()));
    }
    EXPECT_GE(most, 2);
}

TEST_F(Program, ClientsThatReadSlowlyHoldUpNobody) {
    serve();
    const std::string many =
        imethod_call("EnumerateInstances", parameter("ClassName", class_name("Probe_Many")));
    Connection reluctant(port);
    ASSERT_TRUE(reluctant.send(http_text(post(many, "EnumerateInstances"))));
    usleep(200000); // its answer is ready and waits
    EXPECT_EQ(ask_class("EnumerateInstances", "Probe_Thing").count("//INSTANCE"), 2U);
    EXPECT_EQ(Response(parse_http(reluctant.receive_all()).body).count("//INSTANCE"), 3000U);
}

TEST_F(Program, AnswersTheSameToManyClientsAtOnce) {
    serve();
    const auto client = [this] {
        int wrong = 0;
        for (int i = 0; i < 25; ++i) {
            const Response types = ask_class("EnumerateInstances", "Probe_Types");
            const Response things = ask_class("EnumerateInstanceNames", "Probe_Thing");
            if (types.property("aUint32") != "4294967295" || things.count("//INSTANCENAME") != 2) ++wrong;
        }
        return wrong;
    };
    std::vector<std::future<int>> clients;
    for (int i = 0; i < 6; ++i) {
        clients.push_back(std::async(std::launch::async, client));
    }
    for (auto& one : clients) {
        EXPECT_EQ(one.get(), 0);
    }
    EXPECT_EQ(stop(), 0);
}

TEST_F(Program, WhatTheProviderPrintsGoesToItsLog) {
    serve({"--provider-log", file("log")});
    ask_class("EnumerateInstances", "Probe_Noisy");
    EXPECT_EQ(content_of(file("log")), "Probe_Noisy was enumerated\n"); // at once, not at the end
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(out().find("Noisy"), std::string::npos);
    EXPECT_NE(out().find("stopped"), std::string::npos);
}

TEST_F(Program, WhatTheProviderPrintsMayGoToStandardError) {
    serve({"--provider-log", "-"});
    ask_class("EnumerateInstances", "Probe_Noisy");
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(err(), "Probe_Noisy was enumerated\n");
    EXPECT_EQ(out().find("Noisy"), std::string::npos);
}

TEST_F(Program, VerboseReportsOperations) {
    serve({"--verbose"});
    ask_class("EnumerateInstances", "Probe_Odd");
    stop();
    EXPECT_EQ(err(),
              "kesto-cimserver: EnumerateInstances Probe_Odd: 2 returned, 3 that were no objects ignored\n");
}

TEST_F(Program, WhatItReportsStaysOnOneLine) {
    serve({"--verbose"});
    ask_class("EnumerateInstances", "A&#10;B&#9;\xC2\x9B\xC3\xA9");
    stop();
    EXPECT_EQ(err(),
              "kesto-cimserver: EnumerateInstances A?B??\xC3\xA9: CIM_ERR_INVALID_CLASS "
              "(there is no class A?B??\xC3\xA9)\n");
}

TEST_F(Program, ServesTheNamespacesOfTheCommandLine) {
    serve({"--namespace", "root/a", "--namespace", "root/b"});
    EXPECT_NE(out().find("(namespace root/a, root/b)"), std::string::npos);
    EXPECT_EQ(ask_class("EnumerateInstances", "Probe_Thing").error_code(), 3);
}

TEST_F(Program, ServesWhatARegistrationNames) {
    std::ofstream(file("registration")) << "[Probe_Part]\n  provider: Probe\n  type: association\n"
                                           "  namespace: root/part\n";
    serve({"--registration", file("registration")});
    EXPECT_NE(out().find("(namespace root/part)"), std::string::npos);
    EXPECT_EQ(far_end_of_thing_one("root/part"), "Probe_Piece");
}

TEST_F(Program, PrintsItsVersionAndItsHelp) {
    start({"--version"});
    EXPECT_EQ(wait_for_end(), 0);
    EXPECT_EQ(out(), "kesto-cimserver " PROJECT_VERSION "\n");
    start({"--help"});
    EXPECT_EQ(wait_for_end(), 0);
    EXPECT_NE(out().find("--provider-name"), std::string::npos);
    EXPECT_EQ(err(), "");
}

TEST_F(Program, SaysWhatIsWrongWithItsProvider) {
    start({"--provider", "/nonexistent.so", "--port", "0"});
    EXPECT_EQ(wait_for_end(), 1);
    EXPECT_NE(err().find("/nonexistent.so"), std::string::npos);
    start({"--provider", PROBE_PROVIDER, "--provider-name", "Unmakeable", "--port", "0"});
    EXPECT_EQ(wait_for_end(), 1);
    EXPECT_NE(err().find("Unmakeable_Create_InstanceMI failed with status 1: out of order"),
              std::string::npos);
}

TEST_F(Program, SaysWhatIsWrongWithItsOptions) {
    start({"--port", "seventy"});
    EXPECT_EQ(wait_for_end(), 2);
    EXPECT_NE(err().find("--port"), std::string::npos);
    start({"--colour"});
    EXPECT_EQ(wait_for_end(), 2);
    EXPECT_NE(err().find("--colour"), std::string::npos);
}

TEST_F(Program, SaysWhatIsWrongWithSchemaAndRegistration) {
    const auto error = [this](const std::string& registration, const std::string& schema) {
        start({"--provider", PROBE_PROVIDER, "--provider-name", "Probe", "--port", "0", "--registration",
               registration, "--schema", schema});
        EXPECT_EQ(wait_for_end(), 1);
        return err();
    };
    const std::string mof = PROBE_FOLDER "/probe.mof";
    const std::string reg = PROBE_FOLDER "/probe.reg";
    const std::string missing = file("missing");
    EXPECT_EQ(error(missing, mof),
              "kesto-cimserver: cannot read " + missing + ": No such file or directory\n");
    EXPECT_EQ(error(reg, missing), "kesto-cimserver: cannot read " + missing + "\n");
    std::ofstream(file("half.mof")) << "class A {\n  string B\n};";
    EXPECT_EQ(error(reg, file("half.mof")),
              "kesto-cimserver: " + file("half.mof") + ":3: expected ;, not \"}\"\n");
    std::ofstream(file("empty.mof")) << "// nothing\n";
    EXPECT_EQ(error(reg, file("empty.mof")),
              "kesto-cimserver: the registered class Probe_Thing is not declared in the schema\n");
    std::ofstream(file("other.reg")) << "[X]\nprovider: Other\ntype: instance\nnamespace: root\n";
    EXPECT_EQ(error(file("other.reg"), mof),
              "kesto-cimserver: " + file("other.reg") + " registers no class for Probe\n");
}

} // namespace
