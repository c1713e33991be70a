#include "OmbrixPlatform/Calendar.h"

#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Process.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

struct Calendar::State {
    std::unique_ptr<icu::GregorianCalendar> prototype;

    /// A copy of the prototype, set to `instant`.
    std::unique_ptr<icu::GregorianCalendar> at(Instant instant) const {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::GregorianCalendar> calendar(prototype->clone());
        calendar->setTime(static_cast<double>(instant.time_since_epoch().count()) * 1000.0, status);
        return calendar;
    }
};

namespace {

constexpr std::int64_t farthestAmount = std::numeric_limits<std::int32_t>::max();
/// ICU's limit for instants, about five million years in both directions.
constexpr double farthestMilliseconds = 183882168921600000.0;

std::optional<Instant> instantOf(icu::GregorianCalendar& calendar) {
    UErrorCode status = U_ZERO_ERROR;
    const double milliseconds = calendar.getTime(status);
    if (U_FAILURE(status) || std::fabs(milliseconds) > farthestMilliseconds) return std::nullopt;
    return Instant(std::chrono::floor<std::chrono::seconds>(
        std::chrono::milliseconds(static_cast<std::int64_t>(milliseconds))));
}

int field(icu::GregorianCalendar& calendar, UCalendarDateFields name) {
    UErrorCode status = U_ZERO_ERROR;
    return calendar.get(name, status);
}

void toStartOfDay(icu::GregorianCalendar& calendar) {
    calendar.set(UCAL_HOUR_OF_DAY, 0);
    calendar.set(UCAL_MINUTE, 0);
    calendar.set(UCAL_SECOND, 0);
    calendar.set(UCAL_MILLISECOND, 0);
}

void toStartOf(icu::GregorianCalendar& calendar, Calendar::Unit unit) {
    toStartOfDay(calendar);
    switch (unit) {
        case Calendar::Unit::day:
            break;
        case Calendar::Unit::weekOfYear: {
            UErrorCode status = U_ZERO_ERROR;
            const int first = calendar.getFirstDayOfWeek(status);
            const int daysIntoWeek = (field(calendar, UCAL_DAY_OF_WEEK) - first + 7) % 7;
            calendar.add(UCAL_DATE, -daysIntoWeek, status);
            toStartOfDay(calendar);  // the day we left may have had no midnight
            break;
        }
        case Calendar::Unit::month:
            calendar.set(UCAL_DATE, 1);
            break;
        case Calendar::Unit::year:
            calendar.set(UCAL_MONTH, UCAL_JANUARY);
            calendar.set(UCAL_DATE, 1);
            break;
    }
}

std::unique_ptr<icu::GregorianCalendar> makeCalendar(std::unique_ptr<icu::TimeZone> zone,
                                                     int firstWeekday, int minimalDays) {
    UErrorCode status = U_ZERO_ERROR;
    auto calendar =
        std::make_unique<icu::GregorianCalendar>(zone.release(), icu::Locale::getRoot(), status);
    if (U_FAILURE(status)) std::abort();  // the data is part of the library
    calendar->setFirstDayOfWeek(static_cast<UCalendarDaysOfWeek>(firstWeekday));
    calendar->setMinimalDaysInFirstWeek(static_cast<std::uint8_t>(minimalDays));
    // When there are two midnights, the day starts at the first.
    calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    // No Julian calendar before 1582, as in `civilDay` and `isoInstant`.
    calendar->setGregorianChange(-farthestMilliseconds, status);
    return calendar;
}

/// The locale that sets the first day of the week; empty for "C" and "POSIX".
std::string timeLocale() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const auto value = Process::environment(variable);
        if (!value || value->empty()) continue;
        const auto name = std::string_view(*value).substr(0, value->find_first_of(".@"));
        return name == "C" || name == "POSIX" ? std::string() : *value;
    }
    return {};
}

std::optional<int> digits(std::string_view text, std::size_t at, std::size_t count) {
    for (std::size_t i = at; i < at + count; ++i)
        if (i >= text.size() || !Text::isAsciiDigit(text[i])) return std::nullopt;
    return Numbers::parseInteger<int>(text.substr(at, count));
}

/// The day "YYYY-MM-DD" at the start of `text`; nothing when it has another form or does not exist.
std::optional<std::chrono::year_month_day> civilDay(std::string_view text) {
    const auto year = digits(text, 0, 4);
    const auto month = digits(text, 5, 2);
    const auto day = digits(text, 8, 2);
    if (!year || !month || !day || text[4] != '-' || text[7] != '-') return std::nullopt;
    const std::chrono::year_month_day civil(std::chrono::year(*year),
                                            std::chrono::month(static_cast<unsigned>(*month)),
                                            std::chrono::day(static_cast<unsigned>(*day)));
    if (!civil.ok()) return std::nullopt;
    return civil;
}

struct WallClock {
    std::chrono::year_month_day day;
    std::chrono::seconds time;  // since midnight
};

