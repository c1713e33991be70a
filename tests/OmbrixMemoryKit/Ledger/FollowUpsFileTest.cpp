#include "OmbrixMemoryKit/Ledger/FollowUpsFile.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

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

FollowUpRow without(FollowUpRow row, bool due, bool dueRaw, bool quote) {
    if (due) row.due.reset();
    if (dueRaw) row.dueRaw.clear();
    if (quote) row.quote.clear();
    return row;
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
    auto owed = row(live), again = row(live), broken = row(live),
         unsure = row(FollowUpRow::NotSure{});
    owed.direction = unsure.direction = CommitmentDirection::owedToUser;
    owed.said = "2025-12-30";
    again.recurrence = {.count = 3, .firstSaid = "2026-06-02"};
    broken.quote = "one\r\n## two\nthree";
    const std::string head = "- **Send the deck** · to Ana · ", said = head + "said Aug 20 · ",
                      id = " · id c-0a1b2c3d", weekly = "[Weekly, 2026-08-20]" + id,
                      end = " · \"I'll send it\" " + weekly;
    const std::pair<FollowUpRow, std::string> cases[] = {
        {row(FollowUpRow::Late{.days = 1}), said + "due Aug 28 · 1 day late" + end},
        {without(row(FollowUpRow::Late{.days = 2}), true, false, true),
         said + "due Friday · 2 days late · " + weekly},
        {owed, "- **Send the deck** · from Ana · said Dec 30, 2025 · due Aug 28" + end},
        {without(row(live), true, false, false), said + "Friday" + end},
        {without(row(live), true, true, true), said + "no date · " + weekly},
        {again, said + "came up 3 times since Jun 2 · due Aug 28" + end},
        {row(moved), said + "Aug 28 → Jan 4, 2027 [Next, 2026-08-25]" + end},
        {without(row(FollowUpRow::Renegotiated{.sourceTitle = "N", .sourceDate = "d"}), true, false,
                 true),
         said + "Friday → no date [N, d] · " + weekly},
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
    EXPECT_EQ(FollowUpsFile::parseFrontmatter(own), read);
    EXPECT_EQ(FollowUpsFile::parseFrontmatter(Text::replacingAll(own, "\n", " \r\n")),
              std::nullopt);
    EXPECT_EQ(
        FollowUpsFile::parseFrontmatter(Text::replacingAll(own, "\n", "\r\n") + "\r\nupdated: 1"),
        read);
    const std::pair<const char*, const char*> damages[] = {{"---\ntitle", "title"},
                                                           {"Follow Ups\nu", "Memory\nu"},
                                                           {"22Z", "22"},
                                                           {": 12", ": twelve"},
                                                           {"meetings_read", "---\nx"}};
    for (const auto& [from, to] : damages) {
        const std::string foreign = Text::replacingAll(own, from, to);
        ASSERT_NE(foreign, own) << from;
        EXPECT_EQ(FollowUpsFile::parseFrontmatter(foreign), std::nullopt) << from;
    }
}

TEST(FollowUpsFile, WhatThePersonWroteOutlivesEveryRendering) {
    static const std::string pieces[] = {"text",
                                         "\n",
                                         "\r\n",
                                         "\rx",
                                         "---\n",
                                         "\n---\n",
                                         "## Corrections\n",
                                         "- private",
                                         "\xFF",
                                         "é",
                                         "<!-- ombrix:engine v1",
                                         "<!-- ombrix:engine v2 by=\"x\" -->\n",
                                         "<!-- /ombrix:engine --",
                                         "source: Ombrix Follow Ups\n"};
    static const std::string markers[] = {"<!-- ombrix:engine v1 by=\"x\" -->\n",
                                          std::string(EngineRegion::closeMarker)};
    std::mt19937 random(20260901);
    const auto words = [&] {
        std::string text;
        for (auto i = random() % 9; i > 0; --i) text += pieces[random() % std::size(pieces)];
        return text;
    };
    FollowUpsLedger ledger{.today = today};
    for (int round = 0; round < 500; ++round) {
        auto quoting = row(FollowUpRow::Live{});
        quoting.quote = words() + markers[round % 2];
        ledger.youOweLive = {quoting};
        ++ledger.meetingsRead;
        const auto fresh = FollowUpsFile::render(ledger, "A", updated, std::nullopt);
        ASSERT_TRUE(fresh);
        const auto place = fresh->find(EngineRegion::openPrefix);
        const std::string above = words(), below = words();
        std::string file = fresh->substr(0, place) + above + "\n" + fresh->substr(place) + below;
        for (int again = 1; again <= 3; ++again) {
            ledger.changed.assign(static_cast<std::size_t>(again), quoting);
            const auto rendered = FollowUpsFile::render(ledger, markers[again % 2],
                                                        updated + std::chrono::hours(again), file);
            ASSERT_TRUE(rendered) << file;
            const auto parsed = EngineRegion::parse(*rendered);
            ASSERT_TRUE(parsed) << *rendered;
            EXPECT_EQ(parsed->before,
                      FollowUpsFile::frontmatter(updated + std::chrono::hours(again),
                                                 ledger.meetingsRead) +
                          "\n" + Text::withLineFeeds(above + "\n"));
            EXPECT_EQ(parsed->after, Text::withLineFeeds("\n\n## Corrections\n" + below));
            EXPECT_EQ(parsed->content, FollowUpsFile::regionContent(ledger, markers[again % 2]));
            file = *rendered;
        }
        const std::string doubled = file + markers[random() % 2];
        EXPECT_EQ(FollowUpsFile::render(ledger, "B", updated, doubled), std::nullopt);
        const auto bare = EngineRegion::compose("Mine", "<!-- ombrix:engine v1 -->", "old", below);
        EXPECT_EQ(FollowUpsFile::render(ledger, "B", updated, bare)->find("\n---\nMine\n<!-- "),
                  FollowUpsFile::frontmatter(updated, ledger.meetingsRead).size() - 4);
    }
}
}  // namespace
}  // namespace ombrix
