// HTTP Basic, alone and through a server.
#include "server/http/authentication.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "server/http/password_hash.h"
#include "server/http/server.h"
#include "server/http/user_file.h"
#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"
#include "tests/server/temporary_folder.h"

namespace {

using namespace cimserver;

const std::string ADA = "YWRhOm15OnNlY3JldA==";   // ada:my:secret
const std::string WRONG = "YWRhOm15OnNlY3JlVA=="; // ada:my:secreT
const std::string EVE = "ZXZlOm15OnNlY3JldA==";   // eve:my:secret

// Ada alone, whose password has a colon.
class Authentication : public testing::Test {
  protected:
    Authentication() { set_user(folder.path("users"), "ada", hash_password("my:secret")); }

    // "ada", or the status of the refusal.
    std::string outcome(const std::string& authorization) const {
        HttpRequest request;
        request.headers["authorization"] = authorization;
        const std::optional<HttpReply> refusal = authenticate(request, *users);
        EXPECT_EQ(request.header("Authorization"), nullptr);
        EXPECT_EQ(request.user.empty(), refusal.has_value());
        return refusal ? std::to_string(refusal->status) : request.user;
    }

    TemporaryFolder folder;
    std::shared_ptr<Users> users;

  private:
    void SetUp() override {
        users = std::make_shared<Users>(folder.path("users"), [](const std::string&) {});
    }
};

TEST_F(Authentication, TakesTheRightNameAndPassword) {
    EXPECT_EQ(outcome("Basic " + ADA), "ada");
    EXPECT_EQ(outcome("basic   " + ADA + " "), "ada");
}

TEST_F(Authentication, RefusesWrongOnes) {
    EXPECT_EQ(outcome("Basic " + WRONG), "401");
    EXPECT_EQ(outcome("Basic " + EVE), "401");
}

TEST_F(Authentication, RefusesWhatIsNotBasic) {
    const std::string headers[] = {"",
                                   "Basic",
                                   "Basic ",
                                   ADA,
                                   "Digest " + ADA,
                                   "Bearer " + ADA,
                                   "Basic" + ADA,
                                   "Basic ???",
                                   "Basic " + ADA + "!",
                                   "Basic YWRh",
                                   "Basic Og==",
                                   "Basic " + ADA + ", Basic " + ADA,
                                   "Basic YWRhOm15OnNlY3JldAAA"}; // the password, and then two NULs
    for (const std::string& header : headers) {
        EXPECT_EQ(outcome(header), "401") << header;
    }
}

TEST_F(Authentication, AsksForBasicAndNothingElse) {
    HttpRequest request;
    const std::optional<HttpReply> refusal = authenticate(request, *users);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->status, 401U);
    EXPECT_EQ(refusal->body, "a name and a password, please\n");
    const std::vector<std::pair<std::string, std::string>> headers = {
        {"Content-Type", "text/plain; charset=utf-8"},
        {"WWW-Authenticate", "Basic realm=\"kesto-cimserver\""}};
    EXPECT_EQ(refusal->headers, headers);
}

// The same through a server, which answers with the user's name.
class ServerWithUsers : public Authentication {
  protected:
    Received ask(const std::string& authorization, const std::string& body = "<body/>") {
        const HttpServer server({.port = 0,
                                 .users = users,
                                 .maxBody = 1000,
                                 .report = [this](const std::string& line) { reported.push_back(line); }},
                                [this](const HttpRequest& request) {
                                    ++handled;
                                    return HttpReply{200, {}, request.user};
                                });
        HttpRequest request = post(body, "Any");
        if (!authorization.empty()) request.headers["authorization"] = authorization;
        return exchange(server.port(), request);
    }

    int handled = 0;
    std::vector<std::string> reported;
};

TEST_F(ServerWithUsers, HandsOverTheUsersName) {
    EXPECT_EQ(ask("Basic " + ADA).body, "ada");
    EXPECT_TRUE(reported.empty());
}

TEST_F(ServerWithUsers, LetsNobodyElseIn) {
    const Received received = ask("");
    EXPECT_EQ(received.status, 401);
    EXPECT_EQ(received.headers.at("www-authenticate"), "Basic realm=\"kesto-cimserver\"");
    EXPECT_EQ(ask("Basic " + WRONG).status, 401);
    EXPECT_EQ(handled, 0);
    EXPECT_EQ(reported, (std::vector<std::string>{"refused with HTTP 401: a name and a password, please",
                                                  "refused with HTTP 401: wrong name or password"}));
}

TEST_F(ServerWithUsers, AsksStrangersForTheirNameBeforeAllElse) {
    EXPECT_EQ(ask("", std::string(900, 'x')).status, 401);
    EXPECT_EQ(ask("", std::string(300000, 'x')).status, 401); // too large, too
    EXPECT_EQ(handled, 0);
}

} // namespace
