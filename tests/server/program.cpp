#include "tests/server/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "tests/server/cimxml_request.h"
#include "tests/server/http_client.h"

Program::~Program() {
    if (process > 0) {
        kill(process, SIGKILL);
        wait_for_end();
    }
}

void Program::start_program(const std::string& program, std::vector<std::string> arguments,
                            const std::string& input) {
    arguments.insert(arguments.begin(), program);
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    constexpr int WRITE = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, input.c_str(), O_RDWR | O_NOCTTY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, file("out").c_str(), WRITE, 0600);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, file("err").c_str(), WRITE, 0600);
    ASSERT_EQ(posix_spawn(&process, program.c_str(), &files, nullptr, argv.data(), environ), 0);
    posix_spawn_file_actions_destroy(&files);
}

void Program::serve(std::vector<std::string> arguments) {
    const auto given = [&arguments](const char* option) {
        return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
    };
    if (!given("--provider")) arguments.insert(arguments.begin(), {"--provider", PROBE_PROVIDER});
    if (!given("--tls-port")) arguments.insert(arguments.begin(), {"--port", "0"});
    if (!given("--registration")) {
        arguments.insert(arguments.begin(), {"--registration", PROBE_FOLDER "/probe.reg"});
    }
    arguments.insert(arguments.begin(), {"--schema", PROBE_FOLDER "/probe.mof"});
    arguments.insert(arguments.begin(), {"--provider-name", "Probe"});
    start(arguments);
    port = port_of(given("--tls-port") ? "https" : "http");
    ASSERT_NE(port, 0) << err();
}

std::uint16_t Program::port_of(const std::string& scheme) const {
    const std::string before = scheme + "://127.0.0.1:";
    for (int i = 0; i < 1000; ++i) {
        const std::string text = out();
        const std::size_t at = text.find(before);
        if (at != std::string::npos && text.find('\n', at) != std::string::npos) {
            return static_cast<std::uint16_t>(std::atoi(text.c_str() + at + before.size()));
        }
        usleep(10000);
    }
    return 0;
}

Response Program::ask_class(const std::string& method, const std::string& name) const {
    const std::string body = imethod_call(method, parameter("ClassName", class_name(name)));
    return Response(exchange(port, post(body, method)).body);
}

std::string Program::far_end_of_thing_one(const std::string& nameSpace) const {
    const std::string body =
        imethod_call("AssociatorNames", parameter("ObjectName", thing_name("one")), nameSpace);
    return Response(exchange(port, post(body, "AssociatorNames", nameSpace)).body)
        .text("//OBJECTPATH//INSTANCENAME/@CLASSNAME");
}

int Program::wait_for_end() {
    int status = 0;
    if (waitpid(process, &status, 0) != process) return -1000;
    process = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

int Program::stop(int signal) {
    kill(process, signal);
    return wait_for_end();
}
