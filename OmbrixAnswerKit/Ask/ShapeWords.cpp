#include "OmbrixAnswerKit/Ask/ShapeWords.h"

#include <algorithm>
#include <span>
#include <string>

#include "OmbrixPlatform/Text.h"

namespace ombrix::ShapeWords {
namespace {

constexpr auto promiseWords = std::to_array<std::string_view>({
    "commit", "owe", "promised", "agreed to do",                             // given
    "action item", "next steps", "follow-up", "follow up", "todo", "to-do",  // written down
    "who's doing", "who is doing"                                            // assigned
});

constexpr auto historyWords = std::to_array<std::string_view>({
    "decide", "decision",                                          // turning points
    "evolv", "changed", "progress", "journey",                     // change
    "history", "over time", "timeline", "when did", "recap every"  // time itself
});

bool containsAny(std::string_view text, std::span<const std::string_view> words) {
    return std::ranges::any_of(words,
                               [&](std::string_view word) { return Text::contains(text, word); });
}
}  // namespace

AnswerShape legacyShape(std::string_view question) {
    const std::string text = Text::withStraightApostrophes(Text::lowercased(question));
    if (containsAny(text, promiseWords)) return AnswerShape::commitments;
    if (containsAny(text, historyWords)) return AnswerShape::timeline;
    return AnswerShape::prose;
}
}  // namespace ombrix::ShapeWords
