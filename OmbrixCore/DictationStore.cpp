#include "OmbrixCore/DictationStore.h"

#include <algorithm>
#include <utility>

#include "OmbrixCore/OmbrixPaths.h"
#include "OmbrixCore/Sqlite.h"
#include "OmbrixCore/StoreQueries.h"
#include "OmbrixCore/StoreSchema.h"
#include "OmbrixCore/Streaks.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Sqlite::Access;
using Sqlite::Connection;
using Sqlite::Statement;

constexpr std::string_view dictationColumns =
    "id, timestamp, duration_seconds, raw_text, app_context, word_count";
DictationRecord dictationOf(const Statement& row) {
    return {.id = row.int64(0),
            .timestamp = row.text(1),
            .durationSeconds = row.number(2),
            .rawText = row.text(3),
            .appContext = row.text(4),
            .wordCount = row.int32(5)};
}

/// The days on which dictations were made, in UTC, as the database gives them. A timestamp that is
/// no date gives none.
std::vector<Instant> usedDays(const Connection& connection) {
    Statement statement(
        connection,
        "SELECT DISTINCT date(timestamp) AS used_day FROM dictations ORDER BY used_day ASC");
    std::vector<Instant> days;
    while (statement.step()) {
        if (const auto day = parseIsoInstant(statement.text(0) + "T00:00:00Z"))
            days.push_back(*day);
    }
    return days;
}

constexpr std::string_view meetingColumns =
    "id, title, start_time, duration_seconds, raw_transcript, formatted_notes, word_count, "
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

/// Lists meetings, each made of its row by `makeRow`.
template <typename MakeRow>
auto meetingRows(const std::string& databaseURL, const MeetingQuery& query, MakeRow makeRow) {
    const std::int64_t limit = StoreQueries::require32Bits(query.limit, "limit");
    const std::string_view text = query.search ? Text::trimmed(*query.search) : std::string_view();
    std::vector<std::string_view> conditions;
    if (query.folderID) conditions.push_back("folder_id = ?");
    if (!text.empty()) {
        conditions.push_back(
            "(title LIKE ? ESCAPE '\\' OR IFNULL(raw_transcript, '') LIKE ? ESCAPE '\\' OR "
            "IFNULL(formatted_notes, '') LIKE ? ESCAPE '\\')");
    }
    const std::string pattern = StoreQueries::likePattern(text);

    const Connection connection(databaseURL, Access::read);
    Statement statement(
        connection, StoreQueries::newestFirst(meetingColumns, "meetings", conditions, "LIMIT ?"));
    if (query.folderID) statement.bind(*query.folderID);
    if (!text.empty()) statement.bind(pattern).bind(pattern).bind(pattern);
    statement.bind(limit);
    std::vector<decltype(makeRow(statement))> rows;
    while (statement.step()) rows.push_back(makeRow(statement));
    return rows;
}
}  // namespace

DictationStore::DictationStore()
    : DictationStore(
          OmbrixPaths::defaultDatabaseURL(OmbrixPaths::defaultAppName, Files::homeDirectory())) {}

DictationStore::DictationStore(std::string url) : databaseURL(std::move(url)) {}

bool DictationStore::databaseExists() const { return Files::exists(databaseURL); }

void DictationStore::migrateIfNeeded() const {
    StoreSchema::migrate(Connection(databaseURL, Access::write));
}

// ---- dictations -------------------------------------------------------------------------------

void DictationStore::insert(const NewDictation& dictation) const {
    const std::string started = isoInstant(dictation.startedAt);
    const std::string ended = isoInstant(dictation.endedAt);
    const Connection connection(databaseURL, Access::write);
    Statement(connection,
              "INSERT INTO dictations (timestamp, duration_seconds, raw_text, app_context, "
              "word_count, source, started_at, ended_at) VALUES (?, ?, ?, ?, ?, 'dictation', ?, ?)")
        .bind(ended)
        .bind(dictation.durationSeconds)
        .bind(dictation.text)
        .bind(dictation.appContext)
        .bind(countWords(dictation.text))
        .bind(started)
        .bind(ended)
        .finish();
}

