#include "OmbrixCore/StoreSchema.h"

namespace ombrix::StoreSchema {
namespace {

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
}  // namespace

void migrate(const Sqlite::Connection& connection) {
    connection.execute(createTables);
    connection.execute(createFolders);
    // There is no version number. A database that has the column already refuses it, harmlessly.
    connection.tryExecute(
        "ALTER TABLE meetings ADD COLUMN folder_id INTEGER REFERENCES meeting_folders(id)");
    connection.tryExecute("CREATE INDEX IF NOT EXISTS idx_meetings_folder ON meetings(folder_id)");
}
}  // namespace ombrix::StoreSchema
