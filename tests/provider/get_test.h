// The fixture of the get-instance suites.
#ifndef KESTO_TESTS_PROVIDER_GET_TEST_H
#define KESTO_TESTS_PROVIDER_GET_TEST_H

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/support/one_tunnel.h"
#include "tests/support/provider_test.h"
#include "tests/support/traces.h"

namespace provider_tests {

class GetTest : public one_tunnel::OneTunnelTest {
  protected:
    static void expect_nothing(const test_support::Answer& answer) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(answer.doneCalls, 0U);
    }
};

inline std::string entry_trace(const std::string& keyName, const std::string& keyValue) {
    return "Entering FCIP_GetInstance\n\tfound key " + keyName + " : " + keyValue + "\n";
}

} // namespace provider_tests

#endif
