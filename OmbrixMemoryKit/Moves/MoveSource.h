// A meeting as the moves see it: who was there and what was said, turn by turn.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/Json.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

/// One turn. Its id is given, or made of its place and text when it is first asked for: hashing
/// every turn of a library would cost more than reading the library. So only one thread at a time
/// may ask a turn that has no given id.
class MoveTurn {
  public:
    /// A turn of a transcript, which tells no times; `position` is one-based.
    MoveTurn(std::size_t position, TranscriptDocument::Turn turn);
    /// A turn with a given id; the caller sets the rest.
    explicit MoveTurn(std::string givenID) : id_(std::move(givenID)) {}

    const std::string& id() const;
    bool hasGivenID() const { return position_ == 0; }
    /// `TranscriptTurnID::hash` of the text.
    std::string hash() const;

    std::optional<double> atSec;  ///< seconds from the start of the recording
    std::string speaker;
    std::string text;

    bool operator==(const MoveTurn& other) const;

  private:
    mutable std::string id_;
    std::size_t position_ = 0;
};

struct MoveSource {
    MoveSource() = default;
    /// `time` is the document's start; all else but the turns is given.
    MoveSource(std::string meetingKey, TranscriptDocument document, std::string meetingTitle,
               std::string day, std::vector<std::string> participants);

    std::string id;  ///< the meeting's key
    std::string title;
    std::string date;                 ///< a day
    std::optional<std::string> time;  ///< when it started, as the transcript writes it
    std::vector<std::string> people;
    std::vector<MoveTurn> turns;

    /// The index of the first turn with exactly that id.
    std::optional<std::size_t> turnIndex(std::string_view turnID) const;
    bool operator==(const MoveSource&) const = default;
};

/// By meeting key. Shared, because each exchange of a move shows its meeting.
using MoveSources = std::map<std::string, std::shared_ptr<const MoveSource>, std::less<>>;

Json::Value encode(const MoveTurn& turn);
MoveTurn decode(Json::As<MoveTurn>, const Json::Object& in);
Json::Value encode(const MoveSource& source);
MoveSource decode(Json::As<MoveSource>, const Json::Object& in);
}  // namespace ombrix
