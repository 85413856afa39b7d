// The least of an HTTP client: one request a connection, on a loopback port.
#ifndef KESTO_TESTS_SERVER_HTTP_CLIENT_H
#define KESTO_TESTS_SERVER_HTTP_CLIENT_H

#include <cstdint>
#include <map>
#include <string>

#include "server/http/message.h"

class Connection {
  public:
    explicit Connection(std::uint16_t port);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool is_open() const { return socket_ >= 0; }
    int socket() const { return socket_; }
    bool send(const std::string& text);
    std::string receive_all(); // until the server closes, or after some seconds without anything
    void finish_sending();

  private:
    int socket_;
};

struct Received {
    int status = 0;                             // 0: nothing that is HTTP
    std::map<std::string, std::string> headers; // by lower-cased name
    std::string body;
};

std::string http_text(const cimserver::HttpRequest& request);
Received parse_http(const std::string& text);
Received exchange(std::uint16_t port, const cimserver::HttpRequest& request);

#endif
