// TLS: what the server starts with, and whom it speaks with.
#include "server/http/tls.h"

#include <gnutls/gnutls.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "server/http/server.h"
#include "server/model/error.h"
#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"
#include "tests/server/temporary_folder.h"
#include "tests/server/tls_client.h"

namespace {

using namespace cimserver;
using namespace std::chrono_literals;

const Moment NOW = std::chrono::system_clock::now();

TlsCredentials for_hosts(const std::vector<std::string>& hosts) {
    return make_self_signed(hosts, NOW - 1h, NOW + 24h);
}

// One certificate for all tests that do not look at it: making a key takes its time.
const TlsCredentials& for_localhost() {
    static const TlsCredentials MADE = for_hosts({"localhost", "127.0.0.1", "::1"});
    return MADE;
}

class CertificateFiles : public testing::Test {
  protected:
    std::string fault() const {
        try {
            read_tls_credentials(certificate, key);
            return "none";
        } catch (const Error& error) {
            return error.what();
        }
    }

    TemporaryFolder folder;
    std::string certificate = folder.write("certificate", for_localhost().certificate);
    std::string key = folder.write("key", for_localhost().privateKey);
};

TEST_F(CertificateFiles, AreReadAsTheyAre) {
    const TlsCredentials read = read_tls_credentials(certificate, key);
    EXPECT_EQ(read.certificate, for_localhost().certificate);
    EXPECT_EQ(read.privateKey, for_localhost().privateKey);
}

TEST_F(CertificateFiles, MayHoldTheIssuersToo) {
    folder.write("certificate", for_localhost().certificate + for_hosts({"issuer"}).certificate);
    EXPECT_EQ(fault(), "none");
}

TEST_F(CertificateFiles, MustBeThere) {
    certificate = folder.path("none");
    EXPECT_EQ(fault(), "cannot read " + certificate + ": No such file or directory");
}

TEST_F(CertificateFiles, MustBeWhatTheyAreGivenAs) {
    std::string swapped = folder.write("swapped", for_localhost().privateKey);
    std::swap(certificate, swapped);
    EXPECT_TRUE(fault().starts_with("no certificate in " + certificate + ": ")) << fault();
    std::swap(certificate, swapped);
    key = folder.write("key", for_localhost().certificate);
    EXPECT_TRUE(fault().starts_with("no private key in " + key + ": ")) << fault();
    folder.write("key", "");
    EXPECT_TRUE(fault().starts_with("no private key in " + key + ": ")) << fault();
}

TEST_F(CertificateFiles, MustBeAPair) {
    folder.write("key", for_hosts({"localhost"}).privateKey);
    EXPECT_TRUE(fault().starts_with(certificate + " and " + key + " do not fit: ")) << fault();
}

TEST_F(CertificateFiles, MustBeValidToday) {
    const TlsCredentials past = make_self_signed({"localhost"}, NOW - 48h, NOW - 24h);
    folder.write("certificate", past.certificate);
    folder.write("key", past.privateKey);
    EXPECT_TRUE(fault().starts_with("the certificate " + certificate + " expired on 20")) << fault();
    const TlsCredentials future = make_self_signed({"localhost"}, NOW + 24h, NOW + 48h);
    folder.write("certificate", future.certificate);
    folder.write("key", future.privateKey);
    EXPECT_TRUE(fault().starts_with("the certificate " + certificate + " is not valid before 20")) << fault();
}

TEST_F(CertificateFiles, TheKeyIsNobodyElsesBusiness) {
    folder.write("key", for_localhost().privateKey, 0644);
    EXPECT_EQ(fault(), key + " is open to others; chmod 600 or 640 keeps its secrets");
}

// A server that answers with the request's body.
class Tls : public testing::Test {
  protected:
    explicit Tls(const TlsCredentials& credentials = for_localhost())
        : server({.port = 0, .tls = credentials, .timeout = 2s}, [](const HttpRequest& request) {
              return HttpReply{200, {}, request.body};
          }) {}

    // "TLS1.3 AES-256-GCM", or "refused".
    std::string agreed(const std::string& priorities) const {
        const TlsConnection connection(server.port(), {.priorities = priorities});
        return connection.is_open() ? connection.protocol() + " " + connection.cipher() : "refused";
    }
    bool serves() const { return exchange_over_tls(server.port(), post("<body/>", "Any")).status == 200; }

