// A TLS client of a server on a loopback port.
#ifndef KESTO_TESTS_SERVER_TLS_CLIENT_H
#define KESTO_TESTS_SERVER_TLS_CLIENT_H

#include <gnutls/gnutls.h>

#include <cstdint>
#include <string>

#include "server/http/message.h"
#include "tests/server/http_client.h"

class TlsConnection {
  public:
    struct Settings {
        std::string priorities = "NORMAL"; // in GnuTLS' words
        std::string trusted{};             // certificates in PEM; empty: whatever the server has
        std::string host = "localhost";    // that the certificate must be for
    };

    explicit TlsConnection(std::uint16_t port) : TlsConnection(port, Settings()) {}
    TlsConnection(std::uint16_t port, const Settings& settings);
    ~TlsConnection();
    TlsConnection(const TlsConnection&) = delete;
    TlsConnection& operator=(const TlsConnection&) = delete;

    bool is_open() const { return open_; } // after a handshake
    std::string protocol() const;          // "TLS1.3"
    std::string cipher() const;            // "AES-256-GCM"
    void send(const std::string& text);
    std::string receive_all(); // until the server closes

  private:
    Connection connection_;
    gnutls_certificate_credentials_t credentials_ = nullptr;
    gnutls_session_t session_ = nullptr;
    bool open_ = false;
};

Received exchange_over_tls(std::uint16_t port, const cimserver::HttpRequest& request);

#endif
