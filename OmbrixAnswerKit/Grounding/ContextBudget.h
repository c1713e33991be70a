// How many tokens of meetings a model is given for a question. There is no tokenizer here: all
// budgets rest on one estimate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"

namespace ombrix::ContextBudget {

/// The least that a meeting's share is, before a pack is trimmed.
inline constexpr std::int64_t minimumPerMeeting = 1500;

std::int64_t tokens(AskIntent intent);
/// A deep question gets the largest budget, whatever its intent.
std::int64_t tokens(AskIntent intent, AnswerTier tier);
std::int64_t tokens(const AskPlan& plan);

/// The tokens of so many characters: four a token, rounded up.
constexpr std::int64_t tokensOfCharacters(std::size_t characters) {
    return static_cast<std::int64_t>((characters + 3) / 4);
}
/// The same of a text; linear.
std::int64_t estimateTokens(std::string_view text);
}  // namespace ombrix::ContextBudget
