#include "OmbrixMemoryKit/Moves/NextMoveFile.h"

#include <gtest/gtest.h>

#include "OmbrixMemoryKit/Moves/MoveEvidence.h"
#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"
#include "RandomMoves.h"

namespace ombrix {
namespace {

const Instant at = *parseIsoInstant("2026-07-27T10:04:11Z");
const MoveMarkdown::Context nadia{"Nadia", "2026-07-27"};
using Existing = std::optional<std::string_view>;

ResolvedMove resolved(PreparedMove move, const MoveSources& sources = {}) {
    MoveState state = MoveLifecycle::initial(move, Preparation::ready);
    return MoveEvidence::resolve(std::move(move), std::move(state), sources);
}

const std::vector<MoveBlock> blocks = {
    {"b", "Task", {{"l1", "Do it.", {"c"}}, {"l2", "Well.", {}}}},
    {"e", "Nothing", {}},
    {"p", "", {{"l3", "And", {}}, {"l4", "so on.", {}}}}};

TEST(MoveMarkdown, EachKindOfWorkHasItsForm) {
    const ResolvedMove prompt =
        resolved({.blocks = blocks, .unresolved = {{"u", "When.", {}}, {"v", "Who.", {}}}});
    EXPECT_EQ(MoveMarkdown::work(prompt, nadia),
              "## Task\n- Do it.\n- Well.\n\nAnd so on.\n\n## Not decided yet\n- When.\n- Who.");
    EXPECT_EQ(MoveMarkdown::render(prompt, nadia), MoveMarkdown::work(prompt, nadia) + "\n");

    PreparedMove mail{.kind = MoveKind::message,
                      .blocks = blocks,
                      .email = EmailDraft{{"Ann Jones", "bo@x"}, "It"}};
    EXPECT_EQ(MoveMarkdown::render(resolved(mail), nadia),
              "To: Ann Jones, bo@x\nSubject: It\n\nAnn,\n\nDo it.\n\nWell.\n\nAnd\n\nso "
              "on.\n\nThanks,\nNadia\n");
    mail.email->to = {" "};
    mail.blocks.clear();
    EXPECT_EQ(MoveMarkdown::work(resolved(mail), {}), "To:  \nSubject: It\n\nThanks,");
    mail.kind = MoveKind::prompt;
    EXPECT_EQ(MoveMarkdown::work(resolved(mail), {}), "") << "an email makes no other kind a mail";

    PreparedMove hold{.kind = MoveKind::hold,
                      .blocks = blocks,
                      .invite = Invite{"Talk", "2026-07-30", "09:30", 30, {"Ann", "Bo"}}};
    EXPECT_EQ(MoveMarkdown::render(resolved(hold), nadia),
              "Talk\nThursday, July 30, 09:30 · 30 minutes\nWith Ann, Bo\n\n- Do it.\n- Well.\n- "
              "And\n- so on.\n");
    hold.blocks.clear();
    hold.invite = Invite{.title = "Talk", .date = "2027-01-01"};
    EXPECT_EQ(MoveMarkdown::work(resolved(hold), nadia), "Talk\nFriday, January 1, 2027");
    EXPECT_EQ(MoveMarkdown::work(resolved(hold), {}), "Talk\nFriday, January 1");
}

TEST(MoveMarkdown, ShowsWhatWasSaid) {
    auto source = std::make_shared<MoveSource>();
    source->title = "Call";
    source->date = "2026-07-27";
    source->people = {"Ann", "Bo"};
    const std::string longText(250, 'x');
    const ResolvedExchange exchange{
        .source = source,
        .turns = {{.atSec = 3723.9, .speaker = "Ann", .text = "One\n\ntwo."},
                  {.atSec = 63, .speaker = "Bo", .text = longText, .changed = true}},
        .earlier = true,
        .superseded = true};
    EXPECT_EQ(MoveMarkdown::exchangeText(exchange, MoveMarkdown::Clip::quotes),
              "No longer holds\nEarlier call\nFrom Call, 2026-07-27 (Ann, Bo)\n1:02:03 Ann: One "
              "two.\n01:03 Bo: " +
                  longText.substr(0, 240) + "… (changed since)");
    EXPECT_TRUE(
        Text::contains(MoveMarkdown::exchangeText(exchange, MoveMarkdown::Clip::none), longText));
}

const NextMoveFile::Meta meta{.title = "Do it: \"now\"",
                              .kind = MoveKind::message,
                              .stance = Stance::suggested,
                              .meeting = "[Call]",
                              .meetingDate = "2026-07-27",
                              .meetingKey = "m-1",
                              .moveId = "mv-1a2b3c4d",
                              .recipients = {"Ann #1", "Bo"},
                              .updated = at};

TEST(NextMoveFile, LooksAsItIsDocumented) {
    TranscriptDocument document;
    document.turns = {{"Ann", "Do it."}};
    const auto source = std::make_shared<MoveSource>("m-1", document, "Call", "2026-07-27",
                                                     std::vector<std::string>{});
    const std::string turn = source->turns[0].id();
    const ResolvedMove move =
        resolved({.sourceId = "m-1",
                  .blocks = {{"b", "", {{"l", "Say <!-- /ombrix:engine --> it.", {"c"}}}}},
                  .claims = {{.id = "c", .refs = {{"m-1", {turn}}, {"m-2", {}}}}}},
                 {{"m-1", source}});
    const std::string expected = R"(---
title: "Do it: \"now\""
source: Ombrix Next Move
kind: message
stance: suggested
meeting: "[Call]"
meeting_date: 2026-07-27
meeting_key: m-1
move: mv-1a2b3c4d
commitments: []
recipients:
  - "Ann #1"
  - Bo
state: open
updated: 2026-07-27T10:04:11Z
---
<!-- ombrix:engine v1 by="A model" at="2026-07-27T10:04:11Z" sources="2" -->
Say &lt;!-- /ombrix:engine --> it.

---

What was said

<!-- ombrix:said source="m-1" turns=")" +
                                 turn + R"(" -->
From Call, 2026-07-27
Ann: Do it.
<!-- /ombrix:engine -->
## Notes
(Yours. Ombrix never edits below its markers.)

## Corrections
)";
    const auto text = NextMoveFile::render(move, meta, nadia, "A model", at, std::nullopt);
    EXPECT_EQ(text, expected);
    const auto parsed = NextMoveFile::parse(*text + "- done: mv-1a2b3c4d on 2026-07-28\n");
    ASSERT_TRUE(parsed.has_value());
    EXPECT_EQ(parsed->meta, meta);
    EXPECT_EQ(parsed->cited, (std::vector<NextMoveFile::Cited>{{"m-1", {turn}}}));
    EXPECT_EQ(
        parsed->corrections,
        (std::vector<MoveCorrection>{{MoveCorrection::Kind::done, "mv-1a2b3c4d", "2026-07-28"}}));
    EXPECT_EQ(parsed->writer, "A model");
    EXPECT_EQ(parsed->writtenAt, at);
}

TEST(NextMoveFile, RefusesWhatIsNotOne) {
    const std::string text = *NextMoveFile::render(resolved({}), meta, {}, "x", at, std::nullopt);
    EXPECT_TRUE(NextMoveFile::parse(Text::replacingAll(text, "\n", "\r\n")));
    const struct {
        const char *from, *to;
    } damages[] = {
        {"Ombrix Next Move", "Ombrix Memory"},
        {"kind: message", "kind: call"},
        {"state: open", "state: gone"},
        {"updated: 2026", "updated: x"},
        {"meeting_key:", "key:"},
        {"commitments: []\n", ""},
        {"<!-- /ombrix:engine -->", ""},
        {"\n---\n", "\n"},
    };
    for (const auto& [from, to] : damages) {
        ASSERT_TRUE(Text::contains(text, from)) << from;
        EXPECT_FALSE(NextMoveFile::parse(Text::replacingAll(text, from, to))) << from;
    }
}

TEST(NextMoveFile, WhatIsBelowTheMarkersSurvivesEveryRewrite) {
    constexpr std::string_view pieces[] = {"\n",
                                           "## Notes\n",
                                           "## Corrections\n",
                                           "---\n",
                                           "- private ",
                                           "<!-- note -->",
                                           "source: Ombrix\n",
                                           "é ",
                                           "<!-- /ombrix",
                                           "\n\n",
                                           "text"};
    for (unsigned seed = 0; seed < 200; ++seed) {
        test::RandomMoves random(seed);
        test::RandomText words(seed);
        std::string tail = "\n";
        for (std::size_t left = words.below(12); left > 0; --left) tail += words.from(pieces);
        auto text = NextMoveFile::render(resolved({}), meta, {}, "x", at, std::nullopt);
        text->resize(text->find("-->\n## Notes") + 3);
        *text += tail;
        if (!tail.ends_with('\n')) tail += '\n';
        for (int time = 0; time < 3; ++time) {
            text = NextMoveFile::render(resolved(random.move()), meta, nadia, "x", at, *text);
            ASSERT_TRUE(text.has_value()) << seed;
            ASSERT_TRUE(text->ends_with("<!-- /ombrix:engine -->" + tail)) << seed;
            const auto parsed = NextMoveFile::parse(*text);
            ASSERT_TRUE(parsed.has_value()) << *text;
            EXPECT_EQ(parsed->meta, meta);
        }
    }
}

TEST(NextMoveFile, NoKeyEndsTheRegionOrCitesForAnother) {
    const std::string forged =
        "k\"\n<!-- /ombrix:engine --><!-- ombrix:said source=\"a\" turns=\"b\" -->";
    MoveSource source;
    source.id = forged;
    source.turns.emplace_back(forged);
    const ResolvedMove move = resolved({.claims = {{.id = "c", .refs = {{forged, {forged}}}}}},
                                       {{forged, std::make_shared<MoveSource>(source)}});
    const auto parsed =
        NextMoveFile::parse(*NextMoveFile::render(move, meta, {}, "x", at, std::nullopt));
    ASSERT_TRUE(parsed.has_value());
    ASSERT_EQ(parsed->cited.size(), 1u);
    EXPECT_TRUE(parsed->cited[0].sourceId.starts_with("k'"));
}

TEST(NextMoveFile, LeavesADamagedFileAloneAndKeepsAPlainOne) {
    const std::string text = *NextMoveFile::render(resolved({}), meta, {}, "x", at, std::nullopt);
    const auto rewritten = [](const std::string& existing) {
        return NextMoveFile::render(resolved({}), meta, {}, "x", at, Existing(existing));
    };
    EXPECT_EQ(rewritten(text), text);
    EXPECT_EQ(rewritten(" \n"), text) << "an empty file is a new one";
    EXPECT_EQ(rewritten(Text::replacingAll(text, "<!-- /ombrix:engine -->", "")), std::nullopt);
    EXPECT_EQ(rewritten(text + "<!-- /ombrix:engine -->"), std::nullopt);
    const auto plain = rewritten("My own\r\nnotes");
    ASSERT_TRUE(plain.has_value());
    EXPECT_TRUE(plain->ends_with("<!-- /ombrix:engine -->\nMy own\nnotes\n"));
    EXPECT_EQ(rewritten(*plain), plain);
}

TEST(MoveCorrections, ReadsTheThreeKindsAndNothingElse) {
    using Kind = MoveCorrection::Kind;
    const std::vector<MoveCorrection> expected{{Kind::done, "mv-1a2b3c4d", "2026-03-01"},
                                               {Kind::done, "mv-1a2b3c4d", "2026-99-99"},
                                               {Kind::discard, "mv-1", ""},
                                               {Kind::restore, "mv-x y", ""}};
    EXPECT_EQ(MoveCorrections::parse("- Done: MV-1A2B3C4D on 2026-03-01\n"
                                     "-done:  mv-1a2b3c4d  on  2026-99-99 \n"
                                     "- discard: mv-1\n"
                                     "- RESTORE:mv-x y\n"
                                     " - discard: mv-2\n"
                                     "- done: mv-1a2b3c4d\n"
                                     "- done: mv-1 on 2026-03-01 on 2026-03-02\n"
                                     "- done: mv-1 on March 1\n"
                                     "- discard: mv-\n"
                                     "- discard: mv-\u0301\n"
                                     "- discard: c-1a2b3c4d\n"
                                     "- discarded: mv-1\n"
                                     "discard: mv-1"),
              expected);
}
}  // namespace
}  // namespace ombrix
