// The notation of wbemcli, which every other end-to-end test reads and writes through.
#include "tests/e2e/cim_path.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace e2e {
namespace {

TEST(CimPathText, HostAndNamespaceAreLeftOut) {
    const CimPath path = CimPath::parse(R"(127.0.0.1:5988/root/cimv2:KESTO_FCIPProfile.InstanceID="1")");
    EXPECT_EQ(path.className, "KESTO_FCIPProfile");
    EXPECT_EQ(path.key("instanceid"), "1");
    EXPECT_EQ(path.command_line_text(), R"(KESTO_FCIPProfile.InstanceID="1")");
}

TEST(CimPathText, APathWithoutKeys) {
    EXPECT_EQ(CimPath::parse("127.0.0.1:5988/root/cimv2:KESTO_FCIPProfile").className, "KESTO_FCIPProfile");
    EXPECT_TRUE(CimPath::parse("KESTO_FCIPProfile").keys.empty());
}

TEST(CimPathText, ValuesMayHoldEverySeparator) {
    const CimPath path = CimPath::parse(R"(root/cimv2:A.One="x,y={1}.:/",Two=7)");
    EXPECT_EQ(path.key("One"), "x,y={1}.:/");
    EXPECT_EQ(path.key("Two"), "7");
    EXPECT_EQ(path.command_line_text(), R"(A.One="x,y={1}.:/",Two=7)");
}

TEST(CimPathText, ReferencesNestAndGoLastOnTheCommandLine) {
    const CimPath path = CimPath::parse(
        R"(root/cimv2:A.ManagedElement={h:1/root/cimv2:B.X="1",Y={C.Z="}"}},SettingData={D.W="2"},IsDefault=1)");
    EXPECT_EQ(path.reference("managedelement").reference("Y").key("Z"), "}");
    EXPECT_EQ(path.reference("SettingData").className, "D");
    EXPECT_EQ(CimPath::parse(R"(A.I=1,R={B.X="1",Y="2"},S={D.W="2"})").command_line_text(),
              R"(A.I=1,R=B.X="1",Y="2",S=D.W="2")");
    EXPECT_THROW(path.reference("IsDefault"), std::out_of_range);
}

TEST(CimPathText, AReferenceMayComeWithoutTheColonAfterItsNamespace) {
    const CimPath path =
        CimPath::parse(R"(A.R={sw1.example.net:5988/root/cimv2B.K="x:y"},S={host/root/cimv2C.L="1"})");
    EXPECT_EQ(path.reference("R").className, "B");
    EXPECT_EQ(path.reference("R").key("K"), "x:y");
    EXPECT_EQ(path.reference("S").className, "C");
}

TEST(CimPathText, IdentityIgnoresNamesLetterCaseAndTheKeysOrder) {
    const std::string identity = CimPath::parse(R"(A.One="x",Two={B.K="v"})").identity();
    EXPECT_EQ(CimPath::parse(R"(n:a.TWO={m:b.k="v"},ONE="x")").identity(), identity);
    EXPECT_NE(CimPath::parse(R"(A.One="X",Two={B.K="v"})").identity(), identity);
    EXPECT_NE(CimPath::parse(R"(A.One="x",Two={B.K="w"})").identity(), identity);
}

TEST(CimPathText, WhatIsNoPathIsRefused) {
    for (const char* text : {"", "a b", R"(A.K="open)", R"(A.K={B.L="1")", R"(A.K="1"rest)", "A=1"}) {
        EXPECT_THROW(CimPath::parse(text), std::invalid_argument) << text;
    }
}

} // namespace
} // namespace e2e
