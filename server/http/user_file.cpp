#include "server/http/user_file.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <sstream>
#include <string_view>

#include "server/http/file.h"
#include "server/http/password_hash.h"
#include "server/model/error.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

bool is_user_name(std::string_view name) {
    const auto isControl = [](char c) { return (c >= '\0' && c < ' ') || c == '\x7f'; };
    return !name.empty() && name.front() != '#' && trimmed(name) == name &&
           name.find(':') == std::string_view::npos && std::none_of(name.begin(), name.end(), isControl);
}

bool is_comment(const std::string& line) {
    return line.starts_with('#') || trimmed(line).empty();
}

struct User {
    std::string name;
    std::string hash;
};

User user_of(const std::string& line, const std::string& path, unsigned number) {
    const std::size_t colon = line.find(':');
    if (colon != std::string::npos) {
        User user{line.substr(0, colon), line.substr(colon + 1)};
        if (is_user_name(user.name) && is_password_hash(user.hash)) return user;
    }
    throw Error(path + ", line " + std::to_string(number) + ": not NAME:HASH with a hash of crypt(3)");
}

// The lines of the file without the user's, each with its end.
struct OtherLines {
    std::string text;
    bool removed = false;
};

OtherLines without_user(const std::string& path, const std::string& name) {
    OtherLines others;
    std::istringstream lines(read_private_file(path));
    unsigned number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (!is_comment(line) && user_of(line, path, number).name == name) {
            others.removed = true;
        } else {
            others.text += line + "\n";
        }
    }
    return others;
}

} // namespace

UserHashes read_user_file(const std::string& path) {
    UserHashes hashes;
    std::istringstream lines(read_private_file(path));
    unsigned number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (is_comment(line)) continue;
        User user = user_of(line, path, number);
        if (!hashes.emplace(user.name, user.hash).second) {
            throw Error(path + ", line " + std::to_string(number) + ": " + user.name + " once more");
        }
    }
    return hashes;
}

void set_user(const std::string& path, const std::string& name, const std::string& hash) {
    if (!is_user_name(name)) throw Error("not a user's name: '" + name + "'");
    Replacement replacement(path);
    const bool exists = access(path.c_str(), F_OK) == 0;
    const std::string others = exists ? without_user(path, name).text : "";
    replacement.commit(others + name + ":" + hash + "\n");
}

bool delete_user(const std::string& path, const std::string& name) {
    Replacement replacement(path);
    const OtherLines others = without_user(path, name);
    if (others.removed) replacement.commit(others.text);
    return others.removed;
}

} // namespace cimserver
