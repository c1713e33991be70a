#include "OmbrixMarkdownKit/Search/SpeakerIdentity.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ombrix {
namespace {

using Turns = std::vector<TranscriptDocument::Turn>;
using Labels = std::vector<std::string>;

TranscriptDocument meeting(Turns turns) { return {.turns = std::move(turns)}; }

const SpeakerIdentity tomas{std::string_view("Tomas Reyes")};

TEST(SpeakerIdentity, AUserNameAnswersToItsFirstWordToo) {
    const std::pair<const char*, Labels> cases[] = {
        {" \n Tomas  de la Cruz\t", {"Tomas  de la Cruz", "Tomas"}},
        {"Anna-Maria\u3000Jones", {"Anna-Maria\u3000Jones", "Anna-Maria"}},
        {" \n\t", {}},
    };
    for (const auto& [name, aliases] : cases)
        EXPECT_EQ(SpeakerIdentity(std::string_view(name)).aliases, aliases) << name;
}

TEST(SpeakerIdentity, ALabelMatchesAWholeAliasWhateverItsCaseAndDiacritics) {
    // Turns are counted with aliases folded once; a label must mean the same there.
    const SpeakerIdentity user{Labels{" Tomás Reyes ", "Ann", "", "\u0301"}};
    const auto counts = [&](const char* label) {
        const auto document = meeting({{label, "we could keep the old price"}});
        return Participation::substantiveTurnCount(document, user) == 1;
    };
    for (const char* label : {"Tomas Reyes", "TOMÁS REYES", "\tann\n", "Ánn"})
        EXPECT_TRUE(user.matches(label) && counts(label)) << label;
    for (const char* label : {"Tomas", "Ann B", "An", "Tomas  Reyes", "", " ", "\u0301"})
        EXPECT_FALSE(user.matches(label) || counts(label)) << label;
}

TEST(Participation, ASubstantiveTextHasAFourthWord) {
    for (const char* text : {"yes sure ok then", "  we\tkeep\r\nthe   price  ", "ja gut ähm so",
                             "ja\u00A0gut\u00A0also\u00A0so", "- - - -"}) {
        EXPECT_TRUE(Participation::isSubstantive(text)) << text;
    }
    for (const char* text : {"", " yes  sure\n\nok ", "sehr schön ähm", "one,two,three,four five",
                             "Überlegungen\u2003und mehr"}) {
        EXPECT_FALSE(Participation::isSubstantive(text)) << text;
    }
}

TEST(Participation, AnEchoSharesNineTenthsOfTheLargerSetOfWords) {
    const std::string eight = "alpha bravo charlie delta gamma foxtrot golf hotel";
    const std::string nine = eight + " india", ten = nine + " kilo";
    const struct {
        const char* why;
        std::string text, previous;
        bool echo;
    } cases[] = {
        {"other endings of the same words", "Keeping the prices!", "keep the price", true},
        {"nine of ten", nine, ten, true},
        {"nine of ten, the other way round", ten, nine, true},
        {"eight of ten", eight, ten, false},
        {"as many words, one of five another", "alpha bravo charlie delta golf",
         "alpha bravo charlie delta kilo", false},
        {"order and repeats", "golf golf hotel golf alpha", "alpha hotel golf", true},
        {"no word of two letters", "a b c d", "a b c d", false},
        {"the previous text is empty", ten, "", false},
    };
    for (const auto& [why, text, previous, echo] : cases)
        EXPECT_EQ(Participation::isEcho(text, previous), echo) << why;
    EXPECT_FALSE(Participation::isEcho(ten, std::nullopt));
}

TEST(Participation, OnlySubstantiveTurnsThatEchoNobodyCount) {
    const std::string offer = "we could keep the old price";
    const std::string reply = "then send me the new contract";
    const struct {
        const char* why;
        Turns turns;
        std::int64_t count;
    } cases[] = {
        {"nobody", {}, 0},
        {"under either alias", {{"Tomas", offer}, {"Ann", "no"}, {"TOMAS REYES ", reply}}, 2},
        {"a short one", {{"Tomas", "yes sure ok"}, {"Tomas", "yes sure ok then"}}, 1},
        {"the user's own words said again", {{"Tomas", offer}, {"Tomas", offer}}, 2},
        {"the loudspeaker, late", {{"Ann", offer}, {"Tomas", reply}, {"Tomas", offer}}, 1},
        {"each answer echoes another turn",
         {{"Ann", offer}, {"Tomas", offer}, {"Ann", reply}, {"Tomas", reply}},
         0},
        {"words before the last", {{"Ann", offer}, {"Bo", reply}, {"Tomas", offer}}, 1},
        {"a turn without a label is another's", {{"", offer}, {"Tomas", offer}}, 0},
        {"another Tomas", {{"Tomas Weber", offer}}, 0},
    };
    for (const auto& [why, turns, count] : cases) {
        const auto document = meeting(turns);
        EXPECT_EQ(Participation::substantiveTurnCount(document, tomas), count) << why;
        for (const std::int64_t least : {-4, 0, 1})
            EXPECT_EQ(Participation::spoke(document, tomas, least), count > 0) << why << least;
        EXPECT_EQ(Participation::spoke(document, tomas, 2), count == 2) << why;
        EXPECT_FALSE(Participation::spoke(document, SpeakerIdentity(Labels{}), 0)) << why;
    }
}

// Cutting the monologue into words again for every answer would take minutes.
TEST(Participation, ManyAnswersToOneLongTurnAreCountedInLinearTime) {
    std::string monologue;
    for (int i = 0; i < 40'000; ++i) monologue += "word" + std::to_string(i) + " ";
    Turns turns{{"Ann", monologue}};
    turns.resize(20'001, {"Tomas", "that is a long story"});
    EXPECT_EQ(Participation::substantiveTurnCount(meeting(turns), tomas), 20'000);
}
}  // namespace
}  // namespace ombrix
