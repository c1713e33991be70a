// What the store does with a damaged, locked or read-only database.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <thread>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "OmbrixCore/Sqlite.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* readOnly = "attempt to write a readonly database";

/// The message with which `work` fails; empty when it does not.
template <typename Work>
std::string refusal(Work work) {
    try {
        work();
    } catch (const DatabaseError& error) {
        EXPECT_THAT(error.what(), testing::StartsWith(error.message() + " (OmbrixDB error " +
                                                      std::to_string(error.code()) + ": "));
        return error.message();
    }
    return {};
}

/// The same of listing the meetings.
std::string complaint(const DictationStore& store) {
    return refusal([&] { store.recentMeetings({}); });
}

DictationStore oneMeeting(const test::TestFolder& folder) {
    const DictationStore store(folder.at("ombrix.db"));
    store.migrateIfNeeded();
    store.insertMeeting({.title = "one", .rawTranscript = std::string(40000, 'x')});
    return store;
}

/// What `work` returns in another process; -1 when that does not end by itself.
int inAnotherProcess(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(work());
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// The same as a user who owns nothing: the superuser may write everything.
int asSomebodyElse(const std::function<int()>& work) {
    return inAnotherProcess([&] {
        if (::geteuid() == 0 && ::setresuid(65534, 65534, 65534) != 0) return 99;
        return work();
    });
}
}  // namespace

TEST(DictationStoreDamage, WhatIsNoDatabaseIsReportedAndLeftAsItIs) {
    const test::TestFolder folder;
    const std::string whole =
        folder.read(oneMeeting(folder).databaseURL.substr(folder.path().size() + 1));
    // SQLite takes one byte for an empty database; the others end in the first page and after it.
    for (const std::string& bytes :
         {std::string("x"), whole.substr(0, 1000), whole.substr(0, 5000)}) {
        const DictationStore store(folder.write("damaged.db", bytes));
        EXPECT_EQ(complaint(store),
                  bytes == "x" ? "no such table: meetings" : "database disk image is malformed");
        EXPECT_EQ(folder.read("damaged.db"), bytes) << bytes.size();
    }
}

TEST(DictationStoreDamage, OddValuesAreReadAsSqliteConvertsThem) {
    const test::TestFolder folder;
    const DictationStore store = oneMeeting(folder);
    test::RawDatabase database(store.databaseURL);
    database.run(
        "INSERT INTO meetings (id, title, start_time, duration_seconds, raw_transcript, "
        "formatted_notes, word_count, folder_id, calendar_event_id, mic_audio_path) VALUES "
        "(-5, CAST(x'61FF62C3' AS TEXT), 17, NULL, x'00E282AC00', NULL, 4294967297, NULL, 1.5, "
        "x'FE')");
    const MeetingRecord expected{.id = -5,
                                 .title = "a\uFFFDb\uFFFD",
                                 .startTime = "17",
                                 .rawTranscript = std::string("\0€\0", 5),
                                 .wordCount = 1,
                                 .calendarEventID = "1.5",
                                 .micAudioPath = "\uFFFD"};
    EXPECT_EQ(store.meeting(-5), expected);
    database.run("UPDATE meetings SET word_count = 9223372036854775807");
    EXPECT_THROW(store.meetingStats(), DatabaseError);  // the sum exceeds 64 bits
}

TEST(DictationStoreDamage, AMissingDatabaseIsMadeEmptyAndAMissingFolderWithIt) {
    const test::TestFolder folder;
    const DictationStore store(folder.at("a/b/ombrix.db"));
    EXPECT_FALSE(store.databaseExists());
    EXPECT_EQ(complaint(store), "no such table: meetings");
    EXPECT_TRUE(store.databaseExists());
    const DictationStore blocked(folder.write("file", "") + "/ombrix.db");
    EXPECT_THROW(blocked.recentMeetings({}), std::system_error);
}

