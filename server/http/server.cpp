#include "server/http/server.h"

#include <microhttpd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
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
#include "server/http/authentication.h"
#include "server/http/host_check.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

constexpr unsigned TOO_LARGE = 413;
constexpr unsigned INTERNAL_ERROR = 500;
constexpr std::size_t HEADER_MEMORY = 65536;

IpAddress listening_address(const HttpServer::Settings& settings) {
    const std::optional<IpAddress> address = HttpServer::parse_address(settings.address);
    if (!address) throw HttpServerError("not an address: " + settings.address);
    if (!address->is_loopback() && (!settings.tls || settings.users == nullptr)) {
        throw HttpServerError("refusing to listen on " + settings.address +
                              ": beyond loopback, clients need TLS and a password");
    }
    return *address;
}

unsigned daemon_flags(const IpAddress& address, bool tls) {
    unsigned flags =
        MHD_USE_INTERNAL_POLLING_THREAD | MHD_USE_THREAD_PER_CONNECTION | MHD_USE_POLL | MHD_USE_ITC;
    if (!address.is_v4()) flags |= MHD_USE_IPv6;
    if (!address.is_v4() && address.is_unspecified()) flags |= MHD_USE_DUAL_STACK;
    if (tls) flags |= MHD_USE_TLS;
    return flags;
}

struct Request {
    HttpRequest message;
    std::optional<HttpReply> refusal;
};

int socket_of(MHD_Connection* connection) {
    return MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
}

