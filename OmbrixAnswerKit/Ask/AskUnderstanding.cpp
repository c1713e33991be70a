#include "OmbrixAnswerKit/Ask/AskUnderstanding.h"

#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"

namespace ombrix {

AskUnderstanding understand(std::string_view question, Instant now, const Calendar& calendar) {
    AskUnderstanding result{.parse = TimeScopeParser::parse(question, now, calendar)};
    const auto& [scope, stripped, phrases, horizonDays] = result.parse;
    result.plan = AskIntentRouter::route(stripped, horizonDays, !scope.isAll());
    result.scope = scope;
    if (result.plan.windowDays >= 1) {
        result.window = ScopingPolicy::window(result.plan.windowDays, now, calendar, std::nullopt,
                                              std::nullopt);
        result.scope = scope.merging(result.window->scope());
    }
    result.keywords = QueryTokenizer::keywords(stripped);
    return result;
}
}  // namespace ombrix
