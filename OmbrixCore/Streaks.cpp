#include "OmbrixCore/Streaks.h"

#include <algorithm>
#include <optional>

namespace ombrix::Streaks {
namespace {

/// The first instant of the day that is `days` away. Adding days keeps the time of day, and where
/// the clocks change at midnight two neighbouring days begin at different times.
std::optional<Instant> startOfNeighbour(Instant day, std::int64_t days, const Calendar& calendar) {
    const auto moved = calendar.adding(days, Calendar::Unit::day, day);
    if (!moved) return std::nullopt;
    return calendar.startOfDay(*moved);
}

std::int64_t longestRun(const std::vector<Instant>& days, const Calendar& calendar) {
    std::int64_t longest = days.empty() ? 0 : 1;
    std::int64_t run = longest;
    for (std::size_t i = 1; i < days.size(); ++i) {
        const bool follows = startOfNeighbour(days[i - 1], 1, calendar) == days[i];
        run = follows ? run + 1 : 1;
        longest = std::max(longest, run);
    }
    return longest;
}

std::int64_t currentRun(const std::vector<Instant>& days, Instant now, const Calendar& calendar) {
    if (days.empty()) return 0;
    const Instant today = calendar.startOfDay(now);
    const Instant last = days.back();
    if (last != today && startOfNeighbour(today, -1, calendar) != last) return 0;
    std::int64_t run = 0;
    std::optional<Instant> day = last;
    for (auto found = days.rbegin(); found != days.rend() && day == *found; ++found) {
        ++run;
        day = startOfNeighbour(*day, -1, calendar);
    }
    return run;
}
}  // namespace

Lengths of(const std::vector<Instant>& dates, Instant now, const Calendar& calendar) {
    std::vector<Instant> days;
    days.reserve(dates.size());
    for (const Instant date : dates) days.push_back(calendar.startOfDay(date));
    std::ranges::sort(days);
    const auto repeated = std::ranges::unique(days);
    days.erase(repeated.begin(), repeated.end());
    return {.current = currentRun(days, now, calendar), .longest = longestRun(days, calendar)};
}
}  // namespace ombrix::Streaks
