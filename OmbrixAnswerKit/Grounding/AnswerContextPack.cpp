#include "OmbrixAnswerKit/Grounding/AnswerContextPack.h"

#include "OmbrixAnswerKit/Grounding/ContextBudget.h"
#include "OmbrixPlatform/Digest.h"

namespace ombrix {
namespace {

/// What gets hashed.
struct HashBody {
    std::int64_t version = 0;
    std::span<const AnswerContextPack::Meeting> meetings;
};

Json::Value encode(const HashBody& body) {
    return Json::object({{"version", body.version}, {"meetings", body.meetings}});
}
}  // namespace

AnswerContextPack AnswerContextPack::of(std::vector<Meeting> meetings, std::int64_t version) {
    return {.version = version,
            .hash = computeHash(version, meetings),
            .meetings = std::move(meetings)};
}

std::string AnswerContextPack::canonicalJSON(std::int64_t version,
                                             std::span<const Meeting> meetings) {
    return Json::write(encode(HashBody{.version = version, .meetings = meetings}),
                       Json::Style::canonical);
}

std::string AnswerContextPack::computeHash(std::int64_t version,
                                           std::span<const Meeting> meetings) {
    return Digest::sha256Hex(canonicalJSON(version, meetings));
}

std::int64_t AnswerContextPack::estimatedTokens() const {
    return ContextBudget::estimateTokens(canonicalJSON(version, meetings));
}

bool AnswerContextPack::hashMatchesContent() const {
    return hash == computeHash(version, meetings);
}

Json::Value encode(const AnswerContextPack::Meeting& meeting) {
    return Json::object({{"id", meeting.id},
                         {"title", meeting.title},
                         {"date", meeting.date},
                         {"participants", meeting.participants},
                         {"turns", meeting.turns},
                         {"notes", meeting.notes},
                         {"actionItems", meeting.actionItems}});
}

AnswerContextPack::Meeting decode(Json::As<AnswerContextPack::Meeting>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .title = in.required<std::string>("title"),
            .date = in.required<std::string>("date"),
            .participants = in.required<std::vector<std::string>>("participants"),
            .turns = in.required<std::vector<AnswerContextPack::Turn>>("turns"),
            .notes = in.optional<std::string>("notes"),
            .actionItems = in.optional<std::vector<std::string>>("actionItems")};
}

Json::Value encode(const AnswerContextPack& pack) {
    return Json::object(
        {{"version", pack.version}, {"hash", pack.hash}, {"meetings", pack.meetings}});
}

AnswerContextPack decode(Json::As<AnswerContextPack>, const Json::Object& in) {
    return {.version = in.required<std::int64_t>("version"),
            .hash = in.required<std::string>("hash"),
            .meetings = in.required<std::vector<AnswerContextPack::Meeting>>("meetings")};
}
}  // namespace ombrix
