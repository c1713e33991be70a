// The day of a meeting in a JSON export.
#pragma once

#include <optional>
#include <string>

#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::TranscriptImport {

/// The day of `object` as "YYYY-MM-DD", from the first of the keys for dates that gives one: a text
/// with a numeric day in it, or seconds (more than 1e9) or milliseconds (more than 1e11) since
/// 1970, in UTC.
std::optional<std::string> dateOf(const Json::Node& object);

/// The day in UTC of seconds (more than 1e9) or milliseconds (more than 1e11) since 1970; nothing
/// for a smaller number and for years that have no four digits.
std::optional<std::string> dayOfEpoch(double value);
}  // namespace ombrix::TranscriptImport
