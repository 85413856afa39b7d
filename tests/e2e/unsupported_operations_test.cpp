// Operations that change something, classes' own operations and requests to the wrong place: each is answered
// with the CIM error that says why.
#include "tests/e2e/served_switch.h"

namespace e2e {
namespace {

class UnsupportedOperations : public ServedSwitch {
  protected:
    int error_of_run(const std::string& operation, const std::string& object, const std::string& last = "") {
        return error_of([&] { client().run(operation, {}, object, last); });
    }
    std::string tunnel() { return first_tunnel().command_line_text(); }
};

TEST_F(UnsupportedOperations, DeletingAnInstance) {
    EXPECT_EQ(error_of_run("di", tunnel()), CIM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(error_of_run("di", "KESTO_NoSuchClass.Name=\"1\""), CIM_ERR_INVALID_CLASS);
}

TEST_F(UnsupportedOperations, ModifyingAnInstance) {
    EXPECT_EQ(error_of_run("mi", tunnel(), "NameFormat=\"changed\""), CIM_ERR_NOT_SUPPORTED);
    EXPECT_EQ(client().get(first_tunnel())["NameFormat"], "Other");
}

TEST_F(UnsupportedOperations, CreatingAnInstance) {
    EXPECT_EQ(error_of_run("ci", tunnel(), "NameFormat=\"new\""), CIM_ERR_NOT_SUPPORTED);
}

TEST_F(UnsupportedOperations, ChangingTheSchema) {
    EXPECT_EQ(error_of_run("dc", "KESTO_FCIPSettings"), CIM_ERR_NOT_SUPPORTED);
}

TEST_F(UnsupportedOperations, SettingPropertiesAndMethods) {
    EXPECT_EQ(error_of_run("sp", tunnel(), "NameFormat=\"changed\""), CIM_ERR_NOT_SUPPORTED);
    EXPECT_NE(error_of_run("cm", tunnel(), "Reset"), 0);
}

TEST_F(UnsupportedOperations, AnUnknownNamespace) {
    const WbemClient elsewhere(url(), "root/elsewhere");
    EXPECT_EQ(error_of([&] { elsewhere.enumerate("KESTO_FCIPSettings"); }), CIM_ERR_INVALID_NAMESPACE);
    EXPECT_EQ(error_of([&] { elsewhere.enumerate_names("KESTO_FCIPSettings"); }), CIM_ERR_INVALID_NAMESPACE);
    EXPECT_EQ(error_of([&] { elsewhere.get(first_tunnel()); }), CIM_ERR_INVALID_NAMESPACE);
    EXPECT_EQ(error_of([&] { elsewhere.associators(first_tunnel()); }), CIM_ERR_INVALID_NAMESPACE);
}

} // namespace
} // namespace e2e