std::vector<DictationRecord> DictationStore::recentDictations(const DictationQuery& query) const {
    const std::int64_t limit = StoreQueries::require32Bits(query.limit, "limit");
    const std::int64_t offset = StoreQueries::require32Bits(query.offset, "offset");
    std::vector<std::string_view> conditions;
    if (query.fromDate) conditions.push_back("timestamp >= ?");
    if (query.toDate) conditions.push_back("timestamp <= ?");

    const Connection connection(databaseURL, Access::read);
    Statement statement(connection, StoreQueries::newestFirst(dictationColumns, "dictations",
                                                              conditions, "LIMIT ? OFFSET ?"));
    if (query.fromDate) statement.bind(*query.fromDate);
    if (query.toDate) statement.bind(*query.toDate);
    statement.bind(limit).bind(offset);
    std::vector<DictationRecord> records;
    while (statement.step()) records.push_back(dictationOf(statement));
    return records;
}

std::optional<DictationRecord> DictationStore::dictation(std::int64_t id) const {
    const Connection connection(databaseURL, Access::read);
    Statement statement(connection, StoreQueries::byId(dictationColumns, "dictations"));
    if (!statement.bind(id).step()) return std::nullopt;
    return dictationOf(statement);
}

void DictationStore::deleteDictation(std::int64_t id) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "DELETE FROM dictations WHERE id = ?").bind(id).tryFinish();
}

void DictationStore::clearDictations() const {
    Connection(databaseURL, Access::write).execute("DELETE FROM dictations");
}

DictationStats DictationStore::dictationStats(Instant now, const Calendar& calendar) const {
    const Connection connection(databaseURL, Access::read);
    Statement totals(connection,
                     "SELECT COUNT(*) AS total_sessions, COALESCE(SUM(word_count), 0) AS "
                     "total_words, COALESCE(SUM(duration_seconds), 0) AS total_duration_seconds "
                     "FROM dictations");
    if (!totals.step()) return {};
    const std::int64_t sessions = totals.int64(0);
    const std::int64_t words = totals.int64(1);
    const Streaks::Lengths streaks = Streaks::of(usedDays(connection), now, calendar);
    return {.totalWords = words,
            .totalSessions = sessions,
            .averageWordsPerSession =
                sessions > 0 ? static_cast<double>(words) / static_cast<double>(sessions) : 0,
            .averageWPM = wordsPerMinute(words, totals.number(2)),
            .currentStreakDays = streaks.current,
            .longestStreakDays = streaks.longest};
}

// ---- meetings --------------------------------------------------------------------------------

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
    Statement statement(connection, StoreQueries::byId(meetingColumns, "meetings"));
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

// ---- folders ----------------------------------------------------------------------------------

std::int64_t DictationStore::createFolder(std::string_view name) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "INSERT INTO meeting_folders (name) VALUES (?)").bind(name).finish();
    return connection.lastInsertedRowId();
}

void DictationStore::renameFolder(std::int64_t id, std::string_view name) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "UPDATE meeting_folders SET name = ? WHERE id = ?")
        .bind(name)
        .bind(id)
        .finish();
}

void DictationStore::deleteFolder(std::int64_t id) const {
    const Connection connection(databaseURL, Access::write);
    Statement(connection, "UPDATE meetings SET folder_id = NULL WHERE folder_id = ?")
        .bind(id)
        .tryFinish();
    Statement(connection, "DELETE FROM meeting_folders WHERE id = ?").bind(id).tryFinish();
}

std::vector<MeetingFolder> DictationStore::listFolders() const {
    const Connection connection(databaseURL, Access::read);
    Statement statement(
        connection,
        "SELECT id, name, created_at FROM meeting_folders ORDER BY sort_order ASC, id ASC");
    std::vector<MeetingFolder> folders;
    while (statement.step()) {
        folders.push_back(
            {.id = statement.int64(0), .name = statement.text(1), .createdAt = statement.text(2)});
    }
    return folders;
}

std::int64_t DictationStore::countWords(std::string_view text) {
    return static_cast<std::int64_t>(Characters::splitAtWhiteSpace(text).size());
}
}  // namespace ombrix
