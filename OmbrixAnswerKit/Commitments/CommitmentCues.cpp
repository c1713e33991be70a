#include "OmbrixAnswerKit/Commitments/CommitmentCues.h"

#include <algorithm>
#include <utility>

#include "OmbrixAnswerKit/Commitments/SpokenWords.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::CommitmentExtractor {
namespace {

constexpr std::string_view weekday = "(?:monday|tuesday|wednesday|thursday|friday|saturday|sunday)";
constexpr std::string_view month =
    "(?:january|february|march|april|may|june|july|august|september|october|november|december"
    "|jan|feb|mar|apr|jun|jul|aug|sept|sep|oct|nov|dec)";

// In these three, WEEKDAY and MONTH stand for the groups above.
constexpr std::string_view dueByPattern =
    R"(\b(?:by|before|due|until|till)\s+(?:the\s+)?)"
    R"((?:end\s+of\s+(?:the\s+)?(?:day|week|month|quarter|sprint)|eod|eow|eom)"
    R"(|today|tomorrow|tonight|(?:this|next)\s+(?:WEEKDAY|week|month|sprint)|WEEKDAY)"
    R"(|MONTH\s+\d{1,2}(?:st|nd|rd|th)?|\d{1,2}\s+MONTH)"
    R"(|\d{4}-\d{2}-\d{2}|\d{1,2}/\d{1,2}(?:/\d{2,4})?)\b)";

constexpr std::string_view nextDayPattern =
    R"(\b(?:on|this|next)\s+(?:WEEKDAY|week|month|sprint)\b)";

constexpr std::string_view bareDayPattern =
    R"(\b(?:tomorrow|tonight|end of (?:the )?(?:day|week|month|quarter|sprint)|eod|eow|eom)"
    R"(|later today|this afternoon|this evening)"
    R"(|MONTH\s+\d{1,2}(?:st|nd|rd|th)?|\d{4}-\d{2}-\d{2})\b)";

std::string filled(std::string_view pattern) {
    return Text::replacingAll(Text::replacingAll(pattern, "WEEKDAY", weekday), "MONTH", month);
}

constexpr std::string_view firstPersonPattern =
    R"(\b(?:i'll(?!\s+(?:not|never)\b)|i will(?!\s+not\b)|i am going to|i'm going to|i'm gonna)"
    R"(|let me|on me\b|i can(?!'t|not\b|\s+(?:not|see|imagine|tell|hear|understand|believe)"
    R"(|confirm|say|think|feel|only|also see)\b))\b)";

constexpr std::string_view listenerPattern =
    R"(\b(?:get you|send you|for you|to you|give you|share with you|let you know|you'll have)"
    R"(|back to you|with you|bring you|show you|ping you|loop you|forward you|update you)"
    R"(|ship you)\b)";

constexpr std::string_view requestPattern =
    R"(\b(?:can you|could you|would you|will you|you need to|you should|you'll need to)"
    R"(|you have to|please\s+(?!don't|do not|note|be aware)[a-z]+)\b)";

constexpr std::string_view acknowledgementPattern =
    R"(^(?:sure|yes|yep|yeah|yup|ok|okay|will do|on it|of course|absolutely|sounds good|got it)"
    R"(|can do|no problem|consider it done|done|happy to|definitely)\b)";

constexpr std::string_view promiseBackPattern =
    R"(^(?:i'll|i will|i can|let me|i'd be happy to)\b)";

/// A promise back of this many words or more is a reply of its own.
constexpr std::size_t longReplyWords = 9;
}  // namespace

Cue::Cue(std::string_view pattern, std::vector<std::string_view> openings)
    : regex_(pattern, Regex::Case::ignored), openings_(std::move(openings)) {
    for (const std::string_view opening : openings_) {
        for (std::size_t c = 0; c < first_.size(); ++c)
            if (Text::asciiLowercased(static_cast<char>(c)) == opening.front()) first_[c] = true;
    }
}

