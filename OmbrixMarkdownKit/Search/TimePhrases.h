// The phrases of an English question that name a time, and what each of them means.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/Regex.h"

namespace ombrix::TimePhrases {

/// Which days count, or how far the question looks ahead.
struct Meaning {
    AnswerScope scope{};
    std::optional<std::int64_t> horizonDays{};
};

/// What a phrase is understood from: a match of its expression in the question, the clock and the
/// calendar.
struct Context {
    const Regex::Match& match;
    std::string_view question;
    Instant now;
    const Calendar& calendar;

    bool has(std::size_t group) const { return match.has(group); }
    std::string_view captured(std::size_t group) const { return match.group(group, question); }
    /// The captured word, case-folded.
    std::string word(std::size_t group) const;
    std::optional<Instant> adding(std::int64_t amount, Calendar::Unit unit) const {
        return calendar.adding(amount, unit, now);
    }
};

/// One kind of phrase.
struct Phrase {
    Regex regex;
    /// Of each set of alternatives, every text that matches has one, case-folded. Looking for them
    /// costs next to nothing and spares most questions the regular expression.
    std::vector<std::vector<std::string_view>> cues;
    /// Nothing when the calendar cannot compute the date.
    std::optional<Meaning> (*meaning)(const Context&);

    /// False for most questions that the expression does not match; never for one that it does.
    bool mayMatch(std::string_view foldedQuestion) const;
};

/// All of them, in the order in which they claim their words: those that look ahead first.
std::span<const Phrase> all();
}  // namespace ombrix::TimePhrases
