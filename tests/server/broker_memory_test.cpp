// Who owns what a provider makes, and what happens to what it gives back.
#include <cmpidt.h>
#include <cmpift.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "server/broker/array.h"
#include "server/broker/datetime.h"
#include "server/broker/enumeration.h"
#include "server/broker/instance.h"
#include "server/broker/named_lists.h"
#include "server/broker/object_path.h"
#include "server/broker/result.h"
#include "server/broker/string.h"
#include "server/model/result_sink.h"
#include "tests/server/broker_fixture.h"

namespace {

using namespace cimserver;

class Memory : public BrokerFixture {};

template <typename Object>
void expect_clones_outlive_the_request(Object* (*make)(const CMPIBroker*)) {
    const Broker broker([](const std::string&) {});
    Object* clone = nullptr;
    {
        const RequestScope scope;
        CMPIStatus rc{CMPI_RC_ERR_FAILED, nullptr};
        const Object* made = make(broker.handle());
        clone = made->ft->clone(made, &rc);
        EXPECT_EQ(rc.rc, CMPI_RC_OK);
    }
    const RequestScope scope;
    ASSERT_NE(clone, nullptr);
    EXPECT_NE(clone->hdl, nullptr);
    EXPECT_NE(broker.handle()->eft->toString(broker.handle(), clone, nullptr), nullptr);
    EXPECT_EQ(clone->ft->release(clone).rc, CMPI_RC_OK);
}

TEST_F(Memory, ClonesOutliveTheRequest) {
    expect_clones_outlive_the_request<CMPIString>([](auto* b) { return b->eft->newString(b, "s", nullptr); });
    expect_clones_outlive_the_request<CMPIObjectPath>(
        [](auto* b) { return b->eft->newObjectPath(b, "n", "c", nullptr); });
    expect_clones_outlive_the_request<CMPIInstance>(
        [](auto* b) { return b->eft->newInstance(b, b->eft->newObjectPath(b, "n", "c", nullptr), nullptr); });
    expect_clones_outlive_the_request<CMPIArray>(
        [](auto* b) { return b->eft->newArray(b, 1, CMPI_string, nullptr); });
    expect_clones_outlive_the_request<CMPIDateTime>([](auto* b) { return b->eft->newDateTime(b, nullptr); });
    expect_clones_outlive_the_request<CMPIArgs>([](auto* b) { return b->eft->newArgs(b, nullptr); });
    expect_clones_outlive_the_request<CMPIEnumeration>([](auto*) { return make_enumeration(CMPI_ref, {}); });
    expect_clones_outlive_the_request<CMPIContext>(
        [](auto*) -> CMPIContext* { return make_pooled<ContextObject>(ContextContent{}); });
    expect_clones_outlive_the_request<CMPIResult>(
        [](auto*) -> CMPIResult* { return make_pooled<ResultObject>(ResultContent{}); });
    expect_clones_outlive_the_request<CMPIError>([](auto* b) {
        return b->eft->newCMPIError(b, "", "", "", ErrorSevLow, ErrorProbCauseOther, CMPI_RC_OK, nullptr);
    });
    expect_clones_outlive_the_request<CMPIPropertyList>(
        [](auto* b) { return b->eft->newPropertyList(b, nullptr, nullptr); });
}

TEST_F(Memory, ClonesAreIndependent) {
    CMPIInstance* made = instance();
    made->ft->setProperty(made, "Colour", chars("red"), CMPI_chars);
    CMPIInstance* clone = made->ft->clone(made, nullptr);
    made->ft->setProperty(made, "Colour", chars("blue"), CMPI_chars);
    EXPECT_EQ(property_text(clone, "Colour"), "red");
    clone->ft->release(clone);
}

TEST_F(Memory, AReleasedObjectAnswersInvalidHandle) {
    CMPIInstance* made = instance();
    EXPECT_EQ(made->ft->release(made).rc, CMPI_RC_OK);
    EXPECT_EQ(made->hdl, nullptr);
    EXPECT_EQ(made->ft->release(made).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(made->ft->setProperty(made, "Colour", chars("red"), CMPI_chars).rc, CMPI_RC_ERR_INVALID_HANDLE);
    made->ft->getPropertyCount(made, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(made->ft->clone(made, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
}

// Counts what arrives.
class Counter : public ResultSink {
  public:
    void deliver(const Instance&) override { ++instances; }
    void deliver(const ObjectPath&) override { ++paths; }
    int instances = 0;
    int paths = 0;
};

class Results : public BrokerFixture {
  protected:
    Results() : result(make_pooled<ResultObject>(ResultContent{})) { result->content().sink = &arrived; }

    Counter arrived;
    ResultObject* result;
};

TEST_F(Results, WhatIsNoObjectIsIgnoredAndCounted) {
    EXPECT_EQ(result->ft->returnInstance(result, nullptr).rc, CMPI_RC_OK);
    EXPECT_EQ(result->ft->returnInstance(result, minus_one<CMPIInstance>()).rc, CMPI_RC_OK);
    EXPECT_EQ(result->ft->returnObjectPath(result, nullptr).rc, CMPI_RC_OK);
    EXPECT_EQ(result->ft->returnObjectPath(result, minus_one<CMPIObjectPath>()).rc, CMPI_RC_OK);
    EXPECT_EQ(result->content().ignored, 4U);
    EXPECT_EQ(arrived.instances + arrived.paths, 0);
}

TEST_F(Results, ObjectsLongHandedOverAreReleased) {
    CMPIInstance* first = instance();
    result->ft->returnInstance(result, first);
    for (std::size_t i = 1; i < RequestPool::KEPT_AFTER_HAND_OVER; ++i) {
        result->ft->returnInstance(result, instance());
    }
    EXPECT_NE(first->hdl, nullptr);
    result->ft->returnInstance(result, instance());
    EXPECT_EQ(first->hdl, nullptr);
    // It is ignored like any other that is no object.
    EXPECT_EQ(result->ft->returnInstance(result, first).rc, CMPI_RC_OK);
    EXPECT_EQ(result->content().ignored, 1U);
}

TEST_F(Results, AnObjectInUseStaysWhole) {
    CMPIInstance* reused = instance();
    for (std::size_t i = 0; i < 3 * RequestPool::KEPT_AFTER_HAND_OVER; ++i) {
        result->ft->returnInstance(result, reused);
        result->ft->returnInstance(result, instance());
    }
    EXPECT_NE(reused->hdl, nullptr);
    EXPECT_EQ(result->content().ignored, 0U);
}

TEST_F(Results, ClonesHandedOverStayTheirMakers) {
    const CMPIInstance* made = instance();
    CMPIInstance* clone = made->ft->clone(made, nullptr);
    result->ft->returnInstance(result, clone);
    for (std::size_t i = 0; i < 2 * RequestPool::KEPT_AFTER_HAND_OVER; ++i) {
        result->ft->returnInstance(result, instance());
    }
    EXPECT_NE(clone->hdl, nullptr);
    EXPECT_EQ(clone->ft->release(clone).rc, CMPI_RC_OK);
}

TEST_F(Results, DoneIsNotNeededAndDataIsNotSupported) {
    CMPIValue value{};
    EXPECT_EQ(result->ft->returnData(result, &value, CMPI_uint32).rc, CMPI_RC_ERR_NOT_SUPPORTED);
    value.inst = instance();
    EXPECT_EQ(result->ft->returnData(result, &value, CMPI_instance).rc, CMPI_RC_OK);
    value.ref = path();
    EXPECT_EQ(result->ft->returnData(result, &value, CMPI_ref).rc, CMPI_RC_OK);
    EXPECT_EQ(arrived.instances, 1);
    EXPECT_EQ(arrived.paths, 1);
    EXPECT_EQ(result->ft->returnDone(result).rc, CMPI_RC_OK);
}

TEST_F(Memory, PlainMemoryIsClearedAndGrows) {
    const CMPIBrokerMemFT* memory = handle->mft;
    auto* block = static_cast<char*>(memory->cmpiCalloc(handle, 4, 4));
    EXPECT_EQ(std::string(block, 16), std::string(16, '\0'));
    std::memset(block, 'x', 16);
    block = static_cast<char*>(memory->cmpiRealloc(handle, block, 1000));
    EXPECT_EQ(std::string(block, 16), std::string(16, 'x'));
    memory->cmpiFree(handle, block);
    EXPECT_STREQ(memory->cmpiStrDup(handle, "text"), "text");
    EXPECT_NE(memory->cmpiMalloc(handle, 0), nullptr);
    memory->cmpiFree(handle, nullptr);
    EXPECT_EQ(memory->cmpiCalloc(handle, SIZE_MAX, 2), nullptr);
}

TEST_F(Memory, AMarkFreesWhatCameAfterIt) {
    const CMPIBrokerMemFT* memory = handle->mft;
    CMPIObjectPath* before = path();
    const std::size_t size = RequestPool::current().size();
    const CMPIGcStat* mark = memory->mark(handle, &rc);
    memory->cmpiMalloc(handle, 10);
    instance();
    EXPECT_EQ(memory->release(handle, mark).rc, CMPI_RC_OK);
    EXPECT_EQ(RequestPool::current().size(), size);
    EXPECT_EQ(text(before->ft->getClassName(before, nullptr)), "A_Class");
}

TEST_F(Memory, FreeingAnObjectIsReleasingIt) {
    CMPIInstance* made = instance();
    handle->mft->freeInstance(handle, made);
    EXPECT_EQ(made->hdl, nullptr);
    handle->mft->freeString(handle, nullptr);
}

TEST_F(Memory, RequestsNest) {
    const std::size_t outer = RequestPool::current().size();
    {
        const RequestScope inner;
        path();
        EXPECT_EQ(RequestPool::current().size(), 1U);
    }
    EXPECT_EQ(RequestPool::current().size(), outer);
}

} // namespace
