// The store beside an application that writes.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {
constexpr int rounds = 500;

/// Writes until it is ended; 1 when anything fails.
[[noreturn]] void writeForever(const DictationStore& store) {
    try {
        for (int i = 0;; ++i) {
            store.insertMeeting(
                {.title = "written " + std::to_string(i),
                 .rawTranscript = std::string(static_cast<std::size_t>(i % 50) * 800, 'x')});
            store.updateMeetingTitle(2, "retitled " + std::to_string(i));
        }
    } catch (const std::exception& error) {
        ::write(STDERR_FILENO, error.what(), std::char_traits<char>::length(error.what()));
        ::_exit(1);
    }
}
}  // namespace

TEST(DictationStoreConcurrency, NothingFailsOrIsLostBesideABusyWriter) {
    const test::TestFolder folder;
    const DictationStore store(folder.at("ombrix.db"));
    store.migrateIfNeeded();
    store.insertMeeting({.title = "ours"});
    store.insertMeeting({.title = "theirs"});

    const pid_t writer = ::fork();
    if (writer == 0) writeForever(store);
    std::int64_t newest = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto list = store.recentMeetingSummaries({.limit = 10});
        ASSERT_GE(list.size(), 2U);
        ASSERT_GE(list.front().id, newest);
        newest = list.front().id;
        ASSERT_TRUE(store.meeting(newest));
        const std::string notes = "round " + std::to_string(round);
        store.updateMeetingNotes(1, notes);
        store.updateMeetingNotes(2, notes);
        ASSERT_EQ(store.meeting(1)->formattedNotes, notes);
        ASSERT_EQ(store.meeting(2)->formattedNotes, notes);
    }
    EXPECT_EQ(::waitpid(writer, nullptr, WNOHANG), 0) << "the writer failed";
    ::kill(writer, SIGKILL);  // in the middle of whatever it does
    ::waitpid(writer, nullptr, 0);

    EXPECT_GT(newest, 2) << "the writer never wrote";
    EXPECT_EQ(test::RawDatabase(store.databaseURL).rows("PRAGMA integrity_check"), "ok\n");
    EXPECT_EQ(store.meeting(1)->formattedNotes, "round 499");
    EXPECT_THAT(store.meeting(2)->title, testing::StartsWith("retitled "));
    const auto all = store.recentMeetings({.limit = -1});
    EXPECT_EQ(static_cast<std::int64_t>(all.size()), all.front().id) << "an insertion was lost";
}
}  // namespace ombrix
