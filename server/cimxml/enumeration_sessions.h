// The enumerations that clients take in portions.
//
// An enumeration is performed as a whole when it is opened. What the client does not take at once waits here,
// as the XML that it will be handed out in, until it has been taken, the client closes the enumeration, or
// has not asked for it for as long as was agreed. Those that have run out are dropped whenever any other is
// asked for, so no thread has to watch them.
//
// An enumeration belongs to the user who opened it, in the namespace in which it was opened; for everybody
// else it is not there. Its context, by which the client names it, cannot be guessed either.
//
// The functions may be called on several threads at a time. Of two requests for the same enumeration one
// comes after the other, and every object is handed out once.
#ifndef KESTO_SERVER_CIMXML_ENUMERATION_SESSIONS_H
#define KESTO_SERVER_CIMXML_ENUMERATION_SESSIONS_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "server/cimxml/writer.h"

namespace cimserver {

struct EnumerationOwner {
    std::string nameSpace; // lower-cased
    std::string user;
    bool operator==(const EnumerationOwner&) const = default;
};

// Objects as XML, one after the other.
struct WrittenObjects {
    std::string xml;
    std::vector<std::size_t> ends; // of each object, in the text
};

struct Enumeration {
    EnumerationOwner owner;
    ObjectForm form{};
    std::chrono::seconds timeout{}; // between two requests of the client
    WrittenObjects objects;
};

struct Portion {
    std::string xml;
    std::size_t objects = 0;  // in this portion
    std::size_t toCome = 0;   // after it
    std::string context = {}; // to take the next one with; empty when nothing is to come
};

class EnumerationSessions {
  public:
    using Clock = std::chrono::steady_clock;
    struct Limits {
        std::size_t sessions = 64;              // open at a time
        std::size_t bytes = 64UL * 1024 * 1024; // kept for them, all together
        std::function<Clock::time_point()> now = Clock::now;
    };

    explicit EnumerationSessions(Limits limits) : limits_(std::move(limits)) {}

    // The first portion, of so many objects at most. When there is more, the rest is kept. Throws CimError
    // (CIM_ERR_SERVER_LIMITS_EXCEEDED) when that is too much.
    Portion open(Enumeration enumeration, std::size_t most);

    // The others throw CimError (CIM_ERR_INVALID_ENUMERATION_CONTEXT) when the owner has no such enumeration,
    // or none of that form.
    Portion pull(const std::string& context, const EnumerationOwner& owner, ObjectForm form,
                 std::size_t most);
    void close(const std::string& context, const EnumerationOwner& owner);
    std::size_t to_come(const std::string& context, const EnumerationOwner& owner);

  private:
    struct Session {
        Enumeration enumeration;
        std::size_t taken = 0; // objects that have been handed out
        Clock::time_point expiry{};
    };
    using Sessions = std::map<std::string, Session>;

    Sessions::iterator find(const std::string& context, const EnumerationOwner& owner);
    void drop_expired();
    void expect_room_for(std::size_t bytes) const;
    static Portion take(Session& session, std::size_t most);

    Limits limits_;
    std::mutex lock_;
    Sessions sessions_; // by their contexts
};

} // namespace cimserver

#endif
