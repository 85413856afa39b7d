// Salted hashes of passwords, as crypt(3) makes them: yescrypt, which takes some tens of milliseconds and
// some megabytes each time, so that a stolen file of hashes is of little use.
#ifndef KESTO_SERVER_HTTP_PASSWORD_HASH_H
#define KESTO_SERVER_HTTP_PASSWORD_HASH_H

#include <string>

namespace cimserver {

// With a new salt. Throws Error for a password that crypt(3) does not take: longer than 511 bytes.
std::string hash_password(const std::string& password);

// Of any method that crypt(3) still deems safe.
bool is_password_hash(const std::string& text);

bool password_matches(const std::string& password, const std::string& hash);

} // namespace cimserver

#endif
