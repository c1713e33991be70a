#include "OmbrixAnswerKit/Ask/AskRead.h"

#include <utility>

#include "OmbrixAnswerKit/Ask/SkillRequestReader.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

std::optional<std::string> AskRead::saidBack() const {
    if (unmatched.empty()) return std::nullopt;
    return "No meetings on file match " + SkillRequestReader::orList(unmatched) + ".";
}

AskRead AskContext::read(std::string_view ask, const AskViewContext& context,
                         const Surroundings& around, Instant now, const Calendar& calendar) {
    const auto split = SkillRequestReader::split(ask);
    AskRead result{.request = split ? split->request : std::string(Text::trimmed(ask)),
                   .statement = statement(context, around.title)};
    if (split) result.command = split->command;
    if (split && !split->request.empty()) {
        const auto narrowed = AskContext::apply(baseScope(context, around.series), around.pool);
        auto named =
            SkillRequestReader::read(split->request, narrowed, around.userName, now, calendar);
        result.material = std::move(named.material);
        result.unmatched = std::move(named.unmatched);
        result.person = std::move(named.person);
        result.phrases = std::move(named.phrases);
    }
    if (!result.named())
        result.material = material(context, around.pool, around.scope, around.series);
    return result;
}
}  // namespace ombrix
