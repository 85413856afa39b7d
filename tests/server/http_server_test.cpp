// The HTTP front with a handler of the test's own.
#include "server/http/server.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "server/http/tls.h"
#include "server/http/users.h"
#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"
#include "tests/server/temporary_folder.h"
#include "tests/server/tls_client.h"

namespace {

using namespace cimserver;
using namespace std::chrono_literals;

HttpServer::Settings any_port() {
    HttpServer::Settings settings;
    settings.port = 0;
    return settings;
}

HttpReply echo(const HttpRequest& request) {
    return {200, {{"X-Method", request.method}}, request.body};
}

TEST(HttpServer, HandsRequestsToItsHandler) {
    const HttpServer server(any_port(), echo);
    const Received received = exchange(server.port(), post("<body/>", "Any"));
    EXPECT_EQ(received.status, 200);
    EXPECT_EQ(received.body, "<body/>");
    EXPECT_EQ(received.headers.at("x-method"), "POST");
}

TEST(HttpServer, ReportsWhereItListens) {
    const HttpServer server(any_port(), echo);
    EXPECT_NE(server.port(), 0);
    EXPECT_EQ(server.url(), "http://127.0.0.1:" + std::to_string(server.port()));
}

TEST(HttpServer, BeyondLoopbackNeedsTlsAndUsers) {
    const TemporaryFolder folder;
    HttpServer::Settings settings = any_port();
    const auto tls = make_self_signed({"127.0.0.1"}, std::chrono::system_clock::now() - 1h,
                                      std::chrono::system_clock::now() + 1h);
    const auto users = std::make_shared<Users>(folder.write("users", ""), [](const std::string&) {});
    for (const char* address : {"0.0.0.0", "192.0.2.1", "::", "2001:db8::1", "::ffff:192.0.2.1"}) {
        settings.address = address;
        settings.tls.reset();
        settings.users.reset();
        EXPECT_THROW(HttpServer(settings, echo), HttpServerError) << address;
        settings.tls = tls;
        EXPECT_THROW(HttpServer(settings, echo), HttpServerError) << address;
        settings.tls.reset();
        settings.users = users;
        EXPECT_THROW(HttpServer(settings, echo), HttpServerError) << address;
    }
    settings.tls = tls;
    for (const char* address : {"0.0.0.0", "::"}) {
        settings.address = address;
        const HttpServer server(settings, echo);
        EXPECT_EQ(exchange_over_tls(server.port(), post("", "Any")).status, 401);
    }
}

TEST(HttpServer, ListensOnEveryLoopbackAddress) {
    HttpServer::Settings settings = any_port();
    for (const char* address : {"localhost", "127.0.0.1", "127.0.0.2", "::1"}) {
        settings.address = address;
        EXPECT_NO_THROW(HttpServer(settings, echo)) << address;
    }
    for (const char* address : {"", "example.net", "127.0.0.1:5988", "[::1]"}) {
        settings.address = address;
        EXPECT_THROW(HttpServer(settings, echo), HttpServerError) << address;
    }
}

TEST(HttpServer, SaysWhenThePortIsTaken) {
    const HttpServer first(any_port(), echo);
    HttpServer::Settings settings;
    settings.port = first.port();
    EXPECT_THROW(HttpServer(settings, echo), HttpServerError);
}

TEST(HttpServer, RefusesBodiesThatAreTooLarge) {
    HttpServer::Settings settings = any_port();
    settings.maxBody = 1000;
    const HttpServer server(settings, echo);
    EXPECT_EQ(exchange(server.port(), post(std::string(1000, 'x'), "Any")).status, 200);
    EXPECT_EQ(exchange(server.port(), post(std::string(1001, 'x'), "Any")).status, 413);
    EXPECT_EQ(exchange(server.port(), post(std::string(300000, 'x'), "Any")).status, 413);
}

TEST(HttpServer, RefusesChunkedBodiesThatAreTooLarge) {
    HttpServer::Settings settings = any_port();
    settings.maxBody = 1000;
    const HttpServer server(settings, echo);
    Connection connection(server.port());
    std::string text =
        "POST / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (int i = 0; i < 20; ++i) {
        text += "64\r\n" + std::string(100, 'x') + "\r\n";
    }
    connection.send(text + "0\r\n\r\n");
    EXPECT_EQ(parse_http(connection.receive_all()).status, 413);
}

