#include "OmbrixMarkdownKit/Library/LibrarySearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <random>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TestFolder.h"

using namespace ombrix;
using namespace ombrix::RankedTranscriptSearch;
using ombrix::test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class LibrarySearch : public testing::Test {
  protected:
    void write(const std::string& name, const std::string& text) {
        folder_.write("library/" + name, text);
    }
    void transcript(const std::string& name, const std::string& date, const std::string& body,
                    const std::string& startedAt = "") {
        write(name, "---\ntitle: " + name + "\ndate: " + date +
                        (startedAt.empty() ? "" : "\nstarted_at: " + startedAt) +
                        "\nsource: Ombrix\n---\n\n## Transcript\n\n**Ann:** " + body + "\n");
    }
    std::string root() const { return folder_.at("library"); }
    TranscriptLibrary library() const {
        return {.folder = root(), .excludes = [](std::string_view path) {
                    return path.find("/Memory/Skills/") != std::string_view::npos;
                }};
    }

    std::vector<std::string> scanned() const {
        std::vector<std::string> names;
        for (const auto& entry : library().scan())
            names.push_back(std::filesystem::path(entry.id).lexically_relative(root()).string());
        return names;
    }
    LibrarySearchResult search(const std::string& question, const AnswerScope& scope,
                               std::size_t limit = 5,
                               WithoutHits without = WithoutHits::showNothing) const {
        return searchLibrary(library(), keywords(question), scope, options(), limit, without);
    }
    static AnswerRankOptions options() {
        return {.useIDF = true,
                .tfSaturationK = 1.5,
                .recencyHalfLifeDays = 30,
                .participation = ParticipationBoost{{"Ann"}, 0.6, 1},
                .unmatchedMassLimit = 0.5,
                .now = std::chrono::sys_days(std::chrono::year(2026) / 3 / 31)};
    }

    TestFolder folder_;
};
}  // namespace

