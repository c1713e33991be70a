#include "OmbrixMemoryKit/Moves/MoveSource.h"

#include <tuple>

#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"

namespace ombrix {

MoveTurn::MoveTurn(std::size_t position, TranscriptDocument::Turn turn)
    : speaker(std::move(turn.speaker)), text(std::move(turn.text)), position_(position) {}

const std::string& MoveTurn::id() const {
    if (id_.empty() && !hasGivenID()) id_ = TranscriptTurnID::make(position_, text);
    return id_;
}

std::string MoveTurn::hash() const {
    if (hasGivenID()) return TranscriptTurnID::hash(text);
    return id().substr(id().find('-') + 1);
}

bool MoveTurn::operator==(const MoveTurn& other) const {
    return std::tie(atSec, speaker, text) == std::tie(other.atSec, other.speaker, other.text) &&
           id() == other.id();
}

MoveSource::MoveSource(std::string meetingKey, TranscriptDocument document,
                       std::string meetingTitle, std::string day,
                       std::vector<std::string> participants)
    : id(std::move(meetingKey)),
      title(std::move(meetingTitle)),
      date(std::move(day)),
      people(std::move(participants)) {
    if (!document.startedAt.empty()) time = std::move(document.startedAt);
    turns.reserve(document.turns.size());
    for (auto& turn : document.turns) turns.emplace_back(turns.size() + 1, std::move(turn));
}

std::optional<std::size_t> MoveSource::turnIndex(std::string_view turnID) const {
    // An id that was made names its own place.
    const auto parsed = TranscriptTurnID::parse(turnID);
    const std::size_t made = parsed ? static_cast<std::size_t>(parsed->position) - 1 : turns.size();
    for (std::size_t i = 0; i < turns.size(); ++i)
        if ((i == made || turns[i].hasGivenID()) && turns[i].id() == turnID) return i;
    return std::nullopt;
}

Json::Value encode(const MoveTurn& turn) {
    return Json::object(
        {{"id", turn.id()}, {"atSec", turn.atSec}, {"speaker", turn.speaker}, {"text", turn.text}});
}

MoveTurn decode(Json::As<MoveTurn>, const Json::Object& in) {
    MoveTurn turn(in.required<std::string>("id"));
    turn.atSec = in.optional<double>("atSec");
    turn.speaker = in.required<std::string>("speaker");
    turn.text = in.required<std::string>("text");
    return turn;
}

Json::Value encode(const MoveSource& source) {
    return Json::object({{"id", source.id},
                         {"title", source.title},
                         {"date", source.date},
                         {"time", source.time},
                         {"people", source.people},
                         {"turns", source.turns}});
}

MoveSource decode(Json::As<MoveSource>, const Json::Object& in) {
    MoveSource source;
    source.id = in.required<std::string>("id");
    source.title = in.required<std::string>("title");
    source.date = in.required<std::string>("date");
    source.time = in.optional<std::string>("time");
    source.people = in.required<std::vector<std::string>>("people");
    source.turns = in.required<std::vector<MoveTurn>>("turns");
    return source;
}
}  // namespace ombrix
