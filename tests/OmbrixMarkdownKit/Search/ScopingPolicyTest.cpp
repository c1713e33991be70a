#include "OmbrixMarkdownKit/Search/ScopingPolicy.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace ombrix {
namespace {

using ScopingPolicy::Window;
constexpr auto none = std::nullopt;

const Calendar berlin("Europe/Berlin", Calendar::Weekday::monday, 4);

/// Half past eleven in the evening of 2026-03-10 in Berlin.
Instant now() { return *parseIsoInstant("2026-03-10T22:30:00Z"); }

TEST(ScopingPolicy, ADefaultWindowIsBetweenOneWeekAndThirtyDaysLong) {
    const struct {
        std::optional<std::int64_t> horizon;
        std::int64_t days;
        const char* from;
    } cases[] = {
        {none, 14, "2026-02-25"},
        {3, 7, "2026-03-04"},
        {10, 10, "2026-03-01"},
        {100, 30, "2026-02-09"},
    };
    for (const auto& [horizon, days, from] : cases) {
        EXPECT_EQ(ScopingPolicy::window(horizon, now(), berlin),
                  (Window{from, "2026-03-10", days, none, none}))
            << days;
    }
}

TEST(ScopingPolicy, AWindowOfGivenLengthHasAtLeastOneDay) {
    const auto first = [](std::int64_t days) {
        return ScopingPolicy::window(days, now(), berlin, 5, "why");
    };
    EXPECT_EQ(first(365), (Window{"2025-03-11", "2026-03-10", 365, 5, "why"}));
    EXPECT_EQ(first(-7), (Window{"2026-03-10", "2026-03-10", 1, 5, "why"}));
    EXPECT_EQ(first(365).scope(), (AnswerScope{.dateFrom = "2025-03-11", .dateTo = "2026-03-10"}));
    constexpr auto endless = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(first(endless), (Window{"2026-03-10", "2026-03-10", endless, 5, "why"}));
}

TEST(ScopingPolicy, AThinWindowGrowsStepByStepAndRemembersItsFirstLength) {
    const std::vector<std::int64_t> steps = {90, 14, 30};
    const auto widened = [&](const Window& from, std::int64_t scanned) {
        return ScopingPolicy::widen(from, scanned, 3, steps, now(), berlin);
    };
    const auto fortnight = ScopingPolicy::window(none, now(), berlin);
    EXPECT_EQ(widened(fortnight, 3), none);

    const auto month = widened(fortnight, 1);
    ASSERT_TRUE(month);
    EXPECT_EQ(*month, (Window{"2026-02-09", "2026-03-10", 30, 14,
                              "Widened to 30 days — only 1 meeting in the last 14"}));
    const auto quarter = widened(*month, 0);
    ASSERT_TRUE(quarter);
    EXPECT_EQ(*quarter, (Window{"2025-12-11", "2026-03-10", 90, 14,
                                "Widened to 90 days — only 0 meetings in the last 30"}));
    EXPECT_EQ(widened(*quarter, 2), none);
    EXPECT_EQ(ScopingPolicy::widen(fortnight, 0, 3, {}, now(), berlin), none);
}
}  // namespace
}  // namespace ombrix