TEST_F(LibrarySearch, OnlyOurOwnReadableTranscriptsCount) {
    transcript("a.md", "2026-03-01", "alpha");
    transcript("sub/B.MD", "2026-03-02", "alpha");
    transcript("sub/line\nfeed.md", "2026-03-03", "alpha");
    transcript("Memory/people.md", "2026-03-04", "alpha");
    transcript("Memory/Skills/recap/SKILL.md", "2026-03-05", "alpha");
    transcript(".hidden/c.md", "2026-03-05", "alpha");
    transcript(".d.md", "2026-03-05", "alpha");
    transcript("e.txt", "2026-03-05", "alpha");
    write("not ours.md", "---\ntitle: x\n---\n\n## Transcript\n\n**Ann:** alpha\n");
    write("no frontmatter.md", "source: Ombrix\n\nalpha\n");
    write("byte order mark.md", "\xEF\xBB\xBF---\nsource: Ombrix\n---\n");
    write("invalid.md", "---\nsource: Ombrix\n---\n\xFF\n");
    write("empty.md", "");
    std::filesystem::create_directories(root() + "/folder.md");
    transcript("folder.md/inside.md", "2026-03-06", "alpha");
    ASSERT_EQ(mkfifo((root() + "/pipe.md").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", root() + "/device.md");
    std::filesystem::create_symlink("loop.md", root() + "/loop.md");
    std::filesystem::create_directory_symlink("..", root() + "/sub/up");
    std::filesystem::create_symlink("a.md", root() + "/link.md");
    EXPECT_THAT(scanned(), ElementsAre("folder.md/inside.md", "Memory/people.md",
                                       "sub/line\nfeed.md", "sub/B.MD", "link.md", "a.md"));
    EXPECT_EQ(search("alpha", AnswerScope::all).scannedCount, 6);
}

TEST_F(LibrarySearch, AFolderWithAZeroByteInItsNameIsNone) {
    transcript("a.md", "2026-03-01", "alpha");
    std::filesystem::create_symlink("a.md", root() + "/link.md");
    const std::string folder = root() + std::string("\0x", 2);
    EXPECT_FALSE(Files::isDirectory(folder));
    EXPECT_THROW(TranscriptLibrary{folder}.paths(), Files::Error);
}

TEST_F(LibrarySearch, TheNewestStartComesFirstAndEqualOnesByPath) {
    transcript("a.md", "2026-03-01", "x");
    transcript("b.md", "2026-03-01", "x");
    transcript("late.md", "2026-03-01", "x", "2026-03-01T09:00:00Z");
    transcript("undated.md", "", "x");
    EXPECT_THAT(scanned(), ElementsAre("late.md", "b.md", "a.md", "undated.md"));
}

TEST_F(LibrarySearch, ReadingFileByFileFindsWhatRankingTheScanFinds) {
    const std::vector<std::string> words = {"alpha", "beta",  "gamma",         "delta.",
                                            "we",    "shall", "(epsilon)",     "1:1",
                                            "zêta",  "\n\n",  "\n\n**Tom:** ", "\n\n## Notes\n\n"};
    std::mt19937 random(11);
    for (int i = 0; i < 60; ++i) {
        std::string body;
        for (std::size_t n = random() % 40; n > 0; --n)
            body += words[random() % words.size()] + " ";
        const std::string day =
            "2026-0" + std::to_string(1 + random() % 3) + "-1" + std::to_string(random() % 10);
        transcript(std::to_string(i) + ".md", random() % 10 == 0 ? "" : day, body);
    }
    write("long header.md", "---\n" + std::string(9000, 'x') +
                                "\ndate: 2026-02-15\nsource: Ombrix\n---\n\n## Notes\n\nalpha\n");
    write("crlf.md",
          "---\r\ndate: 2026-02-14\r\nsource: Ombrix\r\n---\r\n\r\n## Notes\r\n\r\nbeta\r\n");
    // Of CR CR LF the first CR stays, so that this heading is none.
    write("cr cr lf.md",
          "---\ndate: 2026-02-13\nsource: Ombrix\n---\n\n## Notes\r\r\n\nalpha beta gamma\n");

    AnswerScope speaker;
    speaker.speaker = SpeakerFilter{.userName = "Tom", .minTurns = 1};
    const AnswerScope scopes[] = {AnswerScope::all,
                                  {.dateFrom = "2026-02-01", .dateTo = "2026-02-28"},
                                  {.dateTo = "2026-02-15"},
                                  {.lastN = 7},
                                  {.dateTo = "2026-03-12", .lastN = 9},
                                  {.lastN = 0},
                                  {.folder = "library"},
                                  {.folder = "elsewhere"},
                                  speaker};
    const auto documents = library().scan();
    ASSERT_EQ(documents.size(), 63U);
    for (const auto& [id, document] : documents)
        EXPECT_TRUE(!id.ends_with("cr cr lf.md") || document.notes.empty());
    for (const char* question : {"alpha", "beta zeta", "1:1 alpha gamma", "\"alpha beta\" delta",
                                 "absent epsilon", "", "absent unheard"}) {
        for (const auto& scope : scopes) {
            const auto whole = answerRank(documents, question, scope, options());
            const auto streamed = search(question, scope, 1000);
            EXPECT_EQ(streamed.hits, whole.hits) << question;
            EXPECT_EQ(streamed.scannedCount, whole.scannedCount);
            EXPECT_EQ(streamed.totalMatched, whole.totalMatched());
        }
    }
}

TEST_F(LibrarySearch, AFileTooLargeToReadIsPassedOver) {
    transcript("a.md", "2026-03-01", "alpha");
    write("sparse.md", "");
    std::filesystem::resize_file(root() + "/sparse.md", std::uintmax_t{1} << 40U);
    EXPECT_THAT(scanned(), ElementsAre("a.md"));
    for (const AnswerScope& scope : {AnswerScope::all, AnswerScope{.lastN = 1}})
        EXPECT_EQ(search("alpha", scope).hits.size(), 1U);
}

TEST_F(LibrarySearch, TheLimitCutsWhatIsShownAndNotWhatIsCounted) {
    for (const char* name : {"a.md", "b.md", "c.md"}) transcript(name, "2026-03-01", "alpha");
    const auto result = search("alpha", AnswerScope::all, 2);
    EXPECT_EQ(result.hits.size(), 2U);
    EXPECT_EQ(result.totalMatched, 3);
}

TEST_F(LibrarySearch, WithoutHitsTheNewestInScopeCanStandIn) {
    transcript("a.md", "2026-03-01", "alpha");
    transcript("b.md", "2026-03-02", "alpha");
    transcript("c.md", "2026-03-03", "alpha");
    const AnswerScope scope{.dateTo = "2026-03-02"};
    EXPECT_THAT(search("beta", scope).hits, IsEmpty());
    const auto newest = search("beta", scope, 1, WithoutHits::showNewest);
    ASSERT_EQ(newest.hits.size(), 1U);
    EXPECT_EQ(newest.hits[0].document.title, "b.md");
    EXPECT_EQ(newest.hits[0].match, DocumentMatch{});
    EXPECT_EQ(newest.totalMatched, 0);
    EXPECT_EQ(newest.scannedCount, 2);
}
