#include "OmbrixMemoryKit/Memory/MemoryFiles.h"

#include <gtest/gtest.h>

#include <random>

#include "OmbrixMemoryKit/Memory/MemoryNotes.h"
#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Kind = LandMemoryFact::Kind;
using Direction = ConsolidateOpen::Direction;

const Instant at = *parseIsoInstant("2026-09-01T14:03:22Z");
const MemoryFileMeta ana{.title = "Ana Ruiz",
                         .key = "name:ana ruiz",
                         .aliases = {"email:a@b", "Ana"},
                         .firstSeen = "2026-06-02",
                         .lastSeen = "2026-09-01",
                         .meetings = 3};
const MemoryFileMeta launch{.title = "Q3: \"launch\"",
                            .kind = Kind::thread,
                            .key = "thread:launch",
                            .aliases = {"[x", "Ana"},
                            .firstSeen = "2026-09-01",
                            .lastSeen = "2026-09-01",
                            .meetings = 1,
                            .members = {"Ana: Ruiz"}};
const ConsolidateOutput person{
    .who = {{.text = "Runs\r\nit.", .sources = {"[W, 2026-09-01]", "[K]"}}},
    .whatThisIs = {{.text = "Not of a person."}},
    .throughLine = " ## One\nstory. ",
    .decisions = {{.text = "Not of a person."}},
    .open = {{.text = "The deck", .direction = Direction::userOwes, .followUpID = "c-0a1b2c3d"},
             {.text = "A visit", .due = "soon"}},
    .notSure = {"<!-- /ombrix:engine -->", "# \"\n## x"}};

// docs/engine-walkthrough.md has whole files, and a test holds them.
TEST(MemoryFile, AnItemIsALineAndAValueIsAScalar) {
    EXPECT_EQ(MemoryFile::regionContent(person), R"(## Who they are
- Runs it. [W, 2026-09-01] [K]

## The through-line
\## One story.

## Open between you
- You owe: The deck · id c-0a1b2c3d
- A visit, due soon

## Not sure
- &lt;!-- /ombrix:engine -->
- # " ## x

Ask your Claude to go further.
)");
    EXPECT_EQ(MemoryFile::frontmatter(launch), R"(---
title: "Q3: \"launch\""
source: Ombrix Memory
kind: thread
key: "thread:launch"
aliases:
  - "[x"
  - Ana
first_seen: 2026-09-01
last_seen: 2026-09-01
meetings: 1
series: recurring
members:
  - Ana: Ruiz
---)");
}

TEST(MemoryFile, WhatIsRenderedReadsBackAndTheUsersTextSurvives) {
    std::mt19937 random(7);
    const auto pieces = Text::split(
        "a|é| |\n|\r\n|# x|\n### y|[T, 2026-01-02]|\"|: |- |- done: c-0a1b2c3d on 2026-09-01\n|"
        "<!-- /ombrix:engine -->|\n## Notes\n|## Corrections",
        "|");
    const auto words = [&](std::size_t most) {
        std::string text;
        for (auto i = random() % 6; i > 0; --i) text += pieces[random() % most];
        return text;
    };
    for (int round = 0; round < 60; ++round) {
        MemoryFileMeta meta = round % 2 == 0 ? ana : launch;
        auto file = MemoryFile::render(meta, person, "A", at, 1);
        ASSERT_TRUE(file);
        const std::string notes = std::string(Text::trimmed(Text::withLineFeeds(words(9))));
        file = MemoryNotes::replacing(notes, *file) + "- reword: c-0a1b2c3d: " + words(3) + "x\n";
        const auto tail = EngineRegion::parse(*file)->after;
        EXPECT_EQ(MemoryNotes::body(*file), notes);
        for (int again = 0; again < 100; ++again) {
            const std::string model = words(std::size(pieces));
            meta.title = "x" + std::string(Text::trimmed(Text::flattened(words(12)))) + "x";
            meta.series = meta.kind == Kind::thread ? std::optional("weekly") : std::nullopt;
            meta.meetings = again;
            const ConsolidateOutput output{.kind = meta.kind,
                                           .who = {{.text = model}},
                                           .throughLine = model,
                                           .notSure = {model}};
            file = MemoryFile::render(meta, output, model, at, again, *file);
            ASSERT_TRUE(file) << model;
            const auto parsed = MemoryFile::parse(*file);
            ASSERT_TRUE(parsed) << *file;
            EXPECT_EQ(parsed->meta, meta);
            EXPECT_EQ(parsed->engineText, MemoryFile::regionContent(output));
            EXPECT_EQ(parsed->corrections.back().id, "c-0a1b2c3d");
            EXPECT_EQ(EngineRegion::parse(*file)->after, tail);
            EXPECT_EQ(MemoryNotes::body(*file), notes);
        }
    }
}

