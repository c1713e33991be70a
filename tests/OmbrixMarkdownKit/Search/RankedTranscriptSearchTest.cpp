#include "OmbrixMarkdownKit/Search/RankedTranscriptSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "OmbrixMarkdownKit/Search/Excerpt.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using namespace RankedTranscriptSearch;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Instant now = std::chrono::sys_days(std::chrono::year(2026) / 3 / 31);

IdentifiedDocument meeting(std::string id, std::vector<TranscriptDocument::Turn> turns,
                           std::string date = "2026-03-31") {
    return {std::move(id), {.date = std::move(date), .turns = std::move(turns)}};
}

AnswerRankOptions plainOptions() { return {.useIDF = false, .tfSaturationK = 1.5, .now = now}; }

std::vector<std::string> ids(const std::vector<AnswerHit>& hits) {
    std::vector<std::string> result;
    for (const auto& hit : hits) result.push_back(hit.id);
    return result;
}

DocumentEvidence evidenceOf(const TranscriptDocument& document,
                            const std::vector<std::string>& keywords) {
    const KeywordMatcher matcher(keywords);
    return EvidenceCollector(matcher, std::nullopt).collect(document);
}

double tf(const TranscriptDocument& document, const std::string& keyword) {
    const auto evidence = evidenceOf(document, {keyword});
    return evidence.terms.empty() ? 0 : evidence.terms.front().tf;
}

TEST(RankedTranscriptSearch, AFieldWeighsByItsKind) {
    TranscriptDocument document;
    document.meetingNotes = "budget budget";
    EXPECT_EQ(tf(document, "budget"), 0) << "meeting notes are never searched";
    document.title = "Budget";
    EXPECT_EQ(tf(document, "budget"), 3);
    document.participants = {"Ann", "Tom Budget"};
    EXPECT_EQ(tf(document, "budget"), 5);
    document.turns = {{"Budget", "no more"}, {"Ann", "The budgets stand."}};
    EXPECT_EQ(tf(document, "budget"), 6) << "a speaker's name is no text";
    document.notes = document.summary = document.actionItems = document.keyMoments =
        "budget, budget";
    EXPECT_EQ(tf(document, "budget"), 14);
}

TEST(RankedTranscriptSearch, RelevanceIsRarityTimesSaturatedFrequency) {
    // Three documents; "alpha" in all of them (idf 1), "beta" in one (idf ln 2 + 1).
    const std::vector<IdentifiedDocument> documents = {
        meeting("once", {{"A", "alpha"}}),
        meeting("thrice", {{"A", "alpha alpha"}, {"B", "alpha"}}),
        meeting("both", {{"A", "alpha beta"}}),
    };
    AnswerRankOptions options{.useIDF = true, .tfSaturationK = 1.5, .now = now};
    auto hits = answerRank(documents, "alpha beta", options);
    ASSERT_THAT(ids(hits), ElementsAre("both", "thrice", "once"));
    EXPECT_NEAR(hits[0].relevance, 1 + 1.693147, 1e-6);
    EXPECT_NEAR(hits[1].relevance, 2.5 * 3 / 4.5, 1e-9);
    EXPECT_NEAR(hits[2].relevance, 1, 1e-9);
    EXPECT_EQ(hits[0].matchedKeywords, 2);

    options.tfSaturationK = -1;  // counts as 0: how often no longer matters
    hits = answerRank(documents, "alpha", options);
    EXPECT_EQ(hits[0].relevance, hits[2].relevance);
}

TEST(RankedTranscriptSearch, AQuestionWhoseTellingWordsAreAbsentHasNoHits) {
    const std::vector<IdentifiedDocument> two = {meeting("a", {{"A", "alpha"}}),
                                                 meeting("b", {{"A", "alpha"}})};
    // Of two documents: an absent word has idf ln 3 + 1 = 2.10, one in both has 1: a share of 0.68.
    AnswerRankOptions options{.useIDF = true, .unmatchedMassLimit = 0.5, .now = now};
    EXPECT_THAT(answerRank(two, "alpha absent", options), IsEmpty());
    options.unmatchedMassLimit = 0.7;
    EXPECT_EQ(answerRank(two, "alpha absent", options).size(), 2U);
    options.unmatchedMassLimit = 0.5;
    EXPECT_EQ(answerRank(std::span(two).first(1), "alpha absent", options).size(), 1U)
        << "one document is never refused";
    options.useIDF = false;
    EXPECT_EQ(answerRank(two, "alpha absent", options).size(), 2U);
    EXPECT_THAT(answerRank(two, "what about the", options), IsEmpty()) << "no keywords, no hits";
}

