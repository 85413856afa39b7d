// The server's TLS: its certificate, and which protocols and ciphers it speaks.
#ifndef KESTO_SERVER_HTTP_TLS_H
#define KESTO_SERVER_HTTP_TLS_H

#include <chrono>
#include <string>
#include <vector>

namespace cimserver {

// In GnuTLS' words: TLS 1.3 and 1.2 alone, keys that are agreed on anew for each connection, and ciphers that
// authenticate what they encrypt.
extern const char* const TLS_PRIORITIES;

// In PEM. The server's own certificate comes first, those of its issuers follow.
struct TlsCredentials {
    std::string certificate;
    std::string privateKey;
};

// Throws Error, with the file's name, for a file that cannot be read or is something else, for a key that
// others can read or that is not the certificate's, and for a certificate whose time is over or has not come.
TlsCredentials read_tls_credentials(const std::string& certificateFile, const std::string& keyFile);

using Moment = std::chrono::system_clock::time_point;

// A key, and a certificate for these names and addresses that is signed with it. Good for trials: its clients
// have to be given the certificate.
TlsCredentials make_self_signed(const std::vector<std::string>& hosts, Moment from, Moment until);

} // namespace cimserver

#endif