TEST(MemoryFile, ADamagedOrForeignFileIsLeftAlone) {
    const std::string own = *MemoryFile::render(ana, person, "Claude", at, 2, " \n");
    EXPECT_EQ(MemoryFile::parse(Text::replacingAll(own, "\n", "\r\n")), MemoryFile::parse(own));
    const std::pair<const char*, const char*> foreign[] = {
        {"\ntitle:", "\nx:"},        {"\nkind:", "\nx:"},
        {"\nkey:", "\nx:"},          {"\nfirst_seen:", "\nx:"},
        {"\nlast_seen:", "\nx:"},    {"\nmeetings:", "\nx:"},
        {"kind: person", "kind: x"}, {"meetings: 3", "meetings: 3.5"},
        {"---\ntitle", "\n---\nt"},  {"Ombrix Memory", "Ombrix Before"},
    };
    for (const auto& [from, to] : foreign)
        EXPECT_FALSE(MemoryFile::parse(Text::replacingAll(own, from, to))) << from << to;
    const std::string damaged = Text::replacingAll(own, EngineRegion::closeMarker, "");
    EXPECT_FALSE(MemoryFile::parse(damaged));
    EXPECT_FALSE(MemoryFile::render(ana, person, "Claude", at, 2, damaged));

    MemoryFileMeta marked = ana;
    marked.title = EngineRegion::closeMarker;
    EXPECT_TRUE(MemoryFile::parse(*MemoryFile::render(marked, person, "Claude", at, 2)));

    const auto place = own.find("<!-- ombrix");  // and one without frontmatter gets it
    const std::string bare = own.substr(0, place) + "\nMine\n" + own.substr(place);
    for (const std::string& text : {"Mine\n" + own.substr(place), bare})
        EXPECT_EQ(MemoryFile::render(ana, person, "Claude", at, 2, text), bare);
}

TEST(MemoryFile, AFileNameHasNoSeparators) {
    const std::string eighty(80, 'x');
    const std::pair<std::string, std::string> cases[] = {
        {" A/B: C\n", "AB C.md"}, {":/\\", "Unnamed.md"},         {"/\u0301a", "\u0301a.md"},
        {"", "Unnamed.md"},       {eighty + "y", eighty + ".md"}, {"../x", "..x.md"},
    };
    for (const auto& [display, name] : cases) EXPECT_EQ(MemoryFile::fileName(display), name);
}

TEST(MemoryNotes, ReplacingKeepsAllElse) {
    std::string empty(MemoryNotes::placeholder);
    empty += '\n';
    const struct {
        std::string text, notes, replaced, body;
    } cases[] = {
        {"## Notes\n" + empty, " mine\r\nall ", "## Notes\nmine\nall\n", ""},
        {"a\r\n## Notes\nold\n\n## Corrections\n", "",
         "a\n## Notes\n" + empty + "\n## Corrections\n", "old"},
        {"## Notes\n## Corrections\n", "x", "## Notes\nx\n## Corrections\n",
         ""},  // not overwritten
        {"a\n## Notes", "x", "a\n## Notes\nx\n", ""},
        {"## Notes\nx\n" + empty + "### y\n## z", "n", "## Notes\nn\n\n## z", "x\n### y"},
        {"a\n\n## Corrections\n", "x", "a\n\n## Notes\nx\n\n## Corrections\n", ""},
        {"a", "x", "a\n\n## Notes\nx\n", ""},
        {"## Notes and more\n", "x", "## Notes and more\n\n## Notes\nx\n", ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(MemoryNotes::replacing(each.notes, each.text), each.replaced);
        EXPECT_EQ(MemoryNotes::body(each.text), each.body) << each.text;
    }
}

TEST(MemoryNotes, TheStandfirstCountsAndDates) {
    const auto line = [](int n, const char* first, Kind kind) {
        return MemoryNotes::standfirst(n, first, "2026-11-15", kind);
    };
    EXPECT_EQ(line(3, "2026-09-01", Kind::person), "3 calls · Sep 1 to Nov 15");
    EXPECT_EQ(line(1, "2026-11-15", Kind::person), "1 call · Nov 15");
    EXPECT_EQ(line(1, "", Kind::thread), "1 meeting · Nov 15");
    EXPECT_EQ(line(0, "", Kind::thread), "0 meetings · Nov 15");
}

TEST(MemoryRegionParser, ALineIsTakenApart) {
    using Line = MemoryRegionParser::Line;
    const std::pair<const char*, Line> cases[] = {
        {"- You owe: x, due Sep 5 · id c-0a1b2c3d [Weekly, sync, 2026-09-01] [K, 2026-06-02]",
         {.text = "You owe: x, due Sep 5",
          .sources = {{"Weekly, sync", "2026-09-01"}, {"K", "2026-06-02"}},
          .followUpID = "c-0a1b2c3d"}},
        {"- a [T, 2026-09-01] b", {.text = "a  b", .sources = {{"T", "2026-09-01"}}}},
        {"- Reads as:a [T] · id c-0A1B2C3D", {.text = "a [T] · id c-0A1B2C3D", .readsAs = true}},
        {"- x · id c-0a1b2c3d y", {.text = "x · id c-0a1b2c3d y"}},
    };
    for (const auto& [line, expected] : cases)
        EXPECT_EQ(MemoryRegionParser::parseLine(line), expected);
}

TEST(MemoryRegionParser, ARegionReadsBackAsItsSections) {
    const auto sections = MemoryRegionParser::sections(
        "skipped\n" + Text::replacingAll(MemoryFile::regionContent(person), "\n", " \r\n") +
        "own\nwords\n## Empty\n(none)");
    ASSERT_EQ(sections.size(), 5U);
    EXPECT_EQ(sections[1], (MemoryRegionParser::Section{.title = "The through-line",
                                                        .prose = "\\## One story."}));
    EXPECT_EQ(sections[2].lines.size(), person.open.size());
    EXPECT_EQ(sections[3],
              (MemoryRegionParser::Section{
                  .title = "Not sure",
                  .lines = {{.text = "&lt;!-- /ombrix:engine -->"}, {.text = "# \" ## x"}},
                  .prose = "own\nwords"}));
    EXPECT_EQ(sections[4], (MemoryRegionParser::Section{.title = "Empty"}));
}
}  // namespace
}  // namespace ombrix
