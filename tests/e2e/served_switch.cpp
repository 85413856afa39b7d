#include "tests/e2e/served_switch.h"

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace e2e {

namespace {

std::unique_ptr<CimServer> server;

// Ends the server with the test program, and with it the run when the server or the emulated switch has
// something to complain about.
class ServerEnd : public testing::Environment {
  public:
    void TearDown() override {
        if (!server) return;
        EXPECT_EQ(server->stop(), 0) << server->output();
        EXPECT_EQ(server->output().find("emulated switch:"), std::string::npos)
            << "the provider misused a platform service:\n"
            << server->output();
        server.reset();
    }
};
const testing::Environment* const SERVER_END = testing::AddGlobalTestEnvironment(new ServerEnd);

// Without a scenario the built-in switch is served, whatever the surroundings of the tests say.
std::vector<std::string> settings_for(const std::string& scenario) {
    return {scenario.empty() ? "KESTO_SWITCH" : "KESTO_SWITCH=" + scenario};
}

} // namespace

// setpriv lets the server end with the test program even when that crashes.
CimServer::CimServer(const std::string& scenario)
    : program_({"setpriv", "--pdeathsig", "TERM", KESTO_CIMSERVER, "--provider", FCIP_PROVIDER, "--port", "0",
                "--provider-log", "/dev/null"},
               settings_for(scenario)) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 60s;
    while (std::chrono::steady_clock::now() < deadline) {
        const bool ended = program_.ended();
        const std::string text = program_.output();
        const std::size_t start = text.find("http://");
        const std::size_t end = text.find_first_not_of("0123456789.:", start + 7);
        if (start != std::string::npos && end != std::string::npos) {
            address_ = text.substr(start, end - start);
            return;
        }
        if (ended) break;
        std::this_thread::sleep_for(10ms);
    }
    throw std::runtime_error("the CIM server does not get ready:\n" + program_.output());
}

int CimServer::stop() {
    return program_.stop(SIGTERM);
}

void ServedSwitch::SetUp() {
    ASSERT_NE(run_program({WBEMCLI, "-v"}).status, 127)
        << "the end-to-end tests need wbemcli (Debian package sblim-wbemcli)";
    if (!server) server = std::make_unique<CimServer>();
}

const std::string& ServedSwitch::url() const {
    return server->url();
}

const WbemClient& ServedSwitch::client() const {
    static const WbemClient SHARED(url());
    return SHARED;
}

CimPath ServedSwitch::first_tunnel() const {
    const std::vector<CimPath> tunnels = client().enumerate_names("KESTO_FCIPProtocolEndPoint");
    if (tunnels.empty()) throw std::runtime_error("the switch has no tunnel");
    return tunnels.front();
}

} // namespace e2e
