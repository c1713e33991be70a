// The phrases that the rules about promises search for, as data: an expression, and the words that
// its matches begin with.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace ombrix::CommitmentPhrases {

struct Phrase {
    std::string_view pattern;  ///< with WEEKDAY and MONTH for the names of days and months
    /// Every match begins with one of these. A digit means all digits.
    std::span<const std::string_view> openings;

    /// The pattern with the names filled in.
    std::string expression() const;
};

/// The three kinds of deadline, in the order in which they are tried.
extern const std::array<Phrase, 3> deadlines;
extern const Phrase firstPerson;  ///< a promise of the speaker's own
extern const Phrase listener;     ///< words that address the listener
extern const Phrase request;
}  // namespace ombrix::CommitmentPhrases
