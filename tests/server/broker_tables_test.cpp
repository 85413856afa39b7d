// No slot of any function table is empty: a provider may call whatever the interface has.
#include <cmpidt.h>
#include <cmpift.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "server/broker/array.h"
#include "server/broker/broker.h"
#include "server/broker/datetime.h"
#include "server/broker/enumeration.h"
#include "server/broker/error.h"
#include "server/broker/instance.h"
#include "server/broker/named_lists.h"
#include "server/broker/object_path.h"
#include "server/broker/property_list.h"
#include "server/broker/result.h"
#include "server/broker/string.h"

namespace {

using namespace cimserver;

// The tables are records of a few numbers and then pointers; `firstPointer` is where the pointers begin.
template <typename Table>
void expect_no_empty_slot(const Table* table, std::size_t firstPointer) {
    ASSERT_NE(table, nullptr);
    ASSERT_EQ((sizeof(Table) - firstPointer) % sizeof(void*), 0U);
    for (std::size_t at = firstPointer; at < sizeof(Table); at += sizeof(void*)) {
        const void* slot = nullptr;
        std::memcpy(&slot, reinterpret_cast<const char*>(table) + at, sizeof slot);
        EXPECT_NE(slot, nullptr) << "slot " << (at - firstPointer) / sizeof(void*);
    }
}

class BrokerTables : public testing::Test {
  protected:
    Broker broker{[](const std::string&) {}};
    const CMPIBroker* handle = broker.handle();
};

TEST_F(BrokerTables, CallsHaveNoEmptySlot) {
    expect_no_empty_slot(handle->bft, offsetof(CMPIBrokerFT, brokerName));
}
TEST_F(BrokerTables, ObjectsHaveNoEmptySlot) {
    expect_no_empty_slot(handle->eft, offsetof(CMPIBrokerEncFT, newInstance));
}
TEST_F(BrokerTables, ThreadsHaveNoEmptySlot) {
    expect_no_empty_slot(handle->xft, offsetof(CMPIBrokerExtFT, resolveFileName));
}
TEST_F(BrokerTables, MemoryHasNoEmptySlot) {
    expect_no_empty_slot(handle->mft, offsetof(CMPIBrokerMemFT, mark));
}

template <typename Handle>
class ObjectTables : public testing::Test {};

using Handles = testing::Types<CMPIString, CMPIArray, CMPIDateTime, CMPIObjectPath, CMPIInstance, CMPIArgs,
                               CMPIEnumeration, CMPIContext, CMPIResult, CMPIError, CMPIPropertyList>;
TYPED_TEST_SUITE(ObjectTables, Handles);

TYPED_TEST(ObjectTables, HaveNoEmptySlot) {
    const auto* table = FunctionTableOf<TypeParam>::table();
    expect_no_empty_slot(table, offsetof(std::remove_cvref_t<decltype(*table)>, release));
    EXPECT_EQ(table->ftVersion, CMPICurrentVersion);
}

TEST_F(BrokerTables, TheBrokerSaysWhatItIs) {
    EXPECT_EQ(handle->bft->brokerVersion, CMPIVersion210);
    EXPECT_STREQ(handle->bft->brokerName, "kesto-cimserver");
    constexpr unsigned TRAVERSAL = CMPI_MB_AssociationTraversal;
    constexpr unsigned INDICATIONS = CMPI_MB_Indications ^ CMPI_MB_BasicRead;
    EXPECT_EQ(handle->bft->brokerCapabilities & TRAVERSAL, TRAVERSAL);
    EXPECT_EQ(handle->bft->brokerCapabilities & INDICATIONS, 0U);
}

} // namespace
