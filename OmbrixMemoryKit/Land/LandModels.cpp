#include "OmbrixMemoryKit/Land/LandModels.h"

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

/// `problem` is empty when there is none.
void requireNotes(std::string path, std::string problem, std::string_view text = {}) {
    if (problem.empty()) return;
    throw LandOutput::DecodeError::invalidNotes(
        {.rule = AnswerFault::Rule::notes,
         .path = std::move(path),
         .problem = std::move(problem),
         .text = text.empty() ? std::string() : AnswerPath::inQuotes(text)});
}

std::string tooLong(std::size_t limit, std::string_view text) {
    if (!Characters::hasAtLeast(text, limit + 1)) return {};
    return "longer than " + std::to_string(limit) + " characters";
}

std::string faultOfTopic(std::string_view topic) {
    if (topic.empty()) return "empty";
    if (Text::equalsIgnoringCase(topic, "Decisions") ||
        Text::equalsIgnoringCase(topic, "Key Moments"))
        return "this is no topic; name what was talked about";
    return tooLong(longestTopic, topic);
}

std::string faultOfCount(std::size_t count, std::size_t most, std::string_view what) {
    if (count <= most) return {};
    return std::to_string(count) + " " + std::string(what) + ", and " + std::to_string(most) +
           " at most";
}

void checkNotes(const std::vector<LandNoteTopic>& notes) {
    requireNotes("notes", faultOfCount(notes.size(), mostTopics, "topics"));
    for (std::size_t i = 0; i < notes.size(); ++i) {
        const auto path = AnswerPath::item("notes", i);
        const auto topic = Text::trimmed(notes[i].topic);
        requireNotes(path + ".topic", faultOfTopic(topic), topic);
        const auto& bullets = notes[i].bullets;
        requireNotes(path + ".bullets", bullets.empty()
                                            ? std::string("none, and a topic has at least one")
                                            : faultOfCount(bullets.size(), mostBullets, "bullets"));
        for (std::size_t j = 0; j < bullets.size(); ++j)
            requireNotes(AnswerPath::item(path + ".bullets", j),
                         Text::trimmed(bullets[j]).empty() ? std::string("empty")
                                                           : tooLong(longestBullet, bullets[j]),
                         bullets[j]);
    }
}

/// `list` and `field` name the place: "commitments" and "due".
template <typename Items, typename Day>
void checkDays(const Items& items, Day day, const std::string& list, const std::string& field) {
    for (std::size_t i = 0; i < items.size(); ++i)
        if (const auto& value = items[i].*day; value && !ISODate::isValid(*value))
            throw LandOutput::DecodeError::invalidDate(list + "." + field, *value,
                                                       AnswerPath::item(list, i) + "." + field);
}

void requireNoCommentary(const std::string& path, std::string_view text) {
    const auto match = LandNotesPolicy::commentary().firstMatch(text);
    if (!match) return;
    const std::string words(match->range().of(text));
    throw LandOutput::DecodeError::notesCommentary(
        {.rule = AnswerFault::Rule::commentary,
         .path = path,
         .problem = AnswerPath::inQuotes(words) + " is about how the record was made; say what the "
                                                  "meeting said",
         .text = words});
}

template <typename Items, typename Field>
void checkProse(const Items& items, Field field, const std::string& list, const char* key) {
    for (std::size_t i = 0; i < items.size(); ++i)
        requireNoCommentary(AnswerPath::item(list, i) + key, items[i].*field);
}

void checkProse(const Strings& texts, const std::string& list) {
    for (std::size_t i = 0; i < texts.size(); ++i)
        requireNoCommentary(AnswerPath::item(list, i), texts[i]);
}

/// Looks at the fields a person reads as the model's own words. Quotes, speakers and keys are not
/// among them: they hold what people said, and labels.
void checkProse(const LandOutput& output) {
    requireNoCommentary("summary", output.summary);
    checkProse(output.notes, &LandNoteTopic::topic, "notes", ".topic");
    for (std::size_t i = 0; i < output.notes.size(); ++i)
        checkProse(output.notes[i].bullets, AnswerPath::item("notes", i) + ".bullets");
    checkProse(output.notSure, "not_sure");
    checkProse(output.decisions, &LandDecision::text, "decisions", ".text");
    checkProse(output.openQuestions, &LandOpenQuestion::text, "open_questions", ".text");
    checkProse(output.commitments, &LandCommitment::what, "commitments", ".what");
    checkProse(output.commitments, &LandCommitment::who, "commitments", ".who");
    checkProse(output.memory, &LandMemoryFact::fact, "memory", ".fact");
}
}  // namespace

LandOutput LandOutput::decode(std::string_view data) {
    auto output = DecodeError::shapeOf<LandOutput>(data);
    if (output.version != 1) throw DecodeError::unsupportedVersion(output.version);
    checkNotes(output.notes);
    checkDays(output.commitments, &LandCommitment::due, "commitments", "due");
    checkDays(output.resolutions, &LandResolution::newDue, "resolutions", "new_due");
    checkProse(output);
    return output;
}

LandOutput::DecodeError LandOutput::DecodeError::unsupportedVersion(std::int64_t version) {
    const std::string text = std::to_string(version);
    DecodeError error(Reason::unsupportedVersion, {.rule = AnswerFault::Rule::version,
                                                   .path = "version",
                                                   .problem = "must be 1, not " + text,
                                                   .text = text});
    error.version = version;
    return error;
}

LandOutput::DecodeError LandOutput::DecodeError::invalidDate(std::string_view field,
                                                             std::string_view value,
                                                             std::string path) {
    DecodeError error(Reason::invalidDate,
                      notADay(path.empty() ? std::string(field) : std::move(path), value));
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
