#include "OmbrixCore/DictationStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Instant at(std::string_view text) { return *parseIsoInstant(text); }

/// A migrated database in a folder that the store had to make.
class DictationStoreTest : public testing::Test {
  protected:
    DictationStoreTest() : store(folder.at("new/folder/ombrix.db")) { store.migrateIfNeeded(); }

    void addMeeting(const std::string& title, const std::string& transcript = {},
                    const std::string& notes = {}) const {
        store.insertMeeting({.title = title,
                             .startTime = at("2026-03-02T09:00:00Z"),
                             .endTime = at("2026-03-02T09:30:00Z"),
                             .rawTranscript = transcript,
                             .formattedNotes = notes});
    }
    void addDictation(const std::string& text, const std::string& end, double seconds = 60) const {
        store.insert({.text = text,
                      .durationSeconds = seconds,
                      .appContext = "Mail",
                      .startedAt = at(end) - std::chrono::seconds(60),
                      .endedAt = at(end)});
    }
    std::vector<std::string> titles(const MeetingQuery& query) const {
        std::vector<std::string> found;
        for (const auto& meeting : store.recentMeetings(query)) found.push_back(meeting.title);
        return found;
    }

    test::RawDatabase sql() const { return test::RawDatabase(store.databaseURL); }

    test::TestFolder folder;
    DictationStore store;
};
}  // namespace

TEST_F(DictationStoreTest, AMeetingReadsBackAsItWasGiven) {
    const NewMeeting given{.title = "Pricing — “Q3”",
                           .calendarEventID = "event-1",
                           .startTime = at("2026-03-02T09:00:00Z"),
                           .endTime = at("2026-03-02T09:30:00Z"),
                           .rawTranscript = std::string("Ilse: we decided\0 today", 23),
                           .formattedNotes = "\uFEFF\n# Notes\n",
                           .micAudioPath = "",
                           .systemAudioPath = "/a/b.m4a"};
    store.insertMeeting(given);
    store.insertMeeting({.title = "Backwards",
                         .startTime = at("2026-03-02T10:00:00Z"),
                         .endTime = at("2026-03-02T09:00:00Z")});
    const MeetingRecord expected{.id = 1,
                                 .title = given.title,
                                 .startTime = "2026-03-02T09:00:00Z",
                                 .durationSeconds = 1800,
                                 .rawTranscript = given.rawTranscript,
                                 .formattedNotes = given.formattedNotes,
                                 .wordCount = 4,
                                 .calendarEventID = "event-1",
                                 .micAudioPath = "",
                                 .systemAudioPath = "/a/b.m4a"};
    EXPECT_EQ(store.meeting(1), expected);
    const MeetingRecord backwards{
        .id = 2, .title = "Backwards", .startTime = "2026-03-02T10:00:00Z"};
    EXPECT_EQ(store.meeting(2), backwards);
    EXPECT_THAT(store.recentMeetings({}), ElementsAre(backwards, expected));
}

TEST_F(DictationStoreTest, ALimitBelowZeroIsNoneAndOneOutside32BitsIsRefused) {
    addMeeting("one");
    addMeeting("two");
    EXPECT_THAT(titles({.limit = 0}), IsEmpty());
    EXPECT_THAT(titles({.limit = 1}), ElementsAre("two"));
    EXPECT_THAT(titles({.limit = -1}), ElementsAre("two", "one"));
    for (const std::int64_t limit : {INT32_MAX + 1L, 1L << 32, INT32_MIN - 1L}) {
        EXPECT_THROW(store.recentMeetings({.limit = limit}), std::out_of_range) << limit;
        EXPECT_THROW(store.recentDictations({.limit = limit}), std::out_of_range) << limit;
        EXPECT_THROW(store.recentDictations({.offset = limit}), std::out_of_range) << limit;
    }
}

