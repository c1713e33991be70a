#include "OmbrixAnswerKit/Commitments/CommitmentCues.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "OmbrixAnswerKit/Commitments/CommitmentPhrases.h"
#include "OmbrixAnswerKit/Commitments/Cue.h"

namespace ombrix::CommitmentCues {
namespace {

struct Pair {
    std::string hit, nearMiss;
};

/// A text for a failure's message.
std::string shown(const std::string& text) { return text.substr(0, 40); }

void expectHits(const std::function<bool(std::string_view)>& test, const std::vector<Pair>& pairs) {
    for (const auto& [hit, nearMiss] : pairs) {
        EXPECT_TRUE(test(hit)) << shown(hit);
        EXPECT_FALSE(test(nearMiss)) << shown(nearMiss);
    }
}

TEST(CommitmentCues, APromiseInTheFirstPersonDiffersFromItsDenial) {
    expectHits(hasFirstPersonCue, {{"I'll send it", "I'll not send it"},
                                   {"so I’ll send it", "I’ll   never do that"},
                                   {"I'll notify them", "I'll never notify them"},
                                   {"I WILL write", "I will not write"},
                                   {"I will nothing else", "I will  not"},
                                   {"I am going to call", "I am going towards it"},
                                   {"I'm going to call", "I'm going tomorrow"},
                                   {"I'm gonna call", "I'm gonnabe there"},
                                   {"let me check", "let men check"},
                                   {"That's on me.", "he waits on men"},
                                   {"I can take it", "I can't take it"},
                                   {"I can do that", "I can‘t do that"},
                                   {"I can send notes", "I cannot send notes"},
                                   {"I can seek it", "I can see that"},
                                   {"I can sayonara", "I can say that"},
                                   {"I can also do it", "I can also see it"},
                                   {"I can feelgood", "I can only feel it"},
                                   {"I can thinkpad", "I can\tthink of one"},
                                   {"I can do it", "Hawaii can do it"},
                                   {"I will", "I  will"}});
}

TEST(CommitmentCues, TheListenerIsAddressedByWholePhrases) {
    expectHits(isAddressedToListener, {{"I'll get you the deck", "I'll get young people"},
                                       {"I'll come back to you.", "I'll come back to yours"},
                                       {"you’ll have it", "you’ll haven't"},
                                       {"a note for you", "a note for your team"},
                                       {"LOOP YOU in", "loophole you"},
                                       {"to you", "into you"}});
}

TEST(CommitmentCues, ARequestDiffersFromAPoliteNotice) {
    expectHits(hasRequestCue, {{"Can you look at this?", "Can your team look?"},
                               {"would you mind", "would young"},
                               {"you’ll need to sign", "you’ll need tools"},
                               {"You need to go", "you needn't go"},
                               {"Please send the deck", "Please note the date"},
                               {"please  join", "please  don’t join"},
                               {"please donate", "please do not join"},
                               {"please be there", "please be aware"},
                               {"please, no; please go", "please, 2 of them"},
                               {"pleasing, please do", "displease them"}});
}

TEST(CommitmentCues, AnAcknowledgementIsAtTheBeginning) {
    expectHits(isAcknowledgement,
               {{"Sure, tomorrow", "I am sure"},
                {"\n Okay.", "Okayish"},
                {"ok", "oks"},
                {"On it!", "On its way"},
                {"consider it done", "consider it"},
                {"Happy to", "happy today"},
                {"I’ll do that", "I’ll do the deck"},
                {"I'd be happy to do it", "I'd be happy if you did it"},
                {"let me look at those", "let me look at thosewords"},
                // eight words, nine words
                {"I can do that for you by Friday", "I can do that for you by next Friday"}});
    EXPECT_FALSE(isAcknowledgement(""));
}

TEST(CommitmentCues, ADeadlineIsTheFirstPhraseOfTheFirstKindThatMatches) {
    const struct {
        const char* text;
        const char* deadline;
    } hits[] = {
        {"I'll send it by Friday, ok", "by Friday"},
        {"Done BEFORE the  End of the Week!", "BEFORE the  End of the Week"},
        {"due EOD", "due EOD"},
        {"until next tuesday morning", "until next tuesday"},
        {"till this sprint", "till this sprint"},
        {"by March 3rd", "by March 3rd"},
        {"by 3 March", "by 3 March"},
        {"by sept 12", "by sept 12"},
        {"by 2026-03-05 at noon", "by 2026-03-05"},
        {"by 3/5", "by 3/5"},
        {"by 3/5/2026", "by 3/5/2026"},
        {"by the\neom", "by the\neom"},
        {"on Monday or by Tuesday", "by Tuesday"},  // the earlier kind, although later in the text
        {"tomorrow, or next week", "next week"},
        {"next Thursday", "next Thursday"},
        {"it ships tomorrow", "tomorrow"},
        {"at the end of the quarter", "end of the quarter"},
        {"I do it later today", "later today"},
        {"May 5th works", "May 5th"},
        {"on 2026-03-05", "2026-03-05"},
        {"la date ٢٠٢٦-٠٣-٠٥ là", "٢٠٢٦-٠٣-٠٥"},
        {"by Thurſday", "by Thurſday"},  // the long s is an s, ignoring case
        {"by Auguﬆ 3", "by Auguﬆ 3"},
    };
    for (const auto& [text, expected] : hits) EXPECT_EQ(deadline(text), expected) << text;
    for (const char* text : {"", "standby Friday", "by Fridays", "by the book", "on the week",
                             "next quarter", "someday", "end  of day", "May we 5", "by March",
                             "by 12345-03-05", "2026-3-5", "Maybe 5"}) {
        EXPECT_EQ(deadline(text), std::nullopt) << text;
    }
}

/// Openings, half openings, and neighbours that could make or break a match.
std::string randomText(std::mt19937& random, bool ascii) {
    static const std::vector<std::string> plain = {
        "i'll",       "i will", "I can",      "let me",      "on me",       "i'm gonna", "not",
        "never",      "see",    "get you",    "back to you", "you'll have", "can you",   "please",
        "note",       "send",   "you should", "by",          "before",      "due",       "the",
        "end of",     "day",    "friday",     "next",        "this",        "on",        "week",
        "tomorrow",   "eod",    "may",        "august",      "5",           "3rd",       "12/3",
        "2026-03-05", "_",      "x",          "'",           "-",           ".",         "\t",
        "\n",         "  "};
    static const std::vector<std::string> other = {
        "é",       "e\u0301", "\u0301", "\u200D",   "ſ",    "K",          "ß",   "ﬆ",   "ﬁ",
        "İ",       "ŉ",       "\u00A0", "\u2028",   "٢",    "٢٠٢٦-٠٣-٠٥", "—",   "leﬅ", "pleaſe",
        "tueſday", "auguﬆ",   "thiſ",   "ſend you", "日本", "\xC3",       "\xFF"};
    std::string text;
    for (auto n = 1 + random() % 10; n > 0; --n) {
        std::string piece =
            ascii || random() % 4 ? plain[random() % plain.size()] : other[random() % other.size()];
        for (char& c : piece)
            if (c >= 'a' && c <= 'z' && random() % 4 == 0) c = static_cast<char>(c - 'a' + 'A');
        text += piece;
        if (random() % 4) text += ' ';
    }
    return text;
}

TEST(CommitmentCues, TheQuickScanFindsWhatTheExpressionFinds) {
    using namespace CommitmentPhrases;
    std::vector<Phrase> phrases(deadlines.begin(), deadlines.end());
    phrases.insert(phrases.end(), {firstPerson, listener, request});
    std::mt19937 random(11);
    for (const Phrase& phrase : phrases) {
        const Cue cue(phrase.expression(), phrase.openings);
        const Regex expression(phrase.expression(), Regex::Case::ignored);
        int found = 0;
        for (int round = 0; round < 30'000; ++round) {
            const std::string text = randomText(random, round % 2 == 0);
            const auto plain = expression.firstMatch(text);
            found += plain.has_value();
            ASSERT_EQ(cue.firstMatch(text), plain ? std::optional(plain->range()) : std::nullopt)
                << phrase.pattern << ": " << testing::PrintToString(text);
        }
        EXPECT_GT(found, 100) << phrase.pattern;
    }
}

TEST(CommitmentCues, ALongGapHidesNeitherItsOwnCueNorLaterOnes) {
    const std::string gap(1'000'000, ' ');
    expectHits(hasRequestCue, {{"please" + gap + "go", "please" + gap + "note"},
                               {"please" + gap + "note: can you go", "please" + gap + "2"}});
    expectHits(hasFirstPersonCue, {{"I'll" + gap + "go", "I'll" + gap + "never"},
                                   {"I can" + gap + "not, but let me", "I can" + gap + "also see"},
                                   {"I will" + gap + "not, I can", "I will" + gap + "not"}});
    for (const std::string& expected :
         {"by" + gap + "the" + gap + "end" + gap + "of" + gap + "the" + gap + "day",
          "till" + gap + "March" + gap + "3", "next" + gap + "week", "May" + gap + "5"}) {
        EXPECT_TRUE(deadline(expected + ", tonight") == expected) << shown(expected);
    }
    for (const auto* start : {"by", "by the", "until end", "due next", "before 3", "on", "March"})
        EXPECT_TRUE(deadline(start + gap + "x, by eod") == "by eod") << start;
}

TEST(CommitmentCues, LongTextsTakeLinearTime) {
    for (const char* part : {" ", "by ", "by the ", "i can not ", "please note ", "may ", "5 ", "é",
                             "on this next é", "a\u0301", "\u0301", "\xFF"}) {
        std::string text = "please ";
        while (text.size() < 500'000) text += part;
        text += "x1";
        EXPECT_EQ(deadline(text), std::nullopt) << part;
        EXPECT_FALSE(hasFirstPersonCue(text)) << part;
        EXPECT_FALSE(isAddressedToListener(text)) << part;
        EXPECT_FALSE(isAcknowledgement(text)) << part;
        EXPECT_TRUE(hasRequestCue(text + " can you")) << part;
    }
}
}  // namespace
}  // namespace ombrix::CommitmentCues
