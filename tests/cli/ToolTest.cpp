#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TestFolder.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Tool : public testing::Test {
  protected:
    Call callOf(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), OMBRIX_TOOL);
        arguments.insert(arguments.end(), {"--support-dir", folder_.path()});
        return callIn(folder_.path(), std::move(arguments));
    }

    /// One meeting, id 1, with the notes "before".
    void makeDatabase() const {
        DictationStore(database_).migrateIfNeeded();
        test::RawDatabase(database_).run(
            "INSERT INTO meetings (title, start_time, formatted_notes) "
            "VALUES ('Pricing', '2026-03-02T09:00:00Z', 'before')");
    }

    std::string value(const std::string& query) const {
        return test::RawDatabase(database_).rows(query);
    }

    std::string notes() const { return value("SELECT formatted_notes FROM meetings WHERE id = 1"); }

    test::TestFolder folder_;
    std::string database_ = folder_.at("ombrix.db");
};

// ---- standard output --------------------------------------------------------------------------

TEST_F(Tool, AnOutputThatTakesNothingIsAClearFailure) {
    makeDatabase();
    for (const char* output : {Call::closed, "/dev/full"}) {
        for (const auto& arguments : std::vector<std::vector<std::string>>{
                 {"spec"}, {"meetings", "get", "1"}, {"meetings", "get", "2"}, {"--help"}}) {
            Call call = callOf(arguments);
            call.outputTo = output;
            const Outcome outcome = run(call);
            EXPECT_EQ(outcome.status, 1) << output << " " << arguments.front();
            EXPECT_THAT(outcome.errors, HasSubstr("Cannot write to standard output")) << output;
        }
    }
    EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(notes(), "before");
}

TEST_F(Tool, AReaderThatHasEnoughEndsItSilently) {
    Call call = callOf({"spec"});
    call.outputTo = Call::abandoned;
    const Outcome outcome = run(call);
    EXPECT_EQ(outcome.status, 1000 + SIGPIPE);
    EXPECT_THAT(outcome.errors, IsEmpty());
}

TEST_F(Tool, ASignalLeavesNoRequestFile) {
    for (const char* signal : {"INT", "TERM"}) {
        Call call = callOf({"debug-web-eval", "document.title", "--timeout", "60"});
        // The script's file is there while the tool waits for a reply.
        call.arguments.insert(call.arguments.begin(),
                              {"/usr/bin/timeout", "--signal", signal, "1"});
        EXPECT_EQ(run(call).status, 124) << signal;
        const std::filesystem::directory_iterator left(folder_.at("state"));
        EXPECT_EQ(left, std::filesystem::directory_iterator()) << left->path();
    }
}

// ---- notes ------------------------------------------------------------------------------------

TEST_F(Tool, FiftyMegabytesOfDamagedNotesAreRepairedAndStoredWhole) {
    makeDatabase();
    const std::string head = std::string("\xEF\xBB\xBF first\r\n\0 behind a zero \xFF\xFE\n", 30);
    const std::string input =
        folder_.write("notes", head + std::string(50 << 20, 'n') + "\xE2\x82");
    Call call = callOf({"meetings", "update-notes", "1", "--stdin"});
    call.input = input;
    const Outcome outcome = run(call);
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_GT(outcome.output.size(), std::size_t{50} << 20);
    // Two bad bytes are a replacement of three bytes each, and so is the cut sequence at the end.
    EXPECT_EQ(value("SELECT length(b), hex(substr(b, 1, 14)), hex(substr(b, -4)) FROM"
                    " (SELECT CAST(formatted_notes AS BLOB) AS b FROM meetings)"),
              std::to_string(30 + 4 + (50 << 20) + 3) + "|EFBBBF2066697273740D0A002062|6EEFBFBD");

    call = callOf({"meetings", "update-notes", "1", "--file", input});
    const Outcome refused = run(call);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, HasSubstr("Cannot read \"" + input + "\": not valid UTF-8"));
    EXPECT_THAT(refused.output, IsEmpty());
}

TEST_F(Tool, NotesAreNotReadForAMeetingThatIsNotThere) {
    Call call = callOf({"meetings", "update-notes", "7", "--stdin"});
    call.input = "/dev/zero";  // never ends
    call.timeoutSeconds = 20;
    EXPECT_EQ(run(call).status, 5);
    makeDatabase();
    const Outcome outcome = run(call);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.output, HasSubstr("No meeting exists with id 7."));
}

