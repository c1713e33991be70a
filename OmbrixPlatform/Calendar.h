// Instants, days and calendar arithmetic. No function reads the clock; the caller passes the
// current instant.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix {

/// A point in time, in whole seconds.
using Instant = std::chrono::sys_seconds;

/// `yyyy-MM-ddTHH:mm:ssZ` in UTC.
std::string isoInstant(Instant instant);
/// ISO 8601 internet date-time, whole seconds, with "Z" or an offset: "2026-03-01T09:30:00+01:00",
/// also without the colon ("+0100"). Nothing for any other form, for fractions of a second, for a
/// day that does not exist, and when the year in UTC is not 0 to 9999. What it reads, `isoInstant`
/// writes so that it reads it again.
std::optional<Instant> parseIsoInstant(std::string_view text);
/// The day "YYYY-MM-DD" by itself, in no zone: four, two and two ASCII digits and nothing else.
/// Nothing for another form and for a day that does not exist. Days subtract to days.
std::optional<std::chrono::sys_days> parseIsoDay(std::string_view text);

/// The Gregorian calendar in one time zone. Copies share their state, which never changes. Each
/// operation costs microseconds; the first one in a process loads the zone's rules.
class Calendar {
  public:
    enum class Unit { day, weekOfYear, month, year };
    struct Interval {
        Instant start;
        Instant end;  ///< the first instant after it
        bool operator==(const Interval&) const = default;
    };
    struct Day {
        int year = 0;
        int month = 0;  ///< 1 to 12
        int day = 0;    ///< 1 to 31
        bool operator==(const Day&) const = default;
    };
    enum class Weekday { sunday = 1, monday, tuesday, wednesday, thursday, friday, saturday };

    /// The machine's time zone (`TZ`, else the system's). The first weekday and the minimal days of
    /// the first week are those of the locale in `LC_ALL`, `LC_TIME` or `LANG`, whichever is the
    /// first that is set and not empty. For "C", "POSIX" and no locale they are Sunday and 1.
    static Calendar current();
    /// The calendar of the engine and of ranking: UTC, lenient, weeks start on Sunday.
    static Calendar gregorianUtc();
    /// `zone` is a name in the time zone database; an unknown name means UTC.
    Calendar(std::string_view zone, Weekday firstWeekday, int minimalDaysInFirstWeek = 1);

    /// `amount` units later, or earlier when it is negative. Months and years clip to the last day
    /// of the month; days and weeks keep the time of day. Nothing when the result is out of range.
    std::optional<Instant> adding(std::int64_t amount, Unit unit, Instant to) const;
    Instant startOfDay(Instant instant) const;
    /// The day, week, month or year that contains `instant`; nothing when it is out of range.
    std::optional<Interval> interval(Unit unit, Instant instant) const;
    /// Whole days from the start of the day of `from` to the start of the day of `to`.
    std::int64_t daysBetween(Instant from, Instant to) const;

    Day day(Instant instant) const;
    /// The first instant of a day. Lenient: 2026-02-31 is 2026-03-03, month 13 is the next January.
    /// Nothing when a part is out of range.
    std::optional<Instant> midnight(std::int64_t year, std::int64_t month, std::int64_t day) const;
    /// "yyyy-MM-dd".
    std::string dayString(Instant instant) const;
    /// `instant` by a Unicode date pattern ("EEE MMM d, yyyy"), in English, in the calendar's zone.
    /// Patterns are constants of the program: what one needs is made at its first use and kept.
    std::string formatted(Instant instant, std::string_view pattern) const;
    /// The first instant of the day "YYYY-MM-DD": four, two and two ASCII digits and nothing else.
    /// Nothing for another form and for a day that does not exist.
    std::optional<Instant> parseDay(std::string_view text) const;
    /// The instant at which a clock in the calendar's zone shows "yyyy-MM-ddTHH:mm:ss"; the first
    /// of two when the clock goes back, and as much later as the clock goes forward when it shows
    /// that never. Nothing for another form, for a day or an hour that does not exist and for the
    /// year 0.
    std::optional<Instant> parseWallClock(std::string_view text) const;

  private:
    struct State;
    std::shared_ptr<const State> state_;
    explicit Calendar(std::shared_ptr<const State> state);
};
}  // namespace ombrix