TEST_F(DictationStoreTest, ASearchIsLiteralInTitleTranscriptAndNotes) {
    addMeeting("now 50%_off");
    addMeeting("50 and off", "said C:\\temp\\x", "no");
    addMeeting("other", "", "The PLAN for Käthe");
    sql().run("INSERT INTO meetings (title, start_time) VALUES ('bare plan', 'x')");
    EXPECT_THAT(titles({.search = "50%_off"}), ElementsAre("now 50%_off"));
    EXPECT_THAT(titles({.search = "C:\\temp\\"}), ElementsAre("50 and off"));
    EXPECT_THAT(titles({.search = "  plan\n"}), ElementsAre("bare plan", "other"));
    EXPECT_THAT(titles({.search = "KäTHE"}), ElementsAre("other"));
    EXPECT_THAT(titles({.search = " \n"}), testing::SizeIs(4));
    EXPECT_THAT(titles({.search = "'; DROP TABLE meetings; --"}), IsEmpty());
}

TEST_F(DictationStoreTest, UpdatesChangeWhatTheyNameAndNothingElse) {
    addMeeting("one", "Ilse: hello", "old");
    addMeeting("two", "Tom: hello", "old");
    MeetingRecord expected = *store.meeting(1);
    const MeetingRecord untouched = *store.meeting(2);

    store.updateMeetingNotes(1, std::string_view("\0new\uFEFF", 7));
    expected.formattedNotes = std::string("\0new\uFEFF", 7);
    EXPECT_EQ(store.meeting(1), expected);
    store.updateMeetingTitle(1, "uno");
    expected.title = "uno";
    EXPECT_EQ(store.meeting(1), expected);
    store.updateMeeting(1, "eins", "neu");
    expected.title = "eins";
    expected.formattedNotes = "neu";
    EXPECT_EQ(store.meeting(1), expected);

    EXPECT_NO_THROW(store.updateMeetingNotes(99, "x"));
    EXPECT_NO_THROW(store.moveMeeting(99, 1));
    EXPECT_EQ(store.meeting(2), untouched);
    EXPECT_EQ(sql().rows("SELECT formatted_notes IS NULL, source FROM meetings WHERE id = 1"),
              "0|meeting");
}

TEST_F(DictationStoreTest, FoldersHoldMeetingsAndLetThemGo) {
    const std::int64_t sales = store.createFolder("Sales");
    const std::int64_t team = store.createFolder("Team");
    sql().run("UPDATE meeting_folders SET sort_order = 5, created_at = NULL WHERE name = 'Sales'");
    store.renameFolder(team, "The team");
    const auto folders = store.listFolders();
    ASSERT_EQ(folders.size(), 2U);
    EXPECT_EQ(folders[0].name, "The team");
    EXPECT_THAT(folders[0].createdAt, testing::MatchesRegex("20..-..-.. ..:..:.."));
    EXPECT_EQ(folders[1], (MeetingFolder{.id = sales, .name = "Sales", .createdAt = ""}));

    addMeeting("one");
    addMeeting("two");
    store.moveMeeting(1, sales);
    store.moveMeeting(2, team);
    EXPECT_THAT(titles({.folderID = sales}), ElementsAre("one"));
    EXPECT_THAT(titles({.folderID = sales, .search = "two"}), IsEmpty());
    store.deleteFolder(sales);
    EXPECT_EQ(store.meeting(1)->folderID, std::nullopt);
    EXPECT_EQ(store.meeting(2)->folderID, team);
    store.moveMeeting(2, std::nullopt);
    EXPECT_EQ(store.meeting(2)->folderID, std::nullopt);
}

TEST_F(DictationStoreTest, DictationsAreListedByIdAndBoundedByTimestamp) {
    addDictation("one two\u2003three", "2026-03-01T10:00:00Z");
    addDictation("b", "2026-03-02T10:00:00Z");
    addDictation("c", "2026-03-03T10:00:00Z");
    const DictationRecord first{.id = 1,
                                .timestamp = "2026-03-01T10:00:00Z",
                                .durationSeconds = 60,
                                .rawText = "one two\u2003three",
                                .appContext = "Mail",
                                .wordCount = 3};
    EXPECT_EQ(store.dictation(1), first);
    EXPECT_EQ(sql().rows("SELECT started_at, ended_at, source FROM dictations WHERE id = 1"),
              "2026-03-01T09:59:00Z|2026-03-01T10:00:00Z|dictation");

    const auto texts = [&](const DictationQuery& query) {
        std::vector<std::string> found;
        for (const auto& each : store.recentDictations(query)) found.push_back(each.rawText);
        return found;
    };
    EXPECT_THAT(texts({.limit = 1, .offset = 1}), ElementsAre("b"));
    EXPECT_THAT(texts({.fromDate = "2026-03-02T10:00:00Z"}), ElementsAre("c", "b"));
    EXPECT_THAT(texts({.toDate = "2026-03-02T10:00:00Z"}), ElementsAre("b", first.rawText));
    EXPECT_THAT(texts({.fromDate = "2026-03-02", .toDate = "2026-03-03"}), ElementsAre("b"));

    store.deleteDictation(2);
    store.deleteDictation(99);
    EXPECT_THAT(texts({}), ElementsAre("c", first.rawText));
    store.clearDictations();
    EXPECT_THAT(texts({}), IsEmpty());
}