/// "YYYY-MM-DDTHH:mm:ss" at the start of `text`.
std::optional<WallClock> wallClock(std::string_view text) {
    const auto civil = civilDay(text);
    const auto hour = digits(text, 11, 2);
    const auto minute = digits(text, 14, 2);
    const auto second = digits(text, 17, 2);
    if (!civil || !hour || !minute || !second) return std::nullopt;
    if (text[10] != 'T' || text[13] != ':' || text[16] != ':') return std::nullopt;
    if (*hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    return WallClock{*civil, std::chrono::hours(*hour) + std::chrono::minutes(*minute) +
                                 std::chrono::seconds(*second)};
}
}  // namespace

Calendar::Calendar(std::shared_ptr<const State> state) : state_(std::move(state)) {}

Calendar::Calendar(std::string_view zone, Weekday firstWeekday, int minimalDaysInFirstWeek) {
    std::unique_ptr<icu::TimeZone> found(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(
        icu::StringPiece(zone.data(), static_cast<std::int32_t>(zone.size())))));
    if (*found == icu::TimeZone::getUnknown()) found.reset(icu::TimeZone::getGMT()->clone());
    auto state = std::make_shared<State>();
    state->prototype =
        makeCalendar(std::move(found), static_cast<int>(firstWeekday), minimalDaysInFirstWeek);
    state_ = std::move(state);
}

Calendar Calendar::current() {
    int firstWeekday = static_cast<int>(Weekday::sunday);
    int minimalDays = 1;
    if (const std::string name = timeLocale(); !name.empty()) {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::Calendar> local(
            icu::Calendar::createInstance(icu::Locale::createCanonical(name.c_str()), status));
        if (U_SUCCESS(status)) {
            firstWeekday = local->getFirstDayOfWeek(status);
            minimalDays = local->getMinimalDaysInFirstWeek();
        }
    }
    auto state = std::make_shared<State>();
    state->prototype =
        makeCalendar(std::unique_ptr<icu::TimeZone>(icu::TimeZone::detectHostTimeZone()),
                     firstWeekday, minimalDays);
    return Calendar(std::move(state));
}

Calendar Calendar::gregorianUtc() {
    static const Calendar instance("UTC", Weekday::sunday);
    return instance;
}

std::optional<Instant> Calendar::adding(std::int64_t amount, Unit unit, Instant to) const {
    if (amount > farthestAmount / 7 || amount < -farthestAmount / 7) return std::nullopt;
    const auto count = static_cast<std::int32_t>(amount);
    const auto calendar = state_->at(to);
    UErrorCode status = U_ZERO_ERROR;
    switch (unit) {
        case Unit::day:
            calendar->add(UCAL_DATE, count, status);
            break;
        case Unit::weekOfYear:
            calendar->add(UCAL_DATE, count * 7, status);
            break;
        case Unit::month:
            calendar->add(UCAL_MONTH, count, status);
            break;
        case Unit::year:
            calendar->add(UCAL_YEAR, count, status);
            break;
    }
    if (U_FAILURE(status)) return std::nullopt;
    const auto result = instantOf(*calendar);
    // Far out of range, ICU does not fail but wraps around.
    if (!result || (amount > 0 && *result <= to) || (amount < 0 && *result >= to))
        return std::nullopt;
    return result;
}

Instant Calendar::startOfDay(Instant instant) const {
    const auto calendar = state_->at(instant);
    toStartOfDay(*calendar);
    return instantOf(*calendar).value_or(instant);
}

std::optional<Calendar::Interval> Calendar::interval(Unit unit, Instant instant) const {
    const auto calendar = state_->at(instant);
    toStartOf(*calendar, unit);
    const auto start = instantOf(*calendar);
    if (!start) return std::nullopt;
    const auto next = adding(1, unit, *start);
    if (!next) return std::nullopt;
    return Interval{*start, startOfDay(*next)};
}

std::int64_t Calendar::daysBetween(Instant from, Instant to) const {
    return field(*state_->at(to), UCAL_JULIAN_DAY) - field(*state_->at(from), UCAL_JULIAN_DAY);
}

Calendar::Day Calendar::day(Instant instant) const {
    const auto calendar = state_->at(instant);
    return {.year = field(*calendar, UCAL_EXTENDED_YEAR),
            .month = field(*calendar, UCAL_MONTH) + 1,
            .day = field(*calendar, UCAL_DATE)};
}

std::optional<Instant> Calendar::midnight(std::int64_t year, std::int64_t month,
                                          std::int64_t dayOfMonth) const {
    constexpr std::int64_t farthest = 1'000'000;  // for each part; well within ICU's range of years
    for (const auto part : {year, month, dayOfMonth})
        if (part > farthest || part < -farthest) return std::nullopt;
    const std::unique_ptr<icu::GregorianCalendar> calendar(state_->prototype->clone());
    calendar->clear();
    calendar->set(UCAL_EXTENDED_YEAR, static_cast<std::int32_t>(year));
    calendar->set(UCAL_MONTH, static_cast<std::int32_t>(month - 1));
    calendar->set(UCAL_DATE, static_cast<std::int32_t>(dayOfMonth));
    return instantOf(*calendar);
}

