#include "OmbrixMarkdownKit/SpeakerIdentity.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ombrix {
namespace {

using Turns = std::vector<TranscriptDocument::Turn>;
using Labels = std::vector<std::string>;

TranscriptDocument meeting(Turns turns) {
    TranscriptDocument document;
    document.turns = std::move(turns);
    return document;
}

const SpeakerIdentity tomas{std::string_view("Tomas Reyes")};

TEST(SpeakerIdentity, AUserNameAnswersToItsFirstWordToo) {
    const struct {
        const char* name;
        Labels aliases;
    } cases[] = {
        {"Tomas Reyes", {"Tomas Reyes", "Tomas"}},
        {" \n Tomas  de la Cruz\t", {"Tomas  de la Cruz", "Tomas"}},
        {"Ann", {"Ann"}},
        {" Ann\n", {"Ann"}},
        {"Anna-Maria Jones", {"Anna-Maria Jones", "Anna-Maria"}},
        {"", {}},
        {" \n\t", {}},
    };
    for (const auto& [name, aliases] : cases)
        EXPECT_EQ(SpeakerIdentity(std::string_view(name)).aliases, aliases) << name;
}

TEST(SpeakerIdentity, ALabelMatchesAWholeAliasWhateverItsCaseAndDiacritics) {
    const SpeakerIdentity user{Labels{" Tomás Reyes ", "Ann", "", "\u0301"}};
    for (const char* label : {"Tomas Reyes", "TOMÁS REYES", "\tann\n", "Ánn"})
        EXPECT_TRUE(user.matches(label)) << label;
    for (const char* label : {"Tomas", "Ann B", "An", "Tomas  Reyes", "", " ", "\u0301"})
        EXPECT_FALSE(user.matches(label)) << label;
    EXPECT_FALSE(SpeakerIdentity(std::string_view("")).matches(""));
}

TEST(Participation, ASubstantiveTextHasAFourthWord) {
    for (const char* text : {"yes sure ok then", "  we\tkeep\r\nthe   price  ", "a b c d",
                             "ja gut ähm so", "ja\u00A0gut\u00A0also\u00A0so", "- - - -"})
        EXPECT_TRUE(Participation::isSubstantive(text)) << text;
    for (const char* text : {"", " \n ", "yes sure ok", " yes  sure\n\nok ", "sehr schön ähm",
                             "one,two,three,four five", "Überlegungen\u2003und mehr"})
        EXPECT_FALSE(Participation::isSubstantive(text)) << text;
}

TEST(Participation, AnEchoSharesNineTenthsOfTheLargerSetOfWords) {
    const std::string ten = "alpha bravo charlie delta gamma foxtrot golf hotel india kilo";
    const std::string nine = "alpha bravo charlie delta gamma foxtrot golf hotel india";
    const std::string eight = "alpha bravo charlie delta gamma foxtrot golf hotel";
    const struct {
        const char* why;
        std::string text;
        std::optional<std::string> previous;
        bool echo;
    } cases[] = {
        {"nobody spoke before", ten, std::nullopt, false},
        {"the same words", "We keep the price!", "we keep the price", true},
        {"other endings of the same words", "keeping the prices", "keep the price", true},
        {"nine of ten", nine, ten, true},
        {"nine of ten, the other way round", ten, nine, true},
        {"eight of ten", eight, ten, false},
        {"ten of eleven", ten, ten + " lima", true},
        {"ten of twelve", ten, ten + " lima mike", false},
        {"as many words, one of five another", "alpha bravo charlie delta golf",
         "alpha bravo charlie delta kilo", false},
        {"order and repeats", "golf golf hotel alpha", "alpha hotel golf alpha", true},
        {"no word of two letters", "a b c d", "a b c d", false},
        {"the previous text is empty", ten, "", false},
    };
    for (const auto& [why, text, previous, echo] : cases)
        EXPECT_EQ(Participation::isEcho(text, previous), echo) << why;
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
        {"two of the user's, under either alias",
         {{"Tomas", offer}, {"Ann", "go on"}, {"TOMAS REYES ", reply}},
         2},
        {"a short one", {{"Tomas", "yes sure ok"}, {"Tomas", "yes sure ok then"}}, 1},
        {"the loudspeaker", {{"Ann", offer}, {"Tomas", "We could keep the old price."}}, 0},
        {"the user's own words said again", {{"Tomas", offer}, {"Tomas", offer}}, 2},
        {"the loudspeaker, late", {{"Ann", offer}, {"Tomas", reply}, {"Tomas", offer}}, 1},
        {"what was said before the last words",
         {{"Ann", offer}, {"Bo", reply}, {"Tomas", offer}},
         1},
        {"a turn without a label is another's",
         {{"Ann", reply}, {" ", offer}, {"Tomas", offer}},
         0},
        {"another Tomas", {{"Tomas Weber", offer}, {"Ann", reply}}, 0},
    };
    for (const auto& [why, turns, count] : cases)
        EXPECT_EQ(Participation::substantiveTurnCount(meeting(turns), tomas), count) << why;
}

TEST(Participation, WhoSpokeReachedTheTurnsAskedForAndAtLeastOne) {
    const Turns two = {{"Tomas", "we could keep the old price"},
                       {"Ann", "maybe"},
                       {"Tomas", "then send me the new contract"}};
    const Turns none = {{"Tomas", "yes"}, {"Ann", "we could keep the old price"}};
    EXPECT_TRUE(Participation::spoke(meeting(two), tomas, 2));
    EXPECT_FALSE(Participation::spoke(meeting(two), tomas, 3));
    for (const std::int64_t least : {1, 0, -4}) {
        EXPECT_TRUE(Participation::spoke(meeting(two), tomas, least)) << least;
        EXPECT_FALSE(Participation::spoke(meeting(none), tomas, least)) << least;
        EXPECT_FALSE(Participation::spoke(meeting({}), tomas, least)) << least;
        EXPECT_FALSE(Participation::spoke(meeting(two), SpeakerIdentity(Labels{}), least)) << least;
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
