// The file of the users that the server knows, a line each:
//
//   name:hash
//
// with the hash of the password as crypt(3) makes it. Empty lines and lines that start with # are comments.
#ifndef KESTO_SERVER_HTTP_USER_FILE_H
#define KESTO_SERVER_HTTP_USER_FILE_H

#include <map>
#include <string>

namespace cimserver {

using UserHashes = std::map<std::string, std::string>; // by name

// Throws Error for a file that cannot be read, that others can read or write, or with a line that is none of
// the above.
UserHashes read_user_file(const std::string& path);

// Adds the user, or gives it another hash. Makes the file when there is none. Throws Error, also for a name
// that no line can hold.
void set_user(const std::string& path, const std::string& name, const std::string& hash);

// False when there is no such user.
bool delete_user(const std::string& path, const std::string& name);

} // namespace cimserver

#endif