TEST_F(DictationStoreTest, StatisticsCountWordsTimeAndDays) {
    const Instant wednesday = at("2026-03-04T12:00:00Z");
    const Calendar utc = Calendar::gregorianUtc();
    EXPECT_EQ(store.dictationStats(wednesday, utc), DictationStats{});
    EXPECT_EQ(store.meetingStats(), MeetingStats{});

    addDictation("one two three", "2026-03-02T23:59:59Z", 30);
    addDictation("four", "2026-03-02T00:00:00Z", 30);
    addDictation("five six", "2026-03-03T10:00:00Z", 0);
    sql().run("INSERT INTO dictations (timestamp, word_count) VALUES ('yesterday', 0)");
    EXPECT_EQ(store.dictationStats(wednesday, utc), (DictationStats{.totalWords = 6,
                                                                    .totalSessions = 4,
                                                                    .averageWordsPerSession = 1.5,
                                                                    .averageWPM = 6,
                                                                    .currentStreakDays = 2,
                                                                    .longestStreakDays = 2}));

    addMeeting("one", "a b c d e f");
    addMeeting("two", "g h i");
    EXPECT_EQ(store.meetingStats(),
              (MeetingStats{.totalWords = 9, .totalMeetings = 2, .averageWPM = 0.15}));
    store.clearMeetings();
    EXPECT_EQ(store.meetingStats(), MeetingStats{});
}

TEST_F(DictationStoreTest, MigratingTwiceOrFromAnOldDatabaseGivesTheSameSchema) {
    const std::string schema =
        "SELECT m.name, p.name, p.type, p.\"notnull\", p.dflt_value, p.pk FROM sqlite_master m, "
        "pragma_table_info(m.name) p WHERE m.type = 'table' ORDER BY m.name, p.cid";
    const std::string expected = sql().rows(schema);
    addMeeting("kept");
    store.migrateIfNeeded();
    EXPECT_EQ(sql().rows(schema), expected);

    sql().run(
        "DROP INDEX idx_meetings_folder; ALTER TABLE meetings DROP COLUMN folder_id;"
        "DROP TABLE meeting_folders");
    store.migrateIfNeeded();
    EXPECT_EQ(sql().rows(schema), expected);
    EXPECT_EQ(sql().rows("SELECT name FROM sqlite_master WHERE type = 'index' ORDER BY name"),
              "idx_dictations_timestamp\nidx_meetings_folder\nidx_meetings_start_time");
    EXPECT_THAT(titles({}), ElementsAre("kept"));
}

TEST(StorageModels, NotesStateIgnoresWhiteSpaceAroundAndCase) {
    using enum MeetingNotesState;
    const std::pair<const char*, MeetingNotesState> cases[] = {
        {"", missing},
        {"\u00A0\t\r\n\u2028", missing},
        {"\u200B", structuredNotes},  // a zero width space is no white space
        {"# Title\n## Raw Transcript\nIlse: hi", rawTranscriptFallback},
        {"### RAW transcripts", rawTranscriptFallback},
        {"##  raw transcript", structuredNotes},
        {"# raw transcript", structuredNotes},
    };
    for (const auto& [notes, expected] : cases) EXPECT_EQ(notesStateOf(notes), expected) << notes;
}

TEST(StorageModels, StatisticsEncodeUnderTheirFieldNames) {
    EXPECT_EQ(Json::write(encode(DictationStats{.totalWords = 3, .averageWPM = 1.5}),
                          Json::Style::canonical),
              R"({"averageWPM":1.5,"averageWordsPerSession":0,"currentStreakDays":0,)"
              R"("longestStreakDays":0,"totalSessions":0,"totalWords":3})");
}
}  // namespace ombrix
