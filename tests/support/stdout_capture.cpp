#include "tests/support/stdout_capture.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace test_support {

StdoutCapture::StdoutCapture() {
    std::array<char, 32> name{"/tmp/provider-stdout-XXXXXX"};
    std::fflush(stdout);
    file_ = mkstemp(name.data());
    saved_ = dup(STDOUT_FILENO);
    if (file_ < 0 || saved_ < 0 || dup2(file_, STDOUT_FILENO) < 0) {
        throw std::runtime_error("standard output cannot be redirected");
    }
    unlink(name.data());
}

StdoutCapture::~StdoutCapture() {
    text();
}

const std::string& StdoutCapture::text() {
    if (ended_) return text_;
    ended_ = true;
    std::fflush(stdout);
    dup2(saved_, STDOUT_FILENO);
    close(saved_);

    lseek(file_, 0, SEEK_SET);
    std::array<char, 4096> part{};
    for (ssize_t length = 0; (length = read(file_, part.data(), part.size())) > 0;) {
        text_.append(part.data(), static_cast<std::size_t>(length));
    }
    close(file_);
    return text_;
}

} // namespace test_support
