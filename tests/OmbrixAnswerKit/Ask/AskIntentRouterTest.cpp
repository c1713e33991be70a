#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "OmbrixAnswerKit/Ask/AnswerShapePlanner.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using AskIntentRouter::Classification;
using AskIntentRouter::classify;
using AskIntentRouter::route;

Classification found(AskIntent intent, std::string_view cue) { return {intent, cue}; }
const Classification none{};

TEST(AskIntentRouter, TheFirstCueOfTheTableInWholeWordsDecides) {
    const struct {
        const char* question;
        Classification expected;
    } cases[] = {
        {"how is Tomas?", none},
        // The order of the table, not of the question.
        {"what we decided: brainstorm", found(AskIntent::openEnded, "brainstorm")},
        {"Do I owe Ann a report?", found(AskIntent::myCommitments, "i owe")},
        {"recap the decision", found(AskIntent::decisions, "decision")},
        // Case and apostrophes.
        {"I said I’d send it", found(AskIntent::myCommitments, "i said i'd")},
        {"I said I´d send it", none},
        {"who is undecided", none},
        {"the decision-maker", found(AskIntent::decisions, "decision")},
        {"undecided, then decided", found(AskIntent::decisions, "decided")},
        // A blank and a hyphen match only themselves.
        {"my to-do list", found(AskIntent::plan, "to-do")},
        {"what to do", none},
        {"my  commitments", none},
    };
    for (const auto& [question, expected] : cases)
        EXPECT_EQ(classify(question), expected) << question;
}

/// The plain way: one expression for each cue, over the whole question.
Classification plainly(const std::string& question) {
    static const auto expressions = [] {
        std::vector<std::pair<Classification, std::unique_ptr<Regex>>> all;
        for (const auto& row : AskIntentRouter::table()) {
            for (const auto cue : row.cues) {
                all.emplace_back(Classification{row.intent, cue},
                                 std::make_unique<Regex>("\\b" + Regex::escaped(cue) + "\\b"));
            }
        }
        return all;
    }();
    const std::string text = Text::withStraightApostrophes(Text::lowercased(question));
    for (const auto& [meaning, regex] : expressions)
        if (regex->found(text)) return meaning;
    return none;
}

TEST(AskIntentRouter, OnePassFindsWhatTheExpressionsFindOneByOne) {
    std::vector<std::string> pieces = {
        " ",      " ",       "-",      "_",        "'",      "’",      "a",      "7",      "\n",
        "é",      "e\u0301", "\u0301", "\u200B",   "\u200C", "\u200D", "\u00AD", "\uFEFF", "\u0903",
        "日",     "٣",       "①",      "²",        "‿",      "—",      "“",      "ß",      "İ",
        "\u212A", "😀",       "\xFF",   "\xE2\x80", "I",      "S"};
    for (const auto& row : AskIntentRouter::table()) {
        for (const auto cue : row.cues) {
            // The latest rows are drawn most, since an earlier cue hides a later one.
            for (int n = 0; n < (row.intent == AskIntent::openEnded ? 1 : 3); ++n)
                pieces.emplace_back(cue);
        }
    }

    std::mt19937 random(20260302);
    int hits = 0;
    for (int round = 0; round < 4000; ++round) {
        std::string question;
        for (auto left = 1 + random() % 5; left > 0; --left) {
            const auto pool = random() % 3 == 0 ? pieces.size() : 33;
            question += pieces[random() % pool];
        }
        const auto expected = plainly(question);
        ASSERT_EQ(classify(question), expected) << question;
        hits += expected.cue ? 1 : 0;
    }
    EXPECT_GT(hits, 500);  // otherwise the texts test little
    EXPECT_LT(hits, 3500);
}

TEST(AskIntentRouter, AQuestionOfAMegabyteIsOnePass) {
    constexpr std::size_t size = 1'000'000;
    const auto repeated = [](std::string_view piece) {
        std::string text;
        while (text.size() < size) text += piece;
        return text;
    };
    for (const auto* piece :
         {"a ", "i owe_ ", "\u0301", "recap\u0301", "\u0301recap", "日本 ", "\xFF"}) {
        EXPECT_EQ(classify(repeated(piece)), none) << piece;
    }
    EXPECT_EQ(classify(repeated("words ") + "recap"), found(AskIntent::catchUp, "recap"));
}

