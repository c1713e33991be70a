#include "OmbrixAnswerKit/CommitmentExtractor.h"

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
    std::string text;
    for (const auto& [direction, name] : Commitment::directions)
        if (direction == commitment.direction) text = name;
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
    const Lines expected = {"userOwes You said: I'll go now", "userOwes You said: I'll stay here"};
    const Turns turns = {{"Me", "I'll go now"}, {"you", "I'll stay here"}};
    EXPECT_EQ(spoken(turns, {}, {}), expected);
    EXPECT_EQ(spoken(turns, {}, {"ME", "You"}), expected);
    EXPECT_EQ(spoken(turns, {}, {"me", "Bo", "Al"}),
              (Lines{"userOwes Bo said: I'll go now", "userOwes Bo said: I'll stay here"}));
}

TEST(CommitmentExtractor, EchoesAndSingleWordsArePassedOver) {
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
        {"between others",
         {{"Tomas", ask}, {"Ann", "Will do"}, {"Me", "fine"}},
         {"other Ann asked: Could you draft it?"}},
        {"the reply is taken along, the turn behind it is not",
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
        {"an echo of a reply that was taken along",
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
    const auto lone = [&](const char* speaker, const char* text, const Names& aliases = nora) {
        return spoken({{"Me", "hm"}, {"Ann Cole", "hm"}, {speaker, text}}, three, aliases);
    };
    const struct {
        const char* why;
        Lines got, expected;
    } cases[] = {
        {"the user asks, names or not",
         lone("Me", "Tomas, can you look?"),
         {"other - asked: Tomas, can you look?"}},
        {"the user's first name",
         lone("Tomas Berg", "Can you look, nóra?"),
         {"userOwes Nora Lind asked: Can you look, nóra?"}},
        {"a later alias",
         lone("Tomas Berg", "Bo, can you look?", {"Nora", "Bo Lind"}),
         {"userOwes Nora asked: Bo, can you look?"}},
        {"the first of two participants named",
         lone("Tomas Berg", "Al or Ann, please look"),
         {"other Ann Cole asked: Al or Ann, please look"}},
        {"the user among the participants is passed over",
         lone("Tomas Berg", "Help me, can you?"),
         {"other - asked: Help me, can you?"}},
        {"nobody named, three speakers",
         lone("Tomas Berg", "Can you look?"),
         {"other - asked: Can you look?"}},
        {"two speakers",
         spoken({{"Me", "hm"}, {"Tomas Berg", "Ann, can you look?"}}, three),
         {"userOwes Nora Lind asked: Ann, can you look?"}},
        {"two speakers, the user by two names",
         spoken({{"Me", "hm"}, {"You", "hm"}, {"Tomas Berg", "Can you look?"}}),
         {"other - asked: Can you look?"}},
        {"two spellings of one speaker",
         spoken({{"Me", "hm"}, {"TOMAS", "hm"}, {"Tomás", "Can you look?"}}),
         {"userOwes Nora Lind asked: Can you look?"}},
        {"two speakers, neither the user",
         spoken({{"Ann Cole", "hm"}, {"Tomas Berg", "Can you look?"}}),
         {"other - asked: Can you look?"}},
        {"one speaker",
         spoken({{"Tomas Berg", "Can you look?"}}),
         {"other - asked: Can you look?"}},
    };
    for (const auto& [why, got, expected] : cases) EXPECT_EQ(got, expected) << why;
}

TEST(CommitmentExtractor, AnItemsOwnerIsThePersonInTheMeeting) {
    const auto item = [](const char* bullet, const Names& participants = {}) {
        TranscriptDocument document;
        document.participants = participants;
        document.turns = {{"Tomas Ek", "hm"}, {"Ann Cole", "hm"}, {"Bo", "hm"}, {"You", "hm"}};
        document.actionItems = bullet;
        return lines(document);
    };
    const struct {
        const char* why;
        Lines got, expected;
    } cases[] = {
        {"the user by name", item("- nora lind: send"), {"userOwes Nora Lind item: send"}},
        {"the user as me", item("- [ ] Me — send"), {"userOwes Nora Lind item: send"}},
        {"the user's first word", item("- Nora P.: send"), {"userOwes Nora Lind item: send"}},
        {"an equal key before an earlier first word",
         item("- ann cole: go", {"Ann Dahl"}),
         {"other Ann Cole item: go"}},
        {"participants before speakers",
         item("- Ann: go", {"Ann Dahl"}),
         {"other Ann Dahl item: go"}},
        {"a speaker's first word", item("- Tomas: send deck"), {"other Tomas Ek item: send deck"}},
        {"nobody's name stays in the text",
         item("- [ ] Budget:  review   it"),
         {"other - item: Budget: review it"}},
        {"ticked, and no bullet", item("- [x] Ann: go\nAnn: go"), {}},
    };
    for (const auto& [why, got, expected] : cases) EXPECT_EQ(got, expected) << why;
    TranscriptDocument both;
    both.notes = "- [ ] a box\n- a bullet";
    both.actionItems = "- an item";
    EXPECT_EQ(lines(both), (Lines{"other - item: an item", "other - item: a box"}));
}

Commitment made(const char* text, const char* date, Direction direction, double confidence,
                const char* meeting) {
    return {
        .direction = direction,
        .owner = direction == Direction::userOwes ? std::optional<std::string>("Me") : std::nullopt,
        .text = text,
        .deadline = std::nullopt,
        .confidence = confidence,
        .meetingID = meeting,
        .meetingTitle = "",
        .meetingDate = date};
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
    EXPECT_EQ(order(std::nullopt, -1), "");
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
        .proseText = std::nullopt,
        .citationIDs = {"A", "D", "B"}};
    EXPECT_EQ(CommitmentExtractor::assemble(several, Direction::userOwes, 12), expected);
    const StructuredAnswer none{.shape = AnswerShape::commitments,
                                .summary = std::nullopt,
                                .items = {},
                                .proseText = std::nullopt,
                                .citationIDs = {}};
    EXPECT_EQ(CommitmentExtractor::assemble(several, std::nullopt, 0), none);
}

TEST(CommitmentExtractor, CountsInItsSummary) {
    EXPECT_EQ(CommitmentExtractor::summary(1, 1),
              "1 commitment across 1 meeting, quoted from your transcripts.");
    EXPECT_EQ(CommitmentExtractor::summary(2, 0),
              "2 commitments across 0 meetings, quoted from your transcripts.");
    EXPECT_EQ(CommitmentExtractor::summary(0, 3), std::nullopt);
    EXPECT_EQ(CommitmentExtractor::summary(-1, 3), std::nullopt);
}

TEST(CommitmentExtractor, FlattensAllWhiteSpaceAndKeepsAllElse) {
    EXPECT_EQ(CommitmentExtractor::flatten("\r\n a \t b\u00A0\u2028c \u0301d\u200B\xFF "),
              "a b c \u0301d\u200B\xFF");
    EXPECT_EQ(CommitmentExtractor::flatten(" \n"), "");
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
