#include "OmbrixAnswerKit/Commitments/CommitmentExtractor.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ombrix {
namespace {

using CommitmentExtractor::extract;
using Direction = Commitment::Direction;
using Turn = TranscriptDocument::Turn;
using Turns = std::vector<Turn>;
using Names = std::vector<std::string>;

const Names nora = {"Nora Lind", "Me", "You"};

/// Direction, owner, confidence and text on one line: "userOwes Nora Lind 0.85: I'll go".
std::string line(const Commitment& commitment) {
    std::string text(rawValue(commitment.direction));
    text += " " + commitment.owner.value_or("-");
    text += commitment.confidence == Commitment::actionItemConfidence    ? " item: "
            : commitment.confidence == Commitment::firstPersonConfidence ? " said: "
                                                                         : " asked: ";
    return text + commitment.text;
}

std::vector<std::string> lines(const TranscriptDocument& document, const Names& aliases = nora) {
    std::vector<std::string> all;
    for (const auto& commitment : extract(document, "m", aliases)) all.push_back(line(commitment));
    return all;
}

std::vector<std::string> spoken(const Turns& turns, const Names& participants = {},
                                const Names& aliases = nora) {
    TranscriptDocument document;
    document.participants = participants;
    document.turns = turns;
    return lines(document, aliases);
}

using Lines = std::vector<std::string>;

TEST(CommitmentExtractor, FillsEveryField) {
    TranscriptDocument document;
    document.title = "Pricing";
    document.date = "2026-03-02";
    document.turns = {{"Tomas Berg", "Well,\n\nI’ll  get you the\u00A0deck by\nFriday."}};
    document.actionItems = "- [ ] Nora — Ann’s   room, due  EOD";
    const Commitment said{.direction = Direction::owedToUser,
                          .owner = "Tomas Berg",
                          .text = "Well, I'll get you the deck by Friday.",
                          .deadline = "by\nFriday",
                          .confidence = 0.85,
                          .meetingID = "2026/pricing.md",
                          .meetingTitle = "Pricing",
                          .meetingDate = "2026-03-02"};
    Commitment listed = said;
    listed.direction = Direction::userOwes;
    listed.owner = "Nora Lind";
    listed.text = "Ann’s room, due EOD";  // a listed item keeps its apostrophes
    listed.deadline = "due  EOD";
    listed.confidence = 0.95;
    EXPECT_EQ(extract(document, "2026/pricing.md", nora), (std::vector{said, listed}));
    EXPECT_TRUE(extract({}, "", {}).empty());
}

TEST(CommitmentExtractor, APromiseIsTheSpeakers) {
    EXPECT_EQ(spoken({{"Tomas", "I will send it."},
                      {"Tomas", "I'll send you the other one."},
                      {"NORA  lind", "not her key: I can take that"},
                      {"nóra lind ", "I can take this"},
                      {"me", "let me get back to you"},
                      {"You", "I'm gonna go"}}),
              (Lines{"other Tomas said: I will send it.",
                     "owedToUser Tomas said: I'll send you the other one.",
                     "other NORA  lind said: not her key: I can take that",
                     "userOwes Nora Lind said: I can take this",
                     "userOwes Nora Lind said: let me get back to you",
                     "userOwes Nora Lind said: I'm gonna go"}));
}

TEST(CommitmentExtractor, WithoutANameTheUserIsYou) {
    for (const auto& [aliases, name] : {std::pair<Names, std::string>{{}, "You"},
                                        {{"ME", "You"}, "You"},
                                        {{"me", "Bo", "Al"}, "Bo"}}) {
        EXPECT_EQ(spoken({{"Me", "I'll go now"}}, {}, aliases),
                  Lines{"userOwes " + name + " said: I'll go now"});
    }
}

TEST(CommitmentExtractor, EchoesAndSingleWordsAreSkipped) {
    EXPECT_EQ(spoken({{"Tomas", "I'll send it"},
                      {"Me", "I’ll send it!"},
                      {"Ann", "I'll"},  // two words
                      {"Ann", "Sure"},
                      {"Me", "…"},
                      {"Me", "I'll send it"}}),
              (Lines{"other Tomas said: I'll send it", "other Ann said: I'll",
                     "userOwes Nora Lind said: I'll send it"}));
}

TEST(CommitmentExtractor, ARequestBelongsToWhoeverAcceptsIt) {
    const Names three = {"Tomas", "Ann", "Nora Lind"};
    const std::string ask = "Could you draft it?";
    const struct {
        const char* why;
        Turns turns;
        Lines lines;
    } cases[] = {
        {"the user asks",
         {{"Me", ask}, {"Tomas Berg", "I'll do that for you"}, {"Ann", "fine"}},
         {"owedToUser Tomas Berg asked: Could you draft it?"}},
        {"the user accepts",
         {{"Tomas", ask}, {"Nora Lind", "Yes, I'll do it"}, {"Ann", "fine"}},
         {"userOwes Nora Lind asked: Could you draft it?"}},
        {"the reply is read with it, the next turn is not",
         {{"Tomas", ask}, {"Ann", "Sure, could you send me the file?"}, {"Tomas", "Yes I can"}},
         {"other Ann asked: Could you draft it?", "other Tomas said: Yes I can"}},
        {"a reply that only begins like one is read on its own",
         {{"Tomas", ask}, {"Ann", "I'll first read the long report of last week"}, {"Me", "ok"}},
         {"other - asked: Could you draft it?",
          "other Ann said: I'll first read the long report of last week"}},
        {"the same person never accepts, by whatever spelling",
         {{"Tomás", ask}, {"TOMAS", "Sure I'll do it"}, {"Ann", "hm"}, {"Me", "hm"}},
         {"other - asked: Could you draft it?", "other TOMAS said: Sure I'll do it"}},
        {"a promise before a request in one turn",
         {{"Tomas", "I'll draft it, can you check it?"}, {"Ann", "Sure, let me"}, {"Me", "hm"}},
         {"other Tomas said: I'll draft it, can you check it?", "other Ann said: Sure, let me"}},
        {"an echo of a reply that was read with it",
         {{"Tomas", ask}, {"Ann", "sure I'll do it"}, {"Me", "Sure, I'll do it."}},
         {"other Ann asked: Could you draft it?"}},
        {"the last turn",
         {{"Ann", "ok"}, {"Me", "ok"}, {"Tomas", ask}},
         {"other - asked: Could you draft it?"}},
    };
    for (const auto& [why, turns, expected] : cases)
        EXPECT_EQ(spoken(turns, three), expected) << why;
}

TEST(CommitmentExtractor, AnOpenRequestGoesToWhomItNamesOrToTheOnlyOtherPerson) {
    const Names three = {"Me", "Tomas Berg", "Ann Cole", "Al Ito"};
    const Turn me = {"Me", "hm"}, ann = {"Ann Cole", "hm"}, tomas = {"Tomas Berg", "Can you look?"};
    const auto asking = [](const char* text) { return Turn{"Tomas Berg", text}; };
    const struct {
        const char* why;
        Turns turns;
        const char* who;
        Names aliases = nora;
    } cases[] = {
        {"the user asks, names or not", {asking("hm"), ann, {"Me", "Tomas, can you?"}}, "other -"},
        {"the first name", {me, ann, asking("Can you look, nóra?")}, "userOwes Nora Lind"},
        {"a later alias", {me, ann, asking("Bo, can you?")}, "userOwes Nora", {"Nora", "Bo Lind"}},
        {"the first participant named",
         {me, ann, asking("Al or Ann, please look")},
         "other Ann Cole"},
        {"the user is no participant", {me, ann, asking("Help me, can you?")}, "other -"},
        {"two speakers", {me, asking("Ann, can you look?")}, "userOwes Nora Lind"},
        {"the user by two names", {me, {"You", "hm"}, tomas}, "other -"},
        {"two spellings", {me, {"TOMÁS BERG", "hm"}, tomas}, "userOwes Nora Lind"},
        {"two speakers, neither the user", {ann, tomas}, "other -"},
        {"one speaker", {tomas}, "other -"},
    };
    for (const auto& [why, turns, who, aliases] : cases) {
        EXPECT_EQ(spoken(turns, three, aliases),
                  Lines{std::string(who) + " asked: " + turns.back().text})
            << why;
    }
}

TEST(CommitmentExtractor, AnItemsOwnerIsThePersonInTheMeeting) {
    const struct {
        const char* items;
        Lines expected;
        Names participants = {};
    } cases[] = {
        {"- nora lind: send", {"userOwes Nora Lind item: send"}},
        {"- [ ] Me — send", {"userOwes Nora Lind item: send"}},
        {"- Nora P.: send", {"userOwes Nora Lind item: send"}},
        // An equal key wins over an earlier first word, and participants win over speakers.
        {"- ann cole: go", {"other Ann Cole item: go"}, {"Ann Dahl"}},
        {"- Ann: go", {"other Ann Dahl item: go"}, {"Ann Dahl"}},
        {"- Tomas: send deck", {"other Tomas Ek item: send deck"}},
        {"- [ ] Budget:  review   it", {"other - item: Budget: review it"}},
        {"- [x] Ann: go\nAnn: go", {}},
    };
    for (const auto& [items, expected, participants] : cases) {
        TranscriptDocument document;
        document.participants = participants;
        document.turns = {{"Tomas Ek", "hm"}, {"Ann Cole", "hm"}, {"Bo", "hm"}, {"You", "hm"}};
        document.actionItems = items;
        EXPECT_EQ(lines(document), expected) << items;
    }
    TranscriptDocument both;
    both.notes = "- [ ] a box\n- a bullet";
    both.actionItems = "- an item";
    EXPECT_EQ(lines(both), (Lines{"other - item: an item", "other - item: a box"}));
}

Commitment made(const char* text, const char* date, Direction direction, double confidence,
                const char* meeting) {
    Commitment commitment{.direction = direction,
                          .text = text,
                          .confidence = confidence,
                          .meetingID = meeting,
                          .meetingDate = date};
    if (direction == Direction::userOwes) commitment.owner = "Me";
    return commitment;
}

const std::vector<Commitment> several = {
    made("a", "2026-03-01", Direction::other, 0.95, "A"),
    made("b", "2026-03-01", Direction::userOwes, 0.85, "A"),
    made("c", "", Direction::userOwes, 0.95, "B"),
    made("d", "2026-03-02", Direction::owedToUser, 0.7, "C"),
    made("e", "2026-03-01", Direction::userOwes, 0.85, "D"),
    made("f", "2026-03-01", Direction::userOwes, 0.95, "A"),
    made("g", "2026-03-01", Direction::owedToUser, 0.7, "A"),
    made("h", "2026-03-01", Direction::owedToUser, 0.85, "A"),
};

TEST(CommitmentExtractor, ListsTheLatestMeetingThenTheUsersDebtsThenTheSurest) {
    const auto order = [](std::optional<Direction> direction, std::int64_t cap) {
        std::string texts;
        for (const auto& c : CommitmentExtractor::select(several, direction, cap)) texts += c.text;
        return texts;
    };
    EXPECT_EQ(order(std::nullopt, 100), "dfbehgac");
    EXPECT_EQ(order(Direction::userOwes, 100), "fbec");
    EXPECT_EQ(order(Direction::userOwes, 2), "fb");
    EXPECT_EQ(order(Direction::owedToUser, 3), "dhg");
    EXPECT_EQ(order(std::nullopt, 0), "");
    EXPECT_EQ(order(std::nullopt, INT64_MIN), "");
}

TEST(CommitmentExtractor, NumbersTheMeetingsInTheOrderOfTheList) {
    const StructuredAnswer expected{
        .shape = AnswerShape::commitments,
        .summary = "4 commitments across 3 meetings, quoted from your transcripts.",
        .items = {{.date = {}, .owner = "Me", .text = "f [1]", .citationIndices = {1}},
                  {.date = {}, .owner = "Me", .text = "b [1]", .citationIndices = {1}},
                  {.date = {}, .owner = "Me", .text = "e [2]", .citationIndices = {2}},
                  {.date = {}, .owner = "Me", .text = "c [3]", .citationIndices = {3}}},
        .citationIDs = {"A", "D", "B"}};
    EXPECT_EQ(CommitmentExtractor::assemble(several, Direction::userOwes, 12), expected);
    EXPECT_EQ(CommitmentExtractor::assemble(several, std::nullopt, 0),
              (StructuredAnswer{.shape = AnswerShape::commitments}));
}

TEST(CommitmentExtractor, GreatDocumentsTakeLinearTime) {
    TranscriptDocument document;
    for (int i = 0; i < 30'000; ++i) {
        const std::string name = "P" + std::to_string(i) + " Berg";
        document.participants.push_back(name);
        document.turns.push_back({name, "Nobody, can you look at page " + std::to_string(i) + "?"});
        document.actionItems += "- Q" + std::to_string(i) + " Berg: go\n";
    }
    EXPECT_EQ(extract(document, "m", nora).size(), 60'000U);

    std::string text;
    while (text.size() < 3'000'000)
        text += "I can see that you think you can, can y\u00F6u, by and by ";
    document = {};
    document.turns = {{"Tomas", text}, {"Ann", text + "x"}, {"Tomas", text + "by eod"}};
    EXPECT_EQ(extract(document, "m", nora).size(), 0U);
}
}  // namespace
}  // namespace ombrix
