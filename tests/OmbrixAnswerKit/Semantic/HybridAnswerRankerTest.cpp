#include "OmbrixAnswerKit/Semantic/HybridAnswerRanker.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

using RankedTranscriptSearch::AnswerHit;

IdentifiedDocument document(const std::string& id, const std::string& date = "2026-05-03") {
    return {id, {.title = "title of " + id, .date = date}};
}

AnswerHit hit(const std::string& id, double relevance) {
    return {
        .id = id, .document = document(id).document, .matchedKeywords = 1, .relevance = relevance};
}

/// The ids in order; one that only meaning found in brackets with its snippet.
std::string ranked(const std::vector<IdentifiedDocument>& scoped,
                   const std::vector<AnswerHit>& hits, const std::map<std::string, double>& scores,
                   double alpha = HybridAnswerRanker::defaultAlpha) {
    SemanticScores semantic;
    for (const auto& [id, score] : scores) semantic[id] = {score, "of " + id};
    std::string result;
    for (const auto& each : HybridAnswerRanker::rank(scoped, hits, semantic, alpha)) {
        EXPECT_EQ(each.document.title, "title of " + each.id);
        const bool isRescued = each.matchedKeywords == 0 && each.relevance == 0;
        result += isRescued ? "(" + each.match.snippets.at(0) + ") " : each.id + " ";
    }
    return result;
}

TEST(HybridAnswerRanker, MeaningReordersHitsAndRescuesAFew) {
    const std::vector<IdentifiedDocument> all = {document("a"), document("b"), document("c"),
                                                 document("d"), document("e"), document("f")};
    const auto a = hit("a", 1), b = hit("b", 2), c = hit("c", 3);
    // Words alone.
    EXPECT_EQ(ranked(all, {a, b, c}, {}), "c b a ");
    EXPECT_EQ(ranked(all, {b, a, hit("x", 9)}, {}), "b a ") << "x is not in scope";
    // Words c 1, b 0.5, a 0; with meaning a 0.3, b 0.35, c 0.7, and from 0.5 on a leads.
    EXPECT_EQ(ranked(all, {a, b, c}, {{"a", 0.9}, {"c", 0.1}}), "c b a ");
    EXPECT_EQ(ranked(all, {a, b, c}, {{"a", 0.9}, {"c", 0.1}}, 0.6), "a c b ");
    // One hit alone is the best of the words, however weak.
    EXPECT_EQ(ranked(all, {hit("a", 0.01)}, {{"b", 0.9}}), "a (of b) ");
    // The floors.
    EXPECT_EQ(ranked(all, {}, {{"b", 0.26}}), "");
    EXPECT_EQ(ranked(all, {}, {{"b", 0.27}}), "(of b) ");
    EXPECT_EQ(ranked(all, {}, {{"b", 1.0}, {"c", 0.75}, {"x", 0}}), "(of b) ") << "0.75 of the way";
    EXPECT_EQ(ranked(all, {}, {{"b", 1.0}, {"c", 0.8}, {"x", 0}}), "(of b) (of c) ");
    EXPECT_EQ(ranked(all, {}, {{"b", 0.9}, {"x", 1.0}}), "") << "x counts for the scale";
    // Three at most; a hit is not counted among them.
    EXPECT_EQ(ranked(all, {a}, {{"a", 1}, {"b", 1}, {"c", 1}, {"d", 1}, {"e", 1}, {"x", 0}}),
              "a (of b) (of c) (of d) ");
}

TEST(HybridAnswerRanker, TiesGoToTheLaterDateThenToTheId) {
    const std::vector<IdentifiedDocument> scoped = {document("b"), document("c", "2026-05-04"),
                                                    document("a")};
    const std::map<std::string, double> equal = {{"a", 0.5}, {"b", 0.5}, {"c", 0.5}};
    EXPECT_EQ(ranked(scoped, {}, equal), "(of c) (of a) (of b) ");
    // Of two hits with one id the first comes back, with the relevance of the last in the order.
    const std::vector<AnswerHit> twice = {hit("a", 1), hit("b", 2), hit("a", 3)};
    const auto order = HybridAnswerRanker::rank(scoped, twice, {});
    EXPECT_EQ(order, (std::vector<AnswerHit>{twice[0], twice[1]}));
}
}  // namespace
}  // namespace ombrix
