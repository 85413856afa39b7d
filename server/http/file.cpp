#include "server/http/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>

#include "server/model/error.h"

namespace cimserver {

namespace {

constexpr mode_t OWNER_ONLY = 0600;

// With the reason that errno gives.
[[noreturn]] void fail(const std::string& path, const std::string& what) {
    throw Error(what + " " + path + ": " + std::strerror(errno));
}

std::string content_of(int file, const std::string& path) {
    std::string content;
    char buffer[4096];
    ssize_t step = 0;
    while ((step = read(file, buffer, sizeof buffer)) != 0) {
        if (step < 0 && errno != EINTR) fail(path, "cannot read");
        if (step > 0) content.append(buffer, static_cast<std::size_t>(step));
    }
    return content;
}

void write_all(int file, const std::string& content, const std::string& path) {
    for (std::size_t written = 0; written < content.size();) {
        const ssize_t step = write(file, content.data() + written, content.size() - written);
        if (step < 0 && errno != EINTR) fail(path, "cannot write");
        if (step > 0) written += static_cast<std::size_t>(step);
    }
    if (fsync(file) != 0) fail(path, "cannot write");
}

int open_to_read(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) fail(path, "cannot read");
    return file;
}

int open_new(const std::string& path, mode_t mode) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file < 0) fail(path, "cannot make");
    return file;
}

} // namespace

Descriptor::~Descriptor() {
    if (number_ >= 0) close(number_);
}

std::string read_file(const std::string& path) {
    const Descriptor file(open_to_read(path));
    return content_of(file.number(), path);
}

std::string read_private_file(const std::string& path) {
    const Descriptor file(open_to_read(path));
    struct stat status {};
    if (fstat(file.number(), &status) != 0) fail(path, "cannot read");
    if ((status.st_mode & (S_IRWXO | S_IWGRP)) != 0) {
        throw Error(path + " is open to others; chmod 600 or 640 keeps its secrets");
    }
    return content_of(file.number(), path);
}

void create_file(const std::string& path, const std::string& content, mode_t mode) {
    const Descriptor file(open_new(path, mode));
    write_all(file.number(), content, path);
}

Replacement::Replacement(std::string path)
    : path_(std::move(path)), newPath_(path_ + ".new"), file_(open_new(newPath_, OWNER_ONLY)) {}

Replacement::~Replacement() {
    unlink(newPath_.c_str()); // is there no more after commit
}

void Replacement::commit(const std::string& content) {
    const int file = file_.number();
    write_all(file, content, newPath_);
    struct stat old {};
    if (stat(path_.c_str(), &old) == 0) {
        // Only root can give a file away, and has to: the server's own user reads the old one.
        struct stat made {};
        const bool same = fstat(file, &made) == 0 && made.st_uid == old.st_uid && made.st_gid == old.st_gid;
        if (!same && fchown(file, old.st_uid, old.st_gid) != 0) fail(path_, "cannot keep the owner of");
        if (fchmod(file, old.st_mode & (S_IRWXU | S_IRGRP)) != 0) fail(path_, "cannot keep the mode of");
    }
    if (std::rename(newPath_.c_str(), path_.c_str()) != 0) fail(path_, "cannot replace");
}

} // namespace cimserver