std::string Calendar::dayString(Instant instant) const {
    const auto [year, month, dayOfMonth] = day(instant);
    std::array<char, 40> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, dayOfMonth);
    return std::string(text.data(), static_cast<std::size_t>(length));
}

std::string Calendar::formatted(Instant instant, std::string_view pattern) const {
    thread_local std::map<std::string, std::unique_ptr<icu::SimpleDateFormat>, std::less<>> formats;
    auto format = formats.find(pattern);
    if (format == formats.end()) {
        UErrorCode status = U_ZERO_ERROR;
        auto made = std::make_unique<icu::SimpleDateFormat>(
            icu::UnicodeString::fromUTF8(
                icu::StringPiece(pattern.data(), static_cast<std::int32_t>(pattern.size()))),
            icu::Locale("en_US_POSIX"), status);
        if (U_FAILURE(status)) std::abort();  // the data is part of the library
        format = formats.emplace(pattern, std::move(made)).first;
    }
    icu::UnicodeString text;
    icu::FieldPosition ignored(icu::FieldPosition::DONT_CARE);
    format->second->format(*state_->at(instant), text, ignored);
    std::string result;
    return text.toUTF8String(result);
}

std::optional<Instant> Calendar::parseDay(std::string_view text) const {
    const auto civil = text.size() == 10 ? civilDay(text) : std::nullopt;
    if (!civil) return std::nullopt;
    return midnight(static_cast<int>(civil->year()), static_cast<unsigned>(civil->month()),
                    static_cast<unsigned>(civil->day()));
}

std::optional<Instant> Calendar::parseWallClock(std::string_view text) const {
    constexpr std::size_t length = 19;
    const auto clock = text.size() == length ? wallClock(text) : std::nullopt;
    // The year 0 is written as the year 1 before Christ.
    if (!clock || clock->day.year() == std::chrono::year(0)) return std::nullopt;
    const std::unique_ptr<icu::GregorianCalendar> calendar(state_->prototype->clone());
    calendar->clear();
    calendar->set(UCAL_EXTENDED_YEAR, static_cast<int>(clock->day.year()));
    calendar->set(UCAL_MONTH, static_cast<int>(static_cast<unsigned>(clock->day.month())) - 1);
    calendar->set(UCAL_DATE, static_cast<int>(static_cast<unsigned>(clock->day.day())));
    const std::chrono::hh_mm_ss time(clock->time);
    calendar->set(UCAL_HOUR_OF_DAY, static_cast<int>(time.hours().count()));
    calendar->set(UCAL_MINUTE, static_cast<int>(time.minutes().count()));
    calendar->set(UCAL_SECOND, static_cast<int>(time.seconds().count()));
    return instantOf(*calendar);
}

std::optional<std::chrono::sys_days> parseIsoDay(std::string_view text) {
    const auto civil = text.size() == 10 ? civilDay(text) : std::nullopt;
    if (!civil) return std::nullopt;
    return std::chrono::sys_days(*civil);
}

std::string isoInstant(Instant instant) {
    const auto days = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day civil(days);
    const std::chrono::hh_mm_ss time(instant - days);
    std::array<char, 64> text{};
    const int length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(civil.year()),
        static_cast<unsigned>(civil.month()), static_cast<unsigned>(civil.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()));
    return std::string(text.data(), static_cast<std::size_t>(length));
}

std::optional<Instant> parseIsoInstant(std::string_view text) {
    constexpr std::size_t zoneAt = 19;  // after "yyyy-MM-ddTHH:mm:ss"
    if (text.size() <= zoneAt) return std::nullopt;
    const auto clock = wallClock(text);
    if (!clock) return std::nullopt;
    std::chrono::minutes offset{0};
    const auto zone = text.substr(zoneAt);
    if (zone != "Z") {
        const bool hasColon = zone.size() == 6 && zone[3] == ':';
        const auto hours = digits(zone, 1, 2);
        const auto minutes = digits(zone, hasColon ? 4 : 3, 2);
        if ((zone.size() != 5 && !hasColon) || !hours || !minutes) return std::nullopt;
        if (*hours > 23 || *minutes > 59 || (zone[0] != '+' && zone[0] != '-')) return std::nullopt;
        offset = std::chrono::hours(*hours) + std::chrono::minutes(*minutes);
        if (zone[0] == '-') offset = -offset;
    }
    const Instant instant = std::chrono::sys_days(clock->day) + clock->time - offset;
    // In UTC its year may have no four digits, and then it could be written but not read again.
    static constexpr Instant first = std::chrono::sys_days(std::chrono::year(0) / 1 / 1),
                             end = std::chrono::sys_days(std::chrono::year(10'000) / 1 / 1);
    if (instant < first || instant >= end) return std::nullopt;
    return instant;
}
}  // namespace ombrix
