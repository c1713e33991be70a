#include "OmbrixCore/StorageModels.h"

#include "OmbrixPlatform/Text.h"

namespace ombrix {

MeetingNotesState notesStateOf(std::string_view formattedNotes) {
    const std::string_view notes = Text::trimmed(formattedNotes);
    if (notes.empty()) return MeetingNotesState::missing;
    if (Text::contains(Text::lowercased(notes), "## raw transcript"))
        return MeetingNotesState::rawTranscriptFallback;
    return MeetingNotesState::structuredNotes;
}

double wordsPerMinute(std::int64_t words, double seconds) {
    return seconds > 0 ? static_cast<double>(words) / (seconds / 60) : 0;
}

Json::Value encode(const DictationRecord& record) {
    return Json::object({{"id", record.id},
                         {"timestamp", record.timestamp},
                         {"durationSeconds", record.durationSeconds},
                         {"rawText", record.rawText},
                         {"appContext", record.appContext},
                         {"wordCount", record.wordCount}});
}

Json::Value encode(const MeetingRecord& record) {
    return Json::object({{"id", record.id},
                         {"title", record.title},
                         {"startTime", record.startTime},
                         {"durationSeconds", record.durationSeconds},
                         {"rawTranscript", record.rawTranscript},
                         {"formattedNotes", record.formattedNotes},
                         {"wordCount", record.wordCount},
                         {"folderID", record.folderID},
                         {"calendarEventID", record.calendarEventID},
                         {"micAudioPath", record.micAudioPath},
                         {"systemAudioPath", record.systemAudioPath}});
}

Json::Value encode(const MeetingFolder& folder) {
    return Json::object(
        {{"id", folder.id}, {"name", folder.name}, {"createdAt", folder.createdAt}});
}

Json::Value encode(const DictationStats& stats) {
    return Json::object({{"totalWords", stats.totalWords},
                         {"totalSessions", stats.totalSessions},
                         {"averageWordsPerSession", stats.averageWordsPerSession},
                         {"averageWPM", stats.averageWPM},
                         {"currentStreakDays", stats.currentStreakDays},
                         {"longestStreakDays", stats.longestStreakDays}});
}

Json::Value encode(const MeetingStats& stats) {
    return Json::object({{"totalWords", stats.totalWords},
                         {"totalMeetings", stats.totalMeetings},
                         {"averageWPM", stats.averageWPM}});
}
}  // namespace ombrix
