// What a question asks for: its time phrases, its plan, the transcripts that count and the words to
// look for. Reads no transcript.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"
#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixMarkdownKit/Search/ScopingPolicy.h"
#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

struct AskUnderstanding {
    TimeScopeParser::Parse parse;
    AskPlan plan;
    AnswerScope scope;  ///< that of the time phrases, merged with `window`
    std::optional<ScopingPolicy::Window> window{};  ///< when the plan looks back a number of days
    std::vector<std::string> keywords{};            ///< of the question without its time phrases
    bool operator==(const AskUnderstanding&) const = default;
};

/// Understands `question` at the clock `now`, with the days and weeks of `calendar`. Never throws;
/// linear in the question.
AskUnderstanding understand(std::string_view question, Instant now, const Calendar& calendar);
}  // namespace ombrix
