// The clocks that exports print beside what is said: since the start of a recording, or of the day.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace ombrix::TranscriptImport {

struct Clock {
    std::int64_t seconds = 0;
    /// Ends on five minutes, read as hours and minutes, as the clocks of schedules do.
    bool isRound = false;
    bool hasSeconds = false;  ///< three parts: "00:00:03"
    bool hasHalf = false;     ///< "AM" or "PM"
};

/// Takes a clock off the front of `text`: "0:03", "00:00:03", "125:03" (minutes), "101:00:03",
/// "00:00:03.120", "9:03 AM", in the digits of any script. Nothing, and `text` as it was, when it
/// does not begin with one or a letter or a digit goes on right after it.
std::optional<Clock> takeClock(std::string_view& text);

/// True when both are times of day, written alike, in the last hour of one and the first of the
/// next. "23:59" counts as one, though it may also be minutes and seconds.
bool passesMidnight(const Clock& last, const Clock& next);
}  // namespace ombrix::TranscriptImport
