#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"

namespace ombrix {
namespace {

using TranscriptTurnID::Match;
using Turns = std::vector<TranscriptDocument::Turn>;

// The beginnings of the SHA-256 of "hello world" and of the empty text, as published.
const std::string helloWorld = "b94d27";
const std::string nothing = "e3b0c4";

TEST(TextNormalize, WordsAreLowerCaseRunsOfLettersMarksAndDigits) {
    const struct {
        const char* why;
        std::string text, words;
    } cases[] = {
        {"punctuation parts, blanks are one", "  Hello,  World!\n", "hello world"},
        {"so do apostrophes and underscores", "I don't, snake_case 3.5", "i don t snake case 3 5"},
        {"diacritics stay, unlike in a fold", "Café ÉCLAIR straße", "café éclair straße"},
        {"a mark belongs to its word", "e\u0301te\u0301 fini", "e\u0301te\u0301 fini"},
        {"numbers of other kinds are kept", "\u0663 m\u00B2 \u2167", "\u0663 m\u00B2 \u2177"},
        {"symbols and stray bytes part",
         "a\u2014b\U0001F600c\xFF"
         "d",
         "a b c d"},
        {"only punctuation", "?! \u2026 --", ""},
    };
    for (const auto& [why, text, words] : cases)
        EXPECT_EQ(TextNormalize::words(text), words) << why;
}

TEST(TranscriptTurnID, AnIdIsThePaddedPositionAndTheHashOfTheWords) {
    EXPECT_EQ(TranscriptTurnID::make(7, "Hello, world!"), "t007-" + helloWorld);
    EXPECT_EQ(TranscriptTurnID::make(1000, "…?!"), "t1000-" + nothing);
    const Turns turns = {{"Ann", "HELLO — world"}, {"Bob", ""}, {"Bob", "hello world"}};
    const std::vector<std::string> ids = {"t001-" + helloWorld, "t002-" + nothing,
                                          "t003-" + helloWorld};
    EXPECT_EQ(TranscriptTurnID::ids(turns), ids);
    for (std::size_t i = 0; i < ids.size(); ++i)
        EXPECT_EQ(TranscriptTurnID::locate(ids[i], turns), Match::exact(i)) << ids[i];
}

TEST(TranscriptTurnID, ParsesItsOwnFormAndLittleMore) {
    const std::pair<const char*, TranscriptTurnID::Parsed> good[] = {
        {"t007-3fa9c1", {7, "3fa9c1"}},
        {"t012-ABCDEF", {12, "ABCDEF"}},  // stays as written
        {"t+12-abcdef", {12, "abcdef"}},
        {"t9223372036854775807-abcdef", {INT64_MAX, "abcdef"}},
    };
    for (const auto& [id, parsed] : good) EXPECT_EQ(TranscriptTurnID::parse(id), parsed) << id;
    for (const char* id :
         {"", "t", "-", "t-", "t12-abcdef", "t000-abcdef", "t-12-abcdef", "007-abcdef",
          "T007-abcdef", "t007abcdef", "t007-abcde", "t007-abcdefa", "t007-abcdeg", "t0x7-abcdef",
          "t 07-abcdef", "t007-abcde\u0661", "t007-abcdef\n", "t9223372036854775808-abcdef"}) {
        EXPECT_EQ(TranscriptTurnID::parse(id), std::nullopt) << id;
    }
}

TEST(TranscriptTurnID, FindsATurnAgainAfterEdits) {
    Turns turns;
    for (const char* text : {"one", "two", "Same words", "four", "five", "six", "seven", "eight",
                             "same, words!", "ten"}) {
        turns.push_back({"Ann", text});
    }
    const struct {
        const char* why;
        std::size_t position;
        const char* text;
        Match match;
    } cases[] = {
        {"where it was", 4, "four", Match::exact(3)},
        {"a turn was put in before it", 3, "four", Match::moved(3)},
        {"the nearer of two, after it", 8, "same words", Match::moved(8)},
        {"the nearer of two, before it", 5, "same words", Match::moved(2)},
        {"the lower of two as near", 6, "same words", Match::moved(2)},
        {"the place is past the end", 400, "same words", Match::moved(8)},
        {"its words were changed", 10, "then", Match::stale(9)},
        {"cut off", 11, "eleven", Match::missing()},
        {"the last position there can be", INT64_MAX, "eleven", Match::missing()},
    };
    const TranscriptTurnID::Index index(TranscriptTurnID::hashes(turns));
    for (const auto& [why, position, text, match] : cases) {
        const auto id = TranscriptTurnID::make(position, text);
        EXPECT_EQ(TranscriptTurnID::locate(id, turns), match) << why;
        EXPECT_EQ(index.locate(id), match) << why;
    }
    EXPECT_EQ(TranscriptTurnID::locate("t4-abcdef", turns), Match::missing());
    EXPECT_EQ(TranscriptTurnID::locate("t001-" + nothing, Turns{}), Match::missing());
    // Hashes are compared as they are written.
    EXPECT_EQ(TranscriptTurnID::locate("t001-B94D27", Turns{{"Ann", "hello world"}}),
              Match::stale(0));
}
}  // namespace
}  // namespace ombrix