    HttpServer server;
};

TEST_F(Tls, CarriesRequestsAndReplies) {
    EXPECT_EQ(server.url(), "https://127.0.0.1:" + std::to_string(server.port()));
    const std::string body(100000, 'x');
    const Received received = exchange_over_tls(server.port(), post(body, "Any"));
    EXPECT_EQ(received.status, 200);
    EXPECT_EQ(received.body, body);
}

TEST_F(Tls, SpeaksTheProtocolsOfTodayOnly) {
    EXPECT_EQ(agreed("NORMAL"), "TLS1.3 AES-256-GCM");
    EXPECT_EQ(agreed("NORMAL:-VERS-ALL:+VERS-TLS1.2"), "TLS1.2 AES-256-GCM");
    EXPECT_EQ(agreed("NORMAL:-VERS-ALL:+VERS-TLS1.1"), "refused");
    EXPECT_EQ(agreed("NORMAL:-VERS-ALL:+VERS-TLS1.0"), "refused");
}

TEST_F(Tls, SpeaksAuthenticatedCiphersOnly) {
    const std::string older = "NORMAL:-VERS-ALL:+VERS-TLS1.2:-CIPHER-ALL";
    EXPECT_EQ(agreed(older + ":+CHACHA20-POLY1305"), "TLS1.2 CHACHA20-POLY1305");
    EXPECT_EQ(agreed(older + ":+AES-128-GCM"), "TLS1.2 AES-128-GCM");
    EXPECT_EQ(agreed(older + ":+AES-128-CBC:+AES-256-CBC:+3DES-CBC:-MAC-ALL:+SHA256:+SHA1"), "refused");
}

TEST_F(Tls, AgreesOnANewKeyForEachConnection) {
    gnutls_priority_t priorities = nullptr;
    ASSERT_EQ(gnutls_priority_init(&priorities, TLS_PRIORITIES, nullptr), GNUTLS_E_SUCCESS);
    const unsigned* exchanges = nullptr;
    const int count = gnutls_priority_kx_list(priorities, &exchanges);
    EXPECT_GT(count, 0);
    for (int i = 0; i < count; ++i) {
        const std::string name = gnutls_kx_get_name(static_cast<gnutls_kx_algorithm_t>(exchanges[i]));
        EXPECT_TRUE(name.starts_with("ECDHE-")) << name;
    }
    gnutls_priority_deinit(priorities);
}

TEST_F(Tls, ShowsItsCertificate) {
    const auto trusts = [this](const std::string& certificate, const std::string& host) {
        return TlsConnection(server.port(), {.trusted = certificate, .host = host}).is_open();
    };
    for (const char* host : {"localhost", "127.0.0.1", "::1"}) {
        EXPECT_TRUE(trusts(for_localhost().certificate, host)) << host;
    }
    EXPECT_FALSE(trusts(for_localhost().certificate, "evil.example"));
    EXPECT_FALSE(trusts(for_hosts({"localhost"}).certificate, "localhost"));
}

TEST_F(Tls, PlainTextDoesNoHarm) {
    EXPECT_EQ(exchange(server.port(), post("<body/>", "Any")).status, 0);
    Connection noise(server.port());
    noise.send(std::string(5000, '\x16'));
    noise.receive_all();
    EXPECT_TRUE(serves());
}

TEST_F(Tls, DropsClientsThatDoNotFinishTheHandshake) {
    Connection silent(server.port());
    const auto started = std::chrono::steady_clock::now();
    silent.receive_all();
    EXPECT_LT(std::chrono::steady_clock::now() - started, 10s);
    EXPECT_TRUE(serves());
}

TEST_F(Tls, ClientsOfOnePortDoNotReachTheOther) {
    const HttpServer plain({.port = 0}, [](const HttpRequest&) { return HttpReply{}; });
    EXPECT_FALSE(TlsConnection(plain.port()).is_open());
}

TEST(TlsServer, SaysWhenItsCredentialsAreNone) {
    EXPECT_THROW(HttpServer({.port = 0, .tls = TlsCredentials{"nonsense", "nonsense"}},
                            [](const HttpRequest&) { return HttpReply{}; }),
                 HttpServerError);
}

} // namespace
