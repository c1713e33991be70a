// The moment a command works at: the present, or noon of the day that its option `--now` names.
#pragma once

#include <optional>
#include <string>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

/// The present time when `day` is missing or empty. Otherwise, for exactly "YYYY-MM-DD", twelve
/// hours after that day's midnight in the calendar's zone, so that no rounding leaves the day.
/// Throws `CLIError::invalidInput` with the given fix for any other text.
Instant evaluatedMoment(const std::optional<std::string>& day, const Calendar& calendar,
                        const std::string& fix);
}  // namespace ombrix