MHD_Result add_header(void* to, MHD_ValueKind, const char* name, const char* value) {
    auto& headers = *static_cast<std::map<std::string, std::string>*>(to);
    const std::string text(trimmed(value != nullptr ? value : "")); // the library leaves blanks at the end
    const auto [header, isNew] = headers.emplace(lower_cased(name), text);
    if (!isNew) header->second += ", " + text;
    return MHD_YES;
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
        const IpAddress address = listening_address(settings);
        url_ = (settings.tls ? "https://" : "http://") + address.in_url();
        sockaddr_storage socketAddress = address.socket_address(settings.port);
        errno = 0;
        daemon_ =
            MHD_start_daemon(daemon_flags(address, settings.tls.has_value()), settings.port, nullptr, nullptr,
                             &Impl::on_request, this, MHD_OPTION_SOCK_ADDR, &socketAddress,
                             MHD_OPTION_CONNECTION_LIMIT, settings.maxConnections,
                             MHD_OPTION_CONNECTION_TIMEOUT, static_cast<unsigned>(settings.timeout.count()),
                             MHD_OPTION_CONNECTION_MEMORY_LIMIT, HEADER_MEMORY, MHD_OPTION_NOTIFY_CONNECTION,
                             &Impl::on_connection, this, MHD_OPTION_NOTIFY_COMPLETED, &Impl::on_completed,
                             this, MHD_OPTION_ARRAY, tls_options().data(), MHD_OPTION_END);
        if (daemon_ == nullptr) {
            throw HttpServerError("cannot listen on " + address.in_url() + ":" +
                                  std::to_string(settings.port) + ": " +
                                  (errno != 0 ? std::strerror(errno) : "TLS does not start"));
        }
    }

    ~Impl() { stop(std::chrono::seconds(0)); }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    std::uint16_t port() const {
        const MHD_DaemonInfo* info = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_BIND_PORT);
        return info != nullptr ? info->port : settings_.port;
    }

    std::string url() const { return url_ + ":" + std::to_string(port()); }

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
    // Empty without TLS. The texts are those of settings_, which the daemon may look at as long as it runs.
    std::array<MHD_OptionItem, 4> tls_options() const {
        if (!settings_.tls) return {{{MHD_OPTION_END, 0, nullptr}}};
        const auto text = [](const char* value) { return const_cast<char*>(value); };
        return {{{MHD_OPTION_HTTPS_MEM_CERT, 0, text(settings_.tls->certificate.c_str())},
                 {MHD_OPTION_HTTPS_MEM_KEY, 0, text(settings_.tls->privateKey.c_str())},
                 {MHD_OPTION_HTTPS_PRIORITIES, 0, text(TLS_PRIORITIES)},
                 {MHD_OPTION_END, 0, nullptr}}};
    }

    static MHD_Result on_request(void* self, MHD_Connection* connection, const char*, const char* method,
                                 const char* version, const char* data, size_t* size, void** state) {
        Impl& server = *static_cast<Impl*>(self);
        if (*state == nullptr) return server.begin(connection, method, version, state);
        Request& request = *static_cast<Request*>(*state);
        if (*size > 0) {
            server.receive(request, std::string_view(data, *size));
            *size = 0;
            return MHD_YES;
        }
        server.arrivals_.request_arrived(socket_of(connection));
        return send(connection, server.answer(request));
    }

    MHD_Result begin(MHD_Connection* connection, const char* method, const char* version, void** state) {
        auto request = std::make_unique<Request>();
        request->message.method = method;
        request->message.version = version;
        MHD_get_connection_values(connection, MHD_HEADER_KIND, &add_header, &request->message.headers);
        {
            const std::lock_guard guard(lock_);
            ++running_;
        }
        std::optional<HttpReply>& refusal = request->refusal;
        refusal = guarded([&] { return refusal_of(request->message, socket_of(connection)); });
        const std::string* length = request->message.header("Content-Length");
        const bool tooLarge =
            length != nullptr && std::strtoull(length->c_str(), nullptr, 10) > settings_.maxBody;
        if (tooLarge && !refusal) refusal = too_large_reply();
        const bool asks = request->message.header("Expect") != nullptr; // before it sends its body
        *state = request.release();
        // Said before the client sends it all; MHD closes the connection then.
        return tooLarge || (refusal && asks) ? send(connection, *refusal) : MHD_YES;
    }

    std::optional<HttpReply> refusal_of(HttpRequest& request, int socket) const {
        auto refusal = host_refusal(request, IpAddress::of_local_end(socket), settings_.hostNames);
        if (!refusal && settings_.users != nullptr) refusal = authenticate(request, *settings_.users);
        if (refusal && settings_.report) {
            settings_.report("refused with HTTP " + std::to_string(refusal->status) + ": " +
                             std::string(trimmed(refusal->body)));
        }
        return refusal;
    }

    void receive(Request& request, std::string_view data) const {
        std::string& body = request.message.body;
        if (!request.refusal && body.size() + data.size() > settings_.maxBody) {
            request.refusal = too_large_reply();
        }
        // What is refused is read to its end, so that the client gets to read why, but not kept.
        if (request.refusal) {
            body.clear();
        } else {
            body += data;
        }
    }

    HttpReply answer(const Request& request) const {
        if (request.refusal) return *request.refusal;
        return *guarded([&] { return std::optional(handler_(request.message)); });
    }

    // An exception must not travel through the C library that calls this.
    template <typename MakeReply>
    static std::optional<HttpReply> guarded(const MakeReply& makeReply) {
        try {
            return makeReply();
        } catch (const std::exception& error) {
            return text_reply(INTERNAL_ERROR, error.what());
        }
    }

    HttpReply too_large_reply() const {
        return text_reply(TOO_LARGE, "requests may have " + std::to_string(settings_.maxBody) + " bytes");
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
    std::string url_; // without the port
    MHD_Daemon* daemon_ = nullptr;
    std::mutex lock_;
    std::condition_variable idle_;
    unsigned running_ = 0;
};

std::optional<IpAddress> HttpServer::parse_address(const std::string& text) {
    return IpAddress::parse(text == "localhost" ? "127.0.0.1" : text);
}

HttpServer::HttpServer(const Settings& settings, Handler handler)
    : impl_(std::make_unique<Impl>(settings, std::move(handler))) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const {
    return impl_->port();
}

std::string HttpServer::url() const {
    return impl_->url();
}

void HttpServer::stop(std::chrono::seconds patience) {
    impl_->stop(patience);
}

} // namespace cimserver
