#include "server/http/users.h"

#include <gnutls/crypto.h>
#include <gnutls/gnutls.h>

#include <cstddef>
#include <exception>
#include <utility>

#include "server/http/password_hash.h"
#include "server/model/error.h"

namespace cimserver {

namespace {

constexpr std::size_t MOST_VERIFIED = 256;

std::string random_bytes(std::size_t count) {
    std::string bytes(count, '\0');
    if (gnutls_rnd(GNUTLS_RND_KEY, bytes.data(), count) != 0) throw Error("no random numbers");
    return bytes;
}

constexpr std::size_t KEY_SIZE = 32;

} // namespace

Users::Users(std::string file, Warn warn)
    : file_(std::move(file)),
      warn_(std::move(warn)),
      digestKey_(random_bytes(KEY_SIZE)),
      nobodysHash_(hash_password("")),
      stamp_(stamp()),
      hashes_(read_user_file(file_)) {}

bool Users::admit(const Credentials& who) {
    const std::string digest = digest_of(who);
    if (is_verified(digest)) return true;
    const std::lock_guard oneAtATime(verifying_);
    if (is_verified(digest)) return true; // by the one before
    const Entry entry = entry_of(who.name);
    const bool known = !entry.hash.empty();
    if (!password_matches(who.password, known ? entry.hash : nobodysHash_) || !known) return false;
    remember(digest, entry.generation);
    return true;
}

Users::Stamp Users::stamp() const {
    struct stat status {};
    if (stat(file_.c_str(), &status) != 0) return {};
    // The time of the last change of the inode: nobody can set that one back.
    return {status.st_dev, status.st_ino, status.st_size, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

// The lock is held.
void Users::follow_file() {
    const Stamp now = stamp();
    if (now == stamp_) return;
    stamp_ = now;
    ++generation_;
    verified_.clear();
    hashes_.clear();
    try {
        hashes_ = read_user_file(file_);
    } catch (const std::exception& error) {
        warn_(std::string("no user is let in: ") + error.what());
    }
}

bool Users::is_verified(const std::string& digest) {
    const std::lock_guard guard(lock_);
    follow_file();
    return verified_.contains(digest);
}

Users::Entry Users::entry_of(const std::string& name) {
    const std::lock_guard guard(lock_);
    const auto found = hashes_.find(name);
    return {found != hashes_.end() ? found->second : "", generation_};
}

void Users::remember(const std::string& digest, unsigned generation) {
    const std::lock_guard guard(lock_);
    if (generation != generation_) return; // the file has changed meanwhile
    if (verified_.size() >= MOST_VERIFIED) verified_.clear();
    verified_.insert(digest);
}

std::string Users::digest_of(const Credentials& who) const {
    const std::string text = who.name + ":" + who.password; // no name has a colon
    std::string digest(gnutls_hmac_get_len(GNUTLS_MAC_SHA256), '\0');
    if (gnutls_hmac_fast(GNUTLS_MAC_SHA256, digestKey_.data(), digestKey_.size(), text.data(), text.size(),
                         digest.data()) != 0) {
        throw Error("no digest of the credentials");
    }
    return digest;
}

} // namespace cimserver
