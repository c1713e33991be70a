// Calendar days as the engine stores them: "YYYY-MM-DD" strings, ordered as strings.
//
// A day is read leniently about its month only: "2026-13-05" is the fifth of January 2027. A day of
// the month that the month does not have is no day: "2026-02-31", "2026-03-00".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix::ISODate {

/// As written: the month may be any number of two digits.
struct Components {
    int year = 0, month = 0, day = 0;
    bool operator==(const Components&) const = default;
};

/// Nothing unless `text` is three integers of 4, 2 and 2 characters with "-" between them, and the
/// calendar has that day.
std::optional<Components> parse(std::string_view text);
bool isValid(std::string_view text);

/// Midnight UTC of that day.
std::optional<Instant> date(std::string_view text);
/// The day of `date` in the zone of `calendar`.
std::string string(Instant date, const Calendar& calendar);
/// Whole days from the first to the second, negative when the second is before the first. Nothing
/// when either is no day.
std::optional<std::int64_t> days(std::string_view from, std::string_view to);

// For people, in English. A text that is no day comes back unchanged. The year is shown when
// `relativeTo` is not empty and begins with four other characters than the day.

/// "Sep 1", or "Sep 1, 2026".
std::string monthDay(std::string_view text, std::string_view relativeTo = {});
/// "Tue Sep 1", or "Tue Sep 1, 2026".
std::string shortDay(std::string_view text, std::string_view relativeTo = {});
/// By a Unicode date pattern, which is a constant of the program.
std::string formatted(std::string_view text, std::string_view pattern);
}  // namespace ombrix::ISODate
