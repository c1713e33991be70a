#include "OmbrixMemoryKit/Memory/ConsolidateModels.h"

#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/Identity/ISODate.h"

namespace ombrix {
namespace {

using Strings = std::vector<std::string>;

void checkDay(std::string_view list, std::size_t index, std::string_view field,
              const std::optional<std::string>& day) {
    if (!day || ISODate::isValid(*day)) return;
    const std::string key = "." + std::string(field);
    throw LandOutput::DecodeError::invalidDate(std::string(list) + key, *day,
                                               AnswerPath::item(list, index) + key);
}
}  // namespace

CanonicalInput ConsolidateInput::canonical() const { return canonicalInput(encode(*this)); }

ConsolidateOutput ConsolidateOutput::decode(std::string_view data) {
    auto output = LandOutput::DecodeError::shapeOf<ConsolidateOutput>(data);
    if (output.version != 1) throw LandOutput::DecodeError::unsupportedVersion(output.version);
    for (std::size_t i = 0; i < output.decisions.size(); ++i)
        checkDay("decisions", i, "date", output.decisions[i].date);
    for (std::size_t i = 0; i < output.open.size(); ++i)
        checkDay("open", i, "due", output.open[i].due);
    return output;
}

Json::Value encode(ConsolidateEntity entity) {
    return Json::object({{"key", std::move(entity.key)},
                         {"kind", entity.kind},
                         {"display", std::move(entity.display)},
                         {"aliases", std::move(entity.aliases)}});
}

Json::Value encode(ConsolidateCandidate candidate) {
    return Json::object({{"fact", std::move(candidate.fact)},
                         {"quote", std::move(candidate.quote)},
                         {"meeting_title", std::move(candidate.meetingTitle)},
                         {"date", std::move(candidate.date)},
                         {"certainty", candidate.certainty},
                         {"kind", candidate.kind},
                         {"who", std::move(candidate.who)}});
}

Json::Value encode(ConsolidateOpenFollowUp followUp) {
    return Json::object({{"id", std::move(followUp.id)},
                         {"direction", std::move(followUp.direction)},
                         {"who", std::move(followUp.who)},
                         {"what", std::move(followUp.what)},
                         {"due", std::move(followUp.due)},
                         {"said", std::move(followUp.said)},
                         {"source", std::move(followUp.source)}});
}

Json::Value encode(ConsolidateInput input) {
    return Json::object({{"version", input.version},
                         {"hash", std::move(input.hash)},
                         {"entity", std::move(input.entity)},
                         {"user_name", std::move(input.userName)},
                         {"candidates", std::move(input.candidates)},
                         {"open_follow_ups", std::move(input.openFollowUps)},
                         {"corrections", std::move(input.corrections)},
                         {"prior_not_sure", std::move(input.priorNotSure)},
                         {"today", std::move(input.today)}});
}

Json::Value encode(SourcedLine line) {
    return Json::object({{"text", std::move(line.text)}, {"sources", std::move(line.sources)}});
}

SourcedLine decode(Json::As<SourcedLine>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"), .sources = in.required<Strings>("sources")};
}

Json::Value encode(ConsolidateDecision decision) {
    return Json::object({{"text", std::move(decision.text)},
                         {"by", std::move(decision.by)},
                         {"date", std::move(decision.date)},
                         {"sources", std::move(decision.sources)}});
}

ConsolidateDecision decode(Json::As<ConsolidateDecision>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"),
            .by = in.required<std::string>("by"),
            .date = in.optional<std::string>("date"),
            .sources = in.required<Strings>("sources")};
}

Json::Value encode(ConsolidateOpen open) {
    return Json::object({{"text", std::move(open.text)},
                         {"direction", open.direction},
                         {"due", std::move(open.due)},
                         {"follow_up_id", std::move(open.followUpID)},
                         {"sources", std::move(open.sources)}});
}

ConsolidateOpen decode(Json::As<ConsolidateOpen>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"),
            .direction = in.required<ConsolidateOpen::Direction>("direction"),
            .due = in.optional<std::string>("due"),
            .followUpID = in.optional<std::string>("follow_up_id"),
            .sources = in.required<Strings>("sources")};
}

Json::Value encode(ConsolidateOutput output) {
    return Json::object({{"version", output.version},
                         {"kind", output.kind},
                         {"who", std::move(output.who)},
                         {"what_this_is", std::move(output.whatThisIs)},
                         {"through_line", std::move(output.throughLine)},
                         {"decisions", std::move(output.decisions)},
                         {"open", std::move(output.open)},
                         {"not_sure", std::move(output.notSure)}});
}

ConsolidateOutput decode(Json::As<ConsolidateOutput>, const Json::Object& in) {
    return {.version = in.required<std::int64_t>("version"),
            .kind = in.required<LandMemoryFact::Kind>("kind"),
            .who = in.required<std::vector<SourcedLine>>("who"),
            .whatThisIs = in.required<std::vector<SourcedLine>>("what_this_is"),
            .throughLine = in.required<std::string>("through_line"),
            .decisions = in.required<std::vector<ConsolidateDecision>>("decisions"),
            .open = in.required<std::vector<ConsolidateOpen>>("open"),
            .notSure = in.required<Strings>("not_sure")};
}
}  // namespace ombrix
