#include "server/model/datetime.h"

#include <chrono>
#include <cstddef>
#include <cstdio>

namespace cimserver {

namespace {

constexpr std::size_t LENGTH = 25;
constexpr std::uint64_t MICRO = 1'000'000;
constexpr std::uint64_t DAY = std::uint64_t{24} * 60 * 60;

std::optional<unsigned> number(std::string_view text, std::size_t at, std::size_t length) {
    unsigned result = 0;
    for (const char c : text.substr(at, length)) {
        if (c < '0' || c > '9') return std::nullopt;
        result = result * 10 + static_cast<unsigned>(c - '0');
    }
    return result;
}

} // namespace

CimDateTime CimDateTime::now() {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(sinceEpoch).count();
    return {static_cast<std::uint64_t>(micros), false, 0};
}

std::optional<CimDateTime> CimDateTime::parse(std::string_view text) {
    if (text.size() != LENGTH || text[14] != '.') return std::nullopt;
    const auto hours = number(text, 8, 2), minutes = number(text, 10, 2), seconds = number(text, 12, 2);
    const auto micros = number(text, 15, 6), offset = number(text, 22, 3);
    if (!hours || !minutes || !seconds || !micros || !offset) return std::nullopt;
    if (*hours > 23 || *minutes > 59 || *seconds > 60) return std::nullopt;
    const std::uint64_t ofDay = *hours * 3600ULL + *minutes * 60ULL + *seconds;

    const char sign = text[21];
    if (sign == ':') {
        const auto days = number(text, 0, 8);
        if (!days || *offset != 0) return std::nullopt;
        return CimDateTime{(*days * DAY + ofDay) * MICRO + *micros, true, 0};
    }
    const auto year = number(text, 0, 4), month = number(text, 4, 2), day = number(text, 6, 2);
    if ((sign != '+' && sign != '-') || !year || !month || !day) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(*year)),
                                           std::chrono::month(*month), std::chrono::day(*day)};
    if (!date.ok()) return std::nullopt;
    const int away = sign == '+' ? static_cast<int>(*offset) : -static_cast<int>(*offset);
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    const std::int64_t inSeconds =
        days * static_cast<std::int64_t>(DAY) + static_cast<std::int64_t>(ofDay) - std::int64_t{away} * 60;
    if (inSeconds < 0) return std::nullopt; // the binary form counts up from 1970
    return CimDateTime{static_cast<std::uint64_t>(inSeconds) * MICRO + *micros, false, away};
}

std::string CimDateTime::to_string() const {
    char text[64];
    const auto micros = static_cast<unsigned>(microseconds % MICRO);
    std::uint64_t seconds = microseconds / MICRO;
    if (!interval) seconds += static_cast<std::uint64_t>(std::int64_t{utcOffset} * 60);
    const auto ofDay = static_cast<unsigned>(seconds % DAY);
    const unsigned hour = ofDay / 3600, minute = ofDay / 60 % 60, second = ofDay % 60;
    if (interval) {
        std::snprintf(text, sizeof text, "%08u%02u%02u%02u.%06u:000",
                      static_cast<unsigned>(seconds / DAY % 100'000'000), hour, minute, second, micros);
    } else {
        const std::chrono::sys_days days{std::chrono::days(static_cast<std::int64_t>(seconds / DAY))};
        const std::chrono::year_month_day date(days);
        std::snprintf(text, sizeof text, "%04d%02u%02u%02u%02u%02u.%06u%c%03d", static_cast<int>(date.year()),
                      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), hour, minute,
                      second, micros, utcOffset < 0 ? '-' : '+', utcOffset < 0 ? -utcOffset : utcOffset);
    }
    return text;
}

} // namespace cimserver
