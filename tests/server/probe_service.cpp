#include "tests/server/probe_service.h"

using namespace cimserver;

ProbeService::ProbeService()
    : broker_([this](const std::string& line) { logged_.push_back(line); }),
      provider_(PROBE_PROVIDER, "Probe", broker_),
      calls_(provider_),
      operations_(calls_, AssociationTable({{"Probe_Link", {"Probe_Thing"}},
                                            {"Probe_Twin", {"Probe_Thing"}},
                                            {"Probe_Part", {"Probe_Thing", "Probe_Piece"}},
                                            {"Probe_Denied", {}}})),
      service_(operations_, {{"root/cimv2", "root/Other"}, "testhost", [this](const std::string& line) {
                                 reported_.push_back(line);
                             }}) {
    broker_.serve(&operations_);
}

Response ProbeService::ask(const std::string& method, const std::string& parameters) const {
    const HttpReply reply = send(post(imethodCall(method, parameters), method));
    EXPECT_EQ(reply.status, 200U) << reply.body;
    Response response(reply.body);
    EXPECT_TRUE(response.wellFormed()) << reply.body;
    return response;
}

Response ProbeService::askClass(const std::string& method, const std::string& name) const {
    return ask(method, parameter("ClassName", className(name)));
}
