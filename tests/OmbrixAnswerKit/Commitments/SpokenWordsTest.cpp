#include "OmbrixAnswerKit/Commitments/SpokenWords.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

#include "OmbrixAnswerKit/Commitments/NameIndex.h"

namespace ombrix {
namespace {

bool echoes(const std::string& text, const std::string& previous) {
    return SpokenWords(text).isEchoOf(SpokenWords(previous));
}

TEST(SpokenWords, AreFoldedAndCutAtAllButLettersMarksAndDigits) {
    const struct {
        const char* why;
        std::string text;
        std::vector<std::string_view> words;
    } cases[] = {
        {"case and diacritics", " Café ÉTÉ, Straße! ", {"cafe", "ete", "strasse"}},
        {"both apostrophes", "don't don’t", {"don", "t", "don", "t"}},
        {"an underscore", "q3_plan", {"q3", "plan"}},
        {"a joiner inside a character",
         "ab\u200D"
         "c",
         {"ab", "c"}},
        {"a spacing mark stays in its word", "का", {"का"}},
        {"nothing but signs", "— …!", {}},
    };
    for (const auto& [why, text, words] : cases) EXPECT_EQ(SpokenWords(text).list(), words) << why;
    EXPECT_EQ(SpokenWords("Zoë Ann").first(), "zoe");
    EXPECT_EQ(SpokenWords("...").first(), "");
    EXPECT_TRUE(SpokenWords("a b").hasAtLeast(2));
    EXPECT_FALSE(SpokenWords("a b").hasAtLeast(3));
}

TEST(SpokenWords, AnEchoSharesFourFifthsOfTheWordsOrSevenTenthsOfTheText) {
    const struct {
        const char* why;
        std::string text, previous;
        bool isEcho;
    } cases[] = {
        {"equal words", "Yes, ok!", "yes ok", true},
        {"no words on one side", "...", "yes", false},
        {"three words and one more", "we ship today", "we ship today now", false},
        {"three words in another order", "we ship today", "today we ship", false},
        {"four words in another order", "we all ship today", "today we all ship", true},
        {"repeats count once", "no no no no we do it", "we do it no", true},
        // 14 and 20 characters: the share is 4 of 7 words, the length exactly seven tenths
        {"held, 14 of 20 characters", "aa bb cc ddddd", "x aa bb cc ddddd y z", true},
        {"the other way round", "x aa bb cc ddddd y z", "aa bb cc ddddd", true},
        {"held, 14 of 21 characters", "aa bb cc ddddd", "x aa bb cc ddddd y zz", false},
        {"seven tenths, but not in one piece", "aa bb cc ddddd", "aa bb x cc ddddd y z", false},
        {"held inside words", "aa bb cc ddddd", "xaa bb cc dddddy z u", true},
        // 20 characters in 22 bytes
        {"characters count, not bytes", "aa bb cc ddddd", "x aa bb cc ddddd ø ø", true},
    };
    for (const auto& [why, text, previous, expected] : cases)
        EXPECT_EQ(echoes(text, previous), expected) << why;
}

TEST(SpokenWords, TheShareOfWordsIsTheOneOfTheWholeSets) {
    std::mt19937 random(3);
    int echoed = 0;
    for (int round = 0; round < 5'000; ++round) {
        // One text goes up the alphabet and one down, so that neither contains the other.
        std::string a, b;
        for (char c = 'a'; c <= 'k'; ++c) {
            if (random() % 8) a += std::string(1, c) + " ";
            if (random() % 8) b = std::string(1, c) + " " + b;
        }
        const SpokenWords left(a), right(b);
        if (!left.hasAtLeast(4) || !right.hasAtLeast(4)) continue;
        const auto la = left.list(), lb = right.list();
        std::set<std::string_view> all(la.begin(), la.end());
        all.insert(lb.begin(), lb.end());
        const double shared = static_cast<double>(la.size() + lb.size() - all.size());
        const bool expected = shared / static_cast<double>(all.size()) >= 0.8;
        echoed += expected;
        ASSERT_EQ(left.isEchoOf(right), expected) << a << "| " << b;
        ASSERT_EQ(right.isEchoOf(left), expected) << a << "| " << b;
    }
    EXPECT_GT(echoed, 500);
}

TEST(SpokenWords, ATextThatRepeatsItselfIsComparedInLinearTime) {
    std::string longer, shorter;
    for (int i = 0; i < 500'000; ++i) longer += i % 1000 == 999 ? "b " : "a ";
    for (int i = 0; i < 400'000; ++i) shorter += i == 200'000 ? "c " : "a ";
    EXPECT_FALSE(echoes(longer + "d e f", shorter));
    std::string distinct;
    for (int i = 0; i < 200'000; ++i) distinct += std::to_string(i) + " ";
    EXPECT_TRUE(echoes(distinct, "x " + distinct));
    EXPECT_FALSE(echoes(distinct, "just four other words"));
    // Four distinct words of five, each repeated far beyond what is kept at a time.
    std::string four, five = "e ";
    for (int i = 0; i < 20'000; ++i) four += "d c b a ", five += "a b c d ";
    EXPECT_TRUE(echoes(four, five));
    EXPECT_FALSE(echoes(four, "f " + five + "g"));
}

TEST(NameIndex, FindsTheNameThatWasAddedFirst) {
    NameIndex names;
    for (const char* name : {"Zoë Berg", "Al Ortiz", "Zoe Cole", "ZOE BERG", "", "J Doe", "Bo"})
        names.add(name);
    EXPECT_EQ(names.withKeyOf(" zoe berg\n"), "Zoë Berg");
    EXPECT_EQ(names.withKeyOf("Zoe Cole"), "Zoe Cole");
    EXPECT_EQ(names.withKeyOf("Zoe"), std::nullopt);
    EXPECT_EQ(names.withFirstWordOf("zoé"), "Zoë Berg");
    EXPECT_EQ(names.withFirstWordOf("Al"), std::nullopt);  // two characters are too few
    EXPECT_EQ(names.withFirstWordOf("…"), std::nullopt);
    EXPECT_EQ(names.addressedIn(SpokenWords("Bo and Al, and you, Zoe?")), "Zoë Berg");
    EXPECT_EQ(names.addressedIn(SpokenWords("Bo, or Al?")), "Al Ortiz");
    EXPECT_EQ(names.addressedIn(SpokenWords("Alone, Berg, J!")), std::nullopt);
}
}  // namespace
}  // namespace ombrix
