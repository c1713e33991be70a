#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"

#include <gtest/gtest.h>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using NotesBlockEdit::Section;

const Instant written(std::chrono::sys_days(std::chrono::year(2026) / 9 / 1));
const Instant later = written + std::chrono::hours(26);
const EngineProvenance author{.model = "claude-sonnet-4-5", .at = written};
const std::string head = "---\ntitle: x\n---\n\n## Transcript\n\n**Ann:** hi\n\n_Written by me_\n";
const std::string human =
    "_Written by Claude Sonnet 4.5 through Ombrix on Sep 1, 2026. Regenerate or delete any "
    "time._\n";

std::string transcript(const LandOutput& output) {
    return TranscriptEditor::setEnhancedSections(
               head, NotesBlockRenderer::payload(output, author, Calendar::gregorianUtc())) +
           "\ntheirs\n";
}

std::string edited() {
    EngineProvenance stamped = author;
    stamped.edited = later;
    return stamped.machineLine();
}

TEST(NotesBlockEdit, ARecordBecomesItsBlock) {
    LandOutput output{.summary = " We agreed.\n"};
    EXPECT_EQ(NotesBlockRenderer::payload(output, author, Calendar::gregorianUtc()),
              "## Summary\nWe agreed.\n\n" + human + author.machineLine());
    output.notes = {{" Price ", {"stays ", "is\n5"}}, {"Team", {}}};
    EXPECT_EQ(NotesBlockRenderer::payload(output, author, Calendar::gregorianUtc()),
              "## Summary\nWe agreed.\n\n## Meeting Notes\n\n### Price\n- stays\n- is 5\n\n### "
              "Team\n\n" +
                  human + author.machineLine());
    output = {.summary = "## Summary\n" + author.machineLine() + "\r\n## Key Moments",
              .notes = {{"Action Items", {"read ## Notes"}}}};
    EXPECT_EQ(
        NotesBlockRenderer::payload(output, author, Calendar::gregorianUtc()),
        "## Summary\n ## Summary \n<! --" + author.machineLine().substr(4) +
            "\n ## Key Moments \n\n## Meeting Notes\n\n### Action Items \n- read ## Notes \n\n" +
            human + author.machineLine())
        << "a model's words open no section and say nothing about their author";
}

TEST(NotesBlockEdit, AnEditIsStampedAndTheProvenanceStaysLast) {
    const std::string before = transcript({.summary = "old"});
    const std::string end = "\n<!-- /ombrix:ai -->\n\ntheirs\n";
    const auto summary = NotesBlockEdit::replace(Section::summary, "new", before, later);
    EXPECT_EQ(summary, head + "\n## Summary\nnew\n\n" + human + edited() + "\n" + end);
    const auto items = NotesBlockEdit::replace(Section::actionItems, "- a", *summary, later);
    EXPECT_EQ(items, head + "\n## Summary\nnew\n\n## Action Items\n- a\n\n" + human + edited() +
                         "\n" + end);
    EXPECT_EQ(NotesBlockEdit::replace(Section::summary, "old", before, later), before)
        << "nothing changed, no stamp";
    EXPECT_EQ(NotesBlockEdit::replace(Section::summary, "", before, later),
              head + "\n## Summary\n\n" + human + edited() + "\n" + end)
        << "without a heading the provenance would be part of the talk";
    EXPECT_EQ(NotesBlockEdit::replace(Section::summary, "x", head, later), std::nullopt);
    const std::string foreign = Text::replacingAll(before, author.machineLine() + "\n", "");
    EXPECT_EQ(NotesBlockEdit::replace(Section::summary, "new", foreign, later),
              head + "\n## Summary\nnew\n\n" + human + end);
    const std::string bare = Text::replacingAll(foreign, "\n" + human, "");
    EXPECT_EQ(NotesBlockEdit::replace(Section::summary, "_Written by hand_", bare, later),
              Text::replacingAll(bare, "old", "_Written by hand_"))
        << "without provenance lines nothing is moved or dropped";
    EXPECT_EQ(NotesBlockEdit::replace(Section::summary,
                                      "_Written by hand_\n" + author.machineLine(), before, later),
              head + "\n## Summary\n_Written by hand_\n\n" + human + edited() + "\n" + end);
    const std::string tailFirst =
        head + "\n" + human + author.machineLine() + "\n\n## Key Moments\nk\n" + end;
    EXPECT_EQ(
        NotesBlockEdit::replace(Section::actionItems, "- a", tailFirst, later),
        head + "\n## Key Moments\nk\n\n## Action Items\n- a\n\n" + human + edited() + "\n" + end)
        << "a tail ahead of the headings";
    EXPECT_EQ(NotesBlockEdit::replace(Section::actionItems, "", tailFirst, later), tailFirst)
        << "no edit, so the tail is not moved, and nobody is said to have edited";
}

TEST(NotesBlockEdit, RandomEditsKeepTheProvenanceAndEverythingAround) {
    test::RandomText random(12);
    const auto talk = MarkdownTranscriptParser::parse(head)->turns;
    for (int round = 0; round < 300; ++round) {
        std::string text = transcript({.summary = "s"});
        if (round % 2 == 0) text = transcript({.summary = "s", .notes = {{"t", {"b"}}}});
        for (int edit = 0; edit < 8; ++edit) {
            const auto section = random.below(2) == 0 ? Section::summary : Section::actionItems;
            const std::string body = random.below(4) == 0 ? "" : "- " + random.mixed(12, 20);
            const std::string before = text;
            text = NotesBlockEdit::replace(section, body, text, later).value();
            ASSERT_TRUE(text.starts_with(head) && text.ends_with("\n\ntheirs\n")) << text;
            ASSERT_EQ(MarkdownTranscriptParser::parse(text)->turns, talk) << text;
            const bool isUntouched = text == before && !Text::contains(text, " edited=");
            const std::string machine = isUntouched ? author.machineLine() : edited();
            ASSERT_TRUE(Text::contains(text, "\n\n" + human + machine + "\n\n<!-- /ombrix:ai -->"))
                << text;
            ASSERT_EQ(Text::split(text, EngineProvenance::machinePrefix).size(), 2U) << text;
            ASSERT_EQ(NotesBlockEdit::replace(section, body, text, later), text);
        }
    }
}
}  // namespace
}  // namespace ombrix
