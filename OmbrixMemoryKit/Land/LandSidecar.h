// The record of a landed meeting on disk: one JSON file a meeting, all that landing leaves behind.
// Landing the meeting again overwrites the file. Its path is `EnginePaths::landFolder`, "/" and
// `fileName`, inside the transcripts folder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

struct LandSidecar {
    static constexpr std::string_view schemaName = "ombrix/land-sidecar/v1";

    std::string schema{schemaName};
    std::string meetingKey{};          ///< see MeetingKey.h
    std::string contentFingerprint{};  ///< of the transcript that was landed
    std::string relativePath{};        ///< the transcript's, inside the transcripts folder
    std::string title{};
    std::string date{};  ///< the meeting's ISO day
    std::vector<std::string> participants{};
    Instant landedAt{};
    std::string route{};          ///< raw string of an `EngineProvenance::Route`
    std::string model{};          ///< the model's name
    std::string recipeVersion{};  ///< `EngineRecipes::landVersion` at the time
    std::string inputHash{};      ///< `LandInput::hash`
    LandOutput output{};

    /// The text of the file; decoding it gives the same record.
    std::string encode() const;
    /// Throws `Json::SyntaxError` and `Json::DecodingError`. Unknown keys are ignored, and so is
    /// what `schema` says.
    static LandSidecar decode(std::string_view bytes);
    /// The key and ".json".
    static std::string fileName(std::string_view meetingKey);

    bool operator==(const LandSidecar&) const = default;
};

Json::Value encode(LandSidecar sidecar);
LandSidecar decode(Json::As<LandSidecar>, const Json::Object& in);
}  // namespace ombrix
