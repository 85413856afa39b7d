// The program with certificate and users: which combinations it starts with, and what they give.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

#include "server/http/message.h"
#include "server/http/password_hash.h"
#include "server/http/tls.h"
#include "server/http/user_file.h"
#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"
#include "tests/server/program.h"
#include "tests/server/response.h"
#include "tests/server/tls_client.h"

namespace {

using namespace cimserver;
using namespace std::chrono_literals;

class SecureProgram : public Program {
  protected:
    SecureProgram() {
        const Moment now = std::chrono::system_clock::now();
        const TlsCredentials made = make_self_signed({"localhost"}, now - 1h, now + 1h);
        tls = {"--certificate", folder.write("certificate", made.certificate), "--private-key",
               folder.write("key", made.privateKey)};
        set_user(file("users"), "ada", hash_password("secret"));
    }

    static std::vector<std::string> with(std::vector<std::string> some,
                                         const std::vector<std::string>& others) {
        some.insert(some.end(), others.begin(), others.end());
        return some;
    }
    // The exit status of a program that is not to start.
    int fails(const std::vector<std::string>& arguments) {
        start(with(arguments, probe));
        return wait_for_end();
    }
    // What is served.
    const std::string registration = PROBE_FOLDER "/probe.reg";
    const std::string schema = PROBE_FOLDER "/probe.mof";
    const std::vector<std::string> probe = {"--provider",     PROBE_PROVIDER, "--provider-name", "Probe",
                                            "--registration", registration,   "--schema",        schema};
    static HttpRequest things(const std::string& authorization = "") {
        const std::string body =
            imethod_call("EnumerateInstances", parameter("ClassName", class_name("Probe_Thing")));
        HttpRequest request = post(body, "EnumerateInstances");
        if (!authorization.empty()) request.headers["authorization"] = authorization;
        return request;
    }

    std::vector<std::string> tls;
    std::vector<std::string> users = {"--users", file("users")};
    const std::string ada = "Basic YWRhOnNlY3JldA=="; // ada:secret
};

TEST_F(SecureProgram, ServesHttpsAloneWithACertificate) {
    serve(with(tls, {"--tls-port", "0"}));
    EXPECT_EQ(out(), "kesto-cimserver: serving https://127.0.0.1:" + std::to_string(port) +
                         "/cimom (namespace root/cimv2, root/Other)\n");
    EXPECT_EQ(Response(exchange_over_tls(port, things()).body).count("//INSTANCE"), 2U);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(err(), "");
}

TEST_F(SecureProgram, ServesBothWhenHttpHasAPort) {
    serve(with(tls, {"--tls-port", "0", "--port", "0"}));
    EXPECT_EQ(exchange_over_tls(port, things()).status, 200);
    EXPECT_EQ(exchange(port_of("http"), things()).status, 200);
    EXPECT_EQ(stop(), 0);
}

TEST_F(SecureProgram, LetsInUsersOnly) {
    serve(with(with(tls, users), {"--tls-port", "0", "--verbose"}));
    EXPECT_EQ(exchange_over_tls(port, things()).status, 401);
    EXPECT_EQ(exchange_over_tls(port, things(ada)).status, 200);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(err(),
              "kesto-cimserver: refused with HTTP 401: a name and a password, please\n"
              "kesto-cimserver: EnumerateInstances Probe_Thing: 2 returned\n");
}

TEST_F(SecureProgram, WarnsWhenTheUsersHaveBecomeUnreadable) {
    serve(users);
    EXPECT_EQ(exchange(port, things(ada)).status, 200);
    folder.write("users", "nonsense\n");
    EXPECT_EQ(exchange(port, things(ada)).status, 401);
    EXPECT_EQ(err(), "kesto-cimserver: no user is let in: " + file("users") +
                         ", line 1: not NAME:HASH with a hash of crypt(3)\n");
}

TEST_F(SecureProgram, IsKnownByItsConfiguredNames) {
    serve({"--host-name", "switch.example.net", "--host-name", "sw1"});
    const auto statusFor = [this](const std::string& host) {
        Connection connection(port);
        connection.send("POST /cimom HTTP/1.1\r\nConnection: close\r\nContent-Length: 0\r\nHost: " + host +
                        "\r\n\r\n");
        return parse_http(connection.receive_all()).status;
    };
    EXPECT_EQ(statusFor("switch.example.net"), 415); // it got as far as the content
    EXPECT_EQ(statusFor("sw1:5988"), 415);
    EXPECT_EQ(statusFor("sw2"), 421);
}

TEST_F(SecureProgram, BeyondLoopbackNeedsCertificateAndUsers) {
    const std::vector<std::string> anywhere = {"--listen", "0.0.0.0"};
    const std::string fault = "--listen: beyond loopback, --certificate and --users are needed";
    for (const auto& arguments : {anywhere, with(anywhere, tls), with(anywhere, users)}) {
        EXPECT_EQ(fails(arguments), 2);
        EXPECT_TRUE(err().starts_with(fault)) << err();
    }
    EXPECT_EQ(fails(with(with(anywhere, tls), with(users, {"--port", "5988"}))), 2);
    EXPECT_TRUE(err().starts_with("--port: HTTP is served on loopback only")) << err();
    start(with(with(anywhere, tls), with(users, with(probe, {"--tls-port", "0"}))));
    for (int i = 0; i < 1000 && out().empty(); ++i) {
        usleep(10000);
    }
    EXPECT_TRUE(out().starts_with("kesto-cimserver: serving https://0.0.0.0:")) << err();
    EXPECT_EQ(stop(), 0);
}

TEST_F(SecureProgram, BadCombinationsAreBadUsage) {
    const std::vector<std::vector<std::string>> bad = {
        {"--certificate", file("certificate")},
        {"--private-key", file("key")},
        {"--tls-port", "0"},
        {"--tls-port", "70000"},
        {"--listen", "example.net"},
        {"--users", ""},
        {"--certificate", "", "--private-key", ""},
    };
    for (const auto& arguments : bad) {
        EXPECT_EQ(fails(arguments), 2) << arguments.front();
        EXPECT_NE(err().find(arguments.front()), std::string::npos) << err();
    }
}

TEST_F(SecureProgram, SaysWhatIsWrongWithItsFiles) {
    EXPECT_EQ(fails({"--port", "0", "--users", file("missing")}), 1);
    EXPECT_EQ(err(), "kesto-cimserver: cannot read " + file("missing") + ": No such file or directory\n");
    EXPECT_EQ(fails({"--tls-port", "0", "--certificate", file("key"), "--private-key", file("key")}), 1);
    EXPECT_TRUE(err().starts_with("kesto-cimserver: no certificate in " + file("key"))) << err();
}

} // namespace