TEST(RankedTranscriptSearch, TiesGoToTheLaterDayAndThenToTheInput) {
    const std::vector<IdentifiedDocument> documents = {
        meeting("old", {{"A", "alpha"}}, "2026-01-01"),
        meeting("new, first", {{"A", "alpha"}}, "2026-02-01"),
        meeting("new, second", {{"A", "alpha"}}, "2026-02-01"),
        meeting("undated", {{"A", "alpha"}}, ""),
        meeting("other", {{"A", "beta"}}),
    };
    EXPECT_THAT(ids(answerRank(documents, "alpha", plainOptions())),
                ElementsAre("new, first", "new, second", "old", "undated"));
}

TEST(RankedTranscriptSearch, AgeHalvesAndTheUsersVoiceLifts) {
    const std::string speech = "we should talk about alpha today";
    const std::vector<IdentifiedDocument> documents = {
        meeting("today", {{"Ann", "alpha"}}, "2026-03-31"),
        meeting("a month ago", {{"Ann", "alpha"}}, "2026-03-01"),
        meeting("mine", {{"Me", speech}, {"Ann", "yes"}, {"me ", "and what comes then, Ann?"}},
                "2026-03-01"),
        meeting("one turn of mine", {{"Me", speech}}, "2026-03-01"),
    };
    auto options = plainOptions();
    options.recencyHalfLifeDays = 30;
    options.participation = {.userAliases = {"Me"}, .boost = 0.6, .minTurns = 2};
    const auto hits = answerRank(documents, "alpha", options);
    ASSERT_THAT(ids(hits), ElementsAre("today", "mine", "a month ago", "one turn of mine"));
    EXPECT_NEAR(hits[0].relevance, 1, 1e-9);
    EXPECT_NEAR(hits[1].relevance, 0.8, 1e-9);
    EXPECT_NEAR(hits[2].relevance, 0.5, 1e-9);
}

TEST(RankedTranscriptSearch, RecencyIsOneForDaysThatAreNone) {
    const struct {
        const char* why;
        const char* date;
        std::optional<double> halfLife;
        double factor;
    } cases[] = {
        {"half life zero", "2020-01-01", 0, 1},
        {"two half lives", "2026-01-30", 30, 0.25},
        {"a time after the day is cut off", "2026-03-01T10:00:00Z", 30, 0.5},
        {"future", "2027-01-01", 30, 1},
        {"empty", "", 30, 1},
        {"two parts", "2026-03", 30, 1},
        {"four parts", "2026-3-1-1", 30, 1},
        {"empty parts do not count", "2026--03-1", 30, 0.5},
        {"no number", "2026-03-xx", 30, 1},
        {"lenient: month 14 of 2025 is February 2026", "2025-14-29", 30, 0.5},
    };
    for (const auto& [why, date, halfLife, factor] : cases)
        EXPECT_DOUBLE_EQ(recencyFactor(date, now, halfLife), factor) << why;
}

TEST(RankedTranscriptSearch, ATurnGivesOneSnippetAndBodiesComeLast) {
    auto entry = meeting("m", {{"Ann", "alpha and beta and gamma"}, {"Tom", "beta again"}});
    entry.document.notes = "gamma in the notes";
    entry.document.summary = "delta and gamma";
    const auto hits = answerRank(std::span(&entry, 1), "gamma alpha beta delta", plainOptions());
    ASSERT_EQ(hits.size(), 1U);
    // gamma takes Ann's turn; alpha has no other and no body; beta moves on to Tom's; delta waits.
    EXPECT_THAT(hits[0].match.snippets, ElementsAre("**Ann:** alpha and beta and gamma",
                                                    "**Tom:** beta again", "delta and gamma"));
    EXPECT_EQ(hits[0].match.matchingTurns, 2);
    EXPECT_EQ(hits[0].match.score, 2);

    entry.document.title = "Alpha";
    entry.document.participants = {"Beta", "Gamma"};
    EXPECT_EQ(answerRank(std::span(&entry, 1), "alpha beta gamma", plainOptions())[0].match.score,
              2 + 3 + 2);
}

