#include "OmbrixMemoryKit/Land/LandModels.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Land/LandNotesPolicy.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Strings = std::vector<std::string>;

constexpr std::size_t mostTopics = 3;
constexpr std::size_t mostBullets = 3;
constexpr std::size_t longestTopic = 120;   // characters
constexpr std::size_t longestBullet = 500;  // characters

bool isLongerThan(std::size_t limit, std::string_view text) {
    return Characters::hasAtLeast(text, limit + 1);
}

bool isValidTopic(std::string_view given) {
    const auto topic = Text::trimmed(given);
    return !topic.empty() && !isLongerThan(longestTopic, topic) &&
           !Text::equalsIgnoringCase(topic, "Decisions") &&
           !Text::equalsIgnoringCase(topic, "Key Moments");
}

bool isValidBullet(std::string_view bullet) {
    return !Text::trimmed(bullet).empty() && !isLongerThan(longestBullet, bullet);
}

bool isValidNote(const LandNoteTopic& note) {
    return isValidTopic(note.topic) && !note.bullets.empty() &&
           note.bullets.size() <= mostBullets && std::ranges::all_of(note.bullets, isValidBullet);
}

void checkDay(std::string_view field, const std::optional<std::string>& day) {
    if (day && !ISODate::isValid(*day)) throw LandOutput::DecodeError::invalidDate(field, *day);
}

/// The fields a person reads as the model's own words. Quotes, speakers and keys are not among
/// them: they hold what people said, and labels.
std::vector<std::string_view> prose(const LandOutput& output) {
    std::vector<std::string_view> texts = {output.summary};
    for (const auto& note : output.notes) {
        texts.push_back(note.topic);
        texts.insert(texts.end(), note.bullets.begin(), note.bullets.end());
    }
    texts.insert(texts.end(), output.notSure.begin(), output.notSure.end());
    for (const auto& decision : output.decisions) texts.push_back(decision.text);
    for (const auto& question : output.openQuestions) texts.push_back(question.text);
    for (const auto& commitment : output.commitments) {
        texts.push_back(commitment.what);
        texts.push_back(commitment.who);
    }
    for (const auto& fact : output.memory) texts.push_back(fact.fact);
    return texts;
}

LandOutput shapeOf(std::string_view data) {
    try {
        return Json::decode<LandOutput>(data);
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    }
    throw LandOutput::DecodeError::notJSON();
}
}  // namespace

LandOutput LandOutput::decode(std::string_view data) {
    LandOutput output = shapeOf(data);
    if (output.version != 1) throw DecodeError::unsupportedVersion(output.version);
    if (output.notes.size() > mostTopics || !std::ranges::all_of(output.notes, isValidNote))
        throw DecodeError::invalidNotes();
    for (const auto& commitment : output.commitments) checkDay("commitments.due", commitment.due);
    for (const auto& each : output.resolutions) checkDay("resolutions.new_due", each.newDue);
    if (std::ranges::any_of(prose(output), LandNotesPolicy::containsCommentary))
        throw DecodeError::notesCommentary();
    return output;
}

LandOutput::DecodeError LandOutput::DecodeError::unsupportedVersion(std::int64_t version) {
    DecodeError error(Reason::unsupportedVersion);
    error.version = version;
    return error;
}

LandOutput::DecodeError LandOutput::DecodeError::invalidDate(std::string_view field,
                                                             std::string_view value) {
    DecodeError error(Reason::invalidDate);
    error.field = field;
    error.value = value;
    return error;
}

bool LandOutput::DecodeError::operator==(const DecodeError& other) const {
    return reason == other.reason && version == other.version && field == other.field &&
           value == other.value;
}

Json::Value encode(LandNoteTopic topic) {
    return Json::object({{"topic", std::move(topic.topic)}, {"bullets", std::move(topic.bullets)}});
}

LandNoteTopic decode(Json::As<LandNoteTopic>, const Json::Object& in) {
    return {.topic = in.required<std::string>("topic"), .bullets = in.required<Strings>("bullets")};
}

Json::Value encode(LandDecision decision) {
    return Json::object({{"text", std::move(decision.text)},
                         {"quote", std::move(decision.quote)},
                         {"speaker", std::move(decision.speaker)}});
}

