#include "OmbrixCLI/AnswerFolderResolver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

TEST(AnswerFolderResolver, ConfigIsReadLeniently) {
    const test::TestFolder folder;
    const auto config = [&](const std::string& text) {
        folder.write("config.json", text);
        return AnswerFolderResolver::Config(folder.path());
    };
    const struct {
        const char* text;
        const char* path;
        const char* memory;
        std::optional<std::string> user;
    } cases[] = {
        {"", "/home/ann/Documents/Ombrix", "Memory", std::nullopt},
        {"[1]", "/home/ann/Documents/Ombrix", "Memory", std::nullopt},
        {R"({"output_folder_display_path": "/x",)", "/home/ann/Documents/Ombrix", "Memory",
         std::nullopt},
        {R"({"output_folder_display_path": 3, "engine_folder_name": null, "user_name": []})",
         "/home/ann/Documents/Ombrix", "Memory", std::nullopt},
        {R"({"output_folder_display_path": " \n", "engine_folder_name": " ", "user_name": " \t"})",
         "/home/ann/Documents/Ombrix", "Memory", ""},
        {R"({"output_folder_display_path": "~", "engine_folder_name": " Brain\n", "user_name": " Ann J "})",
         "/home/ann", "Brain", "Ann J"},
        {R"({"output_folder_display_path": "~/m x", "user_name": "Ann\n"})", "/home/ann/m x",
         "Memory", "Ann\n"},
        {R"({"output_folder_display_path": "~tom/x"})", "~tom/x", "Memory", std::nullopt},
    };
    for (const auto& [text, path, memory, user] : cases) {
        const auto read = config(text);
        EXPECT_EQ(AnswerFolderResolver::resolve(read, "/home/ann"), path) << text;
        EXPECT_EQ(AnswerFolderResolver::memoryFolderName(read), memory) << text;
        EXPECT_EQ(AnswerFolderResolver::userName(read), user) << text;
    }
    EXPECT_EQ(AnswerFolderResolver::userName(config(std::string(100'000, '['))), std::nullopt);
    std::filesystem::resize_file(folder.path() + "/config.json", std::uintmax_t{1} << 40U);
    EXPECT_EQ(AnswerFolderResolver::userName(AnswerFolderResolver::Config(folder.path())),
              std::nullopt);
    EXPECT_EQ(AnswerFolderResolver::userName(AnswerFolderResolver::Config("/nowhere/at all")),
              std::nullopt);
}

TEST(AnswerFolderResolver, OnlyTheSkillsFolderOfTheMemoryFolderHoldsNoTranscripts) {
    const test::TestFolder folder;
    for (const char* name : {"Brain/Skills/recap/SKILL.md", "Brain/people.md", "Memory/Skills/a.md",
                             "Skills/b.md", "Brain/Skills.md", "MyBrain/Skills/c.md"})
        folder.write(name, "---\ntitle: x\nsource: Ombrix\n---\n");
    EXPECT_THAT(
        AnswerFolderResolver::library(folder.path(), "Brain").paths(),
        testing::UnorderedElementsAre(folder.at("Brain/people.md"), folder.at("Memory/Skills/a.md"),
                                      folder.at("Skills/b.md"), folder.at("Brain/Skills.md"),
                                      folder.at("MyBrain/Skills/c.md")));
    EXPECT_EQ(AnswerFolderResolver::scan(folder.path(), "Brain").size(), 5U);
}
}  // namespace
}  // namespace ombrix
