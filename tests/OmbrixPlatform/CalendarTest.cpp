#include "OmbrixPlatform/Calendar.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using Unit = Calendar::Unit;
using Weekday = Calendar::Weekday;

Instant at(std::string_view text) { return parseIsoInstant(text).value(); }

std::string shown(const std::optional<Instant>& instant) {
    return instant ? isoInstant(*instant) : "nothing";
}

std::string shown(const std::optional<Calendar::Interval>& interval) {
    return interval ? isoInstant(interval->start) + " " + isoInstant(interval->end) : "nothing";
}

TEST(Calendar, InstantsReadInOneFormAndAZone) {
    for (const auto& [text, utc] : {std::pair{"2026-03-01T09:30:00Z", "2026-03-01T09:30:00Z"},
                                    {"2026-03-01T00:30:00+01:00", "2026-02-28T23:30:00Z"},
                                    {"2024-02-28T23:30:00-0130", "2024-02-29T01:00:00Z"},
                                    {"1969-12-31T23:59:59Z", "1969-12-31T23:59:59Z"}}) {
        EXPECT_EQ(shown(parseIsoInstant(text)), utc) << text;
    }
    for (const char* no :
         {"2026-02-29T00:00:00Z", "2026-03-01T24:00:00Z", "2026-03-01T09:60:00Z",
          "2026-03-01T09:30:60Z", "2026-03-01T09:30:00.5Z", "2026-03-01T09:30:00",
          "2026-03-01T09:30:00+1", "2026-03-01T09:30:00+24:00", "2026-03-01T09:30:00+01:60",
          "2026-03-01T09:30:00*01:00", "2026-03-01 09:30:00Z", "2026-03-01T09:30:00Z ",
          "0000-01-01T00:00:00+00:01", "9999-12-31T23:59:59-00:01", "+026-03-01T09:30:00Z", ""}) {
        EXPECT_FALSE(parseIsoInstant(no)) << no;
    }
}

TEST(Calendar, MonthsAndYearsClip) {
    const auto utc = Calendar::gregorianUtc();
    const struct {
        const char* from;
        std::int64_t amount;
        Unit unit;
        const char* to;
    } cases[] = {
        {"2024-01-31T08:00:00Z", 1, Unit::month, "2024-02-29T08:00:00Z"},
        {"2026-03-31T08:00:00Z", -1, Unit::month, "2026-02-28T08:00:00Z"},
        {"2026-01-15T08:00:00Z", -13, Unit::month, "2024-12-15T08:00:00Z"},
        {"2024-02-29T08:00:00Z", 1, Unit::year, "2025-02-28T08:00:00Z"},
        {"2026-03-01T08:00:00Z", -1, Unit::weekOfYear, "2026-02-22T08:00:00Z"},
    };
    for (const auto& [from, amount, unit, to] : cases)
        EXPECT_EQ(shown(utc.adding(amount, unit, at(from))), to) << from << " " << amount;
}

TEST(Calendar, WhatLiesOutsideTheRangeIsNothing) {
    const auto utc = Calendar::gregorianUtc();
    const Instant now = at("2026-03-01T08:00:00Z");
    for (const Unit unit : {Unit::day, Unit::weekOfYear, Unit::month, Unit::year}) {
        for (const std::int64_t sign : {1, -1}) {
            EXPECT_EQ(utc.adding(sign * INT64_MAX, unit, now), std::nullopt);
            EXPECT_EQ(utc.adding(sign * INT32_MAX, unit, now), std::nullopt);
        }
    }
    EXPECT_EQ(utc.midnight(INT64_MAX, 1, 1), std::nullopt);
    EXPECT_EQ(utc.midnight(2026, INT64_MIN, 1), std::nullopt);
    // No instant is too far away to ask about.
    for (const std::int64_t seconds : {INT64_MAX, INT64_MIN, INT64_MAX / 1000}) {
        for (const Unit unit : {Unit::day, Unit::weekOfYear, Unit::month, Unit::year}) {
            const Instant far{std::chrono::seconds(seconds)};
            utc.interval(unit, far);
            utc.dayString(utc.startOfDay(far));
        }
    }
}

TEST(Calendar, MidnightIsLenientAndADayIsNot) {
    const auto utc = Calendar::gregorianUtc();
    EXPECT_EQ(shown(utc.midnight(2026, 2, 31)), "2026-03-03T00:00:00Z");
    EXPECT_EQ(shown(utc.midnight(2026, 0, 1)), "2025-12-01T00:00:00Z");
    for (const char* day : {"2024-02-29", "1582-10-10", "0000-02-29", "9999-12-31"}) {
        const auto midnight = utc.parseDay(day);
        ASSERT_TRUE(midnight) << day;
        EXPECT_EQ(utc.dayString(*midnight), day);
        EXPECT_EQ(isoInstant(*midnight), std::string(day) + "T00:00:00Z");
    }
    for (const char* no : {"2026-02-29", "2026-2-28", "2026-02-28 ", "20260228", "2026/02/28",
                           "2026-00-01", "2026-01-00", "+026-01-01", "\u0662026-01-1", ""}) {
        EXPECT_FALSE(utc.parseDay(no)) << no;
    }
}

