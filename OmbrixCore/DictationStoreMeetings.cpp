// The operations of the store on meetings.
#include <algorithm>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/Sqlite.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Sqlite::Access;
using Sqlite::Connection;
using Sqlite::Statement;

constexpr std::string_view meetingColumns =
    "SELECT id, title, start_time, duration_seconds, raw_transcript, formatted_notes, word_count, "
    "folder_id, calendar_event_id, mic_audio_path, system_audio_path";

MeetingRecord meetingOf(const Statement& row) {
    return {.id = row.int64(0),
            .title = row.text(1),
            .startTime = row.text(2),
            .durationSeconds = row.number(3),
            .rawTranscript = row.text(4),
            .formattedNotes = row.text(5),
            .wordCount = row.int32(6),
            .folderID = row.optionalInt64(7),
            .calendarEventID = row.optionalText(8),
            .micAudioPath = row.optionalText(9),
            .systemAudioPath = row.optionalText(10)};
}

MeetingSummary summaryOf(const Statement& row) {
    return {.id = row.int64(0),
            .title = row.text(1),
            .startTime = row.text(2),
            .durationSeconds = row.number(3),
            .wordCount = row.int32(6),
            .folderID = row.optionalInt64(7),
            .notesState = notesStateOf(row.rawText(5))};
}

/// What LIKE with the escape character "\" takes for "contains this text as it stands".
std::string likePattern(std::string_view text) {
    std::string pattern = "%";
    for (const char c : text) {
        if (c == '\\' || c == '%' || c == '_') pattern += '\\';
        pattern += c;
    }
    return pattern + "%";
}

/// Runs the statement of a meeting list and makes one thing of each row.
template <typename MakeRow>
auto meetingRows(const std::string& databaseURL, const MeetingQuery& query, MakeRow makeRow) {
    const std::int64_t limit = Sqlite::require32Bits(query.limit, "limit");
    const std::string_view text = query.search ? Text::trimmed(*query.search) : std::string_view();
    std::vector<std::string_view> conditions;
    if (query.folderID) conditions.push_back("folder_id = ?");
    if (!text.empty()) {
        conditions.push_back(
            "(title LIKE ? ESCAPE '\\' OR IFNULL(raw_transcript, '') LIKE ? ESCAPE '\\' OR "
            "IFNULL(formatted_notes, '') LIKE ? ESCAPE '\\')");
    }
    const std::string pattern = likePattern(text);

    const Connection connection(databaseURL, Access::read);
    Statement statement(connection,
                        Sqlite::newestFirst(meetingColumns, "meetings", conditions, "LIMIT ?"));
    if (query.folderID) statement.bind(*query.folderID);
    if (!text.empty()) statement.bind(pattern).bind(pattern).bind(pattern);
    statement.bind(limit);
    std::vector<decltype(makeRow(statement))> rows;
    while (statement.step()) rows.push_back(makeRow(statement));
    return rows;
}

}  // namespace

void DictationStore::insertMeeting(const NewMeeting& meeting) const {
    const std::string started = isoInstant(meeting.startTime);
    const std::string ended = isoInstant(meeting.endTime);
    const auto seconds = static_cast<double>((meeting.endTime - meeting.startTime).count());
    const Connection connection(databaseURL, Access::write);
    Statement(connection,
              "INSERT INTO meetings (title, calendar_event_id, start_time, end_time, "
              "duration_seconds, raw_transcript, formatted_notes, mic_audio_path, "
              "system_audio_path, word_count, source) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
              "'meeting')")
        .bind(meeting.title)
        .bind(meeting.calendarEventID)
        .bind(started)
        .bind(ended)
        .bind(std::max(seconds, 0.0))
        .bind(meeting.rawTranscript)
        .bind(meeting.formattedNotes)
        .bind(meeting.micAudioPath)
        .bind(meeting.systemAudioPath)
        .bind(countWords(meeting.rawTranscript))
        .finish();
}

std::vector<MeetingRecord> DictationStore::recentMeetings(const MeetingQuery& query) const {
    return meetingRows(databaseURL, query, meetingOf);
}

std::vector<MeetingSummary> DictationStore::recentMeetingSummaries(
    const MeetingQuery& query) const {
    return meetingRows(databaseURL, query, summaryOf);
}

std::optional<MeetingRecord> DictationStore::meeting(std::int64_t id) const {
    const Connection connection(databaseURL, Access::read);
    Statement statement(connection, Sqlite::byId(meetingColumns, "meetings"));
    if (!statement.bind(id).step()) return std::nullopt;
    return meetingOf(statement);
}

void DictationStore::updateMeeting(std::int64_t id, std::string_view title,
                                   std::string_view formattedNotes) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "UPDATE meetings SET title = ?, formatted_notes = ? WHERE id = ?")
        .bind(title)
        .bind(formattedNotes)
        .bind(id)
        .finish();
}

void DictationStore::updateMeetingNotes(std::int64_t id, std::string_view formattedNotes) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "UPDATE meetings SET formatted_notes = ? WHERE id = ?")
        .bind(formattedNotes)
        .bind(id)
        .finish();
}

void DictationStore::updateMeetingTitle(std::int64_t id, std::string_view title) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "UPDATE meetings SET title = ? WHERE id = ?")
        .bind(title)
        .bind(id)
        .finish();
}

void DictationStore::clearMeetings() const {
    Connection(databaseURL, Access::write).execute("DELETE FROM meetings");
}

MeetingStats DictationStore::meetingStats() const {
    const Connection connection(databaseURL, Access::read);
    Statement totals(connection,
                     "SELECT COUNT(*) AS total_meetings, COALESCE(SUM(word_count), 0) AS "
                     "total_words, COALESCE(SUM(duration_seconds), 0) AS total_duration_seconds "
                     "FROM meetings");
    if (!totals.step()) return {};
    const std::int64_t words = totals.int64(1);
    return {.totalWords = words,
            .totalMeetings = totals.int64(0),
            .averageWPM = wordsPerMinute(words, totals.number(2))};
}

void DictationStore::moveMeeting(std::int64_t id, std::optional<std::int64_t> folder) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "UPDATE meetings SET folder_id = ? WHERE id = ?")
        .bind(folder)
        .bind(id)
        .finish();
}
}  // namespace ombrix
