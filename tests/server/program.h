// kesto-cimserver and its commands as processes, with their standard output and error in files.
#ifndef KESTO_TESTS_SERVER_PROGRAM_H
#define KESTO_TESTS_SERVER_PROGRAM_H

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/types.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/server/response.h"
#include "tests/server/temporary_folder.h"

class Program : public testing::Test {
  protected:
    ~Program() override;

    void start(std::vector<std::string> arguments) { start_program(KESTO_CIMSERVER, std::move(arguments)); }
    // Its standard input is a file, or a terminal.
    void start_program(const std::string& program, std::vector<std::string> arguments,
                       const std::string& input = "/dev/null");

    // Serves the probe provider on a free port and waits until it does.
    void serve(std::vector<std::string> arguments = {});
    // Waits for the port of this kind of URL.
    std::uint16_t port_of(const std::string& scheme) const;

    Response ask_class(const std::string& method, const std::string& name) const;
    // The class that a traversal without an association class leads to.
    std::string far_end_of_thing_one(const std::string& nameSpace) const;

    // The exit status, or minus the signal.
    int wait_for_end();
    int stop(int signal = SIGTERM);

    std::string file(const std::string& name) const { return folder.path(name); }
    std::string out() const { return content_of(file("out")); }
    std::string err() const { return content_of(file("err")); }

    TemporaryFolder folder;
    pid_t process = 0;
    std::uint16_t port = 0;
};

#endif
