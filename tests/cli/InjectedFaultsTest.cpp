// Every command that writes, with each of its calls to the file system failing in turn: what was
// there before stays whole or is replaced whole, nothing is left over, and a failure is told.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TestFolder.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

const char* const kinds[] = {"28" /* ENOSPC */, "5" /* EIO */, "24" /* EMFILE */, "4" /* EINTR */,
                             "short"};
static_assert(ENOSPC == 28 && EIO == 5 && EMFILE == 24 && EINTR == 4);

/// A call of which the one with number `at`, among those on files below `place`, fails.
Call faulty(const test::TestFolder& folder, const std::vector<std::string>& arguments,
            const std::string& place, int at, const std::string& kind) {
    Call call = callIn(folder.path(), arguments);
    for (const std::string& variable :
         {std::string("LD_PRELOAD=" OMBRIX_FAULTY_FILES), "FAULT_FOLDER=" + place,
          "FAULT_AT=" + std::to_string(at), "FAULT_KIND=" + kind,
          "FAULT_LOG=" + folder.at("fault.log")}) {
        call.environment.push_back(variable);
    }
    return call;
}

/// Runs a command with its first call failing, then its second, until it has fewer. `check` is told
/// what happened and which call failed. Returns how many calls failed.
int faultEach(const test::TestFolder& folder, const std::vector<std::string>& arguments,
              const std::function<void()>& prepare,
              const std::function<void(const Outcome&, const std::string& fault)>& check) {
    const std::string log = folder.at("fault.log");
    const std::string place = folder.at("place");
    int faults = 0;
    for (const char* const kind : kinds) {
        for (int at = 1;; ++at) {
            prepare();
            std::filesystem::remove(log);
            const Outcome outcome = run(faulty(folder, arguments, place, at, kind));
            if (!Files::exists(log)) break;
            ++faults;
            check(outcome, Files::bytes(log) + ", call " + std::to_string(at) + ", " + kind);
        }
    }
    return faults;
}

std::vector<std::string> leftOver(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.path().filename().string().starts_with(".ombrix-")) names.push_back(entry.path());
    return names;
}

TEST(InjectedFaults, NotesAreReplacedWholeOrNotAtAll) {
    const test::TestFolder folder;
    const std::string database = folder.at("place/ombrix.db");
    const std::string after(20'000, 'n');
    folder.write("place/notes.md", after);
    const auto prepare = [&] {
        for (const char* suffix : {"", "-wal", "-shm", "-journal"})
            std::filesystem::remove(database + suffix);
        DictationStore(database).migrateIfNeeded();
        test::RawDatabase(database).run(
            "INSERT INTO meetings (title, start_time, formatted_notes) "
            "VALUES ('Pricing', '2026-03-02T09:00:00Z', 'before')");
    };
    const auto check = [&](const Outcome& outcome, const std::string& fault) {
        EXPECT_THAT(outcome.status, testing::AnyOf(0, 1)) << fault << outcome.errors;
        EXPECT_EQ(outcome.status == 1, outcome.errors.starts_with("Error: ")) << fault;
        test::RawDatabase raw(database);
        const std::string notes = raw.rows("SELECT formatted_notes FROM meetings WHERE id = 1");
        EXPECT_THAT(notes, testing::AnyOf("before", after)) << fault;
        EXPECT_TRUE(outcome.status == 1 || notes == after) << fault;
        EXPECT_EQ(raw.rows("PRAGMA integrity_check"), "ok") << fault;
    };
    EXPECT_GT(faultEach(folder,
                        {OMBRIX_TOOL, "meetings", "update-notes", "1", "--file",
                         folder.at("place/notes.md"), "--support-dir", folder.at("place")},
                        prepare, check),
              50);
}

TEST(InjectedFaults, ARequestLeavesNoFile) {
    const test::TestFolder folder;
    std::filesystem::create_directories(folder.at("place"));
    const auto prepare = [&] { std::filesystem::remove_all(folder.at("place/state")); };
    const auto check = [&](const Outcome& outcome, const std::string& fault) {
        EXPECT_THAT(outcome.status, testing::AnyOf(1, 7)) << fault << outcome.errors;
        EXPECT_EQ(outcome.status == 1, !outcome.errors.empty()) << fault;
        EXPECT_THAT(leftOver(folder.at("place")), testing::IsEmpty()) << fault;
        if (Files::exists(folder.at("place/state"))) {
            EXPECT_TRUE(std::filesystem::is_empty(folder.at("place/state"))) << fault;
        }
    };
    EXPECT_GT(faultEach(folder,
                        {OMBRIX_TOOL, "debug-web-eval", "document.title", "--timeout", "0.01",
                         "--support-dir", folder.at("place")},
                        prepare, check),
              10);
}

TEST(InjectedFaults, ARefusedPressOpensNothing) {
    const test::TestFolder folder;
    folder.write("place/library/a.md", "---\nsource: Ombrix\n---\n");
    folder.write("place/config.json",
                 "{\"output_folder_display_path\":\"" + folder.at("place/library") + "\"}");
    const auto press = [&](const std::string& application, const std::string& unreadable) {
        return run(faulty(folder,
                          {OMBRIX_TOOL, "key", "simulate", "--app", application, "--support-dir",
                           folder.at("place")},
                          folder.at(unreadable), 1, std::to_string(EACCES)));
    };
    const Outcome allowed = press("com.apple.TextEdit", "place/library");
    EXPECT_EQ(allowed.status, 1);
    EXPECT_THAT(allowed.errors, testing::HasSubstr("Permission denied"));
    EXPECT_TRUE(std::filesystem::remove(folder.at("fault.log")));

    const Outcome refused = press("com.1Password.8", "place");
    EXPECT_EQ(refused.status, 0) << refused.errors;
    EXPECT_THAT(refused.output, testing::HasSubstr("passwordManager"));
    EXPECT_FALSE(Files::exists(folder.at("fault.log"))) << "it opened a file";
}
}  // namespace
}  // namespace ombrix::ToolTests