TEST(Calendar, DaysKeepTheWallClockOverAChange) {
    const Calendar berlin("Europe/Berlin", Weekday::monday, 4);
    // Clocks go forward on 29 March 2026 and back on 25 October.
    EXPECT_EQ(shown(berlin.adding(1, Unit::day, at("2026-03-28T09:00:00Z"))),
              "2026-03-29T08:00:00Z");
    EXPECT_EQ(shown(berlin.interval(Unit::day, at("2026-03-29T12:00:00Z"))),
              "2026-03-28T23:00:00Z 2026-03-29T22:00:00Z");
    EXPECT_EQ(shown(berlin.interval(Unit::month, at("2026-10-25T12:00:00Z"))),
              "2026-09-30T22:00:00Z 2026-10-31T23:00:00Z");
    EXPECT_EQ(berlin.daysBetween(at("2026-03-28T22:59:00Z"), at("2026-03-29T22:00:00Z")), 2);
    EXPECT_EQ(berlin.daysBetween(at("2026-03-29T21:59:00Z"), at("2026-03-28T23:00:00Z")), 0);
    EXPECT_EQ(berlin.day(at("2026-12-31T23:30:00Z")), (Calendar::Day{2027, 1, 1}));
}

TEST(Calendar, AWallClockIsReadInItsZone) {
    const Calendar berlin("Europe/Berlin", Weekday::monday, 4);
    const std::pair<const char*, const char*> cases[] = {
        {"2026-03-29T01:59:59", "2026-03-29T00:59:59Z"},
        {"2026-03-29T02:30:00", "2026-03-29T01:30:00Z"},  // no clock shows it
        {"2026-10-25T02:30:00", "2026-10-25T00:30:00Z"},  // clocks show it twice
    };
    for (const auto& [wall, instant] : cases)
        EXPECT_EQ(berlin.parseWallClock(wall), parseIsoInstant(instant)) << wall;
    for (const char* other : {"2026-09-08T10:00", "2026-09-08T10:00:00Z", "2026-09-08T24:00:00",
                              "2026-02-31T10:00:00", "2026-09-08 10:00:00", ""})
        EXPECT_FALSE(berlin.parseWallClock(other)) << other;
}

TEST(Calendar, ADayBeginsWithItsFirstInstantEvenWithoutAMidnight) {
    // In Beirut clocks go from 00:00 to 01:00 on Sunday 29 March 2026.
    const Calendar beirut("Asia/Beirut", Weekday::monday);
    EXPECT_EQ(shown(beirut.interval(Unit::day, at("2026-03-29T10:00:00Z"))),
              "2026-03-28T22:00:00Z 2026-03-29T21:00:00Z");
    EXPECT_EQ(shown(beirut.interval(Unit::weekOfYear, at("2026-03-29T10:00:00Z"))),
              "2026-03-22T22:00:00Z 2026-03-29T21:00:00Z");
    EXPECT_EQ(shown(beirut.parseDay("2026-03-29")), "2026-03-28T22:00:00Z");
    // In Havana clocks go from 01:00 back to 00:00 on Sunday 1 November 2026: two midnights.
    const Calendar havana("America/Havana", Weekday::sunday);
    for (const char* instant :
         {"2026-11-01T04:30:00Z", "2026-11-01T05:30:00Z", "2026-11-01T20:00:00Z"}) {
        EXPECT_EQ(shown(havana.startOfDay(at(instant))), "2026-11-01T04:00:00Z") << instant;
        EXPECT_EQ(shown(havana.interval(Unit::month, at(instant))),
                  "2026-11-01T04:00:00Z 2026-12-01T05:00:00Z");
    }
}

TEST(Calendar, IntervalsFollowOneAnotherWithoutAGap) {
    for (const char* zone : {"UTC", "Europe/Berlin", "Asia/Beirut", "America/Havana",
                             "America/Sao_Paulo", "Australia/Lord_Howe", "Asia/Kathmandu"}) {
        const Calendar calendar(zone, Weekday::monday, 4);
        for (const Unit unit : {Unit::day, Unit::weekOfYear, Unit::month, Unit::year}) {
            Instant place = at("2016-06-15T12:00:00Z");
            const Instant stop = at("2018-12-31T12:00:00Z");
            while (place < stop) {
                const auto interval = calendar.interval(unit, place);
                ASSERT_TRUE(interval && interval->start <= place);
                ASSERT_LT(place, interval->end) << zone << " " << isoInstant(place);
                const auto last = interval->end - std::chrono::seconds(1);
                ASSERT_EQ(shown(calendar.interval(unit, last)), shown(interval)) << zone;
                ASSERT_EQ(calendar.startOfDay(interval->start), interval->start);
                place = interval->end;
            }
        }
    }
}

TEST(Calendar, TheCurrentOneFollowsTheEnvironment) {
    const struct {
        std::optional<std::string> all, time, lang;
        std::optional<std::string> weekOfSunday;
    } cases[] = {
        {{}, {}, "de_DE.UTF-8", "2026-02-23"},
        {{}, "fr_FR", "en_US.UTF-8", "2026-02-23"},
        {"C", "fr_FR", "de_DE", "2026-03-01"},
        {"", "", "de_DE@euro", "2026-02-23"},
        {{}, {}, {}, "2026-03-01"},
        {"ar_EG.UTF-8", {}, {}, "2026-02-28"},  // Saturday first
        {"no such locale", {}, {}, {}},
    };
    for (const auto& [all, time, lang, weekOfSunday] : cases) {
        const test::Variable first("LC_ALL", all);
        const test::Variable second("LC_TIME", time);
        const test::Variable third("LANG", lang);
        const auto calendar = Calendar::current();
        const auto week = calendar.interval(Unit::weekOfYear, at("2026-03-01T12:00:00Z"));
        ASSERT_TRUE(week);
        if (weekOfSunday) {
            EXPECT_EQ(calendar.dayString(week->start), *weekOfSunday);
        }
    }
    const test::Variable zone("TZ", "Asia/Tokyo");
    EXPECT_EQ(Calendar::current().dayString(at("2026-03-01T15:00:00Z")), "2026-03-02");
    EXPECT_EQ(Calendar("No/Such_Zone", Weekday::sunday).dayString(at("2026-03-01T23:59:59Z")),
              "2026-03-01");
}
}  // namespace
}  // namespace ombrix
