// Every command that writes, with each of its calls to the file system failing in turn: what was
// there before stays whole or is replaced whole, nothing is left over, and a failure is told.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

const char* const kinds[] = {"28" /* ENOSPC */, "5" /* EIO */,         "24" /* EMFILE */,
                             "4" /* EINTR */,   "95" /* EOPNOTSUPP */, "short"};
static_assert(ENOSPC == 28 && EIO == 5 && EMFILE == 24 && EINTR == 4 && EOPNOTSUPP == 95);

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
/// what happened and which call failed. `setting` is one more variable. Returns how many calls
/// failed.
int faultEach(const test::TestFolder& folder, const std::vector<std::string>& arguments,
              const std::function<void()>& prepare,
              const std::function<void(const Outcome&, const std::string& fault)>& check,
              const std::string& setting = "LANG=C.UTF-8") {
    const std::string log = folder.at("fault.log");
    const std::string place = folder.at("place");
    int faults = 0;
    for (const char* const kind : kinds) {
        for (int at = 1;; ++at) {
            prepare();
            std::filesystem::remove(log);
            Call call = faulty(folder, arguments, place, at, kind);
            call.environment.push_back(setting);
            const Outcome outcome = run(call);
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
    // In memory where there is such a folder: some thousand commits would keep the disk busy.
    const test::Variable temporary("TMPDIR", Files::isDirectory("/dev/shm") ? "/dev/shm" : "/tmp");
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

/// The files below a folder that import or tidy may write, with their bytes.
std::map<std::string, std::string> filesBelow(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder)] = Files::bytes(entry.path());
    return files;
}

TEST(InjectedFaults, AnImportWritesWholeTranscriptsAndTheNextRunTheRest) {
    const test::TestFolder folder;
    const std::string out = folder.at("place/out");
    folder.write("place/in/a.vtt", "WEBVTT\n\n00:01.000 --> 00:02.000\n<v Ann>one");
    folder.write("place/in/b.vtt", "WEBVTT\n\n00:01.000 --> 00:02.000\n<v Ann>two");
    folder.write("place/in/logs.json",
                 R"({"lifelogs":[{"title":"t","startTime":"2026-03-02","markdown":"**Ann:** x"},
                     {"title":"u","startTime":"2026-03-03","markdown":"**Ann:** y"}]})");
    const std::vector<std::string> command{OMBRIX_TOOL, "import", folder.at("place/in"), "--folder",
                                           out};
    const auto prepare = [&] {
        std::filesystem::remove_all(out);
        folder.write("place/out/b.md", "a stranger's");
    };
    prepare();
    ASSERT_EQ(run(callIn(folder.path(), command)).status, 0);
    const auto whole = filesBelow(out);
    ASSERT_EQ(whole.size(), 5U);
    const auto check = [&](const Outcome& outcome, const std::string& fault) {
        auto left = filesBelow(out);
        const bool hasMark = std::erase_if(left, [](const auto& file) {
                                 return file.first.starts_with(".ombrix-import-");
                             }) > 0;
        for (const auto& [name, bytes] : left) {
            ASSERT_TRUE(whole.contains(name)) << fault << name;
            EXPECT_EQ(bytes, whole.at(name)) << fault << name;
        }
        EXPECT_EQ(hasMark, left.contains("logs (1 of 2).md") != left.contains("logs (2 of 2).md"))
            << fault;
        const bool isTold = outcome.status == 1 ? outcome.errors.starts_with("Error: ")
                                                : Text::contains(outcome.output, "could not read");
        EXPECT_TRUE(isTold || left == whole) << fault << outcome.output << outcome.errors;
        EXPECT_EQ(run(callIn(folder.path(), command)).status, 0) << fault;
        EXPECT_EQ(filesBelow(out), whole) << fault;
    };
    EXPECT_GT(faultEach(folder, command, prepare, check), 50);
}

TEST(InjectedFaults, ATwinIsWhereItWasOrInTheTrash) {
    const test::TestFolder folder;
    const std::string twin = "source: Ombrix\n";
    const auto prepare = [&] {
        std::filesystem::remove_all(folder.at("place"));
        std::filesystem::create_directories(folder.at("place/data"));
        folder.write("place/in/a.md", "");
        folder.write("place/in/a.txt", twin);
    };
    const auto check = [&](const Outcome& outcome, const std::string& fault) {
        const auto left = filesBelow(folder.at("place"));
        const bool isInTrash = left.contains("data/Trash/files/a.txt");
        EXPECT_NE(left.contains("in/a.txt"), isInTrash) << fault;
        EXPECT_EQ(left.at(isInTrash ? "data/Trash/files/a.txt" : "in/a.txt"), twin) << fault;
        EXPECT_EQ(Text::contains(outcome.output, "\"trashed\" : \"1\""), isInTrash) << fault;
        EXPECT_EQ(outcome.status == 1, outcome.errors.starts_with("Error: ")) << fault;
    };
    EXPECT_GT(
        faultEach(folder, {OMBRIX_TOOL, "tidy-txt", "--folder", folder.at("place/in"), "--trash"},
                  prepare, check, "XDG_DATA_HOME=" + folder.at("place/data")),
        5);
}
}  // namespace
}  // namespace ombrix::ToolTests
