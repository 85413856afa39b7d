// kesto-cimserver-user: adds users to the file that kesto-cimserver reads them from, and deletes them.
#include <termios.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>

#include "server/command.h"
#include "server/http/password_hash.h"
#include "server/http/user_file.h"
#include "server/model/error.h"

namespace {

using namespace cimserver;

termios terminalBefore{};

void restore_terminal() {
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &terminalBefore);
}

void restore_terminal_and_end(int signal) {
    restore_terminal();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

// Switches the terminal's echo off for as long as it lives; does nothing where standard input is no terminal.
class Silence {
  public:
    Silence() : onTerminal_(tcgetattr(STDIN_FILENO, &terminalBefore) == 0) {
        if (!onTerminal_) return;
        for (const int signal : {SIGINT, SIGTERM, SIGQUIT}) {
            std::signal(signal, restore_terminal_and_end);
        }
        termios silent = terminalBefore;
        silent.c_lflag &= ~tcflag_t{ECHO};
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~Silence() {
        if (onTerminal_) restore_terminal();
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

    bool on_terminal() const { return onTerminal_; }

  private:
    bool onTerminal_;
};

std::string line_of_input() {
    std::string line;
    if (!std::getline(std::cin, line)) throw Error("no password on standard input");
    if (line.empty()) throw Error("the password is empty");
    return line;
}

std::string ask(const char* question) {
    std::cerr << question << std::flush;
    std::string answer = line_of_input();
    std::cerr << "\n";
    return answer;
}

std::string read_password() {
    const Silence silence;
    if (!silence.on_terminal()) return line_of_input();
    std::string password = ask("Password: ");
    if (ask("Once more: ") != password) throw Error("the two passwords differ");
    return password;
}

int run(int argc, char** argv) {
    std::string file;
    std::string name;
    bool remove = false;
    CLI::App app(
        "Adds a user of kesto-cimserver, or gives it another password, which is read from the terminal, "
        "or else from the first line of standard input.",
        "kesto-cimserver-user");
    app.set_version_flag("--version", "kesto-cimserver-user " CIMSERVER_VERSION,
                         "Print the version and exit");
    app.add_option("FILE", file, "The file of the server's option --users; made when there is none")
        ->required();
    app.add_option("NAME", name, "The user")->required();
    app.add_flag("--delete", remove, "Delete the user instead");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : USAGE_ERROR;
    }
    if (!remove) {
        set_user(file, name, hash_password(read_password()));
    } else if (!delete_user(file, name)) {
        throw Error(file + " has no user " + name);
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    return run_command("kesto-cimserver-user", run, argc, argv);
}
