#include "OmbrixAnswerKit/Commitments/CommitmentCues.h"

#include <algorithm>
#include <array>

#include "OmbrixAnswerKit/Commitments/CommitmentPhrases.h"
#include "OmbrixAnswerKit/Commitments/Cue.h"
#include "OmbrixAnswerKit/Commitments/SpokenWords.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::CommitmentCues {
namespace {

constexpr std::string_view acknowledgementPattern =
    R"(^(?:sure|yes|yep|yeah|yup|ok|okay|will do|on it|of course|absolutely|sounds good|got it)"
    R"(|can do|no problem|consider it done|done|happy to|definitely)\b)";

constexpr std::string_view promiseBackPattern =
    R"(^(?:i'll|i will|i can|let me|i'd be happy to)\b)";

/// A promise back of this many words or more is a reply of its own.
constexpr std::size_t longReplyWords = 9;

Cue cueOf(const CommitmentPhrases::Phrase& phrase) {
    return Cue(phrase.expression(), phrase.openings);
}

bool holds(std::string_view text, const Cue& cue) {
    return cue.firstMatch(StraightText(text).view()).has_value();
}
}  // namespace

std::optional<std::string> deadline(std::string_view text) {
    using CommitmentPhrases::deadlines;
    static const std::array<Cue, deadlines.size()> cues{cueOf(deadlines[0]), cueOf(deadlines[1]),
                                                        cueOf(deadlines[2])};
    const StraightText straight(text);
    for (const Cue& cue : cues) {
        if (const auto range = cue.firstMatch(straight.view()))
            return std::string(range->of(straight.view()));
    }
    return std::nullopt;
}

bool hasFirstPersonCue(std::string_view text) {
    static const Cue cue = cueOf(CommitmentPhrases::firstPerson);
    return holds(text, cue);
}

bool isAddressedToListener(std::string_view text) {
    static const Cue cue = cueOf(CommitmentPhrases::listener);
    return holds(text, cue);
}

bool hasRequestCue(std::string_view text) {
    static const Cue cue = cueOf(CommitmentPhrases::request);
    return holds(text, cue);
}

bool isAcknowledgement(std::string_view text) {
    static const Regex acknowledgement(acknowledgementPattern, Regex::Case::ignored);
    static const Regex promiseBack(promiseBackPattern, Regex::Case::ignored);
    const StraightText straight(text);
    const std::string_view reply = Text::trimmed(straight.view());
    if (acknowledgement.found(reply)) return true;
    if (!promiseBack.found(reply)) return false;
    const SpokenWords words(reply);
    const auto isThing = [](std::string_view word) {
        return word == "that" || word == "it" || word == "this" || word == "those" ||
               word == "these";
    };
    return !words.hasAtLeast(longReplyWords) && std::ranges::any_of(words.list(), isThing);
}

StraightText::StraightText(std::string_view text) : view_(text) {
    constexpr std::string_view curlyLead = "\xE2\x80";  // of U+2018 and U+2019
    if (!Text::contains(text, curlyLead)) return;
    copy_ = Text::withStraightApostrophes(text);
    view_ = copy_;
}
}  // namespace ombrix::CommitmentCues
