// The server without its HTTP front, serving the probe provider.
#ifndef KESTO_TESTS_SERVER_PROBE_SERVICE_H
#define KESTO_TESTS_SERVER_PROBE_SERVICE_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "server/broker/broker.h"
#include "server/cimxml/service.h"
#include "server/http/message.h"
#include "server/provider/operations.h"
#include "server/provider/provider.h"
#include "server/provider/served.h"
#include "tests/server/cimxml_request.h"
#include "tests/server/response.h"

// The classes of probe.mof in two namespaces, served by one provider as probe.reg says.
std::vector<cimserver::ServedNameSpace> probe_name_spaces(const cimserver::Provider& provider);

class ProbeService : public testing::Test {
  protected:
    ProbeService();

    // Runs an operation with these parameters.
    Response ask(const std::string& method, const std::string& parameters) const;
    // The same for a class alone: EnumerateInstances and the like.
    Response ask_class(const std::string& method, const std::string& name) const;
    cimserver::HttpReply send(const cimserver::HttpRequest& request) const { return service.answer(request); }

    std::vector<std::string> logged;
    std::vector<std::string> reported;
    cimserver::Broker broker;
    cimserver::Provider provider;
    cimserver::Operations operations;
    cimserver::CimXmlService service;
};

#endif
