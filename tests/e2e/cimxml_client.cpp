#include "tests/e2e/cimxml_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <system_error>

#include "tests/e2e/wbem_client.h"
#include "tests/server/cimxml_request.h"
#include "tests/server/response.h"

namespace e2e {

namespace {

std::uint16_t port_of(const std::string& url) {
    return static_cast<std::uint16_t>(std::stoi(url.substr(url.rfind(':') + 1)));
}

std::string name_element(const CimPath& path) {
    std::string keys;
    for (const CimKey& key : path.keys) {
        keys += key.reference.empty() ? ::key(key.name, key.value,
                                              key.quoted ? "VALUETYPE=\"string\"" : "VALUETYPE=\"numeric\"")
                                      : reference_key(key.name, name_element(key.reference.front()));
    }
    return instance_name(path.className, keys);
}

// The length of the body that a reply's head announces.
std::size_t body_length(const std::string& head) {
    const std::string name = "\r\ncontent-length:";
    const std::size_t found = lower_case(head).find(name);
    if (found == std::string::npos) throw std::runtime_error("a reply of unknown length: " + head);
    return std::stoul(head.substr(found + name.size()));
}

} // namespace

CimXmlClient::CimXmlClient(const std::string& url) : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port_of(url));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const timeval patience{60, 0};
    setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        const int error = errno;
        close(socket_);
        throw std::system_error(error, std::generic_category(), url);
    }
}

CimXmlClient::~CimXmlClient() {
    close(socket_);
}

std::vector<std::string> CimXmlClient::classes_answered(const std::string& operation, const CimPath& object,
                                                        const std::string& filter,
                                                        const std::string& filterClass) {
    const std::string body = imethod_call(operation, parameter("ObjectName", name_element(object)) +
                                                         parameter(filter, class_name(filterClass)));
    std::string request = "POST /cimom HTTP/1.1\r\nHost: localhost\r\n";
    for (const auto& [name, value] : post(body, operation).headers) {
        request += name + ": " + value + "\r\n";
    }
    request += "content-length: " + std::to_string(body.size()) + "\r\n\r\n" + body;

    const Response response(exchange(request));
    if (!response.well_formed()) throw WbemError(0, operation + " is answered with something that is no XML");
    if (response.error_code() != 0) throw WbemError(response.error_code(), response.error_description());
    return response.texts("//IRETURNVALUE/*/INSTANCEPATH/INSTANCENAME/@CLASSNAME");
}

std::string CimXmlClient::exchange(const std::string& request) {
    for (std::size_t sent = 0; sent < request.size();) {
        const ssize_t step = send(socket_, request.data() + sent, request.size() - sent, MSG_NOSIGNAL);
        if (step < 0) throw std::system_error(errno, std::generic_category(), "sending a request");
        sent += static_cast<std::size_t>(step);
    }
    const std::string headEnd = "\r\n\r\n";
    std::string reply;
    while (reply.find(headEnd) == std::string::npos) {
        receive_more(reply);
    }
    const std::size_t start = reply.find(headEnd) + headEnd.size();
    const std::size_t end = start + body_length(reply.substr(0, start));
    while (reply.size() < end) {
        receive_more(reply);
    }
    return reply.substr(start);
}

void CimXmlClient::receive_more(std::string& text) {
    std::array<char, 16384> buffer;
    const ssize_t step = recv(socket_, buffer.data(), buffer.size(), 0);
    if (step < 0) throw std::system_error(errno, std::generic_category(), "receiving a reply");
    if (step == 0) throw std::runtime_error("the server closed the connection");
    text.append(buffer.data(), static_cast<std::size_t>(step));
}

} // namespace e2e
