#include "OmbrixAnswerKit/Grounding/GroundingBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "OmbrixAnswerKit/Grounding/ContextBudget.h"
#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

using GroundingBuilder::HitLines;
using test::RandomText;

/// A document of `count` turns "0", "1" and so on; each costs 1 + 1 + 8.
TranscriptDocument counting(int count) {
    TranscriptDocument document{.title = "T", .date = "2026-05-03"};
    for (int i = 0; i < count; ++i) document.turns.push_back({"A", std::to_string(i)});
    return document;
}

std::string texts(const std::vector<GroundingBuilder::Turn>& turns) {
    std::string result;
    for (const auto& turn : turns) result += turn.text + " ";
    return result;
}

TEST(GroundingBuilder, TurnsNearestToAHitGoInFirst) {
    auto document = counting(12);
    const struct {
        const char* why;
        std::vector<std::int64_t> hits;
        std::int64_t radius, budget;
        const char* kept;
    } rows[] = {
        {"all within two", {5, 8}, 2, 1000, "3 4 5 6 7 8 9 10 "},
        {"hits before neighbours", {8, 5, 5}, 2, 20, "5 8 "},
        {"then the earliest neighbour", {5, 8}, 2, 39, "4 5 8 "},
        {"at the edges", {0, 11}, 1, 1000, "0 1 10 11 "},
        {"radius below 0", {5}, -3, 1000, "5 "},
        {"a radius of any size", {5}, INT64_MAX, 1000, "0 1 2 3 4 5 6 7 8 9 10 11 "},
        {"a hit outside is ignored", {5, 12, -1}, 0, 1000, "5 "},
        {"none inside: from the top", {12, -1, INT64_MIN, INT64_MAX}, 0, 25, "0 1 "},
        {"nothing fits", {5}, 2, 9, ""},
    };
    for (const auto& [why, hits, radius, budget, kept] : rows)
        EXPECT_EQ(texts(GroundingBuilder::turns(document, hits, radius, budget)), kept) << why;
    EXPECT_TRUE(GroundingBuilder::turns({}, std::vector<std::int64_t>{0}, 2, 100).empty());

    document.turns[1].text = std::string(100, 'x');
    document.turns[2] = {" \t", "no speaker"};
    document.turns[3] = {"A", " \n\u2028 "};
    document.turns[4] = {"\tA ", "\n4 \n"};
    EXPECT_EQ(texts(GroundingBuilder::turns(document, std::vector<std::int64_t>{1}, 3, 20)), "0 4 ")
        << "what does not fit is skipped";
    EXPECT_EQ(texts(GroundingBuilder::fullTurns(document, 43)), "0 ") << "or ends the walk";
    EXPECT_EQ(texts(GroundingBuilder::fullTurns(document, 54)),
              "0 " + document.turns[1].text + " 4 ");
}

TEST(GroundingBuilder, AHeaderHoldsTheUsersNotesAndBareActionItems) {
    TranscriptDocument document{.title = "Weekly", .date = "2026-05-03", .participants = {"Ann"}};
    document.notes = "\n Call Bo. \n";
    document.actionItems = " - Send it \n\n*  Ask\n-\n* \nPlain - text";
    const auto meeting = GroundingBuilder::meeting("m", document, {});
    EXPECT_EQ(meeting.notes, "Call Bo.");
    EXPECT_EQ(meeting.actionItems,
              (std::vector<std::string>{"Send it", "Ask", "-", "*", "Plain - text"}));
    EXPECT_EQ(GroundingBuilder::headerCost(meeting),
              24 + (1 + 2 + 3) + (1 + 2) + 2 + (2 + 2) + (1 + 2) + (1 + 2) + (1 + 2) + (3 + 2));
    document.notes = std::string(TranscriptDocument::notesPlaceholder);
    document.actionItems.clear();
    EXPECT_EQ(GroundingBuilder::meeting("m", document, {}).notes, std::nullopt);
    EXPECT_EQ(GroundingBuilder::meeting("m", document, {}).actionItems, std::nullopt);
}

