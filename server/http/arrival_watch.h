// Cuts connections on which a request takes too long to arrive.
//
// A client that sends a byte now and then is never idle, and could hold its connection, and with enough of
// them all connections, for ever. So the time counts from the opening of the connection, or from the end of
// its last request, to the end of the next request, whatever happens in between.
#ifndef KESTO_SERVER_HTTP_ARRIVAL_WATCH_H
#define KESTO_SERVER_HTTP_ARRIVAL_WATCH_H

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

namespace cimserver {

class ArrivalWatch {
  public:
    explicit ArrivalWatch(std::chrono::seconds limit);
    ~ArrivalWatch();
    ArrivalWatch(const ArrivalWatch&) = delete;
    ArrivalWatch& operator=(const ArrivalWatch&) = delete;

    void expect_request(int socket); // from now on
    void request_arrived(int socket);
    void closed(int socket) { request_arrived(socket); }

  private:
    void run();

    using Clock = std::chrono::steady_clock;
    std::chrono::seconds limit_;
    std::mutex lock_;
    std::condition_variable stopping_;
    bool stopped_ = false;
    std::map<int, Clock::time_point> expected_; // since when, by socket
    std::thread thread_;                        // last: it uses all of the above
};

} // namespace cimserver

#endif
