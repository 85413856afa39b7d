#include "tests/e2e/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <system_error>

namespace e2e {

namespace {

// Starts the command with both of its outputs going to `output`.
pid_t spawn(const std::vector<std::string>& command, const std::vector<std::string>& settings, int output) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);

    std::vector<char*> environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view name(*variable, std::strcspn(*variable, "="));
        const bool replaced = std::any_of(settings.begin(), settings.end(), [&](const std::string& setting) {
            return std::string_view(setting).substr(0, setting.find('=')) == name;
        });
        if (!replaced) environment.push_back(*variable);
    }
    for (const std::string& setting : settings) {
        if (setting.find('=') != std::string::npos) environment.push_back(const_cast<char*>(setting.c_str()));
    }
    environment.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
    pid_t process = -1;
    const int error =
        posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), "cannot start " + command.front());
    }
    return process;
}

int exit_status(int waitStatus) {
    return WIFSIGNALED(waitStatus) ? 128 + WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

int wait_for(pid_t process) {
    int waitStatus = 0;
    while (waitpid(process, &waitStatus, 0) < 0 && errno == EINTR) {
    }
    return exit_status(waitStatus);
}

} // namespace

ProgramResult run_program(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    ProgramResult result;
    try {
        const pid_t process = spawn(command, {}, ends[1]);
        close(ends[1]);
        std::array<char, 4096> buffer;
        for (;;) {
            const ssize_t count = read(ends[0], buffer.data(), buffer.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) break;
            result.output.append(buffer.data(), static_cast<std::size_t>(count));
        }
        close(ends[0]);
        result.status = wait_for(process);
    } catch (const std::system_error& error) {
        close(ends[0]);
        close(ends[1]);
        result.status = 127;
        result.output = error.what();
    }
    return result;
}

BackgroundProgram::BackgroundProgram(const std::vector<std::string>& command,
                                     const std::vector<std::string>& settings) {
    std::string name = "/tmp/kesto-e2e-XXXXXX";
    outputFile_ = mkostemp(name.data(), O_CLOEXEC | O_APPEND);
    if (outputFile_ < 0) throw std::system_error(errno, std::generic_category(), name);
    unlink(name.c_str());
    try {
        process_ = spawn(command, settings, outputFile_);
    } catch (...) {
        close(outputFile_);
        throw;
    }
}

BackgroundProgram::~BackgroundProgram() {
    if (process_ > 0) stop(SIGKILL);
    close(outputFile_);
}

std::string BackgroundProgram::output() const {
    std::string text;
    std::array<char, 4096> buffer;
    ssize_t count;
    while ((count = pread(outputFile_, buffer.data(), buffer.size(), static_cast<off_t>(text.size()))) > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

bool BackgroundProgram::ended() {
    if (process_ < 0) return true;
    int waitStatus = 0;
    if (waitpid(process_, &waitStatus, WNOHANG) != process_) return false;
    process_ = -1;
    status_ = exit_status(waitStatus);
    return true;
}

int BackgroundProgram::stop(int signal) {
    if (!ended()) {
        kill(process_, signal);
        status_ = wait_for(process_);
        process_ = -1;
    }
    return status_;
}

} // namespace e2e
