// Answers CIM-XML requests: from an HTTP request to its reply, with the operations in between.
//
// An operation's objects are written into the answer as the provider returns them, and the answer is handed
// out when the operation has returned: a client that reads slowly holds up nobody, and an error takes the
// place of whatever was returned before it.
#ifndef KESTO_SERVER_CIMXML_SERVICE_H
#define KESTO_SERVER_CIMXML_SERVICE_H

#include <functional>
#include <string>
#include <utility>

#include "server/cimxml/reader.h"
#include "server/http/message.h"
#include "server/model/request.h"
#include "server/provider/operations.h"

namespace cimserver {

class CimXmlService {
  public:
    struct Settings {
        std::string host{};     // how paths name this machine to a client that does not name it itself
        bool keepHosts = false; // paths keep the host that the provider names
        std::function<void(const std::string& line)> report{}; // a line for each operation; may be empty
    };

    CimXmlService(const Operations& operations, Settings settings)
        : operations_(operations), settings_(std::move(settings)) {}

    HttpReply answer(const HttpRequest& request) const;

  private:
    std::string run_operation(const HttpRequest& http, const CimXmlRequest& message) const;
    void report(const CimXmlRequest& message, const Request& request, const Outcome& outcome) const;

    const Operations& operations_;
    Settings settings_;
};

} // namespace cimserver

#endif
