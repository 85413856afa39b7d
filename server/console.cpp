#include "server/console.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "server/model/error.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

int duplicate(int descriptor) {
    return fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}

// The text as one line of plain characters. Clients have a say in it: a line feed would let them add lines of
// their own, an escape sequence play tricks on the reader's terminal.
std::string as_line(std::string_view text) {
    constexpr char32_t LAST_LOW_CONTROL = 0x1F;
    constexpr char32_t FIRST_HIGH_CONTROL = 0x7F;
    constexpr char32_t LAST_HIGH_CONTROL = 0x9F;
    std::string line;
    for (std::size_t at = 0; at < text.size();) {
        const DecodedChar next = decode_utf8(text, at);
        const bool control = next.code <= LAST_LOW_CONTROL ||
                             (next.code >= FIRST_HIGH_CONTROL && next.code <= LAST_HIGH_CONTROL);
        if (next.valid && !control) {
            line += text.substr(at, next.length);
        } else {
            line += '?';
        }
        at += next.length;
    }
    return line;
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
    const std::string text = as_line(line) + "\n";
    const std::lock_guard guard(lock_);
    for (std::size_t written = 0; written < text.size();) {
        const ssize_t step = ::write(descriptor, text.data() + written, text.size() - written);
        if (step < 0 && errno != EINTR) return; // a console that is gone is no reason to stop serving
        if (step > 0) written += static_cast<std::size_t>(step);
    }
}

} // namespace cimserver
