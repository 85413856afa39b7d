#include "tests/server/probe_service.h"

#include "server/provider/provider_call.h"
#include "server/provider/registrations.h"
#include "server/schema/mof_parser.h"

using namespace cimserver;

std::vector<ServedNameSpace> probe_name_spaces(const Provider& provider) {
    std::vector<ServedNameSpace> served;
    for (const char* name : {"root/cimv2", "root/Other"}) {
        ServedNameSpace& added = served.emplace_back(ServedNameSpace{name, ClassSchema(name), {}});
        parse_mof_file(PROBE_FOLDER "/probe.mof", added.schema);
        serve_registered(added, read_registration_file(PROBE_FOLDER "/probe.reg"),
                         [&provider](const Request& request, ResultSink& sink) {
                             return call_provider(provider, request, sink);
                         });
    }
    return served;
}

ProbeService::ProbeService()
    : broker([this](const std::string& line) { logged.push_back(line); }),
      provider(PROBE_PROVIDER, "Probe", broker),
      operations(probe_name_spaces(provider)),
      service(operations,
              {.host = "testhost", .report = [this](const std::string& line) { reported.push_back(line); }}) {
    broker.serve(
        [this](const Request& request, ResultSink& sink) { return operations.perform(request, sink); });
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
