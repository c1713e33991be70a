#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using MarkdownTranscriptParser::parse;

const std::string head =
    "---\n"
    "title: Weekly\n"
    "unknown: kept\n"
    "participants:\n"
    "  - Ann\n"
    "  - Anna\n"
    "source: Ombrix\n"
    "---\n\n"
    "## Notes\n\nmine\n\n## Summary\n\nalso mine\n\n"
    "## Transcript\n\n**Ann:** I am Ann.\n\n**Anna:** **Ann:** she is.\n\n  - Ann\n";
const std::string block =
    "\n## Summary\n\nold\n\n## Action Items\n\n- one\n\n_Written by X._\n\n<!-- /ombrix:ai -->\n";
const std::string whole = head + block + "\ntheirs\n";

struct Edit {
    const char* why;
    std::string found, expected;
};

TEST(TranscriptEditor, ATitleAndANameAreReplacedWhereTheyStand) {
    using namespace TranscriptEditor;
    const std::string header = "---\nx: 1\ntitle: a\ntitle: b\n---\n";
    const Edit cases[] = {
        {"plain, the first line", setTitle(header, "Plan"),
         "---\nx: 1\ntitle: Plan\ntitle: b\n---\n"},
        {"quoted", setTitle("title: a", "Q3: \"it\""), "title: \"Q3: \\\"it\\\"\""},
        {"the line end stays", setTitle("title: a\r\n", "b"), "title: b\r\n"},
        {"one line", setTitle("title: a", "b\r\nprivate\ntrue"), "title: b private true"},
        {"no line", setTitle(" title: a", "b"), " title: a"},
        {"turns and items, not speech", renameSpeaker(whole, "Ann", "Bea"),
         Text::replacingAll(Text::replacingAll(whole, "\n**Ann:**", "\n**Bea:**"),
                            "participants:\n  - Ann\n", "participants:\n  - Bea\n")},
        {"to nobody", renameSpeaker(whole, "Ann", ""), whole},
        {"from nobody", renameSpeaker(whole, "", "Bea"), whole},
        {"a name that would end early", renameSpeaker("**A:** x", "A", "B:\n:****"),
         "**B: **:** x"},
        {"no frontmatter", renameSpeaker("  - A\n", "A", "B"), "  - A\n"},
        {"CR LF", renameSpeaker("---\r\nx:\r\n  - A\r\n---\r\n  - A\r\n", "A", "B"),
         "---\r\nx:\r\n  - B\r\n---\r\n  - A\r\n"},
        {"notes", setNotes("## Notes\n\nold\n\n## Transcript\n", " new\n "),
         "## Notes\n\nnew\n\n## Transcript\n"},
        {"blank notes", setNotes("## Notes\nold\n## Transcript\n", " \n"),
         "## Notes\n\n\n## Transcript\n"},
        {"nowhere to put notes", setNotes("## Notes\nold\n", "new"), "## Notes\nold\n"},
    };
    for (const auto& [why, found, expected] : cases) EXPECT_EQ(found, expected) << why;
}

TEST(TranscriptEditor, TheBlockIsReplacedAndNothingElse) {
    using namespace TranscriptEditor;
    const std::string marker = "<!-- /ombrix:ai -->\n";
    const auto speaking = [](const std::string& text) {
        return Text::replacingAll(text, "\n\nmine\n", "\n\nsee the ## Transcript\n");
    };
    const Edit cases[] = {
        {"the block", std::string(enhancedSections(whole).value()),
         "## Summary\n\nold\n\n## Action Items\n\n- one\n\n_Written by X._"},
        {"replaced", setEnhancedSections(whole, " ## Summary\nnew\n"),
         head + "\n## Summary\nnew\n\n" + marker + "\ntheirs\n"},
        {"removed", setEnhancedSections(whole, " \n"), head + "\ntheirs\n"},
        {"notes that speak of the heading", setEnhancedSections(speaking(whole), ""),
         speaking(head) + "\ntheirs\n"},
        {"appended", setEnhancedSections(head, "## Summary\nnew"),
         head + "\n## Summary\nnew\n\n" + marker},
        {"nothing to append", setEnhancedSections(head + " \n", ""), head + " \n"},
        {"a forged marker",
         setEnhancedSections("## Transcript", "## Summary\n<!-- /omb" + marker + "rix:ai -->x"),
         "## Transcript\n\n## Summary\n<!-- /omb\nrix:ai -->x\n\n" + marker},
        {"one section", setAISection(whole, "## Summary", "new\n"),
         Text::replacingAll(whole, "\n\nold\n", "\nnew\n")},
        {"the last, with what belongs to it", setAISection(whole, "## Action Items", "- two"),
         Text::replacingAll(whole, "\n\n- one\n\n_Written by X._\n", "\n- two\n")},
        {"a new one", setAISection(whole, "## Key Moments", "k"),
         Text::replacingAll(whole, marker, "## Key Moments\nk\n\n" + marker)},
        {"one less", setAISection(whole, "## Summary", ""),
         Text::replacingAll(whole, "\n## Summary\n\nold\n", "")},
        {"none to remove", setAISection(whole, "## Meeting Notes", " "), whole},
        {"no block yet, though the notes have the heading", setAISection(head, "## Summary", "s"),
         head + "\n## Summary\ns\n\n" + marker},
        {"not a generated section", setAISection(whole, "## Notes", "x"), whole},
        {"meeting notes begin no block",
         std::string(enhancedSections("## Transcript\n## Meeting Notes\nx\n" + marker).value()),
         ""},
    };
    for (const auto& [why, found, expected] : cases) EXPECT_EQ(found, expected) << why;
    EXPECT_FALSE(enhancedSections(marker + "## Transcript\n"));
    EXPECT_TRUE(isInsideMachineBlock(whole, whole.find("old")));
    EXPECT_FALSE(isInsideMachineBlock(whole, whole.find("also mine")));
    EXPECT_FALSE(isInsideMachineBlock(whole, whole.find("theirs")));
    const std::string line = " <!-- ombrix:written-by x --> ";
    EXPECT_EQ(machineProvenance(head + "\n## Summary\n" + line + "\n" + marker), line);
    EXPECT_EQ(machineProvenance(head + line + "\n## Summary\n" + marker), std::nullopt);
}

