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

/// The streaks of the days that `dates` fall on, in any order; a day counts once. Days are
/// `calendar`'s, and today is the one that holds `now`. A date behind today breaks the current
/// streak.
Lengths of(const std::vector<Instant>& dates, Instant now, const Calendar& calendar);
}  // namespace ombrix::Streaks
