// The program itself: its options, its console and its end.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <future>
#include <sstream>
#include <vector>

#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"

namespace {

std::string contentOf(const std::string& file) {
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
        folder_ = mkdtemp(name);
    }
    ~Program() override {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitForEnd();
        }
        for (const char* file : {"out", "err", "log", "table"})
            unlink((folder_ + "/" + file).c_str());
        rmdir(folder_.c_str());
    }

    void start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "kesto-cimserver");
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
        posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, file("out").c_str(), kWrite, 0600);
        posix_spawn_file_actions_addopen(&files, STDERR_FILENO, file("err").c_str(), kWrite, 0600);
        ASSERT_EQ(posix_spawn(&process_, KESTO_CIMSERVER, &files, nullptr, argv.data(), environ), 0);
        posix_spawn_file_actions_destroy(&files);
    }

    // Serves the probe provider on a free port and waits until it does.
    void serve(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(),
                         {"--provider", PROBE_PROVIDER, "--provider-name", "Probe", "--port", "0"});
        start(arguments);
        for (int i = 0; i < 1000 && port_ == 0; ++i) {
            const std::string out = contentOf(file("out"));
            const std::string before = "serving http://127.0.0.1:";
            const std::size_t at = out.find(before);
            if (at != std::string::npos && out.find('\n', at) != std::string::npos) {
                port_ = static_cast<std::uint16_t>(std::atoi(out.c_str() + at + before.size()));
            }
            usleep(10000);
        }
        ASSERT_NE(port_, 0) << contentOf(file("err"));
    }

    Response askClass(const std::string& method, const std::string& name) const {
        const std::string body = imethodCall(method, parameter("ClassName", className(name)));
        return Response(exchange(port_, post(body, method)).body);
    }

    // The exit status, or minus the signal.
    int waitForEnd() {
        int status = 0;
        if (waitpid(process_, &status, 0) != process_) return -1000;
        process_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    int stop(int signal = SIGTERM) {
        kill(process_, signal);
        return waitForEnd();
    }

    std::string file(const std::string& name) const { return folder_ + "/" + name; }
    std::string out() const { return contentOf(file("out")); }
    std::string err() const { return contentOf(file("err")); }

    std::string folder_;
    pid_t process_ = 0;
    std::uint16_t port_ = 0;
};

TEST_F(Program, TellsWhenItIsReadyAndStopsCleanlyOnSigterm) {
    serve();
    const std::string url = "http://127.0.0.1:" + std::to_string(port_) + "/cimom";
    EXPECT_EQ(out(), "kesto-cimserver: serving " + url + " (namespace root/cimv2)\n");
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(out(),
              "kesto-cimserver: serving " + url + " (namespace root/cimv2)\nkesto-cimserver: stopped\n");
    EXPECT_EQ(err(), "");
}

TEST_F(Program, StopsCleanlyOnSigint) {
    serve();
    EXPECT_EQ(stop(SIGINT), 0);
}

TEST_F(Program, FinishesRunningRequestsBeforeItStops) {
    serve();
    auto client =
        std::async(std::launch::async, [this] { return askClass("EnumerateInstances", "Probe_Slow"); });
    usleep(150000);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(client.get().count("//INSTANCE"), 1U);
}

TEST_F(Program, ServesEveryOperationOverTheWire) {
    serve();
    const auto ask = [this](const std::string& method, const std::string& parameters) {
        return Response(exchange(port_, post(imethodCall(method, parameters), method)).body);
    };
    const std::string source = parameter("ObjectName", thingName("one"));
    EXPECT_EQ(askClass("EnumerateInstances", "Probe_Thing").count("//VALUE.NAMEDINSTANCE"), 2U);
    EXPECT_EQ(askClass("EnumerateInstanceNames", "Probe_Thing").count("//INSTANCENAME"), 2U);
    EXPECT_EQ(ask("GetInstance", parameter("InstanceName", thingName("one"))).count("//INSTANCE"), 1U);
    const std::string link = parameter("AssocClass", className("Probe_Link"));
    EXPECT_EQ(ask("Associators", source + link).count("//VALUE.OBJECTWITHPATH"), 1U);
    EXPECT_EQ(ask("AssociatorNames", source + link).count("//OBJECTPATH"), 1U);
    const std::string resultClass = parameter("ResultClass", className("Probe_Link"));
    EXPECT_EQ(ask("References", source + resultClass).count("//VALUE.OBJECTWITHPATH"), 1U);
    EXPECT_EQ(ask("ReferenceNames", source + resultClass).count("//OBJECTPATH"), 1U);
    EXPECT_EQ(ask("DeleteInstance", parameter("InstanceName", thingName("one"))).errorCode(), 0);
    EXPECT_EQ(ask("CreateInstance", parameter("NewInstance", "<INSTANCE CLASSNAME=\"X\"/>")).errorCode(), 7);
    EXPECT_EQ(ask("ExecQuery", parameter("QueryLanguage", value("CQL")) + parameter("Query", value("q")))
                  .errorCode(),
              14);
    EXPECT_EQ(ask("GetClass", "").errorCode(), 7);
}

