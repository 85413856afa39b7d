#include "server/cimxml/enumeration_sessions.h"

#include <cmpidt.h>
#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "server/cimxml/errors.h"

namespace cimserver {

namespace {

std::size_t bytes_of(const WrittenObjects& objects) {
    return objects.xml.size() + objects.ends.size() * sizeof objects.ends.front();
}

std::string random_context() {
    std::array<std::uint8_t, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        throw CimError(CMPI_RC_ERR_FAILED, "the system has no random numbers");
    }
    constexpr std::string_view DIGITS = "0123456789abcdef";
    std::string context;
    for (const std::uint8_t byte : bytes) {
        context += DIGITS[byte >> 4U];
        context += DIGITS[byte & 0xFU];
    }
    return context;
}

} // namespace

Portion EnumerationSessions::open(Enumeration enumeration, std::size_t most) {
    const std::lock_guard hold(lock_);
    drop_expired();
    Session session{.enumeration = std::move(enumeration)};
    Portion first = take(session, most);
    if (first.toCome == 0) return first;
    expect_room_for(bytes_of(session.enumeration.objects));
    session.expiry = limits_.now() + session.enumeration.timeout;
    first.context = random_context();
    sessions_.emplace(first.context, std::move(session));
    return first;
}

Portion EnumerationSessions::pull(const std::string& context, const EnumerationOwner& owner, ObjectForm form,
                                  std::size_t most) {
    const std::lock_guard hold(lock_);
    const auto found = find(context, owner);
    Session& session = found->second;
    if (session.enumeration.form != form) {
        throw CimError(CIM_RC_INVALID_ENUMERATION_CONTEXT, "the enumeration has objects of another kind");
    }
    Portion next = take(session, most);
    if (next.toCome != 0) {
        next.context = context;
        session.expiry = limits_.now() + session.enumeration.timeout;
    } else {
        sessions_.erase(found);
    }
    return next;
}

void EnumerationSessions::close(const std::string& context, const EnumerationOwner& owner) {
    const std::lock_guard hold(lock_);
    sessions_.erase(find(context, owner));
}

std::size_t EnumerationSessions::to_come(const std::string& context, const EnumerationOwner& owner) {
    const std::lock_guard hold(lock_);
    const Session& session = find(context, owner)->second;
    return session.enumeration.objects.ends.size() - session.taken;
}

EnumerationSessions::Sessions::iterator EnumerationSessions::find(const std::string& context,
                                                                  const EnumerationOwner& owner) {
    drop_expired();
    const auto found = sessions_.find(context);
    if (found == sessions_.end() || found->second.enumeration.owner != owner) {
        throw CimError(CIM_RC_INVALID_ENUMERATION_CONTEXT,
                       "there is no such enumeration: it is at its end, closed, or was left alone too long");
    }
    return found;
}

void EnumerationSessions::drop_expired() {
    const Clock::time_point now = limits_.now();
    std::erase_if(sessions_, [now](const auto& entry) { return entry.second.expiry <= now; });
}

void EnumerationSessions::expect_room_for(std::size_t bytes) const {
    if (sessions_.size() >= limits_.sessions) {
        throw CimError(CMPI_RC_ERR_SERVER_LIMITS_EXCEEDED, "too many enumerations are open");
    }
    for (const auto& [context, session] : sessions_) {
        bytes += bytes_of(session.enumeration.objects);
    }
    if (bytes > limits_.bytes) {
        throw CimError(CMPI_RC_ERR_SERVER_LIMITS_EXCEEDED, "the open enumerations hold too many objects");
    }
}

Portion EnumerationSessions::take(Session& session, std::size_t most) {
    const auto& [xml, ends] = session.enumeration.objects;
    const std::size_t first = session.taken;
    const std::size_t count = std::min(most, ends.size() - first);
    session.taken += count;
    const std::size_t start = first != 0 ? ends[first - 1] : 0;
    const std::size_t end = count != 0 ? ends[session.taken - 1] : start;
    return {.xml = xml.substr(start, end - start), .objects = count, .toCome = ends.size() - session.taken};
}

} // namespace cimserver