LandDecision decode(Json::As<LandDecision>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"),
            .quote = in.required<std::string>("quote"),
            .speaker = in.required<std::string>("speaker")};
}

Json::Value encode(LandOpenQuestion question) {
    return Json::object({{"text", std::move(question.text)}, {"quote", std::move(question.quote)}});
}

LandOpenQuestion decode(Json::As<LandOpenQuestion>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"), .quote = in.required<std::string>("quote")};
}

Json::Value encode(LandCommitment commitment) {
    return Json::object({{"direction", commitment.direction},
                         {"who", std::move(commitment.who)},
                         {"who_key", std::move(commitment.whoKey)},
                         {"what", std::move(commitment.what)},
                         {"quote", std::move(commitment.quote)},
                         {"speaker", std::move(commitment.speaker)},
                         {"due_raw", std::move(commitment.dueRaw)},
                         {"due", std::move(commitment.due)},
                         {"certainty", commitment.certainty}});
}

LandCommitment decode(Json::As<LandCommitment>, const Json::Object& in) {
    return {.direction = in.required<CommitmentDirection>("direction"),
            .who = in.required<std::string>("who"),
            .whoKey = in.required<std::string>("who_key"),
            .what = in.required<std::string>("what"),
            .quote = in.required<std::string>("quote"),
            .speaker = in.required<std::string>("speaker"),
            .dueRaw = in.required<std::string>("due_raw"),
            .due = in.optional<std::string>("due"),
            .certainty = in.required<Certainty>("certainty")};
}

Json::Value encode(LandResolution resolution) {
    return Json::object({{"id", std::move(resolution.id)},
                         {"status", resolution.status},
                         {"quote", std::move(resolution.quote)},
                         {"new_due", std::move(resolution.newDue)}});
}

LandResolution decode(Json::As<LandResolution>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .status = in.required<LandResolution::Status>("status"),
            .quote = in.required<std::string>("quote"),
            .newDue = in.optional<std::string>("new_due")};
}

Json::Value encode(LandMemoryFact fact) {
    return Json::object({{"entity_key", std::move(fact.entityKey)},
                         {"kind", fact.kind},
                         {"fact", std::move(fact.fact)},
                         {"quote", std::move(fact.quote)},
                         {"certainty", fact.certainty}});
}

LandMemoryFact decode(Json::As<LandMemoryFact>, const Json::Object& in) {
    return {.entityKey = in.required<std::string>("entity_key"),
            .kind = in.required<LandMemoryFact::Kind>("kind"),
            .fact = in.required<std::string>("fact"),
            .quote = in.required<std::string>("quote"),
            .certainty = in.required<Certainty>("certainty")};
}

Json::Value encode(LandOutput output) {
    return Json::object({{"version", output.version},
                         {"summary", std::move(output.summary)},
                         {"notes", std::move(output.notes)},
                         {"decisions", std::move(output.decisions)},
                         {"open_questions", std::move(output.openQuestions)},
                         {"commitments", std::move(output.commitments)},
                         {"resolutions", std::move(output.resolutions)},
                         {"memory", std::move(output.memory)},
                         {"unresolved_speakers", std::move(output.unresolvedSpeakers)},
                         {"not_sure", std::move(output.notSure)}});
}

LandOutput decode(Json::As<LandOutput>, const Json::Object& in) {
    return {.version = in.required<std::int64_t>("version"),
            .summary = in.required<std::string>("summary"),
            .notes = in.orEmpty<std::vector<LandNoteTopic>>("notes"),
            .decisions = in.required<std::vector<LandDecision>>("decisions"),
            .openQuestions = in.required<std::vector<LandOpenQuestion>>("open_questions"),
            .commitments = in.required<std::vector<LandCommitment>>("commitments"),
            .resolutions = in.required<std::vector<LandResolution>>("resolutions"),
            .memory = in.required<std::vector<LandMemoryFact>>("memory"),
            .unresolvedSpeakers = in.required<Strings>("unresolved_speakers"),
            .notSure = in.required<Strings>("not_sure")};
}
}  // namespace ombrix
