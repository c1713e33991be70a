// The records of the store. The desktop application writes nearly all of them; texts come out of
// the database as valid UTF-8, whatever bytes it holds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

/// What the notes of a meeting are.
enum class MeetingNotesState {
    missing,                ///< nothing but white space
    rawTranscriptFallback,  ///< the transcript in place of notes that could not be made
    structuredNotes,
};
constexpr auto rawValues(MeetingNotesState) {
    return EnumNames::table<MeetingNotesState>({
        {MeetingNotesState::missing, "missing"},
        {MeetingNotesState::rawTranscriptFallback, "raw_transcript_fallback"},
        {MeetingNotesState::structuredNotes, "structured_notes"},
    });
}
/// Linear; makes a lower-cased copy of the notes while it runs.
MeetingNotesState notesStateOf(std::string_view formattedNotes);

/// Times are text as the database holds it, ISO 8601 in UTC with seconds unless something else
/// wrote it. A NULL text is empty.
struct DictationRecord {
    std::int64_t id = 0;
    std::string timestamp = {};
    double durationSeconds = 0;
    std::string rawText = {};
    std::string appContext = {};
    std::int32_t wordCount = 0;
    bool operator==(const DictationRecord&) const = default;
};

struct MeetingRecord {
    std::int64_t id = 0;
    std::string title = {};
    std::string startTime = {};
    double durationSeconds = 0;
    std::string rawTranscript = {};
    std::string formattedNotes = {};
    std::int32_t wordCount = 0;
    std::optional<std::int64_t> folderID = {};
    std::optional<std::string> calendarEventID = {};
    std::optional<std::string> micAudioPath = {};
    std::optional<std::string> systemAudioPath = {};

    MeetingNotesState notesState() const { return notesStateOf(formattedNotes); }
    bool operator==(const MeetingRecord&) const = default;
};

/// A meeting as a list shows it: without its texts, so that a list of thousands costs no memory.
struct MeetingSummary {
    std::int64_t id = 0;
    std::string title = {};
    std::string startTime = {};
    double durationSeconds = 0;
    std::int32_t wordCount = 0;
    std::optional<std::int64_t> folderID = {};
    MeetingNotesState notesState = MeetingNotesState::missing;
    bool operator==(const MeetingSummary&) const = default;
};

struct MeetingFolder {
    std::int64_t id = 0;
    std::string name = {};
    std::string createdAt = {};  ///< SQLite's own form, "2026-03-01 09:30:00", UTC
    bool operator==(const MeetingFolder&) const = default;
};

struct DictationStats {
    std::int64_t totalWords = 0;
    std::int64_t totalSessions = 0;
    double averageWordsPerSession = 0;
    double averageWPM = 0;  ///< words a minute
    std::int64_t currentStreakDays = 0;
    std::int64_t longestStreakDays = 0;
    bool operator==(const DictationStats&) const = default;
};

struct MeetingStats {
    std::int64_t totalWords = 0;
    std::int64_t totalMeetings = 0;
    double averageWPM = 0;
    bool operator==(const MeetingStats&) const = default;
};

/// 0 without a positive duration.
double wordsPerMinute(std::int64_t words, double seconds);

/// Objects with one key a field, named like it; an absent optional writes no key, and what is
/// computed from other fields (`notesState`) is not written.
Json::Value encode(const DictationRecord& record);
Json::Value encode(const MeetingRecord& record);
Json::Value encode(const MeetingFolder& folder);
Json::Value encode(const DictationStats& stats);
Json::Value encode(const MeetingStats& stats);
}  // namespace ombrix