TEST(AskIntentRouter, EachIntentHasItsPolicy) {
    using enum AskIntent;
    using enum AnswerShape;
    using enum AnswerTier;
    const struct {
        const char* question;
        AskPlan plan;
    } cases[] = {
        {"", {freeform, 0, false, prose, standard, 30, "freeform — no intent cue; window 0 d"}},
        {"What are my priorities?",
         {plan, 14, true, commitments, standard, 7,
          "plan — matched \"priorities\"; window 14 d; only where you spoke"}},
        {"list my commitments",
         {myCommitments, 14, true, commitments, standard, 7,
          "myCommitments — matched \"my commitments\"; window 14 d; only where you spoke"}},
        {"what was promised me",
         {owedToMe, 14, true, commitments, standard, 7,
          "owedToMe — matched \"promised me\"; window 14 d; only where you spoke"}},
        {"what did we agree and what was settled on pricing",
         {decisions, 30, false, timeline, standard, 30,
          "decisions — matched \"settled\"; window 30 d"}},
        {"what are my weaknesses",  // the last of the cues about the user
         {openEnded, 180, true, prose, deep, 30,
          "openEnded — matched \"my weaknesses\"; window 180 d; only where you spoke; deep"}},
        {"ideas for the offsite",
         {openEnded, 180, false, prose, deep, 30,
          "openEnded — matched \"ideas for\"; window 180 d; deep"}},
    };
    for (const auto& [question, plan] : cases)
        EXPECT_EQ(route(question, {}, false), plan) << question;
}

TEST(AskIntentRouter, OnlyQuestionsAboutWorkAndPromisesFollowTheirTimePhrase) {
    const std::pair<int, int> windows[] = {{-1, 7}, {3, 7}, {10, 10}, {90, 30}};
    for (const auto* question : {"my priorities", "what did I commit to", "who owes me what"})
        for (const auto& [horizon, days] : windows)
            EXPECT_EQ(route(question, horizon, false).windowDays, days) << question << horizon;
    for (const auto* question : {"what was decided", "catch me up", "pricing", "improve my pitch"})
        EXPECT_EQ(route(question, 10, false), route(question, {}, false)) << question;
}

TEST(AskIntentRouter, ATypedScopeTakesTheWindowAndNothingElse) {
    for (const auto* question :
         {"my priorities", "what was decided", "catch me up", "pricing", "improve my pitch"}) {
        AskPlan expected = route(question, {}, false);
        const std::string window = "window " + std::to_string(expected.windowDays) + " d";
        expected.windowDays = 0;
        expected.rationale = Text::replacingAll(expected.rationale, window, "window typed scope");
        EXPECT_EQ(route(question, {}, true), expected) << question;
        EXPECT_EQ(route(question, 10, true), expected) << question;
    }
}

TEST(AskIntentRouter, CatchingUpLooksAWeekBackUnlessTheQuestionHasASubject) {
    const std::pair<const char*, std::int64_t> cases[] = {
        {"So, what did I miss?", 7},
        {"RECAP", 7},
        {"catch me up on the pricing project", 0},
        {"summary of the summary of it", 0},  // only the first occurrence goes
    };
    for (const auto& [question, windowDays] : cases) {
        const auto plan = route(question, {}, false);
        EXPECT_EQ(plan.intent, AskIntent::catchUp) << question;
        EXPECT_EQ(plan.windowDays, windowDays) << question;
    }
}

TEST(AnswerShapePlanner, WordsSuggestAShapeOnlyWhereNoIntentHasOne) {
    const struct {
        const char* question;
        AnswerShape words, plan;
    } cases[] = {
        {"who's on the committee", AnswerShape::commitments, AnswerShape::commitments},
        {"Who’s doing the launch?", AnswerShape::commitments, AnswerShape::commitments},
        {"how has pricing EVOLVED", AnswerShape::timeline, AnswerShape::timeline},
        {"the history of our next steps", AnswerShape::commitments, AnswerShape::commitments},
        // The shape of an intent comes before the words.
        {"what did we decide about the committee", AnswerShape::commitments, AnswerShape::timeline},
        {"what should I focus on", AnswerShape::prose, AnswerShape::commitments},
    };
    for (const auto& [question, words, plan] : cases) {
        EXPECT_EQ(AnswerShapePlanner::legacyShape(question), words) << question;
        EXPECT_EQ(AnswerShapePlanner::plan(question), plan) << question;
    }
}

TEST(AskIntentRouter, RawStringsReadBackAndNothingElseDoes) {
    EXPECT_EQ(fromRawValue<AskIntent>(rawValue(AskIntent::owedToMe)), AskIntent::owedToMe);
    EXPECT_EQ(fromRawValue<AskIntent>("owedtome"), std::nullopt);
    EXPECT_EQ(fromRawValue<AnswerShape>("Prose"), std::nullopt);
}
}  // namespace
}  // namespace ombrix
