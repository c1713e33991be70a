#include "OmbrixCore/Streaks.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

Instant at(std::string_view text) { return *parseIsoInstant(text); }

Streaks::Lengths streaks(std::initializer_list<const char*> days, std::string_view now,
                         const Calendar& calendar = Calendar::gregorianUtc()) {
    std::vector<Instant> dates;
    for (const char* day : days) dates.push_back(at(std::string(day) + "T00:00:00Z"));
    return Streaks::of(dates, at(now), calendar);
}
}  // namespace

TEST(Streaks, ACurrentStreakLivesUntilTheEndOfTheDayAfterItsLast) {
    using Lengths = Streaks::Lengths;
    // 2026-03-02 is a Monday.
    EXPECT_EQ(streaks({"2026-03-02", "2026-03-03"}, "2026-03-03T08:00:00Z"), (Lengths{2, 2}));
    EXPECT_EQ(streaks({"2026-03-02", "2026-03-03"}, "2026-03-04T23:59:59Z"), (Lengths{2, 2}));
    EXPECT_EQ(streaks({"2026-03-02", "2026-03-03"}, "2026-03-05T00:00:00Z"), (Lengths{0, 2}));
    EXPECT_EQ(streaks({}, "2026-03-05T00:00:00Z"), (Lengths{0, 0}));
    EXPECT_EQ(streaks({"2026-03-04", "2026-03-09"}, "2026-03-04T12:00:00Z"), (Lengths{0, 1}))
        << "a date that is still to come";
}

TEST(Streaks, AGapEndsARunAndTheLongestIsKept) {
    using Lengths = Streaks::Lengths;
    EXPECT_EQ(
        streaks({"2026-02-26", "2026-02-27", "2026-02-28", "2026-03-01",  // over a month's end
                 "2026-03-05", "2026-03-06"},
                "2026-03-06T12:00:00Z"),
        (Lengths{2, 4}));
    EXPECT_EQ(
        streaks({"2026-03-06", "2026-03-01", "2026-03-05", "2026-03-01"}, "2026-03-06T12:00:00Z"),
        (Lengths{2, 2}))
        << "in any order, a day twice";
}

TEST(Streaks, DaysFollowEachOtherWhereTheClocksChangeAtMidnight) {
    // In Santiago the clocks went from 2024-09-07 24:00 to 2024-09-08 01:00: that day begins at
    // one.
    const Calendar santiago("America/Santiago", Calendar::Weekday::monday);
    const std::vector<Instant> noons = {at("2024-09-06T16:00:00Z"), at("2024-09-07T16:00:00Z"),
                                        at("2024-09-08T16:00:00Z"), at("2024-09-09T16:00:00Z")};
    EXPECT_EQ(Streaks::of(noons, at("2024-09-10T16:00:00Z"), santiago), (Streaks::Lengths{4, 4}));
}

TEST(Streaks, DaysAreTheCalendarsOwn) {
    // Midnight in UTC is the evening of the day before in New York, so today's date is yesterday's.
    const Calendar newYork("America/New_York", Calendar::Weekday::sunday);
    EXPECT_EQ(streaks({"2026-03-03", "2026-03-04"}, "2026-03-05T20:00:00Z", newYork),
              (Streaks::Lengths{0, 2}));
}
}  // namespace ombrix
