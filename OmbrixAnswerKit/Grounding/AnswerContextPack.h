// What a model is given to answer from: some meetings, as a small JSON document with a hash that
// tells whether two packs hold the same.
//
//   {"hash":"5f2c...","meetings":[{"actionItems":["Send the deck"],"date":"2026-05-03",
//    "id":"/t/Weekly.md","notes":"Call back.","participants":["Ann Jones"],"title":"Weekly",
//    "turns":[{"speaker":"Ann Jones","text":"Let us begin."}]}],"version":1}
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

struct AnswerContextPack {
    using Turn = TranscriptDocument::Turn;

    struct Meeting {
        std::string id;     ///< its name in this pack: the path of its file
        std::string title;  ///< this and the next two as in the transcript
        std::string date;
        std::vector<std::string> participants;
        std::vector<Turn> turns;                              ///< those kept, in transcript order
        std::optional<std::string> notes;                     ///< the user's own, trimmed
        std::optional<std::vector<std::string>> actionItems;  ///< without their bullets
        bool operator==(const Meeting&) const = default;
    };

    static constexpr std::int64_t currentVersion = 1;

    std::int64_t version = currentVersion;
    std::string hash;               ///< of `version` and `meetings`; see `computeHash`
    std::vector<Meeting> meetings;  ///< newest first

    /// The pack of these meetings, with its hash.
    static AnswerContextPack of(std::vector<Meeting> meetings,
                                std::int64_t version = currentVersion);

    /// The JSON of the pack without its hash: no white space, keys in ascending order, "/" plain,
    /// no key for what is absent. Two packs hold the same when these bytes are the same.
    static std::string canonicalJSON(std::int64_t version, std::span<const Meeting> meetings);
    /// SHA-256 of the canonical JSON, 64 lower-case hexadecimal digits.
    static std::string computeHash(std::int64_t version, std::span<const Meeting> meetings);

    /// Of the canonical JSON, so keys, brackets and escapes count too.
    std::int64_t estimatedTokens() const;
    /// False for a pack that was changed after its hash was computed.
    bool hashMatchesContent() const;

    bool operator==(const AnswerContextPack&) const = default;
};

/// Under the field names. Throws `Json::DecodingError`; a hash is read as it is, right or wrong.
Json::Value encode(const AnswerContextPack::Meeting& meeting);
Json::Value encode(const AnswerContextPack& pack);
AnswerContextPack::Meeting decode(Json::As<AnswerContextPack::Meeting>, const Json::Object& in);
AnswerContextPack decode(Json::As<AnswerContextPack>, const Json::Object& in);
}  // namespace ombrix
