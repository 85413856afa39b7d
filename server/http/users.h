// Who may use the server: the users of a file, which is read again whenever it has changed.
//
// Hashing a password is slow on purpose, and CIM-XML clients send theirs with every request. So the
// credentials that were right are remembered, as digests under a key that this process alone knows, until the
// file changes. Wrong ones are not: each costs its sender a hash, one at a time for all senders, so that
// guessing is slow and takes no memory from others.
#ifndef KESTO_SERVER_HTTP_USERS_H
#define KESTO_SERVER_HTTP_USERS_H

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <mutex>
#include <set>
#include <string>

#include "server/http/user_file.h"

namespace cimserver {

struct Credentials {
    std::string name;
    std::string password;
};

class Users {
  public:
    using Warn = std::function<void(const std::string& line)>;

    // Throws Error when the file cannot be used. When it has become so later, that is warned of, and nobody
    // is let in until it can be used again.
    Users(std::string file, Warn warn);

    // A name that is not known takes as long as a wrong password. May be called on several threads.
    bool admit(const Credentials& who);

  private:
    // What a file was when it was last looked at; all zero for one that is not there.
    struct Stamp {
        std::uint64_t device = 0, inode = 0;
        std::int64_t size = 0, changed = 0, changedNanoseconds = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Entry {
        std::string hash;
        unsigned generation; // of the file
    };

    Stamp stamp() const;
    void follow_file();
    bool is_verified(const std::string& digest);
    Entry entry_of(const std::string& name);
    void remember(const std::string& digest, unsigned generation);
    std::string digest_of(const Credentials& who) const;

    const std::string file_;
    const Warn warn_;
    const std::string digestKey_;
    const std::string nobodysHash_; // for names that are not known

    std::mutex verifying_; // held while a password is hashed; taken before lock_
    std::mutex lock_;      // of what follows
    Stamp stamp_;
    unsigned generation_ = 0;
    UserHashes hashes_;
    std::set<std::string> verified_; // digests
};

} // namespace cimserver

#endif
