#include "server/http/server.h"

#include <arpa/inet.h>
#include <microhttpd.h>
#include <netinet/in.h>
#include <unistd.h>

#include <cerrno>
#include <condition_variable>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <map>
#include <mutex>
#include <string_view>
#include <utility>

#include "server/http/arrival_watch.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

constexpr unsigned TOO_LARGE = 413;
constexpr unsigned INTERNAL_ERROR = 500;
constexpr std::size_t HEADER_MEMORY = 65536;

// The socket address to listen on. Beyond loopback a server would need encryption and users.
struct ListenAddress {
    union {
        sockaddr any;
        sockaddr_in v4;
        sockaddr_in6 v6;
    } socket{};
    bool isV6 = false;
    std::string shown;
};

ListenAddress loopback_address(const std::string& text, std::uint16_t port) {
    ListenAddress result;
    const std::string address = text == "localhost" ? "127.0.0.1" : text;
    in_addr v4{};
    in6_addr v6{};
    if (inet_pton(AF_INET, address.c_str(), &v4) == 1) {
        constexpr std::uint32_t LOOPBACK_NET = 127;
        if (ntohl(v4.s_addr) >> 24U != LOOPBACK_NET) {
            throw HttpServerError("refusing to listen on " + text + ": only loopback addresses are served");
        }
        result.socket.v4.sin_family = AF_INET;
        result.socket.v4.sin_port = htons(port);
        result.socket.v4.sin_addr = v4;
        result.shown = address;
    } else if (inet_pton(AF_INET6, address.c_str(), &v6) == 1) {
        if (std::memcmp(&v6, &in6addr_loopback, sizeof v6) != 0) {
            throw HttpServerError("refusing to listen on " + text + ": only loopback addresses are served");
        }
        result.socket.v6.sin6_family = AF_INET6;
        result.socket.v6.sin6_port = htons(port);
        result.socket.v6.sin6_addr = v6;
        result.isV6 = true;
        result.shown = "[" + address + "]";
    } else {
        throw HttpServerError("not an address: " + text);
    }
    return result;
}

struct Request {
    HttpRequest message;
    bool tooLarge = false;
};

int socket_of(MHD_Connection* connection) {
    return MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
}

MHD_Result add_header(void* to, MHD_ValueKind, const char* name, const char* value) {
    auto& headers = *static_cast<std::map<std::string, std::string>*>(to);
    headers[lower_cased(name)] = value != nullptr ? value : "";
    return MHD_YES;
}

HttpReply plain_reply(unsigned status, std::string text) {
    return {status, {{"Content-Type", "text/plain; charset=utf-8"}}, std::move(text)};
}

MHD_Result send(MHD_Connection* connection, HttpReply reply) {
    MHD_Response* response =
        MHD_create_response_from_buffer(reply.body.size(), reply.body.data(), MHD_RESPMEM_MUST_COPY);
    if (response == nullptr) return MHD_NO;
    for (const auto& [name, value] : reply.headers) {
        MHD_add_response_header(response, name.c_str(), value.c_str());
    }
    const MHD_Result queued = MHD_queue_response(connection, reply.status, response);
    MHD_destroy_response(response);
    return queued;
}

} // namespace

class HttpServer::Impl {
  public:
    Impl(const Settings& settings, Handler handler)
        : settings_(settings), handler_(std::move(handler)), arrivals_(settings.timeout) {
        ListenAddress address = loopback_address(settings.address, settings.port);
        shownAddress_ = address.shown;
        unsigned flags =
            MHD_USE_INTERNAL_POLLING_THREAD | MHD_USE_THREAD_PER_CONNECTION | MHD_USE_POLL | MHD_USE_ITC;
        if (address.isV6) flags |= MHD_USE_IPv6;
        daemon_ = MHD_start_daemon(flags, settings.port, nullptr, nullptr, &Impl::on_request, this,
                                   MHD_OPTION_SOCK_ADDR, &address.socket.any, MHD_OPTION_CONNECTION_LIMIT,
                                   settings.maxConnections, MHD_OPTION_CONNECTION_TIMEOUT,
                                   static_cast<unsigned>(settings.timeout.count()),
                                   MHD_OPTION_CONNECTION_MEMORY_LIMIT, HEADER_MEMORY,
                                   MHD_OPTION_NOTIFY_CONNECTION, &Impl::on_connection, this,
                                   MHD_OPTION_NOTIFY_COMPLETED, &Impl::on_completed, this, MHD_OPTION_END);
        if (daemon_ == nullptr) {
            throw HttpServerError("cannot listen on " + shownAddress_ + ":" + std::to_string(settings.port) +
                                  ": " + std::strerror(errno));
        }
    }

