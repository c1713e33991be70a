// Instants, days and calendar arithmetic. No function reads the clock: the one place that does is
// the command line, which passes the instant in.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix {

/// A moment, in whole seconds.
using Instant = std::chrono::sys_seconds;

/// `yyyy-MM-ddTHH:mm:ssZ` in UTC.
std::string isoInstant(Instant instant);
/// ISO 8601 internet date-time, whole seconds, with "Z" or an offset: "2026-03-01T09:30:00+01:00".
/// Nothing for another form, a fraction or a day that does not exist.
std::optional<Instant> parseIsoInstant(std::string_view text);

/// The Gregorian calendar in one time zone. Copies share their state, which never changes. Each
/// operation costs microseconds; the first one in a process loads the zone's rules.
class Calendar {
  public:
    enum class Unit { day, weekOfYear, month, year };
    struct Interval {
        Instant start;
        Instant end;  ///< the first instant behind it
        bool operator==(const Interval&) const = default;
    };
    struct Day {
        int year = 0;
        int month = 0;  ///< 1 to 12
        int day = 0;    ///< 1 to 31
        bool operator==(const Day&) const = default;
    };
    enum class Weekday { sunday = 1, monday, tuesday, wednesday, thursday, friday, saturday };

    /// The machine's zone (`TZ`, else the system's), and the first weekday and the minimal days of
    /// the first week of the locale in `LC_ALL`, `LC_TIME` or `LANG`, the first one that is set and
    /// not empty; "C", "POSIX" and none mean Sunday and 1.
    static Calendar current();
    /// Days of the engine and of ranking: UTC, lenient, Sunday first.
    static Calendar gregorianUtc();
    /// `zone` is a name of the zone database; an unknown one means UTC.
    Calendar(std::string_view zone, Weekday firstWeekday, int minimalDaysInFirstWeek = 1);

    /// `amount` units later (earlier when negative). Months and years clip to the last day of the
    /// month; days and weeks keep the wall clock. Nothing outside the calendar's range.
    std::optional<Instant> adding(std::int64_t amount, Unit unit, Instant to) const;
    Instant startOfDay(Instant instant) const;
    /// The day, week, month or year that holds `instant`.
    std::optional<Interval> interval(Unit unit, Instant instant) const;
    /// Whole days from the start of the day of `from` to the start of the day of `to`.
    std::int64_t daysBetween(Instant from, Instant to) const;

    Day day(Instant instant) const;
    /// Midnight of a day. Lenient: 2026-02-31 is 2026-03-03, and month 13 is January.
    std::optional<Instant> midnight(std::int64_t year, std::int64_t month, std::int64_t day) const;
    /// "yyyy-MM-dd".
    std::string dayString(Instant instant) const;
    /// Midnight of exactly "YYYY-MM-DD", four, two and two ASCII digits, of a day that exists.
    std::optional<Instant> parseDay(std::string_view text) const;

  private:
    struct State;
    std::shared_ptr<const State> state_;
    explicit Calendar(std::shared_ptr<const State> state);
};
}  // namespace ombrix
