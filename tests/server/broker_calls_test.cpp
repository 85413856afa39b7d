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
        for (; (found != nullptr) && (CMHasNext(found, nullptr) != 0); ++counted)
            CMGetNext(found, nullptr);
        return counted;
    }

    const CMPIBroker* face = broker.face();
    RequestScope request;
    CMPIContext* context = make_pooled<ContextObject>(ContextContent{});
    CMPIStatus rc{};
};

TEST_F(BrokerCalls, InstancesComeAsClientsGetThem) {
    EXPECT_EQ(count(CBEnumInstances(face, context, thing("", "Probe_Thing"), nullptr, &rc)), 2U);
    EXPECT_EQ(count(CBEnumInstanceNames(face, context, thing(""), &rc)), 2U);
    const char* wanted[] = {"Colour", nullptr};
    const CMPIInstance* got = CBGetInstance(face, context, thing("x"), wanted, &rc);
    ASSERT_NE(got, nullptr);
    EXPECT_EQ(CMGetPropertyCount(got, nullptr), 2U);
}

TEST_F(BrokerCalls, ErrorsComeBackWithTheirMessages) {
    EXPECT_EQ(CBGetInstance(face, context, thing("missing"), nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(CBEnumInstances(face, context, thing("", "Probe_Failing"), nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_ACCESS_DENIED);
    EXPECT_STREQ(CMGetCharPtr(rc.msg), "the <door> is locked");
}

TEST_F(BrokerCalls, InstancesAreCreatedModifiedAndDeleted) {
    const CMPIInstance* instance = CMNewInstance(face, thing("new"), nullptr);
    const CMPIObjectPath* created = CBCreateInstance(face, context, thing("new"), instance, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(CBModifyInstance(face, context, thing("other"), instance, nullptr).rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(CBDeleteInstance(face, context, thing("one")).rc, CMPI_RC_OK);
    EXPECT_EQ(CBDeleteInstance(face, context, thing("other")).rc, CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(BrokerCalls, QueriesRun) {
    EXPECT_EQ(count(CBExecQuery(face, context, thing(""), "select *", "WQL", &rc)), 1U);
    EXPECT_EQ(CBExecQuery(face, context, thing(""), "select *", "CQL", &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, TraversalsWithoutAClassAreCompletedAsForClients) {
    EXPECT_EQ(count(CBAssociatorNames(face, context, thing("one"), nullptr, nullptr, nullptr, nullptr, &rc)),
              2U);
    EXPECT_EQ(count(CBReferences(face, context, thing("one"), nullptr, nullptr, nullptr, &rc)), 2U);
}

TEST_F(BrokerCalls, WhatIsNotOfferedIsNotSupported) {
    const CMPIBrokerFT* calls = face->bft;
    CMPIObjectPath* path = thing("one");
    CBInvokeMethod(face, context, path, "Method", nullptr, nullptr, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    calls->getProperty(face, context, path, "Colour", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(calls->setProperty(face, context, path, "Colour", nullptr, CMPI_string).rc,
              CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(calls->deliverIndication(face, context, "root", nullptr).rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(calls->enumerateInstancesFiltered(face, context, path, nullptr, "", "", &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, NothingIsServedBeforeTheServer) {
    const Broker early([](const std::string&) {});
    EXPECT_EQ(CBEnumInstances(early.face(), context, thing(""), nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, ObjectsThatAreNoneAreRefused) {
    EXPECT_EQ(CBEnumInstances(face, context, nullptr, nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(CBModifyInstance(face, context, thing("one"), nullptr, nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(BrokerCalls, ProvidersThatCannotBeMadeAreRefused) {
    EXPECT_THROW(Provider(PROBE_PROVIDER, "Unmakeable", broker), ProviderError);
    EXPECT_THROW(Provider(PROBE_PROVIDER, "NoSuchName", broker), ProviderError);
    EXPECT_THROW(Provider("/nonexistent.so", "Probe", broker), ProviderError);
}

} // namespace
