#include "tests/server/http_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <sstream>

#include "server/model/text.h"

Connection::Connection(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const timeval patience{20, 0};
    setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(socket_);
        socket_ = -1;
    }
}

Connection::~Connection() {
    if (socket_ >= 0) close(socket_);
}

bool Connection::send(const std::string& text) {
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t step = ::send(socket_, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (step <= 0) return false;
        sent += static_cast<std::size_t>(step);
    }
    return true;
}

std::string Connection::receive_all() {
    std::string text;
    char buffer[4096];
    for (ssize_t step = 0; (step = recv(socket_, buffer, sizeof buffer, 0)) > 0;) {
        text.append(buffer, static_cast<std::size_t>(step));
    }
    return text;
}

void Connection::finish_sending() {
    shutdown(socket_, SHUT_WR);
}

std::string http_text(const cimserver::HttpRequest& request) {
    std::string text = request.method +
                       " /cimom HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\nContent-Length: " +
                       std::to_string(request.body.size()) + "\r\n";
    for (const auto& [name, value] : request.headers) {
        text += name + ": " + value + "\r\n";
    }
    return text + "\r\n" + request.body;
}

Received parse_http(const std::string& text) {
    Received received;
    const std::size_t end = text.find("\r\n\r\n");
    if (!text.starts_with("HTTP/1.1 ") || end == std::string::npos) return received;
    received.status = std::atoi(text.c_str() + 9);
    received.body = text.substr(end + 4);
    std::istringstream lines(text.substr(0, end));
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos) continue;
        received.headers[cimserver::lower_cased(line.substr(0, colon))] =
            std::string(cimserver::trimmed(line.substr(colon + 1)));
    }
    return received;
}

Received exchange(std::uint16_t port, const cimserver::HttpRequest& request) {
    Connection connection(port);
    if (!connection.is_open()) return {};
    connection.send(http_text(request)); // a refusal may come before all of it is sent
    return parse_http(connection.receive_all());
}
