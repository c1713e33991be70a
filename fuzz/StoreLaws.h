// What holds for a store over foreign bytes: whatever they are, a command prints one envelope or
// SQLite says what is wrong, both ways of listing agree, and reading changes nothing once the
// journal mode is set.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandLine.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCore/DatabaseError.h"
#include "OmbrixCore/DictationStore.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Utf8.h"
#include "Output.h"

namespace ombrix::Fuzz {

/// True when `work` returns, false when SQLite refuses it.
template <typename Work>
bool allows(Work work) {
    try {
        work();
        return true;
    } catch (const DatabaseError& error) {
        law(!error.message().empty(), "a refusal says why");
        return false;
    }
}

inline void runCommand(std::vector<std::string> words, const std::string& database) {
    static const Output output;
    words.insert(words.end(), {"--db-path", database});
    CommandLine line("ombrix-cli", "");
    declareInfo(line.root(), "ombrix-cli");
    declareMeetings(line.root());
    declareDictations(line.root());
    const auto choice = line.parse(words);
    allows([&] {
        try {
            choice.work();
        } catch (const CLIError& error) {
            law(error.errorBody().code == "not_found", "a record is there or not found");
        }
    });
    const std::string printed = output.take();
    if (printed.empty()) return;  // a number that JSON cannot hold, or a refusal
    const Json::Value envelope = Json::parse(printed);
    law(Json::write(envelope, Json::Style::envelope) + "\n" == printed, "one envelope is printed");
}

inline void checkLists(const DictationStore& store, const MeetingQuery& query) {
    std::vector<MeetingRecord> whole;
    std::vector<MeetingSummary> rows;
    if (!allows([&] { whole = store.recentMeetings(query); }) ||
        !allows([&] { rows = store.recentMeetingSummaries(query); }))
        return;
    law(query.limit < 0 || whole.size() <= static_cast<std::size_t>(query.limit),
        "the limit holds");
    law(std::ranges::equal(rows, whole,
                           [](const MeetingSummary& row, const MeetingRecord& record) {
                               return row.id == record.id && row.title == record.title &&
                                      row.wordCount == record.wordCount &&
                                      row.folderID == record.folderID &&
                                      row.notesState == record.notesState();
                           }),
        "both lists tell the same");
    for (const MeetingRecord& meeting : whole) {
        law(Utf8::isValid(meeting.rawTranscript + meeting.formattedNotes + meeting.startTime),
            "texts are valid");
        allows([&] { store.meeting(meeting.id); });
    }
}

inline void read(const DictationStore& store) {
    const std::string& database = store.databaseURL;
    runCommand({"info"}, database);
    runCommand({"meetings", "list"}, database);
    runCommand({"meetings", "list", "--folder-id", "1"}, database);
    runCommand({"meetings", "get", "1"}, database);
    runCommand({"dictations", "list", "--limit", "100"}, database);
    runCommand({"dictations", "get", "1"}, database);
    checkLists(store, {.limit = 100});
    checkLists(store, {.limit = -1, .search = "pricing"});
    allows([&] { store.listFolders(); });
    allows([&] { store.meetingStats(); });
    allows([&] { store.dictationStats({}, Calendar("UTC", Calendar::Weekday::monday)); });
}

/// Reads the database file "db" of a folder, which may have companions, and then writes to it.
inline void checkStore(const test::TestFolder& folder) {
    const DictationStore store(folder.at("db"));
    // Beside a log that is not its own the first reader only removes that; the next one sets the
    // journal mode.
    for (int reader = 0; reader < 2; ++reader) allows([&] { store.listFolders(); });
    const std::string before = folder.read("db");
    read(store);
    law(folder.read("db") == before, "reading changes nothing");

    allows([&] { store.migrateIfNeeded(); });
    allows([&] { store.updateMeetingNotes(1, "new notes"); });
    allows([&] { store.insertMeeting({.title = "new", .rawTranscript = "one two"}); });
    checkLists(store, {.limit = 100});
}

/// Removes what an earlier input left beside the database of a folder.
inline void removeCompanions(const test::TestFolder& folder) {
    for (const char* name : {"db-wal", "db-shm", "db-journal"})
        std::filesystem::remove(folder.at(name));
}
}  // namespace ombrix::Fuzz
