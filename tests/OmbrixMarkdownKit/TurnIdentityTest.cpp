#include "OmbrixMarkdownKit/TurnIdentity.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ombrix {
namespace {

using TranscriptTurnID::Match;
using Turns = std::vector<TranscriptDocument::Turn>;

// The beginnings of the SHA-256 of "hello world" and of the empty text, as published.
const std::string helloWorld = "b94d27";
const std::string nothing = "e3b0c4";

TEST(TurnIdentity, WordsAreLowerCaseRunsOfLettersMarksAndDigits) {
    const struct {
        const char* why;
        std::string text, words;
    } cases[] = {
        {"punctuation parts, blanks are one", "  Hello,  World!\n", "hello world"},
        {"an apostrophe parts", "I don't, it's 3.5", "i don t it s 3 5"},
        {"an underscore is neither", "snake_case", "snake case"},
        {"diacritics stay, unlike in a fold", "Café ÉCLAIR straße", "café éclair straße"},
        {"a mark belongs to its word", "e\u0301te\u0301 fini", "e\u0301te\u0301 fini"},
        {"numbers of other kinds are kept", "\u0663 m\u00B2 \u2167", "\u0663 m\u00B2 \u2177"},
        {"symbols and unassigned bytes part",
         "a\u2014b\U0001F600c\xFF"
         "d",
         "a b c d"},
        {"only punctuation", "?! \u2026 --", ""},
        {"nothing", "", ""},
    };
    for (const auto& [why, text, words] : cases)
        EXPECT_EQ(TextNormalize::words(text), words) << why;
}

TEST(TurnIdentity, AnIdIsThePaddedPositionAndTheHashOfTheWords) {
    EXPECT_EQ(TranscriptTurnID::make(7, "Hello, world!"), "t007-" + helloWorld);
    EXPECT_EQ(TranscriptTurnID::make(1000, "hello world"), "t1000-" + helloWorld);
    EXPECT_EQ(TranscriptTurnID::make(12, "…?!"), "t012-" + nothing);
    EXPECT_EQ(TranscriptTurnID::ids(Turns{{"Ann", "HELLO — world"}, {"Bob", ""}}),
              (std::vector<std::string>{"t001-" + helloWorld, "t002-" + nothing}));
    EXPECT_TRUE(TranscriptTurnID::ids({}).empty());
}

TEST(TurnIdentity, ParsesItsOwnFormAndLittleMore) {
    const struct {
        const char* id;
        TranscriptTurnID::Parsed parsed;
    } good[] = {
        {"t007-3fa9c1", {7, "3fa9c1"}},  {"t1000-000000", {1000, "000000"}},
        {"t012-ABCDEF", {12, "ABCDEF"}},  // stays as written
        {"t+12-abcdef", {12, "abcdef"}}, {"t9223372036854775807-abcdef", {INT64_MAX, "abcdef"}},
    };
    for (const auto& [id, parsed] : good) EXPECT_EQ(TranscriptTurnID::parse(id), parsed) << id;
    for (const char* id : {"",
                           "t",
                           "-",
                           "t-",
                           "t12-abcdef",
                           "t000-abcdef",
                           "t-12-abcdef",
                           "007-abcdef",
                           "T007-abcdef",
                           "t007abcdef",
                           "t007-abcde",
                           "t007-abcdefa",
                           "t007-abcdeg",
                           "t007--abcde",
                           "t0x7-abcdef",
                           "t 07-abcdef",
                           "t007-abcde\u0661",
                           "t9223372036854775808-abcdef",
                           " t007-abcdef",
                           "t007-abcdef\n"})
        EXPECT_EQ(TranscriptTurnID::parse(id), std::nullopt) << id;
}

TEST(TurnIdentity, FindsATurnAgainAfterEdits) {
    Turns turns;
    for (const char* text : {"one", "two", "Same words", "four", "five", "six", "seven", "eight",
                             "same, words!", "ten"})
        turns.push_back({"Ann", text});
    const auto id = [](std::size_t position, const char* text) {
        return TranscriptTurnID::make(position, text);
    };
    const struct {
        const char* why;
        std::string id;
        Match match;
    } cases[] = {
        {"where it stood", id(4, "four"), Match::exact(3)},
        {"a place of its own before a nearer one", id(9, "same words"), Match::exact(8)},
        {"a turn was put in before it", id(3, "four"), Match::moved(3)},
        {"the nearer of two, behind it", id(8, "same words"), Match::moved(8)},
        {"the nearer of two, before it", id(5, "same words"), Match::moved(2)},
        {"the lower of two as near", id(6, "same words"), Match::moved(2)},
        {"the place is behind the end", id(400, "same words"), Match::moved(8)},
        {"its words were changed", id(4, "for"), Match::stale(3)},
        {"in capitals no hash is equal", "t004-ABCDEF", Match::stale(3)},
        {"cut off", id(11, "eleven"), Match::missing()},
        {"no id", "t4-abcdef", Match::missing()},
        {"the last position there can be", "t9223372036854775807-abcdef", Match::missing()},
    };
    const auto hashes = TranscriptTurnID::hashes(turns);
    for (const auto& [why, cited, match] : cases) {
        EXPECT_EQ(TranscriptTurnID::locate(cited, turns), match) << why;
        EXPECT_EQ(TranscriptTurnID::locate(cited, hashes), match) << why;
    }
    EXPECT_EQ(TranscriptTurnID::locate(id(1, "one"), Turns{}), Match::missing());
}

TEST(TurnIdentity, EveryIdOfADocumentIsExactInIt) {
    const Turns turns = {{"Ann", "Yes."}, {"Bob", "yes"}, {"Ann", ""}, {"Bob", "¿Y tú?"}};
    const auto ids = TranscriptTurnID::ids(turns);
    for (std::size_t i = 0; i < ids.size(); ++i)
        EXPECT_EQ(TranscriptTurnID::locate(ids[i], turns), Match::exact(i)) << ids[i];
}
}  // namespace
}  // namespace ombrix
