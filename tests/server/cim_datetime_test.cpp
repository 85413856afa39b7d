#include "server/model/datetime.h"

#include <gtest/gtest.h>

namespace {

using cimserver::CimDateTime;

TEST(CimDateTime, PointsInTimeKeepTheirOffset) {
    const auto time = CimDateTime::parse("20240229123456.000789+060");
    ASSERT_TRUE(time);
    EXPECT_FALSE(time->interval);
    EXPECT_EQ(time->microseconds, 1709206496000789U);
    EXPECT_EQ(time->to_string(), "20240229123456.000789+060");
    EXPECT_EQ(CimDateTime::parse("20231231235959.999999-300")->to_string(), "20231231235959.999999-300");
}

TEST(CimDateTime, Intervals) {
    const auto interval = CimDateTime::parse("00000010010203.000004:000");
    ASSERT_TRUE(interval);
    EXPECT_TRUE(interval->interval);
    EXPECT_EQ(interval->microseconds, ((10ULL * 86400) + 3723) * 1000000 + 4);
    EXPECT_EQ(interval->to_string(), "00000010010203.000004:000");
}

TEST(CimDateTime, AnythingElseIsRefused) {
    for (const char* wrong :
         {"", "20240229123456.000789+06", "20240229123456,000789+060", "20230229123456.000789+060",
          "20240229243456.000789+060", "2024022912a456.000789+060", "20240229123456.000789*060",
          "00000010010203.000004:001", "19691231235959.000000+000"}) {
        EXPECT_FALSE(CimDateTime::parse(wrong)) << wrong;
    }
}

} // namespace