TEST_F(Tool, NotesAreTakenFromARegularFileOnlyAndTheRefusalSaysSo) {
    makeDatabase();
    const std::string pipe = folder_.at("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& file : {pipe, std::string("/dev/zero"), std::string("/dev/stdin")}) {
        Call call = callOf({"meetings", "update-notes", "1", "--file", file});
        call.timeoutSeconds = 20;  // the pipe has no writer
        const Outcome outcome = run(call);
        EXPECT_EQ(outcome.status, 1) << file;
        EXPECT_THAT(outcome.errors, HasSubstr("\"" + file + "\": not a regular file")) << file;
        EXPECT_THAT(outcome.output, IsEmpty());
    }
    EXPECT_EQ(notes(), "before");
}

TEST_F(Tool, AClosedStandardInputIsNoEmptyBody) {
    makeDatabase();
    Call call = callOf({"meetings", "update-notes", "1", "--stdin"});
    call.input = Call::closed;
    const Outcome outcome = run(call);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("Cannot read standard input"));
    EXPECT_EQ(notes(), "before");
}

// ---- damage -----------------------------------------------------------------------------------

TEST_F(Tool, ADamagedDatabaseIsReportedAndLeftAsItIs) {
    makeDatabase();
    test::RawDatabase(database_).run(
        "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < 60) "
        "INSERT INTO meetings (title, start_time, raw_transcript) "
        "SELECT 'Meeting ' || i, '2026-03-02T09:00:00Z', hex(zeroblob(3000)) FROM n");
    const std::string whole = Files::bytes(database_);
    std::mt19937 random(7);
    std::vector<std::string> damaged;
    for (const std::size_t size :
         {std::size_t{2}, std::size_t{99}, std::size_t{4096}, whole.size() / 2, whole.size() - 1}) {
        damaged.push_back(whole.substr(0, size));
    }
    for (int i = 0; i < 20; ++i) {
        damaged.push_back(whole);
        for (int flips = 0; flips < 200; ++flips)
            damaged.back()[random() % whole.size()] = static_cast<char>(random());
    }
    std::string noise(20'000, ' ');
    for (char& c : noise) c = static_cast<char>(random());
    damaged.push_back(noise);
    for (std::size_t i = 0; i < damaged.size(); ++i) {
        for (const char* suffix : {"-wal", "-shm"}) std::filesystem::remove(database_ + suffix);
        folder_.write("ombrix.db", damaged[i]);
        for (const auto& arguments :
             std::vector<std::vector<std::string>>{{"meetings", "list", "--limit", "100"},
                                                   {"meetings", "get", "30"},
                                                   {"dictations", "list"}}) {
            const Outcome outcome = run(callOf(arguments));
            // Damage is only seen where the command reads; a record may be gone.
            EXPECT_THAT(outcome.status, testing::AnyOf(0, 1, 3)) << i << outcome.errors;
            EXPECT_EQ(outcome.status == 1, !outcome.errors.empty()) << i << outcome.errors;
            EXPECT_EQ(outcome.status == 1, outcome.output.empty()) << i;
        }
        EXPECT_TRUE(Files::bytes(database_) == damaged[i]) << i;
    }
}

TEST_F(Tool, APipeBesideTheDatabaseIsRefused) {
    makeDatabase();
    for (const std::string suffix : {"-journal", "-wal", "-shm"}) {
        std::filesystem::remove(database_ + suffix);
        ASSERT_EQ(::mkfifo((database_ + suffix).c_str(), 0644), 0);
        Call call = callOf({"meetings", "list"});
        call.timeoutSeconds = 10;
        const Outcome outcome = run(call);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.errors, HasSubstr(suffix + " is not a regular file"));
        std::filesystem::remove(database_ + suffix);
    }
}

