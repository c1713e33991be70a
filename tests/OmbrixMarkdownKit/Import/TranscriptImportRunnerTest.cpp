#include "OmbrixMarkdownKit/Import/TranscriptImportRunner.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImportRunner {
namespace {

const std::string cues = "WEBVTT\n\n00:01.000 --> 00:02.000\n<v Ann>hi";
const std::string lifelogs =
    R"({"lifelogs":[{"title":"t","startTime":"2026-03-02","markdown":"**Ann:** x"},)"
    R"({"title":"u","startTime":"2026-03-03","markdown":"**Ann:** y"}]})";
const Outcome noFreeName = Unreadable{"no free name in the destination folder"};

Outcome imported(const test::TestFolder& folder, const std::string& name) {
    return importFile(folder.at(name), folder.at("out"), Calendar::gregorianUtc()).outcome;
}

TEST(TranscriptImportRunner, FiftyNamesOfStrangersLeaveNone) {
    const test::TestFolder folder;
    folder.write("x.vtt", cues);
    folder.write("logs.json", lifelogs);
    folder.write("out/x.md", "mine");
    folder.write("out/logs (2 of 2).md", "mine");
    for (int i = 2; i <= 50; ++i) {
        const std::string number = std::to_string(i);
        folder.write("out/x (imported " + number + ").md", "imported_from: ax.vtt\n");
        folder.write("out/logs (2 of 2) (" + number + ").md", "imported_from: logs.json");
    }
    const auto files = [&] {
        using Iterator = std::filesystem::directory_iterator;
        return std::distance(Iterator(folder.at("out")), Iterator());
    };
    EXPECT_EQ(imported(folder, "x.vtt"), noFreeName);
    EXPECT_EQ(imported(folder, "logs.json"), noFreeName);
    EXPECT_EQ(files(), 100) << "nor is one meeting of two, or a mark, left";
    EXPECT_EQ(destinationURL(folder.at("x.vtt"), folder.at("out")),
              folder.at("out/x (imported 50).md"));
    EXPECT_EQ(folder.read("out/x (imported 50).md"), "imported_from: ax.vtt\n");

    const std::string last = folder.at("out/x (imported 50).md");
    std::filesystem::remove(last);
    EXPECT_EQ(imported(folder, "x.vtt"),
              Outcome(Imported{last, TranscriptImport::Format::webVTT, 1}));
    EXPECT_EQ(imported(folder, "x.vtt"), Outcome(AlreadyImported{last}));
}

TEST(TranscriptImportRunner, AFolderThatTakesNoFileIsToldAndTheOthersGoOn) {
    const test::TestFolder folder;
    folder.write("in/x.vtt", cues);
    folder.write("in/y.json", lifelogs);
    folder.write("file", "");
    for (const std::string& place : {std::string("/proc"), folder.at("file/below")}) {
        const auto outcomes =
            importFolder(folder.at("in"), place, "Memory", Calendar::gregorianUtc());
        ASSERT_EQ(outcomes.size(), 2U);
        for (const auto& [source, outcome] : outcomes) {
            const auto* failure = std::get_if<Unreadable>(&outcome);
            ASSERT_TRUE(failure) << source;
            EXPECT_TRUE(Text::contains(failure->message, "Cannot ")) << failure->message;
        }
    }
}

TEST(TranscriptImportRunner, ACompletionThatFailsIsTriedAgain) {
    const test::TestFolder folder;
    const std::string source = folder.write("logs.json", lifelogs);
    ASSERT_TRUE(std::holds_alternative<ImportedMany>(imported(folder, "logs.json")));
    // As a run leaves it that was killed before the first meeting had its name.
    folder.write("out/.ombrix-import-" + Digest::sha256Hex(source).substr(0, 16), "");
    const std::string whole = folder.read("out/logs (1 of 2).md");
    folder.write("out/logs (1 of 2).md", "mine");
    for (int i = 2; i <= 50; ++i)
        folder.write("out/logs (1 of 2) (" + std::to_string(i) + ").md", "mine");
    EXPECT_EQ(imported(folder, "logs.json"), noFreeName);
    std::filesystem::remove(folder.at("out/logs (1 of 2) (50).md"));
    EXPECT_TRUE(std::holds_alternative<ImportedMany>(imported(folder, "logs.json")));
    EXPECT_EQ(folder.read("out/logs (1 of 2) (50).md"), whole);
}
}  // namespace
}  // namespace ombrix::TranscriptImportRunner
