// The error counters of a link as properties, and the dump of a port record.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/statistics.h"
#include "tests/support/recording_broker.h"
#include "tests/support/stdout_capture.h"

namespace {

using test_support::printed_by;

class LinkErrorCounters : public testing::Test {
  protected:
    LinkErrorCounters() {
        // Word n of the row holds 100 * n.
        for (std::uint32_t word = 2; word < 28; ++word) {
            errors.counters[word - 2] = 100 * word;
        }
    }
    CMPIInstance* new_instance() {
        const CMPIObjectPath* path = broker.path("root/kesto", "KESTO_Statistics");
        return broker.cmpi()->eft->newInstance(broker.cmpi(), path, nullptr);
    }
    test_support::RecordingBroker broker;
    FcipLinkErrors errors{};
};

TEST_F(LinkErrorCounters, AreSetAsNineLongsFromWordTwoLowWordFirst) {
    const auto pair = [](std::uint64_t low, std::uint64_t high) { return low + (high << 32); };
    const test_support::Sets want{
        {"FcipLossofFcSynchs", CMPI_uint64, pair(200, 300)},
        {"FcipSfNotRcv", CMPI_uint64, pair(400, 500)},
        {"FcipSfRespNotRcv", CMPI_uint64, pair(600, 700)},
        {"FcipSfRespMismatch", CMPI_uint64, pair(800, 900)},
        {"FcipSfInvalidNonce", CMPI_uint64, pair(1000, 1100)},
        {"FcipDuplicateSfRcv", CMPI_uint64, pair(1200, 1300)},
        {"FcipSfInvalidWWN", CMPI_uint64, pair(1400, 1500)},
        {"FcipBB2LkaTimeOut", CMPI_uint64, pair(1600, 1700)},
        {"FcipSntpTimeStampExp", CMPI_uint64, pair(1800, 1900)},
    };
    CMPIInstance* instance = new_instance();
    CMPIInstance* returned = nullptr;
    EXPECT_EQ(printed_by([&] { returned = populate_fcip_statistics(instance, &errors); }),
              "Entering populate_fcip_statistics\nExiting populate_fcip_statistics\n");
    EXPECT_EQ(returned, instance);
    EXPECT_EQ(broker.recorded(instance).sets(), want);
    EXPECT_TRUE(broker.recorded(instance).filters().empty());
}

TEST_F(LinkErrorCounters, OfNoInstanceAreSetNowhere) {
    CMPIInstance* returned = new_instance();
    broker.clear_calls();
    EXPECT_EQ(printed_by([&] { returned = populate_fcip_statistics(nullptr, &errors); }),
              "Entering populate_fcip_statistics\n");
    EXPECT_EQ(returned, nullptr);
    EXPECT_TRUE(broker.calls().empty());
}

TEST_F(LinkErrorCounters, OfAnInstanceWithoutAHandleAreSetNowhere) {
    broker.fail_nth(test_support::Make::Instance, 1, test_support::Failure::WithoutHandle);
    CMPIInstance* instance = new_instance();
    ASSERT_EQ(broker.recorded(instance).kind(), test_support::Object::WithoutHandle);
    CMPIInstance* returned = nullptr;
    EXPECT_EQ(printed_by([&] { returned = populate_fcip_statistics(instance, &errors); }),
              "Entering populate_fcip_statistics\n");
    EXPECT_EQ(returned, instance);
    EXPECT_TRUE(broker.recorded(instance).sets().empty());
}

TEST(PrintErrors, ShowsFourWordsAndTheLowHalvesOfEightLongs) {
    std::vector<std::uint8_t> record(339, 0xEE);
    const auto put32 = [&record](std::size_t at, std::uint32_t value) {
        std::memcpy(record.data() + at, &value, sizeof value);
    };
    const auto put64 = [&record](std::size_t at, std::uint64_t value) {
        std::memcpy(record.data() + at, &value, sizeof value);
    };
    put32(259, 11);
    put32(263, 12);
    put32(267, 0x80000000);
    put32(271, 0xFFFFFFFF);
    put64(275, 21);
    put64(283, 0x0000000500000016); // the high half does not show
    put64(291, 23);
    put64(299, 0x80000000);
    put64(307, 25);
    put64(315, 26);
    put64(323, 27);
    put64(331, 0xFFFFFFFF00000000 + 1234);
    int last = 0;
    EXPECT_EQ(printed_by([&] { last = print_errors(record.data()); }),
              " 11 \n 12 \n -2147483648 \n -1 \n"
              " 21 \n 22 \n 23 \n -2147483648 \n 25 \n 26 \n 27 \n"
              " 1234 \n");
    EXPECT_EQ(last, 7) << "the characters of the last line";
}

} // namespace
