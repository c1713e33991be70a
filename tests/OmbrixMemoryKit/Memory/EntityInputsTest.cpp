#include "OmbrixMemoryKit/Memory/EntityInputs.h"

#include <gtest/gtest.h>

#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Strings = std::vector<std::string>;

LandSidecar meeting(const char* key, const char* date, Strings participants, LandOutput output) {
    return {.meetingKey = key,
            .title = "Weekly",
            .date = date,
            .participants = std::move(participants),
            .output = std::move(output)};
}

const std::vector<LandSidecar> sidecars = {
    meeting(
        "m2", "2026-09-01", {"Ana Ruiz", "ana@example.com"},
        {.commitments = {{CommitmentDirection::userOwes, "ana@example.com", "email:ana@example.com",
                          "Send the list", "q", "Me", "", std::nullopt, Certainty::recorded}},
         .memory = {{.entityKey = "Thread:Q3-Launch", .fact = "In October", .quote = "q"}}}),
    meeting("m1", "2026-08-01", {"Ben"},
            {.decisions = {{.text = "No fair", .quote = "q", .speaker = "Me"}},
             .memory = {{.entityKey = "name:ana ruiz", .fact = "Runs it", .quote = "q"},
                        {.entityKey = "name:Speaker 2", .fact = "Hums", .quote = "q"},
                        {.entityKey = "thread:q3-launch", .fact = "Slow", .quote = "q"}}}),
};

const PersonAliases aliases(std::vector<PersonIdentity>{
    {.canonical = "email:ana@example.com", .aliases = {"name:ana ruiz"}}});
const FollowUpsLedger ledger = FollowUpsMerger::merge(sidecars, {}, "2026-09-02", aliases);

ConsolidateInput inputFor(const MemoryEntity& entity) {
    return EntityInputs::consolidate(entity, EntityInputs::candidates(entity, "Dana"),
                                     EntityInputs::openRows({&entity, 1}, ledger), std::nullopt,
                                     "Dana", "2026-09-02");
}

TEST(EntityInputs, APersonIsGatheredUnderAllKeysAndShownWithoutTheAddress) {
    const auto ana = EntityInputs::entity("NAME:Ana Ruiz", aliases, sidecars);
    EXPECT_EQ(ana.key, "email:ana@example.com");
    EXPECT_EQ(ana.display, "Ana Ruiz");
    EXPECT_EQ(EntityInputs::meta(ana, "").aliases, Strings{"name:ana ruiz"});
    const auto input = inputFor(ana);
    EXPECT_EQ(input.entity, (ConsolidateEntity{.key = "name:ana ruiz", .display = "Ana Ruiz"}));
    ASSERT_EQ(input.candidates.size(), 1U);
    ASSERT_EQ(input.openFollowUps.size(), 1U);
    EXPECT_EQ(input.openFollowUps[0].source, "[Weekly, 2026-09-01]");
    EXPECT_FALSE(Text::contains(input.canonical().json, "example.com"));
    EXPECT_EQ(EntityInputs::meta(ana, "Ana Ruiz").firstSeen, "2026-08-01");

    const auto launch = EntityInputs::entity("thread:q3-launch", aliases, sidecars);
    EXPECT_EQ(EntityInputs::meta(launch, "").members, (Strings{"Ana Ruiz", "Ben"}));
    EXPECT_EQ(inputFor(launch).candidates.size(), 3U) << "two facts and a decision";
    EXPECT_EQ(inputFor(launch).openFollowUps, input.openFollowUps) << "it came up there";
    const auto ben = EntityInputs::entity("name:ben", aliases, sidecars);
    EXPECT_EQ(EntityInputs::sharedMeetings(std::vector{ana, launch}).size(), 2U);
    EXPECT_EQ(EntityInputs::sharedMeetings(std::vector{ana, ben}).count("m1"), 1U);
    EXPECT_EQ(EntityInputs::lastMeeting(std::vector{ana}, "2026-09-01")->meetingKey, "m2");
    EXPECT_EQ(EntityInputs::lastMeeting(std::vector{ana, ben}, "2026-09-01")->meetingKey, "m1");
    EXPECT_FALSE(EntityInputs::lastMeeting(std::vector{ana}, "2026-07-31"));
}

TEST(EntityInputs, WhatTheUserWroteAndTheLastDoubtsComeAlong) {
    const auto entity = EntityInputs::entity("name:ana ruiz", {}, sidecars);
    const auto file =
        MemoryFile::render(EntityInputs::meta(entity, "Ana"),
                           {.notSure = {"Two Anas? [Weekly, 2026-09-01]"}}, "Claude", {}, 1);
    const auto existing = MemoryFile::parse(*file + "- not: Ana of sales\n- important: c-1\n");
    const auto input = EntityInputs::consolidate(entity, {}, {}, existing, "Dana", "2026-09-02");
    EXPECT_EQ(input.corrections, Strings{"not: Ana of sales"});
    EXPECT_EQ(input.priorNotSure, Strings{"Two Anas? [Weekly, 2026-09-01]"});
}

std::string refusal(const auto& output, const auto& input) {
    try {
        EntityCitations::check(output, input);
        return "taken";
    } catch (const RefusedAnswer& error) {
        return error.what();
    }
}

TEST(EntityCitations, RefuseWhatTheInputDoesNotHave) {
    const auto input = inputFor(EntityInputs::entity("name:ana ruiz", aliases, sidecars));
    ConsolidateOutput output{.who = {{"Runs it", {"[Weekly, 2026-08-01]"}}},
                             .open = {{.text = "The list",
                                       .followUpID = input.openFollowUps[0].id,
                                       .sources = {"[Weekly, 2026-09-01]"}}}};
    EXPECT_EQ(refusal(output, input), "taken");
    output.open[0].followUpID = "c-00000000";
    EXPECT_EQ(
        refusal(output, input),
        "open[0].follow_up_id: no follow-up \"c-00000000\" in the input; copy an id, or write "
        "null");
    output.who[0].sources = {"[Weekly, 2026-08-02]"};
    EXPECT_EQ(refusal(output, input),
              "who[0].sources[0]: no source \"[Weekly, 2026-08-02]\" in the input; copy one as it "
              "stands");
    output.kind = LandMemoryFact::Kind::thread;
    EXPECT_EQ(refusal(output, input), "kind: the entity of the input is a person: thread");

    const BeforeInput known{.people = {{.engineRegionText = "- Runs it. [Fair [2], 2026-08-01]"}}};
    BeforeOutput card{.youOwe = {{"The list", {"[Fair [2], 2026-08-01]"}}}, .openers = {{"a", {}}}};
    EXPECT_EQ(refusal(card, known), "taken");
    card.openers[0].sources = {"[2]"};
    EXPECT_EQ(refusal(card, known), "taken");
    card.youOwe[0].sources.clear();
    EXPECT_EQ(refusal(card, known), "you_owe[0].sources: none; leave out what has no source");
}
}  // namespace
}  // namespace ombrix
