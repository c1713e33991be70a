#include "OmbrixMemoryKit/Moves/PrepareInputBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"

namespace ombrix {
namespace {

using Turns = std::vector<TranscriptDocument::Turn>;

TEST(PrepareInputBuilder, AWindowHoldsTheQuotesAndFits) {
    std::mt19937 random(3);
    const auto below = [&](std::size_t n) { return random() % n; };
    for (int round = 0; round < 500; ++round) {
        Turns turns;
        std::size_t all = 0;
        for (std::size_t count = below(30) + 1; count > 0; --count) {
            turns.push_back(
                {.speaker = "Me",
                 .text = "Number " + std::to_string(count) + "; " + std::string(below(90), 'x')});
            all += turns.back().text.size() + 34;
        }
        const auto place = below(turns.size());
        const std::string number = turns[place].text.substr(0, turns[place].text.find(';'));
        const auto most = below(all + all / 4);
        const auto window =
            PrepareInputBuilder::window(turns, std::vector{"NUMBER, " + number.substr(7)}, most);
        std::size_t cost = 0;
        for (const auto index : window) cost += turns[index].text.size() + 34;
        ASSERT_LE(cost, most);
        ASSERT_TRUE(std::ranges::is_sorted(window));
        ASSERT_EQ(window.size() == turns.size(), all <= most);
        ASSERT_EQ(std::ranges::find(window, place) != window.end(),
                  turns[place].text.size() + 34 <= most);
    }
    const Turns turns(3, {.speaker = "Me", .text = "Hello"});
    EXPECT_EQ(PrepareInputBuilder::window(turns, {}, 80), (std::vector<std::size_t>{0, 1}));
}

TEST(PrepareInputBuilder, ACommitmentIsKnownAsTheLedgerKnowsIt) {
    const LandSidecar landed{
        .meetingKey = "m-1",
        .output = {.commitments = {
                       {.who = "a@b.c", .whoKey = "name:ana", .what = "Send it", .quote = "hello"},
                   }}};
    const PersonAliases aliases(
        std::vector<PersonIdentity>{{.canonical = "email:a@b.c", .aliases = {"name:ana"}}});
    const TranscriptDocument document{
        .title = "Weekly",
        .turns = {{.speaker = "Ana", .text = "Hello."}, {.speaker = "Me", .text = "Bye."}}};
    const std::vector<Correction> corrections = {
        {.kind = Correction::Kind::done, .id = "c-00000000", .on = "2026-09-01"},
        {.kind = Correction::Kind::reword,
         .id = CommitmentID::make("m-1", "Send it", "name:ana"),
         .text = "Send them"}};
    const auto input = PrepareInputBuilder::build(landed, document, aliases, corrections, "Dana",
                                                  "2026-09-02", 45);
    const std::string id = CommitmentID::make("m-1", "Send it", "email:a@b.c");
    ASSERT_EQ(input.commitments.size(), 1U);
    EXPECT_EQ(input.commitments[0].id, id);
    EXPECT_EQ(input.commitments[0].whoKey, "name:unnamed");
    EXPECT_EQ(input.commitments[0].who, "");
    EXPECT_EQ(input.corrections, std::vector<std::string>{"reword: " + id + ": Send them"});
    EXPECT_TRUE(input.chunked);
    EXPECT_EQ(input.meeting.turns.size(), 1U);
    EXPECT_EQ(input.meeting.remoteLabelCount, 1);
}
}  // namespace
}  // namespace ombrix