TEST(DictationStoreDamage, ALockInAnotherJournalModeIsWaitedOutForTwoSeconds) {
    const test::TestFolder folder;
    const DictationStore store = oneMeeting(folder);
    test::RawDatabase writer(store.databaseURL);
    writer.rows("PRAGMA journal_mode=DELETE");
    writer.run("BEGIN IMMEDIATE");
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        writer.run("COMMIT");
    });
    EXPECT_EQ(complaint(store), "");
    other.join();

    writer.run("BEGIN IMMEDIATE");
    const auto start = Clock::now();
    EXPECT_EQ(refusal([&] { store.updateMeetingNotes(1, "lost"); }), "database is locked");
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    EXPECT_GT(seconds, 1.8);
    EXPECT_LT(seconds, 4);
}

TEST(DictationStoreDamage, WhatMayNotBeWrittenCanStillBeRead) {
    for (const char* mode : {"WAL", "DELETE"}) {
        for (const mode_t folderMode : {0755U, 0555U}) {
            const test::TestFolder folder;
            const DictationStore store = oneMeeting(folder);
            test::RawDatabase(store.databaseURL).rows(std::string("PRAGMA journal_mode=") + mode);
            ASSERT_EQ(::chmod(store.databaseURL.c_str(), 0444), 0);
            ASSERT_EQ(::chmod(folder.path().c_str(), folderMode), 0);
            EXPECT_EQ(asSomebodyElse([&] {
                          if (complaint(store) != "") return 2;
                          const auto write = [&] { store.updateMeetingNotes(1, "x"); };
                          if (refusal(write) != readOnly) return 3;
                          return store.meeting(1)->formattedNotes.empty() ? 0 : 4;
                      }),
                      0)
                << mode << " " << folderMode;
            ::chmod(folder.path().c_str(), 0755);
        }
    }
}

TEST(DictationStoreDamage, AChangeThatIsHalfInTheFileIsNeverRead) {
    const test::TestFolder folder;
    const DictationStore store = oneMeeting(folder);
    test::RawDatabase(store.databaseURL).rows("PRAGMA journal_mode=DELETE");
    // A writer dies when some of its pages are in the file, and only the journal can undo them.
    ASSERT_EQ(inAnotherProcess([&]() -> int {
                  test::RawDatabase writer(store.databaseURL);
                  writer.run("PRAGMA cache_size=1; PRAGMA cache_spill=1; BEGIN;");
                  writer.run("UPDATE meetings SET title='half', raw_transcript=hex(zeroblob(1e6))");
                  ::_exit(::access((store.databaseURL + "-journal").c_str(), F_OK));
              }),
              0);
    ASSERT_EQ(::chmod(store.databaseURL.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    EXPECT_EQ(asSomebodyElse([&] { return complaint(store) == readOnly ? 0 : 1; }), 0);
    ::chmod(folder.path().c_str(), 0755);
    ::chmod(store.databaseURL.c_str(), 0644);
    EXPECT_EQ(store.meeting(1)->title, "one");
}

TEST(DictationStoreDamage, AnEndlessComputationInTheSchemaIsInterrupted) {
    const std::string endless =
        "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT max(x) FROM c";
    const std::pair<std::string, std::string> cases[] = {
        {"DROP TABLE meetings; CREATE VIEW meetings AS " + endless, "SELECT * FROM meetings"},
        {"CREATE TRIGGER t AFTER UPDATE ON meetings BEGIN SELECT (" + endless + "); END",
         "UPDATE meetings SET title = 'new'"},
    };
    for (const auto& [schema, statement] : cases) {
        const test::TestFolder folder;
        const DictationStore store = oneMeeting(folder);
        test::RawDatabase(store.databaseURL).run(schema);
        const Sqlite::Connection connection(store.databaseURL, Sqlite::Access::write, 0.05);
        EXPECT_EQ(refusal([&] { Sqlite::Statement(connection, statement).finish(); }),
                  "interrupted");
    }
}
}  // namespace ombrix
