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

#include "server/cimxml_writer.h"
#include "server/http_message.h"
#include "server/operation_parameters.h"
#include "server/operations.h"

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

    std::string runOperation(const HttpRequest& http, const CimXmlRequest& request) const;
    bool servesNameSpace(const std::string& nameSpace) const;
    void report(const Call& call, const Outcome& outcome) const;

    std::string enumerateInstances(Call& call) const;
    std::string enumerateInstanceNames(Call& call) const;
    std::string getInstance(Call& call) const;
    std::string createInstance(Call& call) const;
    std::string modifyInstance(Call& call) const;
    std::string deleteInstance(Call& call) const;
    std::string execQuery(Call& call) const;
    std::string associators(Call& call) const;
    std::string associatorNames(Call& call) const;
    std::string references(Call& call) const;
    std::string referenceNames(Call& call) const;

    template <typename Run>
    std::string respond(Call& call, ObjectForm form, Run run) const;

    using Handler = std::string (CimXmlService::*)(Call&) const;
    static Handler handlerOf(std::string_view method);

    const Operations& operations_;
    Settings settings_;
};

} // namespace cimserver

#endif
