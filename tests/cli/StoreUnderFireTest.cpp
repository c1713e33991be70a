#include <gtest/gtest.h>

#include <map>
#include <thread>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/TestFolder.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

NewMeeting meeting(const std::string& title) {
    const Instant start(std::chrono::seconds(1'770'000'000));
    return {.title = title,
            .startTime = start,
            .endTime = start + std::chrono::minutes(30),
            .rawTranscript = std::string(4000, 'x') + " " + title};
}

// The application inserts and renames as fast as it can while the tool lists, reads and writes. A
// lock that is not waited for fails one of the two.
TEST(StoreUnderFire, NothingFailsAndNothingIsLostBesideABusyWriter) {
    constexpr int meetingsAtFirst = 20;
    const test::TestFolder folder;
    const DictationStore store(folder.at("ombrix.db"));
    store.migrateIfNeeded();
    for (int i = 0; i < meetingsAtFirst; ++i) store.insertMeeting(meeting("first"));
    int rounds = 0;
    std::jthread writer([&rounds, &store](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            const std::string round = std::to_string(++rounds);
            store.insertMeeting(meeting("written " + round));
            store.updateMeetingTitle(1 + rounds % meetingsAtFirst, "renamed " + round);
        }
    });

    const auto value = [&store](const std::string& query) {
        return test::RawDatabase(store.databaseURL).rows(query);
    };
    const auto notesOf = [&value](const std::string& id) {
        return value("SELECT formatted_notes FROM meetings WHERE id = " + id);
    };
    std::map<std::string, std::string> notes;
    for (int i = 0; i < 200; ++i) {
        const std::string id = std::to_string(1 + i % meetingsAtFirst);
        std::vector<std::string> arguments{OMBRIX_TOOL, "meetings", "list", "--limit", "5"};
        if (i % 3 == 1) arguments = {OMBRIX_TOOL, "meetings", "get", id};
        if (i % 3 == 2) {
            notes[id] = "notes of run " + std::to_string(i);
            arguments = {OMBRIX_TOOL, "meetings", "update-notes",
                         id,          "--file",   folder.write("notes.md", notes[id])};
        }
        arguments.insert(arguments.end(), {"--db-path", store.databaseURL});
        const Outcome outcome = run(callIn(folder.path(), arguments));
        ASSERT_EQ(outcome.status, 0) << "run " << i << "\n" << outcome.output << outcome.errors;
        if (i % 3 == 2) {
            EXPECT_EQ(notesOf(id), notes[id]) << "right after run " << i;
        }
    }
    writer.request_stop();
    writer.join();

    EXPECT_GT(rounds, 0);
    EXPECT_EQ(value("SELECT count(*) FROM meetings"), std::to_string(meetingsAtFirst + rounds));
    EXPECT_EQ(value("SELECT title FROM meetings WHERE id = " +
                    std::to_string(1 + rounds % meetingsAtFirst)),
              "renamed " + std::to_string(rounds));
    for (const auto& [id, body] : notes) EXPECT_EQ(notesOf(id), body) << id;
    EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
}
}  // namespace
}  // namespace ombrix::ToolTests
