// The HTTP front at one port: connections, threads and limits, and who is let in. What a request means is its
// handler's business.
//
// A request that names another server, or has no right user's name and password, is refused before its body
// is kept.
#ifndef KESTO_SERVER_HTTP_SERVER_H
#define KESTO_SERVER_HTTP_SERVER_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "server/http/ip_address.h"
#include "server/http/message.h"
#include "server/http/tls.h"
#include "server/http/users.h"
#include "server/model/error.h"

namespace cimserver {

class HttpServerError : public Error {
  public:
    using Error::Error;
};

class HttpServer {
  public:
    struct Settings {
        std::string address = "127.0.0.1";    // or localhost; 0.0.0.0 and :: are all of the machine's
        std::uint16_t port = 5988;            // 0: any free one
        std::vector<std::string> hostNames{}; // that clients may know the server by, besides its address
        std::optional<TlsCredentials> tls{};  // HTTPS; HTTP without
        std::shared_ptr<Users> users{};       // who may use the server; everybody without
        unsigned maxConnections = 64;
        std::chrono::seconds timeout{30}; // for a connection that does nothing, and for a request to arrive
        std::size_t maxBody = 1048576;
        std::function<void(const std::string& line)> report{}; // of each refusal; may be empty
    };
    // Of Settings::address; nothing when it is no address.
    static std::optional<IpAddress> parse_address(const std::string& text);

    // Called on the thread of the request's connection, on several at a time.
    using Handler = std::function<HttpReply(const HttpRequest&)>;

    // Listens from here on. Throws HttpServerError when it cannot, or when the address is beyond loopback and
    // TLS or users are missing.
    HttpServer(const Settings& settings, Handler handler);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::uint16_t port() const;
    std::string url() const; // http://127.0.0.1:5988, https://...

    // Takes no new connections and lets the running requests finish; their connections are cut after
    // `patience`. Returns when the last handler has.
    void stop(std::chrono::seconds patience);

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace cimserver

#endif