bool Cue::opensWithDigit() const {
    return std::ranges::any_of(openings_, [](auto o) { return Text::isAsciiDigit(o.front()); });
}

/// The first byte where an opening stands that no ASCII word character precedes.
std::optional<std::size_t> Cue::firstOpening(std::string_view text) const {
    bool inWord = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool startsWord = !inWord;
        inWord = Text::isAsciiWordByte(text[at]);
        if (!startsWord || !inWord || !first_[static_cast<unsigned char>(text[at])]) continue;
        const std::string_view rest = text.substr(at);
        for (const std::string_view opening : openings_)
            if (Text::startsWithIgnoringAsciiCase(rest, opening)) return at;
    }
    return std::nullopt;
}

std::optional<ByteRange> Cue::firstMatch(std::string_view text) const {
    std::size_t from = 0;
    if (Utf8::isAscii(text)) {
        const auto opening = firstOpening(text);
        if (!opening) return std::nullopt;
        from = *opening;
    } else if (!opensWithDigit() && !firstOpening(Text::caseFolded(text))) {
        // The expression takes the long s for "s", the Kelvin sign for "k" and a ligature for its
        // letters. In the case fold these are the plain letters, so what matches has its opening
        // there; places in the fold are none of the text, so the expression starts from the front.
        return std::nullopt;
    }
    const auto match = regex_.firstMatch(text, from);
    if (!match) return std::nullopt;
    return match->range();
}

const std::array<Cue, 3>& deadlinePatterns() {
    static const std::array<Cue, 3> patterns = {
        Cue(filled(dueByPattern), {"by", "before", "due", "until", "till"}),
        Cue(filled(nextDayPattern), {"on", "this", "next"}),
        Cue(filled(bareDayPattern), {"tomorrow",
                                     "tonight",
                                     "end of ",
                                     "eod",
                                     "eow",
                                     "eom",
                                     "later today",
                                     "this afternoon",
                                     "this evening",
                                     "jan",
                                     "feb",
                                     "mar",
                                     "apr",
                                     "may",
                                     "jun",
                                     "jul",
                                     "aug",
                                     "sep",
                                     "oct",
                                     "nov",
                                     "dec",
                                     "0",
                                     "1",
                                     "2",
                                     "3",
                                     "4",
                                     "5",
                                     "6",
                                     "7",
                                     "8",
                                     "9"})};
    return patterns;
}

const Cue& firstPersonCue() {
    static const Cue cue(firstPersonPattern, {"i'll", "i will", "i am going to", "i'm going to",
                                              "i'm gonna", "let me", "on me", "i can"});
    return cue;
}

const Cue& listenerCue() {
    static const Cue cue(
        listenerPattern,
        {"get you", "send you", "for you", "to you", "give you", "share with you", "let you know",
         "you'll have", "back to you", "with you", "bring you", "show you", "ping you", "loop you",
         "forward you", "update you", "ship you"});
    return cue;
}

const Cue& requestCue() {
    static const Cue cue(requestPattern,
                         {"can you", "could you", "would you", "will you", "you need to",
                          "you should", "you'll need to", "you have to", "please"});
    return cue;
}

std::optional<std::string> deadline(std::string_view text) {
    const StraightText straight(text);
    for (const Cue& pattern : deadlinePatterns()) {
        if (const auto range = pattern.firstMatch(straight.view()))
            return std::string(range->of(straight.view()));
    }
    return std::nullopt;
}

bool hasFirstPersonCue(std::string_view text) {
    return firstPersonCue().firstMatch(StraightText(text).view()).has_value();
}

bool isAddressedToListener(std::string_view text) {
    return listenerCue().firstMatch(StraightText(text).view()).has_value();
}

bool hasRequestCue(std::string_view text) {
    return requestCue().firstMatch(StraightText(text).view()).has_value();
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
}  // namespace ombrix::CommitmentExtractor
