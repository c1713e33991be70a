#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iostream>
#include <map>
#include <system_error>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

constexpr int meetingsAtFirst = 20;
constexpr int toolRuns = 500;
// The test's own meetings; the writer's titles go to the second half, our notes to all of them.
constexpr int firstRetitled = 11;

NewMeeting meeting(const std::string& title) {
    NewMeeting result;
    result.title = title;
    result.startTime = Instant(std::chrono::seconds(1'770'000'000));
    result.endTime = result.startTime + std::chrono::minutes(30);
    result.rawTranscript = std::string(4000, 'x') + " " + title;
    return result;
}

volatile std::sig_atomic_t writerMustStop = 0;

/// The application at work: inserts and renames as fast as it can until it is told to stop. What it
/// did stands in `report`, as the number of its rounds.
[[noreturn]] void writeUntilStopped(const std::string& database, const std::string& report) {
    std::signal(SIGTERM, [](int) { writerMustStop = 1; });
    try {
        const DictationStore store(database);
        int rounds = 0;
        while (writerMustStop == 0) {
            ++rounds;
            store.insertMeeting(meeting("written " + std::to_string(rounds)));
            store.updateMeetingTitle(firstRetitled + rounds % (meetingsAtFirst - firstRetitled + 1),
                                     "renamed " + std::to_string(rounds));
        }
        writeFile(report, std::to_string(rounds));
    } catch (const std::exception& error) {
        std::cerr << "the writer failed: " << error.what() << std::endl;
        ::_exit(1);
    }
    ::_exit(0);
}

/// The writer's process. A test that fails early must not leave it behind: it would fill the disk.
class Writer {
  public:
    Writer(const std::string& database, const std::string& report) : process_(::fork()) {
        if (process_ == 0) writeUntilStopped(database, report);
        if (process_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
    }
    ~Writer() { stop(); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// The status it ended with, as `waitpid` gives it.
    int stop() {
        if (process_ > 0) {
            ::kill(process_, SIGTERM);
            while (::waitpid(process_, &status_, 0) < 0 && errno == EINTR) {
            }
            process_ = -1;
        }
        return status_;
    }

  private:
    pid_t process_;
    int status_ = -1;
};

class StoreUnderFire : public testing::Test {
  protected:
    Outcome tool(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), OMBRIX_TOOL);
        arguments.insert(arguments.end(), {"--db-path", database_});
        return run(callIn(folder_.path(), std::move(arguments)));
    }

    std::string value(const std::string& query) const {
        return test::RawDatabase(database_).rows(query);
    }
    std::string notesOf(int id) const {
        return value("SELECT formatted_notes FROM meetings WHERE id = " + std::to_string(id));
    }

    TemporaryFolder folder_;
    std::string database_ = folder_.path() + "/ombrix.db";
};

TEST_F(StoreUnderFire, NothingFailsAndNothingIsLostBesideABusyWriter) {
    const DictationStore store(database_);
    store.migrateIfNeeded();
    for (int i = 1; i <= meetingsAtFirst; ++i) store.insertMeeting(meeting("first"));
    const std::string report = folder_.path() + "/writer";
    Writer writer(database_, report);

    std::map<int, std::string> notes;
    for (int i = 0; i < toolRuns; ++i) {
        const int id = 1 + i % meetingsAtFirst;
        Outcome outcome;
        if (i % 3 == 0) {
            outcome = tool({"meetings", "list", "--limit", "5"});
        } else if (i % 3 == 1) {
            outcome = tool({"meetings", "get", std::to_string(id)});
        } else {
            notes[id] = "notes of run " + std::to_string(i);
            const std::string file = folder_.path() + "/notes.md";
            writeFile(file, notes[id]);
            outcome = tool({"meetings", "update-notes", std::to_string(id), "--file", file});
            EXPECT_EQ(notesOf(id), notes[id]) << "right behind run " << i;
        }
        ASSERT_EQ(outcome.status, 0) << "run " << i << "\n" << outcome.output << outcome.errors;
    }
    ASSERT_EQ(writer.stop(), 0);

    const int rounds = std::stoi(fileText(report));
    EXPECT_GT(rounds, 0);
    EXPECT_EQ(value("SELECT count(*) FROM meetings"), std::to_string(meetingsAtFirst + rounds));
    EXPECT_EQ(value("SELECT count(*) FROM meetings WHERE title = 'renamed " +
                    std::to_string(rounds) + "'"),
              "1");
    for (const auto& [id, body] : notes) EXPECT_EQ(notesOf(id), body) << id;
    EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
}
}  // namespace
}  // namespace ombrix::ToolTests
