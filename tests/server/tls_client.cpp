#include "tests/server/tls_client.h"

#include <cstddef>

TlsConnection::TlsConnection(std::uint16_t port, const Settings& settings) : connection_(port) {
    gnutls_certificate_allocate_credentials(&credentials_);
    gnutls_init(&session_, GNUTLS_CLIENT);
    gnutls_priority_set_direct(session_, settings.priorities.c_str(), nullptr);
    gnutls_credentials_set(session_, GNUTLS_CRD_CERTIFICATE, credentials_);
    std::string trusted = settings.trusted;
    if (!trusted.empty()) {
        const gnutls_datum_t pem{reinterpret_cast<unsigned char*>(trusted.data()),
                                 static_cast<unsigned>(trusted.size())};
        gnutls_certificate_set_x509_trust_mem(credentials_, &pem, GNUTLS_X509_FMT_PEM);
        gnutls_session_set_verify_cert(session_, settings.host.c_str(), 0);
    }
    if (!connection_.is_open()) return;
    gnutls_transport_set_int(session_, connection_.socket());
    int result = 0;
    do {
        result = gnutls_handshake(session_);
    } while (result < 0 && gnutls_error_is_fatal(result) == 0);
    open_ = result == 0;
}

TlsConnection::~TlsConnection() {
    gnutls_deinit(session_);
    gnutls_certificate_free_credentials(credentials_);
}

std::string TlsConnection::protocol() const {
    return gnutls_protocol_get_name(gnutls_protocol_get_version(session_));
}

std::string TlsConnection::cipher() const {
    return gnutls_cipher_get_name(gnutls_cipher_get(session_));
}

void TlsConnection::send(const std::string& text) {
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t step = gnutls_record_send(session_, text.data() + sent, text.size() - sent);
        if (step < 0 && gnutls_error_is_fatal(static_cast<int>(step)) != 0) return;
        if (step > 0) sent += static_cast<std::size_t>(step);
    }
}

std::string TlsConnection::receive_all() {
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t step = gnutls_record_recv(session_, buffer, sizeof buffer);
        if (step > 0) text.append(buffer, static_cast<std::size_t>(step));
        if (step == 0 || (step < 0 && gnutls_error_is_fatal(static_cast<int>(step)) != 0)) return text;
        if (step == GNUTLS_E_AGAIN) return text; // after some seconds without anything
    }
}

Received exchange_over_tls(std::uint16_t port, const cimserver::HttpRequest& request) {
    TlsConnection connection(port);
    if (!connection.is_open()) return {};
    connection.send(http_text(request));
    return parse_http(connection.receive_all());
}
