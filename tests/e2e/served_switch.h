// The fixture of the end-to-end tests: the CIM server with the provider on the built-in switch, one for all
// the tests that run in one process, and wbemcli pointed at it.
#ifndef KESTO_TESTS_E2E_SERVED_SWITCH_H
#define KESTO_TESTS_E2E_SERVED_SWITCH_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/program.h"
#include "tests/e2e/wbem_client.h"

namespace e2e {

// A running server. Throws std::runtime_error with the server's messages when it does not get ready.
class CimServer {
  public:
    // `scenario` names the switch's file; the built-in switch without it.
    explicit CimServer(const std::string& scenario = "");

    const std::string& url() const { return address_; }
    std::string output() const { return program_.output(); }
    // Stops it as an administrator does (SIGTERM) and returns its exit status.
    int stop();

  private:
    BackgroundProgram program_;
    std::string address_;
};

class ServedSwitch : public testing::Test {
  protected:
    void SetUp() override;
    const std::string& url() const;
    const WbemClient& client() const;
    // The first tunnel endpoint of the switch.
    CimPath first_tunnel() const;
    // The CIM error code that the operation ends with; 0 when it succeeds.
    template <typename Operation>
    static int error_of(Operation operation) {
        try {
            operation();
        } catch (const WbemError& error) {
            return error.code;
        }
        return 0;
    }
};

} // namespace e2e

#endif
