// Answers CIM-XML requests: from an HTTP request to its reply, with the operations in between.
//
// An operation's objects are written into the answer as the provider returns them, and the answer is handed
// out when the operation has returned: a client that reads slowly holds up nobody, and an error takes the
// place of whatever was returned before it.
#ifndef KESTO_SERVER_CIMXML_SERVICE_H
#define KESTO_SERVER_CIMXML_SERVICE_H

#include <functional>
#include <string>
#include <vector>

#include "server/cimxml/operation_parameters.h"
#include "server/cimxml/writer.h"
#include "server/http/message.h"
#include "server/provider/operations.h"

namespace cimserver {

class CimXmlService {
  public:
    struct Settings {
        std::vector<std::string> nameSpaces;
        std::string host;                                    // how paths name this machine
        std::function<void(const std::string& line)> report; // a line for each operation; may be empty
    };

    CimXmlService(const Operations& operations, Settings settings)
        : operations_(operations), settings_(std::move(settings)) {}

    HttpReply answer(const HttpRequest& request) const;

  private:
    struct Call; // one operation of one request

    std::string run_operation(const HttpRequest& http, const CimXmlRequest& request) const;
    bool serves_name_space(const std::string& nameSpace) const;
    void report(const Call& call, const Outcome& outcome) const;

    std::string enumerate_instances(Call& call) const;
    std::string enumerate_instance_names(Call& call) const;
    std::string get_instance(Call& call) const;
    std::string create_instance(Call& call) const;
    std::string modify_instance(Call& call) const;
    std::string delete_instance(Call& call) const;
    std::string exec_query(Call& call) const;
    std::string associators(Call& call) const;
    std::string associator_names(Call& call) const;
    std::string references(Call& call) const;
    std::string reference_names(Call& call) const;

    template <typename Run>
    std::string respond(Call& call, ObjectForm form, Run run) const;

    using Handler = std::string (CimXmlService::*)(Call&) const;
    static Handler handler_of(std::string_view method);

    const Operations& operations_;
    Settings settings_;
};

} // namespace cimserver

#endif
