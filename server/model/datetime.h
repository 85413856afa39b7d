// CIM's date-time: a point in time or an interval, in a fixed form of 25 characters.
//
//     yyyymmddhhmmss.mmmmmmsutc   a point in time; s is + or -, utc the minutes away from UTC
//     ddddddddhhmmss.mmmmmm:000   an interval
#ifndef KESTO_SERVER_MODEL_DATETIME_H
#define KESTO_SERVER_MODEL_DATETIME_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cimserver {

struct CimDateTime {
    std::uint64_t microseconds = 0; // since 1970-01-01 00:00 UTC, or of the interval
    bool interval = false;
    int utcOffset = 0; // minutes, kept so that a time is shown as it was given

    static CimDateTime now();
    static std::optional<CimDateTime> parse(std::string_view text);
    std::string to_string() const;
};

} // namespace cimserver

#endif
