// KESTO_SWITCH, and the program kesto-switch, as their users see them.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <string>

#include "emulator/control.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

struct Outcome {
    int status;
    std::string output; // standard output and error
};

Outcome run(const std::string& command) {
    std::FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return {-1, "cannot be started"};
    Outcome outcome{0, ""};
    std::array<char, 4096> buffer;
    std::size_t length = 0;
    while ((length = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) {
        outcome.output.append(buffer.data(), length);
    }
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

std::string quoted(const std::string& path) {
    return "'" + path + "'";
}

std::string file_with(const std::string& name, const std::string& text) {
    std::string path = testing::TempDir() + name;
    std::ofstream(path) << text;
    return path;
}

const std::string STARTER = quoted(SWITCH_STARTER);
const std::string PROGRAM = quoted(KESTO_SWITCH_PROGRAM);

TEST(Environment, WithoutAFileTheBuiltInSwitchStarts) {
    for (const char* setting : {"env -u KESTO_SWITCH ", "KESTO_SWITCH= "}) {
        const Outcome outcome = run(setting + STARTER);
        EXPECT_EQ(outcome.output, "init_mts good, 5 tunnels, north-sw1.example.net\n");
    }
}

TEST(Environment, FileIsTheSwitch) {
    const Outcome outcome =
        run("KESTO_SWITCH=" + quoted(std::string(EMULATOR_FOLDER) + "/examples/one-tunnel-with-faults.json") +
            " " + STARTER);
    EXPECT_EQ(outcome.output, "init_mts good, 1 tunnels, lab-sw9\n");
}

TEST(Environment, BadFileIsReportedAndLeavesADarkSwitch) {
    const std::string path = file_with("bad-switch.json", R"({"system": {"hostName": 1}})");
    const Outcome outcome = run("KESTO_SWITCH=" + quoted(path) + " " + STARTER);
    EXPECT_EQ(outcome.output, "emulated switch: " + path +
                                  ": /system/hostName: is not a text\ninit_mts failed, 0 tunnels, switch\n");
    EXPECT_EQ(outcome.status, 0) << "the process keeps running";
}

TEST(Environment, MissingFileIsReported) {
    const Outcome outcome = run("KESTO_SWITCH=/nowhere.json " + STARTER);
    EXPECT_EQ(outcome.output,
              "emulated switch: /nowhere.json: cannot be read\ninit_mts failed, 0 tunnels, switch\n");
}

TEST(Program, ChecksAFile) {
    const std::string good = std::string(EMULATOR_FOLDER) + "/examples/two-sites.json";
    EXPECT_EQ(run(PROGRAM + " check " + quoted(good)).output, good + ": good\n");
    const std::string bad = file_with("bad-member.json", "{\"tunnel\": []}");
    const Outcome outcome = run("KESTO_SWITCH=/nowhere.json " + PROGRAM + " check " + quoted(bad));
    EXPECT_EQ(outcome.output, bad + ": /tunnel: is not a member of \"scenario\"\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST(Program, GeneratesWhatItAccepts) {
    const std::string path = testing::TempDir() + "generated-switch.json";
    EXPECT_EQ(run(PROGRAM + " generate --tunnels 25 --seed 3 > " + quoted(path)).status, 0);
    EXPECT_EQ(run(PROGRAM + " check " + quoted(path)).status, 0);
    EXPECT_EQ(run("KESTO_SWITCH=" + quoted(path) + " " + STARTER).output,
              "init_mts good, 25 tunnels, generated-sw1\n");
}

TEST(Program, RefusesWhatItCannotGenerate) {
    EXPECT_NE(run(PROGRAM + " generate").status, 0);
    EXPECT_NE(run(PROGRAM + " generate --tunnels 50001").status, 0);
    EXPECT_NE(run(PROGRAM).status, 0);
}

TEST(Program, PrintsTheBuiltInScenario) {
    EXPECT_EQ(run(PROGRAM + " builtin").output, emulator::builtin_text());
}

} // namespace
} // namespace emulator_test
