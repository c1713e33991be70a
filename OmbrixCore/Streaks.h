// How many days in a row something was done.
#pragma once

#include <cstdint>
#include <vector>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix::Streaks {

struct Lengths {
    std::int64_t current = 0;  ///< the days in a row that end today or yesterday
    std::int64_t longest = 0;
    bool operator==(const Lengths&) const = default;
};

/// The streaks of the days of `dates`, which come in any order; a day counts once. Days are those
/// of `calendar`, and today is the day of `now`. With a date after today there is no current
/// streak.
Lengths of(const std::vector<Instant>& dates, Instant now, const Calendar& calendar);
}  // namespace ombrix::Streaks
