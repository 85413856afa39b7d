// The program itself: its options, its console and its end.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <future>
#include <sstream>
#include <string>
#include <vector>

#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"
#include "tests/server/response.h"

namespace {

std::string content_of(const std::string& file) {
    std::ifstream stream(file);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

// kesto-cimserver with its standard output and error in files.
class Program : public testing::Test {
  protected:
    Program() {
        char name[] = "/tmp/cimserver-test-XXXXXX";
        folder = mkdtemp(name);
    }
    ~Program() override {
        if (process > 0) {
            kill(process, SIGKILL);
            wait_for_end();
        }
        for (const char* file : {"out", "err", "log", "table", "Probe.associations", "libprobe.so"}) {
            unlink((folder + "/" + file).c_str());
        }
        rmdir(folder.c_str());
    }

    void start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "kesto-cimserver");
        std::vector<char*> argv;
        for (std::string& argument : arguments) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        constexpr int WRITE = O_WRONLY | O_CREAT | O_TRUNC;
        posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, file("out").c_str(), WRITE, 0600);
        posix_spawn_file_actions_addopen(&files, STDERR_FILENO, file("err").c_str(), WRITE, 0600);
        ASSERT_EQ(posix_spawn(&process, KESTO_CIMSERVER, &files, nullptr, argv.data(), environ), 0);
        posix_spawn_file_actions_destroy(&files);
    }

    // Serves the probe provider on a free port and waits until it does.
    void serve(std::vector<std::string> arguments = {}) {
        if (std::find(arguments.begin(), arguments.end(), "--provider") == arguments.end()) {
            arguments.insert(arguments.begin(), {"--provider", PROBE_PROVIDER});
        }
        arguments.insert(arguments.begin(), {"--provider-name", "Probe", "--port", "0"});
        if (std::find(arguments.begin(), arguments.end(), "--registration") == arguments.end()) {
            arguments.insert(arguments.begin(), {"--registration", PROBE_FOLDER "/probe.reg"});
        }
        arguments.insert(arguments.begin(), {"--schema", PROBE_FOLDER "/probe.mof"});
        start(arguments);
        for (int i = 0; i < 1000 && port == 0; ++i) {
            const std::string out = content_of(file("out"));
            const std::string before = "serving http://127.0.0.1:";
            const std::size_t at = out.find(before);
            if (at != std::string::npos && out.find('\n', at) != std::string::npos) {
                port = static_cast<std::uint16_t>(std::atoi(out.c_str() + at + before.size()));
            }
            usleep(10000);
        }
        ASSERT_NE(port, 0) << content_of(file("err"));
    }

    Response ask_class(const std::string& method, const std::string& name) const {
        const std::string body = imethod_call(method, parameter("ClassName", class_name(name)));
        return Response(exchange(port, post(body, method)).body);
    }

    // The class that a traversal without an association class leads to.
    std::string far_end_of_thing_one(const std::string& nameSpace) const {
        const std::string body =
            imethod_call("AssociatorNames", parameter("ObjectName", thing_name("one")), nameSpace);
        return Response(exchange(port, post(body, "AssociatorNames", nameSpace)).body)
            .text("//OBJECTPATH//INSTANCENAME/@CLASSNAME");
    }

    // The exit status, or minus the signal.
    int wait_for_end() {
        int status = 0;
        if (waitpid(process, &status, 0) != process) return -1000;
        process = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    int stop(int signal = SIGTERM) {
        kill(process, signal);
        return wait_for_end();
    }

    std::string file(const std::string& name) const { return folder + "/" + name; }
    std::string out() const { return content_of(file("out")); }
    std::string err() const { return content_of(file("err")); }

    std::string folder;
    pid_t process = 0;
    std::uint16_t port = 0;
};

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

TEST_F(Program, RefusesToListenBeyondLoopback) {
    start({"--provider", PROBE_PROVIDER, "--provider-name", "Probe", "--registration",
           PROBE_FOLDER "/probe.reg", "--schema", PROBE_FOLDER "/probe.mof", "--port", "0", "--listen",
           "0.0.0.0"});
    EXPECT_EQ(wait_for_end(), 1);
    EXPECT_EQ(err(), "kesto-cimserver: refusing to listen on 0.0.0.0: only loopback addresses are served\n");
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
    std::ofstream(file("empty.mof"));
    EXPECT_EQ(error(reg, file("empty.mof")),
              "kesto-cimserver: the registered class Probe_Thing is not declared in the schema\n");
    std::ofstream(file("other.reg")) << "[X]\nprovider: Other\ntype: instance\nnamespace: root\n";
    EXPECT_EQ(error(file("other.reg"), mof),
              "kesto-cimserver: " + file("other.reg") + " registers no class for Probe\n");
}

} // namespace
