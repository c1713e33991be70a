// The file of a move's state, one a move, in `EnginePaths::movesFolder`:
//
//   {"schema": "ombrix/move-state/v1", "moveId": "mv-1a2b3c4d", "sourceId": "m-...",
//    "current": 0, "delivery": {"kind": "copied"}, "dismissed": false, ...}
//
// It holds all of the state but `preparation`, since a move is ready when its sidecar holds it. The
// application writes these files; the tool only reads them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "OmbrixMemoryKit/Moves/MoveState.h"
#include "OmbrixMemoryKit/Moves/UnsupportedSchema.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

class MoveStateRecord {
  public:
    static constexpr std::string_view schema = "ombrix/move-state/v1";
    static constexpr std::size_t maximalEvents = 200;
    using DecodeError = UnsupportedSchema;

    /// The record of a state with its newest `maximalEvents` events. `sourceId` is the key of the
    /// move's meeting.
    MoveStateRecord(MoveState state, std::string sourceId);

    /// The state, with the preparation that the caller knows.
    MoveState state(Preparation preparation) const;
    const std::string& moveId() const { return stored_.moveId; }
    const std::string& sourceId() const { return sourceId_; }

    /// JSON in the style of files.
    std::string encode() const;
    /// Keeps all events of the file. Throws `Json::SyntaxError`, `Json::DecodingError`, and then
    /// `DecodeError` for another schema.
    static MoveStateRecord decode(std::string_view json);

    bool operator==(const MoveStateRecord&) const = default;

  private:
    friend MoveStateRecord decode(Json::As<MoveStateRecord>, const Json::Object& in);
    MoveStateRecord() = default;

    MoveState stored_;  // its preparation is always `ready`, so that equal records are equal
    std::string sourceId_;
};

MoveStateRecord decode(Json::As<MoveStateRecord>, const Json::Object& in);
}  // namespace ombrix
