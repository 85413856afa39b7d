#include "server/model/cim_model.h"

#include <cmpidt.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "server/model/types.h"

namespace {

using namespace cimserver;

ObjectPath path(const std::string& className, std::initializer_list<std::pair<const char*, Value>> keys = {},
                const std::string& nameSpace = "") {
    ObjectPath result{"", nameSpace, className, {}};
    for (const auto& [name, value] : keys) {
        result.keys.set(name, value);
    }
    return result;
}

Value text(const char* value) {
    return Value::text(value);
}

TEST(ObjectPaths, MayBeOneObjectWhateverGoesWithoutSaying) {
    const ObjectPath full = path("A_Class", {{"Name", text("n")}, {"SystemName", text("s")}}, "root/cimv2");
    EXPECT_TRUE(may_be_same_object(full, full));
    EXPECT_TRUE(may_be_same_object(full, path("a_CLASS", {{"NAME", text("n")}})));
    EXPECT_TRUE(may_be_same_object(full, path("A_Class", {{"Name", text("n")}}, "ROOT/cimv2/")));
    EXPECT_FALSE(may_be_same_object(full, path("A_Class", {{"Name", text("n")}}, "root/other")));
    EXPECT_FALSE(may_be_same_object(full, path("A_Class", {{"Name", text("N")}})));
    EXPECT_FALSE(may_be_same_object(full, path("B_Class", {{"Name", text("n")}})));
    EXPECT_FALSE(may_be_same_object(full, path("A_Class", {{"Other", text("n")}})));
    EXPECT_FALSE(may_be_same_object(full, path("A_Class")));
    EXPECT_TRUE(may_be_same_object(path("A_Class"), path("A_CLASS")));
}

TEST(ObjectPaths, HostsDoNotDistinguishObjects) {
    ObjectPath here = path("A_Class", {{"Name", text("n")}});
    ObjectPath there = here;
    here.host = "127.0.0.1";
    there.host = "switch1.example.net";
    EXPECT_TRUE(may_be_same_object(here, there));
    EXPECT_TRUE(is_same_path(here, there));
}

TEST(ObjectPaths, AreTheSameWithTheSameKeysOnly) {
    const ObjectPath full = path("A_Class", {{"Name", text("n")}, {"SystemName", text("s")}});
    EXPECT_TRUE(is_same_path(full, path("a_class", {{"SYSTEMNAME", text("s")}, {"name", text("n")}})));
    EXPECT_FALSE(is_same_path(full, path("A_Class", {{"Name", text("n")}})));
}

TEST(ObjectPaths, NumbersCompareByValueAndReferencesByWhatTheyName) {
    const auto unsignedKey = path("A", {{"N", Value::integer(CMPI_uint16, std::uint64_t{5})}});
    EXPECT_TRUE(is_same_path(unsignedKey, path("A", {{"N", Value::integer(CMPI_sint64, std::int64_t{5})}})));
    EXPECT_FALSE(
        is_same_path(unsignedKey, path("A", {{"N", Value::integer(CMPI_sint64, std::int64_t{-5})}})));
    EXPECT_FALSE(is_same_path(unsignedKey, path("A", {{"N", text("5")}})));
    const auto link = path("L", {{"End", Value::reference(path("A", {{"N", text("1")}}, "root"))}});
    EXPECT_TRUE(is_same_path(link, path("L", {{"End", Value::reference(path("a", {{"n", text("1")}}))}})));
    EXPECT_FALSE(is_same_path(link, path("L", {{"End", Value::reference(path("A", {{"N", text("2")}}))}})));
}

TEST(ObjectPaths, ReadLikePeopleWriteThem) {
    ObjectPath shown = path(
        "A_Class",
        {{"Name", text("a \"b\" \\c")}, {"Ref", Value::reference(path("B"))}, {"Flag", Value::boolean(true)}},
        "root/cimv2");
    shown.host = "h";
    EXPECT_EQ(shown.to_string(), R"(//h/root/cimv2:A_Class.Name="a \"b\" \\c",Ref=(B),Flag=TRUE)");
}

TEST(Reals, HaveAPointAndReadBackTheSame) {
    EXPECT_EQ(real_text(0, CMPI_real64), "0.0");
    EXPECT_EQ(real_text(-2.5, CMPI_real64), "-2.5");
    EXPECT_EQ(real_text(1e300, CMPI_real64), "1.0e+300");
    EXPECT_EQ(real_text(static_cast<double>(0.1F), CMPI_real32), "0.1");
    EXPECT_EQ(real_text(std::numeric_limits<double>::infinity(), CMPI_real64), "INF");
    EXPECT_EQ(real_text(-std::numeric_limits<double>::infinity(), CMPI_real64), "-INF");
    EXPECT_EQ(real_text(std::numeric_limits<double>::quiet_NaN(), CMPI_real64), "NaN");
}

TEST(Scalars, AreReadWithinTheRangeOfTheirType) {
    EXPECT_TRUE(parse_scalar("255", CMPI_uint8));
    EXPECT_FALSE(parse_scalar("256", CMPI_uint8));
    EXPECT_FALSE(parse_scalar("-1", CMPI_uint8));
    EXPECT_TRUE(parse_scalar("-128", CMPI_sint8));
    EXPECT_FALSE(parse_scalar("-129", CMPI_sint8));
    EXPECT_FALSE(parse_scalar("128", CMPI_sint8));
    EXPECT_TRUE(parse_scalar("18446744073709551615", CMPI_uint64));
    EXPECT_FALSE(parse_scalar("18446744073709551616", CMPI_uint64));
    EXPECT_EQ(std::get<std::int64_t>(parse_scalar("-9223372036854775808", CMPI_sint64)->content),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(std::get<std::uint64_t>(parse_scalar("0xff", CMPI_uint16)->content), 255U);
    for (const char* wrong : {"", "+", "-", "0x", "1 2", "--1", "1.0", "abc"}) {
        EXPECT_FALSE(parse_scalar(wrong, CMPI_sint32)) << wrong;
    }
}

TEST(Scalars, OfOtherTypes) {
    EXPECT_EQ(std::get<double>(parse_scalar("+1.5", CMPI_real32)->content), 1.5);
    EXPECT_FALSE(parse_scalar("1.5x", CMPI_real64));
    EXPECT_EQ(std::get<std::uint64_t>(parse_scalar("\xE2\x82\xAC", CMPI_char16)->content), 0x20ACU);
    EXPECT_FALSE(parse_scalar("ab", CMPI_char16));
    EXPECT_FALSE(parse_scalar("\xF0\x9F\x92\xA1", CMPI_char16));
    EXPECT_TRUE(parse_scalar("20240229123456.000789+060", CMPI_dateTime));
    EXPECT_FALSE(parse_scalar("today", CMPI_dateTime));
    EXPECT_FALSE(parse_scalar("yes", CMPI_boolean));
}

} // namespace
