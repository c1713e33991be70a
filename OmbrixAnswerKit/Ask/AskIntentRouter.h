// From a question to the plan of its answer, by the words of the question alone: no model, no
// clock, no library. The same question always gets the same plan.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "OmbrixAnswerKit/Shape/AnswerShape.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

enum class AskIntent { plan, myCommitments, owedToMe, decisions, catchUp, freeform, openEnded };

constexpr auto rawValues(AskIntent) {
    return EnumNames::table<AskIntent>({{AskIntent::plan, "plan"},
                                        {AskIntent::myCommitments, "myCommitments"},
                                        {AskIntent::owedToMe, "owedToMe"},
                                        {AskIntent::decisions, "decisions"},
                                        {AskIntent::catchUp, "catchUp"},
                                        {AskIntent::freeform, "freeform"},
                                        {AskIntent::openEnded, "openEnded"}});
}

/// How capable a model the question deserves.
enum class AnswerTier { standard, deep };

constexpr auto rawValues(AnswerTier) {
    return EnumNames::table<AnswerTier>(
        {{AnswerTier::standard, "standard"}, {AnswerTier::deep, "deep"}});
}

struct AskPlan {
    AskIntent intent = AskIntent::freeform;
    std::int64_t windowDays = 0;  ///< days to look back; 0: whatever is in scope counts
    bool participation = false;   ///< only meetings in which the user spoke count
    AnswerShape shape = AnswerShape::prose;
    AnswerTier tier = AnswerTier::standard;
    std::int64_t recencyHalfLifeDays = 30;
    std::string rationale{};  ///< one line that says why, for display and logs
    bool operator==(const AskPlan&) const = default;
};

namespace AskIntentRouter {

struct Row {
    AskIntent intent;
    std::span<const std::string_view> cues;
};

/// The cues of each intent but `freeform`. The order of rows and of cues is the order in which they
/// win: "brainstorm what we decided" is `openEnded`, whose row comes first.
std::span<const Row> table();

/// The cues of `openEnded` that ask about the user, so that only the user's own meetings count. The
/// other ones (ideas, themes, drafts, lessons) ask about the whole library.
std::span<const std::string_view> selfDirectedCues();

struct Classification {
    AskIntent intent = AskIntent::freeform;
    std::optional<std::string_view> cue{};  ///< an entry of `table`; nothing for `freeform`
    bool operator==(const Classification&) const = default;
};

/// The intent of the first cue, in the order of `table`, that is in the question as whole words,
/// whatever its case and the kind of its apostrophes; its place in the question does not matter.
/// `freeform` when there is none. One pass over the question, of any size and any bytes.
Classification classify(std::string_view question);

/// The plan of a question. `horizonDays` is how far back its own time phrase reaches, and steers
/// only questions about work and promises. With `hasTypedScope` the scope says what to cover, so
/// the window is 0; nothing else changes.
AskPlan route(std::string_view question, std::optional<std::int64_t> horizonDays,
              bool hasTypedScope);
}  // namespace AskIntentRouter
}  // namespace ombrix
