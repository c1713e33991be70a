// Time phrases in any question, and the plan for what remains of it. The first two bytes of the
// input choose the calendar and the moment.
//
// libFuzzer: -max_len=2048
#include <array>
#include <chrono>
#include <string>

#include "Law.h"
#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"
#include "OmbrixMarkdownKit/Search/ScopingPolicy.h"
#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

const Calendar& calendar(std::uint8_t choice) {
    static const std::array calendars{
        Calendar("UTC", Calendar::Weekday::sunday),
        Calendar("Europe/Berlin", Calendar::Weekday::monday, 4),
        Calendar("America/Sao_Paulo", Calendar::Weekday::sunday),
        Calendar("Pacific/Apia", Calendar::Weekday::saturday),
    };
    return calendars[choice % calendars.size()];
}

void checkDay(const std::optional<std::string>& day) {
    law(!day || day->size() >= 10, "a day is a day");
}

void checkPlan(const TimeScopeParser::Parse& parse) {
    const AskPlan plan =
        AskIntentRouter::route(parse.strippedQuestion, parse.horizonDays, !parse.scope.isAll());
    law(plan ==
            AskIntentRouter::route(parse.strippedQuestion, parse.horizonDays, !parse.scope.isAll()),
        "the same question, the same plan");
    law(parse.scope.isAll() || plan.windowDays == 0, "a scope in the question leaves no window");
    law(plan.windowDays >= 0 && plan.windowDays <= 180, "a window of at most half a year");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const Calendar& here = calendar(data[0]);
    const Instant now{std::chrono::hours(24 * 37 * data[1]) + std::chrono::hours(20'000 * 24)};
    const std::string_view question = Fuzz::text(data + 2, size - 2);

    const auto parse = TimeScopeParser::parse(question, now, here);
    law(parse == TimeScopeParser::parse(question, now, here), "read twice, the same");
    law(!parse.horizonDays || *parse.horizonDays >= 0, "a horizon is not in the past");
    checkDay(parse.scope.dateFrom);
    checkDay(parse.scope.dateTo);
    for (const std::string& phrase : parse.matchedPhrases)
        law(!phrase.empty() && Text::contains(question, phrase),
            "a phrase is part of the question");
    if (parse.matchedPhrases.empty()) {
        law(parse.strippedQuestion == question && parse.scope.isAll() && !parse.horizonDays,
            "without a phrase nothing changes");
    } else {
        law(parse.strippedQuestion.size() < question.size(), "a phrase is removed");
    }
    checkPlan(parse);
    return 0;
}
