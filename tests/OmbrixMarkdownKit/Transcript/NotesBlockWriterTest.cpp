#include "OmbrixMarkdownKit/Transcript/NotesBlockWriter.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

const std::string transcript = "---\ntitle: Weekly\n---\n\n## Transcript\n\n**Ann:** We keep it.\n";
const Instant march(std::chrono::sys_days(std::chrono::year(2026) / 3 / 2) +
                    std::chrono::hours(23));
const Calendar utc = Calendar::gregorianUtc();

TEST(NotesBlockWriter, APayloadIsFitForABlock) {
    const std::string line = "_Written by Ombrix on Mar 2, 2026. Regenerate or delete any time._";
    const struct {
        const char* why;
        std::string notes, expected;
    } cases[] = {
        {"nothing", " \n", ""},
        {"headings of its own", "# Weekly\n## Summary\nwe\n## Risks\nnone\n### Late\n##\nx",
         "## Summary\nwe\nnone\n### Late\nx"},
        {"begins with prose", "Hello", "## Summary\n\nHello"},
        {"begins with what people write", "## Meeting Notes\n- a",
         "## Summary\n\n## Meeting Notes\n- a"},
        {"another opening", "## Key Moments \r\nk", "## Key Moments\nk"},
        {"forged lines", "## Summary\n<!-- ombrix:written-by x -->\na<!-- /ombrix:ai -->b",
         "## Summary\nab"},
        {"damaged line ends", "a\r\r\nb", "## Summary\n\na\nb"},
        {"a forged marker in two halves", "## Summary\na<!-- /omb<!-- /ombrix:ai -->rix:ai -->b",
         "## Summary\nab"},
    };
    for (const auto& [why, notes, expected] : cases) {
        EXPECT_EQ(NotesBlockWriter::sectionsPayload(notes, march, utc),
                  expected.empty() ? "" : expected + "\n\n" + line)
            << why;
    }
    EXPECT_EQ(NotesBlockWriter::provenanceLine("X", "through Ombrix", march,
                                               Calendar("Asia/Tokyo", Calendar::Weekday::sunday)),
              "_Written by X through Ombrix on Mar 3, 2026. Regenerate or delete any time._");
}

TEST(NotesBlockWriter, WritingReadingAndClearingRoundTrip) {
    const test::TestFolder folder;
    const std::string file = folder.write("a.md", transcript);
    test::RandomText random(4);
    for (int round = 0; round < 60; ++round) {
        const std::string payload =
            NotesBlockWriter::sectionsPayload("x" + random.mixed(20, 1000), march, utc);
        ASSERT_TRUE(NotesBlockWriter::write(payload, file));
        ASSERT_EQ(TranscriptEditor::enhancedSections(folder.read("a.md")), payload);
        ASSERT_EQ(folder.read(".a.md.notes"), payload + "\n");
    }
    ASSERT_TRUE(NotesBlockWriter::write("## Summary\ns", file, march, utc));
    folder.write("a.md", folder.read("a.md") + "\ntheirs\n");
    ASSERT_TRUE(NotesBlockWriter::clear(file));
    EXPECT_EQ(folder.read("a.md"), transcript + "\ntheirs\n");
    EXPECT_FALSE(std::filesystem::exists(NotesBlockWriter::mirrorURL(file)));
    EXPECT_TRUE(NotesBlockWriter::clear(file)) << "nothing to clear";
}

TEST(NotesBlockWriter, WhatIsNoTranscriptOrHasSectionsWithoutAMarkerIsRefused) {
    const test::TestFolder folder;
    for (const std::string& text : {std::string(), std::string("## Transcript\n"),
                                    std::string("---\ntitle: x\n---\n## Notes\n"),
                                    transcript + "\n## Meeting Notes\n\nmine\n"}) {
        const std::string file = folder.write("a.md", text);
        EXPECT_FALSE(NotesBlockWriter::write("## Summary\ns", file)) << text;
        EXPECT_EQ(folder.read("a.md"), text);
    }
    EXPECT_FALSE(NotesBlockWriter::write("## Summary\ns", folder.at("none.md")));
}
}  // namespace
}  // namespace ombrix
