#include "server/console.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "server/model/error.h"

namespace cimserver {

namespace {

int duplicate(int descriptor) {
    return fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}

} // namespace

Console::Console() : out_(duplicate(STDOUT_FILENO)), error_(duplicate(STDERR_FILENO)) {}

Console::~Console() {
    if (out_ >= 0) close(out_);
    if (error_ >= 0) close(error_);
}

void Console::redirect_provider(const std::string& file) const {
    std::fflush(stdout);
    const int target = file == "-" ? duplicate(STDERR_FILENO)
                                   : open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    const bool redirected = target >= 0 && dup2(target, STDOUT_FILENO) >= 0;
    const int reason = errno;
    if (target >= 0) close(target);
    if (!redirected) throw Error(file + ": " + std::strerror(reason));
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // whole lines, as they are printed
}

void Console::write(int descriptor, const std::string& line) {
    const std::string text = line + "\n";
    const std::lock_guard guard(lock_);
    for (std::size_t written = 0; written < text.size();) {
        const ssize_t step = ::write(descriptor, text.data() + written, text.size() - written);
        if (step < 0 && errno != EINTR) return; // a console that is gone is no reason to stop serving
        if (step > 0) written += static_cast<std::size_t>(step);
    }
}

} // namespace cimserver
