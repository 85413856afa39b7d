// A broker outside of any server, and a request's pool to make objects in.
#ifndef KESTO_TESTS_SERVER_BROKER_FIXTURE_H
#define KESTO_TESTS_SERVER_BROKER_FIXTURE_H

#include <cmpidt.h>
#include <cmpift.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "server/broker/broker.h"
#include "server/broker/request_pool.h"

class BrokerFixture : public testing::Test {
  protected:
    static const CMPIValue* chars(const char* text) { return reinterpret_cast<const CMPIValue*>(text); }
    template <typename Object>
    static Object* minus_one() {
        return reinterpret_cast<Object*>(std::intptr_t{-1}); // NOLINT(performance-no-int-to-ptr)
    }
    CMPIObjectPath* path(const char* className = "A_Class") {
        return handle->eft->newObjectPath(handle, "root/test", className, nullptr);
    }
    CMPIInstance* instance() { return handle->eft->newInstance(handle, path(), nullptr); }
    static std::string text(const CMPIString* string) { return string->ft->getCharPtr(string, nullptr); }
    static std::string class_of(const CMPIObjectPath* path) {
        return text(path->ft->getClassName(path, nullptr));
    }
    static std::string property_text(const CMPIInstance* of, const char* name) {
        return text(of->ft->getProperty(of, name, nullptr).value.string);
    }

    std::vector<std::string> logged;
    cimserver::Broker broker{[this](const std::string& line) { logged.push_back(line); }};
    const CMPIBroker* handle = broker.handle();
    cimserver::RequestScope request;
    CMPIStatus rc{};
};

#endif
