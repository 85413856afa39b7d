// Calls of a provider back into the server, beyond those that the probe provider makes.
#include <cmpimacs.h>

#include "server/cmpi_memory.h"
#include "server/cmpi_objects.h"
#include "tests/server/probe_service.h"

namespace {

using namespace cimserver;

class BrokerCalls : public ProbeService {
  protected:
    CMPIObjectPath* thing(const char* name, const char* className = "Probe_Thing") {
        CMPIObjectPath* path = CMNewObjectPath(face, "root/cimv2", className, nullptr);
        CMAddKey(path, "Name", reinterpret_cast<const CMPIValue*>(name), CMPI_chars);
        return path;
    }
    static unsigned count(const CMPIEnumeration* found) {
        unsigned counted = 0;
        for (; found && CMHasNext(found, nullptr); ++counted)
            CMGetNext(found, nullptr);
        return counted;
    }

    const CMPIBroker* face = broker_.face();
    RequestScope request_;
    CMPIContext* context_ = makePooled<ContextObject>(ContextContent{});
    CMPIStatus rc_{};
};

TEST_F(BrokerCalls, InstancesComeAsClientsGetThem) {
    EXPECT_EQ(count(CBEnumInstances(face, context_, thing("", "Probe_Thing"), nullptr, &rc_)), 2U);
    EXPECT_EQ(count(CBEnumInstanceNames(face, context_, thing(""), &rc_)), 2U);
    const char* wanted[] = {"Colour", nullptr};
    const CMPIInstance* got = CBGetInstance(face, context_, thing("x"), wanted, &rc_);
    ASSERT_NE(got, nullptr);
    EXPECT_EQ(CMGetPropertyCount(got, nullptr), 2U);
}

TEST_F(BrokerCalls, ErrorsComeBackWithTheirMessages) {
    EXPECT_EQ(CBGetInstance(face, context_, thing("missing"), nullptr, &rc_), nullptr);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(CBEnumInstances(face, context_, thing("", "Probe_Failing"), nullptr, &rc_), nullptr);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_ACCESS_DENIED);
    EXPECT_STREQ(CMGetCharPtr(rc_.msg), "the <door> is locked");
}

TEST_F(BrokerCalls, InstancesAreCreatedModifiedAndDeleted) {
    const CMPIInstance* instance = CMNewInstance(face, thing("new"), nullptr);
    const CMPIObjectPath* created = CBCreateInstance(face, context_, thing("new"), instance, &rc_);
    EXPECT_EQ(rc_.rc, CMPI_RC_OK);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(CBModifyInstance(face, context_, thing("other"), instance, nullptr).rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(CBDeleteInstance(face, context_, thing("one")).rc, CMPI_RC_OK);
    EXPECT_EQ(CBDeleteInstance(face, context_, thing("other")).rc, CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(BrokerCalls, QueriesRun) {
    EXPECT_EQ(count(CBExecQuery(face, context_, thing(""), "select *", "WQL", &rc_)), 1U);
    EXPECT_EQ(CBExecQuery(face, context_, thing(""), "select *", "CQL", &rc_), nullptr);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, TraversalsWithoutAClassAreCompletedAsForClients) {
    EXPECT_EQ(
        count(CBAssociatorNames(face, context_, thing("one"), nullptr, nullptr, nullptr, nullptr, &rc_)), 2U);
    EXPECT_EQ(count(CBReferences(face, context_, thing("one"), nullptr, nullptr, nullptr, &rc_)), 2U);
}

TEST_F(BrokerCalls, WhatIsNotOfferedIsNotSupported) {
    const CMPIBrokerFT* calls = face->bft;
    CMPIObjectPath* path = thing("one");
    CBInvokeMethod(face, context_, path, "Method", nullptr, nullptr, &rc_);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    calls->getProperty(face, context_, path, "Colour", &rc_);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(calls->setProperty(face, context_, path, "Colour", nullptr, CMPI_string).rc,
              CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(calls->deliverIndication(face, context_, "root", nullptr).rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(calls->enumerateInstancesFiltered(face, context_, path, nullptr, "", "", &rc_), nullptr);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, NothingIsServedBeforeTheServer) {
    const Broker early([](const std::string&) {});
    EXPECT_EQ(CBEnumInstances(early.face(), context_, thing(""), nullptr, &rc_), nullptr);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, ObjectsThatAreNoneAreRefused) {
    EXPECT_EQ(CBEnumInstances(face, context_, nullptr, nullptr, &rc_), nullptr);
    EXPECT_EQ(rc_.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(CBModifyInstance(face, context_, thing("one"), nullptr, nullptr).rc,
              CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(BrokerCalls, ProvidersThatCannotBeMadeAreRefused) {
    EXPECT_THROW(Provider(PROBE_PROVIDER, "Unmakeable", broker_), ProviderError);
    EXPECT_THROW(Provider(PROBE_PROVIDER, "NoSuchName", broker_), ProviderError);
    EXPECT_THROW(Provider("/nonexistent.so", "Probe", broker_), ProviderError);
}

} // namespace
