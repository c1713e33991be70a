// The durable result of one run of the `prepare` recipe: a model's validated answer for one meeting
// and how it was obtained. One JSON file a meeting, in `EnginePaths::prepareFolder`:
//
//   {"schema": "ombrix/prepare-sidecar/v1", "meetingKey": "m-0f3c9d2e4b5a6871",
//    "relativePath": "Weekly/2026-07-27 Product weekly.md", "preparedAt": "2026-07-27T10:04:11Z",
//    "output": {"version": 1, "moves": [...], "not_sure": []}, ...}
//
// The application chooses the file's name; readers take every `.json` in the folder. Moves are
// stored nowhere else: they are derived on each read.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Moves/PrepareOutput.h"
#include "OmbrixMemoryKit/Moves/UnsupportedSchema.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

/// The JSON keys are the field names.
struct PrepareSidecar {
    static constexpr std::string_view schema = "ombrix/prepare-sidecar/v1";
    using DecodeError = UnsupportedSchema;

    std::string meetingKey;
    std::string contentFingerprint;  ///< the transcript's, when it was prepared
    std::string relativePath;        ///< the transcript, inside the transcripts folder
    std::string title;               ///< the meeting's
    std::string date;                ///< the meeting's day
    Instant preparedAt{};
    std::string route;          ///< which route called the model
    std::string model;          ///< the model's name
    std::string recipeVersion;  ///< "prepare/v1"
    std::string inputHash;      ///< of `PrepareInput`
    PrepareOutput output;
    bool operator==(const PrepareSidecar&) const = default;

    /// JSON in the style of files.
    std::string encode() const;
    /// Throws `Json::SyntaxError`, `Json::DecodingError`, and then `DecodeError` for another
    /// schema. The answer inside is not checked again.
    static PrepareSidecar decode(std::string_view json);
};

Json::Value encode(const PrepareSidecar& sidecar);
PrepareSidecar decode(Json::As<PrepareSidecar>, const Json::Object& in);

/// From what a model answered to moves.
namespace PrepareMapping {

MoveKind kind(PrepareMoveKind kind);
Stance stance(PrepareStance stance);
ClaimRole role(PrepareClaimRole role);

/// A claim rests on the move's own meeting. An empty list of recipients, or of what an invite's
/// time rests on, becomes absent. The same answer always gives the same ids.
PreparedMove move(PrepareMove move, std::string meetingKey, std::string preparedAt);
/// One for each move of the answer, in order.
std::vector<PreparedMove> moves(PrepareOutput output, const std::string& meetingKey,
                                const std::string& preparedAt);
/// A later run's version of a move that is already there.
Revision revision(const PreparedMove& move, std::string id, std::string label, std::string at,
                  std::optional<Revision::Reason> reason);
}  // namespace PrepareMapping
}  // namespace ombrix
