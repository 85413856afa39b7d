#include "tests/server/probe_service.h"

using namespace cimserver;

ProbeService::ProbeService()
    : broker([this](const std::string& line) { logged.push_back(line); }),
      provider(PROBE_PROVIDER, "Probe", broker),
      operations(provider, AssociationTable({{"Probe_Link", {"Probe_Thing"}},
                                             {"Probe_Twin", {"Probe_Thing"}},
                                             {"Probe_Part", {"Probe_Thing", "Probe_Piece"}},
                                             {"Probe_Denied", {}}})),
      service(operations, {{"root/cimv2", "root/Other"}, "testhost", [this](const std::string& line) {
                               reported.push_back(line);
                           }}) {
    broker.serve([operations = operations](const Request& request, ResultSink& sink) {
        return operations.perform(request, sink);
    });
}

Response ProbeService::ask(const std::string& method, const std::string& parameters) const {
    const HttpReply reply = send(post(imethod_call(method, parameters), method));
    EXPECT_EQ(reply.status, 200U) << reply.body;
    Response response(reply.body);
    EXPECT_TRUE(response.well_formed()) << reply.body;
    return response;
}

Response ProbeService::ask_class(const std::string& method, const std::string& name) const {
    return ask(method, parameter("ClassName", class_name(name)));
}
