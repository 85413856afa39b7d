// Calls of a provider back into the server, beyond those that the probe provider makes.
#include <cmpidt.h>
#include <cmpift.h>

#include <string>

#include "server/broker/named_lists.h"
#include "server/broker/request_pool.h"
#include "tests/server/probe_service.h"

namespace {

using namespace cimserver;

class BrokerCalls : public ProbeService {
  protected:
    CMPIObjectPath* thing(const char* name, const char* className = "Probe_Thing") {
        CMPIObjectPath* path = handle->eft->newObjectPath(handle, "root/cimv2", className, nullptr);
        path->ft->addKey(path, "Name", reinterpret_cast<const CMPIValue*>(name), CMPI_chars);
        return path;
    }
    static unsigned count(const CMPIEnumeration* found) {
        unsigned counted = 0;
        for (; found != nullptr && (found->ft->hasNext(found, nullptr) != 0); ++counted) {
            found->ft->getNext(found, nullptr);
        }
        return counted;
    }

    const CMPIBroker* handle = broker.handle();
    RequestScope request;
    CMPIContext* context = make_pooled<ContextObject>(ContextContent{});
    CMPIStatus rc{};
};

TEST_F(BrokerCalls, InstancesComeAsClientsGetThem) {
    EXPECT_EQ(count(handle->bft->enumerateInstances(handle, context, thing("", "Probe_Thing"), nullptr, &rc)),
              2U);
    EXPECT_EQ(count(handle->bft->enumerateInstanceNames(handle, context, thing(""), &rc)), 2U);
    const char* wanted[] = {"Colour", nullptr};
    const CMPIInstance* got = handle->bft->getInstance(handle, context, thing("x"), wanted, &rc);
    ASSERT_NE(got, nullptr);
    EXPECT_EQ(got->ft->getPropertyCount(got, nullptr), 2U);
}

TEST_F(BrokerCalls, ErrorsComeBackWithTheirMessages) {
    EXPECT_EQ(handle->bft->getInstance(handle, context, thing("missing"), nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(handle->bft->enumerateInstances(handle, context, thing("", "Probe_Failing"), nullptr, &rc),
              nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_ACCESS_DENIED);
    EXPECT_STREQ(rc.msg->ft->getCharPtr(rc.msg, nullptr), "the <door> is locked");
}

TEST_F(BrokerCalls, InstancesAreCreatedModifiedAndDeleted) {
    const CMPIInstance* instance = handle->eft->newInstance(handle, thing("new"), nullptr);
    const CMPIObjectPath* created = handle->bft->createInstance(handle, context, thing("new"), instance, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_OK);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(handle->bft->modifyInstance(handle, context, thing("other"), instance, nullptr).rc,
              CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(handle->bft->deleteInstance(handle, context, thing("one")).rc, CMPI_RC_OK);
    EXPECT_EQ(handle->bft->deleteInstance(handle, context, thing("other")).rc, CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(BrokerCalls, QueriesRun) {
    EXPECT_EQ(count(handle->bft->execQuery(handle, context, thing(""), "select *", "WQL", &rc)), 1U);
    EXPECT_EQ(handle->bft->execQuery(handle, context, thing(""), "select *", "CQL", &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, TraversalsWithoutAClassAreCompletedAsForClients) {
    EXPECT_EQ(count(handle->bft->associatorNames(handle, context, thing("one"), nullptr, nullptr, nullptr,
                                                 nullptr, &rc)),
              2U);
    EXPECT_EQ(count(handle->bft->references(handle, context, thing("one"), nullptr, nullptr, nullptr, &rc)),
              2U);
}

TEST_F(BrokerCalls, WhatIsNotOfferedIsNotSupported) {
    const CMPIBrokerFT* table = handle->bft;
    CMPIObjectPath* path = thing("one");
    handle->bft->invokeMethod(handle, context, path, "Method", nullptr, nullptr, &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    table->getProperty(handle, context, path, "Colour", &rc);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(table->setProperty(handle, context, path, "Colour", nullptr, CMPI_string).rc,
              CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(table->deliverIndication(handle, context, "root", nullptr).rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(table->enumerateInstancesFiltered(handle, context, path, nullptr, "", "", &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, NothingIsServedBeforeTheServer) {
    const Broker early([](const std::string&) {});
    const CMPIBroker* other = early.handle();
    EXPECT_EQ(other->bft->enumerateInstances(other, context, thing(""), nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerCalls, ObjectsThatAreNoneAreRefused) {
    EXPECT_EQ(handle->bft->enumerateInstances(handle, context, nullptr, nullptr, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(handle->bft->modifyInstance(handle, context, thing("one"), nullptr, nullptr).rc,
              CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(BrokerCalls, ProvidersThatCannotBeMadeAreRefused) {
    EXPECT_THROW(Provider(PROBE_PROVIDER, "Unmakeable", broker), ProviderError);
    EXPECT_THROW(Provider(PROBE_PROVIDER, "NoSuchName", broker), ProviderError);
    EXPECT_THROW(Provider("/nonexistent.so", "Probe", broker), ProviderError);
}

} // namespace
