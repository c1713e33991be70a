#include "OmbrixMemoryKit/Ledger/FollowUpsFile.h"

#include <gtest/gtest.h>

#include <string>

#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

const std::string today = "2026-09-01";
const Instant updated = *parseIsoInstant("2026-09-01T14:03:22Z");

FollowUpRow row(FollowUpRow::Status status) {
    return {.id = "c-0a1b2c3d",
            .what = "Send the deck",
            .who = "Ana",
            .said = "2026-08-20",
            .dueRaw = "Friday",
            .due = "2026-08-28",
            .quote = "I'll send it",
            .sourceTitle = "Weekly",
            .sourceDate = "2026-08-20",
            .status = std::move(status)};
}

TEST(FollowUpsFile, ANewFileHasEverySection) {
    FollowUpsLedger ledger{.meetingsRead = 12, .today = today};
    ledger.youOweLate = {row(FollowUpRow::Late{.days = 4})};
    ledger.older = {row(FollowUpRow::NotSure{})};
    EXPECT_EQ(FollowUpsFile::render(ledger, "Claude \"Sonnet\"", updated, " \r\n"),
              R"(---
title: Follow Ups
source: Ombrix Follow Ups
updated: 2026-09-01T14:03:22Z
meetings_read: 12
schema: ombrix/follow-ups/v2
---
<!-- ombrix:engine v1 by="Claude 'Sonnet'; laid out by Ombrix" at="2026-09-01T14:03:22Z" sources="12" -->
Rows are what Claude "Sonnet" found in your meetings, laid out by Ombrix. Every row quotes its source.

## You owe, late
- **Send the deck** · to Ana · said Aug 20 · due Aug 28 · 4 days late · "I'll send it" [Weekly, 2026-08-20] · id c-0a1b2c3d

## You owe, live
(none)

## Owed to you, late
(none)

## Owed to you, live
(none)

## Changed along the way
(none)

## Closed recently
(none)

## Not sure
(none)

## Older
Nobody has mentioned these in 90 days. They stay here until you close them.
- Reads as: Send the deck (you owe Ana) · said Aug 20 · "I'll send it" [Weekly, 2026-08-20] · id c-0a1b2c3d
<!-- /ombrix:engine -->

## Corrections
)");
}

TEST(FollowUpsFile, ARowSaysWhatIsKnown) {
    const FollowUpRow::Live live;
    const FollowUpRow::Renegotiated moved{.from = "2026-08-28",
                                          .to = "2027-01-04",
                                          .sourceTitle = "Next",
                                          .sourceDate = "2026-08-25"};
    const FollowUpRow::Done done{
        .confirmedOn = "2026-08-30", .quote = "sent", .sourceTitle = "Next"};
    auto owed = row(live), again = row(live), broken = row(live), words = row(live),
         bare = row(live), late = row(FollowUpRow::Late{.days = 2}),
         unsure = row(FollowUpRow::NotSure{}),
         undated = row(FollowUpRow::Renegotiated{.sourceTitle = "N", .sourceDate = "d"});
    words.due = bare.due = late.due = undated.due = std::nullopt;
    bare.quote = late.quote = undated.quote = bare.dueRaw = "";
    owed.direction = unsure.direction = CommitmentDirection::owedToUser;
    owed.said = "2025-12-30";
    again.recurrence = {.count = 3, .firstSaid = "2026-06-02"};
    broken.quote = "one\r\n## two\nthree";
    const std::string head = "- **Send the deck** · to Ana · ", said = head + "said Aug 20 · ",
                      id = " · id c-0a1b2c3d", weekly = "[Weekly, 2026-08-20]" + id,
                      end = " · \"I'll send it\" " + weekly;
    const std::pair<FollowUpRow, std::string> cases[] = {
        {row(FollowUpRow::Late{.days = 1}), said + "due Aug 28 · 1 day late" + end},
        {late, said + "due Friday · 2 days late · " + weekly},
        {owed, "- **Send the deck** · from Ana · said Dec 30, 2025 · due Aug 28" + end},
        {words, said + "Friday" + end},
        {bare, said + "no date · " + weekly},
        {again, said + "came up 3 times since Jun 2 · due Aug 28" + end},
        {row(moved), said + "Aug 28 → Jan 4, 2027 [Next, 2026-08-25]" + end},
        {undated, said + "Friday → no date [N, d] · " + weekly},
        {unsure, "- Reads as: Send the deck (Ana owes you) · said Aug 20" + end},
        {row(done),
         head + "promised Aug 20, confirmed done Aug 30 · \"sent\" [Next, 2026-08-30]" + id},
        {row(FollowUpRow::Done{.confirmedOn = "soon"}),
         head + "promised Aug 20, marked done soon by you" + id},
        {broken, said + "due Aug 28 · \"one ## two three\" " + weekly},
    };
    for (const auto& [given, line] : cases) EXPECT_EQ(FollowUpsFile::rowLine(given, today), line);
}