TEST(RankedTranscriptSearch, AnExcerptShowsContextAndSaysWhereItWasCut) {
    const std::string left(100, 'l'), right(100, 'r');
    const std::string text = left + " hit " + right;
    EXPECT_EQ(excerpt(text, ByteRange{101, 104}, 3), "…ll hit rr…");
    EXPECT_EQ(excerpt(text, ByteRange{101, 104}, 1), "…hit…") << "blanks at the cuts are trimmed";
    EXPECT_EQ(excerpt("a hit", ByteRange{2, 5}, 2), "a hit")
        << "the edge is reached, nothing is cut";
    EXPECT_EQ(excerpt("ab hit", ByteRange{3, 6}, 2), "…b hit");
    EXPECT_EQ(excerpt("ae\u0301o\u0308 HÍT ae\u0301o\u0308", "hit", 2), "…o\u0308 HÍT a…")
        << "characters count, not bytes, and case and marks are ignored";
    EXPECT_EQ(excerpt("nothing here", "hit", 4), "nothing ");
}

TEST(RankedTranscriptSearch, TheSubstringMatcherWantsEveryTerm) {
    TranscriptDocument document;
    document.title = "Quarterly plan";
    document.participants = {"Zoë Núñez"};
    document.turns = {{"Ann", "The PRICE list"}, {"Tom", "price and cost"}};
    document.keyMoments = "cost cutting";
    EXPECT_EQ(match(document, {"price", "absent"}), std::nullopt);
    EXPECT_EQ(match(document, {}), DocumentMatch{});
    const auto found = match(document, {"cost", "pricé", "zoe", "quarter"});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->matchingTurns, 2);
    EXPECT_EQ(found->score, 2 + 3 + 2);
    EXPECT_THAT(found->snippets, ElementsAre("**Tom:** price and cost", "**Ann:** The PRICE list"));
    // A second term of Tom's turn waits for the body fields.
    EXPECT_THAT(match(document, {"and", "cost"})->snippets,
                ElementsAre("**Tom:** price and cost", "cost cutting"));

    TranscriptDocument titled = document;
    titled.title = "Prices";
    const std::vector<IdentifiedDocument> documents = {
        {"first", document}, {"none", {}}, {"second", document}, {"in the title", titled}};
    std::vector<std::string> ranked;
    for (const auto& hit : rank(documents, "price")) ranked.push_back(hit.id);
    EXPECT_THAT(ranked, ElementsAre("in the title", "first", "second"))
        << "by score; input order decides a tie";
    EXPECT_THAT(rank(documents, std::nullopt), IsEmpty());
    EXPECT_THAT(rank(documents, " "), IsEmpty());
}

TEST(RankedTranscriptSearch, TheScopeIsAppliedBeforeRanking) {
    const std::vector<IdentifiedDocument> documents = {meeting("a", {{"A", "alpha"}}, "2026-03-01"),
                                                       meeting("b", {{"A", "alpha"}}, "2026-01-01"),
                                                       meeting("c", {{"A", "beta"}}, "2026-03-02")};
    const auto result =
        answerRank(documents, "alpha", AnswerScope{.dateFrom = "2026-02-01"}, plainOptions());
    EXPECT_THAT(ids(result.hits), ElementsAre("a"));
    EXPECT_EQ(result.scannedCount, 2);
    EXPECT_EQ(result.totalMatched(), 1);
}

