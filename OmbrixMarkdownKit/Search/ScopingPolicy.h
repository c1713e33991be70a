// The window of days an answer looks at when the question names no time, and how that window grows
// when it has too few meetings.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::ScopingPolicy {

/// Days up to today, in the calendar it was made with.
struct Window {
    std::string from;  ///< "YYYY-MM-DD", inclusive
    std::string to;    ///< the day of the clock it was made with, inclusive
    std::int64_t days = 0;
    std::optional<std::int64_t> widenedFrom;  ///< the length before the first widening
    std::optional<std::string> note;          ///< a sentence for the reader of the answer

    /// Only the two days.
    AnswerScope scope() const;
    bool operator==(const Window&) const = default;
};

/// The default window: as many days back as the question looks ahead, from 7 to 30; 14 without a
/// horizon.
Window window(std::optional<std::int64_t> horizonDays, Instant now, const Calendar& calendar);

/// A window of `days` days (at least 1) that ends today. If the calendar does not reach back that
/// far it is only today.
Window window(std::int64_t days, Instant now, const Calendar& calendar,
              std::optional<std::int64_t> widenedFrom, std::optional<std::string> note);

/// The window of the smallest of `steps` (days, in any order) that is longer than `thin`, with a
/// note that says why. Nothing when `scannedCount` is at least `thinBelow` and when no step is
/// longer.
std::optional<Window> widen(const Window& thin, std::int64_t scannedCount, std::int64_t thinBelow,
                            std::span<const std::int64_t> steps, Instant now,
                            const Calendar& calendar);
}  // namespace ombrix::ScopingPolicy