/// Meetings with texts of every script, some on one day.
std::vector<IdentifiedDocument> randomLibrary(RandomText& random) {
    std::vector<IdentifiedDocument> library(random.below(7));
    for (std::size_t i = 0; i < library.size(); ++i) {
        auto& [id, document] = library[i];
        id = std::to_string(i);
        document.title = random.any();
        document.date = "2026-05-0" + std::to_string(random.below(3));
        if (random.below(2) == 0) document.notes = random.any();
        if (random.below(2) == 0) document.actionItems = "- " + random.any();
        for (std::size_t left = random.below(60); left > 0; --left)
            document.turns.push_back({random.mixed(3, 3), random.any()});
    }
    return library;
}

/// The same pack by encoding it whole after each removal.
AnswerContextPack plainly(std::vector<IdentifiedDocument> library, AskIntent intent,
                          const HitLines& hitLines, std::int64_t budget) {
    std::ranges::stable_sort(
        library, [](const auto& a, const auto& b) { return a.document.date > b.document.date; });
    std::vector<AnswerContextPack::Meeting> meetings;
    const auto radius = GroundingBuilder::radius(intent);
    for (const auto& [id, document] : library) {
        auto meeting = GroundingBuilder::meeting(id, document, {});
        const auto share =
            std::max<std::int64_t>(budget / static_cast<std::int64_t>(library.size()), 1500);
        const auto allowance =
            std::max<std::int64_t>(share - GroundingBuilder::headerCost(meeting), 0);
        const auto hits = hitLines.find(id);
        meeting.turns = radius && hits != hitLines.end() && !hits->second.empty()
                            ? GroundingBuilder::turns(document, hits->second, *radius, allowance)
                            : GroundingBuilder::fullTurns(document, allowance);
        meetings.push_back(meeting);
    }
    const auto isOver = [&] { return budget < AnswerContextPack::of(meetings).estimatedTokens(); };
    while (meetings.size() >= 2 && isOver()) meetings.pop_back();
    while (!meetings.empty() && isOver() && !meetings.back().turns.empty())
        meetings.back().turns.pop_back();
    return AnswerContextPack::of(meetings);
}

TEST(GroundingBuilder, ThePackIsThatOfThePlainRemovalLoop) {
    RandomText random(5);
    for (int round = 0; round < 150; ++round) {
        const auto library = randomLibrary(random);
        const auto intent = EnumNames::rows<AskIntent>[random.below(7)].first;
        HitLines hitLines;
        for (std::size_t left = random.below(9); left > 0; --left)
            hitLines[std::to_string(random.below(7))].push_back(
                static_cast<std::int64_t>(random.below(70)));
        if (random.below(3) == 0) hitLines["0"].clear();
        const auto budget = static_cast<std::int64_t>(random.below(9000)) - 100;
        EXPECT_EQ(GroundingBuilder::build(library, intent, hitLines, budget),
                  plainly(library, intent, hitLines, budget))
            << round;
    }
}

TEST(GroundingBuilder, OverallQuestionsReadFromTheTop) {
    const std::vector<IdentifiedDocument> one = {{"m", counting(40)}};
    const HitLines hitLines = {{"m", {30}}};
    const auto first = [&](AskIntent intent, std::int64_t budget) {
        const auto pack = GroundingBuilder::build(one, intent, hitLines, budget);
        return pack.meetings.front().turns.empty() ? "" : pack.meetings.front().turns.front().text;
    };
    EXPECT_EQ(first(AskIntent::decisions, 30'000), "28");
    EXPECT_EQ(first(AskIntent::freeform, 30'000), "24");
    EXPECT_EQ(first(AskIntent::catchUp, 30'000), "0");
    EXPECT_EQ(first(AskIntent::openEnded, 30'000), "0");
    EXPECT_EQ(first(AskIntent::freeform, 0), "") << "the header stays, over the budget";

    EXPECT_EQ(ContextBudget::tokens({.intent = AskIntent::catchUp}), 60'000);
    EXPECT_EQ(ContextBudget::tokens(AskIntent::catchUp, AnswerTier::deep), 120'000);
    EXPECT_EQ(ContextBudget::estimateTokens("\u00E9e\u0301\r\n.."), 2) << "5 characters";
}
}  // namespace
}  // namespace ombrix
