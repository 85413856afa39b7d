// kesto-cimserver-user and kesto-cimserver-certificate.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cstddef>
#include <string>
#include <vector>

#include "server/http/password_hash.h"
#include "server/http/tls.h"
#include "server/http/user_file.h"
#include "tests/server/program.h"

namespace {

using namespace cimserver;

class UserCommand : public Program {
  protected:
    // The exit status.
    int run(const std::vector<std::string>& arguments, const std::string& input = "") {
        start_program(KESTO_CIMSERVER_USER, arguments, folder.write("in", input));
        return wait_for_end();
    }
    bool has(const std::string& name, const std::string& password) const {
        const UserHashes users = read_user_file(file("users"));
        return users.contains(name) && password_matches(password, users.at(name));
    }
    // Waits until the command has asked it.
    bool is_asked(const std::string& question) const {
        for (int i = 0; i < 1000; ++i) {
            if (err().find(question) != std::string::npos) return true;
            usleep(10000);
        }
        return false;
    }
};

TEST_F(UserCommand, TakesThePasswordFromStandardInput) {
    EXPECT_EQ(run({file("users"), "ada"}, "my secret\nanother line\n"), 0);
    EXPECT_TRUE(has("ada", "my secret"));
    EXPECT_EQ(run({file("users"), "ada"}, "changed"), 0);
    EXPECT_TRUE(has("ada", "changed"));
    EXPECT_EQ(out() + err(), "");
}

TEST_F(UserCommand, DeletesUsers) {
    EXPECT_EQ(run({file("users"), "ada"}, "secret\n"), 0);
    EXPECT_EQ(run({file("users"), "ada", "--delete"}), 0);
    EXPECT_TRUE(read_user_file(file("users")).empty());
    EXPECT_EQ(run({"--delete", file("users"), "ada"}), 1);
    EXPECT_EQ(err(), "kesto-cimserver-user: " + file("users") + " has no user ada\n");
}

TEST_F(UserCommand, TakesNoEmptyPassword) {
    EXPECT_EQ(run({file("users"), "ada"}), 1);
    EXPECT_EQ(err(), "kesto-cimserver-user: no password on standard input\n");
    EXPECT_EQ(run({file("users"), "ada"}, "\n"), 1);
    EXPECT_EQ(err(), "kesto-cimserver-user: the password is empty\n");
    EXPECT_NE(access(file("users").c_str(), F_OK), 0);
}

TEST_F(UserCommand, EndsBadUsageWith2) {
    EXPECT_EQ(run({file("users")}), 2);
    EXPECT_NE(err().find("NAME"), std::string::npos);
    EXPECT_EQ(run({file("users"), "ada", "secret"}), 2); // no password on command lines
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(out(), "kesto-cimserver-user " PROJECT_VERSION "\n");
}

// The user's end of a terminal that the command runs in.
class Terminal {
  public:
    Terminal() : number_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
        grantpt(number_);
        unlockpt(number_);
    }
    ~Terminal() { close(number_); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    std::string name() const { return ptsname(number_); }
    void type(const std::string& text) {
        EXPECT_EQ(write(number_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    std::string shown() const {
        char buffer[1000];
        const ssize_t size = read(number_, buffer, sizeof buffer);
        return size > 0 ? std::string(buffer, static_cast<std::size_t>(size)) : "";
    }

    bool echoes() const {
        termios state{};
        return tcgetattr(number_, &state) == 0 && (state.c_lflag & ECHO) != 0;
    }

  private:
    int number_;
};

TEST_F(UserCommand, AsksTwiceOnATerminalAndShowsNothing) {
    Terminal terminal;
    start_program(KESTO_CIMSERVER_USER, {file("users"), "ada"}, terminal.name());
    ASSERT_TRUE(is_asked("Password: "));
    terminal.type("secret\n");
    ASSERT_TRUE(is_asked("Once more: "));
    terminal.type("secret\n");
    EXPECT_EQ(wait_for_end(), 0) << err();
    EXPECT_EQ(terminal.shown(), "");
    EXPECT_TRUE(has("ada", "secret"));
}

TEST_F(UserCommand, NoticesATypingError) {
    Terminal terminal;
    start_program(KESTO_CIMSERVER_USER, {file("users"), "ada"}, terminal.name());
    ASSERT_TRUE(is_asked("Password: "));
    terminal.type("secret\n");
    ASSERT_TRUE(is_asked("Once more: "));
    terminal.type("sceret\n");
    EXPECT_EQ(wait_for_end(), 1);
    EXPECT_NE(err().find("the two passwords differ"), std::string::npos);
}

TEST_F(UserCommand, LeavesTheTerminalAsItWasWhenInterrupted) {
    Terminal terminal;
    start_program(KESTO_CIMSERVER_USER, {file("users"), "ada"}, terminal.name());
    ASSERT_TRUE(is_asked("Password: "));
    EXPECT_FALSE(terminal.echoes());
    EXPECT_EQ(stop(SIGINT), -SIGINT);
    EXPECT_TRUE(terminal.echoes());
}

class CertificateCommand : public Program {
  protected:
    int run(const std::vector<std::string>& arguments) {
        start_program(KESTO_CIMSERVER_CERTIFICATE, arguments);
        return wait_for_end();
    }
    std::string certificate = file("certificate.pem");
    std::string key = file("private-key.pem");
};

TEST_F(CertificateCommand, MakesAPairThatTheServerTakes) {
    EXPECT_EQ(run({"--host", "switch.example.net", "--days", "3", file("")}), 0) << err();
    EXPECT_NE(out().find("--certificate "), std::string::npos);
    EXPECT_NO_THROW(read_tls_credentials(certificate, key));
    struct stat status {};
    ASSERT_EQ(stat(key.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(CertificateCommand, OverwritesNothing) {
    folder.write("certificate.pem", "precious");
    EXPECT_EQ(run({file("")}), 1);
    EXPECT_EQ(content_of(certificate), "precious");
    EXPECT_NE(access(key.c_str(), F_OK), 0); // half a pair is of no use
    EXPECT_NE(err().find("cannot make "), std::string::npos);
}

TEST_F(CertificateCommand, EndsBadUsageWith2) {
    EXPECT_EQ(run({}), 2);
    EXPECT_EQ(run({"--days", "0", file("")}), 2);
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(out(), "kesto-cimserver-certificate " PROJECT_VERSION "\n");
}

} // namespace
