// The registration of a provider, as its file says it.
#include "server/provider/registrations.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace cimserver;

std::vector<Registration> read(const std::string& text) {
    std::istringstream stream(text);
    return read_registrations(stream, "p.reg");
}

std::string error_of(const std::string& text) {
    try {
        read(text);
        return "";
    } catch (const RegistrationError& error) {
        return error.what();
    }
}

TEST(Registrations, ASectionAClass) {
    const auto rows = read(
        "# two\n\n[A_Thing]\n   provider: P\n   location: L\n   type: instance\n"
        "   namespace: root/a root/b\n#\n[A_Link]\r\n  provider: Q\r\n"
        "  type: Association Instance\r\n  namespace: root/a\r\n");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].className, "A_Thing");
    EXPECT_EQ(rows[0].provider, "P");
    EXPECT_TRUE(rows[0].instances);
    EXPECT_FALSE(rows[0].associations);
    EXPECT_EQ(rows[0].nameSpaces, (std::vector<std::string>{"root/a", "root/b"}));
    EXPECT_EQ(rows[1].provider, "Q");
    EXPECT_TRUE(rows[1].instances);
    EXPECT_TRUE(rows[1].associations);
}

TEST(Registrations, ErrorsSayWhereAndWhat) {
    EXPECT_EQ(error_of("provider: P\n"), "p.reg:1: expected \"[Class]\" or \"name: value\"");
    EXPECT_EQ(error_of("[A]\nprovider P\n"), "p.reg:2: expected \"[Class]\" or \"name: value\"");
    EXPECT_EQ(error_of("[A]\ncolour: red\n"), "p.reg:2: unknown entry \"colour\"");
    EXPECT_EQ(error_of("[A]\nprovider: P\nnamespace: n\n\n[B]\n"),
              "p.reg:1: [A] needs a provider, a type and a namespace");
    EXPECT_EQ(error_of("[A]\ntype: instance\nnamespace: n\n"),
              "p.reg:1: [A] needs a provider, a type and a namespace");
}

TEST(Registrations, AFileThatCannotBeReadIsNamed) {
    EXPECT_THROW(read_registration_file("/nonexistent.reg"), RegistrationError);
    EXPECT_THROW(read_registration_file("/tmp"), RegistrationError);
}

} // namespace