TEST(HttpServer, TakesBodiesInChunks) {
    const HttpServer server(any_port(), echo);
    Connection connection(server.port());
    connection.send(
        "POST / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\nTransfer-Encoding: chunked\r\n\r\n"
        "3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n");
    EXPECT_EQ(parse_http(connection.receive_all()).body, "abcde");
}

TEST(HttpServer, AnswersSeveralRequestsOnOneConnection) {
    const HttpServer server(any_port(), echo);
    Connection connection(server.port());
    connection.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 3\r\n\r\none");
    connection.send(
        "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 3\r\nConnection: close\r\n\r\ntwo");
    const std::string received = connection.receive_all();
    EXPECT_NE(received.find("one"), std::string::npos);
    EXPECT_NE(received.find("two"), std::string::npos);
}

TEST(HttpServer, ServesClientsAtTheSameTime) {
    std::atomic<int> inside{0};
    const HttpServer server(any_port(), [&inside](const HttpRequest&) {
        ++inside;
        for (int i = 0; i < 500 && inside < 4; ++i) {
            std::this_thread::sleep_for(10ms);
        }
        return HttpReply{inside >= 4 ? 200U : 500U, {}, ""};
    });
    std::vector<std::future<Received>> clients;
    for (int i = 0; i < 4; ++i) {
        clients.push_back(
            std::async(std::launch::async, [&] { return exchange(server.port(), post("", "Any")); }));
    }
    for (auto& client : clients) {
        EXPECT_EQ(client.get().status, 200);
    }
}

TEST(HttpServer, DropsClientsThatSendNothing) {
    HttpServer::Settings settings = any_port();
    settings.timeout = 1s;
    const HttpServer server(settings, echo);
    Connection silent(server.port());
    silent.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 10\r\n\r\n");
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(parse_http(silent.receive_all()).status / 100, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - started, 10s);
}

// Sends a character now and then; true when the server has had enough of it before the client has.
bool is_dropped_while_sending(const std::string& start) {
    HttpServer::Settings settings = any_port();
    settings.timeout = 1s;
    const HttpServer server(settings, echo);
    Connection slow(server.port());
    slow.send(start);
    for (int i = 0; i < 50; ++i) {
        std::this_thread::sleep_for(200ms); // never silent for long
        if (!slow.send("x")) return true;
    }
    return false;
}

TEST(HttpServer, DropsClientsWhoseHeadersTrickleIn) {
    EXPECT_TRUE(is_dropped_while_sending("POST / HTTP/1.1\r\nHost: "));
}

TEST(HttpServer, DropsClientsWhoseBodyTricklesIn) {
    EXPECT_TRUE(
        is_dropped_while_sending("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 1000\r\n\r\n"));
}

TEST(HttpServer, AHandlerMayTakeLongerThanARequest) {
    HttpServer::Settings settings = any_port();
    settings.timeout = 1s;
    const HttpServer server(settings, [](const HttpRequest&) {
        std::this_thread::sleep_for(2500ms);
        return HttpReply{200, {}, "late"};
    });
    EXPECT_EQ(exchange(server.port(), post("", "Any")).body, "late");
}

TEST(HttpServer, AFailingHandlerIsAnInternalError) {
    const HttpServer server(any_port(),
                            [](const HttpRequest&) -> HttpReply { throw std::runtime_error("oh"); });
    const Received received = exchange(server.port(), post("", "Any"));
    EXPECT_EQ(received.status, 500);
    EXPECT_EQ(received.body, "oh\n");
}

TEST(HttpServer, LimitsTheConnections) {
    HttpServer::Settings settings = any_port();
    settings.maxConnections = 2;
    const HttpServer server(settings, echo);
    Connection first(server.port());
    Connection second(server.port());
    // Both are in once their requests have had time to arrive.
    for (Connection* connection : {&first, &second}) {
        connection->send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n\r\n");
    }
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(exchange(server.port(), post("", "Any")).status, 0);
}

TEST(HttpServer, FinishesRunningRequestsWhenItStops) {
    std::promise<void> entered;
    HttpServer server(any_port(), [&entered](const HttpRequest&) {
        entered.set_value();
        std::this_thread::sleep_for(500ms);
        return HttpReply{200, {}, "finished"};
    });
    const std::uint16_t port = server.port();
    auto client = std::async(std::launch::async, [port] { return exchange(port, post("", "Any")); });
    entered.get_future().wait();
    server.stop(10s);
    EXPECT_EQ(client.get().body, "finished");
    EXPECT_FALSE(Connection(port).is_open());
}

} // namespace
