// The HTTP front: connections, threads and limits. What a request means is its handler's business.
#ifndef KESTO_SERVER_HTTP_SERVER_H
#define KESTO_SERVER_HTTP_SERVER_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "server/http/message.h"
#include "server/model/error.h"

namespace cimserver {

class HttpServerError : public Error {
  public:
    using Error::Error;
};

class HttpServer {
  public:
    struct Settings {
        std::string address = "127.0.0.1"; // or ::1, or localhost; nothing beyond loopback
        std::uint16_t port = 5988;         // 0: any free one
        unsigned maxConnections = 64;
        std::chrono::seconds timeout{30}; // for a connection that does nothing, and for a request to arrive
        std::size_t maxBody = 1048576;
    };
    // Called on the thread of the request's connection, on several at a time.
    using Handler = std::function<HttpReply(const HttpRequest&)>;

    // Listens from here on. Throws HttpServerError when it cannot, or when the address is not a loopback one.
    HttpServer(const Settings& settings, Handler handler);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::uint16_t port() const;
    std::string url() const; // http://127.0.0.1:5988

    // Takes no new connections and lets the running requests finish; their connections are cut after
    // `patience`. Returns when the last handler has.
    void stop(std::chrono::seconds patience);

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace cimserver

#endif