TEST_F(Program, ServesSeveralClientsAtATime) {
    serve();
    std::vector<std::future<Response>> clients;
    for (int i = 0; i < 4; ++i) {
        clients.push_back(
            std::async(std::launch::async, [this] { return askClass("EnumerateInstances", "Probe_Slow"); }));
    }
    int most = 0;
    for (auto& client : clients)
        most = std::max(most, std::atoi(client.get().property("MostInside").c_str()));
    EXPECT_GE(most, 2);
}

TEST_F(Program, ClientsThatReadSlowlyHoldUpNobody) {
    serve();
    const std::string many =
        imethodCall("EnumerateInstances", parameter("ClassName", className("Probe_Many")));
    Connection reluctant(port_);
    ASSERT_TRUE(reluctant.send(httpText(post(many, "EnumerateInstances"))));
    usleep(200000); // its answer is ready and waits
    EXPECT_EQ(askClass("EnumerateInstances", "Probe_Thing").count("//INSTANCE"), 2U);
    EXPECT_EQ(Response(parseHttp(reluctant.receiveAll()).body).count("//INSTANCE"), 3000U);
}

TEST_F(Program, AnswersTheSameToManyClientsAtOnce) {
    serve();
    const auto client = [this] {
        int wrong = 0;
        for (int i = 0; i < 25; ++i) {
            wrong += askClass("EnumerateInstances", "Probe_Types").property("aUint32") != "4294967295";
            wrong += askClass("EnumerateInstanceNames", "Probe_Thing").count("//INSTANCENAME") != 2;
        }
        return wrong;
    };
    std::vector<std::future<int>> clients;
    for (int i = 0; i < 6; ++i)
        clients.push_back(std::async(std::launch::async, client));
    for (auto& one : clients)
        EXPECT_EQ(one.get(), 0);
    EXPECT_EQ(stop(), 0);
}

TEST_F(Program, WhatTheProviderPrintsGoesToItsLog) {
    serve({"--provider-log", file("log")});
    askClass("EnumerateInstances", "Probe_Noisy");
    EXPECT_EQ(contentOf(file("log")), "Probe_Noisy was enumerated\n"); // at once, not at the end
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(out().find("Noisy"), std::string::npos);
    EXPECT_NE(out().find("stopped"), std::string::npos);
}

TEST_F(Program, WhatTheProviderPrintsMayGoToStandardError) {
    serve({"--provider-log", "-"});
    askClass("EnumerateInstances", "Probe_Noisy");
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(err(), "Probe_Noisy was enumerated\n");
    EXPECT_EQ(out().find("Noisy"), std::string::npos);
}

TEST_F(Program, VerboseReportsOperations) {
    serve({"--verbose"});
    askClass("EnumerateInstances", "Probe_Odd");
    stop();
    EXPECT_EQ(err(),
              "kesto-cimserver: EnumerateInstances Probe_Odd: 2 returned, 3 that were no objects ignored\n");
}

TEST_F(Program, ServesTheNamespacesOfTheCommandLine) {
    serve({"--namespace", "root/a", "--namespace", "root/b"});
    EXPECT_NE(out().find("(namespace root/a, root/b)"), std::string::npos);
    EXPECT_EQ(askClass("EnumerateInstances", "Probe_Thing").errorCode(), 3);
}

TEST_F(Program, TakesTheAssociationsOfAFile) {
    std::ofstream(file("table")) << "# the probe's\nProbe_Part: Probe_Thing\n";
    serve({"--associations", file("table")});
    const std::string body = imethodCall("AssociatorNames", parameter("ObjectName", thingName("one")));
    EXPECT_EQ(Response(exchange(port_, post(body, "AssociatorNames")).body)
                  .text("//OBJECTPATH//INSTANCENAME/@CLASSNAME"),
              "Probe_Piece");
}

TEST_F(Program, RefusesToListenBeyondLoopback) {
    start({"--provider", PROBE_PROVIDER, "--provider-name", "Probe", "--port", "0", "--listen", "0.0.0.0"});
    EXPECT_EQ(waitForEnd(), 1);
    EXPECT_EQ(err(), "kesto-cimserver: refusing to listen on 0.0.0.0: only loopback addresses are served\n");
}

TEST_F(Program, SaysWhatIsWrongWithItsProvider) {
    start({"--provider", "/nonexistent.so", "--port", "0"});
    EXPECT_EQ(waitForEnd(), 1);
    EXPECT_NE(err().find("/nonexistent.so"), std::string::npos);
    start({"--provider", PROBE_PROVIDER, "--provider-name", "Unmakeable", "--port", "0"});
    EXPECT_EQ(waitForEnd(), 1);
    EXPECT_NE(err().find("Unmakeable_Create_InstanceMI failed with status 1: out of order"),
              std::string::npos);
}

TEST_F(Program, SaysWhatIsWrongWithItsOptions) {
    start({"--port", "seventy"});
    EXPECT_NE(waitForEnd(), 0);
    EXPECT_NE(err().find("--port"), std::string::npos);
    start({"--provider", PROBE_PROVIDER, "--provider-name", "Probe", "--associations", file("missing")});
    EXPECT_EQ(waitForEnd(), 1);
    EXPECT_NE(err().find("cannot read"), std::string::npos);
}

} // namespace
