// Programs that a test starts: one that runs to its end, and one that serves until it is stopped.
#ifndef KESTO_TESTS_E2E_PROGRAM_H
#define KESTO_TESTS_E2E_PROGRAM_H

#include <sys/types.h>

#include <string>
#include <vector>

namespace e2e {

struct ProgramResult {
    int status = -1;    // the exit status; 128 and more = ended by that signal; 127 = could not be started
    std::string output; // standard output and standard error, as they came
};

ProgramResult run_program(const std::vector<std::string>& command);

// A program in the background whose output goes to a file of its own.
class BackgroundProgram {
  public:
    // Throws std::runtime_error when it cannot be started. Settings are NAME=VALUE for the environment, or a
    // bare NAME to take it away.
    explicit BackgroundProgram(const std::vector<std::string>& command,
                               const std::vector<std::string>& settings = {});
    ~BackgroundProgram();
    BackgroundProgram(const BackgroundProgram&) = delete;
    BackgroundProgram& operator=(const BackgroundProgram&) = delete;

    // What it has written so far.
    std::string output() const;
    bool ended();
    // Sends the signal, waits for the end and returns the exit status as in ProgramResult.
    int stop(int signal);

  private:
    pid_t process_ = -1;
    int status_ = -1;
    int outputFile_ = -1;
};

} // namespace e2e

#endif
