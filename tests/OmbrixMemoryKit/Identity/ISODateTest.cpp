#include "OmbrixMemoryKit/Identity/ISODate.h"

#include <random>

namespace ombrix {
namespace {

TEST(ISODate, IsThreeNumbersAndTheMonthIsAsWritten) {
    for (const auto* other :
         {"2026-9-01", "-026-09-01", "2026--9-01", "2026-09-01 ", "２０26-0-1", ""})
        EXPECT_FALSE(ISODate::isValid(other)) << other;
    EXPECT_EQ(ISODate::parse("+026-+9-+1"), (ISODate::Components{26, 9, 1}));
    EXPECT_EQ(ISODate::parse("2026-13-05"), (ISODate::Components{2026, 13, 5}));
    EXPECT_EQ(isoInstant(*ISODate::date("2026-13-05")), "2027-01-05T00:00:00Z");
}

TEST(ISODate, AgreesWithTheCalendarOnAnyNumbers) {
    const Calendar calendar = Calendar::gregorianUtc();
    std::mt19937 random(6);
    for (int i = 0; i < 3000; ++i) {
        const int year = static_cast<int>(random() % 10'000),
                  month = static_cast<int>(random() % 100), day = static_cast<int>(random() % 100);
        char text[16];
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
        const auto midnight = *calendar.midnight(year, month, day);
        EXPECT_EQ(ISODate::isValid(text), calendar.day(midnight).day == day) << text;
        EXPECT_EQ(ISODate::date(text).value_or(midnight), midnight) << text;
    }
}

TEST(ISODate, CountsDaysBothWaysAndNoneForABadDate) {
    EXPECT_EQ(ISODate::days("2026-03-01", "2025-03-01"), -365);
    EXPECT_EQ(ISODate::days("2026-03-01", "soon"), std::nullopt);
    EXPECT_EQ(ISODate::days("", "2026-03-01"), std::nullopt);
}

TEST(ISODate, ShowsTheYearOnlyWhenItIsAnotherOne) {
    EXPECT_EQ(ISODate::monthDay("2026-09-01"), "Sep 1");
    EXPECT_EQ(ISODate::monthDay("2026-09-01", "2027-01-02"), "Sep 1, 2026");
    EXPECT_EQ(ISODate::monthDay("0926-09-01", "2027-01-02"), "Sep 1, 926");
    EXPECT_EQ(ISODate::shortDay("2026-09-01", "2026-01-01"), "Tue Sep 1");
    EXPECT_EQ(ISODate::shortDay("2026-09-01", "20"), "Tue Sep 1, 2026");
    EXPECT_EQ(ISODate::shortDay("end of week", "2026-01-01"), "end of week");
    EXPECT_EQ(ISODate::formatted("2026-09-01", "EEEE d MMMM"), "Tuesday 1 September");
    const Calendar berlin("Europe/Berlin", Calendar::Weekday::monday);
    EXPECT_EQ(ISODate::string(*parseIsoInstant("2026-08-31T22:30:00Z"), berlin), "2026-09-01");
}
}  // namespace
}  // namespace ombrix
