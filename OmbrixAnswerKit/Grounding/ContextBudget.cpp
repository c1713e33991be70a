#include "OmbrixAnswerKit/Grounding/ContextBudget.h"

#include "OmbrixPlatform/Characters.h"

namespace ombrix::ContextBudget {
namespace {

constexpr std::int64_t deepTokens = 120'000;
}  // namespace

std::int64_t tokens(AskIntent intent) {
    switch (intent) {
        case AskIntent::plan:
        case AskIntent::myCommitments:
        case AskIntent::owedToMe:
        case AskIntent::decisions:
            return 30'000;
        case AskIntent::freeform:
            return 40'000;
        case AskIntent::catchUp:
            return 60'000;
        case AskIntent::openEnded:
            break;  // the router takes each of these for a deep question
    }
    return deepTokens;
}

std::int64_t tokens(AskIntent intent, AnswerTier tier) {
    return tier == AnswerTier::deep ? deepTokens : tokens(intent);
}

std::int64_t tokens(const AskPlan& plan) { return tokens(plan.intent, plan.tier); }

std::int64_t estimateTokens(std::string_view text) {
    return tokensOfCharacters(Characters::count(text));
}
}  // namespace ombrix::ContextBudget
