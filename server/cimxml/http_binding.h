// The HTTP side of CIM-XML: what a request's headers must say, and what the reply's say.
#ifndef KESTO_SERVER_CIMXML_HTTP_BINDING_H
#define KESTO_SERVER_CIMXML_HTTP_BINDING_H

#include <string>
#include <string_view>

#include "server/cimxml/errors.h"
#include "server/cimxml/reader.h"
#include "server/http/message.h"

namespace cimserver {

// The extension headers of a request: CIMOperation and its like, which M-POST puts a number before.
class CimHeaders {
  public:
    // Throws HttpError for a method, a content type, or headers that are not those of a CIM-XML request.
    explicit CimHeaders(const HttpRequest& request);

    // The headers repeat what the message says, for the sake of firewalls. Throws HttpError if they say
    // otherwise.
    void expect_to_match(const CimXmlRequest& message) const;

    HttpReply reply(std::string body) const;

  private:
    const std::string* header(std::string_view name) const {
        return request_.header(prefix_ + std::string(name));
    }

    const HttpRequest& request_;
    std::string prefix_; // "48-" of M-POST, or nothing
};

HttpReply error_reply(const HttpError& error);

} // namespace cimserver

#endif