TEST(FollowUpsFile, TheFrontmatterReadsBackAndForeignOnesDoNot) {
    const std::string own = FollowUpsFile::frontmatter(updated, 12);
    const FollowUpsFile::Frontmatter read{.updated = updated, .meetingsRead = 12};
    const auto crlf = Text::replacingAll(own, "\n", "\r\n") + "\r\nupdated: 1";
    EXPECT_EQ(FollowUpsFile::parseFrontmatter(crlf), read);
    const std::pair<const char*, const char*> damages[] = {
        {"---\ntitle", "title"}, {"Follow Ups\nu", "Memory\nu"}, {"22Z", "22"},
        {": 12", ": twelve"},    {"meetings_read", "---\nx"},    {"\n", " \n"}};
    for (const auto& [from, to] : damages)
        EXPECT_EQ(FollowUpsFile::parseFrontmatter(Text::replacingAll(own, from, to)), std::nullopt)
            << from;
}

TEST(FollowUpsFile, WhatThePersonWroteOutlivesEveryRendering) {
    static const auto pieces = Text::split(
        "text|\n|\r\n|\rx|---\n|\n---\n|## Corrections\n|- private|\xFF|é|<!-- ombrix:engine v1|"
        "<!-- ombrix:engine v2 by=\"x\" -->\n|<!-- /ombrix:engine --|source: Ombrix Follow Ups\n",
        "|");
    static const std::string markers[] = {"<!-- ombrix:engine v1 by=\"x\" -->\n",
                                          std::string(EngineRegion::closeMarker)};
    test::RandomText random(20260901);
    const auto words = [&] {
        std::string text;
        for (auto i = random.below(9); i > 0; --i) text += random.from(pieces);
        return text;
    };
    FollowUpsLedger ledger{.today = today};
    for (int round = 0; round < 500; ++round) {
        const std::string& marker = markers[round % 2];
        ledger.youOweLive = {row(FollowUpRow::Live{})};
        ledger.youOweLive.front().quote = words() + marker;
        const std::string fresh = *FollowUpsFile::render(ledger, "A", updated, std::nullopt);
        const auto place = fresh.find(EngineRegion::openPrefix);
        const std::string above = words() + "\n", below = words();
        std::string file = fresh.substr(0, place) + above + fresh.substr(place) + below;
        for (int again = 1; again <= 3; ++again) {
            ++ledger.meetingsRead;
            const auto rendered = FollowUpsFile::render(ledger, marker, updated, file);
            ASSERT_TRUE(rendered) << file;
            const std::string head = FollowUpsFile::frontmatter(updated, ledger.meetingsRead);
            EXPECT_TRUE(rendered->starts_with(head + "\n" + Text::withLineFeeds(above) + "<!-- "));
            EXPECT_TRUE(rendered->ends_with(
                FollowUpsFile::regionContent(ledger, marker) +
                Text::withLineFeeds(markers[1] + "\n\n## Corrections\n" + below)));
            file = *rendered;
        }
        EXPECT_EQ(FollowUpsFile::render(ledger, "B", updated, file + marker), std::nullopt);
        const std::string bare = file.substr(file.find(EngineRegion::openPrefix));
        EXPECT_EQ(FollowUpsFile::render(ledger, "B", updated, "Mine\n" + bare)
                      ->find("\n---\nMine\n<!-- "),
                  FollowUpsFile::frontmatter(updated, ledger.meetingsRead).size() - 4);
    }
}
}  // namespace
}  // namespace ombrix
