#include "OmbrixCore/DictationStore.h"

#include <utility>

#include "OmbrixCore/OmbrixPaths.h"
#include "OmbrixCore/Sqlite.h"
#include "OmbrixCore/Streaks.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {
namespace {

using Sqlite::Access;
using Sqlite::Connection;
using Sqlite::Statement;

constexpr const char* createTables = R"(
CREATE TABLE IF NOT EXISTS dictations (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    timestamp TEXT NOT NULL,
    duration_seconds REAL,
    raw_text TEXT,
    app_context TEXT,
    word_count INTEGER NOT NULL DEFAULT 0,
    source TEXT NOT NULL DEFAULT 'dictation',
    started_at TEXT,
    ended_at TEXT,
    created_at TEXT DEFAULT (datetime('now'))
);
CREATE INDEX IF NOT EXISTS idx_dictations_timestamp ON dictations(timestamp DESC);
CREATE TABLE IF NOT EXISTS meetings (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    title TEXT NOT NULL,
    calendar_event_id TEXT,
    start_time TEXT NOT NULL,
    end_time TEXT,
    duration_seconds REAL,
    raw_transcript TEXT,
    formatted_notes TEXT,
    mic_audio_path TEXT,
    system_audio_path TEXT,
    word_count INTEGER NOT NULL DEFAULT 0,
    source TEXT NOT NULL DEFAULT 'meeting',
    created_at TEXT DEFAULT (datetime('now'))
);
CREATE INDEX IF NOT EXISTS idx_meetings_start_time ON meetings(start_time DESC);
)";
constexpr const char* createFolders = R"(
CREATE TABLE IF NOT EXISTS meeting_folders (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    sort_order INTEGER NOT NULL DEFAULT 0,
    created_at TEXT DEFAULT (datetime('now'))
);
)";

constexpr std::string_view dictationColumns =
    "SELECT id, timestamp, duration_seconds, raw_text, app_context, word_count";
DictationRecord dictationOf(const Statement& row) {
    return {.id = row.int64(0),
            .timestamp = row.text(1),
            .durationSeconds = row.number(2),
            .rawText = row.text(3),
            .appContext = row.text(4),
            .wordCount = row.int32(5)};
}

/// The days that dictations were made on, as the database tells them, in UTC. A timestamp that is
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
}  // namespace

DatabaseError::DatabaseError(int code, std::string message, std::string statement)
    : std::runtime_error(message + " (" + std::string(domain) + " error " + std::to_string(code) +
                         ": " + statement + ")"),
      code_(code),
      message_(std::move(message)),
      statement_(std::move(statement)) {}

DictationStore::DictationStore()
    : DictationStore(
          OmbrixPaths::defaultDatabaseURL(OmbrixPaths::defaultAppName, Files::homeDirectory())) {}

DictationStore::DictationStore(std::string url) : databaseURL(std::move(url)) {}

bool DictationStore::databaseExists() const { return Files::exists(databaseURL); }

void DictationStore::migrateIfNeeded() const {
    const Connection connection(databaseURL, Access::write);
    connection.execute(createTables);
    connection.execute(createFolders);
    // There is no version to ask: a database that has the column already refuses it, harmlessly.
    connection.tryExecute(
        "ALTER TABLE meetings ADD COLUMN folder_id INTEGER REFERENCES meeting_folders(id)");
    connection.tryExecute("CREATE INDEX IF NOT EXISTS idx_meetings_folder ON meetings(folder_id)");
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
    const std::int64_t limit = Sqlite::require32Bits(query.limit, "limit");
    const std::int64_t offset = Sqlite::require32Bits(query.offset, "offset");
    std::vector<std::string_view> conditions;
    if (query.fromDate) conditions.push_back("timestamp >= ?");
    if (query.toDate) conditions.push_back("timestamp <= ?");

    const Connection connection(databaseURL, Access::read);
    Statement statement(connection, Sqlite::newestFirst(dictationColumns, "dictations", conditions,
                                                        "LIMIT ? OFFSET ?"));
    if (query.fromDate) statement.bind(*query.fromDate);
    if (query.toDate) statement.bind(*query.toDate);
    statement.bind(limit).bind(offset);
    std::vector<DictationRecord> records;
    while (statement.step()) records.push_back(dictationOf(statement));
    return records;
}

std::optional<DictationRecord> DictationStore::dictation(std::int64_t id) const {
    const Connection connection(databaseURL, Access::read);
    Statement statement(connection, Sqlite::byId(dictationColumns, "dictations"));
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
