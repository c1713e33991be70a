#include "OmbrixMemoryKit/Identity/ISODate.h"

namespace ombrix {
namespace {

TEST(ISODate, OnlyTheDayOfTheMonthMustExist) {
    for (const auto* day : {"2024-02-29", "2000-02-29", "2026-00-31", "2026-15-31", "+026-+9-+1"})
        EXPECT_TRUE(ISODate::isValid(day)) << day;
    for (const auto* other :
         {"2026-02-29", "1900-02-29", "2026-02-31", "2026-16-31", "2026-03-00", "2026-01-32",
          "2026-9-01", "-026-09-01", "2026--9-01", "2026-09-01 ", "２０26-0-1", ""})
        EXPECT_FALSE(ISODate::isValid(other)) << other;
    EXPECT_EQ(ISODate::parse("2026-13-05"), (ISODate::Components{2026, 13, 5}));
    EXPECT_EQ(isoInstant(*ISODate::date("2026-13-05")), "2027-01-05T00:00:00Z");
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