TEST(RankedTranscriptSearch, AFileReadInViewsGivesTheEvidenceOfItsDocument) {
    const auto pieces = Text::split(
        "pricing|Prices|pri.cing|the|1:1|one on "
        "one|one-on-ones|budget's|café|cafe\u0301|CAFÉS|don’t"
        "|_price|@price|x|\n\n|\n|\n\n\n| |**Ann:** |**:** |**Tom:**|<!-- price -->"
        "|\n<!-- /ombrix:ai -->\n|\n\n## Notes\n\n|\n\n## Transcript\n\n|\n\n## Summary\n\n"
        "|## Action Items\n|\n## Key "
        "Moments\n\n|ﬁnal|\u00AD|\u0600price|\U0001F600|decisions|stories",
        "|");
    const KeywordMatcher many(
        {"pric", "1o1", "budget", "cafe", "the pric", "1o1 the", "final", "decid", "story", "ric"});
    const KeywordMatcher words({"pric", "budget", "cafe", "x"});
    std::mt19937 random(7);
    for (int round = 0; round < 6000; ++round) {
        const KeywordMatcher& matcher = round % 2 == 0 ? many : words;
        std::string text =
            "---\ntitle: Price 1:1\nparticipants:\n  - Ann Café\n---\n\n## Transcript\n\n";
        if (round % 5 != 0) text += "**Ann:** ";
        const std::size_t count = random() % 60;
        for (std::size_t i = 0; i < count; ++i) {
            text += pieces[random() % pieces.size()];
            if (random() % 3 != 0) text += ' ';
        }
        const auto document = MarkdownTranscriptParser::parse(text);
        const auto frame = TranscriptSections::frame(text);
        ASSERT_TRUE(document && frame);
        TranscriptDocument header;
        TranscriptHeader::read(frame->header, header);
        const SpeakerQuestion speaker{SpeakerIdentity(std::vector<std::string>{"Ann"}), 1};
        EvidenceCollector collector(matcher, speaker);
        const auto seen = collector.collect(header, TranscriptSections::Sections(frame->body));
        ASSERT_EQ(seen, collector.collect(*document)) << text;
        auto counted = seen;
        forgetPlaces(counted);
        ASSERT_EQ(collector.count(header, TranscriptSections::Sections(frame->body)), counted)
            << text;

        // And both find what a plain count over plain tokens finds.
        std::vector<double> counts(matcher.keywords().size(), 0);
        const auto add = [&](std::string_view field, double weight) {
            const auto tokens = QueryTokenizer::tokens(field);
            for (std::size_t k = 0; k < counts.size(); ++k) {
                counts[k] += weight * static_cast<double>(
                                          QueryTokenizer::count(matcher.keywords()[k], tokens));
            }
        };
        add(document->title, 3);
        for (const auto& name : document->participants) add(name, 2);
        for (const auto field : bodyFields(*document)) add(field, 1);
        for (const auto& turn : document->turns) add(turn.text, 1);
        std::vector<double> found(counts.size(), 0);
        for (const auto& term : seen.terms) found[term.keyword] = term.tf;
        ASSERT_EQ(found, counts) << text;
    }
}

TEST(KeywordMatcher, ManyKeywordsAreCountedAsFewAre) {
    // More keywords than there are beginnings to look for; phrases that begin and end alike.
    std::vector<std::string> keywords;
    for (const char* a : {"aa", "bb", "cc"}) {
        for (const char* b : {"aa", "bb", "cc"}) {
            keywords.push_back(std::string(a) + " " + b);
            for (const char* c : {"aa", "bb", "cc"})
                keywords.push_back(std::string(a) + " " + b + " " + c);
        }
    }
    keywords.insert(keywords.end(), {"aa", "bb", "aa aa aa aa aa"});
    const KeywordMatcher matcher(keywords);
    KeywordMatcher::Counter count(matcher);
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        std::string text;
        for (std::size_t i = random() % 40; i > 0; --i)
            text += std::vector<std::string>{"aa ", "bb ", "cc ", "dd "}[random() % 4];
        const std::size_t cut = text.empty() ? 0 : (random() % (text.size() / 3)) * 3;
        count.add(std::string_view(text).substr(0, cut));
        count.add(std::string_view(text).substr(cut));
        std::vector<std::size_t> found(keywords.size(), 0);
        for (const auto& [keyword, times] : count.finish()) found[keyword] = times;
        const auto tokens = QueryTokenizer::tokens(text);
        for (std::size_t k = 0; k < keywords.size(); ++k) {
            ASSERT_EQ(found[k], QueryTokenizer::count(matcher.keywords()[k], tokens))
                << keywords[k] << " in " << text;
        }
    }
}

TEST(KeywordMatcher, WordsCountedAtTheirPlacesAreTheWordsOfTheText) {
    test::RandomText random(42);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random.any();
        const auto tokens = QueryTokenizer::tokens(text);
        std::vector<std::string> keywords{"1o1", "s", "planning", "1"};
        keywords.resize(random.below(5));
        for (std::size_t i = 1 + random.below(3); i > 0 && !tokens.empty(); --i)
            keywords.push_back(tokens[random.below(tokens.size())]);
        if (round % 4 == 0 && tokens.size() > 1) keywords.push_back(tokens[0] + " " + tokens[1]);
        std::ranges::sort(keywords);
        keywords.erase(std::ranges::unique(keywords).begin(), keywords.end());
        const KeywordMatcher matcher(keywords);
        KeywordMatcher::Counter counter(matcher);
        counter.addWhole(text);
        std::vector<std::size_t> found(keywords.size(), 0);
        for (const auto& [keyword, times] : counter.finish()) found[keyword] = times;
        for (std::size_t k = 0; k < keywords.size(); ++k) {
            ASSERT_EQ(found[k], QueryTokenizer::count(matcher.keywords()[k], tokens))
                << test::visible(keywords[k]) << " in " << test::visible(text);
        }
    }
}
}  // namespace
}  // namespace ombrix
