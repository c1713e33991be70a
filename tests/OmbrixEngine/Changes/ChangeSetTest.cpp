#include "OmbrixEngine/Changes/ChangeSet.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixEngine/Changes/UnifiedDiff.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// The text that a unified diff makes of `before`, which must be what it says it is.
std::string patched(std::string_view before, std::string_view diff) {
    const auto take = [](std::string_view& text) {
        const auto end = std::min(text.find('\n'), text.size() - 1) + 1;
        const auto line = text.substr(0, end);
        text.remove_prefix(end);
        return line;
    };
    std::string after;
    std::size_t lineNumber = 0;
    for (take(diff), take(diff); !diff.empty();) {
        auto line = take(diff);
        if (line.starts_with("@@ -")) {
            const auto range = line.substr(4, line.find(' ', 4) - 4);
            auto first = std::stoul(std::string(range));
            if (range.ends_with(",0")) ++first;
            for (; lineNumber + 1 < first; ++lineNumber) after += take(before);
            continue;
        }
        const bool isLast = diff.starts_with("\\ ");
        if (isLast) {
            take(diff);
            line.remove_suffix(1);
        }
        if (line[0] != '-') after += line.substr(1);
        if (line[0] == '+') continue;
        EXPECT_EQ(take(before), line.substr(1));
        ++lineNumber;
    }
    return after += before;
}

TEST(UnifiedDiff, ApplyingItGivesTheOtherText) {
    std::mt19937 random(7);
    const auto pick = [&](unsigned below) { return static_cast<unsigned>(random() % below); };
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::string> lines(pick(12));
        for (auto& line : lines) line = std::string(1, static_cast<char>('a' + pick(3)));
        auto others = lines;
        for (unsigned edits = pick(5); edits > 0; --edits) {
            const auto at = others.begin() + pick(static_cast<unsigned>(others.size()) + 1);
            if (at != others.end() && pick(2) == 0)
                others.erase(at);
            else
                others.insert(at, std::string(1, static_cast<char>('a' + pick(4))));
        }
        const std::string ends[] = {"", "\n"};
        const std::string before = Text::joined(lines, "\n") + ends[pick(2)];
        const std::string after = Text::joined(others, "\n") + ends[pick(2)];
        const std::string diff = UnifiedDiff::make("x", before, after);
        EXPECT_EQ(diff.empty(), before == after);
        EXPECT_EQ(diff.empty() ? after : patched(before, diff), after) << before << "\n--\n"
                                                                       << diff;
    }
}

TEST(UnifiedDiff, LooksLikeThatOfDiff) {
    EXPECT_EQ(UnifiedDiff::make("a b.md", "1\n2\n3\n4\n5\n6\n", "1\n2\n3\n4\n5\nsix"),
              "--- a/a b.md\n+++ b/a b.md\n@@ -3,4 +3,4 @@\n 3\n 4\n 5\n-6\n+six\n"
              "\\ No newline at end of file\n");
    EXPECT_EQ(UnifiedDiff::make("n", std::nullopt, "1\n"),
              "--- /dev/null\n+++ b/n\n@@ -0,0 +1 @@\n+1\n");
}

class ChangeSetTest : public testing::Test {
  protected:
    test::TestFolder disk_;
    std::string root_ =
        (std::filesystem::create_directory(disk_.at("library")), disk_.at("library"));
    TranscriptsFolder folder_{root_};
};

TEST_F(ChangeSetTest, WritesInOrderWhatDiffersAndReadsAgainWhatChanged) {
    disk_.write("library/same.md", "same");
    disk_.write("library/busy.md", "old");
    ChangeSet changes(folder_);
    changes.write("new/deep/a.json", "{}");
    changes.write("same.md", "same");
    int calls = 0;
    changes.rewrite("busy.md", [&](const auto& existing) -> std::optional<std::string> {
        // Somebody writes after it was read, the first time.
        if (++calls == 1) disk_.write("library/busy.md", "theirs");
        return existing.value_or("") + " and ours";
    });
    changes.rewrite("left alone.md", [](const auto&) { return std::nullopt; });
    changes.remove("not there.md");
    EXPECT_THAT(changes.apply(), testing::ElementsAre("new/deep/a.json", "busy.md"));
    EXPECT_EQ(disk_.read("library/busy.md"), "theirs and ours");
    EXPECT_FALSE(std::filesystem::exists(root_ + "/left alone.md"));
}

TEST_F(ChangeSetTest, NothingLeadsOutOfTheFolder) {
    namespace fs = std::filesystem;
    disk_.write("outside/secret.md", "secret");
    fs::create_symlink(disk_.at("outside"), root_ + "/Memory");
    fs::create_symlink(disk_.at("outside/new.md"), root_ + "/dangling.md");
    fs::create_directory(root_ + "/real");
    fs::create_symlink(root_ + "/real", root_ + "/inside");
    for (const char* path : {"Memory/a.md", "Memory/secret.md", "../outside/a.md", "dangling.md",
                             "/etc/hostname", "real/../../outside/secret.md", ".."}) {
        EXPECT_THROW((void)folder_.bytes(path), CLIError) << path;
        ChangeSet changes(folder_);
        changes.write(path, "ours");
        EXPECT_THROW(changes.apply(), CLIError) << path;
        EXPECT_THROW(changes.differences(), CLIError) << path;
    }
    EXPECT_EQ(disk_.read("outside/secret.md"), "secret");
    EXPECT_FALSE(fs::exists(disk_.at("outside/new.md")));
    ChangeSet changes(folder_);
    changes.write("inside/a.md", "ours");
    EXPECT_EQ(changes.apply().size(), 1U);
    EXPECT_EQ(disk_.read("library/real/a.md"), "ours");
    EXPECT_THROW((void)folder_.files("Memory", ".md"), CLIError);
}
}  // namespace
}  // namespace ombrix
