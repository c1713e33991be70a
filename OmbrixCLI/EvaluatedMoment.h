// The moment a command works at: the present, or noon of the day that its option `--now` names.
#pragma once

#include <optional>
#include <string>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

/// The present time without a day or with an empty one. Otherwise twelve hours behind the midnight
/// of exactly "YYYY-MM-DD" in the calendar's zone, clear of the borders of the day. Throws
/// `CLIError::invalidInput` with the given fix for a text that names no day.
Instant evaluatedMoment(const std::optional<std::string>& day, const Calendar& calendar,
                        const std::string& fix);
}  // namespace ombrix