    ~Impl() { stop(std::chrono::seconds(0)); }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    std::uint16_t port() const {
        const MHD_DaemonInfo* info = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_BIND_PORT);
        return info != nullptr ? info->port : settings_.port;
    }

    const std::string& shown_address() const { return shownAddress_; }

    void stop(std::chrono::seconds patience) {
        if (daemon_ == nullptr) return;
        const MHD_socket listening = MHD_quiesce_daemon(daemon_);
        {
            std::unique_lock guard(lock_);
            idle_.wait_for(guard, patience, [this] { return running_ == 0; });
        }
        MHD_stop_daemon(daemon_);
        daemon_ = nullptr;
        if (listening != MHD_INVALID_SOCKET) close(listening);
    }

  private:
    static MHD_Result on_request(void* self, MHD_Connection* connection, const char*, const char* method,
                                 const char*, const char* data, size_t* size, void** state) {
        Impl& server = *static_cast<Impl*>(self);
        if (*state == nullptr) return server.begin(connection, method, state);
        Request& request = *static_cast<Request*>(*state);
        if (*size > 0) {
            server.receive(request, std::string_view(data, *size));
            *size = 0;
            return MHD_YES;
        }
        server.arrivals_.request_arrived(socket_of(connection));
        return send(connection, server.answer(request));
    }

    MHD_Result begin(MHD_Connection* connection, const char* method, void** state) {
        auto request = std::make_unique<Request>();
        request->message.method = method;
        MHD_get_connection_values(connection, MHD_HEADER_KIND, &add_header, &request->message.headers);
        {
            const std::lock_guard guard(lock_);
            ++running_;
        }
        const std::string* length = request->message.header("Content-Length");
        const bool tooLarge =
            length != nullptr && std::strtoull(length->c_str(), nullptr, 10) > settings_.maxBody;
        *state = request.release();
        // Said before the client sends it all; MHD closes the connection then.
        return tooLarge ? send(connection, too_large_reply()) : MHD_YES;
    }

    void receive(Request& request, std::string_view data) const {
        std::string& body = request.message.body;
        if (body.size() + data.size() > settings_.maxBody) request.tooLarge = true;
        // What is refused is read to its end, so that the client gets to read why, but not kept.
        if (request.tooLarge) {
            body.clear();
        } else {
            body += data;
        }
    }

    // An exception must not travel through the C library that calls this.
    HttpReply answer(const Request& request) const {
        if (request.tooLarge) return too_large_reply();
        try {
            return handler_(request.message);
        } catch (const std::exception& error) {
            return plain_reply(INTERNAL_ERROR, std::string(error.what()) + "\n");
        }
    }

    HttpReply too_large_reply() const {
        return plain_reply(TOO_LARGE, "requests may have " + std::to_string(settings_.maxBody) + " bytes\n");
    }

    static void on_connection(void* self, MHD_Connection* connection, void**,
                              MHD_ConnectionNotificationCode what) {
        ArrivalWatch& arrivals = static_cast<Impl*>(self)->arrivals_;
        if (what == MHD_CONNECTION_NOTIFY_STARTED) {
            arrivals.expect_request(socket_of(connection));
        } else {
            arrivals.closed(socket_of(connection));
        }
    }

    static void on_completed(void* self, MHD_Connection* connection, void** state,
                             MHD_RequestTerminationCode) {
        if (*state == nullptr) return;
        delete static_cast<Request*>(*state);
        *state = nullptr;
        Impl& server = *static_cast<Impl*>(self);
        server.arrivals_.expect_request(socket_of(connection));
        const std::lock_guard guard(server.lock_);
        --server.running_;
        server.idle_.notify_all();
    }

    Settings settings_;
    Handler handler_;
    ArrivalWatch arrivals_;
    std::string shownAddress_;
    MHD_Daemon* daemon_ = nullptr;
    std::mutex lock_;
    std::condition_variable idle_;
    unsigned running_ = 0;
};

HttpServer::HttpServer(const Settings& settings, Handler handler)
    : impl_(std::make_unique<Impl>(settings, std::move(handler))) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const {
    return impl_->port();
}

std::string HttpServer::url() const {
    return "http://" + impl_->shown_address() + ":" + std::to_string(port());
}

void HttpServer::stop(std::chrono::seconds patience) {
    impl_->stop(patience);
}

} // namespace cimserver
