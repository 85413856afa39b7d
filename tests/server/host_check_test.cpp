// Which Host headers are this server's.
#include "server/http/host_check.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "server/http/server.h"
#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"

namespace {

using namespace cimserver;

// The status that a request with this Host header is refused with; 0 when it is not.
unsigned refusal_of(const std::string& host, const std::string& reached,
                    const std::vector<std::string>& names = {}) {
    HttpRequest request;
    request.headers["host"] = host;
    const std::optional<HttpReply> refusal = host_refusal(request, *IpAddress::parse(reached), names);
    return refusal ? refusal->status : 0;
}

TEST(HostCheck, OnLoopbackItsNamesAndAddressesAreTheServers) {
    for (const char* host : {"localhost", "localhost:5988", "LOCALHOST", "127.0.0.1", "127.0.0.1:5988",
                             "127.0.0.2", "[::1]", "[::1]:5988", "[0:0:0:0:0:0:0:1]"}) {
        EXPECT_EQ(refusal_of(host, "127.0.0.1"), 0U) << host;
        EXPECT_EQ(refusal_of(host, "::1"), 0U) << host;
    }
}

TEST(HostCheck, ThePortMayBeThatOfATunnel) {
    EXPECT_EQ(refusal_of("localhost:9000", "127.0.0.1"), 0U);
    EXPECT_EQ(refusal_of("localhost:", "127.0.0.1"), 0U);
}

TEST(HostCheck, OtherNamesAndAddressesAreMisdirected) {
    for (const char* host : {"evil.example", "evil.example:5988", "localhost.evil.example", "localhos",
                             "192.0.2.1", "[2001:db8::1]", "0.0.0.0", "[::]"}) {
        EXPECT_EQ(refusal_of(host, "127.0.0.1"), 421U) << host;
    }
}

TEST(HostCheck, BeyondLoopbackTheAddressThatWasReachedIsTheServers) {
    EXPECT_EQ(refusal_of("192.0.2.1:5989", "192.0.2.1"), 0U);
    EXPECT_EQ(refusal_of("[2001:db8::1]:5989", "2001:db8::1"), 0U);
    EXPECT_EQ(refusal_of("192.0.2.1", "::ffff:192.0.2.1"), 0U); // how a socket for both kinds shows it
    EXPECT_EQ(refusal_of("192.0.2.2", "192.0.2.1"), 421U);
    EXPECT_EQ(refusal_of("localhost", "192.0.2.1"), 421U);
    EXPECT_EQ(refusal_of("127.0.0.1", "192.0.2.1"), 421U);
    EXPECT_EQ(refusal_of("::1", "2001:db8::1"), 400U);
}

TEST(HostCheck, ConfiguredNamesAreTheServersEverywhere) {
    const std::vector<std::string> names = {"switch.example.net", "sw1", "203.0.113.5"};
    for (const char* reached : {"127.0.0.1", "192.0.2.1", "2001:db8::1"}) {
        EXPECT_EQ(refusal_of("switch.example.net:5989", reached, names), 0U);
        EXPECT_EQ(refusal_of("SW1", reached, names), 0U);
        EXPECT_EQ(refusal_of("203.0.113.5", reached, names), 0U); // behind a translation of addresses
        EXPECT_EQ(refusal_of("sw2", reached, names), 421U);
        EXPECT_EQ(refusal_of("switch.example.net.evil.example", reached, names), 421U);
    }
}

TEST(HostCheck, MalformedHeadersAreBadRequests) {
    EXPECT_EQ(refusal_of(std::string(60000, 'x'), "127.0.0.1"), 400U);
    for (const char* host : {"", " ", ":5988", "localhost:port", "localhost:123456", "local host",
                             "localhost, evil.example", "user@localhost", "http://localhost", "[::1",
                             "[::1]5988", "[]", "[", "::1", "\x1b[2Jlocalhost", "h\xC3\xB6st"}) {
        EXPECT_EQ(refusal_of(host, "127.0.0.1"), 400U) << host;
    }
}

// The same through a server.
class HostHeader : public testing::Test {
  protected:
    HostHeader()
        : server({.port = 0, .hostNames = {"switch"}}, [this](const HttpRequest& request) {
              ++handled;
              return HttpReply{200, {}, *request.header("Host")};
          }) {}

    Received ask(const std::string& headers, const std::string& version = "HTTP/1.1") const {
        Connection connection(server.port());
        connection.send("POST / " + version + "\r\n" + headers +
                        "Connection: close\r\nContent-Length: 2\r\n\r\nab");
        return parse_http(connection.receive_all());
    }

    int handled = 0;
    HttpServer server;
};

TEST_F(HostHeader, ReachesTheHandlerAsTheClientSentIt) {
    EXPECT_EQ(ask("Host: Switch:5989\r\n").body, "Switch:5989");
    EXPECT_EQ(ask("Host: localhost\r\n").status, 200);
    EXPECT_EQ(ask("Host: \t switch \t\r\n").body, "switch"); // blanks around it are none of it
}

TEST_F(HostHeader, OfAnotherServerReachesNoHandler) {
    const Received received = ask("Host: evil.example:5988\r\n");
    EXPECT_EQ(received.status, 421);
    EXPECT_EQ(received.body, "this server is not known as evil.example\n");
    EXPECT_EQ(handled, 0);
}

TEST_F(HostHeader, OfAnotherServerIsRefusedBeforeTheClientSendsWhatItAsksToSend) {
    Connection connection(server.port());
    connection.send(
        "POST / HTTP/1.1\r\nHost: evil.example\r\nExpect: 100-continue\r\nContent-Length: 2\r\n\r\n");
    EXPECT_TRUE(connection.receive_all().starts_with("HTTP/1.1 421"));
}

TEST_F(HostHeader, IsNeededOnce) {
    EXPECT_EQ(ask("").status, 400);
    EXPECT_EQ(ask("Host: localhost\r\nHost: evil.example\r\n").status, 400);
    EXPECT_EQ(ask("Host: localhost\r\nHost: localhost\r\n").status, 400);
    EXPECT_EQ(handled, 0);
}

} // namespace
