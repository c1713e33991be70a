#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"

#include <gtest/gtest.h>

#include "OmbrixMarkdownKit/Words/OneOnOne.h"
#include "OmbrixMarkdownKit/Words/Stemmer.h"
#include "OmbrixMarkdownKit/Words/WordScanner.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/Words.h"

namespace ombrix {
namespace {

using QueryTokenizer::Word;
using Strings = std::vector<std::string>;

// ---- the plain way: step by step, with nothing skipped and nothing shared --------------------

std::vector<OneOnOne::Match> plainForms(std::string_view text) {
    static const Regex expression(R"(\b(?:1:1|1-1|1 on 1|one[ -]on[ -]one|one[ -]to[ -]one)(s?)\b)",
                                  Regex::Case::ignored);
    std::vector<OneOnOne::Match> forms;
    for (const auto& match : expression.matches(text))
        forms.push_back({match.range(), !match.group(1, text).empty()});
    return forms;
}

std::string plainNormal(std::string_view word) {
    std::string fold = Text::folded(word);
    if (fold.ends_with("'s"))
        fold.resize(fold.size() - 2);
    else if (fold.ends_with("\u2019s"))
        fold.resize(fold.size() - 4);
    std::string kept;
    for (std::size_t at = 0; at < fold.size();) {
        const std::size_t next = Characters::forward(fold, at, 1);
        if (Text::isLetterOrNumber(Utf8::decode(fold, at).scalar)) kept.append(fold, at, next - at);
        at = next;
    }
    return kept;
}

/// The words of the whole text as ICU cuts them, its "one on one" rewritten.
std::vector<Word> plainWords(const std::string& text) {
    const auto forms = plainForms(text);
    const std::string shadow = OneOnOne::rewritten(text, forms);
    std::vector<ByteRange> ranges;
    Words::appendIcuWords(shadow, {0, shadow.size()}, ranges);
    std::vector<Word> words;
    for (ByteRange range : ranges) {
        const std::string raw = plainNormal(range.of(shadow));
        if (Characters::count(raw) < 2) continue;
        for (const auto& form : forms)
            if (form.range.intersects(range)) range.end = std::max(range.end, form.range.end);
        words.push_back({raw, QueryTokenizer::stem(raw), range});
    }
    return words;
}

void expectWordsOfThePlainWay(const std::string& text) {
    const auto expected = plainWords(text);
    const auto words = QueryTokenizer::words(text);
    ASSERT_EQ(words.size(), expected.size()) << test::visible(text);
    for (std::size_t i = 0; i < words.size(); ++i) {
        ASSERT_EQ(words[i].raw, expected[i].raw) << test::visible(text);
        ASSERT_EQ(words[i].stem, expected[i].stem) << test::visible(text);
        ASSERT_EQ(words[i].range, expected[i].range)
            << words[i].raw << " in " << test::visible(text);
    }
}

TEST(QueryTokenizer, TheQuickWayCutsAsThePlainOne) {
    test::RandomText random(30);
    for (int round = 0; round < 8000; ++round) {
        const std::string text = random.any();
        expectWordsOfThePlainWay(text);
        if (HasFatalFailure()) return;
        ASSERT_EQ(QueryTokenizer::normalize(text), plainNormal(text)) << test::visible(text);
    }
}

TEST(QueryTokenizer, LongWordsAndOddJointsLieAcrossEveryBorder) {
    // The scanner reads 16, 64 and 128 bytes at a time; each row is moved over all these borders.
    const std::string letters(200, 'k');
    const std::string rows =
        "can't|Bob's|_ab|ab_|@'bcd|@.bcd "
        "x|_@'bcd|a@b.cd|1,000;5|a.b.c.d|x'y'z's|___|@@@|__a__|7's|" +
        letters + "|" + letters + "'s|" + letters + "_ing|a" + std::string(70, '_') +
        "b|\u00E9t\u00E9 plain words|one on ones|1:1's|11:15 1:1";
    for (const std::string_view row : Text::split(rows, "|")) {
        for (std::size_t before = 0; before < 140; ++before) {
            for (const char filler : {' ', 'f', '-'}) {
                const std::string text = std::string(before, filler) + " " + std::string(row) +
                                         " " + std::string(140 - before, 'g') + " tail of words" +
                                         std::string(90, '.');
                expectWordsOfThePlainWay(text);
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST(QueryTokenizer, AForeignWordLeavesRoomForALongOneAfterIt) {
    // A word through ICU, longer than a short string holds, then a plain run of up to 63 letters.
    for (std::size_t length = 1; length < 130; ++length) {
        expectWordsOfThePlainWay(std::string(length, 'x') + "\u00E9 " + std::string(60, 'y') + " " +
                                 std::string(length, 'z') + " " + std::string(90, ' '));
    }
}

TEST(QueryTokenizer, OneOnOneIsFoundAsItsExpressionFindsIt) {
    const auto pieces = std::to_array<std::string_view>({"1", "1", ":", "-", " ", "on", "to", "one",
                                                         "One", "ONE", "s", "S", "_", "\x11", "x",
                                                         "1:1", "one-on-one", ".", "'"});
    test::RandomText random(31);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random.below(70) * random.below(2), ' ');
        for (std::size_t i = random.below(16); i > 0; --i) text += random.from(pieces);
        if (random.below(8) == 0) text += random.from(test::otherPieces);
        const auto forms = OneOnOne::matches(text);
        const auto expected = plainForms(text);
        ASSERT_EQ(forms.size(), expected.size()) << test::visible(text);
        for (std::size_t i = 0; i < forms.size(); ++i) {
            ASSERT_EQ(forms[i].range, expected[i].range) << test::visible(text);
            ASSERT_EQ(forms[i].isPlural, expected[i].isPlural) << test::visible(text);
        }
    }
}

// ---- by hand -----------------------------------------------------------------------------------

TEST(QueryTokenizer, WordsAreNormalStemmedAndInTheirPlace) {
    const struct {
        const char* why;
        std::string text;
        std::vector<Word> words;
    } cases[] = {
        {"a rewritten form covers the whole written one",
         "our 1:1 now",
         {{"our", "our", {0, 3}}, {"1o1", "1o1", {4, 7}}, {"now", "now", {8, 11}}}},
        {"not inside a word",
         "someone on one",
         {{"someone", "someon", {0, 7}}, {"on", "on", {8, 10}}, {"one", "one", {11, 14}}}},
        {"single letters and digits are no words", "a 7 I b's \u00E9", {}},
        {"accents fold, joints vanish",
         "Caf\u00E9 don't snake_case",
         {{"cafe", "cafe", {0, 5}},
          {"dont", "dont", {6, 11}},
          {"snakecase", "snakecas", {12, 22}}}},
        {"nothing", "", {}},
    };
    for (const auto& [why, text, words] : cases)
        EXPECT_EQ(QueryTokenizer::words(text), words) << why;
    EXPECT_EQ(QueryTokenizer::tokens("We decided on pricing"),
              (Strings{"we", "decid", "on", "pric"}));
    EXPECT_EQ(QueryTokenizer::normalize("q3,"), "q3");
    EXPECT_EQ(QueryTokenizer::normalize("James's"), "james");
    EXPECT_EQ(QueryTokenizer::normalize("'s"), "");
}

TEST(QueryTokenizer, StemsLoseWhatTheRulesTake) {
    const struct {
        std::string_view stem, words;
    } cases[] = {
        // the fixed ones, and the verbs they meet
        {"decid", "decisions decided deciding decide decision"},
        {"commit", "commitment commitments"},
        {"discuss", "discussions discussed discussion"},
        {"agre", "agreement agreements agreed agreeing"},
        {"block", "blocker blockers"},
        {"priority", "priorities prioritize prioritized prioritise"},
        {"prioritis", "prioritised"},
        // plurals
        {"story", "stories"},
        {"tie", "ties"},
        {"box", "boxes"},
        {"match", "matches"},
        {"axe", "axes"},
        {"buse", "buses"},
        // verbs
        {"meet", "meeting meetings"},
        {"ship", "shipped"},
        {"plan", "plans planning"},
        {"buzz", "buzzing buzzes"},
        {"pass", "passed"},
        {"5500", "5500ing"},
        // the final "e"
        {"releas", "release releases"},
        {"pric", "price"},
        // lengths count characters, and other letters double too
        {"\u00F8r\u00F8", "\u00F8r\u00F8\u00F8ing"},
        {"\u0436\u0436\u0436\u0436", "\u0436\u0436\u0436\u0436s"},
        {"1o1", "1o1s"},
    };
    for (const auto& [stem, words] : cases) {
        for (const auto word : Text::splitDroppingEmpty(words, " "))
            EXPECT_EQ(QueryTokenizer::stem(word), stem) << word;
    }
    constexpr std::string_view unchanged =
        "class bus analysis gas status sing bed hiring asked seeing 99ed free s ing ies "
        "\u00F8\u00F8\u00F8ing";
    for (const auto word : Text::splitDroppingEmpty(unchanged, " "))
        EXPECT_EQ(QueryTokenizer::stem(word), word);
    EXPECT_EQ(QueryTokenizer::stem(""), "");
}

TEST(QueryTokenizer, KeywordsAreWhatAQuestionIsAbout) {
    const struct {
        const char* why;
        std::string query;
        Strings keywords;
    } cases[] = {
        {"stop words only", "What did we say about it?", {}},
        {"time and numbers", "the last two weeks, tomorrow, several days", {}},
        {"the system's own words", "recap open landed", {}},
        {"contractions", "don't we're haven't wheres", {}},
        {"repeats", "price prices PRICING price", {"pric"}},
        {"a phrase keeps its stop words",
         "\"Road to the Launch\" launch",
         {"road to the launch", "launch"}},
        {"a phrase of one word is a word", "\"the budget\" \" risk \"", {"the budget", "risk"}},
        {"a single stop word in quotes is one still", "\"the\"", {}},
        {"joined words are no phrase", "follow-up", {"follow"}},
        {"typographic quotes",
         "\u201Elaunch plan\u201C \u201Cnext step\u201D",
         {"launch plan", "next step"}},
        {"an open quote runs to the end",
         "budget \"launch plan for may",
         {"budget", "launch plan for may"}},
        {"empty", "", {}},
    };
    for (const auto& [why, query, keywords] : cases)
        EXPECT_EQ(QueryTokenizer::keywords(query), keywords) << why;
    EXPECT_FALSE(QueryTokenizer::isContent({"days", "day", {}}));
    EXPECT_FALSE(QueryTokenizer::isContent({"needing", "need", {}})) << "the stem alone is enough";
    EXPECT_FALSE(QueryTokenizer::isContent({"this", "thi", {}})) << "and so is the word alone";
    EXPECT_TRUE(QueryTokenizer::isContent({"weekend", "weekend", {}}));
}

TEST(QueryTokenizer, TermsAreCutAtWhiteSpaceOutsideQuotes) {
    const struct {
        std::string query;
        Strings terms;
    } cases[] = {
        {" a  b\tc\r\nd\u3000e ", {"a", "b", "c", "d", "e"}},
        {"\"a\"\"b\"", {"a", "b"}},
        {"\"\" a", {"a"}},
        {"\" \"", {" "}},
        {"\u201Ca b\" c", {"a b", "c"}},
        {"it's 'a b'", {"it's", "'a", "b'"}},
        {"\"", {}},
        {"", {}},
    };
    for (const auto& [query, terms] : cases)
        EXPECT_EQ(QueryTokenizer::terms(query), terms) << query;
}

TEST(QueryTokenizer, StemsInARowAreFoundAndCounted) {
    const std::string text = "Plans, plan the one on one. Planned a 1:1 plan";
    const auto find = [&](const Strings& stems) { return QueryTokenizer::firstRange(stems, text); };
    EXPECT_EQ(find({"plan", "the"}), (ByteRange{7, 15}));
    EXPECT_EQ(find({"the", "1o1"}), (ByteRange{12, 26})) << "to the end of the written form";
    EXPECT_EQ(find({"plan", "1o1", "plan"}), (ByteRange{28, 46})) << "a single letter is no word";
    EXPECT_EQ(find({}), std::nullopt);
    const auto count = [](const Strings& phrase, const Strings& tokens) {
        return QueryTokenizer::count(phrase, tokens);
    };
    EXPECT_EQ(count({}, {"a"}), 0U);
    test::RandomText random(32);
    for (int round = 0; round < 3000; ++round) {
        Strings tokens(random.below(14));
        Strings phrase(1 + random.below(4));
        for (auto* list : {&tokens, &phrase})
            for (auto& token : *list) token = random.below(2) == 0 ? "aa" : "bb";
        std::size_t places = 0;
        std::optional<ByteRange> first;
        for (std::size_t at = 0; at + phrase.size() <= tokens.size(); ++at) {
            if (!std::equal(phrase.begin(), phrase.end(), tokens.begin() + static_cast<int>(at)))
                continue;
            ++places;
            if (!first) first = {3 * at, 3 * (at + phrase.size()) - 1};
        }
        ASSERT_EQ(count(phrase, tokens), places);
        ASSERT_EQ(QueryTokenizer::firstRange(phrase, Text::joined(tokens, " ")), first);
    }
}

TEST(QueryTokenizer, EveryWordOfAStemStartsWithTheirCommonPrefix) {
    const auto endings = std::to_array<std::string_view>(
        {"", "s", "es", "ies", "y", "ing", "ed", "e", "ning", "sis", "us", "ss", "ys", "eds"});
    const auto roots = Text::splitDroppingEmpty(
        "decision decid commit commitment discussion agre agreement block blocker priorit "
        "prioritiz prioritis stor plan cal x buz ed ing \u0436\u0436\u0436 1o1 match",
        " ");
    for (const auto root : roots) {
        for (const auto ending : endings) {
            const std::string word = std::string(root) + std::string(ending);
            const std::string stem = QueryTokenizer::stem(word);
            const std::string prefix = Stemmer::commonPrefix(stem);
            EXPECT_TRUE(word.starts_with(prefix)) << word << " " << stem << " " << prefix;
            EXPECT_FALSE(prefix.empty()) << word;
        }
    }
}

TEST(QueryTokenizer, AQuestionOfAMegabyteIsLinear) {
    for (const std::string_view piece :
         {"one-on-one ", "\"a b\" ", "_", "@'", "a'", "1:", "\u00E9", "e\u0301 ", "one on "}) {
        std::string query;
        while (query.size() < 1'000'000) query += piece;
        EXPECT_LT(QueryTokenizer::keywords(query).size(), 3U) << piece;
    }
}
}  // namespace
}  // namespace ombrix
