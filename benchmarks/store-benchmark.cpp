// store-benchmark CLI FOLDER [--rounds N]
//
// Times `meetings list` and `meetings get` against the sqlite3 shell running the same SELECT on the
// same database. One database has 2,000 meetings and one 20,000, each with 40 KB of transcript, to
// show costs that grow with the table. Databases that are missing are made in FOLDER.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "OmbrixCore/DictationStore.h"
#include "ProcessRun.h"

namespace {

using namespace ombrix;
using ProcessRun::Command;
using ProcessRun::Cost;

constexpr const char* columns =
    "SELECT id, title, start_time, duration_seconds, raw_transcript, formatted_notes, word_count, "
    "folder_id, calendar_event_id, mic_audio_path, system_audio_path FROM meetings ";

/// The store creates the schema. One statement fills in the rows: a commit for each row would take
/// minutes.
std::string database(const std::string& folder, int meetings) {
    const std::string path = folder + "/" + std::to_string(meetings) + ".db";
    if (std::filesystem::exists(path)) return path;
    std::filesystem::create_directories(folder);
    const std::string partial = path + ".partial";
    DictationStore(partial).migrateIfNeeded();
    ProcessRun::run(
        {"sqlite3", partial,
         "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
             std::to_string(meetings) +
             ") INSERT INTO meetings (title, start_time, end_time, duration_seconds, "
             "raw_transcript, formatted_notes, word_count) SELECT 'Product weekly ' || i, "
             "'2026-07-01T09:00:00Z', '2026-07-01T09:30:00Z', 1800, "
             "i || replace(hex(zeroblob(4000)), '00', ' tenthword'), '- call ' || i, 4001 FROM n; "
             "PRAGMA wal_checkpoint(TRUNCATE)"});
    std::filesystem::rename(partial, path);
    return path;
}

void printPair(const char* name, const Cost& ours, const Cost& shell) {
    std::printf("%-28s %8.2f ms %6.1f MB   sqlite3 %8.2f ms %6.1f MB   ratio %.2f\n", name,
                ours.seconds * 1000, ours.peakMegabytes, shell.seconds * 1000, shell.peakMegabytes,
                ours.seconds / shell.seconds);
}

void compare(const std::string& cli, const std::string& path, int meetings, int rounds) {
    const std::string id = std::to_string(meetings / 2);
    const std::string select = columns;
    const auto costs =
        ProcessRun::sideBySide({{cli, "meetings", "list", "--limit", "10", "--db-path", path},
                                {"sqlite3", path, select + "ORDER BY id DESC LIMIT 10"},
                                {cli, "meetings", "get", id, "--db-path", path},
                                {"sqlite3", path, select + "WHERE id = " + id}},
                               rounds);
    std::printf("%d meetings\n", meetings);
    printPair("meetings list --limit 10", costs[0], costs[1]);
    printPair("meetings get", costs[2], costs[3]);
}
}  // namespace

int main(int argc, char** argv) {
    const auto [cli, folder, rounds] = ProcessRun::orderOf("store-benchmark", argc, argv, 101);
    std::printf("the store, median of %d rounds; the goal is a ratio of at most 2\n", rounds);
    for (const int meetings : {2'000, 20'000})
        compare(cli, database(folder, meetings), meetings, rounds);
}
