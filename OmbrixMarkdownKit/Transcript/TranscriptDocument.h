// One transcript as a record. `MarkdownTranscriptParser` reads it from a file; ranking, scopes and
// answers work on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

/// One meeting or dictation as its file describes it. A snapshot: it does not follow the file.
struct TranscriptDocument {
    struct Turn {
        std::string speaker;  ///< what the bold marks enclose; never empty when parsed
        std::string text;     ///< paragraphs are joined by a blank line; may be empty
        bool operator==(const Turn&) const = default;
    };

    std::string title;
    std::string date;  ///< "YYYY-MM-DD", as text; empty when unknown
    std::vector<std::string> participants;
    std::int64_t durationMin = 0;
    std::string source;
    std::string notes;
    std::vector<Turn> turns;
    std::string startedAt;  ///< ISO 8601, as text
    std::string asr;        ///< which recogniser produced the text
    std::string status;
    std::string calendarEventID;
    std::vector<std::string> pendingAudioPaths;
    double pendingOffsetSeconds = 0;
    bool hasPendingOffset = false;  ///< the key was there, even with a value that is no number
    std::string pendingReason;
    std::string spendID;
    std::string topicHint;
    std::string asrSummary;
    std::string sourceApp;
    std::vector<std::string> tags;
    bool isPrivate = false;
    std::string summary;
    std::string meetingNotes;
    std::string actionItems;
    std::string keyMoments;

    /// What the application writes under "## Notes" until the person types there.
    static constexpr std::string_view notesPlaceholder =
        "_(User-added context. Empty until the user types here in the Library window.)_";

    bool isPendingTranscription() const { return status == "pending"; }
    bool isIncomplete() const { return status == "incomplete"; }
    bool isRetryable() const { return isPendingTranscription() || isIncomplete(); }
    /// The notes hold something other than white space and the placeholder.
    bool hasUserNotes() const;

    bool operator==(const TranscriptDocument&) const = default;
};

/// Under the keys "speaker" and "text", both required. `decode` throws `Json::DecodingError`.
Json::Value encode(const TranscriptDocument::Turn& turn);
TranscriptDocument::Turn decode(Json::As<TranscriptDocument::Turn>, const Json::Object& in);
}  // namespace ombrix

template <>
struct std::hash<ombrix::TranscriptDocument::Turn> {
    std::size_t operator()(const ombrix::TranscriptDocument::Turn& turn) const noexcept;
};

/// Linear in the turns; documents that differ elsewhere only may share a hash.
template <>
struct std::hash<ombrix::TranscriptDocument> {
    std::size_t operator()(const ombrix::TranscriptDocument& document) const noexcept;
};
