// Answers CIM-XML requests: from an HTTP request to its reply, with the operations in between.
//
// An operation's objects are written into the answer as the provider returns them, and the answer is handed
// out when the operation has returned: a client that reads slowly holds up nobody, and an error takes the
// place of whatever was returned before it. An enumeration in portions is written as a whole, too, and handed
// out piece by piece (enumeration_sessions.h).
#ifndef KESTO_SERVER_CIMXML_SERVICE_H
#define KESTO_SERVER_CIMXML_SERVICE_H

#include <functional>
#include <string>
#include <utility>

#include "server/cimxml/enumeration_sessions.h"
#include "server/cimxml/operations.h"
#include "server/cimxml/pull_operations.h"
#include "server/cimxml/reader.h"
#include "server/http/message.h"
#include "server/model/request.h"
#include "server/provider/operations.h"
#include "server/provider/served.h"

namespace cimserver {

class CimXmlService {
  public:
    struct Settings {
        std::string host{};     // how paths name this machine to a client that does not name it itself
        bool keepHosts = false; // paths keep the host that the provider names
        std::function<void(const std::string& line)> report{}; // a line for each operation; may be empty
        EnumerationSessions::Limits enumerations{};
    };

    CimXmlService(const Operations& operations, Settings settings)
        : operations_(operations), settings_(std::move(settings)), sessions_(settings_.enumerations) {}

    HttpReply answer(const HttpRequest& request) const;

  private:
    std::string run_operation(const HttpRequest& http, const CimXmlRequest& message) const;
    // The content of the response; throws CimError. `line` is what will be reported: the operation's target
    // is added to it and, where that did not fail, the result.
    std::string perform(const CimXmlOperation& operation, const ServedNameSpace& served,
                        const HttpRequest& http, const CimXmlRequest& message, std::string& line) const;
    std::string perform(const PullOperation& operation, const HttpRequest& http, const CimXmlRequest& message,
                        std::string& line) const;

    const Operations& operations_;
    Settings settings_;
    mutable EnumerationSessions sessions_; // has a lock of its own
};

} // namespace cimserver

#endif