TEST_F(Tool, OneInstructionOfAViewCannotTakeAllMemory) {
    makeDatabase();
    test::RawDatabase(database_).run(
        "ALTER TABLE meetings RENAME TO stored; CREATE VIEW meetings AS SELECT id, title, "
        "start_time, duration_seconds, raw_transcript, hex(zeroblob(400000000)) AS "
        "formatted_notes, word_count, folder_id, calendar_event_id, mic_audio_path, "
        "system_audio_path FROM stored");
    const Outcome outcome = run(callOf({"meetings", "get", "1"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("too big"));
}

TEST_F(Tool, AFileSizeLimitIsAnOrdinaryFailure) {
    makeDatabase();
    folder_.write("notes", std::string(200'000, 'n'));
    const std::string tool = OMBRIX_TOOL;
    const Outcome outcome =
        run(callIn(folder_.path(), {"/bin/sh", "-c",
                                    "ulimit -f 100; exec " + tool +
                                        " meetings update-notes 1 --file notes --support-dir ."}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("Error: "));
    EXPECT_EQ(notes(), "before");
    for (const char* suffix : {"-wal", "-shm", "-journal"})
        EXPECT_FALSE(Files::exists(database_ + suffix)) << suffix;
}

TEST_F(Tool, ARelativePathInARemovedFolderIsAnError) {
    const std::string tool = OMBRIX_TOOL;
    for (const std::string option : {"--support-dir rel/state", "--db-path rel/ombrix.db"}) {
        const Outcome outcome =
            run(callIn(folder_.path(), {"/bin/sh", "-c",
                                        "mkdir gone && cd gone && rmdir ../gone && exec " + tool +
                                            " meetings list " + option}));
        EXPECT_EQ(outcome.status, 1) << option;
        EXPECT_THAT(outcome.errors, HasSubstr("Cannot find the working directory")) << option;
        EXPECT_FALSE(Files::exists("/rel")) << option;
    }
}

TEST_F(Tool, AMessageCannotSteerATerminal) {
    const Outcome outcome = run(callOf({"meetings", "get", "\x1b[31mred"}));
    EXPECT_EQ(outcome.status, 64);
    EXPECT_THAT(outcome.errors, HasSubstr("\\x1B[31mred"));
    EXPECT_THAT(outcome.errors, testing::Not(HasSubstr("\x1b")));
}

// ---- the line to the application --------------------------------------------------------------

TEST_F(Tool, ABusThatNeverSpeaksHoldsNobodyUp) {
    const std::string path = folder_.at("bus");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size());
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(listener, 8), 0);

    for (const std::string& variable :
         {"DBUS_SESSION_BUS_ADDRESS=unix:path=" + path, "XDG_RUNTIME_DIR=" + folder_.path()}) {
        Call call = callOf({"debug-route", "recent"});
        call.environment.push_back(variable);
        const auto start = std::chrono::steady_clock::now();
        const Outcome outcome = run(call);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
    }
    ::close(listener);
}

TEST_F(Tool, AReplyOfAnySizeKeepsTheDeadline) {
    // Whoever answers under every name: a sparse file stands where any reply may be written.
    Call call = callOf({"debug-web-eval", "1", "--timeout", "1"});
    call.arguments = {"/bin/sh", "-c",
                      "mkdir -p state; (for i in 1 2 3 4 5 6 7 8; do sleep 0.1; for f in "
                      "state/web-eval-*.js; do truncate -s 1T \"${f%.js}.json\"; done; done) & "
                      "exec " OMBRIX_TOOL " debug-web-eval 1 --timeout 1 --support-dir ."};
    const auto start = std::chrono::steady_clock::now();
    const Outcome outcome = run(call);
    EXPECT_EQ(outcome.status, 7) << outcome.errors;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(Tool, WhatNobodyAnswersLeavesOtherRequestsAlone) {
    folder_.write("state/state-OTHER.json", "{}");
    folder_.write("state/web-eval-OTHER.js", "1");
    folder_.write("state/web-eval-OTHER.json", R"({"ok": true, "json": "1"})");
    for (const auto& arguments :
         {std::vector<std::string>{"app-state", "--timeout", "0.2"},
          std::vector<std::string>{"debug-web-eval", "document.title", "--timeout", "0.2"}}) {
        const auto start = std::chrono::steady_clock::now();
        const Outcome outcome = run(callOf(arguments));
        EXPECT_EQ(outcome.status, 7) << outcome.errors;
        EXPECT_THAT(outcome.output, HasSubstr("request within 0.2s."));
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
    }
    int files = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator(folder_.at("state")))
        ++files;
    EXPECT_EQ(files, 3);
}
}  // namespace
}  // namespace ombrix::ToolTests
