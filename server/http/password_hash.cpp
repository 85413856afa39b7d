#include "server/http/password_hash.h"

#include <crypt.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "server/model/error.h"

namespace cimserver {

namespace {

// Empty when crypt(3) takes the password or the setting for none.
std::string crypted(const std::string& password, const std::string& setting) {
    const auto memory = std::make_unique<crypt_data>(); // 32 KiB: nothing for a thread's stack
    const char* hash = crypt_rn(password.c_str(), setting.c_str(), memory.get(), sizeof *memory);
    return hash != nullptr ? hash : "";
}

} // namespace

std::string hash_password(const std::string& password) {
    char setting[CRYPT_GENSALT_OUTPUT_SIZE] = {};
    if (crypt_gensalt_rn("$y$", 0, nullptr, 0, setting, sizeof setting) == nullptr) {
        throw Error(std::string("no salt: ") + std::strerror(errno));
    }
    std::string hash = crypted(password, setting);
    if (hash.empty()) throw Error(std::string("the password cannot be hashed: ") + std::strerror(errno));
    return hash;
}

bool is_password_hash(const std::string& text) {
    return crypt_checksalt(text.c_str()) == CRYPT_SALT_OK;
}

bool password_matches(const std::string& password, const std::string& hash) {
    return !hash.empty() && crypted(password, hash) == hash;
}

} // namespace cimserver