/// The text before and after what an edit may replace.
struct Outside {
    std::string_view before, after;
};

void expectKept(const std::string& edited, const Outside& outside, const std::string& text) {
    ASSERT_TRUE(edited.starts_with(outside.before) && edited.ends_with(outside.after) &&
                edited.size() >= outside.before.size() + outside.after.size())
        << test::visible(text) << "\nbecame " << test::visible(edited);
}

TEST(TranscriptEditor, NoEditLosesAByteOutsideWhatItReplaces) {
    using namespace TranscriptEditor;
    const auto pieces = std::to_array<std::string_view>({"## Notes\n",
                                                         "\n## Transcript\n",
                                                         "\n## Summary\n",
                                                         "\n## Meeting Notes\n",
                                                         "\n## Action Items",
                                                         "\n## Key Moments\n",
                                                         "<!-- /ombrix:ai -->",
                                                         "\n<!-- /ombrix:ai -->\n",
                                                         "---\n",
                                                         "title: x\n",
                                                         "  - A\n",
                                                         "\n**A:** ",
                                                         "\n",
                                                         "\n\n",
                                                         "\r\n",
                                                         " ",
                                                         "\t",
                                                         "x",
                                                         "A",
                                                         "\xFF",
                                                         "é"});
    test::RandomText random(9);
    for (int round = 0; round < 30'000; ++round) {
        std::string text;
        for (std::size_t i = random.below(20); i > 0; --i) text += random.from(pieces);
        const std::string_view view = text;

        const std::string renamed = renameSpeaker(text, "A", "\x01");
        EXPECT_EQ(Text::replacingAll(renamed, "\x01", "A"), text);
        EXPECT_EQ(renameSpeaker(renamed, "\x01", "A"), text);

        if (const auto stretch = machineStretch(text)) {
            const auto sections = *enhancedSections(text);
            const auto begin = static_cast<std::size_t>(sections.data() - text.data());
            const std::size_t kept = view.substr(0, begin).find_last_not_of("\r\n ") + 1;
            auto after = view.substr(stretch->end + enhancedBlockEndMarker.size());
            for (const char c : {'\r', '\n'})
                if (after.starts_with(c)) after.remove_prefix(1);
            const std::string edited = setEnhancedSections(text, "## Summary\nS");
            if (!sections.empty()) expectKept(edited, {view.substr(0, kept), after}, text);
            EXPECT_EQ(setEnhancedSections(edited, "## Summary\nS"), edited) << test::visible(text);
            EXPECT_EQ(enhancedSections(edited), "## Summary\nS");

            const std::string one = setAISection(text, "## Action Items", "B");
            expectKept(one, {view.substr(0, stretch->begin), view.substr(stretch->end)}, text);
            EXPECT_EQ(setAISection(one, "## Action Items", "B"), one) << test::visible(text);
        } else {
            const std::size_t kept = view.find_last_not_of("\r\n ") + 1;
            expectKept(setEnhancedSections(text, "## Summary\nS"), {view.substr(0, kept), ""},
                       text);
        }
        if (const auto before = parse(text)) {
            const auto after = parse(setTitle(text, "a \"b\": #1"));
            EXPECT_EQ(after->turns.size(), before->turns.size());
            const bool isOne = Text::split(text, "title:").size() == 2 && !before->title.empty();
            if (isOne) {
                EXPECT_EQ(after->title, "a \"b\": #1");
            }
        }
    }
}
}  // namespace
}  // namespace ombrix
