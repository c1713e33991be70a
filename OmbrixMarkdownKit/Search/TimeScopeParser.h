// Separates the time phrases of an English question from the rest: "what did we decide last week?"
// asks "what did we decide?" about the days of last week. Text in double quotes is never a time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::TimeScopeParser {

struct Parse {
    AnswerScope scope{};             ///< days and `lastN` only; `AnswerScope::all` without a phrase
    std::string strippedQuestion{};  ///< the question itself when no phrase was found
    std::vector<std::string> matchedPhrases{};  ///< as written in the question, in its order
    std::optional<std::int64_t> horizonDays{};  ///< how many days ahead the question looks
    bool operator==(const Parse&) const = default;
};

/// Reads `question` at the clock `now`; the calendar gives the zone of its days and the first day
/// of its weeks. Several phrases merge (`AnswerScope::merging`); of several horizons the longest
/// counts. A phrase whose date the calendar cannot compute stays in the question. Never throws;
/// linear in the question.
Parse parse(std::string_view question, Instant now, const Calendar& calendar);

/// The calendar's day of an instant as "YYYY-MM-DD".
std::string dateString(Instant instant, const Calendar& calendar);
}  // namespace ombrix::TimeScopeParser
