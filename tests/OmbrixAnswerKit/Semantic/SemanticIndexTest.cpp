#include "OmbrixAnswerKit/Semantic/SemanticIndex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "OmbrixAnswerKit/Semantic/HashedWords.h"
#include "OmbrixPlatform/ProcessLimit.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using test::HashedWords;

std::string words(int count) {
    std::string text = "w";
    for (int i = 1; i < count; ++i) text += " w";
    return text;
}

TranscriptDocument spoken(const std::vector<std::string>& turns) {
    TranscriptDocument document{.title = "T", .participants = {"Ann", "Bo"}};
    for (const auto& text : turns) document.turns.push_back({"A", text});
    return document;
}

TEST(SemanticIndex, AChunkHoldsThreeTurnsOrEightyWords) {
    const struct {
        const char* why;
        std::vector<std::string> turns, chunks;
    } rows[] = {
        {"no turns", {}, {}},
        {"three turns", {"a", "b", "c", "d"}, {"a b c", "d"}},
        {"80 words", {words(79), "x", "y"}, {words(79) + " x", "y"}},
        {"81 words", {words(80), "x"}, {words(80), "x"}},
        {"a long turn is not cut", {"a", words(200), "b"}, {"a", words(200), "b"}},
        {"only blanks part words",
         {words(79), "a\tb\nc  ", "", "d"},
         {words(79) + " a\tb\nc   ", "d"}},
    };
    for (const auto& [why, turns, chunks] : rows) {
        std::vector<std::string> wanted = {"T. With Ann, Bo."};
        wanted.insert(wanted.end(), chunks.begin(), chunks.end());
        EXPECT_EQ(SemanticIndex::chunkTexts(spoken(turns)), wanted) << why;
    }
    EXPECT_EQ(SemanticIndex::chunkTexts({}), std::vector<std::string>{". With ."});
}

TEST(SemanticIndex, OnlyWhatIsEmbeddedIsEmbeddedAgain) {
    const HashedWords embedding(8);
    auto document = spoken({"one", "two?", "three"});
    SemanticIndex index;
    EXPECT_TRUE(index.update("d", document, embedding));
    EXPECT_FALSE(index.update("d", document, embedding));
    document.notes = "edited";
    EXPECT_FALSE(index.update("d", document, embedding));
    std::swap(document.turns[0], document.turns[2]);
    EXPECT_TRUE(index.update("d", document, embedding));
    EXPECT_EQ(index.chunkCount(), 1U) << "the chunk of the turns has no vector";

    EXPECT_TRUE(index.update("none", {.title = "?"}, embedding));
    EXPECT_FALSE(index.update("none", {.title = "?"}, embedding)) << "not tried again";
    index.prune({"none", "other"});
    EXPECT_EQ(index.entries.size(), 1U);
    EXPECT_EQ(SemanticIndex::contentHash({}), "12638164110811449565") << "of one line feed";
}

TEST(SemanticIndex, ADocumentScoresByItsClosestChunk) {
    const SemanticIndex index{
        .entries = {
            {"first of equals", {"", {{"x", {0, 1}}, {"near", {1, 1}}, {"also", {2, 2}}}}},
            {"opposite", {"", {{"away", {-1, 0}}}}},
            {"silent", {"", {{"other model", {1, 0, 0}}, {"zero", {0, 0}}, {"", {}}}}},
            {"no number", {"", {{"nan", {NAN, 1}}, {"least", {-1, 1}}}}},
        }};
    struct Fixed final : SentenceEmbedding {
        std::optional<std::vector<float>> answer;
        std::size_t dimension() const override { return 2; }
        std::optional<std::vector<float>> vector(std::string_view) const override { return answer; }
    } question;
    EXPECT_TRUE(index.scores("q", question).empty());
    question.answer = {{0, 0}};
    EXPECT_TRUE(index.scores("q", question).empty());
    question.answer = {{2, 0}};
    const auto scores = index.scores("q", question);
    EXPECT_EQ(scores.size(), 2U) << "a cosine of -1 is no score";
    EXPECT_NEAR(scores.at("first of equals").score, 0.70710678, 1e-6);
    EXPECT_EQ(scores.at("first of equals").bestChunk, "near");
    EXPECT_EQ(scores.at("no number").bestChunk, "least");
}

TEST(SemanticIndex, AFileIsReadWholeOrNotAtAll) {
    const test::TestFolder folder;
    SemanticIndex index;
    index.update("/t/Ä \"q\".md", spoken({"one two", "three"}), HashedWords(5));
    index.update("empty", {.title = "?"}, HashedWords(5));
    index.save(folder.at("made/for/it/index.json"));
    EXPECT_EQ(SemanticIndex::load(folder.at("made/for/it/index.json")), index);

    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    index.save("beside.json");
    std::filesystem::current_path(before);
    EXPECT_EQ(SemanticIndex::load(folder.at("beside.json")), index) << "a name without a folder";

    const std::string whole = folder.read("made/for/it/index.json");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(SemanticIndex::load(folder.write("cut", whole.substr(0, length)))) << length;
    EXPECT_FALSE(SemanticIndex::load(folder.at("missing")));
    EXPECT_FALSE(SemanticIndex::load(folder.path()));
    SemanticIndex().save(folder.at("cut/below a file"));
    {
        const test::ProcessLimit noDescriptors(RLIMIT_NOFILE, 0);
        EXPECT_EQ(SemanticIndex::load(folder.at("beside.json")), std::nullopt);
    }

    const auto withData = [&](const char* data) {
        return SemanticIndex::load(folder.write(
            "data", R"({"entries":{"d":{"contentHash":"1","chunks":[{"text":"t","data":)" +
                        std::string(data) + "}]}}}"));
    };
    EXPECT_EQ(withData(R"("AACAPwAAAMA=")")->entries.at("d").chunks.at(0).vector,
              (std::vector<float>{1, -2}));
    EXPECT_EQ(withData(R"("")")->chunkCount(), 1U);
    for (const auto* damaged : {"\"AACAP\"", "\"AACAPw=\"", "\"AACAPw=\\n\"", "\"AACA\"",
                                "\"AAC!Pw==\"", "[1,2]", "null"})
        EXPECT_FALSE(withData(damaged)) << damaged;
}
}  // namespace
}  // namespace ombrix
