#include "server/http/arrival_watch.h"

#include <sys/socket.h>

namespace cimserver {

ArrivalWatch::ArrivalWatch(std::chrono::seconds limit) : limit_(limit), thread_([this] { run(); }) {}

ArrivalWatch::~ArrivalWatch() {
    {
        const std::lock_guard guard(lock_);
        stopped_ = true;
    }
    stopping_.notify_all();
    thread_.join();
}

void ArrivalWatch::expect_request(int socket) {
    const std::lock_guard guard(lock_);
    expected_[socket] = Clock::now();
}

void ArrivalWatch::request_arrived(int socket) {
    const std::lock_guard guard(lock_);
    expected_.erase(socket);
}

void ArrivalWatch::run() {
    constexpr std::chrono::milliseconds PACE(250);
    std::unique_lock guard(lock_);
    while (!stopping_.wait_for(guard, PACE, [this] { return stopped_; })) {
        const Clock::time_point tooEarly = Clock::now() - limit_;
        // A socket leaves the list before it is closed, so the number is still the connection's.
        for (const auto& [socket, since] : expected_) {
            if (since < tooEarly) shutdown(socket, SHUT_RDWR);
        }
    }
}

} // namespace cimserver
