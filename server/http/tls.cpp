#include "server/http/tls.h"

#include <gnutls/crypto.h>
#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

#include <array>
#include <cstddef>
#include <ctime>
#include <memory>
#include <optional>
#include <type_traits>

#include "server/http/file.h"
#include "server/http/ip_address.h"
#include "server/model/error.h"

namespace cimserver {

const char* const TLS_PRIORITIES =
    "SECURE128:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2"
    ":-KX-ALL:+ECDHE-ECDSA:+ECDHE-RSA"
    ":-CIPHER-ALL:+AES-256-GCM:+CHACHA20-POLY1305:+AES-128-GCM"
    ":-MAC-ALL:+AEAD:%SERVER_PRECEDENCE";

namespace {

template <typename Handle, void (*release)(Handle)>
struct Release {
    using pointer = Handle; // NOLINT(readability-identifier-naming): the standard library's name
    void operator()(Handle handle) const { release(handle); }
};
template <typename Handle, void (*release)(Handle)>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Release<Handle, release>>;

using Certificate = Owned<gnutls_x509_crt_t, gnutls_x509_crt_deinit>;
using PrivateKey = Owned<gnutls_x509_privkey_t, gnutls_x509_privkey_deinit>;

void expect_success(int result, const std::string& what) {
    if (result < 0) throw Error(what + ": " + gnutls_strerror(result));
}

// One of GnuTLS' objects, made by its own function.
template <typename Object, typename Handle>
Object made_by(int (*make)(Handle*)) {
    Handle handle = nullptr;
    expect_success(make(&handle), "TLS");
    return Object(handle);
}

gnutls_datum_t datum(std::string& text) {
    return {reinterpret_cast<unsigned char*>(text.data()), static_cast<unsigned>(text.size())};
}

std::string taken(gnutls_datum_t& data) {
    std::string text(reinterpret_cast<const char*>(data.data), data.size);
    gnutls_free(data.data);
    return text;
}

std::string shown_time(std::time_t time) {
    std::tm utc{};
    char text[32] = {};
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M UTC", gmtime_r(&time, &utc));
    return text;
}

// The first of the file.
void expect_valid_certificate(std::string pem, const std::string& file) {
    const auto certificate = made_by<Certificate>(gnutls_x509_crt_init);
    const gnutls_datum_t data = datum(pem);
    expect_success(gnutls_x509_crt_import(certificate.get(), &data, GNUTLS_X509_FMT_PEM),
                   "no certificate in " + file);
    const std::time_t now = std::time(nullptr);
    const std::time_t from = gnutls_x509_crt_get_activation_time(certificate.get());
    const std::time_t until = gnutls_x509_crt_get_expiration_time(certificate.get());
    if (until < now) throw Error("the certificate " + file + " expired on " + shown_time(until));
    if (from > now) throw Error("the certificate " + file + " is not valid before " + shown_time(from));
}

void expect_private_key(std::string pem, const std::string& file) {
    const auto key = made_by<PrivateKey>(gnutls_x509_privkey_init);
    const gnutls_datum_t data = datum(pem);
    expect_success(gnutls_x509_privkey_import2(key.get(), &data, GNUTLS_X509_FMT_PEM, nullptr, 0),
                   "no private key in " + file);
}

void expect_pair(TlsCredentials pair, const std::string& what) {
    using Pair = Owned<gnutls_certificate_credentials_t, gnutls_certificate_free_credentials>;
    const auto credentials = made_by<Pair>(gnutls_certificate_allocate_credentials);
    const gnutls_datum_t certificate = datum(pair.certificate);
    const gnutls_datum_t key = datum(pair.privateKey);
    expect_success(
        gnutls_certificate_set_x509_key_mem(credentials.get(), &certificate, &key, GNUTLS_X509_FMT_PEM),
        what);
}

PrivateKey new_key() {
    PrivateKey key = made_by<PrivateKey>(gnutls_x509_privkey_init);
    expect_success(gnutls_x509_privkey_generate(key.get(), GNUTLS_PK_ECDSA,
                                                GNUTLS_CURVE_TO_BITS(GNUTLS_ECC_CURVE_SECP256R1), 0),
                   "no new key");
    return key;
}

void add_host(gnutls_x509_crt_t certificate, const std::string& host) {
    const std::optional<IpAddress> address = IpAddress::parse(host);
    const std::string bytes = address ? address->bytes() : host;
    expect_success(gnutls_x509_crt_set_subject_alt_name(
                       certificate, address ? GNUTLS_SAN_IPADDRESS : GNUTLS_SAN_DNSNAME, bytes.data(),
                       static_cast<unsigned>(bytes.size()), GNUTLS_FSAN_APPEND),
                   "not a host's name: " + host);
}

void set_serial(gnutls_x509_crt_t certificate) {
    std::array<unsigned char, 16> serial{};
    expect_success(gnutls_rnd(GNUTLS_RND_NONCE, serial.data(), serial.size()), "no random numbers");
    serial.front() &= 0x7F; // the number is positive
    expect_success(gnutls_x509_crt_set_serial(certificate, serial.data(), serial.size()), "serial number");
}

} // namespace

TlsCredentials read_tls_credentials(const std::string& certificateFile, const std::string& keyFile) {
    TlsCredentials credentials{read_file(certificateFile), read_private_file(keyFile)};
    expect_valid_certificate(credentials.certificate, certificateFile);
    expect_private_key(credentials.privateKey, keyFile);
    expect_pair(credentials, certificateFile + " and " + keyFile + " do not fit");
    return credentials;
}

TlsCredentials make_self_signed(const std::vector<std::string>& hosts, Moment from, Moment until) {
    const PrivateKey key = new_key();
    const auto made = made_by<Certificate>(gnutls_x509_crt_init);
    gnutls_x509_crt_t const certificate = made.get();
    constexpr unsigned VERSION = 3;
    gnutls_x509_crt_set_version(certificate, VERSION);
    set_serial(certificate);
    gnutls_x509_crt_set_activation_time(certificate, std::chrono::system_clock::to_time_t(from));
    gnutls_x509_crt_set_expiration_time(certificate, std::chrono::system_clock::to_time_t(until));
    const std::string subject = "CN=kesto-cimserver";
    expect_success(gnutls_x509_crt_set_dn(certificate, subject.c_str(), nullptr), subject);
    for (const std::string& host : hosts) {
        add_host(certificate, host);
    }
    gnutls_x509_crt_set_basic_constraints(certificate, 0, -1);
    gnutls_x509_crt_set_key_usage(certificate, GNUTLS_KEY_DIGITAL_SIGNATURE);
    gnutls_x509_crt_set_key_purpose_oid(certificate, GNUTLS_KP_TLS_WWW_SERVER, 0);
    expect_success(gnutls_x509_crt_set_key(certificate, key.get()), "the certificate's key");
    std::array<unsigned char, 32> keyId{};
    std::size_t keyIdSize = keyId.size();
    expect_success(gnutls_x509_crt_get_key_id(certificate, 0, keyId.data(), &keyIdSize), "the key's id");
    gnutls_x509_crt_set_subject_key_id(certificate, keyId.data(), keyIdSize);
    expect_success(gnutls_x509_crt_sign2(certificate, certificate, key.get(), GNUTLS_DIG_SHA256, 0),
                   "signing the certificate");
    gnutls_datum_t certificatePem{};
    expect_success(gnutls_x509_crt_export2(certificate, GNUTLS_X509_FMT_PEM, &certificatePem), "export");
    TlsCredentials result;
    result.certificate = taken(certificatePem);
    gnutls_datum_t keyPem{};
    expect_success(gnutls_x509_privkey_export2_pkcs8(key.get(), GNUTLS_X509_FMT_PEM, nullptr, 0, &keyPem),
                   "export");
    result.privateKey = taken(keyPem);
    return result;
}

} // namespace cimserver
